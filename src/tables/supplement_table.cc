#include "tables/supplement_table.h"

#include <string_view>

#include "signature/placed_rows.h"
#include "signature/signature_encoder.h"
#include "signature/signature_index.h"
#include "tables/unanswered_probes.h"

namespace fi {
namespace {

// In the notation of row_encoder.h, several rows a format where it has several forms. What tests
// the first byte right after a rewind stands first, by kind, and costs nothing on other files; then
// what has its mark elsewhere, and last what has none and is told by its structure. Among rows of
// one first byte the more specific stands first.
//
// clang-format off
constexpr std::string_view kRows[] = {
    // Executables, code and firmware.
    "rw 7F 'ELF' range2(01-02) 01 -> 3000",  // ELF: class, byte order, version
    "rw FE ED FA oneof(CE,CF) skip(8) 00 00 00 range1(01-0C) -> 3001",  // Mach-O, big-endian: file type
    "rw oneof(CE,CF) FA ED FE skip(8) range1(01-0C) 00 00 00 -> 3001",  // Mach-O, little-endian
    "rw 00 'asm' 01 00 00 00 -> 3002",  // WebAssembly module
    "rw 00 'asm' 0D 00 01 00 -> 3002",  // WebAssembly component
    "rw 'dex' 0A range3(30-39) 00 -> 3003",  // Dalvik executable
    "rw {'BC' C0 DE | DE C0 17 0B} -> 3355",  // LLVM bitcode
    "rw {03 02 23 07 | 07 23 02 03} 00 -> 3356",  // SPIR-V module
    "rw 1B {'Lua' range1(40-5F) | 'LJ' range1(01-02)} -> 3357",  // Lua bytecode
    "rw {'dey' 0A | oneof(76,77) 'dex0' range2(30-39) 00 | 'ANDROID!'} -> 3358",  // Android runtime code (ODEX, VDEX, boot image)
    "rw 27 05 19 56 -> 3359",  // U-Boot image
    "rw D0 0D FE ED 00 -> 3360",  // Flattened device tree
    "rw 'UF2' 0A 57 51 5D 9E -> 3361",  // UF2 firmware image
    "rw {'xclbin2' 00 | 00 09 0F F0 0F F0 0F F0 0F F0 00 00 01 'a'} -> 3362",  // FPGA configuration (Xilinx)
    "rw AC ED 00 05 range1(70-7E) -> 3363",  // Java serialised objects
    "rw {'NES' 1A | 80 37 12 40 | 37 80 40 12 | 40 12 37 80 | 'LYNX' 00 range1(01-04) "
        "| 01 'ATARI7800' | 'C64 CARTRIDGE   ' | 'COPYRIGHT BY SNK CORP' "
        "| ' LICENSED BY SNK CORP' | 'PCjr Cartridge image file' "
        "| 'PFS0' range1(00-3F) range2(00-FF) 00 | 'FDS' 1A} -> 3364",  // Game cartridge image
    "rw {'C64S tape' | 'C64 tape image' | 'C64-TAPE-RAW' | 'ZXTape!' 1A | 'UEF File!' 00 "
        "| 'WOZ' oneof(31,32) FF 0A 0D 0A | 'A2R' range1(31-33) FF 0A 0D 0A | 'HXCPICFE' "
        "| 'HXCHFEV3' | 'MV - CPC' range1(00-FF) | 'EXTENDED CPC DSK'} -> 3365",  // Tape or floppy image of a home computer
    "rw {oneof(49,50) 'WAD' | 'PACK' skip(3) 00} skip(3) 00 -> 3366",  // Game data archive (WAD, PAK)

    // Compressed data.
    "rw FD '7zXZ' 00 00 {oneof(00,01) | oneof(04,0A)} -> 3020",  // XZ: check none, CRC32, CRC64, SHA-256
    "rw 28 B5 2F FD -> probe 3021",  // Zstandard
    "rw range1(22-27) B5 2F FD -> 3021",  // Zstandard 0.2 to 0.7
    "rw range1(50-5F) 2A 4D 18 -> probe 3021",  // Zstandard behind a skippable frame
    "rw 'BZh' range1(31-39) '1AY&SY' -> 3022",  // BZIP2: first block
    "rw 'BZh' range1(31-39) 17 'rE8P' 90 -> 3022",  // BZIP2 of nothing
    "rw 04 22 4D 18 range1(40-7D) range1(40-70) -> 3023",  // LZ4 frame: version 1, block size
    "rw 'LZIP' oneof(00,01) -> 3024",  // Lzip: version
    "rw 'SZDD' 88 F0 27 33 -> 3048",  // SZDD
    "rw 89 'LZO' 00 0D 0A 1A 0A -> 3025",  // Lzop
    "rw 5D 00 00 ext('LZMA') -> probe 3026",  // LZMA without a container
    "rw 'LRZI' 00 -> 3050",  // Long range ZIP (LRZIP) data
    "rw 'KWAJ' 88 F0 27 D1 -> 3052",  // KWAJ compressed data
    "rw FF 06 00 00 'sNaPpY' -> 3053",  // Snappy framed data

    // Archives, packages and patches.
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
    "rw {'zPQ' range1(01-02) | '7kSt' oneof(00,A0)} -> 3049",  // ZPAQ archive
    "rw 'ALZ' 01 -> 3051",  // ALZ archive
    "rw {'BSDIFF40' | D6 C3 C4 oneof(00,53)} -> 3055",  // Binary patch (BSDIFF, VCDIFF)
    "rw 00 05 16 oneof(00,07) 00 range1(01-02) 00 -> 3056",  // AppleSingle or AppleDouble file
    "rw 'MAR1' 00 -> 3057",  // Mozilla update archive (MAR)

    // Disk images and volumes.
    "rw 'conectix' -> probe 3042",  // VHD, dynamic
    "rw 'vhdxfile' -> 3043",  // VHDX
    "rw 'KDMV' range1(01-03) 00 00 00 -> 3044",  // VMware disk
    "rw '# Disk DescriptorFile' -> 3044",  // VMware disk, descriptor in a file of its own
    "rw 'QFI' FB 00 00 00 range1(01-03) -> 3045",  // QEMU disk
    "rw 'TAPE' 00 00 03 00 -> 3293",  // Microsoft tape format backup
    "rw {'-rom1fs-' | 45 3D CD 28 | 'UBI#' 01 | '1' 18 10 06 | 'XFSB' 00 00} -> 3294",  // File system image (ROM, flash, XFS, Btrfs)
    "rw 'AFF10' 0D 0A 00 -> 3298",  // Advanced forensic image (AFF)

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
    "rw 'P7 332' 0A -> 3070",  // thumbnail of three and two bits a colour
    "rw 'qoif' skip(8) oneof(03,04) oneof(00,01) -> 3071",  // QOI: channels, colour space
    "rw 'DDS ' 7C 00 00 00 -> 3072",  // DirectDraw surface: size of the header
    "rw 'gimp xcf file' 00 -> 3073",  // GIMP, first version
    "rw 'gimp xcf v' range3(30-39) 00 -> 3073",  // GIMP
    "rw 'SDPX' skip(4) 'V' -> 3074",  // DPX, big-endian
    "rw 'XPDS' skip(4) 'V' -> 3074",  // DPX, little-endian
    "rw 'SIMPLE  =' range20(20-20) oneof(46,54) -> 3075",  // FITS: first card, F where the rest follows no standard
    "rw 'AT&TFORM' skip(4) 'DJV' range1(49-55) -> 3076",  // DjVu: DJVI, DJVM, DJVU
    "rw 'AT&TFORM' skip(4) 'THUM' -> 3076",  // DjVu thumbnails
    "rw 'SDJV' -> 3076",  // secure DjVu
    "rw 'FORM' skip(4) 'ILBM' -> 3077",  // IFF picture
    "rw 'FORM' skip(4) 'PBM ' -> 3077",  // IFF picture, chunky
    "rw 'FORM' skip(4) {'ACBM' | 'DEEP' | 'RGB' oneof(38,4E)} -> 3077",  // IFF pictures of other kinds
    "rw 'BA' skip(12) {'BM' | 'IC' | 'CI' | 'PT' | 'CP'} -> 3463",  // OS/2 bitmap array: kind of the first image
    "rw AB 'KTX 11' BB 0D 0A 1A 0A -> 3078",  // Khronos texture
    "rw AB 'KTX 20' BB 0D 0A 1A 0A -> 3078",  // Khronos texture, version 2
    "rw 01 DA oneof(00,01) oneof(01,02) 00 range1(01-03) -> 3080",  // SGI: storage, bytes a sample, dimensions
    "rw 'FLIF' range1(31-74) range1(30-32) -> 3081",  // FLIF: kind and channels, bytes a sample
    "rw 'id=ImageMagick' -> 3082",  // MIFF
    "rw 'BM' at(14) 34 00 00 00 -> 1500",  // Windows bitmap whose header holds three masks
    "rw 'BM' at(14) 38 00 00 00 -> 1500",  // Windows bitmap whose header holds four masks
    "rw 8A 'MNG' 0D 0A 1A 0A -> 3083",  // Multiple-image Network Graphics (MNG)
    "rw 8B 'JNG' 0D 0A 1A 0A -> 3084",  // JPEG Network Graphics (JNG)
    "rw 'FUJIFILMCCD-RAW' -> 3085",  // Fujifilm camera raw image (RAF)
    "rw 00 'MRM' -> 3086",  // Minolta camera raw image (MRW)
    "rw 'II' skip(4) 'HEAPCCDR' -> 3087",  // Canon camera raw image (CIFF)
    "rw 'FOVb' {00 | skip(2) range1(00-04) 00} -> 3088",  // Sigma camera raw image (X3F)
    "rw 97 'JB2' 0D 0A 1A 0A -> 3089",  // JBIG2 image
    "rw 'CPT' range1(37-39) 'FILE' -> 3388",  // Corel Photo-Paint image
    "rw 'AutoCAD Slide' -> 3389",  // AutoCAD slide
    "rw 'VTF' 00 -> 3391",  // Valve texture (VTF)
    "rw 'farbfeld' -> 3392",  // Farbfeld image
    "rw 'BPG' FB -> 3393",  // BPG image
    "rw 80 2A 5F D7 -> 3394",  // Cineon image
    "rw 'ncif' -> 3395",  // Haiku icon (HVIF)
    "rw 'PGF' {02 | range1(34-39) skip(3) 00} -> 3396",  // Progressive graphics file (PGF)
    "rw 'msid' 01 -> 3397",  // MrSID image
    "rw 'JG' oneof(03,04) 0E -> 3398",  // PictureThat, JG or ART image
    "rw {'XFIR' skip(4) '39VM' | 'RIFX' skip(4) 'MV93' | 'RIFX' skip(4) 'Egg!'} -> 3399",  // Director or After Effects project (RIFX)
    "rw 'PTM_1.' range1(30-39) 0A -> 3428",  // Polynomial texture map
    "rw {'LBLSIZE=' range1(31-39) | 'PDS_VERSION_ID '} -> 3431",  // Planetary image (VICAR, PDS)

    // Sound and music.
    "rw 'RF64' skip(4) 'WAVE' -> 3090",  // WAVE of more than 4 GB
    "rw 'BW64' skip(4) 'WAVE' -> 3090",  // broadcast WAVE of more than 4 GB
    "rw 'FORM' skip(4) 'AIF' oneof(43,46) -> 3091",  // AIFF, AIFC
    "rw '.snd' 00 skip(7) 00 00 00 range1(01-1B) -> 3092",  // Sun audio: data offset below 16 MB, encoding
    "rw 'fLaC' oneof(00,80) 00 00 22 -> 3093",  // FLAC: stream information of 34 bytes
    "rw 'ID3' range1(02-04) -> probe 3094",  // MPEG audio behind a tag
    "rw FF oneof(F0,F1) -> probe 3095",  // AAC, MPEG-4
    "rw FF oneof(F8,F9) -> probe 3095",  // AAC, MPEG-2
    "rw 0B 'w' -> probe 3096",  // AC-3
    "rw '#!AMR' 0A -> 3097",  // AMR
    "rw '#!AMR-WB' 0A -> 3097",  // AMR, wide band
    "rw '#!AMR_MC1.0' 0A -> 3097",  // AMR, several channels
    "rw '#!AMR-WB_MC1.0' 0A -> 3097",  // AMR, wide band, several channels
    "rw 'MAC ' skip(1) range1(0B-13) skip(1) {range1(00-07) | oneof(0B,0F) | 13} -> 3098",  // Monkey's Audio: versions 2816 to 5119, then a zero or how much it is compressed, 1000 to 5000
    "rw 'wvpk' skip(4) range1(02-10) 04 -> 3099",  // WavPack: block version
    "rw 'caff' 00 01 00 00 'desc' -> 3100",  // Core Audio
    "rw 'RIFX' skip(4) 'WAVE' -> 3090",  // WAVE, big-endian
    "rw 'DSD ' 1C 00 -> 3103",  // DSF: size of the first chunk
    "rw 'FRM8' skip(8) 'DSD ' -> 3104",  // DSDIFF
    "rw 'MPCKSH' -> 3105",  // Musepack 8: the stream's header is its first packet
    "rw 'MP+' oneof(07,17) -> 3105",  // Musepack 7
    "rw 'IMPM' 00 -> 3106",  // Impulse Tracker, a song without a name
    "rw 'IMPM' at(29) 00 -> 3106",  // Impulse Tracker: the end of the name
    "rw 'TTA1' {range1(01-03) 00 | end} -> 3107",  // True Audio: coding of the samples
    "rw 'FORM' skip(4) '8SVX' -> 3108",  // IFF sound
    "rw 'FORM' skip(4) '16SV' -> 3108",  // IFF sound, 16 bits
    "rw 'FORM' skip(4) 'ANIM' -> 3464",  // IFF animation
    "rw 'FORM' skip(4) 'SMUS' -> 3465",  // IFF score
    "rw '.ra' FD 00 range1(03-05) -> 3467",  // RealAudio 3 to 5
    "rw 'TTA2' range1(01-03) 00 -> 3107",  // True Audio 2: coding of the samples
    "rw 'DTSHDHDR' 00 -> 3462",  // DTS-HD: header of the file
    "rw 'Extended Module: ' -> 3120",  // FastTracker 2 module (XM)
    "rw {'MTM' range1(10-1F) | 'OKTASONG' | 'FAR' FE | 'GDM' FE | 'MMD' range1(30-33) 00 "
        "| 'MAS_UTrack_V00' | 'DBM0' | 'ASYLUM Music Format'} -> 3123",  // Module of another tracker (MTM, OKT, STM, MED, FAR, ULT)
    "rw oneof(50,52) 'SID' 00 range1(01-04) 00 -> 3124",  // SID music (PSID, RSID)
    "rw 'MS_VOICE' 00 -> 3400",  // Voice recorder audio (DVF, MSV)
    "rw {'OFR ' range1(00-20) 00 | 'tBaK' | 'ajkg' range1(00-03)} -> 3401",  // Lossless audio of another program (OptimFROG, TAK, Shorten, MLP)
    "rw {'ea3' range1(00-04) | 'EA3' range1(01-03)} 00 -> 3402",  // Sony OpenMG audio
    "rw {'NESM' 1A | 'SNES-SPC700 Sound File Data' | 'Vgm ' skip(3) 00} -> 3403",  // Console game music (NSF, SPC, VGM)
    "rw {7F FE 80 01 | FE 7F 01 80} -> 3406",  // DTS audio

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
    "rw oneof(43,46) 'WS' range1(20-32) skip(3) range1(00-1F) -> 3118",  // Flash 32 to 50: below 512 MB, which no text is
    "rw 'ZWS' {range1(0B-0C) | 0D not(0A) | range1(0E-1F) "
        "| range1(20-32) skip(3) range1(00-1F)} -> 3118",  // Flash, LZMA
    "rw {'SMK' oneof(32,34) | 'BIK' range1(61-7A) | 'KB2' range1(61-7A)} skip(3) 00 -> 3125",  // Bink or Smacker video
    "rw {'MPLS0' | 'HDMV0' | 'INDX0' | 'MOBJ0'} range3(30-39) -> 3127",  // Blu-ray disc navigation (playlist, index, clip)
    "rw 'DVDVIDEO-V' oneof(4D,54) oneof(47,53) -> 3128",  // DVD information (IFO)
    "rw {'NSVf' skip(3) 00 | 'NSVsVP' | 'DKIF' 00 00 20 00 | 'NuppelVideo' 00 "
        "| B7 D8 00 20 '7I' DA 11 A6 'N' 00 07 E9 5E AD 8D | 'YUV4MPEG2 '} -> 3129",  // Video in a container of its own (NSV, IVF, NUV, WTV, Y4M)

    // Fonts.
    "rw 'OTTO' -> probe 3130",  // OpenType with CFF outlines
    "rw 'wOFF' -> probe 3131",  // WOFF
    "rw 'wOF2' -> probe 3132",  // WOFF 2
    "rw 80 01 skip(2) 00 00 '%!' -> 3134",  // Type 1, first segment below 64 KB
    "rw {01 'fcp' | 'STARTFONT 2.' range1(30-39)} -> 3407",  // Bitmap font (BDF, PCF)

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
    "rw {range1(CD-CF) 9A 57 13 | 13 57 9A range1(CD-CF)} -> 3156",  // GNU dbm database
    "rw {00 01 00 00 00 02 00 01 00 05 00 02 00 02 C0 | C0 'HBAM7'} -> 3157",  // FileMaker Pro: the head of its first block, or the mark behind it where the head is cut off
    "rw 'OFXHEADER' oneof(3A,3D) -> 3219",  // Open Financial Exchange data
    "rw '7' 7F 06 oneof(82,83) 00 '-' E2 18 -> 3299",  // SQLite write-ahead log
    "rw 93 'NUMPY' range1(01-03) 00 -> 3368",  // NumPy array (NPY)
    "rw 'GGUF' range1(01-03) 00 00 00 -> 3369",  // GGUF model
    "rw {'FEA1' 00 | 'FEA1FEA1'} -> 3371",  // Feather data frame, version 1
    "rw {'HEADER RECORD*******LIB' "
        "| 00*12 C2 EA 81 'c' B3 14 11 CF BD 92 08 00 09 C7 31 8C 18 1F 10 11} -> 3373",  // SAS transport file or catalogue
    "rw range1(6C-73) range1(01-02) 01 00 -> 3374",  // Stata data, before version 13
    "rw 0E 03 13 01 -> 3375",  // HDF4 data
    "rw {CD F3 00 01 | CD F2 range1(60-6F) 02 | 00 00 FF FF} 00 00 FF FF -> 3376",  // Common data format (CDF)
    "rw {'GRIB' skip(3) range1(01-02) | 'BUFR' skip(3) range1(02-04)} -> 3377",  // Meteorological data (GRIB, BUFR)
    "rw 'NRRD000' range1(31-35) -> 3378",  // Nearly raw raster data (NRRD)
    "rw 'CRAM' range1(01-03) -> 3380",  // CRAM sequence alignment
    "rw {'WARC/' range1(30-31) | 'WARC/' 00 | 'filedesc://'} -> 3382",  // Web archive (WARC, ARC)
    "rw oneof(0C,0E) skip(7) '.FIT' -> 3383",  // Activity of a sports device (FIT)
    "rw {'NITF0' range1(31-32) '.' range2(30-39) | 'NSIF01.'} -> 3384",  // National imagery (NITF, NSIF)
    "rw 'ASTM-E57' -> 3385",  // Survey points (E57, OpenStreetMap PBF)
    "rw 'root' 00 00 -> 3386",  // ROOT data
    "rw range5(30-39) range1(61-7A) at(10) '22' range5(30-39) at(20) '4500' -> 3387",  // MARC library records
    "rw AC 9E BD 8F -> 3409",  // Quicken data
    "rw {'WORKSHEET STORED BY MINITAB' | 'Minitab Portable Workshe'} -> 3415",  // Minitab worksheet
    "rw '# AmiraMesh ' -> 3416",  // Amira mesh

    // Documents, books, scores and print data.
    "rw 'ITOLITLS' -> 3171",  // Reader book
    "rw F7 02 01 83 92 C0 1C 3B 00 00 -> 3172",  // DVI: preamble, numerator, denominator
    "rw 'Z' -> probe 3173",  // MO:DCA
    "rw CF AD 12 FE oneof(C5,C6) FD 'tof' E3 D1 11 -> 3174",  // Outlook Express messages, folders
    "rw 1B '%-12345X' -> probe 3176",  // PJL
    "rw 1B -> probe 3175",  // PCL, its reset not far from the start
    "rw '<MakerFile ' range1(31-39) -> 3178",  // FrameMaker
    "rw 'ID;P' {oneof(0A,0D) | 'WXL' | 'XL' | 'MP' | 'SCALC' | 'CALC' | 'Quattro'} -> 3214",  // SYLK: the program that wrote it follows
    "rw 06 06 ED F5 D8 1D 'F' E5 BD '1' EF E7 FE 't' B7 1D -> 3179",  // Adobe InDesign library, book or snippet
    "rw 00 00 'IIXPR' 00 '?' -> 1622",  // QuarkXPress 3.3 for Windows
    "rw 00 00 oneof(49,4D) oneof(49,4D) 'XPR' -> 3180",  // QuarkXPress document, other version
    "rw range1(01-06) skip(3) 'BOBO' -> 3181",  // ClarisWorks or AppleWorks document
    "rw 0F 'SIBELIUS' -> 3182",  // Sibelius score
    "rw {'ENIGMA BINARY FILE' | 'ENIGMA TRANSPORTABLE FILE'} -> 3183",  // Finale score (ENIGMA)
    "rw range1(14-19) 'FICHIER GUITAR' -> 3184",  // Guitar Pro score
    "rw 'NB*' 00 -> 3185",  // Windows Journal note
    "rw 'EP*' 00 -> 3186",  // Microsoft Document Imaging file (MDI)
    "rw '%FDF-' range1(31-39) -> 3187",  // Forms data (FDF)
    "rw {1C 01 00 00 02 00 04 1C 01 14 00 02 00 14 1C 01 | 'AGD' range1(31-34)} -> 3189",  // FreeHand drawing, other version
    "rw 'ActiveMime' 00 00 01 -> 3190",  // Office data in an ActiveMime block
    "rw 00 skip(3) 'STAK' -> 3430",  // HyperCard stack

    // Keys and messages.
    "rw 03 D9 A2 9A range1(65-67) FB 4B B5 -> 3228",  // KeePass
    "rw 'LUKS' BA BE 00 oneof(01,02) -> 3229",  // LUKS
    "rw FE ED FE ED 00 00 00 oneof(01,02) -> 3230",  // Java keystore
    "rw CE CE CE CE 00 00 00 oneof(01,02) -> 3460",  // Java keystore (JCEKS)
    "rw 00 00 00 20 01 01 00 skip(1) 'KBXf' -> 3237",  // OpenPGP keybox
    "rw '.pfile' range1(02-05) 00 00 00 -> 3238",  // Rights-managed protected file (PFILE)

    // Captures and files of systems.
    "rw A1 B2 C3 D4 00 02 00 oneof(03,04) -> 3220",  // PCAP, big-endian
    "rw D4 C3 B2 A1 02 00 oneof(03,04) 00 -> 3220",  // PCAP, little-endian
    "rw A1 B2 '<M' 00 02 00 04 -> 3220",  // PCAP in nanoseconds, big-endian
    "rw 'M<' B2 A1 02 00 04 00 -> 3220",  // PCAP in nanoseconds, little-endian
    "rw 0A 0D 0D 0A -> probe 3221",  // PCAPNG
    "rw 'ElfFile' 00 -> 3222",  // Windows event log
    "rw 'regf' -> probe 3223",  // registry hive
    "rw 'MDMP' 93 A7 -> 3224",  // minidump
    "rw 'bplist' range2(30-39) -> 3225",  // binary property list
    "rw 'd' range1(31-39) -> probe 3231",  // BitTorrent
    "rw 'PACK' 00 00 00 oneof(02,03) -> 3232",  // Git pack
    "rw 'MAM' 04 -> 3275",  // Windows prefetch file, compressed
    "rw {oneof(11,17) | oneof(1A,1E) | 1F} 00 00 00 'SCCA' -> 3275",  // Windows prefetch file
    "rw '0' 00 00 00 'LfLe' -> 3276",  // Windows event log, before Vista
    "rw 'PReg' range1(01-02) 00 00 00 -> 3278",  // Windows policy registry file
    "rw 'snoop' 00 00 00 -> 3279",  // Snoop packet capture
    "rw {'PAGEDUMP' | 'PAGEDU64'} -> 3280",  // Windows crash dump
    "rw {'Microsoft C/C++ MSF 7.00' | 'Microsoft C/C++ program database 2.00'} 0D 0A -> 3281",  // Microsoft program database (PDB)
    "rw 00 00 00 00 20 00 00 00 FF FF 00 00 FF FF 00 00 -> 3282",  // Windows compiled resources
    "rw 'Client UrlCache MMF Ver ' -> 3283",  // Internet Explorer URL cache
    "rw 'CMMM' range1(14-30) 00 00 00 -> 3284",  // Windows thumbnail database (thumbcache)
    "rw 9C CB CB 8D 13 'u' D2 11 91 'X' 00 C0 'OyV' A4 -> 3285",  // Windows address book
    "rw 00 00 00 01 'Bud1' -> 3286",  // macOS folder settings
    "rw 'TZif' {00 | range1(32-34)} -> 3288",  // Compiled time zone
    "rw {DE 12 04 95 oneof(00,01) | 95 04 12 DE} 00 -> 3289",  // Compiled message catalogue (MO)
    "rw '<' B8 'd' 18 CA EF 9C 95 -> 3290",  // Qt translation
    "rw 'LPKSHHRH' -> 3291",  // Journal of systemd
    "rw {'DIRC' 00 00 00 range1(02-04) | '# v2 git bundle' 0A | '# v3 git bundle' 0A} -> 3292",  // Git index or bundle
    "rw 00 00 01 00 -> probe 3287",  // Macintosh resource fork

    // Drawings, models and designs.
    "rw 'AC1032' {00 | end} -> 3240",  // AutoCAD 2018; the catalogue ends with AC1027
    "rw 'glTF' -> probe 3245",  // glTF
    "rw 'Kaydara FBX Binary  ' 00 1A 00 -> 3246",  // FBX
    "rw 'MM' -> probe 3247",  // 3D Studio
    "rw 'ply' {0A | 0D 0A | 0D} 'format ' -> 3248",  // Polygon model
    "rw 'LASF' at(24) 01 range1(00-04) -> 3249",  // LAS point cloud: version
    "rw 00 00 27 0A -> probe 3250",  // shapefile
    "rw FF FE FF 0E 'S' 00 'k' 00 'e' 00 't' 00 'c' 00 'h' 00 'U' 00 'p' 00 ' ' 00 'M' 00 -> 3251",  // SketchUp
    "rw 'BLENDER' {oneof(2D,5F) oneof(76,56) | range1(31-39) range1(30-39) '-'} -> 3252",  // Blender scene
    "rw '3D Geometry File Format ' -> 3253",  // Rhino 3-D model (3DM)
    "rw {'#VRML V' range1(31-39) | '#Inventor V'} -> 3254",  // VRML world or Inventor scene
    "rw 'V5_CFV2' 00 -> 3255",  // CATIA 5 document
    "rw 'Version ' range1(31-39) skip(1) range1(30-39) ' JT' -> 3256",  // JT model
    "rw {'FORM' skip(4) 'MC4D' | range1(00-FF) 'C4DC4D6' "
        "| 'MC5' range1(30-39) skip(4) 'PRF5'} -> 3257",  // Cinema 4D scene
    "rw {'DRACO' range1(00-03) | 'VOX ' range1(00-FF) 00 | 'INTERQUAKEMODEL' 00 "
        "| 'IDP' oneof(32,33) 0F 00 00 00 | 'IDP2' 08 00 00 00 "
        "| oneof(49,56) 'BSP' range1(10-3F) 00 00 00 | 'FOR4' skip(4) 'Maya' "
        "| 'FORM' skip(4) 'LWO' oneof(42,32) | '3DMetafile' | 'Caligari V'} -> 3258",  // Model or level of a game or program (Draco, MagicaVoxel, Quake)
    "rw '#LcUStream-V' -> 3259",  // Navisworks model
    "rw '#PES0' range2(30-39) '0' -> 3424",  // Embroidery design (PES)

    // First bytes that many files have; the structure behind them decides.
    "rw 30 range1(80-84) -> probe 3234",  // CMS, certificates, PKCS #12: a sequence of more than 127 bytes
    "rw range1(84-9A) -> probe 3233",  // OpenPGP, packets of the old form
    "rw A3 range1(01-03) {ext('GPG') | ext('PGP')} -> 3233",  // OpenPGP, compressed
    "rw range1(C1-C6) -> probe 3233",  // OpenPGP, packets of the new form
    "rw 02 -> probe 3141",  // dBASE II, which has the date elsewhere
    "rw {range1(03-05) | range1(30-32) | oneof(43,63) | oneof(7B,83) | range1(8B-8E) | oneof(CB,E5) "
        "| oneof(F5,FB)} skip(1) range1(01-0C) range1(01-1F) -> probe 3141",  // dBASE by the versions in use, month and day of the last change

    // What stands elsewhere than at the start.
    "rw skip(2) 00 08 oneof(00,02) range1(01-20) -> probe 3142",  // Paradox: header of 2 KB, block size
    "rw skip(4) 'G' -> probe 3114",  // MPEG transport stream with time stamps
    "at(7) '**ACE**' -> 3037",  // ACE
    "at(20) DC A7 C4 FD -> 3035",  // Zoo
    "at(34) 'LP' -> probe 3133",  // Embedded OpenType
    "at(60) {'BOOKMOBI' | 'TEXtREAd'} -> 3170",  // Mobipocket
    "at(64) 7F 10 DA BE -> 3046",  // VirtualBox disk
    "at(83) range1(00-04) -> probe 3244",  // STL, binary: below 84 million triangles
    "{at(512) | at(1024) | at(2048)} 89 'HDF' -> probe 3147",  // HDF5 behind a user block
    "at(4) 'jP  ' 0D 0A 87 0A -> 1646",  // JPEG 2000 of another brand
    "at(4) {'ftyp' | 'styp'} -> probe 3435",  // ISO media by brand
    "at(4) 'ftyp' -> 1723",  // ISO media of no known brand
    "at(4) 'n' {'+' | 'i'} '2' 00 0D 0A 1A 0A -> 3379",  // NIfTI-2
    "at(4) EF CD AB 89 -> 3277",  // Extensible storage engine
    "at(4) 'TFL3' -> 3370",  // TensorFlow Lite
    "at(4) F8 'ro' {BA | BB} -> 3401",  // MLP, Dolby TrueHD: major synchronisation
    "at(4) 0A 09 'OSMHeader' -> 3385",  // OpenStreetMap: type of the first block
    "{at(4) | at(192)} 24 FF AE 51 69 9A A2 21 -> 3364",  // Game Boy Advance, Nintendo DS: logo
    "at(8) 'DUCK' -> 3372",  // DuckDB
    "at(12) {'b1' 05 00 | 00 05 '1b' | 61 15 06 00 | 00 06 15 61 | 53 22 04 00 | 00 04 22 53} -> 3155",  // Berkeley DB: B-tree, hash table, queue, in either byte order
    "at(14) C0 'HBAM7' -> 3157",  // FileMaker 7 on
    "{at(13) ' VW1' | at(14) 'VectorWork'} -> 3188",  // VectorWorks
    "at(20) '!Scream!' -> 3123",  // Scream Tracker 2
    "at(36) 'acsp' -> 3390",  // ICC profile
    "at(44) 'SCRM' -> 3121",  // Scream Tracker 3
    "at(44) 'PTMF' -> 3123",  // Poly Tracker
    "at(256) {'SEGA MEGA DRIVE' | 'SEGA GENESIS'} -> 3364",  // Mega Drive: system
    "at(260) CE ED 66 66 CC 0D 00 0B -> 3364",  // Game Boy: logo
    "at(344) 'n' {'+' | 'i'} '1' 00 -> 3379",  // NIfTI: header and image in one file, or in two
    "at(1080) {'M.K.' | 'M!K!' | 'M&K!' | 'N.T.' | 'FLT' oneof(34,38) | 'OCTA' | 'OKTA' | 'CD81' | 'TDZ' range1(31-33) "
        "| range1(31-39) 'CHN' | range1(31-33) range1(30-39) 'C' oneof(48,4E)} -> 3122",  // ProTracker, by the number of channels
    "at(4) oneof(11,12) AF at(132) oneof(00,FA) F1 -> 3126",  // Autodesk animation: kind, and kind of the first frame
    "atend(-512) 'koly' -> probe 3041",  // Apple disk image
    "atend(-512) 'conectix' -> probe 3042",  // VHD, fixed

    // Files with a whole mark and damaged or missing bytes behind it, so that the catalogue or a
    // probe refuses them. Behind a mark of letters the row asks for bytes that no text has, or for
    // the end.
    "rw 'AC1002' {00 | end} -> 1613",  // AutoCAD drawing, version 2.5 (AC1002)
    "rw 'AC1003' {00 | end} -> 1614",  // AutoCAD drawing, version 2.6 (AC1003)
    "rw 'AC1004' {00 | end} -> 1615",  // AutoCAD drawing, release 9 (AC1004)
    "rw 'AC1006' {00 | end} -> 1616",  // AutoCAD drawing, release 10 (AC1006)
    "rw 'AC1009' {00 | end} -> 1552",  // AutoCAD drawing, release 11-12 (AC1009)
    "rw 'AC1012' {00 | end} -> 1553",  // AutoCAD drawing, release 13 (AC1012)
    "rw {'AC1013' | 'AC1014'} {00 | end} -> 1587",  // AutoCAD drawing, release 14 (AC1013, AC1014)
    "rw 'AC1015' {00 | end} -> 1612",  // AutoCAD drawing, release 2000-2002 (AC1015)
    "rw 'AC1018' {00 | end} -> 1634",  // AutoCAD drawing, release 2004-2006 (AC1018)
    "rw 'AC1021' {00 | end} -> 1638",  // AutoCAD drawing, release 2007-2009 (AC1021)
    "rw 'AC1024' {00 | end} -> 2229",  // AutoCAD drawing, release 2010-2012 (AC1024)
    "rw 'AC1027' {00 | end} -> 2245",  // AutoCAD drawing, release 2013-2017 (AC1027)
    "rw FF D8 FF range1(C0-FE) -> 1535",  // JPEG
    "rw FD '7zXZ' 00 -> 3020",  // XZ
    "rw 'wOFF' {00 | end} -> 3131",  // WOFF
    "rw 'wOF2' {00 | end} -> 3132",  // WOFF 2
    "rw 'OTTO' 00 -> 3130",  // OpenType
    "rw 'ttcf' 00 -> 2405",  // TrueType collection
    "rw 'wvpk' 00 -> 3099",  // WavPack
    "rw 'wvpk' skip(3) 00 -> 3099",  // WavPack of another version: blocks below 16 MB
    "rw 'icns' 00 -> 3067",  // Apple icon
    "rw oneof(31,32) BE skip(2) 00 AB -> 1047",  // Windows Write
    "rw 00 skip(3) {'moov' | 'pnot'} -> 1705",  // QuickTime
    "rw 0A 0D 0D 0A at(8) {1A '+<M' | 'M<+' 1A} -> 3221",  // PCAPNG
    "rw 0A range1(00-05) oneof(00,01) ext('PCX') -> 1502",  // PCX
    "rw 'ID3' range1(02-04) ext('MP3') -> 3094",  // MPEG audio: a tag, and no sound that is known
    "rw FF range1(E2-FD) ext('MP') -> 1710",  // MPEG audio: one frame
    "rw FF oneof(F0,F1) ext('AAC') -> 3095",  // AAC: one frame
    "rw 28 B5 2F FD -> 3021",  // Zstandard
    "rw '<!DOCTYPE ' ci(HTML) -> 3203",  // HTML
    "rw '[' ci(AUTORUN) ']' -> 3419",  // settings of removable media
    "rw 'FORM' 00 skip(3) range4(20-5A) -> 3466",  // IFF of another kind: below 16 MB
    "rw 'ARROW1ARROW1' -> 3146",  // Arrow of nothing
    "rw 'Kaydara FBX Binary  ' -> 3246",  // FBX
    "rw '{' 5C 'pwi' -> 1177",  // Pocket Word
    "rw 'RE~^' -> 1821",  // RAR before version 1.5
    "rw 'MAC ' 00 00 -> 3098",  // Monkey's Audio
    "rw ci(BEGMF) -> 1505",  // CGM, clear text
    "rw FF FF 00 18 00 -> 1565",  // GEM metafile
    "rw 'XFIR' skip(4) 'MDGF' -> 1703",  // Director
    "rw 00 00 01 BA -> 1721",  // MPEG: pack of a program stream
    "rw 30 26 B2 75 8E 66 CF 11 A6 D9 00 AA 00 62 CE 6C -> 1716",  // Advanced systems format
    "rw 1A 'E' DF A3 ext('MK') -> 3111",  // Matroska
    "rw 'ITSF' oneof(00,03) -> 2403",  // compiled HTML help
    "rw 'EVF' 09 0D 0A FF 00 -> 6108",  // EnCase image
    "atend(-22) 'PK' 05 06 -> 1802",  // ZIP, the last of several volumes
    "rw {range1(02-05) | range1(30-32) | range1(7B-FB) | oneof(43,63)} ext('DBF') skip(1) "
        "range1(01-0C) range1(01-1F) -> 3141",  // dBASE, by the date
    "rw 02 ext('DBF') skip(2) range1(01-0C) -> 3141",  // dBASE II, by the date
    "rw 00 skip(3) 00 00 {ext('FPT') | ext('DCT')} -> 3158",  // dBASE or FoxPro memo
    "ext('DBT') rw skip(2) 00 00 -> 3158",  // dBASE memo: fewer than 65,536 blocks
    "{ext('CDX') | ext('DCX')} at(12) 0A 00 oneof(60,E0) 01 -> 3159",  // FoxPro index: keys of ten characters, its kind
    "-> probe 3040",  // ISO 9660, UDF: 32 KB into the file

    // Volumes, by how their first sectors begin; behind discs, which may hold them.
    "at(3) 'NTFS    ' -> 3058",  // NTFS
    "at(3) 'EXFAT   ' -> 3059",  // exFAT
    "at(512) 'EFI PART' -> 3297",  // GUID partition table: header
    "at(1024) {'H+' 00 04 | 'HX' 00 05} -> 3296",  // HFS Plus, HFSX: signature and version
    "rw range1(E9-EB) at(11) 00 range1(02-10) range1(01-80) range1(01-20) 00 range1(01-02) at(21) range1(F0-FF) -> 3059",  // FAT without the name of its kind: sizes of a sector and a cluster, reserved sectors, tables, medium
    "rw {EB | E9} at(510) 55 AA {at(54) 'FAT1' | at(82) 'FAT32'} -> 3059",  // FAT: jump, mark of a boot sector, kind as DOS 4 and later write it
    // ext2 to ext4: the mark is of two bytes, so that the state, what to do on errors, the size of a
    // block (1 KB to 64 KB), the revision and the number of inodes must be in range too.
    "at(1080) 53 EF range1(00-07) 00 range1(01-03) 00 at(1048) range1(00-06) 00 00 00 at(1100) "
        "range1(00-01) 00 00 00 at(1024) {not(00) | skip(1) not(00) | skip(2) not(00) | skip(3) not(00)} "
        "-> 3295",  // ext2, ext3, ext4
    "rw 'ER' 02 00 at(512) 'PM' 00 00 -> 3297",  // Apple partition map: blocks of 512 bytes, mark of the first entry
};
// clang-format on

constexpr size_t kPrograms = ProgramsOf(kRows);
constexpr size_t kRoom = 16384;
constexpr auto kUnfitted = EncodeTable<kPrograms, kRoom>(kRows);
constexpr auto kTable = Fitted<kUnfitted.size>(kUnfitted);
static_assert(RowsAreWellFormed(kTable));

constexpr SignatureIndex<kPrograms> kIndex = IndexTable<kPrograms>(kTable, IsUnanswered);
constexpr PlacedRows<kPrograms> kPlaces = IndexPlaces(kTable);

}  // namespace

WalkResult WalkSupplement(SignatureRun& run) {
  return WalkTableWithPlaces(kTable, kIndex, kPlaces, run);
}

WalkResult WalkSupplementTraced(SignatureRun& run) {
  const WalkResult match = WalkTableWithPlaces<RunTracedProgram>(kTable, kIndex, kPlaces, run);
  TellRow(kTable, match, kFiSupplementTable, run);
  return match;
}

uint16_t BasisOfSupplementRow(uint16_t row) { return BasisOfTableRow(kTable, row); }

size_t SupplementRows() { return kPrograms; }

std::span<const uint8_t> SupplementBytes() { return kTable.bytes; }

const uint8_t* SupplementProgram(uint16_t row) {
  return kTable.bytes.data() + kTable.starts[row - 1];
}

}  // namespace fi
