// Requests and results of FIIdentify as they cross the interface: records of any size.
#ifndef FI_API_REQUEST_H_
#define FI_API_REQUEST_H_

#include <cstdint>

#include "formatid/identify.h"
#include "platform/work.h"

namespace fi {

// Copies a caller's request, whose record may be shorter or longer than ours. False when it is not
// as the header says.
bool ReadRequest(const FIRequest* from, FIRequest* request);

// Whether the caller's record can take a result.
bool CanTakeResult(const FIResult* to);

// Copies as much of the result as the caller's record has room for; what lies behind is zeroed.
// REQUIRES: CanTakeResult.
void WriteResult(const FIResult& result, FIResult* to);

// The limits of a request with the defaults filled in; the time runs from now on.
WorkLimits LimitsOf(const FILimits& limits);

// The number that FIResult gives a limit; kFiLimitNone for a cancellation.
uint32_t LimitNumber(WorkLimit limit);

}  // namespace fi

#endif  // FI_API_REQUEST_H_
