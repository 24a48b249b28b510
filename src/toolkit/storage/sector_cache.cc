#include "toolkit/storage/sector_cache.h"

#include <algorithm>
#include <new>

namespace fi::storage {
namespace {

// Numbers from 0xFFFFFFFA on have meanings of their own.
constexpr uint64_t kMaxSectors = 0xFFFFFFFA;

}  // namespace

void SectorCache::Start(uint32_t shift) {
  shift_ = shift;
  const uint64_t size = reader_.Size();
  if (size <= sectorSize()) return;
  // Rounded up, without the header's.
  sectors_ = static_cast<uint32_t>(std::min((size - 1) >> shift, kMaxSectors));
}

SectorView SectorCache::Load(uint32_t sector) {
  if (sector >= sectors_ || (work_ != nullptr && !work_->SpendStep())) return {};
  const uint64_t offset = OffsetOf(sector);
  const SectorView block = LoadBlock(offset >> kBlockShift);
  const auto within = static_cast<uint32_t>(offset & (kBlockSize - 1));
  if (within >= block.size) return {};
  return {block.data + within, std::min(sectorSize(), block.size - within)};
}

SectorView SectorCache::LoadBlock(uint64_t block) {
  size_t oldest = 0;
  for (size_t i = 0; i < kSlots; ++i) {
    Slot& slot = slots_[i];
    if (slot.size != 0 && slot.block == block) {
      slot.used = ++clock_;
      return Read(block, i, slot.size);
    }
    if (slot.used < slots_[oldest].used) oldest = i;
  }
  ++loads_;
  if (loads_ == kLoadsBeforeKeeping) {
    // Without memory for it, blocks are read again.
    kept_.reset(new (std::nothrow) Kept[kKeptBlocks]);
    if (kept_ != nullptr) slots_ = {};
  }
  const SectorView view = Read(block, oldest, 0);
  slots_[oldest] = {block, ++clock_, view.size};
  return view;
}

// The bytes of a block: what the slot holds, where that is `known` bytes, or the second cache.
SectorView SectorCache::Read(uint64_t block, size_t slot, uint32_t known) {
  if (kept_ == nullptr) {
    uint8_t* const bytes = bytes_[slot].data();
    if (known == 0) known = reader_.ReadAt(block << kBlockShift, bytes, kBlockSize);
    return {bytes, known};
  }
  Kept& kept = kept_[block % kKeptBlocks];
  if (kept.size == 0 || kept.block != block) {
    kept.block = block;
    kept.size = reader_.ReadAt(block << kBlockShift, kept.bytes.data(), kBlockSize);
  }
  return {kept.bytes.data(), kept.size};
}

}  // namespace fi::storage
