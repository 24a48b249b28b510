#include "probes/storage/quattro_pro.h"

#include "registry/format_ids.h"
#include "stream/child_stream.h"

namespace fi {
namespace {

// Whether the stream begins with these two little-endian words.
bool BeginsWith(IdentificationStream* child, uint32_t first, uint32_t second) {
  uint32_t word = 0;
  if (IdStreamGetDwordLE(child, &word) != 0 || word != first) return false;
  return IdStreamGetDwordLE(child, &word) == 0 && word == second;
}

}  // namespace

FormatId ProbePerfectOfficeMain(IdentificationStream* stream, FormatId classFormat) {
  if (!IsStorage(stream->handle)) return kNoMatch;
  const ChildStream child(stream->handle, "PerfectOffice_MAIN");
  // Deliberate: a document without the stream keeps the version of its class.
  if (!child) return classFormat;
  return BeginsWith(child.get(), 0x00020000, 0x00C91007) ? kFormatQuattroPro7 : classFormat;
}

FormatId ProbeNativeContentMain(IdentificationStream* stream) {
  constexpr uint32_t kQpw9 = 0x39575051;
  if (!IsStorage(stream->handle)) return kNoMatch;
  const ChildStream child(stream->handle, "NativeContent_MAIN");
  return child && BeginsWith(child.get(), 0x000E0001, kQpw9) ? kFormatQuattroPro9 : kNoMatch;
}

}  // namespace fi
