#include "tables/fingerprint.h"

#include <string_view>

#include "tables/signature_table.h"
#include "tables/supplement_table.h"

namespace fi {
namespace {

constexpr uint64_t kOffset = 0xCBF29CE484222325;
constexpr uint64_t kPrime = 0x100000001B3;

constexpr uint64_t Mix(uint64_t hash, uint8_t byte) { return (hash ^ byte) * kPrime; }

uint64_t MixText(uint64_t hash, std::string_view text) {
  for (const char c : text) hash = Mix(hash, static_cast<uint8_t>(c));
  return Mix(hash, 0);
}

constexpr const char* kRegistry[] = {
#define FI_FORMAT(number, symbol, ...) FI_FORMAT_UNNAMED(number, __VA_ARGS__)
#define FI_FORMAT_UNNAMED(number, name, category, mimeType, extensions, puids) \
#number, name, category, mimeType, extensions, puids,
#include "registry/formats.def"
};

}  // namespace

uint64_t RegistryFingerprint() {
  uint64_t hash = kOffset;
  for (const char* text : kRegistry) hash = MixText(hash, text);
  for (const uint8_t byte : kSignatureTable.bytes) hash = Mix(hash, byte);
  for (const uint8_t byte : SupplementBytes()) hash = Mix(hash, byte);
  return hash;
}

}  // namespace fi
