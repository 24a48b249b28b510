#include "probes/content/plain_text.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/support/bytes.h"
#include "tests/support/memory_handle.h"

namespace fi {
namespace {

using ::fi::testing::Bytes;
using ::fi::testing::MemoryHandle;

constexpr FormatId kNone = kFormatUnknown;
constexpr size_t kWindow = 65536;

FormatId Classify(MemoryHandle& handle) {
  const ScopedStream stream(&handle);
  return ClassifyPlainText(stream.get());
}

FormatId Classify(const std::string& bytes) {
  MemoryHandle handle(bytes);
  return Classify(handle);
}

std::string Repeat(const std::string& unit, size_t size) {
  std::string text;
  while (text.size() < size) text += unit;
  text.resize(size);
  return text;
}

// ASCII text as UTF-16.
std::string Utf16(const std::string& text, bool bigEndian) {
  std::string wide;
  for (const char c : text) wide += bigEndian ? std::string{'\0', c} : std::string{c, '\0'};
  return wide;
}

struct Case {
  const char* name;
  std::string bytes;
  FormatId expected;
};

void Check(const std::vector<Case>& cases) {
  for (const Case& test : cases) {
    SCOPED_TRACE(test.name);
    EXPECT_EQ(Classify(test.bytes), test.expected);
    MemoryHandle dribbling(test.bytes);
    dribbling.mostPerRead = 1;
    dribbling.has64Bit = false;
    EXPECT_EQ(Classify(dribbling), test.expected) << "one byte a read";
    // What the signatures left in the stream's buffer must not change the answer.
    MemoryHandle handle(test.bytes);
    const ScopedStream stream(&handle);
    IdStreamGetByte(stream.get());
    EXPECT_EQ(ClassifyPlainText(stream.get()), test.expected) << "with a filled stream";
  }
}

TEST(PlainTextTest, MarksDecideAtOnce) {
  Check({
      {"empty", "", kNone},
      {"little-endian", "\xFF\xFE", kTextUtf16},
      {"big-endian", "\xFE\xFF", kTextUtf16},
      {"before binary data", Bytes("\xFF\xFE\0\0\0\1"), kTextUtf16},
      {"half a mark", "\xFF", kNone},
      {"UTF-8", "\xEF\xBB\xBFtext", kTextUtf8},
      {"two bytes of the UTF-8 mark", "\xEF\xBB", kTextUtf8},
      {"one byte of the UTF-8 mark", "\xEF", kNone},
  });
}

TEST(PlainTextTest, AsciiIsTextUnlessItHoldsNulOrControls) {
  const std::string line = "The quick brown fox jumps over the lazy dog.\r\n";
  const std::string nul = Bytes("\0");
  Check({
      {"one letter", "a", kTextAscii},
      {"one NUL", nul, kNone},
      {"one control", "\x01", kNone},
      {"word without a line end", "hello", kTextAscii},
      {"lines that end in CR", "one\rtwo\rthree\r", kTextAscii},
      {"layout controls and escape", "\a\b\t\v\f\x1B[1mbold\x1B[0m\n", kTextAscii},
      {"DEL", "abc\x7F\n", kNone},
      {"magic with a control", "DRACO\x01", kNone},
      {"NUL behind text", Repeat(line, 3000) + nul, kNone},
      {"one control in 64 bytes", Repeat(line, 63) + "\x01", kTextAscii},
      {"one control in 63 bytes", Repeat(line, 62) + "\x01", kNone},
      {"the end of a DOS file", "dir\r\n\x1A", kTextAscii},
      {"filler up to a CP/M record", "dir\r\n" + std::string(123, '\x1A'), kTextAscii},
      {"SUB without a line end before it", "VIS000\x1A", kNone},
      {"SUB in the middle", "KTX 11\r\n\x1A\n", kNone},
      {"full window", Repeat(line, kWindow), kTextAscii},
      {"NUL behind the window", Repeat(line, kWindow) + nul, kTextAscii},
      {"NUL at the end of the window", Repeat(line, kWindow - 1) + nul, kNone},
  });
}

TEST(PlainTextTest, Utf8NeedsOneSequenceAndNoneBroken) {
  // Text that the code-page rules accept when its sequence is broken.
  const std::string text = Repeat("plain words and blanks\n", 253);
  Check({
      {"two bytes", text + "\xC3\xA9", kTextUtf8},
      {"three bytes", text + "\xE2\x82\xAC", kTextUtf8},
      {"four bytes", text + "\xF0\x9F\x8D\xA3", kTextUtf8},
      {"at the very start", "\xC3\xA9", kTextUtf8},
      {"Cyrillic", "\xD0\x9F\xD1\x80\xD0\xB8\xD0\xB2\xD0\xB5\xD1\x82\n", kTextUtf8},
      {"last code point", text + "\xF4\x8F\xBF\xBF", kTextUtf8},
      {"overlong of two", text + "\xC1\xBF", kTextCodePage},
      {"overlong of three", text + "\xE0\x9F\xBF", kTextCodePage},
      {"shortest of three", text + "\xE0\xA0\x80", kTextUtf8},
      {"overlong of four", text + "\xF0\x8F\xBF\xBF", kTextCodePage},
      {"shortest of four", text + "\xF0\x90\x80\x80", kTextUtf8},
      {"surrogate", text + "\xED\xA0\x80", kTextCodePage},
      {"before the surrogates", text + "\xED\x9F\xBF", kTextUtf8},
      {"beyond the last code point", text + "\xF4\x90\x80\x80", kTextCodePage},
      {"lead byte F5", text + "\xF5\x80\x80\x80", kTextCodePage},
      {"lone continuation", text + "\x80 ", kTextCodePage},
      {"one continuation too many", text + "\xC3\xA9\xA9 ", kTextCodePage},
      {"lead without continuation", text + "\xE2\x82 ", kTextCodePage},
      {"cut by the end of the file", text + "\xE2\x82", kTextCodePage},
      {"cut by the window", Repeat("word ", kWindow - 2) + "\xE2\x82\xAC", kTextUtf8},
      {"whole at the end of the window", Repeat("word ", kWindow - 3) + "\xE2\x82\xAC", kTextUtf8},
      {"broken at the end of the window", Repeat("word ", kWindow - 2) + "\xE2x!", kTextCodePage},
      {"lead at the end of a full file", Repeat("word ", kWindow - 1) + "\xC3", kTextCodePage},
      {"the same with more behind", Repeat("word ", kWindow - 1) + "\xC3\xA9", kTextUtf8},
      {"with controls", "\xCD\xAB\x18\x34", kNone},
  });
}

// Every place that a sequence can have in the blocks of the counting loops.
TEST(PlainTextTest, Utf8IsCheckedAcrossBlocks) {
  for (size_t before = 0; before < 300; ++before) {
    const std::string head = Repeat("words ", before);
    const std::string tail = Repeat(" words", 200);
    EXPECT_EQ(Classify(head + "\xF0\x9F\x8D\xA3" + tail), kTextUtf8) << before;
    EXPECT_EQ(Classify(head + "\xF0\x9F\x8D" + tail), kTextCodePage) << before;
  }
}

TEST(PlainTextTest, Utf16WithoutAMarkIsVerified) {
  const std::string text = "Name: value, and more\r\n";
  const std::string le = Utf16(text, false);
  const std::string letter = Utf16("a", false);
  Check({
      {"little-endian", le, kTextUtf16},
      {"big-endian", Utf16(text, true), kTextUtf16},
      {"one character", letter, kTextUtf16},
      {"odd length", le + "x", kNone},
      {"a zero unit", le + Bytes("\0\0"), kNone},
      {"Japanese behind Latin letters", le + "\x53\x30\x8C\x30\x8F\x30", kTextUtf16},
      {"surrogate pair", le + "\x3C\xD8\x63\xDF", kTextUtf16},
      {"lone high surrogate", le + "\x3C\xD8" + le, kNone},
      {"high surrogate at the end", le + "\x3C\xD8", kNone},
      {"lone low surrogate", le + "\x63\xDF" + le, kNone},
      {"controls", Bytes("\1\0\2\0\3\0\4\0"), kNone},
      {"units that no script in use has", letter + "\x34\x13\x35\x13\x36\x13", kNone},
      {"small numbers", Bytes("\0\x02\x20\0\0\0\0\x08"), kNone},
      {"no ASCII but the first", letter + Repeat("\x4E\x4E", 400), kNone},
      {"full window", Repeat(le, kWindow), kTextUtf16},
      {"pair cut by the window", Repeat(letter, kWindow - 2) + "\x3C\xD8\x63\xDF", kTextUtf16},
      {"odd length behind the window", Repeat(letter, kWindow + 1), kNone},
  });
}

TEST(PlainTextTest, CodePages) {
  const std::string german = "Gr\xFC\xDF\x65 aus K\xF6ln\n";
  Check({
      {"Latin-1", german, kTextCodePage},
      {"one sign in a line", "7bit content with euro \xA4 symbol \r\n", kTextCodePage},
      {"Cyrillic", "\xCF\xF0\xE8\xE2\xE5\xF2, \xFF \xEC\xE8\xF0 \xE8 \xE4\xF0\n", kTextCodePage},
      {"Shift-JIS", Repeat("\x82\xB1\x82\xEA\x82\xED\x83\x65\x83\x58\x83\x67\x82\xC5\r\n", 160),
       kTextCodePage},
      {"numbers with a few letters", Repeat("12;34;M\xFCller;56\r\n", 90), kTextCodePage},
      {"magic of four bytes", "MAR\x80", kNone},
      {"four high bytes", "\xFF\xD8\xFF\xD9", kNone},
      {"high bytes with a line end", "\r\xFF\xCD\xAB", kNone},
      {"control", Repeat(german, 300) + "\x01", kNone},
      {"one control in 512 bytes", Repeat(german, 511) + "\x01", kTextCodePage},
      {"no blanks", Repeat("<=\xBF\xBF;PW0.10PE\x9D", 4000), kNone},
      {"NUL", german + Bytes("\0"), kNone},
  });
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
      EXPECT_EQ(Classify(bytes), kNone) << size << " bytes, round " << round;
    }
  }
}

TEST(PlainTextTest, Ebcdic) {
  const std::string hello = "\xC8\x85\x93\x93\x96\x40\xA6\x96\x99\x93\x84";  // Hello world
  Check({
      {"line ends 15", hello + "\x15" + hello + "\x15", kTextEbcdic},
      {"line ends 25", hello + "\x25" + hello + "\x25", kTextEbcdic},
      {"records of 80", hello + std::string(69, '\x40'), kTextEbcdic},
      {"a single blank", hello, kNone},
      {"ASCII blanks", hello + " " + hello + " ", kNone},
      {"at-signs of ASCII", "@@@ a@b @@@\n", kTextAscii},
      {"blanks of Shift-JIS", Repeat("\x81\x40\x82\xB1\x81\x40\x82\xEA\n", 270), kTextCodePage},
  });
}

TEST(PlainTextTest, ReadsTextOnceAndBinaryFilesNotAtAll) {
  MemoryHandle text(Repeat("words ", 200000));
  EXPECT_EQ(Classify(text), kTextAscii);
  EXPECT_EQ(text.reads, 1u);
  EXPECT_EQ(text.bytesRead, kWindow);

  MemoryHandle binary(Bytes("BIN\0") + Repeat("words ", 200000));
  const ScopedStream stream(&binary);
  IdStreamGetByte(stream.get());
  EXPECT_EQ(ClassifyPlainText(stream.get()), kNone);
  EXPECT_EQ(binary.reads, 1u) << "the stream's buffer tells";
}

TEST(PlainTextTest, SurvivesAFailingHandle) {
  for (uint64_t call = 1; call <= 3; ++call) {
    MemoryHandle handle("some words");
    handle.failingSeek = call;
    const FormatId id = Classify(handle);
    EXPECT_TRUE(id == kTextAscii || id == kNone) << "seek " << call;
  }
  MemoryHandle handle("some words");
  handle.failingRead = 1;
  EXPECT_EQ(Classify(handle), kNone);
}

}  // namespace
}  // namespace fi
