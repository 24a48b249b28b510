#include "run/pipeline.h"

#include <sched.h>
#include <signal.h>

#include <algorithm>
#include <chrono>
#include <utility>

#include "run/input/within_memory.h"

namespace fi::app {
namespace {

constexpr std::chrono::milliseconds kTick{100};
constexpr unsigned kMostThreads = 256;

constexpr uint64_t Claim(uint32_t sequence, size_t count) {
  return uint64_t{sequence} << 32 | uint64_t{count} << 16;
}

// Enough blocks that one slow file does not starve the others at once.
size_t BlocksFor(unsigned threads) { return std::clamp<size_t>(size_t{4} * threads, 8, 128); }

unsigned Processors() {
  cpu_set_t set;
  CPU_ZERO(&set);
  if (::sched_getaffinity(0, sizeof(set), &set) != 0) return 1;
  return static_cast<unsigned>(std::max(CPU_COUNT(&set), 1));
}

}  // namespace

Pipeline::Pipeline(const Settings& settings, Calls calls)
    : settings_(settings), calls_(std::move(calls)), blocks_(1) {}

Pipeline::~Pipeline() { Stop(); }

void Pipeline::Stop() {
  {
    const std::lock_guard<std::mutex> lock(mutex_);
    isEnding_ = true;
  }
  published_.notify_all();
  for (std::thread& worker : workers_) worker.join();
  workers_.clear();
}

// Signals are for the caller's thread. Where the system grants fewer threads, those have to do.
bool Pipeline::StartWorkers() {
  if (settings_.threads == 0) settings_.threads = Processors();
  if (settings_.threads == 1) return false;
  sigset_t all;
  sigset_t before;
  ::sigfillset(&all);
  ::pthread_sigmask(SIG_SETMASK, &all, &before);
  const unsigned wanted = std::min(settings_.threads, kMostThreads);
  (void)WithinMemory([&] {
    while (blocks_.size() < BlocksFor(wanted)) blocks_.emplace_back();
    workers_.reserve(wanted);
    while (workers_.size() < wanted) workers_.emplace_back([this] { Work(); });
  });
  ::pthread_sigmask(SIG_SETMASK, &before, nullptr);
  if (workers_.empty()) settings_.threads = 1;
  return !workers_.empty();
}

Job* Pipeline::Take(Block& block, uint32_t sequence) {
  uint64_t claim = block.claim.load(std::memory_order_acquire);
  for (;;) {
    const size_t count = claim >> 16 & 0xFFFF;
    const size_t taken = claim & 0xFFFF;
    if (static_cast<uint32_t>(claim >> 32) != sequence || taken == count) return nullptr;
    if (block.claim.compare_exchange_weak(claim, claim + 1, std::memory_order_acq_rel)) {
      return &block.jobs[taken];
    }
  }
}

void Pipeline::FinishJob(Block& block) {
  const size_t count = block.count;
  if (block.done.fetch_add(1, std::memory_order_acq_rel) + 1 != count) return;
  // The lock keeps the call from falling between the look and the sleep of who waits.
  { const std::lock_guard<std::mutex> lock(mutex_); }
  finished_.notify_one();
}

void Pipeline::Work() {
  for (uint32_t sequence = 0;;) {
    if (isEnding_.load(std::memory_order_relaxed)) return;
    if (sequence == publishedHead_.load(std::memory_order_acquire)) {
      std::unique_lock<std::mutex> lock(mutex_);
      published_.wait(lock, [&] { return isEnding_ || publishedHead_ != sequence; });
      continue;
    }
    Block& block = At(sequence);
    Job* job = Take(block, sequence);
    if (job == nullptr) {
      ++sequence;
      continue;
    }
    job->isOutOfMemory = !WithinMemory([&] { calls_.work(*job); });
    FinishJob(block);
  }
}

Job& Pipeline::Next() {
  Block& block = At(head_);
  if (block.count == block.jobs.size()) block.jobs.emplace_back();
  Job& job = block.jobs[block.count];
  job.isSkipped = job.failsCheck = job.isOutOfMemory = false;
  job.record.clear();
  return job;
}

bool Pipeline::Commit() {
  Block& block = At(head_);
  block.bytes += block.jobs[block.count].path.size();
  ++block.count;
  if (block.count < kBlockJobs && block.bytes < kBlockBytes) return !isStopped_;
  if (!IsThreaded() && (settings_.threads == 1 || !StartWorkers())) return RunHere();
  return Publish();
}

bool Pipeline::RunHere() {
  Block& block = At(head_);
  for (size_t i = 0; i < block.count && !isStopped_; ++i) {
    Job& job = block.jobs[i];
    job.isOutOfMemory = !WithinMemory([&] { calls_.work(job); });
    isStopped_ = !calls_.deliver(job) || !calls_.tick();
  }
  block.count = 0;
  block.bytes = 0;
  return !isStopped_;
}

bool Pipeline::IsDone(const Block& block) const {
  return block.isBusy && block.done.load(std::memory_order_acquire) == block.count;
}

bool Pipeline::HasDelivery() const {
  if (!settings_.isUnordered) return IsDone(blocks_[tail_ % blocks_.size()]);
  return std::any_of(blocks_.begin(), blocks_.end(),
                     [this](const Block& block) { return IsDone(block); });
}

bool Pipeline::DeliverBlock(Block& block) {
  for (size_t i = 0; i < block.count && !isStopped_; ++i) {
    isStopped_ = !calls_.deliver(block.jobs[i]);
  }
  for (size_t i = 0; i < block.count; ++i) block.jobs[i].directory.reset();
  block.isBusy = false;
  block.count = 0;
  block.bytes = 0;
  return !isStopped_;
}

// Without waiting.
bool Pipeline::DeliverDone() {
  if (settings_.isUnordered) {
    for (Block& block : blocks_) {
      if (IsDone(block) && !DeliverBlock(block)) return false;
    }
    return true;
  }
  while (tail_ != head_ && IsDone(At(tail_))) {
    if (!DeliverBlock(At(tail_++))) return false;
  }
  return true;
}

bool Pipeline::WaitForOne() {
  while (!isStopped_) {
    {
      std::unique_lock<std::mutex> lock(mutex_);
      if (finished_.wait_for(lock, kTick, [this] { return HasDelivery(); })) break;
    }
    isStopped_ = !calls_.tick();
  }
  return !isStopped_ && DeliverDone();
}

// Hands the block that is being filled to the workers and finds the next one.
bool Pipeline::Publish() {
  Block& filled = At(head_);
  filled.isBusy = true;
  filled.done.store(0, std::memory_order_relaxed);
  filled.claim.store(Claim(head_, filled.count), std::memory_order_release);
  ++head_;
  {
    const std::lock_guard<std::mutex> lock(mutex_);
    publishedHead_ = head_;
  }
  published_.notify_all();
  isStopped_ = isStopped_ || !calls_.tick();
  if (isStopped_ || !DeliverDone()) return false;
  for (;;) {
    if (!At(head_).isBusy) return true;
    // Without an order the number of a block that is still at work is passed over.
    const bool hasFree = std::any_of(blocks_.begin(), blocks_.end(),
                                     [](const Block& block) { return !block.isBusy; });
    if (settings_.isUnordered && hasFree) {
      ++head_;
    } else if (!WaitForOne()) {
      return false;
    }
  }
}

bool Pipeline::Drain() {
  if (isStopped_) return false;
  if (!IsThreaded()) return RunHere();
  if (At(head_).count > 0 && !Publish()) return false;
  const auto isBusy = [this] {
    return std::any_of(blocks_.begin(), blocks_.end(),
                       [](const Block& block) { return block.isBusy; });
  };
  while (isBusy()) {
    if (!WaitForOne()) return false;
  }
  return true;
}

void Pipeline::Abandon() {
  isEnding_ = true;
  isStopped_ = false;
  if (IsThreaded()) (void)DeliverDone();
  isStopped_ = true;
}

}  // namespace fi::app
