#include "signature/namespace_reader.h"

#include <cstddef>
#include <optional>
#include <string_view>

namespace fi {
namespace {

// Bytes of the document, its declaration included, within which the attribute must end.
constexpr uint32_t kScanLimit = 1024;
constexpr size_t kTokenCapacity = 255;

using namespace std::string_view_literals;

// The bytes of a name, as far as this reader goes. Above 0x7F nothing is one.
constexpr bool IsNameByte(uint32_t byte) {
  return byte == '-' || byte == '.' || (byte >= '0' && byte <= ':') ||
         (byte >= 'A' && byte <= 'Z') || byte == '_' || (byte >= 'a' && byte <= 'z');
}

// Reads as many bytes as `expected` has; nothing at end of data, else whether they are the same.
std::optional<bool> ReadAndCompare(IdentificationStream* stream, std::string_view expected) {
  bool same = true;
  for (const char c : expected) {
    const uint32_t byte = IdStreamGetByte(stream);
    if (byte == kEndOfData) return std::nullopt;
    same = same && byte == static_cast<uint8_t>(c);
  }
  return same;
}

// Whether the document begins with an XML declaration, behind an optional UTF-8 byte-order mark.
bool ReadDeclaration(IdentificationStream* stream) {
  if (IdStreamSeek(stream, 0, kIoFromStart) != 0) return false;
  const std::optional<bool> mark = ReadAndCompare(stream, "\xEF\xBB\xBF"sv);
  if (!mark.has_value()) return false;
  if (!*mark && IdStreamSeek(stream, 0, kIoFromStart) != 0) return false;
  return ReadAndCompare(stream, "<?xml"sv) == true;
}

// A token of name bytes. One that reaches the capacity is dropped, and the scan goes on.
class Token {
 public:
  void Append(uint32_t byte) {
    bytes_[length_++] = static_cast<char>(byte);
    if (length_ == kTokenCapacity) length_ = 0;
  }
  void Clear() { length_ = 0; }
  bool Empty() const { return length_ == 0; }
  bool Is(std::string_view text) const { return std::string_view(bytes_.data(), length_) == text; }

 private:
  std::array<char, kTokenCapacity> bytes_;
  size_t length_ = 0;
};

void Store(std::string_view text, NamespaceBuffer& buffer) {
  size_t length = 0;
  for (const char c : text) buffer[length++] = static_cast<uint8_t>(c);
  buffer[length] = 0;
}

// Reads the quoted value that the stream stands at.
void ReadValue(IdentificationStream* stream, NamespaceBuffer& buffer) {
  const uint32_t quote = IdStreamGetByte(stream);
  if (quote != '"' && quote != '\'') return;
  std::array<char, kTokenCapacity> value;
  size_t length = 0;
  for (;;) {
    const uint32_t byte = IdStreamGetByte(stream);
    if (byte == kEndOfData) return;
    if (byte == quote) break;
    if (length == value.size()) return;
    value[length++] = static_cast<char>(byte);
  }
  Store(std::string_view(value.data(), length), buffer);
}

}  // namespace

void ReadXmlNamespace(IdentificationStream* stream, NamespaceBuffer& buffer) {
  buffer[0] = kNamespaceNone;
  if (!ReadDeclaration(stream)) return;
  Token token;
  // The limit counts from "<?xml" on, without the bytes that are compared behind a "?".
  for (uint32_t count = 5; count < kScanLimit; ++count) {
    const uint32_t byte = IdStreamGetByte(stream);
    if (byte == kEndOfData) return;
    if (IsNameByte(byte)) {
      token.Append(byte);
      continue;
    }
    if (byte == '=' && token.Is("xmlns"sv)) {
      ReadValue(stream, buffer);
      return;
    }
    if (byte == '?' && token.Empty()) {
      const std::optional<bool> found = ReadAndCompare(stream, "aid"sv);
      if (found == true) Store("aid"sv, buffer);
      if (found != false) return;
    }
    token.Clear();
  }
}

}  // namespace fi
