// Decryption of password-protected Office Open XML packages (the stream "EncryptedPackage" of a
// compound file).
#ifndef FI_PLATFORM_DECRYPTION_H_
#define FI_PLATFORM_DECRYPTION_H_

#include <cstdint>

#include "formatid/io.h"
#include "formatid/platform.h"

extern "C" {

// Options of a decryption. Reserved: all zero behind the size.
struct O12Options {
  uint32_t size;  // of this record: 48 bytes
  uint32_t reserved[11];
};

// Where the password comes from.
struct O12PasswordSource {
  uint32_t size;                // of this record: 32 bytes
  FIPasswordCallback callback;  // asked for each try; never null
  IOHandle* document;           // handed on in the request; borrowed
  uintptr_t context;            // the first of the callback's two last arguments
};

static_assert(sizeof(O12Options) == 48);
static_assert(sizeof(O12PasswordSource) == 32 || sizeof(void*) != 8);

// Opens a decrypted view of the package in the compound file `document`, which stays the caller's
// and must outlive the view. The two arguments behind it are reserved and null. On success
// `*package` is a handle on the decrypted package; `*first` and `*second` are handles that it
// needs, or null. The caller closes those that are not null, the package first, whatever the
// status.
//
// The callback is asked for a password up to three times; an empty answer counts as a password.
// Returns 0; 11 (kFiPasswordNeeded) when no password was given; 3328 (kFiWrongPassword) when none
// that was given fits; 14 (kFiDecryptionFailed) when the container is damaged, its scheme is not
// known, or views are nested deeper than four.
int16_t O12InitDecryption(IOHandle* document, void* reserved1, void* reserved2,
                          const O12Options* options, const O12PasswordSource* source,
                          IOHandle** first, IOHandle** second, IOHandle** package) noexcept;

}  // extern "C"

#endif  // FI_PLATFORM_DECRYPTION_H_
