#include "tables/text_probes.h"

#include <string_view>

#include "probes/document/latex.h"
#include "probes/document/pdf_header.h"
#include "probes/drawing/dxf_text.h"
#include "probes/image/x_pixmap.h"
#include "probes/keys/armour.h"
#include "probes/mail/message_header.h"
#include "probes/markup/html_tags.h"
#include "probes/markup/markup.h"
#include "probes/markup/message_history.h"
#include "probes/markup/xml_text.h"
#include "probes/model/iges.h"
#include "probes/model/step.h"
#include "probes/model/stl_text.h"
#include "probes/print/postscript.h"
#include "probes/system/internet_shortcut.h"
#include "probes/text/first_words.h"
#include "probes/text/json.h"
#include "probes/text/line_formats.h"
#include "probes/text/script.h"
#include "probes/text/yaml.h"
#include "registry/format_ids.h"
#include "stream/text_head.h"
#include "stream/text_view.h"

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
