// Base of the toolkit's handles. The base keeps position and name; a derived handle gives its size
// and reads bytes at an offset. Every handle can be opened further as a container (containers.h): a
// handle over a compound file is a structured storage, and a handle over bytes with a ZIP directory
// at the end opens as a package view. The first question examines the bytes; the handle keeps a
// negative answer too, since the question costs reads.
#ifndef FI_TOOLKIT_IO_POSITIONED_HANDLE_H_
#define FI_TOOLKIT_IO_POSITIONED_HANDLE_H_

#include <array>
#include <cstdint>
#include <memory>
#include <string_view>

#include "formatid/io.h"
#include "platform/work.h"
#include "toolkit/io/containers.h"

namespace fi::io {

// Where a handle comes from.
struct HandleOrigin {
  uint32_t nesting = 0;   // containers around its bytes
  Work* work = nullptr;   // borrowed: what its reads are counted for
  bool isSource = false;  // the file itself, not something inside of it
};

class PositionedHandle : public IOHandle {
 public:
  // `handle` as one of these; null when it is none.
  static const PositionedHandle* Of(const IOHandle* handle) {
    if (handle == nullptr || handle->operations != &kOperations) return nullptr;
    return static_cast<const PositionedHandle*>(handle);
  }

  PositionedHandle(const PositionedHandle&) = delete;
  PositionedHandle& operator=(const PositionedHandle&) = delete;

  // Lets a package view forget the names of its members.
  static int32_t ForgetNames(IOHandle* handle);

  // The number of containers around these bytes.
  uint32_t nesting() const { return origin_.nesting; }

  // Keeps the last component of `name`, cut at its front where it is too long for get-info 3.
  void TakeName(std::string_view name);

  // What the reads are counted for; null: nothing.
  Work* work() const { return origin_.work; }

 protected:
  explicit PositionedHandle(std::string_view name, const HandleOrigin& origin = {});
  virtual ~PositionedHandle();

  virtual int64_t Size() = 0;

  // Stores up to `size` bytes from `offset` (not negative) in the buffer, and their number in
  // `*count`. Returns 0 on success.
  virtual int32_t ReadAt(int64_t offset, uint8_t* buffer, uint32_t size, uint32_t* count) = 0;

  // The codes that differ by kind; everything else is answered by the base.
  virtual int32_t OtherInfo(uint32_t code, void* out);

  // The storage that the handle is, null when it is none.
  virtual StorageView* AsStorage();

  // Opens a member of a package view (formatid/io.h); other kinds have none. `*target` is null.
  virtual int32_t OpenMember(IOHandle** target, const IOMemberSource& source);

  // Frees what a package view knows of its members; other kinds know nothing.
  virtual void ForgetNames() {}

 private:
  static int32_t Close(IOHandle* handle) noexcept;
  static int32_t Read(IOHandle* handle, void* buffer, uint32_t size, uint32_t* count) noexcept;
  static int32_t Seek(IOHandle* handle, uint32_t origin, int32_t offset) noexcept;
  static int32_t Tell(IOHandle* handle, uint32_t* position) noexcept;
  static int32_t GetInfo(IOHandle* handle, uint32_t code, void* out) noexcept;
  static int32_t Open(IOHandle* handle, IOHandle** target, uint32_t sourceType, const void* source,
                      uint32_t flags) noexcept;
  static int32_t Seek64(IOHandle* handle, uint32_t origin, int64_t offset) noexcept;
  static int32_t Tell64(IOHandle* handle, int64_t* position) noexcept;

  static const IOHandleOperations kOperations;

  int32_t ReadCounted(uint8_t* buffer, uint32_t size, uint32_t* count);

  int64_t position_ = 0;
  const HandleOrigin origin_;
  bool askedForStorage_ = false;
  bool isNoPackage_ = false;  // it was asked for one, and no view opened
  std::unique_ptr<ContainedStorage> storage_;
  std::array<char, kIoNameCapacity> name_{};
};

}  // namespace fi::io

#endif  // FI_TOOLKIT_IO_POSITIONED_HANDLE_H_
