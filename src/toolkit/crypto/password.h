// The password of a package: asked from the host in UTF-8, hashed in UTF-16LE.
#ifndef FI_TOOLKIT_CRYPTO_PASSWORD_H_
#define FI_TOOLKIT_CRYPTO_PASSWORD_H_

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "platform/decryption.h"
#include "toolkit/crypto/secret_bytes.h"

namespace fi::crypto {

// Room for the answer of the host with its NUL: 255 characters take up to 765 bytes.
constexpr uint32_t kPasswordCapacity = 1024;

// 16-bit units that Office takes.
constexpr size_t kMaxPasswordUnits = 255;

using Password = SecretBytes<2 * kMaxPasswordUnits>;

enum class Asked {
  kGiven,
  kDeclined,
  kUnusable,  // no valid UTF-8, or longer than any password: it cannot fit
};

// Asks once. `attempt` is the number of times that was asked before.
Asked AskPassword(const O12PasswordSource& source, uint32_t attempt, Password* password);

// False when `text` is not valid UTF-8 or has more than kMaxPasswordUnits units.
bool EncodePassword(std::string_view text, Password* password);

}  // namespace fi::crypto

#endif  // FI_TOOLKIT_CRYPTO_PASSWORD_H_
