// Calls on an IO handle, with failures as results. The answers of a host's handle are checked here,
// so that a faulty handle cannot lead the library past its buffers.
#ifndef FI_PLATFORM_IO_H_
#define FI_PLATFORM_IO_H_

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <string_view>

#include "formatid/io.h"
#include "platform/no_throw.h"

extern "C" {

// Item 39 of a package view: the way of reading members. The views of this library have only one,
// so setting any value succeeds and changes nothing.
constexpr uint32_t kIoSetPackageMode = 39;

// Item 1001 of a package view of this library: no further member is asked for, so that what the
// view knows of them can go. Members that are open stay open.
constexpr uint32_t kIoSetNamesUnneeded = 1001;

// Sets an information item of a handle to `value`; `data` belongs to the item. 0 on success.
int32_t IOSetInfo(IOHandle* handle, uint32_t item, uint32_t value, const void* data) noexcept;

}  // extern "C"

namespace fi::io {

// The result of one operation of a handle. An operation of a C++ host that throws has failed.
template <class Operation>
int32_t ResultOf(Operation&& operation) {
  return NoThrow<int32_t>(-1, operation);
}

// Reads up to `size` bytes; the number stored, 0 at end of data and on failure.
inline uint32_t Read(IOHandle* handle, void* buffer, uint32_t size) {
  uint32_t count = 0;
  const auto read = [&] { return handle->operations->read(handle, buffer, size, &count); };
  if (ResultOf(read) != 0) return 0;
  return count <= size ? count : 0;
}

// Reads until `size` bytes are stored, the data ends or a read fails; the number stored.
inline size_t ReadFully(IOHandle* handle, uint8_t* buffer, size_t size) {
  size_t total = 0;
  while (total < size) {
    const auto most = static_cast<uint32_t>(std::min<size_t>(size - total, UINT32_MAX));
    const uint32_t count = Read(handle, buffer + total, most);
    if (count == 0) break;
    total += count;
  }
  return total;
}

// `offset` is signed when the origin is not the start: its 32 bits are passed as they are.
inline bool Seek(IOHandle* handle, uint32_t origin, uint32_t offset) {
  const auto target = static_cast<int32_t>(offset);
  return ResultOf([=] { return handle->operations->seek(handle, origin, target); }) == 0;
}

inline bool Tell(IOHandle* handle, uint32_t* position) {
  return ResultOf([=] { return handle->operations->tell(handle, position); }) == 0;
}

inline bool GetInfo(IOHandle* handle, uint32_t code, void* out) {
  return ResultOf([=] { return handle->operations->getInfo(handle, code, out); }) == 0;
}

inline bool Has64Bit(IOHandle* handle) {
  const IOHandleOperations& operations = *handle->operations;
  return operations.seek64 != nullptr && operations.tell64 != nullptr &&
         GetInfo(handle, kIoInfoHas64Bit, nullptr);
}

// REQUIRES: Has64Bit.
inline bool Seek64(IOHandle* handle, uint32_t origin, int64_t offset) {
  return ResultOf([=] { return handle->operations->seek64(handle, origin, offset); }) == 0;
}

// REQUIRES: Has64Bit.
inline bool Tell64(IOHandle* handle, int64_t* position) {
  return ResultOf([=] { return handle->operations->tell64(handle, position); }) == 0;
}

struct HandleCloser {
  void operator()(IOHandle* handle) const {
    (void)ResultOf([=] { return handle->operations->close(handle); });
  }
};

// A handle that the library opened and closes.
using OwnedHandle = std::unique_ptr<IOHandle, HandleCloser>;

// The member `path` of the package view `package`, which must outlive it; null when there is none.
// `status`, where it is not null, receives the result of the open operation.
inline OwnedHandle OpenMember(IOHandle* package, std::string_view path, int32_t* status = nullptr) {
  IOMemberSource source;
  source.parent = package;
  source.position = -1;
  source.working[0] = source.working[1] = 0;
  IOHandle* member = nullptr;
  int32_t result = kIoNotFound;
  if (path.size() < sizeof source.path) {
    std::memcpy(source.path, path.data(), path.size());
    source.path[path.size()] = '\0';
    result = package->operations->open(package, &member, kIoSourcePackageMember, &source, 0);
  }
  if (status != nullptr) *status = result;
  return OwnedHandle(result == kIoOk ? member : nullptr);
}

}  // namespace fi::io

#endif  // FI_PLATFORM_IO_H_
