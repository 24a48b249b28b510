#include "probes/content/link_text.h"

#include "platform/format_ids.h"
#include "probes/content/first_byte.h"
#include "probes/file_bytes.h"
#include "probes/text_view.h"

namespace fi {
namespace {

constexpr size_t kWindow = 4096;  // bytes looked at

// The first line that is neither empty nor a comment.
bool FirstSection(Lines& lines, std::string_view* section) {
  while (lines.Next(section)) {
    *section = TrimBlanks(*section);
    if (!section->empty() && section->front() != ';') return true;
  }
  return false;
}

// The key that holds an address in the section, in lower case.
std::string_view AddressKey(std::string_view section) {
  if (EqualsNoCase(section, "[internetshortcut]")) return "url=";
  // A saved frame set names the page that it came from first.
  if (EqualsNoCase(section, "[default]")) return "baseurl=";
  return {};
}

}  // namespace

bool IsLinkText(std::string_view text) {
  if (text.find('\0') != std::string_view::npos) return false;
  Lines lines(text);
  std::string_view line;
  if (!FirstSection(lines, &line)) return false;
  const std::string_view key = AddressKey(line);
  if (key.empty()) return false;
  while (lines.Next(&line)) {
    if (StartsWithNoCase(TrimBlanks(line), key)) return true;
  }
  return false;
}

FormatId LinkTextProbe(IdentificationStream* stream) {
  const uint32_t first = FirstByte(stream);
  if (first != '[' && first != ';' && (first > 0x7F || !IsSpace(static_cast<char>(first)))) {
    return kNoMatch;
  }
  const FileBytes<kWindow> bytes(stream, 0);
  return IsLinkText(bytes.View()) ? kFormatInternetShortcut : kNoMatch;
}

}  // namespace fi
