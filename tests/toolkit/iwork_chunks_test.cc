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
    testing::MemoryHandle archive(SampleBytes(sample.columns[3]));
    FUTBuffer buffer{};
    std::istringstream results(sample.columns[0]);
    // What is wanted comes chunk by chunk; what is not is checked all the same.
    testing::MemoryHandle unwanted(SampleBytes(sample.columns[3]));
    FUTBuffer none{};
    std::string content;
    for (int result = 0; results >> result;) {
      EXPECT_EQ(FUTDecompSnappyToBuf(&archive, &buffer), result);
      if (result == 0) content.append(buffer.start, buffer.start + buffer.length);
      none.unwanted = UINT64_MAX;
      EXPECT_EQ(FUTDecompSnappyToBuf(&unwanted, &none), result);
      EXPECT_EQ(none.length, 0u);
    }
    EXPECT_EQ(content, SampleBytes(sample.columns[2]));
    EXPECT_EQ(none.start, nullptr);
    FUTFreeBuf(&buffer);
  }
}

TEST(IworkChunks, EndAtTheLimitOfAnArchive) {
  const std::string content(kFutMostBytes, 'x');
  testing::MemoryHandle archive(testing::WriteIworkArchive(content, kFutMostBytes / 8) +
                                testing::WriteIworkArchive("y", 1));
  FUTBuffer buffer{};
  for (int i = 0; i < 8; ++i) EXPECT_EQ(FUTDecompSnappyToBuf(&archive, &buffer), 0);
  EXPECT_EQ(buffer.capacity, kFutMostBytes / 8);
  EXPECT_EQ(FUTDecompSnappyToBuf(&archive, &buffer), kFutDamaged);
  EXPECT_EQ(buffer.total, kFutMostBytes);
  FUTFreeBuf(&buffer);
}

TEST(IworkVerifier, OpensWithItsPasswordAlone) {
  for (const Sample& sample : testing::ReadSamples("toolkit/iwork_verifiers.txt", 2)) {
    SCOPED_TRACE(sample.place);
    const std::string member = SampleBytes(sample.columns[1]);
    const std::string text = SampleBytes(sample.columns[0]);
    std::vector<uint8_t> password(text.begin(), text.end());
    const auto verifier =
        crypto::ReadIworkVerifier(std::vector<uint8_t>(member.begin(), member.end()), {});
    ASSERT_TRUE(verifier.has_value());
    crypto::SecretBytes<crypto::kIworkKey> key;
    EXPECT_EQ(crypto::UnlockIwork(*verifier, password, &key), crypto::Unlocked::kYes);
    password.push_back('x');
    EXPECT_EQ(crypto::UnlockIwork(*verifier, password, &key), crypto::Unlocked::kWrongPassword);
  }
}

}  // namespace
}  // namespace fi
