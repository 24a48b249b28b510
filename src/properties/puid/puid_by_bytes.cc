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
    {kFormatMpegAudio, 3},
    {kFormatAiff, 2},
    {kFormatElf, 4},
    {kFormatPcx, 5},
    {kFormatTga, 2},
    {kFormatPortableAnymap, 7},
    {kFormatFlash4To8, 5},
    {kFormatFlash11, 20},
    {kFormatDbase, 6},
    {kFormatNetCdfClassic, 2},
    {kFormatHdf5, 3},
    {kFormatMatlab5, 2},
    {kFormatNrrd, 3},
    {kFormatIccProfile, 2},
    {kFormatAmr, 2},
    {kFormatWindowsWrite, 2},
    {kFormatFrameMaker, 6},
    {kFormatQuarkXPressOther, 10},
    {kFormatSibelius, 6},
    {kFormatStuffIt, 2},
    {kFormatCorelDraw3, 5},
    {kFormatVCard, 1},
    {kFormatHomeComputerMedium, 6},
    {kFormatVectorWorks, 2},
    {kFormatPlotterTables, 4},
    {kFormatBluRayNavigation, 4},
    {kFormatOtherModule, 4},
    {kFormatInDesign, 3},
    {kFormatCinemaFourD, 3},
    {kFormatRhino, 3},
    {kFormatOtherModel, 3},
    {kFormatMinitab, 2},
    {kFormatServerPage, 2},
    {kFormatBlender, 2},
    {kFormatAmiraMesh, 2},
    {kFormatNitfImage, 2},
    {kFormatNasaCdf, 2},
    {kFormatStataOlder, 2},
    {kFormatVoice, 2},
    {kFormatJpegXl, 1},
    {kFormatSequenceText, 2},
    {kFormatVrml, 3},
    {kFormatFlash1To3, 3},
    {kFormatLasPointCloud, 1},
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

    // Tapes and floppy images of home computers.
    "rw 'HXCHFEV3' -> 2038",
    "rw 'C64S tape' -> 820",
    "rw 'UEF File!' 00 -> 792",
    "rw 'ZXTape!' 1A -> 1000",
    "rw 'A2R3' -> 2058",
    "rw 'WOZ1' -> 2059",

    // VectorWorks 10 and 11.
    "at(14) 'VectorWorks 10' -> 1140",
    "at(14) 'VectorWorks 11' -> 1141",

    // Plot styles, by name and by colour, and lists of batch plots.
    "rw 'PIAFILEVERSION_2.0,STBVER1' -> 20107",
    "rw 'PIAFILEVERSION_2.0,CTBVER1' -> 20037",
    "rw 'AutoCAD 2000 Batch Plot List' -> 20027",
    "rw 'AutoCAD Extended Batch Plot ' -> 20026",

    // Blu-ray disc: index, objects, clips and play lists of version 1.
    "rw 'INDX0100' -> 1076",
    "rw 'MOBJ0100' -> 1075",
    "rw 'HDMV0100' -> 1054",
    "rw 'MPLS0100' -> 1074",

    // Modules of trackers: Oktalyzer, Asylum, MultiTracker and Scream Tracker.
    "rw 'OKTASONG' -> 722",
    "rw 'ASYLUM Music Format' -> 1622",
    "rw 'MTM' 10 -> 719",
    "at(20) '!Scream!' -> 717",

    // InDesign: books and libraries.
    "at(16) 'BOOKBOOK' -> 1191",
    "at(16) 'LIBRARY2' -> 1642",
    "at(16) 'LIBRARY4' -> 1192",

    // Cinema 4D: before version 5, 5, and since 6.
    "rw 'FORM' skip(4) 'MC4D' -> 415",
    "rw 'MC50' -> 540",
    "rw 00 'C4DC4D6' -> 1180",

    // Rhino: the version stands behind its name.
    "at(31) '1' -> 20433",
    "at(31) '3' -> 20435",
    "at(31) '6' -> 2082",

    // Models: QuickDraw 3D, Caligari, Draco.
    "rw '3DMetafile (' -> 1049",
    "rw 'Caligari V00.01B' -> 914",
    "rw 'DRACO' 01 -> 1046",

    // Minitab: worksheets and portable worksheets.
    "rw 'WORKSHEET STORED BY MINITAB' -> 1430",
    "rw 'Minitab Portable Worksheet' -> 1431",

    // Active pages: applications and controls.
    "rw '<%@ Application' -> 1080",
    "rw '<%@ Control' -> 1081",

    // Blender, big-endian: 32 and 64 bits.
    "rw 'BLENDER_V' -> 902",
    "rw 'BLENDER-V' -> 903",

    // Amira meshes.
    "rw '# AmiraMesh ASCII 1.0' -> 917",
    "rw '# AmiraMesh 3D BINARY-LITTLE-ENDIAN' -> 920",

    // National imagery transmission format: 1.1 and 2.0.
    "rw 'NITF01.10' -> 364",
    "rw 'NITF02.00' -> 365",

    // Common data format: version 2.5 and earlier, 2.6.
    "rw 0000FFFF0000FFFF -> 1948",
    "rw CDF260020000FFFF -> 1949",

    // Stata: release 7 and 8 to 9, with the lowest byte first.
    "rw 'o' 01 01 00 -> 1032",
    "rw 'r' 01 01 00 -> 1034",

    // Voice recordings of Sony.
    "rw 'MS_VOICE' 00 00 00 00 01 02 -> 1891",
    "rw 'MS_VOICE' 00 00 00 00 01 01 -> 1892",

    // JPEG XL: a code stream alone.
    "rw FF 0A -> 1484",

    // Genes: variant calls and ontologies.
    "rw '##fileformat=VCFv4' -> 908",
    "rw 'format-version: 1.2' -> 1681",

    // Scenes: VRML 1 and 2, Inventor.
    "rw '#VRML V1.0 ascii' -> 93",
    "rw '#VRML V2.0 utf8' -> 94",
    "rw '#Inventor V2.' -> 833",

    // Flash: version 1 to 3.
    "rw 'FWS' 01 -> 104",
    "rw 'FWS' 02 -> 105",
    "rw 'FWS' 03 -> 106",

    // LAS: version 1.0.
    "at(24) 01 00 -> 368",
};
// clang-format on

constexpr size_t kPrograms = ProgramsOf(kRows);
constexpr size_t kRoom = 16384;
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
