#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <climits>
#include <cstdint>
#include <limits>
#include <new>
#include <string_view>

#include "formatid/io.h"
#include "platform/work.h"
#include "toolkit/io/file_handle.h"
#include "toolkit/io/memory_handle.h"

namespace fi::io {
namespace {

using PathBuffer = std::array<char, PATH_MAX>;

int32_t Fail(int error) {
  errno = error;
  switch (error) {
    case ENOENT:
    case ENOTDIR:
      return kIoNotFound;
    case EACCES:
    case EPERM:
      return kIoAccessDenied;
    default:
      return kIoError;
  }
}

// Takes `handle`, which is null when memory ran out.
int32_t Finish(IOHandle** out, IOHandle* handle) {
  if (handle == nullptr) return Fail(ENOMEM);
  *out = handle;
  return kIoOk;
}

int32_t CheckRegular(const struct stat& status) {
  if (S_ISREG(status.st_mode)) return kIoOk;
  return Fail(S_ISDIR(status.st_mode) ? EISDIR : ESPIPE);
}

// Asks what the path names before opening it: opening a fifo or a device can wait, or disturb
// whoever is at the other end. Should the path change in between, O_NONBLOCK keeps the open from
// waiting, and the reads that follow are bounded whatever it now names; to ask again would cost
// each file a call.
int32_t OpenPath(IOHandle** out, const char* path, Work* work) {
  struct stat status;
  if (::stat(path, &status) != 0) return Fail(errno);
  if (const int32_t result = CheckRegular(status); result != kIoOk) return result;
  const int descriptor = ::open(path, O_RDONLY | O_CLOEXEC | O_NOCTTY | O_NONBLOCK);
  if (descriptor < 0) return Fail(errno);
  const int32_t result =
      Finish(out, new (std::nothrow)
                      FileHandle(descriptor, DescriptorUse::kOwned, status.st_size, path, work));
  if (result != kIoOk) ::close(descriptor);
  return result;
}

// Appends the UTF-8 form of one code point. False when the buffer is full.
bool AppendUtf8(PathBuffer& buffer, size_t& length, uint32_t point) {
  if (length + 4 >= buffer.size()) return false;
  const auto put = [&](uint32_t byte) { buffer[length++] = static_cast<char>(byte); };
  if (point < 0x80) {
    put(point);
    return true;
  }
  if (point < 0x800) {
    put(0xC0 | point >> 6);
  } else {
    if (point < 0x10000) {
      put(0xE0 | point >> 12);
    } else {
      put(0xF0 | point >> 18);
      put(0x80 | (point >> 12 & 0x3F));
    }
    put(0x80 | (point >> 6 & 0x3F));
  }
  put(0x80 | (point & 0x3F));
  return true;
}

int32_t OpenWidePath(IOHandle** out, const uint16_t* path, Work* work) {
  PathBuffer buffer;
  size_t length = 0;
  for (; *path != 0; ++path) {
    uint32_t point = *path;
    if (point >= 0xD800 && point < 0xE000) {
      const uint32_t low = path[1];
      if (point >= 0xDC00 || low < 0xDC00 || low >= 0xE000) return Fail(EILSEQ);
      point = 0x10000 + ((point - 0xD800) << 10) + (low - 0xDC00);
      ++path;
    }
    if (!AppendUtf8(buffer, length, point)) return Fail(ENAMETOOLONG);
  }
  buffer[length] = '\0';
  return OpenPath(out, buffer.data(), work);
}

std::string_view NameOf(const char* name) {
  return name == nullptr ? std::string_view() : std::string_view(name);
}

int32_t OpenMemory(IOHandle** out, const IOMemorySource& source, Work* work) {
  if (source.data == nullptr && source.size != 0) return Fail(EINVAL);
  if (source.size > static_cast<uint64_t>(std::numeric_limits<int64_t>::max())) return Fail(EINVAL);
  return Finish(out, new (std::nothrow) MemoryHandle(static_cast<const uint8_t*>(source.data),
                                                     source.size, NameOf(source.name), work));
}

int32_t OpenDescriptor(IOHandle** out, const IODescriptorSource& source, Work* work) {
  struct stat status;
  if (::fstat(source.descriptor, &status) != 0) return Fail(errno);
  if (const int32_t result = CheckRegular(status); result != kIoOk) return result;
  return Finish(out, new (std::nothrow) FileHandle(source.descriptor, DescriptorUse::kBorrowed,
                                                   status.st_size, NameOf(source.name), work));
}

int32_t Open(IOHandle** handle, uint32_t sourceType, const void* source, Work* work) {
  if (handle == nullptr) return Fail(EINVAL);
  *handle = nullptr;
  if (source == nullptr) return Fail(EINVAL);
  switch (sourceType) {
    case kIoSourcePath:
      return OpenPath(handle, static_cast<const char*>(source), work);
    case kIoSourceWidePath:
      return OpenWidePath(handle, static_cast<const uint16_t*>(source), work);
    case kIoSourceMemory:
      return OpenMemory(handle, *static_cast<const IOMemorySource*>(source), work);
    case kIoSourceDescriptor:
      return OpenDescriptor(handle, *static_cast<const IODescriptorSource*>(source), work);
    default:
      return Fail(EINVAL);
  }
}

}  // namespace
}  // namespace fi::io

int32_t IOOpen(IOHandle** handle, uint32_t sourceType, const void* source,
               uint32_t /*mode*/) noexcept {
  return fi::io::Open(handle, sourceType, source, nullptr);
}

int32_t fi::OpenSource(IOHandle** handle, uint32_t sourceType, const void* source,
                       Work* work) noexcept {
  return io::Open(handle, sourceType, source, work);
}
