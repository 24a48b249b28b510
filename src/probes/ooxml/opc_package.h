// Packages and parts of the Open Packaging Conventions, opened for a scope.
#ifndef FI_PROBES_OOXML_OPC_PACKAGE_H_
#define FI_PROBES_OOXML_OPC_PACKAGE_H_

#include <memory>
#include <string_view>

#include "formatid/io.h"
#include "platform/package.h"

namespace fi::opc {

struct PackageCloser {
  void operator()(PKGHandle* package) const { (void)PKGDeinit(package); }
};
using OwnedPackage = std::unique_ptr<PKGHandle, PackageCloser>;

struct PartCloser {
  void operator()(PKGHandle* part) const { (void)PKGCloseFile(part); }
};
// A part is closed before its package.
using OwnedPart = std::unique_ptr<PKGHandle, PartCloser>;

// Null when the view holds no such package.
inline OwnedPackage OpenPackage(IOHandle* view) {
  PKGHandle* package = nullptr;
  return OwnedPackage(PKGInitEx(view, &package) == 0 ? package : nullptr);
}

inline bool FindRelationship(PKGHandle* source, const char* type, PKGRelationship* relationship) {
  return PKGGetRelAttrByType(relationship, nullptr, type, source) == 0;
}

// Each null when there is no such part.
inline OwnedPart OpenByName(PKGHandle* package, const char16_t* name) {
  PKGHandle* part = nullptr;
  return OwnedPart(PKGOpenFileByTarget(&part, name, package) == 0 ? part : nullptr);
}

inline OwnedPart OpenByType(PKGHandle* package, const char* type) {
  PKGHandle* part = nullptr;
  PKGRelationship relationship{};
  return OwnedPart(PKGOpenFileByType(&part, &relationship, type, package) == 0 ? part : nullptr);
}

inline OwnedPart OpenById(PKGHandle* source, const char16_t* id) {
  PKGHandle* part = nullptr;
  return OwnedPart(PKGOpenFileByRelId(&part, id, source) == 0 ? part : nullptr);
}

// What follows the last dot of a part's name; the two differ where it has none.
inline std::u16string_view ExtensionOrWholeName(std::u16string_view name) {
  return name.substr(name.rfind(u'.') + 1);
}

inline std::u16string_view ExtensionOrNothing(std::u16string_view name) {
  return name.find(u'.') == std::u16string_view::npos ? std::u16string_view{}
                                                      : ExtensionOrWholeName(name);
}

}  // namespace fi::opc

#endif  // FI_PROBES_OOXML_OPC_PACKAGE_H_
