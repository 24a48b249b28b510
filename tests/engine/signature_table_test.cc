// Samples written from what is publicly known of each format, not from the table.

#include "engine/signature_table.h"

#include <gtest/gtest.h>

#include <string>

#include "engine/signature_walk.h"
#include "formatid/platform.h"
#include "tests/support/bytes.h"
#include "tests/support/memory_handle.h"
#include "tests/support/plain_walk.h"

namespace fi {
namespace {

using testing::Bytes;
using testing::File;

struct Sample {
  const char* name;
  std::string file;
  FormatId expected;  // kNoMatch: no row claims it
  Extension extension{};
};

WalkResult Walk(const Sample& sample) {
  testing::MemoryHandle handle(sample.file);
  const ScopedStream stream(&handle);
  SignatureRun run;
  run.stream = stream.get();
  run.extension = sample.extension;
  return WalkSignatures(run);
}

std::string Document(const std::string& rootNamespace) {
  return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<doc xmlns=\"" + rootNamespace + "\"/>";
}

std::string MacBinary(const std::string& typeAndCreator, const std::string& data) {
  return File({{0, Bytes("\0\4name")}, {65, typeAndCreator}, {128, data}}, 0, '\0');
}

TEST(SignatureTable, Samples) {
  const std::string png = Bytes("\x89PNG\r\n\x1A\n\0\0\0\rIHDR");
  const std::string bitmap = File({{0, "BM"}, {14, Bytes("\x28\0\0\0")}}, 60, '\0');
  const std::string id3v1 = "TAG" + std::string(29, 'a') + '\0' + std::string(29, 'b') + '\0' +
                            std::string(29, 'c') + '\0' + std::string(35, 'd');
  const Sample samples[] = {
      // Documents.
      {"PDF", "%PDF-1.4\n%\xE2\xE3\xCF\xD3\n", 1557},
      {"PDF, second digit missing", "%PDF-1", kNoMatch},
      {"PDF without a dot", "%PDF-14.", kNoMatch},
      {"PDF of 128 bytes of MacBinary", MacBinary("PDF CARO", "%PDF-1.2"), 1557},
      {"Illustrator by extension", "%PDF-1.5\n", 1611, {'A', 'I'}},
      {"the extension test is one of a prefix", "%PDF-1.4\n", 1611, {'A', 'I', 'F', 'F'}},
      {"PostScript", "%!PS-Adobe-3.0\n", 1554},
      {"PostScript in capitals", "%!PS-ADOBE-3.0\n", 1554},
      {"PostScript without conventions", "%!PS\n", kNoMatch},
      {"Rich Text Format", "{\\rtf1\\ansi hello}", 1028},
      {"Rich Text Format in capitals", "{\\RTF1\\ansi hello}", 1028},
      {"RTF-J", "{\\rtf1\\jis hello}", 1091},
      {"FrameMaker MIF 5.50", "<MIFFile 5.50> # by hand", 1138},
      {"HWP 3", File({{0, "HWP Document File V3.00"}, {24, Bytes("\x1A\1\2\3\4\5")}}), 1179},
      {"WordPerfect 5.1", Bytes("\xFFWPC\x10\0\0\0\x01\x0A\x00\x01\0\0\0\0"), 1038},
      {"WordPerfect graphics", Bytes("\xFFWPC\x10\0\0\0\x01\x16\x01\x00\0\0\0\0"), 1507},
      {"Word for Windows 2", File({{0, Bytes("\xDB\xA5\x2D\0")}}, 64), 1065},
      // Images.
      {"PNG", png, 1574},
      {"PNG cut in its signature", png.substr(0, 7), kNoMatch},
      {"GIF87a", "GIF87a", 1503},
      {"GIF of another year", "GIF88a", kNoMatch},
      {"TIFF, little-endian", Bytes("II*\0\x08\0\0\0"), 1501},
      {"TIFF, big-endian", Bytes("MM\0*\0\0\0\x08"), 1501},
      {"BigTIFF", Bytes("II+\0\x08\0\0\0"), kNoMatch},
      {"BMP", bitmap, 1500},
      {"BMP version 5", File({{0, "BM"}, {14, Bytes("\x7C\0\0\0")}}, 60, '\0'), 1602},
      {"BM and text", "BM is how this begins, and it goes on.", kNoMatch},
      {"PSD", Bytes("8BPS\0\1\0\0"), 1591},
      {"PSB", Bytes("8BPS\0\2\0\0"), 2242},
      {"JPEG 2000",
       Bytes("\0\0\0\x0CjP  \r\n\x87\n\0\0\0\x14"
             "ftypjp2 "),
       1646},
      {"DICOM", File({{128, Bytes("DICM\2\0\0\0")}}, 0, '\0'), 2243},
      {"EMF", File({{0, Bytes("\1\0\0\0")}, {40, " EMF"}}, 100, '\0'), 1564},
      {"placeable metafile", Bytes("\xD7\xCD\xC6\x9A\0\0"), 1508},
      {"Targa by its trailer", std::string(3000, 'x') + Bytes("TRUEVISION-XFILE.\0"), 1512},
      {"Targa by name alone", "anything", 1512, {'T', 'G', 'A'}},
      {"DWG 2000", Bytes("AC1015\0\0"), 1612},
      {"DWG 2013", Bytes("AC1027\0\0"), 2245},
      // Archives and containers.
      {"7z", Bytes("7z\xBC\xAF\x27\x1C"), 1826},
      {"RAR", Bytes("Rar!\x1A\7\0"), 1821},
      {"gzip", Bytes("\x1F\x8B\x08"), 1815},
      {"compress", Bytes("\x1F\x9D\x90"), 1806},
      {"compress, reserved bits", Bytes("\x1F\x9D\x20"), kNoMatch},
      {"ZIP, split marker", Bytes("PK\x07\x08PK\x03\x04"), 1802},
      {"LHA", File({{2, "-lh5-"}, {20, Bytes("\1")}}, 30), 1813},
      {"class file or fat binary", Bytes("\xCA\xFE\xBA\xBE\0\0\0\x34"), 1816},
      // Media.
      {"Flash", Bytes("FWS\x06"), 1704},
      {"Flash 11", Bytes("CWS\x0B"), kNoMatch},
      {"Standard MIDI", Bytes("MThd\0\0\0\6\0\1\0\2\0\x60MTrk"), 1702},
      {"tags at the end", std::string(5000, '\xAA') + id3v1, 1708},
      {"tags in a file of 128 bytes", id3v1, 1708},
      {"a file of 127 bytes", id3v1.substr(0, 127), kNoMatch},
      // Databases and stores.
      {"Access 97", Bytes("\0\1\0\0Standard Jet DB\0\0"), 1222},
      {"Access 2007", Bytes("\0\1\0\0Standard ACE DB\0\2"), 1230},
      {"Outlook store, 97 to 2002", Bytes("!BDN\1\2\3\4SM\x0E\0"), 1189},
      {"Outlook store, 2003 on", Bytes("!BDN\1\2\3\4SM\x17\0"), 1302},
      {"shell link", Bytes("L\0\0\0\1\x14\2\0\0\0\0\0\xC0\0\0\0\0\0\0\x46"), 2401},
      // Document roots.
      {"Visio XML", Document("http://schemas.microsoft.com/visio/2003/core"), 2012},
      {"another vocabulary", Document("http://www.w3.org/2000/svg"), kNoMatch},
      {"instruction aid", "<?xml version=\"1.0\"?>\n<?aid style=\"50\"?>", 2010},
      // What rows are written for beyond their format.
      {"32 bytes of FF", std::string(32, '\xFF') + 'x', 1561},
      {"33 bytes of FF", std::string(33, '\xFF'), kNoMatch},
      {"an unknown probe code runs on", File({{522, Bytes("\x00\x11\x02")}}), 1506},
      {"byte-order mark",
       "\xEF\xBB\xBF"
       "text",
       4025},
      // Nothing.
      {"empty", "", kNoMatch},
      {"one byte", "M", kNoMatch},
      {"text", "Only text, with nothing to name it by.\n", kNoMatch},
  };
  for (const Sample& sample : samples) EXPECT_EQ(Walk(sample).id, sample.expected) << sample.name;
}

TEST(SignatureTable, StoragesByClass) {
  struct ClassSample {
    const char* name;
    std::string classId;
    FormatId expected;
    uint16_t basis;
  };
  const ClassSample samples[] = {
      {"PowerPoint 97", Bytes("\x10\x8D\x81\x64\x9B\x4F\xCF\x11\x86\xEA\x00\xAA\x00\xB9\x29\xE8"),
       1581, kFiBasisClass},
      {"Excel 5", Bytes("\x10\x08\x02\0\0\0\0\0\xC0\0\0\0\0\0\0\x46"), 1424, kFiBasisClass},
      {"mail message", Bytes("\x0B\x0D\x02\0\0\0\0\0\xC0\0\0\0\0\0\0\x46"), 1143, kFiBasisContent},
      {"unknown", "0123456789abcdef", kNoMatch, kFiBasisNone},
      {"none", std::string(16, '\0'), kNoMatch, kFiBasisNone},
  };
  for (const ClassSample& sample : samples) {
    testing::MemoryHandle handle(Bytes("\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1"));
    const ScopedStream stream(&handle);
    SignatureRun run;
    run.stream = stream.get();
    run.isStorage = true;
    std::copy(sample.classId.begin(), sample.classId.end(), run.classId.begin());
    const WalkResult result = WalkSignatures(run);
    EXPECT_EQ(result.id, sample.expected) << sample.name;
    EXPECT_EQ(run.classifierRan, sample.name == std::string("none") ? 1u : 0u) << sample.name;
    const uint16_t basis = result.row == 0 ? uint16_t{kFiBasisNone} : BasisOfRow(result.row);
    EXPECT_EQ(basis, sample.basis) << sample.name;
  }
}

TEST(SignatureTable, BasisOfAnswers) {
  const Extension targa = {'T', 'G', 'A'};
  EXPECT_EQ(BasisOfRow(Walk({"", "anything", 0, targa}).row), kFiBasisExtension);
  EXPECT_EQ(BasisOfRow(Walk({"", "%PDF-1.4", 0, {'A', 'I'}}).row), kFiBasisSignature);
  EXPECT_EQ(BasisOfRow(Walk({"", "{\\rtf1}", 0}).row), kFiBasisContent);
  EXPECT_EQ(BasisOfRow(Walk({"", "<?xml?>\n<?aid?>", 0}).row), kFiBasisNamespace);
  EXPECT_EQ(BasisOfRow(Walk({"", "\xEF\xBB\xBF", 0}).row), kFiBasisSignature);
}

// Files of random length that begin with the literals of a random row, or with random bytes.
std::string RandomFile(uint32_t seed) {
  uint32_t state = seed * 2654435761u + 1;
  const auto next = [&] { return (state = state * 1664525u + 1013904223u) >> 8; };
  std::string file(next() % 3000, '\0');
  const bool sparse = next() % 2 == 0;
  for (char& c : file) c = static_cast<char>(sparse && next() % 2 == 0 ? 0 : next());
  if (next() % 3 == 0) return file;
  const uint8_t* program = kSignatureTable.bytes.data() + kSignatureTable.starts[next() % 467];
  std::string literals;
  while (program[0] != kEscape || program[1] == kOpRewind || program[1] == kOpLiteralEscape) {
    const bool isEscape = program[0] == kEscape;
    if (!isEscape || program[1] == kOpLiteralEscape) literals += static_cast<char>(program[0]);
    program += isEscape ? 2 : 1;
  }
  return literals + file;
}

TEST(SignatureWalk, IndexAgreesWithThePlainWalk) {
  const Extension extensions[] = {{}, {'R', 'B', 'F'}, {'I', 'M', 'G'}, {'A', 'I'}};
  uint32_t matches = 0;
  for (uint32_t seed = 0; seed < 20000; ++seed) {
    const std::string file = RandomFile(seed);
    WalkResult results[2];
    int64_t positions[2];
    for (const bool plain : {false, true}) {
      testing::MemoryHandle handle(file);
      const ScopedStream stream(&handle);
      SignatureRun run;
      run.stream = stream.get();
      run.extension = extensions[seed % 4];
      run.isStorage = seed % 5 == 0;
      results[plain] = plain ? testing::PlainWalk(run) : WalkSignatures(run);
      positions[plain] = IdStreamPosition(stream.get());
    }
    ASSERT_EQ(results[0].id, results[1].id) << seed;
    ASSERT_EQ(results[0].row, results[1].row) << seed;
    if (results[0].id == kNoMatch) continue;
    ASSERT_EQ(positions[0], positions[1]) << seed;
    ++matches;
  }
  EXPECT_GT(matches, 500u);
}

}  // namespace
}  // namespace fi
