// The command from outside: arguments and input in, records and exit code out.

#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <pty.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <functional>
#include <sstream>
#include <thread>

#include "tests/support/compound_file_writer.h"
#include "tests/support/encrypted_package_writer.h"
#include "tests/support/samples.h"

namespace fi::app {
namespace {

using testing::SampleBytes;

struct Outcome {
  int exitCode = -1;  // 1000 and the number of the signal that ended it, if one did
  std::string output;
  std::string errors;
};

void WriteAll(int descriptor, const std::string& bytes) {
  for (size_t done = 0; done < bytes.size();) {
    const ssize_t count = ::write(descriptor, bytes.data() + done, bytes.size() - done);
    if (count <= 0) break;  // the command need not read what it is given
    done += static_cast<size_t>(count);
  }
  ::close(descriptor);
}

std::string Content(const std::string& path) {
  std::ostringstream content;
  content << std::ifstream(path, std::ios::binary).rdbuf();
  return content.str();
}

std::string Compound(const testing::EncryptedPackage& package) {
  return testing::WriteCompoundFile({testing::Stream(u"EncryptionInfo", package.info),
                                     testing::Stream(u"EncryptedPackage", package.package)});
}

// Without an extension only the inside can tell what it is.
std::string Encrypted(const std::u16string& password) {
  testing::AgileSettings settings;
  settings.password = password;
  return Compound(testing::WriteAgile("%PDF-1.4\n%%EOF\n", settings));
}

class Command : public ::testing::Test {
 protected:
  void SetUp() override {
    char name[] = "/tmp/formatid-command-XXXXXX";
    ASSERT_NE(::mkdtemp(name), nullptr);
    base_ = name;
    folder_ = base_ + "/in";
    Write("a.png", SampleBytes("89 'PNG' 0D0A1A0A 0000000D 'IHDR' 00000001 00000001 0806000000"));
    Write("b.txt", gif_);
    Write("empty", "");
  }
  void TearDown() override { std::filesystem::remove_all(base_); }

  std::string PathOf(const std::string& name) const { return folder_ + "/" + name; }

  void Write(const std::string& name, const std::string& bytes) const {
    std::filesystem::create_directories(std::filesystem::path(PathOf(name)).parent_path());
    std::ofstream(PathOf(name), std::ios::binary) << bytes;
  }

  // Runs the command with `input` in a pipe as its standard input. `adjust` may replace descriptors
  // in the new process before the command starts there.
  Outcome Run(
      std::vector<std::string> arguments, const std::string& input = {},
      const std::function<void()>& adjust = [] {}) const {
    constexpr unsigned kSecondsToLive = 30;
    const std::string output = base_ + "/output";
    const std::string errors = base_ + "/errors";
    int ends[2];
    EXPECT_EQ(::pipe(ends), 0);
    const pid_t child = ::fork();
    if (child == 0) {
      // Root reads everything; without these it is bound by the mode of a file as others are.
      (void)::prctl(PR_CAPBSET_DROP, 1, 0, 0, 0);  // CAP_DAC_OVERRIDE
      (void)::prctl(PR_CAPBSET_DROP, 2, 0, 0, 0);  // CAP_DAC_READ_SEARCH
      ::dup2(ends[0], STDIN_FILENO);
      ::dup2(::open(output.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600), STDOUT_FILENO);
      ::dup2(::open(errors.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600), STDERR_FILENO);
      for (const int end : ends) ::close(end);
      if (::chdir(folder_.c_str()) != 0) ::_exit(126);
      adjust();
      std::vector<char*> vector = {const_cast<char*>("formatid")};
      for (std::string& argument : arguments) vector.push_back(argument.data());
      vector.push_back(nullptr);
      ::alarm(kSecondsToLive);
      ::execv(FORMATID_COMMAND, vector.data());
      ::_exit(127);
    }
    ::close(ends[0]);
    std::signal(SIGPIPE, SIG_IGN);
    std::thread writer([&] { WriteAll(ends[1], input); });
    int status = 0;
    ::waitpid(child, &status, 0);
    writer.join();
    return {WIFEXITED(status) ? WEXITSTATUS(status) : 1000 + WTERMSIG(status), Content(output),
            Content(errors)};
  }

  const std::string gif_ = SampleBytes("'GIF89a' 01000100000000 ';'");
  std::string base_;
  std::string folder_;  // in which the command runs
};

std::vector<std::string> Arguments(std::string column) {
  std::vector<std::string> arguments;
  for (column += ' '; column.size() > 1;) {
    const bool isNotation = column[0] == '<';
    const size_t end = column.find(isNotation ? "> " : " ");
    arguments.push_back(isNotation ? SampleBytes(column.substr(1, end - 1))
                                   : column.substr(0, end));
    column.erase(0, end + (isNotation ? 2 : 1));
  }
  return arguments;
}

TEST_F(Command, DoesWhatItIsAsked) {
  for (const char* name : {"[a,b]", "{}", "[]", "%%", "-x", "--id", "-=", "--x=", " b ",
                           "\xFF\xFE\n", "-", "tree/b/1", "tree/locked/x", "other/x", "loop/a"}) {
    Write(name, gif_);
  }
  Write("tree/b/0", "%PDF-1.4\n%%EOF\n");
  std::filesystem::copy(PathOf("a.png"), PathOf("tree/B"));
  Write("tree/b.c", "");
  Write("locked", "");
  const std::pair<const char*, const char*> links[] = {
      {"..", "tree/b/up"},   {"../other", "tree/z"}, {"../a.png", "tree/y"},
      {"nowhere", "tree/x"}, {"other", "link"},      {".", "loop/up"}};
  for (const auto& [target, name] : links) std::filesystem::create_symlink(target, PathOf(name));
  Write("list", "a.png\n\nnone\nb.txt");
  Write("passwords", "\ns3cret\n");
  Write("secret", Encrypted(u"s3cret"));
  Write("open", Encrypted(u""));
  Write("damaged", Compound({SampleBytes("04000400 40000000 '<encryption>'"), "x"}));
  for (const char* name : {"fifo", "tree/fifo"}) {
    ASSERT_EQ(::mkfifo(PathOf(name).c_str(), 0600), 0);
  }
  const int socket = ::socket(AF_UNIX, SOCK_STREAM, 0);
  sockaddr_un address = {AF_UNIX, ""};
  PathOf("socket").copy(address.sun_path, sizeof(address.sun_path) - 1);
  const auto* generic = reinterpret_cast<const sockaddr*>(&address);
  ASSERT_EQ(::bind(socket, generic, sizeof(address)), 0);
  ASSERT_EQ(::chmod(PathOf("locked").c_str(), 0), 0);
  ASSERT_EQ(::chmod(PathOf("tree/locked").c_str(), 0), 0);

  for (const testing::Sample& each : testing::ReadSamples("command.txt", 5, 1)) {
    SCOPED_TRACE(each.place + ": " + each.columns[1]);
    const Outcome outcome = Run(Arguments(each.columns[1]), SampleBytes(each.columns[2]));
    const std::string errors = SampleBytes(each.columns[4]);
    EXPECT_EQ(outcome.output, SampleBytes(each.columns[3]));
    EXPECT_EQ(outcome.exitCode, each.Number(0)) << outcome.errors;
    EXPECT_EQ(outcome.errors.empty(), each.Number(0) != 2 && errors.empty()) << outcome.errors;
    EXPECT_NE(outcome.errors.find(errors), std::string::npos) << outcome.errors;
    EXPECT_EQ(outcome.errors.find("s3cret"), std::string::npos) << outcome.errors;
  }
  ASSERT_EQ(::chmod(PathOf("tree/locked").c_str(), 0700), 0);
  ::close(socket);
}

TEST_F(Command, ReadsStandardInputFromWhereItStands) {
  const auto fromFile = [this](off_t offset) {
    return [this, offset] {
      const int file = ::open(PathOf("a.png").c_str(), O_RDONLY);
      (void)::lseek(file, offset, SEEK_SET);
      ::dup2(file, STDIN_FILENO);
    };
  };
  const auto closed = [] { ::close(STDIN_FILENO); };
  EXPECT_EQ(Run({"--id", "-"}, "", fromFile(0)).output, "-: 1574\n");
  EXPECT_EQ(Run({"--id", "-"}, "", fromFile(29)).output, "-: 1999\n");
  EXPECT_EQ(Run({"-"}, "", closed).output, "-: ERROR: Bad file descriptor\n");
  // The list must not take the place of the closed standard input.
  Write("list", "a.png\n");
  EXPECT_EQ(Run({"-", "-b", "--id", "-f", "list"}, "", closed).output,
            "ERROR: Bad file descriptor\n1574\n");
}

TEST_F(Command, TakesPasswordsThroughAPipeBesideStandardInput) {
  int ends[2];
  ASSERT_EQ(::pipe2(ends, O_CLOEXEC), 0);
  WriteAll(ends[1], "a\ns3cret");
  const Outcome outcome =
      Run({"--id", "--password-fd", "9", "-"}, Encrypted(u"s3cret"), [&] { ::dup2(ends[0], 9); });
  ::close(ends[0]);
  EXPECT_EQ(outcome.output, "-: 1819\n");
  EXPECT_EQ(outcome.exitCode, 0) << outcome.errors;
}

TEST_F(Command, EndsWithTheOutput) {
  std::string list;
  for (int i = 0; i < 20'000; ++i) list += "empty\n";
  const Outcome closed = Run({"-f", "-"}, list, [] {
    int ends[2];
    if (::pipe(ends) != 0) ::_exit(125);
    ::dup2(ends[1], STDOUT_FILENO);
    for (const int end : ends) ::close(end);
  });
  EXPECT_EQ(closed.errors, "");
  EXPECT_EQ(closed.exitCode, 0);

  const Outcome full =
      Run({"a.png"}, "", [] { ::dup2(::open("/dev/full", O_WRONLY), STDOUT_FILENO); });
  EXPECT_EQ(full.errors, "formatid: standard output: No space left on device\n");
  EXPECT_EQ(full.exitCode, 2);
  EXPECT_EQ(Run({"a.png"}, "", [] { ::close(STDOUT_FILENO); }).exitCode, 2);

  const Outcome limited = Run({"-f", "-"}, list, [] {
    const rlimit limit = {100'000, 100'000};
    ::setrlimit(RLIMIT_FSIZE, &limit);
  });
  EXPECT_EQ(limited.errors, "formatid: standard output: File too large\n");
  EXPECT_EQ(limited.exitCode, 2);
}

TEST_F(Command, AlignsOnATerminal) {
  int master = -1;
  int terminal = -1;
  ASSERT_EQ(::openpty(&master, &terminal, nullptr, nullptr, nullptr), 0);
  const auto onTerminal = [&] { ::dup2(terminal, STDOUT_FILENO); };
  EXPECT_EQ(Run({"--id", "b.txt", "empty", "\n"}, "", onTerminal).exitCode, 1);
  EXPECT_EQ(Run({"--id", "-f", "-"}, "b.txt\nempty\n", onTerminal).exitCode, 0);
  const std::string expected =
      "b.txt: 1503\r\nempty: 1999\r\n\\n:    ERROR: No such file or directory\r\n"
      "b.txt: 1503\r\nempty: 1999\r\n";
  // The terminal hands over what arrived in pieces of its own; the wait ends where one is missing.
  std::string shown;
  pollfd wanted = {master, POLLIN, 0};
  char buffer[1000];
  while (shown.size() < expected.size() && ::poll(&wanted, 1, 5000) == 1) {
    const ssize_t count = ::read(master, buffer, sizeof(buffer));
    if (count <= 0) break;
    shown.append(buffer, static_cast<size_t>(count));
  }
  EXPECT_EQ(shown, expected);
  ::close(master);
  ::close(terminal);
}

TEST_F(Command, ListsTheFormats) {
  const std::string gif = "Graphics Interchange Format (GIF)";
  const std::string text = Run({"--list-formats"}).output;
  EXPECT_NE(text.find("\n1503\t" + gif + "\timage/gif\tgif\n"), std::string::npos);
  const std::string csv = Run({"--list-formats", "--csv"}).output;
  EXPECT_TRUE(csv.starts_with("id,name,category,mime,extensions,puids\r\n"));
  EXPECT_NE(csv.find("\r\n1503," + gif + ",graphics,image/gif,gif,\"fmt/3,fmt/4\"\r\n"),
            std::string::npos);
  const std::string json = Run({"--list-formats", "--json"}).output;
  EXPECT_TRUE(json.starts_with("[\n{\"id\":")) << json.substr(0, 40);
  EXPECT_TRUE(json.ends_with("]}\n]\n"));
  const auto lines = [](const std::string& all) {
    return std::count(all.begin(), all.end(), '\n');
  };
  EXPECT_EQ(lines(json), lines(csv) + 1);  // two brackets against one head
}

// However long single reads take, and however many files are read at a time, the output is the
// same.
TEST_F(Command, WritesTheSameForAnyNumberOfJobs) {
  std::string list;
  for (int i = 0; i < 700; ++i) {
    const std::string name = "many/" + std::to_string(i % 7) + "/" + std::to_string(i);
    Write(name, i % 3 == 0 ? gif_ : i % 3 == 1 ? "%PDF-1.4\n%%EOF\n" : "some text\n");
    list += name + "\nnone\n";
  }
  const auto slowly = [] {
    ::setenv("LD_PRELOAD", FORMATID_SLOW_READS, 1);
    ::setenv("FORMATID_READ_DELAY", "random 1000", 1);
  };
  const std::string walked = Run({"--json", "-j1", "-r", "many"}).output;
  const std::string listed = Run({"--jsonl", "-j1", "-f", "-"}, list).output;
  EXPECT_EQ(std::count(walked.begin(), walked.end(), '\n'), 702);
  EXPECT_EQ(std::count(listed.begin(), listed.end(), '\n'), 1400);
  for (const char* jobs : {"-j2", "-j8", "-j64"}) {
    EXPECT_EQ(Run({"--json", jobs, "-r", "many"}, "", slowly).output, walked) << jobs;
    EXPECT_EQ(Run({"--jsonl", jobs, "-f", "-"}, list, slowly).output, listed) << jobs;
  }
  const auto sorted = [](const std::string& all) {
    std::istringstream stream(all);
    std::vector<std::string> lines;
    for (std::string line; std::getline(stream, line);) lines.push_back(line);
    std::sort(lines.begin(), lines.end());
    return lines;
  };
  const Outcome unordered = Run({"--jsonl", "--unordered", "-j8", "-f", "-"}, list, slowly);
  EXPECT_EQ(sorted(unordered.output), sorted(listed));
  EXPECT_EQ(unordered.exitCode, 1);
}

// What was answered before is written, and the exit code tells that something is missing.
TEST_F(Command, SaysSoWhenMemoryRunsOut) {
  if (FORMATID_IS_SANITIZED) GTEST_SKIP() << "a sanitizer takes more memory than the limit";
  const auto limited = [] {
    const rlimit limit = {rlim_t{24} << 20, rlim_t{24} << 20};
    ::setrlimit(RLIMIT_AS, &limit);
  };
  const Outcome outcome = Run({"--id", "a.png", "-", "b.txt"}, std::string(15 << 20, 'x'), limited);
  EXPECT_EQ(outcome.output, "a.png: 1574\n");
  EXPECT_EQ(outcome.errors, "formatid: out of memory\n");
  EXPECT_EQ(outcome.exitCode, 2);
}

TEST_F(Command, WalksAHugeFolderInLittleMemory) {
  if (FORMATID_IS_SANITIZED) GTEST_SKIP() << "a sanitizer takes more memory than the limit";
  constexpr int kFiles = 20'000;
  std::filesystem::create_directories(PathOf("huge"));
  const int folder = ::open(PathOf("huge").c_str(), O_RDONLY | O_DIRECTORY);
  const std::string tail(230, 'n');
  Write("huge/first", "");
  for (int i = 0; i < kFiles; ++i) {
    // Links to one file: the names are what counts.
    const std::string name = std::to_string((i * 7919) % kFiles) + tail;
    ASSERT_EQ(::linkat(folder, "first", folder, name.c_str(), 0), 0) << i;
  }
  ::close(folder);
  const auto limited = [] {
    const rlimit limit = {rlim_t{24} << 20, rlim_t{24} << 20};  // the names alone take 5 MB
    ::setrlimit(RLIMIT_AS, &limit);
  };
  const Outcome outcome = Run({"--format", "{path}", "-r", "huge"}, "", limited);
  EXPECT_EQ(outcome.errors, "");
  EXPECT_EQ(outcome.exitCode, 0);
  EXPECT_EQ(std::count(outcome.output.begin(), outcome.output.end(), '\n'), kFiles + 1);
  std::istringstream lines(outcome.output);
  std::string before;
  for (std::string line; std::getline(lines, line); before = line) {
    ASSERT_LT(before, line);
  }
}

TEST_F(Command, EndsAfterWholeRecordsOnASignal) {
  std::string list;
  for (int i = 0; i < 3000; ++i) list += "a.png\n";
  for (const int signal : {SIGINT, SIGTERM}) {
    const Outcome outcome = Run({"--json", "-j2", "-f", "-"}, list, [signal] {
      ::setenv("LD_PRELOAD", FORMATID_SLOW_READS, 1);
      ::setenv("FORMATID_READ_DELAY", "5000", 1);
      const pid_t self = ::getpid();
      if (::fork() != 0) return;
      ::usleep(1'500'000);
      ::kill(self, signal);
      ::_exit(0);
    });
    EXPECT_EQ(outcome.exitCode, 1000 + signal);
    EXPECT_TRUE(outcome.output.starts_with("[\n{\"schema\":1")) << outcome.output.substr(0, 40);
    EXPECT_TRUE(outcome.output.ends_with("}\n]\n"));
    EXPECT_LT(std::count(outcome.output.begin(), outcome.output.end(), '\n'), 3002);
  }
}

// Every option that the help names is one that the command takes.
TEST_F(Command, HelpNamesOptionsThatExist) {
  EXPECT_TRUE(Run({"--version"}).output.starts_with("formatid "));
  const std::string help = Run({"--help"}).output;
  std::istringstream lines(help);
  for (std::string line; std::getline(lines, line);) EXPECT_LE(line.size(), 80u) << line;
  size_t options = 0;
  for (size_t at = help.find(" --"); at != std::string::npos; at = help.find(" --", at + 1)) {
    const size_t end = help.find_first_not_of("abcdefghijklmnopqrstuvwxyz0-", at + 1);
    const std::string option = help.substr(at + 1, end - at - 1);
    if (option == "--") continue;
    ++options;
    const std::string errors = Run({option}).errors;
    EXPECT_EQ(errors.find("there is no option"), std::string::npos) << option << ": " << errors;
  }
  EXPECT_GE(options, 24u);
}

}  // namespace
}  // namespace fi::app
