#include "run/input/count_ahead.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/stat.h>
#include <unistd.h>

#include "run/input/path_list.h"
#include "run/input/within_memory.h"

namespace fi::app {

CountAhead::CountAhead(const Inputs& inputs) : inputs_(inputs) {
  sigset_t all;
  sigset_t before;
  ::sigfillset(&all);
  ::pthread_sigmask(SIG_SETMASK, &all, &before);
  (void)WithinMemory([&] { thread_ = std::thread([this] { Count(); }); });
  ::pthread_sigmask(SIG_SETMASK, &before, nullptr);
}

CountAhead::~CountAhead() {
  isEnding_ = true;
  if (thread_.joinable()) thread_.join();
}

bool CountAhead::IsKnown(Amount& total) const {
  if (!isDone_.load(std::memory_order_acquire)) return false;
  total = {files_.load(std::memory_order_relaxed), bytes_.load(std::memory_order_relaxed)};
  return true;
}

void CountAhead::Add(int64_t size) {
  files_.fetch_add(1, std::memory_order_relaxed);
  bytes_.fetch_add(static_cast<uint64_t>(size), std::memory_order_relaxed);
}

void CountAhead::CountDirectory(const std::string& path) {
  FileWalk walk(path, *inputs_.walk);
  while (!isEnding_ && walk.Next()) {
    struct stat status;
    const SharedDirectory& directory = walk.directory();
    const bool isBelow = directory != nullptr && walk.fault().empty();
    const int result = isBelow
                           ? ::fstatat(directory->get(), walk.path().c_str() + walk.rootLength(),
                                       &status, AT_SYMLINK_NOFOLLOW)
                           : ::stat(walk.path().c_str(), &status);
    Add(result == 0 && S_ISREG(status.st_mode) ? status.st_size : 0);
  }
}

void CountAhead::CountPath(const std::string& path) {
  struct stat status;
  if (::stat(path.c_str(), &status) != 0) return Add(0);
  if (inputs_.isRecursive && S_ISDIR(status.st_mode)) return CountDirectory(path);
  Add(S_ISREG(status.st_mode) ? status.st_size : 0);
}

void CountAhead::CountList() {
  struct stat status;
  const int descriptor = ::open(inputs_.list, O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
  if (descriptor < 0) return;
  if (::fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode)) {
    PathList list(descriptor, inputs_.terminator, [] { return false; });
    std::string path;
    while (!isEnding_ && list.Next(path) == ListStep::kPath) CountPath(path);
  }
  ::close(descriptor);
}

void CountAhead::Count() {
  const bool isWhole = WithinMemory([this] {
    for (const std::string& path : *inputs_.paths) {
      if (isEnding_) return;
      CountPath(path);
    }
    if (inputs_.list != nullptr) CountList();
  });
  if (isWhole) isDone_.store(true, std::memory_order_release);
}

}  // namespace fi::app
