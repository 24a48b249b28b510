// Writes the two streams of an encrypted Office package, and members of encrypted iWork packages.
#ifndef FI_TESTS_SUPPORT_ENCRYPTED_PACKAGE_WRITER_H_
#define FI_TESTS_SUPPORT_ENCRYPTED_PACKAGE_WRITER_H_

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace fi::testing {

struct EncryptedPackage {
  std::string info;     // "EncryptionInfo"
  std::string package;  // "EncryptedPackage"
};

struct StandardSettings {
  size_t keyBits = 128;
  uint32_t spins = 50'000;
  std::u16string password = u"secret";
};

// Where two values stand, the first is the package's and the second the password's.
struct AgileSettings {
  size_t keyBits = 256;
  size_t passwordKeyBits = 256;
  std::string hash = "SHA512";
  std::string passwordHash = "SHA512";
  size_t saltSize = 16;
  size_t passwordSaltSize = 16;
  uint32_t spins = 1000;
  bool integrity = true;
  std::u16string password = u"secret";
};

struct EncryptedIwork {
  std::string verifier;  // ".iwpv2"
  std::string member;
};

struct IworkSettings {
  uint32_t rounds = 1000;
  std::string password = "secret";
  char padding = 0;  // in place of the right number
};

EncryptedIwork WriteIwork(const std::string& plaintext, const IworkSettings& settings);
EncryptedPackage WriteStandard(std::string_view plaintext, const StandardSettings& settings);
EncryptedPackage WriteAgile(std::string_view plaintext, const AgileSettings& settings);

}  // namespace fi::testing

#endif  // FI_TESTS_SUPPORT_ENCRYPTED_PACKAGE_WRITER_H_
