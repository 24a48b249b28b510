#include "probes/unidentified/escape_sequence.h"

#include <string_view>

#include "formatid/io.h"

namespace fi {

FormatId EscapeSequenceProbe(IdentificationStream* stream) {
  constexpr FormatId kDocument = 1019;
  constexpr uint32_t kMaxZeros = 64 * 1024;  // leading zeros of the number
  if (IdStreamSeek(stream, 0, kIoFromStart) != 0) return kNoMatch;
  for (const char expected : std::string_view("\x1B[")) {
    if (IdStreamGetByte(stream) != static_cast<uint8_t>(expected)) return kNoMatch;
  }
  uint32_t byte = IdStreamGetByte(stream);
  for (uint32_t i = 0; i < kMaxZeros && byte == '0'; ++i) byte = IdStreamGetByte(stream);
  if (byte != '1' || IdStreamGetByte(stream) != '$') return kNoMatch;
  return IdStreamGetByte(stream) == 'K' ? kDocument : kNoMatch;
}

}  // namespace fi
