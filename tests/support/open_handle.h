// Opens handles on memory and on children of storages, and reads them to their end. Data to read.
#ifndef FI_TESTS_SUPPORT_OPEN_HANDLE_H_
#define FI_TESTS_SUPPORT_OPEN_HANDLE_H_

#include <array>
#include <cstdint>
#include <string>

#include "formatid/io.h"
#include "platform/io.h"

namespace fi::testing {

// `bytes` must outlive the handle.
inline io::OwnedHandle OpenMemory(const std::string& bytes, const char* name = nullptr) {
  const IOMemorySource source = {bytes.data(), bytes.size(), name};
  IOHandle* handle = nullptr;
  (void)IOOpen(&handle, kIoSourceMemory, &source, 1);
  return io::OwnedHandle(handle);
}

// Null when there is no such child; the result of the operation goes to `*result`.
inline io::OwnedHandle OpenChild(IOHandle* parent, uint32_t type, const char* name,
                                 int32_t* result = nullptr) {
  const IOChildSource source = {parent, name};
  IOHandle* child = nullptr;
  const int32_t status = parent->operations->open(parent, &child, type, &source, 1);
  if (result != nullptr) *result = status;
  return io::OwnedHandle(child);
}

inline io::OwnedHandle OpenStream(IOHandle* parent, const char* name) {
  return OpenChild(parent, kIoSourceStorageStream, name);
}

inline io::OwnedHandle OpenFolder(IOHandle* parent, const char* name) {
  return OpenChild(parent, kIoSourceSubStorage, name);
}

// The file name that the handle tells.
inline std::string NameOf(IOHandle* handle) {
  std::array<char, kIoNameCapacity> name;
  return io::GetInfo(handle, kIoInfoFileName, name.data()) ? name.data() : "no name";
}

// Bytes without order, the same ones for the same seed.
inline std::string Pattern(size_t size, uint32_t seed) {
  std::string bytes(size, '\0');
  for (char& byte : bytes) {
    seed = seed * 1664525 + 1013904223;
    byte = static_cast<char>(seed >> 24);
  }
  return bytes;
}

// What the handle yields from `offset` on, `piece` bytes at a time, but not more than `limit`.
inline std::string ReadFrom(IOHandle* handle, int64_t offset, uint32_t piece,
                            size_t limit = size_t{1} << 30) {
  std::string bytes;
  if (!io::Seek64(handle, kIoFromStart, offset)) return bytes;
  std::string buffer(piece, '\0');
  while (bytes.size() < limit) {
    const uint32_t got = io::Read(handle, buffer.data(), piece);
    if (got == 0) break;
    bytes.append(buffer, 0, got);
  }
  return bytes;
}

}  // namespace fi::testing

#endif  // FI_TESTS_SUPPORT_OPEN_HANDLE_H_
