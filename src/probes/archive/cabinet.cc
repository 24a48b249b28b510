#include "probes/archive/cabinet.h"

#include <algorithm>
#include <string_view>

#include "registry/format_ids.h"
#include "stream/file_bytes.h"

namespace fi {
namespace {

constexpr uint32_t kHeaderSize = 36;
constexpr uint32_t kMaxMinorVersion = 3;
constexpr size_t kEntrySize = 16;
constexpr size_t kMaxName = 256;
constexpr uint32_t kMaxEntries = 64;

constexpr std::string_view kManifest = "manifest.xsf";

// `name` goes on behind the NUL that ends it.
bool IsManifest(std::string_view name) {
  return name.size() > kManifest.size() && name[kManifest.size()] == '\0' &&
         std::equal(kManifest.begin(), kManifest.end(), name.begin(), [](char wanted, char c) {
           return wanted == (c >= 'A' && c <= 'Z' ? c + ('a' - 'A') : c);
         });
}

// Whether one of `count` entries of files from `at` on is that of a form's manifest.
bool HasManifest(IdentificationStream* stream, int64_t at, uint32_t count) {
  for (uint32_t i = 0; i < std::min(count, kMaxEntries); ++i) {
    const FileBytes<kEntrySize + kMaxName> entry(stream, at);
    if (entry.size() <= kEntrySize) return false;
    const std::string_view name = entry.View().substr(kEntrySize);
    if (IsManifest(name)) return true;
    const size_t length = name.find('\0');
    if (length == std::string_view::npos) return false;
    at += static_cast<int64_t>(kEntrySize + length + 1);
  }
  return false;
}

}  // namespace

FormatId CabinetProbe(IdentificationStream* stream) {
  const FileBytes<kHeaderSize> header(stream, 0);
  if (header.size() < kHeaderSize || header.DwordLE(12) != 0 || header.DwordLE(20) != 0) {
    return kNoMatch;
  }
  const uint64_t fileSize = FileSize(stream);
  const uint32_t firstFile = header.DwordLE(16);
  if (header.DwordLE(8) > fileSize || firstFile < kHeaderSize || firstFile >= fileSize) {
    return kNoMatch;
  }
  if (header.Byte(25) != 1 || header.Byte(24) > kMaxMinorVersion) return kNoMatch;
  const uint32_t folders = header.WordLE(26);
  const uint32_t files = header.WordLE(28);
  if (folders == 0 || files == 0) return kNoMatch;
  return HasManifest(stream, firstFile, files) ? kFormatInfoPathFormTemplate : kFormatCabinet;
}

}  // namespace fi
