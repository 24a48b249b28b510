#include "toolkit/zip/member_handle.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <limits>
#include <new>
#include <span>
#include <utility>

#include "toolkit/zip/limits.h"

namespace fi::zip {
namespace {

constexpr auto kMaxSize = static_cast<uint64_t>(std::numeric_limits<int64_t>::max());

// As many bytes as the directory claims and the limits allow.
uint64_t Readable(const Entry& entry) {
  const uint64_t packed = std::min(entry.packedSize, kMaxInflated);  // so that it cannot overflow
  return std::min({entry.size, kMaxInflated, std::max(kFreeOfRatio, packed * kMaxRatio)});
}

}  // namespace

MemberHandle::MemberHandle(ZipView& view, std::string_view name, uint64_t size)
    : PositionedHandle(name, {view.nesting() + 1, view.work()}),
      view_(view),
      size_(std::min(size, kMaxSize)) {}

int32_t MemberHandle::OtherInfo(uint32_t code, void* out) {
  return code == kIoInfoMemberName ? -1 : view_.OtherInfo(code, out);
}

int32_t FolderHandle::ReadAt(int64_t /*offset*/, uint8_t* /*buffer*/, uint32_t /*size*/,
                             uint32_t* /*count*/) {
  return 0;
}

StoredHandle::StoredHandle(ZipView& view, const Entry& entry, uint64_t data)
    : MemberHandle(view, entry.name, std::min(entry.size, entry.packedSize)), data_(data) {}

int32_t StoredHandle::ReadAt(int64_t offset, uint8_t* buffer, uint32_t size, uint32_t* count) {
  const auto from = static_cast<uint64_t>(offset);
  if (from >= size_) return 0;
  size = static_cast<uint32_t>(std::min<uint64_t>(size, size_ - from));
  if (size > kInputBlock) {
    const auto kept = view_.Kept(data_ + from);
    std::copy(kept.begin(), kept.end(), buffer);
    const auto had = static_cast<uint32_t>(kept.size());
    *count = had + view_.reader().ReadAt(data_ + from + had, buffer + had, size - had);
    return 0;
  }
  const auto input = view_.Input(data_ + from, size, size_ - from);
  *count = static_cast<uint32_t>(std::min<size_t>(size, input.size()));
  std::memcpy(buffer, input.data(), *count);
  return 0;
}

DeflatedHandle::DeflatedHandle(ZipView& view, const Entry& entry, uint64_t data)
    : MemberHandle(view, entry.name, entry.size),
      data_(data),
      packedSize_(entry.packedSize),
      readable_(Readable(entry)) {}

DeflatedHandle::~DeflatedHandle() {
  if (inflater_ != nullptr) view_.GiveBack(std::move(inflater_));
}

bool DeflatedHandle::Restart() {
  consumed_ = 0;
  at_ = 0;
  ended_ = false;
  if (inflater_ != nullptr) return inflater_->Start();  // which only starts anew
  inflater_ = view_.TakeInflater();
  return inflater_ != nullptr;
}

// Stores the next bytes and returns their number. Fewer than `size` only at the end of the member
// or at the limit of readable bytes.
uint32_t DeflatedHandle::Inflate(uint8_t* buffer, uint32_t size) {
  size = static_cast<uint32_t>(std::min<uint64_t>(size, view_.inflatable()));
  const uint32_t wanted = size;
  if (work() != nullptr && !ended_) {
    size = static_cast<uint32_t>(std::min<uint64_t>(size, work()->Inflatable()));
  }
  uint32_t count = 0;
  while (count < size && !ended_) {
    const uint64_t left = std::min(packedSize_ - consumed_, view_.packable());
    std::span<const uint8_t> input;
    if (left > 0) input = view_.Input(data_ + consumed_, 1, left);
    input = input.first(std::min<uint64_t>(input.size(), left));
    const Inflater::Step step = inflater_->Run(input, buffer + count, size - count);
    consumed_ += step.consumed;
    count += step.produced;
    ended_ = step.ended || (step.consumed == 0 && step.produced == 0);
    if (step.noMemory) NoteNoMemory(this);
    view_.CountInflated(step.consumed, step.produced);
  }
  at_ += count;
  // A reader may take what is cut for the end of the data and not ask again.
  if (size < wanted && count == size) work()->Stop(WorkLimit::kBytesInflated);
  return count;
}

bool DeflatedHandle::SkipTo(uint64_t offset) {
  if (at_ >= offset) return true;
  std::array<uint8_t, 8192> skipped;
  while (at_ < offset) {
    const auto piece = static_cast<uint32_t>(std::min<uint64_t>(skipped.size(), offset - at_));
    if (Inflate(skipped.data(), piece) < piece) return false;
  }
  return true;
}

// zlib decodes fast only while there is room for its longest match of 258 bytes; with that much
// behind the end, it does so up to the last byte.
bool DeflatedHandle::Keep() {
  constexpr uint32_t kRoom = 260;
  const auto size = static_cast<uint32_t>(readable_);
  content_.reset(Allocated(work(), new (std::nothrow) uint8_t[size + kRoom]));
  if (content_ == nullptr || !Restart()) return false;
  kept_ = std::min(size, Inflate(content_.get(), size + kRoom));
  view_.GiveBack(std::move(inflater_));
  return true;
}

int32_t DeflatedHandle::ReadAt(int64_t offset, uint8_t* buffer, uint32_t size, uint32_t* count) {
  const auto from = static_cast<uint64_t>(offset);
  if (from >= readable_) return 0;
  size = static_cast<uint32_t>(std::min<uint64_t>(size, readable_ - from));
  if (readable_ <= kMaxKept) {
    if (content_ == nullptr && !Keep()) return -1;
    if (from >= kept_) return 0;
    *count = std::min(size, kept_ - static_cast<uint32_t>(from));
    std::memcpy(buffer, content_.get() + from, *count);
    return 0;
  }
  if ((inflater_ == nullptr || from < at_) && !Restart()) return -1;
  if (SkipTo(from)) *count = Inflate(buffer, size);
  return 0;
}

}  // namespace fi::zip
