#include "toolkit/storage/sector_cache.h"

#include <algorithm>

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
  if (sector >= sectors_) return {};
  const uint64_t offset = OffsetOf(sector);
  const Slot& slot = LoadBlock(offset >> kBlockShift);
  const auto within = static_cast<uint32_t>(offset & (kBlockSize - 1));
  if (within >= slot.size) return {};
  return {slot.bytes.data() + within, std::min(sectorSize(), slot.size - within)};
}

const SectorCache::Slot& SectorCache::LoadBlock(uint64_t block) {
  Slot* oldest = slots_.data();
  for (Slot& slot : slots_) {
    if (slot.size != 0 && slot.block == block) {
      slot.used = ++clock_;
      return slot;
    }
    if (slot.used < oldest->used) oldest = &slot;
  }
  ++loads_;
  oldest->block = block;
  oldest->used = ++clock_;
  oldest->size = reader_.ReadAt(block << kBlockShift, oldest->bytes.data(), kBlockSize);
  return *oldest;
}

}  // namespace fi::storage
