// The double of a handle on a structured storage: a tree of named streams and storages in memory,
// with faults to switch on and counters over the whole tree. Names are compared by case, so that a
// name that is spelt twice on purpose shows.
//
// The tree opens as a package as well: its streams are the members, by names without regard to
// case, and a storage in it is a member that is a package in turn.
#ifndef FI_TESTS_SUPPORT_STORAGE_HANDLE_H_
#define FI_TESTS_SUPPORT_STORAGE_HANDLE_H_

#include <cstdint>
#include <string>
#include <vector>

#include "formatid/io.h"
#include "tests/support/memory_handle.h"

namespace fi::testing {

struct StorageNode {
  std::string name;
  bool isStorage = false;
  std::string bytes;
  std::vector<StorageNode> children;
};

// The root of a tree. What is set here (short reads, no 64-bit positions, the number of a read that
// fails) and what is counted (reads, bytes, closes) is that of all children that are opened.
class StorageHandle : public MemoryHandle {
 public:
  explicit StorageHandle(std::vector<StorageNode> children, std::string name = "report.xlsx");

  bool isStorage = true;     // of the root: whether it says so; children open in any case
  uint32_t viewDepth = 0;    // of the root, 0: not answered
  uint64_t failingOpen = 0;  // number of the open call from 1 that fails, 0: none

  uint64_t openCalls = 0;
  uint64_t closedEarly = 0;           // closed while a child was still open
  std::vector<uint32_t> openedFlags;  // of the calls that succeeded
  std::string openedMembers;          // of packages: their paths, each behind a blank

 private:
  StorageHandle(StorageNode node, StorageHandle* parent);

  static StorageHandle* Self(IOHandle* handle) { return static_cast<StorageHandle*>(handle); }
  static int32_t Close(IOHandle* handle);
  static int32_t Read(IOHandle* handle, void* buffer, uint32_t size, uint32_t* count);
  static int32_t GetInfo(IOHandle* handle, uint32_t code, void* out);
  static int32_t Open(IOHandle* handle, IOHandle** target, uint32_t sourceType, const void* source,
                      uint32_t flags);
  // The child that a call of Open means; null when there is none.
  const StorageNode* Find(uint32_t sourceType, const void* source);

  const IOHandleOperations* base_;
  IOHandleOperations table_;
  StorageNode node_;
  StorageHandle* root_ = this;
  StorageHandle* parent_ = nullptr;
  uint64_t openChildren_ = 0;
};

}  // namespace fi::testing

#endif  // FI_TESTS_SUPPORT_STORAGE_HANDLE_H_
