// The central directory of a ZIP package: its bytes as they are in the file, and an index over them
// of eight bytes an entry.
#ifndef FI_TOOLKIT_ZIP_DIRECTORY_H_
#define FI_TOOLKIT_ZIP_DIRECTORY_H_

#include <array>
#include <cstdint>
#include <memory>
#include <string_view>

#include "platform/work.h"
#include "toolkit/io/handle_reader.h"
#include "toolkit/zip/end_record.h"
#include "toolkit/zip/limits.h"

namespace fi::zip {

// What the directory says of a member. Nothing of it is verified.
struct Entry {
  std::string_view name;  // as it is in the file; belongs to the directory
  uint16_t flags;
  uint16_t method;
  uint64_t packedSize;
  uint64_t size;
  uint64_t localOffset;  // in the file

  bool IsFolder() const { return name.ends_with('/'); }
};

class Directory {
 public:
  // `work` is what its memory counts for, or null.
  explicit Directory(Work* work) : work_(work), held_(work) {}

  // Reads the directory at the end of a file of `fileSize` bytes. False when there is none, it is
  // beyond the limits or memory runs out. Called once. It ends where its bytes are no entry any
  // more.
  bool Load(const io::HandleReader& reader, uint64_t fileSize);

  // The same from the headers of the members, for a package without a directory: local_headers.h.
  bool Rebuild(const io::HandleReader& reader);

  uint32_t count() const { return count_; }

  // Makes it one without entries, and frees its memory.
  void Forget();

  // REQUIRES: index < count().
  Entry At(uint32_t index) const;

  // The first entry of that name, ASCII letters compared without regard to case. False when there
  // is none.
  bool Find(std::string_view name, Entry* entry) const;

 private:
  bool LoadPlace(const io::HandleReader& reader, uint64_t fileSize, DirectoryPlace* place);
  bool BuildIndex();
  uint8_t* NewBytes(uint64_t size);
  std::string_view NameAt(uint32_t index) const;

  Work* const work_;
  HeldMemory held_;
  const uint8_t* bytes_ = nullptr;
  uint64_t size_ = 0;
  uint64_t shift_ = 0;
  uint32_t count_ = 0;
  // For each entry its key and where it begins: two arrays, since a search goes through the keys.
  std::unique_ptr<uint32_t[]> index_;
  const uint32_t* keys_ = nullptr;
  const uint32_t* starts_ = nullptr;

  std::unique_ptr<uint8_t[]> block_;  // of a directory that begins before the tail
  std::array<uint8_t, kTailRead> tail_;
};

}  // namespace fi::zip

#endif  // FI_TOOLKIT_ZIP_DIRECTORY_H_
