// The double of a storage that holds streams only.
#ifndef FI_TESTS_SUPPORT_STREAM_STORAGE_H_
#define FI_TESTS_SUPPORT_STREAM_STORAGE_H_

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "tests/support/storage_handle.h"

namespace fi::testing {

class StreamStorage : public StorageHandle {
 public:
  explicit StreamStorage(const std::map<std::string, std::string>& streams)
      : StorageHandle(Nodes(streams)) {}

  MemoryHandle& self = *this;  // answers what concerns the storage itself

  uint64_t opens() const { return openedFlags.size(); }
  uint64_t closes() const { return MemoryHandle::closes; }
  uint64_t BytesRead() const { return bytesRead; }

 private:
  static std::vector<StorageNode> Nodes(const std::map<std::string, std::string>& streams) {
    std::vector<StorageNode> nodes;
    nodes.reserve(streams.size());
    for (const auto& [name, bytes] : streams) nodes.push_back({name, false, bytes, {}});
    return nodes;
  }
};

}  // namespace fi::testing

#endif  // FI_TESTS_SUPPORT_STREAM_STORAGE_H_
