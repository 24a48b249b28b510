// Internet mail (RFC 5322, MIME), news articles, mailboxes, S/MIME and saved web pages: texts that
// begin with header lines. The number of known message headers decides.
#ifndef FI_PROBES_MAIL_MAIL_H_
#define FI_PROBES_MAIL_MAIL_H_

#include "formatid/formatid.h"
#include "stream/id_stream.h"

namespace fi {

// Which kind of message the file is, or kNoMatch. `extension` is the file's, in upper case and
// NUL-terminated. Reads from the start of the file: its first hundred lines while none of them is a
// header, and all of a block of headers, however long. Leaves the stream anywhere.
FormatId MailProbe(IdentificationStream* stream, const char* extension);

}  // namespace fi

#endif  // FI_PROBES_MAIL_MAIL_H_
