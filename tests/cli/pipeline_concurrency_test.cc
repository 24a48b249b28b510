// Jobs on several threads come back in order, once each, within the ring.

#include <gtest/gtest.h>
#include <unistd.h>

#include <atomic>
#include <new>
#include <set>
#include <string>

#include "run/pipeline.h"

namespace fi::app {
namespace {

struct Trial {
  unsigned threads;
  bool isUnordered;
  size_t jobs;
  size_t longPaths;  // bytes added to each path
};

void RunTrial(const Trial& trial) {
  std::atomic<int64_t> ahead{0};  // added, not delivered
  std::atomic<int64_t> mostAhead{0};
  std::atomic<size_t> works{0};
  std::vector<std::string> delivered;
  const std::thread::id own = std::this_thread::get_id();
  std::atomic<bool> isElsewhere{false};
  const auto work = [&](Job& job) {
    ++works;
    if (std::this_thread::get_id() != own) isElsewhere = true;
    // One job in 97 is slow.
    if (job.number % 97 == 0) ::usleep(2000);
    job.record = job.path.substr(0, job.path.find('-')) + "!";
  };
  const auto deliver = [&](Job& job) {
    EXPECT_EQ(std::this_thread::get_id(), own);
    --ahead;
    delivered.push_back(job.record);
    return true;
  };
  {
    Pipeline pipeline({trial.threads, trial.isUnordered}, {work, deliver, [] { return true; }});
    for (size_t i = 0; i < trial.jobs; ++i) {
      Job& job = pipeline.Next();
      EXPECT_EQ(job.record, "");
      job.path = std::to_string(i) + "-" + std::string(trial.longPaths, 'x');
      job.number = i;
      mostAhead = std::max(mostAhead.load(), ++ahead);
      ASSERT_TRUE(pipeline.Commit());
      // A list that waits for its writer in the middle.
      if (i == trial.jobs / 2) {
        ASSERT_TRUE(pipeline.Drain());
        EXPECT_EQ(delivered.size(), i + 1);
      }
    }
    ASSERT_TRUE(pipeline.Drain());
  }
  EXPECT_EQ(works, trial.jobs);
  EXPECT_LE(mostAhead, int64_t{128 * 64});
  EXPECT_EQ(isElsewhere, trial.threads > 1 && trial.jobs > Pipeline::kBlockJobs);
  std::vector<std::string> expected;
  for (size_t i = 0; i < trial.jobs; ++i) expected.push_back(std::to_string(i) + "!");
  if (trial.isUnordered) {
    EXPECT_EQ(std::multiset<std::string>(delivered.begin(), delivered.end()),
              std::multiset<std::string>(expected.begin(), expected.end()));
  } else {
    EXPECT_EQ(delivered, expected);
  }
}

TEST(PipelineConcurrency, KeepsTheOrder) {
  for (const unsigned threads : {1u, 2u, 8u, 64u}) {
    for (const bool isUnordered : {false, true}) {
      for (const size_t jobs : {size_t{0}, size_t{1}, size_t{63}, size_t{5000}}) {
        SCOPED_TRACE(std::to_string(threads) + " " + std::to_string(jobs));
        RunTrial({threads, isUnordered, jobs, 0});
      }
      RunTrial({threads, isUnordered, 400, 4000});
    }
  }
}

// The end, whoever asks for it, comes at once, and no job is delivered after it.
TEST(PipelineConcurrency, StopsWhenItIsToldTo) {
  for (const unsigned threads : {1u, 8u}) {
    for (const bool byTick : {false, true}) {
      std::atomic<int> delivered{0};
      Pipeline pipeline({threads, false}, {[](Job& job) { job.record = "x"; },
                                           [&](Job&) { return ++delivered < 100 || byTick; },
                                           [&] { return delivered < 100 || !byTick; }});
      int added = 0;
      while (added < 100'000) {
        pipeline.Next().path = "p";
        ++added;
        if (!pipeline.Commit()) break;
      }
      EXPECT_LT(added, 100 + 64 * 64);
      EXPECT_FALSE(pipeline.Drain());
      const int before = delivered;
      pipeline.Abandon();
      if (!byTick) {
        EXPECT_EQ(before, 100);
      }
    }
  }
}

// A job that runs out of memory says so; the others do not notice.
TEST(PipelineConcurrency, TellsWhichJobRanOutOfMemory) {
  for (const unsigned threads : {1u, 8u}) {
    size_t count = 0;
    Pipeline pipeline({threads, false}, {[](Job& job) {
                                           if (job.number == 70) throw std::bad_alloc();
                                         },
                                         [&](Job& job) {
                                           EXPECT_EQ(job.isOutOfMemory, job.number == 70);
                                           ++count;
                                           return true;
                                         },
                                         [] { return true; }});
    for (uint64_t i = 0; i < 200; ++i) {
      pipeline.Next().number = i;
      ASSERT_TRUE(pipeline.Commit());
    }
    ASSERT_TRUE(pipeline.Drain());
    EXPECT_EQ(count, 200u);
  }
}

}  // namespace
}  // namespace fi::app
