#include "toolkit/io/callback_handle.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <limits>

#include "platform/no_throw.h"
#include "toolkit/io/parts_handle.h"

namespace fi::io {
namespace {

constexpr auto kLargestSize = static_cast<uint64_t>(std::numeric_limits<int64_t>::max());

}  // namespace

CallbackHandle::CallbackHandle(FIReadAt readAt, void* context, uint64_t size, std::string_view name,
                               Work* work)
    : PositionedHandle(name, {0, work, true}), readAt_(readAt), context_(context), size_(size) {}

uint32_t CallbackHandle::Block::Copy(uint64_t from, uint8_t* buffer, uint32_t size) const {
  if (from < offset || from - offset >= filled) return 0;
  const auto start = static_cast<uint32_t>(from - offset);
  const uint32_t count = std::min(size, filled - start);
  std::memcpy(buffer, bytes.data() + start, count);
  return count;
}

// Asks the callback once. What it answers is checked here: a number beyond `size` is a failure.
CallbackHandle::Got CallbackHandle::Ask(uint64_t offset, uint8_t* buffer, uint32_t size,
                                        uint32_t* count) {
  uint32_t got = 0;
  const int32_t result =
      NoThrow<int32_t>(EIO, [&] { return readAt_(context_, offset, buffer, size, &got); });
  if (result == kFiReadMissing) return Got::kMissing;
  if (result != 0 || got > size) {
    error_ = result != 0 ? result : EIO;
    return Got::kFailed;
  }
  if (got == 0) {
    if (size_ == FI_UNKNOWN_SIZE && offset == known_) size_ = offset;
    return Got::kEnd;
  }
  known_ = std::max(known_, offset + got);
  *count = got;
  return Got::kBytes;
}

// Asks until `size` bytes are there, the source ends or it has no more at hand. An outcome other
// than bytes counts only where it stands before the first byte.
CallbackHandle::Got CallbackHandle::AskFully(uint64_t offset, uint8_t* buffer, uint32_t size,
                                             uint32_t* count) {
  *count = 0;
  while (*count < size && offset + *count < size_) {
    uint32_t more = 0;
    const Got got = Ask(offset + *count, buffer + *count, size - *count, &more);
    if (got != Got::kBytes) return *count > 0 ? Got::kBytes : got;
    *count += more;
  }
  return *count > 0 ? Got::kBytes : Got::kEnd;
}

CallbackHandle::Got CallbackHandle::Load(Block& block, uint64_t offset) {
  block.offset = offset;
  return AskFully(offset, block.bytes.data(), kBlockSize, &block.filled);
}

CallbackHandle::Got CallbackHandle::ReadBlock(uint64_t offset, uint8_t* buffer, uint32_t size,
                                              uint32_t* count) {
  for (const Block* block : {&head_, &window_}) {
    *count = block->Copy(offset, buffer, size);
    if (*count > 0) return Got::kBytes;
  }
  Block& block = offset < kBlockSize ? head_ : window_;
  uint64_t start = offset < kBlockSize ? 0 : offset;
  if (start > 0 && size_ != FI_UNKNOWN_SIZE) {
    start = std::max<uint64_t>(std::min(offset, size_ - std::min<uint64_t>(size_, kBlockSize)),
                               kBlockSize);
  }
  Got got = Load(block, start);
  *count = block.Copy(offset, buffer, size);
  if (*count > 0) return Got::kBytes;
  // The block begins before what is wanted, and ends before it as well: a part is missing, or the
  // callback gave less than there is.
  if (start < offset) {
    got = Load(block, offset);
    *count = block.Copy(offset, buffer, size);
  }
  return got;
}

int32_t CallbackHandle::ReadAt(int64_t offset, uint8_t* buffer, uint32_t size, uint32_t* count) {
  const auto from = static_cast<uint64_t>(offset);
  if (size == 0 || from >= size_) return 0;
  const bool isLarge = size >= kBlockSize && from >= kBlockSize;
  const Got got =
      isLarge ? AskFully(from, buffer, size, count) : ReadBlock(from, buffer, size, count);
  switch (got) {
    case Got::kBytes:
      *count = static_cast<uint32_t>(std::min<uint64_t>(*count, size_ - from));
      return 0;
    case Got::kEnd:
      return 0;
    case Got::kMissing:
      work()->NoteMissing(from, WantedSize(from, size, size_));
      return -1;
    case Got::kFailed:
      break;
  }
  work()->NoteReadError(error_);
  return -1;
}

int64_t CallbackHandle::Size() {
  if (size_ == FI_UNKNOWN_SIZE) size_ = SearchEnd();
  return static_cast<int64_t>(size_);
}

bool CallbackHandle::HasByteAt(uint64_t offset) {
  uint8_t byte = 0;
  uint32_t count = 0;
  const Got got = Ask(offset, &byte, 1, &count);
  if (got == Got::kMissing) work()->NoteSizeMissing();
  if (got == Got::kFailed) work()->NoteReadError(error_);
  return got == Got::kBytes;
}

// Doubles an offset until no byte stands there, then halves the distance: some 2 * log2(size)
// questions for a byte each.
uint64_t CallbackHandle::SearchEnd() {
  uint64_t step = kBlockSize;
  uint64_t beyond = known_;
  while (HasByteAt(beyond)) {
    if (beyond > kLargestSize - step) return kLargestSize;
    beyond += step;
    step *= 2;
  }
  while (known_ < beyond) {
    const uint64_t middle = known_ + (beyond - known_) / 2;
    if (!HasByteAt(middle)) beyond = middle;
  }
  return known_;
}

}  // namespace fi::io
