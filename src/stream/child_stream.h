// The streams and storages inside a compound document, opened for a scope.
#ifndef FI_STREAM_CHILD_STREAM_H_
#define FI_STREAM_CHILD_STREAM_H_

#include <cstdint>

#include "formatid/io.h"
#include "platform/io.h"
#include "stream/id_stream.h"

namespace fi {

// How children are opened.
inline constexpr uint32_t kOpenForReading = 1;

inline bool IsStorage(IOHandle* handle) { return io::GetInfo(handle, kIoInfoIsStorage, nullptr); }

// The stream (kIoSourceStorageStream) or storage (kIoSourceSubStorage) `name` of `parent`, which
// must outlive it; null when there is none.
inline io::OwnedHandle OpenChild(IOHandle* parent, uint32_t type, const char* name,
                                 uint32_t flags = kOpenForReading) {
  const IOChildSource source{parent, name};
  IOHandle* child = nullptr;
  if (parent->operations->open(parent, &child, type, &source, flags) != 0) return nullptr;
  return io::OwnedHandle(child);
}

inline bool HasStream(IOHandle* parent, const char* name) {
  return OpenChild(parent, kIoSourceStorageStream, name) != nullptr;
}

inline bool HasSubStorage(IOHandle* parent, const char* name) {
  return OpenChild(parent, kIoSourceSubStorage, name) != nullptr;
}

// A stream of a compound document with its bytes; false when the document has none of that name.
class ChildStream {
 public:
  ChildStream(IOHandle* parent, const char* name, uint32_t flags = kOpenForReading)
      : handle_(OpenChild(parent, kIoSourceStorageStream, name, flags)), stream_(handle_.get()) {}

  explicit operator bool() const { return static_cast<bool>(stream_); }
  IdentificationStream* get() const { return stream_.get(); }

 private:
  io::OwnedHandle handle_;
  ScopedStream stream_;  // over the handle, and gone before it
};

}  // namespace fi

#endif  // FI_STREAM_CHILD_STREAM_H_
