// iWork packages of the archive generation: decryption of their members, and the chunks of an
// archive.
#ifndef FI_PLATFORM_IWORK_H_
#define FI_PLATFORM_IWORK_H_

#include <cstdint>

#include "formatid/io.h"
#include "formatid/platform.h"

extern "C" {

// What is known of an encrypted package once a password has fitted: secrets, wiped with it.
struct IworksContext;

struct IworksPackageSource {
  uint32_t size;      // of this record: 32 bytes
  IOHandle* package;  // the package view; borrowed, and handed on in the request for a password
  IworksContext* context;     // null; set by IworksInitDecryption
  uintptr_t passwordContext;  // the first of the callback's two last arguments
};

struct IworksRequest {
  uint32_t size;                // of this record: 48 bytes
  FIPasswordCallback callback;  // asked for each try; never null
  IworksPackageSource source;
};

static_assert(sizeof(IworksPackageSource) == 32 || sizeof(void*) != 8);
static_assert(sizeof(IworksRequest) == 48 || sizeof(void*) != 8);

// Prepares the decryption of a package by its password verifier, the member ".iwpv2". The callback
// is asked for a password up to three times; an empty answer counts as a password.
// Returns 0, with the context in the request, which the caller releases; 11 (kFiPasswordNeeded)
// when no password was given; 3328 (kFiWrongPassword) when none that was given fits; 14
// (kFiDecryptionFailed) when the verifier is damaged or its scheme is not known.
int16_t IworksInitDecryption(IworksRequest* request) noexcept;

// A handle on the decrypted bytes of a member, which is read whole and stays the caller's; null
// when it is damaged or too large. Neither the member nor the context is used by the handle.
// Decrypted bytes are wiped when it is closed.
IOHandle* IworksSetDecryptedTempFile(IOHandle* member, const IworksContext* context) noexcept;

// Wipes and releases the context; null is left alone.
void IworksEndDecryption(IworksContext* context) noexcept;

// A window on the content of an archive: what one chunk holds. Zeroed before its first use.
struct FUTBuffer {
  uint8_t* start;
  uint32_t length;
  uint32_t capacity;
  uint32_t total;     // bytes of all chunks so far
  uint64_t unwanted;  // bytes that come next and that nobody looks at; set by the caller
};

// Results of FUTDecompSnappyToBuf beside 0.
enum {
  kFutEndOfData = -9,
  kFutDamaged = -1,  // a damaged chunk, one of another kind, more than an archive may hold, no
                     // memory, or no module to decompress with
};

// Bytes of the content of an archive. That of a document with hundreds of pages has some MB.
constexpr uint32_t kFutMostBytes = uint32_t{64} * 1024 * 1024;

// Decompresses the chunk at the position of `archive` to the buffer, in place of the one before. A
// chunk of bytes that are all unwanted is checked, and leaves the buffer empty. Returns 0 when it
// did, kFutEndOfData where the data ends instead of a chunk, kFutDamaged otherwise.
int32_t FUTDecompSnappyToBuf(IOHandle* archive, FUTBuffer* buffer) noexcept;

// Wipes and frees what the buffer holds.
void FUTFreeBuf(FUTBuffer* buffer) noexcept;

}  // extern "C"

#endif  // FI_PLATFORM_IWORK_H_
