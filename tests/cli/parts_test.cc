// The parts of the command that no run of it shows whole: texts as they are written, records of
// answers that no file gives on its own, and passwords on their way to the library.

#include <gtest/gtest.h>
#include <sys/mman.h>
#include <unistd.h>

#include <map>
#include <string>
#include <thread>

#include "cli/catalogue.h"
#include "cli/report.h"
#include "run/base64.h"
#include "run/escape.h"
#include "run/identify.h"
#include "run/json.h"
#include "run/passwords.h"
#include "run/shell_quote.h"
#include "run/utf8.h"
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

// What the library's side sees: no byte beyond its buffer, an answer to its own code alone, three
// passwords a round, and each thread those of its own document.
TEST(Passwords, AnswerWithinTheRoomOfTheRequest) {
  Passwords passwords;
  ASSERT_EQ(Read("first\n\nthird\nfourth", passwords), "");
  void* item = nullptr;
  {
    const PasswordAnswers answers;
    UTGetGlobalData(kUtDataPasswordCallback, &item);
    ASSERT_NE(item, nullptr);
    const FIPasswordCallback ask = *static_cast<const FIPasswordCallback*>(item);
    const struct {
      int round;
      uint32_t code;
      uint32_t attempts;
      uint32_t capacity;
      const char* expected;  // null: declined
      uint32_t line;
    } cases[] = {
        {0, kFiPasswordOfPackage, 0, 8, "first", 1},
        {0, kFiPasswordOfPackage, 1, 1, "", 2},
        {0, kFiPasswordOfPackage, 2, 6, "third", 3},
        {0, kFiPasswordOfPackage, 3, 8, nullptr, 3},
        {0, kFiPasswordOfPackage, 0, 5, nullptr, 3},
        {0, kFiPasswordOfPackage, 1, 0, nullptr, 3},
        {0, kFiPasswordOfPackage + 1, 0, 8, nullptr, 3},
        {1, kFiPasswordOfPackage, 0, 8, "fourth", 4},
        {1, kFiPasswordOfPackage, 1, 8, nullptr, 4},
    };
    PasswordRounds rounds(&passwords);
    int round = 0;
    for (const auto& each : cases) {
      SCOPED_TRACE(std::to_string(each.attempts) + " " + std::to_string(each.capacity));
      for (; round < each.round; ++round) ASSERT_TRUE(rounds.Next());
      std::string buffer(9, '#');
      FIPasswordRequest request{sizeof(request), each.capacity, buffer.data(), nullptr,
                                each.attempts};
      EXPECT_EQ(ask(each.code, &request, 0, 0) == 0, each.expected != nullptr);
      std::string expected = each.expected != nullptr ? each.expected + std::string(1, '\0') : "";
      expected.resize(9, '#');
      EXPECT_EQ(buffer, expected);
      EXPECT_EQ(rounds.lastLine(), each.line);
    }
    EXPECT_FALSE(rounds.Next());
    std::thread([&] {
      std::string buffer(9, '#');
      FIPasswordRequest request{sizeof(request), 8, buffer.data(), nullptr, 0};
      EXPECT_NE(ask(kFiPasswordOfPackage, &request, 0, 0), 0u);
    }).join();
  }
  ASSERT_EQ(UTGetGlobalData(kUtDataPasswordCallback, &item), 0u);
  EXPECT_EQ(item, nullptr);
}

}  // namespace
}  // namespace fi::app
