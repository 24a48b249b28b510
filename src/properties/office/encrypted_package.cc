#include "properties/office/encrypted_package.h"

#include <array>
#include <cstdint>
#include <string_view>

#include "platform/office_password.h"
#include "probes/protection/rights_management.h"
#include "properties/record/short_text.h"
#include "stream/child_stream.h"
#include "stream/file_bytes.h"

namespace fi {
namespace {

constexpr char kInfo[] = "EncryptionInfo";

std::string_view Attribute(std::string_view text, std::string_view name) {
  const size_t at = text.find(name);
  if (at == std::string_view::npos) return {};
  const std::string_view rest = text.substr(at + name.size());
  return rest.substr(0, rest.find('"'));
}

// The descriptor of the agile scheme is XML; the first keyData element tells the cipher of the
// package.
void ReadAgile(std::string_view descriptor, PropertySet& out) {
  ShortText scheme(Attribute(descriptor, " cipherAlgorithm=\""));
  const std::string_view bits = Attribute(descriptor, " keyBits=\"");
  if (!bits.empty() && scheme.view() == "AES") {
    scheme.Append("-");
    scheme.Append(bits);
  }
  if (!scheme.view().empty()) scheme.Append(", agile");
  out.Set(Property::kEncryptionScheme, scheme.view(), kInfo, 8);
}

// The header of the standard scheme names the algorithm by a number of the CryptoAPI.
void ReadStandard(const FileBytes<4096>& info, PropertySet& out) {
  constexpr size_t kAlgorithm = 20;
  std::string_view scheme;
  switch (info.DwordLE(kAlgorithm)) {
    case 0x6801:
      scheme = "RC4, standard";
      break;
    case 0x660E:
      scheme = "AES-128, standard";
      break;
    case 0x660F:
      scheme = "AES-192, standard";
      break;
    case 0x6610:
      scheme = "AES-256, standard";
      break;
    default:
      return;
  }
  out.Set(Property::kEncryptionScheme, scheme, kInfo, kAlgorithm);
}

}  // namespace

void ReadEncryptedPackageProperties(const PropertyQuestion& question, PropertySet& out) {
  IOHandle* document = question.stream->handle;
  const ChildStream stream(document, kInfo);
  if (!stream) {
    if (CheckRightsManagedTransform(question.stream)) {
      out.Set(Property::kEncryption, "rights", "DataSpaces");
    }
    return;
  }
  const FileBytes<4096> info(stream.get(), 0);
  const uint32_t minor = info.WordLE(2);
  const bool isOpen = HowPackageOpens(document) == OfficeOpening::kWithoutPassword;
  out.Set(Property::kEncryption, isOpen ? "restricted" : "password", kInfo, 0);
  if (minor == 4) ReadAgile(info.View(), out);
  if (minor == 2) ReadStandard(info, out);
}

}  // namespace fi
