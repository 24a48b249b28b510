#include "signature/row_text.h"

#include "platform/class_id.h"
#include "signature/opcodes.h"

namespace fi {
namespace {

constexpr size_t kMostText = 200;

class RowWriter {
 public:
  void Literal(uint8_t byte) {
    if (byte < ' ' || byte > '~' || byte == '\'') return Word(Hex(byte));
    if (!text_.empty() && inQuotes_) {
      text_.insert(text_.size() - 1, 1, static_cast<char>(byte));
      return;
    }
    Word({'\'', static_cast<char>(byte), '\''});
    inQuotes_ = true;
  }

  void Word(const std::string& word) {
    if (!text_.empty()) text_ += ' ';
    text_ += word;
    inQuotes_ = false;
  }

  static std::string Hex(uint8_t byte) {
    constexpr char kDigits[] = "0123456789ABCDEF";
    return {kDigits[byte >> 4], kDigits[byte & 15]};
  }

  static std::string Bytes(const uint8_t* bytes, size_t count) {
    std::string text;
    for (size_t i = 0; i < count; ++i) text += (i > 0 ? " " : "") + Hex(bytes[i]);
    return text;
  }

  bool IsFull() const { return text_.size() > kMostText; }
  std::string Take() { return std::move(text_); }

 private:
  std::string text_;
  bool inQuotes_ = false;
};

int32_t Offset(const uint8_t* bytes) {
  return static_cast<int32_t>(bytes[0] | uint32_t{bytes[1]} << 8 | uint32_t{bytes[2]} << 16 |
                              uint32_t{bytes[3]} << 24);
}

// Writes an instruction and returns what follows it; null behind the result.
const uint8_t* WriteInstruction(uint8_t opcode, const uint8_t* operands, RowWriter& row) {
  switch (opcode) {
    case kOpLiteralEscape:
      return row.Literal(kEscape), operands;
    case kOpSeek:
      return row.Word("at(" + std::to_string(Offset(operands)) + ")"), operands + 4;
    case kOpNotByte:
      return row.Word("not(" + RowWriter::Hex(operands[0]) + ")"), operands + 1;
    case kOpByteRange:
      row.Word("range" + std::to_string(operands[0]) + "(" + RowWriter::Hex(operands[1]) + "-" +
               RowWriter::Hex(operands[2]) + ")");
      return operands + 3;
    case kOpWordOutsideRange:
      row.Word("words" + std::to_string(operands[0]) + " outside(" +
               RowWriter::Bytes(operands + 1, 2) + "-" + RowWriter::Bytes(operands + 3, 2) + ")");
      return operands + 5;
    case kOpSkip:
      return row.Word("skip(" + std::to_string(operands[0]) + ")"), operands + 1;
    case kOpRewind:
      return row.Word("rw"), operands;
    case kOpOneOf:
      row.Word("one(" + RowWriter::Bytes(operands, 2) + ")");
      return operands + 2;
    case kOpExtension:
      row.Word("extension(" + std::string(operands + 1, operands + 1 + operands[0]) + ")");
      return operands + 1 + operands[0];
    case kOpSeekFromEnd:
      return row.Word("end(" + std::to_string(Offset(operands)) + ")"), operands + 4;
    case kOpClass:
      row.Word("class(" + RowWriter::Bytes(operands, kClassIdSize) + ")");
      return operands + kClassIdSize;
    case kOpRootName: {
      const std::string name(reinterpret_cast<const char*>(operands));
      row.Word("root(" + name + ")");
      return operands + name.size() + 1;
    }
    case kOpReturn:
    case kOpProbe:
    case kOpEndOfEntry:
    case kOpEndOfTable:
      return nullptr;
    default:
      return operands;
  }
}

}  // namespace

std::string RowText(const uint8_t* program) {
  RowWriter row;
  while (program != nullptr && !row.IsFull()) {
    if (program[0] != kEscape) {
      row.Literal(*program++);
    } else {
      program = WriteInstruction(program[1], program + 2, row);
    }
  }
  return program == nullptr ? row.Take() : row.Take() + " ...";
}

}  // namespace fi
