#include "probes/encoded/yenc.h"

#include <algorithm>
#include <optional>

#include "registry/format_ids.h"

namespace fi {
namespace {

// Larger than any line: numbers stop growing here, so that none wraps.
constexpr uint32_t kLargestNumber = 1'000'000;

struct Header {
  uint32_t part = 0;  // 0: none is named
  uint32_t lineLength = 0;
};

// Moves `text` behind the first `keyword` in it. False, with `text` as it was, where there is none.
bool PassKeyword(std::string_view keyword, std::string_view& text) {
  const size_t found = text.find(keyword);
  if (found == std::string_view::npos) return false;
  text.remove_prefix(found + keyword.size());
  return true;
}

// Takes the number that `text` begins with; 0 where there is none.
// Deliberate: 0 and 9 are no digits and end a number, so that 90 reads as 0 and 10 as 1.
uint32_t TakeNumber(std::string_view& text) {
  uint32_t number = 0;
  while (!text.empty() && text.front() >= '1' && text.front() <= '8') {
    const auto digit = static_cast<uint32_t>(text.front() - '0');
    number = std::min(number * 10 + digit, kLargestNumber);
    text.remove_prefix(1);
  }
  return number;
}

// The fields in the order in which they stand; the part number may be missing.
std::optional<Header> ReadHeader(std::string_view line) {
  Header header;
  if (PassKeyword("part=", line)) header.part = TakeNumber(line);
  if (!PassKeyword("line=", line)) return std::nullopt;
  header.lineLength = TakeNumber(line);
  if (!PassKeyword("size=", line) || !PassKeyword("name=", line)) return std::nullopt;
  return header;
}

}  // namespace

FormatId IdentifyYEnc(LineBuffer& line, IdentificationStream* stream) {
  const std::optional<Header> header = ReadHeader(line.data());
  if (!header) return kNoMatch;
  uint16_t length = ReadLine(line.data(), kLineCapacity, LineEnds::kMarksAndFormFeed, stream);
  if (length == 0) return kNoMatch;

  if (std::string_view(line.data()).find("=ypart ") != std::string_view::npos) {
    if (!IsPlainAsciiLine(line, length)) return kNoMatch;
    // A form feed in the data does not end this line.
    length = ReadLine(line.data(), kLineCapacity, LineEnds::kMarks, stream);
    if (length == 0) return kNoMatch;
  }
  if (length != header->lineLength && length != header->lineLength + 1) {
    // Less than one line of data, which the trailer follows.
    length = ReadLine(line.data(), kLineCapacity, LineEnds::kMarksAndFormFeed, stream);
    if (!std::string_view(line.data()).starts_with("=yend ") || !IsPlainAsciiLine(line, length)) {
      return kNoMatch;
    }
  }
  return header->part >= 2 ? kFormatYEncPart : kFormatYEnc;
}

}  // namespace fi
