// Identifies bytes with a record of the work; without one, as the exports do.
#ifndef FI_TESTS_SUPPORT_IDENTIFY_WORK_H_
#define FI_TESTS_SUPPORT_IDENTIFY_WORK_H_

#include <string>

#include "api/driver.h"
#include "formatid/platform.h"
#include "platform/io.h"
#include "platform/work.h"

namespace fi::testing {

inline constexpr uint32_t kEverything =
    kFiUseFlags | kFiTextFallback | kFiDelimitedText | kFiSupplement;

struct Outcome {
  uint32_t status = 0;
  FormatId id = 0;
};

inline Outcome IdentifyBytes(const std::string& bytes, Work* work, const std::string& name = "x",
                             uint32_t flags = kEverything) {
  const IOMemorySource source{bytes.data(), bytes.size(), name.c_str()};
  IOHandle* opened = nullptr;
  Outcome outcome;
  if (OpenSource(&opened, kIoSourceMemory, &source, work) != kIoOk) return outcome;
  const io::OwnedHandle handle(opened);
  const Answer answer =
      work == nullptr ? IdentifyHandle(opened, flags) : IdentifyWithWork(opened, flags, work);
  return {answer.status, answer.id};
}

}  // namespace fi::testing

#endif  // FI_TESTS_SUPPORT_IDENTIFY_WORK_H_
