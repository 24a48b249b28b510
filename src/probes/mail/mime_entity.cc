#include "probes/mail/mime_entity.h"

#include <algorithm>

#include "stream/text_view.h"

namespace fi {
namespace {

// Whether `text` holds `lower`, which is in lower case, in any case.
bool HoldsNoCase(std::string_view text, std::string_view lower) {
  const auto same = [](char c, char wanted) { return ToLower(c) == wanted; };
  return std::search(text.begin(), text.end(), lower.begin(), lower.end(), same) != text.end();
}

// The text of a header field that is folded: up to the line that does not begin with a blank.
std::string_view Field(std::string_view text) {
  size_t end = 0;
  while (end < text.size()) {
    const size_t lineEnd = text.find('\n', end);
    if (lineEnd == std::string_view::npos) return text;
    end = lineEnd + 1;
    if (end == text.size() || !IsSpaceOrTab(text[end])) break;
  }
  return text.substr(0, end);
}

}  // namespace

bool IsNoSavedPage(std::string_view text, bool isCut) {
  std::string_view rest = text;
  std::string_view type;
  bool isSigned = false;
  while (!rest.empty() && !IsLineEnd(rest.front())) {
    const std::string_view field = Field(rest);
    if (StartsWithNoCase(field, "content-type:")) type = field;
    isSigned = isSigned || StartsWithNoCase(field, "snapshot-content-location:") ||
               (StartsWithNoCase(field, "from:") && HoldsNoCase(field, "saved by"));
    rest.remove_prefix(field.size());
  }
  if (isSigned || (isCut && rest.empty())) return false;
  if (!HoldsNoCase(type, "multipart/related")) return true;
  return !isCut && !HoldsNoCase(text, "text/html");
}

}  // namespace fi
