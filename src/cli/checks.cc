#include "cli/checks.h"

#include <strings.h>

#include <algorithm>
#include <charconv>

#include "cli/catalogue.h"
#include "run/text/extension.h"

namespace fi::app {
namespace {

bool EqualsIgnoringCase(std::string_view left, std::string_view right) {
  return left.size() == right.size() && ::strncasecmp(left.data(), right.data(), left.size()) == 0;
}

bool IsExtensionOfAny(std::string_view extension) {
  bool isOne = false;
  ForEachFormat(
      [&](const FIFormatFacts& facts) { isOne = isOne || ListHas(facts.extensions, extension); });
  return isOne;
}

bool IsCategory(std::string_view text) {
  bool isOne = false;
  ForEachFormat([&](const FIFormatFacts& facts) { isOne = isOne || text == facts.category; });
  return isOne;
}

}  // namespace

bool Requirements::Add(std::string_view list, std::string& error) {
  for (bool isLast = false; !isLast;) {
    const size_t end = std::min(list.find(','), list.size());
    const std::string_view text = list.substr(0, end);
    isLast = end == list.size();
    list.remove_prefix(std::min(end + 1, list.size()));
    Item item = {Kind::kKnown, 0, std::string(text)};
    const std::from_chars_result number =
        std::from_chars(text.data(), text.data() + text.size(), item.id);
    if (!text.empty() && number.ec == std::errc() && number.ptr == text.data() + text.size()) {
      item.kind = Kind::kId;
    } else if (text.ends_with("/*") && text.size() > 2) {
      item.kind = Kind::kMimeGroup;
      item.text.pop_back();
    } else if (text.find('/') != std::string_view::npos) {
      item.kind = Kind::kMime;
    } else if (IsCategory(text) && !text.empty()) {
      item.kind = Kind::kCategory;
    } else if (text != "known") {
      error = "--require takes a number, a MIME type, a category or 'known'";
      return false;
    }
    items_.push_back(std::move(item));
  }
  return true;
}

bool Requirements::Holds(const Answer& answer) const {
  const FIFormatFacts& facts = answer.facts;
  return std::any_of(items_.begin(), items_.end(), [&](const Item& item) {
    switch (item.kind) {
      case Kind::kKnown:
        return facts.id != kFormatUnknown;
      case Kind::kId:
        return facts.id == item.id;
      case Kind::kMime:
        return EqualsIgnoringCase(facts.mimeType, item.text);
      case Kind::kMimeGroup:
        return ::strncasecmp(facts.mimeType, item.text.c_str(), item.text.size()) == 0;
      case Kind::kCategory:
        return facts.category == item.text;
    }
    return false;
  });
}

std::string SuggestedName(std::string_view path, const FIFormatFacts& facts) {
  const std::string_view extension = ExtensionOf(path);
  if (!extension.empty() && IsExtensionOfAny(extension)) path.remove_suffix(extension.size() + 1);
  const std::string_view known = facts.extensions;
  return std::string(path) + '.' + std::string(known.substr(0, known.find(',')));
}

}  // namespace fi::app
