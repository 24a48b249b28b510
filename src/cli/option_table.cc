#include "cli/option_table.h"

#include <iterator>

namespace fi::app {
namespace {

using enum Option;
using enum OptionValue;
using enum OptionGroup;

// Each of these decides what a record is.
constexpr OptionSet kLayouts = SetOf(kJson, kJsonLines, kCsv, kFormat, kAll, kSuggestNames);
// These shape the one line of text that is a record without them.
constexpr OptionSet kTextOnly = SetOf(kMime, kId, kExtension, kBrief, kSeparator, kPrint0);

constexpr OptionSet Layout(Option option) { return (kLayouts & ~Bit(option)) | kTextOnly; }

constexpr OptionRow kRows[] = {
    {kRecursive, "r", "recursive", kNone, "", "", 0, kInput, "walk directories (file's -r differs)",
     "The files below come depth first, the entries of each directory sorted by their bytes. "
     "Unlike the -r of file(1), which shows unprintable characters as they are."},
    {kFilesFrom, "f", "files-from", kNeeded, "F", "FILE", SetOf(kFiles0From), kInput,
     "take further paths from F, one a line (- is standard input)", ""},
    {kFiles0From, "", "files0-from", kNeeded, "F", "FILE", 0, kInput,
     "the same, each path ended by a NUL", "As find -print0 writes them."},
    {kStdinName, "", "stdin-name", kNeeded, "NAME", "", 0, kInput, "the file name that goes with -",
     "Its extension counts as evidence, and records show it."},
    {kStdinLimit, "", "stdin-limit", kNeeded, "SIZE", "", 0, kInput,
     "take in no more than SIZE of standard input (1G)",
     "SIZE is a number of bytes, or one with K, M, G or T behind it (times 1024). More is an error "
     "of that input."},
    {kDereference, "L", "dereference", kNone, "", "", SetOf(kNoDereference), kInput,
     "follow all symbolic links, not only those named", ""},
    {kNoDereference, "h", "no-dereference", kNone, "", "", 0, kInput, "follow no symbolic links",
     ""},
    {kInclude, "", "include", kRepeated, "GLOB", "", 0, kInput,
     "of the files in directories, only those that match",
     "A pattern with a slash is for the path below the named directory, any other for the name. "
     "May be repeated: one that matches suffices."},
    {kExclude, "", "exclude", kRepeated, "GLOB", "", 0, kInput,
     "pass over what matches, a directory with all below it", "May be repeated."},
    {kOneFileSystem, "", "one-file-system", kNone, "", "", 0, kInput,
     "enter no directory of another file system", ""},
    {kMaxSize, "", "max-size", kNeeded, "SIZE", "", 0, kInput,
     "of the files in directories, none beyond SIZE (10M, 2G)", ""},

    {kMime, "i", "mime mime-type", kNone, "", "", SetOf(kId, kExtension), kAnswer, "the MIME type",
     "Without parameters."},
    {kId, "", "id", kNone, "", "", SetOf(kExtension), kAnswer, "the number of the format", ""},
    {kExtension, "", "extension", kNone, "", "", 0, kAnswer, "the usual file name extensions",
     "With a slash between them."},
    {kAll, "a", "all", kNone, "", "", Layout(kAll), kAnswer,
     "all that is known, over several lines", ""},
    {kExplain, "x", "explain", kNone, "", "", SetOf(kCsv, kFormat, kAll, kSuggestNames) | kTextOnly,
     kAnswer, "why: what was read, matched and asked (also with --json)", ""},
    {kHash, "", "hash", kRepeated, "ALG", "md5 sha1 sha256 sha512 blake2b512 xxh128", 0, kAnswer,
     "add hashes: md5, sha1, sha256, sha512, blake2b512, xxh128",
     "Several, with commas between them or by repeating the option. They are read from the same "
     "open file as the answer."},
    {kBase, "", "base", kNone, "", "", 0, kAnswer,
     "without the supplement: general answers stay as they are", ""},

    {kCheckExtension, "", "check-extension", kNone, "", "", 0, kChecks,
     "exit 3 when an extension is none of the format's",
     "A general answer (unknown, plain text, ZIP archive, XML ...) never mismatches, and neither "
     "does a format without known extensions or a name without one."},
    {kRequire, "", "require", kRepeated, "WHAT", "known", 0, kChecks,
     "exit 3 when an input is not WHAT: ID, MIME type, category or 'known'",
     "Several, with commas between them or by repeating the option: one that holds suffices. A "
     "MIME type may end in /*."},
    {kSuggestNames, "", "suggest-names", kNone, "", "", Layout(kSuggestNames), kChecks,
     "print 'mv -n --' lines for extensions that mismatch",
     "The lines are quoted for the shell. Nothing is renamed."},

    {kPasswordFile, "", "password-file", kNeeded, "F", "FILE", SetOf(kPasswordFd), kPasswords,
     "take passwords from F, one a line (- is standard input)", "All are tried on each document."},
    {kPasswordFd, "", "password-fd", kNeeded, "N", "", 0, kPasswords,
     "take them from the open descriptor N", ""},
    {kTryDefaultPassword, "", "try-default-password", kNone, "", "", 0, kPasswords,
     "try the well-known one of write-protected workbooks",
     "After those of the other options. Such a workbook opens for everyone."},

    {kBrief, "b", "brief", kNone, "", "", SetOf(kSeparator, kPrint0), kOutput, "no paths", ""},
    {kSeparator, "F", "separator", kNeeded, "S", "", SetOf(kPrint0), kOutput,
     "put S between path and answer in place of ':'", ""},
    {kPrint0, "0", "print0", kNone, "", "", 0, kOutput,
     "end paths with a NUL, and do not escape them", ""},
    {kJson, "", "json", kNone, "", "", Layout(kJson), kOutput, "one JSON array", ""},
    {kJsonLines, "", "jsonl", kNone, "", "", Layout(kJsonLines), kOutput, "one JSON object a line",
     ""},
    {kCsv, "", "csv", kNone, "", "", Layout(kCsv), kOutput, "CSV (RFC 4180) with a head", ""},
    {kColumns, "", "columns", kNeeded, "LIST", "droid", 0, kOutput,
     "the columns of --csv, with commas between; or 'droid'",
     "droid stands for the columns that exports of that tool have."},
    {kFormat, "", "format", kNeeded, "TEMPLATE", "", Layout(kFormat), kOutput,
     "one line a record: '{id} {path}'",
     "Names of columns in braces; {{ and }} are braces, \\n, \\t and \\\\ as in C."},
    {kNoBuffer, "n", "no-buffer", kNone, "", "", 0, kOutput, "write each answer at once", ""},

    {kJobs, "j", "jobs", kNeeded, "N", "", 0, kRun,
     "work on N files at a time (default: as many as processors)",
     "The output is the same for every N."},
    {kUnordered, "", "unordered", kNone, "", "", 0, kRun,
     "records may come in another order than the inputs", ""},
    {kLimits, "", "limits", kOptional, "LIST", "", 0, kRun,
     "set what a file may cost: NAME=N,...; alone: their names",
     "N is a number, or 'none'. What reaches a limit is reported, with the best answer so far."},
    {kProgress, "", "progress", kNone, "", "", SetOf(kQuiet), kRun,
     "show on standard error how far the run is", "SIGUSR1 prints it once."},
    {kQuiet, "q", "quiet", kNone, "", "", 0, kRun, "no progress", ""},

    {kListFormats, "", "list-formats", kOptional, "CATEGORY", "", SetOf(kDescribe), kAbout,
     "list all formats, or those of a category (--json, --csv)", ""},
    {kDescribe, "", "describe", kNeeded, "WHAT", "", 0, kAbout,
     "formats by number, PUID, MIME type, extension or words", ""},
    {kVersion, "Vv", "version", kNone, "", "", 0, kAbout, "print the version", ""},
    {kHelp, "", "help", kNone, "", "", 0, kAbout, "print this text", ""},
};

constexpr bool IsInOrder() {
  for (size_t i = 0; i < std::size(kRows); ++i) {
    if (kRows[i].option != static_cast<Option>(i)) return false;
  }
  return std::size(kRows) == static_cast<size_t>(kCount);
}
static_assert(IsInOrder());

constexpr ForeignOption kForeign[] = {
    {'s', "special-files", "devices are never opened; name a file that holds a copy, or '-'"},
    {'k', "keep-going", "there is one answer to a file; -a shows all that is known of it"},
    {'z', "uncompress", "the inside of compressed files is not looked at; unpack it into '-'"},
    {'Z', "uncompress-noreport",
     "the inside of compressed files is not looked at; unpack it into '-'"},
    {'e', "exclude-test", "no test can be left out; --base leaves out the supplement"},
    {'m', "magic-file", "magic files are not read"},
    {'\0', "mime-encoding", "the name tells the encoding of text; -i prints the MIME type"},
};

constexpr Example kExamples[] = {
    {"formatid FILE...", "name the formats of files"},
    {"formatid -r DIR", "of all files below a directory"},
    {"formatid -r --jsonl DIR", "the same, for programs"},
    {"find . -print0 | formatid --files0-from -", "of what another program finds"},
    {"formatid -r --require application/pdf DIR", "exit code 3 if one is not PDF"},
};

constexpr ExitRow kExits[] = {
    {"0", "All input was read."},
    {"1", "Some input could not be read, is encrypted and stayed closed, or reached a limit."},
    {"2", "Wrong usage, unusable passwords or lists, no memory, or output that cannot be written."},
    {"3", "A check that was asked for failed, and none of the above."},
};

}  // namespace

std::span<const OptionRow> OptionRows() { return kRows; }

const OptionRow& RowOf(Option option) { return kRows[static_cast<size_t>(option)]; }

std::string_view TitleOf(OptionGroup group) {
  switch (group) {
    case kInput:
      return "Input";
    case kAnswer:
      return "Answer (the name, unless one of these asks for another)";
    case kChecks:
      return "Checks";
    case kPasswords:
      return "Encrypted documents";
    case kOutput:
      return "Output";
    case kRun:
      return "Run";
    case kAbout:
      break;
  }
  return "About";
}

std::span<const ForeignOption> ForeignOptions() { return kForeign; }
std::span<const Example> Examples() { return kExamples; }
std::span<const ExitRow> ExitRows() { return kExits; }

}  // namespace fi::app
