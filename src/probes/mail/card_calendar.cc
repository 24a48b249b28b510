#include "probes/mail/card_calendar.h"

#include <array>
#include <string_view>

#include "formatid/io.h"
#include "registry/format_ids.h"

namespace fi {
namespace {

// Blanks that may stand on each side of the colon. Real files have none.
constexpr uint32_t kMaxBlanks = 64 * 1024;

constexpr uint32_t kCaseBit = 0x20;

bool IsLetterInAnyCase(uint32_t byte, char lowerCase) {
  return (byte | kCaseBit) == static_cast<uint8_t>(lowerCase);
}

// The first byte behind any blanks.
uint32_t ByteBehindBlanks(IdentificationStream* stream) {
  uint32_t byte = IdStreamGetByte(stream);
  for (uint32_t i = 0; i < kMaxBlanks && (byte == ' ' || byte == '\t'); ++i) {
    byte = IdStreamGetByte(stream);
  }
  return byte;
}

bool BeginsWithLetters(const std::array<uint32_t, 8>& bytes, std::string_view lowerCase) {
  for (size_t i = 0; i < lowerCase.size(); ++i) {
    if (!IsLetterInAnyCase(bytes[i], lowerCase[i])) return false;
  }
  return true;
}

}  // namespace

FormatId CardCalendarProbe(IdentificationStream* stream) {
  if (IdStreamSeek(stream, 0, kIoFromStart) != 0) return kNoMatch;
  for (const char letter : std::string_view("begin")) {
    if (!IsLetterInAnyCase(IdStreamGetByte(stream), letter)) return kNoMatch;
  }
  if (ByteBehindBlanks(stream) != ':') return kNoMatch;
  if (!IsLetterInAnyCase(ByteBehindBlanks(stream), 'v')) return kNoMatch;
  std::array<uint32_t, 8> word{};
  for (uint32_t& byte : word) byte = IdStreamGetByte(stream);
  // Deliberate: what follows the eight letters, or the four, is not looked at.
  if (BeginsWithLetters(word, "calendar")) return kFormatICalendar;
  return BeginsWithLetters(word, "card") ? kFormatVCard : kNoMatch;
}

}  // namespace fi
