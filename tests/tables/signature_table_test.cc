#include "tables/signature_table.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "formatid/platform.h"
#include "signature/signature_walk.h"
#include "tests/support/bytes.h"
#include "tests/support/memory_handle.h"
#include "tests/support/plain_walk.h"
#include "tests/support/samples.h"

namespace fi {
namespace {

using testing::Bytes;

WalkResult Walk(const std::string& file, const std::string& extension = "") {
  testing::MemoryHandle handle(file);
  const ScopedStream stream(&handle);
  SignatureRun run;
  run.stream = stream.get();
  std::copy(extension.begin(), extension.end(), run.extension.begin());
  return WalkSignatures(run);
}

TEST(SignatureTable, Samples) {
  for (const testing::Sample& sample : testing::ReadSamples("signatures.txt", 4, 1)) {
    const std::string file = testing::SampleBytes(sample.columns[2]);
    EXPECT_EQ(Walk(file, sample.columns[3]).id, sample.Number(0))
        << sample.place << ": " << sample.columns[1];
  }
}

TEST(SignatureTable, StoragesByClass) {
  struct ClassSample {
    const char* name;
    std::string classId;
    FormatId expected;
    uint16_t basis;
  };
  const ClassSample samples[] = {
      {"PowerPoint 97", Bytes("\x10\x8D\x81\x64\x9B\x4F\xCF\x11\x86\xEA\x00\xAA\x00\xB9\x29\xE8"),
       1581, kFiBasisClass},
      {"Excel 5", Bytes("\x10\x08\x02\0\0\0\0\0\xC0\0\0\0\0\0\0\x46"), 1424, kFiBasisClass},
      {"mail message", Bytes("\x0B\x0D\x02\0\0\0\0\0\xC0\0\0\0\0\0\0\x46"), 1143, kFiBasisContent},
      {"unknown", "0123456789abcdef", kNoMatch, kFiBasisNone},
      {"none", std::string(16, '\0'), kNoMatch, kFiBasisNone},
  };
  for (const ClassSample& sample : samples) {
    testing::MemoryHandle handle(Bytes("\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1"));
    const ScopedStream stream(&handle);
    SignatureRun run;
    run.stream = stream.get();
    run.isStorage = true;
    std::copy(sample.classId.begin(), sample.classId.end(), run.classId.begin());
    const WalkResult result = WalkSignatures(run);
    EXPECT_EQ(result.id, sample.expected) << sample.name;
    EXPECT_EQ(run.classifierRan, sample.name == std::string("none") ? 1u : 0u) << sample.name;
    const uint16_t basis = result.row == 0 ? uint16_t{kFiBasisNone} : BasisOfRow(result.row);
    EXPECT_EQ(basis, sample.basis) << sample.name;
  }
}

TEST(SignatureTable, BasisOfAnswers) {
  EXPECT_EQ(BasisOfRow(Walk("anything", "TGA").row), kFiBasisExtension);
  EXPECT_EQ(BasisOfRow(Walk("%PDF-1.4", "AI").row), kFiBasisSignature);
  EXPECT_EQ(BasisOfRow(Walk("{\\rtf1}").row), kFiBasisContent);
  EXPECT_EQ(BasisOfRow(Walk("<?xml?>\n<?aid?>").row), kFiBasisNamespace);
  EXPECT_EQ(BasisOfRow(Walk("\xEF\xBB\xBF").row), kFiBasisSignature);
}

// Files of random length that begin with the literals of a random row, or with random bytes.
std::string RandomFile(uint32_t seed) {
  uint32_t state = seed * 2654435761u + 1;
  const auto next = [&] { return (state = state * 1664525u + 1013904223u) >> 8; };
  std::string file(next() % 3000, '\0');
  const bool sparse = next() % 2 == 0;
  for (char& c : file) c = static_cast<char>(sparse && next() % 2 == 0 ? 0 : next());
  if (next() % 3 == 0) return file;
  const uint8_t* program = kSignatureTable.bytes.data() + kSignatureTable.starts[next() % 467];
  std::string literals;
  while (program[0] != kEscape || program[1] == kOpRewind || program[1] == kOpLiteralEscape) {
    const bool isEscape = program[0] == kEscape;
    if (!isEscape || program[1] == kOpLiteralEscape) literals += static_cast<char>(program[0]);
    program += isEscape ? 2 : 1;
  }
  return literals + file;
}

TEST(SignatureWalk, RecoversFromAFailedFirstRead) {
  testing::MemoryHandle handle("GIF89a");
  handle.failingRead = 1;
  const ScopedStream stream(&handle);
  SignatureRun run;
  run.stream = stream.get();
  EXPECT_EQ(WalkSignatures(run).id, 1503);
}

TEST(SignatureWalk, IndexAgreesWithThePlainWalk) {
  const Extension extensions[] = {{}, {'R', 'B', 'F'}, {'I', 'M', 'G'}, {'A', 'I'}};
  uint32_t matches = 0;
  for (uint32_t seed = 0; seed < 20000; ++seed) {
    const std::string file = RandomFile(seed);
    WalkResult results[2];
    int64_t positions[2];
    for (const bool plain : {false, true}) {
      testing::MemoryHandle handle(file);
      const ScopedStream stream(&handle);
      SignatureRun run;
      run.stream = stream.get();
      run.extension = extensions[seed % 4];
      run.isStorage = seed % 5 == 0;
      results[plain] = plain ? testing::PlainWalk(run) : WalkSignatures(run);
      positions[plain] = IdStreamPosition(stream.get());
    }
    ASSERT_EQ(results[0].id, results[1].id) << seed;
    ASSERT_EQ(results[0].row, results[1].row) << seed;
    if (results[0].id == kNoMatch) continue;
    ASSERT_EQ(positions[0], positions[1]) << seed;
    ++matches;
  }
  EXPECT_GT(matches, 500u);
}

}  // namespace
}  // namespace fi
