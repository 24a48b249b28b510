#include "probes/content/eps_preview.h"

#include <gtest/gtest.h>

#include <string>

#include "platform/format_ids.h"
#include "tests/support/probe_run.h"

namespace fi {
namespace {

using testing::ExpectAnswers;
using testing::ExpectAnswersWhenCut;
using testing::LittleEndian;

// `metafile` and `tiff` are offsets.
std::string Header(uint32_t metafile, uint32_t tiff) {
  return "\xC5\xD0\xD3\xC6" + LittleEndian(30, 4) + LittleEndian(500, 4) +
         LittleEndian(metafile, 4) + LittleEndian(10, 4) + LittleEndian(tiff, 4) +
         LittleEndian(0, 4);
}

TEST(EpsPreview, NeedsATiffImage) {
  ExpectAnswers(EpsPreviewProbe,
                {
                    {"TIFF", Header(0, 530), kFormatEpsWithTiffPreview},
                    {"in the last byte", Header(0, 0x01000000), kFormatEpsWithTiffPreview},
                    {"metafile only", Header(530, 0), kNoMatch},
                    {"another magic", "\xC5\xD0\xD3\xC7" + Header(0, 530).substr(4), kNoMatch},
                });
  // A header that is cut counts as one with an image, as long as its magic is there.
  ExpectAnswersWhenCut(EpsPreviewProbe, Header(530, 0),
                       {{4, kFormatEpsWithTiffPreview}, {24, kNoMatch}});
}

}  // namespace
}  // namespace fi
