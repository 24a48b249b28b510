#include "toolkit/zip/end_record.h"

#include <array>
#include <cstring>

#include "toolkit/zip/limits.h"
#include "toolkit/zip/records.h"

namespace fi::zip {
namespace {

// An end record's numbers, and where it begins: the directory ends there at the latest.
struct End {
  uint64_t at;
  uint64_t count;
  uint64_t size;
  uint64_t offset;
};

class Search {
 public:
  Search(const io::HandleReader& reader, const Tail& tail) : reader_(reader), tail_(tail) {}

  // By the records whose comment ends with the file, or by those with another.
  bool Find(bool endsWithFile, DirectoryPlace* place) {
    size_t size = tail_.size < end::kSize ? 0 : tail_.size - end::kSize + 1;
    while (const void* found = ::memrchr(tail_.bytes, 'P', size)) {
      const auto* const record = static_cast<const uint8_t*>(found);
      size = static_cast<size_t>(record - tail_.bytes);
      if (LoadLE32(record) != end::kSignature) continue;
      const auto at = static_cast<uint32_t>(size);
      const uint32_t behind = tail_.size - at - end::kSize;
      const bool fits = LoadLE16(record + end::kCommentLength) == behind;
      sawOther_ |= fits != endsWithFile;
      if (fits != endsWithFile) continue;
      if (tried_++ == kMaxEndRecords) return false;
      if (Place(ReadEnd(record, tail_.offset + at), endsWithFile, place)) return true;
    }
    return false;
  }

  // Whether Find passed over records of the kind that it was not asked for.
  bool sawOther() const { return sawOther_; }

 private:
  // Exactly `size` bytes from an offset in the file.
  bool Load(uint64_t offset, uint8_t* buffer, uint32_t size) const {
    if (offset >= tail_.offset && offset - tail_.offset <= tail_.size) {
      const auto start = static_cast<uint32_t>(offset - tail_.offset);
      if (size > tail_.size - start) return false;
      std::memcpy(buffer, tail_.bytes + start, size);
      return true;
    }
    return reader_.ReadAt(offset, buffer, size) == size;
  }

  End ReadEnd(const uint8_t* record, uint64_t at) const {
    End found{at, LoadLE16(record + end::kCount), LoadLE32(record + end::kDirectorySize),
              LoadLE32(record + end::kDirectoryOffset)};
    if (found.count == kElsewhere16 || found.size == kElsewhere32 || found.offset == kElsewhere32) {
      ReadWideEnd(&found);
    }
    return found;
  }

  // The record is looked for where the locator says, and in front of the locator, where it is
  // unless it has an extensible part.
  void ReadWideEnd(End* found) const {
    std::array<uint8_t, locator::kSize> where;
    if (found->at < locator::kSize) return;
    const uint64_t before = found->at - locator::kSize;
    if (!Load(before, where.data(), locator::kSize)) return;
    if (LoadLE32(where.data()) != locator::kSignature) return;
    if (ReadWideEnd(LoadLE64(where.data() + locator::kEndOffset), found)) return;
    if (before >= end64::kSize) (void)ReadWideEnd(before - end64::kSize, found);
  }

  bool ReadWideEnd(uint64_t at, End* found) const {
    std::array<uint8_t, end64::kSize> record;
    if (at >= found->at || !Load(at, record.data(), end64::kSize)) return false;
    if (LoadLE32(record.data()) != end64::kSignature) return false;
    *found = {at, LoadLE64(record.data() + end64::kCount),
              LoadLE64(record.data() + end64::kDirectorySize),
              LoadLE64(record.data() + end64::kDirectoryOffset)};
    return true;
  }

  bool HasEntry(uint64_t at, uint64_t limit) const {
    std::array<uint8_t, 4> signature;
    return at < limit && limit - at >= central::kSize && Load(at, signature.data(), 4) &&
           LoadLE32(signature.data()) == central::kSignature;
  }

  // A directory stands in front of the record by its size, or at its offset. Where bytes follow the
  // record, two kinds are refused: a directory without entries proves nothing, and a shifted
  // directory belongs to a package nested in a cut-off package.
  bool Place(const End& found, bool endsWithFile, DirectoryPlace* place) const {
    if (found.size == 0 && found.count == 0) {
      *place = {found.at, 0, 0};
      return endsWithFile;
    }
    if (found.size <= found.at) {
      const uint64_t start = found.at - found.size;
      const bool trusted = endsWithFile ? start >= found.offset : start == found.offset;
      if (trusted && HasEntry(start, found.at)) {
        *place = {start, found.size, start - found.offset};
        return true;
      }
    }
    if (!HasEntry(found.offset, found.at)) return false;
    *place = {found.offset, found.at - found.offset, 0};
    return true;
  }

  const io::HandleReader& reader_;
  const Tail& tail_;
  uint32_t tried_ = 0;
  bool sawOther_ = false;
};

}  // namespace

bool FindDirectory(const io::HandleReader& reader, const Tail& tail, DirectoryPlace* place) {
  Search search(reader, tail);
  return search.Find(true, place) || (search.sawOther() && search.Find(false, place));
}

}  // namespace fi::zip
