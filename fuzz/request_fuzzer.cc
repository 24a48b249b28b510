// FIIdentify over a source of callbacks and over known parts, against the same bytes in memory.
// Input: flags, the grain of the callback, the call from which on it fails and how, and the file.

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <stdexcept>
#include <vector>

#include "formatid/identify.h"

namespace {

void Require(bool condition) {
  if (!condition) std::abort();
}

struct Host {
  const uint8_t* data;
  uint64_t size;
  uint32_t grain;
  uint32_t faultyCall;  // from 1; 0: none
  uint8_t fault;
  uint32_t calls = 0;
};

int32_t ReadAt(void* context, uint64_t offset, void* buffer, uint32_t size, uint32_t* count) {
  auto* host = static_cast<Host*>(context);
  ++host->calls;
  if (host->faultyCall != 0 && host->calls >= host->faultyCall) {
    switch (host->fault % 5) {
      case 0:
        return 5;
      case 1:
        *count = size + 1;
        return 0;
      case 2:
        throw std::runtime_error("of the host");
      case 3:
        return kFiReadMissing;
      default:
        return 0;
    }
  }
  if (offset >= host->size) return 0;
  *count = static_cast<uint32_t>(std::min<uint64_t>({size, host->grain, host->size - offset}));
  std::memcpy(buffer, host->data + offset, *count);
  return 0;
}

FIResult Identify(const FISource& source, uint32_t flags) {
  FIRequest request = FI_REQUEST_INIT;
  request.flags = flags;
  request.source = source;
  FIResult result = FI_RESULT_INIT;
  Require(FIIdentify(&request, &result) == result.status);
  Require(result.status != kFiInvalidRequest && result.name != nullptr);
  return result;
}

void RequireSame(const FIResult& a, const FIResult& b) {
  Require(a.id == b.id && a.basis == b.basis && a.row == b.row && a.name == b.name);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size < 4) return 0;
  const uint32_t flags = data[0] & uint32_t{kFiEverything};
  Host host{data + 4, size - 4, 1 + uint32_t{data[1]} * 16, 0, data[3]};

  FISource source{};
  source.kind = kFiSourceMemory;
  source.data = host.data;
  source.size = host.size;
  const FIResult expected = Identify(source, flags);
  // A limit counts the reads of a source, whose sizes differ.
  if (expected.status == kFiLimitReached) return 0;

  source.kind = kFiSourceCallbacks;
  source.readAt = ReadAt;
  source.context = &host;
  RequireSame(Identify(source, flags), expected);
  source.size = FI_UNKNOWN_SIZE;
  RequireSame(Identify(source, flags), expected);
  host.faultyCall = host.calls + 1 + data[2];
  (void)Identify(source, flags);

  source.kind = kFiSourceParts;
  source.size = host.size;
  std::vector<FIPart> parts;
  for (;;) {
    source.parts = parts.data();
    source.partCount = static_cast<uint32_t>(parts.size());
    const FIResult result = Identify(source, flags);
    if (result.more == kFiMoreNone) {
      RequireSame(result, expected);
      return 0;
    }
    Require(result.more == kFiMoreBytes && result.wantedSize > 0);
    Require(result.wantedOffset < host.size &&
            result.wantedSize <= host.size - result.wantedOffset);
    for (const FIPart& part : parts) {
      Require(result.wantedOffset < part.offset || result.wantedOffset - part.offset >= part.size);
    }
    parts.push_back({result.wantedOffset, result.wantedSize, host.data + result.wantedOffset});
  }
}
