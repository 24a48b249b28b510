#include "properties/program/mach_o.h"

#include <string_view>

#include "properties/record/short_text.h"
#include "stream/file_bytes.h"

namespace fi {
namespace {

std::string_view NameOfMachine(uint32_t type) {
  constexpr uint32_t k64 = 0x01000000;
  switch (type) {
    case 7:
      return "x86";
    case 7 | k64:
      return "x86-64";
    case 12:
      return "ARM";
    case 12 | k64:
      return "ARM64";
    case 18:
      return "PowerPC";
    case 18 | k64:
      return "PowerPC 64";
    case 6:
      return "68000";
    default:
      return "other";
  }
}

std::string_view NameOfType(uint32_t type) {
  switch (type) {
    case 1:
      return "object";
    case 2:
      return "program";
    case 4:
      return "core";
    case 6:
      return "library";
    case 8:
      return "bundle";
    case 10:
      return "symbols";
    case 11:
      return "kernel extension";
    default:
      return {};
  }
}

// Architectures of a universal binary, one behind the other.
void ReadUniversal(const FileBytes<512>& head, PropertySet& out) {
  constexpr uint32_t kMaxArchitectures = 16;
  constexpr size_t kEntrySize = 20;
  const uint32_t count = head.DwordBE(4);
  if (count > kMaxArchitectures) return;
  ShortText names;
  for (uint32_t i = 0; i < count; ++i) {
    if (!head.Has(8 + i * kEntrySize, kEntrySize)) break;
    if (i > 0) names.Append(", ");
    names.Append(NameOfMachine(head.DwordBE(8 + i * kEntrySize)));
  }
  out.Set(Property::kProfile, "universal", "header", 0);
  out.Set(Property::kMachine, names.view(), "header", 8);
}

}  // namespace

void ReadMachOProperties(const PropertyQuestion& question, PropertySet& out) {
  constexpr uint32_t kUniversal = 0xCAFEBABE;
  constexpr uint32_t k32 = 0xFEEDFACE;
  constexpr uint32_t k64 = 0xFEEDFACF;
  const FileBytes<512> head(question.stream, 0);
  if (!head.Has(0, 16)) return;
  if (head.DwordBE(0) == kUniversal) return ReadUniversal(head, out);
  const bool isBigEndian = head.DwordBE(0) == k32 || head.DwordBE(0) == k64;
  const auto dword = [&](size_t at) { return isBigEndian ? head.DwordBE(at) : head.DwordLE(at); };
  if (dword(0) != k32 && dword(0) != k64) return;
  out.Set(Property::kProfile, dword(0) == k64 ? "64-bit" : "32-bit", "header", 0);
  out.Set(Property::kByteOrder, isBigEndian ? "big-endian" : "little-endian", "header", 0);
  out.Set(Property::kMachine, NameOfMachine(dword(4)), "header", 4);
  out.Set(Property::kKind, NameOfType(dword(12)), "header", 12);
}

}  // namespace fi
