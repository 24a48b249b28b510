#include "probes/system/torrent.h"

#include <cstdint>
#include <string_view>

#include "registry/format_ids.h"
#include "stream/file_bytes.h"

namespace fi {
namespace {

// Keys that may come first, and the character that begins their value: "s" stands for the digit of
// a string's length.
constexpr struct {
  std::string_view key;
  uint8_t value;
} kFirstKeys[] = {
    {"8:announce", 's'}, {"13:announce-list", 'l'}, {"4:info", 'd'},
    {"7:comment", 's'},  {"10:created by", 's'},    {"13:creation date", 'i'},
};

}  // namespace

FormatId TorrentProbe(IdentificationStream* stream) {
  const FileBytes<20> head(stream, 0);
  if (head.Byte(0) != 'd') return kNoMatch;
  for (const auto& entry : kFirstKeys) {
    if (!head.Holds(1, entry.key)) continue;
    const uint8_t next = head.Byte(1 + entry.key.size());
    const bool matches = entry.value == 's' ? next >= '0' && next <= '9' : next == entry.value;
    return matches ? kFormatBitTorrentMetadata : kNoMatch;
  }
  return kNoMatch;
}

}  // namespace fi
