#include "cli/report.h"

#include <strings.h>

#include <algorithm>
#include <charconv>

#include "formatid/formatid.h"
#include "run/base64.h"
#include "run/escape.h"
#include "run/json.h"
#include "run/utf8.h"

namespace fi::app {
namespace {

// Grows only when a key changes its meaning or goes away.
constexpr int kJsonSchema = 1;

constexpr std::string_view kNoMimeType = "application/octet-stream";
constexpr std::string_view kNoExtension = "???";

void AppendNumber(int64_t value, std::string& out) {
  char digits[24];
  const std::to_chars_result result = std::to_chars(digits, digits + sizeof(digits), value);
  out.append(digits, result.ptr);
}

std::string_view StatusName(AnswerStatus status) {
  switch (status) {
    case AnswerStatus::kOk:
      return "ok";
    case AnswerStatus::kUnknown:
      return "unknown";
    case AnswerStatus::kProtected:
      return "protected";
    case AnswerStatus::kError:
      break;
  }
  return "error";
}

std::string_view BasisName(uint16_t basis) {
  switch (basis) {
    case kFiBasisSignature:
      return "signature";
    case kFiBasisClass:
      return "class";
    case kFiBasisNamespace:
      return "namespace";
    case kFiBasisExtension:
      return "extension";
    case kFiBasisContent:
      return "content";
    case kFiBasisText:
      return "text";
    default:
      return {};
  }
}

// What follows the last dot of the last component. A dot at its start makes a hidden name, no
// extension.
std::string_view ExtensionOf(std::string_view path) {
  const std::string_view name = path.substr(path.rfind('/') + 1);
  const size_t dot = name.rfind('.');
  return dot == std::string_view::npos || dot == 0 ? std::string_view() : name.substr(dot + 1);
}

bool Contains(std::string_view list, std::string_view item) {
  while (!list.empty()) {
    const std::string_view each = list.substr(0, std::min(list.find(','), list.size()));
    if (each.size() == item.size() && ::strncasecmp(each.data(), item.data(), item.size()) == 0) {
      return true;
    }
    list.remove_prefix(std::min(each.size() + 1, list.size()));
  }
  return false;
}

std::string_view ExtensionMatch(std::string_view path, std::string_view known) {
  const std::string_view extension = ExtensionOf(path);
  if (known.empty() || extension.empty()) return "null";
  return Contains(known, extension) ? "true" : "false";
}

}  // namespace

std::string_view Report::Record(std::string_view path, const Answer& answer) {
  record_.clear();
  switch (style_.layout) {
    case Layout::kText:
      AppendText(path, answer);
      record_ += '\n';
      break;
    case Layout::kJson:
      record_ += isFirst_ ? "[\n" : ",\n";
      AppendJson(path, answer);
      break;
    case Layout::kJsonLines:
      AppendJson(path, answer);
      record_ += '\n';
      break;
  }
  isFirst_ = false;
  return record_;
}

std::string_view Report::End() const {
  if (style_.layout != Layout::kJson) return {};
  return isFirst_ ? "[]\n" : "\n]\n";
}

void Report::AppendPath(std::string_view path) {
  if (style_.rawPath) {
    record_ += path;
    record_ += '\0';
    return;
  }
  AppendEscaped(path, record_);
  record_ += style_.separator;
  const size_t width = EscapedWidth(record_);
  record_.append(width < style_.pathWidth ? style_.pathWidth - width : 0, ' ');
  record_ += ' ';
}

void Report::AppendField(const Answer& answer) {
  const FIFormatFacts& facts = answer.facts;
  switch (style_.field) {
    case Field::kName:
      record_ += facts.name;
      if (answer.status == AnswerStatus::kProtected) record_ += " (" + answer.error + ")";
      break;
    case Field::kMime:
      record_ += facts.mimeType[0] != '\0' ? facts.mimeType : kNoMimeType;
      break;
    case Field::kId:
      AppendNumber(facts.id, record_);
      break;
    case Field::kExtensions: {
      const size_t start = record_.size();
      record_ += facts.extensions[0] != '\0' ? facts.extensions : kNoExtension;
      std::replace(record_.begin() + static_cast<ptrdiff_t>(start), record_.end(), ',', '/');
      break;
    }
  }
}

void Report::AppendText(std::string_view path, const Answer& answer) {
  if (!style_.brief) AppendPath(path);
  if (answer.status == AnswerStatus::kError) {
    record_ += "ERROR: ";
    record_ += answer.error;
  } else {
    AppendField(answer);
  }
}

void Report::AppendJson(std::string_view path, const Answer& answer) {
  const bool hasFormat = answer.status != AnswerStatus::kError;
  const FIFormatFacts& facts = answer.facts;
  record_ += "{\"schema\":";
  AppendNumber(kJsonSchema, record_);
  record_ += ",\"path\":";
  AppendJsonString(path, record_);
  if (!IsUtf8(path)) {
    record_ += ",\"path_bytes\":\"";
    AppendBase64(path, record_);
    record_ += '"';
  }
  record_ += ",\"status\":";
  AppendJsonString(StatusName(answer.status), record_);
  record_ += ",\"id\":";
  if (hasFormat) {
    AppendNumber(facts.id, record_);
  } else {
    record_ += "null";
  }
  record_ += ",\"name\":";
  AppendJsonText(hasFormat ? facts.name : "", record_);
  record_ += ",\"mime\":";
  AppendJsonText(facts.mimeType, record_);
  record_ += ",\"extensions\":";
  AppendJsonList(facts.extensions, record_);
  record_ += ",\"extension_match\":";
  record_ += ExtensionMatch(path, facts.extensions);
  record_ += ",\"basis\":";
  AppendJsonText(BasisName(answer.basis), record_);
  if (answer.corrects != 0) {
    record_ += ",\"corrects\":";
    AppendNumber(answer.corrects, record_);
  }
  record_ += ",\"size\":";
  if (answer.size >= 0) {
    AppendNumber(answer.size, record_);
  } else {
    record_ += "null";
  }
  record_ += ",\"error\":";
  AppendJsonText(answer.error, record_);
  record_ += '}';
}

}  // namespace fi::app
