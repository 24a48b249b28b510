// Lists that arrive in pieces, and records that leave whole.

#include <fcntl.h>
#include <gtest/gtest.h>
#include <limits.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <string>
#include <thread>
#include <vector>

#include "cli/output.h"
#include "cli/path_list.h"

namespace fi::cli {
namespace {

struct Pipe {
  Pipe() { EXPECT_EQ(::pipe(ends), 0); }
  ~Pipe() {
    CloseReader();
    CloseWriter();
  }
  void CloseReader() { Close(ends[0]); }
  void CloseWriter() { Close(ends[1]); }
  static void Close(int& end) {
    if (end >= 0) ::close(end);
    end = -1;
  }
  void Write(const std::string& bytes) const {
    EXPECT_EQ(::write(ends[1], bytes.data(), bytes.size()), static_cast<ssize_t>(bytes.size()));
  }
  int ends[2] = {-1, -1};
};

TEST(PathList, SplitsWhateverThePieces) {
  const std::string longName(PathList::kLongestPath + 5, 'x');
  const struct {
    std::vector<std::string> pieces;
    char terminator;
    std::vector<std::string> expected;
  } cases[] = {
      {{}, '\n', {}},
      {{"\n\n"}, '\n', {}},
      {{"a\nb\n"}, '\n', {"a", "b"}},
      {{"a\nb"}, '\n', {"a", "b"}},
      {{"a", "b", "\n", "\n", "c d\n"}, '\n', {"ab", "c d"}},
      {{std::string("a\nb\0c\0", 6)}, '\0', {"a\nb", "c"}},
      {{std::string("a\0b\n", 4)}, '\n', {std::string("a\0b", 3)}},
      {{longName, longName, "\nnext\n"}, '\n', {longName.substr(5), "next"}},
  };
  for (const auto& each : cases) {
    Pipe pipe;
    std::thread writer([&] {
      for (const std::string& piece : each.pieces) pipe.Write(piece);
      pipe.CloseWriter();
    });
    PathList list(pipe.ends[0], each.terminator);
    std::vector<std::string> found;
    std::string path;
    while (list.Next(path) == ListStep::kPath) found.push_back(path);
    writer.join();
    EXPECT_EQ(found, each.expected);
  }
}

TEST(PathList, DeliversWhatArrivedAndTellsFaults) {
  Pipe pipe;
  PathList list(pipe.ends[0], '\n');
  std::string path;
  pipe.Write("first\nsec");  // the writer stays open: waiting for more would hang
  EXPECT_EQ(list.Next(path), ListStep::kPath);
  EXPECT_EQ(path, "first");

  PathList broken(pipe.ends[1], '\n');
  EXPECT_EQ(broken.Next(path), ListStep::kFault);
  EXPECT_EQ(errno, EBADF);
}

// The sizes of the pieces that a pipe in packet mode receives are those of the writes.
TEST(Output, WritesWholeRecordsToAPipe) {
  int ends[2];
  ASSERT_EQ(::pipe2(ends, O_DIRECT), 0);
  Output output(ends[1]);
  const std::string record(99, 'r');
  for (int i = 0; i < 200; ++i) ASSERT_TRUE(output.Write(record + "\n"));
  ASSERT_TRUE(output.Flush());
  ::close(ends[1]);
  std::string buffer(2 * PIPE_BUF, '\0');
  size_t total = 0;
  for (ssize_t count = 0; (count = ::read(ends[0], buffer.data(), buffer.size())) > 0;) {
    EXPECT_EQ(count % 100, 0);
    EXPECT_LE(count, PIPE_BUF);
    total += static_cast<size_t>(count);
  }
  EXPECT_EQ(total, 200u * 100u);
  ::close(ends[0]);
}

TEST(Output, WritesEachRecordAtOnceWhenAsked) {
  Pipe pipe;
  Output output(pipe.ends[1]);
  ASSERT_TRUE(output.Write("kept\n"));
  output.FlushEachRecord();
  ASSERT_TRUE(output.Write("now\n"));
  char buffer[100];
  const ssize_t count = ::read(pipe.ends[0], buffer, sizeof(buffer));
  EXPECT_EQ(std::string(buffer, static_cast<size_t>(count)), "kept\nnow\n");
}

TEST(Output, WaitsForASlowReaderOfANonBlockingPipe) {
  Pipe pipe;
  ASSERT_EQ(::fcntl(pipe.ends[1], F_SETFL, O_NONBLOCK), 0);
  const std::string record(300'000, 'r');  // more than a pipe holds, and more than the buffer
  std::string received;
  std::thread reader([&] {
    char buffer[5000];
    for (ssize_t count = 0; (count = ::read(pipe.ends[0], buffer, sizeof(buffer))) > 0;) {
      received.append(buffer, static_cast<size_t>(count));
    }
  });
  Output output(pipe.ends[1]);
  EXPECT_TRUE(output.Write("a\n"));
  EXPECT_TRUE(output.Write(record));
  EXPECT_TRUE(output.Write("z\n"));
  EXPECT_TRUE(output.Flush());
  pipe.CloseWriter();
  reader.join();
  EXPECT_EQ(received, "a\n" + record + "z\n");
}

}  // namespace
}  // namespace fi::cli
