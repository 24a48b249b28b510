// The probes of compound documents, over the samples of tests/data/storages.txt.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "probes/protection/encryption.h"
#include "probes/protection/rights_management.h"
#include "probes/storage/word_fib.h"
#include "signature/probe_lookup.h"
#include "tests/support/bytes.h"
#include "tests/support/probe_run.h"
#include "tests/support/samples.h"
#include "tests/support/storage_samples.h"

namespace fi {
namespace {

using testing::LittleEndian;
using testing::Sample;
using testing::SampleBytes;
using testing::SampleStorage;
using testing::StorageHandle;
using testing::StorageNode;

int64_t RunCode(uint16_t code, const std::string& extension, IdentificationStream* stream) {
  const ProbeEntry* entry = FindProbe(code);
  if (entry == nullptr) return -2;
  SignatureRun run;
  run.stream = stream;
  std::copy(extension.begin(), extension.end(), run.extension.begin());
  const FormatId id = entry->run({run, code});
  EXPECT_EQ(run.classifierRan, code == 1999 ? 1u : 0u);
  EXPECT_EQ(run.status, 0u);
  return id;
}

int64_t RunNamed(const std::string& name, const std::string& extension,
                 IdentificationStream* stream) {
  if (name == "scheme") return ReadEncryptionInfoVersion(stream);
  if (name == "managed") return CheckRightsManagedTransform(stream);
  if (name == "content") return CheckDrmContentStream(stream);
  return RunCode(static_cast<uint16_t>(std::stoi(name)), extension, stream);
}

std::string Condition(const Sample& sample) {
  return sample.columns.size() > 4 ? sample.columns[4] : "";
}

// What the probe answers. Whatever it is, it has closed what it opened, children first.
int64_t RunSample(const Sample& sample, StorageHandle& handle) {
  const std::string condition = Condition(sample);
  handle.isStorage = condition != "no storage";
  const std::string extension = condition.starts_with(".") ? condition.substr(1) : "";
  const ScopedStream stream(&handle);
  const int64_t answer = RunNamed(sample.columns[1], extension, stream.get());
  EXPECT_EQ(handle.openedFlags.size(), handle.closes);
  EXPECT_EQ(handle.closedEarly, 0u);
  const bool limited = condition.starts_with("<=");
  EXPECT_LE(handle.bytesRead, limited ? std::stoull(condition.substr(2)) : UINT64_MAX);
  return answer;
}

TEST(StorageProbes, Samples) {
  for (const Sample& sample : testing::ReadSamples("storages.txt", 4)) {
    SCOPED_TRACE(sample.place + " " + sample.columns[2]);
    const std::vector<StorageNode> document = SampleStorage(sample.columns[3]);
    StorageHandle whole(document);
    EXPECT_EQ(RunSample(sample, whole), sample.Number(0));

    StorageHandle slow(document);
    slow.mostPerRead = 1;
    slow.has64Bit = Condition(sample) == "64-bit positions";
    EXPECT_EQ(RunSample(sample, slow), sample.Number(0)) << "byte by byte";

    for (uint64_t call = 1; call <= whole.openCalls; ++call) {
      StorageHandle failing(document);
      failing.failingOpen = call;
      (void)RunSample(sample, failing);
    }
    for (uint64_t call = 1; call <= whole.reads; ++call) {
      StorageHandle failing(document);
      failing.failingRead = call;
      (void)RunSample(sample, failing);
    }
  }
}

TEST(StorageProbes, WorkbooksOpenWithTheirOwnFlags) {
  StorageHandle handle(SampleStorage("'Workbook'= 00*8 F6 13 CD 07"));
  const ScopedStream stream(&handle);
  EXPECT_EQ(RunCode(1999, "", stream.get()), 1451);
  EXPECT_EQ(handle.openedFlags, (std::vector<uint32_t>{1, 513}));
}

// The largest table that can be counted, all of it names that lie apart, on which a walk by refills
// of the buffer would read 260 MB.
TEST(StorageProbes, LargeTablesOfPropertiesAreReadOnce) {
  std::string summary = SampleBytes("FE FF 00 00 at(44) 30 00 00 00 00*4 FF FF 00 00");
  for (uint32_t i = 0; i < 0xFFFF; ++i) {
    summary += LittleEndian(18, 4) + LittleEndian(i % 2 == 0 ? 8 : 500000, 4);
  }
  StorageHandle handle({{"\005SummaryInformation", false, summary, {}},
                        {"WordDocument", false, SampleBytes("00*5 40"), {}}});
  const ScopedStream stream(&handle);
  EXPECT_EQ(ProbeWordFib(stream.get()), 1185);
  EXPECT_LE(handle.bytesRead, 3 * summary.size());
  EXPECT_EQ(handle.openedFlags.size(), 2u);
}

}  // namespace
}  // namespace fi
