#include "probes/media/iso_media.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <string>

#include "platform/format_ids.h"
#include "tests/support/probe_run.h"

namespace fi {
namespace {

using testing::BigEndian;
using testing::ExpectAnswers;
using testing::ExpectAnswersWhenCut;
using testing::MemoryHandle;
using testing::RunProbe;

// A box of a stated size with a major brand and compatible ones behind the minor version.
std::string Box(uint32_t size, const std::string& major,
                std::initializer_list<const char*> brands) {
  std::string box = BigEndian(size, 4) + "ftyp" + major + BigEndian(512, 4);
  for (const char* brand : brands) box += brand;
  return box;
}

TEST(IsoMedia, BrandsInTheirPlaces) {
  ExpectAnswers(
      IsoMediaProbe,
      {
          {"mp41", Box(16, "mp41", {}), kFormatMp4},
          {"mp42", Box(24, "mp42", {"qt  ", "mp71"}), kFormatMp4},
          {"mp71", Box(16, "mp71", {}), kFormatMp4Mpeg7},
          {"QuickTime", Box(20, "qt  ", {"mp42"}), kFormatQuickTimeMovie},
          {"heim", Box(20, "heim", {"mp42"}), kFormatHeif},
          {"heic as the major brand", Box(16, "heic", {}), kFormatIsoMedia},
          {"heic as both", Box(24, "heic", {"mif1", "heic"}), kFormatHeif},
          {"heim as a compatible brand", Box(24, "mif1", {"heim", "isom"}), kFormatIsoMedia},
          {"heic before mp42", Box(24, "mif1", {"heic", "mp42"}), kFormatHeif},
          {"mp42 before heic", Box(24, "mif1", {"mp42", "heic"}), kFormatMp4},
          {"compatible mp41", Box(24, "isom", {"isom", "mp41"}), kFormatMp4},
          {"compatible mp71", Box(24, "isom", {"mp71", "mp42"}), kFormatMp4Mpeg7},
          {"compatible QuickTime", Box(24, "isom", {"qt  ", "mp42"}), kFormatQuickTimeMovie},
          {"no compatible brands", Box(16, "isom", {"mp42"}), kFormatIsoMedia},
          {"behind the box", Box(20, "isom", {"iso2", "mp42"}), kFormatIsoMedia},
          {"half a brand of the box", Box(22, "isom", {"iso2", "mp42"}), kFormatMp4},
          {"minor version is no brand", BigEndian(24, 4) + "ftypisommp42isomiso2", kFormatIsoMedia},
          {"upper case", Box(20, "isom", {"MP42"}), kFormatIsoMedia},
          {"largest size", Box(UINT32_MAX, "isom", {"iso2"}), kFormatIsoMedia},
          {"size 15", Box(15, "mp42", {}), kNoMatch},
          {"size 8", Box(8, "mp42", {}), kNoMatch},
          {"size in 64 bits", Box(1, "mp42", {}), kNoMatch},
          {"another box", BigEndian(16, 4) + "moovmp42", kNoMatch},
      });
}

TEST(IsoMedia, CutAnywhere) {
  ExpectAnswersWhenCut(IsoMediaProbe, Box(24, "isom", {"iso2", "mp42"}),
                       {{8, kFormatIsoMedia}, {24, kFormatMp4}});
  ExpectAnswersWhenCut(IsoMediaProbe, Box(16, "heim", {}),
                       {{8, kFormatIsoMedia}, {12, kFormatHeif}});
  // The major brand stands in for the compatible one that is cut.
  ExpectAnswersWhenCut(
      IsoMediaProbe, Box(24, "heic", {"mif1", "heic"}),
      {{8, kFormatIsoMedia}, {12, kFormatHeif}, {20, kFormatIsoMedia}, {24, kFormatHeif}});
}

TEST(IsoMedia, WalkEnds) {
  MemoryHandle handle(Box(UINT32_MAX, "isom", {}) + std::string(1 << 20, 'b') + "mp42");
  EXPECT_EQ(RunProbe(IsoMediaProbe, handle), kFormatIsoMedia);
  EXPECT_LE(handle.bytesRead, 68u * 1024);
}

}  // namespace
}  // namespace fi
