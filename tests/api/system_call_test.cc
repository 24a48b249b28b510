// How many system calls one identification of a file may make: 8 when a signature names it, 16 when
// it falls through everything. Counted by tracing a child process between two marking calls.

#include <gtest/gtest.h>
#include <sys/ptrace.h>
#include <sys/syscall.h>
#include <sys/user.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include "formatid/formatid.h"

namespace {

constexpr int kFailed = -1;

// A call that nothing else makes here.
void Mark() { ::getpgid(0); }

// The child's work, from where it lets itself be traced. Never returns.
[[noreturn]] void IdentifyTraced(const std::string& path, uint32_t flags) {
  if (::ptrace(PTRACE_TRACEME, 0, nullptr, nullptr) != 0) ::_exit(1);
  std::raise(SIGSTOP);
  FormatId id = 0;
  FIIdFile(kIoSourcePath, path.c_str(), flags, &id);  // what is set up once does not count
  Mark();
  FIIdFile(kIoSourcePath, path.c_str(), flags, &id);
  Mark();
  ::_exit(0);
}

// Waits for the child's next stop; false when it ended.
bool WaitForStop(pid_t child) {
  int status = 0;
  return ::waitpid(child, &status, 0) == child && WIFSTOPPED(status);
}

// The number of calls between the marks, or kFailed when the system allows no tracing.
int CountSystemCalls(const std::string& path, uint32_t flags) {
  const pid_t child = ::fork();
  if (child == 0) IdentifyTraced(path, flags);
  if (!WaitForStop(child)) return kFailed;
  ::ptrace(PTRACE_SETOPTIONS, child, nullptr, PTRACE_O_TRACESYSGOOD);
  int marks = 0;
  int stops = 0;  // one on entry to each call and one on return
  for (;;) {
    ::ptrace(PTRACE_SYSCALL, child, nullptr, nullptr);
    if (!WaitForStop(child)) return marks == 4 ? stops / 2 : kFailed;
    user_regs_struct registers{};
    ::ptrace(PTRACE_GETREGS, child, nullptr, &registers);
    if (registers.orig_rax == SYS_getpgid) {
      ++marks;
    } else if (marks == 2) {
      ++stops;
    }
  }
}

class SystemCallTest : public ::testing::Test {
 protected:
  void SetUp() override {
    std::string pattern = (std::filesystem::temp_directory_path() / "formatid-XXXXXX").string();
    const int descriptor = ::mkstemp(pattern.data());
    ASSERT_GE(descriptor, 0);
    ::close(descriptor);
    path_ = pattern;
  }
  void TearDown() override { std::filesystem::remove(path_); }

  std::string path_;
};

TEST_F(SystemCallTest, Budgets) {
  std::string text;
  while (text.size() < 1 << 20) text += "Only words, one after another, and a line end.\n";
  std::string binary;
  while (binary.size() < 1 << 20) binary += static_cast<char>(binary.size() * 7 + 1);
  struct Case {
    const char* name;
    std::string bytes;
    int most;
  };
  const Case cases[] = {
      {"named by a signature", "%PDF-1.4\n" + text, 8},
      {"binary that nothing names", binary, 16},
      {"a hundred lines of 1022 bytes", std::string(1 << 20, '\x01'), 36},
      {"text", text, 16},
      {"small text", "Only words.\n", 16},
  };
  for (const Case& test : cases) {
    std::ofstream(path_, std::ios::binary | std::ios::trunc) << test.bytes;
    const int calls = CountSystemCalls(path_, kFiTextFallback | kFiDelimitedText);
    if (calls == kFailed) GTEST_SKIP() << "this system allows no tracing";
    EXPECT_LE(calls, test.most) << test.name;
    EXPECT_GE(calls, 3) << test.name;  // to open, read and close; else the count is wrong
  }
}

}  // namespace
