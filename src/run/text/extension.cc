#include "run/text/extension.h"

#include <strings.h>

#include <algorithm>
#include <cstddef>
#include <iterator>

namespace fi::app {

std::string_view ExtensionOf(std::string_view path) {
  const std::string_view name = path.substr(path.rfind('/') + 1);
  const size_t dot = name.rfind('.');
  return dot == std::string_view::npos || dot == 0 ? std::string_view() : name.substr(dot + 1);
}

bool ListHas(std::string_view list, std::string_view item) {
  while (!list.empty()) {
    const std::string_view each = list.substr(0, std::min(list.find(','), list.size()));
    if (each.size() == item.size() && ::strncasecmp(each.data(), item.data(), item.size()) == 0) {
      return true;
    }
    list.remove_prefix(std::min(each.size() + 1, list.size()));
  }
  return false;
}

ExtensionMatch MatchExtension(std::string_view path, const FIFormatFacts& facts) {
  const std::string_view extension = ExtensionOf(path);
  if (facts.extensions[0] == '\0' || extension.empty()) return ExtensionMatch::kNone;
  return ListHas(facts.extensions, extension) ? ExtensionMatch::kYes : ExtensionMatch::kNo;
}

bool IsGeneralFormat(FormatId id) {
  constexpr FormatId kGeneral[] = {
      kFormatUnknown, 1184, 4003, 4005, 4022, 4025,  // plain text by its encoding
      1723,           1730,                          // media whose codecs are not told apart
      1802,                                          // ZIP archive
      1819,                                          // encrypted document of an unknown kind
      3000,                                          // ELF, whose libraries carry versions
      3140,                                          // SQLite, the form that many programs save in
      3200,           3201, 3202, 3433,              // JSON, YAML, XML, JSON Lines
      3204,           3211, 3212, 3213,              // delimited text
  };
  return std::find(std::begin(kGeneral), std::end(kGeneral), id) != std::end(kGeneral);
}

bool IsExtensionMismatch(std::string_view path, const FIFormatFacts& facts) {
  return MatchExtension(path, facts) == ExtensionMatch::kNo && !IsGeneralFormat(facts.id);
}

}  // namespace fi::app
