#include "engine/interpreter.h"

#include <gtest/gtest.h>

#include <string>

#include "engine/signature_encoder.h"
#include "tests/support/bytes.h"
#include "tests/support/memory_handle.h"

namespace fi {
namespace {

using testing::Bytes;
using testing::File;
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

struct Case {
  const char* name;
  std::string program;
  std::string file;
  bool matches;
  int64_t position;  // where the stream is left
};

TEST(Interpreter, Tests) {
  const std::string far = File({{5000, "end"}});
  const Case cases[] = {
      {"literals", "%PDF", "%PDF-1.4", true, 4},
      {"literals, last differs", "%PDF", "%PDX", false, 4},
      {"literal at end of data", "%PDF", "%PD", false, 3},
      {"no tests", "", "", true, 0},
      {"escaped literal", Bytes("\xFF\xFF"), "\xFF", true, 1},
      {"escaped literal, end of data", Bytes("\xFF\xFF"), "", false, 0},
      {"escaped literal, other byte", Bytes("\xFF\xFF"), "\xFE", false, 1},
      {"not-byte", Bytes("\xFF\x03\x41"), "B", true, 1},
      {"not-byte, that byte", Bytes("\xFF\x03\x41"), "A", false, 1},
      {"not-byte, end of data", Bytes("\xFF\x03\x41"), "", false, 0},
      {"range", Bytes("\xFF\x04\x03\x30\x39"), "129", true, 3},
      {"range, third byte above", Bytes("\xFF\x04\x03\x30\x39"), "12a", false, 3},
      {"range, below", Bytes("\xFF\x04\x03\x30\x39"), "/23", false, 1},
      {"range is unsigned", Bytes("\xFF\x04\x01\x80\xFF"), "\xFF", true, 1},
      {"range, end of data", Bytes("\xFF\x04\x03\x00\xFF"), "12", false, 2},
      {"range of no bytes", Bytes("\xFF\x04\x00\x30\x39"), "", true, 0},
      {"range upside down", Bytes("\xFF\x04\x01\x39\x30"), "5", false, 1},
      {"words outside", Bytes("\xFF\x05\x01\x00\x00\xFF\x00"), Bytes("\0\1"), true, 2},
      {"words outside, lower bound", Bytes("\xFF\x05\x01\x00\x00\xFF\x00"), Bytes("\0\0"), false,
       2},
      {"words outside, upper bound", Bytes("\xFF\x05\x01\x00\x00\xFF\x00"), Bytes("\xFF\0"), false,
       2},
      {"words outside, FFFF", Bytes("\xFF\x05\x01\x00\x00\xFF\x00"), "\xFF\xFF", false, 2},
      {"words outside, second", Bytes("\xFF\x05\x02\x05\x00\x06\x00"), Bytes("\1\0\5\0"), false, 4},
      {"words outside, half a word", Bytes("\xFF\x05\x01\x05\x00\x06\x00"), "\1", false, 1},
      {"skip",
       Bytes("\xFF\x06\x03"
             "d"),
       "abcd", true, 4},
      {"skip to the end", Bytes("\xFF\x06\x04"), "abcd", true, 4},
      {"skip past the end", Bytes("\xFF\x06\x05"), "abcd", false, 4},
      {"skip nothing", Bytes("\xFF\x06\x00"), "", true, 0},
      {"one of two, first",
       Bytes("\xFF\x0D"
             "ab"),
       "a", true, 1},
      {"one of two, second",
       Bytes("\xFF\x0D"
             "ab"),
       "b", true, 1},
      {"one of two, neither",
       Bytes("\xFF\x0D"
             "ab"),
       "c", false, 1},
      {"one of two, end of data",
       Bytes("\xFF\x0D"
             "ab"),
       "", false, 0},
      {"rewind",
       Bytes("ab\xFF\x0A"
             "ab"),
       "ab", true, 2},
      {"seek inside the buffer",
       Bytes("\xFF\x01\x02\x00\x00\x00"
             "c"),
       "abc", true, 3},
      {"seek outside the buffer",
       Bytes("x\xFF\x01\x88\x13\x00\x00"
             "end"),
       far, true, 5003},
      {"seek and rewind",
       Bytes("\xFF\x01\x88\x13\x00\x00"
             "e\xFF\x0Ax"),
       far, true, 1},
      {"seek past the end",
       Bytes("\xFF\x01\x09\x00\x00\x00"
             "c"),
       "abc", false, 9},
      {"seek to 2 GB turns negative",
       Bytes("\xFF\x01\x00\x00\x00\x80"
             "c"),
       "abc", false, -2147483648LL},
      {"seek from the end",
       Bytes("\xFF\x0F\xFD\xFF\xFF\xFF"
             "end"),
       far, true, 5003},
      {"seek from the end, before the start", Bytes("\xFF\x0F\xFC\xFF\xFF\xFF"), "abc", false, 0},
      {"extension is a prefix",
       Bytes("\xFF\x0E\x02"
             "AI"),
       "", true, 0},
      {"extension, whole",
       Bytes("\xFF\x0E\x05"
             "AIFF\0"),
       "", true, 0},
      {"extension differs",
       Bytes("\xFF\x0E\x03"
             "AIX"),
       "", false, 0},
      {"extension longer than any",
       Bytes("\xFF\x0E\x06"
             "AIFF\0\0"),
       "", false, 0},
      {"class on a file",
       Bytes("\xFF\x10"
             "0123456789abcdef"),
       "", false, 0},
      {"no-op 00",
       Bytes("\xFF\x00"
             "a"),
       "a", true, 1},
      {"no-op E2",
       Bytes("\xFF\xE2"
             "a"),
       "a", true, 1},
      {"end of entry does nothing",
       Bytes("a\xFF\xE0"
             "b"),
       "ab", true, 2},
      {"end of table", Bytes("a\xFF\xE1"), "ab", false, 1},
      {"unknown probe code: its second byte is executed",
       Bytes("\xFF\x0C\x00"
             "a"),
       "a", true, 1},
  };
  for (const Case& test : cases) {
    for (const uint32_t mostPerRead : {UINT32_MAX, 1u}) {
      const Outcome outcome = Execute(Returning(test.program), test.file, mostPerRead);
      EXPECT_EQ(outcome.id, test.matches ? kHit : kNoMatch) << test.name;
      EXPECT_EQ(outcome.position, test.position) << test.name;
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

TEST(Interpreter, FailingHandleIsNoMatch) {
  const std::string file = File({{5000, "end"}});
  for (uint64_t failing = 1; failing <= 3; ++failing) {
    MemoryHandle handle(file);
    handle.failingSeek = failing;
    const ScopedStream stream(&handle);
    SignatureRun run;
    run.stream = stream.get();
    const std::string program =
        Returning(Bytes("x\xFF\x01\x88\x13\x00\x00"
                        "end\xFF\x0Ax"));
    const FormatId id = RunProgram(reinterpret_cast<const uint8_t*>(program.data()), run);
    EXPECT_EQ(id, failing == 3 ? kHit : kNoMatch) << failing;
  }
}

// The notation's encoder: one row a construct, against bytes written by hand.
constexpr std::string_view kNotation[] = {
    "rw 'OgS' FF 0A nop00 -> 1557",
    "at(65) atend(-18) skip(4) not(00) oneof(31,32) -> probe 1730",
    "range2(00-1F) wnotin1(0-200) FF*2 ci(A) ic(B) -> 1",
    "ext('AI') name(M2:/p) name(aid) raw(FF 0C 00) -> 2",
    "class(00 01 02 03 04 05 06 07 08 09 0A 0B 0C 0D 0E 0F) -> 3",
};
constexpr auto kEncoded = EncodeTable<256>(kNotation);

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
