// Runs the built command as a user does.
#ifndef FI_TESTS_CLI_RUN_COMMAND_H_
#define FI_TESTS_CLI_RUN_COMMAND_H_

#include <gtest/gtest.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <string>
#include <thread>
#include <vector>

namespace fi::cli {

struct Outcome {
  int exitCode = -1;  // 1000 and the number of the signal that ended it, if one did
  std::string output;
  std::string errors;
};

// A folder of its own for each test, in which the command runs.
class CommandTest : public testing::Test {
 protected:
  void SetUp() override {
    char name[] = "/tmp/formatid-command-XXXXXX";
    ASSERT_NE(::mkdtemp(name), nullptr);
    folder_ = name;
  }
  void TearDown() override { std::filesystem::remove_all(folder_); }

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
    std::FILE* output = std::tmpfile();
    std::FILE* errors = std::tmpfile();
    int ends[2];
    EXPECT_EQ(::pipe(ends), 0);
    const pid_t child = ::fork();
    if (child == 0) {
      // Root reads everything; without these it is bound by the mode of a file as others are.
      (void)::prctl(PR_CAPBSET_DROP, 1, 0, 0, 0);  // CAP_DAC_OVERRIDE
      (void)::prctl(PR_CAPBSET_DROP, 2, 0, 0, 0);  // CAP_DAC_READ_SEARCH
      ::dup2(ends[0], STDIN_FILENO);
      ::dup2(::fileno(output), STDOUT_FILENO);
      ::dup2(::fileno(errors), STDERR_FILENO);
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
    std::thread writer([&] { Feed(ends[1], input); });
    int status = 0;
    ::waitpid(child, &status, 0);
    writer.join();
    return {WIFEXITED(status) ? WEXITSTATUS(status) : 1000 + WTERMSIG(status), Content(output),
            Content(errors)};
  }

 private:
  // The command need not read what it is given.
  static void Feed(int descriptor, const std::string& input) {
    std::signal(SIGPIPE, SIG_IGN);
    for (size_t done = 0; done < input.size();) {
      const ssize_t count = ::write(descriptor, input.data() + done, input.size() - done);
      if (count <= 0) break;
      done += static_cast<size_t>(count);
    }
    ::close(descriptor);
  }

  static std::string Content(std::FILE* file) {
    std::string content;
    std::rewind(file);
    char buffer[4096];
    for (size_t count = 0; (count = std::fread(buffer, 1, sizeof(buffer), file)) > 0;) {
      content.append(buffer, count);
    }
    std::fclose(file);
    return content;
  }

  std::string folder_;
};

}  // namespace fi::cli

#endif  // FI_TESTS_CLI_RUN_COMMAND_H_
