#include "probes/content/escape_sequence.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/support/probe_run.h"

namespace fi {
namespace {

using testing::ExpectAnswers;
using testing::ExpectAnswersWhenCut;
using testing::MemoryHandle;
using testing::RunProbe;

constexpr FormatId kDocument = 1019;

TEST(EscapeSequence, OneWithLeadingZeros) {
  ExpectAnswers(EscapeSequenceProbe, {
                                         {"no zeros", "\x1B[1$K", kDocument},
                                         {"zeros", "\x1B[001$K", kDocument},
                                         {"no 1", "\x1B[0$K", kNoMatch},
                                         {"zero behind", "\x1B[10$K", kNoMatch},
                                         {"another number", "\x1B[2", kNoMatch},
                                         {"lower case", "\x1B[1$k", kNoMatch},
                                         {"before it", " \x1B[1$K", kNoMatch},
                                     });
  ExpectAnswersWhenCut(EscapeSequenceProbe, "\x1B[01$Kx", {{6, kDocument}});
}

TEST(EscapeSequence, ZerosEnd) {
  MemoryHandle handle("\x1B[" + std::string(1 << 20, '0') + "1$K");
  EXPECT_EQ(RunProbe(EscapeSequenceProbe, handle), kNoMatch);
  EXPECT_LE(handle.bytesRead, 66u * 1024);
}

}  // namespace
}  // namespace fi
