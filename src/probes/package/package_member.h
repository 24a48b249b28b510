// Members of a package view, opened for a scope; and the answer of the package probes.
#ifndef FI_PROBES_PACKAGE_PACKAGE_MEMBER_H_
#define FI_PROBES_PACKAGE_PACKAGE_MEMBER_H_

#include <cstdint>
#include <cstring>
#include <string_view>

#include "formatid/io.h"
#include "platform/io.h"

namespace fi {

// What a package probe answers the dispatcher: whether the next probe is tried. 0 ends the chain.
using GoOn = uint16_t;
inline constexpr GoOn kChainEnds = 0;
inline constexpr GoOn kGoOn = 1;

// The member `path` of the package view `package`, which must outlive it; null when there is none.
// `status`, where it is not null, receives the result of the open operation.
inline io::OwnedHandle OpenMember(IOHandle* package, std::string_view path,
                                  int32_t* status = nullptr) {
  IOMemberSource source;
  source.parent = package;
  source.position = -1;
  source.working[0] = source.working[1] = 0;
  IOHandle* member = nullptr;
  int32_t result = kIoNotFound;
  if (path.size() < sizeof source.path) {
    std::memcpy(source.path, path.data(), path.size());
    source.path[path.size()] = '\0';
    result = package->operations->open(package, &member, kIoSourcePackageMember, &source, 0);
  }
  if (status != nullptr) *status = result;
  return io::OwnedHandle(result == kIoOk ? member : nullptr);
}

inline bool HasMember(IOHandle* package, std::string_view path) {
  return OpenMember(package, path) != nullptr;
}

// Asks a package view to find its members by name. Views that know no other way take no notice.
inline void SetByNameAccess(IOHandle* package) {
  constexpr uint32_t kByName = 2;
  const uint32_t none = 0;
  (void)IOSetInfo(package, kIoSetPackageMode, kByName, &none);
}

// The bytes of `handle` as a ZIP package; null when they are none.
inline io::OwnedHandle OpenPackage(IOHandle* handle) {
  IOHandle* package = handle;
  if (handle->operations->open(handle, &package, kIoSourcePackage, nullptr, 0) != 0) return nullptr;
  return io::OwnedHandle(package);
}

}  // namespace fi

#endif  // FI_PROBES_PACKAGE_PACKAGE_MEMBER_H_
