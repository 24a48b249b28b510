#include "probes/system/internet_shortcut.h"

#include "registry/format_ids.h"
#include "stream/file_bytes.h"
#include "stream/first_byte.h"
#include "stream/text_view.h"

namespace fi {
namespace {

constexpr size_t kWindow = 4096;  // bytes looked at

// The next line that is neither empty nor a comment.
bool NextEntry(Lines& lines, std::string_view* entry) {
  while (lines.Next(entry)) {
    *entry = TrimBlanks(*entry);
    if (!entry->empty() && entry->front() != ';') return true;
  }
  return false;
}

}  // namespace

bool IsInternetShortcut(std::string_view text) {
  if (text.find('\0') != std::string_view::npos) return false;
  Lines lines(text);
  std::string_view line;
  if (!NextEntry(lines, &line)) return false;
  // The page of a frame set names the set first. Settings of other kinds have such a section, too.
  if (EqualsNoCase(line, "[default]")) {
    return NextEntry(lines, &line) && StartsWithNoCase(line, "baseurl=");
  }
  if (!EqualsNoCase(line, "[internetshortcut]")) return false;
  while (NextEntry(lines, &line)) {
    if (StartsWithNoCase(line, "url=")) return true;
  }
  return false;
}

FormatId InternetShortcutProbe(IdentificationStream* stream) {
  const uint32_t first = FirstByte(stream);
  if (first != '[' && first != ';' && !IsWhiteSpaceByte(first)) {
    return kNoMatch;
  }
  const FileBytes<kWindow> bytes(stream, 0);
  return IsInternetShortcut(bytes.View()) ? kFormatInternetShortcut : kNoMatch;
}

}  // namespace fi
