#include "platform/work.h"

#include <ctime>

#include "toolkit/io/positioned_handle.h"

namespace fi {
namespace {

uint64_t Now() {
  timespec now{};
  ::clock_gettime(CLOCK_MONOTONIC, &now);
  return static_cast<uint64_t>(now.tv_sec) * 1'000'000'000 + static_cast<uint64_t>(now.tv_nsec);
}

}  // namespace

bool Work::LookAround() {
  if (cancel != nullptr && cancel(cancelContext)) {
    Stop(WorkLimit::kCancelled);
  } else if (limits.deadline != 0 && Now() >= limits.deadline) {
    Stop(WorkLimit::kDeadline);
  }
  return !stopped;
}

Work* WorkOf(const IOHandle* handle) noexcept {
  const io::PositionedHandle* const own = io::PositionedHandle::Of(handle);
  return own == nullptr ? nullptr : own->work();
}

}  // namespace fi
