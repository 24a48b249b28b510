// What the command says about one input.
#ifndef FI_RUN_ANSWER_H_
#define FI_RUN_ANSWER_H_

#include <cstdint>
#include <string>
#include <vector>

#include "formatid/identify.h"
#include "formatid/platform.h"

namespace fi::app {

enum class AnswerStatus {
  kOk,
  kUnknown,    // read to the end that mattered, and no format recognised
  kProtected,  // the format is known; its content is encrypted and stayed closed
  kLimited,    // a limit ended the work; the format is the best answer so far
  kError,      // not read; only `error` and, where it opened, `size` hold something
};

inline constexpr int32_t kNoPassword = -1;

// A step of an identification, as the library's trace tells it.
struct TraceStep {
  uint32_t kind = 0;  // kFiTraceRow ... (formatid/identify.h)
  std::string text;
  uint32_t number = 0;
  uint16_t id = 0;
  uint16_t row = 0;
  uint64_t offset = 0;
  uint64_t count = 0;
};

struct Answer {
  AnswerStatus status = AnswerStatus::kUnknown;
  FIFormatFacts facts = {};  // texts are never null
  uint16_t basis = kFiBasisNone;
  FormatId corrects = 0;  // the answer of the fixed rules that the content proves false; 0: none
  int64_t size = -1;      // bytes; -1: not known
  // Line of the password that opened it, from 1; 0: the default password did.
  int32_t passwordLine = kNoPassword;
  std::string error;                // empty unless the status is kProtected, kLimited or kError
  std::vector<std::string> hashes;  // in the order they were asked for; empty: none, or not read
  std::vector<TraceStep> steps;     // only where they were asked for
  FILimits spent = {};              // what the identification cost
};

// True where the input counts for exit code 1.
inline bool IsFailure(const Answer& answer) {
  return answer.status == AnswerStatus::kProtected || answer.status == AnswerStatus::kLimited ||
         answer.status == AnswerStatus::kError;
}

}  // namespace fi::app

#endif  // FI_RUN_ANSWER_H_
