// Records of answers that no file gives on its own: encrypted ones, and all the columns.

#include "cli/report.h"

#include <gtest/gtest.h>

#include <string>

#include "cli/identify.h"

namespace fi::cli {
namespace {

Answer Jpeg() {
  Answer answer;
  answer.status = AnswerStatus::kOk;
  answer.facts = {1539, "JPEG image", "graphics", "image/jpeg", "jpg,jpeg", ""};
  answer.basis = kFiBasisSignature;
  answer.size = 5'000'000'000;
  return answer;
}

Answer Encrypted() {
  Answer answer;
  answer.status = AnswerStatus::kProtected;
  answer.facts = {1819, "Encrypted package", "", "", "", ""};
  answer.basis = kFiBasisContent;
  answer.size = 4096;
  answer.error = "a password is needed";
  return answer;
}

Answer Missing() {
  Answer answer;
  Fail("No such file or directory", answer);
  return answer;
}

TEST(Report, WritesText) {
  const struct {
    ReportStyle style;
    std::string path;
    Answer answer;
    std::string expected;
  } cases[] = {
      {{}, "a.jpg", Jpeg(), "a.jpg: JPEG image\n"},
      {{}, "x", Encrypted(), "x: Encrypted package (a password is needed)\n"},
      {{}, "x", Missing(), "x: ERROR: No such file or directory\n"},
      {{.field = Field::kId}, "x", Encrypted(), "x: 1819\n"},
      {{.field = Field::kMime}, "x", Encrypted(), "x: application/octet-stream\n"},
      {{.field = Field::kMime}, "x", Missing(), "x: ERROR: No such file or directory\n"},
      {{.field = Field::kExtensions}, "x", Jpeg(), "x: jpg/jpeg\n"},
      {{.field = Field::kExtensions}, "x", Encrypted(), "x: ???\n"},
      {{.brief = true}, "x", Jpeg(), "JPEG image\n"},
      {{.separator = " =>"}, "x\n", Jpeg(), "x\\n => JPEG image\n"},
      {{.rawPath = true}, "x\n", Jpeg(), std::string("x\n\0JPEG image\n", 14)},
      {{.pathWidth = 6}, "ab", Jpeg(), "ab:    JPEG image\n"},
      {{.pathWidth = 6}, "\xC3\xA9\xC3\xA9", Jpeg(), "\xC3\xA9\xC3\xA9:    JPEG image\n"},
      {{.pathWidth = 6}, "longer", Jpeg(), "longer: JPEG image\n"},
  };
  for (const auto& each : cases) {
    EXPECT_EQ(Report(each.style).Record(each.path, each.answer), each.expected);
  }
}

TEST(Report, WritesJson) {
  Report report({.layout = Layout::kJsonLines});
  EXPECT_EQ(report.Record("b\xFF.JPG", Jpeg()),
            "{\"schema\":1,\"path\":\"b\xEF\xBF\xBD.JPG\",\"path_bytes\":\"Yv8uSlBH\","
            "\"status\":\"ok\",\"id\":1539,\"name\":\"JPEG image\",\"mime\":\"image/jpeg\","
            "\"extensions\":[\"jpg\",\"jpeg\"],\"extension_match\":true,\"basis\":\"signature\","
            "\"size\":5000000000,\"error\":null}\n");
  EXPECT_EQ(report.Record("x.doc", Encrypted()),
            "{\"schema\":1,\"path\":\"x.doc\",\"status\":\"protected\",\"id\":1819,"
            "\"name\":\"Encrypted package\",\"mime\":null,\"extensions\":[],"
            "\"extension_match\":null,\"basis\":\"content\",\"size\":4096,"
            "\"error\":\"a password is needed\"}\n");
  EXPECT_EQ(report.Record("x.doc", Missing()),
            "{\"schema\":1,\"path\":\"x.doc\",\"status\":\"error\",\"id\":null,\"name\":null,"
            "\"mime\":null,\"extensions\":[],\"extension_match\":null,\"basis\":null,"
            "\"size\":null,\"error\":\"No such file or directory\"}\n");
  EXPECT_EQ(report.End(), "");
}

TEST(Report, ComparesTheExtension) {
  const struct {
    std::string path;
    std::string expected;
  } cases[] = {
      {"a.jpg", "true"},   {"dir/a.JpEg", "true"}, {"a.jp", "false"}, {"a.jpgx", "false"},
      {"a.jpg,", "false"}, {"a", "null"},          {".jpg", "null"},  {"d.jpg/a", "null"},
      {"a.", "null"},      {"a.b.jpeg", "true"},   {"a.eg", "false"},
  };
  for (const auto& each : cases) {
    Report report({.layout = Layout::kJsonLines});
    EXPECT_NE(report.Record(each.path, Jpeg()).find("\"extension_match\":" + each.expected + ","),
              std::string_view::npos)
        << each.path;
  }
}

}  // namespace
}  // namespace fi::cli
