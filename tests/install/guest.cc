// The library as a guest of a C++ program that loads, unloads and forks, has threads, and whose
// handles throw: guest CASE LIBRARY FILE=ID... prints what went wrong and ends with 1 then.
//
// The library is loaded with dlopen, so that nothing but its C interface joins the two.
#include <dlfcn.h>
#include <malloc.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include "formatid/formatid.h"
#include "formatid/io.h"

namespace {

struct File {
  std::string path;
  FormatId id;
  std::string bytes;
};

std::vector<File> files;
int faults = 0;

void Expect(bool holds, const std::string& what) {
  if (holds) return;
  std::fprintf(stderr, "guest: %s\n", what.c_str());
  ++faults;
}

struct Library {
  explicit Library(const char* path) : handle(dlopen(path, RTLD_NOW | RTLD_LOCAL)) {
    if (handle == nullptr) {
      std::fprintf(stderr, "guest: %s\n", dlerror());
      std::exit(1);
    }
    idFile = reinterpret_cast<decltype(&::FIIdFile)>(dlsym(handle, "FIIdFile"));
    idHandle = reinterpret_cast<decltype(&::FIIdHandle)>(dlsym(handle, "FIIdHandle"));
  }

  bool IdentifiesAll() const {
    return std::all_of(files.begin(), files.end(), [this](const File& file) {
      FormatId id = 0;
      return idFile(kIoSourcePath, file.path.c_str(), kFiTextFallback, &id) == kFiOk &&
             id == file.id;
    });
  }

  void* handle;
  decltype(&::FIIdFile) idFile;
  decltype(&::FIIdHandle) idHandle;
};

// A handle whose operations throw from the n-th call on, or at that one only.
struct ThrowingHandle : IOHandle {
  ThrowingHandle(const std::string& content, int call, bool goesOn)
      : IOHandle{&kOperations}, bytes(content), throwing(call), keepsThrowing(goesOn) {}

  void Count() {
    ++calls;
    if (calls == throwing || (keepsThrowing && calls > throwing)) {
      throw std::runtime_error("a host's own failure");
    }
  }

  static ThrowingHandle* Self(IOHandle* handle) {
    auto* self = static_cast<ThrowingHandle*>(handle);
    self->Count();
    return self;
  }

  static int32_t Close(IOHandle*) { return -1; }
  static int32_t Read(IOHandle* handle, void* buffer, uint32_t size, uint32_t* count) {
    ThrowingHandle* self = Self(handle);
    const size_t at = std::min(self->position, self->bytes.size());
    *count = static_cast<uint32_t>(self->bytes.copy(static_cast<char*>(buffer), size, at));
    self->position += *count;
    return 0;
  }
  static int32_t Seek(IOHandle* handle, uint32_t origin, int32_t offset) {
    ThrowingHandle* self = Self(handle);
    auto target = static_cast<long>(offset);
    if (origin == kIoFromCurrent) target += static_cast<long>(self->position);
    if (origin == kIoFromEnd) target += static_cast<long>(self->bytes.size());
    if (target < 0) return -1;
    self->position = static_cast<size_t>(target);
    return 0;
  }
  static int32_t Tell(IOHandle* handle, uint32_t* position) {
    *position = static_cast<uint32_t>(Self(handle)->position);
    return 0;
  }
  static int32_t GetInfo(IOHandle* handle, uint32_t, void*) {
    (void)Self(handle);
    return -1;
  }
  static int32_t Open(IOHandle* handle, IOHandle**, uint32_t, const void*, uint32_t) {
    (void)Self(handle);
    return -1;
  }

  static const IOHandleOperations kOperations;
  const std::string& bytes;
  size_t position = 0;
  int calls = 0;
  int throwing;
  bool keepsThrowing;
};

const IOHandleOperations ThrowingHandle::kOperations = {Close,   Read, nullptr, Seek,   Tell,
                                                        GetInfo, Open, nullptr, nullptr};

void Throws(const char* path) {
  const Library library(path);
  for (const File& file : files) {
    ThrowingHandle quiet(file.bytes, 0, false);
    FormatId id = 0;
    Expect(library.idHandle(&quiet, kFiUseFlags | kFiTextFallback, &id) == kFiOk,
           file.path + " is not identified");
    for (int call = 1; call <= quiet.calls; ++call) {
      for (const bool goesOn : {false, true}) {
        ThrowingHandle handle(file.bytes, call, goesOn);
        (void)library.idHandle(&handle, kFiUseFlags | kFiTextFallback, &id);
        Expect(handle.calls >= call, "call " + std::to_string(call) + " was not reached");
      }
    }
    // The host's own exceptions work as before.
    try {
      throw 7;
    } catch (int seven) {
      Expect(seven == 7, "an exception of the host changed");
    }
  }
  Expect(std::current_exception() == nullptr, "an exception is left");
  Expect(library.IdentifiesAll(), "answers after exceptions");
}

long Mappings() {
  std::ifstream maps("/proc/self/maps");
  return std::count(std::istreambuf_iterator<char>(maps), std::istreambuf_iterator<char>(), '\n');
}

void Unloads(const char* path) {
  const auto turn = [path] {
    const Library library(path);
    Expect(library.IdentifiesAll(), "answers of a library that was loaded again");
    (void)dlclose(library.handle);
  };
  for (int i = 0; i < 10; ++i) turn();
  const size_t held = mallinfo2().uordblks + mallinfo2().hblkhd;
  const long mappings = Mappings();
  for (int i = 0; i < 200; ++i) turn();
  const size_t after = mallinfo2().uordblks + mallinfo2().hblkhd;
  Expect(after < held + 4096, std::to_string(after - held) + " bytes lost in 200 loads");
  Expect(Mappings() <= mappings + 1, "mappings lost");
}

// Children are made while another thread is in the midst of identifications.
void Forks(const char* path) {
  const Library library(path);
  std::atomic<bool> stop{false};
  std::thread busy([&] {
    while (!stop) Expect(library.IdentifiesAll(), "answers beside forks");
  });
  for (int i = 0; i < 40; ++i) {
    const pid_t child = fork();
    if (child == 0) {
      (void)alarm(20);
      _exit(library.IdentifiesAll() ? 0 : 1);
    }
    int status = -1;
    Expect(waitpid(child, &status, 0) == child && status == 0,
           "child " + std::to_string(i) + " ended with " + std::to_string(status));
  }
  stop = true;
  busy.join();
}

// Threads meet the first archive, and so the load of the module, at the same time.
void Threads(const char* path) {
  const Library library(path);
  std::atomic<int> wrong{0};
  std::vector<std::thread> threads;
  for (int i = 0; i < 8; ++i) {
    threads.emplace_back([&] {
      for (int round = 0; round < 50; ++round) wrong += library.IdentifiesAll() ? 0 : 1;
    });
  }
  for (std::thread& thread : threads) thread.join();
  Expect(wrong == 0, std::to_string(wrong) + " wrong rounds in threads");
}

// `path` is relative; the current folder changes before the module is needed.
void Moves(const char* path) {
  const Library library(path);
  Expect(chdir("/") == 0, "no root folder");
  Expect(library.IdentifiesAll(), std::string("answers of ") + path);
}

}  // namespace

int main(int argc, char** argv) {
  const struct {
    const char* name;
    void (*run)(const char* path);
  } cases[] = {{"throws", Throws},
               {"unloads", Unloads},
               {"forks", Forks},
               {"threads", Threads},
               {"moves", Moves}};
  if (argc < 4) return 2;
  for (int i = 3; i < argc; ++i) {
    const std::string argument = argv[i];
    const size_t equals = argument.rfind('=');
    File file{argument.substr(0, equals),
              static_cast<FormatId>(std::stoi(argument.substr(equals + 1))),
              {}};
    std::ifstream in(file.path, std::ios::binary);
    file.bytes.assign(std::istreambuf_iterator<char>(in), {});
    files.push_back(std::move(file));
  }
  for (const auto& test : cases) {
    if (std::strcmp(test.name, argv[1]) != 0) continue;
    test.run(argv[2]);
    return faults == 0 ? 0 : 1;
  }
  return 2;
}
