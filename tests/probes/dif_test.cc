#include "probes/content/dif.h"

#include <gtest/gtest.h>

#include <string>

#include "platform/format_ids.h"
#include "tests/support/bytes.h"
#include "tests/support/probe_run.h"

namespace fi {
namespace {

using testing::Bytes;
using testing::ExpectAnswers;
using testing::ExpectAnswersWhenCut;

const std::string kHeader = "TABLE\n0,1\n\"X\"\nVECTORS\n0,2\n\"\"\nTUPLES\n0,3\n\"\"\n";
const std::string kSample = kHeader + "DATA\n";

std::string Repeated(const std::string& text, size_t count) {
  std::string result;
  while (count-- > 0) result += text;
  return result;
}

TEST(Dif, NeedsItsFourNames) {
  const std::string longLine(79, 'x');
  ExpectAnswers(DifProbe,
                {
                    {"LF", kSample, kFormatDif},
                    {"CR LF", "TABLE\r\n0,1\r\nVECTORS\r\nTUPLES\r\nDATA\r\n", kFormatDif},
                    {"LF CR", "TABLE\n\rVECTORS\n\rTUPLES\n\rDATA\n\r", kFormatDif},
                    {"CR", "TABLE\rVECTORS\rTUPLES\rDATA\r", kFormatDif},
                    {"any order", "DATA\nTUPLES\nVECTORS\nTABLE\n", kFormatDif},
                    {"more behind the names", "TABLES\nVECTORS 1\nTUPLES,\nDATABASE\n", kFormatDif},
                    {"control bytes in a line", "\x01\n" + kSample, kFormatDif},
                    {"DATA in line 20", kHeader + Repeated("\n", 10) + "DATA\n", kFormatDif},
                    {"DATA in line 21", kHeader + Repeated("\n", 11) + "DATA\n", kNoMatch},
                    {"lower case", "table\nvectors\ntuples\ndata\n", kNoMatch},
                    {"name not at the start of its line", kHeader + " DATA\n", kNoMatch},
                    {"one name missing", "TABLE\nVECTORS\nTABLE\nDATA\n", kNoMatch},
                    {"last line without an end", kHeader + "DATA", kNoMatch},
                    {"last line ended by NUL", kHeader + Bytes("DATA\0\n"), kNoMatch},
                    {"NUL before", Bytes("x\0y\n") + kSample, kNoMatch},
                    {"a name where a long line is cut", longLine + kSample, kFormatDif},
                    {"a name one byte on", longLine + "x" + kSample, kNoMatch},
                    // What is left of a line of the full length is an empty line.
                    {"lines of the full length",
                     Repeated(longLine + "\n", 8) + "TABLE\nVECTORS\nTUPLES\nDATA\n", kFormatDif},
                    {"one such line more",
                     Repeated(longLine + "\n", 8) + "\nTABLE\nVECTORS\nTUPLES\nDATA\n", kNoMatch},
                });
}

TEST(Dif, CutAnywhere) {
  ExpectAnswersWhenCut(DifProbe, kSample + "0,0\n\"\"\n", {{kSample.size(), kFormatDif}});
}

}  // namespace
}  // namespace fi
