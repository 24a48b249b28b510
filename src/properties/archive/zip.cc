#include "properties/archive/zip.h"

#include <algorithm>
#include <cstdint>
#include <memory>
#include <new>
#include <string_view>

#include "properties/record/short_text.h"
#include "stream/file_bytes.h"

namespace fi {
namespace {

using namespace std::string_view_literals;

// The end record stands before a comment of up to 64 KB. Of the directory as much is looked at.
constexpr size_t kTail = 22 + 65535;
constexpr size_t kDirectory = 64 * 1024;

using Tail = FileBytes<kTail>;
using Directory = FileBytes<kDirectory>;

constexpr uint32_t kAesMethod = 99;
constexpr uint32_t kEncrypted = 0x0001;
constexpr uint32_t kStrong = 0x0040;

// Key size of the AES extra field (0x9901) of an entry; 0 without one.
uint32_t AesBits(const Directory& directory, size_t extra, size_t size) {
  constexpr uint32_t kAesField = 0x9901;
  while (size >= 4) {
    const size_t length = directory.WordLE(extra + 2);
    if (length > size - 4) return 0;
    if (directory.WordLE(extra) == kAesField && length >= 7) {
      const uint32_t strength = directory.Byte(extra + 8);
      return strength >= 1 && strength <= 3 ? 64 + strength * 64 : 0;
    }
    extra += 4 + length;
    size -= 4 + length;
  }
  return 0;
}

void ReadEncryption(const Directory& directory, int64_t offset, PropertySet& out) {
  constexpr std::string_view kPlace = "central directory";
  constexpr size_t kFixed = 46;
  size_t at = 0;
  while (directory.Holds(at, "PK\x01\x02"sv) && directory.Has(at, kFixed)) {
    const uint32_t flags = directory.WordLE(at + 8);
    const size_t name = directory.WordLE(at + 28);
    const size_t extra = directory.WordLE(at + 30);
    if ((flags & kEncrypted) != 0) {
      const int64_t place = offset + static_cast<int64_t>(at);
      ShortText scheme("ZipCrypto");
      if ((flags & kStrong) != 0) scheme = ShortText("strong encryption");
      if (directory.WordLE(at + 10) == kAesMethod) {
        scheme = ShortText("AES-");
        scheme.AppendNumber(AesBits(directory, at + kFixed + name, extra));
      }
      out.Set(Property::kEncryption, "password", kPlace, place);
      return out.Set(Property::kEncryptionScheme, scheme.view(), kPlace, place);
    }
    // iWork of 2009 encrypts members in a way of its own, and keeps the password's verifier here.
    if (extra >= 8 && directory.Holds(at + kFixed + name, "mc"sv) &&
        directory.Holds(at + kFixed + name + 4, "iwpv"sv)) {
      return out.Set(Property::kEncryption, "password", kPlace, offset + static_cast<int64_t>(at));
    }
    at += kFixed + name + extra + directory.WordLE(at + 32);
  }
  if (at > 0) out.Set(Property::kEncryption, "none", kPlace, offset);
}

}  // namespace

void ReadZipProperties(const PropertyQuestion& question, PropertySet& out) {
  constexpr std::string_view kEndMark = "PK\x05\x06"sv;
  constexpr size_t kEndSize = 22;
  const auto size = static_cast<int64_t>(FileSize(question.stream));
  const int64_t start = std::max<int64_t>(0, size - static_cast<int64_t>(kTail));
  const std::unique_ptr<Tail> tail(new (std::nothrow) Tail(question.stream, start));
  if (tail == nullptr) return;
  const size_t end = tail->View().rfind(kEndMark);
  if (end == std::string_view::npos || !tail->Has(end, kEndSize)) {
    return out.Set(Property::kDamaged, "end of central directory", "tail", start);
  }
  const size_t behind = end + kEndSize + tail->WordLE(end + 20);
  if (behind < tail->size()) {
    out.SetNumber(Property::kTrailingBytes, tail->size() - behind, "tail",
                  start + static_cast<int64_t>(behind));
  }
  // Before the end record stand the directory and, where they are needed, the ZIP64 records: the
  // directory is found from the end, since bytes before the archive shift all offsets.
  const auto length = static_cast<int64_t>(tail->DwordLE(end + 12));
  const int64_t endOffset = start + static_cast<int64_t>(end);
  int64_t offset = endOffset - length;
  if (length == UINT32_MAX || offset < 0) offset = tail->DwordLE(end + 16);
  const std::unique_ptr<Directory> directory(new (std::nothrow) Directory(question.stream, offset));
  if (directory != nullptr) ReadEncryption(*directory, offset, out);
}

}  // namespace fi
