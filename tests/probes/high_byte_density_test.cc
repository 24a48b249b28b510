#include "probes/content/high_byte_density.h"

#include <gtest/gtest.h>

#include <string>

#include "platform/format_ids.h"
#include "tests/support/bytes.h"
#include "tests/support/probe_run.h"

namespace fi {
namespace {

using testing::Bytes;
using testing::ExpectAnswers;
using testing::ExpectAnswersWhenCut;

TEST(HighByteDensity, OneLineThenHighBytes) {
  const auto line = [](size_t size) { return std::string(size, 'l'); };
  const auto high = [](size_t size) { return std::string(size, '\x80'); };
  ExpectAnswers(
      HighByteDensityProbe,
      {
          {"100 high bytes", "[encrypt]\r\n\r\n" + high(100), kFormatAmiPro},
          {"99 high bytes", "[encrypt]\r\n\r\n" + high(99) + line(400), kNoMatch},
          {"100 among others", "[encrypt]\r\nx\r\n" + line(155) + high(100), kFormatAmiPro},
          {"the last beyond the window", "[encrypt]\r\nx\r\n" + line(156) + high(100), kNoMatch},
          {"longest line", "[encrypt]\r\n" + line(156) + "\r\n" + high(200), kFormatAmiPro},
          {"line too long", "[encrypt]\r\n" + line(157) + "\r\n" + high(200), kNoMatch},
          {"line of 200", "[encrypt]\r\n" + line(200) + "\r\n" + high(200), kNoMatch},
          {"line of 256", "[encrypt]\r\n" + line(256) + "\r\n" + high(200), kNoMatch},
          {"high byte in the line", "[encrypt]\r\n\x80\r\n" + high(200), kNoMatch},
          {"NUL in the line", Bytes("[encrypt]\r\n\0\r\n") + high(200), kFormatAmiPro},
          {"line ended by LF", "[encrypt]\r\nx\n" + high(200), kNoMatch},
          {"line ended by CR", "[encrypt]\r\nx\r" + high(200), kNoMatch},
          {"7F is no high byte", "[encrypt]\r\n\r\n" + std::string(255, '\x7F'), kNoMatch},
      },
      11);
  ExpectAnswersWhenCut(HighByteDensityProbe, "[encrypt]\r\nkey\r\n" + high(300),
                       {{116, kFormatAmiPro}}, 11);
}

}  // namespace
}  // namespace fi
