#include <cstring>

#include "api/driver.h"
#include "formatid/formatid.h"
#include "formatid/platform.h"
#include "platform/io.h"
#include "platform/no_throw.h"
#include "probes/encoded/encoded_text.h"
#include "stream/id_stream.h"

namespace {

// The library's number among the clients of the toolkit, and its bit in option 338482.
constexpr uint32_t kClient = 2;
constexpr uint32_t kClientBit = 4;

// UTInit's result when the process is initialised already.
constexpr uint32_t kAlreadyInitialised = 0x900;

// String resources of format names are numbered by the identifier with this bit set.
constexpr uint32_t kNameResource = 0x10000;

constexpr uint16_t kBeforeFirstId = 999;
constexpr uint16_t kEndOfIds = 9999;

// Names are served for this range only, although the walk goes further.
constexpr FormatId kFirstNamedId = 1000;
constexpr FormatId kLastNamedId = 5102;

// The identifier that a second look is offered for.
constexpr FormatId kEncodedText = 4050;

bool HasName(FormatId id, char* buffer, uint16_t size) {
  return UTGetString(id | kNameResource, buffer, size, 0) == 0;
}

uint16_t StatusOfOpen(int32_t result) {
  if (result == kIoNotFound) return kFiNotFound;
  if (result == kIoAccessDenied) return kFiAccessDenied;
  return kFiOpenFailed;
}

uint32_t Identify(IOHandle* handle, uint32_t flags, FormatId* idOut,
                  FIEvidence* evidence) noexcept {
  const fi::Answer answer = fi::NoThrow<fi::Answer>(
      {.status = FI_NO_STREAM}, [&] { return fi::IdentifyHandle(handle, flags); });
  if (idOut != nullptr) *idOut = answer.id;
  if (evidence != nullptr) *evidence = answer.evidence;
  return answer.status;
}

}  // namespace

uint32_t FIInit(void* /*ignored*/, void* a, void* b, void* c) noexcept {
  const uint32_t result = UTInit(kClient, a, b, c);
  if (UTOptionSet* set = UTGetGlobalOptionSet(); set != nullptr) {
    uint32_t clients = 0;
    uint32_t size = sizeof(clients);
    (void)UTGetOption(set, kUtOptionClients, &clients, &size);
    clients |= kClientBit;
    (void)UTSetOption(set, kUtOptionClients, &clients, sizeof(clients));
  }
  return result == kAlreadyInitialised ? 0 : result;
}

uint32_t FIDeInit(void* a, void* b, void* c) noexcept { return UTDeInit(a, b, c); }

uint16_t FIGetFirstId(uint16_t* cursor, uint16_t* idOut, char* nameBuffer,
                      uint16_t nameBufferSize) noexcept {
  *cursor = kBeforeFirstId;
  return FIGetNextId(cursor, idOut, nameBuffer, nameBufferSize);
}

// Deliberate: a call after the end goes on behind 9999 and wraps, so that the walk starts again.
uint16_t FIGetNextId(uint16_t* cursor, uint16_t* idOut, char* nameBuffer,
                     uint16_t nameBufferSize) noexcept {
  ++*cursor;
  while (!HasName(*cursor, nameBuffer, nameBufferSize) && *cursor != kEndOfIds) ++*cursor;
  *idOut = *cursor;
  return *cursor != kEndOfIds ? 1 : 0;
}

uint16_t FIGetIDString(FormatId id, char* nameBuffer, uint16_t nameBufferSize) noexcept {
  if (nameBuffer == nullptr || nameBufferSize == 0) return 0;
  if (id < kFirstNamedId || id > kLastNamedId) {
    nameBuffer[0] = '\0';
    return 0;
  }
  (void)HasName(id, nameBuffer, nameBufferSize);
  return static_cast<uint16_t>(std::strlen(nameBuffer));
}

uint16_t FIIdFile(uint32_t sourceType, const void* source, uint32_t flags,
                  FormatId* idOut) noexcept {
  if (idOut != nullptr) *idOut = 0;
  IOHandle* opened = nullptr;
  const int32_t result = IOOpen(&opened, sourceType, source, 1);
  if (result != kIoOk) return StatusOfOpen(result);
  const fi::io::OwnedHandle handle(opened);
  return static_cast<uint16_t>(FIIdHandle(opened, flags | kFiUseFlags, idOut));
}

uint16_t FIIdFileEx(uint32_t sourceType, const void* source, uint32_t flags, FormatId* idOut,
                    char* nameBuffer, uint16_t nameBufferSize) noexcept {
  FormatId id = 0;
  const uint16_t status = FIIdFile(sourceType, source, flags, &id);
  if (idOut != nullptr) *idOut = id;
  if (status == 0 && nameBuffer != nullptr) (void)HasName(id, nameBuffer, nameBufferSize);
  return status;
}

uint32_t FIIdHandle(IOHandle* handle, uint32_t flags, FormatId* idOut) noexcept {
  return Identify(handle, flags, idOut, nullptr);
}

uint32_t FIIdHandleEvidence(IOHandle* handle, uint32_t flags, FormatId* idOut,
                            FIEvidence* evidence) noexcept {
  return Identify(handle, flags, idOut, evidence);
}

FormatId FIIdSpecial(IOHandle* handle, FormatId id) noexcept {
  if (id != kEncodedText) return fi::kNoMatch;
  return fi::NoThrow<FormatId>(fi::kNoMatch, [&] {
    const fi::ScopedStream stream(handle);
    return stream ? fi::EncodedTextProbe(stream.get()) : fi::kNoMatch;
  });
}
