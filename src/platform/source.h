// Handles over what a request of FIIdentify names (formatid/identify.h).
#ifndef FI_PLATFORM_SOURCE_H_
#define FI_PLATFORM_SOURCE_H_

#include <cstdint>

#include "formatid/identify.h"
#include "formatid/io.h"
#include "platform/work.h"

namespace fi {

// Opens the source for an identification, whose record `work`, not null, outlives the handle.
// Results and errno as those of IOOpen. The record notes failed reads, missing bytes and a size
// that the source could not tell. REQUIRES: the kind is known, and its fields are as it needs them.
int32_t OpenRequestSource(IOHandle** handle, const FISource& source, Work* work) noexcept;

}  // namespace fi

#endif  // FI_PLATFORM_SOURCE_H_
