#include "probes/protection/rights_management.h"

#include <array>
#include <cstddef>
#include <string_view>

#include "stream/child_stream.h"

namespace fi {
namespace {

// The transform's identifier is a GUID in braces: 38 characters of 16 bits.
constexpr size_t kIdentifierLength = 38;
constexpr uint32_t kIdentifierBytes = 2 * kIdentifierLength;
constexpr uint32_t kIdentifierOffset = 8;

// Deliberate: the first half of {C73DFACD-061F-43B0-8B64-0C620D2A8B50} is compared, no more; any
// identifier that begins with it counts.
constexpr std::string_view kIdentifierStart = "{C73DFACD-061F-43B0";

bool NamesRightsManagement(IdentificationStream* primary) {
  (void)IdStreamSeek(primary, kIdentifierOffset, kIoFromStart);
  uint32_t size = 0;
  if (IdStreamGetDwordLE(primary, &size) != 0 || size != kIdentifierBytes) return false;
  bool same = true;
  for (size_t i = 0; i < kIdentifierLength; ++i) {
    const int32_t character = IdStreamGetWordLE(primary);
    if (character < 0) return false;
    if (i < kIdentifierStart.size() && character != kIdentifierStart[i]) same = false;
  }
  return same;
}

}  // namespace

bool CheckDrmContentStream(IdentificationStream* stream) {
  constexpr char kFirstControl = 7;
  constexpr char kLastControl = 21;
  std::array<char, sizeof("?DRMContent")> name{"?DRMContent"};
  for (char control = kFirstControl; control <= kLastControl; ++control) {
    name[0] = control;
    if (HasStream(stream->handle, name.data())) return true;
  }
  return false;
}

bool CheckRightsManagedTransform(IdentificationStream* stream) {
  const io::OwnedHandle spaces = OpenChild(stream->handle, kIoSourceSubStorage, "\006DataSpaces");
  if (spaces == nullptr) return false;
  const io::OwnedHandle transforms = OpenChild(spaces.get(), kIoSourceSubStorage, "TransformInfo");
  if (transforms == nullptr) return false;
  const io::OwnedHandle transform =
      OpenChild(transforms.get(), kIoSourceSubStorage, "DRMEncryptedTransform");
  if (transform == nullptr) return false;
  const ChildStream primary(transform.get(), "\006Primary");
  return primary && NamesRightsManagement(primary.get());
}

}  // namespace fi
