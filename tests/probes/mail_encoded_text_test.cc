// Mail and encoded text: what is named by its lines.
#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "formatid/platform.h"
#include "probes/encoded/encoded_text.h"
#include "probes/mail/mail.h"
#include "stream/line_reader.h"
#include "tests/support/probe_run.h"
#include "tests/support/samples.h"

namespace fi {
namespace {

using testing::MemoryHandle;
using testing::Probe;
using testing::ReadSamples;
using testing::RunProbe;
using testing::Sample;
using testing::SampleBytes;

Probe Mail(const std::string& extension) {
  return [extension](IdentificationStream* stream) { return MailProbe(stream, extension.c_str()); };
}

std::string Repeated(const std::string& text, size_t times) {
  std::string repeated;
  for (; times > 0; --times) repeated += text;
  return repeated;
}

TEST(MailAndEncodedText, SamplesHaveTheirAnswers) {
  for (const char* file : {"probes/mail.txt", "probes/encoded_text.txt"}) {
    const bool isMail = std::strstr(file, "mail") != nullptr;
    for (const Sample& sample : ReadSamples(file, 4, 1)) {
      SCOPED_TRACE(sample.place);
      const Probe probe = isMail ? Mail(sample.columns[3]) : EncodedTextProbe;
      MemoryHandle whole(SampleBytes(sample.columns[2]));
      EXPECT_EQ(RunProbe(probe, whole), sample.Number(0));
      MemoryHandle slow(SampleBytes(sample.columns[2]));
      slow.mostPerRead = 1;
      slow.has64Bit = false;
      EXPECT_EQ(RunProbe(probe, slow), sample.Number(0));
    }
  }
}

TEST(MailAndEncodedText, AreReachedThroughTheTable) {
  const struct {
    std::string file;
    FormatId id;
    uint16_t row;
  } cases[] = {
      {"date: x\nto: ab\nmime-version: 1.0\n", 1195, 432},
      {Repeated("M" + std::string(60, '#') + "\n", 6), 4051, 462},
  };
  for (const auto& test : cases) {
    MemoryHandle handle(test.file, "x.eml");
    FormatId id = 0;
    FIEvidence evidence{};
    EXPECT_EQ(FIIdHandleEvidence(&handle, kFiUseFlags, &id, &evidence), 0u);
    EXPECT_EQ(id, test.id);
    EXPECT_EQ(evidence.signature, test.row);
  }
}

TEST(MailAndEncodedText, ReadNoMoreThanTheirLines) {
  const std::string megabyte(1 << 20, 'a');
  const std::string lines = Repeated("a line of text\n", 70'000);
  const struct {
    Probe probe;
    std::string file;
    FormatId id;
    uint64_t most;
  } cases[] = {
      {Mail(""), "date: x\nto: ab\nmime-version: 1.0\n\n" + megabyte, 1192, kDefaultStreamBuffer},
      {Mail(""), "content-type: multipart/mixed; boundary=b\n\n" + lines, kNoMatch,
       kDefaultStreamBuffer},
      {Mail(""), lines, kNoMatch, kDefaultStreamBuffer},
      {EncodedTextProbe, lines, kNoMatch, kDefaultStreamBuffer},
      {EncodedTextProbe, megabyte, kNoMatch, 13 * 1024},  // twelve lines of 1022
  };
  for (const auto& test : cases) {
    MemoryHandle handle(test.file);
    EXPECT_EQ(RunProbe(test.probe, handle), test.id) << test.file.substr(0, 20);
    EXPECT_LE(handle.bytesRead, test.most) << test.file.substr(0, 20);
    MemoryHandle refusing(test.file);
    refusing.failingSeek = 1;
    EXPECT_EQ(RunProbe(test.probe, refusing), kNoMatch);
    EXPECT_EQ(refusing.reads, 0u);
  }
  // The end of the data is met once, not for each line in which the boundary could stand.
  MemoryHandle cut("content-type: multipart/mixed; boundary=b\n\n");
  EXPECT_EQ(RunProbe(Mail(""), cut), kNoMatch);
  EXPECT_LE(cut.reads, 4u);
}

// Counts of envelope headers are signed where they stand before another line, and wrap.
TEST(MailAndEncodedText, LongHeaders) {
  const struct {
    size_t headers;
    FormatId id;
  } cases[] = {{32'767, 1132}, {32'768, 0}, {65'535, 0}, {65'538, 1132}};
  for (const auto& test : cases) {
    MemoryHandle handle(Repeated("received:\n", test.headers) + "other");
    EXPECT_EQ(RunProbe(Mail(""), handle), test.id) << test.headers;
  }
}

TEST(MailAndEncodedText, EncodedLinesWithinTheFirstHundred) {
  const std::string run = Repeated("M" + std::string(60, '#') + "\n", 6);
  for (const bool within : {true, false}) {
    MemoryHandle handle(Repeated("_=_\n", within ? 94 : 95) + run);
    EXPECT_EQ(RunProbe(EncodedTextProbe, handle), within ? 4051 : 0);
  }
}

}  // namespace
}  // namespace fi
