// What each header line of a message counts for.
#ifndef FI_PROBES_MAIL_MAIL_HEADERS_H_
#define FI_PROBES_MAIL_MAIL_HEADERS_H_

#include <string_view>

#include "formatid/formatid.h"
#include "probes/mail/mail_score.h"

namespace fi {

// Counts one header line. `line` is in lower case and without comments. An identifier where the
// line alone decides, else kNoMatch.
FormatId ScoreHeader(std::string_view line, MailScore& score);

}  // namespace fi

#endif  // FI_PROBES_MAIL_MAIL_HEADERS_H_
