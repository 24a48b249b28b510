#include "run/input/path_list.h"

#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>

namespace fi::app {

// False when the list is to end.
bool PathList::Wait() {
  constexpr int kTick = 100;  // milliseconds
  pollfd wanted = {descriptor_, POLLIN, 0};
  for (int wait = 0;; wait = kTick) {
    const int ready = ::poll(&wanted, 1, wait);
    if (ready > 0 || (ready < 0 && errno != EINTR)) return true;  // the read tells the rest
    // What is not open for reading never becomes ready.
    if (wait == 0 && ::read(descriptor_, buffer_.data(), 0) < 0) return true;
    if (!beforeWait_()) return false;
  }
}

// False at the end of the list and on a fault.
bool PathList::Fill() {
  ssize_t count = 0;
  if (Wait()) {
    do {
      count = ::read(descriptor_, buffer_.data(), buffer_.size());
    } while (count < 0 && errno == EINTR);
  }
  isFaulty_ = count < 0;
  start_ = 0;
  end_ = count > 0 ? static_cast<size_t>(count) : 0;
  return count > 0;
}

ListStep PathList::Next(std::string& path) {
  path.clear();
  for (;;) {
    if (start_ == end_ && !Fill()) {
      if (isFaulty_) return ListStep::kFault;
      return path.empty() ? ListStep::kEnd : ListStep::kPath;
    }
    const char* piece = buffer_.data() + start_;
    const void* found = std::memchr(piece, terminator_, end_ - start_);
    const size_t length = found != nullptr
                              ? static_cast<size_t>(static_cast<const char*>(found) - piece)
                              : end_ - start_;
    path.append(piece, std::min(length, kLongestPath - path.size()));
    start_ += length + (found != nullptr ? 1 : 0);
    if (found != nullptr && !path.empty()) return ListStep::kPath;
  }
}

}  // namespace fi::app
