#include <array>
#include <cstddef>
#include <iterator>
#include <string_view>

#include "properties/puid/puid.h"
#include "registry/format_ids.h"
#include "signature/interpreter.h"
#include "signature/signature_encoder.h"

namespace fi {
namespace {

// Which rows a format has: so many from here on.
struct Group {
  FormatId id;
  size_t rows;
};

// In the order of kRows.
constexpr Group kGroups[] = {
    {kFormatMpegAudio, 3},     {kFormatAiff, 2},       {kFormatElf, 4},
    {kFormatPcx, 5},           {kFormatTga, 2},        {kFormatPortableAnymap, 7},
    {kFormatFlash4To8, 5},     {kFormatFlash11, 20},   {kFormatDbase, 6},
    {kFormatNetCdfClassic, 2}, {kFormatHdf5, 3},       {kFormatMatlab5, 2},
    {kFormatNrrd, 3},          {kFormatIccProfile, 2}, {kFormatAmr, 2},
    {kFormatWindowsWrite, 2},  {kFormatFrameMaker, 6}, {kFormatQuarkXPressOther, 10},
    {kFormatSibelius, 6},      {kFormatStuffIt, 2},    {kFormatCorelDraw3, 5},
    {kFormatVCard, 1},
};

// In the notation of row_encoder.h. The result is the number of the identifier; 20000 is added for
// those of the series "x-fmt/".
//
// clang-format off
constexpr std::string_view kRows[] = {
    // MPEG audio that begins with a frame: layer 3, 2 and 1. Behind a tag it is not looked for.
    "rw FF {FA | FB | F2 | F3 | E2 | E3} -> 134",
    "rw FF {FC | FD | F4 | F5} -> 198",
    "rw FF {FE | FF | F6 | F7} -> 347",

    // AIFF: plain and compressed.
    "rw 'FORM' skip(4) 'AIFF' -> 414",
    "rw 'FORM' skip(4) 'AIFC' -> 20136",

    // ELF: class and byte order.
    "rw 7F 'ELF' 01 01 -> 688",
    "rw 7F 'ELF' 01 02 -> 689",
    "rw 7F 'ELF' 02 01 -> 690",
    "rw 7F 'ELF' 02 02 -> 691",

    // PC Paintbrush: version 0, 2, 3, 4 and 5.
    "rw 0A 00 -> 86",
    "rw 0A 02 -> 87",
    "rw 0A 03 -> 88",
    "rw 0A 04 -> 89",
    "rw 0A 05 -> 90",

    // Truevision TGA: version 2 has a footer.
    "atend(-18) 'TRUEVISION-XFILE.' 00 -> 402",
    "rw skip(1) -> 20367",

    // Anymaps: plain and raw bitmaps, greymaps, pixmaps; PAM.
    "rw 'P1' -> 20164",
    "rw 'P4' -> 409",
    "rw 'P2' -> 407",
    "rw 'P5' -> 406",
    "rw 'P3' -> 20178",
    "rw 'P6' -> 408",
    "rw 'P7' -> 405",

    // Flash: the version is the fourth byte.
    "rw skip(3) 04 -> 107",
    "rw skip(3) 05 -> 108",
    "rw skip(3) 06 -> 109",
    "rw skip(3) 07 -> 110",
    "rw skip(3) 08 -> 505",
    "rw skip(3) 0B -> 757",
    "rw skip(3) 0C -> 758",
    "rw skip(3) 0D -> 759",
    "rw skip(3) 0E -> 760",
    "rw skip(3) 0F -> 761",
    "rw skip(3) 10 -> 762",
    "rw skip(3) 11 -> 763",
    "rw skip(3) 12 -> 764",
    "rw skip(3) 13 -> 765",
    "rw skip(3) 14 -> 766",
    "rw skip(3) 15 -> 767",
    "rw skip(3) 16 -> 768",
    "rw skip(3) 17 -> 769",
    "rw skip(3) 18 -> 770",
    "rw skip(3) 19 -> 771",
    "rw skip(3) 1A -> 772",
    "rw skip(3) 1B -> 773",
    "rw skip(3) 1C -> 774",
    "rw skip(3) 1D -> 775",
    "rw skip(3) 1E -> 776",

    // dBASE and its kin by the first byte: III, III+ with memo, IV, and FoxPro.
    "rw 03 -> 20009",
    "rw 83 -> 20271",
    "rw {63 | 8B | 8E | CB} -> 20010",
    "rw 04 -> 20272",
    "rw F5 -> 373",
    "rw {30 | 31 | 32} -> 374",

    // NetCDF: classic and 64-bit offsets.
    "rw 'CDF' 01 -> 282",
    "rw 'CDF' 02 -> 283",

    // HDF5: version of the superblock.
    "rw 89 'HDF' 0D 0A 1A 0A 00 -> 286",
    "rw 89 'HDF' 0D 0A 1A 0A 01 -> 287",
    "rw 89 'HDF' 0D 0A 1A 0A {02 | 03} -> 807",

    // MATLAB.
    "rw 'MATLAB 5.0' -> 806",
    "rw 'MATLAB 7.3' -> 828",

    // NRRD.
    "rw 'NRRD0002' -> 1003",
    "rw 'NRRD0003' -> 1004",
    "rw 'NRRD0004' -> 1005",

    // ICC profiles: the major version.
    "at(8) 02 -> 1975",
    "at(8) 04 -> 1976",

    // AMR: wide and narrow band.
    "rw '#!AMR-WB' -> 954",
    "rw '#!AMR' 0A -> 356",

    // Windows Write: plain, and with embedded objects.
    "rw 31 BE 00 -> 20012",
    "rw 32 BE 00 -> 20004",

    // FrameMaker.
    "rw '<MakerFile 2.' -> 533",
    "rw '<MakerFile 4.' -> 535",
    "rw '<MakerFile 5.' -> 190",
    "rw '<MakerFile 6.' -> 537",
    "rw '<MakerFile 7.' -> 538",
    "rw '<MakerFile 9.' -> 539",

    // QuarkXPress: the byte behind the mark, one further in files of the Macintosh.
    "at(2) {'IIXPR' 00 | 'MMXPR' 00 00} 45 -> 1322",
    "at(2) {'IIXPR' 00 | 'MMXPR' 00 00} 46 -> 685",
    "at(2) {'IIXPR' 00 | 'MMXPR' 00 00} 47 -> 1323",
    "at(2) {'IIXPR' 00 | 'MMXPR' 00 00} 49 -> 651",
    "at(2) {'IIXPR' 00 | 'MMXPR' 00 00} 4B -> 1324",
    "at(2) {'IIXPR' 00 | 'MMXPR' 00 00} 4C -> 1325",
    "at(2) {'IIXPR' 00 | 'MMXPR' 00 00} 4D -> 1326",
    "at(2) {'IIXPR' 00 | 'MMXPR' 00 00} 4F -> 1328",
    "at(2) {'IIXPR' 00 | 'MMXPR' 00 00} 52 -> 2006",
    "at(2) {'IIXPR' 00 | 'MMXPR' 00 00} 53 -> 2007",

    // Sibelius.
    "rw 0F 'SIBELIUS' 00 00 00 00 0E -> 1978",
    "rw 0F 'SIBELIUS' 00 00 1B -> 1981",
    "rw 0F 'SIBELIUS' 00 00 39 -> 1984",
    "rw 0F 'SIBELIUS' 00 00 3D -> 1985",
    "rw 0F 'SIBELIUS' 00 00 3E -> 1986",
    "rw 0F 'SIBELIUS' 00 00 42 -> 1991",

    // StuffIt, before version 5.
    "at(10) 'rLau' 01 -> 1459",
    "at(10) 'rLau' 02 -> 1460",

    // CorelDRAW: the type of the RIFF form.
    "at(8) 'CDR5' -> 464",
    "at(8) 'CDR6' -> 20029",
    "at(8) 'CDR7' -> 20291",
    "at(8) 'CDR8' -> 20292",
    "at(8) 'CDR9' -> 20374",

    // vCard: version 4 stands behind the first line.
    "rw ic(B) ic(E) ic(G) ic(I) ic(N) ':VCARD' {0A | 0D 0A} 'VERSION:4.0' -> 1881",
};
// clang-format on

constexpr size_t kPrograms = ProgramsOf(kRows);
constexpr size_t kRoom = 8192;
constexpr auto kUnfitted = EncodeTable<kPrograms, kRoom>(kRows);
constexpr auto kTable = Fitted<kUnfitted.size>(kUnfitted);
static_assert(RowsAreWellFormed(kTable));

constexpr size_t RowsOfGroups() {
  size_t rows = 0;
  for (const Group& group : kGroups) rows += group.rows;
  return rows;
}
static_assert(RowsOfGroups() == std::size(kRows));

// Where the programs of each group begin, and behind the last where they end.
constexpr auto kStarts = [] {
  std::array<size_t, std::size(kGroups) + 1> starts{};
  size_t row = 0;
  size_t program = 0;
  for (size_t group = 0; group < std::size(kGroups); ++group) {
    starts[group] = program;
    for (const size_t end = row + kGroups[group].rows; row < end; ++row) {
      program += ProgramsOf(kRows[row]);
    }
  }
  starts[std::size(kGroups)] = program;
  return starts;
}();

}  // namespace

uint16_t PuidByBytes(IdentificationStream* stream, FormatId id) {
  for (size_t group = 0; group < std::size(kGroups); ++group) {
    if (kGroups[group].id != id) continue;
    SignatureRun run;
    run.stream = stream;
    for (size_t program = kStarts[group]; program < kStarts[group + 1]; ++program) {
      const uint16_t puid = RunProgram(kTable.bytes.data() + kTable.starts[program], run);
      if (puid != kNoMatch) return puid;
    }
  }
  return 0;
}

}  // namespace fi
