// Samples of formats, kept as data in tests/data: one a line, its columns divided by bars, with
// lines of comment that begin with "#". Bytes are written as
//
//   'text'  E4     ASCII, or two hexadecimal digits     'ab'*3  00*512   the same, repeated
//   (4E 00)*9      a group, repeated
//   at(65)         goes on at that offset; what lies between, or was not written yet, is the filler
//   fill(20)       the filler from here on; it is 00 before
#ifndef FI_TESTS_SUPPORT_SAMPLES_H_
#define FI_TESTS_SUPPORT_SAMPLES_H_

#include <string>
#include <string_view>
#include <vector>

namespace fi::testing {

struct Sample {
  std::string place;  // file and line, for failures
  std::vector<std::string>
      columns;  // without the blanks around them; at least as many as asked for

  int Number(size_t column) const { return std::stoi(columns.at(column)); }
};

// The samples of tests/data/`file`. Fails the test when there are none, or one has too few columns.
// The last `optional` ones may be missing and then are empty.
std::vector<Sample> ReadSamples(std::string_view file, size_t columns, size_t optional = 0);

// Those of the supplement's signatures and probes: identifier, name, bytes, file name.
std::vector<Sample> ReadSupplementSamples();

// The bytes that `notation` stands for. Fails the test when it is wrong.
std::string SampleBytes(std::string_view notation);

}  // namespace fi::testing

#endif  // FI_TESTS_SUPPORT_SAMPLES_H_
