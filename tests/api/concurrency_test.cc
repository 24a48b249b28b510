// Identifications on several threads at once, with different behaviour: what each call answers is
// decided by its own flags, and the shared option store is free of data races.

#include <gtest/gtest.h>

#include <atomic>
#include <string>
#include <thread>
#include <vector>

#include "formatid/formatid.h"
#include "formatid/platform.h"

namespace {

TEST(Concurrency, CallsKeepToTheirOwnFlags) {
  constexpr int kThreads = 4;
  constexpr int kRounds = 500;
  const std::string text = "a,b\n1,2\n3,4\n5,6\n";
  const std::string gif = "GIF89a";
  std::atomic<int> wrong{0};
  std::vector<std::thread> threads;
  for (int thread = 0; thread < kThreads; ++thread) {
    threads.emplace_back([&, thread] {
      const FormatId expected[] = {1999, 4005, 1999, 3204};
      const uint32_t flags[] = {0, kFiTextFallback, kFiDelimitedText,
                                kFiTextFallback | kFiDelimitedText};
      for (int round = 0; round < kRounds; ++round) {
        const IOMemorySource textSource = {text.data(), text.size(), "x.txt"};
        const IOMemorySource gifSource = {gif.data(), gif.size(), "x.gif"};
        FormatId id = 0;
        FIIdFile(kIoSourceMemory, &textSource, flags[thread], &id);
        if (id != expected[thread]) ++wrong;
        char name[64];
        FIIdFileEx(kIoSourceMemory, &gifSource, flags[thread], &id, name, sizeof(name));
        if (id != 1503 || name[0] != 'G') ++wrong;
        const uint32_t size = 1 + static_cast<uint32_t>(round) % 4;
        UTSetOption(UTGetGlobalOptionSet(), kUtOptionBufferSize, &size, 4);
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(wrong, 0);
}

}  // namespace
