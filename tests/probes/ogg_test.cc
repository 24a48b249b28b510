#include "probes/media/ogg.h"

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

constexpr uint32_t kFirst = 2;

const std::string kOpus = "OpusHead\x01";
const std::string kVorbis("\x01vorbis", 7);
const std::string kTheora("\x80theora", 7);
const std::string kVp8 = "OVP80\x01";

std::string Page(uint32_t type, const std::string& body, char version = '\0') {
  std::string lacing(body.size() / 255, '\xFF');
  lacing.push_back(static_cast<char>(body.size() % 255));
  return std::string("OggS") + version + static_cast<char>(type) + std::string(20, '\x11') +
         static_cast<char>(lacing.size()) + lacing + body;
}

std::string First(const std::string& body) { return Page(kFirst, body); }

std::string Pages(size_t count, const std::string& body = "") {
  std::string pages;
  while (count-- > 0) pages += Page(0, body);
  return pages;
}

TEST(Ogg, NamesTheFirstCodecOfEachKind) {
  ExpectAnswers(
      OggProbe,
      {
          {"Opus", First(kOpus), kFormatOggOpus},
          {"Vorbis", First(kVorbis) + Pages(3, "data"), kFormatOggVorbis},
          {"Vorbis and Theora", First(kVorbis) + First(kTheora), kFormatOggTheoraVorbis},
          {"Theora and Vorbis", First(kTheora) + First(kVorbis), kFormatOggTheoraVorbis},
          {"Theora and Opus", First(kTheora) + First(kOpus), kFormatOggTheoraOpus},
          {"VP8 and Opus", First(kVp8) + First(kOpus), kFormatOggVp8Opus},
          {"VP8 and Vorbis", First(kVp8) + First(kVorbis), kFormatOggVp8Vorbis},
          {"Theora alone", First(kTheora), kFormatOgg},
          {"VP8 alone", First(kVp8), kFormatOgg},
          {"another codec", First("Speex   "), kFormatOgg},
          {"codec not at the start", First(" " + kVorbis), kFormatOgg},
          {"Opus behind Vorbis", First(kVorbis) + First(kOpus), kFormatOggVorbis},
          {"VP8 behind Theora", First(kTheora) + First(kVp8) + First(kOpus), kFormatOggTheoraOpus},
          {"codec on a page inside a stream", First("x") + Page(0, kVorbis), kFormatOgg},
          {"first and last page of a stream", Page(6, kVorbis), kFormatOggVorbis},
          // Eight bytes are read from an empty body, here those of the next page.
          {"codec behind the body", First("") + kVorbis, kFormatOggVorbis},
      });
}

TEST(Ogg, PagesAndHeaders) {
  const std::string large(51000, 'd');
  ExpectAnswers(
      OggProbe,
      {
          {"bytes before", "OOggOggS not a page, OggOggS" + First(kVorbis).substr(4), kNoMatch},
          {"bytes before the capture", "junk OOgg" + First(kVorbis), kFormatOggVorbis},
          {"bytes between pages", First(kVorbis) + "OgOOg" + First(kTheora),
           kFormatOggTheoraVorbis},
          {"large body", First(kVorbis + large) + First(kTheora), kFormatOggTheoraVorbis},
          {"codec within a body", First(kVorbis + First(kTheora)), kFormatOggVorbis},
          {"page 25", First(kVorbis) + Pages(23) + First(kTheora), kFormatOggTheoraVorbis},
          {"page 26", First(kVorbis) + Pages(24) + First(kTheora), kFormatOggVorbis},
          {"first page with type 3", Page(3, kVorbis), kNoMatch},
          {"first page with type 7", Page(7, kVorbis), kNoMatch},
          {"first page with type 8", Page(8, kVorbis), kNoMatch},
          {"first page with type 5", Page(5, kVorbis), kFormatOgg},
          {"first page of version 1", Page(kFirst, kVorbis, '\x01'), kNoMatch},
          {"later page with type 3", First(kVorbis) + Page(3, "x") + First(kTheora),
           kFormatOggVorbis},
          {"later page of version 1", First(kVorbis) + Page(0, "x", '\x01') + First(kTheora),
           kFormatOggVorbis},
          {"no page", "Oggs" + First(kVorbis).substr(4), kNoMatch},
      });
}

TEST(Ogg, CutAnywhere) {
  const std::string first = First(kVorbis + "settings");
  const std::string second = First(kTheora + "settings");
  // The header of 28 bytes and the seven of the codec name do for the second page.
  ExpectAnswersWhenCut(
      OggProbe, first + second,
      {{first.size(), kFormatOggVorbis}, {first.size() + 28 + 7, kFormatOggTheoraVorbis}});
}

// The search for a page has no limit, but passes over the file only once.
TEST(Ogg, SearchReadsTheFileOnce) {
  const std::string junk(1 << 20, 'O');
  MemoryHandle handle(First(kVorbis) + junk + First(kTheora) + junk);
  EXPECT_EQ(RunProbe(OggProbe, handle), kFormatOggTheoraVorbis);
  EXPECT_LE(handle.bytesRead, junk.size() + 8192);
  MemoryHandle damaged(First(kVorbis) + junk);
  EXPECT_EQ(RunProbe(OggProbe, damaged), kFormatOggVorbis);
  EXPECT_LE(damaged.bytesRead, junk.size() + 8192);
}

}  // namespace
}  // namespace fi
