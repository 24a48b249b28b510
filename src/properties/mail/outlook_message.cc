#include "properties/mail/outlook_message.h"

#include <array>
#include <string_view>

#include "properties/record/short_text.h"
#include "stream/child_stream.h"
#include "stream/file_bytes.h"

namespace fi {
namespace {

constexpr char kWide[] = "__substg1.0_001A001F";
constexpr char kNarrow[] = "__substg1.0_001A001E";

// The class in ASCII, in lower case: of a wide one every second byte.
ShortText MessageClass(IOHandle* message) {
  ShortText name;
  const ChildStream wide(message, kWide);
  if (wide) {
    const FileBytes<126> bytes(wide.get(), 0);
    for (size_t i = 0; i + 1 < bytes.size(); i += 2) name.AppendLower(bytes.View().substr(i, 1));
    return name;
  }
  const ChildStream narrow(message, kNarrow);
  if (narrow) name.AppendLower(FileBytes<63>(narrow.get(), 0).View());
  return name;
}

}  // namespace

void ReadOutlookMessageProperties(const PropertyQuestion& question, PropertySet& out) {
  const ShortText name = MessageClass(question.stream->handle);
  constexpr std::string_view kPlace = "message class";
  if (name.view().empty()) return;
  if (name.view().ends_with(".smime.multipartsigned")) {
    out.Set(Property::kSigned, "yes", kPlace);
    out.Set(Property::kEncryption, "none", kPlace);
  } else if (name.view().ends_with(".smime")) {
    out.Set(Property::kEncryption, "certificate", kPlace);
    out.Set(Property::kEncryptionScheme, "S/MIME", kPlace);
  } else if (name.view().starts_with("ipm.note.rpmsg")) {
    out.Set(Property::kEncryption, "rights", kPlace);
  } else {
    out.Set(Property::kEncryption, "none", kPlace);
  }
}

}  // namespace fi
