#include "probes/content/header_checksum.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/support/bytes.h"
#include "tests/support/probe_run.h"

namespace fi {
namespace {

using testing::ExpectAnswers;
using testing::ExpectAnswersWhenCut;
using testing::File;
using testing::LittleEndian;
using testing::MemoryHandle;
using testing::RunProbe;

constexpr FormatId kHolds = 1010;

// A file of `size` zero bytes but for the three header fields and a word at `place`.
std::string Document(uint32_t end, uint32_t start, uint32_t check, uint32_t word,
                     size_t place = 100, size_t size = 2100) {
  return File({{4, LittleEndian(end, 2)},
               {6, LittleEndian(start, 2)},
               {8, LittleEndian(check, 2)},
               {place, LittleEndian(word, 2)}},
              size, '\0');
}

TEST(HeaderChecksum, HoldsOverTheRange) {
  const size_t whole = 65536 + 32;
  ExpectAnswers(
      HeaderChecksumProbe,
      {
          {"holds", Document(200, 10, 0xEDCC, 0x1234), kHolds},
          {"off by one", Document(200, 10, 0xEDCB, 0x1234), kNoMatch},
          {"first word of the range", Document(200, 68, 0xEDCC, 0x1234), kHolds},
          {"before the range", Document(200, 70, 0xEDCC, 0x1234), kNoMatch},
          {"last word of the range", Document(70, 10, 0xEDCC, 0x1234), kHolds},
          {"behind the range", Document(68, 10, 0xEDCC, 0x1234), kNoMatch},
          {"latest end", Document(2016, 10, 0xEDCC, 0x1234), kHolds},
          {"end too late", Document(2017, 11, 0xEDCC, 0x1234), kNoMatch},
          {"nothing between", Document(68, 68, 0xEDCC, 0x1234), kNoMatch},
          {"end met by no step", Document(201, 10, 0xEDCC, 0x1234), kNoMatch},
          // 65536, which no check value equals.
          {"sum of 0", Document(200, 10, 0, 0), kNoMatch},
          {"sum of 1", Document(200, 10, 0xFFFF, 1), kHolds},
          // From 202 to 232 in steps through 65534 and on, which the file has to hold.
          {"range that wraps", Document(198, 200, 0xEDCC, 0x1234, 40000, whole + 200), kHolds},
          {"its file too short", Document(198, 200, 0xEDCC, 0x1234, 40000, whole), kNoMatch},
      });
  ExpectAnswersWhenCut(HeaderChecksumProbe, Document(80, 10, 0xEDCC, 0x1234), {{112, kHolds}});
}

TEST(HeaderChecksum, RangeOfOddLengthIsNotRead) {
  MemoryHandle handle(Document(201, 10, 0xEDCC, 0x1234, 100, 1 << 20));
  EXPECT_EQ(RunProbe(HeaderChecksumProbe, handle), kNoMatch);
  EXPECT_LE(handle.bytesRead, kDefaultStreamBuffer);
}

}  // namespace
}  // namespace fi
