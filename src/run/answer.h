// What the command says about one input.
#ifndef FI_RUN_ANSWER_H_
#define FI_RUN_ANSWER_H_

#include <cstdint>
#include <string>
#include <vector>

#include "formatid/platform.h"

namespace fi::app {

enum class AnswerStatus {
  kOk,
  kUnknown,    // read to the end that mattered, and no format recognised
  kProtected,  // the format is known; its content is encrypted and stayed closed
  kError,      // not read; only `error` and, where it opened, `size` hold something
};

struct Answer {
  AnswerStatus status = AnswerStatus::kUnknown;
  FIFormatFacts facts = {};  // texts are never null
  uint16_t basis = kFiBasisNone;
  FormatId corrects = 0;  // the answer of the fixed rules that the content proves false; 0: none
  int64_t size = -1;      // bytes; -1: not known
  uint32_t passwordLine = 0;        // of the password that opened it, from 1; 0: none did
  std::string error;                // empty unless the status is kProtected or kError
  std::vector<std::string> hashes;  // in the order they were asked for; empty: none, or not read
};

// True where the input counts for exit code 1.
inline bool IsFailure(const Answer& answer) {
  return answer.status == AnswerStatus::kProtected || answer.status == AnswerStatus::kError;
}

}  // namespace fi::app

#endif  // FI_RUN_ANSWER_H_
