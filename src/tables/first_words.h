// Text formats whose first words no other text has: headers that their descriptions ask for.
#ifndef FI_TABLES_FIRST_WORDS_H_
#define FI_TABLES_FIRST_WORDS_H_

#include <string_view>

#include "formatid/formatid.h"

namespace fi {

// The identifier of the format, or kNoMatch. Letters count in the case that the format writes.
FormatId FirstWordsOf(std::string_view text);

}  // namespace fi

#endif  // FI_TABLES_FIRST_WORDS_H_
