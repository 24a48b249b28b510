// Writes a dictionary for libFuzzer to the standard output: what the signature tables look for,
// read from their encoded rows, and the mark of identify_input.h. Each run of literal bytes (of two
// that are allowed, the first), class, extension and name of a document root is a word.
#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <set>
#include <string>

#include "fuzz/identify_input.h"
#include "signature/opcodes.h"
#include "tables/signature_table.h"
#include "tables/supplement_table.h"

namespace {

constexpr size_t kShortestWord = 2;  // the fuzzer finds single bytes by itself
constexpr size_t kLongestWord = 64;  // libFuzzer takes no longer ones

class Words {
 public:
  // Takes the words of one program (opcodes.h).
  void AddProgram(const uint8_t* row) {
    std::string literals;
    while (row[0] != fi::kEscape || row[1] != fi::kOpEndOfEntry) {
      if (*row != fi::kEscape) {
        literals += static_cast<char>(*row++);
      } else if (row[1] == fi::kOpLiteralEscape) {
        literals += '\xFF';
        row += 2;
      } else if (row[1] == fi::kOpOneOf) {
        literals += static_cast<char>(row[2]);
        row += 4;
      } else {
        Add(literals);
        literals.clear();
        row = PassInstruction(row + 1);
      }
    }
    Add(literals);
  }

  void Add(const std::string& word) {
    if (word.size() >= kShortestWord) words_.insert(word.substr(0, kLongestWord));
  }

  void Print() const {
    for (const std::string& word : words_) {
      std::putchar('"');
      for (const char c : word) std::printf("\\x%02X", static_cast<unsigned>(c) & 0xFF);
      std::puts("\"");
    }
  }

 private:
  // Adds the text of an instruction, if it has one, and returns the place behind its operands.
  const uint8_t* PassInstruction(const uint8_t* at) {
    switch (*at++) {
      case fi::kOpSeek:
      case fi::kOpSeekFromEnd:
        return at + 4;
      case fi::kOpNotByte:
      case fi::kOpSkip:
        return at + 1;
      case fi::kOpByteRange:
        return at + 3;
      case fi::kOpWordOutsideRange:
        return at + 5;
      case fi::kOpReturn:
      case fi::kOpProbe:
        return at + 2;
      case fi::kOpExtension:
        return AddText(at + 1, at[0]) + at[0] + 1;
      case fi::kOpClass:
        return AddText(at, 16) + 16;
      case fi::kOpRootName: {
        const auto* end = std::find(at, at + kLongestWord, uint8_t{0});
        AddText(at, static_cast<size_t>(end - at));
        return std::find(end, end + UINT16_MAX, uint8_t{0}) + 1;
      }
      default:
        return at;
    }
  }

  const uint8_t* AddText(const uint8_t* text, size_t size) {
    Add(std::string(reinterpret_cast<const char*>(text), size));
    return text;
  }

  std::set<std::string> words_;
};

}  // namespace

int main() {
  Words words;
  for (const uint16_t start : fi::kSignatureTable.starts) {
    words.AddProgram(&fi::kSignatureTable.bytes[start]);
  }
  for (size_t row = 1; row <= fi::SupplementRows(); ++row) {
    words.AddProgram(fi::SupplementProgram(static_cast<uint16_t>(row)));
  }
  words.Add(std::string(fi::fuzz::kMark));
  words.Print();
  return 0;
}
