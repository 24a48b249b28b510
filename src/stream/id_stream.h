// The identification stream: a small buffered byte reader over an IO handle, through which every
// probe reads. The handle's position is compared and put right before each refill, so that a probe
// may move the handle itself, or hand it to other code, between two reads.
//
// A stream belongs to one thread. It borrows the handle and never closes it.
#ifndef FI_STREAM_ID_STREAM_H_
#define FI_STREAM_ID_STREAM_H_

#include <cstddef>
#include <cstdint>

#include "formatid/io.h"
#include "stream/identification_job.h"

namespace fi {

// What a program or probe answers when the file is not of its format; never a FormatId.
inline constexpr uint16_t kNoMatch = 0;

// What a byte read gives at end of data and on a read error; never a byte.
inline constexpr uint32_t kEndOfData = 0xFFFF;

// Buffer size while option 112 is not set, in bytes.
inline constexpr uint32_t kDefaultStreamBuffer = 2 * 1024;

struct IdentificationStream {
  int32_t remaining;    // bytes of the buffer not yet handed out; negative: a refill is due
  uint32_t filled;      // valid bytes in the buffer
  int64_t bufferPos;    // file offset of the buffer's first byte
  const uint8_t* next;  // the next byte to hand out
  IOHandle* handle;
  uint8_t* buffer;               // owned
  uint32_t bufferSize;           // bytes
  const IdentificationJob* job;  // borrowed; never null
};

// Makes a stream over `handle`, which it takes to stand at the start of the file. Null when memory
// runs out or `handle` is null. Released by IdStreamClose. `job` must outlive the stream.
IdentificationStream* IdStreamOpen(IOHandle* handle, const IdentificationJob& job = kNoJob);

// Releases the stream and returns its handle, which stays open.
IOHandle* IdStreamClose(IdentificationStream* stream);

// Refills the buffer at the position behind it and returns its first byte, or kEndOfData.
uint32_t IdStreamFill(IdentificationStream* stream);

// The next byte, or kEndOfData.
inline uint32_t IdStreamGetByte(IdentificationStream* stream) {
  return --stream->remaining >= 0 ? *stream->next++ : IdStreamFill(stream);
}

// Offset in the file of the next byte.
inline int64_t IdStreamPosition(const IdentificationStream* stream) {
  return stream->bufferPos + stream->filled - stream->remaining;
}

// If `target` lies inside the buffer, makes it the next byte without touching the handle.
inline bool IdStreamReposition(IdentificationStream* stream, int64_t target) {
  // Unsigned, so that a target before the buffer wraps to a distance beyond it.
  const uint64_t distance =
      static_cast<uint64_t>(target) - static_cast<uint64_t>(stream->bufferPos);
  if (distance >= stream->filled) return false;
  const auto offset = static_cast<uint32_t>(distance);
  stream->remaining = static_cast<int32_t>(stream->filled - offset);
  stream->next = stream->buffer + offset;
  return true;
}

// Move the stream: origin 0 from the start, 1 from the current position, 2 from the end. 0 on
// success, -1 when the handle refuses. Past the end is no failure: reads then give kEndOfData. The
// 32-bit form keeps to the handle's 32-bit operations.
int32_t IdStreamSeek(IdentificationStream* stream, int64_t offset, uint16_t origin);
int32_t IdStreamSeek32(IdentificationStream* stream, uint32_t offset, uint16_t origin);

// 16-bit words, 0..65535, or -1 at end of data; the bytes that were there are consumed.
int32_t IdStreamGetWordLE(IdentificationStream* stream);
int32_t IdStreamGetWordBE(IdentificationStream* stream);

// 32-bit words: 0 with `*value` set, or -1 with `*value` untouched.
int32_t IdStreamGetDwordLE(IdentificationStream* stream, uint32_t* value);
int32_t IdStreamGetDwordBE(IdentificationStream* stream, uint32_t* value);

// A big-endian 32-bit word without a test for the end of data: a byte past the end sets its own
// place and all higher bits to ones. For a caller that has made sure of the length.
uint32_t IdStreamReadDwordBE(IdentificationStream* stream);

// Reads and drops `count` bytes. 0, or kEndOfData as soon as the data ends.
uint32_t IdStreamSkip(uint16_t count, IdentificationStream* stream);

// Seeks on the handle itself, outside any stream. 0 on success, else -1.
int32_t IoHandleSeek(IOHandle* handle, uint32_t offset, uint16_t origin);

// Whether each of the first `count` bytes lies in 1..127; true for a count of 0.
bool IsPlainAsciiPrefix(const uint8_t* bytes, uint16_t count);

// Opens a stream for a scope and releases it at its end.
class ScopedStream {
 public:
  explicit ScopedStream(IOHandle* handle, const IdentificationJob& job = kNoJob)
      : stream_(IdStreamOpen(handle, job)) {}
  ~ScopedStream() {
    if (stream_ != nullptr) IdStreamClose(stream_);
  }
  ScopedStream(const ScopedStream&) = delete;
  ScopedStream& operator=(const ScopedStream&) = delete;

  explicit operator bool() const { return stream_ != nullptr; }
  IdentificationStream* get() const { return stream_; }

 private:
  IdentificationStream* stream_;
};

}  // namespace fi

#endif  // FI_STREAM_ID_STREAM_H_
