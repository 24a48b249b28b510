// Walking folders: the order of names beyond memory, and links that appear at the wrong moment.

#include "run/identify.h"
#include "run/input/file_walk.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <filesystem>
#include <fstream>
#include <thread>

#include "formatid/formatid.h"

namespace fi::app {
namespace {

namespace fs = std::filesystem;

class Walk : public ::testing::Test {
 protected:
  void SetUp() override {
    char name[] = "/tmp/formatid-walk-XXXXXX";
    ASSERT_NE(::mkdtemp(name), nullptr);
    base_ = name;
  }
  void TearDown() override { fs::remove_all(base_); }

  void Write(const std::string& name, const std::string& bytes) const {
    fs::create_directories(fs::path(base_ + "/" + name).parent_path());
    std::ofstream(base_ + "/" + name, std::ios::binary) << bytes;
  }

  // Paths below the root, divided by blanks; faults in brackets.
  std::string Walked(const WalkOptions& options) const {
    std::string all;
    FileWalk walk(base_, options);
    while (walk.Next()) {
      if (!all.empty()) all += ' ';
      all += walk.path().substr(std::min(base_.size() + 1, walk.path().size()));
      if (!walk.fault().empty()) all += '[' + walk.fault() + ']';
    }
    return all;
  }

  std::string base_;
};

TEST(SortedNames, AreInOrderWhateverTheMemory) {
  std::vector<std::string> names;
  for (unsigned i = 0; i < 3000; ++i) {
    const unsigned mixed = i * 2654435761u;
    names.push_back(std::string(1 + mixed % 300, static_cast<char>(1 + mixed / 1000 % 255)) +
                    std::to_string(i));
  }
  std::vector<std::string> expected = names;
  std::sort(expected.begin(), expected.end());
  for (const size_t limit : {size_t{1}, size_t{1000}, size_t{50'000}, size_t{10} << 20}) {
    SortedNames sorted(limit);
    for (const std::string& name : names) {
      ASSERT_TRUE(sorted.Add(name.size() % 2 == 0 ? 'e' : 'o', name.c_str()));
    }
    ASSERT_TRUE(sorted.Finish());
    std::vector<std::string> found;
    char kind = 0;
    while (const char* name = sorted.Next(kind)) {
      found.emplace_back(name);
      ASSERT_EQ(kind, found.back().size() % 2 == 0 ? 'e' : 'o');
    }
    EXPECT_EQ(found, expected) << limit;
    EXPECT_EQ(sorted.error(), 0);
  }
}

TEST_F(Walk, PassesOverWhatIsNotWanted) {
  for (const char* name : {"a.c", "a.h", "sub/b.c", "sub/deep/c.c", "skip/d.c", "sub/skip/e.c"}) {
    Write(name, "");
  }
  const struct {
    std::vector<std::string> include, exclude;
    const char* expected;
  } cases[] = {
      {{}, {}, "a.c a.h skip/d.c sub/b.c sub/deep/c.c sub/skip/e.c"},
      {{"*.h"}, {}, "a.h"},
      {{"*.h", "b*"}, {}, "a.h sub/b.c"},
      {{"*.c"}, {"skip"}, "a.c sub/b.c sub/deep/c.c"},
      {{}, {"sub/*"}, "a.c a.h skip/d.c"},
      {{"sub/*.c"}, {}, "sub/b.c"},
      {{}, {"./*"}, "a.c a.h skip/d.c sub/b.c sub/deep/c.c sub/skip/e.c"},
  };
  for (const auto& each : cases) {
    WalkOptions options;
    options.include = each.include;
    options.exclude = each.exclude;
    EXPECT_EQ(Walked(options), each.expected);
  }
  WalkOptions options;
  options.isOneFileSystem = true;  // all of it is on one
  EXPECT_EQ(Walked(options), cases[0].expected);
}

TEST_F(Walk, OpensNoLinkBelow) {
  Write("sub/deep/file", "x");
  fs::create_directory_symlink("sub", base_ + "/way");
  fs::create_directory_symlink("deep", base_ + "/sub/way");
  fs::create_symlink("deep/file", base_ + "/sub/link");
  const int root = ::open(base_.c_str(), O_RDONLY | O_DIRECTORY);
  const struct {
    const char* path;
    bool opens;
  } cases[] = {{"sub/deep/file", true}, {"sub//deep/file", true}, {"way/deep/file", false},
               {"sub/way/file", false}, {"sub/link", false},      {"sub/none", false}};
  for (const auto& each : cases) {
    for (const auto open : {OpenBelow, OpenBelowByComponents}) {
      const int opened = open(root, each.path, 0);
      EXPECT_EQ(opened >= 0, each.opens) << each.path;
      if (opened >= 0) ::close(opened);
    }
  }
  ::close(root);
}

// A folder and a file take turns with links to the outside while the tree is walked again and
// again: what is outside is never named.
TEST_F(Walk, IsNotLedOutByLinksThatAppear) {
  Write("outside/secret", "%PDF-1.4\n%%EOF\n");
  Write("in/folder/secret", "some text\n");
  Write("in/secret", "some text\n");
  fs::create_directory_symlink(base_ + "/outside", base_ + "/folder-link");
  fs::create_symlink(base_ + "/outside/secret", base_ + "/file-link");
  std::atomic<bool> isOver{false};
  std::atomic<int> swaps{0};
  std::thread swapper([&] {
    const std::pair<std::string, std::string> pairs[] = {
        {base_ + "/in/folder", base_ + "/folder-link"},
        {base_ + "/in/secret", base_ + "/file-link"}};
    while (!isOver) {
      for (const auto& [inside, link] : pairs) {
        (void)::renameat2(AT_FDCWD, inside.c_str(), AT_FDCWD, link.c_str(), RENAME_EXCHANGE);
      }
      ++swaps;
    }
  });
  IdentifySettings settings;
  settings.flags = kFiTextFallback;
  int named = 0;
  int refused = 0;
  for (int round = 0; round < 100'000 && (named < 300 || refused < 20); ++round) {
    WalkOptions options;
    options.links = round % 2 == 0 ? LinkUse::kArguments : LinkUse::kNone;
    settings.links = options.links;
    const std::string root = base_ + "/in";
    FileWalk walk(root, options);
    while (walk.Next()) {
      if (!walk.fault().empty()) continue;
      Job job;
      job.kind = Job::Kind::kBelow;
      job.path = walk.path();
      job.directory = walk.directory();
      job.rootLength = walk.rootLength();
      Identify(job, settings);
      ASSERT_NE(job.answer.facts.id, 1557) << "the file outside was read as " << job.path;
      named += job.answer.status == AnswerStatus::kOk ? 1 : 0;
      refused += job.answer.status == AnswerStatus::kError ? 1 : 0;
    }
  }
  isOver = true;
  swapper.join();
  EXPECT_GE(named, 300);
  EXPECT_GE(refused, 20) << "after " << swaps << " swaps";  // the links did appear in between
}

}  // namespace
}  // namespace fi::app
