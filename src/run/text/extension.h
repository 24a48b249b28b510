// File name extensions against formats.
#ifndef FI_RUN_TEXT_EXTENSION_H_
#define FI_RUN_TEXT_EXTENSION_H_

#include <string_view>

#include "formatid/platform.h"

namespace fi::app {

// What follows the last dot of the last component; a dot at its start makes a hidden name, no
// extension.
std::string_view ExtensionOf(std::string_view path);

// Whether a list with commas holds `item`, in either case.
bool ListHas(std::string_view list, std::string_view item);

enum class ExtensionMatch { kYes, kNo, kNone };  // kNone: there is nothing to compare

ExtensionMatch MatchExtension(std::string_view path, const FIFormatFacts& facts);

// True for general answers: unknown, text, ZIP archive, XML and the like. Files of a more special
// format have such an answer too, and rightly another extension.
bool IsGeneralFormat(FormatId id);

// True where the extension is none of the format's and the answer is not general.
bool IsExtensionMismatch(std::string_view path, const FIFormatFacts& facts);

}  // namespace fi::app

#endif  // FI_RUN_TEXT_EXTENSION_H_
