// The sectors of a compound file, and the few blocks of its tables and directory that were read
// last. A block is 4 KB, whatever the sector size: tables lie close together, and a handle on a
// file reads no less at a time. Streams do not go through the cache.
//
// The cost of a search is the number of blocks that the cache did not hold. A file that makes its
// readers go to and fro gets a second cache behind the first: it saves reads, but not cost.
#ifndef FI_TOOLKIT_STORAGE_SECTOR_CACHE_H_
#define FI_TOOLKIT_STORAGE_SECTOR_CACHE_H_

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>

#include "platform/work.h"
#include "toolkit/io/handle_reader.h"

namespace fi::storage {

// The leading bytes of a sector that exist; `size` is short where the file is cut.
struct SectorView {
  const uint8_t* data = nullptr;
  uint32_t size = 0;
};

class SectorCache {
 public:
  explicit SectorCache(io::HandleReader reader) : reader_(reader), work_(WorkOf(reader.handle())) {}

  // `shift` is the binary logarithm of the sector size. REQUIRES: 6 < shift <= 12.
  void Start(uint32_t shift);

  const io::HandleReader& reader() const { return reader_; }
  Work* work() const { return work_; }
  uint32_t shift() const { return shift_; }
  uint32_t sectorSize() const { return 1u << shift_; }

  // Sectors that the handle holds behind the header; a cut one at the end counts.
  uint32_t sectors() const { return sectors_; }

  // Offset in the file. The header takes the room of one sector.
  uint64_t OffsetOf(uint32_t sector) const { return (uint64_t{sector} + 1) << shift_; }

  // A sector's bytes, empty when it does not exist. Valid until the next call.
  SectorView Load(uint32_t sector);

  // Blocks so far that were not among the last few.
  uint64_t loads() const { return loads_; }

 private:
  static constexpr uint32_t kBlockShift = 12;
  static constexpr uint32_t kBlockSize = 1u << kBlockShift;

  // FAT, DIFAT, mini FAT, mini stream map and directory each have one in use, and the FAT sectors
  // of two chains may alternate; the rest is for the way down a directory tree.
  static constexpr uint32_t kSlots = 8;

  struct Slot {
    uint64_t block = 0;
    uint64_t used = 0;
    uint32_t size = 0;  // 0: empty
  };

  // Of the second cache: each block has one place in it.
  struct Kept {
    uint64_t block = 0;
    uint32_t size = 0;  // 0: empty
    std::array<uint8_t, kBlockSize> bytes;
  };

  // Blocks that the second cache holds, 1 MB, and loads before it is made: more than any file of an
  // application needs.
  static constexpr uint32_t kKeptBlocks = 256;
  static constexpr uint64_t kLoadsBeforeKeeping = 96;

  SectorView LoadBlock(uint64_t block);
  SectorView Read(uint64_t block, size_t slot, uint32_t known);

  io::HandleReader reader_;
  Work* const work_;  // what reads are counted for; null: nothing
  uint32_t shift_ = 0;
  uint32_t sectors_ = 0;
  uint64_t loads_ = 0;
  uint64_t clock_ = 0;
  std::array<Slot, kSlots> slots_;
  std::array<std::array<uint8_t, kBlockSize>, kSlots> bytes_;  // of the slots, without `kept_`
  std::unique_ptr<Kept[]> kept_;
};

}  // namespace fi::storage

#endif  // FI_TOOLKIT_STORAGE_SECTOR_CACHE_H_
