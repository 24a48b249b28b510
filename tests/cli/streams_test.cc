// Lists that arrive in pieces, and records that leave whole.

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <string>
#include <thread>
#include <vector>

#include "run/input/path_list.h"
#include "run/output.h"

namespace fi::app {
namespace {

// In packet mode: the sizes of the pieces that are read are those of the writes.
struct Pipe {
  Pipe() { EXPECT_EQ(::pipe2(ends, O_DIRECT), 0); }
  ~Pipe() {
    ::close(ends[0]);
    CloseWriter();
  }
  void CloseWriter() {
    if (ends[1] >= 0) ::close(ends[1]);
    ends[1] = -1;
  }
  void Write(const std::string& bytes) const {
    EXPECT_EQ(::write(ends[1], bytes.data(), bytes.size()), static_cast<ssize_t>(bytes.size()));
  }
  std::string Read() const {
    std::string buffer(2 * PIPE_BUF, '\0');
    buffer.resize(
        static_cast<size_t>(std::max<ssize_t>(::read(ends[0], buffer.data(), buffer.size()), 0)));
    return buffer;
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
      {{"\n\n"}, '\n', {}},
      {{"a\nb"}, '\n', {"a", "b"}},
      {{"a", "b", "\n", "\n", "c d\n"}, '\n', {"ab", "c d"}},
      {{std::string("a\nb\0c\0", 6)}, '\0', {"a\nb", "c"}},
      {{longName, longName, "\nnext\n"}, '\n', {longName.substr(5), "next"}},
  };
  for (const auto& each : cases) {
    Pipe pipe;
    for (const std::string& piece : each.pieces) pipe.Write(piece);
    pipe.CloseWriter();
    PathList list(pipe.ends[0], each.terminator, [] { return true; });
    std::vector<std::string> found;
    std::string path;
    while (list.Next(path) == ListStep::kPath) found.push_back(path);
    EXPECT_EQ(found, each.expected);
  }
}

TEST(PathList, DeliversWhatArrivedAndTellsFaults) {
  Pipe pipe;
  PathList list(pipe.ends[0], '\n', [] { return true; });
  std::string path;
  pipe.Write("first\nsec");  // the writer stays open: waiting for more would hang
  EXPECT_EQ(list.Next(path), ListStep::kPath);
  EXPECT_EQ(path, "first");

  PathList broken(pipe.ends[1], '\n', [] { return true; });
  EXPECT_EQ(broken.Next(path), ListStep::kFault);
  EXPECT_EQ(errno, EBADF);
}

TEST(Output, WritesWholeRecordsToAPipe) {
  Pipe pipe;
  Output output(pipe.ends[1]);
  for (int i = 0; i < 200; ++i) ASSERT_TRUE(output.Write(std::string(99, 'r') + "\n"));
  ASSERT_TRUE(output.Flush());
  output.FlushEachRecord();
  ASSERT_TRUE(output.Write("now\n"));
  size_t total = 0;
  for (std::string piece; (piece = pipe.Read()) != "now\n"; total += piece.size()) {
    ASSERT_EQ(piece.size() % 100, 0u);
    ASSERT_LE(piece.size(), PIPE_BUF);
    ASSERT_NE(piece, "");
  }
  EXPECT_EQ(total, 200u * 100u);
}

TEST(Output, WaitsForASlowReaderOfANonBlockingPipe) {
  Pipe pipe;
  ASSERT_EQ(::fcntl(pipe.ends[1], F_SETFL, O_NONBLOCK), 0);
  const std::string record(300'000, 'r');  // more than a pipe holds, and more than the buffer
  std::string received;
  std::thread reader([&] {
    for (std::string piece; !(piece = pipe.Read()).empty();) received += piece;
  });
  Output output(pipe.ends[1]);
  for (const std::string& each : {std::string("a\n"), record, std::string("z\n")}) {
    EXPECT_TRUE(output.Write(each));
  }
  EXPECT_TRUE(output.Flush());
  pipe.CloseWriter();
  reader.join();
  EXPECT_EQ(received, "a\n" + record + "z\n");
}

}  // namespace
}  // namespace fi::app
