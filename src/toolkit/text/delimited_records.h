// Records of delimited text under one delimiter, and whether what they have in common makes a
// table.
#ifndef FI_TOOLKIT_TEXT_DELIMITED_RECORDS_H_
#define FI_TOOLKIT_TEXT_DELIMITED_RECORDS_H_

#include <cstdint>
#include <string_view>

namespace fi {

// What is counted over the records of a text; blank lines and comment lines are no records.
struct DelimitedTally {
  uint32_t records = 0;     // complete ones
  uint32_t head = 0;        // delimiters in the first record
  uint32_t delimiters = 0;  // and in the second, with which the others are compared
  uint32_t exceptions = 0;  // records behind it with another number
  uint32_t badQuotes = 0;   // records with a quote that RFC 4180 does not allow
  uint32_t spaced = 0;      // records with a blank behind half of their delimiters or more
  uint32_t spanned = 0;     // records with brackets around a delimiter
  uint32_t emptyLast = 0;   // records that end in a delimiter
  uint32_t emptyFirst = 0;  // records that begin with a tab or bar
};

// Reads the records of `text` up to its end or until the tally is hopeless. When the text is `cut`,
// its last record does not count.
DelimitedTally TallyRecords(std::string_view text, char delimiter, bool cut);

// Whether further records cannot make a table of it any more.
bool IsHopeless(const DelimitedTally& tally);

bool IsTable(const DelimitedTally& tally);

}  // namespace fi

#endif  // FI_TOOLKIT_TEXT_DELIMITED_RECORDS_H_
