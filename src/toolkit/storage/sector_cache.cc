#include "toolkit/storage/sector_cache.h"

#include <algorithm>
#include <new>

namespace fi::storage {
namespace {

// Numbers from 0xFFFFFFFA on have meanings of their own.
constexpr uint64_t kMaxSectors = 0xFFFFFFFA;

}  // namespace

bool SectorCache::Start(uint32_t shift) {
  shift_ = shift;
  const uint64_t size = reader_.Size();
  if (size > sectorSize()) {
    // Rounded up, without the header's.
    sectors_ = static_cast<uint32_t>(std::min((size - 1) >> shift, kMaxSectors));
  }
  bytes_.reset(new (std::nothrow) uint8_t[size_t{kSlots} << shift]);
  return bytes_ != nullptr;
}

uint8_t* SectorCache::BytesOf(const Slot& slot) {
  return bytes_.get() + (static_cast<size_t>(&slot - slots_.data()) << shift_);
}

SectorView SectorCache::Load(uint32_t sector) {
  if (sector >= sectors_) return {};
  Slot* oldest = slots_.data();
  for (Slot& slot : slots_) {
    if (slot.size != 0 && slot.sector == sector) {
      slot.used = ++clock_;
      return {BytesOf(slot), slot.size};
    }
    if (slot.used < oldest->used) oldest = &slot;
  }
  ++loads_;
  oldest->sector = sector;
  oldest->size = reader_.ReadAt(OffsetOf(sector), BytesOf(*oldest), sectorSize());
  oldest->used = ++clock_;
  return {BytesOf(*oldest), oldest->size};
}

}  // namespace fi::storage
