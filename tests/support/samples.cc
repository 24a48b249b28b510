#include "tests/support/samples.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <charconv>
#include <fstream>
#include <utility>

namespace fi::testing {
namespace {

std::string Trimmed(std::string_view text) {
  const size_t first = text.find_first_not_of(' ');
  if (first == std::string_view::npos) return "";
  return std::string(text.substr(first, text.find_last_not_of(' ') - first + 1));
}

std::vector<std::string> SplitColumns(std::string_view line) {
  std::vector<std::string> columns;
  for (size_t bar = 0; bar != std::string_view::npos;) {
    bar = line.find('|');
    columns.push_back(Trimmed(line.substr(0, bar)));
    if (bar != std::string_view::npos) line.remove_prefix(bar + 1);
  }
  return columns;
}

class BytesReader {
 public:
  explicit BytesReader(std::string_view notation) : rest_(notation) {}

  std::string Read() {
    Items();
    if (wrong_ || !rest_.empty()) ADD_FAILURE() << "wrong notation at: " << rest_;
    return bytes_;
  }

 private:
  void Items() {
    for (Skip(); !rest_.empty() && rest_[0] != ')' && !wrong_; Skip()) Item();
  }
  void Skip() { rest_.remove_prefix(std::min(rest_.find_first_not_of(' '), rest_.size())); }
  bool Take(std::string_view word) {
    if (!rest_.starts_with(word)) return false;
    rest_.remove_prefix(word.size());
    return true;
  }
  size_t Number(int base, size_t digits) {
    size_t value = 0;
    const char* end = rest_.data() + std::min(rest_.size(), digits);
    const auto [last, error] = std::from_chars(rest_.data(), end, value, base);
    wrong_ = wrong_ || error != std::errc() || (base == 16 && last != end);
    rest_.remove_prefix(static_cast<size_t>(last - rest_.data()));
    return value;
  }

  void Item() {
    std::string piece;
    if (Take("at(")) {
      const size_t offset = Number(10, 9);
      wrong_ = wrong_ || !Take(")");
      if (offset > bytes_.size()) bytes_.resize(offset, filler_);
      at_ = offset;
      return;
    }
    if (Take("fill(")) {
      filler_ = static_cast<char>(Number(16, 2));
      wrong_ = wrong_ || !Take(")");
      return;
    }
    if (Take("'")) {
      const size_t end = rest_.find('\'');
      wrong_ = end == std::string_view::npos;
      piece = rest_.substr(0, end);
      rest_.remove_prefix(wrong_ ? 0 : end + 1);
    } else if (Take("(")) {
      BytesReader group(rest_);
      group.Items();
      piece = group.bytes_;
      rest_ = group.rest_;
      wrong_ = group.wrong_ || !Take(")");
    } else {
      piece = static_cast<char>(Number(16, 2));
    }
    for (size_t times = Take("*") ? Number(10, 9) : 1; times > 0 && !wrong_; --times) Put(piece);
  }
  void Put(const std::string& piece) {
    bytes_.replace(at_, std::min(piece.size(), bytes_.size() - at_), piece);
    at_ += piece.size();
  }

  std::string_view rest_;
  std::string bytes_;
  size_t at_ = 0;
  char filler_ = '\0';
  bool wrong_ = false;
};

}  // namespace

std::vector<Sample> ReadSamples(std::string_view file, size_t columns, size_t optional) {
  std::vector<Sample> samples;
  std::ifstream lines(std::string(FORMATID_TEST_DATA_DIR) + "/" + std::string(file));
  std::string line;
  for (int number = 1; std::getline(lines, line); ++number) {
    if (line.empty() || line[0] == '#') continue;
    Sample sample{std::string(file) + ":" + std::to_string(number), SplitColumns(line)};
    if (sample.columns.size() + optional < columns)
      ADD_FAILURE() << sample.place << ": columns are missing";
    sample.columns.resize(std::max(sample.columns.size(), columns));
    samples.push_back(std::move(sample));
  }
  if (samples.empty()) ADD_FAILURE() << "no samples in " << file;
  return samples;
}

std::vector<Sample> ReadSupplementSamples() {
  std::vector<Sample> samples = ReadSamples("supplement.txt", 4, 1);
  for (Sample& sample : ReadSamples("supplement_marks.txt", 4, 1)) {
    samples.push_back(std::move(sample));
  }
  return samples;
}

std::string SampleBytes(std::string_view notation) { return BytesReader(notation).Read(); }

}  // namespace fi::testing
