// The module of the shared library: a shared object beside it.
#include <dlfcn.h>

#include <array>
#include <atomic>
#include <cinttypes>
#include <climits>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <memory>
#include <string_view>

#include "platform/iwork_module.h"

namespace fi {
namespace {

#define FI_QUOTE(text) #text
#define FI_QUOTE_VALUE(macro) FI_QUOTE(macro)
constexpr char kSymbol[] = FI_QUOTE_VALUE(FI_IWORK_MODULE_SYMBOL);
#undef FI_QUOTE_VALUE
#undef FI_QUOTE

// From the folder of the library.
constexpr char kModuleFile[] = "formatid/formatid-iwork.so";

// A line of /proc/self/maps: a path behind addresses, rights, offset, device and inode.
using MapsLine = std::array<char, PATH_MAX + 128>;

// The absolute path of the file that is mapped at `address`, as the kernel names it; empty where
// /proc does not tell.
std::string_view MappedPath(const void* address, MapsLine& line) {
  struct Closer {
    void operator()(std::FILE* file) const { (void)std::fclose(file); }
  };
  const std::unique_ptr<std::FILE, Closer> maps(std::fopen("/proc/self/maps", "re"));
  const auto wanted = reinterpret_cast<uintptr_t>(address);
  while (maps != nullptr &&
         std::fgets(line.data(), static_cast<int>(line.size()), maps.get()) != nullptr) {
    uintptr_t first = 0;
    uintptr_t end = 0;
    if (std::sscanf(line.data(), "%" SCNxPTR "-%" SCNxPTR, &first, &end) != 2) continue;
    if (wanted < first || wanted >= end) continue;
    const char* const path = std::strchr(line.data(), '/');
    return path == nullptr ? std::string_view() : std::string_view(path, std::strcspn(path, "\n"));
  }
  return {};
}

// The path of the shared object that this code is in. A relative path refers to the current folder
// of the time of loading, so the path in the kernel's list of mappings replaces it.
std::string_view OwnPath(MapsLine& line) {
  static constexpr char kHere = 0;
  Dl_info info{};
  if (::dladdr(&kHere, &info) == 0 || info.dli_fname == nullptr) return {};
  const std::string_view path = info.dli_fname;
  return path.starts_with('/') ? path : MappedPath(&kHere, line);
}

const IworkModule* Load() {
  MapsLine line;
  const std::string_view own = OwnPath(line);
  if (own.empty() || own.size() > PATH_MAX) return nullptr;
  const std::string_view folder = own.substr(0, own.rfind('/'));
  std::array<char, PATH_MAX> path{};
  const int length = std::snprintf(path.data(), path.size(), "%.*s/%s",
                                   static_cast<int>(folder.size()), folder.data(), kModuleFile);
  if (length < 0 || static_cast<size_t>(length) >= path.size()) return nullptr;
  void* library = ::dlopen(path.data(), RTLD_NOW | RTLD_LOCAL);
  if (library == nullptr) return nullptr;
  const auto find = reinterpret_cast<decltype(&FI_IWORK_MODULE_SYMBOL)>(::dlsym(library, kSymbol));
  const IworkModule* module = find != nullptr ? find() : nullptr;
  return module != nullptr && module->version == kIworkModuleVersion ? module : nullptr;
}

}  // namespace

const IworkModule* LoadIworkModule() {
  // A failure may be that of the moment, such as too many open files, and is not kept. Threads that
  // load it at once get the same module.
  static std::atomic<const IworkModule*> loaded = nullptr;
  const IworkModule* module = loaded.load(std::memory_order_acquire);
  if (module != nullptr) return module;
  module = Load();
  if (module != nullptr) loaded.store(module, std::memory_order_release);
  return module;
}

}  // namespace fi
