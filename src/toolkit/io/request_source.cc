// Opens what a request names: the kinds that IOOpen knows, a host's callback, and known parts.

#include <cerrno>
#include <new>
#include <span>
#include <string_view>

#include "platform/source.h"
#include "platform/work.h"
#include "toolkit/io/callback_handle.h"
#include "toolkit/io/parts_handle.h"
#include "toolkit/io/positioned_handle.h"

namespace fi {
namespace {

std::string_view NameOf(const FISource& source) {
  return source.name == nullptr ? std::string_view() : std::string_view(source.name);
}

// Opens a path, under the name in the request if there is such a name.
int32_t OpenNamed(IOHandle** handle, uint32_t sourceType, const void* path, const FISource& source,
                  Work* work) {
  const int32_t result = OpenSource(handle, sourceType, path, work);
  if (result == kIoOk && source.name != nullptr) {
    static_cast<io::PositionedHandle*>(*handle)->TakeName(source.name);
  }
  return result;
}

// Takes `handle`, which is null when memory ran out.
int32_t Finish(IOHandle** out, IOHandle* handle) {
  *out = handle;
  if (handle != nullptr) return kIoOk;
  errno = ENOMEM;
  return kIoError;
}

}  // namespace

int32_t OpenRequestSource(IOHandle** handle, const FISource& source, Work* work) noexcept {
  *handle = nullptr;
  switch (source.kind) {
    case kFiSourcePath:
      return OpenNamed(handle, kIoSourcePath, source.path, source, work);
    case kFiSourceWidePath:
      return OpenNamed(handle, kIoSourceWidePath, source.widePath, source, work);
    case kFiSourceMemory: {
      const IOMemorySource memory{source.data, source.size, source.name};
      return OpenSource(handle, kIoSourceMemory, &memory, work);
    }
    case kFiSourceDescriptor: {
      const IODescriptorSource descriptor{source.descriptor, source.name};
      return OpenSource(handle, kIoSourceDescriptor, &descriptor, work);
    }
    case kFiSourceCallbacks:
      return Finish(handle, new (std::nothrow) io::CallbackHandle(
                                source.readAt, source.context, source.size, NameOf(source), work));
    case kFiSourceParts:
      return Finish(handle,
                    new (std::nothrow) io::PartsHandle(std::span(source.parts, source.partCount),
                                                       source.size, NameOf(source), work));
    default:
      errno = EINVAL;
      return kIoError;
  }
}

}  // namespace fi
