// Compound files: opens the names that documents have, in every storage that it comes to and in the
// files embedded in streams, and reads the streams to their end.
#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

#include "formatid/io.h"
#include "fuzz/input_handle.h"
#include "platform/io.h"
#include "toolkit/storage/storage.h"

namespace {

using fi::fuzzing::InputHandle;
using fi::io::OwnedHandle;

constexpr const char* kStreams[] = {"WordDocument", "\005SummaryInformation",
                                    "Workbook",     "PowerPoint Document",
                                    "1Table",       "Contents",
                                    "embedded",     "a"};
constexpr const char* kFolders[] = {"ObjectPool", "\006DataSpaces", "sub", "b"};

constexpr int kMaxDepth = 6;     // storages in storages
constexpr int kMaxHandles = 64;  // opened for one input

void Require(bool holds) {
  if (!holds) __builtin_trap();
}

class Walk {
 public:
  explicit Walk(InputHandle& input, size_t size) : input_(input), sectors_(size / 512 + 1) {}

  void Storage(IOHandle* storage, int depth) {
    std::array<uint8_t, 16> classId;
    const bool isStorage = fi::io::GetInfo(storage, kIoInfoIsStorage, nullptr);
    Require(isStorage == fi::io::GetInfo(storage, kIoInfoClassId, classId.data()));
    if (!isStorage || depth == kMaxDepth) return;
    for (const char* name : kStreams) {
      if (const OwnedHandle stream = Open(storage, kIoSourceStorageStream, name)) {
        Stream(stream.get());
        Storage(stream.get(), depth + 1);
      }
    }
    for (const char* name : kFolders) {
      if (const OwnedHandle folder = Open(storage, kIoSourceSubStorage, name)) {
        Storage(folder.get(), depth + 1);
      }
    }
  }

 private:
  OwnedHandle Open(IOHandle* storage, uint32_t type, const char* name) {
    if (handles_ == kMaxHandles) return nullptr;
    const IOChildSource source = {storage, name};
    IOHandle* child = nullptr;
    const uint64_t before = input_.reads;
    const int32_t result = storage->operations->open(storage, &child, type, &source, 1);
    Require((result == kIoOk) == (child != nullptr));
    Bounded(before, fi::storage::kMaxSearchLoads + fi::storage::kMaxSiblings);
    handles_ += child != nullptr;
    return OwnedHandle(child);
  }

  // Sectors are looked up in tables of sectors, and those in others; a stream in a stream
  // multiplies.
  void Bounded(uint64_t before, uint64_t pieces) const {
    constexpr uint64_t kReadsForASector = 64;
    Require(input_.reads - before <= (pieces + sectors_) * kReadsForASector);
  }

  // Size and content are the same whether they are read bytewise, in large pieces, or from behind.
  void Stream(IOHandle* stream) {
    int64_t size = 0;
    Require(fi::io::Seek64(stream, kIoFromEnd, 0) && fi::io::Tell64(stream, &size) && size >= 0);
    Require(static_cast<uint64_t>(size) <= sectors_ * 4096);
    const uint64_t before = input_.reads;
    const std::string large = ReadAll(stream, 1 << 16);
    Bounded(before, large.size() / 64);
    Require(large.size() <= static_cast<uint64_t>(size));
    Require(ReadAll(stream, 1).compare(0, kBytewise, large, 0, kBytewise) == 0);
    std::array<char, 100> piece;
    for (size_t at = large.size(); at > 0;) {
      at -= std::min<size_t>(at, 4099);
      Require(fi::io::Seek64(stream, kIoFromStart, static_cast<int64_t>(at)));
      const uint32_t got = fi::io::Read(stream, piece.data(), piece.size());
      Require(got == std::min(piece.size(), large.size() - at));
      Require(large.compare(at, got, piece.data(), got) == 0);
    }
  }

  static constexpr size_t kBytewise = 20000;

  static std::string ReadAll(IOHandle* stream, uint32_t size) {
    std::string bytes;
    std::string buffer(size, '\0');
    Require(fi::io::Seek64(stream, kIoFromStart, 0));
    while (size > 1 || bytes.size() < kBytewise) {
      const uint32_t got = fi::io::Read(stream, buffer.data(), size);
      if (got == 0) break;
      bytes.append(buffer, 0, got);
    }
    return bytes;
  }

  InputHandle& input_;
  const uint64_t sectors_;
  int handles_ = 0;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  InputHandle input(data, size);
  Walk(input, size).Storage(&input, 0);
  return 0;
}
