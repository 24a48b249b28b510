// The command from outside: arguments and input in, records and exit code out.

#include <fcntl.h>
#include <poll.h>
#include <pty.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>

#include <algorithm>

#include "tests/cli/run_command.h"

namespace fi::cli {
namespace {

const std::string kPng("\x89PNG\r\n\x1A\n\0\0\0\rIHDR\0\0\0\1\0\0\0\1\x08\6\0\0\0", 29);
const std::string kGif("GIF89a\1\0\1\0\0\0\0;", 14);
const std::string kPdf = "%PDF-1.4\n%%EOF\n";
const std::string kPngName = "Portable Network Graphics (PNG)";
const std::string kGifName = "Graphics Interchange Format (GIF)";
const std::string kPdfName = "Portable Document Format";

struct Case {
  std::vector<std::string> arguments;
  std::string input;
  std::string expected;
  int exitCode;
};

class Command : public CommandTest {
 protected:
  void SetUp() override {
    CommandTest::SetUp();
    Write("a.png", kPng);
    Write("b.txt", kGif);
    Write("empty", "");
  }

  void Check(const std::vector<Case>& cases) const {
    for (const Case& each : cases) {
      const Outcome outcome = Run(each.arguments, each.input);
      const std::string label = testing::PrintToString(each.arguments);
      EXPECT_EQ(outcome.output, each.expected) << label;
      EXPECT_EQ(outcome.exitCode, each.exitCode) << label << outcome.errors;
      EXPECT_EQ(outcome.errors.empty(), each.exitCode != 2) << label << outcome.errors;
    }
  }
};

TEST_F(Command, AnswersInTheFormAskedFor) {
  Check({
      {{"a.png", "b.txt", "empty"},
       "",
       "a.png: " + kPngName + "\nb.txt: " + kGifName + "\nempty: empty\n",
       0},
      {{"-b", "a.png", "empty"}, "", kPngName + "\nempty\n", 0},
      {{"-i", "a.png", "empty"}, "", "a.png: image/png\nempty: application/x-empty\n", 0},
      {{"--mime-type", "-b", "a.png"}, "", "image/png\n", 0},
      {{"--id", "-b", "a.png", "b.txt", "empty"}, "", "1574\n1503\n1999\n", 0},
      {{"--extension", "a.png", "empty"}, "", "a.png: png\nempty: ???\n", 0},
      {{"-F", " ->", "a.png"}, "", "a.png -> " + kPngName + "\n", 0},
      {{"--separator=", "a.png"}, "", "a.png " + kPngName + "\n", 0},
      {{"-0", "--id", "a.png"}, "", std::string("a.png\0", 6) + "1574\n", 0},
  });
}

TEST_F(Command, WritesJson) {
  const std::string png =
      "{\"schema\":1,\"path\":\"a.png\",\"status\":\"ok\",\"id\":1574,\"name\":\"" + kPngName +
      "\",\"mime\":\"image/png\",\"extensions\":[\"png\"],\"extension_match\":true,"
      "\"basis\":\"signature\",\"size\":29,\"error\":null}";
  const std::string missing =
      "{\"schema\":1,\"path\":\"none\",\"status\":\"error\",\"id\":null,\"name\":null,"
      "\"mime\":null,\"extensions\":[],\"extension_match\":null,\"basis\":null,\"size\":null,"
      "\"error\":\"No such file or directory\"}";
  const std::string empty =
      "{\"schema\":1,\"path\":\"empty\",\"status\":\"unknown\",\"id\":1999,\"name\":\"empty\","
      "\"mime\":\"application/x-empty\",\"extensions\":[],\"extension_match\":null,\"basis\":null,"
      "\"size\":0,\"error\":null}";
  Check({
      {{"--json", "a.png"}, "", "[\n" + png + "\n]\n", 0},
      {{"--json", "none", "a.png"}, "", "[\n" + missing + ",\n" + png + "\n]\n", 1},
      {{"--json", "-f", "-"}, "", "[]\n", 0},
      {{"--jsonl", "a.png", "empty"}, "", png + "\n" + empty + "\n", 0},
      {{"--jsonl", "-f", "-"}, "", "", 0},
  });
}

TEST_F(Command, TakesNamesAsTheyAre) {
  const std::vector<std::string> names = {"[a,b]", "{}",   "[]",  "%%",         "-x", "--id",
                                          "-=",    "--x=", " b ", "\xFF\xFE\n", "-"};
  for (const std::string& name : names) Write(name, kGif);
  std::vector<std::string> arguments = {"-0", "--"};
  std::string expected;
  for (const std::string& name : names) {
    const std::string path = name == "-" ? "./-" : name;
    arguments.push_back(path);
    expected += path + '\0' + kGifName + "\n";
  }
  Check({
      {arguments, "", expected, 0},
      {{"\xFF\xFE\n"}, "", "\\xff\\xfe\\n: " + kGifName + "\n", 0},
      {{"[a,b]"}, "", "[a,b]: " + kGifName + "\n", 0},
      {{""}, "", ": ERROR: No such file or directory\n", 1},
      {{"-f", "-"}, "-\n--id\n", "-: " + kGifName + "\n--id: " + kGifName + "\n", 0},
  });
}

TEST_F(Command, ReportsWhatCannotBeRead) {
  ASSERT_EQ(::mkfifo(PathOf("fifo").c_str(), 0600), 0);
  const int socket = ::socket(AF_UNIX, SOCK_STREAM, 0);
  sockaddr_un address = {AF_UNIX, ""};
  PathOf("socket").copy(address.sun_path, sizeof(address.sun_path) - 1);
  const auto* generic = reinterpret_cast<const sockaddr*>(&address);
  ASSERT_EQ(::bind(socket, generic, sizeof(address)), 0);
  Write("locked", kPng);
  ASSERT_EQ(::chmod(PathOf("locked").c_str(), 0), 0);
  std::filesystem::create_directory(PathOf("folder"));
  Check({
      {{"fifo"}, "", "fifo: ERROR: is a fifo\n", 1},
      {{"socket"}, "", "socket: ERROR: is a socket\n", 1},
      {{"/dev/zero"}, "", "/dev/zero: ERROR: is a character device\n", 1},
      {{"folder"}, "", "folder: ERROR: is a directory (use -r)\n", 1},
      {{"locked"}, "", "locked: ERROR: Permission denied\n", 1},
      {{"none", "a.png"},
       "",
       "none: ERROR: No such file or directory\na.png: " + kPngName + "\n",
       1},
      {{"-b", "none"}, "", "ERROR: No such file or directory\n", 1},
      {{"a.png/x"}, "", "a.png/x: ERROR: Not a directory\n", 1},
      // A regular file whose first page cannot be read.
      {{"/proc/self/mem"}, "", "/proc/self/mem: ERROR: Input/output error\n", 1},
  });
  ::close(socket);
}

TEST_F(Command, WalksFoldersInOrder) {
  Write("tree/b/1", kGif);
  Write("tree/b/0", kPdf);
  Write("tree/B", kPng);
  Write("tree/b.c", "");
  Write("tree/locked/inside", kGif);
  Write("other/x", kGif);
  ASSERT_EQ(::mkfifo(PathOf("tree/fifo").c_str(), 0600), 0);
  ASSERT_EQ(::chmod(PathOf("tree/locked").c_str(), 0), 0);
  std::filesystem::create_symlink("..", PathOf("tree/b/up"));
  std::filesystem::create_symlink("../other", PathOf("tree/z"));
  std::filesystem::create_symlink("../a.png", PathOf("tree/y"));
  std::filesystem::create_symlink("nowhere", PathOf("tree/x"));
  std::filesystem::create_symlink("other", PathOf("link"));
  const std::string upper = "tree/B: " + kPngName + "\n";
  const std::string inside = "tree/b/0: " + kPdfName + "\ntree/b/1: " + kGifName + "\n";
  const std::string rest = "tree/b.c: empty\ntree/locked: ERROR: Permission denied\n";
  Check({
      {{"-r", "tree", "a.png"}, "", upper + inside + rest + "a.png: " + kPngName + "\n", 1},
      {{"-rL", "tree"},
       "",
       upper + inside + "tree/b/up: ERROR: is a directory that contains itself\n" + rest +
           "tree/x: ERROR: No such file or directory\ntree/y: " + kPngName +
           "\ntree/z/x: " + kGifName + "\n",
       1},
      {{"-r", "tree/b/"}, "", inside, 0},
      {{"-r", "link"}, "", "link/x: " + kGifName + "\n", 0},
      {{"-rh", "link", "other"},
       "",
       "link: ERROR: is a symbolic link (not followed)\nother/x: " + kGifName + "\n",
       1},
      {{"-r", "-f", "-"}, "other\n", "other/x: " + kGifName + "\n", 0},
  });
  // What was known of the file before must not show in the fault after it.
  const Outcome outcome = Run({"--jsonl", "-rL", "tree"});
  EXPECT_NE(outcome.output.find("tree/b/up\",\"status\":\"error\",\"id\":null,\"name\":null,"
                                "\"mime\":null,\"extensions\":[],\"extension_match\":null,"
                                "\"basis\":null,\"size\":null"),
            std::string::npos);
  ASSERT_EQ(::chmod(PathOf("tree/locked").c_str(), 0700), 0);
}

TEST_F(Command, ReadsLists) {
  Write("list", "a.png\n\nnone\nb.txt");
  const std::string answers = "a.png: " + kPngName + "\nnone: ERROR: No such file or directory\n" +
                              "b.txt: " + kGifName + "\n";
  const std::string zeros("a.png\0none\0b.txt\0", 17);
  const std::string tooLong(20'000, 'x');
  Check({
      {{"-f", "list"}, "", answers, 1},
      {{"empty", "--files-from", "-"}, "a.png", "empty: empty\na.png: " + kPngName + "\n", 0},
      {{"--files0-from", "-"}, zeros, answers, 1},
      {{"-f", "-", "-b"},
       tooLong + "\na.png\n",
       "ERROR: File name too long\n" + kPngName + "\n",
       1},
      {{"-f", "-"},
       std::string("a.png\0x\n", 8),
       "a.png\\x00x: ERROR: the name holds a NUL byte\n",
       1},
      {{"-f", "absent", "a.png"}, "", "", 2},
  });
  const Outcome folder = Run({"--json", "-f", "."});
  EXPECT_EQ(folder.output, "[]\n");
  EXPECT_EQ(folder.errors, "formatid: .: Is a directory\n");
  EXPECT_EQ(folder.exitCode, 2);
}

TEST_F(Command, ReadsStandardInput) {
  const size_t beyondMemory = (size_t{16} << 20) + 70'000;
  std::string large = kPdf + std::string(beyondMemory, '\n');
  Check({
      {{"-"}, kPng, "-: " + kPngName + "\n", 0},
      {{"-", "empty"}, "", "-: empty\nempty: empty\n", 0},
      {{"-b", "--id", "--stdin-name", "x.hpgl", "-"}, "\x01\x02\x03", "1522\n", 0},
      {{"--stdin-name", "x\n", "-"}, kGif, "x\\n: " + kGifName + "\n", 0},
      {{"-", "-"}, "", "", 2},
      {{"-", "-f", "-"}, "", "", 2},
      {{"--stdin-name", "x", "a.png"}, "", "", 2},
  });
  const Outcome spooled = Run({"--jsonl", "-"}, large);
  EXPECT_NE(spooled.output.find("\"id\":1557,"), std::string::npos) << spooled.output;
  EXPECT_NE(spooled.output.find("\"size\":" + std::to_string(large.size()) + ","),
            std::string::npos);

  const auto fromFile = [this](off_t offset) {
    return [this, offset] {
      const int file = ::open(PathOf("a.png").c_str(), O_RDONLY);
      (void)::lseek(file, offset, SEEK_SET);
      ::dup2(file, STDIN_FILENO);
    };
  };
  EXPECT_EQ(Run({"--id", "-"}, "", fromFile(0)).output, "-: 1574\n");
  EXPECT_EQ(Run({"--id", "-"}, "", fromFile(29)).output, "-: 1999\n");
  EXPECT_EQ(Run({"-"}, "", [] { ::close(STDIN_FILENO); }).output,
            "-: ERROR: Bad file descriptor\n");
}

TEST_F(Command, EndsWithTheOutput) {
  std::string list;
  for (int i = 0; i < 20'000; ++i) list += "empty\n";
  const Outcome closed = Run({"-f", "-"}, list, [] {
    int ends[2];
    if (::pipe(ends) != 0) ::_exit(125);
    ::dup2(ends[1], STDOUT_FILENO);
    ::close(ends[0]);
    ::close(ends[1]);
  });
  EXPECT_EQ(closed.errors, "");
  EXPECT_EQ(closed.exitCode, 0);

  const Outcome full =
      Run({"a.png"}, "", [] { ::dup2(::open("/dev/full", O_WRONLY), STDOUT_FILENO); });
  EXPECT_EQ(full.errors, "formatid: standard output: No space left on device\n");
  EXPECT_EQ(full.exitCode, 2);
  EXPECT_EQ(Run({"a.png"}, "", [] { ::close(STDOUT_FILENO); }).exitCode, 2);
  // The list must not take the place of the closed standard input.
  Write("list", "a.png\n");
  EXPECT_EQ(Run({"-", "-b", "-f", "list"}, "", [] { ::close(STDIN_FILENO); }).output,
            "ERROR: Bad file descriptor\n" + kPngName + "\n");
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

TEST_F(Command, ShowsProgressWhenAsked) {
  const Outcome shown = Run({"--progress", "a.png", "empty", "none"});
  EXPECT_TRUE(shown.errors.ends_with("files: 3\n")) << shown.errors;
  EXPECT_EQ(shown.exitCode, 1);
  EXPECT_EQ(Run({"-q", "a.png", "empty"}).errors, "");
}

TEST_F(Command, RefusesWrongUsage) {
  const std::vector<std::vector<std::string>> wrong = {
      {},
      {"-r"},
      {"--unknown", "a.png"},
      {"-b", "--json", "a.png"},
      {"-i", "--id", "a.png"},
      {"-0", "-F", "x", "a.png"},
      {"-L", "-h", "a.png"},
      {"-q", "--progress", "a.png"},
      {"--csv", "a.png"},
      {"--files-from", ""},
      {"-f"},
      {"--list-formats", "a.png"},
      {"--list-formats", "-r"},
      {"--describe", "png"},
      {"--describe", "70000"},
      {"--describe", "1"},
  };
  for (const std::vector<std::string>& arguments : wrong) {
    const Outcome outcome = Run(arguments);
    EXPECT_EQ(outcome.exitCode, 2) << testing::PrintToString(arguments);
    EXPECT_EQ(outcome.output, "");
    EXPECT_NE(outcome.errors, "");
  }
  EXPECT_NE(Run({"--\x1b[3"}).errors.find("--\\x1b[3"), std::string::npos);
}

TEST_F(Command, TellsAboutItselfAndTheFormats) {
  Check({
      {{"--describe", "1503"},
       "",
       "id:         1503\nname:       " + kGifName +
           "\ncategory:   graphics\nmime:       image/gif\nextensions: gif\n"
           "puids:      fmt/3,fmt/4\n",
       0},
      {{"--describe", "1503", "--json"},
       "",
       "{\"id\":1503,\"name\":\"" + kGifName +
           "\",\"category\":\"graphics\",\"mime\":\"image/gif\",\"extensions\":[\"gif\"],"
           "\"puids\":[\"fmt/3\",\"fmt/4\"]}\n",
       0},
  });
  EXPECT_TRUE(Run({"--version"}).output.starts_with("formatid "));
  EXPECT_EQ(Run({"--list-formats"}).output.find("\n1503\t" + kGifName + "\timage/gif\tgif\n") ==
                std::string::npos,
            false);

  const std::string csv = Run({"--list-formats", "--csv"}).output;
  EXPECT_TRUE(csv.starts_with("id,name,category,mime,extensions,puids\r\n"));
  EXPECT_NE(csv.find("\r\n1503," + kGifName + ",graphics,image/gif,gif,\"fmt/3,fmt/4\"\r\n"),
            std::string::npos);
  const std::string json = Run({"--list-formats", "--json"}).output;
  EXPECT_TRUE(json.starts_with("[\n{\"id\":")) << json.substr(0, 40);
  EXPECT_TRUE(json.ends_with("]}\n]\n"));
  const auto lines = [](const std::string& text) {
    return std::count(text.begin(), text.end(), '\n');
  };
  EXPECT_EQ(lines(json), lines(csv) + 1);  // two brackets against one head
}

// Every option that the help names is one that the command takes.
TEST_F(Command, HelpNamesOptionsThatExist) {
  const std::string help = Run({"--help"}).output;
  size_t options = 0;
  for (size_t at = help.find(" --"); at != std::string::npos; at = help.find(" --", at + 1)) {
    const size_t end = help.find_first_not_of("abcdefghijklmnopqrstuvwxyz0-", at + 1);
    const std::string option = help.substr(at + 1, end - at - 1);
    if (option == "--") continue;
    ++options;
    const std::string errors = Run({option}).errors;
    EXPECT_EQ(errors.find("not expected"), std::string::npos) << option << ": " << errors;
  }
  EXPECT_GE(options, 24u);
}

}  // namespace
}  // namespace fi::cli
