#include "probes/content/ptf_header.h"

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

TEST(PtfHeader, NeedsItsThreeLines) {
  const std::string header = "begin=Head\r\ntype=ptf\r\nend=Head\r\n";
  const std::string longLine(1023, 'x');
  ExpectAnswers(
      PtfHeaderProbe,
      {
          {"the three lines", header, kFormatPortableTranscript},
          {"any case", "BEGIN=HEAD\nType=PTF\nEND=head\n", kFormatPortableTranscript},
          {"begin last", "type=ptf\nend=Head\nbegin=Head\n", kFormatPortableTranscript},
          {"other lines between", "begin=Head\ntitle=x\n\ntype=ptf\n\x80\nend=Head\n",
           kFormatPortableTranscript},
          {"end in line 10", "\n\n\n\n\n\n\n" + header, kFormatPortableTranscript},
          {"end in line 11", "\n\n\n\n\n\n\n\n" + header, kNoMatch},
          {"last line without an end", "begin=Head\ntype=ptf\nend=Head", kFormatPortableTranscript},
          {"another type", "begin=Head\ntype=pdf\nend=Head\n", kNoMatch},
          {"more on the line", "begin=Head\ntype=ptf \nend=Head\n", kNoMatch},
          {"less on the line", "begin=Hea\ntype=ptf\nend=Head\n", kNoMatch},
          {"no end line", "begin=Head\ntype=ptf\n", kNoMatch},
          {"NUL", Bytes("x\0\n") + header, kNoMatch},
          {"longest line", longLine + "\n" + header, kFormatPortableTranscript},
          {"line too long", longLine + "x\n" + header, kNoMatch},
      });
}

TEST(PtfHeader, CutAnywhere) {
  ExpectAnswersWhenCut(PtfHeaderProbe, "begin=Head\ntype=ptf\nend=Head\n",
                       {{28, kFormatPortableTranscript}});
}

}  // namespace
}  // namespace fi
