// Records by a pattern of the user.
#ifndef FI_CLI_TEMPLATE_H_
#define FI_CLI_TEMPLATE_H_

#include <string>
#include <string_view>
#include <vector>

#include "cli/columns.h"

namespace fi::app {

class Template {
 public:
  // Text with names of columns in braces; "{{" and "}}" stand for braces, and \n, \t, \\ and \0 are
  // what they are in C. False with a reason.
  bool Parse(std::string_view pattern, std::string& error);

  void Append(const RecordSource& source, std::string& out) const;

  // The columns that it names.
  std::vector<const Column*> columns() const;

 private:
  struct Piece {
    std::string text;      // comes first
    const Column* column;  // may be nullptr
  };

  std::vector<Piece> pieces_;
};

}  // namespace fi::app

#endif  // FI_CLI_TEMPLATE_H_
