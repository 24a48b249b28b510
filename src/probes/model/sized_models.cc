#include "probes/model/sized_models.h"

#include "registry/format_ids.h"
#include "stream/file_bytes.h"

namespace fi {

FormatId GltfProbe(IdentificationStream* stream) {
  constexpr uint32_t kHeaderSize = 12;
  const FileBytes<kHeaderSize> header(stream, 0);
  const uint32_t version = header.DwordLE(4);
  const uint32_t size = header.DwordLE(8);
  const bool matches = header.Holds(0, "glTF") && version >= 1 && version <= 2 &&
                       size >= kHeaderSize && size <= FileSize(stream);
  return matches ? kFormatGltfBinary : kNoMatch;
}

FormatId ThreeDStudioProbe(IdentificationStream* stream) {
  constexpr uint32_t kMain = 0x4D4D;
  constexpr uint32_t kVersion = 0x0002;
  constexpr uint32_t kEditor = 0x3D3D;
  const FileBytes<8> chunk(stream, 0);
  if (chunk.size() < 8 || chunk.WordLE(0) != kMain) return kNoMatch;
  const uint32_t child = chunk.WordLE(6);
  if (child != kVersion && child != kEditor) return kNoMatch;
  // The mark is two letters, so that the size must be exact.
  return chunk.DwordLE(2) == FileSize(stream) ? kFormatThreeDStudio : kNoMatch;
}

}  // namespace fi
