#include "probes/markup/message_history.h"

#include <algorithm>
#include <string_view>

#include "probes/markup/document_root.h"
#include "registry/format_ids.h"
#include "stream/first_byte.h"
#include "stream/text_view.h"

namespace fi {
namespace {

constexpr uint32_t kWindow = 4096;  // characters looked at

// Other vocabularies have a root called Log, too.
bool IsNumber(std::string_view text) {
  return !text.empty() && std::all_of(text.begin(), text.end(), IsDigit);
}

}  // namespace

bool IsMessageHistory(IdentificationStream* stream, const TextForm& form) {
  const DocumentRoot document(stream, form, kWindow);
  return document.isXml() && document.LocalName() == "Log" && document.Namespace().empty() &&
         IsNumber(document.Attribute("FirstSessionID")) &&
         IsNumber(document.Attribute("LastSessionID"));
}

FormatId MessageHistoryProbe(IdentificationStream* stream) {
  if (FirstByte(stream) != '<' || IdStreamGetByte(stream) != '?') return kNoMatch;
  return IsMessageHistory(stream, TextForm{}) ? kFormatMsnMessengerHistory : kNoMatch;
}

}  // namespace fi
