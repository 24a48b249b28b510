#include "stream/id_stream.h"

#include <cstdlib>

#include "formatid/platform.h"
#include "platform/io.h"
#include "platform/work.h"

namespace fi {
namespace {

constexpr uint32_t kOptionSizeSlot = 16;
constexpr uint32_t kMaxBufferKilobytes = 65536;

uint32_t BufferSize() {
  uint32_t value[kOptionSizeSlot / sizeof(uint32_t)] = {};
  uint32_t size = kOptionSizeSlot;
  if (UTGetGlobalOption(kUtOptionBufferSize, value, &size) != 0) return kDefaultStreamBuffer;
  if (value[0] == 0 || value[0] > kMaxBufferKilobytes) return kDefaultStreamBuffer;
  return value[0] * 1024;
}

void Empty(IdentificationStream* stream) {
  stream->remaining = 0;
  stream->filled = 0;
}

// Puts the handle where the buffer ends. False when it refuses.
bool Resynchronise(const IdentificationStream* stream) {
  IOHandle* handle = stream->handle;
  if (io::Has64Bit(handle)) {
    int64_t position = 0;
    (void)io::Tell64(handle, &position);
    return position == stream->bufferPos || io::Seek64(handle, kIoFromStart, stream->bufferPos);
  }
  uint32_t position = 0;
  (void)io::Tell(handle, &position);
  const auto target = static_cast<uint32_t>(stream->bufferPos);
  return position == target || io::Seek(handle, kIoFromStart, target);
}

}  // namespace

IdentificationStream* IdStreamOpen(IOHandle* handle, const IdentificationJob& job) {
  if (handle == nullptr || handle->operations == nullptr) return nullptr;
  const uint32_t bufferSize = BufferSize();
  auto* stream = static_cast<IdentificationStream*>(std::calloc(1, sizeof(IdentificationStream)));
  if (stream == nullptr) return Allocated(WorkOf(handle), stream);
  stream->buffer = static_cast<uint8_t*>(std::calloc(1, bufferSize));
  if (stream->buffer == nullptr) {
    std::free(stream);
    return Allocated(WorkOf(handle), static_cast<IdentificationStream*>(nullptr));
  }
  stream->next = stream->buffer;
  stream->bufferSize = bufferSize;
  stream->handle = handle;
  stream->job = &job;
  return stream;
}

IOHandle* IdStreamClose(IdentificationStream* stream) {
  IOHandle* handle = stream->handle;
  std::free(stream->buffer);
  std::free(stream);
  return handle;
}

uint32_t IdStreamFill(IdentificationStream* stream) {
  stream->bufferPos += stream->filled;
  stream->filled = 0;
  if (Resynchronise(stream)) {
    stream->filled = io::Read(stream->handle, stream->buffer, stream->bufferSize);
  }
  stream->next = stream->buffer + 1;
  if (stream->filled == 0) {
    stream->remaining = 0;
    return kEndOfData;
  }
  stream->remaining = static_cast<int32_t>(stream->filled - 1);
  return stream->buffer[0];
}

int32_t IdStreamSeek(IdentificationStream* stream, int64_t offset, uint16_t origin) {
  IOHandle* handle = stream->handle;
  if (!io::Has64Bit(handle)) {
    return IdStreamSeek32(stream, static_cast<uint32_t>(offset), origin);
  }
  int64_t target = offset;
  if (origin == kIoFromCurrent) {
    if (__builtin_add_overflow(IdStreamPosition(stream), offset, &target)) return -1;
  } else if (origin == kIoFromEnd) {
    if (!io::Seek64(handle, kIoFromEnd, offset) || !io::Tell64(handle, &target)) return -1;
  }
  if (IdStreamReposition(stream, target)) return 0;
  Empty(stream);
  stream->bufferPos = target;
  return io::Seek64(handle, kIoFromStart, target) ? 0 : -1;
}

int32_t IdStreamSeek32(IdentificationStream* stream, uint32_t offset, uint16_t origin) {
  IOHandle* handle = stream->handle;
  uint32_t target = offset;
  if (origin == kIoFromCurrent) {
    target = static_cast<uint32_t>(IdStreamPosition(stream)) + offset;
  } else if (origin == kIoFromEnd) {
    if (!io::Seek(handle, kIoFromEnd, offset) || !io::Tell(handle, &target)) return -1;
  }
  if (IdStreamReposition(stream, target)) return 0;
  Empty(stream);
  stream->bufferPos = target;
  return io::Seek(handle, kIoFromStart, target) ? 0 : -1;
}

int32_t IdStreamGetWordLE(IdentificationStream* stream) {
  const uint32_t low = IdStreamGetByte(stream);
  if (low == kEndOfData) return -1;
  const uint32_t high = IdStreamGetByte(stream);
  if (high == kEndOfData) return -1;
  return static_cast<int32_t>(low | high << 8);
}

int32_t IdStreamGetWordBE(IdentificationStream* stream) {
  const uint32_t high = IdStreamGetByte(stream);
  if (high == kEndOfData) return -1;
  const uint32_t low = IdStreamGetByte(stream);
  if (low == kEndOfData) return -1;
  return static_cast<int32_t>(high << 8 | low);
}

int32_t IdStreamGetDwordLE(IdentificationStream* stream, uint32_t* value) {
  const int32_t low = IdStreamGetWordLE(stream);
  if (low < 0) return -1;
  const int32_t high = IdStreamGetWordLE(stream);
  if (high < 0) return -1;
  *value = static_cast<uint32_t>(low) | static_cast<uint32_t>(high) << 16;
  return 0;
}

int32_t IdStreamGetDwordBE(IdentificationStream* stream, uint32_t* value) {
  const int32_t high = IdStreamGetWordBE(stream);
  if (high < 0) return -1;
  const int32_t low = IdStreamGetWordBE(stream);
  if (low < 0) return -1;
  *value = static_cast<uint32_t>(high) << 16 | static_cast<uint32_t>(low);
  return 0;
}

uint32_t IdStreamReadDwordBE(IdentificationStream* stream) {
  uint32_t value = 0;
  for (uint32_t shift = 32; shift > 0;) {
    shift -= 8;
    const uint32_t byte = IdStreamGetByte(stream);
    value |= (byte == kEndOfData ? 0xFFFFFFFFu : byte) << shift;
  }
  return value;
}

uint32_t IdStreamSkip(uint16_t count, IdentificationStream* stream) {
  for (; count > 0; --count) {
    if (IdStreamGetByte(stream) == kEndOfData) return kEndOfData;
  }
  return 0;
}

int32_t IoHandleSeek(IOHandle* handle, uint32_t offset, uint16_t origin) {
  return io::Seek(handle, origin, offset) ? 0 : -1;
}

bool IsPlainAsciiPrefix(const uint8_t* bytes, uint16_t count) {
  for (uint16_t i = 0; i < count; ++i) {
    if (bytes[i] == 0 || bytes[i] > 127) return false;
  }
  return true;
}

}  // namespace fi
