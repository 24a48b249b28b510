// The module that decodes iWork archives. libsnappy and libprotobuf-lite (and through it a second
// C++ runtime) take longer to load than a file takes to identify. A shared object of its own links
// them, and the first archive loads it. Nothing but C crosses the boundary.
#ifndef FI_PLATFORM_IWORK_MODULE_H_
#define FI_PLATFORM_IWORK_MODULE_H_

#include <cstddef>
#include <cstdint>

extern "C" {

// Takes a message of a record: its type, and its length in bytes. False: no further ones.
using IworkMessageVisitor = bool (*)(void* context, uint32_t type, uint32_t length);

// Of IworkModule::version: changes with the record and with what its functions do.
constexpr uint32_t kIworkModuleVersion = 2;

struct IworkModule {
  uint32_t version;

  // Stores the size in bytes that the head of a Snappy block gives for its content.
  bool (*readBlockSize)(const uint8_t* block, size_t size, size_t* contentSize) noexcept;

  // Decompresses a Snappy block to `content`, which has room for `contentSize` bytes. True when it
  // has exactly that many.
  bool (*readBlock)(const uint8_t* block, size_t size, uint8_t* content,
                    size_t contentSize) noexcept;

  // Whether readBlock would succeed, without memory for the content.
  bool (*checkBlock)(const uint8_t* block, size_t size) noexcept;

  // Goes through a TSP.ArchiveInfo and calls `visit`, which does not throw, for its messages in
  // order. False when it is damaged: then what was visited does not count.
  bool (*readArchiveInfo)(const uint8_t* info, size_t size, IworkMessageVisitor visit,
                          void* context) noexcept;
};

// The one symbol of the module.
#define FI_IWORK_MODULE_SYMBOL FormatidIworkModule
__attribute__((visibility("default"))) const IworkModule* FI_IWORK_MODULE_SYMBOL() noexcept;

}  // extern "C"

namespace fi {

// The module; null when the module or one of its libraries cannot be loaded: the next call tries
// again. The module stays loaded until the process ends. Thread-safe.
const IworkModule* LoadIworkModule();

}  // namespace fi

#endif  // FI_PLATFORM_IWORK_MODULE_H_
