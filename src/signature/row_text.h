// A signature program in the notation of the tables, for readers of a trace.
#ifndef FI_SIGNATURE_ROW_TEXT_H_
#define FI_SIGNATURE_ROW_TEXT_H_

#include <cstdint>
#include <string>

namespace fi {

// The program up to its result, which is left out: "rw 'GIF8'". What is longer than some 200
// characters ends in "...". REQUIRES: `program` ends in a return, a probe or the end of the table.
std::string RowText(const uint8_t* program);

}  // namespace fi

#endif  // FI_SIGNATURE_ROW_TEXT_H_
