#include "platform/delimited_text.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "engine/id_stream.h"
#include "tests/support/memory_handle.h"

namespace fi {
namespace {

using ::fi::testing::MemoryHandle;

constexpr FormatId kAscii = 4005;
constexpr FormatId kUtf8 = 4025;
constexpr FormatId kUtf16 = 4003;
constexpr FormatId kEbcdic = 1184;
constexpr FormatId kComma = 3204;
constexpr FormatId kTab = 3211;
constexpr FormatId kSemicolon = 3212;
constexpr FormatId kBar = 3213;

FormatId Sniff(MemoryHandle& handle, FormatId id = kAscii) {
  const ScopedStream stream(&handle);
  CsvSniffer sniffer{};
  EXPECT_EQ(InitCSV(&sniffer, stream.get(), id), 0u);
  const bool delimited = IsCSV(&sniffer) == 1;
  DeinitCSV(&sniffer);
  EXPECT_EQ(delimited, sniffer.id != id);
  return sniffer.id;
}

FormatId Sniff(const std::string& bytes, FormatId id = kAscii) {
  MemoryHandle handle(bytes);
  return Sniff(handle, id);
}

std::string Repeat(const std::string& unit, size_t times) {
  std::string text;
  for (size_t i = 0; i < times; ++i) text += unit;
  return text;
}

struct Case {
  const char* name;
  std::string bytes;
  FormatId expected;
};

void Check(const std::vector<Case>& cases) {
  for (const Case& test : cases) {
    SCOPED_TRACE(test.name);
    EXPECT_EQ(Sniff(test.bytes), test.expected);
    MemoryHandle dribbling(test.bytes);
    dribbling.mostPerRead = 7;
    EXPECT_EQ(Sniff(dribbling), test.expected) << "short reads";
  }
}

TEST(DelimitedTextTest, Tables) {
  Check({
      {"comma", "id,name\n1,John Doe\n2,Jane Smith\n", kComma},
      {"tab", "id\tname\r\n1\tJohn Doe\r\n", kTab},
      {"semicolon", "id;name;size\r1;a;2\r2;b;3\r", kSemicolon},
      {"bar", "id|name\n1|a\n2|b", kBar},
      {"no line end behind the last record", "a,b\n1,2", kComma},
      {"blank lines", "a,b\n\n1,2\n \n3,4\n", kComma},
      {"comments", "# made, by, hand\na,b\n# more\n1,2\n", kComma},
      {"a spreadsheet's own hint", "sep=;\na;b\n1;2\n", kSemicolon},
      {"empty fields", "a,b,c\n,,\n1,,3\n", kComma},
      {"header without the row names", "x\ty\nr1\t1\t2\nr2\t3\t4\n", kTab},
      {"decimal commas", "a;b;c\n1,5;2,5;3,5\n4,5;5,5;6,5\n7,5;8,5;9,5\n", kSemicolon},
      {"bars inside one of many fields", Repeat("1,2,3,4,x|y\n", 9), kComma},
      {"an exception in sixteen", Repeat("1,2,3\n", 8) + "1,2\n" + Repeat("1,2,3\n", 8), kComma},
      {"two in sixteen", Repeat("1,2,3\n", 8) + "1,2\n1,2\n" + Repeat("1,2,3\n", 8), kAscii},
      {"one record", "a,b,c\n", kAscii},
      {"a number that follows a time", "t,n\n12:30:59,49673\n12:31:00,123\n", kComma},
      {"blanks behind the commas", Repeat("1, 2, 3\n", 4), kComma},
  });
}

TEST(DelimitedTextTest, Quotes) {
  Check({
      {"delimiter in quotes", "a,b\n\"x,y,z\",2\n", kComma},
      {"line ends in quotes", "a,b\n\"x\ny\r\nz\",2\n\"\n\",3\n", kComma},
      {"doubled quotes", "a,b\n\"say \"\"hi, you\"\"\",2\n", kComma},
      {"empty in quotes", "\"\",\"\"\n\"\",\"\"\n", kComma},
      {"quotes inside a field", "a,b\n6\" pipe,2\n", kComma},
      {"text behind the closing quote", "\"Well,\" he said\n\"Yes,\" I said\n", kAscii},
      {"quote that never closes", "a,b\n\"x,2\n", kAscii},
      {"and in one of many records", Repeat("a,b\n", 20) + "\"x,2\n" + Repeat("a,b\n", 20), kComma},
  });
}

TEST(DelimitedTextTest, WhatLooksAlikeIsNotATable) {
  Check({
      {"empty", "", kAscii},
      {"prose", "It was late, and the wind,\nwhich had risen, blew.\nNobody, I think, saw it.\n",
       kAscii},
      {"two sentences", "Hi, Bob\nBye, Al\n", kAscii},
      {"lines that a comma ends", "Dear Sir,\nand Madam,\n", kAscii},
      {"statements", "int a;\nint b;\nint c;\n", kAscii},
      {"calls", Repeat("add(1, 2);\n", 20), kAscii},
      {"macro list", Repeat("ENTRY(Cold,cold)\n", 20), kAscii},
      {"array rows", "int t[] = {\n" + Repeat("1, 2, 3,\n", 20) + "};\n", kAscii},
      {"JSON lines", Repeat("{\"a\":1,\"b\":2}\n", 20), kAscii},
      {"log", Repeat("2020-01-01 12:30:59,123 INFO ready\n", 20), kAscii},
      {"calendar", "BEGIN:VEVENT\nORGANIZER;CN=x:y\nEND:VEVENT\n", kAscii},
      {"indented lines", Repeat("\tmove it\n", 20), kAscii},
      {"drawn table", Repeat("| a | b |\n", 20), kAscii},
      {"key and value", "[section]\nkey=1,2\nother=3,4\n", kAscii},
      {"mail header", "From: a@b\nTo: c, d\nSubject: e, f\n\ntext\n", kAscii},
  });
}

TEST(DelimitedTextTest, Encodings) {
  const std::string table = "a,b\n\"x,\ny\",2\n";
  std::string le = "\xFF\xFE";
  std::string be = "\xFE\xFF";
  for (const char c : table) {
    le += {c, '\0'};
    be += {'\0', c};
  }
  EXPECT_EQ(Sniff("\xEF\xBB\xBF\"a,b\",c\n\"1,2\",3\n", kUtf8), kComma);
  EXPECT_EQ(Sniff(le, kUtf16), kComma);
  EXPECT_EQ(Sniff(be, kUtf16), kComma);
  EXPECT_EQ(Sniff(le.substr(2), kUtf16), kComma);
  EXPECT_EQ(Sniff(be.substr(2), kUtf16), kComma);
  EXPECT_EQ(Sniff(be.substr(0, 3), kUtf16), kUtf16) << "nothing but the mark";
  // U+2C0A holds the bytes of a comma and a line feed, and is neither.
  std::string units = "\xFF\xFE";
  for (int i = 0; i < 20; ++i)
    units += std::string(
        "a\0\x0A\x2C"
        "b\0",
        6);
  EXPECT_EQ(Sniff(units, kUtf16), kUtf16);
  EXPECT_EQ(Sniff(table, kEbcdic), kEbcdic);
}

TEST(DelimitedTextTest, ReadsMoreOnlyForWideRecords) {
  constexpr uint64_t kFirst = 8 * 1024;
  constexpr uint64_t kMost = 64 * 1024;
  struct Window {
    const char* name;
    std::string bytes;
    FormatId expected;
    uint64_t read;
  };
  const std::string wide = Repeat("12345678,", 1200) + "x\n";  // 10.8 KB
  const Window windows[] = {
      {"narrow", Repeat("1,2,3\n", 20000), kComma, kFirst},
      {"cut inside a record", Repeat("123,456\n", 1023) + "1,2,3,4,5,6\n1,2\n", kComma, kFirst},
      {"cut inside quotes", Repeat("1,2\n", 2000) + "\"" + Repeat("x,y\n", 9000), kComma, kFirst},
      {"prose", Repeat("words, and more of them\n\nas they come\n", 3000), kAscii, kFirst},
      {"wide records", Repeat(wide, 20), kComma, kFirst + kMost},
      {"no line end at all", Repeat("1,", 60000), kAscii, kFirst + kMost},
  };
  for (const Window& test : windows) {
    SCOPED_TRACE(test.name);
    MemoryHandle handle(test.bytes);
    EXPECT_EQ(Sniff(handle), test.expected);
    EXPECT_EQ(handle.bytesRead, test.read);
  }
}

}  // namespace
}  // namespace fi
