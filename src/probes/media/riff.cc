#include "probes/media/riff.h"

#include <algorithm>
#include <string_view>

#include "registry/format_ids.h"
#include "stream/file_bytes.h"

namespace fi {
namespace {

constexpr size_t kFormOffset = 8;
constexpr size_t kChunkOffset = 12;
constexpr uint32_t kUnknownSize = 0xFFFFFFFF;  // of a file that was written as a stream

using Header = FileBytes<16>;

constexpr struct {
  std::string_view form;
  FormatId id;
} kForms[] = {
    {"ACON", kFormatAnimatedCursor}, {"AVI ", kFormatAvi},  {"RMID", kFormatRiffMidi},
    {"sfbk", kFormatSoundFont},      {"WAVE", kFormatWave},
};

// kFormatRiff where the form has no identifier of its own.
FormatId IdOfForm(const Header& header) {
  for (const auto& entry : kForms) {
    if (header.Holds(kFormOffset, entry.form)) return entry.id;
  }
  if (header.Holds(kFormOffset, "WEBP")) {
    const bool isImage = header.Holds(kChunkOffset, "VP8 ") || header.Holds(kChunkOffset, "VP8L") ||
                         header.Holds(kChunkOffset, "VP8X");
    return isImage ? kFormatWebP : kFormatRiff;
  }
  // Of a drawing the fourth character is its version; CDRX is clip art.
  const bool isDrawing = header.Holds(kFormOffset, "CDR") || header.Holds(kFormOffset, "cdr");
  return isDrawing && !header.Holds(kFormOffset, "CDRX") ? kFormatCorelDraw3 : kFormatRiff;
}

bool IsText(std::string_view bytes) {
  return std::all_of(bytes.begin(), bytes.end(), [](char c) { return c >= 0x20 && c <= 0x7E; });
}

}  // namespace

FormatId RiffProbe(IdentificationStream* stream) {
  const Header header(stream, 0);
  if (!header.Has(kFormOffset, 4) || !IsText(header.View().substr(kFormOffset, 4))) return kNoMatch;
  const FormatId id = IdOfForm(header);
  const uint32_t size = header.DwordLE(4);
  if (size == 0 || size == kUnknownSize) return id;
  // Some writers leave out the byte that makes the last chunk even.
  if (uint64_t{size} + kFormOffset <= FileSize(stream) + 1) return id;
  // A file that is cut short is still of a form with a name; prose has letters for its size.
  return id != kFormatRiff && !IsText(header.View().substr(4, 4)) ? id : kNoMatch;
}

FormatId OtherRiffFormProbe(IdentificationStream* stream) {
  constexpr struct {
    std::string_view form;
    FormatId id;
  } kOthers[] = {
      {"CDDA", kFormatCompactDiscTrack}, {"CDXA", kFormatVideoCdTrack},
      {"CMX1", kFormatCorelExchange},    {"DLS ", kFormatDownloadableSounds},
      {"PAL ", kFormatRiffPalette},      {"WEBP", kFormatWebP},
  };
  const Header header(stream, 0);
  for (const auto& entry : kOthers) {
    if (header.Holds(kFormOffset, entry.form)) return entry.id;
  }
  return kNoMatch;
}

}  // namespace fi
