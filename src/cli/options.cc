#include "cli/options.h"

#include <unistd.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <charconv>

namespace fi::app {
namespace {

// What the parser stores, before it is put together.
struct Raw {
  std::vector<std::string> paths;
  std::string lines, records, separator, described, passwordFile, passwordDescriptor;
  bool dereference = false, noDereference = false;
  bool mime = false, id = false, extension = false, base = false;
  bool json = false, jsonLines = false, csv = false;
  bool progress = false, quiet = false;
  bool listFormats = false, version = false, help = false;
};

// The parser takes "[a,b]" apart, reads "{}" as an empty list, and "--option=" as an option whose
// value comes next. A NUL behind such an argument, which no argument can hold by itself, keeps it
// as it is.
std::vector<std::string> Guard(int count, const char* const* arguments) {
  std::vector<std::string> guarded;
  for (int i = count - 1; i > 0; --i) {  // the parser takes them from the end
    std::string& argument = guarded.emplace_back(arguments[i]);
    if (argument.empty()) continue;
    const bool isOpenOption = argument[0] == '-' && argument.back() == '=';
    if (argument[0] == '[' || argument[0] == '{' || isOpenOption) argument += '\0';
  }
  return guarded;
}

void Unguard(std::string& value) {
  if (!value.empty() && value.back() == '\0') value.pop_back();
}

void AddInput(CLI::App& app, Raw& raw, Options& options) {
  app.add_option("PATH", raw.paths);
  app.add_flag("-r,--recursive", options.isRecursive);
  auto* lines = app.add_option("-f,--files-from", raw.lines);
  app.add_option("--files0-from", raw.records)->excludes(lines);
  app.add_option("--stdin-name", options.stdinName);
  auto* follow = app.add_flag("-L,--dereference", raw.dereference);
  app.add_flag("-h,--no-dereference", raw.noDereference)->excludes(follow);
}

void AddAnswer(CLI::App& app, Raw& raw, Options& options) {
  auto* json = app.add_flag("--json", raw.json);
  auto* jsonLines = app.add_flag("--jsonl", raw.jsonLines)->excludes(json);
  // These shape text only.
  const auto textOnly = [&](CLI::Option* option) {
    return option->excludes(json)->excludes(jsonLines);
  };
  auto* mime = textOnly(app.add_flag("-i,--mime,--mime-type", raw.mime));
  auto* id = textOnly(app.add_flag("--id", raw.id))->excludes(mime);
  textOnly(app.add_flag("--extension", raw.extension))->excludes(mime)->excludes(id);
  auto* brief = textOnly(app.add_flag("-b,--brief", options.style.brief));
  auto* rawPath = textOnly(app.add_flag("-0,--print0", options.style.rawPath))->excludes(brief);
  app.add_flag("--base", raw.base);
  textOnly(app.add_option("-F,--separator", raw.separator))->excludes(brief)->excludes(rawPath);
}

void AddPasswords(CLI::App& app, Raw& raw) {
  auto* file = app.add_option("--password-file", raw.passwordFile);
  app.add_option("--password-fd", raw.passwordDescriptor)->excludes(file);
}

void AddRun(CLI::App& app, Raw& raw, Options& options) {
  app.add_flag("-n,--no-buffer", options.flushEachRecord);
  auto* progress = app.add_flag("--progress", raw.progress);
  app.add_flag("-q,--quiet", raw.quiet)->excludes(progress);
}

void AddAbout(CLI::App& app, Raw& raw) {
  auto* list = app.add_flag("--list-formats", raw.listFormats);
  app.add_flag("--csv", raw.csv)->needs(list)->excludes("--json");
  app.add_option("--describe", raw.described)->excludes(list);
  app.add_flag("-V,--version", raw.version);
  app.add_flag("--help", raw.help);
}

template <typename Number>
bool ReadNumber(const std::string& text, Number& number) {
  const char* end = text.data() + text.size();
  const std::from_chars_result result = std::from_chars(text.data(), end, number);
  return result.ec == std::errc() && result.ptr == end && !text.empty();
}

void SetStyle(const CLI::App& app, Raw& raw, Options& options) {
  ReportStyle& style = options.style;
  if (raw.json) style.layout = Layout::kJson;
  if (raw.jsonLines) style.layout = Layout::kJsonLines;
  if (raw.mime) style.field = Field::kMime;
  if (raw.id) style.field = Field::kId;
  if (raw.extension) style.field = Field::kExtensions;
  Unguard(raw.separator);
  if (app.count("--separator") != 0) style.separator = raw.separator;
}

// Returns the fault, or nothing. No fault tells a value: it may be a password in the wrong place.
std::string FinishPasswords(const CLI::App& app, Raw& raw, Options& options) {
  Unguard(raw.passwordFile);
  if (app.count("--password-file") != 0 && raw.passwordFile.empty())
    return "the file of passwords has no name";
  if (raw.passwordFile == "-") {
    options.passwordDescriptor = STDIN_FILENO;
  } else {
    options.passwordFile = raw.passwordFile;
  }
  if (app.count("--password-fd") == 0) return {};
  const bool isNumber = ReadNumber(raw.passwordDescriptor, options.passwordDescriptor);
  return isNumber && options.passwordDescriptor >= 0 ? "" : "--password-fd takes a number";
}

// What the parser cannot see. Returns the fault, or nothing.
std::string FinishInput(const CLI::App& app, Raw& raw, Options& options) {
  const bool hasList = app.count("--files-from") + app.count("--files0-from") != 0;
  if (app.count("--files0-from") != 0) {
    options.listTerminator = '\0';
    raw.lines = raw.records;
  }
  for (std::string* value : {&raw.lines, &options.stdinName}) Unguard(*value);
  std::for_each(raw.paths.begin(), raw.paths.end(), Unguard);
  options.listFile = raw.lines;
  options.paths = std::move(raw.paths);
  if (hasList && options.listFile.empty()) return "the list of files has no name";
  if (!hasList && options.paths.empty()) return "no input";
  const auto dashes = std::count(options.paths.begin(), options.paths.end(), "-");
  const bool listsInput = options.listFile == "-";
  const bool readsPasswords = options.passwordDescriptor == STDIN_FILENO;
  if (dashes + (listsInput ? 1 : 0) + (readsPasswords ? 1 : 0) > 1)
    return "standard input can be read only once";
  if (app.count("--stdin-name") != 0 && dashes == 0) return "--stdin-name goes with the input -";
  return {};
}

// Requests that need no input take none.
std::string SetTask(const CLI::App& app, const Raw& raw, Options& options) {
  if (raw.json) options.catalogue = CatalogueLayout::kJson;
  if (raw.csv) options.catalogue = CatalogueLayout::kCsv;
  if (raw.help) {
    options.task = Task::kShowHelp;
  } else if (raw.version) {
    options.task = Task::kShowVersion;
  } else if (raw.listFormats) {
    options.task = Task::kListFormats;
  } else if (app.count("--describe") != 0) {
    options.task = Task::kDescribe;
    if (!ReadNumber(raw.described, options.describedId)) return "--describe takes a number";
  }
  const bool isAboutFormats = options.task == Task::kListFormats || options.task == Task::kDescribe;
  if (!isAboutFormats) return {};
  const size_t others = app.get_options([](const CLI::Option* option) {
                             const std::string& name = option->get_name();
                             return option->count() != 0 && name != "--list-formats" &&
                                    name != "--describe" && name != "--json" && name != "--csv";
                           })
                            .size();
  return others == 0 ? "" : "--list-formats and --describe go with --json or --csv alone";
}

}  // namespace

bool ParseOptions(int count, const char* const* arguments, Options& options, std::string& error) {
  CLI::App app;
  Raw raw;
  app.set_help_flag();
  AddInput(app, raw, options);
  AddAnswer(app, raw, options);
  AddPasswords(app, raw);
  AddRun(app, raw, options);
  AddAbout(app, raw);
  try {
    app.parse(Guard(count, arguments));
  } catch (const CLI::Error& fault) {
    error = fault.what();
    std::erase(error, '\0');
    return false;
  }
  SetStyle(app, raw, options);
  if (raw.base) options.flags &= ~uint32_t{kFiSupplement};
  if (raw.dereference) options.links = LinkUse::kAll;
  if (raw.noDereference) options.links = LinkUse::kNone;
  if (raw.progress) options.progress = ProgressUse::kAlways;
  if (raw.quiet) options.progress = ProgressUse::kNone;
  error = SetTask(app, raw, options);
  if (options.task != Task::kIdentify) return error.empty();
  if (error.empty()) error = FinishPasswords(app, raw, options);
  if (error.empty()) error = FinishInput(app, raw, options);
  return error.empty();
}

}  // namespace fi::app
