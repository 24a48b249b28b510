#include "probes/model/iges.h"

#include <algorithm>

#include "registry/format_ids.h"
#include "stream/text_view.h"

namespace fi {
namespace {

constexpr size_t kRecord = 80;  // columns
constexpr size_t kSection = 72;

// The number 1 in seven columns, filled with blanks or zeros.
bool IsFirstRecord(std::string_view number) {
  if (number.back() != '1') return false;
  number.remove_suffix(1);
  return std::all_of(number.begin(), number.end(),
                     [&number](char c) { return c == number[0] && (c == ' ' || c == '0'); });
}

// Records end in line ends, or follow one another without.
bool RecordEnds(std::string_view behind) {
  if (behind.empty()) return false;
  if (IsLineEnd(behind[0])) return true;
  return behind.size() > kSection && (behind[kSection] == 'S' || behind[kSection] == 'G');
}

}  // namespace

FormatId IgesProbe(std::string_view text) {
  if (text.size() <= kRecord || text[kSection] != 'S') return kNoMatch;
  const std::string_view record = text.substr(0, kRecord);
  const bool printable = std::none_of(record.begin(), record.end(),
                                      [](char c) { return static_cast<unsigned char>(c) < ' '; });
  if (!printable || !IsFirstRecord(record.substr(kSection + 1))) return kNoMatch;
  return RecordEnds(text.substr(kRecord)) ? kFormatIges : kNoMatch;
}

}  // namespace fi
