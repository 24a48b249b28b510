#include "run/input/sorted_names.h"

#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>

namespace fi::app {
namespace {

constexpr size_t kRunBuffer = size_t{8} << 10;
constexpr size_t kWriteBuffer = size_t{64} << 10;

}  // namespace

size_t SortedNames::Footprint() const {
  size_t held = names_.capacity() + order_.capacity() * sizeof(order_[0]);
  for (const Run& run : runs_) held += run.buffer.capacity();
  return held;
}

void SortedNames::Sort() {
  const char* names = names_.data();
  std::sort(order_.begin(), order_.end(), [names](uint32_t left, uint32_t right) {
    return std::strcmp(names + left + 1, names + right + 1) < 0;
  });
}

bool SortedNames::Spill() {
  if (!file_.IsOpen() && !file_.Open()) return false;
  Sort();
  const off_t start = written_;
  std::string block;
  block.reserve(kWriteBuffer + 1024);
  for (size_t i = 0; i <= order_.size(); ++i) {
    if (i == order_.size() || block.size() >= kWriteBuffer) {
      if (!file_.Append(block.data(), block.size())) return false;
      written_ += static_cast<off_t>(block.size());
      block.clear();
    }
    if (i < order_.size()) {
      const char* entry = names_.data() + order_[i];
      block.append(entry, std::strlen(entry + 1) + 2);
    }
  }
  runs_.push_back({start, written_, {}});
  names_.clear();
  order_.clear();
  return true;
}

bool SortedNames::Add(char kind, const char* name) {
  const size_t size = std::strlen(name) + 2;
  const size_t held = names_.size() + order_.size() * sizeof(order_[0]);
  if (!order_.empty() && held + size > limit_ && !Spill()) return false;
  order_.push_back(static_cast<uint32_t>(names_.size()));
  names_ += kind;
  names_.append(name, size - 1);
  return true;
}

bool SortedNames::Finish() {
  if (runs_.empty()) {
    Sort();
    return true;
  }
  if (!order_.empty() && !Spill()) return false;
  names_ = {};
  order_ = {};
  heap_.reserve(runs_.size());
  for (size_t i = 0; i < runs_.size(); ++i) {
    if (!Fill(runs_[i])) return false;
    Push(i);
  }
  return true;
}

// Makes the entry at `at` whole. False with error_ set where the file ends or fails before its end.
bool SortedNames::Fill(Run& run) {
  while (run.buffer.size() - run.at < 2 || std::memchr(run.buffer.data() + run.at + 1, 0,
                                                       run.buffer.size() - run.at - 1) == nullptr) {
    run.buffer.erase(0, run.at);
    run.at = 0;
    const size_t filled = run.buffer.size();
    const auto left = static_cast<size_t>(run.end - run.next);
    const size_t wanted = std::min(left, std::max(kRunBuffer, filled * 2) - filled);
    run.buffer.resize(filled + wanted);
    const ssize_t count = ::pread(file_.descriptor(), run.buffer.data() + filled, wanted, run.next);
    run.buffer.resize(filled + static_cast<size_t>(std::max<ssize_t>(count, 0)));
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) {
      error_ = count < 0 ? errno : EIO;
      errno = error_;
      return false;
    }
    run.next += count;
  }
  return true;
}

bool SortedNames::IsLater(size_t left, size_t right) const {
  const Run& a = runs_[left];
  const Run& b = runs_[right];
  return std::strcmp(a.buffer.data() + a.at + 1, b.buffer.data() + b.at + 1) > 0;
}

void SortedNames::Push(size_t run) {
  heap_.push_back(run);
  std::push_heap(heap_.begin(), heap_.end(), [this](size_t a, size_t b) { return IsLater(a, b); });
}

const char* SortedNames::NextOfRuns(char& kind) {
  if (hasCurrent_) {
    hasCurrent_ = false;
    Run& run = runs_[current_];
    run.at += std::strlen(run.buffer.data() + run.at + 1) + 2;
    if (run.at < run.buffer.size() || run.next < run.end) {
      if (!Fill(run)) return nullptr;
      Push(current_);
    }
  }
  if (heap_.empty()) return nullptr;
  std::pop_heap(heap_.begin(), heap_.end(), [this](size_t a, size_t b) { return IsLater(a, b); });
  current_ = heap_.back();
  heap_.pop_back();
  hasCurrent_ = true;
  const Run& run = runs_[current_];
  kind = run.buffer[run.at];
  return run.buffer.data() + run.at + 1;
}

const char* SortedNames::Next(char& kind) {
  if (!runs_.empty()) return NextOfRuns(kind);
  if (next_ == order_.size()) return nullptr;
  const char* entry = names_.data() + order_[next_++];
  kind = entry[0];
  return entry + 1;
}

}  // namespace fi::app
