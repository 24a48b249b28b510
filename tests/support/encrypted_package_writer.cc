#include "tests/support/encrypted_package_writer.h"

#include <openssl/evp.h>
#include <openssl/hmac.h>

#include <memory>
#include <stdexcept>

namespace fi::testing {
namespace {

constexpr size_t kBlock = 16;
constexpr size_t kSegment = 4096;

void Check(bool condition) {
  if (!condition) throw std::runtime_error("libcrypto failed");
}

const unsigned char* Data(std::string_view text) {
  return reinterpret_cast<const unsigned char*>(text.data());
}
unsigned char* Data(std::string& text) { return reinterpret_cast<unsigned char*>(text.data()); }

std::string Number(uint64_t value, size_t size) {
  std::string bytes;
  for (size_t i = 0; i < size; ++i) bytes += static_cast<char>(value >> (8 * i) & 0xFF);
  return bytes;
}

std::string Utf16(std::u16string_view text) {
  std::string bytes;
  for (const char16_t unit : text) bytes += Number(unit, 2);
  return bytes;
}

// Bytes that differ from one `seed` to the next.
std::string Fixed(size_t size, char seed) {
  std::string bytes;
  for (size_t i = 0; i < size; ++i)
    bytes += static_cast<char>(seed + static_cast<char>(7 * i % 97));
  return bytes;
}

std::string Sized(std::string bytes, size_t size, char fill) {
  bytes.resize(size, fill);
  return bytes;
}

const EVP_MD* Hash(const std::string& name) { return EVP_get_digestbyname(name.c_str()); }

size_t HashSize(const std::string& name) {
  return static_cast<size_t>(EVP_MD_get_size(Hash(name)));
}

std::string Digest(const std::string& name, const std::string& bytes) {
  std::string value(HashSize(name), '\0');
  Check(EVP_Digest(Data(bytes), bytes.size(), Data(value), nullptr, Hash(name), nullptr) == 1);
  return value;
}

std::string SpunDigest(const std::string& name, const std::string& first, uint32_t spins) {
  std::string value = Digest(name, first);
  for (uint32_t round = 0; round < spins; ++round) {
    std::string counted = Number(round, 4);
    counted += value;
    value = Digest(name, counted);
  }
  return value;
}

// Fills the last block up. `iv` is empty for ECB mode.
std::string Encrypt(const std::string& key, const std::string& iv, std::string plaintext) {
  const std::string name = "AES-" + std::to_string(key.size() * 8) + (iv.empty() ? "-ECB" : "-CBC");
  const std::unique_ptr<EVP_CIPHER_CTX, decltype(&EVP_CIPHER_CTX_free)> context(
      EVP_CIPHER_CTX_new(), EVP_CIPHER_CTX_free);
  plaintext.resize((plaintext.size() + kBlock - 1) / kBlock * kBlock);
  std::string out(plaintext.size() + kBlock, '\0');
  int size = 0;
  Check(EVP_EncryptInit_ex(context.get(), EVP_get_cipherbyname(name.c_str()), nullptr, Data(key),
                           iv.empty() ? nullptr : Data(iv)) == 1 &&
        EVP_CIPHER_CTX_set_padding(context.get(), 0) == 1 &&
        EVP_EncryptUpdate(context.get(), Data(out), &size, Data(plaintext),
                          static_cast<int>(plaintext.size())) == 1);
  return Sized(out, static_cast<size_t>(size), 0);
}

std::string Base64(const std::string& bytes) {
  std::string text(4 * ((bytes.size() + 2) / 3) + 1, '\0');
  const int size = EVP_EncodeBlock(Data(text), Data(bytes), static_cast<int>(bytes.size()));
  return Sized(text, static_cast<size_t>(size), 0);
}

std::string Attribute(const char* name, const std::string& value) {
  return std::string(" ") + name + "=\"" + value + "\"";
}

std::string CipherAttributes(const std::string& hash, size_t keyBits, const std::string& salt) {
  return Attribute("saltSize", std::to_string(salt.size())) + Attribute("blockSize", "16") +
         Attribute("keyBits", std::to_string(keyBits)) +
         Attribute("hashSize", std::to_string(HashSize(hash))) +
         Attribute("cipherAlgorithm", "AES") + Attribute("cipherChaining", "ChainingModeCBC") +
         Attribute("hashAlgorithm", hash) + Attribute("saltValue", Base64(salt));
}

std::string StandardKey(const StandardSettings& settings, const std::string& salt) {
  const std::string spun = SpunDigest("SHA1", salt + Utf16(settings.password), settings.spins);
  const std::string last = Digest("SHA1", spun + Number(0, 4));
  std::string key;
  for (const char fill : {'\x36', '\x5C'}) {
    std::string block(64, fill);
    for (size_t i = 0; i < last.size(); ++i) block[i] = static_cast<char>(fill ^ last[i]);
    key += Digest("SHA1", block);
  }
  return key.substr(0, settings.keyBits / 8);
}

struct AgileSecrets {
  std::string packageSalt;
  std::string passwordSalt;
  std::string packageKey;
};

std::string EncryptedKeyElement(const AgileSettings& settings, const AgileSecrets& secrets) {
  const std::string& hash = settings.passwordHash;
  const std::string& salt = secrets.passwordSalt;
  const std::string spun = SpunDigest(hash, salt + Utf16(settings.password), settings.spins);
  const auto encrypted = [&](const char* name, const char* blockKey, const std::string& value) {
    const std::string key =
        Sized(Digest(hash, spun + blockKey), settings.passwordKeyBits / 8, '\x36');
    return Attribute(name, Base64(Encrypt(key, Sized(salt, kBlock, '\x36'), value)));
  };
  const std::string verifier = Fixed(settings.passwordSaltSize, 'v');
  return "<p:encryptedKey" + Attribute("spinCount", std::to_string(settings.spins)) +
         CipherAttributes(hash, settings.passwordKeyBits, salt) +
         encrypted("encryptedVerifierHashInput", "\xFE\xA7\xD2\x76\x3B\x4B\x9E\x79", verifier) +
         encrypted("encryptedVerifierHashValue", "\xD7\xAA\x0F\x6D\x30\x61\x34\x4E",
                   Digest(hash, verifier)) +
         encrypted("encryptedKeyValue", "\x14\x6E\x0B\xE7\xAB\xAC\xD0\xD6", secrets.packageKey) +
         "/>";
}

std::string IntegrityElement(const AgileSettings& settings, const AgileSecrets& secrets,
                             const std::string& package) {
  const std::string key = Fixed(HashSize(settings.hash), 'h');
  std::string value(key.size(), '\0');
  Check(HMAC(Hash(settings.hash), key.data(), static_cast<int>(key.size()), Data(package),
             package.size(), Data(value), nullptr) != nullptr);
  const auto encrypted = [&](const char* name, const char* blockKey, const std::string& secret) {
    const std::string iv = Digest(settings.hash, secrets.packageSalt + blockKey).substr(0, kBlock);
    return Attribute(name, Base64(Encrypt(secrets.packageKey, iv, secret)));
  };
  return "<dataIntegrity" + encrypted("encryptedHmacKey", "\x5F\xB2\xAD\x01\x0C\xB9\xE1\xF6", key) +
         encrypted("encryptedHmacValue", "\xA0\x67\x7F\x02\xB2\x2C\x84\x33", value) + "/>";
}

}  // namespace

EncryptedPackage WriteStandard(std::string_view plaintext, const StandardSettings& settings) {
  const std::string salt = Fixed(16, 's');
  const std::string key = StandardKey(settings, salt);
  const std::string verifier = Fixed(16, 'v');
  const uint64_t algorithm = 0x660E + (settings.keyBits - 128) / 64;
  const std::string header = Number(0x24, 4) + Number(0, 4) + Number(algorithm, 4) +
                             Number(0x8004, 4) + Number(settings.keyBits, 4) + Number(0x18, 4) +
                             Number(0, 8) + Utf16(u"A provider") + Number(0, 2);
  EncryptedPackage result;
  result.info = Number(4, 2) + Number(2, 2) + Number(0x24, 4) + Number(header.size(), 4) + header +
                Number(16, 4) + salt + Encrypt(key, "", verifier) + Number(20, 4) +
                Encrypt(key, "", Digest("SHA1", verifier));
  result.package = Number(plaintext.size(), 8) + Encrypt(key, "", std::string(plaintext));
  return result;
}

EncryptedPackage WriteAgile(std::string_view plaintext, const AgileSettings& settings) {
  const AgileSecrets secrets{Fixed(settings.saltSize, 's'), Fixed(settings.passwordSaltSize, 't'),
                             Fixed(settings.keyBits / 8, 'k')};
  EncryptedPackage result;
  result.package = Number(plaintext.size(), 8);
  for (size_t offset = 0; offset < plaintext.size(); offset += kSegment) {
    const std::string iv =
        Digest(settings.hash, secrets.packageSalt + Number(offset / kSegment, 4)).substr(0, kBlock);
    const std::string segment(plaintext.substr(offset, kSegment));
    result.package += Encrypt(secrets.packageKey, iv, segment);
  }
  result.info =
      Number(4, 2) + Number(4, 2) + Number(0x40, 4) +
      "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\r\n"
      "<encryption xmlns=\"http://schemas.microsoft.com/office/2006/encryption\""
      " xmlns:p=\"http://schemas.microsoft.com/office/2006/keyEncryptor/password\">" +
      "<keyData" + CipherAttributes(settings.hash, settings.keyBits, secrets.packageSalt) + "/>" +
      (settings.integrity ? IntegrityElement(settings, secrets, result.package) : "") +
      "<keyEncryptors><keyEncryptor"
      " uri=\"http://schemas.microsoft.com/office/2006/keyEncryptor/password\">" +
      EncryptedKeyElement(settings, secrets) + "</keyEncryptor></keyEncryptors></encryption>";
  return result;
}

EncryptedIwork WriteIwork(const std::string& plaintext, const IworkSettings& settings) {
  const std::string salt = Fixed(16, 's');
  const std::string iv = Fixed(kBlock, 'i');
  const std::string random = Fixed(32, 'r');
  const auto size = static_cast<int>(settings.password.size());
  std::string key(16, '\0');
  std::string mac(20, '\0');
  Check(PKCS5_PBKDF2_HMAC_SHA1(settings.password.data(), size, Data(salt), 16,
                               static_cast<int>(settings.rounds), 16, Data(key)) == 1 &&
        HMAC(Hash("SHA1"), settings.password.data(), size, Data(plaintext), plaintext.size(),
             Data(mac), nullptr) != nullptr);
  const size_t padding = kBlock - plaintext.size() % kBlock;
  const char fill = settings.padding != 0 ? settings.padding : static_cast<char>(padding);
  const std::string padded = Fixed(kBlock, 'x') + plaintext + std::string(padding, fill);
  EncryptedIwork result;
  result.verifier = Number(2, 2) + Number(1, 2) + Number(settings.rounds, 4) + salt + iv +
                    Encrypt(key, iv, random + Digest("SHA256", random));
  result.member = iv + Encrypt(key, iv, padded) + mac;
  return result;
}

}  // namespace fi::testing
