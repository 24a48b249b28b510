// Sources of gettext message catalogues (PO): comments, then the first entry, which is a text and
// its translation.
#ifndef FI_PROBES_TEXT_MESSAGE_CATALOGUE_H_
#define FI_PROBES_TEXT_MESSAGE_CATALOGUE_H_

#include <string_view>

namespace fi {

bool IsMessageCatalogue(std::string_view text);

}  // namespace fi

#endif  // FI_PROBES_TEXT_MESSAGE_CATALOGUE_H_
