// Messages that the probe of mail passes over: parts of mail that begin with their content type,
// and headers that are few or in another order than mail programs write them.
#ifndef FI_PROBES_MAIL_MESSAGE_HEADER_H_
#define FI_PROBES_MAIL_MESSAGE_HEADER_H_

#include <string_view>

#include "formatid/formatid.h"

namespace fi {

// kFormatMimeMailMessage for a header block with MIME fields, kFormatRfc822Message for a block
// without, or kNoMatch. `extension` is in upper case: of a file that is called a message, one field
// is enough.
FormatId MessageHeaderProbe(std::string_view text, const char* extension);

}  // namespace fi

#endif  // FI_PROBES_MAIL_MESSAGE_HEADER_H_
