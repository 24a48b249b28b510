#include "engine/supplement_table.h"

#include <iterator>
#include <string_view>

namespace fi {
namespace {

// In the notation of signature_encoder.h, several rows a format where it has several forms. What
// tests the first byte right after a rewind stands first and costs nothing on other files; then
// what has its mark elsewhere, and last what has none and is told by its structure. Among rows of
// one first byte the more specific stands first.
//
// clang-format off
constexpr std::string_view kRows[] = {
    // Executables.
    "rw 7F 'ELF' range2(01-02) 01 -> 3000",  // ELF: class, byte order, version
    "rw FE ED FA oneof(CE,CF) skip(8) 00 00 00 range1(01-0C) -> 3001",  // Mach-O, big-endian: file type
    "rw oneof(CE,CF) FA ED FE skip(8) range1(01-0C) 00 00 00 -> 3001",  // Mach-O, little-endian
    "rw 00 'asm' 01 00 00 00 -> 3002",  // WebAssembly module
    "rw 00 'asm' 0D 00 01 00 -> 3002",  // WebAssembly component
    "rw 'dex' 0A range3(30-39) 00 -> 3003",  // Dalvik executable

    // Compressed data.
    "rw FD '7zXZ' 00 00 oneof(00,01) -> 3020",  // XZ: check none, CRC32
    "rw FD '7zXZ' 00 00 oneof(04,0A) -> 3020",  // XZ: check CRC64, SHA-256
    "rw 28 B5 2F FD -> probe 3021",  // Zstandard
    "rw range1(50-5F) 2A 4D 18 -> probe 3021",  // Zstandard behind a skippable frame
    "rw 'BZh' range1(31-39) '1AY&SY' -> 3022",  // BZIP2: first block
    "rw 'BZh' range1(31-39) 17 'rE8P' 90 -> 3022",  // BZIP2 of nothing
    "rw 04 22 4D 18 range1(40-7D) range1(40-70) -> 3023",  // LZ4 frame: version 1, block size
    "rw 'LZIP' oneof(00,01) -> 3024",  // Lzip: version
    "rw 'SZDD' 88 F0 27 33 -> 3048",  // SZDD
    "rw 89 'LZO' 00 0D 0A 1A 0A -> 3025",  // Lzop
    "rw 5D 00 00 ext('LZMA') -> probe 3026",  // LZMA without a container

    // Archives and packages.
    "rw '0707' -> probe 3031",  // cpio, digits
    "rw C7 71 -> probe 3031",  // cpio, binary
    "rw 71 C7 -> probe 3031",  // cpio, binary, big-endian
    "rw '!<arch>' 0A 'debian-binary' at(66) 60 0A -> 3033",  // Debian package
    "rw '!<arch>' 0A at(66) 60 0A -> 3032",  // Unix ar
    "rw ED AB EE DB range1(02-04) skip(1) 00 oneof(00,01) -> 3034",  // RPM: version, binary or source
    "rw 60 EA -> probe 3036",  // ARJ
    "rw 'hsqs' at(28) 04 00 -> 3038",  // SquashFS, little-endian
    "rw 'sqsh' at(28) 00 04 -> 3038",  // SquashFS, big-endian
    "rw 'MSWIM' 00 00 00 D0 00 00 00 -> 3039",  // Windows imaging
    "rw 'xar!' 00 -> 3047",  // XAR: size of the header

    // Disk images.
    "rw 'conectix' -> probe 3042",  // VHD, dynamic
    "rw 'vhdxfile' -> 3043",  // VHDX
    "rw 'KDMV' range1(01-03) 00 00 00 -> 3044",  // VMware disk
    "rw '# Disk DescriptorFile' -> 3044",  // VMware disk, descriptor in a file of its own
    "rw 'QFI' FB 00 00 00 range1(01-03) -> 3045",  // QEMU disk

    // Images.
    "rw 00 00 00 0C 'JXL ' 0D 0A 87 0A -> 3061",  // JPEG XL, container
    "rw FF 0A ext('JXL') -> 3061",  // JPEG XL, bare code stream
    "rw 'II' BC oneof(00,01) -> 3062",  // JPEG XR
    "rw 'II' 2B 00 08 00 00 00 -> 3063",  // BigTIFF, little-endian
    "rw 'MM' 00 2B 00 08 00 00 -> 3063",  // BigTIFF, big-endian
    "rw 00 00 01 00 -> probe 3065",  // Windows icon
    "rw 'icns' -> probe 3067",  // Apple icon
    "rw 76 2F 31 01 oneof(01,02) -> 3068",  // OpenEXR
    "rw '#?RADIANCE' oneof(0A,0D) -> 3069",  // Radiance HDR
    "rw '#?RGBE' oneof(0A,0D) -> 3069",  // Radiance HDR
    "rw 'P' range1(31-37) -> probe 3070",  // portable anymap
    "rw 'qoif' skip(8) oneof(03,04) oneof(00,01) -> 3071",  // QOI: channels, colour space
    "rw 'DDS ' 7C 00 00 00 -> 3072",  // DirectDraw surface: size of the header
    "rw 'gimp xcf file' 00 -> 3073",  // GIMP, first version
    "rw 'gimp xcf v' range3(30-39) 00 -> 3073",  // GIMP
    "rw 'SDPX' skip(4) 'V' -> 3074",  // DPX, big-endian
    "rw 'XPDS' skip(4) 'V' -> 3074",  // DPX, little-endian
    "rw 'SIMPLE  =' range20(20-20) 'T' range50(20-7E) -> 3075",  // FITS: first card
    "rw 'AT&TFORM' skip(4) 'DJV' range1(49-55) -> 3076",  // DjVu: DJVI, DJVM, DJVU
    "rw 'AT&TFORM' skip(4) 'THUM' -> 3076",  // DjVu thumbnails
    "rw 'FORM' skip(4) 'ILBM' -> 3077",  // IFF picture
    "rw 'FORM' skip(4) 'PBM ' -> 3077",  // IFF picture, chunky
    "rw AB 'KTX 11' BB 0D 0A 1A 0A -> 3078",  // Khronos texture
    "rw AB 'KTX 20' BB 0D 0A 1A 0A -> 3078",  // Khronos texture, version 2
    "rw 01 DA oneof(00,01) oneof(01,02) 00 range1(01-03) -> 3080",  // SGI: storage, bytes a sample, dimensions
    "rw 'FLIF' range1(31-74) range1(30-32) -> 3081",  // FLIF: kind and channels, bytes a sample
    "rw 'id=ImageMagick' -> 3082",  // MIFF
    "rw 'BM' at(14) 34 00 00 00 -> 1500",  // Windows bitmap whose header holds three masks
    "rw 'BM' at(14) 38 00 00 00 -> 1500",  // Windows bitmap whose header holds four masks

    // Audio.
    "rw 'RF64' skip(4) 'WAVE' -> 3090",  // WAVE of more than 4 GB
    "rw 'BW64' skip(4) 'WAVE' -> 3090",  // broadcast WAVE of more than 4 GB
    "rw 'FORM' skip(4) 'AIF' oneof(43,46) -> 3091",  // AIFF, AIFC
    "rw '.snd' 00 00 range1(00-10) skip(5) 00 00 00 range1(01-1B) -> 3092",  // Sun audio: data offset, encoding
    "rw 'fLaC' oneof(00,80) 00 00 22 -> 3093",  // FLAC: stream information of 34 bytes
    "rw 'ID3' range1(02-04) -> probe 3094",  // MPEG audio behind a tag
    "rw FF oneof(F0,F1) -> probe 3095",  // AAC, MPEG-4
    "rw FF oneof(F8,F9) -> probe 3095",  // AAC, MPEG-2
    "rw 0B 'w' -> probe 3096",  // AC-3
    "rw '#!AMR' 0A -> 3097",  // AMR
    "rw '#!AMR-WB' 0A -> 3097",  // AMR, wide band
    "rw '#!AMR_MC1.0' 0A -> 3097",  // AMR, several channels
    "rw '#!AMR-WB_MC1.0' 0A -> 3097",  // AMR, wide band, several channels
    // Monkey's Audio: versions 2816 to 5119, then a zero or how much it is compressed, 1000 to 5000.
    "rw 'MAC ' skip(1) range1(0B-13) skip(1) range1(00-07) -> 3098",
    "rw 'MAC ' skip(1) range1(0B-13) skip(1) oneof(0B,0F) -> 3098",
    "rw 'MAC ' skip(1) range1(0B-13) skip(1) 13 -> 3098",
    "rw 'wvpk' skip(4) range1(02-10) 04 -> 3099",  // WavPack: block version
    "rw 'caff' 00 01 00 00 'desc' -> 3100",  // Core Audio
    "rw 'RIFX' skip(4) 'WAVE' -> 3090",  // WAVE, big-endian
    "rw 'DSD ' 1C 00 -> 3103",  // DSF: size of the first chunk
    "rw 'FRM8' skip(8) 'DSD ' -> 3104",  // DSDIFF
    "rw 'MPCKSH' -> 3105",  // Musepack 8: the stream's header is its first packet
    "rw 'MP+' oneof(07,17) -> 3105",  // Musepack 7
    "rw 'IMPM' 00 -> 3106",  // Impulse Tracker, a song without a name
    "rw 'IMPM' at(29) 00 -> 3106",  // the end of the name
    "rw 'TTA1' range1(01-03) 00 -> 3107",  // True Audio: coding of the samples
    "rw 'TTA1' atend(-4) 'TTA1' -> 3107",
    "rw 'FORM' skip(4) '8SVX' -> 3108",  // IFF sound

    // Video and animation.
    "rw 1A 'E' DF A3 -> probe 3111",  // Matroska, WebM
    "rw 'FLV' 01 oneof(00,01) 00 00 00 09 -> 3113",  // Flash video: none, video
    "rw 'FLV' 01 oneof(04,05) 00 00 00 09 -> 3113",  // Flash video: audio, both
    "rw 'G' -> probe 3114",  // MPEG transport stream
    "rw 06 0E '+4' 02 05 01 01 0D 01 02 01 01 -> 3115",  // MXF: key of the header partition
    "rw 'FWS' range1(01-03) -> 3119",  // Flash 1 to 3
    "rw oneof(43,46) 'WS' range1(0B-0C) -> 3118",  // Flash 11, 12
    "rw oneof(43,46) 'WS' 0D not(0A) -> 3118",  // Flash 13, and no end of a line
    "rw oneof(43,46) 'WS' range1(0E-1F) -> 3118",  // Flash 14 to 31
    "rw oneof(43,46) 'WS' range1(20-32) skip(3) range1(00-1F) -> 3118",  // to 50: below 512 MB, which no text is
    "rw 'ZWS' range1(0B-0C) -> 3118",  // Flash, LZMA
    "rw 'ZWS' 0D not(0A) -> 3118",
    "rw 'ZWS' range1(0E-1F) -> 3118",
    "rw 'ZWS' range1(20-32) skip(3) range1(00-1F) -> 3118",

    // Fonts.
    "rw 'OTTO' -> probe 3130",  // OpenType with CFF outlines
    "rw 'wOFF' -> probe 3131",  // WOFF
    "rw 'wOF2' -> probe 3132",  // WOFF 2
    "rw 80 01 skip(2) 00 00 '%!' -> 3134",  // Type 1, first segment below 64 KB

    // Databases and data sets.
    "rw 'SQLite format 3' 00 -> 3140",  // SQLite
    "rw 'PAR1' -> probe 3143",  // Parquet
    "rw 'ORC' -> probe 3144",  // ORC
    "rw 'Obj' 01 -> probe 3145",  // Avro
    "rw 'ARROW1' 00 00 -> probe 3146",  // Arrow
    "rw 89 'HDF' -> probe 3147",  // HDF5
    "rw 'CDF' oneof(01,02) -> 3148",  // NetCDF, classic and 64-bit offset
    "rw 'CDF' 05 -> 3148",  // NetCDF, 64-bit data
    "rw '$FL' oneof(32,33) '@(#)' -> 3149",  // SPSS
    "rw 00*12 C2 EA 81 60 B3 14 11 CF BD 92 08 00 09 C7 31 8C 18 1F 10 11 -> 3150",  // SAS data set
    "rw '<stata_dta><header><release>' -> 3151",  // Stata
    "rw 'RD' oneof(58,41) oneof(32,33) 0A -> 3152",  // R: RDX2, RDX3, RDA2, RDA3
    "rw 'MATLAB ' at(126) 'IM' -> 3153",  // MATLAB, little-endian
    "rw 'MATLAB ' at(126) 'MI' -> 3153",  // MATLAB, big-endian
    "rw 00 01 00 00 'Standard ACE DB' 00 range1(04-06) -> 3154",  // Access, versions of ACE that the catalogue does not know

    // Books and print data.
    "rw 'ITOLITLS' -> 3171",  // Reader book
    "rw F7 02 01 83 92 C0 1C 3B 00 00 -> 3172",  // DVI: preamble, numerator, denominator
    "rw 'Z' -> probe 3173",  // MO:DCA
    "rw CF AD 12 FE oneof(C5,C6) FD 'tof' E3 D1 11 -> 3174",  // Outlook Express messages, folders
    "rw 1B '%-12345X' -> probe 3176",  // PJL
    "rw 1B -> probe 3175",  // PCL, its reset not far from the start
    "rw '<MakerFile ' range1(31-39) -> 3178",  // FrameMaker
    "rw 'ID;P' oneof(0A,0D) -> 3214",  // SYLK: the program that wrote it follows
    "rw 'ID;PWXL' -> 3214",
    "rw 'ID;PXL' -> 3214",
    "rw 'ID;PMP' -> 3214",
    "rw 'ID;PSCALC' -> 3214",
    "rw 'ID;PCALC' -> 3214",

    // Captures, system files, keys.
    "rw A1 B2 C3 D4 00 02 00 oneof(03,04) -> 3220",  // PCAP, big-endian
    "rw D4 C3 B2 A1 02 00 oneof(03,04) 00 -> 3220",  // PCAP, little-endian
    "rw A1 B2 '<M' 00 02 00 04 -> 3220",  // PCAP in nanoseconds, big-endian
    "rw 'M<' B2 A1 02 00 04 00 -> 3220",  // PCAP in nanoseconds, little-endian
    "rw 0A 0D 0D 0A -> probe 3221",  // PCAPNG
    "rw 'ElfFile' 00 -> 3222",  // Windows event log
    "rw 'regf' -> probe 3223",  // registry hive
    "rw 'MDMP' 93 A7 -> 3224",  // minidump
    "rw 'bplist' range2(30-39) -> 3225",  // binary property list
    "rw 03 D9 A2 9A range1(65-67) FB 4B B5 -> 3228",  // KeePass
    "rw 'LUKS' BA BE 00 oneof(01,02) -> 3229",  // LUKS
    "rw FE ED FE ED 00 00 00 oneof(01,02) -> 3230",  // Java keystore
    "rw 'd' range1(31-39) -> probe 3231",  // BitTorrent
    "rw 'PACK' 00 00 00 oneof(02,03) -> 3232",  // Git pack

    // Drawings and models.
    "rw 'AC1032' 00 -> 3240",  // AutoCAD 2018; the catalogue ends with AC1027
    "rw 'AC1032' atend(-6) 'AC1032' -> 3240",
    "rw 'glTF' -> probe 3245",  // glTF
    "rw 'Kaydara FBX Binary  ' 00 1A 00 -> 3246",  // FBX
    "rw 'MM' -> probe 3247",  // 3D Studio
    "rw 'ply' 0A 'format ' -> 3248",  // Polygon model
    "rw 'ply' 0D 0A 'format ' -> 3248",
    "rw 'ply' 0D 'format ' -> 3248",
    "rw 'LASF' at(24) 01 range1(00-04) -> 3249",  // LAS point cloud: version
    "rw 00 00 27 0A -> probe 3250",  // shapefile
    "rw FF FE FF 0E 'S' 00 'k' 00 'e' 00 't' 00 'c' 00 'h' 00 'U' 00 'p' 00 ' ' 00 'M' 00 -> 3251",  // SketchUp

    // dBASE by the versions in use, month and day of the last change.
    "rw 02 -> probe 3141",  // dBASE II, which has the date elsewhere
    "rw range1(03-05) skip(1) range1(01-0C) range1(01-1F) -> probe 3141",
    "rw range1(30-32) skip(1) range1(01-0C) range1(01-1F) -> probe 3141",
    "rw oneof(43,63) skip(1) range1(01-0C) range1(01-1F) -> probe 3141",
    "rw oneof(7B,83) skip(1) range1(01-0C) range1(01-1F) -> probe 3141",
    "rw range1(8B-8E) skip(1) range1(01-0C) range1(01-1F) -> probe 3141",
    "rw oneof(CB,E5) skip(1) range1(01-0C) range1(01-1F) -> probe 3141",
    "rw oneof(F5,FB) skip(1) range1(01-0C) range1(01-1F) -> probe 3141",

    // The mark stands elsewhere.
    "rw skip(2) 00 08 oneof(00,02) range1(01-20) -> probe 3142",  // Paradox: header of 2 KB, block size
    "rw skip(4) 'G' -> probe 3114",  // MPEG transport stream with time stamps
    "at(7) '**ACE**' -> 3037",  // ACE
    "at(20) DC A7 C4 FD -> 3035",  // Zoo
    "at(34) 'LP' -> probe 3133",  // Embedded OpenType
    "at(60) 'BOOKMOBI' -> 3170",  // Mobipocket
    "at(60) 'TEXtREAd' -> 3170",
    "at(64) 7F 10 DA BE -> 3046",  // VirtualBox disk
    "at(83) range1(00-04) -> probe 3244",  // STL, binary: below 84 million triangles
    "at(512) 89 'HDF' -> probe 3147",  // HDF5 behind a user block
    "at(1024) 89 'HDF' -> probe 3147",
    "at(2048) 89 'HDF' -> probe 3147",
    "at(4) 'jP  ' 0D 0A 87 0A -> 1646",  // JPEG 2000 of another brand
    "at(4) 'ftyp' -> 1723",  // ISO media whose first box is damaged
    "atend(-512) 'koly' -> probe 3041",  // Apple disk image
    "atend(-512) 'conectix' -> probe 3042",  // VHD, fixed

    // Formats whose mark stands, while what the catalogue or a probe asks for behind it is cut off or
    // damaged. Marks of letters are followed by what no text has, or by nothing.
    "rw 'AC1002' 00 -> 1613",  // AutoCAD
    "rw 'AC1002' atend(-6) 'AC1002' -> 1613",
    "rw 'AC1003' 00 -> 1614",
    "rw 'AC1003' atend(-6) 'AC1003' -> 1614",
    "rw 'AC1004' 00 -> 1615",
    "rw 'AC1004' atend(-6) 'AC1004' -> 1615",
    "rw 'AC1006' 00 -> 1616",
    "rw 'AC1006' atend(-6) 'AC1006' -> 1616",
    "rw 'AC1009' 00 -> 1552",
    "rw 'AC1009' atend(-6) 'AC1009' -> 1552",
    "rw 'AC1012' 00 -> 1553",
    "rw 'AC1012' atend(-6) 'AC1012' -> 1553",
    "rw 'AC1013' 00 -> 1587",
    "rw 'AC1013' atend(-6) 'AC1013' -> 1587",
    "rw 'AC1014' 00 -> 1587",
    "rw 'AC1014' atend(-6) 'AC1014' -> 1587",
    "rw 'AC1015' 00 -> 1612",
    "rw 'AC1015' atend(-6) 'AC1015' -> 1612",
    "rw 'AC1018' 00 -> 1634",
    "rw 'AC1018' atend(-6) 'AC1018' -> 1634",
    "rw 'AC1021' 00 -> 1638",
    "rw 'AC1021' atend(-6) 'AC1021' -> 1638",
    "rw 'AC1024' 00 -> 2229",
    "rw 'AC1024' atend(-6) 'AC1024' -> 2229",
    "rw 'AC1027' 00 -> 2245",
    "rw 'AC1027' atend(-6) 'AC1027' -> 2245",
    "rw FF D8 FF range1(C0-FE) -> 1535",  // JPEG
    "rw FD '7zXZ' 00 -> 3020",  // XZ
    "rw 'wOFF' 00 -> 3131",  // WOFF
    "rw 'wOFF' atend(-4) 'wOFF' -> 3131",
    "rw 'wOF2' 00 -> 3132",  // WOFF 2
    "rw 'wOF2' atend(-4) 'wOF2' -> 3132",
    "rw 'OTTO' 00 -> 3130",  // OpenType
    "rw 'ttcf' 00 -> 2405",  // TrueType collection
    "rw 'wvpk' 00 -> 3099",  // WavPack
    "rw 'wvpk' skip(3) 00 -> 3099",  // of another version: blocks below 16 MB
    "rw 'icns' 00 -> 3067",  // Apple icon
    "rw oneof(31,32) BE skip(2) 00 AB -> 1047",  // Windows Write
    "rw 00 skip(3) 'moov' -> 1705",  // QuickTime
    "rw 00 skip(3) 'pnot' -> 1705",
    "rw 0A 0D 0D 0A at(8) 1A '+<M' -> 3221",  // PCAPNG
    "rw 0A 0D 0D 0A at(8) 'M<+' 1A -> 3221",
    "rw 0A range1(00-05) oneof(00,01) ext('PCX') -> 1502",  // PCX
    "rw 'ID3' range1(02-04) ext('MP3') -> 3094",  // MPEG audio: a tag, and no sound that is known
    "rw FF range1(E2-FD) ext('MP') -> 1710",  // MPEG audio: one frame
    "rw FF oneof(F0,F1) ext('AAC') -> 3095",  // AAC: one frame

    "-> probe 3040",  // ISO 9660, UDF: 32 KB into the file
};
// clang-format on

static_assert(std::size(kRows) == kSupplementRows);

constexpr auto kEncoded = EncodeTable<kSupplementTableSize>(kRows);
static_assert(kEncoded.size == kSupplementTableSize);
static_assert(RowsAreWellFormed(kEncoded));

}  // namespace

constinit const EncodedTable<kSupplementRows, kSupplementTableSize> kSupplementTable = kEncoded;
constinit const SignatureIndex<kSupplementRows> kSupplementIndex =
    IndexTable<kSupplementRows>(kEncoded);

}  // namespace fi
