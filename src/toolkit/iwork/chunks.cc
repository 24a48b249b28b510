// The framing of an iWork archive: chunks of a zero byte, the length of what follows in 24 bits
// (little-endian), and a raw Snappy block. Unlike in Snappy's own framing there is no identifier in
// front, and there are no checksums.
#include <algorithm>
#include <array>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <new>
#include <span>

#include "platform/io.h"
#include "platform/iwork.h"
#include "platform/iwork_module.h"
#include "platform/work.h"

namespace fi::iwork {
namespace {

constexpr size_t kChunkHeader = 4;
constexpr uint8_t kSnappyChunk = 0;

// The most that a byte of a Snappy block yields: a copy of 64 bytes takes three.
constexpr size_t kMostExpansion = 22;

// What applications write in a chunk, at most.
constexpr uint32_t kUsualContent = uint32_t{64} * 1024;

void WipeAndFree(FUTBuffer* buffer) {
  if (buffer->start != nullptr) explicit_bzero(buffer->start, buffer->length);
  std::free(buffer->start);
  buffer->start = nullptr;
  buffer->length = buffer->capacity = 0;
}

// An empty buffer with room for `size` bytes. The one before goes first.
bool MakeRoom(Work* work, FUTBuffer* buffer, uint32_t size) {
  if (size <= buffer->capacity) {
    if (buffer->length > 0) explicit_bzero(buffer->start, buffer->length);
    buffer->length = 0;
    return true;
  }
  WipeAndFree(buffer);
  const uint32_t capacity = std::max(size, kUsualContent);
  buffer->start = static_cast<uint8_t*>(Allocated(work, std::malloc(capacity)));
  if (buffer->start == nullptr) return false;
  buffer->capacity = capacity;
  return true;
}

bool CheckUnwanted(const IworkModule& module, std::span<const uint8_t> block, uint32_t contentSize,
                   FUTBuffer* buffer) {
  if (!module.checkBlock(block.data(), block.size())) return false;
  buffer->unwanted -= contentSize;
  return true;
}

bool ReadBlock(const IworkModule& module, Work* work, std::span<const uint8_t> block,
               FUTBuffer* buffer) {
  size_t contentSize = 0;
  if (!module.readBlockSize(block.data(), block.size(), &contentSize)) return false;
  if (contentSize > kMostExpansion * block.size()) return false;
  if (contentSize > kFutMostBytes - buffer->total) return false;
  const auto size = static_cast<uint32_t>(contentSize);
  const bool isUnwanted = size <= buffer->unwanted;
  if (work != nullptr) {
    if (work->Inflatable() == 0) return false;
    work->SpendInflated(0, isUnwanted ? block.size() : size);
  }
  // The blocks of a hostile archive are large, so that both count; a buffer of the usual size, for
  // the next chunks too, does not.
  HeldMemory held(work);
  if (!held.Hold(block.size() + (isUnwanted ? 0 : size)) ||
      !MakeRoom(work, buffer, isUnwanted ? 0 : size)) {
    return false;
  }
  buffer->total += size;
  if (isUnwanted) return CheckUnwanted(module, block, size, buffer);
  buffer->unwanted -= std::min<uint64_t>(buffer->unwanted, size);
  buffer->length = size;
  return module.readBlock(block.data(), block.size(), buffer->start, size);
}

int32_t ReadChunk(IOHandle* archive, FUTBuffer* buffer) {
  std::array<uint8_t, kChunkHeader> header{};
  const size_t read = io::ReadFully(archive, header.data(), kChunkHeader);
  if (read == 0) return kFutEndOfData;
  if (read < kChunkHeader || header[0] != kSnappyChunk) return kFutDamaged;
  Work* const work = WorkOf(archive);
  const IworkModule* module = Loaded(work, LoadIworkModule());
  if (module == nullptr) return kFutDamaged;
  const uint32_t size = uint32_t{header[1]} | uint32_t{header[2]} << 8 | uint32_t{header[3]} << 16;
  const std::unique_ptr<uint8_t[]> block(Allocated(work, new (std::nothrow) uint8_t[size]));
  if (block == nullptr) return kFutDamaged;
  const size_t stored = io::ReadFully(archive, block.get(), size);
  const bool isRead = stored == size && ReadBlock(*module, work, {block.get(), size}, buffer);
  explicit_bzero(block.get(), stored);
  return isRead ? 0 : kFutDamaged;
}

}  // namespace
}  // namespace fi::iwork

int32_t FUTDecompSnappyToBuf(IOHandle* archive, FUTBuffer* buffer) noexcept {
  return fi::iwork::ReadChunk(archive, buffer);
}

void FUTFreeBuf(FUTBuffer* buffer) noexcept {
  fi::iwork::WipeAndFree(buffer);
  *buffer = {};
}
