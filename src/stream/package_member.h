// Members of a package view, opened for a scope; and the answers of the package probes.
#ifndef FI_STREAM_PACKAGE_MEMBER_H_
#define FI_STREAM_PACKAGE_MEMBER_H_

#include <cstdint>
#include <string_view>

#include "formatid/formatid.h"
#include "formatid/io.h"
#include "platform/io.h"
#include "stream/id_stream.h"

namespace fi {

// What a probe in the chain of the package dispatcher answers.
struct PackageAnswer {
  FormatId id = kNoMatch;  // kNoMatch: the probe says nothing, the answer before it stands
  bool ends = false;       // the probes behind it are not tried
  uint32_t status = 0;     // of a decryption
};
inline constexpr PackageAnswer kGoOn = {};

inline constexpr PackageAnswer EndsWith(FormatId id) { return {.id = id, .ends = true}; }
inline constexpr PackageAnswer kChainEnds = EndsWith(kNoMatch);

using io::OpenMember;

inline bool HasMember(IOHandle* package, std::string_view path) {
  return OpenMember(package, path) != nullptr;
}

// Asks a package view to find its members by name. Views that know no other way take no notice.
inline void SetByNameAccess(IOHandle* package) {
  constexpr uint32_t kByName = 2;
  const uint32_t none = 0;
  (void)IOSetInfo(package, kIoSetPackageMode, kByName, &none);
}

// A view of `handle`; null when it does not open. A host may answer success and leave its own
// handle, which is not ours to close.
inline io::OwnedHandle OpenView(IOHandle* handle, uint32_t source) {
  IOHandle* view = handle;
  if (handle->operations->open(handle, &view, source, nullptr, 0) != 0) return nullptr;
  return io::OwnedHandle(view != handle ? view : nullptr);
}

// The bytes of `handle` as a ZIP package; null when they are none.
inline io::OwnedHandle OpenPackage(IOHandle* handle) { return OpenView(handle, kIoSourcePackage); }

// The same by the headers of its members, as far as they are undamaged.
inline io::OwnedHandle OpenRepairedPackage(IOHandle* handle) {
  return OpenView(handle, kIoSourceRepairedPackage);
}

// The first bytes of a member that is open and at its start, up to the size of the buffer.
template <size_t size>
std::string_view ReadHead(IOHandle* member, char (&buffer)[size]) {
  return {buffer, io::ReadFully(member, reinterpret_cast<uint8_t*>(buffer), size)};
}

}  // namespace fi

#endif  // FI_STREAM_PACKAGE_MEMBER_H_
