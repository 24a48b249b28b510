// How names and texts are written: escaped, as JSON, in base64, as CSV.

#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "cli/base64.h"
#include "cli/catalogue.h"
#include "cli/escape.h"
#include "cli/json.h"
#include "cli/utf8.h"

namespace fi::cli {
namespace {

using Append = void (*)(std::string_view, std::string&);

struct Case {
  std::string_view text;
  std::string_view expected;
};

template <size_t kCount>
void Check(Append append, const Case (&cases)[kCount]) {
  for (const Case& each : cases) {
    std::string out = "<";
    append(each.text, out);
    EXPECT_EQ(out.substr(1), each.expected) << testing::PrintToString(each.text);
    EXPECT_EQ(out[0], '<') << "what stood there before is kept";
  }
}

TEST(Escape, MakesOneReversibleLine) {
  Check(AppendEscaped, {
                           {"plain name.txt", "plain name.txt"},
                           {"a\nb\rc\td", "a\\nb\\rc\\td"},
                           {{"\0\x1b\x7f", 3}, "\\x00\\x1b\\x7f"},
                           {"back\\slash", "back\\\\slash"},
                           {"caf\xC3\xA9 \xE2\x82\xAC", "caf\xC3\xA9 \xE2\x82\xAC"},
                           {"\xC2\x9B", "\\xc2\\x9b"},  // a control character of its own
                           {"\xC2\xA0", "\xC2\xA0"},    // the first that is none
                           {"\xC3", "\\xc3"},           // cut
                           {"\xC3(", "\\xc3("},
                           {"\xED\xA0\x80", "\\xed\\xa0\\x80"},  // surrogate
                       });
}

TEST(Utf8, TakesWellFormedSequencesOnly) {
  const struct {
    std::string_view bytes;
    size_t length;
  } cases[] = {
      {"", 0},
      {"a", 1},
      {"\x80", 0},
      {"\xC1\xBF", 0},
      {"\xC2\x80", 2},
      {"\xDF\xBFz", 2},
      {"\xE0\x9F\xBF", 0},
      {"\xE0\xA0\x80", 3},
      {"\xED\x9F\xBF", 3},
      {"\xED\xA0\x80", 0},
      {"\xEF\xBF", 0},
      {"\xF0\x8F\xBF\xBF", 0},
      {"\xF0\x90\x80\x80", 4},
      {"\xF4\x8F\xBF\xBF", 4},
      {"\xF4\x90\x80\x80", 0},
      {"\xF5\x80\x80\x80", 0},
      {"\xE2\x82(", 0},
  };
  for (const auto& each : cases) {
    EXPECT_EQ(Utf8SequenceLength(each.bytes), each.length) << testing::PrintToString(each.bytes);
  }
}

TEST(Json, IsUtf8WhateverTheText) {
  Check(AppendJsonString, {
                              {"", "\"\""},
                              {"say \"a\\b\"", "\"say \\\"a\\\\b\\\"\""},
                              {"\n\r\t\x01\x7f", "\"\\n\\r\\t\\u0001\\u007f\""},
                              {{"\0", 1}, "\"\\u0000\""},
                              {"\xC2\x9B\xC3\xA9", "\"\\u009b\xC3\xA9\""},
                              {"a\xFF\xFE"
                               "b",
                               "\"a\xEF\xBF\xBD\xEF\xBF\xBD"
                               "b\""},
                          });
  Check(AppendJsonText, {{"", "null"}, {"a", "\"a\""}});
  Check(AppendJsonList,
        {{"", "[]"}, {"jpg", "[\"jpg\"]"}, {"jpg,jpeg,jpe", "[\"jpg\",\"jpeg\",\"jpe\"]"}});
}

TEST(Base64, AgreesWithTheVectorsOfRfc4648) {
  Check(AppendBase64, {{"", ""},
                       {"f", "Zg=="},
                       {"fo", "Zm8="},
                       {"foo", "Zm9v"},
                       {"foob", "Zm9vYg=="},
                       {"foobar", "Zm9vYmFy"},
                       {"\xFB\xFF\xFE", "+//+"}});
}

TEST(Csv, QuotesWhereItMust) {
  Check(AppendCsvField,
        {{"plain", "plain"}, {"a,b", "\"a,b\""}, {"6\" disk", "\"6\"\" disk\""}, {"", ""}});
}

}  // namespace
}  // namespace fi::cli
