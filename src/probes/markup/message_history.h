// Chat histories of MSN Messenger: an XML document whose root "Log" counts its sessions.
#ifndef FI_PROBES_MARKUP_MESSAGE_HISTORY_H_
#define FI_PROBES_MARKUP_MESSAGE_HISTORY_H_

#include "formatid/formatid.h"
#include "stream/id_stream.h"
#include "stream/markup_reader.h"

namespace fi {

// kFormatMsnMessengerHistory or kNoMatch. Looks at the first 4 KB of the file.
FormatId MessageHistoryProbe(IdentificationStream* stream);

// The same for text that is stored in a known form.
bool IsMessageHistory(IdentificationStream* stream, const TextForm& form);

}  // namespace fi

#endif  // FI_PROBES_MARKUP_MESSAGE_HISTORY_H_
