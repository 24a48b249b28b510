// Counts the programs that a row of signature notation becomes: one for each of its alternatives.
#ifndef FI_SIGNATURE_ROW_ALTERNATIVES_H_
#define FI_SIGNATURE_ROW_ALTERNATIVES_H_

#include <cstddef>
#include <string_view>

namespace fi {

// A character of a row that stands outside of quotes.
class UnquotedCharacters {
 public:
  explicit constexpr UnquotedCharacters(std::string_view row) : row_(row) {}

  // Where the next one stands, or the size of the row.
  constexpr size_t Next() {
    for (; at_ < row_.size(); ++at_) {
      if (row_[at_] == '\'') {
        isQuoted_ = !isQuoted_;
      } else if (!isQuoted_) {
        return at_++;
      }
    }
    return at_;
  }

 private:
  std::string_view row_;
  size_t at_ = 0;
  bool isQuoted_ = false;
};

// How many alternatives the text up to the next "}" holds.
constexpr size_t AlternativesOf(std::string_view group) {
  UnquotedCharacters characters(group);
  size_t count = 1;
  for (size_t at = characters.Next(); at < group.size() && group[at] != '}';
       at = characters.Next()) {
    if (group[at] == '|') ++count;
  }
  return count;
}

// How many programs a row becomes.
constexpr size_t ProgramsOf(std::string_view row) {
  UnquotedCharacters characters(row);
  size_t count = 1;
  for (size_t at = characters.Next(); at < row.size(); at = characters.Next()) {
    if (row[at] == '{') count *= AlternativesOf(row.substr(at + 1));
  }
  return count;
}

}  // namespace fi

#endif  // FI_SIGNATURE_ROW_ALTERNATIVES_H_
