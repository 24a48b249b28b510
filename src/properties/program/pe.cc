#include "properties/program/pe.h"

#include <string_view>

#include "stream/file_bytes.h"

namespace fi {
namespace {

std::string_view NameOfMachine(uint32_t machine) {
  switch (machine) {
    case 0x014C:
      return "x86";
    case 0x8664:
      return "x86-64";
    case 0x01C0:
    case 0x01C2:
    case 0x01C4:
      return "ARM";
    case 0xAA64:
      return "ARM64";
    case 0x0200:
      return "Itanium";
    case 0x0EBC:
      return "EFI byte code";
    case 0x0166:
    case 0x0169:
      return "MIPS";
    case 0x01F0:
      return "PowerPC";
    case 0x0184:
      return "Alpha";
    case 0x5064:
      return "RISC-V 64";
    case 0x6264:
      return "LoongArch 64";
    default:
      return {};
  }
}

}  // namespace

void ReadPeProperties(const PropertyQuestion& question, PropertySet& out) {
  constexpr size_t kPlaceOfHeader = 0x3C;
  constexpr size_t kCharacteristics = 22;
  constexpr size_t kOptional = 24;
  constexpr size_t kSubsystem = kOptional + 68;
  constexpr uint32_t kIsDll = 0x2000;
  constexpr uint32_t kNativeSubsystem = 1;
  const FileBytes<64> dos(question.stream, 0);
  const uint32_t place = dos.DwordLE(kPlaceOfHeader);
  if (!dos.Holds(0, "MZ") || !dos.Has(kPlaceOfHeader, 4)) return;
  const FileBytes<512> head(question.stream, place);
  if (head.Holds(0, "NE")) return out.Set(Property::kProfile, "NE", "header", place);
  if (head.Holds(0, "LE")) return out.Set(Property::kProfile, "LE", "header", place);
  if (head.Holds(0, "LX")) return out.Set(Property::kProfile, "LX", "header", place);
  if (!head.Holds(0, {"PE\0\0", 4})) return;
  out.Set(Property::kMachine, NameOfMachine(head.WordLE(4)), "file header", int64_t{place} + 4);
  const uint32_t form = head.WordLE(kOptional);
  const bool isPlus = form == 0x20B;
  if (!isPlus && form != 0x10B) return;
  out.Set(Property::kProfile, isPlus ? "PE32+" : "PE32", "optional header",
          int64_t{place} + static_cast<int64_t>(kOptional));
  const bool isDll = (head.WordLE(kCharacteristics) & kIsDll) != 0;
  const bool isDriver = head.WordLE(kSubsystem) == kNativeSubsystem;
  out.Set(Property::kKind,
          isDll      ? "library"
          : isDriver ? "driver"
                     : "program",
          "file header", int64_t{place} + static_cast<int64_t>(kCharacteristics));
  // The fifth data directory tells place and size of the certificates.
  const size_t directories = kOptional + (isPlus ? 112 : 96);
  constexpr size_t kCertificates = 4;
  const size_t entry = directories + kCertificates * 8;
  if (head.DwordLE(directories - 4) <= kCertificates) return;
  const uint64_t where = head.DwordLE(entry);
  const uint64_t size = head.DwordLE(entry + 4);
  if (where == 0 || size == 0) return;
  const uint64_t fileSize = FileSize(question.stream);
  if (where > fileSize || size > fileSize - where) {
    return out.Set(Property::kDamaged, "certificates", "data directories");
  }
  out.Set(Property::kSigned, "yes", "certificate table", static_cast<int64_t>(where));
}

}  // namespace fi
