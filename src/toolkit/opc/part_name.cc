#include "toolkit/opc/part_name.h"

#include <cstdint>

#include "stream/text_view.h"
#include "toolkit/opc/limits.h"

namespace fi::opc {
namespace {

bool HasScheme(std::string_view reference) {
  for (size_t i = 0; i < reference.size(); ++i) {
    const char byte = reference[i];
    if (byte == ':') return i > 0;
    const bool inside = IsDigit(byte) || byte == '+' || byte == '-' || byte == '.';
    if (!IsLetter(byte) && (i == 0 || !inside)) return false;
  }
  return false;
}

// -1 for a byte that is no hexadecimal digit.
int HexValue(char byte) {
  if (IsDigit(byte)) return byte - '0';
  const char lower = static_cast<char>(byte | 0x20);
  return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
}

// REQUIRES: `bytes` has room for text.size() bytes. What looks like no escape stays as it is.
size_t Decode(std::string_view text, char* bytes) {
  size_t size = 0;
  for (size_t i = 0; i < text.size(); ++i) {
    const bool complete = text[i] == '%' && text.size() - i > 2;
    const int high = complete ? HexValue(text[i + 1]) : -1;
    const int low = complete ? HexValue(text[i + 2]) : -1;
    if (high < 0 || low < 0) {
      bytes[size++] = text[i];
      continue;
    }
    bytes[size++] = static_cast<char>(high << 4 | low);
    i += 2;
  }
  return size;
}

// Behind the last "/", 0 without one.
size_t LastSegmentAt(std::string_view path) { return path.rfind('/') + 1; }

// Appends `path`, of which "." and ".." are carried out; a ".." that would lead above the root is
// left out.
bool AppendSegments(std::string_view path, PartName* name) {
  while (!path.empty()) {
    const size_t slash = path.find('/');
    const bool isLast = slash == std::string_view::npos;
    const std::string_view segment = path.substr(0, slash);
    if (segment == "..") {
      std::string_view before = name->view();
      if (!before.empty()) before.remove_suffix(1);
      name->Cut(LastSegmentAt(before));
    } else if (segment != ".") {
      if (!name->Append(path.substr(0, isLast ? std::string_view::npos : slash + 1))) return false;
    }
    if (isLast) break;
    path.remove_prefix(slash + 1);
  }
  return true;
}

bool ResolvePath(std::string_view source, std::string_view path, PartName* target) {
  const bool isAbsolute = path.starts_with('/');
  if (isAbsolute) {
    path.remove_prefix(1);
  } else if (!target->Append(source.substr(0, LastSegmentAt(source)))) {
    return false;
  }
  return AppendSegments(path, target) && !target->view().empty();
}

}  // namespace

bool ResolveReference(std::string_view source, std::string_view reference, Escapes escapes,
                      PartName* target) {
  if (reference.size() > kMaxReference || HasScheme(reference)) return false;
  if (reference.starts_with("//")) return false;
  const std::string_view path = reference.substr(0, reference.find_first_of("?#"));
  if (path.empty()) return !source.empty() && target->Append(source);
  if (escapes == Escapes::kAsWritten) return ResolvePath(source, path, target);
  std::array<char, kMaxReference> decoded;
  const size_t size = Decode(path, decoded.data());
  return ResolvePath(source, {decoded.data(), size}, target);
}

bool RelationshipsPart(std::string_view source, PartName* part) {
  const size_t name = LastSegmentAt(source);
  return part->Append(source.substr(0, name)) && part->Append("_rels/") &&
         part->Append(source.substr(name)) && part->Append(".rels");
}

}  // namespace fi::opc
