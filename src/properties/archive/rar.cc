#include "properties/archive/rar.h"

#include <array>
#include <cstdint>
#include <string_view>

#include "properties/record/short_text.h"
#include "stream/file_bytes.h"

namespace fi {
namespace {

using namespace std::string_view_literals;

constexpr uint32_t kMaxHeaders = 64;

// Archives of version 1.5 to 4 ("RAR\x1A\x07\0"): blocks of a checksum, a type, flags and a size.
void ReadVersion4(IdentificationStream* stream, PropertySet& out) {
  constexpr uint32_t kMain = 0x73;
  constexpr uint32_t kFile = 0x74;
  constexpr uint32_t kVolume = 0x0001;
  constexpr uint32_t kSolid = 0x0008;
  constexpr uint32_t kHeadersEncrypted = 0x0080;
  constexpr uint32_t kFileEncrypted = 0x0004;
  constexpr uint32_t kHasData = 0x8000;
  out.Set(Property::kVersion, "4", "signature", 0);
  int64_t offset = 7;
  for (uint32_t count = 0; count < kMaxHeaders; ++count) {
    const FileBytes<32> head(stream, offset);
    const uint32_t size = head.WordLE(5);
    if (!head.Has(0, 7) || size < 7) break;
    const uint32_t type = head.Byte(2);
    const uint32_t flags = head.WordLE(3);
    if (type == kMain) {
      ShortText profile((flags & kVolume) != 0 ? "volume" : "");
      if ((flags & kSolid) != 0) profile.Append(profile.view().empty() ? "solid" : ", solid");
      out.Set(Property::kProfile, profile.view(), "main header", offset);
      if ((flags & kHeadersEncrypted) != 0) {
        out.Set(Property::kEncryption, "password", "main header", offset);
        return out.Set(Property::kEncryptionScheme, "AES-128, headers", "main header", offset);
      }
    }
    if (type == kFile && (flags & kFileEncrypted) != 0) {
      constexpr size_t kUnpackVersion = 24;
      const uint32_t version = head.Byte(kUnpackVersion);
      out.Set(Property::kEncryption, "password", "file header", offset);
      return out.Set(Property::kEncryptionScheme, version >= 29 ? "AES-128" : "RAR 2",
                     "file header", offset);
    }
    const bool hasData = (flags & kHasData) != 0 || type == kFile;
    offset += int64_t{size} + (hasData ? int64_t{head.DwordLE(7)} : 0);
  }
  out.Set(Property::kEncryption, "none", "headers");
}

// Variable-length numbers of version 5: seven bits a byte, the lowest first.
class Numbers {
 public:
  explicit Numbers(const FileBytes<512>& bytes, size_t at) : bytes_(bytes), at_(at) {}

  uint64_t Next() {
    uint64_t value = 0;
    for (uint32_t shift = 0; shift < 63; shift += 7) {
      if (!bytes_.Has(at_, 1)) {
        isCut_ = true;
        return 0;
      }
      const uint64_t byte = bytes_.Byte(at_++);
      value |= (byte & 0x7F) << shift;
      if (byte < 0x80) return value;
    }
    isCut_ = true;
    return 0;
  }

  bool isCut() const { return isCut_; }
  size_t at() const { return at_; }
  void Skip(size_t count) { at_ += count; }

 private:
  const FileBytes<512>& bytes_;
  size_t at_;
  bool isCut_ = false;
};

// Whether the extra area of a file header, `size` bytes from there on, has an encryption record.
bool HasEncryptionRecord(Numbers fields, uint64_t size) {
  constexpr uint64_t kEncryption = 1;
  const size_t end = fields.at() + size;
  while (fields.at() < end) {
    const uint64_t length = fields.Next();
    const size_t start = fields.at();
    if (fields.isCut() || length == 0 || length > size) return false;
    if (fields.Next() == kEncryption) return !fields.isCut();
    fields.Skip(start + length - fields.at());
  }
  return false;
}

void ReadVersion5(IdentificationStream* stream, PropertySet& out) {
  constexpr uint64_t kMain = 1;
  constexpr uint64_t kFile = 2;
  constexpr uint64_t kHeadersEncrypted = 4;
  constexpr uint64_t kEnd = 5;
  constexpr uint64_t kHasExtra = 0x01;
  constexpr uint64_t kHasData = 0x02;
  out.Set(Property::kVersion, "5", "signature", 0);
  int64_t offset = 8;
  for (uint32_t count = 0; count < kMaxHeaders; ++count) {
    const FileBytes<512> head(stream, offset);
    Numbers fields(head, 4);
    const uint64_t size = fields.Next();
    const size_t start = fields.at();
    const uint64_t type = fields.Next();
    const uint64_t flags = fields.Next();
    const uint64_t extra = (flags & kHasExtra) != 0 ? fields.Next() : 0;
    const uint64_t data = (flags & kHasData) != 0 ? fields.Next() : 0;
    constexpr uint64_t kMaxHeader = 2 * 1024 * 1024;
    if (fields.isCut() || size == 0 || size > kMaxHeader || data > INT64_MAX / 2 || type == kEnd)
      break;
    if (type == kHeadersEncrypted) {
      out.Set(Property::kEncryption, "password", "encryption header", offset);
      return out.Set(Property::kEncryptionScheme, "AES-256, headers", "encryption header", offset);
    }
    if (type == kMain) {
      const uint64_t archive = fields.Next();
      ShortText profile((archive & 1) != 0 ? "volume" : "");
      if ((archive & 4) != 0) profile.Append(profile.view().empty() ? "solid" : ", solid");
      out.Set(Property::kProfile, profile.view(), "main header", offset);
    }
    // The extra area ends the header.
    if (type == kFile && extra > 0 && extra < size) {
      Numbers records(head, start + static_cast<size_t>(size - extra));
      if (HasEncryptionRecord(records, extra)) {
        out.Set(Property::kEncryption, "password", "file header", offset);
        return out.Set(Property::kEncryptionScheme, "AES-256", "file header", offset);
      }
    }
    offset += static_cast<int64_t>(start + size + data);
  }
  out.Set(Property::kEncryption, "none", "headers");
}

}  // namespace

void ReadRarProperties(const PropertyQuestion& question, PropertySet& out) {
  const FileBytes<8> head(question.stream, 0);
  if (head.Holds(0, "Rar!\x1A\x07\x01\x00"sv)) return ReadVersion5(question.stream, out);
  if (head.Holds(0, "Rar!\x1A\x07\x00"sv)) return ReadVersion4(question.stream, out);
  if (head.Holds(0, "RE~^")) out.Set(Property::kVersion, "1.4", "signature", 0);
}

}  // namespace fi
