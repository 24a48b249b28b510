// Identifications on several threads, with their results in the order of the input.
#ifndef FI_RUN_PIPELINE_H_
#define FI_RUN_PIPELINE_H_

#include <atomic>
#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <mutex>
#include <thread>
#include <vector>

#include "run/job.h"

namespace fi::app {

// A ring of blocks of jobs. The caller's thread fills them and takes them back when they are done;
// the workers take single jobs, the oldest first. However slow one job is, no more than the ring
// holds is ahead of it, so memory is bounded.
//
// Jobs that fit into one block are done by the caller's thread, and no other is started.
class Pipeline {
 public:
  static constexpr size_t kBlockJobs = 64;
  // A block with longer paths than this ends before it holds kBlockJobs.
  static constexpr size_t kBlockBytes = size_t{64} << 10;

  struct Settings {
    unsigned threads = 0;      // 0: one for each processor that the process may use
    bool isUnordered = false;  // blocks come back as they are done
  };

  // What a pipeline calls. Only `work` is called by the workers, by several at once.
  struct Calls {
    std::function<void(Job&)> work;
    // Takes a job back. False: nothing more is wanted.
    std::function<bool(Job&)> deliver;
    // Called while the caller's thread waits, several times a second. False: stop.
    std::function<bool()> tick;
  };

  Pipeline(const Settings& settings, Calls calls);
  Pipeline(const Pipeline&) = delete;
  Pipeline& operator=(const Pipeline&) = delete;
  ~Pipeline();

  // The job to be filled next; its texts hold what an earlier one left.
  Job& Next();

  // The job of Next is filled. May do jobs, wait for some and deliver some. False: stop.
  bool Commit();

  // Does and delivers all that was committed. False: stop.
  bool Drain();

  // Delivers what is done, in order and without waiting, and gives the rest up.
  void Abandon();

 private:
  struct Block {
    std::vector<Job> jobs;  // grows while the block is filled for the first time
    size_t count = 0;
    size_t bytes = 0;
    // Sequence number of the block, number of jobs and number of those taken, in 32, 16 and 16
    // bits: a single word, so that a late worker cannot take a job of the block's next use.
    std::atomic<uint64_t> claim{0};
    std::atomic<size_t> done{0};
    bool isBusy = false;  // between its publication and its delivery; for the caller's thread
  };

  bool IsThreaded() const { return !workers_.empty(); }
  bool StartWorkers();
  void Work();
  Job* Take(Block& block, uint32_t sequence);
  void FinishJob(Block& block);
  bool Publish();
  bool RunHere();
  bool DeliverBlock(Block& block);
  bool DeliverDone();
  bool WaitForOne();
  bool IsDone(const Block& block) const;
  bool HasDelivery() const;
  Block& At(uint32_t sequence) { return blocks_[sequence % blocks_.size()]; }
  void Stop();

  Settings settings_;
  Calls calls_;
  std::deque<Block> blocks_;  // one until the workers start
  std::vector<std::thread> workers_;
  uint32_t head_ = 0;       // sequence number of the block that is being filled
  uint32_t tail_ = 0;       // of the oldest block that may not be delivered
  bool isStopped_ = false;  // by deliver or tick

  std::mutex mutex_;
  std::condition_variable published_;
  std::condition_variable finished_;
  std::atomic<uint32_t> publishedHead_{0};
  std::atomic<bool> isEnding_{false};
};

}  // namespace fi::app

#endif  // FI_RUN_PIPELINE_H_
