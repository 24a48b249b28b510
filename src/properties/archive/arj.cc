#include "properties/archive/arj.h"

#include "stream/file_bytes.h"

namespace fi {
namespace {

constexpr uint32_t kMaxHeaders = 64;

}  // namespace

void ReadArjProperties(const PropertyQuestion& question, PropertySet& out) {
  constexpr uint32_t kGarbled = 0x01;
  constexpr uint32_t kSecured = 0x40;
  IdentificationStream* stream = question.stream;
  int64_t offset = 0;
  for (uint32_t count = 0; count < kMaxHeaders; ++count) {
    const FileBytes<40> head(stream, offset);
    const uint32_t size = head.WordLE(2);
    if (!head.Holds(0, "\x60\xEA") || size == 0) break;
    const uint32_t flags = head.Byte(8);
    if (count == 0) {
      out.SetNumber(Property::kVersion, head.Byte(5), "main header", 5);
      if ((flags & kSecured) != 0) out.Set(Property::kSigned, "yes", "main header", 8);
    }
    if ((flags & kGarbled) != 0) {
      out.Set(Property::kEncryption, "password", "file header", offset);
      return out.Set(Property::kEncryptionScheme, "garbled", "file header", offset);
    }
    // Mark, size, header and checksum; extended headers until one of size 0; a file has data
    // behind.
    int64_t next = offset + 4 + int64_t{size} + 4;
    for (uint32_t extended = 0; extended < kMaxHeaders; ++extended) {
      const FileBytes<2> length(stream, next);
      next += 2;
      if (length.WordLE(0) == 0) break;
      next += int64_t{length.WordLE(0)} + 4;
    }
    if (count > 0) next += head.DwordLE(16);
    offset = next;
  }
  out.Set(Property::kEncryption, "none", "headers");
}

}  // namespace fi
