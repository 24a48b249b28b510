#include "api/request.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <limits>

#include <time.h>

namespace fi {
namespace {

// Sizes of the records in the first release that had them. They never change.
constexpr uint32_t kLeastRequest = sizeof(FIRequest);
constexpr uint32_t kLeastResult = sizeof(FIResult);

// A larger record would be no record.
constexpr uint32_t kMostRecord = 64 * 1024;

constexpr auto kLargestSize = static_cast<uint64_t>(std::numeric_limits<int64_t>::max());

constexpr uint64_t kNanosecondsPerSecond = 1'000'000'000;
constexpr uint64_t kNanosecondsPerMillisecond = 1'000'000;

bool IsZero(const uint8_t* bytes, size_t size) {
  return std::all_of(bytes, bytes + size, [](uint8_t byte) { return byte == 0; });
}

bool IsSizeOrUnknown(uint64_t size) { return size <= kLargestSize || size == FI_UNKNOWN_SIZE; }

bool ArePartsValid(const FISource& source) {
  if (source.partCount > 0 && source.parts == nullptr) return false;
  for (uint32_t i = 0; i < source.partCount; ++i) {
    const FIPart& part = source.parts[i];
    if (part.data == nullptr && part.size > 0) return false;
    if (part.offset > kLargestSize || part.size > kLargestSize - part.offset) return false;
  }
  return IsSizeOrUnknown(source.size);
}

bool IsSourceValid(const FISource& source) {
  switch (source.kind) {
    case kFiSourcePath:
      return source.path != nullptr;
    case kFiSourceWidePath:
      return source.widePath != nullptr;
    case kFiSourceMemory:
      return source.size <= kLargestSize && (source.data != nullptr || source.size == 0);
    case kFiSourceDescriptor:
      return source.descriptor >= 0;
    case kFiSourceCallbacks:
      return source.readAt != nullptr && IsSizeOrUnknown(source.size);
    case kFiSourceParts:
      return ArePartsValid(source);
    default:
      return false;
  }
}

bool CanTakeProperties(const FIProperties* to) {
  return to == nullptr || to->size == sizeof(FIProperties);
}

uint64_t Limit(uint64_t asked, uint64_t standard) { return asked != 0 ? asked : standard; }

uint64_t DeadlineIn(uint64_t milliseconds) {
  if (milliseconds == 0 || milliseconds == FI_NO_LIMIT) return 0;
  struct timespec now;
  if (::clock_gettime(CLOCK_MONOTONIC, &now) != 0) return 0;
  const uint64_t start = static_cast<uint64_t>(now.tv_sec) * kNanosecondsPerSecond +
                         static_cast<uint64_t>(now.tv_nsec);
  const uint64_t most = (std::numeric_limits<uint64_t>::max() - start) / kNanosecondsPerMillisecond;
  return start + std::min(milliseconds, most) * kNanosecondsPerMillisecond;
}

}  // namespace

bool ReadRequest(const FIRequest* from, FIRequest* request) {
  if (from == nullptr || from->size < kLeastRequest || from->size > kMostRecord) return false;
  const auto* bytes = reinterpret_cast<const uint8_t*>(from);
  const size_t known = std::min<size_t>(from->size, sizeof(*request));
  if (!IsZero(bytes + known, from->size - known)) return false;
  *request = {};
  std::memcpy(request, from, known);
  if ((request->flags & ~uint32_t{kFiEverything}) != 0) return false;
  if (!CanTakeProperties(request->properties)) return false;
  return request->source.reserved == 0 && IsSourceValid(request->source);
}

bool CanTakeResult(const FIResult* to) {
  return to != nullptr && to->size >= kLeastResult && to->size <= kMostRecord;
}

void WriteResult(const FIResult& result, FIResult* to) {
  const uint32_t size = to->size;
  const size_t known = std::min<size_t>(size, sizeof(result));
  std::memcpy(to, &result, known);
  std::memset(reinterpret_cast<uint8_t*>(to) + known, 0, size - known);
  to->size = size;
}

WorkLimits LimitsOf(const FILimits& limits) {
  WorkLimits allowed;
  allowed.bytesRead = Limit(limits.bytesRead, allowed.bytesRead);
  allowed.reads = Limit(limits.reads, allowed.reads);
  allowed.bytesInflated = Limit(limits.bytesInflated, allowed.bytesInflated);
  allowed.steps = Limit(limits.steps, allowed.steps);
  allowed.memory = Limit(limits.memory, allowed.memory);
  allowed.keyRounds = Limit(limits.keyRounds, allowed.keyRounds);
  allowed.depth = Limit(limits.depth, allowed.depth);
  allowed.deadline = DeadlineIn(limits.milliseconds);
  return allowed;
}

uint32_t LimitNumber(WorkLimit limit) {
  switch (limit) {
    case WorkLimit::kNone:
    case WorkLimit::kCancelled:
      return kFiLimitNone;
    case WorkLimit::kBytesRead:
      return kFiLimitBytesRead;
    case WorkLimit::kReads:
      return kFiLimitReads;
    case WorkLimit::kBytesInflated:
      return kFiLimitBytesInflated;
    case WorkLimit::kSteps:
      return kFiLimitSteps;
    case WorkLimit::kMemory:
      return kFiLimitMemory;
    case WorkLimit::kKeyRounds:
      return kFiLimitKeyRounds;
    case WorkLimit::kDepth:
      return kFiLimitDepth;
    case WorkLimit::kDeadline:
      return kFiLimitTime;
  }
  return kFiLimitNone;
}

}  // namespace fi
