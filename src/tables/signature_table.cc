#include "tables/signature_table.h"

#include <iterator>
#include <string_view>

#include "tables/unanswered_probes.h"

namespace fi {
namespace {

// One row a format, in the notation of row_encoder.h, with its number and the name of the format.
// The order carries meaning: a row sees only files that no row before it claimed. New fixed formats
// do not go in between; hosts keep the identifiers, and the rows behind a new one would change
// theirs.
//
// Rows 221 and 222 hold a probe code that does not exist; its second byte is executed and leads to
// the return behind it. A row with the extension XY matches every extension that begins so.
//
// clang-format off
constexpr std::string_view kRows[] = {
    // Storages by their class identifier. They match nothing but a structured storage; the last, the
    // all-zero class, sends every remaining class-less storage to the compound-document classifier.
    "class(D1 F9 0C C2 AE 85 D1 11 AA B4 00 60 97 DA 56 1A) -> 1165",  // 1: StarWriter 5.x document
    "class(61 B8 A5 C6 D6 85 D1 11 89 CB 00 80 29 E4 B0 B1) -> 1449",  // 2: StarCalc 5.x spreadsheet
    "class(21 72 5C 56 BC 85 D1 11 89 D0 00 80 29 E4 B0 B1) -> 1610",  // 3: StarImpress 5.x presentation
    "class(06 09 02 00 00 00 00 00 C0 00 00 00 00 00 00 46) -> probe 1146",  // 4: Word 97-2003 document, Word 2000 or writer not stated
    "class(06 09 02 00 00 00 00 00 C0 00 00 00 00 00 00 00) -> probe 1146",  // 5: Word 97-2003 document, Word 2000 or writer not stated
    "class(07 09 02 00 00 00 00 00 C0 00 00 00 00 00 00 46) -> 1329",  // 6: Word picture object
    "class(00 09 02 00 00 00 00 00 C0 00 00 00 00 00 00 46) -> probe 1082",  // 7: Word 6.0/95 document
    "class(10 08 02 00 00 00 00 00 C0 00 00 00 00 00 00 46) -> 1424",  // 8: Excel 5.0/95 workbook
    "class(10 08 02 00 00 00 00 00 00 C0 00 00 00 00 00 46) -> 1424",  // 9: Excel 5.0/95 workbook
    "class(11 08 02 00 00 00 00 00 C0 00 00 00 00 00 00 46) -> 1536",  // 10: Excel 5.0 chart (compound file)
    "class(20 08 02 00 00 00 00 00 C0 00 00 00 00 00 00 46) -> probe 1446",  // 11: Excel 97-2003 workbook, Excel 2000 or another writer
    "class(21 08 02 00 00 00 00 00 C0 00 00 00 00 00 00 46) -> probe 1446",  // 12: Excel 97-2003 workbook, Excel 2000 or another writer
    "class(02 13 02 00 00 00 00 00 C0 00 00 00 00 00 00 46) -> 1093",  // 13: Works word processor for Windows, version 3 (compound file)
    "class(03 13 02 00 00 00 00 00 C0 00 00 00 00 00 00 46) -> 1220",  // 14: Works database for Windows, version 3 (compound file)
    "class(51 48 04 00 00 00 00 00 C0 00 00 00 00 00 00 46) -> 1549",  // 15: PowerPoint 4.0 presentation (compound file)
    "class(70 AE 7B EA 3B FB CD 11 A9 03 00 AA 00 51 0E A3) -> 1543",  // 16: PowerPoint 95 presentation
    "class(06 09 02 00 00 00 30 4B A9 77 D2 14 85 20 36 FE) -> 1335",  // 17: WPS Writer document (Kingsoft)
    "class(03 00 54 45 50 57 00 53 4B 49 4E 47 53 4F 46 54) -> 1475",  // 18: WPS Spreadsheets workbook (Kingsoft ET)
    "class(C2 DB CD 28 E2 0A CE 11 A2 9A 00 AA 00 4A 1A 72) -> 1105",  // 19: Works word processor for Windows, version 4 (compound file)
    "class(C3 DB CD 28 E2 0A CE 11 A2 9A 00 AA 00 4A 1A 72) -> 1221",  // 20: Works database for Windows, version 4 (compound file)
    "class(80 DC FD 73 A9 AE 1A 10 98 A7 00 AA 00 37 49 59) -> 1094",  // 21: WordPad document
    "class(60 86 E6 AA 18 C7 CE 11 8D 9B 44 45 53 54 00 00) -> 1107",  // 22: WordPerfect document, version 7 or later
    "class(FF 73 98 51 AD 2D 20 02 19 37 00 00 92 96 79 CD) -> 1139",  // 23: WordPerfect document, versions 7-8 (compound file)
    "class(62 FE 2E 40 99 19 1B 10 99 AE 04 02 1C 00 70 02) -> 1555",  // 24: Corel Presentations slide show, versions 7-9 (compound file)
    "class(0D 74 B6 ED 05 0A 19 47 A9 6A 5C 7B EE 01 19 E1) -> 2216",  // 25: Corel Presentations slide show, about version X4
    "class(62 4E 66 0D DE E8 BE 44 9B 6C 5A BB 6C 58 44 C7) -> 2230",  // 26: Corel Presentations slide show, about version X5
    "class(49 6C 19 08 62 16 7E 4F 89 7F 67 D6 C3 49 9C D0) -> 2244",  // 27: Corel Presentations slide show, about version X6
    "class(62 9F 9A 18 B1 41 CB 4B 9C D5 3F 6F 9D 40 2B A1) -> 2268",  // 28: Corel Presentations slide show, about version X7 or later
    "class(60 FE 2E 40 99 19 1B 10 99 AE 04 02 1C 00 70 02) -> 1556",  // 29: WordPerfect graphics (WPG) in a compound file
    "class(C4 50 52 A2 C1 50 D3 11 8E A3 00 90 27 1B EC DD) -> 1606",  // 30: Corel Presentations slide show, about version 10
    "class(00 B4 02 00 00 00 00 00 C0 00 00 00 00 00 00 46) -> probe 1445",  // 31: Quattro Pro 9 notebook
    "class(90 54 51 AC 1A FD D4 11 B6 F6 00 90 27 1B EF B3) -> probe 1447",  // 32: Quattro Pro notebook, about version 10
    "class(AB CE E7 69 CF FE C0 11 B3 4B 13 62 00 2C 0C 03) -> probe 1450",  // 33: Quattro Pro notebook, about version X3
    "class(41 2C 58 9D E8 8A 99 49 A6 96 5F 36 ED C9 40 29) -> probe 1453",  // 34: Quattro Pro notebook, about version 12
    "class(00 B4 02 00 00 00 00 00 C0 00 00 00 00 00 00 46) -> 1433",  // 35: Quattro Pro 7 notebook
    "class(01 B4 02 00 00 00 00 00 C0 00 00 00 00 00 00 46) -> 1434",  // 36: not publicly known
    "class(5C 6F 62 EB A9 12 24 4F A0 FC 01 B5 C2 53 4C 35) -> probe 1450",  // 37: Quattro Pro notebook, about version X3
    "class(DA 9D 09 DE EE 1E 27 4A 99 0A 45 6A 30 2E C9 57) -> 1469",  // 38: Quattro Pro notebook, about version X4
    "class(9E A7 F4 C9 78 AD 75 44 A6 76 8D F2 78 E8 00 79) -> 1484",  // 39: Quattro Pro notebook, about version X5
    "class(47 80 D4 63 F8 D2 14 4D B2 B8 8D C6 2D F0 39 A4) -> 1495",  // 40: Quattro Pro notebook, about version X6
    "class(0D 7F BC 00 18 29 B9 48 8E E1 90 E9 EB F6 3F 55) -> 2506",  // 41: Quattro Pro notebook, about version X7 or later
    "class(80 31 34 07 60 38 CE 11 84 B9 00 00 C0 AA 27 56) -> 1579",  // 42: Micrografx Designer drawing (DSF), version 6
    "class(2F E4 05 FE F7 C8 CF 11 9A 59 00 20 AF 9B F9 3E) -> probe 1579",  // 43: Micrografx Designer drawing (DSF), version 6
    "class(C6 DF 89 B9 E1 59 D2 11 86 8B 00 C0 4F B1 79 F2) -> probe 1579",  // 44: Micrografx Designer drawing (DSF), version 6
    "class(10 8D 81 64 9B 4F CF 11 86 EA 00 AA 00 B9 29 E8) -> 1581",  // 45: PowerPoint 97-2003 presentation (by class)
    "class(11 8D 81 64 9B 4F CF 11 86 EA 00 AA 00 B9 29 E8) -> 1581",  // 46: PowerPoint 97-2003 presentation (by class)
    "class(01 70 59 78 84 1D CF 11 97 13 00 20 AF D8 06 F4) -> 1140",  // 47: not publicly known
    "class(20 33 FD 72 05 9A CF 11 85 A4 00 A0 C9 04 DE 5F) -> 1223",  // 48: Project 98 project
    "class(3A 8F B7 74 C8 C8 D1 11 BE 11 00 C0 4F B6 FA F1) -> probe 1224",  // 49: Project 2000-2003 project
    "class(01 12 02 00 00 00 00 00 00 C0 00 00 00 00 00 46) -> probe 2202",  // 50: Publisher document, 2002 and later
    "class(01 1A 02 00 00 00 00 00 C0 00 00 00 00 00 00 46) -> 1607",  // 51: Visio 3 drawing
    "class(11 1A 02 00 00 00 00 00 C0 00 00 00 00 00 00 46) -> 1586",  // 52: Visio 4 drawing
    "class(12 1A 02 00 00 00 00 00 C0 00 00 00 00 00 00 46) -> 1595",  // 53: Visio 5 drawing
    "class(13 1A 02 00 00 00 00 00 C0 00 00 00 00 00 00 46) -> probe 1597",  // 54: Visio 2000-2002 drawing
    "class(14 1A 02 00 00 00 00 00 C0 00 00 00 00 00 00 46) -> probe 1631",  // 55: Visio 2003-2010 drawing
    "class(00 67 61 56 54 C1 CE 11 85 53 00 AA 00 A1 F9 5B) -> 1594",  // 56: FlashPix image
    "class(0B 0D 02 00 00 00 00 00 C0 00 00 00 00 00 00 46) -> probe 1143",  // 57: Outlook message
    "class(46 F0 06 00 00 00 00 00 C0 00 00 00 00 00 00 46) -> probe 1311",  // 58: Outlook item template
    "class(00 04 85 59 64 66 1B 10 B2 1C 00 AA 00 4B A9 0B) -> 1805",  // 59: Office Binder
    "class(B2 5A A4 0E 0A 9E D1 11 A4 07 00 C0 4F B9 32 BA) -> 1191",  // 60: Works word processor, versions 5-6 (compound file)
    "class(D6 D2 33 27 AE 90 A0 42 B2 CF 1E 28 D6 87 7E B0) -> 1180",  // 61: Hangul Word Processor document, version 5 (compound file)
    "class(C0 15 F4 89 BE 07 D0 11 BD C0 00 00 F0 61 04 3F) -> 1334",  // 62: not publicly known
    "class(00 04 13 29 ED 2E 69 10 BF 5D 00 DD 01 11 86 B7) -> 1145",  // 63: Lotus Word Pro document (compound file)
    "class(00 1B 45 16 27 ED CD 11 A0 54 00 60 8C 11 53 D4) -> 2246",  // 64: not publicly known
    "class(00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00) -> probe 1999",  // 65: Unknown format

    // Signatures at the start of the file and at fixed offsets.
    "rw 'OggS' -> probe 1730",  // 66: Ogg container, codecs not told apart
    "rw 'ADSEGMENTEDFILE' -> probe 6100",  // 67: AccessData custom content image (AD1), first segment
    "rw 'ADCRYPT' -> probe 6102",  // 68: AccessData custom content image, encrypted (ADCRYPT)
    "rw 'EVF' 09 0D 0A nop00 -> probe 6108",  // 69: EnCase evidence file (E01), first segment
    "rw 'EVF2' 0D 0A 81 00 -> probe 6103",  // 70: EnCase evidence file, version 2 (Ex01), first segment
    "rw 'LVF' 09 0D 0A nop00 -> probe 6104",  // 71: EnCase logical evidence file (L01), first segment
    "rw 'LEF2' 0D 0A 81 00 -> probe 6106",  // 72: EnCase logical evidence file, version 2 (Lx01), first segment
    "rw '1' BE 00 00 00 AB 00 at(96) 00 at(116) 00 -> 1000",  // 73: Word for DOS document, versions 1-4
    "rw '1' BE 00 00 00 AB 00 at(96) 00 at(116) range1(03-07) -> 1001",  // 74: Word for DOS document, versions 5.0-5.5
    "rw '1' BE 00 00 00 AB 00 at(96) 00 at(116) range1(08-09) -> 1076",  // 75: Word for DOS document, version 6.0
    "rw DB DB 00 00 00 AB 00 at(116) range1(08-09) -> 1076",  // 76: Word for DOS document, version 6.0
    "rw DC A5 oneof(68,69) 00 -> 1102",  // 77: Word 6.0/95 document, without summary information
    "rw DC A5 'e' 00 00 -> 1102",  // 78: Word 6.0/95 document, without summary information
    "rw 03 00 00 00 FF 00 00 -> 1543",  // 79: PowerPoint 95 presentation
    "rw oneof(31,32) BE 00 00 00 AB 00 at(96) not(00) at(116) 00 -> 1047",  // 80: Windows Write document
    "rw ED DE AD 0B 02 00 00 00 -> 1605",  // 81: PowerPoint 2 for Windows presentation
    "rw ED DE AD 0B 03 00 00 00 -> 1540",  // 82: PowerPoint 3 for Windows presentation
    "rw 0B AD DE ED 00 00 00 03 -> 1548",  // 83: PowerPoint 3 for Macintosh presentation
    "rw ED DE AD 0B 04 00 00 00 -> 1562",  // 84: PowerPoint 4 for Windows presentation (bare stream)
    "rw 0B AD DE ED 00 00 00 04 -> 1563",  // 85: PowerPoint 4 for Macintosh presentation
    "rw 00 at(65) 'SLD3PPT3' at(128) 0B AD DE ED 00 00 00 03 -> 1566",  // 86: PowerPoint 3 for Macintosh presentation (MacBinary)
    "rw 00 at(65) 'SLD3PPT3' -> 1567",  // 87: PowerPoint 4 for Macintosh presentation (MacBinary)
    "rw 'SoftSEAL' -> 1319",  // 88: SealedMedia protected document (SoftSEAL)
    "rw 'HWP Document' at(24) 1A 01 02 -> 1179",  // 89: Hangul Word Processor document, versions 2-3
    "rw 01 FE 00 at(26) oneof(00,FF) oneof(01,FF) oneof(00,FF) oneof(00,FF) -> 1048",  // 90: Works word processor for DOS, version 1
    "rw 01 FE 01 at(26) oneof(00,FF) oneof(01,FF) oneof(00,FF) oneof(00,FF) -> 1049",  // 91: Works word processor for DOS, version 2
    "rw 01 FE skip(1) range1(40-5F) -> 1068",  // 92: Works word processor, version 2 for Windows or 3 for DOS
    "rw 1D '}' 00 00 'P' at(125) '}' 00 1D -> 1002",  // 93: WordStar for DOS document, versions 5.0-5.5
    "rw 1D '}' 00 00 'U' at(125) '}' 00 1D -> 1002",  // 94: WordStar for DOS document, versions 5.0-5.5
    "rw 1D '}' 00 00 60 at(125) '}' 00 1D -> 1050",  // 95: WordStar for DOS document, version 6.0
    "rw 1D '}' 00 00 'p' at(125) '}' 00 1D -> 1067",  // 96: WordStar for DOS document, version 7.0
    "rw 7F ' WS2000' FF '1.00' FF FF FF FF -> 1004",  // 97: WordStar 2000 document, version 1.00
    "rw FF 'WPC' skip(4) '%' range1(0A-0E) 01 00 -> 1106",  // 98: not publicly known
    "rw FF 'WPC' skip(8) not(00) -> 1078",  // 99: WordPerfect-family file, encrypted
    "rw FF 'WPC' skip(9) not(00) -> 1078",  // 100: WordPerfect-family file, encrypted
    "rw FF 'WPC' skip(4) 01 0A 00 00 skip(2) 00 00 -> 1005",  // 101: WordPerfect document, version 5.0
    "rw FF 'WPC' skip(4) 01 0A 00 01 skip(2) 00 00 -> 1038",  // 102: WordPerfect document, version 5.1
    "rw FF 'WPC' skip(4) 01 ':' 00 01 skip(2) 00 00 -> 1083",  // 103: not publicly known
    "rw FF 'WPC' skip(4) 01 0A 02 00 -> 1075",  // 104: WordPerfect document, version 6.0
    "rw FF 'WPC' skip(4) 01 0A 02 01 -> 1097",  // 105: WordPerfect document, version 6.1 and later
    "rw FF 'WPC' skip(4) 01 0A 02 range1(02-04) -> 1107",  // 106: WordPerfect document, version 7 or later
    "rw FF 'WPC' skip(4) 15 oneof(0A,0C) 01 -> 1650",  // 107: not publicly known
    "rw FF 'WPC' skip(4) 0F oneof(0F,10) 01 00 -> 1550",  // 108: WordPerfect or Corel Presentations slide show, version 3 or earlier
    "rw FF 'WPC' skip(4) 01 ',' 03 -> 1080",  // 109: WordPerfect for Macintosh document, version 3
    "rw FF 'WPC' skip(4) 01 ',' 02 -> 1059",  // 110: WordPerfect for Macintosh document, version 2
    "rw FF 'WPC' skip(5) 1D 0B -> 1809",  // 111: not publicly known
    "-> probe 1007",  // 112: not publicly known
    "-> probe 1041",  // 113: not publicly known
    "rw E4 'R\\{' 8C D8 A7 'M' AE B1 'Sx' D0 ')' 96 D3 at(48) '/' E9 8D 'c' D4 A6 C1 'K' 9A '6' B3 FC '%' 11 A5 B7 -> 1832",  // 114: OneNote section, alternative packaging
    "rw E4 'R\\{' 8C D8 A7 'M' AE B1 'Sx' D0 ')' 96 D3 -> 1829",  // 115: OneNote section
    "rw A1 '/' FF 'C' D9 EF 'vL' 9E E2 10 EA 'W' 22 'v_' -> 1828",  // 116: OneNote table of contents
    "rw 'AutoCAD Binary DXF' 0D 0A 1A 00 -> 1545",  // 117: AutoCAD drawing interchange, binary (DXF)
    "rw 'AutoCAD DXB 1.0' 0D 0A 1A 00 -> 1546",  // 118: AutoCAD drawing exchange binary (DXB 1.0)
    "-> probe 1544",  // 119: AutoCAD drawing interchange, text (DXF)
    "rw 'AC1002' 00 00 -> 1613",  // 120: AutoCAD drawing, version 2.5 (AC1002)
    "rw 'AC1003' 00 00 -> 1614",  // 121: AutoCAD drawing, version 2.6 (AC1003)
    "rw 'AC1004' 00 00 -> 1615",  // 122: AutoCAD drawing, release 9 (AC1004)
    "rw 'AC1006' 00 00 -> 1616",  // 123: AutoCAD drawing, release 10 (AC1006)
    "rw 'AC1009' 00 00 -> 1552",  // 124: AutoCAD drawing, release 11-12 (AC1009)
    "rw 'AC1012' 00 00 -> 1553",  // 125: AutoCAD drawing, release 13 (AC1012)
    "rw 'AC101' oneof(33,34) 00 00 -> 1587",  // 126: AutoCAD drawing, release 14 (AC1013, AC1014)
    "rw 'AC1015' 00 00 -> 1612",  // 127: AutoCAD drawing, release 2000-2002 (AC1015)
    "rw 'AC1018' 00 00 -> 1634",  // 128: AutoCAD drawing, release 2004-2006 (AC1018)
    "rw 'AC1021' 00 00 -> 1638",  // 129: AutoCAD drawing, release 2007-2009 (AC1021)
    "rw 'AC1024' 00 00 -> 2229",  // 130: AutoCAD drawing, release 2010-2012 (AC1024)
    "rw 'AC1027' 00 00 -> 2245",  // 131: AutoCAD drawing, release 2013-2017 (AC1027)
    "ext('AI') rw '%PDF-' skip(1) '.' -> 1611",  // 132: Adobe Illustrator artwork (PDF based)
    "-> probe 1807",  // 133: not publicly known
    "rw '%PDF-' skip(1) '.' -> 1557",  // 134: Portable Document Format
    "rw skip(128) '%PDF-' skip(1) '.' -> 1557",  // 135: Portable Document Format
    "rw 1A 00 00 oneof(03,04) 00 00 -> 1227",  // 136: Lotus Notes database

    // XML documents by the namespace of their root, or by a bare root name.
    "name(M1:/xmlns/tessdoc5_7) -> 2036",  // 137: XML document, tessdoc schema 5.7
    "name(M1:/xmlns/tessdoc5_6) -> 2035",  // 138: XML document, tessdoc schema 5.6
    "name(M1:/xmlns/tessdoc5_5) -> 2034",  // 139: XML document, tessdoc schema 5.5
    "name(M1:/xmlns/tessdoc5_4) -> 2032",  // 140: XML document, tessdoc schema 5.4
    "name(M1:/xmlns/tessdoc5_3) -> 2030",  // 141: XML document, tessdoc schema 5.3
    "name(M1:/xmlns/tessdoc5_2) -> 2008",  // 142: XML document, tessdoc schema 5.2
    "name(M1:/xmlns/tessdoc5_1) -> 2006",  // 143: XML document, tessdoc schema 5.1
    "name(M1:/xmlns/tessdoc5) -> 2005",  // 144: XML document, tessdoc schema 5
    "name(M2:/xmlns/tessdoc4) -> 2004",  // 145: XML document, tessdoc schema 4
    "name(M2:/xmlns/tessdoc3) -> 2003",  // 146: XML document, tessdoc schema 3
    "name(M2:/xmlns/tessdoc2) -> 2002",  // 147: XML document, tessdoc schema 2
    "name(M2:/xmlns/tessdoc) -> 2001",  // 148: XML document, tessdoc schema 1
    "name(M1:/xmlns/pst_fields) -> 1301",  // 149: XML field list (pst_fields schema)
    "name(http://www.lotus.com/dxl) -> probe 2007",  // 150: Domino XML (DXL)
    "name(aid) -> 2010",  // 151: Adobe InDesign or InCopy interchange XML
    "name(http://schemas.microsoft.com/visio/2003/core) -> 2012",  // 152: Visio 2003-2010 XML drawing

    // Further signatures, and probes that need none.
    "-> probe 2233",  // 153: not publicly known
    "rw 'x' 9F '>' 22 skip(2) oneof(01,02) -> 1197",  // 154: Transport-neutral encapsulation (TNEF, winmail.dat)
    "-> probe 1601",  // 155: MicroStation design file (DGN, version 7 and earlier)
    "rw 00 05 E1 03 00 00 range1(09-24) E2 05 00 -> 1008",  // 156: IBM DCA revisable-form text document (RFT)
    "rw 1A 'S' skip(2) 03 00 -> 1011",  // 157: not publicly known
    "at(640) 06 'WRD PC' skip(2) '2.00' -> 1013",  // 158: not publicly known
    "at(640) 06 'TYPE 2' skip(2) '2.00' -> 1013",  // 159: not publicly known
    "at(640) 06 'WRD PC' -> 1012",  // 160: not publicly known
    "at(640) 06 'IBM  ' -> 1016",  // 161: not publicly known
    "at(640) 06 'TYPE 3' -> 1014",  // 162: not publicly known
    "at(640) 06 'TYPE 4' -> 1015",  // 163: not publicly known
    "at(8) 0C 'GERBILDOC3' -> 1058",  // 164: PFS:First Choice document, version 3
    "at(8) 0C 'GERBILDOC' -> 1017",  // 165: PFS:First Choice document, versions 1-2
    "rw range1(34-36) '.0' at(512) B3 at(1024) B3 at(1536) B3 -> 1051",  // 166: not publicly known
    "rw 00 at(65) 'WPD0SSIW' -> 1035",  // 167: WordPerfect for Macintosh document, version 1 (MacBinary)
    "rw 00 at(65) 'WPD1WPC2' -> 1059",  // 168: WordPerfect for Macintosh document, version 2
    "rw 00 at(65) 'AWWPPSI2' -> 1060",  // 169: Works for Macintosh word processor, versions 1-2
    "rw 00 00 00 range1(00-08) at(12) 00 00 00 00 00 01 -> 1060",  // 170: Works for Macintosh word processor, versions 1-2
    "rw 00 at(65) 'AWDBPSI2' -> 1215",  // 171: Works for Macintosh database, versions 1-2
    "rw 00 00 00 range1(00-08) at(16) 00 02 at(32) 00 range1(01-3F) at(38) 00 skip(1) 00 -> 1215",  // 172: Works for Macintosh database, versions 1-2
    "rw 00 at(65) 'AWSSPSI2' -> 1417",  // 173: Works for Macintosh spreadsheet, versions 1-2
    "rw '{\\' ic(RTF) '1\\' ic(JIS) -> 1091",  // 174: Rich Text Format, Japanese (RTF 1 JIS)
    "rw '{\\' ic(RTF) -> probe 1028",  // 175: Rich Text Format
    "rw '{\\' ic(PWD) range1(31-33) -> 1144",  // 176: Pocket Word document (PWD)
    "rw '{\\' ic(PWI) 15 00 00 01 01 06 -> 1177",  // 177: Inkwriter/Notetaker document (PWI)
    "rw FE '4' at(120) 00 00 01 00 -> 1029",  // 178: Word for Macintosh document, version 3.0
    "rw FE '7' 00 '#' at(20) 00 00 oneof(01,02) 00 -> 1073",  // 179: Word for Macintosh document, version 5
    "rw at(65) 'WDBNMSWD' at(128) FE '7' 00 '#' at(148) 00 00 oneof(01,02) 00 -> 1073",  // 180: Word for Macintosh document, version 5
    "rw FE '7' at(20) 00 00 -> 1030",  // 181: Word for Macintosh document, version 4.0
    "rw 00 at(65) 'WDBNMSWD' at(128) FE '7' at(148) 00 00 01 00 -> 1030",  // 182: Word for Macintosh document, version 4.0
    "rw 9B A5 at(18) 00 00 00 00 00 00 -> 1054",  // 183: Word for Windows document, version 1
    "rw DB A5 '-' 00 -> 1065",  // 184: Word for Windows document, version 2
    "rw DC A5 range1(60-65) 00 '-' C0 -> 1082",  // 185: Word 6.0/95 document
    "rw 00 at(65) 'W6BNMSWD' -> 1125",  // 186: Word for Macintosh document, version 6 (MacBinary)
    "rw CA FE BA BE -> 1816",  // 187: Java class file
    "ext('PWP') rw '[ver]' 0D 0A -> 1061",  // 188: Professional Write Plus document
    "rw '[ver]' 0D 0A -> 1057",  // 189: Ami Pro document
    "rw '[encrypt]' 0D 0A -> probe 1057",  // 190: Ami Pro document
    "rw 'WordPro' skip(2) 00 00 00 00 00 00 00 -> probe 1108",  // 191: Lotus Word Pro document
    "rw '# VE # 4.00' -> 1062",  // 192: not publicly known
    "rw '# VV # 5.00' -> 1064",  // 193: not publicly known
    "rw 'FFFFIIII' range1(00-02) -> 1066",  // 194: JustWrite document, format version 0-2
    "rw 'FFFFIIII' 08 -> 1079",  // 195: JustWrite document, format version 8
    "rw 'FFFFIIII' wnotin1(0-6) -> 1069",  // 196: JustWrite document, other format version
    "rw 'Z' 00 at(92) C9 00 at(296) C9 00 -> 1031",  // 197: not publicly known
    "at(92) 1C at(295) 1D at(498) 05 81 -> 1037",  // 198: not publicly known
    "rw 00 '.' 00 '.' at(135) 06 12 01 00 -> 1032",  // 199: MacWrite II document
    "rw 00 at(65) 'MW2DMWII' -> 1032",  // 200: MacWrite II document
    "rw 'S' 04 02 01 -> probe 1010",  // 201: not publicly known
    "rw 1A 08 -> 1804",  // 202: ARC archive (method 8)
    "rw at(128) 'DICM' 02 -> 2243",  // 203: DICOM medical image

    // Images.
    "rw 'II*' 00 -> 1501",  // 204: Tagged Image File Format (TIFF)
    "rw 'MM' 00 '*' -> 1501",  // 205: Tagged Image File Format (TIFF)
    "rw 'BM' at(14) '(' 00 00 00 -> 1500",  // 206: Windows bitmap (BMP), header version 3 or 4
    "rw 'BM' at(14) 'l' 00 00 00 -> 1500",  // 207: Windows bitmap (BMP), header version 3 or 4
    "rw 'BM' at(14) 7C 00 00 00 -> 1602",  // 208: Windows bitmap (BMP), header version 5
    "rw FF D8 FF -> probe 1535",  // 209: JPEG image
    "rw at(65) 'JPEG8BIM' at(128) FF D8 FF range1(DB-EE) -> 1535",  // 210: JPEG image
    "rw 'BM' at(14) 0C 00 00 00 -> 1514",  // 211: OS/2 version 1 or Windows 2 bitmap (BMP)
    "rw 'BM' at(14) 40 00 00 00 -> 1639",  // 212: OS/2 version 2 bitmap (BMP)
    "rw at(102) 'BM' at(116) 0C 00 00 00 -> 1551",  // 213: OS/2 version 1 bitmap behind a 102-byte header
    "-> probe 1515",  // 214: not publicly known
    "rw 'GIF8' oneof(37,39) -> 1503",  // 215: Graphics Interchange Format (GIF)
    "-> probe 1504",  // 216: Encapsulated PostScript with TIFF preview (DOS binary header)
    "rw FF 'WPC' skip(4) 01 16 02 -> 1527",  // 217: WordPerfect graphics (WPG), version 2
    "rw FF 'WPC' skip(4) 01 16 -> 1507",  // 218: WordPerfect graphics (WPG), version 1
    "rw FF 'WPC' -> 1095",  // 219: WordPerfect-family file, other type or version
    "-> probe 5004",  // 220: Macintosh picture (PICT), without the 512-byte preamble
    "at(522) 00 11 02 raw(FF 0C 00 FF 08 E2 05)",  // 221: Macintosh picture (PICT), version 2
    "at(650) 00 11 02 raw(FF 0C 00 FF 08 E2 05)",  // 222: Macintosh picture (PICT), version 2
    "at(507) 00 00 00 00 00 at(522) 11 01 -> 1510",  // 223: Macintosh picture (PICT), version 1
    "rw 01 00 00 00 01 00 08 00 'D' 00 00 00 00 0C 7F 09 06 -> 1509",  // 224: Lotus 1-2-3 chart (PIC)
    "rw 'SM' range2(00-1F) -> 1511",  // 225: not publicly known
    "rw D7 CD C6 9A -> 1508",  // 226: Windows metafile (WMF), placeable

    // Metafiles and further graphics.
    "rw 01 00 09 00 00 range1(01-03) -> 5000",  // 227: Windows metafile (WMF), without placeable header
    "rw skip(2) D3 A8 A8 00 00 00 '00000001' -> 1542",  // 228: OS/2 Presentation Manager metafile (MET)
    "rw 01 00 00 00 at(40) ' EMF' -> 1564",  // 229: Enhanced metafile (EMF)
    "rw 01 FF oneof(01,02) 04 03 -> 1517",  // 230: Micrografx Draw drawing
    "rw skip(1) 'MakerVector' -> 1558",  // 231: Frame vector graphic (MakerVector)
    "rw 00 '6' 00 '6' -> 1617",  // 232: QuarkXPress 3.0 document
    "rw 00 00 'MMXPR3' 00 '9' 00 '8' -> 1618",  // 233: QuarkXPress 3.1 for Macintosh document
    "rw 00 00 'MMXPR3' 00 '<' 00 '<' -> 1619",  // 234: QuarkXPress 3.2 for Macintosh document
    "rw 00 00 'MMXPR3' 00 '?' 00 '?' -> 1620",  // 235: QuarkXPress 3.3 for Macintosh document
    "rw 00 00 'MMXPR3' 00 'A' 00 'A' -> 1621",  // 236: QuarkXPress 4 for Macintosh document
    "rw 00 00 'IIXPR3?' 00 '?' 00 -> 1622",  // 237: QuarkXPress 3.3 for Windows document
    "rw 00 00 'IIXPR3A' 00 'A' 00 -> 1623",  // 238: QuarkXPress 4 for Windows document
    "rw 00 00 'IIXPR3B' 00 'B' 00 -> 1624",  // 239: QuarkXPress 5 for Windows document
    "rw 'Paint Shop Pro Image File' 0A 1A -> 1593",  // 240: Paint Shop Pro image
    "rw '<MIFFile 3.00>' -> 1129",  // 241: FrameMaker interchange format (MIF), version 3.00
    "rw '<MIFFile Jp 3.00>' -> 1135",  // 242: FrameMaker interchange format (MIF), Japanese, version 3.00
    "rw '<MIFFile 4.00>' -> 1130",  // 243: FrameMaker interchange format (MIF), version 4.00
    "rw '<MIFFile Jp 4.00>' -> 1136",  // 244: FrameMaker interchange format (MIF), Japanese, version 4.00
    "rw '<MIFFile 5.00>' -> 1131",  // 245: FrameMaker interchange format (MIF), version 5.00
    "rw '<MIFFile Jp 5.00>' -> 1137",  // 246: FrameMaker interchange format (MIF), Japanese, version 5.00
    "rw '<MIFFile 5.50>' -> 1138",  // 247: FrameMaker interchange format (MIF), version 5.50
    "rw '<MIFFile 6.00>' -> 1166",  // 248: FrameMaker interchange format (MIF), version 6.00
    "rw '<MIFFile Jp 6.00>' -> 1167",  // 249: FrameMaker interchange format (MIF), Japanese, version 6.00
    "ext('TGA') -> 1512",  // 250: Truevision TGA
    "rw 'HGB3' 00 00 -> 1523",  // 251: Harvard Graphics 3.0 chart
    "rw 'HGB1' 00 00 -> 1525",  // 252: Harvard Graphics 3.0 show
    "rw 'Falc' 00 00 -> 1524",  // 253: Harvard Graphics 2.0 chart
    "rw DC FE D2 01 -> 1568",  // 254: Harvard Graphics for Windows presentation
    "rw DC FE 18 02 -> 1568",  // 255: Harvard Graphics for Windows presentation
    "rw 00 01 skip(2) 'DEBR' skip(2) 04 00 01 00 skip(12) '123G' -> 1430",  // 256: Lotus 1-2-3/G worksheet
    "rw 00 01 skip(2) 'DEBR' skip(2) 04 00 01 00 skip(12) 'GRPH' -> 1431",  // 257: Lotus graph (GRPH)
    "rw 00 01 skip(2) 'DEBR' skip(2) 04 00 01 00 -> 1526",  // 258: Lotus Freelance Graphics presentation or SmartMaster (DEBR header)
    "rw 00 01 skip(2) 'FREELANCE' -> 1547",  // 259: Lotus Freelance Graphics presentation
    "ext('IMG') rw 00 oneof(01,00) 00 oneof(08,09) -> 1513",  // 260: GEM image (IMG)
    "ext('WBM') rw 00 00 -> 1603",  // 261: Wireless bitmap (WBMP)
    "rw 'RIFF' -> probe 1726",  // 262: RIFF file
    "rw 'WL' range1(66-CA) 00 -> 1520",  // 263: CorelDRAW drawing, versions 1-2
    "rw '!BDN' skip(4) 'S' oneof(4D,4F) oneof(0E,0F) 00 -> 1189",  // 264: Outlook personal or offline folders, ANSI (1997-2002)
    "rw '!BDN' skip(4) 'S' oneof(4D,4F) 17 00 -> 1302",  // 265: Outlook personal or offline folders, Unicode (2003 and later)
    "rw '!BDN' skip(4) 'SO$' 00 -> 1831",  // 266: Outlook offline folders, 4 KB pages (2013 and later)
    "rw '!BDN' skip(4) 'BA' 0E 00 -> 1303",  // 267: Outlook personal address book
    "rw 'Y' A6 'j' 95 -> 1559",  // 268: Sun raster image
    "rw ci(AUTOSHADE) ' ' ci(RENDERING) ' ' ci(SLIDE) -> 1560",  // 269: AutoShade rendering slide
    "rw FF*32 not(FF) -> 1561",  // 270: Kodak Photo CD image

    // Music, animation, mail stores.
    "rw 'MThd' 00 00 00 06 skip(6) 'MTrk' -> 1702",  // 271: Standard MIDI file
    "rw 'srcdocid:' -> 1573",  // 272: CALS raster image
    "rw oneof(43,46) 'WS' range1(04-08) -> 1704",  // 273: Flash movie, versions 4-8
    "rw oneof(43,46) 'WS' 09 -> 1727",  // 274: Flash movie, version 9
    "rw oneof(43,46) 'WS' 0A -> 1728",  // 275: Flash movie, version 10
    "rw 'RIFX' skip(4) 'FGDMFver' -> 1703",  // 276: Director compressed movie (Shockwave, RIFX FGDM)
    "rw 89 'PNG' 0D 0A 1A 0A -> 1574",  // 277: Portable Network Graphics (PNG)
    "rw 1B '*t1gW' -> 1577",  // 278: not publicly known
    "rw 01 12 skip(1) 04 -> 1578",  // 279: not publicly known
    "rw 01 0A skip(1) 02 -> 1578",  // 280: not publicly known

    // Further graphics, archives and multimedia containers.
    "-> probe 1569",  // 281: not publicly known
    "-> probe 1570",  // 282: not publicly known
    "-> probe 1571",  // 283: X bitmap (XBM)
    "-> probe 1572",  // 284: X pixmap (XPM)
    "-> probe 1575",  // 285: X window dump (XWD)
    "rw 'SIT!' skip(6) 'rLau' -> 1812",  // 286: StuffIt archive
    "rw 'StuffIt' -> 1812",  // 287: StuffIt archive
    "at(65) 'SIT!SIT!' -> 1812",  // 288: StuffIt archive
    "at(65) 'SITDSIT!' -> 1812",  // 289: StuffIt archive
    "rw '7z' BC AF 27 1C -> 1826",  // 290: 7-Zip archive
    "rw at(4) 'ftyp' -> probe 1723",  // 291: ISO base media file, other brands
    "-> probe 1710",  // 292: MPEG audio
    "rw '0&' B2 'u' 8E 'f' CF 11 A6 D9 00 AA 00 'b' CE 'l' -> probe 1716",  // 293: Advanced Systems Format (ASF, Windows Media)
    "rw '.RMF' -> probe 1720",  // 294: RealMedia
    "rw 00 00 01 oneof(BA,B3) -> probe 1721",  // 295: MPEG program or elementary stream
    "-> probe 1705",  // 296: QuickTime movie
    "rw '(DWF V' at(11) ')' -> probe 1644",  // 297: Design Web Format (DWF), version below 6
    "rw 'PK' 03 04 -> probe 1802",  // 298: ZIP archive
    "rw 'PK' 07 08 'PK' 03 04 -> 1802",  // 299: ZIP archive
    "rw 'PK00PK' 03 04 -> 1802",  // 300: ZIP archive
    "at(2) '-l' skip(2) '-' at(20) range1(00-02) -> 1813",  // 301: LHA archive
    "rw 'MZ' -> probe 1814",  // 302: DOS or Windows executable
    "-> probe 1803",  // 303: Tape archive (tar)
    "rw 'Rar!' 1A -> 1821",  // 304: RAR archive

    // Word processors, spreadsheets and databases of the DOS and Macintosh time.
    "rw 80 00 00 09 ' ' 00 'O{J]' 02 -> 1009",  // 305: IBM DisplayWrite document, versions 2-3
    "rw 80 00 00 09 ' ' 00 'O{J]' 18 at(27) 00 -> 1036",  // 306: IBM DisplayWrite document, version 4
    "rw 80 00 00 09 ' ' 00 'O{J]' 18 at(27) not(00) -> 1053",  // 307: IBM DisplayWrite document, version 5
    "rw 'TBWP' 00 -> 1040",  // 308: Q&A Write document
    "rw 'TBTX' 00 -> 1040",  // 309: Q&A Write document
    "rw skip(6) ED FB skip(2) oneof(00,01) skip(1) wnotin1(0-200) -> 1203",  // 310: not publicly known
    "rw 'S' 04 03 '1' E0 03 -> 1200",  // 311: not publicly known
    "rw 'S' 04 01 01 14 -> 1404",  // 312: not publicly known
    "rw 00 00 02 00 04 04 05 'T' 02 00 00 00 -> 1407",  // 313: Works spreadsheet for DOS
    "rw 00 00 02 00 04 04 05 'T' 02 00 skip(1) range1(44-47) -> 1418",  // 314: Works spreadsheet, version 2 for Windows
    "rw FF 00 02 00 04 04 05 'T' 02 00 skip(1) oneof(4E,4D) -> 1426",  // 315: Works spreadsheet, version 3 for Windows
    "rw FF 00 02 00 04 04 05 'T' 02 00 skip(1) 'S' -> 1432",  // 316: Works spreadsheet, version 4 for Windows
    "rw ' T' 02 00 00 00 05 'T' 02 00 skip(1) range1(44-47) -> 1216",  // 317: Works database, version 2 for Windows
    "rw 00 00 02 00 04 04 F3 00 02 00 oneof(00,FF) oneof(00,FF) -> 1408",  // 318: not publicly known
    "rw 00 00 02 00 04 04 -> 1401",  // 319: Lotus 1-2-3 worksheet, release 1A
    "rw 00 00 02 00 06 04 -> 1402",  // 320: Lotus 1-2-3 worksheet, release 2, or Symphony worksheet, release 1.1 and later
    "rw 00 00 1A 00 00 10 -> 1403",  // 321: Lotus 1-2-3 worksheet, release 3
    "rw 00 00 1A 00 02 10 -> 1421",  // 322: Lotus 1-2-3 worksheet, releases 4-5
    "rw 00 00 1A 00 03 10 -> 1435",  // 323: Lotus 1-2-3 97 workbook
    "rw 00 00 1A 00 05 10 -> 1443",  // 324: Lotus 1-2-3 9.x (Millennium) workbook
    "rw 00 00 02 00 05 04 -> 1400",  // 325: Lotus Symphony worksheet, release 1.0
    "rw 00 01 90 81 8E 93 at(26) oneof(01,03) -> 1651",  // 326: not publicly known
    "rw 00 01 90 81 8E 93 at(26) 00 -> 1652",  // 327: not publicly known
    "rw 00 00 02 00 range1(07-09) 22 -> 1409",  // 328: not publicly known
    "rw 00 00 02 00 01 10 -> 1420",  // 329: Quattro Pro for Windows notebook, versions 1-5, or a bare version 7-8 stream
    "rw 00 00 02 00 07 10 -> 1420",  // 330: Quattro Pro for Windows notebook, versions 1-5, or a bare version 7-8 stream
    "rw 00 00 02 00 02 10 -> 1429",  // 331: Quattro Pro for Windows notebook, version 6
    "rw 00 00 02 00 ' Q' -> 1411",  // 332: Quattro or Quattro Pro for DOS spreadsheet, versions 1-4
    "rw 00 00 02 00 '!Q' -> 1428",  // 333: Quattro Pro for DOS spreadsheet, version 5
    "rw 00 00 02 00 01 11 -> 1422",  // 334: not publicly known
    "rw 00 00 02 00 0B 0A -> 1412",  // 335: not publicly known
    "rw 'SuperCalc90b' 02 04 -> 1410",  // 336: SuperCalc worksheet (header SuperCalc90b)
    "rw 06 00 0C 00 'Dolph 1.0' -> 1413",  // 337: not publicly known
    "rw 00 00 00 00 00 00 00 00 0C 'JED' -> 1414",  // 338: not publicly known
    "at(8) 0C 'GERBILDB' -> 1214",  // 339: PFS:First Choice database
    "rw 09 00 04 00 skip(1) 00 10 00 -> 1405",  // 340: Excel 2.x worksheet
    "rw 09 00 04 00 skip(1) 00 00 10 -> 1405",  // 341: Excel 2.x worksheet
    "rw 09 08 08 00 -> 1424",  // 342: Excel 5.0/95 workbook
    "rw 0C EF 'MP' range1(90-A4) 01 -> 1425",  // 343: Multiplan spreadsheet, version 4
    "rw 09 00 04 00 oneof(40,42) 01 10 00 -> 1405",  // 344: Excel 2.x worksheet
    "rw 09 02 not(00) 00 range1(00-04) 00 oneof(00,10) 00 -> 1415",  // 345: Excel 3.0 worksheet
    "rw 09 02 not(00) 00 range1(00-04) 00 00 01 -> 1439",  // 346: Excel 3.0 workspace
    "rw 09 04 not(00) 00 range1(00-04) 00 10 00 -> 1419",  // 347: Excel 4.0 worksheet
    "rw 09 04 not(00) 00 range1(00-04) 00 00 01 -> 1440",  // 348: Excel 4.0 workbook
    "rw 09 00 oneof(06,04) 00 oneof(02,00) 00 ' ' 00 -> 1529",  // 349: Excel 2.x chart
    "rw 09 02 not(00) 00 00 00 ' ' 00 -> 1530",  // 350: Excel 3.0 chart
    "rw 09 04 06 00 skip(2) ' ' 00 -> 1531",  // 351: Excel 4.0 chart
    "rw 00 at(65) 'XLS4XCEL' at(128) 09 04 not(00) 00 range1(00-04) 00 10 00 -> 1436",  // 352: Excel 4.0 for Macintosh worksheet (MacBinary)
    "rw 09 04 not(00) 00 range1(00-04) range1(00-04) 00 01 -> 1442",  // 353: Excel 4.0 workbook, second form
    "rw 00 at(65) 'BINAXCEL' at(128) 09 04 not(00) 00 range1(00-04) range1(00-04) 00 01 -> 1441",  // 354: Excel 4.0 for Macintosh workbook (MacBinary)
    "rw 00 at(65) 'XLS5XCEL' -> 1437",  // 355: Excel 5.0 for Macintosh workbook (MacBinary)
    "rw '*R1' 0D 0A -> 1044",  // 356: not publicly known
    "rw '*R2' 0D 0A -> 1045",  // 357: not publicly known
    "rw 81 CD AB skip(2) range1(40-46) -> 1074",  // 358: Enable word-processing document, later version
    "rw 81 CD AB -> 1046",  // 359: Enable word-processing document
    "rw 02 CD AB -> 1406",  // 360: Enable spreadsheet
    "rw 'PCF:dB;' -> 1043",  // 361: PC-File letter
    "rw 'PCF+3;' -> 1043",  // 362: PC-File letter
    "rw ' T' 02 00 00 00 05 'T' 02 00 00 00 -> 1204",  // 363: Works database for DOS
    "rw 17 00 at(31) range5(01-02) -> 1205",  // 364: not publicly known
    "rw 00 00 02 00 -> probe 1416",  // 365: Lotus-compatible worksheet, other version

    // Databases and drawings.
    "rw 'SYMANTEC TOUCHBA' -> 1208",  // 366: TouchBase database
    "at(1029) 00 'Rich' skip(1) 00 -> 1218",  // 367: Access database, versions 1.x-2.0
    "rw 00 01 00 00 'Standard Jet DB' 00 00 -> 1222",  // 368: Access database, Jet 3 (Access 95-97)
    "rw 00 01 00 00 'Standard Jet DB' 00 01 -> 1229",  // 369: Access database, Jet 4 (Access 2000-2003)
    "rw 00 01 00 00 'Standard ACE DB' 00 02 -> 1230",  // 370: Access database, Access 2007
    "rw 00 01 00 00 'Standard ACE DB' 00 03 -> 1231",  // 371: Access database, Access 2010
    "at(4) 'Reflex2' -> 1209",  // 372: Reflex 2 database
    "at(8) 00 00 02 00 00 80 skip(6) 00 07 -> 1219",  // 373: not publicly known
    "rw 'DOC' 00 00 00 00 00 '    ' 00 00 02 00 -> 1085",  // 374: Ichitaro document, versions 4-6
    "rw 'DOC' 00 00 00 00 00 '    ' 00 00 03 00 -> 1085",  // 375: Ichitaro document, versions 4-6
    "rw 94 A6 '.' 00 -> 1087",  // 376: Word for Windows document, East Asian edition, version 2
    "rw 91 A6 22 00 -> 1086",  // 377: Word for Windows document, East Asian edition, version 1
    "rw 00 'M' 01 02 -> 1089",  // 378: not publicly known
    "rw 1A 'M' 02 01 -> 1088",  // 379: not publicly known
    "ext('JSH') rw 'DOC' 00 00 00 00 00 '    ' -> 1534",  // 380: Hanako drawing
    "rw 09 06 00 'D' -> 1533",  // 381: not publicly known
    "rw 'C4CAD' -> 1532",  // 382: not publicly known
    "rw 00 00 00 00 skip(2) 02 0A at(90) 00 at(512) 06 -> 1081",  // 383: not publicly known
    "rw '.** ' oneof(31,32) -> 1092",  // 384: not publicly known
    "rw 01 C2 at(1312) FF FF -> 1423",  // 385: not publicly known
    "rw '<!OPS, Version = ' skip(1) '.' skip(1) '>' -> 1128",  // 386: Interleaf document, text form
    "rw '<!OPS, Version = ' skip(1) '.' skip(1) oneof(20,2C) -> 1134",  // 387: Interleaf document, text form with further header fields
    "-> probe 1141",  // 388: vCard contact
    "-> probe 1141",  // 389: vCard contact
    "rw B1 'h' DE ':' -> 1539",  // 390: Multi-page PCX (DCX)
    "-> probe 1206",  // 391: not publicly known
    "rw 0A range1(00-05) oneof(00,01) range1(01-08) at(65) range1(01-04) -> 1502",  // 392: PC Paintbrush bitmap (PCX)
    "-> probe 1588",  // 393: not publicly known
    "rw '8BPS' 00 01 -> 1591",  // 394: Adobe Photoshop image (PSD)
    "rw '8BPS' 00 02 -> 2242",  // 395: Adobe Photoshop large document (PSB)

    // Fonts, text-like formats, archives.
    "rw 06 06 ED F5 D8 1D 'F' E5 BD '1' EF E7 FE 't' B7 1D 'DOCUMENT' -> 1647",  // 396: Adobe InDesign document
    "rw skip(26) 'W5M0MpCehiHzreSzNTczkc9d' -> 1320",  // 397: XMP metadata packet
    "-> probe 1518",  // 398: MacPaint image
    "rw 00 at(65) 'PNTG' -> 1518",  // 399: MacPaint image
    "rw 00 01 00 00 -> probe 2404",  // 400: TrueType font
    "rw 'true' -> probe 2406",  // 401: TrueType font, Apple form
    "rw 'ttcf' -> probe 2405",  // 402: TrueType collection
    "-> probe 1201",  // 403: not publicly known
    "rw 9D 'From:' -> 1023",  // 404: WordPerfect document, version 4.2 or earlier
    "-> probe 1034",  // 405: not publicly known
    "-> probe 1018",  // 406: not publicly known
    "rw 't' 00 at(118) 40 00 -> probe 1021",  // 407: not publicly known
    "at(118) 7C 'N' -> probe 1077",  // 408: not publicly known
    "-> probe 1025",  // 409: not publicly known
    "-> probe 1212",  // 410: not publicly known
    "rw 'P' C3 -> 1810",  // 411: Windows clipboard file
    "rw 'VCLMTF' -> 1640",  // 412: StarView metafile (SVM)
    "rw DC FE skip(6) FF FF skip(4) FF FF -> 1641",  // 413: Harvard Graphics for Windows file, other form
    "rw 9B '11h' -> 1098",  // 414: not publicly known
    "rw 1B '[11h' -> 1098",  // 415: not publicly known
    "rw EF BB BF 'Session Start' -> probe 1341",  // 416: Chat log, text with session lines (UTF-8)
    "rw '2^' 10 10 -> 1808",  // 417: Envoy document, version 1
    "rw B2 97 E1 'i' -> 1811",  // 418: Envoy document, version 7
    "rw 'HB' D1 07 -> 1124",  // 419: not publicly known
    "-> probe 1528",  // 420: not publicly known
    "rw 1F 9D range1(09-10) -> 1806",  // 421: UNIX compress data
    "rw 1F 9D range1(89-90) -> 1806",  // 422: UNIX compress data
    "rw '?_' 03 00 -> 2402",  // 423: Windows help or multimedia viewer file
    "rw 'ITSF' at(24) 10 FD 01 7C AA '{' D0 11 9E 0C 00 A0 C9 22 E6 EC 11 FD 01 7C AA '{' D0 11 9E 0C 00 A0 C9 22 E6 EC -> 2403",  // 424: Compiled HTML help
    "-> probe 1342",  // 425: MSN Messenger chat history (XML)
    "-> probe 6201",  // 426: not publicly known
    "-> probe 6202",  // 427: not publicly known
    "rw 'L' 00 00 00 01 14 02 00 00 00 00 00 C0 00 00 00 -> 2401",  // 428: Windows shortcut
    "rw 'RPIX' skip(14) range1(01-03) range1(01-02) range1(01-02) range1(01-03) -> 2213",  // 429: not publicly known
    "rw 1F 8B -> 1815",  // 430: GZIP data
    "-> probe 2400",  // 431: Internet shortcut
    "-> probe 1187",  // 432: Mail message (few header fields)
    "-> probe 1190",  // 433: not publicly known

    // PDF and HP-GL by content and extension, frames, JPEG 2000.
    "-> probe 1557",  // 434: Portable Document Format
    "-> probe 1580",  // 435: HP-GL plotter file
    "ext('PGL') -> 1522",  // 436: HP-GL plotter file (by file name extension)
    "ext('HPG') -> 1522",  // 437: HP-GL plotter file (by file name extension)
    "ext('HGL') -> 1522",  // 438: HP-GL plotter file (by file name extension)
    "rw '%!PS-A' ci(DOBE) -> 1554",  // 439: PostScript (Adobe structured comments)
    "rw '<MIFFile' -> probe 1168",  // 440: FrameMaker interchange format (MIF), other version
    "rw '<Frame' -> 1604",  // 441: not publicly known
    "ext('DAT') rw skip(3) range1(3F-4F) skip(1) 00 00 00 oneof(00,01) 00 00 00 -> 1306",  // 442: Yahoo! Messenger message archive
    "rw 'MSCF' 00 00 00 00 -> probe 1820",  // 443: Windows cabinet
    "rw 'AC10' range1(30-31) range1(30-39) 00 00 -> 1585",  // 444: AutoCAD drawing, other early release (AC1000-AC1019)
    "rw at(4) 'jP ' rw at(16) 'ftypjp2' rw at(32) 'jpxbjpx' -> 1648",  // 445: JPEG 2000 image (JPX baseline)
    "rw at(4) 'jP ' rw at(16) 'ftypjpx' -> 1646",  // 446: JPEG 2000 image (JP2, JPX or codestream)
    "rw at(4) 'jP ' rw at(16) 'ftypjp2' -> 1646",  // 447: JPEG 2000 image (JP2, JPX or codestream)
    "rw FF 'O' FF 'Q' -> 1646",  // 448: JPEG 2000 image (JP2, JPX or codestream)
    "rw 'PG ML' -> 1646",  // 449: JPEG 2000 image (JP2, JPX or codestream)
    "rw at(4) 'jP ' rw at(16) 'ftypmjp2' -> 1649",  // 450: Motion JPEG 2000
    "-> probe 1505",  // 451: Computer Graphics Metafile (CGM)
    "-> probe 1023",  // 452: WordPerfect document, version 4.2 or earlier
    "rw 00 00 00 range1(00-08) at(16) 00 03 00 00 00 00 00 00 00 00 00 00 00 00 00 00 -> probe 1417",  // 453: Works for Macintosh spreadsheet, versions 1-2

    // Signatures at the end of the file, and what is only tried when all else failed.
    "atend(-7) '0' 02 FE FC FE 01 00 -> 1063",  // 454: not publicly known
    "atend(-128) 'TAG' skip(29) 00 skip(29) 00 skip(29) 00 -> 1708",  // 455: MPEG audio with ID3v1 tag (MP3)
    "-> probe 1003",  // 456: WordStar for DOS document, version 4 or earlier
    "-> probe 1020",  // 457: not publicly known
    "-> probe 1019",  // 458: not publicly known
    "-> probe 1472",  // 459: Data Interchange Format spreadsheet (DIF)
    "ext('RBF') -> probe 1210",  // 460: R:BASE database, first form
    "ext('RBF') -> probe 1213",  // 461: R:BASE database, second form
    "-> probe 4050",  // 462: Uuencoded data with a begin line
    "atend(-18) 'TRUEVISION-XFILE.' 00 -> 1512",  // 463: Truevision TGA
    "-> probe 6200",  // 464: Portable transcript (PTF)
    "rw FF FF oneof(18,0E) skip(4) oneof(00,02) -> 1565",  // 465: GEM metafile
    "rw -> probe 6203",  // 466: not publicly known
    "rw EF BB BF -> 4025",  // 467: Plain text, UTF-8
};
// clang-format on

static_assert(std::size(kRows) == kSignatureRows);

constexpr auto kEncoded = EncodeTable<kSignatureRows, kSignatureTableSize>(kRows);
static_assert(kEncoded.size == kSignatureTableSize);

static_assert(RowsAreWellFormed(kEncoded));

// FNV-1a over the encoded table: no row changes by accident, since hosts store what they answer.
consteval uint64_t Fingerprint() {
  uint64_t hash = 0xCBF29CE484222325;
  for (const uint8_t byte : kEncoded.bytes) hash = (hash ^ byte) * 0x100000001B3;
  return hash;
}
static_assert(Fingerprint() == 0x6F9632B5C240869D);

constexpr auto kIndex = IndexTable<kSignatureRows>(kEncoded, IsUnanswered);

// Only the rows at the head of the table test a class first: the walk leaves those out on files.
consteval bool ClassRowsLead() {
  for (size_t row = kIndex.classRows; row < kSignatureRows; ++row) {
    if (BeginsWithClassTest(kEncoded.bytes.data() + kEncoded.starts[row])) return false;
  }
  return kIndex.classRows > 0;
}
static_assert(ClassRowsLead());

}  // namespace

constinit const EncodedTable<kSignatureRows, kSignatureTableSize> kSignatureTable = kEncoded;
constinit const SignatureIndex<kSignatureRows> kSignatureIndex = kIndex;

WalkResult WalkSignatures(SignatureRun& run) {
  return WalkTable(kSignatureTable, kSignatureIndex, run);
}

WalkResult WalkSignaturesBehind(SignatureRun& run, uint16_t row) {
  for (size_t next = row; next < kSignatureRows; ++next) {
    const uint8_t* program = kSignatureTable.bytes.data() + kSignatureTable.starts[next];
    if (const FormatId id = RunProgram(program, run); id != kNoMatch) return Match(id, next);
  }
  return {};
}

WalkResult WalkSignaturesTraced(SignatureRun& run) {
  const WalkResult match = WalkTable<RunTracedProgram>(kSignatureTable, kSignatureIndex, run);
  TellRow(kSignatureTable, match, kFiCatalogue, run);
  return match;
}

uint16_t BasisOfRow(uint16_t row) { return BasisOfTableRow(kSignatureTable, row); }

}  // namespace fi
