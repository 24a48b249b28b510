// The double of a handle on a structured storage: a tree of named streams and storages in memory,
// with faults to switch on and counters over the whole tree. Names are compared by case, so that a
// name that is spelt twice on purpose shows.
#ifndef FI_TESTS_SUPPORT_STORAGE_HANDLE_H_
#define FI_TESTS_SUPPORT_STORAGE_HANDLE_H_

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "formatid/io.h"

namespace fi::testing {

struct StorageNode {
  std::string name;
  uint32_t type;  // kIoSourceStorageStream or kIoSourceSubStorage
  std::string bytes;
  std::vector<StorageNode> children;
  std::array<uint8_t, 16> classId{};
};

inline StorageNode Stream(std::string name, std::string bytes = "") {
  return {std::move(name), kIoSourceStorageStream, std::move(bytes), {}};
}

inline StorageNode Storage(std::string name, std::vector<StorageNode> children = {}) {
  return {std::move(name), kIoSourceSubStorage, "", std::move(children)};
}

// Shared by the handles of a tree.
struct StorageState {
  // Behaviour.
  uint32_t mostPerRead = UINT32_MAX;  // short reads
  uint64_t failingOpen = 0;           // number of the open call from 1 that fails, 0: none
  uint64_t failingRead = 0;

  // Counters.
  uint64_t openCalls = 0;
  uint64_t opens = 0;  // those that succeeded
  uint64_t closes = 0;
  uint64_t reads = 0;
  uint64_t bytesRead = 0;
  uint64_t closedEarly = 0;           // closed while a child was still open
  std::vector<std::string> opened;    // names, in order
  std::vector<uint32_t> openedFlags;  // of the same
};

// A handle on a node of the tree. Children are of this kind, too; the root belongs to the test.
class StorageHandle : public IOHandle {
 public:
  explicit StorageHandle(std::vector<StorageNode> children = {}, std::string fileName = "");
  StorageHandle(const StorageHandle&) = delete;
  StorageHandle& operator=(const StorageHandle&) = delete;

  StorageState state;
  bool isStorage = true;  // of the root: whether it says so; children open in any case

 private:
  StorageHandle(StorageNode node, StorageHandle* parent);

  static const IOHandleOperations kOperations;

  static StorageHandle* Self(IOHandle* handle) { return static_cast<StorageHandle*>(handle); }
  static int32_t Close(IOHandle* handle);
  static int32_t Read(IOHandle* handle, void* buffer, uint32_t size, uint32_t* count);
  static int32_t Seek(IOHandle* handle, uint32_t origin, int32_t offset);
  static int32_t Tell(IOHandle* handle, uint32_t* position);
  static int32_t GetInfo(IOHandle* handle, uint32_t code, void* out);
  static int32_t Open(IOHandle* handle, IOHandle** target, uint32_t sourceType, const void* source,
                      uint32_t flags);
  static int32_t Seek64(IOHandle* handle, uint32_t origin, int64_t offset);
  static int32_t Tell64(IOHandle* handle, int64_t* position);

  int32_t MoveTo(uint32_t origin, int64_t offset);

  StorageNode node_;
  std::string fileName_;
  StorageState* shared_;
  StorageHandle* parent_ = nullptr;
  uint64_t openChildren_ = 0;
  int64_t position_ = 0;
};

}  // namespace fi::testing

#endif  // FI_TESTS_SUPPORT_STORAGE_HANDLE_H_
