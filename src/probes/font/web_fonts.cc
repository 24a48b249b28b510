#include "probes/font/web_fonts.h"

#include <string_view>

#include "registry/format_ids.h"
#include "stream/file_bytes.h"

namespace fi {
namespace {

// The mark, the kind of outlines, the size of the file and the number of tables.
bool IsPacked(IdentificationStream* stream, std::string_view mark) {
  constexpr uint32_t kHeaderSize = 44;
  const FileBytes<14> header(stream, 0);
  const uint32_t size = header.DwordBE(8);
  return header.Holds(0, mark) && header.WordBE(12) > 0 && size >= kHeaderSize &&
         size <= FileSize(stream);
}

}  // namespace

FormatId WoffProbe(IdentificationStream* stream) {
  return IsPacked(stream, "wOFF") ? kFormatWoff : kNoMatch;
}

FormatId Woff2Probe(IdentificationStream* stream) {
  return IsPacked(stream, "wOF2") ? kFormatWoff2 : kNoMatch;
}

FormatId EmbeddedOpenTypeProbe(IdentificationStream* stream) {
  const FileBytes<36> header(stream, 0);
  const uint32_t version = header.DwordLE(8);
  const bool isVersion = version == 0x00010000 || version == 0x00020001 || version == 0x00020002;
  if (!isVersion || !header.Holds(34, "LP")) return kNoMatch;
  return header.DwordLE(0) == FileSize(stream) ? kFormatEmbeddedOpenType : kNoMatch;
}

}  // namespace fi
