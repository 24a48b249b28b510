// The lines of the 6-bit encodings: which alphabet they keep to, and whether their length is what
// their first character says.
#ifndef FI_PROBES_ENCODED_ENCODED_LINES_H_
#define FI_PROBES_ENCODED_ENCODED_LINES_H_

#include <span>
#include <string_view>

namespace fi {

// Whether `line` is a well-formed uuencode data line: a count of bytes (a multiple of three), the
// characters of those bytes, and perhaps one character more. On a line of the full count ("M") the
// additional character is a sequence character and must be `sequence`, or may be anything where
// `sequence` is 0; on other lines it is a checksum. With a sequence character the blanks of the
// line become backquotes, whether the line passes or not.
bool UuLineTest(std::span<char> line, char sequence);

// Whether `line` is a well-formed xxencode data line: as above, but nothing follows the data.
bool XxLineTest(std::string_view line);

// Whether `line` may belong to BinHex 4.0 data: characters of its alphabet or a colon, 46 to 65 of
// them, or fewer on a line that ends with the closing colon. The last byte of a full line is not
// looked at.
bool BinHexLineTest(std::string_view line);

}  // namespace fi

#endif  // FI_PROBES_ENCODED_ENCODED_LINES_H_
