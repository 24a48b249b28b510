// Conversion between UTF-8 and UTF-16 in host order. Input that is not well-formed gives some text,
// but never more of it, and nothing is read or written outside the ranges given.
#ifndef FI_TOOLKIT_TEXT_UTF16_H_
#define FI_TOOLKIT_TEXT_UTF16_H_

#include <cstddef>
#include <string_view>

namespace fi {

// Writes `utf8` to `out`, stopping before the first character that has no room. The number of units
// written, which is never more than the bytes of `utf8`.
size_t WidenUtf8(std::string_view utf8, char16_t* out, size_t capacity);

// The same in the other direction; a unit gives up to three bytes. False when the whole of it does
// not fit, or a surrogate stands alone.
bool NarrowUtf16(std::u16string_view wide, char* out, size_t capacity, size_t* size);

}  // namespace fi

#endif  // FI_TOOLKIT_TEXT_UTF16_H_
