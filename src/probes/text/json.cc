#include "probes/text/json.h"

#include <cstdint>

#include "registry/format_ids.h"
#include "stream/text_view.h"

namespace fi {
namespace {

constexpr uint32_t kMaxDepth = 64;  // bits of the stack below

// How the reading of a part ended: whole, at a break of the grammar, or at the end of the text.
enum class Read : uint8_t { kWhole, kFault, kEnd };

bool IsJsonSpace(char c) { return IsSpaceOrTab(c) || IsLineEnd(c); }

// Reads a text token by token. A stack of bits says of each open level whether it is an object.
class Scan {
 public:
  explicit Scan(std::string_view text) : rest_(text) {}

  // Reads a value with everything inside.
  Read Value() {
    Read read = Open();
    while (read == Read::kWhole && depth_ > 0) read = Step();
    return read;
  }

  bool OnlySpaceLeft() {
    SkipJsonSpace();
    return rest_.empty();
  }

  // Values that stand inside others, so far.
  uint32_t members() const { return members_; }

 private:
  enum class Wants : uint8_t { kFirst, kNext, kSeparator };

  void SkipJsonSpace() {
    while (!rest_.empty() && IsJsonSpace(rest_.front())) rest_.remove_prefix(1);
  }

  bool InObject() const { return (objects_ >> (depth_ - 1) & 1) != 0; }

  // The next thing inside the innermost level.
  Read Step() {
    SkipJsonSpace();
    if (rest_.empty()) return Read::kEnd;
    const char close = InObject() ? '}' : ']';
    if (rest_.front() == close && wants_ != Wants::kNext) {
      rest_.remove_prefix(1);
      --depth_;
      if (depth_ > 0) ++members_;
      wants_ = Wants::kSeparator;
      return Read::kWhole;
    }
    if (wants_ == Wants::kSeparator) {
      if (rest_.front() != ',') return Read::kFault;
      rest_.remove_prefix(1);
      wants_ = Wants::kNext;
      return Read::kWhole;
    }
    if (!InObject()) return Open();
    const Read key = Key();
    return key == Read::kWhole ? Open() : key;
  }

  Read Key() {
    if (rest_.front() != '"') return Read::kFault;
    if (const Read read = String(); read != Read::kWhole) return read;
    SkipJsonSpace();
    if (rest_.empty()) return Read::kEnd;
    if (rest_.front() != ':') return Read::kFault;
    rest_.remove_prefix(1);
    return Read::kWhole;
  }

  // Reads a value that is no collection, or goes into one.
  Read Open() {
    SkipJsonSpace();
    if (rest_.empty()) return Read::kEnd;
    const char c = rest_.front();
    if (c == '{' || c == '[') {
      if (depth_ == kMaxDepth) return Read::kFault;
      const uint64_t bit = uint64_t{1} << depth_;
      objects_ = c == '{' ? objects_ | bit : objects_ & ~bit;
      ++depth_;
      rest_.remove_prefix(1);
      wants_ = Wants::kFirst;
      return Read::kWhole;
    }
    const Read read = Scalar(c);
    if (read != Read::kWhole) return read;
    if (depth_ > 0) ++members_;
    wants_ = Wants::kSeparator;
    return read;
  }

  Read Scalar(char first) {
    switch (first) {
      case '"':
        return String();
      case 't':
        return Literal("true");
      case 'f':
        return Literal("false");
      case 'n':
        return Literal("null");
      default:
        return Number();
    }
  }

  Read Literal(std::string_view word) {
    if (rest_.size() < word.size()) return word.starts_with(rest_) ? Read::kEnd : Read::kFault;
    if (!rest_.starts_with(word)) return Read::kFault;
    rest_.remove_prefix(word.size());
    return Read::kWhole;
  }

  Read String() {
    size_t at = 1;
    for (; at < rest_.size() && rest_[at] != '"'; ++at) {
      if (static_cast<unsigned char>(rest_[at]) < ' ') return Read::kFault;
      if (rest_[at] != '\\') continue;
      ++at;
      if (at == rest_.size()) return Read::kEnd;
      constexpr std::string_view kEscapes = "\"\\/bfnrtu";
      if (kEscapes.find(rest_[at]) == std::string_view::npos) return Read::kFault;
      if (rest_[at] != 'u') continue;
      for (int digit = 0; digit < 4; ++digit) {
        ++at;
        if (at == rest_.size()) return Read::kEnd;
        if (!IsHexDigit(rest_[at])) return Read::kFault;
      }
    }
    if (at >= rest_.size()) return Read::kEnd;
    rest_.remove_prefix(at + 1);
    return Read::kWhole;
  }

  char Front() const { return rest_.empty() ? '\0' : rest_.front(); }

  // One digit or more.
  Read Digits() {
    if (rest_.empty()) return Read::kEnd;
    if (!IsDigit(Front())) return Read::kFault;
    while (IsDigit(Front())) rest_.remove_prefix(1);
    return Read::kWhole;
  }

  Read Number() {
    if (Front() == '-') rest_.remove_prefix(1);
    const bool zero = Front() == '0';
    const size_t before = rest_.size();
    Read read = Digits();
    if (zero && before - rest_.size() > 1) return Read::kFault;
    if (read == Read::kWhole && Front() == '.') {
      rest_.remove_prefix(1);
      read = Digits();
    }
    if (read == Read::kWhole && ToLower(Front()) == 'e') {
      rest_.remove_prefix(1);
      if (Front() == '+' || Front() == '-') rest_.remove_prefix(1);
      read = Digits();
    }
    return read;
  }

  std::string_view rest_;
  uint64_t objects_ = 0;
  uint32_t depth_ = 0;
  uint32_t members_ = 0;
  Wants wants_ = Wants::kFirst;
};

}  // namespace

FormatId JsonProbe(std::string_view text, bool isCut) {
  text = SkipSpace(text);
  if (text.empty() || (text.front() != '{' && text.front() != '[')) return kNoMatch;
  const bool isArray = text.front() == '[';
  Scan scan(text);
  const Read read = scan.Value();
  if (read == Read::kEnd && isCut) {
    return scan.members() >= (isArray ? 2u : 1u) ? kFormatJson : kNoMatch;
  }
  if (read != Read::kWhole || !scan.OnlySpaceLeft()) return kNoMatch;
  // "[]" alone may be anything.
  return isArray && scan.members() == 0 ? kNoMatch : kFormatJson;
}

}  // namespace fi
