// Arguments taken apart by the table of options.
#ifndef FI_CLI_COMMAND_LINE_H_
#define FI_CLI_COMMAND_LINE_H_

#include <string>
#include <utility>
#include <vector>

#include "cli/option_table.h"

namespace fi::app {

// What stood on the command line; the texts are those of the arguments.
class CommandLine {
 public:
  // Options and paths may be mixed; "--" ends the options, and "-" is a path. False with one line
  // in `error`, which tells no value: it may be a password in the wrong place.
  bool Parse(int count, const char* const* arguments, std::string& error);

  OptionSet given() const { return given_; }
  bool Has(Option option) const { return (given_ & Bit(option)) != 0; }

  // The value of an option that was given; for one that may be repeated, the last.
  const char* Value(Option option) const;
  std::vector<const char*> Values(Option option) const;

  const std::vector<const char*>& paths() const { return paths_; }

 private:
  bool ParseLong(const char* argument, int& index, std::string& error);
  bool ParseLetters(const char* argument, int& index, std::string& error);
  bool Give(const OptionRow& row, const std::string& spelling, const char* value,
            std::string& error);
  bool NextValue(const std::string& spelling, int& index, const char*& value, std::string& error);
  bool CheckExclusions(std::string& error) const;

  int count_ = 0;
  const char* const* arguments_ = nullptr;
  OptionSet given_ = 0;
  std::vector<std::pair<Option, const char*>> values_;
  std::vector<const char*> paths_;
};

}  // namespace fi::app

#endif  // FI_CLI_COMMAND_LINE_H_
