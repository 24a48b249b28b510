// The package reader of the platform: relationships are read when they are first asked for, parts
// are members of the view that the package was opened with.
#include <array>
#include <memory>
#include <new>
#include <string_view>
#include <utility>

#include "platform/io.h"
#include "platform/package.h"
#include "platform/work.h"
#include "toolkit/opc/limits.h"
#include "toolkit/opc/part_name.h"
#include "toolkit/opc/relationships.h"
#include "toolkit/text/utf16.h"

struct PKGHandle {
  IOHandle* view = nullptr;  // borrowed
  fi::opc::PartName name;
  fi::io::OwnedHandle bytes;  // of the package: its relationships, until they are read
  bool isRead = false;
  fi::opc::Relationships relationships;
};

namespace fi::opc {
namespace {

constexpr uint16_t kOk = 0;
constexpr uint16_t kFailure = 1;

const Relationships& RelationshipsOf(PKGHandle& source) {
  if (source.isRead) return source.relationships;
  source.isRead = true;
  const bool isPackage = source.name.view().empty();
  PartName name;
  if (!isPackage && !RelationshipsPart(source.name.view(), &name)) return source.relationships;
  const io::OwnedHandle document =
      isPackage ? std::move(source.bytes) : io::OpenMember(source.view, name.view());
  if (document != nullptr) source.relationships.Read(document.get());
  return source.relationships;
}

// A member without a name is no part: the empty name is the package's.
uint16_t OpenPart(IOHandle* view, const PartName& name, PKGHandle** part) {
  if (name.view().empty()) return kFailure;
  io::OwnedHandle bytes = io::OpenMember(view, name.view());
  if (bytes == nullptr) return kFailure;
  auto* opened = Allocated(WorkOf(view), new (std::nothrow) PKGHandle);
  if (opened == nullptr) return kFailure;
  opened->view = view;
  opened->name = name;
  opened->bytes = std::move(bytes);
  *part = opened;
  return kOk;
}

uint16_t OpenTarget(PKGHandle& source, const Relationships::Entry& entry, PKGHandle** part) {
  std::array<char, kMaxReference> reference;
  size_t size = 0;
  if (entry.isExternal || !NarrowUtf16(entry.target, reference.data(), reference.size(), &size)) {
    return kFailure;
  }
  const std::string_view text(reference.data(), size);
  for (const Escapes escapes : {Escapes::kAsWritten, Escapes::kDecoded}) {
    PartName name;
    if (!ResolveReference(source.name.view(), text, escapes, &name)) continue;
    if (OpenPart(source.view, name, part) == kOk) return kOk;
    if (text.find('%') == std::string_view::npos) break;
  }
  return kFailure;
}

void Fill(const Relationships::Entry& entry, PKGRelationship* relationship) {
  relationship->id = entry.id.data();
  relationship->target = entry.target.data();
  relationship->targetLength = static_cast<uint16_t>(entry.target.size());
}

}  // namespace
}  // namespace fi::opc

using fi::NarrowUtf16;
using namespace fi::opc;

uint16_t PKGInitEx(IOHandle* handle, PKGHandle** package) noexcept {
  *package = nullptr;
  fi::io::OwnedHandle document = fi::io::OpenMember(handle, "_rels/.rels");
  if (document == nullptr) return kFailure;
  auto* opened = fi::Allocated(fi::WorkOf(handle), new (std::nothrow) PKGHandle);
  if (opened == nullptr) return kFailure;
  opened->view = handle;
  opened->bytes = std::move(document);
  *package = opened;
  return kOk;
}

uint16_t PKGDeinit(PKGHandle* package) noexcept {
  delete package;
  return kOk;
}

uint16_t PKGGetRelAttrByType(PKGRelationship* relationship, void* /*second*/, const char* type,
                             PKGHandle* source) noexcept {
  Relationships::Entry entry;
  if (source == nullptr || !RelationshipsOf(*source).FindByType(type, &entry)) return kFailure;
  Fill(entry, relationship);
  return kOk;
}

uint16_t PKGOpenFileByTarget(PKGHandle** part, const char16_t* name, PKGHandle* package) noexcept {
  *part = nullptr;
  std::array<char, PartName::kMost> narrow;
  size_t size = 0;
  PartName member;
  if (package == nullptr || !NarrowUtf16(name, narrow.data(), narrow.size(), &size) ||
      !member.Append({narrow.data(), size})) {
    return kFailure;
  }
  return OpenPart(package->view, member, part);
}

uint16_t PKGOpenFileByType(PKGHandle** part, PKGRelationship* relationship, const char* type,
                           PKGHandle* package) noexcept {
  *part = nullptr;
  Relationships::Entry entry;
  if (package == nullptr || !RelationshipsOf(*package).FindByType(type, &entry)) return kFailure;
  Fill(entry, relationship);
  return OpenTarget(*package, entry, part);
}

uint16_t PKGOpenFileByRelId(PKGHandle** part, const char16_t* id, PKGHandle* source) noexcept {
  *part = nullptr;
  Relationships::Entry entry;
  if (source == nullptr || !RelationshipsOf(*source).FindById(id, &entry)) return kFailure;
  return OpenTarget(*source, entry, part);
}

IOHandle* PKGGetHIOFILE(PKGHandle* part) noexcept {
  if (part == nullptr || part->name.view().empty() || part->bytes == nullptr) return nullptr;
  return fi::io::Seek(part->bytes.get(), kIoFromStart, 0) ? part->bytes.get() : nullptr;
}

uint16_t PKGCloseFile(PKGHandle* part) noexcept {
  delete part;
  return kOk;
}
