#include "probes/content/sfnt.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/support/probe_run.h"

namespace fi {
namespace {

using testing::BigEndian;
using testing::ExpectAnswers;
using testing::ExpectAnswersWhenCut;

constexpr FormatId kPassed = 1;

FormatId AtStart(IdentificationStream* stream) {
  return SfntDirectoryProbe(stream, 0) ? kPassed : kNoMatch;
}

std::string Font(const std::vector<std::string>& tags, uint32_t count) {
  std::string font = BigEndian(0x00010000, 4) + BigEndian(count, 2) + std::string(6, '\0');
  for (const std::string& tag : tags) font += tag + std::string(12, 'h');
  return font;
}

std::string Font(const std::vector<std::string>& tags) {
  return Font(tags, static_cast<uint32_t>(tags.size()));
}

TEST(Sfnt, NeedsThreeTablesInOrder) {
  const std::vector<std::string> many = {"BASE", "DSIG", "GDEF", "GPOS", "GSUB", "LTSH",
                                         "OS/2", "VDMX", "cmap", "cvt ", "fpgm", "gasp",
                                         "glyf", "hdmx", "head", "hhea", "hmtx", "kern",
                                         "loca", "maxp", "name", "post", "prep"};
  ExpectAnswers(AtStart, {
                             {"the three alone", Font({"head", "hhea", "name"}), kPassed},
                             {"among others", Font(many), kPassed},
                             {"hhea first", Font({"hhea", "head", "name"}), kNoMatch},
                             {"name missing", Font({"head", "hhea", "nam "}), kNoMatch},
                             {"name behind the count", Font({"head", "hhea", "name"}, 2), kNoMatch},
                             {"no tables", Font({"head", "hhea", "name"}, 0), kNoMatch},
                             {"count beyond the file", Font({"head", "hhea"}, 0xFFFF), kNoMatch},
                             {"empty", "", kNoMatch},
                         });
}

TEST(Sfnt, CutAnywhere) {
  const std::string font = Font({"cmap", "head", "hhea", "name"});
  ExpectAnswersWhenCut(AtStart, font, {{font.size() - 12, kPassed}});
}

TEST(Sfnt, FontInsideAFile) {
  const auto at5 = [](IdentificationStream* stream) -> FormatId {
    return SfntDirectoryProbe(stream, 5) ? kPassed : kNoMatch;
  };
  const std::string font = Font({"head", "hhea", "name"});
  ExpectAnswers(at5, {{"there", "xxxxx" + font, kPassed}, {"elsewhere", font, kNoMatch}});
}

}  // namespace
}  // namespace fi
