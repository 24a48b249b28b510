#include "probes/text_formats/text_formats.h"

#include <string_view>

#include "platform/format_ids.h"
#include "probes/content/dxf_text.h"
#include "probes/content/link_text.h"
#include "probes/content/pdf_header.h"
#include "probes/content/x_pixmap.h"
#include "probes/markup/html_tags.h"
#include "probes/markup/markup.h"
#include "probes/markup/message_history.h"
#include "probes/text_formats/armour.h"
#include "probes/text_formats/first_words.h"
#include "probes/text_formats/iges.h"
#include "probes/text_formats/json.h"
#include "probes/text_formats/latex.h"
#include "probes/text_formats/line_formats.h"
#include "probes/text_formats/message_header.h"
#include "probes/text_formats/postscript.h"
#include "probes/text_formats/script.h"
#include "probes/text_formats/step.h"
#include "probes/text_formats/stl_text.h"
#include "probes/text_formats/text_head.h"
#include "probes/text_formats/xml_text.h"
#include "probes/text_formats/yaml.h"
#include "probes/text_view.h"

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
  if (IsLinkText(text)) return kFormatInternetShortcut;
  if (StartsWithNoCase(text, "begin:vcalendar")) return kFormatICalendar;
  if (StartsWithNoCase(text, "begin:vcard")) return kFormatVCard;
  return kNoMatch;
}

using TextProbe = FormatId (*)(std::string_view text);

// Each is certain of its own, so that the order carries no meaning.
constexpr TextProbe kProbes[] = {ScriptProbe, ArmourProbe, StepProbe,      StlTextProbe,
                                 IgesProbe,   LatexProbe,  FirstWordsProbe};

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
  if (const FormatId id = JsonProbe(text, window.isCut()); id != kNoMatch) return id;
  if (const FormatId id = LineFormatProbe(text, window.isCut(), extension); id != kNoMatch) {
    return id;
  }
  if (const FormatId id = YamlProbe(text, extension); id != kNoMatch) return id;
  return MessageHeaderProbe(text, extension);
}

}  // namespace fi
