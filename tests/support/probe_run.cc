#include "tests/support/probe_run.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <sstream>
#include <string>

#include "tests/support/samples.h"

namespace fi::testing {
namespace {

struct Limits {
  std::map<size_t, FormatId> cuts;  // answers from a length on
  uint64_t mostRead = UINT64_MAX;
};

Limits ReadLimits(const std::string& words) {
  Limits limits;
  std::istringstream stream(words);
  for (std::string word; stream >> word;) {
    const size_t colon = word.find(':');
    if (word[0] == '<') {
      limits.mostRead = std::stoull(word.substr(1));
    } else if (colon != std::string::npos) {
      limits.cuts[std::stoul(word)] = static_cast<FormatId>(std::stoul(word.substr(colon + 1)));
    } else {
      ADD_FAILURE() << "wrong limit: " << word;
    }
  }
  return limits;
}

// The answer on which all kinds of handles and streams agree.
FormatId Answer(const Probe& probe, const std::string& bytes, uint64_t mostRead) {
  MemoryHandle plain(bytes);
  const FormatId id = RunProbe(probe, plain);
  EXPECT_LE(plain.bytesRead, mostRead);
  EXPECT_LE(plain.seeks, bytes.size() + 16);
  for (const bool used : {false, true}) {
    MemoryHandle slow(bytes);
    slow.mostPerRead = 1;
    slow.has64Bit = false;
    EXPECT_EQ(RunProbe(probe, slow, used), id) << "a byte per read, used: " << used;
    if (used) continue;
    EXPECT_LE(slow.bytesRead, std::min(mostRead, 4 * bytes.size() + 16));
  }
  MemoryHandle handle(bytes);
  EXPECT_EQ(RunProbe(probe, handle, true), id) << "used stream";
  return id;
}

void ExpectAnswersWhenCut(const Probe& probe, const std::string& bytes, const Limits& limits) {
  constexpr size_t kMost = 512;  // lengths of a sample that does not say what its parts are
  const size_t lengths = limits.cuts.empty() ? std::min(kMost, bytes.size()) : bytes.size();
  FormatId expected = kNoMatch;
  for (size_t size = 0; size < lengths; ++size) {
    SCOPED_TRACE("cut to " + std::to_string(size));
    const FormatId id = Answer(probe, bytes.substr(0, size), limits.mostRead);
    if (const auto cut = limits.cuts.find(size); cut != limits.cuts.end()) expected = cut->second;
    EXPECT_TRUE(limits.cuts.empty() || id == expected) << id << " instead of " << expected;
  }
}

}  // namespace

FormatId RunProbe(const Probe& probe, MemoryHandle& handle, bool used) {
  const ScopedStream stream(&handle);
  if (used) IdStreamGetByte(stream.get());
  return probe(stream.get());
}

void ExpectSamples(std::string_view file, const Probe& probe) {
  for (const Sample& sample : ReadSamples(file, 3)) {
    SCOPED_TRACE(sample.place + " (" + sample.columns[1] + ")");
    const std::string bytes = SampleBytes(sample.columns[2]);
    const Limits limits = ReadLimits(sample.columns.size() > 3 ? sample.columns[3] : "");
    EXPECT_EQ(Answer(probe, bytes, limits.mostRead), sample.Number(0));
    ExpectAnswersWhenCut(probe, bytes, limits);
  }
}

}  // namespace fi::testing
