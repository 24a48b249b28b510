// The options of the command: one table for parsing, --help, the man page and the completions.
#ifndef FI_CLI_OPTION_TABLE_H_
#define FI_CLI_OPTION_TABLE_H_

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

namespace fi::app {

// In the order of the table.
enum class Option : uint8_t {
  kRecursive,
  kFilesFrom,
  kFiles0From,
  kStdinName,
  kStdinLimit,
  kDereference,
  kNoDereference,
  kInclude,
  kExclude,
  kOneFileSystem,
  kMaxSize,
  kMime,
  kId,
  kExtension,
  kAll,
  kExplain,
  kHash,
  kBase,
  kCheckExtension,
  kRequire,
  kSuggestNames,
  kPasswordFile,
  kPasswordFd,
  kTryDefaultPassword,
  kBrief,
  kSeparator,
  kPrint0,
  kJson,
  kJsonLines,
  kCsv,
  kColumns,
  kFormat,
  kNoBuffer,
  kJobs,
  kUnordered,
  kLimits,
  kProgress,
  kQuiet,
  kListFormats,
  kDescribe,
  kVersion,
  kHelp,
  kCount,
};

using OptionSet = uint64_t;
static_assert(static_cast<size_t>(Option::kCount) <= 64);

constexpr OptionSet Bit(Option option) { return OptionSet{1} << static_cast<unsigned>(option); }

template <class... Options>
constexpr OptionSet SetOf(Options... options) {
  return (OptionSet{0} | ... | Bit(options));
}

enum class OptionGroup : uint8_t { kInput, kAnswer, kChecks, kPasswords, kOutput, kRun, kAbout };

enum class OptionValue : uint8_t {
  kNone,
  kNeeded,
  kOptional,  // only as --name=VALUE
  kRepeated,  // needed, and the option may stand several times
};

struct OptionRow {
  Option option;
  std::string_view letters;  // of its short forms; the first is shown
  std::string_view names;    // of its long forms, with blanks between them; the first is shown
  OptionValue use = OptionValue::kNone;
  std::string_view value = {};  // what the value is called
  std::string_view words = {};  // values that a completion offers; "FILE": names of files
  OptionSet excludes = 0;       // options that do not go with it; it holds for both
  OptionGroup group = OptionGroup::kInput;
  std::string_view help = {};    // for --help: a short phrase
  std::string_view detail = {};  // for the man page: further sentences
};

std::span<const OptionRow> OptionRows();
const OptionRow& RowOf(Option option);
std::string_view TitleOf(OptionGroup group);

// Options of file(1) that mean something else here, or nothing, with what to say of them.
struct ForeignOption {
  char letter;
  std::string_view name;
  std::string_view advice;
};
std::span<const ForeignOption> ForeignOptions();

struct Example {
  std::string_view command;
  std::string_view meaning;
};
std::span<const Example> Examples();

struct ExitRow {
  std::string_view code;
  std::string_view meaning;
};
std::span<const ExitRow> ExitRows();

}  // namespace fi::app

#endif  // FI_CLI_OPTION_TABLE_H_
