#include "cli/limits.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <iterator>

namespace fi::app {
namespace {

struct LimitRow {
  std::string_view name;
  uint64_t FILimits::*field;
  std::string_view meaning;
};

constexpr LimitRow kRows[] = {
    {"bytes-read", &FILimits::bytesRead, "bytes read of the file"},
    {"reads", &FILimits::reads, "reads of the file"},
    {"bytes-inflated", &FILimits::bytesInflated, "bytes that unpacking yields"},
    {"steps", &FILimits::steps, "sectors followed, entries looked at, members read"},
    {"memory", &FILimits::memory, "bytes held at once"},
    {"key-rounds", &FILimits::keyRounds, "rounds of key derivation, for each password"},
    {"depth", &FILimits::depth, "containers in containers"},
    {"milliseconds", &FILimits::milliseconds, "time (none: a clock makes answers depend on it)"},
};

bool ParseValue(std::string_view text, uint64_t& value) {
  if (text == "none") {
    value = FI_NO_LIMIT;
    return true;
  }
  const char* end = text.data() + text.size();
  const std::from_chars_result result = std::from_chars(text.data(), end, value);
  return result.ec == std::errc() && result.ptr == end && value != 0;
}

}  // namespace

bool ParseLimits(std::string_view list, FILimits& limits, std::string& error) {
  for (bool isLast = false; !isLast;) {
    const size_t end = std::min(list.find(','), list.size());
    const std::string_view item = list.substr(0, end);
    isLast = end == list.size();
    list.remove_prefix(std::min(end + 1, list.size()));
    const size_t equals = std::min(item.find('='), item.size());
    const std::string_view name = item.substr(0, equals);
    const auto* row = std::find_if(std::begin(kRows), std::end(kRows),
                                   [&](const LimitRow& each) { return each.name == name; });
    uint64_t value = 0;
    if (row == std::end(kRows)) {
      error = "--limits knows no '" + std::string(name) + "' (alone it prints the names)";
      return false;
    }
    if (equals == item.size() || !ParseValue(item.substr(equals + 1), value)) {
      error = "--limits: " + std::string(name) + " takes a number from 1, or 'none'";
      return false;
    }
    limits.*(row->field) = value;
  }
  return true;
}

std::string LimitsText() {
  std::string out = "What one file may cost; what is not set has the library's default:\n";
  for (const LimitRow& row : kRows) {
    out += "  " + std::string(row.name);
    out.append(row.name.size() < 16 ? 16 - row.name.size() : 1, ' ');
    out += std::string(row.meaning) + '\n';
  }
  return out;
}

void AppendSpent(const FILimits& spent, std::string& out) {
  bool isFirst = true;
  for (const LimitRow& row : kRows) {
    const uint64_t value = spent.*(row.field);
    if (value == 0) continue;
    out += isFirst ? "" : ", ";
    out.append(row.name).append(" ") += std::to_string(value);
    isFirst = false;
  }
}

}  // namespace fi::app
