#include "probes/archive/cpio.h"

#include <algorithm>
#include <string_view>

#include "registry/format_ids.h"
#include "stream/file_bytes.h"
#include "stream/text_view.h"

namespace fi {
namespace {

constexpr size_t kHexSize = 110;
constexpr size_t kOctalSize = 76;
constexpr size_t kBinarySize = 26;
constexpr size_t kMaxName = 1024;
constexpr uint32_t kBinaryMagic = 070707;

bool IsOctal(char c) { return c >= '0' && c <= '7'; }

bool IsText(const FileBytes<kHexSize>& header) {
  const std::string_view bytes = header.View();
  const bool hex = header.Holds(0, "070701") || header.Holds(0, "070702");
  if (!hex && !header.Holds(0, "070707")) return false;
  const size_t size = hex ? kHexSize : kOctalSize;
  return bytes.size() >= size &&
         std::all_of(bytes.begin() + 6, bytes.begin() + static_cast<ptrdiff_t>(size),
                     hex ? IsHexDigit : IsOctal);
}

// Directories, devices, files, links and sockets, with permissions.
bool IsMode(uint32_t mode) {
  constexpr uint32_t kTypes[] = {001, 002, 004, 006, 010, 012, 014};
  return std::find(std::begin(kTypes), std::end(kTypes), mode >> 12) != std::end(kTypes);
}

bool IsBinary(IdentificationStream* stream) {
  const FileBytes<kBinarySize> header(stream, 0);
  if (header.size() < kBinarySize) return false;
  const bool little = header.WordLE(0) == kBinaryMagic;
  if (!little && header.WordBE(0) != kBinaryMagic) return false;
  const auto word = [&](size_t at) { return little ? header.WordLE(at) : header.WordBE(at); };
  const size_t nameSize = word(20);  // its NUL included
  if (!IsMode(word(6)) || nameSize < 2 || nameSize > kMaxName) return false;
  const FileBytes<kMaxName> name(stream, kBinarySize);
  return name.size() >= nameSize && name.View().find('\0') == nameSize - 1;
}

}  // namespace

FormatId CpioProbe(IdentificationStream* stream) {
  const FileBytes<kHexSize> header(stream, 0);
  return IsText(header) || IsBinary(stream) ? kFormatCpio : kNoMatch;
}

}  // namespace fi
