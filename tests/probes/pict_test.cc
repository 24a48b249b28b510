#include "probes/content/pict.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <string>

#include "platform/format_ids.h"
#include "tests/support/probe_run.h"

namespace fi {
namespace {

using testing::BigEndian;
using testing::ExpectAnswers;
using testing::ExpectAnswersWhenCut;

std::string Words(std::initializer_list<uint32_t> words) {
  std::string bytes;
  for (const uint32_t word : words) bytes += BigEndian(word, 2);
  return bytes;
}

TEST(Pict, SizeFrameAndVersion) {
  ExpectAnswers(
      PictHeaderProbe,
      {
          {"version 1", Words({0, 0, 0, 100, 100, 0x1101}), kFormatPictBare},
          {"version 2", Words({500, 0, 0, 9, 9, 0x0011, 0x02FF, 0x0C00}), kFormatPictBare},
          {"smallest size", Words({13, 0, 0, 100, 100, 0x1101}), kFormatPictBare},
          {"size 12", Words({12, 0, 0, 100, 100, 0x1101}), kNoMatch},
          {"size 1", Words({1, 0, 0, 100, 100, 0x1101}), kNoMatch},
          {"largest size", Words({0xFFFF, 0, 0, 1, 1, 0x1101}), kFormatPictBare},
          {"no height", Words({0, 5, 0, 5, 100, 0x1101}), kNoMatch},
          {"no width", Words({0, 0, 5, 100, 5, 0x1101}), kNoMatch},
          {"negative corner", Words({0, 0xFFF0, 0xFFF0, 16, 16, 0x1101}), kNoMatch},
          {"large frame", Words({0, 0, 0, 0x9000, 0x9000, 0x1101}), kFormatPictBare},
          {"version 3", Words({0, 0, 0, 9, 9, 0x1201}), kNoMatch},
          {"mark of version 2", Words({0, 0, 0, 9, 9, 0x0011, 0x02FE, 0x0C00}), kNoMatch},
          {"header of version 2", Words({0, 0, 0, 9, 9, 0x0011, 0x02FF, 0x0C01}), kNoMatch},
      });
  ExpectAnswersWhenCut(PictHeaderProbe, Words({0, 0, 0, 9, 9, 0x1101, 0}), {{12, kFormatPictBare}});
  ExpectAnswersWhenCut(PictHeaderProbe, Words({0, 0, 0, 9, 9, 0x0011, 0x02FF, 0x0C00, 0}),
                       {{16, kFormatPictBare}});
}

}  // namespace
}  // namespace fi
