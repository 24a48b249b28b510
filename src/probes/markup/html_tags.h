// HTML by the tags at its start, for documents that no root and no document type announce.
#ifndef FI_PROBES_MARKUP_HTML_TAGS_H_
#define FI_PROBES_MARKUP_HTML_TAGS_H_

#include <string_view>

#include "stream/id_stream.h"
#include "stream/markup_reader.h"

namespace fi {

// Whether `name`, in any case, is the name of an element that a fragment of HTML may begin with.
bool BeginsHtml(std::string_view name);

// Whether the first kilobyte holds the tag of a whole document, or two that are typical.
bool HasHtmlTags(IdentificationStream* stream, const TextForm& form);

// Whether text of this extension (upper case) is a fragment of HTML: it bears the name of a page
// and begins with the tag of an element that fragments begin with.
bool IsHtmlFragment(std::string_view text, std::string_view extension);

}  // namespace fi

#endif  // FI_PROBES_MARKUP_HTML_TAGS_H_
