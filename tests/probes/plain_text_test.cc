// What is no matter of samples; those are in tests/data/probes/plain_text.txt.
#include "probes/text/plain_text.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/support/probe_run.h"
#include "tests/support/samples.h"

namespace fi {
namespace {

using testing::MemoryHandle;
using testing::RunProbe;
using testing::SampleBytes;

FormatId Classify(const std::string& bytes) {
  MemoryHandle handle(bytes);
  return RunProbe(ClassifyPlainText, handle);
}

// Every place that a sequence can have in the blocks of the counting loops.
TEST(PlainTextTest, Utf8IsCheckedAcrossBlocks) {
  const std::string whole = "\xF0\x9F\x8D\xA3" + SampleBytes("' words'*34");
  const std::string broken = "\xF0\x9F\x8D" + SampleBytes("' words'*34");
  std::string head;
  for (size_t before = 0; before < 300; ++before) {
    EXPECT_EQ(Classify(head + whole), kTextUtf8) << before;
    EXPECT_EQ(Classify(head + broken), kTextCodePage) << before;
    head += "words "[before % 6];
  }
}

TEST(PlainTextTest, CompressedDataIsNotText) {
  uint32_t state = 1;
  for (const size_t size : {64u, 128u, 1000u, 65536u}) {
    for (int round = 0; round < 50; ++round) {
      std::string bytes;
      for (size_t i = 0; i < size; ++i) {
        state = state * 1664525 + 1013904223;
        bytes += static_cast<char>((state >> 24) % 255 + 1);  // no NUL gives it away
      }
      EXPECT_EQ(Classify(bytes), kFormatUnknown) << size << " bytes, round " << round;
    }
  }
}

TEST(PlainTextTest, ReadsTextOnceAndBinaryFilesNotAtAll) {
  MemoryHandle text(SampleBytes("'words '*200000"));
  EXPECT_EQ(RunProbe(ClassifyPlainText, text), kTextAscii);
  EXPECT_EQ(text.reads, 1u);
  MemoryHandle binary(SampleBytes("'BIN' 00 'words '*200000"));
  EXPECT_EQ(RunProbe(ClassifyPlainText, binary, true), kFormatUnknown);
  EXPECT_EQ(binary.reads, 1u) << "the stream's buffer tells";
}

TEST(PlainTextTest, SurvivesAFailingHandle) {
  for (uint64_t call = 1; call <= 3; ++call) {
    MemoryHandle handle("some words");
    handle.failingSeek = call;
    const FormatId id = RunProbe(ClassifyPlainText, handle);
    EXPECT_TRUE(id == kTextAscii || id == kFormatUnknown) << "seek " << call;
  }
  MemoryHandle handle("some words");
  handle.failingRead = 1;
  EXPECT_EQ(RunProbe(ClassifyPlainText, handle), kFormatUnknown);
}

}  // namespace
}  // namespace fi
