#include "probes/system/intel_hex.h"

#include <cstddef>
#include <cstdint>

#include "stream/line_pattern.h"
#include "stream/text_view.h"

namespace fi {
namespace {

int HexDigit(char c) {
  if (IsDigit(c)) return c - '0';
  const char lower = ToLower(c);
  return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
}

// Sum of the bytes that the hexadecimal digits stand for, and the first of them; -1 where there is
// another character.
int SumOfBytes(std::string_view digits, int* first) {
  if (digits.empty() || digits.size() % 2 != 0) return -1;
  int sum = 0;
  for (size_t i = 0; i < digits.size(); i += 2) {
    const int high = HexDigit(digits[i]);
    const int low = HexDigit(digits[i + 1]);
    if (high < 0 || low < 0) return -1;
    if (i == 0) *first = high * 16 + low;
    sum += high * 16 + low;
  }
  return sum;
}

// A record of an object file: its length, and a checksum that makes the sum of all bytes 00 (Intel)
// or FF (Motorola).
bool IsObjectRecord(std::string_view line) {
  const bool isIntel = line.starts_with(':');
  if (!isIntel && !BeginsLike(line, "S9")) return false;
  const std::string_view digits = line.substr(isIntel ? 1 : 2);
  // Besides what the length counts: length, address, type and checksum; or the length alone.
  const size_t besides = isIntel ? 5 : 1;
  int length = 0;
  const int sum = SumOfBytes(digits, &length);
  return sum >= 0 && digits.size() / 2 == static_cast<size_t>(length) + besides &&
         (sum & 0xFF) == (isIntel ? 0x00 : 0xFF);
}

}  // namespace

bool IsObjectText(std::string_view text) {
  constexpr uint32_t kEnough = 8;
  const size_t lastLine = text.find_last_of("\r\n");
  if (lastLine == std::string_view::npos) return false;
  Lines lines(text.substr(0, lastLine + 1));
  std::string_view line;
  uint32_t count = 0;
  while (count < kEnough && lines.Next(&line)) {
    if (!IsObjectRecord(TrimBlanks(line))) return false;
    ++count;
  }
  return count > 0;
}

}  // namespace fi
