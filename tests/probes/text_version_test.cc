#include "probes/content/text_version.h"

#include <gtest/gtest.h>

#include <string>

#include "platform/format_ids.h"
#include "tests/support/probe_run.h"

namespace fi {
namespace {

using testing::ExpectAnswers;

TEST(TextVersion, SplitsAtSix) {
  ExpectAnswers(TextVersionProbe,
                {
                    {"5", "(DWF V5.1)", kFormatDwfBelow6},
                    {"00", "(DWF V00.55)", kFormatDwfBelow6},
                    {"06", "(DWF V06.00)", kFormatDwf6},
                    {"12", "(DWF V12.0)", kFormatDwf6},
                    {"no digits", "(DWF V.1)", kFormatDwfBelow6},
                    {"a byte below the digits", "(DWF V/.1)", kFormatDwf6},
                    {"no digit, but its value", "(DWF V1&.)", kFormatDwfBelow6},
                    {"a point beyond five bytes", "(DWF V00000.", kFormatDwfBelow6},
                    {"five bytes only", "(DWF V000006.", kFormatDwfBelow6},
                    {"wraps to 4", "(DWF V65540.", kFormatDwfBelow6},
                    {"ends behind the version", "(DWF V5", kFormatDwf6},
                    {"ends before it", "(DWF V", kFormatDwf6},
                });
}

}  // namespace
}  // namespace fi
