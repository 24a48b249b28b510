// Packages as the package reader sees them: the input is the relationships of the package, of the
// part that they may lead to, and that part, divided by the byte 1C; or, where it begins as a ZIP,
// the package itself.
#include <array>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <optional>
#include <string>
#include <string_view>

#include "formatid/io.h"
#include "platform/io.h"
#include "platform/package.h"
#include "tests/support/bytes.h"

namespace {

using fi::io::OwnedHandle;

constexpr const char* kMembers[] = {"_rels/.rels", "a/_rels/b.rels", "a/b", "_rels/c.rels", "c"};
constexpr const char* kTypes[] = {
    "t", "http://schemas.openxmlformats.org/officeDocument/2006/relationships/officeDocument"};
constexpr const char16_t* kIds[] = {u"rId1", u"1", u""};
constexpr const char16_t* kNames[] = {u"a/b", u"c", u"[Content_Types].xml", u"\xD800", u""};

constexpr int kMaxDepth = 3;  // parts that lead to parts

void Require(bool holds) {
  if (!holds) __builtin_trap();
}

// A header of a stored member: of its own, or that of the directory when `offset` is given.
std::string Header(const std::string& name, size_t size, std::optional<size_t> offset) {
  std::string bytes = offset ? fi::testing::Bytes("PK\1\2\x14\0") : "PK\3\4";
  bytes += fi::testing::LittleEndian(20, 2) + std::string(12, '\0');
  bytes += fi::testing::LittleEndian(size, 4) + fi::testing::LittleEndian(size, 4);
  bytes += fi::testing::LittleEndian(name.size(), offset ? 14 : 4);
  if (offset) bytes += fi::testing::LittleEndian(*offset, 4);
  return bytes + name;
}

std::string Package(std::string_view input) {
  if (input.starts_with("PK")) return std::string(input);
  std::string bytes;
  std::string directory;
  for (const char* name : kMembers) {
    const size_t end = input.find('\x1C');
    const std::string_view member = input.substr(0, end);
    directory += Header(name, member.size(), bytes.size());
    bytes.append(Header(name, member.size(), {})).append(member);
    input.remove_prefix(end == std::string_view::npos ? input.size() : end + 1);
  }
  const std::string count = fi::testing::LittleEndian(std::size(kMembers), 2);
  const std::string place =
      fi::testing::LittleEndian(directory.size(), 4) + fi::testing::LittleEndian(bytes.size(), 4);
  bytes += directory + fi::testing::Bytes("PK\5\6\0\0\0\0") + count + count;
  return bytes + place + std::string(2, '\0');
}

void CheckText(const PKGRelationship& relationship) {
  Require(relationship.target[relationship.targetLength] == 0);
  Require(std::u16string_view(relationship.id).size() <= 1 << 20);
}

void Look(PKGHandle* source, int depth);

void Close(PKGHandle* part, uint16_t status, int depth) {
  Require((status == 0) == (part != nullptr));
  if (part == nullptr) return;
  std::array<char, 512> head;
  IOHandle* const bytes = PKGGetHIOFILE(part);
  const uint32_t size = fi::io::Read(bytes, head.data(), head.size());
  const std::string before(head.data(), size);
  Require(PKGGetHIOFILE(part) == bytes && fi::io::Read(bytes, head.data(), size) == size);
  Require(before == std::string_view(head.data(), size));
  Look(part, depth);
  Require(PKGCloseFile(part) == 0);
}

void Look(PKGHandle* source, int depth) {
  if (depth == kMaxDepth) return;
  PKGRelationship relationship;
  for (const char* type : kTypes) {
    if (PKGGetRelAttrByType(&relationship, nullptr, type, source) != 0) continue;
    CheckText(relationship);
    PKGHandle* part = nullptr;
    const uint16_t status = PKGOpenFileByRelId(&part, relationship.id, source);
    Close(part, status, depth + 1);
  }
  for (const char16_t* id : kIds) {
    PKGHandle* part = nullptr;
    const uint16_t status = PKGOpenFileByRelId(&part, id, source);
    Close(part, status, kMaxDepth);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string bytes = Package(std::string(data, data + size));
  const IOMemorySource source = {bytes.data(), bytes.size(), nullptr};
  IOHandle* file = nullptr;
  Require(IOOpen(&file, kIoSourceMemory, &source, 1) == kIoOk);
  const OwnedHandle ownedFile(file);
  IOHandle* view = file;
  if (file->operations->open(file, &view, kIoSourcePackage, nullptr, 0) != 0) return 0;
  const OwnedHandle ownedView(view);
  PKGHandle* package = nullptr;
  if (PKGInitEx(view, &package) != 0) return 0;
  Look(package, 0);
  for (const char* type : kTypes) {
    PKGHandle* part = nullptr;
    PKGRelationship relationship;
    const uint16_t status = PKGOpenFileByType(&part, &relationship, type, package);
    if (status == 0) CheckText(relationship);
    Close(part, status, kMaxDepth);
  }
  for (const char16_t* name : kNames) {
    PKGHandle* part = nullptr;
    const uint16_t status = PKGOpenFileByTarget(&part, name, package);
    Close(part, status, kMaxDepth);
  }
  Require(PKGDeinit(package) == 0);
  return 0;
}
