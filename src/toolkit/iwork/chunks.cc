// The framing of an iWork archive: chunks of a zero byte, the length of what follows in 24 bits
// (little-endian), and a raw Snappy block. Unlike in Snappy's own framing there is no identifier in
// front, and there are no checksums.
#include <algorithm>
#include <array>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <new>

#include "platform/io.h"
#include "platform/iwork.h"
#include "platform/iwork_module.h"

namespace fi::iwork {
namespace {

constexpr size_t kChunkHeader = 4;
constexpr uint8_t kSnappyChunk = 0;

// The most that a byte of a Snappy block yields: a copy of 64 bytes takes three.
constexpr size_t kMostExpansion = 22;

constexpr uint32_t kFirstCapacity = uint32_t{64} * 1024;

// Room for `size` bytes more. The old block is wiped, which realloc would not do.
bool Grow(FUTBuffer* buffer, size_t size) {
  if (size > kFutMostBytes - buffer->length) return false;
  const auto needed = static_cast<uint32_t>(buffer->length + size);
  if (needed <= buffer->capacity) return true;
  const uint32_t doubled =
      std::max(2 * std::min(buffer->capacity, kFutMostBytes / 2), kFirstCapacity);
  FUTBuffer larger{nullptr, buffer->length, std::max(needed, doubled)};
  larger.start = static_cast<uint8_t*>(std::malloc(larger.capacity));
  if (larger.start == nullptr) return false;
  std::copy_n(buffer->start, buffer->length, larger.start);
  FUTFreeBuf(buffer);
  *buffer = larger;
  return true;
}

bool AppendBlock(const IworkModule& module, const uint8_t* block, size_t size, FUTBuffer* buffer) {
  size_t contentSize = 0;
  if (!module.readBlockSize(block, size, &contentSize)) return false;
  if (contentSize > kMostExpansion * size || !Grow(buffer, contentSize)) return false;
  uint8_t* const content = buffer->start + buffer->length;
  if (!module.readBlock(block, size, content, contentSize)) {
    // Without content there may be no buffer.
    if (contentSize > 0) explicit_bzero(content, contentSize);
    return false;
  }
  buffer->length += static_cast<uint32_t>(contentSize);
  return true;
}

int32_t AppendChunk(IOHandle* archive, FUTBuffer* buffer) {
  std::array<uint8_t, kChunkHeader> header{};
  const size_t read = io::ReadFully(archive, header.data(), kChunkHeader);
  if (read == 0) return kFutEndOfData;
  if (read < kChunkHeader || header[0] != kSnappyChunk) return kFutDamaged;
  const IworkModule* module = LoadIworkModule();
  if (module == nullptr) return kFutDamaged;
  const uint32_t size = uint32_t{header[1]} | uint32_t{header[2]} << 8 | uint32_t{header[3]} << 16;
  const std::unique_ptr<uint8_t[]> block(new (std::nothrow) uint8_t[size]);
  if (block == nullptr) return kFutDamaged;
  const size_t stored = io::ReadFully(archive, block.get(), size);
  const bool appended = stored == size && AppendBlock(*module, block.get(), size, buffer);
  explicit_bzero(block.get(), stored);
  return appended ? 0 : kFutDamaged;
}

}  // namespace
}  // namespace fi::iwork

int32_t FUTDecompSnappyToBuf(IOHandle* archive, FUTBuffer* buffer) noexcept {
  return fi::iwork::AppendChunk(archive, buffer);
}

void FUTFreeBuf(FUTBuffer* buffer) noexcept {
  if (buffer->start != nullptr) explicit_bzero(buffer->start, buffer->length);
  std::free(buffer->start);
  *buffer = {};
}
