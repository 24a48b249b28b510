// The three tables that chain the sectors of a compound file. They are read a sector at a time,
// where a chain needs it.
//
// FAT: an array of the successors of all sectors, itself kept in sectors. DIFAT: the list of those
// sectors, its first 109 in the header, the others in a chain of sectors of its own whose last word
// is the successor. Mini FAT: the successors of the 64-byte mini sectors, kept as a stream.
#ifndef FI_TOOLKIT_STORAGE_SECTOR_LINKS_H_
#define FI_TOOLKIT_STORAGE_SECTOR_LINKS_H_

#include <array>
#include <cstdint>

#include "toolkit/storage/chain.h"
#include "toolkit/storage/sector_cache.h"

namespace fi::storage {

inline constexpr uint32_t kHeaderFatSectors = 109;
inline constexpr uint32_t kLinkSize = 4;   // bytes of a word of the tables
inline constexpr uint32_t kMiniShift = 6;  // mini sectors of 64 bytes

class Difat final : public Links {
 public:
  explicit Difat(SectorCache& sectors) : sectors_(sectors) {}

  // `listed` holds the header's 109 words, `first` the start of the chain.
  void Start(const uint8_t* listed, uint32_t first);

  // The number of the index-th FAT sector, kNoUnit when it is not listed.
  uint32_t FatSector(uint32_t index);

  uint32_t Next(uint32_t unit) override;
  uint32_t Count() const override { return sectors_.sectors(); }

 private:
  uint32_t WordsPerSector() const { return sectors_.sectorSize() / kLinkSize - 1; }

  SectorCache& sectors_;
  std::array<uint32_t, kHeaderFatSectors> listed_{};
  Chain chain_;
};

class Fat final : public Links {
 public:
  Fat(SectorCache& sectors, Difat& difat) : sectors_(sectors), difat_(difat) {}

  uint32_t Next(uint32_t unit) override;
  uint32_t Count() const override { return sectors_.sectors(); }

 private:
  SectorCache& sectors_;
  Difat& difat_;
};

class MiniFat final : public Links {
 public:
  MiniFat(SectorCache& sectors, Fat& fat) : sectors_(sectors), fat_(fat) {}

  // `first` starts the table's chain; `count` mini sectors exist.
  void Start(uint32_t first, uint32_t count);

  uint32_t Next(uint32_t unit) override;
  uint32_t Count() const override { return count_; }

 private:
  SectorCache& sectors_;
  Fat& fat_;
  Chain chain_;
  uint32_t count_ = 0;
};

}  // namespace fi::storage

#endif  // FI_TOOLKIT_STORAGE_SECTOR_LINKS_H_
