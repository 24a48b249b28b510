#include "probes/image/x_pixmap.h"

#include "registry/format_ids.h"
#include "stream/file_bytes.h"
#include "stream/first_byte.h"
#include "stream/text_view.h"

namespace fi {
namespace {

constexpr size_t kWindow = 512;  // bytes that hold the comment and the declaration

// Takes `word` and the blanks before it off `text`.
bool Take(std::string_view* text, std::string_view word) {
  while (!text->empty() && IsSpaceOrTab(text->front())) text->remove_prefix(1);
  if (!text->starts_with(word)) return false;
  text->remove_prefix(word.size());
  return true;
}

// The array of strings, whose qualifiers differ between writers.
bool DeclaresStrings(std::string_view text) {
  const size_t at = text.find("static");
  return at != std::string_view::npos && text.find("char", at) != std::string_view::npos;
}

}  // namespace

bool IsXPixmap(std::string_view text) {
  text = text.substr(0, kWindow);
  if (text.starts_with("!")) {
    text.remove_prefix(1);
    return Take(&text, "XPM2") && !text.empty() && IsLineEnd(text.front());
  }
  if (!text.starts_with("/*")) return false;
  text.remove_prefix(2);
  return Take(&text, "XPM") && Take(&text, "*/") && DeclaresStrings(text);
}

FormatId XPixmapProbe(IdentificationStream* stream) {
  const uint32_t first = FirstByte(stream);
  if (first != '/' && first != '!') return kNoMatch;
  const FileBytes<kWindow> bytes(stream, 0);
  return IsXPixmap(bytes.View()) ? kFormatXpm : kNoMatch;
}

}  // namespace fi
