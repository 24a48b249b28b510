// The command line.
#ifndef FI_CLI_OPTIONS_H_
#define FI_CLI_OPTIONS_H_

#include <cstdint>
#include <string>
#include <vector>

#include "cli/catalogue.h"
#include "cli/report.h"
#include "formatid/identify.h"
#include "run/identify.h"
#include "run/input/file_walk.h"
#include "run/pipeline.h"
#include "run/progress.h"

namespace fi::app {

enum class Task { kIdentify, kListFormats, kDescribe, kShowLimits, kShowVersion, kShowHelp };

struct Options {
  Task task = Task::kIdentify;

  // kIdentify
  std::vector<std::string> paths;  // "-" stands for standard input
  std::string listFile;            // of further paths; empty: none, "-": standard input
  char listTerminator = '\n';
  std::string stdinName;  // empty: none
  uint64_t stdinLimit = uint64_t{1} << 30;
  bool isRecursive = false;
  WalkOptions walk;
  int64_t largest = -1;  // bytes of a file in a directory; -1: any
  uint32_t flags = kFiEverything;
  FILimits limits = {};  // keyRounds: of one password
  // Where passwords come from; at most one of the two is set.
  std::string passwordFile;     // empty: none
  int passwordDescriptor = -1;  // -1: none
  bool triesDefaultPassword = false;
  ReportStyle style;
  bool flushEachRecord = false;
  Pipeline::Settings run;
  ProgressUse progress = ProgressUse::kLongRuns;

  // kListFormats, kDescribe
  CatalogueLayout catalogue = CatalogueLayout::kText;
  std::string described;  // or the category; empty: all
};

// Fills `options`. False, with `error` set to one line, when the command line is wrong.
bool ParseOptions(int count, const char* const* arguments, Options& options, std::string& error);

}  // namespace fi::app

#endif  // FI_CLI_OPTIONS_H_
