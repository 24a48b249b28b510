#include "cli/options.h"

#include <unistd.h>

#include <algorithm>
#include <charconv>

#include "cli/command_line.h"
#include "cli/limits.h"

namespace fi::app {
namespace {

constexpr unsigned kMostJobs = 256;

template <typename Number>
bool ReadNumber(std::string_view text, Number& number) {
  const char* end = text.data() + text.size();
  const std::from_chars_result result = std::from_chars(text.data(), end, number);
  return result.ec == std::errc() && result.ptr == end && !text.empty();
}

// Bytes, or a number with K, M, G or T behind it.
bool ReadSize(std::string_view text, uint64_t& size) {
  constexpr std::string_view kUnits = "KMGT";
  constexpr uint64_t kLargest = uint64_t{1} << 62;
  unsigned shift = 0;
  if (!text.empty()) {
    const size_t unit = kUnits.find(static_cast<char>(text.back() & ~0x20));
    if (unit != std::string_view::npos && text.back() >= 'A') {
      shift = 10 * static_cast<unsigned>(unit + 1);
      text.remove_suffix(1);
    }
  }
  if (!ReadNumber(text, size) || size > kLargest >> shift) return false;
  size <<= shift;
  return true;
}

// Calls `body` for each part of a list with commas, until one has a fault.
template <class Body>
std::string ForEachPart(std::string_view list, Body&& body) {
  for (bool isLast = false; !isLast;) {
    const size_t end = std::min(list.find(','), list.size());
    std::string fault = body(list.substr(0, end));
    if (!fault.empty()) return fault;
    isLast = end == list.size();
    list.remove_prefix(std::min(end + 1, list.size()));
  }
  return {};
}

// Each part of the options returns the fault, or nothing.

std::string SetInput(const CommandLine& line, Options& options) {
  options.isRecursive = line.Has(Option::kRecursive);
  if (line.Has(Option::kDereference)) options.walk.links = LinkUse::kAll;
  if (line.Has(Option::kNoDereference)) options.walk.links = LinkUse::kNone;
  options.walk.isOneFileSystem = line.Has(Option::kOneFileSystem);
  for (const char* pattern : line.Values(Option::kInclude))
    options.walk.include.emplace_back(pattern);
  for (const char* pattern : line.Values(Option::kExclude))
    options.walk.exclude.emplace_back(pattern);
  uint64_t size = 0;
  if (line.Has(Option::kMaxSize)) {
    if (!ReadSize(line.Value(Option::kMaxSize), size)) return "--max-size takes a size";
    options.largest = static_cast<int64_t>(size);
  }
  if (line.Has(Option::kStdinLimit)) {
    if (!ReadSize(line.Value(Option::kStdinLimit), size)) return "--stdin-limit takes a size";
    options.stdinLimit = size;
  }
  return {};
}

std::string AddHashes(std::string_view list, std::vector<HashKind>& hashes) {
  return ForEachPart(list, [&](std::string_view name) -> std::string {
    HashKind kind;
    if (!FindHash(name, kind)) return "--hash knows " + std::string(kHashNames);
    if (std::find(hashes.begin(), hashes.end(), kind) == hashes.end()) hashes.push_back(kind);
    return {};
  });
}

void AddHashesOf(const std::vector<const Column*>& columns, std::vector<HashKind>& hashes) {
  for (const HashKind kind : HashesOf(columns)) {
    if (std::find(hashes.begin(), hashes.end(), kind) == hashes.end()) hashes.push_back(kind);
  }
}

std::string SetAnswer(const CommandLine& line, Options& options) {
  ReportStyle& style = options.style;
  if (line.Has(Option::kBase)) options.flags &= ~uint32_t{kFiSupplement};
  if (line.Has(Option::kMime)) style.field = Field::kMime;
  if (line.Has(Option::kId)) style.field = Field::kId;
  if (line.Has(Option::kExtension)) style.field = Field::kExtensions;
  style.checksExtension = line.Has(Option::kCheckExtension);
  std::string fault;
  for (const char* what : line.Values(Option::kRequire)) {
    if (!style.requirements.Add(what, fault)) return fault;
  }
  for (const char* list : line.Values(Option::kHash)) {
    fault = AddHashes(list, style.hashes);
    if (!fault.empty()) return fault;
  }
  return {};
}

std::string SetLayout(const CommandLine& line, Options& options) {
  ReportStyle& style = options.style;
  style.isExplained = line.Has(Option::kExplain);
  if (style.isExplained) style.layout = Layout::kExplain;
  if (line.Has(Option::kAll)) style.layout = Layout::kAll;
  if (line.Has(Option::kJson)) style.layout = Layout::kJson;
  if (line.Has(Option::kJsonLines)) style.layout = Layout::kJsonLines;
  if (line.Has(Option::kCsv)) style.layout = Layout::kCsv;
  if (line.Has(Option::kFormat)) style.layout = Layout::kTemplate;
  if (line.Has(Option::kSuggestNames)) style.layout = Layout::kNames;
  style.brief = line.Has(Option::kBrief);
  style.rawPath = line.Has(Option::kPrint0);
  if (line.Has(Option::kSeparator)) style.separator = line.Value(Option::kSeparator);
  std::string fault;
  if (line.Has(Option::kColumns) && !line.Has(Option::kCsv)) return "--columns goes with --csv";
  if (line.Has(Option::kColumns) &&
      !ParseColumns(line.Value(Option::kColumns), style.columns, fault))
    return fault;
  if (line.Has(Option::kFormat) && !style.pattern.Parse(line.Value(Option::kFormat), fault))
    return fault;
  AddHashesOf(style.columns, style.hashes);
  AddHashesOf(style.pattern.columns(), style.hashes);
  if (style.columns.empty()) style.columns = UsualColumns(style.hashes);
  return {};
}

std::string SetRun(const CommandLine& line, Options& options) {
  options.flushEachRecord = line.Has(Option::kNoBuffer);
  options.run.isUnordered = line.Has(Option::kUnordered);
  if (line.Has(Option::kProgress)) options.progress = ProgressUse::kAlways;
  if (line.Has(Option::kQuiet)) options.progress = ProgressUse::kNone;
  if (line.Has(Option::kLimits)) {
    std::string fault;
    if (!ParseLimits(line.Value(Option::kLimits), options.limits, fault)) return fault;
  }
  if (!line.Has(Option::kJobs)) return {};
  const bool isNumber = ReadNumber(line.Value(Option::kJobs), options.run.threads);
  return isNumber && options.run.threads >= 1 && options.run.threads <= kMostJobs
             ? ""
             : "-j takes a number from 1 to 256";
}

// No fault tells a value: it may be a password in the wrong place.
std::string SetPasswords(const CommandLine& line, Options& options) {
  options.triesDefaultPassword = line.Has(Option::kTryDefaultPassword);
  if (line.Has(Option::kPasswordFile)) {
    const std::string name = line.Value(Option::kPasswordFile);
    if (name.empty()) return "the file of passwords has no name";
    if (name == "-") {
      options.passwordDescriptor = STDIN_FILENO;
    } else {
      options.passwordFile = name;
    }
  }
  if (!line.Has(Option::kPasswordFd)) return {};
  const bool isNumber = ReadNumber(line.Value(Option::kPasswordFd), options.passwordDescriptor);
  return isNumber && options.passwordDescriptor >= 0 ? "" : "--password-fd takes a number";
}

std::string SetPaths(const CommandLine& line, Options& options) {
  const bool hasRecords = line.Has(Option::kFiles0From);
  const bool hasList = hasRecords || line.Has(Option::kFilesFrom);
  if (hasRecords) options.listTerminator = '\0';
  options.listFile = line.Value(hasRecords ? Option::kFiles0From : Option::kFilesFrom);
  options.stdinName = line.Value(Option::kStdinName);
  options.paths.assign(line.paths().begin(), line.paths().end());
  if (hasList && options.listFile.empty()) return "the list of files has no name";
  if (!hasList && options.paths.empty()) return "no input";
  const auto dashes = std::count(options.paths.begin(), options.paths.end(), "-");
  const bool listsInput = options.listFile == "-";
  const bool readsPasswords = options.passwordDescriptor == STDIN_FILENO;
  if (dashes + (listsInput ? 1 : 0) + (readsPasswords ? 1 : 0) > 1)
    return "standard input can be read only once";
  if (line.Has(Option::kStdinName) && dashes == 0) return "--stdin-name goes with the input -";
  return {};
}

// Requests that need no input take none.
std::string SetTask(const CommandLine& line, Options& options) {
  if (line.Has(Option::kJson)) options.catalogue = CatalogueLayout::kJson;
  if (line.Has(Option::kCsv)) options.catalogue = CatalogueLayout::kCsv;
  if (line.Has(Option::kHelp)) {
    options.task = Task::kShowHelp;
  } else if (line.Has(Option::kVersion)) {
    options.task = Task::kShowVersion;
  } else if (line.Has(Option::kLimits) && *line.Value(Option::kLimits) == '\0') {
    options.task = Task::kShowLimits;
  } else if (line.Has(Option::kListFormats)) {
    options.task = Task::kListFormats;
    options.described = line.Value(Option::kListFormats);
  } else if (line.Has(Option::kDescribe)) {
    options.task = Task::kDescribe;
    options.described = line.Value(Option::kDescribe);
  }
  constexpr OptionSet kAllowed =
      SetOf(Option::kListFormats, Option::kDescribe, Option::kJson, Option::kCsv);
  const bool isAboutFormats = options.task == Task::kListFormats || options.task == Task::kDescribe;
  if (!isAboutFormats) return {};
  if (options.task == Task::kDescribe && line.Has(Option::kCsv))
    return "--describe does not go with --csv";
  return (line.given() & ~kAllowed) == 0 && line.paths().empty()
             ? ""
             : "--list-formats and --describe go with --json or --csv alone";
}

}  // namespace

bool ParseOptions(int count, const char* const* arguments, Options& options, std::string& error) {
  CommandLine line;
  if (!line.Parse(count, arguments, error)) return false;
  error = SetTask(line, options);
  if (!error.empty() || options.task != Task::kIdentify) return error.empty();
  for (const auto set : {SetInput, SetAnswer, SetLayout, SetRun, SetPasswords, SetPaths}) {
    error = set(line, options);
    if (!error.empty()) return false;
  }
  return true;
}

}  // namespace fi::app
