// The steps of an identification, told to the caller who asked for them. Nobody asks: then nothing
// is told, and nothing is done for it.
#ifndef FI_PLATFORM_TRACE_H_
#define FI_PLATFORM_TRACE_H_

#include <cstdint>

#include "formatid/identify.h"
#include "platform/no_throw.h"
#include "platform/work.h"

namespace fi {

struct Trace {
  FITrace tell;  // never null
  void* context;
};

// What is told of a step: the fields of FITraceRecord.
struct TraceStep {
  uint32_t kind = 0;
  const char* text = "";
  FormatId id = 0;
  uint16_t row = 0;
  uint32_t number = 0;
  uint64_t offset = 0;
  uint64_t count = 0;
};

// A step of the work behind a handle; nothing where nobody asks. What a C++ callback throws ends
// here.
inline void Tell(const Work* work, const TraceStep& step) {
  if (work == nullptr || work->trace == nullptr) return;
  const Trace& trace = *work->trace;
  const FITraceRecord record = {sizeof record, step.kind,   step.text,   step.id,
                                step.row,      step.number, step.offset, step.count};
  (void)NoThrow<bool>(false, [&] {
    trace.tell(trace.context, &record);
    return true;
  });
}

}  // namespace fi

#endif  // FI_PLATFORM_TRACE_H_
