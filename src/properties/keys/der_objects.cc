#include "properties/keys/der_objects.h"

#include <memory>
#include <new>
#include <string_view>

#include "properties/record/short_text.h"
#include "stream/file_bytes.h"

namespace fi {
namespace {

using namespace std::string_view_literals;

// What is signed of a certificate begins with its version, less one.
constexpr auto kVersion = "\xA0\x03\x02\x01"sv;

// Object identifiers: what is encrypted in a PKCS #12 file is one of these.
constexpr auto kEncryptedData = "\x06\x09\x2A\x86\x48\x86\xF7\x0D\x01\x07\x06"sv;
constexpr auto kShroudedKey = "\x06\x0B\x2A\x86\x48\x86\xF7\x0D\x01\x0C\x0A\x01\x02"sv;

}  // namespace

void ReadCertificateProperties(const PropertyQuestion& question, PropertySet& out) {
  const FileBytes<32> head(question.stream, 0);
  const size_t at = head.View().find(kVersion);
  if (at == std::string_view::npos || !head.Has(at, kVersion.size() + 1)) return;
  ShortText version;
  version.AppendNumber(uint64_t{head.Byte(at + kVersion.size())} + 1);
  out.Set(Property::kVersion, version.view(), "certificate", static_cast<int64_t>(at));
}

void ReadPkcs12Properties(const PropertyQuestion& question, PropertySet& out) {
  constexpr size_t kMost = 64 * 1024;
  const std::unique_ptr<FileBytes<kMost>> bytes(new (std::nothrow)
                                                    FileBytes<kMost>(question.stream, 0));
  if (bytes == nullptr) return;
  for (const std::string_view mark : {kEncryptedData, kShroudedKey}) {
    const size_t at = bytes->View().find(mark);
    if (at == std::string_view::npos) continue;
    return out.Set(Property::kEncryption, "password", "contents", static_cast<int64_t>(at));
  }
  if (bytes->size() < kMost) out.Set(Property::kEncryption, "none", "contents");
}

}  // namespace fi
