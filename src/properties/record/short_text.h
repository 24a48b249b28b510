// A text of up to 63 characters that is put together, as the value of a property is. What does not
// fit is left out.
#ifndef FI_PROPERTIES_RECORD_SHORT_TEXT_H_
#define FI_PROPERTIES_RECORD_SHORT_TEXT_H_

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace fi {

class ShortText {
 public:
  ShortText() = default;
  explicit ShortText(std::string_view text) { Append(text); }

  std::string_view view() const { return {text_.data(), size_}; }

  void Append(std::string_view text) {
    const size_t count = std::min(text.size(), text_.size() - size_);
    std::copy_n(text.data(), count, text_.data() + size_);
    size_ += count;
  }

  // In lower case, as far as it is ASCII.
  void AppendLower(std::string_view text) {
    for (const char c : text) {
      const char lower = c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
      Append({&lower, 1});
    }
  }

  // In decimal.
  void AppendNumber(uint64_t number) {
    std::array<char, 20> digits;
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr;
    Append({digits.data(), static_cast<size_t>(end - digits.data())});
  }

 private:
  std::array<char, 63> text_{};
  size_t size_ = 0;
};

}  // namespace fi

#endif  // FI_PROPERTIES_RECORD_SHORT_TEXT_H_
