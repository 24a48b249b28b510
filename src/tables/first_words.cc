#include "tables/first_words.h"

#include "signature/signature_encoder.h"
#include "signature/signature_index.h"
#include "signature/text_program.h"

namespace fi {
namespace {

// In the notation of row_encoder.h. The first words of no row begin those of another, so that the
// order carries no meaning.
//
// clang-format off
constexpr std::string_view kRows[] = {
    "rw {'#EXTM3U' | '[playlist]' | '<?wpl version='} -> 3194",  // playlists
    "rw {'Windows Registry Editor Version ' | 'REGEDIT4'} -> 3196",  // registry entries
    "rw '0 HEAD' oneof(0A,0D) -> 3215",  // GEDCOM
    "rw {'[Script Info]' | 'Scenarist_SCC'} -> 3217",  // subtitles: SubStation Alpha, Scenarist
    "rw '[Desktop Entry]' -> 3218",  // desktop entry
    "rw '$ANSIBLE_VAULT;' -> 3239",  // Ansible vault
    "rw {'##fileformat=VCFv' | '##gff-version' | '@HD' 09 'VN:1.' | '@SQ' 09 'SN:' | '@RG' 09 'ID:' | '@PG' 09 'ID:' | 'format-version: 1.'} -> 3381",  // VCF, GFF, SAM, OBO
    "rw 'StartFontMetrics ' -> 3408",  // font metrics
    "rw '!Type:' {'Bank' | 'CCard' | 'Cash' | 'Inv' | 'Oth'} -> 3410",  // Quicken: kind of the account
    "rw '!Account' -> 3410",  // Quicken: list of accounts
    "rw '%%MatrixMarket ' -> 3411",  // Matrix Market
    "rw {'-- MySQL dump ' | '-- MariaDB dump ' | '--' 0A '-- PostgreSQL database dump' "
        "| 'PRAGMA foreign_keys=OFF;'} -> 3412",  // dumps of databases, the last of SQLite
    "rw '# This is a shell archive' -> 3413",  // shell archive
    "rw 'MPX,Microsoft Project' -> 3414",  // Microsoft Project exchange
    "rw '// <!-- <mdb:mork:z' -> 3417",  // Mork
    "rw {'<!ELEMENT ' | '<!ENTITY % '} -> 3418",  // document type definition
    "rw '[Event ' 22 -> 3420",  // chess games
    "rw {'PIAFILEVERSION_2.0,' | 'AutoCAD Extended Batch P' | 'AutoCAD 2000 Batch Plot'} -> 3421",  // plot styles, batch plots
    "rw {'IESNA:LM-63' | 'IESNA91'} -> 3423",  // photometric data
    "rw {'GEOGCS[' | 'PROJCS[' | 'GEOGCRS[' | 'PROJCRS['} 22 -> 3425",  // coordinate system, versions 1 and 2
    "rw '<%@ ' {'Page ' | 'Control ' | 'Application ' | 'Master ' | 'WebService ' | 'page ' | 'taglib '} -> 3426",  // directives of ASP.NET and JSP
    "rw 'ERMHDR' oneof(09,0D) -> 3432",  // Primavera
    "rw 5C 'usepackage{' -> 3205",  // LaTeX, a part of a preamble
    "rw '[InternetShortcut]' -> 2400",  // Internet shortcut
};
// clang-format on

constexpr size_t kPrograms = ProgramsOf(kRows);
constexpr size_t kRoom = 2048;
constexpr auto kUnfitted = EncodeTable<kPrograms, kRoom>(kRows);
constexpr auto kTable = Fitted<kUnfitted.size>(kUnfitted);
static_assert(RowsAreWellFormed(kTable));
static_assert(AreTextPrograms(kTable));

constexpr bool HasNoUnanswered(uint16_t) { return false; }
constexpr SignatureIndex<kPrograms> kIndex = IndexTable<kPrograms>(kTable, HasNoUnanswered);

}  // namespace

FormatId FirstWordsOf(std::string_view text) {
  if (text.empty()) return kNoMatch;
  const RowSet<kPrograms>& rows = kIndex.candidates[static_cast<uint8_t>(text[0])];
  for (size_t row = rows.Next(0); row < kPrograms; row = rows.Next(row + 1)) {
    const FormatId id = RunTextProgram(kTable.bytes.data() + kTable.starts[row], text);
    if (id != kNoMatch) return id;
  }
  return kNoMatch;
}

}  // namespace fi
