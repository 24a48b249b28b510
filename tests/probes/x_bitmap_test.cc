#include "probes/content/x_bitmap.h"

#include <gtest/gtest.h>

#include <string>

#include "platform/format_ids.h"
#include "tests/support/probe_run.h"

namespace fi {
namespace {

using testing::ExpectAnswers;
using testing::ExpectAnswersWhenCut;
using testing::MemoryHandle;
using testing::RunProbe;

const std::string kSize = "#define a_width 16\n#define a_height 16\n";
const std::string kHotSpot = "#define a_x_hot 1\n#define a_y_hot 1\n";
const std::string kArray = "static char a_bits[] = {\n   0x00, 0x01, 0x02};\n";
const std::string kSample = kSize + kArray;

std::string Name(size_t size) { return std::string(size, 'n'); }

TEST(XBitmap, NeedsItsTokens) {
  const std::string behindName = " 16\n#define a_height 16\n" + kArray;
  const std::string data = "static short a_bits[] = { 0, 0 };";
  ExpectAnswers(
      XBitmapProbe,
      {
          {"width and height", kSample, kFormatXbm},
          {"hot spot", kSize + kHotSpot + data, kFormatXbm},
          {"hot spot, elements of another type", kSize + kHotSpot + kArray, kFormatXbm},
          {"hot spot and no array", kSize + kHotSpot + "extern char a_bits[];\n", kNoMatch},
          {"three definitions", kSize + "#define a_x_hot 1\n" + data + data, kNoMatch},
          {"five definitions", kSize + kHotSpot + "#define a_b 1\n" + data, kNoMatch},
          {"one definition", "#define a_width 16\n" + data + data, kNoMatch},
          {"longer words", "#definX a 1 #define b 1 statical c d e f g h i ", kFormatXbm},
          {"shorter words", "#defi a 1 #define b 1 static c d e f g h i j ", kNoMatch},
          {"upper case", "#DEFINE a 1 #define b 1 static c d e f g h i ", kNoMatch},
          {"smallest", "#defin a b #defin c d static e f g h i j k ", kFormatXbm},
          {"last token without an end", "#defin a b #defin c d static e f g h i j k", kNoMatch},
          {"too few tokens", "#define a 1 #define b 1 static char a_bits[] = {0x00}; ", kNoMatch},
          {"comment before", "/* made by hand */\n" + kSample, kFormatXbm},
          {"comment with numbers", "/* # 1 */ #include\n" + kSample, kNoMatch},
          {"comment to the end of its line", "// by hand\n" + kSample, kFormatXbm},
          {"comment without an end", "/* made by hand\n" + kSample, kNoMatch},
          {"nothing behind the comment", "/* made by hand */\n" + kArray, kNoMatch},
          {"separator before", "\n" + kSample, kNoMatch},
          {"token of 48", "#define " + Name(48) + behindName, kFormatXbm},
          {"token of 49", "#define " + Name(49) + behindName, kNoMatch},
          {"two separators behind 48", "#define " + Name(48) + " " + behindName, kNoMatch},
          // The empty token stands for the value.
          {"empty token behind 48", "#define " + Name(48) + "  #define a_height 16\n" + kArray,
           kFormatXbm},
          {"other separators", "#define\ta\t1\r\n#define\tb\t1\r\nstatic c d e f g h i ",
           kFormatXbm},
          {"form feed is none", "#define\fa 1 #define b 1 static c d e f g h i j ", kNoMatch},
          {"tokens up to the window", kSize + "static c d e f g h" + std::string(4038, ' ') + "i ",
           kNoMatch},
          {"tokens in the window", kSize + "static c d e f g h" + std::string(4037, ' ') + "i ",
           kFormatXbm},
      });
}

TEST(XBitmap, CutAnywhere) {
  ExpectAnswersWhenCut(XBitmapProbe, kSample, {{kSample.size(), kFormatXbm}});
  // With a hot spot, the type of the elements is the last token needed.
  const std::string sample = "/* x */" + kSize + kHotSpot + kArray;
  ExpectAnswersWhenCut(XBitmapProbe, sample, {{sample.size() - kArray.size() + 12, kFormatXbm}});
}

TEST(XBitmap, ReadsNoMoreThanItsWindow) {
  MemoryHandle handle("/* " + std::string(1 << 20, 'x'));
  EXPECT_EQ(RunProbe(XBitmapProbe, handle), kNoMatch);
  EXPECT_EQ(handle.bytesRead, 4096u);
}

}  // namespace
}  // namespace fi
