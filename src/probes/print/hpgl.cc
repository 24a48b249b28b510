#include "probes/print/hpgl.h"

#include <algorithm>
#include <iterator>
#include <string_view>

#include "registry/format_ids.h"
#include "stream/file_bytes.h"
#include "stream/first_byte.h"
#include "stream/text_view.h"

namespace fi {
namespace {

constexpr size_t kWindow = 1024;  // bytes looked at
constexpr uint32_t kMinCommands = 6;

constexpr char kEscape = '\x1B';
constexpr char kEndOfText = '\x03';

constexpr std::string_view kExtensions[] = {"", "PLT", "PRN"};

// The commands of both languages, sorted.
constexpr std::string_view kCommands[] = {
    "AA", "AC", "AD", "AF", "AH", "AP", "AR", "AS", "AT", "BL", "BP", "BR", "BZ", "CA", "CF", "CI",
    "CM", "CO", "CP", "CR", "CS", "CT", "CV", "DC", "DF", "DI", "DL", "DP", "DR", "DS", "DT", "DV",
    "EA", "EC", "EP", "ER", "ES", "EW", "FI", "FN", "FP", "FR", "FS", "FT", "GM", "IM", "IN", "IP",
    "IR", "IV", "IW", "KY", "LA", "LB", "LM", "LO", "LT", "MC", "MG", "MT", "NP", "NR", "OA", "OC",
    "OD", "OE", "OF", "OG", "OH", "OI", "OK", "OL", "OO", "OP", "OS", "OT", "OW", "PA", "PB", "PC",
    "PD", "PE", "PG", "PM", "PP", "PR", "PS", "PT", "PU", "PW", "QL", "RA", "RF", "RO", "RP", "RQ",
    "RR", "RT", "RV", "SA", "SB", "SC", "SD", "SI", "SL", "SM", "SP", "SR", "SS", "ST", "SV", "TD",
    "TL", "TR", "UC", "UF", "UL", "VA", "VN", "VS", "WD", "WG", "WU", "XT", "YT"};
static_assert(std::is_sorted(std::begin(kCommands), std::end(kCommands)));

// Commands that open a plot of HP-GL.
constexpr std::string_view kOpening[] = {"DF", "IN", "IP", "PS", "PU", "SC", "SP"};

class Plot {
 public:
  explicit Plot(std::string_view text) : rest_(text) {}

  // Whether the text begins with a command, of which what follows is no word.
  bool BeginsWithCommand() {
    std::string_view command;
    return NextCommand(&command) && !IsLetter(Front());
  }

  // Whether the text is a plot as far as it goes.
  bool IsSound() {
    std::string_view first;
    std::string_view command;
    uint32_t count = 0;
    while (NextCommand(&command)) {
      if (!TakeParameters(command)) return false;
      if (++count == 1) first = command;
      if (count == 1 && !IsOpening(first)) return false;
      if (count == 2 && first == "BP" && command != "IN") return false;
    }
    return rest_.empty() && count >= kMinCommands;
  }

 private:
  static bool IsAmong(const std::string_view* begin, const std::string_view* end,
                      std::string_view command) {
    return std::binary_search(begin, end, command);
  }

  char Front() const { return rest_.empty() ? '\0' : rest_.front(); }

  // A plot of HP-GL begins with one of a few commands and a semicolon, one of HP-GL/2 with BP.
  bool IsOpening(std::string_view command) const {
    if (command == "BP") return true;
    return IsAmong(std::begin(kOpening), std::end(kOpening), command) && Front() == ';';
  }

  void SkipDigits() {
    while (IsDigit(Front())) rest_.remove_prefix(1);
  }

  // Passes "ESC E", "ESC % -1 B", and the device controls "ESC . K" and "ESC . I 81;;17:".
  bool TakeEscape() {
    rest_.remove_prefix(1);
    const char kind = Front();
    if (kind != 'E' && kind != '%' && kind != '.') return false;
    rest_.remove_prefix(1);
    if (kind == 'E') return true;
    if (kind == '%') {
      if (Front() == '-') rest_.remove_prefix(1);
      SkipDigits();
      if (Front() != 'A' && Front() != 'B') return false;
      rest_.remove_prefix(1);
      return true;
    }
    if (rest_.empty()) return false;
    rest_.remove_prefix(1);
    if (!IsDigit(Front()) && Front() != ';' && Front() != ':') return true;
    while (IsDigit(Front()) || Front() == ';') rest_.remove_prefix(1);
    if (Front() != ':') return false;
    rest_.remove_prefix(1);
    return true;
  }

  // Takes the letters of the next command. False at the end of the text, which is then used up, and
  // where there is none.
  bool NextCommand(std::string_view* command) {
    while (!rest_.empty()) {
      if (Front() == kEscape) {
        if (!TakeEscape()) return false;
      } else if (IsWhiteSpace(Front()) || Front() == ';' || Front() == kEndOfText) {
        rest_.remove_prefix(1);
      } else {
        break;
      }
    }
    if (rest_.size() < 2) {
      rest_ = {};
      return false;
    }
    *command = rest_.substr(0, 2);
    if (!IsAmong(std::begin(kCommands), std::end(kCommands), *command)) return false;
    rest_.remove_prefix(2);
    return true;
  }

  // Passes text up to `end`, or up to the end of the window.
  void SkipPast(char end) {
    const size_t at = rest_.find(end);
    rest_.remove_prefix(at == std::string_view::npos ? rest_.size() : at + 1);
  }

  // Text of a label ends in a character that DT sets, encoded coordinates end in a semicolon; the
  // parameters of all others are numbers.
  bool TakeParameters(std::string_view command) {
    if (command == "LB" || command == "BL" || command == "WD") {
      SkipPast(labelEnd_);
    } else if (command == "PE") {
      SkipPast(';');
    } else if (command == "CO") {
      if (Front() != '"') return false;
      rest_.remove_prefix(1);
      SkipPast('"');
    } else {
      const bool takesCharacter = command == "DT" || command == "SM";
      if (takesCharacter && !rest_.empty() && Front() != ';') {
        if (command == "DT") labelEnd_ = Front();
        rest_.remove_prefix(1);
      }
      while (IsDigit(Front()) || IsSpaceOrTab(Front()) || Front() == ',' || Front() == '.' ||
             Front() == '+' || Front() == '-') {
        rest_.remove_prefix(1);
      }
    }
    return true;
  }

  std::string_view rest_;
  char labelEnd_ = kEndOfText;
};

bool MayBegin(uint32_t byte) {
  if (byte > 0x7F) return false;
  const char first = static_cast<char>(byte);
  return first == kEscape || IsUpper(first) || IsWhiteSpace(first);
}

}  // namespace

FormatId HpGlProbe(IdentificationStream* stream, const char* extension) {
  if (std::find(std::begin(kExtensions), std::end(kExtensions), extension) ==
      std::end(kExtensions)) {
    return kNoMatch;
  }
  if (!MayBegin(FirstByte(stream))) return kNoMatch;
  const FileBytes<kWindow> bytes(stream, 0);
  return Plot(bytes.View()).IsSound() ? kFormatHpGl : kNoMatch;
}

bool BeginsPlot(IdentificationStream* stream) {
  const FileBytes<kWindow> bytes(stream, 0);
  return Plot(bytes.View()).BeginsWithCommand();
}

bool IsPlotBehindEndOfText(IdentificationStream* stream) {
  if (FirstByte(stream) != static_cast<uint8_t>(kEndOfText)) return false;
  const FileBytes<kWindow> bytes(stream, 0);
  return Plot(bytes.View()).IsSound();
}

}  // namespace fi
