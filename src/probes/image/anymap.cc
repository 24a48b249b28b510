#include "probes/image/anymap.h"

#include <optional>
#include <string_view>

#include "registry/format_ids.h"
#include "stream/file_bytes.h"
#include "stream/text_view.h"

namespace fi {
namespace {

constexpr size_t kMaxHeader = 512;
constexpr uint32_t kMaxValue = 65535;  // of an extent and of a sample

// What the header holds behind the two bytes of the kind.
class Header {
 public:
  explicit Header(std::string_view bytes) : bytes_(bytes) {}

  // The number behind white space and comments. None unless it lies between 1 and kMaxValue, with
  // white space or the end of the data behind it.
  std::optional<uint32_t> Number() {
    if (!SkipWhiteSpaceAndComments()) return std::nullopt;
    uint32_t value = 0;
    size_t digits = 0;
    for (; pos_ < bytes_.size() && IsDigit(bytes_[pos_]); ++pos_, ++digits) {
      value = value * 10 + static_cast<uint32_t>(bytes_[pos_] - '0');
      if (value > kMaxValue) return std::nullopt;
    }
    if (digits == 0 || value == 0) return std::nullopt;
    if (pos_ < bytes_.size() && !IsWhiteSpace(bytes_[pos_])) return std::nullopt;
    return value;
  }

  // Whether only digits, white space and comments follow.
  bool IsPlain() {
    while (pos_ < bytes_.size()) {
      if (!SkipWhiteSpaceAndComments()) break;
      if (pos_ < bytes_.size() && !IsDigit(bytes_[pos_])) return false;
      while (pos_ < bytes_.size() && IsDigit(bytes_[pos_])) ++pos_;
    }
    return pos_ == bytes_.size();
  }

  size_t position() const { return pos_; }

 private:
  // False where there is no white space to skip.
  bool SkipWhiteSpaceAndComments() {
    const size_t start = pos_;
    while (pos_ < bytes_.size() && (IsWhiteSpace(bytes_[pos_]) || (pos_ > start && AtComment()))) {
      if (AtComment()) {
        const size_t end = bytes_.find_first_of("\r\n", pos_);
        pos_ = end == std::string_view::npos ? bytes_.size() : end;
      } else {
        ++pos_;
      }
    }
    return pos_ > start;
  }

  bool AtComment() const { return bytes_[pos_] == '#'; }

  std::string_view bytes_;
  size_t pos_ = 2;
};

// Bytes of a picture whose samples are not written as text.
uint64_t RasterSize(char kind, uint64_t width, uint64_t height, uint32_t maxValue) {
  if (kind == '4') return (width + 7) / 8 * height;
  return width * height * (kind == '6' ? 3 : 1) * (maxValue > 255 ? 2 : 1);
}

bool IsAnymap(IdentificationStream* stream, std::string_view bytes) {
  const char kind = bytes[1];
  Header header(bytes);
  const auto width = header.Number();
  const auto height = header.Number();
  if (!width || !height) return false;
  uint32_t maxValue = 1;
  if (kind != '1' && kind != '4') {
    const auto value = header.Number();
    if (!value) return false;
    maxValue = *value;
  }
  if (kind <= '3') return header.IsPlain();
  // A byte of white space ends the header.
  const uint64_t needed = header.position() + 1 + RasterSize(kind, *width, *height, maxValue);
  return needed <= FileSize(stream);
}

}  // namespace

FormatId AnymapProbe(IdentificationStream* stream) {
  if (IdStreamSeek(stream, 0, kIoFromStart) != 0 || IdStreamGetByte(stream) != 'P') return kNoMatch;
  const FileBytes<kMaxHeader> file(stream, 0);
  const std::string_view bytes = file.View();
  if (bytes.size() < 3 || bytes[1] < '1' || bytes[1] > '7' || !IsWhiteSpace(bytes[2]))
    return kNoMatch;
  const bool matches =
      bytes[1] == '7' ? bytes.find("\nWIDTH ") != std::string_view::npos : IsAnymap(stream, bytes);
  return matches ? kFormatPortableAnymap : kNoMatch;
}

}  // namespace fi
