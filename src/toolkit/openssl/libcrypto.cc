#include "toolkit/openssl/libcrypto.h"

#include <dlfcn.h>

#include <optional>

namespace fi::crypto {
namespace {

#define FI_QUOTE(text) #text
#define FI_QUOTE_VALUE(macro) FI_QUOTE(macro)
constexpr char kFileName[] = "libcrypto.so." FI_QUOTE_VALUE(OPENSSL_SHLIB_VERSION);
#undef FI_QUOTE_VALUE
#undef FI_QUOTE

template <class Function>
bool Find(void* library, const char* name, Function* function) {
  *function = reinterpret_cast<Function>(::dlsym(library, name));
  return *function != nullptr;
}

std::optional<LibCrypto> Load() {
  void* library = ::dlopen(kFileName, RTLD_LAZY | RTLD_LOCAL);
  if (library == nullptr) return std::nullopt;
  LibCrypto functions{};
  bool complete = true;
#define FI_FIND(name) complete = Find(library, #name, &functions.name) && complete;
  FI_LIBCRYPTO_FUNCTIONS(FI_FIND)
#undef FI_FIND
  if (!complete) return std::nullopt;
  functions.context = functions.OSSL_LIB_CTX_new();
  if (functions.context == nullptr) return std::nullopt;
  if (functions.OSSL_PROVIDER_load(functions.context, "default") == nullptr) {
    functions.OSSL_LIB_CTX_free(functions.context);
    return std::nullopt;
  }
  return functions;
}

}  // namespace

const LibCrypto* LoadLibCrypto() {
  static const std::optional<LibCrypto> kFunctions = Load();
  return kFunctions.has_value() ? &*kFunctions : nullptr;
}

}  // namespace fi::crypto
