// One input through the library.
#ifndef FI_RUN_IDENTIFY_H_
#define FI_RUN_IDENTIFY_H_

#include <cstdint>
#include <string_view>

#include "formatid/identify.h"
#include "run/answer.h"
#include "run/job.h"

namespace fi::app {

class Hasher;
class Passwords;

struct IdentifySettings {
  LinkUse links = LinkUse::kArguments;
  uint32_t flags = 0;                    // of FIRequest
  FILimits limits = {};                  // keyRounds: of one password
  bool isTraced = false;                 // steps are wanted
  const Passwords* passwords = nullptr;  // nullptr: none
  const Hasher* hasher = nullptr;        // nullptr: no hashes
  int64_t largest = -1;                  // bytes of a file met in a directory; -1: any
  uint64_t stdinLimit = 0;               // bytes of standard input that are taken in
  const char* stdinName = nullptr;       // stands for the file name of standard input
};

// Sets the answer of `job`, keeping the room of its texts, or `isSkipped`. What is no regular file
// is not read. For several threads at once.
void Identify(Job& job, const IdentifySettings& settings);

// Makes `answer` an error of which nothing else is known.
void Fail(std::string_view reason, Answer& answer);

}  // namespace fi::app

#endif  // FI_RUN_IDENTIFY_H_
