// Statuses, bases and limits in words, and the version of the library.

#include "formatid/identify.h"

namespace {

#define FI_TEXT_OF(number) #number
#define FI_TEXT(number) FI_TEXT_OF(number)

}  // namespace

const char* FIVersion(void) noexcept {
  return FI_TEXT(FI_VERSION_MAJOR) "." FI_TEXT(FI_VERSION_MINOR) "." FI_TEXT(FI_VERSION_PATCH);
}

uint32_t FIVersionNumber(void) noexcept { return FI_VERSION_NUMBER; }

const char* FIStatusText(uint32_t status) noexcept {
  switch (status) {
    case kFiOk:
      return "identified";
    case kFiAccessDenied:
      return "access denied";
    case kFiPasswordNeeded:
      return "password needed";
    case kFiDecryptionFailed:
      return "encryption damaged or of an unknown scheme";
    case kFiUnknownClass:
      return "class identifier not known";
    case kFiNotFound:
      return "not found";
    case kFiWrongPassword:
      return "no password fits";
    case kFiNotOpened:
      return "not opened";
    case kFiReadFailed:
      return "read failed";
    case kFiLimitReached:
      return "limit reached";
    case kFiCancelled:
      return "cancelled";
    case kFiNoMemory:
      return "out of memory";
    case kFiInvalidRequest:
      return "invalid request";
    case kFiOpenFailed:
    case FI_NO_STREAM:
      return "not opened, or no stream over the handle";
    default:
      return "unknown";
  }
}

const char* FIBasisText(uint16_t basis) noexcept {
  switch (basis & ~uint32_t{kFiBasisCorrection}) {
    case kFiBasisNone:
      return "none";
    case kFiBasisSignature:
      return "signature";
    case kFiBasisClass:
      return "class";
    case kFiBasisNamespace:
      return "namespace";
    case kFiBasisExtension:
      return "extension";
    case kFiBasisContent:
      return "content";
    case kFiBasisText:
      return "text";
    default:
      return "unknown";
  }
}

const char* FILimitText(uint32_t limit) noexcept {
  switch (limit) {
    case kFiLimitNone:
      return "none";
    case kFiLimitBytesRead:
      return "bytes read";
    case kFiLimitReads:
      return "reads";
    case kFiLimitBytesInflated:
      return "bytes unpacked";
    case kFiLimitSteps:
      return "steps inside the file";
    case kFiLimitMemory:
      return "memory";
    case kFiLimitKeyRounds:
      return "rounds of key derivation";
    case kFiLimitDepth:
      return "depth of containers";
    case kFiLimitTime:
      return "time";
    default:
      return "unknown";
  }
}
