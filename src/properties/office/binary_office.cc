#include "properties/office/binary_office.h"

#include <algorithm>
#include <cstdint>
#include <string_view>

#include "platform/office_password.h"
#include "stream/child_stream.h"
#include "stream/file_bytes.h"

namespace fi {
namespace {

// Records of the globals that come before the one of encryption.
constexpr uint32_t kMaxRecords = 32;

// The version of an encryption header tells RC4 with a key of 40 bits from the CryptoAPI: 1.1,
// and 2.2 to 4.2. Writers differ in the minor number.
std::string_view SchemeOfHeader(uint32_t major) {
  if (major == 1) return "RC4 40-bit";
  return major >= 2 && major <= 4 ? "RC4 CryptoAPI" : std::string_view();
}

void SetEncrypted(std::string_view scheme, std::string_view place, int64_t offset, PropertySet& out,
                  OfficeOpening opening = OfficeOpening::kWithPassword) {
  const bool isOpen = opening == OfficeOpening::kWithoutPassword;
  out.Set(Property::kEncryption, isOpen ? "restricted" : "password", place, offset);
  out.Set(Property::kEncryptionScheme, scheme, place, offset);
}

// Flags of the file-information block: fEncrypted, fObfuscated and which table stream is in use.
bool ReadWord(IOHandle* document, PropertySet& out) {
  constexpr size_t kFlags = 10;
  constexpr uint32_t kEncrypted = 0x0100;
  constexpr uint32_t kSecondTable = 0x0200;
  constexpr uint32_t kObfuscated = 0x8000;
  const ChildStream word(document, "WordDocument");
  if (!word) return false;
  const FileBytes<16> block(word.get(), 0);
  const uint32_t flags = block.WordLE(kFlags);
  if ((flags & kEncrypted) == 0) {
    out.Set(Property::kEncryption, "none", "WordDocument", kFlags);
    return true;
  }
  std::string_view scheme;
  OfficeOpening opening = OfficeOpening::kUnknown;
  if ((flags & kObfuscated) != 0) {
    scheme = "XOR";
  } else {
    const char* name = (flags & kSecondTable) != 0 ? "1Table" : "0Table";
    const ChildStream table(document, name);
    if (table) {
      const FileBytes<512> header(table.get(), 0);
      scheme = SchemeOfHeader(header.WordLE(0));
      opening = HowHeaderOpens(header.Bytes());
    }
  }
  SetEncrypted(scheme, "WordDocument", kFlags, out, opening);
  return true;
}

// The record FilePass stands among the first of the workbook's globals.
bool ReadExcel(IOHandle* document, PropertySet& out) {
  constexpr uint32_t kFilePass = 0x002F;
  constexpr uint32_t kWriteProtect = 0x0086;
  constexpr uint32_t kBoundSheet = 0x0085;
  constexpr size_t kMostFilePass = 512;
  for (const char* name : {"Workbook", "Book"}) {
    const ChildStream book(document, name);
    if (!book) continue;
    int64_t offset = 0;
    for (uint32_t count = 0; count < kMaxRecords; ++count) {
      const FileBytes<10> record(book.get(), offset);
      const uint32_t type = record.WordLE(0);
      if (!record.Has(0, 4) || type == kBoundSheet) break;
      if (type == kWriteProtect) {
        out.Set(Property::kPermissions, "write-reserved", name, offset);
      }
      if (type == kFilePass) {
        // Before Excel 97 the record holds an XOR key alone.
        const bool isRc4 = record.WordLE(2) > 4 && record.WordLE(4) == 1;
        const FileBytes<kMostFilePass> contents(book.get(), offset + 4);
        const size_t size = std::min<size_t>(contents.size(), record.WordLE(2));
        SetEncrypted(isRc4 ? SchemeOfHeader(record.WordLE(6)) : "XOR", name, offset, out,
                     HowWorkbookOpens(contents.Bytes().first(size)));
        return true;
      }
      offset += 4 + int64_t{record.WordLE(2)};
    }
    out.Set(Property::kEncryption, "none", name);
    return true;
  }
  return false;
}

// The header token of the current user tells an encrypted presentation.
bool ReadPowerPoint(IOHandle* document, PropertySet& out) {
  constexpr size_t kToken = 12;
  constexpr uint32_t kEncryptedToken = 0xF3D1C4DF;
  if (!HasStream(document, "PowerPoint Document")) return false;
  const ChildStream user(document, "Current User");
  if (!user) return true;
  const FileBytes<16> atom(user.get(), 0);
  if (!atom.Has(kToken, 4)) return true;
  if (atom.DwordLE(kToken) == kEncryptedToken) {
    SetEncrypted("RC4 CryptoAPI", "Current User", kToken, out);
  } else {
    out.Set(Property::kEncryption, "none", "Current User", kToken);
  }
  return true;
}

void ReadMacros(IOHandle* document, PropertySet& out) {
  for (const char* name : {"Macros", "_VBA_PROJECT_CUR"}) {
    const io::OwnedHandle project = OpenChild(document, kIoSourceSubStorage, name);
    if (project == nullptr) continue;
    const io::OwnedHandle code = OpenChild(project.get(), kIoSourceSubStorage, "VBA");
    if (code != nullptr) out.Set(Property::kMacros, "yes", name);
  }
}

}  // namespace

void ReadBinaryOfficeProperties(const PropertyQuestion& question, PropertySet& out) {
  IOHandle* document = question.stream->handle;
  const bool isOffice =
      ReadWord(document, out) || ReadExcel(document, out) || ReadPowerPoint(document, out);
  if (!isOffice) return;
  ReadMacros(document, out);
  if (HasStream(document, "_signatures")) out.Set(Property::kSigned, "yes", "_signatures");
  if (HasSubStorage(document, "_xmlsignatures")) {
    out.Set(Property::kSigned, "yes", "_xmlsignatures");
  }
}

}  // namespace fi
