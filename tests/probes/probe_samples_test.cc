// Content and media probes over the samples in tests/data/probes, and what is no matter of samples.

#include <gtest/gtest.h>

#include <string>

#include "formatid/platform.h"
#include "probes/document/ami_pro.h"
#include "probes/document/dif.h"
#include "probes/document/mif.h"
#include "probes/document/pdf_header.h"
#include "probes/document/portable_transcript.h"
#include "probes/document/word_perfect_42.h"
#include "probes/drawing/dwf.h"
#include "probes/drawing/dxf_text.h"
#include "probes/drawing/microstation.h"
#include "probes/font/sfnt.h"
#include "probes/forensic/ad1.h"
#include "probes/forensic/encase.h"
#include "probes/image/pict.h"
#include "probes/image/x_bitmap.h"
#include "probes/image/x_pixmap.h"
#include "probes/mail/card_calendar.h"
#include "probes/mail/trillian_log.h"
#include "probes/markup/markup.h"
#include "probes/markup/message_history.h"
#include "probes/media/iso_media.h"
#include "probes/media/ogg.h"
#include "probes/print/eps_preview.h"
#include "probes/print/hpgl.h"
#include "probes/system/internet_shortcut.h"
#include "probes/text/plain_text.h"
#include "probes/unidentified/escape_sequence.h"
#include "probes/unidentified/header_checksum.h"
#include "probes/unidentified/marker_sequence.h"
#include "tables/text_probes.h"
#include "tests/support/probe_run.h"
#include "tests/support/samples.h"

namespace fi {
namespace {

using testing::ExpectSamples;
using testing::MemoryHandle;
using testing::Probe;
using testing::ReadSamples;
using testing::RunProbe;
using testing::Sample;
using testing::SampleBytes;

// Of a probe that goes on from where the signature left the stream.
Probe From(int64_t start, const Probe& probe) {
  return [start, probe](IdentificationStream* stream) {
    EXPECT_EQ(IdStreamSeek(stream, start, kIoFromStart), 0);
    return probe(stream);
  };
}

// Of a probe that answers whether the file passes, at an offset: 1 where it does.
Probe At(uint32_t offset, bool (*passes)(IdentificationStream*, uint32_t)) {
  return [offset, passes](IdentificationStream* stream) -> FormatId {
    return passes(stream, offset) ? 1 : kNoMatch;
  };
}

// Of a probe that looks at the extension.
Probe Named(const char* extension, FormatId (*probe)(IdentificationStream*, const char*)) {
  return [extension, probe](IdentificationStream* stream) { return probe(stream, extension); };
}

TEST(ProbeSamples, HaveTheirAnswers) {
  const struct {
    const char* name;
    Probe probe;
  } probes[] = {
      {"ad1", Ad1Probe},
      {"ad1_encrypted", Ad1EncryptedProbe},
      {"card_calendar", CardCalendarProbe},
      {"trillian_log", TrillianLogProbe},
      {"dif", DifProbe},
      {"dxf_text", DxfTextProbe},
      {"encase_e01", EnCaseE01Probe},
      {"encase_ex01", EnCaseEx01Probe},
      {"encase_l01", EnCaseL01Probe},
      {"encase_lx01", EnCaseLx01Probe},
      {"eps_preview", EpsPreviewProbe},
      {"escape_sequence", EscapeSequenceProbe},
      {"header_checksum", HeaderChecksumProbe},
      {"ami_pro", From(11, AmiProProbe)},
      {"hpgl", Named("PLT", HpGlProbe)},
      {"hpgl_named", Named("HGL", HpGlProbe)},
      {"iso_media", IsoMediaProbe},
      {"internet_shortcut", InternetShortcutProbe},
      {"marker_sequence", At(118, MarkerSequenceProbe)},
      {"markup", MarkupProbe},
      {"message_history", MessageHistoryProbe},
      {"ogg", OggProbe},
      {"pdf_header", PdfHeaderProbe},
      {"pict", PictHeaderProbe},
      {"plain_text", ClassifyPlainText},
      {"portable_transcript", PortableTranscriptProbe},
      {"microstation", MicroStationProbe},
      {"sfnt", At(0, SfntDirectoryProbe)},
      {"sfnt_at_5", At(5, SfntDirectoryProbe)},
      {"text_formats", Named("", TextFormatProbe)},
      {"dwf", DwfProbe},
      {"mif", From(8, MifProbe)},
      {"word_perfect_42", WordPerfect42Probe},
      {"x_bitmap", XBitmapProbe},
      {"x_pixmap", XPixmapProbe},
      {"yaml", Named("YML", TextFormatProbe)},
  };
  for (const auto& test : probes) {
    ExpectSamples("probes/" + std::string(test.name) + ".txt", test.probe);
  }
}

// Each file meets the probe of its format, with the place and the code that the row names.
TEST(ProbeSamples, AreReachedThroughTheTable) {
  for (const Sample& sample : ReadSamples("probes/rows.txt", 3)) {
    SCOPED_TRACE(sample.place);
    MemoryHandle handle(SampleBytes(sample.columns[2]), "x");
    FormatId id = 0;
    FIEvidence evidence{};
    EXPECT_EQ(FIIdHandleEvidence(&handle, kFiUseFlags, &id, &evidence), 0u);
    EXPECT_EQ(id, sample.Number(0));
    EXPECT_EQ(evidence.signature, sample.Number(1));
  }
}

// A trailer that cannot be read counts as one without the flag.
TEST(EnCase, TrailerThatCannotBeRead) {
  const std::string file = SampleBytes("at(8) 0201 0200 01000000 at(4000) 02 at(4060)");
  MemoryHandle sound(file);
  EXPECT_EQ(RunProbe(EnCaseEx01Probe, sound), 6111);
  MemoryHandle noSeek(SampleBytes("at(8) 0201 0200 01000000 at(200) 02 at(260)"));
  noSeek.failingSeek = 2;  // behind the one to the header
  EXPECT_EQ(RunProbe(EnCaseEx01Probe, noSeek), 6103);
  MemoryHandle noRead(file);
  noRead.failingRead = 2;
  EXPECT_EQ(RunProbe(EnCaseEx01Probe, noRead), 6103);
}

}  // namespace
}  // namespace fi
