#include "properties/text/rich_text.h"

#include <string_view>

#include "properties/record/short_text.h"
#include "properties/text/text.h"
#include "stream/file_bytes.h"

namespace fi {
namespace {

// The digits behind a control word; empty when it is not there, or a longer word begins so.
std::string_view Parameter(std::string_view text, std::string_view word, size_t* offset) {
  const size_t at = text.find(word);
  if (at == std::string_view::npos) return {};
  std::string_view rest = text.substr(at + word.size());
  size_t length = 0;
  while (length < rest.size() && rest[length] >= '0' && rest[length] <= '9') ++length;
  *offset = at;
  return rest.substr(0, length);
}

bool HasWord(std::string_view text, std::string_view word) {
  const size_t at = text.find(word);
  if (at == std::string_view::npos || at + word.size() >= text.size()) return false;
  const char next = text[at + word.size()];
  return next < 'a' || next > 'z';
}

}  // namespace

void ReadRichTextProperties(const PropertyQuestion& question, PropertySet& out) {
  const FileBytes<512> head(question.stream, 0);
  const std::string_view text = head.View();
  size_t offset = 0;
  out.Set(Property::kVersion, Parameter(text, "\\rtf", &offset), "\\rtf", 0);
  if (const std::string_view page = Parameter(text, "\\ansicpg", &offset); !page.empty()) {
    // Pages below 900 are those of DOS; 10000 is that of the Macintosh.
    ShortText charset(page.size() < 3 || (page.size() == 3 && page < "900") ? "cp" : "windows-");
    charset.Append(page);
    if (page == "10000") charset = ShortText("macintosh");
    out.Set(Property::kCharset, charset.view(), "\\ansicpg", static_cast<int64_t>(offset));
  } else if (HasWord(text, "\\mac")) {
    out.Set(Property::kCharset, "macintosh", "\\mac");
  } else if (HasWord(text, "\\pca")) {
    out.Set(Property::kCharset, "cp850", "\\pca");
  } else if (HasWord(text, "\\pc")) {
    out.Set(Property::kCharset, "cp437", "\\pc");
  } else if (HasWord(text, "\\ansi")) {
    out.Set(Property::kCharset, "windows-1252", "\\ansi");
  }
  ReadTextProperties(question, out);
}

}  // namespace fi
