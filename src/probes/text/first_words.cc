#include "probes/text/first_words.h"

#include <string_view>

#include "registry/format_ids.h"
#include "stream/text_view.h"

namespace fi {
namespace {

struct FirstWords {
  std::string_view words;
  FormatId id;
};

constexpr FirstWords kFirstWords[] = {
    {"#EXTM3U", kFormatPlaylist},
    {"[playlist]", kFormatPlaylist},
    {"<?wpl version=", kFormatPlaylist},
    {"Windows Registry Editor Version ", kFormatRegistryText},
    {"REGEDIT4", kFormatRegistryText},
    {"0 HEAD\n", kFormatGedcom},
    {"0 HEAD\r", kFormatGedcom},
    {"[Script Info]", kFormatVideoTextSubtitles},
    {"Scenarist_SCC", kFormatVideoTextSubtitles},
    {"[Desktop Entry]", kFormatDesktopEntry},
    {"$ANSIBLE_VAULT;", kFormatAnsibleVault},
    {"##fileformat=VCFv", kFormatSequenceText},
    {"##gff-version", kFormatSequenceText},
    {"@HD\tVN:1.", kFormatSequenceText},
    {"format-version: 1.", kFormatSequenceText},
    {"StartFontMetrics ", kFormatFontMetrics},
    {"!Type:Bank", kFormatQuickenText},
    {"!Type:CCard", kFormatQuickenText},
    {"!Type:Cash", kFormatQuickenText},
    {"!Type:Inv", kFormatQuickenText},
    {"!Type:Oth", kFormatQuickenText},
    {"!Account", kFormatQuickenText},
    {"%%MatrixMarket ", kFormatMatrixMarket},
    {"-- MySQL dump ", kFormatSqlDump},
    {"-- MariaDB dump ", kFormatSqlDump},
    {"--\n-- PostgreSQL database dump", kFormatSqlDump},
    {"PRAGMA foreign_keys=OFF;", kFormatSqlDump},
    {"# This is a shell archive", kFormatShellArchive},
    {"MPX,Microsoft Project", kFormatProjectExchange},
    {"// <!-- <mdb:mork:z", kFormatMorkDatabase},
    {"<!ELEMENT ", kFormatDocumentTypeDefinition},
    {"<!ENTITY % ", kFormatDocumentTypeDefinition},
    {"[Event \"", kFormatChessGames},
    {"PIAFILEVERSION_2.0,", kFormatPlotterTables},
    {"AutoCAD Extended Batch P", kFormatPlotterTables},
    {"AutoCAD 2000 Batch Plot", kFormatPlotterTables},
    {"IESNA:LM-63", kFormatPhotometry},
    {"IESNA91", kFormatPhotometry},
    {"GEOGCS[\"", kFormatCoordinateSystem},
    {"PROJCS[\"", kFormatCoordinateSystem},
    {"GEOGCRS[\"", kFormatCoordinateSystem},
    {"PROJCRS[\"", kFormatCoordinateSystem},
    {"<%@ Page ", kFormatServerPage},
    {"<%@ Control ", kFormatServerPage},
    {"<%@ Application ", kFormatServerPage},
    {"<%@ Master ", kFormatServerPage},
    {"<%@ WebService ", kFormatServerPage},
    {"<%@ page ", kFormatServerPage},
    {"<%@ taglib ", kFormatServerPage},
    {"ERMHDR\t", kFormatPrimaveraExchange},
    {"ERMHDR\r", kFormatPrimaveraExchange},
    {"\\usepackage{", kFormatLatex},
    {"[InternetShortcut]", kFormatInternetShortcut},
};

// Parts of a calendar, which mail programs store without the calendar around them.
constexpr std::string_view kCalendarParts[] = {"valarm",   "vavailability", "vevent", "vfreebusy",
                                               "vjournal", "vtimezone",     "vtodo"};

bool IsCalendarPart(std::string_view text) {
  constexpr std::string_view kBegin = "begin:";
  if (!StartsWithNoCase(text, kBegin)) return false;
  Lines lines(text.substr(kBegin.size()));
  std::string_view name;
  if (!lines.Next(&name)) return false;
  for (const std::string_view part : kCalendarParts) {
    if (EqualsNoCase(TrimBlanks(name), part)) return true;
  }
  return false;
}

}  // namespace

FormatId FirstWordsProbe(std::string_view text) {
  for (const FirstWords& entry : kFirstWords) {
    if (text.starts_with(entry.words)) return entry.id;
  }
  return IsCalendarPart(text) ? kFormatICalendar : kNoMatch;
}

}  // namespace fi
