#include "toolkit/storage/stream_handle.h"

#include <algorithm>

namespace fi::storage {

StreamHandle::StreamHandle(CompoundFile& file, const DirectoryEntry& entry)
    : PositionedHandle(entry.name.Narrow().data(), {file.nesting() + 1, file.work()}),
      file_(file),
      claimed_(entry.size),
      unitShift_(file.UnitShiftOf(claimed_)) {
  Links& links = file.LinksOf(claimed_);
  const uint64_t room = uint64_t{links.Count()} << unitShift_;
  size_ = static_cast<int64_t>(std::min(claimed_, room));
  chain_.Start(links, entry.start);
}

// Empty where the chain ends. REQUIRES: wanted > 0.
StreamHandle::Run StreamHandle::RunAt(int64_t offset, uint32_t wanted) {
  const uint32_t unitSize = 1u << unitShift_;
  auto index = static_cast<uint32_t>(offset >> unitShift_);
  const uint32_t unit = chain_.At(index);
  const uint64_t start = unit == kNoUnit ? 0 : file_.OffsetOf(claimed_, unit);
  if (start == 0) return {0, 0};
  const auto within = static_cast<uint32_t>(offset) & (unitSize - 1);
  Run run{start + within, unitSize - within};
  while (run.size < wanted) {
    const uint32_t next = chain_.At(++index);
    if (next == kNoUnit || file_.OffsetOf(claimed_, next) != run.offset + run.size) break;
    run.size += std::min(unitSize, wanted - run.size);
  }
  run.size = std::min(run.size, wanted);
  return run;
}

int32_t StreamHandle::ReadAt(int64_t offset, uint8_t* buffer, uint32_t size, uint32_t* count) {
  if (offset >= size_) return 0;
  size = static_cast<uint32_t>(std::min(int64_t{size}, size_ - offset));
  while (*count < size) {
    const Run run = RunAt(offset + *count, size - *count);
    const uint32_t got = file_.reader().ReadAt(run.offset, buffer + *count, run.size);
    *count += got;
    if (got == 0 || got < run.size) break;
  }
  return 0;
}

int32_t StreamHandle::OtherInfo(uint32_t code, void* out) { return file_.OtherInfo(code, out); }

}  // namespace fi::storage
