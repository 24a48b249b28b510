// HTML by the tags at its start, for documents that no root and no document type announce.
#ifndef FI_PROBES_MARKUP_HTML_TAGS_H_
#define FI_PROBES_MARKUP_HTML_TAGS_H_

#include <string_view>

#include "engine/id_stream.h"
#include "probes/markup/markup_reader.h"

namespace fi {

// Whether `name`, in any case, is the name of an element that a fragment of HTML may begin with.
bool BeginsHtml(std::string_view name);

// Whether the first kilobyte holds the tag of a whole document, or two that are typical.
bool HasHtmlTags(IdentificationStream* stream, const TextForm& form);

}  // namespace fi

#endif  // FI_PROBES_MARKUP_HTML_TAGS_H_
