#include "cli/report.h"

#include <algorithm>

#include "cli/explain.h"
#include "formatid/formatid.h"
#include "run/text/base64.h"
#include "run/text/escape.h"
#include "run/text/extension.h"
#include "run/text/json.h"
#include "run/text/shell_quote.h"
#include "run/text/utf8.h"

namespace fi::app {
namespace {

// Grows only when a key changes its meaning or goes away.
constexpr std::string_view kJsonHead = "{\"schema\":1,\"path\":";

constexpr std::string_view kNoMimeType = "application/octet-stream";
constexpr std::string_view kNoExtension = "???";

std::string_view MatchText(ExtensionMatch match) {
  switch (match) {
    case ExtensionMatch::kYes:
      return "true";
    case ExtensionMatch::kNo:
      return "false";
    case ExtensionMatch::kNone:
      break;
  }
  return "null";
}

void AppendHashes(const RecordSource& source, std::string& out) {
  out += ",\"hash\":{";
  for (size_t i = 0; i < source.hashes.size(); ++i) {
    if (i != 0) out += ',';
    AppendJsonString(HashName(source.hashes[i]), out);
    out += ':';
    AppendJsonText(i < source.answer.hashes.size() ? source.answer.hashes[i] : "", out);
  }
  out += '}';
}

}  // namespace

std::string Report::Head() const {
  std::string head;
  if (style_.layout != Layout::kCsv) return head;
  for (const Column* column : style_.columns) {
    if (!head.empty()) head += ',';
    AppendCsvField(column->name, head);
  }
  return head + "\r\n";
}

std::string_view Report::End(bool hasRecords) const {
  if (style_.layout != Layout::kJson) return {};
  return hasRecords ? "\n]\n" : "[]\n";
}

bool Report::FailsCheck(std::string_view path, const Answer& answer) const {
  if (answer.status == AnswerStatus::kError) return false;
  if (style_.checksExtension && IsExtensionMismatch(path, answer.facts)) return true;
  return !style_.requirements.IsEmpty() && !style_.requirements.Holds(answer);
}

void Report::AppendRecord(std::string_view path, uint64_t number, const Answer& answer,
                          std::string& out) const {
  const RecordSource source = {path, answer, number, style_.hashes};
  switch (style_.layout) {
    case Layout::kText:
      AppendText(path, answer, out);
      out += '\n';
      break;
    case Layout::kAll:
      AppendAll(source, out);
      break;
    case Layout::kJson:
      out += ",\n";
      AppendJson(source, out);
      break;
    case Layout::kJsonLines:
      AppendJson(source, out);
      out += '\n';
      break;
    case Layout::kCsv:
      AppendCsv(source, out);
      break;
    case Layout::kTemplate:
      style_.pattern.Append(source, out);
      out += '\n';
      break;
    case Layout::kNames:
      AppendRename(path, answer, out);
      break;
    case Layout::kExplain:
      AppendExplained(source, out);
      break;
  }
}

void Report::AppendPath(std::string_view path, std::string& out) const {
  if (style_.rawPath) {
    out += path;
    out += '\0';
    return;
  }
  const size_t start = out.size();
  AppendEscaped(path, out);
  out += style_.separator;
  if (style_.pathWidth != 0) {
    const size_t width = EscapedWidth(std::string_view(out).substr(start));
    out.append(width < style_.pathWidth ? style_.pathWidth - width : 0, ' ');
  }
  out += ' ';
}

void Report::AppendField(const Answer& answer, std::string& out) const {
  const FIFormatFacts& facts = answer.facts;
  switch (style_.field) {
    case Field::kName:
      out += facts.name;
      if (!answer.error.empty()) out += " (" + answer.error + ")";
      break;
    case Field::kMime:
      out += facts.mimeType[0] != '\0' ? facts.mimeType : kNoMimeType;
      break;
    case Field::kId:
      AppendNumber(facts.id, out);
      break;
    case Field::kExtensions: {
      const size_t start = out.size();
      out += facts.extensions[0] != '\0' ? facts.extensions : kNoExtension;
      std::replace(out.begin() + static_cast<ptrdiff_t>(start), out.end(), ',', '/');
      break;
    }
  }
}

// Behind the name, for people; the other answers stay what a program expects.
void Report::AppendFindings(std::string_view path, const Answer& answer, std::string& out) const {
  if (style_.field != Field::kName) return;
  if (style_.checksExtension && IsExtensionMismatch(path, answer.facts)) {
    out += " [the extension is none of ";
    out += answer.facts.extensions;
    out += ']';
  }
  if (!style_.requirements.IsEmpty() && !style_.requirements.Holds(answer))
    out += " [not what is required]";
}

void Report::AppendText(std::string_view path, const Answer& answer, std::string& out) const {
  if (!style_.brief) AppendPath(path, out);
  if (answer.status == AnswerStatus::kError) {
    out += "ERROR: ";
    out += answer.error;
    return;
  }
  AppendField(answer, out);
  AppendFindings(path, answer, out);
  for (const std::string& hash : answer.hashes) out += "  " + hash;
}

void Report::AppendAll(const RecordSource& source, std::string& out) const {
  AppendEscaped(source.path, out);
  out += '\n';
  std::string value;
  const auto append = [&](std::string_view name) {
    value.clear();
    FindColumn(name)->append(source, value);
    if (value.empty()) return;
    out.append("  ").append(name).append(": ");
    out.append(name.size() < 13 ? 13 - name.size() : 0, ' ');
    out += value + '\n';
  };
  for (const std::string_view name : {"name", "status", "id", "category", "mime", "extensions",
                                      "puids", "basis", "size", "error", "password_line"}) {
    append(name);
  }
  for (const HashKind kind : style_.hashes) append(HashName(kind));
  if (IsExtensionMismatch(source.path, source.answer.facts)) out += "  the extension mismatches\n";
}

void Report::AppendExplained(const RecordSource& source, std::string& out) const {
  AppendAll(source, out);
  AppendSteps(source.answer, out);
}

void Report::AppendJson(const RecordSource& source, std::string& out) const {
  const Answer& answer = source.answer;
  const bool hasFormat = answer.status != AnswerStatus::kError;
  const FIFormatFacts& facts = answer.facts;
  out += kJsonHead;
  AppendJsonString(source.path, out);
  if (!IsUtf8(source.path)) {
    out += ",\"path_bytes\":\"";
    AppendBase64(source.path, out);
    out += '"';
  }
  out += ",\"status\":";
  AppendJsonString(StatusName(answer.status), out);
  out += ",\"id\":";
  if (hasFormat) {
    AppendNumber(facts.id, out);
  } else {
    out += "null";
  }
  out += ",\"name\":";
  AppendJsonText(hasFormat ? facts.name : "", out);
  out += ",\"mime\":";
  AppendJsonText(facts.mimeType, out);
  out += ",\"extensions\":";
  AppendJsonList(facts.extensions, out);
  out += ",\"extension_match\":";
  out += MatchText(MatchExtension(source.path, facts));
  out += ",\"basis\":";
  AppendJsonText(BasisName(answer.basis), out);
  if (answer.corrects != 0) {
    out += ",\"corrects\":";
    AppendNumber(answer.corrects, out);
  }
  out += ",\"size\":";
  if (answer.size >= 0) {
    AppendNumber(answer.size, out);
  } else {
    out += "null";
  }
  out += ",\"error\":";
  AppendJsonText(answer.error, out);
  out += ",\"category\":";
  AppendJsonText(facts.category, out);
  out += ",\"puids\":";
  AppendJsonList(facts.puids, out);
  if (answer.passwordLine != kNoPassword) {
    out += ",\"password_line\":";
    AppendNumber(answer.passwordLine, out);
  }
  if (!source.hashes.empty()) AppendHashes(source, out);
  if (style_.isExplained) AppendJsonSteps(answer, out);
  out += '}';
}

void Report::AppendCsv(const RecordSource& source, std::string& out) const {
  std::string value;
  bool isFirst = true;
  for (const Column* column : style_.columns) {
    if (!isFirst) out += ',';
    isFirst = false;
    value.clear();
    column->append(source, value);
    AppendCsvCell(value, out);
  }
  out += "\r\n";
}

void Report::AppendRename(std::string_view path, const Answer& answer, std::string& out) const {
  if (answer.status == AnswerStatus::kError || !IsExtensionMismatch(path, answer.facts)) return;
  out += "mv -n -- ";
  AppendShellWord(path, out);
  out += ' ';
  AppendShellWord(SuggestedName(path, answer.facts), out);
  out += '\n';
}

}  // namespace fi::app
