// Objects of PDF as text (ISO 32000-1, 7.3): how far a value reaches, the entries of a dictionary,
// and the bytes of a string. Everything works on text that is in memory and takes what is cut off
// for absent.
#ifndef FI_PROPERTIES_PDF_PDF_SYNTAX_H_
#define FI_PROPERTIES_PDF_PDF_SYNTAX_H_

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

namespace fi::pdf {

// Passes over white space and comments.
std::string_view SkipSpace(std::string_view text);

// The value at the start of `text` behind white space: a number, a name, a string, an array, a
// dictionary, a word, or a reference ("12 0 R"). Empty when there is none or it is cut off.
std::string_view Value(std::string_view text);

// The value of a key in the dictionary that `text` begins with; empty when there is none.
// REQUIRES: `key` is without its slash.
std::string_view Entry(std::string_view text, std::string_view key);

// A number that `text` begins with. Of a real number the whole part.
std::optional<int64_t> Integer(std::string_view text);

// The object that `text` refers to, where it is a reference.
std::optional<uint32_t> Reference(std::string_view text);

// The element of an array, counted from 0; empty behind the last.
std::string_view Element(std::string_view array, size_t index);

// Decodes a literal or hexadecimal string into `out`. The number of bytes stored; the rest of a
// longer one is left out.
size_t DecodeString(std::string_view text, std::span<uint8_t> out);

}  // namespace fi::pdf

#endif  // FI_PROPERTIES_PDF_PDF_SYNTAX_H_
