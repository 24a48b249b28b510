#include "properties/keys/cms.h"

#include <string_view>

#include "stream/file_bytes.h"

namespace fi {
namespace {

using namespace std::string_view_literals;

// The object identifiers 1.2.840.113549.1.7.x begin so; x follows.
constexpr auto kContentTypes = "\x06\x09\x2A\x86\x48\x86\xF7\x0D\x01\x07"sv;

// AuthEnvelopedData is 1.2.840.113549.1.9.16.1.23.
constexpr auto kAuthEnveloped = "\x06\x0B\x2A\x86\x48\x86\xF7\x0D\x01\x09\x10\x01\x17"sv;

}  // namespace

void ReadCmsProperties(const PropertyQuestion& question, PropertySet& out) {
  constexpr std::string_view kPlace = "content type";
  const FileBytes<32> head(question.stream, 0);
  if (head.View().find(kAuthEnveloped) != std::string_view::npos) {
    return out.Set(Property::kEncryption, "certificate", kPlace);
  }
  const size_t at = head.View().find(kContentTypes);
  if (at == std::string_view::npos) return;
  switch (head.Byte(at + kContentTypes.size())) {
    case 2:
      out.Set(Property::kSigned, "yes", kPlace, static_cast<int64_t>(at));
      return out.Set(Property::kEncryption, "none", kPlace, static_cast<int64_t>(at));
    case 3:
      return out.Set(Property::kEncryption, "certificate", kPlace, static_cast<int64_t>(at));
    case 6:
      return out.Set(Property::kEncryption, "password", kPlace, static_cast<int64_t>(at));
    default:
      return;
  }
}

}  // namespace fi
