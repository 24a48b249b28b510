#include "tests/support/sparse_compound_file.h"

#include <algorithm>
#include <cstring>
#include <vector>

#include "tests/support/compound_file_writer.h"

namespace fi::testing {
namespace {

std::string Entry(const SparseLayout& layout, uint32_t id) {
  if (id > layout.streams) return EntryBytes({});
  if (id == 0) {
    return EntryBytes({.name = u"Root Entry", .kind = 5, .child = TreeRoot(1, layout.streams + 1)});
  }
  EntryRecord entry{.name = layout.name(id), .kind = 2, .start = layout.BodyStart()};
  entry.size = uint64_t{layout.DirectoryStart() - entry.start} * ComputedFile::kBlock;
  SetSiblings(id, 1, layout.streams + 1, &entry);
  return EntryBytes(entry);
}

// What stands at `index` of the list of FAT sectors, and of the FAT.
uint32_t Listed(const SparseLayout& layout, uint32_t index) {
  return index < layout.FatSectors() ? index : kFreeSector;
}
uint32_t Link(const SparseLayout& layout, uint32_t sector) {
  if (sector < layout.BodyStart() || sector >= layout.sectors) return kFreeSector;
  const uint32_t next = sector + 1;
  return next == layout.DirectoryStart() || next == layout.sectors ? kEndOfChain : next;
}

}  // namespace

std::function<std::string(uint32_t)> SparseBlocks(const SparseLayout& layout) {
  return [layout](uint32_t block) {
    const uint32_t fat = layout.FatSectors();
    std::vector<uint32_t> words;
    if (block == 0) {
      for (uint32_t i = 0; i < 109; ++i) words.push_back(i);
      return CompoundHeader(9, layout.DirectoryStart(), kEndOfChain, fat, words);
    }
    const uint32_t sector = block - 1;
    if (sector >= layout.DirectoryStart()) {
      std::string entries;
      const uint32_t first = (sector - layout.DirectoryStart()) * 4;
      for (uint32_t id = first; id < first + 4; ++id) entries += Entry(layout, id);
      return entries;
    }
    if (sector >= layout.BodyStart()) {
      return std::string(ComputedFile::kBlock, static_cast<char>(SparseFill(sector)));
    }
    for (uint32_t i = 0; i < 128; ++i) {
      if (sector < fat) {
        words.push_back(Link(layout, sector * 128 + i));
      } else {
        words.push_back(Listed(layout, 109 + (sector - fat) * 127 + i));
      }
    }
    if (sector >= fat) {
      words.back() = sector + 1 < layout.BodyStart() ? sector + 1 : kEndOfChain;
    }
    return Words(words);
  };
}

ComputedFile::ComputedFile(const std::string& bytes)
    : ComputedFile(static_cast<uint32_t>(bytes.size() / kBlock), [bytes](uint32_t block) {
        return bytes.substr(size_t{block} * kBlock, kBlock);
      }) {}

int32_t ComputedFile::ReadAt(int64_t offset, uint8_t* buffer, uint32_t size, uint32_t* count) {
  ++reads;
  size = static_cast<uint32_t>(std::min<int64_t>(size, std::max<int64_t>(0, Size() - offset)));
  while (*count < size) {
    const auto at = static_cast<uint64_t>(offset) + *count;
    const std::string block = block_(static_cast<uint32_t>(at / kBlock));
    const auto within = static_cast<uint32_t>(at % kBlock);
    const uint32_t piece = std::min(size - *count, kBlock - within);
    std::memcpy(buffer + *count, block.data() + within, piece);
    *count += piece;
  }
  bytesRead += *count;
  return 0;
}

}  // namespace fi::testing
