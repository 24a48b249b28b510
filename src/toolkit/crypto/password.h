// The password of a package: asked from the host in UTF-8. Office hashes it in UTF-16LE.
#ifndef FI_TOOLKIT_CRYPTO_PASSWORD_H_
#define FI_TOOLKIT_CRYPTO_PASSWORD_H_

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "formatid/formatid.h"
#include "formatid/platform.h"
#include "toolkit/crypto/limits.h"
#include "toolkit/openssl/secret_bytes.h"

namespace fi::crypto {

// Room for the answer of the host with its NUL: 255 characters take up to 765 bytes.
constexpr uint32_t kPasswordCapacity = 1024;

// 16-bit units that Office takes.
constexpr size_t kMaxPasswordUnits = 255;

using Password = SecretBytes<2 * kMaxPasswordUnits>;

using PasswordText = SecretBytes<kPasswordCapacity>;

enum class Asked {
  kGiven,
  kDeclined,
  kUnusable,  // longer than any password: it cannot fit
};

// Whom to ask, and for what.
struct PasswordSource {
  FIPasswordCallback callback;
  uintptr_t context;   // the first of the callback's two last arguments
  IOHandle* document;  // borrowed
};

// Asks once for a password, in UTF-8. `attempt` is the number of times that was asked before.
Asked AskPassword(const PasswordSource& source, uint32_t attempt, PasswordText* password);

enum class Unlocked {
  kYes,
  kWrongPassword,
  kFailed,  // not the password's fault: an algorithm is not to be had, or memory ran out
};

// Asks for passwords until one fits, kMaxTries times at most. `unlock` tries a password and returns
// the result. Returns 0 or the status of the decryption.
template <class Unlock>
uint32_t UnlockWithPassword(const PasswordSource& source, Unlock&& unlock) {
  for (uint32_t attempt = 0; attempt < kMaxTries; ++attempt) {
    PasswordText password;
    const Asked asked = AskPassword(source, attempt, &password);
    if (asked == Asked::kDeclined) return attempt == 0 ? kFiPasswordNeeded : kFiWrongPassword;
    if (asked == Asked::kUnusable) continue;
    const Unlocked unlocked = unlock(password.view());
    if (unlocked == Unlocked::kYes) return kFiOk;
    if (unlocked == Unlocked::kFailed) return kFiDecryptionFailed;
  }
  return kFiWrongPassword;
}

// False when `text` is not valid UTF-8 or has more than kMaxPasswordUnits units.
bool EncodePassword(std::string_view text, Password* password);

}  // namespace fi::crypto

#endif  // FI_TOOLKIT_CRYPTO_PASSWORD_H_
