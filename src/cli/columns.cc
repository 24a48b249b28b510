#include "cli/columns.h"

#include <algorithm>
#include <charconv>
#include <iterator>

#include "run/text/escape.h"
#include "run/text/extension.h"

namespace fi::app {
namespace {

bool HasFormat(const RecordSource& source) { return source.answer.status != AnswerStatus::kError; }

std::string_view OnlyOne(std::string_view list) {
  return list.find(',') == std::string_view::npos ? list : std::string_view();
}

template <HashKind Kind>
void AppendHash(const RecordSource& source, std::string& out) {
  for (size_t i = 0; i < source.answer.hashes.size() && i < source.hashes.size(); ++i) {
    if (source.hashes[i] == Kind) out += source.answer.hashes[i];
  }
}

void AppendPath(const RecordSource& source, std::string& out) { AppendEscaped(source.path, out); }
void AppendStatus(const RecordSource& source, std::string& out) {
  out += StatusName(source.answer.status);
}
void AppendId(const RecordSource& source, std::string& out) {
  if (HasFormat(source)) AppendNumber(source.answer.facts.id, out);
}
void AppendName(const RecordSource& source, std::string& out) {
  if (HasFormat(source)) out += source.answer.facts.name;
}
void AppendMime(const RecordSource& source, std::string& out) {
  out += source.answer.facts.mimeType;
}
void AppendMatch(const RecordSource& source, std::string& out) {
  switch (MatchExtension(source.path, source.answer.facts)) {
    case ExtensionMatch::kYes:
      out += "true";
      break;
    case ExtensionMatch::kNo:
      out += "false";
      break;
    case ExtensionMatch::kNone:
      break;
  }
}
void AppendSize(const RecordSource& source, std::string& out) {
  if (source.answer.size >= 0) AppendNumber(source.answer.size, out);
}
void AppendError(const RecordSource& source, std::string& out) {
  AppendEscaped(source.answer.error, out);
}
void AppendPuid(const RecordSource& source, std::string& out) {
  out += OnlyOne(source.answer.facts.puids);
}
void AppendLine(const RecordSource& source, std::string& out) {
  if (source.answer.passwordLine != kNoPassword) AppendNumber(source.answer.passwordLine, out);
}

constexpr Column kColumns[] = {
    {"path", AppendPath},
    {"status", AppendStatus},
    {"id", AppendId},
    {"name", AppendName},
    {"mime", AppendMime},
    {"extensions",
     [](const RecordSource& source, std::string& out) { out += source.answer.facts.extensions; }},
    {"extension_match", AppendMatch},
    {"basis",
     [](const RecordSource& source, std::string& out) { out += BasisName(source.answer.basis); }},
    {"size", AppendSize},
    {"error", AppendError},
    {"category",
     [](const RecordSource& source, std::string& out) { out += source.answer.facts.category; }},
    {"puids",
     [](const RecordSource& source, std::string& out) { out += source.answer.facts.puids; }},
    {"password_line", AppendLine},
    {"number", [](const RecordSource& source,
                  std::string& out) { AppendNumber(static_cast<int64_t>(source.number), out); }},
    {"md5", AppendHash<HashKind::kMd5>},
    {"sha1", AppendHash<HashKind::kSha1>},
    {"sha256", AppendHash<HashKind::kSha256>},
    {"sha512", AppendHash<HashKind::kSha512>},
    {"blake2b512", AppendHash<HashKind::kBlake2b512>},
    {"xxh128", AppendHash<HashKind::kXxh128>},
};

// Columns up to this one are the usual ones.
constexpr size_t kUsual = 12;

void AppendNothing(const RecordSource&, std::string&) {}

void AppendUri(const RecordSource& source, std::string& out) {
  constexpr char kDigits[] = "0123456789ABCDEF";
  out += source.path.starts_with('/') ? "file://" : "file:";
  for (const char c : source.path) {
    const bool isPlain = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') ||
                         (c >= '0' && c <= '9') ||
                         std::string_view("-._~/").find(c) != std::string_view::npos;
    if (isPlain) {
      out += c;
    } else {
      const auto byte = static_cast<uint8_t>(c);
      out += {'%', kDigits[byte >> 4], kDigits[byte & 15]};
    }
  }
}

void AppendFileName(const RecordSource& source, std::string& out) {
  AppendEscaped(source.path.substr(source.path.rfind('/') + 1), out);
}

void AppendMethod(const RecordSource& source, std::string& out) {
  switch (source.answer.basis) {
    case kFiBasisNone:
      return;
    case kFiBasisExtension:
      out += "Extension";
      return;
    case kFiBasisClass:
      out += "Container";
      return;
    default:
      out += "Signature";
  }
}

void AppendMismatch(const RecordSource& source, std::string& out) {
  out += IsExtensionMismatch(source.path, source.answer.facts) ? "true" : "false";
}

void AppendCount(const RecordSource& source, std::string& out) {
  const std::string_view puids = source.answer.facts.puids;
  const auto commas = std::count(puids.begin(), puids.end(), ',');
  AppendNumber(puids.empty() ? 0 : commas + 1, out);
}

constexpr Column kDroidColumns[] = {
    {"ID", [](const RecordSource& source,
              std::string& out) { AppendNumber(static_cast<int64_t>(source.number), out); }},
    {"PARENT_ID", AppendNothing},
    {"URI", AppendUri},
    {"FILE_PATH", AppendPath},
    {"NAME", AppendFileName},
    {"METHOD", AppendMethod},
    {"STATUS", [](const RecordSource& source,
                  std::string& out) { out += HasFormat(source) ? "Done" : "Error"; }},
    {"SIZE", AppendSize},
    {"TYPE", [](const RecordSource&, std::string& out) { out += "File"; }},
    {"EXT", [](const RecordSource& source,
               std::string& out) { AppendEscaped(ExtensionOf(source.path), out); }},
    {"LAST_MODIFIED", AppendNothing},
    {"EXTENSION_MISMATCH", AppendMismatch},
    {"SHA256_HASH", AppendHash<HashKind::kSha256>},
    {"FORMAT_COUNT", AppendCount},
    {"PUID", AppendPuid},
    {"MIME_TYPE", AppendMime},
    {"FORMAT_NAME", AppendName},
    {"FORMAT_VERSION", AppendNothing},
};

}  // namespace

const Column* FindColumn(std::string_view name) {
  const auto* found = std::find_if(std::begin(kColumns), std::end(kColumns),
                                   [&](const Column& column) { return column.name == name; });
  return found == std::end(kColumns) ? nullptr : found;
}

bool ParseColumns(std::string_view list, std::vector<const Column*>& columns, std::string& error) {
  if (list == "droid") {
    for (const Column& column : kDroidColumns) columns.push_back(&column);
    return true;
  }
  for (bool isLast = false; !isLast;) {
    const size_t end = std::min(list.find(','), list.size());
    const std::string_view name = list.substr(0, end);
    isLast = end == list.size();
    list.remove_prefix(std::min(end + 1, list.size()));
    const Column* column = FindColumn(name);
    if (column == nullptr) {
      error = "there is no column '" + std::string(name) + "'";
      return false;
    }
    columns.push_back(column);
  }
  return true;
}

std::vector<const Column*> UsualColumns(std::span<const HashKind> hashes) {
  std::vector<const Column*> columns;
  for (size_t i = 0; i < kUsual; ++i) columns.push_back(&kColumns[i]);
  for (const HashKind kind : hashes) columns.push_back(FindColumn(HashName(kind)));
  return columns;
}

std::vector<HashKind> HashesOf(std::span<const Column* const> columns) {
  std::vector<HashKind> hashes;
  for (const Column* column : columns) {
    HashKind kind;
    if (FindHash(column->name, kind)) hashes.push_back(kind);
  }
  return hashes;
}

void AppendCsvField(std::string_view text, std::string& out) {
  if (text.find_first_of(",\"\r\n") == std::string_view::npos) {
    out += text;
    return;
  }
  out += '"';
  for (const char c : text) {
    if (c == '"') out += '"';
    out += c;
  }
  out += '"';
}

void AppendCsvCell(std::string_view text, std::string& out) {
  constexpr std::string_view kDangerous = "=+-@'\t\r";
  if (text.empty() || kDangerous.find(text[0]) == std::string_view::npos) {
    return AppendCsvField(text, out);
  }
  AppendCsvField("'" + std::string(text), out);
}

std::string_view StatusName(AnswerStatus status) {
  switch (status) {
    case AnswerStatus::kOk:
      return "ok";
    case AnswerStatus::kUnknown:
      return "unknown";
    case AnswerStatus::kProtected:
      return "protected";
    case AnswerStatus::kLimited:
      return "limited";
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

void AppendNumber(int64_t value, std::string& out) {
  char digits[24];
  const std::to_chars_result result = std::to_chars(digits, digits + sizeof(digits), value);
  out.append(digits, result.ptr);
}

}  // namespace fi::app
