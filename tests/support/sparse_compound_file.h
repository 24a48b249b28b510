// A handle on a large compound file whose bytes are computed as they are read, with counters. The
// FAT is at the front, its DIFAT behind it; then come the extents, each a chain of neighbouring
// sectors.
#ifndef FI_TESTS_SUPPORT_SPARSE_COMPOUND_FILE_H_
#define FI_TESTS_SUPPORT_SPARSE_COMPOUND_FILE_H_

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "tests/support/compound_file_writer.h"
#include "toolkit/io/positioned_handle.h"

namespace fi::testing {

class SparseCompoundFile : public io::PositionedHandle {
 public:
  static constexpr uint32_t kSectorSize = 512;

  struct Extent {
    uint32_t first;
    uint32_t count;
  };

  // `entry` gives the bytes of a directory entry by its number.
  SparseCompoundFile(uint32_t sectors, Extent directory, std::vector<Extent> streams,
                     std::function<EntryRecord(uint32_t)> entry);
  ~SparseCompoundFile() override = default;

  // The first sector behind the tables of a file of so many sectors.
  static uint32_t FirstFree(uint32_t sectors) {
    return FatSectors(sectors) + DifatSectors(sectors);
  }

  // What the byte of a stream's sector is.
  static uint8_t Fill(uint32_t sector) { return static_cast<uint8_t>(sector * 7 + 1); }

  uint64_t reads = 0;
  uint64_t bytesRead = 0;

 protected:
  int64_t Size() override { return (int64_t{sectors_} + 1) * kSectorSize; }
  int32_t ReadAt(int64_t offset, uint8_t* buffer, uint32_t size, uint32_t* count) override;

 private:
  static constexpr uint32_t kWords = kSectorSize / 4;
  static constexpr uint32_t kListed = 109;

  static uint32_t FatSectors(uint32_t sectors) { return (sectors + kWords - 1) / kWords; }
  static uint32_t DifatSectors(uint32_t sectors) {
    return (FatSectors(sectors) - kListed + kWords - 2) / (kWords - 1);
  }

  uint32_t Link(uint32_t sector) const;
  std::string Block(uint64_t index) const;

  uint32_t sectors_;
  Extent directory_;
  std::vector<Extent> extents_;
  std::function<EntryRecord(uint32_t)> entry_;
};

}  // namespace fi::testing

#endif  // FI_TESTS_SUPPORT_SPARSE_COMPOUND_FILE_H_
