// Plain text by the statistics of its first 64 KB: what the driver asks when nothing else knew a
// file.
#ifndef FI_PROBES_TEXT_PLAIN_TEXT_H_
#define FI_PROBES_TEXT_PLAIN_TEXT_H_

#include <cstdint>
#include <span>

#include "formatid/formatid.h"
#include "stream/id_stream.h"

namespace fi {

inline constexpr FormatId kTextUtf8 = 4025;
inline constexpr FormatId kTextUtf16 = 4003;
inline constexpr FormatId kTextAscii = 4005;
inline constexpr FormatId kTextCodePage = 4022;  // 8-bit, none of the above
inline constexpr FormatId kTextEbcdic = 1184;

// One of the identifiers above, or kFormatUnknown for binary data and an empty file. Reads through
// the handle; leaves the positions of handle and stream anywhere.
FormatId ClassifyPlainText(IdentificationStream* stream);

// Whether the first bytes of a file already rule every kind of text out, UTF-16 included.
bool IsBinaryHead(std::span<const uint8_t> head);

}  // namespace fi

#endif  // FI_PROBES_TEXT_PLAIN_TEXT_H_
