#include "platform/delimited_text.h"

#include <gtest/gtest.h>

#include "stream/id_stream.h"
#include "tests/support/probe_run.h"

namespace fi {
namespace {

using testing::ExpectSamples;
using testing::MemoryHandle;
using testing::Probe;
using testing::RunProbe;

// Of text that is taken for `id`, which stays the answer where the text is not delimited.
Probe SnifferOf(FormatId id) {
  return [id](IdentificationStream* stream) {
    CsvSniffer sniffer{};
    EXPECT_EQ(InitCSV(&sniffer, stream, id), 0u);
    const bool delimited = IsCSV(&sniffer) == 1;
    DeinitCSV(&sniffer);
    EXPECT_EQ(delimited, sniffer.id != id);
    return sniffer.id;
  };
}

TEST(DelimitedTextTest, Samples) {
  ExpectSamples("delimited_text.txt", SnifferOf(4005));
  ExpectSamples("delimited_utf16.txt", SnifferOf(4003));
  MemoryHandle utf8("\xEF\xBB\xBF\"a,b\",c\n\"1,2\",3\n");
  EXPECT_EQ(RunProbe(SnifferOf(4025), utf8), 3204);
  MemoryHandle ebcdic("a,b\n1,2\n");  // its comma is another byte
  EXPECT_EQ(RunProbe(SnifferOf(1184), ebcdic), 1184);
}

}  // namespace
}  // namespace fi
