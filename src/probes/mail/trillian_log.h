// Chat logs as Trillian writes them: UTF-8 with a mark, and for each session a line "Session Start
// (account:contact): Mon Nov 07 06:00:00 2011".
#ifndef FI_PROBES_MAIL_TRILLIAN_LOG_H_
#define FI_PROBES_MAIL_TRILLIAN_LOG_H_

#include "formatid/formatid.h"
#include "stream/id_stream.h"

namespace fi {

// kFormatChatLogText or kNoMatch, by the first line behind "Session Start".
// REQUIRES: the file begins with the mark and these words.
FormatId TrillianLogProbe(IdentificationStream* stream);

}  // namespace fi

#endif  // FI_PROBES_MAIL_TRILLIAN_LOG_H_
