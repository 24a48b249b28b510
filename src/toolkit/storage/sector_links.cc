#include "toolkit/storage/sector_links.h"

#include <cstddef>

#include "toolkit/memory/little_endian.h"

namespace fi::storage {
namespace {

// The index-th word of a sector, kNoUnit where it is cut off.
uint32_t WordAt(SectorCache& sectors, uint32_t sector, uint32_t index) {
  const SectorView view = sectors.Load(sector);
  if (index >= view.size / kLinkSize) return kNoUnit;
  return LoadLE32(view.data + size_t{index} * kLinkSize);
}

}  // namespace

void Difat::Start(const uint8_t* listed, uint32_t first) {
  for (uint32_t i = 0; i < kHeaderFatSectors; ++i) listed_[i] = LoadLE32(listed + i * kLinkSize);
  chain_.Start(*this, first);
}

uint32_t Difat::FatSector(uint32_t index) {
  if (index < kHeaderFatSectors) return listed_[index];
  index -= kHeaderFatSectors;
  const uint32_t sector = chain_.At(index / WordsPerSector());
  return sector == kNoUnit ? kNoUnit : WordAt(sectors_, sector, index % WordsPerSector());
}

uint32_t Difat::Next(uint32_t unit) { return WordAt(sectors_, unit, WordsPerSector()); }

uint32_t Fat::Next(uint32_t unit) {
  const uint32_t perSector = sectors_.sectorSize() / kLinkSize;
  const uint32_t sector = difat_.FatSector(unit / perSector);
  return sector == kNoUnit ? kNoUnit : WordAt(sectors_, sector, unit % perSector);
}

void MiniFat::Start(uint32_t first, uint32_t count) {
  chain_.Start(fat_, first);
  count_ = count;
}

uint32_t MiniFat::Next(uint32_t unit) {
  const uint32_t perSector = sectors_.sectorSize() / kLinkSize;
  const uint32_t sector = chain_.At(unit / perSector);
  return sector == kNoUnit ? kNoUnit : WordAt(sectors_, sector, unit % perSector);
}

}  // namespace fi::storage
