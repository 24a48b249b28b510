// MIME entities (RFC 2045): a header of Content fields without the header of a message. A saved web
// page (RFC 2557) is one of them: multipart/related around HTML, or HTML alone that a browser
// signed.
#ifndef FI_PROBES_MAIL_MIME_ENTITY_H_
#define FI_PROBES_MAIL_MIME_ENTITY_H_

#include <string_view>

namespace fi {

// Whether the header shows that `text`, the head of an entity, is no saved web page. `isCut`: the
// text goes on behind it.
bool IsNoSavedPage(std::string_view text, bool isCut);

}  // namespace fi

#endif  // FI_PROBES_MAIL_MIME_ENTITY_H_
