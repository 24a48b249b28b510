#include "probes/document/ami_pro.h"

#include "registry/format_ids.h"

namespace fi {
namespace {

constexpr uint32_t kWindow = 256;  // bytes looked at, the line included but not its end
constexpr uint32_t kEnoughHighBytes = 100;
constexpr uint32_t kLastAscii = 0x7F;

}  // namespace

FormatId AmiProProbe(IdentificationStream* stream) {
  uint32_t bytes = 0;
  for (;;) {
    const uint32_t byte = IdStreamGetByte(stream);
    if (byte == '\r') break;
    // The end of the data lies above every byte.
    if (byte > kLastAscii || ++bytes == kWindow) return kNoMatch;
  }
  if (IdStreamGetByte(stream) != '\n') return kNoMatch;
  uint32_t highBytes = 0;
  for (; bytes < kWindow; ++bytes) {
    const uint32_t byte = IdStreamGetByte(stream);
    if (byte == kEndOfData) break;
    if (byte > kLastAscii) ++highBytes;
  }
  return highBytes >= kEnoughHighBytes ? kFormatAmiPro : kNoMatch;
}

}  // namespace fi
