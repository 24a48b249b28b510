// Chunks of iWork archives, and the verifiers of encrypted packages.
#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

#include "platform/iwork.h"
#include "tests/support/iwork_writer.h"
#include "tests/support/memory_handle.h"
#include "tests/support/samples.h"
#include "toolkit/crypto/iwork_verifier.h"

namespace fi {
namespace {

using testing::Sample;
using testing::SampleBytes;

TEST(IworkChunks, Samples) {
  for (const Sample& sample : testing::ReadSamples("toolkit/snappy_chunks.txt", 4)) {
    SCOPED_TRACE(sample.place + " " + sample.columns[1]);
    for (const uint32_t mostPerRead : {UINT32_MAX, 1U}) {
      testing::MemoryHandle archive(SampleBytes(sample.columns[3]));
      archive.mostPerRead = mostPerRead;
      FUTBuffer buffer{};
      std::istringstream results(sample.columns[0]);
      for (int result = 0; results >> result;) {
        EXPECT_EQ(FUTDecompSnappyToBuf(&archive, &buffer), result);
      }
      EXPECT_EQ(std::string(buffer.start, buffer.start + buffer.length),
                SampleBytes(sample.columns[2]));
      FUTFreeBuf(&buffer);
    }
  }
}

TEST(IworkChunks, FillTheBufferToItsLimit) {
  constexpr size_t kChunk = size_t{8} * 1024 * 1024;
  const std::string content(kFutMostBytes, 'x');
  testing::MemoryHandle archive(testing::WriteIworkArchive(content, kChunk) +
                                testing::WriteIworkArchive("y", 1));
  FUTBuffer buffer{};
  for (size_t i = 0; i < content.size() / kChunk; ++i) {
    EXPECT_EQ(FUTDecompSnappyToBuf(&archive, &buffer), 0);
  }
  EXPECT_EQ(FUTDecompSnappyToBuf(&archive, &buffer), kFutDamaged);
  EXPECT_EQ(buffer.length, kFutMostBytes);
  FUTFreeBuf(&buffer);
}

TEST(IworkVerifier, OpensWithItsPasswordAlone) {
  for (const Sample& sample : testing::ReadSamples("toolkit/iwork_verifiers.txt", 2)) {
    SCOPED_TRACE(sample.place);
    const auto unlock = [&](std::string password) {
      const std::string member = SampleBytes(sample.columns[1]);
      const std::vector<uint8_t> bytes(member.begin(), member.end());
      const std::vector<uint8_t> text(password.begin(), password.end());
      const auto verifier = crypto::ReadIworkVerifier(bytes, {});
      crypto::SecretBytes<crypto::kIworkKey> key;
      return verifier.has_value() ? crypto::UnlockIwork(*verifier, text, &key)
                                  : crypto::Unlocked::kFailed;
    };
    const std::string password = SampleBytes(sample.columns[0]);
    EXPECT_EQ(unlock(password), crypto::Unlocked::kYes);
    EXPECT_EQ(unlock(password + "x"), crypto::Unlocked::kWrongPassword);
  }
}

}  // namespace
}  // namespace fi
