#include "probes/image/xwd.h"

#include "registry/format_ids.h"
#include "stream/file_bytes.h"

namespace fi {
namespace {

constexpr size_t kHeader10Size = 40;   // version 6, of X10
constexpr size_t kHeader11Size = 100;  // version 7; the name of the window follows
constexpr uint32_t kMostHeader = 4096;
constexpr uint32_t kMaxDepth = 32;
constexpr uint32_t kMaxFormat = 2;
constexpr uint64_t kColourSize = 12;

using Header = FileBytes<kHeader11Size>;

bool IsExtent(uint32_t value) { return value >= 1 && value <= 0xFFFF; }
bool IsDepth(uint32_t value) { return value >= 1 && value <= kMaxDepth; }
bool IsUnit(uint32_t bits) { return bits == 8 || bits == 16 || bits == 32; }

bool IsX10(const Header& header) {
  return header.DwordBE(0) == kHeader10Size && header.DwordBE(4) == 6 &&
         IsDepth(header.DwordBE(12)) && header.DwordBE(16) <= kMaxFormat &&
         IsExtent(header.DwordBE(20)) && IsExtent(header.DwordBE(24));
}

bool IsX11(const Header& header) {
  return header.DwordBE(0) >= kHeader11Size && header.DwordBE(0) <= kMostHeader &&
         header.DwordBE(4) == 7 && header.DwordBE(8) <= kMaxFormat && IsDepth(header.DwordBE(12)) &&
         IsExtent(header.DwordBE(16)) && IsExtent(header.DwordBE(20)) && header.DwordBE(28) <= 1 &&
         IsUnit(header.DwordBE(32)) && header.DwordBE(36) <= 1 && IsUnit(header.DwordBE(40)) &&
         IsDepth(header.DwordBE(44));
}

}  // namespace

FormatId XwdProbe(IdentificationStream* stream) {
  if (IdStreamSeek(stream, 0, kIoFromStart) != 0 || IdStreamGetByte(stream) != 0) return kNoMatch;
  const Header header(stream, 0);
  uint64_t colours = 0;
  if (IsX11(header) && header.size() == kHeader11Size) {
    colours = header.DwordBE(76);
  } else if (!IsX10(header)) {
    return kNoMatch;
  }
  const uint64_t needed = header.DwordBE(0) + kColourSize * colours;
  return needed <= FileSize(stream) ? kFormatXwd : kNoMatch;
}

}  // namespace fi
