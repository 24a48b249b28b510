// The double of a storage: named streams in memory, without sub-storages.
#ifndef FI_TESTS_SUPPORT_STREAM_STORAGE_H_
#define FI_TESTS_SUPPORT_STREAM_STORAGE_H_

#include <algorithm>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "formatid/io.h"
#include "tests/support/memory_handle.h"

namespace fi::testing {

class StreamStorage : public IOHandle {
 public:
  explicit StreamStorage(std::map<std::string, std::string> streams)
      : IOHandle{&kOperations}, streams_(std::move(streams)) {}
  StreamStorage(const StreamStorage&) = delete;
  StreamStorage& operator=(const StreamStorage&) = delete;

  // Behaviour.
  MemoryHandle self{"", "report.xlsx"};  // answers what concerns the storage itself
  uint32_t viewDepth = 0;                // 0: not answered
  uint32_t mostPerRead = UINT32_MAX;     // of the streams that are opened from now on
  bool has64Bit = true;                  // likewise

  // Counters.
  uint64_t opens() const { return opened_.size(); }
  uint64_t closes() const {
    uint64_t count = 0;
    for (const auto& stream : opened_) count += stream->closes;
    return count;
  }
  uint64_t BytesRead() const {
    uint64_t count = 0;
    for (const auto& stream : opened_) count += stream->bytesRead;
    return count;
  }

 private:
  static StreamStorage* Self(IOHandle* handle) { return static_cast<StreamStorage*>(handle); }

  static int32_t Close(IOHandle*) { return 0; }
  static int32_t Read(IOHandle*, void*, uint32_t, uint32_t*) { return -1; }
  static int32_t Seek(IOHandle*, uint32_t, int32_t) { return -1; }
  static int32_t Tell(IOHandle*, uint32_t*) { return -1; }

  static int32_t GetInfo(IOHandle* handle, uint32_t code, void* out) {
    StreamStorage* storage = Self(handle);
    if (code == kIoInfoIsStorage) return 0;
    if (code != kIoInfoViewDepth)
      return storage->self.operations->getInfo(&storage->self, code, out);
    if (storage->viewDepth == 0) return -1;
    *static_cast<uint32_t*>(out) = storage->viewDepth;
    return 0;
  }

  static int32_t Open(IOHandle* handle, IOHandle** target, uint32_t sourceType, const void* source,
                      uint32_t flags) {
    StreamStorage* storage = Self(handle);
    const auto* child = static_cast<const IOChildSource*>(source);
    *target = nullptr;
    if (sourceType != kIoSourceStorageStream || child->parent != handle || flags != 1) return -1;
    const auto found = storage->streams_.find(child->name);
    if (found == storage->streams_.end()) return kIoNotFound;
    storage->opened_.push_back(std::make_unique<MemoryHandle>(found->second));
    storage->opened_.back()->mostPerRead = storage->mostPerRead;
    storage->opened_.back()->has64Bit = storage->has64Bit;
    *target = storage->opened_.back().get();
    return 0;
  }

  static constexpr IOHandleOperations kOperations = {
      Close, Read, nullptr, Seek, Tell, GetInfo, Open, nullptr, nullptr,
  };

  const std::map<std::string, std::string> streams_;
  std::vector<std::unique_ptr<MemoryHandle>> opened_;
};

}  // namespace fi::testing

#endif  // FI_TESTS_SUPPORT_STREAM_STORAGE_H_
