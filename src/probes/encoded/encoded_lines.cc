#include "probes/encoded/encoded_lines.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>

namespace fi {
namespace {

constexpr uint8_t kNoValue = 255;
constexpr size_t kMostDataCharacters = 63;
constexpr size_t kLongestBinHexLine = 65;
constexpr size_t kShortestFullBinHexLine = 46;

using Alphabet = std::array<uint8_t, 256>;

struct CharacterRange {
  char first;
  char last;
};

// Values count up through the ranges, in their order.
constexpr Alphabet MakeAlphabet(std::initializer_list<CharacterRange> ranges) {
  Alphabet alphabet{};
  alphabet.fill(kNoValue);
  uint8_t value = 0;
  for (const CharacterRange& range : ranges) {
    for (char c = range.first; c <= range.last; ++c) alphabet[static_cast<uint8_t>(c)] = value++;
  }
  return alphabet;
}

constexpr size_t CharactersOf(const Alphabet& alphabet) {
  return static_cast<size_t>(std::count_if(alphabet.begin(), alphabet.end(),
                                           [](uint8_t value) { return value != kNoValue; }));
}

// The backquote stands for the blank, which mail systems lose at the end of a line.
constexpr Alphabet kUu = [] {
  Alphabet alphabet = MakeAlphabet({{' ', '_'}});
  alphabet['`'] = 0;
  return alphabet;
}();
constexpr Alphabet kXx = MakeAlphabet({{'+', '+'}, {'-', '-'}, {'0', '9'}, {'A', 'Z'}, {'a', 'z'}});
// Deliberate: the colon, the frame of the data, counts as a character of the data at any place;
// otherwise data without a banner would not be found.
constexpr Alphabet kBinHex = MakeAlphabet({{'!', '-'},
                                           {'0', '6'},
                                           {'8', '9'},
                                           {'@', '@'},
                                           {'A', 'N'},
                                           {'P', 'V'},
                                           {'X', '['},
                                           {'`', '`'},
                                           {'a', 'f'},
                                           {'h', 'm'},
                                           {'p', 'r'},
                                           {':', ':'}});
static_assert(CharactersOf(kUu) == 65 && CharactersOf(kXx) == 64 && CharactersOf(kBinHex) == 65);

uint32_t ValueOf(char c, const Alphabet& alphabet) { return alphabet[static_cast<uint8_t>(c)]; }

bool AllOf(std::string_view text, const Alphabet& alphabet) {
  return std::all_of(text.begin(), text.end(),
                     [&](char c) { return ValueOf(c, alphabet) != kNoValue; });
}

// Whether the count of bytes that a line begins with is what its data characters hold. They come in
// groups of four, perhaps with a checksum behind, so that only multiples of three pass.
bool CountHolds(uint32_t count, size_t characters) { return count == characters * 3 / 4; }

// Deliberate: compared as it stands, so that a backquote (64) never is the checksum 0.
bool UuChecksumHolds(std::string_view characters, char checksum) {
  uint32_t sum = 0;
  for (const char c : characters) sum += static_cast<uint32_t>(c - ' ');
  return static_cast<uint32_t>(checksum - ' ') == sum % 64;
}

}  // namespace

bool UuLineTest(std::span<char> line, char sequence) {
  if (line.empty() || line.size() - 1 > kMostDataCharacters) return false;
  const size_t trailing = (line.size() - 1) % 4;
  if (trailing > 1) return false;
  const bool isSequence =
      trailing == 1 && line.front() == 'M' && (sequence == 0 || line.back() == sequence);
  if (isSequence) std::replace(line.begin(), line.end(), ' ', '`');

  const size_t data = line.size() - (isSequence ? 2 : 1);  // a checksum counts in
  const std::string_view text(line.data(), line.size());
  if (!CountHolds(ValueOf(text.front(), kUu), data)) return false;
  if (!AllOf(text.substr(0, data + 1), kUu)) return false;
  return trailing == 0 || isSequence || UuChecksumHolds(text.substr(1, data - 1), text.back());
}

bool XxLineTest(std::string_view line) {
  if (line.empty() || line.size() - 1 > kMostDataCharacters || (line.size() - 1) % 4 != 0) {
    return false;
  }
  return CountHolds(ValueOf(line.front(), kXx), line.size() - 1) && AllOf(line, kXx);
}

bool BinHexLineTest(std::string_view line) {
  if (line.size() < 3 || line.size() > kLongestBinHexLine) return false;
  if (line.size() < kShortestFullBinHexLine && line.back() != ':') return false;
  return AllOf(line.substr(0, line.size() - 1), kBinHex);
}

}  // namespace fi
