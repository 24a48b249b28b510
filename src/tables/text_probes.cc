#include "tables/text_probes.h"

#include <string_view>

#include "probes/database/ldif.h"
#include "probes/document/bibliography.h"
#include "probes/document/latex.h"
#include "probes/document/pdf_header.h"
#include "probes/drawing/dxf_text.h"
#include "probes/encoded/short_uuencode.h"
#include "probes/image/x_pixmap.h"
#include "probes/keys/armour.h"
#include "probes/mail/calendar_part.h"
#include "probes/mail/message_header.h"
#include "probes/markup/html_tags.h"
#include "probes/markup/markup.h"
#include "probes/markup/message_history.h"
#include "probes/markup/xml_text.h"
#include "probes/model/iges.h"
#include "probes/model/protein_data.h"
#include "probes/model/step.h"
#include "probes/model/stl_text.h"
#include "probes/print/postscript.h"
#include "probes/system/intel_hex.h"
#include "probes/system/internet_shortcut.h"
#include "probes/text/difference.h"
#include "probes/text/json.h"
#include "probes/text/json_lines.h"
#include "probes/text/message_catalogue.h"
#include "probes/text/script.h"
#include "probes/text/settings.h"
#include "probes/text/subtitles.h"
#include "probes/text/yaml.h"
#include "registry/format_ids.h"
#include "stream/text_head.h"
#include "stream/text_view.h"
#include "tables/first_words.h"

namespace fi {
namespace {

// Formats that are named without a mark, but whose signatures and probes a mark before them
// misleads.
FormatId MarkedFormat(IdentificationStream* stream, const TextHead& window) {
  const std::string_view text = window.View();
  if (SkipSpace(text).starts_with('<')) {
    const bool mayBeHistory = text.find("FirstSessionID") != std::string_view::npos;
    if (mayBeHistory && IsMessageHistory(stream, window.form())) return kFormatMsnMessengerHistory;
    return IdentifyMarkup(stream, window.form());
  }
  if (IsDxfText(text)) return kFormatDxfText;
  if (IsXPixmap(text)) return kFormatXpm;
  if (IsInternetShortcut(text)) return kFormatInternetShortcut;
  if (StartsWithNoCase(text, "begin:vcalendar")) return kFormatICalendar;
  if (StartsWithNoCase(text, "begin:vcard")) return kFormatVCard;
  return kNoMatch;
}

using TextProbe = FormatId (*)(std::string_view text);

// Each is certain of its own, so that the order carries no meaning.
constexpr TextProbe kProbes[] = {ScriptProbe, ArmourProbe, StepProbe,   StlTextProbe,
                                 IgesProbe,   LatexProbe,  FirstWordsOf};

// Formats told by their first lines. Where all begin with the same character, a file of another
// does not ask them.
FormatId LineFormat(std::string_view text, bool isCut, std::string_view extension) {
  if (text.empty()) return kNoMatch;
  switch (text[0]) {
    case 'W':
      if (IsWebVtt(text)) return kFormatWebVtt;
      break;
    case 'b':
      if (IsShortUuencode(text, isCut)) return kFormatUuencode;
      break;
    case '{':
      if (IsJsonLines(text)) return kFormatJsonLines;
      break;
    case 'H':
      if (IsProteinData(text)) return kFormatProteinData;
      break;
    case ':':
    case 'S':
      if (IsObjectText(text)) return kFormatIntelHex;
      break;
    default:
      break;
  }
  if (IsSubRip(text)) return kFormatSubRip;
  if (IsBibTex(text)) return kFormatBibTex;
  if (IsReferences(text)) return kFormatReferences;
  if (IsLdif(text)) return kFormatLdif;
  if (IsMessageCatalogue(text)) return kFormatMessageCatalogueSource;
  if (IsDifference(text)) return kFormatDifference;
  return IsSettings(text, extension) ? kFormatSettings : kNoMatch;
}

}  // namespace

FormatId TextFormatProbe(IdentificationStream* stream, const char* extension) {
  const TextHead window(stream);
  const std::string_view text = window.View();
  // Page descriptions may hold binary data.
  if (const FormatId id = PostScriptProbe(text); id != kNoMatch) return id;
  const bool isText = text.find('\0') == std::string_view::npos;
  if (window.isMarked()) {
    const bool mayBePdf = text.find("%PDF-") != std::string_view::npos;
    if (mayBePdf && window.form().units == TextUnits::kBytes && HasPdfHeader(stream)) {
      return kFormatPdf;
    }
    const FormatId id = isText ? MarkedFormat(stream, window) : kNoMatch;
    if (id != kNoMatch) return id;
  }
  if (!isText) return kNoMatch;
  if (const FormatId id = XmlTextProbe(stream, window); id != kNoMatch) return id;
  if (IsHtmlFragment(text, extension)) return kFormatHtml;
  for (const TextProbe probe : kProbes) {
    if (const FormatId id = probe(text); id != kNoMatch) return id;
  }
  if (IsCalendarPart(text)) return kFormatICalendar;
  if (const FormatId id = JsonProbe(text, window.isCut()); id != kNoMatch) return id;
  if (const FormatId id = LineFormat(text, window.isCut(), extension); id != kNoMatch) return id;
  if (const FormatId id = YamlProbe(text, extension); id != kNoMatch) return id;
  return MessageHeaderProbe(text, extension);
}

}  // namespace fi
