// Metadata of BitTorrent (BEP 3): a dictionary in bencoding, whose keys stand in order.
#ifndef FI_PROBES_SYSTEM_TORRENT_H_
#define FI_PROBES_SYSTEM_TORRENT_H_

#include "formatid/formatid.h"
#include "stream/id_stream.h"

namespace fi {

// kFormatBitTorrentMetadata or kNoMatch.
FormatId TorrentProbe(IdentificationStream* stream);

}  // namespace fi

#endif  // FI_PROBES_SYSTEM_TORRENT_H_
