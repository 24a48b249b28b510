// Encodes a row of signature notation into programs, at compile time. A mistake in a row is a
// compile error that names its kind.
//
// clang-format off
//   'text'  E4       literal bytes: ASCII, or two hexadecimal digits
//   FF*32            a literal byte, repeated
//   raw(FF 0C 00)    bytes that are stored as they are, an instruction included
//   ci(RTF) ic(RTF)  letters in either case; ic stores the lower case first
//   rw               go to the start
//   at(65)           go to an offset
//   atend(-18)       go to an offset from the end
//   skip(4)          pass over bytes
//   nop00            an instruction that does nothing
//   not(00)          any other byte
//   oneof(31,32)     one of two bytes
//   range2(00-1F)    so many bytes, each in the range
//   wnotin1(0-200)   so many little-endian words, none of them in the (decimal) range
//   ext('AI')        the extension begins so
//   class(16 bytes)  class identifier
//   name(urn:x)      the document root's name
//   name(M1:/path)   the same behind a maker prefix
//   -> 1557          the format
//   -> probe 1730    the probe that decides
//   {'a' 01 | 'b'}   one of these: the row becomes so many programs, in this order
//   end              nothing follows the bytes since the start, all of them literal
// clang-format on
#ifndef FI_SIGNATURE_ROW_ENCODER_H_
#define FI_SIGNATURE_ROW_ENCODER_H_

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "platform/class_id.h"
#include "signature/opcodes.h"
#include "signature/row_alternatives.h"

namespace fi {

// The two makers whose document types share a path under a host of their own.
inline constexpr std::string_view kMakerPrefix1 = "http://schemas.docmaker5.example";
inline constexpr std::string_view kMakerPrefix2 = "http://www.docmaker4.example";

// Not defined: to reach it while a table is encoded ends the compilation.
void SignatureNotationIsWrong();

template <class Table>
class RowEncoder {
 public:
  // `variant` numbers the program among those of the row, the first group of alternatives slowest.
  constexpr RowEncoder(std::string_view row, size_t variant, Table& table)
      : rest_(row), variant_(variant), programs_(ProgramsOf(row)), table_(table) {}

  constexpr void Encode() {
    start_ = table_.size;
    SkipBlanks();
    while (!rest_.empty()) {
      Item();
      SkipBlanks();
    }
  }

 private:
  constexpr void Put(uint32_t byte) {
    if (byte > 0xFF) SignatureNotationIsWrong();
    table_.Put(byte);
  }
  constexpr void PutWord(uint32_t word) {
    Put(word & 0xFF);
    Put(word >> 8);
  }
  constexpr void PutDword(uint32_t value) {
    PutWord(value & 0xFFFF);
    PutWord(value >> 16);
  }
  constexpr void Op(Opcode opcode) {
    Put(kEscape);
    Put(opcode);
  }
  constexpr void Literal(uint32_t byte) {
    if (byte == kEscape) Put(kEscape);
    Put(byte);
  }

  constexpr void SkipBlanks() {
    while (!rest_.empty() && rest_.front() == ' ') rest_.remove_prefix(1);
  }
  constexpr bool Take(std::string_view word) {
    if (!rest_.starts_with(word)) return false;
    rest_.remove_prefix(word.size());
    return true;
  }
  constexpr void Expect(std::string_view word) {
    if (!Take(word)) SignatureNotationIsWrong();
  }
  constexpr char Next() {
    if (rest_.empty()) SignatureNotationIsWrong();
    const char c = rest_.front();
    rest_.remove_prefix(1);
    return c;
  }
  static constexpr uint32_t Digit(char c) {
    if (c >= '0' && c <= '9') return static_cast<uint32_t>(c - '0');
    if (c >= 'A' && c <= 'F') return static_cast<uint32_t>(c - 'A' + 10);
    SignatureNotationIsWrong();
    return 0;
  }
  constexpr uint32_t Byte() {
    const uint32_t high = Digit(Next());
    return high << 4 | Digit(Next());
  }
  constexpr uint32_t Number() {
    uint32_t value = Digit(Next());
    while (!rest_.empty() && rest_.front() >= '0' && rest_.front() <= '9') {
      value = value * 10 + Digit(Next());
    }
    return value;
  }
  constexpr std::string_view Until(char end) {
    const size_t length = rest_.find(end);
    if (length == std::string_view::npos) SignatureNotationIsWrong();
    const std::string_view text = rest_.substr(0, length);
    rest_.remove_prefix(length + 1);
    return text;
  }

  constexpr void EitherCase(std::string_view word, bool lowerFirst) {
    constexpr uint32_t kCaseBit = 0x20;
    for (const char letter : word) {
      if (letter < 'A' || letter > 'Z') SignatureNotationIsWrong();
      const uint32_t upper = static_cast<uint8_t>(letter);
      Op(kOpOneOf);
      Put(lowerFirst ? upper | kCaseBit : upper);
      Put(lowerFirst ? upper : upper | kCaseBit);
    }
  }

  constexpr void RootName(std::string_view name) {
    Op(kOpRootName);
    std::string_view prefix;
    if (name.starts_with("M1:")) prefix = kMakerPrefix1;
    if (name.starts_with("M2:")) prefix = kMakerPrefix2;
    if (!prefix.empty()) name.remove_prefix(3);
    for (const char c : prefix) Put(static_cast<uint8_t>(c));
    for (const char c : name) Put(static_cast<uint8_t>(c));
    Put(0);
  }

  constexpr void ByteRange() {
    Op(kOpByteRange);
    Put(Number());
    Expect("(");
    Put(Byte());
    Expect("-");
    Put(Byte());
    Expect(")");
  }

  constexpr void WordOutsideRange() {
    Op(kOpWordOutsideRange);
    Put(Number());
    Expect("(");
    PutWord(Number());
    Expect("-");
    PutWord(Number());
    Expect(")");
  }

  constexpr void Class() {
    Op(kOpClass);
    const size_t start = table_.size;
    Raw();
    if (table_.size - start != kClassIdSize) SignatureNotationIsWrong();
  }

  constexpr void Raw() {
    while (!Take(")")) {
      Put(Byte());
      SkipBlanks();
    }
  }

  constexpr void ExtensionTest() {
    Op(kOpExtension);
    const std::string_view text = Until('\'');
    Put(static_cast<uint32_t>(text.size()));
    for (const char c : text) Put(static_cast<uint8_t>(c));
    Expect(")");
  }

  constexpr void Result() {
    SkipBlanks();
    Op(Take("probe ") ? kOpProbe : kOpReturn);
    PutWord(Number());
  }

  constexpr void LiteralByte() {
    const uint32_t byte = Byte();
    const uint32_t times = Take("*") ? Number() : 1;
    for (uint32_t i = 0; i < times; ++i) Literal(byte);
  }

  // Goes to the alternative that the variant asks for.
  constexpr void BeginGroup() {
    if (isInGroup_) SignatureNotationIsWrong();
    isInGroup_ = true;
    const size_t count = AlternativesOf(rest_);
    programs_ /= count;
    size_t skipped = variant_ / programs_ % count;
    UnquotedCharacters characters(rest_);
    size_t behind = 0;
    for (; skipped > 0; --skipped) {
      do behind = characters.Next() + 1;
      while (rest_[behind - 1] != '|');
    }
    rest_.remove_prefix(behind);
  }
  // Passes over the alternatives behind the chosen one.
  constexpr void EndGroup() {
    if (!isInGroup_) SignatureNotationIsWrong();
    isInGroup_ = false;
    UnquotedCharacters characters(rest_);
    size_t at = characters.Next();
    while (at < rest_.size() && rest_[at] != '}') at = characters.Next();
    if (at == rest_.size()) SignatureNotationIsWrong();
    rest_.remove_prefix(at + 1);
  }

  // The bytes so far, once more, as the last of the file.
  constexpr void EndOfFile() {
    const size_t first = start_ + 2;
    const size_t last = table_.size;
    if (last < first || table_.bytes[start_] != kEscape || table_.bytes[start_ + 1] != kOpRewind) {
      SignatureNotationIsWrong();
    }
    Op(kOpSeekFromEnd);
    PutDword(0u - static_cast<uint32_t>(last - first));
    for (size_t at = first; at < last; ++at) {
      if (table_.bytes[at] == kEscape) SignatureNotationIsWrong();
      Put(table_.bytes[at]);
    }
  }

  // An instruction with one operand in brackets.
  constexpr void Offset(Opcode opcode, uint32_t value) {
    Op(opcode);
    PutDword(value);
    Expect(")");
  }
  constexpr void OneByte(Opcode opcode, uint32_t value) {
    Op(opcode);
    Put(value);
    Expect(")");
  }

  constexpr void Item() {
    if (Take("'")) {
      for (const char c : Until('\'')) Literal(static_cast<uint8_t>(c));
    } else if (Take("->")) {
      Result();
    } else if (Take("rw")) {
      Op(kOpRewind);
    } else if (Take("nop00")) {
      Op(kOpNothing);
    } else if (Take("atend(-")) {
      Offset(kOpSeekFromEnd, 0u - Number());
    } else if (Take("at(")) {
      Offset(kOpSeek, Number());
    } else if (Take("skip(")) {
      OneByte(kOpSkip, Number());
    } else if (Take("not(")) {
      OneByte(kOpNotByte, Byte());
    } else if (Take("oneof(")) {
      Op(kOpOneOf);
      Put(Byte());
      Expect(",");
      Put(Byte());
      Expect(")");
    } else if (Take("range")) {
      ByteRange();
    } else if (Take("wnotin")) {
      WordOutsideRange();
    } else if (Take("ci(")) {
      EitherCase(Until(')'), false);
    } else if (Take("ic(")) {
      EitherCase(Until(')'), true);
    } else if (Take("ext('")) {
      ExtensionTest();
    } else if (Take("class(")) {
      Class();
    } else if (Take("name(")) {
      RootName(Until(')'));
    } else if (Take("raw(")) {
      Raw();
    } else if (Take("{")) {
      BeginGroup();
    } else if (rest_.front() == '|' || rest_.front() == '}') {
      EndGroup();
    } else if (Take("end")) {
      EndOfFile();
    } else {
      LiteralByte();
    }
  }

  std::string_view rest_;
  size_t variant_;
  size_t programs_;  // of the groups that are still to come
  bool isInGroup_ = false;
  size_t start_ = 0;
  Table& table_;
};

}  // namespace fi

#endif  // FI_SIGNATURE_ROW_ENCODER_H_
