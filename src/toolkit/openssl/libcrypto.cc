#include "toolkit/openssl/libcrypto.h"

#include <dlfcn.h>

#include <algorithm>
#include <atomic>
#include <mutex>
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
  OSSL_LIB_CTX* const context = functions.OSSL_LIB_CTX_new();
  if (context == nullptr) return std::nullopt;
  functions.provider = functions.OSSL_PROVIDER_load(context, "default");
  if (functions.provider == nullptr) {
    functions.OSSL_LIB_CTX_free(context);
    return std::nullopt;
  }
  return functions;
}

// Whether the list, divided by colons, holds `name`.
bool IsListed(std::string_view list, std::string_view name) {
  while (!list.empty()) {
    const std::string_view first = list.substr(0, list.find(':'));
    if (first == name) return true;
    list.remove_prefix(std::min(first.size() + 1, list.size()));
  }
  return false;
}

}  // namespace

const OSSL_DISPATCH* LibCrypto::FindAlgorithm(int operation, std::string_view name) const {
  int noCache = 0;
  const OSSL_ALGORITHM* algorithm = OSSL_PROVIDER_query_operation(provider, operation, &noCache);
  for (; algorithm != nullptr && algorithm->algorithm_names != nullptr; ++algorithm) {
    if (IsListed(algorithm->algorithm_names, name)) return algorithm->implementation;
  }
  return nullptr;
}

const LibCrypto* LoadLibCrypto() {
  // A failure may be that of the moment, such as too many open files, and is not kept.
  static std::atomic<bool> loaded = false;
  static std::mutex loading;
  static LibCrypto functions;
  if (loaded.load(std::memory_order_acquire)) return &functions;
  const std::lock_guard<std::mutex> lock(loading);
  if (loaded.load(std::memory_order_relaxed)) return &functions;
  const std::optional<LibCrypto> found = Load();
  if (!found.has_value()) return nullptr;
  functions = *found;
  loaded.store(true, std::memory_order_release);
  return &functions;
}

}  // namespace fi::crypto
