#include "probes/document/word_pro.h"

#include "registry/format_ids.h"
#include "stream/file_bytes.h"

namespace fi {

FormatId WordProProbe(IdentificationStream* stream) {
  constexpr int64_t kReleaseOffset = 7;  // 0D FB in release 96, 00 00 from 97 on
  const FileBytes<2> release(stream, kReleaseOffset);
  const auto isText = [&](size_t offset) {
    return release.Byte(offset) >= 0x20 && release.Byte(offset) <= 0x7E;
  };
  if (release.size() < 2 || isText(0) || isText(1)) return kNoMatch;
  return kFormatWordPro;
}

}  // namespace fi
