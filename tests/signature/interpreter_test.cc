#include "signature/interpreter.h"

#include <gtest/gtest.h>

#include <string>

#include "signature/signature_encoder.h"
#include "tests/support/bytes.h"
#include "tests/support/memory_handle.h"
#include "tests/support/samples.h"

namespace fi {
namespace {

using testing::Bytes;
using testing::MemoryHandle;

constexpr FormatId kHit = 0x1234;

// `program` with a return of kHit behind it and an end of the table behind that.
std::string Returning(const std::string& program) {
  return program + Bytes("\xFF\x08\x34\x12\xFF\xE1");
}

struct Outcome {
  FormatId id;
  int64_t position;
};

Outcome Execute(const std::string& program, const std::string& file,
                uint32_t mostPerRead = UINT32_MAX) {
  MemoryHandle handle(file);
  handle.mostPerRead = mostPerRead;
  const ScopedStream stream(&handle);
  SignatureRun run;
  run.stream = stream.get();
  run.extension = {'A', 'I', 'F', 'F', 0};
  const FormatId id = RunProgram(reinterpret_cast<const uint8_t*>(program.data()), run);
  return {id, IdStreamPosition(stream.get())};
}

TEST(Interpreter, Tests) {
  for (const testing::Sample& sample : testing::ReadSamples("interpreter.txt", 5)) {
    const std::string program = Returning(testing::SampleBytes(sample.columns[3]));
    const std::string file = testing::SampleBytes(sample.columns[4]);
    for (const uint32_t mostPerRead : {UINT32_MAX, 1u}) {
      const Outcome outcome = Execute(program, file, mostPerRead);
      EXPECT_EQ(outcome.id, sample.Number(0) == 1 ? kHit : kNoMatch) << sample.place;
      EXPECT_EQ(outcome.position, sample.Number(1)) << sample.place;
    }
  }
}

TEST(Interpreter, ProbeResultsEndTheProgramEvenWhenTheyAreNoMatch) {
  EXPECT_EQ(Execute(Returning(Bytes("\xFF\x0C\xEF\x03")), "").id, kNoMatch);  // 1007
  EXPECT_EQ(Execute(Returning(Bytes("\xFF\x0C\x04\x04")), "").id, 1028);
  EXPECT_EQ(Execute(Returning(Bytes("\xFF\x0C\x1F\x05")), "").id, 1311);
}

TEST(Interpreter, ClassInEitherByteOrder) {
  const std::string memory =
      Bytes("\x0B\x0D\x02\x00\x11\x22\x33\x44\xC0\x00\x00\x00\x00\x00\x00\x46");
  const std::string text =
      Bytes("\x00\x02\x0D\x0B\x22\x11\x44\x33\xC0\x00\x00\x00\x00\x00\x00\x46");
  struct ClassCase {
    const char* name;
    std::string operand;
    bool matches;
  };
  const ClassCase cases[] = {
      {"memory order", memory, true},
      {"text order", text, true},
      {"memory order, then text", memory.substr(0, 4) + text.substr(4), false},
      {"last byte differs", memory.substr(0, 15) + "G", false},
      {"eighth byte differs", text.substr(0, 7) + "\x34" + text.substr(8), false},
  };
  for (const ClassCase& test : cases) {
    MemoryHandle handle("");
    const ScopedStream stream(&handle);
    SignatureRun run;
    run.stream = stream.get();
    run.isStorage = true;
    std::copy(memory.begin(), memory.end(), run.classId.begin());
    const std::string program = Returning("\xFF\x10" + test.operand);
    EXPECT_EQ(RunProgram(reinterpret_cast<const uint8_t*>(program.data()), run),
              test.matches ? kHit : kNoMatch)
        << test.name;
  }
}

TEST(Interpreter, RootNameIsReadOnceAndComparedWhole) {
  struct NameCase {
    const char* name;
    std::string file;
    std::string operand;
    bool matches;
  };
  const std::string document = "<?xml version='1.0'?>\n<r xmlns=";
  const std::string longest(255, 'n');
  const NameCase cases[] = {
      {"same", document + "'urn:x'>", "urn:x", true},
      {"operand shorter", document + "'urn:x'>", "urn:", false},
      {"operand longer", document + "'urn:x'>", "urn:xy", false},
      {"empty", document + "''>", "", true},
      {"bytes above 7F", document + "'\xE9'>", "\xE9", true},
      {"no namespace", document, "", false},
      {"255 bytes", document + "'" + longest + "'>", longest, true},
  };
  for (const NameCase& test : cases) {
    MemoryHandle handle(test.file);
    const ScopedStream stream(&handle);
    SignatureRun run;
    run.stream = stream.get();
    // At 255 units the comparison stops before the operand's NUL, which then is a literal.
    const std::string end = test.operand.size() == 255 ? "" : std::string(1, '\0');
    const std::string program = Returning("\xFF\x11" + test.operand + end);
    const auto* first = reinterpret_cast<const uint8_t*>(program.data());
    EXPECT_EQ(RunProgram(first, run), test.matches ? kHit : kNoMatch) << test.name;
    const uint64_t reads = handle.reads;
    EXPECT_EQ(RunProgram(first, run), test.matches ? kHit : kNoMatch) << test.name;
    EXPECT_EQ(handle.reads, reads) << test.name;
  }
}

// The notation's encoder: one row a construct, against bytes written by hand.
constexpr std::string_view kNotation[] = {
    "rw 'OgS' FF 0A nop00 -> 1557",
    "at(65) atend(-18) skip(4) not(00) oneof(31,32) -> probe 1730",
    "range2(00-1F) wnotin1(0-200) FF*2 ci(A) ic(B) -> 1",
    "ext('AI') name(M2:/p) name(aid) raw(FF 0C 00) -> 2",
    "class(00 01 02 03 04 05 06 07 08 09 0A 0B 0C 0D 0E 0F) -> 3",
    "rw 'a' {'|' | 'b}'} {00 | end} -> 4",
};
constexpr auto kEncoded = EncodeTable<ProgramsOf(kNotation), 256>(kNotation);

TEST(SignatureEncoder, Notation) {
  const std::string programs[] = {
      Bytes("\xFF\x0AOgS\xFF\xFF\x0A\xFF\x00\xFF\x08\x15\x06"),
      Bytes(
          "\xFF\x01\x41\x00\x00\x00\xFF\x0F\xEE\xFF\xFF\xFF\xFF\x06\x04\xFF\x03\x00\xFF\x0D\x31\x32"
          "\xFF\x0C\xC2\x06"),
      Bytes("\xFF\x04\x02\x00\x1F\xFF\x05\x01\x00\x00\xC8\x00\xFF\xFF\xFF\xFF\xFF\x0D"
            "Aa\xFF\x0D"
            "bB"
            "\xFF\x08\x01\x00"),
      Bytes("\xFF\x0E\x02"
            "AI\xFF\x11http://www.docmaker4.example/p\0\xFF\x11"
            "aid\0\xFF\x0C\x00\xFF\x08"
            "\x02\x00"),
      Bytes("\xFF\x10\0\1\2\3\4\5\6\7\x8\x9\xA\xB\xC\xD\xE\xF\xFF\x08\x03\x00"),
      Bytes("\xFF\x0A"
            "a|"
            "\0\xFF\x08\4\0"),
      Bytes("\xFF\x0A"
            "a|"
            "\xFF\x0F\xFE\xFF\xFF\xFF"
            "a|"
            "\xFF\x08\4\0"),
      Bytes("\xFF\x0A"
            "ab}"
            "\0\xFF\x08\4\0"),
      Bytes("\xFF\x0A"
            "ab}"
            "\xFF\x0F\xFD\xFF\xFF\xFF"
            "ab}"
            "\xFF\x08\4\0"),
  };
  std::string all;
  for (size_t i = 0; i < std::size(programs); ++i) {
    EXPECT_EQ(kEncoded.starts[i], all.size()) << i;
    all += programs[i] + "\xFF\xE0";
  }
  all += "\xFF\xE1";
  EXPECT_EQ(std::string(kEncoded.bytes.begin(), kEncoded.bytes.begin() + kEncoded.size), all);
}

}  // namespace
}  // namespace fi
