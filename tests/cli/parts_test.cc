// The parts of the command that no run of it shows whole: texts as they are written, records of
// answers that no file gives on its own, and passwords on their way to the library.

#include <gtest/gtest.h>
#include <sys/mman.h>
#include <unistd.h>

#include <map>
#include <string>

#include "cli/columns.h"
#include "cli/limits.h"
#include "cli/report.h"
#include "run/identify.h"
#include "run/passwords.h"
#include "run/text/base64.h"
#include "run/text/escape.h"
#include "run/text/json.h"
#include "run/text/shell_quote.h"
#include "run/text/utf8.h"
#include "tests/support/samples.h"

namespace fi::app {
namespace {

using testing::Sample;
using testing::SampleBytes;

void AppendLength(std::string_view text, std::string& out) {
  out += std::to_string(Utf8SequenceLength(text));
}

TEST(Encoding, AgreesWithTheSamples) {
  const std::map<std::string, void (*)(std::string_view, std::string&)> functions = {
      {"escape", AppendEscaped},         {"utf8", AppendLength},        {"base64", AppendBase64},
      {"json string", AppendJsonString}, {"json text", AppendJsonText}, {"csv", AppendCsvField},
      {"json list", AppendJsonList},     {"csv cell", AppendCsvCell},   {"shell", AppendShellWord}};
  for (const Sample& each : testing::ReadSamples("encoding.txt", 3)) {
    std::string out = "<";  // what stood there before is kept
    functions.at(each.columns[0])(SampleBytes(each.columns[1]), out);
    EXPECT_EQ(out, "<" + SampleBytes(each.columns[2])) << each.place;
  }
}

TEST(Report, AgreesWithTheSamples) {
  Answer jpeg;
  jpeg.status = AnswerStatus::kOk;
  jpeg.facts = {1539, "JPEG image", "graphics", "image/jpeg", "jpg,jpeg", ""};
  jpeg.basis = kFiBasisSignature;
  jpeg.size = 5'000'000'000;
  Answer encrypted;
  encrypted.status = AnswerStatus::kProtected;
  encrypted.facts = {1819, "Encrypted package", "", "", "", ""};
  encrypted.basis = kFiBasisContent;
  encrypted.size = 4096;
  encrypted.error = "a password is needed";
  const std::map<std::string, Field> fields = {
      {"name", Field::kName}, {"mime", Field::kMime}, {"extensions", Field::kExtensions}};
  for (const Sample& each : testing::ReadSamples("report.txt", 5)) {
    ReportStyle style;
    style.pathWidth = static_cast<size_t>(each.Number(2));
    if (each.columns[1] == "json") {
      style.layout = Layout::kJsonLines;
    } else {
      style.field = fields.at(each.columns[1]);
    }
    const Answer& answer = each.columns[0] == "jpeg" ? jpeg : encrypted;
    std::string record;
    Report(style).AppendRecord(SampleBytes(each.columns[3]), 1, answer, record);
    EXPECT_NE(record.find(SampleBytes(each.columns[4])), record.npos) << each.place << record;
  }
}

// Returns why they were refused, or nothing.
std::string Read(const std::string& content, Passwords& passwords) {
  std::string error;
  const int file = ::memfd_create("passwords", 0);
  EXPECT_EQ(::write(file, content.data(), content.size()), static_cast<ssize_t>(content.size()));
  ::lseek(file, 0, SEEK_SET);
  const bool isRead = passwords.ReadDescriptor(file, error);
  EXPECT_EQ(isRead, error.empty());
  ::close(file);
  return error;
}

TEST(Passwords, AreOneALine) {
  for (const Sample& each : testing::ReadSamples("passwords.txt", 3)) {
    Passwords passwords;
    EXPECT_EQ(Read(SampleBytes(each.columns[0]), passwords), each.columns[2]) << each.place;
    if (!each.columns[2].empty()) continue;
    std::string found;
    for (const std::string_view line : passwords.lines()) found += std::string(line) + '\0';
    EXPECT_EQ(found, SampleBytes(each.columns[1])) << each.place;
  }
}

// No byte beyond the room of the request, three passwords a round, and the default one last.
TEST(Passwords, AreGivenThreeARound) {
  Passwords passwords;
  ASSERT_EQ(Read("first\n\nthird\nfourth", passwords), "");
  passwords.AddDefault();
  const struct {
    int round;
    size_t attempt;
    size_t capacity;
    const char* expected;  // null: declined
    int32_t line;          // of the last that was given
  } cases[] = {
      {0, 0, 5, nullptr, -1}, {0, 0, 8, "first", 1},  {0, 1, 1, "", 2},
      {0, 1, 0, nullptr, 2},  {0, 2, 6, "third", 3},  {0, 3, 8, nullptr, 3},
      {1, 0, 8, "fourth", 4}, {1, 1, 15, nullptr, 4}, {1, 1, 16, "VelvetSweatshop", 0},
      {1, 2, 16, nullptr, 0},
  };
  PasswordRounds rounds(&passwords);
  int round = 0;
  for (const auto& each : cases) {
    SCOPED_TRACE(std::to_string(each.attempt) + " " + std::to_string(each.capacity));
    for (; round < each.round; ++round) ASSERT_TRUE(rounds.Next());
    std::string buffer(17, '#');
    EXPECT_EQ(rounds.Give(each.attempt, buffer.data(), each.capacity), each.expected != nullptr);
    std::string expected = each.expected != nullptr ? each.expected + std::string(1, '\0') : "";
    expected.resize(17, '#');
    EXPECT_EQ(buffer, expected);
    EXPECT_EQ(rounds.lastLine(), each.line);
  }
  EXPECT_FALSE(rounds.Next());
}

// The limits of a record, and what reached one.
TEST(Limits, AreReadByName) {
  const struct {
    const char* list;
    uint64_t reads, memory;
    bool isRead;
  } cases[] = {
      {"reads=7", 7, 0, true},   {"memory=none,reads=1", 1, FI_NO_LIMIT, true},
      {"reads=0", 0, 0, false},  {"reads", 0, 0, false},
      {"", 0, 0, false},         {"colour=1", 0, 0, false},
      {"reads=-1", 0, 0, false}, {"reads=1,", 1, 0, false},
  };
  for (const auto& each : cases) {
    FILimits limits = {};
    std::string error;
    EXPECT_EQ(ParseLimits(each.list, limits, error), each.isRead) << each.list;
    EXPECT_EQ(error.empty(), each.isRead) << each.list;
    EXPECT_EQ(limits.reads, each.reads) << each.list;
    EXPECT_EQ(limits.memory, each.memory) << each.list;
  }
}

}  // namespace
}  // namespace fi::app
