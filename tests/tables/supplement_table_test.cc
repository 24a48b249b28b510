#include "tables/supplement_table.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <cstdint>
#include <string>
#include <vector>

#include "signature/interpreter.h"
#include "signature/opcodes.h"
#include "tests/support/memory_handle.h"
#include "tests/support/samples.h"

namespace fi {
namespace {

WalkResult PlainWalk(SignatureRun& run) {
  for (uint16_t row = 1; row <= SupplementRows(); ++row) {
    const FormatId id = RunProgram(SupplementProgram(row), run);
    if (id != kNoMatch) return {id, row};
  }
  return {};
}

// Writes what the program asks for from the start of the file or at other places, so far as it is
// given by bytes.
void Follow(const uint8_t* program, std::string& file) {
  size_t at = 0;
  const auto put = [&](uint8_t byte) {
    if (at >= file.size()) file.resize(at + 1);
    file[at++] = static_cast<char>(byte);
  };
  for (;;) {
    const uint8_t* operands = program + 2;
    if (program[0] != kEscape) {
      put(*program++);
    } else if (program[1] == kOpLiteralEscape) {
      put(kEscape);
      program = operands;
    } else if (program[1] == kOpRewind) {
      at = 0;
      program = operands;
    } else if (program[1] == kOpSeek) {
      at = operands[0] | static_cast<size_t>(operands[1]) << 8;
      program = operands + 4;
    } else if (program[1] == kOpSkip) {
      at += operands[0];
      program = operands + 1;
    } else if (program[1] == kOpOneOf) {
      put(operands[1]);
      program = operands + 2;
    } else if (program[1] == kOpByteRange) {
      for (uint8_t i = 0; i < operands[0]; ++i) put(operands[2]);
      program = operands + 3;
    } else {
      return;
    }
  }
}

// The walk by first byte and by places answers what the walk over every row does: for files that
// begin as two rows ask, cut off anywhere.
TEST(SupplementTable, IndexedWalkAgreesWithThePlainWalk) {
  uint32_t state = 1;
  const auto next = [&] { return (state = state * 1664525u + 1013904223u) >> 8; };
  uint32_t matches = 0;
  for (uint32_t seed = 0; seed < 20000; ++seed) {
    std::string file(next() % 2 == 0 ? 0 : next() % 3000, static_cast<char>(next() % 4 * 0x55));
    for (uint32_t i = next() % 3; i > 0; --i) {
      Follow(SupplementProgram(static_cast<uint16_t>(next() % SupplementRows() + 1)), file);
    }
    if (next() % 4 == 0) file.resize(next() % (file.size() + 1));
    WalkResult results[2];
    for (const bool plain : {false, true}) {
      testing::MemoryHandle handle(file);
      const ScopedStream stream(&handle);
      SignatureRun run;
      run.stream = stream.get();
      results[plain] = plain ? PlainWalk(run) : WalkSupplement(run);
    }
    ASSERT_EQ(results[0].id, results[1].id) << seed;
    ASSERT_EQ(results[0].row, results[1].row) << seed;
    if (results[0].id != kNoMatch) ++matches;
  }
  EXPECT_GT(matches, 5000u);
}

Extension ExtensionOf(const std::string& name) {
  Extension extension{};
  std::string text = name.substr(std::min(name.size(), name.rfind('.')));
  text = text.substr(std::min<size_t>(text.size(), 1), extension.size() - 1);
  std::transform(text.begin(), text.end(), extension.begin(),
                 [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
  return extension;
}

// The program as it stands, for the message about a row.
std::string Shown(const uint8_t* program) {
  std::string text;
  for (; program[0] != kEscape || program[1] != kOpEndOfEntry; ++program) {
    constexpr char kDigits[] = "0123456789ABCDEF";
    if (std::isprint(*program)) {
      text += {'\'', static_cast<char>(*program), '\'', ' '};
    } else {
      text += {kDigits[*program >> 4], kDigits[*program & 15], ' '};
    }
  }
  return text;
}

// A row that no sample is named by could be wrong, or lost, and nothing else would tell.
TEST(SupplementTable, EveryRowNamesASample) {
  std::vector<bool> isHeld(SupplementRows() + 1);
  for (const testing::Sample& sample : testing::ReadSupplementSamples()) {
    testing::MemoryHandle handle(testing::SampleBytes(sample.columns[2]));
    const ScopedStream stream(&handle);
    SignatureRun run;
    run.stream = stream.get();
    run.extension = ExtensionOf(sample.columns[3]);
    const WalkResult result = WalkSupplement(run);
    if (result.id == sample.Number(0)) isHeld[result.row] = true;
  }
  for (uint16_t row = 1; row <= SupplementRows(); ++row) {
    const bool isOfBytes = BasisOfSupplementRow(row) != kFiBasisContent;
    EXPECT_TRUE(isHeld[row] || !isOfBytes)
        << "row " << row << ": " << Shown(SupplementProgram(row));
  }
}

}  // namespace
}  // namespace fi
