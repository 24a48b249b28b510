// The parts of the command that no run of it shows whole: texts as they are written, records of
// answers that no file gives on its own, and passwords on their way to the library.

#include <gtest/gtest.h>
#include <sys/mman.h>
#include <unistd.h>

#include <map>
#include <string>

#include "cli/catalogue.h"
#include "cli/report.h"
#include "run/base64.h"
#include "run/escape.h"
#include "run/identify.h"
#include "run/json.h"
#include "run/passwords.h"
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
      {"json list", AppendJsonList}};
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
    const std::string record(Report(style).Record(SampleBytes(each.columns[3]), answer));
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

// What the library's side sees: no byte beyond its buffer, and an answer to its own code alone.
TEST(Passwords, AnswerWithinTheRoomOfTheRequest) {
  Passwords passwords;
  ASSERT_EQ(Read("first\n\nthird", passwords), "");
  void* item = nullptr;
  {
    const PasswordAnswers answers(passwords);
    UTGetGlobalData(kUtDataPasswordCallback, &item);
    ASSERT_NE(item, nullptr);
    const FIPasswordCallback ask = *static_cast<const FIPasswordCallback*>(item);
    const struct {
      uint32_t code;
      uint32_t attempts;
      uint32_t capacity;
      const char* expected;  // null: declined
    } cases[] = {
        {kFiPasswordOfPackage, 0, 8, "first"},     {kFiPasswordOfPackage, 1, 1, ""},
        {kFiPasswordOfPackage, 2, 6, "third"},     {kFiPasswordOfPackage, 3, 8, nullptr},
        {kFiPasswordOfPackage, 0, 5, nullptr},     {kFiPasswordOfPackage, 1, 0, nullptr},
        {kFiPasswordOfPackage + 1, 0, 8, nullptr},
    };
    for (const auto& each : cases) {
      SCOPED_TRACE(std::to_string(each.attempts) + " " + std::to_string(each.capacity));
      std::string buffer(9, '#');
      FIPasswordRequest request{sizeof(request), each.capacity, buffer.data(), nullptr,
                                each.attempts};
      EXPECT_EQ(ask(each.code, &request, 0, 0) == 0, each.expected != nullptr);
      std::string expected = each.expected != nullptr ? each.expected + std::string(1, '\0') : "";
      expected.resize(9, '#');
      EXPECT_EQ(buffer, expected);
    }
  }
  ASSERT_EQ(UTGetGlobalData(kUtDataPasswordCallback, &item), 0u);
  EXPECT_EQ(item, nullptr);
}

}  // namespace
}  // namespace fi::app
