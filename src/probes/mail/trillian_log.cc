#include "probes/mail/trillian_log.h"

#include <string_view>

#include "registry/format_ids.h"
#include "stream/file_bytes.h"
#include "stream/text_view.h"

namespace fi {
namespace {

constexpr int64_t kBehindWords = 16;  // the mark and "Session Start"
constexpr size_t kMaxLine = 255;      // bytes of the first line that are looked at

// "6:00" or "06:00".
bool HoldsTime(std::string_view text) {
  for (size_t at = 1; at + 2 < text.size(); ++at) {
    if (text[at] == ':' && IsDigit(text[at - 1]) && IsDigit(text[at + 1]) &&
        IsDigit(text[at + 2])) {
      return true;
    }
  }
  return false;
}

}  // namespace

FormatId TrillianLogProbe(IdentificationStream* stream) {
  const FileBytes<kMaxLine> bytes(stream, kBehindWords);
  std::string_view line;
  if (!Lines(bytes.View()).Next(&line) || line.empty()) return kNoMatch;
  if (line.front() != ' ' && line.front() != ':') return kNoMatch;
  const size_t colon = line.find(':');
  if (colon == std::string_view::npos || !HoldsTime(line.substr(colon + 1))) return kNoMatch;
  return kFormatChatLogText;
}

}  // namespace fi
