// The record of one identification: its limits, its costs so far, and its failures. Handles of the
// toolkit refer to such a record, and so do the handles opened inside of them. Without a record
// only the limits for memory safety hold.
//
// When a limit is spent, the job is cancelled or its time is over, work stops: reads give no more
// data, so that every loop that a file controls ends by itself.
//
// A record belongs to one identification and one thread.
#ifndef FI_PLATFORM_WORK_H_
#define FI_PLATFORM_WORK_H_

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <limits>

#include "formatid/io.h"
#include "platform/limits.h"

namespace fi {

struct Trace;  // what is told of the steps of an identification

enum class WorkLimit : uint8_t {
  kNone,
  kBytesRead,
  kReads,
  kBytesInflated,
  kSteps,
  kMemory,
  kKeyRounds,
  kDepth,
  kDeadline,
  kCancelled,
};

// Each 64-bit count may be kNoWorkLimit. What they count: platform/limits.h.
inline constexpr uint64_t kNoWorkLimit = std::numeric_limits<uint64_t>::max();

struct WorkLimits {
  uint64_t bytesRead = kDefaultBytesRead;
  uint64_t reads = kDefaultReads;
  uint64_t bytesInflated = kDefaultBytesInflated;
  uint64_t steps = kDefaultSteps;
  uint64_t memory = kDefaultMemory;
  uint64_t keyRounds = kDefaultKeyRounds;
  uint64_t depth = kDefaultDepth;
  uint64_t deadline = 0;  // nanoseconds of CLOCK_MONOTONIC; 0: none
};

// As WorkLimits; memory and depth are the most at once.
struct WorkSpent {
  uint64_t bytesRead = 0;
  uint64_t reads = 0;
  uint64_t bytesInflated = 0;
  uint64_t steps = 0;
  uint64_t memory = 0;
  uint64_t keyRounds = 0;
  uint64_t depth = 0;
};

// Asked now and then whether the identification is to stop. It does not throw.
using CancelFunction = bool (*)(void* context);

// Bytes of the source that were asked for and that the caller does not have, where the source is
// only a beginning.
struct WantedRange {
  uint64_t offset = 0;
  uint64_t size = 0;  // bytes; 0: none
};

struct Work {
  Work() = default;
  explicit Work(const WorkLimits& allowed) : limits(allowed) {}

  WorkLimits limits;
  CancelFunction cancel = nullptr;
  void* cancelContext = nullptr;
  Trace* trace = nullptr;  // borrowed; null: nothing is told

  WorkSpent spent;
  WorkLimit limit = WorkLimit::kNone;  // the first that was reached
  bool stopped = false;                // reads give no more data
  bool noMemory = false;               // an allocation failed
  // errno of the first read that failed; ELIBACC for a shared object that could not be loaded.
  int32_t readError = 0;
  WantedRange wanted;          // the first range that was missing
  bool isSizeMissing = false;  // the source's end was asked for, and is not known

  // Notes that a limit was reached, and stops the work.
  void Stop(WorkLimit reached) {
    Reach(reached);
    stopped = true;
  }

  // Notes that a limit was reached by something that is left out; the rest goes on.
  void Reach(WorkLimit reached) {
    if (limit == WorkLimit::kNone) limit = reached;
  }

  void NoteReadError(int32_t error) {
    if (readError == 0) readError = error;
  }

  void NoteMissing(uint64_t offset, uint64_t size) {
    if (wanted.size == 0 && !isSizeMissing) wanted = {offset, size};
  }

  void NoteSizeMissing() {
    if (wanted.size == 0) isSizeMissing = true;
  }

  // Begins a read of `size` bytes of the source. Returns how many of them may be read; 0: none,
  // since work has stopped.
  uint32_t BeginRead(uint32_t size) {
    if (stopped || !Look()) return 0;
    if (spent.reads >= limits.reads) return Stop(WorkLimit::kReads), 0;
    const uint64_t left = limits.bytesRead - std::min(limits.bytesRead, spent.bytesRead);
    if (left == 0) return Stop(WorkLimit::kBytesRead), 0;
    ++spent.reads;
    return static_cast<uint32_t>(std::min<uint64_t>(size, left));
  }

  void EndRead(uint32_t count) { spent.bytesRead += count; }

  // A step inside the file. False when work has stopped.
  bool SpendStep() {
    if (stopped || !Look()) return false;
    if (spent.steps >= limits.steps) return Stop(WorkLimit::kSteps), false;
    ++spent.steps;
    return true;
  }

  // How many bytes may still be inflated; 0, and work stops, when there are none left.
  uint64_t Inflatable() {
    if (stopped) return 0;
    const uint64_t left =
        limits.bytesInflated - std::min(limits.bytesInflated, spent.bytesInflated);
    if (left == 0) Stop(WorkLimit::kBytesInflated);
    return left;
  }

  void SpendInflated(uint64_t packed, uint64_t bytes) {
    constexpr uint64_t kPackedCost = 16;
    spent.bytesInflated += std::max(bytes, packed > bytes ? packed * kPackedCost : 0);
  }

  // Whether that many bytes may be held; then they count until they are released.
  bool HoldMemory(uint64_t size) {
    if (size > limits.memory - std::min(limits.memory, held_)) {
      return Reach(WorkLimit::kMemory), false;
    }
    held_ += size;
    spent.memory = std::max(spent.memory, held_);
    return true;
  }

  void ReleaseMemory(uint64_t size) { held_ -= std::min(held_, size); }

  // Whether a key may be derived by that many rounds.
  bool SpendKeyRounds(uint64_t rounds) {
    if (rounds > limits.keyRounds - std::min(limits.keyRounds, spent.keyRounds)) {
      return Reach(WorkLimit::kKeyRounds), false;
    }
    spent.keyRounds += rounds;
    return true;
  }

  // Whether a container may be opened with that many around it.
  bool EnterDepth(uint64_t depth) {
    if (depth >= limits.depth) return Reach(WorkLimit::kDepth), false;
    spent.depth = std::max(spent.depth, depth + 1);
    return true;
  }

 private:
  // Spends between two looks at the clock and at the caller.
  static constexpr uint32_t kLookEach = 64;

  // False when the work is to stop.
  bool Look() {
    if (untilLook_ > 0) return --untilLook_, true;
    untilLook_ = kLookEach;
    return LookAround();
  }

  bool LookAround();

  uint32_t untilLook_ = 0;  // so that the first spending looks
  uint64_t held_ = 0;
};

// The record of the identification that `handle` belongs to; null for a handle that belongs to none
// or is not the toolkit's.
Work* WorkOf(const IOHandle* handle) noexcept;

// IOOpen for an identification. REQUIRES: `work` outlives the handle and all handles opened inside
// it.
int32_t OpenSource(IOHandle** handle, uint32_t sourceType, const void* source, Work* work) noexcept;

// Returns `pointer`, the result of an allocation. If null, the record notes that memory ran out.
template <class Pointer>
Pointer Allocated(Work* work, Pointer pointer) {
  if (pointer == nullptr && work != nullptr) work->noMemory = true;
  return pointer;
}

// The same for what a shared object holds; a null pointer is noted as one that could not be read.
template <class Pointer>
Pointer Loaded(Work* work, Pointer pointer) {
  if (pointer == nullptr && work != nullptr) work->NoteReadError(ELIBACC);
  return pointer;
}

// As Allocated, for a caller who has no more than a handle.
inline void NoteNoMemory(const IOHandle* handle) {
  if (Work* const work = WorkOf(handle); work != nullptr) work->noMemory = true;
}

// Memory of one owner, counted in the record of an identification; without a record, not counted.
class HeldMemory {
 public:
  explicit HeldMemory(Work* work) : work_(work) {}
  ~HeldMemory() { Release(); }
  HeldMemory(const HeldMemory&) = delete;
  HeldMemory& operator=(const HeldMemory&) = delete;

  // Whether `size` bytes more may be held.
  bool Hold(uint64_t size) {
    if (work_ == nullptr) return true;
    if (!work_->HoldMemory(size)) return false;
    size_ += size;
    return true;
  }

  // Whether `size` bytes may be held in all.
  bool HoldAll(uint64_t size) { return size <= size_ || Hold(size - size_); }

  void Release() {
    if (work_ != nullptr) work_->ReleaseMemory(size_);
    size_ = 0;
  }

 private:
  Work* const work_;
  uint64_t size_ = 0;
};

}  // namespace fi

#endif  // FI_PLATFORM_WORK_H_
