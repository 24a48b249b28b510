// The reader of Open Packaging Conventions (ECMA-376-2) packages: relationships and parts over a
// ZIP package view. Status 0 is success. Strings are UTF-16 in host order, terminated by 0.
#ifndef FI_PLATFORM_PACKAGE_H_
#define FI_PLATFORM_PACKAGE_H_

#include <cstdint>

#include "formatid/io.h"

extern "C" {

// A package, or an opened part of one. Relationships are looked up of either.
struct PKGHandle;

// Both strings belong to the handle whose relationships were searched and live as long as it.
struct PKGRelationship {
  const char16_t* id;
  const char16_t* target;  // as written
  uint16_t targetLength;   // characters
};

// Opens the relationships of the package view `handle`, which is borrowed and outlives the package.
// Fails when the member "_rels/.rels" cannot be opened: then the ZIP is no such package.
uint16_t PKGInitEx(IOHandle* handle, PKGHandle** package) noexcept;

// Releases the package; null is left alone. Its parts are closed before.
uint16_t PKGDeinit(PKGHandle* package) noexcept;

// The first relationship of exactly that type, of a package or of a part. `second` is reserved:
// null.
uint16_t PKGGetRelAttrByType(PKGRelationship* relationship, void* second, const char* type,
                             PKGHandle* source) noexcept;

// Opens a member by its name in the ZIP.
uint16_t PKGOpenFileByTarget(PKGHandle** part, const char16_t* name, PKGHandle* package) noexcept;

// Opens the target of the first package-level relationship of that type, and fills `relationship`.
uint16_t PKGOpenFileByType(PKGHandle** part, PKGRelationship* relationship, const char* type,
                           PKGHandle* package) noexcept;

// Opens the target of the relationship of that Id of the part `source`. Targets resolve as relative
// references (RFC 3986) from their source part; those outside the package do not open.
uint16_t PKGOpenFileByRelId(PKGHandle** part, const char16_t* id, PKGHandle* source) noexcept;

// The bytes of an opened part, at its start; borrowed, and closed with the part.
IOHandle* PKGGetHIOFILE(PKGHandle* part) noexcept;

// Closes an opened part; null is left alone.
uint16_t PKGCloseFile(PKGHandle* part) noexcept;

}  // extern "C"

#endif  // FI_PLATFORM_PACKAGE_H_
