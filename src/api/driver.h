// One identification, from handle to answer.
#ifndef FI_API_DRIVER_H_
#define FI_API_DRIVER_H_

#include <cstdint>

#include "formatid/io.h"
#include "platform/work.h"
#include "stream/id_stream.h"
#include "stream/identification_job.h"

namespace fi {

// What FIIdHandle promises, for the exports.
Answer IdentifyHandle(IOHandle* handle, uint32_t flags);

// The same over a stream at the start of its handle, with the behaviour given: options of the
// process are neither read nor set. `classOnly` is the flag kFiClassOnly.
Answer IdentifyStream(IdentificationStream* stream, const Behaviour& behaviour, bool classOnly);

// The same for a job, whose functions and record it uses.
Answer IdentifyForJob(const IdentificationJob& job, IOHandle* handle, uint32_t flags);

// IdentifyHandle within the limits of `work`, with which `handle` was opened (OpenSource). The
// answer is the best that was found; `work` tells whether a limit was reached or something failed.
Answer IdentifyWithWork(IOHandle* handle, uint32_t flags, Work* work);

// IdentifyStream, whose steps are told to the trace of the stream's job.
Answer IdentifyTraced(IdentificationStream* stream, const Behaviour& behaviour);

// What the exports lend to the probes that decrypt: the callback that the host registered, and
// IdentifyHandle without flags.
extern const IdentificationJob kHostJob;

}  // namespace fi

#endif  // FI_API_DRIVER_H_
