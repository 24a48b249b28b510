#include "api/extension_fit.h"

#include <strings.h>

#include <algorithm>

#include "api/supplement.h"
#include "formatid/identify.h"

namespace fi {
namespace {

// What follows the last dot. A dot at the start makes a hidden name, no extension.
std::string_view ExtensionIn(std::string_view name) {
  const size_t dot = name.rfind('.');
  return dot == std::string_view::npos || dot == 0 ? std::string_view() : name.substr(dot + 1);
}

bool Lists(std::string_view list, std::string_view item) {
  while (!list.empty()) {
    const std::string_view each = list.substr(0, list.find(','));
    if (each.size() == item.size() && ::strncasecmp(each.data(), item.data(), item.size()) == 0) {
      return true;
    }
    list.remove_prefix(std::min(each.size() + 1, list.size()));
  }
  return false;
}

}  // namespace

uint16_t ExtensionFit(std::string_view name, FormatId id, std::string_view known) {
  const std::string_view extension = ExtensionIn(name);
  if (extension.empty() || known.empty()) return kFiFitUnknown;
  if (Lists(known, extension)) return kFiFits;
  return IsGeneralAnswer(id) ? kFiFitUnknown : kFiFitsNot;
}

}  // namespace fi
