// Lines by every reader: what ends them, what is kept of them and where a long one is cut.
#include "stream/line_reader.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

#include "stream/text_view.h"
#include "tests/support/memory_handle.h"
#include "tests/support/samples.h"

namespace fi {
namespace {

using testing::MemoryHandle;
using testing::SampleBytes;

// Lines in brackets, up to the end of the data.
std::string LinesOfStream(const std::string& bytes, uint16_t capacity, LineEnds ends,
                          uint32_t mostPerRead) {
  MemoryHandle handle(bytes);
  handle.mostPerRead = mostPerRead;
  const ScopedStream stream(&handle);
  std::string lines;
  for (int i = 0; i < 16; ++i) {
    char buffer[16];
    std::memset(buffer, '!', sizeof(buffer));
    const uint16_t length = ReadLine(buffer, capacity, ends, stream.get());
    EXPECT_EQ(buffer[length], '\0');
    EXPECT_EQ(buffer[capacity], '!');
    if (length == 0 && MetEndOfData(stream.get())) return lines;
    lines += "[" + std::string(buffer, length) + "]";
  }
  return lines + "...";
}

std::string HeadsOfStream(const std::string& bytes, uint32_t limit, uint32_t mostPerRead) {
  MemoryHandle handle(bytes);
  handle.mostPerRead = mostPerRead;
  const ScopedStream stream(&handle);
  std::string lines;
  for (int i = 0; i < 16; ++i) {
    const LineHead line = ReadLineHead(stream.get(), limit);
    if (line.length == 0 && line.end == LineEnd::kDataEnd) return lines;
    lines += "[" + std::string(line.Kept()) + "]";
  }
  return lines + "...";
}

std::string LinesOfText(std::string_view text) {
  std::string result;
  Lines lines(text);
  for (std::string_view line; lines.Next(&line);) result += "[" + std::string(line) + "]";
  return result;
}

TEST(LineReader, EndsLines) {
  const struct {
    const char* bytes;     // in sample notation
    const char* marks;     // ReadLine by marks alone
    const char* formFeed;  // and by form feeds
    const char* head;      // ReadLineHead
    const char* text;      // Lines
  } cases[] = {
      {"'ab' 0A 'c' 0D 'd'", "[ab][c][d]", "[ab][c][d]", "[ab][c][d]", "[ab][c][d]"},
      {"'ab' 0D0A 'c'", "[ab][c]", "[ab][c]", "[ab][c]", "[ab][c]"},
      {"'ab' 0A0D 'c'", "[ab][c]", "[ab][c]", "[ab][c]", "[ab][][c]"},
      {"'a' 0A0A 'b' 0D0D 'c'", "[a][][b][][c]", "[a][][b][][c]", "[a][][b][][c]", "[a][][b][][c]"},
      {"'a' 0C 'b'",
       "[a\f"
       "b]",
       "[a][b]",
       "[a\f"
       "b]",
       "[a\f"
       "b]"},
      {"'a' 0C0A 'b'", "[a\f][b]", "[a][][b]", "[a\f][b]", "[a\f][b]"},
      {"'a' 09 01 0B 'b' 0A 'c'",
       "[a\t\x01\v"
       "b][c]",
       "[a\t\x01\v"
       "b][c]",
       "[a\t\x01\v"
       "b][c]",
       "[a\t\x01\v"
       "b][c]"},
  };
  for (const auto& test : cases) {
    const std::string bytes = SampleBytes(test.bytes);
    EXPECT_EQ(LinesOfText(bytes), test.text) << test.bytes;
    for (const uint32_t mostPerRead : {UINT32_MAX, 1u}) {
      EXPECT_EQ(LinesOfStream(bytes, 9, LineEnds::kMarks, mostPerRead), test.marks) << test.bytes;
      EXPECT_EQ(LinesOfStream(bytes, 9, LineEnds::kMarksAndFormFeed, mostPerRead), test.formFeed)
          << test.bytes;
      EXPECT_EQ(HeadsOfStream(bytes, 9, mostPerRead), test.head) << test.bytes;
    }
  }
}

TEST(LineReader, TakesNulAsAByteOrAsTheEnd) {
  const std::string bytes("ab\0c\nd", 6);
  EXPECT_EQ(LinesOfStream(bytes, 9, LineEnds::kMarks, 1), std::string("[ab\0c][d]", 9));
  EXPECT_EQ(HeadsOfStream(bytes, 9, 1), "[ab][c][d]");
}

TEST(LineReader, CutsLongLines) {
  for (const uint32_t mostPerRead : {UINT32_MAX, 1u}) {
    EXPECT_EQ(LinesOfStream("abcde\nf", 4, LineEnds::kMarks, mostPerRead), "[abc][de][f]");
    EXPECT_EQ(LinesOfStream("abc\nf", 4, LineEnds::kMarks, mostPerRead), "[abc][][f]");
    EXPECT_EQ(LinesOfStream("ab", 2, LineEnds::kMarks, mostPerRead), "[a][b]");
    EXPECT_EQ(HeadsOfStream("abcde\nf", 3, mostPerRead), "[abc][de][f]");
  }
  MemoryHandle handle("a" + std::string(40, 'b') + "\nc");
  const ScopedStream stream(&handle);
  const LineHead line = ReadLineHead(stream.get(), 80);
  EXPECT_EQ(line.length, 41u);
  EXPECT_EQ(line.Kept(), "a" + std::string(15, 'b'));
  EXPECT_EQ(ReadLineHead(stream.get(), 80).Kept(), "c");
}

TEST(LineReader, NeedsRoomForAByteAndItsEnd) {
  MemoryHandle handle("ab");
  const ScopedStream stream(&handle);
  char buffer[2] = {'!', '!'};
  EXPECT_EQ(ReadLine(buffer, 0, LineEnds::kMarks, stream.get()), 0);
  EXPECT_EQ(buffer[0], '!');
  EXPECT_EQ(ReadLine(buffer, 1, LineEnds::kMarks, stream.get()), 0);
  EXPECT_EQ(buffer[0], '\0');
  EXPECT_EQ(IdStreamGetByte(stream.get()), uint32_t{'a'});
}

}  // namespace
}  // namespace fi
