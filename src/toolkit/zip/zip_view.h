// The view of a file as a ZIP package: a handle whose open operation opens members by their names.
// The view reads the file through the handle given, and only on demand: the central directory, and
// for each opened member the local header with the data behind.
#ifndef FI_TOOLKIT_ZIP_ZIP_VIEW_H_
#define FI_TOOLKIT_ZIP_ZIP_VIEW_H_

#include <array>
#include <cstdint>
#include <memory>
#include <span>

#include "formatid/io.h"
#include "toolkit/io/handle_reader.h"
#include "toolkit/io/positioned_handle.h"
#include "toolkit/zip/directory.h"
#include "toolkit/zip/inflater.h"
#include "toolkit/zip/limits.h"

namespace fi::zip {

// Opens `handle`, which is borrowed for the life of the view, as a package. `nesting` is the number
// of containers around it. Null stays in `*target` when it is no package or the limits refuse it.
int32_t OpenView(IOHandle* handle, uint32_t nesting, IOHandle** target);

// The same for a package without a usable directory.
int32_t OpenRepairedView(IOHandle* handle, uint32_t nesting, IOHandle** target);

class ZipView final : public io::PositionedHandle {
 public:
  ZipView(IOHandle* handle, uint32_t nesting);

  // Reads the directory. False when the bytes are no package.
  bool Load() { return directory_.Load(reader_, fileSize_); }

  // The same by the headers of the members.
  bool Rebuild() { return directory_.Rebuild(reader_); }

  const io::HandleReader& reader() const { return reader_; }

  // Bytes of the file from `offset` on, which stay until the next call: at least `least`, unless
  // the file ends before, and up to `most` if they have to be read. REQUIRES: least and most are
  // not above kInputBlock.
  // What is there already is not read again: in a deflated container that would be a move backward.
  std::span<const uint8_t> Input(uint64_t offset, uint32_t least, uint64_t most);

  // What the last Input left from `offset` on.
  std::span<const uint8_t> Kept(uint64_t offset) const;

  // An inflater at the start of a stream, null when memory runs out; and back, for the next member.
  std::unique_ptr<Inflater> TakeInflater();
  void GiveBack(std::unique_ptr<Inflater> inflater);

  // How many bytes may still be inflated, packed and inflated, and the report of those that were.
  // REQUIRES: packed <= packable().
  uint64_t packable() const { return packable_; }
  uint64_t inflatable() const { return inflatable_; }
  void CountInflated(uint64_t packed, uint64_t bytes) {
    packable_ -= packed;
    inflatable_ -= bytes < inflatable_ ? bytes : inflatable_;
    if (work() != nullptr) work()->SpendInflated(packed, bytes);
  }

  int32_t OtherInfo(uint32_t code, void* out) override;

 protected:
  int64_t Size() override { return static_cast<int64_t>(fileSize_); }
  int32_t ReadAt(int64_t offset, uint8_t* buffer, uint32_t size, uint32_t* count) override;
  int32_t OpenMember(IOHandle** target, const IOMemberSource& source) override;
  void ForgetNames() override { directory_.Forget(); }

 private:
  ~ZipView() override = default;

  int32_t TellName(IOMemberName* question);
  bool Locate(Entry* entry, uint64_t* data);

  const io::HandleReader reader_;
  const uint64_t fileSize_;
  Directory directory_;
  std::unique_ptr<Inflater> idle_;
  uint64_t packable_;
  uint64_t inflatable_ = kMaxInflatedByView;

  std::array<char, kMaxName + 1> name_;  // that was told last
  uint64_t inputOffset_ = 0;
  uint32_t inputSize_ = 0;
  std::array<uint8_t, kInputBlock> input_;
};

}  // namespace fi::zip

#endif  // FI_TOOLKIT_ZIP_ZIP_VIEW_H_
