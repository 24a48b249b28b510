#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>

#include "cli/option_table.h"
#include "cli/usage.h"

namespace fi::app {
namespace {

// Text for roff: a hyphen that is typed, and no request at the start of a line.
std::string Roff(std::string_view text) {
  std::string out;
  for (const char c : text) {
    if (c == '\\') {
      out += "\\e";
    } else if (c == '-') {
      out += "\\-";
    } else if (c == '\'') {
      out += "\\(aq";
    } else {
      out += c;
    }
  }
  if (out.starts_with('.')) out.insert(0, "\\&");
  return out;
}

template <class Body>
void ForEachWord(std::string_view words, Body&& body) {
  while (!words.empty()) {
    const size_t end = std::min(words.find(' '), words.size());
    body(words.substr(0, end));
    words.remove_prefix(std::min(end + 1, words.size()));
  }
}

std::string Sentence(std::string_view phrase) {
  std::string text(phrase);
  if (text[0] >= 'a' && text[0] <= 'z') text[0] = static_cast<char>(text[0] - 0x20);
  return text + '.';
}

void AppendManualOption(const OptionRow& row, std::string& out) {
  std::string spellings;
  const auto add = [&](const std::string& spelling) {
    if (!spellings.empty()) spellings += ", ";
    spellings += "\\fB" + Roff(spelling) + "\\fR";
  };
  for (const char letter : row.letters) add(std::string{'-', letter});
  ForEachWord(row.names, [&](std::string_view name) { add("--" + std::string(name)); });
  if (row.use == OptionValue::kOptional) spellings += "[=\\fI" + Roff(row.value) + "\\fR]";
  if (row.use == OptionValue::kNeeded || row.use == OptionValue::kRepeated)
    spellings += " \\fI" + Roff(row.value) + "\\fR";
  out += ".TP\n" + spellings + "\n" + Roff(Sentence(row.help)) + '\n';
  if (!row.detail.empty()) out += Roff(row.detail) + '\n';
}

// In single quotes, for bash, zsh and fish.
std::string Quoted(std::string_view text) {
  std::string out = "'";
  for (const char c : text) {
    if (c == '\'') {
      out += "'\\''";
    } else {
      out += c;
    }
  }
  return out + '\'';
}

bool TakesValue(const OptionRow& row) {
  return row.use == OptionValue::kNeeded || row.use == OptionValue::kRepeated;
}

// What a description in zsh must not hold as it is.
std::string ZshText(std::string_view text) {
  std::string out;
  for (const char c : text) {
    if (c == '[' || c == ']' || c == ':' || c == '\\') out += '\\';
    out += c;
  }
  return out;
}

std::string ZshAction(const OptionRow& row) {
  if (row.words == "FILE") return "_files";
  return row.words.empty() ? " " : "(" + std::string(row.words) + ")";
}

}  // namespace

std::string ManualPage() {
  std::string out =
      ".\\\" Made from the table of options.\n"
      ".TH FORMATID 1 \"\" \"formatid\" \"User Commands\"\n"
      ".SH NAME\nformatid \\- name the formats of files from their bytes\n"
      ".SH SYNOPSIS\n.B formatid\n[\\fIOPTION\\fR]... [\\-\\-] \\fIPATH\\fR|\\-...\n"
      ".SH DESCRIPTION\nNames the format of each \\fIPATH\\fR from its bytes, one record for each, "
      "in the order of the input. \\- is standard input. No file is changed.\n";
  const OptionRow* before = nullptr;
  out += ".SH OPTIONS\n";
  for (const OptionRow& row : OptionRows()) {
    if (before == nullptr || before->group != row.group)
      out += ".SS " + Roff(TitleOf(row.group)) + '\n';
    AppendManualOption(row, out);
    before = &row;
  }
  out += ".SH \"EXIT STATUS\"\n";
  for (const ExitRow& row : ExitRows()) {
    out += ".TP\n\\fB" + Roff(row.code) + "\\fR\n" + Roff(row.meaning) + '\n';
  }
  out += ".SH EXAMPLES\n";
  for (const Example& example : Examples()) {
    out += ".TP\n\\fB" + Roff(example.command) + "\\fR\n" + Roff(Sentence(example.meaning)) + '\n';
  }
  out += ".SH \"DIFFERENCES FROM FILE(1)\"\n";
  for (const ForeignOption& foreign : ForeignOptions()) {
    std::string spelling = foreign.letter != '\0' ? std::string{'-', foreign.letter} : "";
    if (spelling.empty()) spelling = "--" + std::string(foreign.name);
    out += ".TP\n\\fB" + Roff(spelling) + "\\fR\n" + Roff(Sentence(foreign.advice)) + '\n';
  }
  return out;
}

std::string BashCompletion() {
  std::string all;

  std::string cases;
  for (const OptionRow& row : OptionRows()) {
    std::string spellings;
    const auto add = [&](const std::string& spelling) {
      all += (all.empty() ? "" : " ") + spelling;
      spellings += (spellings.empty() ? "" : "|") + spelling;
    };
    for (const char letter : row.letters) add(std::string{'-', letter});
    ForEachWord(row.names, [&](std::string_view name) { add("--" + std::string(name)); });
    if (!TakesValue(row)) continue;
    if (row.words == "FILE") {
      cases += "    " + spellings + ") COMPREPLY=($(compgen -f -- \"$current\")); return ;;\n";
    } else {
      cases += "    " + spellings + ") COMPREPLY=($(compgen -W " + Quoted(row.words) +
               " -- \"$current\")); return ;;\n";
    }
  }
  return "# Made from the table of options.\n"
         "_formatid() {\n"
         "  local current=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD-1]}\n"
         "  COMPREPLY=()\n"
         "  case $before in\n" +
         cases +
         "  esac\n"
         "  if [[ $current == -* ]]; then\n"
         "    COMPREPLY=($(compgen -W " +
         Quoted(all) +
         " -- \"$current\"))\n"
         "  else\n"
         "    COMPREPLY=($(compgen -f -- \"$current\"))\n"
         "  fi\n"
         "}\n"
         "complete -o filenames -F _formatid formatid\n";
}

std::string ZshCompletion() {
  std::string out = "#compdef formatid\n# Made from the table of options.\n_arguments -s -S \\\n";
  for (const OptionRow& row : OptionRows()) {
    const auto add = [&](const std::string& spelling, bool isLong) {
      const std::string repeated = row.use == OptionValue::kRepeated ? "*" : "";
      std::string spec = repeated + spelling;
      if (row.use == OptionValue::kOptional) spec += "=-";
      if (TakesValue(row)) spec += isLong ? "=" : "+";
      spec += "[" + ZshText(row.help) + "]";
      if (row.use == OptionValue::kOptional) spec += "::" + ZshText(row.value) + ": ";
      if (TakesValue(row)) spec += ":" + ZshText(row.value) + ":" + ZshAction(row);
      out += "  " + Quoted(spec) + " \\\n";
    };
    for (const char letter : row.letters) add(std::string{'-', letter}, false);
    ForEachWord(row.names, [&](std::string_view name) { add("--" + std::string(name), true); });
  }
  return out + "  '*:file:_files'\n";
}

std::string FishCompletion() {
  std::string out = "# Made from the table of options.\n";
  for (const OptionRow& row : OptionRows()) {
    out += "complete -c formatid";
    for (const char letter : row.letters) out += std::string(" -s ") + letter;
    ForEachWord(row.names, [&](std::string_view name) { out += " -l " + std::string(name); });
    if (TakesValue(row)) {
      out += row.words == "FILE" ? " -r -F" : " -x";
      if (row.words != "FILE" && !row.words.empty()) out += " -a " + Quoted(row.words);
    }
    out += " -d " + Quoted(row.help) + '\n';
  }
  return out;
}

}  // namespace fi::app
