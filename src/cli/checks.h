// What can be asked of answers beside their names.
#ifndef FI_CLI_CHECKS_H_
#define FI_CLI_CHECKS_H_

#include <string>
#include <string_view>
#include <vector>

#include "run/answer.h"

namespace fi::app {

// One that holds suffices.
class Requirements {
 public:
  // A list with commas of numbers, MIME types ("image/*" too), categories and "known". False with
  // a reason.
  bool Add(std::string_view list, std::string& error);

  bool IsEmpty() const { return items_.empty(); }
  bool Holds(const Answer& answer) const;

 private:
  enum class Kind { kKnown, kId, kMime, kMimeGroup, kCategory };
  struct Item {
    Kind kind;
    FormatId id;
    std::string text;
  };

  std::vector<Item> items_;
};

// The path with an extension of the format. The new extension replaces a present extension that any
// format has, and follows the name otherwise.
std::string SuggestedName(std::string_view path, const FIFormatFacts& facts);

}  // namespace fi::app

#endif  // FI_CLI_CHECKS_H_
