#include "platform/iwork_module.h"

#include <snappy-c.h>

#include <climits>

#include "platform/no_throw.h"
#include "probes/iwork/iwork.pb.h"

namespace fi {
namespace {

const char* Chars(const uint8_t* bytes) { return reinterpret_cast<const char*>(bytes); }

bool ReadBlockSize(const uint8_t* block, size_t size, size_t* contentSize) noexcept {
  return snappy_uncompressed_length(Chars(block), size, contentSize) == SNAPPY_OK;
}

bool ReadBlock(const uint8_t* block, size_t size, uint8_t* content, size_t contentSize) noexcept {
  size_t stored = contentSize;
  return snappy_uncompress(Chars(block), size, reinterpret_cast<char*>(content), &stored) ==
             SNAPPY_OK &&
         stored == contentSize;
}

bool ReadArchiveInfo(const uint8_t* bytes, size_t size, IworkMessageVisitor visit,
                     void* context) noexcept {
  if (size > INT_MAX) return false;
  return NoThrow<bool>(false, [&] {
    TSP::ArchiveInfo info;
    if (!info.ParseFromArray(bytes, static_cast<int>(size))) return false;
    for (const TSP::MessageInfo& message : info.message_infos()) {
      if (!visit(context, message.type(), message.length())) break;
    }
    return true;
  });
}

constexpr IworkModule kModule = {kIworkModuleVersion, ReadBlockSize, ReadBlock, ReadArchiveInfo};

}  // namespace
}  // namespace fi

const IworkModule* FI_IWORK_MODULE_SYMBOL() noexcept { return &fi::kModule; }
