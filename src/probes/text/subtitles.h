// Subtitles as text: SubRip, a number and two times in milliseconds; WebVTT, its name as a word.
#ifndef FI_PROBES_TEXT_SUBTITLES_H_
#define FI_PROBES_TEXT_SUBTITLES_H_

#include <string_view>

namespace fi {

bool IsSubRip(std::string_view text);
bool IsWebVtt(std::string_view text);

}  // namespace fi

#endif  // FI_PROBES_TEXT_SUBTITLES_H_
