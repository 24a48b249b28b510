#include "tests/support/sparse_compound_file.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace fi::testing {
namespace {

void Append(std::string& bytes, uint32_t word) {
  for (int i = 0; i < 4; ++i) bytes += static_cast<char>(word >> (8 * i));
}

}  // namespace

SparseCompoundFile::SparseCompoundFile(uint32_t sectors, Extent directory,
                                       std::vector<Extent> streams,
                                       std::function<EntryRecord(uint32_t)> entry)
    : PositionedHandle("sparse.doc"),
      sectors_(sectors),
      directory_(directory),
      extents_(std::move(streams)),
      entry_(std::move(entry)) {
  extents_.push_back(directory);
}

uint32_t SparseCompoundFile::Link(uint32_t sector) const {
  for (const Extent& extent : extents_) {
    if (sector < extent.first || sector - extent.first >= extent.count) continue;
    return sector - extent.first + 1 == extent.count ? kEndOfChain : sector + 1;
  }
  return kFreeSector;
}

// The 512 bytes of the header, for index 0, or of sector index - 1.
std::string SparseCompoundFile::Block(uint64_t index) const {
  const uint32_t fat = FatSectors(sectors_);
  const uint32_t difat = DifatSectors(sectors_);
  std::string bytes;
  if (index == 0) {
    bytes = CompoundHeader(9, directory_.first, kEndOfChain, fat);
    bytes.resize(76);
    for (uint32_t i = 0; i < kListed; ++i) Append(bytes, i);
    return bytes;
  }
  const auto sector = static_cast<uint32_t>(index - 1);
  if (sector < fat) {
    for (uint32_t i = 0; i < kWords; ++i) Append(bytes, Link(sector * kWords + i));
  } else if (sector < fat + difat) {
    const uint32_t first = kListed + (sector - fat) * (kWords - 1);
    for (uint32_t i = first; i < first + kWords - 1; ++i) Append(bytes, i < fat ? i : kFreeSector);
    Append(bytes, sector + 1 < fat + difat ? sector + 1 : kEndOfChain);
  } else if (sector >= directory_.first && sector - directory_.first < directory_.count) {
    const uint32_t id = (sector - directory_.first) * 4;
    for (uint32_t i = id; i < id + 4; ++i) bytes += EntryBytes(entry_(i));
  } else {
    bytes.assign(kSectorSize, static_cast<char>(Fill(sector)));
  }
  return bytes;
}

int32_t SparseCompoundFile::ReadAt(int64_t offset, uint8_t* buffer, uint32_t size,
                                   uint32_t* count) {
  ++reads;
  const auto left = static_cast<uint64_t>(std::max<int64_t>(0, Size() - offset));
  size = static_cast<uint32_t>(std::min<uint64_t>(size, left));
  while (*count < size) {
    const uint64_t at = static_cast<uint64_t>(offset) + *count;
    const std::string block = Block(at / kSectorSize);
    const auto within = static_cast<uint32_t>(at % kSectorSize);
    const uint32_t piece = std::min(size - *count, kSectorSize - within);
    std::memcpy(buffer + *count, block.data() + within, piece);
    *count += piece;
  }
  bytesRead += *count;
  return 0;
}

}  // namespace fi::testing
