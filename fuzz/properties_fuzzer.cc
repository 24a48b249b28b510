// Properties of any format over any bytes. The last two bytes choose the format, so that a seed is
// a whole file with its identifier behind it. The values must not depend on how the bytes are read.

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>

#include "formatid/io.h"
#include "properties/families.h"
#include "properties/puid/puid.h"
#include "tests/support/memory_handle.h"

namespace {

using fi::testing::MemoryHandle;

std::string Properties(MemoryHandle& handle, FormatId id) {
  const fi::ScopedStream stream(&handle);
  fi::PropertySet properties;
  fi::ReadProperties({stream.get(), id}, properties);
  std::string text;
  for (size_t i = 0; i < fi::kPropertyCount; ++i) {
    text += properties[static_cast<fi::Property>(i)].text();
    text += '\n';
  }
  text += fi::ExactPuid(stream.get(), id, properties, "fmt/1").data();
  return text;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size < 2) return 0;
  FormatId id = 0;
  std::memcpy(&id, data + size - 2, sizeof(id));
  const std::string file(reinterpret_cast<const char*>(data), size - 2);
  MemoryHandle whole(file);
  MemoryHandle slow(file);
  slow.mostPerRead = 3;
  slow.has64Bit = false;
  if (Properties(whole, id) != Properties(slow, id)) std::abort();
  // Every family keeps to a bounded part of the file, whatever that says.
  constexpr uint64_t kMostBytes = 4 * 1024 * 1024;
  if (whole.bytesRead > kMostBytes) std::abort();
  return 0;
}
