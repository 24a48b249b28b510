#include "properties/text/text.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <span>
#include <string_view>

#include "formatid/io.h"
#include "registry/format_ids.h"
#include "stream/buffered_scan.h"
#include "stream/file_bytes.h"

namespace fi {
namespace {

constexpr uint64_t kMostBytes = 256 * 1024;

// Kinds of bytes. The controls of text are BEL to CR and ESC, as terminals and printers take them.
enum : uint8_t { kAscii = 1, kControl = 2, kC1 = 4, kNextLine = 8, kHigh = 16 };

constexpr auto kKinds = [] {
  std::array<uint8_t, 256> kinds{};
  for (size_t byte = 0; byte < kinds.size(); ++byte) {
    uint8_t kind = kHigh;
    if (byte < 0x80) kind = kAscii;
    if (byte < 0x07 || (byte > 0x0D && byte < 0x20 && byte != 0x1B) || byte == 0x7F)
      kind = kControl;
    if (byte >= 0x80 && byte < 0xA0) kind = kC1;
    if (byte == 0x85) kind = kNextLine;  // the line end of ISO 6429
    kinds[byte] = kind;
  }
  return kinds;
}();

// Follows UTF-8 (RFC 3629) from byte to byte.
class Utf8Check {
 public:
  void Take(uint8_t byte) {
    if (more_ > 0) {
      if (byte < low_ || byte > high_) isValid_ = false;
      low_ = 0x80;
      high_ = 0xBF;
      --more_;
    } else if (byte >= 0x80) {
      Lead(byte);
    }
  }

  bool IsBetween() const { return more_ == 0; }

  // A sequence may be cut off where the looking ends, but not where the text does.
  bool IsUtf8(bool isCut) const { return isValid_ && hasSequence_ && (isCut || more_ == 0); }

 private:
  void Lead(uint8_t byte) {
    hasSequence_ = true;
    if (byte < 0xC2 || byte > 0xF4) {
      isValid_ = false;
      return;
    }
    more_ = byte < 0xE0 ? 1 : byte < 0xF0 ? 2 : 3;
    if (byte == 0xE0) low_ = 0xA0;
    if (byte == 0xED) high_ = 0x9F;
    if (byte == 0xF0) low_ = 0x90;
    if (byte == 0xF4) high_ = 0x8F;
  }

  bool isValid_ = true;
  bool hasSequence_ = false;
  int more_ = 0;
  uint8_t low_ = 0x80;
  uint8_t high_ = 0xBF;
};

// Counts the ends of lines, unit by unit.
class LineEnds {
 public:
  void Take(uint32_t unit) {
    if (unit == '\n') {
      ++(wasCr_ ? crLf_ : lf_);
    } else if (wasCr_) {
      ++cr_;
    }
    wasCr_ = unit == '\r';
  }

  bool IsBehindCr() const { return wasCr_; }

  std::string_view Name() {
    if (wasCr_) Take(0);
    const int kinds = (lf_ > 0 ? 1 : 0) + (crLf_ > 0 ? 1 : 0) + (cr_ > 0 ? 1 : 0);
    if (kinds == 0) return "none";
    if (kinds > 1) return "mixed";
    return lf_ > 0 ? "lf" : crLf_ > 0 ? "crlf" : "cr";
  }

 private:
  uint64_t lf_ = 0;
  uint64_t crLf_ = 0;
  uint64_t cr_ = 0;
  bool wasCr_ = false;
};

struct Mark {
  std::string_view bytes;
  std::string_view charset;
};

// The longer before the shorter that begins it.
constexpr Mark kMarks[] = {
    {{"\xFF\xFE\x00\x00", 4}, "utf-32le"},
    {{"\x00\x00\xFE\xFF", 4}, "utf-32be"},
    {"\xEF\xBB\xBF", "utf-8"},
    {"\xFF\xFE", "utf-16le"},
    {"\xFE\xFF", "utf-16be"},
};

// The charset of 16-bit text without a mark, by where its zero bytes stand: most of what such text
// holds is ASCII or of one script.
std::string_view GuessWords(std::string_view head) {
  size_t even = 0;
  size_t odd = 0;
  for (size_t i = 0; i < head.size(); ++i) {
    if (head[i] == '\0') ++(i % 2 == 0 ? even : odd);
  }
  if (odd > even && odd > head.size() / 8) return "utf-16le";
  return even > odd && even > head.size() / 8 ? "utf-16be" : std::string_view();
}

// Reads units of `width` bytes.
uint32_t NextUnit(IdentificationStream* stream, size_t width, bool isBigEndian) {
  uint32_t unit = 0;
  for (size_t i = 0; i < width; ++i) {
    const uint32_t byte = IdStreamGetByte(stream);
    if (byte == kEndOfData) return UINT32_MAX;
    unit |= byte << 8 * (isBigEndian ? width - 1 - i : i);
  }
  return unit;
}

void ReadWideText(IdentificationStream* stream, std::string_view charset, size_t start,
                  PropertySet& out) {
  const size_t width = charset.starts_with("utf-16") ? 2 : 4;
  const bool isBigEndian = charset.ends_with("be");
  if (IdStreamSeek(stream, static_cast<int64_t>(start), kIoFromStart) != 0) return;
  LineEnds ends;
  for (uint64_t read = 0; read < kMostBytes; read += width) {
    const uint32_t unit = NextUnit(stream, width, isBigEndian);
    if (unit == UINT32_MAX) break;
    ends.Take(unit);
  }
  out.Set(Property::kCharset, charset, start > 0 ? "mark" : "bytes", 0);
  out.Set(Property::kLineEnds, ends.Name(), "text");
}

struct ByteText {
  uint8_t kinds = 0;
  bool isUtf8 = false;
  std::string_view lineEnds;
};

// Whether all eight bytes lie in 20 to 7E: nothing that ends a line, and nothing beyond ASCII.
bool IsPlainWord(uint64_t word) {
  constexpr uint64_t kOnes = 0x0101010101010101;
  constexpr uint64_t kTops = 0x80 * kOnes;
  // Without top bits no addition carries into the next byte: one is set by 7F, and by 20 to 7F.
  if ((word & kTops) != 0) return false;
  return (((word + kOnes) | ~(word + 0x60 * kOnes)) & kTops) == 0;
}

// What is told of bytes, piece by piece.
class ByteScan {
 public:
  void Take(std::span<const uint8_t> bytes) {
    constexpr size_t kWord = sizeof(uint64_t);
    size_t at = 0;
    while (at < bytes.size()) {
      uint64_t word = 0;
      if (bytes.size() - at >= kWord) std::memcpy(&word, bytes.data() + at, kWord);
      if (IsPlainWord(word) && utf8_.IsBetween() && !ends_.IsBehindCr()) {
        text_.kinds |= kAscii;
        at += kWord;
        continue;
      }
      const size_t end = at + std::min(kWord, bytes.size() - at);
      for (; at < end; ++at) {
        text_.kinds |= kKinds[bytes[at]];
        utf8_.Take(bytes[at]);
        ends_.Take(bytes[at]);
      }
    }
  }

  ByteText Finish(bool isCut) {
    text_.isUtf8 = utf8_.IsUtf8(isCut);
    text_.lineEnds = ends_.Name();
    return text_;
  }

 private:
  ByteText text_;
  Utf8Check utf8_;
  LineEnds ends_;
};

ByteText ScanBytes(IdentificationStream* stream, size_t start) {
  if (IdStreamSeek(stream, static_cast<int64_t>(start), kIoFromStart) != 0) return {};
  ByteScan scan;
  uint64_t left = kMostBytes;
  while (left > 0) {
    const uint32_t byte = IdStreamGetByte(stream);  // refills the buffer where that is due
    if (byte == kEndOfData) break;
    const auto first = static_cast<uint8_t>(byte);
    scan.Take({&first, 1});
    const uint64_t more =
        std::min<uint64_t>(left - 1, static_cast<uint32_t>(std::max(stream->remaining, 0)));
    scan.Take({stream->next, static_cast<size_t>(more)});
    PassBuffered(stream, static_cast<uint32_t>(more));
    left -= 1 + more;
  }
  return scan.Finish(left == 0);
}

// EBCDIC has its blank at 40 and letters from 81 on; ASCII has neither so often.
void ReadEbcdicText(PropertySet& out) { out.Set(Property::kCharset, "ebcdic", "bytes", 0); }

}  // namespace

void ReadTextProperties(const PropertyQuestion& question, PropertySet& out) {
  if (question.id == kFormatPlainEbcdicText) return ReadEbcdicText(out);
  IdentificationStream* stream = question.stream;
  const FileBytes<512> head(stream, 0);
  size_t start = 0;
  std::string_view marked;
  for (const Mark& mark : kMarks) {
    if (!head.View().starts_with(mark.bytes)) continue;
    marked = mark.charset;
    start = mark.bytes.size();
    break;
  }
  if (marked.empty() && question.id == kFormatPlainUtf16Text) marked = GuessWords(head.View());
  if (!marked.empty() && marked != "utf-8") return ReadWideText(stream, marked, start, out);

  const bool isShownText = std::none_of(head.View().begin(), head.View().end(), [](char c) {
    return kKinds[static_cast<uint8_t>(c)] == kControl;
  });
  if (!isShownText || head.size() == 0) return;
  const ByteText text = ScanBytes(stream, start);
  if ((text.kinds & kControl) != 0) return;
  if (!marked.empty()) {
    out.Set(Property::kCharset, "utf-8", "mark", 0);
  } else if (text.kinds == kAscii) {
    out.Set(Property::kCharset, "us-ascii", "bytes", 0);
  } else if (text.isUtf8) {
    out.Set(Property::kCharset, "utf-8", "bytes", 0);
  } else {
    out.Set(Property::kCharset, (text.kinds & kC1) != 0 ? "unknown-8bit" : "iso-8859-1", "bytes",
            0);
  }
  out.Set(Property::kLineEnds, text.lineEnds, "text");
}

}  // namespace fi
