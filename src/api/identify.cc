// FIIdentify: a request becomes a handle, a record of work and a job, and their outcome a result.

#include "formatid/identify.h"

#include <array>
#include <cerrno>
#include <cstdint>
#include <string_view>

#include "api/driver.h"
#include "api/extension_fit.h"
#include "api/properties.h"
#include "api/request.h"
#include "platform/io.h"
#include "platform/no_throw.h"
#include "platform/source.h"
#include "platform/trace.h"
#include "platform/work.h"
#include "stream/id_stream.h"
#include "stream/identification_job.h"

namespace fi {
namespace {

// A request with the record that its callbacks are told of.
struct Job {
  FIRequest request{};
  const FIRequest* asGiven = nullptr;
};

// A FIPasswordCallback whose first argument is the Job.
uint32_t AskPassword(uint32_t /*code*/, FIPasswordRequest* ask, uintptr_t context,
                     uintptr_t /*unused*/) noexcept {
  const Job& job = *reinterpret_cast<const Job*>(context);
  ++ask->attempts;
  if (job.request.password == nullptr) return kFiNoCallback;
  FIPasswordRequest asked = *ask;
  --asked.attempts;
  return NoThrow<uint32_t>(kFiNoCallback, [&] {
    return job.request.password(job.request.passwordContext, job.asGiven, &asked);
  });
}

bool IsCancelled(void* context) {
  const FIRequest& request = static_cast<const Job*>(context)->request;
  return NoThrow<bool>(true, [&] { return request.cancel(request.cancelContext) != 0; });
}

Answer IdentifyDecryptedView(const IdentificationJob& job, IOHandle* handle) {
  const ScopedStream stream(handle, job);
  if (!stream) return {.status = FI_NO_STREAM};
  Behaviour behaviour = job.behaviour;
  behaviour.supplement = false;
  return IdentifyStream(stream.get(), behaviour, false);
}

FIResult EmptyResult() {
  FIResult result = FI_RESULT_INIT;
  result.id = kFormatUnknown;
  result.name = "unknown";
  result.mimeType = result.extensions = result.puids = result.category = "";
  result.fileSize = FI_UNKNOWN_SIZE;
  return result;
}

void SetAnswer(const Answer& answer, FIResult* result) {
  result->id = answer.id != kNoMatch ? answer.id : FormatId{kFormatUnknown};
  result->basis = answer.evidence.basis;
  result->row = answer.evidence.signature;
  FIFormatFacts facts;
  if (UTGetFormatFacts(answer.id, &facts) != 0) return;
  result->name = facts.name;
  result->mimeType = facts.mimeType;
  result->extensions = facts.extensions;
  result->puids = facts.puids;
  result->category = facts.category;
}

void SetExtensionFit(IOHandle* handle, FIResult* result) {
  std::array<char, kIoNameCapacity> name{};
  if (!io::GetInfo(handle, kIoInfoFileName, name.data())) return;
  result->extensionFit =
      ExtensionFit(std::string_view(name.data()), result->id, result->extensions);
}

// The size costs nothing but where a callback's source does not tell it.
void SetFileSize(IOHandle* handle, const FISource& source, FIResult* result) {
  if (source.kind == kFiSourceCallbacks || source.kind == kFiSourceParts) {
    result->fileSize = source.size;
    return;
  }
  int64_t size = 0;
  if (io::Seek64(handle, kIoFromEnd, 0) && io::Tell64(handle, &size)) {
    result->fileSize = static_cast<uint64_t>(size);
  }
}

void SetWork(const Work& work, FIResult* result) {
  result->limit = LimitNumber(work.limit);
  result->error = work.readError;
  const WorkSpent& spent = work.spent;
  result->spent = {spent.bytesRead, spent.reads,     spent.bytesInflated, spent.steps,
                   spent.memory,    spent.keyRounds, spent.depth,         0};
  if (work.isSizeMissing) {
    result->more = kFiMoreSize;
  } else if (work.wanted.size > 0) {
    result->more = kFiMoreBytes;
    result->wantedOffset = work.wanted.offset;
    result->wantedSize = work.wanted.size;
  }
}

// The first that applies: the reason of a break, missing data, the status of the decryption.
uint32_t StatusOf(const Work& work, const Answer& answer) {
  if (work.limit == WorkLimit::kCancelled) return kFiCancelled;
  if (work.limit != WorkLimit::kNone) return kFiLimitReached;
  if (work.noMemory || answer.status == FI_NO_STREAM) return kFiNoMemory;
  if (work.readError != 0) return kFiReadFailed;
  return answer.decryption != kFiOk ? answer.decryption : answer.status;
}

uint32_t StatusOfOpening(int32_t opened) {
  if (opened == kIoNotFound) return kFiNotFound;
  return opened == kIoAccessDenied ? uint32_t{kFiAccessDenied} : uint32_t{kFiNotOpened};
}

void Identify(const Job& job, FIResult* result) {
  Work work(LimitsOf(job.request.limits));
  if (job.request.cancel != nullptr) {
    work.cancel = IsCancelled;
    work.cancelContext = const_cast<Job*>(&job);
  }
  Trace trace{job.request.trace, job.request.traceContext};
  if (trace.tell != nullptr) work.trace = &trace;
  IOHandle* opened = nullptr;
  if (const int32_t failure = OpenRequestSource(&opened, job.request.source, &work);
      failure != kIoOk) {
    result->status = errno == ENOMEM ? uint32_t{kFiNoMemory} : StatusOfOpening(failure);
    result->error = errno;
    return;
  }
  const io::OwnedHandle handle(opened);
  IdentificationJob own{
      IdentifyDecryptedView, AskPassword, reinterpret_cast<uintptr_t>(&job), &work, {}};
  own.behaviour.text = (job.request.flags & kFiTextFallback) != 0;
  own.behaviour.delimited = (job.request.flags & kFiDelimitedText) != 0;
  own.behaviour.supplement = (job.request.flags & kFiSupplement) != 0;
  Answer answer{.status = FI_NO_STREAM};
  if (const ScopedStream stream(opened, own); stream) {
    answer = work.trace == nullptr ? IdentifyStream(stream.get(), own.behaviour, false)
                                   : IdentifyTraced(stream.get(), own.behaviour);
  }
  SetAnswer(answer, result);
  SetExtensionFit(opened, result);
  SetFileSize(opened, job.request.source, result);
  SetWork(work, result);
  result->status = StatusOf(work, answer);
  if (job.request.properties != nullptr && result->status != kFiNoMemory) {
    if (const ScopedStream stream(opened, own); stream) {
      FillProperties(stream.get(), answer.id, result->puids, job.request.properties);
    }
  }
}

}  // namespace
}  // namespace fi

uint32_t FIIdentify(const FIRequest* request, FIResult* result) noexcept {
  using namespace fi;
  if (!CanTakeResult(result)) return kFiInvalidRequest;
  FIResult filled = EmptyResult();
  Job job;
  job.asGiven = request;
  if (!ReadRequest(request, &job.request)) {
    filled.status = kFiInvalidRequest;
  } else {
    ClearProperties(job.request.properties);
    const bool done = NoThrow<bool>(false, [&] {
      Identify(job, &filled);
      return true;
    });
    if (!done) filled.status = kFiNoMemory;
  }
  WriteResult(filled, result);
  return filled.status;
}
