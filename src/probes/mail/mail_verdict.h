// What a message is, by the score of its headers.
#ifndef FI_PROBES_MAIL_MAIL_VERDICT_H_
#define FI_PROBES_MAIL_MAIL_VERDICT_H_

#include <optional>
#include <string_view>

#include "formatid/formatid.h"
#include "probes/mail/mail_score.h"

namespace fi {

// The identifier, or kNoMatch when this is no message. No value when the headers of the part behind
// the boundary have to tell. `extension` is the file's, in upper case.
std::optional<FormatId> MailVerdict(const MailScore& score, std::string_view extension);

}  // namespace fi

#endif  // FI_PROBES_MAIL_MAIL_VERDICT_H_
