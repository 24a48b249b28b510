#include "toolkit/lzma/liblzma.h"

#include <dlfcn.h>

#include <optional>

namespace fi::lzma {
namespace {

template <class Function>
bool Find(void* library, const char* name, Function* function) {
  *function = reinterpret_cast<Function>(::dlsym(library, name));
  return *function != nullptr;
}

std::optional<LibLzma> Load() {
  // The number of the interface, which has stayed since the first stable version.
  void* library = ::dlopen("liblzma.so.5", RTLD_LAZY | RTLD_LOCAL);
  LibLzma functions{};
  const bool complete =
      library != nullptr && Find(library, "lzma_raw_decoder", &functions.rawDecoder) &&
      Find(library, "lzma_code", &functions.code) && Find(library, "lzma_end", &functions.end);
  return complete ? std::optional(functions) : std::nullopt;
}

}  // namespace

const LibLzma* LoadLibLzma() {
  static const std::optional<LibLzma> kFunctions = Load();
  return kFunctions.has_value() ? &*kFunctions : nullptr;
}

}  // namespace fi::lzma
