#include "probes/content/version_digit.h"

#include <gtest/gtest.h>

#include <string>

#include "platform/format_ids.h"
#include "tests/support/probe_run.h"

namespace fi {
namespace {

using testing::ExpectAnswers;
using testing::MemoryHandle;
using testing::RunProbe;

constexpr int64_t kBehindTag = 8;

TEST(VersionDigit, TakesTheFirstDigit) {
  ExpectAnswers(VersionDigitProbe,
                {
                    {"3", "<MIFFile 3.00>", kFormatMif3},
                    {"4", "<MIFFile 4.00>", kFormatMif4},
                    {"5", "<MIFFile 5.50>", kFormatMif5},
                    {"6", "<MIFFile 6.00>", kFormatMif6},
                    {"Japanese 3", "<MIFFile JP3.00>", kFormatMifJapanese3},
                    {"Japanese 4", "<MIFFile jp 4.00>", kFormatMifJapanese4},
                    {"Japanese 5", "<MIFFile Jp5>", kFormatMifJapanese5},
                    {"Japanese 6", "<MIFFile JP6.00>", kFormatMifJapanese6},
                    {"J behind J", "<MIFFile JJP3>", kFormatMifJapanese3},
                    {"J without P", "<MIFFile J3P>", kFormatMif3},
                    {"J and P apart", "<MIFFile J P3>", kFormatMif3},
                    {"digit behind J", "<MIFFile J43>", kFormatMif4},
                    {"7", "<MIFFile 7.00>", kFormatMifOther},
                    {"2015", "<MIFFile 2015>", kFormatMifOther},
                    {"10 is another version", "<MIFFile 10.3>", kFormatMifOther},
                    {"tag ends", "<MIFFile >3", kFormatMifOther},
                    {"comment", "<MIFFile #3", kFormatMifOther},
                    {"LF", "<MIFFile \n3", kFormatMifOther},
                    {"CR behind J", "<MIFFile J\r3", kFormatMifOther},
                    {"end of data", "<MIFFile ", kFormatMifOther},
                    {"end of data behind J", "<MIFFile J", kFormatMifOther},
                },
                kBehindTag);
}

TEST(VersionDigit, SearchEnds) {
  MemoryHandle near("<MIFFile" + std::string(65535, ' ') + "3");
  EXPECT_EQ(RunProbe(VersionDigitProbe, near, kBehindTag), kFormatMif3);
  MemoryHandle far("<MIFFile" + std::string(1 << 20, ' ') + "3");
  EXPECT_EQ(RunProbe(VersionDigitProbe, far, kBehindTag), kFormatMifOther);
  EXPECT_LE(far.bytesRead, 66u * 1024);
}

}  // namespace
}  // namespace fi
