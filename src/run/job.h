// One input on its way through a run.
#ifndef FI_RUN_JOB_H_
#define FI_RUN_JOB_H_

#include <cstddef>
#include <cstdint>
#include <string>

#include "run/answer.h"
#include "run/input/link_use.h"
#include "run/input/open_below.h"

namespace fi::app {

struct Job {
  enum class Kind : uint8_t {
    kPath,           // a path that was named, or met where all links are followed
    kBelow,          // a file met in a directory, to be opened below `directory`
    kStandardInput,  // `path` is what records show
    kFault,          // nothing to open: `fault` tells why
  };

  Kind kind = Kind::kPath;
  std::string path;
  std::string fault;
  SharedDirectory directory;
  size_t rootLength = 0;  // of the part of `path` that names `directory`, with its slash
  uint64_t number = 0;    // of the input, from 1

  // Results.
  Answer answer;
  std::string record;          // may be empty
  bool isSkipped = false;      // no input after all: neither recorded nor counted
  bool failsCheck = false;     // a check that was asked for failed
  bool isOutOfMemory = false;  // `answer` and `record` say nothing
};

}  // namespace fi::app

#endif  // FI_RUN_JOB_H_
