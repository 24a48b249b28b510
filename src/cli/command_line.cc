#include "cli/command_line.h"

#include <algorithm>
#include <cstring>

namespace fi::app {
namespace {

// "--" and the first name.
std::string Spelling(const OptionRow& row) {
  return "--" + std::string(row.names.substr(0, row.names.find(' ')));
}

bool HasWord(std::string_view words, std::string_view word) {
  while (!words.empty()) {
    const size_t end = std::min(words.find(' '), words.size());
    if (words.substr(0, end) == word) return true;
    words.remove_prefix(std::min(end + 1, words.size()));
  }
  return false;
}

const OptionRow* FindName(std::string_view name) {
  for (const OptionRow& row : OptionRows()) {
    if (HasWord(row.names, name)) return &row;
  }
  return nullptr;
}

const OptionRow* FindLetter(char letter) {
  for (const OptionRow& row : OptionRows()) {
    if (row.letters.find(letter) != std::string_view::npos) return &row;
  }
  return nullptr;
}

std::string Unknown(const std::string& spelling, char letter, std::string_view name) {
  for (const ForeignOption& each : ForeignOptions()) {
    const bool isIt =
        name.empty() ? each.letter != '\0' && each.letter == letter : each.name == name;
    if (isIt) return spelling + ": " + std::string(each.advice);
  }
  return "there is no option " + spelling;
}

}  // namespace

bool CommandLine::NextValue(const std::string& spelling, int& index, const char*& value,
                            std::string& error) {
  if (index + 1 >= count_) {
    error = spelling + " needs a value";
    return false;
  }
  value = arguments_[++index];
  return true;
}

bool CommandLine::Give(const OptionRow& row, const std::string& spelling, const char* value,
                       std::string& error) {
  const bool isAgain = Has(row.option);
  given_ |= Bit(row.option);
  if (value == nullptr) return true;
  if (isAgain && row.use != OptionValue::kRepeated) {
    error = spelling + " is given twice";
    return false;
  }
  values_.emplace_back(row.option, value);
  return true;
}

bool CommandLine::ParseLong(const char* argument, int& index, std::string& error) {
  const char* equals = std::strchr(argument, '=');
  const std::string spelling =
      equals != nullptr ? std::string(argument, equals) : std::string(argument);
  const std::string_view name = std::string_view(spelling).substr(2);
  const OptionRow* row = FindName(name);
  if (row == nullptr) {
    error = Unknown(spelling, '\0', name);
    return false;
  }
  const char* value = equals != nullptr ? equals + 1 : nullptr;
  if (value != nullptr && row->use == OptionValue::kNone) {
    error = spelling + " takes no value";
    return false;
  }
  const bool needsValue = row->use == OptionValue::kNeeded || row->use == OptionValue::kRepeated;
  if (value == nullptr && needsValue && !NextValue(spelling, index, value, error)) return false;
  return Give(*row, spelling, value, error);
}

bool CommandLine::ParseLetters(const char* argument, int& index, std::string& error) {
  for (const char* letter = argument + 1; *letter != '\0'; ++letter) {
    const std::string spelling = {'-', *letter};
    const OptionRow* row = FindLetter(*letter);
    if (row == nullptr) {
      error = Unknown(spelling, *letter, {});
      return false;
    }
    if (row->use == OptionValue::kNone) {
      if (!Give(*row, spelling, nullptr, error)) return false;
      continue;
    }
    const char* value = letter[1] != '\0' ? letter + 1 : nullptr;
    if (value == nullptr && !NextValue(spelling, index, value, error)) return false;
    return Give(*row, spelling, value, error);
  }
  return true;
}

bool CommandLine::CheckExclusions(std::string& error) const {
  for (const OptionRow& row : OptionRows()) {
    if (!Has(row.option) || (row.excludes & given_) == 0) continue;
    for (const OptionRow& other : OptionRows()) {
      if ((row.excludes & given_ & Bit(other.option)) == 0) continue;
      error = Spelling(row) + " does not go with " + Spelling(other);
      return false;
    }
  }
  return true;
}

bool CommandLine::Parse(int count, const char* const* arguments, std::string& error) {
  count_ = count;
  arguments_ = arguments;
  paths_.reserve(static_cast<size_t>(count));
  bool hasOptions = true;
  for (int i = 1; i < count; ++i) {
    const char* argument = arguments[i];
    if (!hasOptions || argument[0] != '-' || argument[1] == '\0') {
      paths_.push_back(argument);
    } else if (std::strcmp(argument, "--") == 0) {
      hasOptions = false;
    } else if (argument[1] == '-') {
      if (!ParseLong(argument, i, error)) return false;
    } else if (!ParseLetters(argument, i, error)) {
      return false;
    }
  }
  return CheckExclusions(error);
}

const char* CommandLine::Value(Option option) const {
  const char* found = "";
  for (const auto& [each, value] : values_) {
    if (each == option) found = value;
  }
  return found;
}

std::vector<const char*> CommandLine::Values(Option option) const {
  std::vector<const char*> found;
  for (const auto& [each, value] : values_) {
    if (each == option) found.push_back(value);
  }
  return found;
}

}  // namespace fi::app
