#include "probes/image/x_bitmap.h"

#include <array>
#include <string_view>

#include "formatid/io.h"
#include "registry/format_ids.h"
#include "stream/buffered_scan.h"

namespace fi {
namespace {

constexpr uint32_t kWindow = 4096;  // bytes looked at
constexpr uint32_t kMaxTokenBytes = 48;

// Tokens that must be there. The shortest file with them has 43 bytes.
constexpr uint32_t kTokens = 14;

// The first bytes of a token decide what it stands for.
constexpr size_t kTokenHead = 6;
enum class Word : uint8_t { kOther, kDefine, kStatic };

bool IsSeparator(uint32_t byte) {
  return byte == ' ' || byte == '\t' || byte == '\r' || byte == '\n';
}

// The tokens of the file's first bytes, which blanks and line ends separate.
class Tokens {
 public:
  explicit Tokens(IdentificationStream* stream) : stream_(stream) { Advance(); }

  uint32_t Byte() const { return byte_; }

  // Goes on to the next `byte`. False at the end of the window or the data.
  bool Find(char byte) {
    const auto wanted = static_cast<uint8_t>(byte);
    while (byte_ != wanted && byte_ != kEndOfData) {
      const uint32_t others = BufferedBytesBefore(stream_, byte, left_);
      PassBuffered(stream_, others);
      left_ -= others;
      Advance();
    }
    return byte_ == wanted;
  }

  void Advance() {
    byte_ = left_ > 0 ? IdStreamGetByte(stream_) : kEndOfData;
    if (left_ > 0) --left_;
  }

  // Reads a token and the separators behind it. False when the data end before the token does, or
  // it is too long.
  bool Next(Word* word) {
    std::array<char, kTokenHead> head{};
    uint32_t length = 0;
    for (; !IsSeparator(byte_) && length < kMaxTokenBytes; ++length) {
      if (byte_ == kEndOfData) return false;
      if (length < head.size()) head[length] = static_cast<char>(byte_);
      Advance();
    }
    *word = WordOf({head.data(), head.size()});
    if (length < kMaxTokenBytes) {
      while (IsSeparator(byte_)) Advance();
      return true;
    }
    // Deliberate: behind a token of the full length only one separator is passed over; with a
    // second separator the next token is empty.
    if (!IsSeparator(byte_)) return byte_ == kEndOfData;
    Advance();
    return true;
  }

 private:
  static Word WordOf(std::string_view head) {
    if (head == "#defin") return Word::kDefine;
    return head == "static" ? Word::kStatic : Word::kOther;
  }

  IdentificationStream* stream_;
  uint32_t left_ = kWindow;
  uint32_t byte_ = kEndOfData;
};

// Goes to the first "#" behind a comment. Deliberate: the comment ends at its second "/", wherever
// that stands.
bool PassComment(Tokens& tokens) {
  tokens.Advance();
  return tokens.Find('/') && tokens.Find('#');
}

}  // namespace

FormatId XBitmapProbe(IdentificationStream* stream) {
  if (IdStreamSeek(stream, 0, kIoFromStart) != 0) return kNoMatch;
  Tokens tokens(stream);
  if (tokens.Byte() == '/' && !PassComment(tokens)) return kNoMatch;
  if (tokens.Byte() != '#') return kNoMatch;
  // Every third token begins a line: "#define NAME VALUE" twice or four times, then the array.
  // Deliberate: of which type its elements are is not looked at.
  uint32_t defines = 0;
  bool array = false;
  for (uint32_t i = 0; i < kTokens; ++i) {
    Word word = Word::kOther;
    if (!tokens.Next(&word)) return kNoMatch;
    if (array || i % 3 != 0) continue;
    if (word == Word::kDefine) {
      ++defines;
    } else if (word == Word::kStatic && (defines == 2 || defines == 4)) {
      array = true;
    } else {
      return kNoMatch;
    }
  }
  return array ? kFormatXbm : kNoMatch;
}

}  // namespace fi
