#include "probes/document/mif.h"

#include "registry/format_ids.h"

namespace fi {
namespace {

// How far the version is searched for; tags of real files end within 20 bytes.
constexpr uint32_t kMaxBytes = 64 * 1024;

FormatId Version(uint32_t digit, bool japanese) {
  switch (digit) {
    case '3':
      return japanese ? kFormatMifJapanese3 : kFormatMif3;
    case '4':
      return japanese ? kFormatMifJapanese4 : kFormatMif4;
    case '5':
      return japanese ? kFormatMifJapanese5 : kFormatMif5;
    case '6':
      return japanese ? kFormatMifJapanese6 : kFormatMif6;
    default:
      return kFormatMifOther;
  }
}

// Where the search ends without a version.
bool EndsTag(uint32_t byte) {
  return byte == '\n' || byte == '\r' || byte == '#' || byte == '>' || byte == kEndOfData;
}

}  // namespace

FormatId MifProbe(IdentificationStream* stream) {
  bool japanese = false;
  bool behindJ = false;
  for (uint32_t i = 0; i < kMaxBytes; ++i) {
    const uint32_t byte = IdStreamGetByte(stream);
    japanese = japanese || (behindJ && (byte == 'P' || byte == 'p'));
    behindJ = byte == 'J' || byte == 'j';
    if (EndsTag(byte)) break;
    // Deliberate: the first digit decides, so that version 10 counts as another version.
    if (byte >= '0' && byte <= '9') return Version(byte, japanese);
  }
  return kFormatMifOther;
}

}  // namespace fi
