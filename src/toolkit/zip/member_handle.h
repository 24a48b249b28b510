// Handles on the members of a ZIP package view. The size is the one that the directory claims;
// reads end there, or before, where the data does. Checksums are not compared. The packed data
// lies within the file.
#ifndef FI_TOOLKIT_ZIP_MEMBER_HANDLE_H_
#define FI_TOOLKIT_ZIP_MEMBER_HANDLE_H_

#include <cstdint>
#include <memory>
#include <string_view>

#include "toolkit/io/positioned_handle.h"
#include "toolkit/zip/directory.h"
#include "toolkit/zip/inflater.h"
#include "toolkit/zip/zip_view.h"

namespace fi::zip {

// What members have in common. `view` is borrowed.
class MemberHandle : public io::PositionedHandle {
 protected:
  MemberHandle(ZipView& view, std::string_view name, uint64_t size);
  ~MemberHandle() override = default;

  int64_t Size() override { return static_cast<int64_t>(size_); }
  int32_t OtherInfo(uint32_t code, void* out) override;

  ZipView& view_;
  const uint64_t size_;  // fits in int64_t
};

// A folder: it has a name and no bytes.
class FolderHandle final : public MemberHandle {
 public:
  FolderHandle(ZipView& view, std::string_view name) : MemberHandle(view, name, 0) {}

 protected:
  int32_t ReadAt(int64_t offset, uint8_t* buffer, uint32_t size, uint32_t* count) override;

 private:
  ~FolderHandle() override = default;
};

// A member that is stored as it is, from `data` on.
class StoredHandle final : public MemberHandle {
 public:
  StoredHandle(ZipView& view, const Entry& entry, uint64_t data);

 protected:
  int32_t ReadAt(int64_t offset, uint8_t* buffer, uint32_t size, uint32_t* count) override;

 private:
  ~StoredHandle() override = default;

  const uint64_t data_;
};

// A deflated member, whose packed bytes begin at `data`. It is inflated as it is read. A move
// forward inflates what lies between; a move backward begins anew.
class DeflatedHandle final : public MemberHandle {
 public:
  DeflatedHandle(ZipView& view, const Entry& entry, uint64_t data);

 protected:
  int32_t ReadAt(int64_t offset, uint8_t* buffer, uint32_t size, uint32_t* count) override;

 private:
  ~DeflatedHandle() override;

  bool Restart();
  uint32_t Inflate(uint8_t* buffer, uint32_t size);
  bool SkipTo(uint64_t offset);
  bool Keep();

  const uint64_t data_;
  const uint64_t packedSize_;
  const uint64_t readable_;  // bytes, by the claimed size and the limits
  uint64_t consumed_ = 0;    // packed bytes
  uint64_t at_ = 0;          // inflated bytes
  bool ended_ = false;
  std::unique_ptr<Inflater> inflater_;
  uint32_t kept_ = 0;
  std::unique_ptr<uint8_t[]> content_;  // of a small member, once it was read
};

}  // namespace fi::zip

#endif  // FI_TOOLKIT_ZIP_MEMBER_HANDLE_H_
