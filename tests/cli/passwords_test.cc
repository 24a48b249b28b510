// Passwords from a file or a descriptor, and what they open.

#include "cli/passwords.h"

#include <fcntl.h>

#include <cerrno>

#include "tests/cli/run_command.h"
#include "tests/support/compound_file_writer.h"
#include "tests/support/encrypted_package_writer.h"

namespace fi::cli {
namespace {

using ::testing::PrintToString;

std::string Repeat(const std::string& text, size_t count) {
  std::string all;
  for (size_t i = 0; i < count; ++i) all += text;
  return all;
}

class PasswordFile : public CommandTest {};

TEST_F(PasswordFile, HoldsOneALine) {
  const std::string longest(Passwords::kLongestPassword, 'x');
  const struct {
    const char* name;
    std::string content;
    std::vector<std::string> expected;
  } cases[] = {
      {"last line end", "a\nb\n", {"a", "b"}},
      {"no last line end", "a\nb", {"a", "b"}},
      {"CRLF", "a\r\nb\r\n", {"a", "b"}},
      {"CR elsewhere", "a\rb\r\r\nc\r", {"a\rb\r", "c\r"}},
      {"blanks", " a \t\n", {" a \t"}},
      {"one empty", "\n", {""}},
      {"one empty, CRLF", "\r\n", {""}},
      {"empty among others", "\n\na\n\n", {"", "", "a", ""}},
      {"byte-order mark", "\xEF\xBB\xBFp\xC3\xA4\n\xEF\xBB\xBF\n", {"p\xC3\xA4", "\xEF\xBB\xBF"}},
      {"longest", longest + "\r\n" + longest, {longest, longest}},
      {"most", Repeat("p\n", 1000), std::vector<std::string>(1000, "p")},
      {"largest", Repeat(std::string(511, 'x') + "\n", 128),
       std::vector<std::string>(128, std::string(511, 'x'))},
  };
  for (const auto& each : cases) {
    SCOPED_TRACE(each.name);
    Write("file", each.content);
    Passwords passwords;
    std::string error;
    EXPECT_TRUE(passwords.ReadFile(PathOf("file"), error)) << error;
    const auto& lines = passwords.lines();
    EXPECT_EQ(std::vector<std::string>(lines.begin(), lines.end()), each.expected);
  }
}

TEST_F(PasswordFile, IsRefusedWithAReason) {
  const struct {
    std::string content;
    const char* error;
  } cases[] = {
      {"", "holds no password"},
      {"\xEF\xBB\xBF", "holds no password"},
      {std::string("\xFF\xFE"
                   "a\0\n\0",
                   6),
       "holds a NUL byte (not text in UTF-8)"},
      {Repeat("p\n", 1000) + "q", "holds more than 1,000 passwords"},
      {"a\n" + std::string(1024, 'x'), "holds a password of more than 1,023 bytes"},
      {Repeat(std::string(511, 'x') + "\n", 128) + "\n", "holds more than 64 KB of passwords"},
      {std::string(200'000, 'x'), "holds more than 64 KB of passwords"},
  };
  for (const auto& each : cases) {
    Write("file", each.content);
    Passwords passwords;
    std::string error;
    EXPECT_FALSE(passwords.ReadFile(PathOf("file"), error)) << each.error;
    EXPECT_EQ(error, each.error);
  }
}

// What the library's side sees: no byte beyond its buffer, and an answer to its own code alone.
TEST_F(PasswordFile, AnswersWithinTheRoomOfTheRequest) {
  Write("file", "first\n\nthird");
  Passwords passwords;
  std::string error;
  ASSERT_TRUE(passwords.ReadFile(PathOf("file"), error)) << error;
  void* item = nullptr;
  {
    const PasswordAnswers answers(passwords);
    ASSERT_EQ(UTGetGlobalData(kUtDataPasswordCallback, &item), 0u);
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
      SCOPED_TRACE(PrintToString(each.attempts) + " " + PrintToString(each.capacity));
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

constexpr char kDamaged[] = "the encryption is damaged or of an unknown scheme";
constexpr char kNoneFits[] = "no password that was given fits";

class EncryptedInput : public CommandTest {
 protected:
  void SetUp() override {
    CommandTest::SetUp();
    Write("secret", Document(u"s3cret"));
    Write("open", Document(u""));
    const std::string info("\x04\0\x04\0\x40\0\0\0<encryption>", 20);
    Write("damaged", Compound({info, "x"}));
  }

  static std::string Compound(const testing::EncryptedPackage& package) {
    return testing::WriteCompoundFile({testing::Stream(u"EncryptionInfo", package.info),
                                       testing::Stream(u"EncryptedPackage", package.package)});
  }

  // Without an extension only the inside can tell what it is.
  static std::string Document(const std::u16string& password) {
    testing::AgileSettings settings;
    settings.password = password;
    return Compound(testing::WriteAgile("%PDF-1.4\n%%EOF\n", settings));
  }

  // `reason` is that of the status "protected"; none for "ok".
  static void CheckAnswer(const Outcome& outcome, const std::string& reason) {
    const std::string status = reason.empty() ? "ok" : "protected";
    const std::string error = reason.empty() ? "null" : "\"" + reason + "\"";
    EXPECT_NE(outcome.output.find("\"status\":\"" + status + "\",\"id\":1819,"), std::string::npos)
        << outcome.output;
    EXPECT_NE(outcome.output.find("\"error\":" + error + "}"), std::string::npos) << outcome.output;
    EXPECT_EQ(outcome.exitCode, reason.empty() ? 0 : 1);
    EXPECT_EQ(outcome.errors, "");
    EXPECT_EQ(outcome.output.find("s3cret"), std::string::npos);
  }
};

TEST_F(EncryptedInput, OpensWithAPasswordThatFits) {
  const struct {
    const char* file;
    const char* passwords;
    const char* reason;
  } cases[] = {
      {"secret", "s3cret\n", ""},
      {"secret", "a\r\n\r\ns3cret\r\n", ""},
      {"secret", "a\n", kNoneFits},
      {"secret", "s3cret \n", kNoneFits},
      {"secret", "a\nb\nc\ns3cret\n", kNoneFits},
      {"open", "\n", ""},
      {"open", "a\n", kNoneFits},
      {"damaged", "s3cret\n", kDamaged},
  };
  for (const auto& each : cases) {
    SCOPED_TRACE(each.passwords);
    Write("list", each.passwords);
    CheckAnswer(Run({"--jsonl", "--password-file", "list", each.file}), each.reason);
    CheckAnswer(Run({"--jsonl", "--password-file", "-", each.file}, each.passwords), each.reason);
    CheckAnswer(Run({"--jsonl", "--password-fd", "0", each.file}, each.passwords), each.reason);
  }
  // Deliberate: without any password an encrypted document is named, and nothing has failed.
  CheckAnswer(Run({"--jsonl", "secret"}, "s3cret\n"), "");
  // Each document begins with the first password again.
  Write("list", "\ns3cret\n");
  const Outcome both = Run({"--password-file=list", "-b", "--id", "open", "secret", "open"});
  EXPECT_EQ(both.output, "1819\n1819\n1819\n");
  EXPECT_EQ(both.exitCode, 0);
}

TEST_F(EncryptedInput, TakesPasswordsThroughAPipeBesideStandardInput) {
  int ends[2];
  ASSERT_EQ(::pipe2(ends, O_CLOEXEC), 0);
  ASSERT_EQ(::write(ends[1], "a\ns3c", 5), 5);
  std::thread writer([&] {
    EXPECT_EQ(::write(ends[1], "ret", 3), 3);
    ::close(ends[1]);
  });
  CheckAnswer(
      Run({"--jsonl", "--password-fd", "9", "-"}, Document(u"s3cret"), [&] { ::dup2(ends[0], 9); }),
      "");
  writer.join();
  ::close(ends[0]);
}

TEST_F(EncryptedInput, RefusesPasswordsItCannotRead) {
  Write("empty", "");
  const struct {
    std::vector<std::string> arguments;
    std::string errors;  // the first line, or a part of it
  } cases[] = {
      {{"--password-file", "absent"}, "formatid: absent: No such file or directory\n"},
      {{"--password-file", "."}, "formatid: .: Is a directory\n"},
      {{"--password-file", "empty"}, "formatid: empty: holds no password\n"},
      {{"--password-file", "-"}, "formatid: standard input: holds no password\n"},
      {{"--password-fd", "77"}, "formatid: descriptor 77: Bad file descriptor\n"},
      {{"--password-file", ""}, "formatid: the file of passwords has no name\n"},
      {{"--password-fd", "s3cret"}, "formatid: --password-fd takes a number\n"},
      {{"--password-fd", "[0"}, "formatid: --password-fd takes a number\n"},
      {{"--password-fd=-3"}, "formatid: --password-fd takes a number\n"},
      {{"--password-fd", "4294967296"}, "formatid: --password-fd takes a number\n"},
      {{"--password-fd", "0", "--password-file", "empty"}, "--password-file"},
      {{"--password-file", "-", "-"}, "standard input can be read only once"},
      {{"--password-fd", "0", "-"}, "standard input can be read only once"},
      {{"--password-file", "-", "-f", "-"}, "standard input can be read only once"},
      {{"--password-file", "-", "--files0-from", "-"}, "standard input can be read only once"},
  };
  for (const auto& each : cases) {
    SCOPED_TRACE(PrintToString(each.arguments));
    std::vector<std::string> arguments = each.arguments;
    arguments.insert(arguments.end(), {"--json", "secret"});
    const Outcome outcome = Run(arguments);
    EXPECT_EQ(outcome.exitCode, 2);
    EXPECT_EQ(outcome.output, "");
    EXPECT_NE(outcome.errors.find(each.errors), std::string::npos) << outcome.errors;
    EXPECT_EQ(outcome.errors.find("s3cret"), std::string::npos) << outcome.errors;
  }
}

}  // namespace
}  // namespace fi::cli
