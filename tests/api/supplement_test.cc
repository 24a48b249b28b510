// Whole identifications with the supplement, over samples as data.

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <string>

#include "api/supplement.h"
#include "formatid/platform.h"
#include "tests/support/memory_handle.h"
#include "tests/support/samples.h"
#include "tests/support/storage_handle.h"
#include "tests/support/storage_samples.h"

namespace fi {
namespace {

constexpr uint32_t kBase = kFiUseFlags | kFiTextFallback | kFiDelimitedText;

// The answer, of which the evidence must not name a row that is not of the signature table.
FormatId Identify(testing::MemoryHandle& handle, uint32_t flags) {
  FormatId id = 0;
  FIEvidence evidence{};
  EXPECT_EQ(FIIdHandleEvidence(&handle, flags, &id, &evidence), kFiOk);
  EXPECT_EQ(evidence.basis == kFiBasisNone, id == kFormatUnknown);
  EXPECT_TRUE(id < 3000 || id > 3999 || evidence.signature == 0);
  return id;
}

TEST(Supplement, Files) {
  for (const testing::Sample& sample : testing::ReadSupplementSamples()) {
    SCOPED_TRACE(sample.place + ": " + sample.columns[1]);
    const std::string& name = sample.columns[3];
    testing::MemoryHandle handle(testing::SampleBytes(sample.columns[2]), name);
    const FormatId base = Identify(handle, kBase);
    EXPECT_EQ(Identify(handle, kBase | kFiSupplement), sample.Number(0));
    EXPECT_EQ(handle.position, 0);
    EXPECT_TRUE(IsGeneralAnswer(base) || base == sample.Number(0));
  }
}

TEST(Supplement, Storages) {
  for (const testing::Sample& sample : testing::ReadSamples("supplement_storages.txt", 5)) {
    SCOPED_TRACE(sample.place + ": " + sample.columns[2]);
    testing::StorageHandle handle(testing::SampleStorage(sample.columns[4]));
    handle.classId.emplace();
    const std::string classId = testing::SampleBytes(sample.columns[3]);
    std::copy(classId.begin(), classId.end(), handle.classId->begin());
    EXPECT_EQ(Identify(handle, kBase), sample.Number(1));
    EXPECT_EQ(Identify(handle, kBase | kFiSupplement), sample.Number(0));
  }
}

}  // namespace
}  // namespace fi
