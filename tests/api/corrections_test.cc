// Whole identifications of files whose fixed answer the content proves false.

#include <gtest/gtest.h>

#include <string>

#include "formatid/formatid.h"
#include "formatid/platform.h"
#include "platform/class_id.h"
#include "tests/support/memory_handle.h"
#include "tests/support/samples.h"
#include "tests/support/storage_handle.h"
#include "tests/support/storage_samples.h"

namespace fi {
namespace {

constexpr uint32_t kBase = kFiUseFlags | kFiTextFallback | kFiDelimitedText;

// The fixed answer stays without the flag; with it, the evidence of a corrected one tells both.
void ExpectBoth(IOHandle* handle, const testing::Sample& sample) {
  FormatId id = 0;
  FIEvidence evidence{};
  EXPECT_EQ(FIIdHandleEvidence(handle, kBase, &id, &evidence), kFiOk);
  EXPECT_EQ(id, sample.Number(1));
  EXPECT_EQ(evidence.basis & kFiBasisCorrection, 0);
  EXPECT_EQ(FIIdHandleEvidence(handle, kBase | kFiSupplement, &id, &evidence), kFiOk);
  EXPECT_EQ(id, sample.Number(0));
  const bool isCorrected = sample.Number(0) != sample.Number(1);
  EXPECT_EQ((evidence.basis & kFiBasisCorrection) != 0, isCorrected);
  EXPECT_TRUE(!isCorrected || evidence.signature == sample.Number(1));
}

TEST(Corrections, Files) {
  for (const testing::Sample& sample : testing::ReadSamples("corrections.txt", 5, 1)) {
    SCOPED_TRACE(sample.place + ": " + sample.columns[2]);
    testing::MemoryHandle handle(testing::SampleBytes(sample.columns[3]), sample.columns[4]);
    ExpectBoth(&handle, sample);
    EXPECT_EQ(handle.position, 0);
  }
}

// BIFF8 under the class of Excel 5.0, alone and beside a workbook of that version.
TEST(Corrections, Workbooks) {
  constexpr const char* kBiff8 = "09 08 10 00 00 06 05 00 D3 10 CC 07";
  constexpr const char* kBiff5 = "09 08 08 00 00 05 05 00 D3 10 CC 07";
  const struct {
    int answer;
    std::string document;
  } kCases[] = {
      {1438, std::string("'Workbook'= ") + kBiff8},
      {1438, std::string("'Book'= ") + kBiff8},
      {1424, std::string("'Workbook'= ") + kBiff5},
      {1424, std::string("'Workbook'= ") + kBiff8 + "; 'Book'= " + kBiff5},
  };
  for (const auto& test : kCases) {
    SCOPED_TRACE(test.document);
    testing::StorageHandle handle(testing::SampleStorage(test.document));
    handle.classId = ClassId{0x10, 0x08, 0x02, 0, 0, 0, 0, 0, 0xC0, 0, 0, 0, 0, 0, 0, 0x46};
    ExpectBoth(&handle, {"", {std::to_string(test.answer), "1424"}});
  }
}

}  // namespace
}  // namespace fi
