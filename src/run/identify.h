// One input through the library.
#ifndef FI_RUN_IDENTIFY_H_
#define FI_RUN_IDENTIFY_H_

#include <cstdint>
#include <string>
#include <string_view>

#include "formatid/io.h"
#include "run/answer.h"

namespace fi::app {

enum class LinkUse {
  kArguments,  // links that were named are followed, links met in directories are not
  kAll,
  kNone,
};

// Each sets all of `answer`, keeping the room of its text; `flags` are those of FIIdHandle. What is
// no regular file is not opened.
void IdentifyPath(const std::string& path, LinkUse links, uint32_t flags, Answer& answer);

// `name` stands for the file name of the data; nullptr when it has none.
void IdentifyStandardInput(const char* name, uint32_t flags, Answer& answer);

// Identifies an open handle, which stays the caller's.
void IdentifyOpened(IOHandle* handle, uint32_t flags, Answer& answer);

// Makes `answer` an error of which nothing else is known.
void Fail(std::string_view reason, Answer& answer);

}  // namespace fi::app

#endif  // FI_RUN_IDENTIFY_H_
