// A compound file: a small file system in a file, of sectors of 512 bytes (version 3) or 4096
// (version 4) behind a header of one sector. Storages and streams are entries of one directory;
// streams below 4096 bytes share the sectors of the mini stream, which is the root entry's.
//
// Nothing is read but what a question needs: the header, the sectors of the directory on the way to
// a name, and the sectors of the tables that lead to the bytes asked for.
#ifndef FI_TOOLKIT_STORAGE_COMPOUND_FILE_H_
#define FI_TOOLKIT_STORAGE_COMPOUND_FILE_H_

#include <cstdint>
#include <memory>
#include <optional>

#include "formatid/io.h"
#include "toolkit/io/containers.h"
#include "toolkit/storage/chain.h"
#include "toolkit/storage/directory_entry.h"
#include "toolkit/storage/sector_cache.h"
#include "toolkit/storage/sector_links.h"
#include "toolkit/storage/storage.h"

namespace fi::storage {

// Streams smaller than that, in bytes, are kept in the mini stream.
inline constexpr uint32_t kMiniStreamCutoff = 4096;

// Levels of compound files in streams of compound files that are storages; a stream further in is
// bytes. Each level multiplies what a read inside it costs: a sector of a badly scattered file in a
// badly scattered file takes a walk through the tables of both.
inline constexpr uint32_t kMaxNesting = 1;

class CompoundFile final : public io::ContainedStorage {
 public:
  // Null when `handle` holds no compound file whose header and root entry can be read, or memory
  // runs out. `handle` is borrowed for the life of the result, and keeps its position. `nesting` is
  // the number of compound files around this one.
  static std::unique_ptr<CompoundFile> Open(IOHandle* handle, uint32_t nesting);

  CompoundFile(const CompoundFile&) = delete;
  CompoundFile& operator=(const CompoundFile&) = delete;

  const io::HandleReader& reader() const { return sectors_.reader(); }
  uint32_t nesting() const { return nesting_; }

  // Of the handle: what reads are counted for; null: nothing.
  Work* work() const { return sectors_.work(); }
  Storage& Root() override { return *root_; }

  // Lets ReadEntry read up to `loads` blocks (SectorCache) from here on.
  void AllowLoads(uint32_t loads) { loadLimit_ = sectors_.loads() + loads; }

  // Whether there are any left.
  bool MayLoad() const { return sectors_.loads() < loadLimit_; }

  // The bytes of the entry of that number, until the next call. Null when it is unused, cut off or
  // does not exist, or when no more loads are allowed.
  const uint8_t* EntryBytes(uint32_t id);

  // Reads such an entry. False, and `*entry` stays, where there are no bytes.
  bool ReadEntry(uint32_t id, DirectoryEntry* entry);

  // Get-info of the handles on this file's parts: the file's own answer on read errors.
  int32_t OtherInfo(uint32_t code, void* out) const;

  // For a stream of `size` bytes: the table that chains its units, and the size of a unit.
  Links& LinksOf(uint64_t size);
  uint32_t UnitShiftOf(uint64_t size) const;

  // Offset in the file of a unit of such a stream; 0 when it lies nowhere.
  uint64_t OffsetOf(uint64_t size, uint32_t unit);

 private:
  explicit CompoundFile(io::HandleReader reader, uint32_t nesting);

  bool Start(const uint8_t* header);

  SectorCache sectors_;
  Difat difat_;
  Fat fat_;
  MiniFat miniFat_;
  Chain directory_;
  Chain miniStream_;
  uint32_t nesting_;
  bool wideSizes_ = false;
  uint64_t loadLimit_ = 0;
  std::optional<Storage> root_;
};

}  // namespace fi::storage

#endif  // FI_TOOLKIT_STORAGE_COMPOUND_FILE_H_
