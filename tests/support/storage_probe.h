// Runs probes over documents that a test describes, under every fault that the handle can play.
#ifndef FI_TESTS_SUPPORT_STORAGE_PROBE_H_
#define FI_TESTS_SUPPORT_STORAGE_PROBE_H_

#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <initializer_list>
#include <string>
#include <vector>

#include "engine/id_stream.h"
#include "tests/support/storage_handle.h"

namespace fi::testing {

// Little-endian words, one behind the other.
inline std::string Words16(std::initializer_list<uint16_t> words) {
  std::string bytes;
  for (const uint16_t word : words) {
    bytes.push_back(static_cast<char>(word & 0xFF));
    bytes.push_back(static_cast<char>(word >> 8));
  }
  return bytes;
}

inline std::string Words32(std::initializer_list<uint32_t> words) {
  std::string bytes;
  for (const uint32_t word : words) {
    bytes += Words16({static_cast<uint16_t>(word & 0xFFFF), static_cast<uint16_t>(word >> 16)});
  }
  return bytes;
}

using StorageProbe = std::function<int64_t(IdentificationStream*)>;

struct StorageCase {
  const char* name;
  std::vector<StorageNode> children;
  int64_t expected;
  bool isStorage = true;
};

// What the probe answers. Whatever it is, it has closed what it opened, children first.
inline int64_t RunOverStorage(const StorageProbe& probe, StorageHandle& handle) {
  const ScopedStream stream(&handle);
  const int64_t answer = probe(stream.get());
  EXPECT_EQ(handle.state.opens, handle.state.closes);
  EXPECT_EQ(handle.state.closedEarly, 0u);
  return answer;
}

// Each case answers what it should, also when bytes come one by one; and no fault of an open or a
// read leaves a child open.
inline void ExpectOverStorage(const StorageProbe& probe, const std::vector<StorageCase>& cases) {
  for (const StorageCase& test : cases) {
    SCOPED_TRACE(test.name);
    StorageHandle whole(test.children);
    whole.isStorage = test.isStorage;
    EXPECT_EQ(RunOverStorage(probe, whole), test.expected);

    StorageHandle slow(test.children);
    slow.isStorage = test.isStorage;
    slow.state.mostPerRead = 1;
    EXPECT_EQ(RunOverStorage(probe, slow), test.expected) << "byte by byte";

    for (uint64_t call = 1; call <= whole.state.openCalls; ++call) {
      StorageHandle failing(test.children);
      failing.isStorage = test.isStorage;
      failing.state.failingOpen = call;
      (void)RunOverStorage(probe, failing);
    }
    for (uint64_t call = 1; call <= whole.state.reads; ++call) {
      StorageHandle failing(test.children);
      failing.isStorage = test.isStorage;
      failing.state.failingRead = call;
      (void)RunOverStorage(probe, failing);
    }
  }
}

}  // namespace fi::testing

#endif  // FI_TESTS_SUPPORT_STORAGE_PROBE_H_
