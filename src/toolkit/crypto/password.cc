#include "toolkit/crypto/password.h"

#include <array>
#include <cstring>

namespace fi::crypto {
namespace {

// Takes one character off the front of `text`. False when it is no valid UTF-8: a byte out of
// place, a form longer than needed, half of a surrogate pair, beyond the last character.
bool TakeCharacter(std::string_view* text, uint32_t* character) {
  const auto byte = [&](size_t i) -> uint32_t { return static_cast<unsigned char>((*text)[i]); };
  const uint32_t lead = byte(0);
  size_t size = 1;
  uint32_t value = lead;
  uint32_t least = 0;
  if (lead >= 0x80) {
    if (lead >= 0xC0 && lead < 0xE0) {
      size = 2;
      value = lead & 0x1F;
      least = 0x80;
    } else if (lead >= 0xE0 && lead < 0xF0) {
      size = 3;
      value = lead & 0x0F;
      least = 0x800;
    } else if (lead >= 0xF0 && lead < 0xF8) {
      size = 4;
      value = lead & 0x07;
      least = 0x10000;
    } else {
      return false;
    }
  }
  if (size > text->size()) return false;
  for (size_t i = 1; i < size; ++i) {
    if ((byte(i) & 0xC0) != 0x80) return false;
    value = value << 6 | (byte(i) & 0x3F);
  }
  if (value < least || value > 0x10FFFF || (value >= 0xD800 && value < 0xE000)) return false;
  text->remove_prefix(size);
  *character = value;
  return true;
}

bool AppendUnit(uint32_t unit, Password* password) {
  const std::array<uint8_t, 2> bytes = {static_cast<uint8_t>(unit),
                                        static_cast<uint8_t>(unit >> 8)};
  return password->Append(bytes);
}

}  // namespace

bool EncodePassword(std::string_view text, Password* password) {
  password->SetSize(0);
  while (!text.empty()) {
    uint32_t character = 0;
    if (!TakeCharacter(&text, &character)) return false;
    if (character >= 0x10000) {
      const uint32_t rest = character - 0x10000;
      if (!AppendUnit(0xD800 | rest >> 10, password)) return false;
      character = 0xDC00 | (rest & 0x3FF);
    }
    if (!AppendUnit(character, password)) return false;
  }
  return true;
}

Asked AskPassword(const PasswordSource& source, uint32_t attempt, PasswordText* password) {
  char* const text = static_cast<char*>(static_cast<void*>(password->data()));
  FIPasswordRequest request{sizeof(FIPasswordRequest), kPasswordCapacity, text, source.document,
                            attempt};
  if (source.callback(kFiPasswordOfPackage, &request, source.context, 0) != 0) {
    return Asked::kDeclined;
  }
  const size_t size = ::strnlen(text, kPasswordCapacity);
  password->SetSize(size);
  return size < kPasswordCapacity ? Asked::kGiven : Asked::kUnusable;
}

}  // namespace fi::crypto
