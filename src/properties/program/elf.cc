#include "properties/program/elf.h"

#include <string_view>

#include "stream/file_bytes.h"

namespace fi {
namespace {

std::string_view NameOfMachine(uint32_t machine) {
  switch (machine) {
    case 2:
      return "SPARC";
    case 3:
      return "x86";
    case 4:
      return "68000";
    case 8:
      return "MIPS";
    case 15:
      return "PA-RISC";
    case 20:
      return "PowerPC";
    case 21:
      return "PowerPC 64";
    case 22:
      return "S/390";
    case 40:
      return "ARM";
    case 42:
      return "SuperH";
    case 43:
      return "SPARC V9";
    case 50:
      return "Itanium";
    case 62:
      return "x86-64";
    case 83:
      return "AVR";
    case 94:
      return "Xtensa";
    case 183:
      return "ARM64";
    case 243:
      return "RISC-V";
    case 247:
      return "BPF";
    case 258:
      return "LoongArch";
    default:
      return {};
  }
}

constexpr std::string_view kTypes[] = {"", "object", "program", "shared object", "core"};

// A position-independent program has the type of a shared object; a segment that names its loader
// tells them apart.
bool NamesLoader(IdentificationStream* stream, const FileBytes<64>& head, bool is64,
                 bool isBigEndian) {
  constexpr uint32_t kMaxSegments = 64;
  constexpr uint32_t kInterpreter = 3;
  const auto word = [&](size_t at) { return isBigEndian ? head.WordBE(at) : head.WordLE(at); };
  const auto dword = [&](size_t at) { return isBigEndian ? head.DwordBE(at) : head.DwordLE(at); };
  // Of a 64-bit offset the lower half: program headers stand near the start.
  const uint32_t table = is64 ? dword(isBigEndian ? 36 : 32) : dword(28);
  const uint32_t size = word(is64 ? 54 : 42);
  const uint32_t count = word(is64 ? 56 : 44);
  if (size < 32 || table == 0) return false;
  for (uint32_t i = 0; i < count && i < kMaxSegments; ++i) {
    const FileBytes<4> segment(stream, int64_t{table} + int64_t{i} * size);
    if (!segment.Has(0, 4)) return false;
    if ((isBigEndian ? segment.DwordBE(0) : segment.DwordLE(0)) == kInterpreter) return true;
  }
  return false;
}

}  // namespace

void ReadElfProperties(const PropertyQuestion& question, PropertySet& out) {
  const FileBytes<64> head(question.stream, 0);
  if (!head.Holds(0,
                  "\x7F"
                  "ELF") ||
      !head.Has(0, 20))
    return;
  const bool is64 = head.Byte(4) == 2;
  const bool isBigEndian = head.Byte(5) == 2;
  out.Set(Property::kProfile, is64 ? "64-bit" : "32-bit", "header", 4);
  out.Set(Property::kByteOrder, isBigEndian ? "big-endian" : "little-endian", "header", 5);
  const uint32_t machine = isBigEndian ? head.WordBE(18) : head.WordLE(18);
  out.Set(Property::kMachine, NameOfMachine(machine), "header", 18);
  const uint32_t type = isBigEndian ? head.WordBE(16) : head.WordLE(16);
  if (type >= std::size(kTypes)) return;
  constexpr uint32_t kSharedObject = 3;
  const bool isProgram =
      type == kSharedObject && NamesLoader(question.stream, head, is64, isBigEndian);
  out.Set(Property::kKind, isProgram ? "program" : kTypes[type], "header", 16);
}

}  // namespace fi
