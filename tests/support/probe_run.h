// Runs one probe over bytes in memory.
#ifndef FI_TESTS_SUPPORT_PROBE_RUN_H_
#define FI_TESTS_SUPPORT_PROBE_RUN_H_

#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "engine/id_stream.h"
#include "formatid/formatid.h"
#include "formatid/io.h"
#include "tests/support/memory_handle.h"

namespace fi::testing {

using Probe = std::function<FormatId(IdentificationStream*)>;

// The bytes of `value`, of which there are `size`, the lowest first or last.
inline std::string LittleEndian(uint64_t value, size_t size) {
  std::string bytes;
  for (; bytes.size() < size; value >>= 8) bytes.push_back(static_cast<char>(value & 0xFF));
  return bytes;
}

inline std::string BigEndian(uint64_t value, size_t size) {
  const std::string bytes = LittleEndian(value, size);
  return {bytes.rbegin(), bytes.rend()};
}

// The answer over `handle`, with the stream at `start`.
inline FormatId RunProbe(const Probe& probe, MemoryHandle& handle, int64_t start = 0) {
  const ScopedStream stream(&handle);
  const bool placed = start == 0 || IdStreamSeek(stream.get(), start, kIoFromStart) == 0;
  EXPECT_TRUE(placed);
  return probe(stream.get());
}

struct ProbeCase {
  const char* name;
  std::string file;
  FormatId id;
};

// Each file has its answer, for a handle that reads all it is asked for and for one that reads a
// byte at a time and has no 64-bit positions.
inline void ExpectAnswers(const Probe& probe, const std::vector<ProbeCase>& cases,
                          int64_t start = 0) {
  for (const ProbeCase& test : cases) {
    MemoryHandle whole(test.file);
    EXPECT_EQ(RunProbe(probe, whole, start), test.id) << test.name;
    MemoryHandle slow(test.file);
    slow.mostPerRead = 1;
    slow.has64Bit = false;
    EXPECT_EQ(RunProbe(probe, slow, start), test.id) << test.name << ", byte by byte";
  }
}

// From this length of the file on, the answer is `id`.
struct Length {
  size_t bytes;
  FormatId id;
};

// `sample` is cut at every length. Before the first of `lengths`, in ascending order, the answer is
// kNoMatch. No byte is read more than a few times.
inline void ExpectAnswersWhenCut(const Probe& probe, const std::string& sample,
                                 const std::vector<Length>& lengths, int64_t start = 0) {
  for (size_t size = static_cast<size_t>(start); size <= sample.size(); ++size) {
    FormatId expected = kNoMatch;
    for (const Length& length : lengths) {
      if (size >= length.bytes) expected = length.id;
    }
    MemoryHandle handle(sample.substr(0, size));
    handle.mostPerRead = 1;
    EXPECT_EQ(RunProbe(probe, handle, start), expected) << "cut to " << size;
    EXPECT_LE(handle.bytesRead, 4 * size + 16) << "cut to " << size;
  }
}

}  // namespace fi::testing

#endif  // FI_TESTS_SUPPORT_PROBE_RUN_H_
