#include "probes/text/subtitles.h"

#include <algorithm>

#include "stream/line_pattern.h"
#include "stream/text_view.h"

namespace fi {

bool IsSubRip(std::string_view text) {
  constexpr std::string_view kTimes = "99:99:99,999 --> 99:99:99,999";
  Lines lines(SkipSpace(text));
  std::string_view line;
  if (!lines.Next(&line)) return false;
  if (BeginsLike(line, kTimes)) return true;
  const std::string_view number = TrimBlanks(line);
  const bool isNumber = !number.empty() && std::all_of(number.begin(), number.end(), IsDigit);
  return isNumber && lines.Next(&line) && BeginsLike(line, kTimes);
}

bool IsWebVtt(std::string_view text) {
  constexpr std::string_view kMark = "WEBVTT";
  if (!text.starts_with(kMark)) return false;
  return text.size() == kMark.size() || IsWhiteSpace(text[kMark.size()]);
}

}  // namespace fi
