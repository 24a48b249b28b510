// The descriptor names one cipher for the package (keyData) and one for each way to its key
// (keyEncryptor); of these only the password's counts. All that matters stands in attributes:
//
//   <encryption>
//     <keyData saltSize blockSize keyBits hashSize cipherAlgorithm cipherChaining hashAlgorithm
//              saltValue/>
//     <dataIntegrity encryptedHmacKey encryptedHmacValue/>
//     <keyEncryptors>
//       <keyEncryptor uri="..."><p:encryptedKey (those of keyData) spinCount
//         encryptedVerifierHashInput encryptedVerifierHashValue encryptedKeyValue/></keyEncryptor>
#include <expat.h>

#include <algorithm>
#include <charconv>
#include <memory>
#include <optional>
#include <string_view>
#include <type_traits>

#include "toolkit/crypto/encryption_info.h"

namespace fi::crypto {
namespace {

constexpr std::string_view kPasswordUri =
    "http://schemas.microsoft.com/office/2006/keyEncryptor/password";

// Without the prefix: there are writers who leave it out where it ought to stand, and the uri of
// the key encryptor tells the same as its namespace.
std::string_view LocalName(std::string_view name) { return name.substr(name.rfind(':') + 1); }

struct ParserFree {
  void operator()(XML_Parser parser) const { XML_ParserFree(parser); }
};
using OwnedParser = std::unique_ptr<std::remove_pointer_t<XML_Parser>, ParserFree>;

class Attributes {
 public:
  explicit Attributes(const XML_Char** list) : list_(list) {}

  // Empty when there is none of that name.
  std::string_view Get(std::string_view name) const {
    for (const XML_Char** entry = list_; *entry != nullptr; entry += 2) {
      if (name == entry[0]) return entry[1];
    }
    return {};
  }

  std::optional<uint32_t> Number(std::string_view name) const {
    const std::string_view text = Get(name);
    uint32_t value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
    return value;
  }

  bool Base64(std::string_view name, Field* field) const {
    return DecodeBase64(Get(name), field->bytes.data(), field->bytes.size(), &field->size);
  }

 private:
  const XML_Char** const list_;
};

std::optional<HashAlgorithm> HashByName(std::string_view name) {
  if (name == "SHA1" || name == "SHA-1") return HashAlgorithm::kSha1;
  if (name == "SHA256" || name == "SHA-256") return HashAlgorithm::kSha256;
  if (name == "SHA384" || name == "SHA-384") return HashAlgorithm::kSha384;
  if (name == "SHA512" || name == "SHA-512") return HashAlgorithm::kSha512;
  return std::nullopt;
}

bool ReadCipher(const Attributes& attributes, AgileCipher* cipher) {
  if (attributes.Get("cipherAlgorithm") != "AES") return false;
  if (attributes.Get("cipherChaining") != "ChainingModeCBC") return false;
  if (attributes.Number("blockSize") != kAesBlock) return false;
  const uint32_t keyBits = attributes.Number("keyBits").value_or(0);
  if (keyBits != 128 && keyBits != 192 && keyBits != 256) return false;
  const std::optional<HashAlgorithm> hash = HashByName(attributes.Get("hashAlgorithm"));
  if (!hash.has_value() || attributes.Number("hashSize") != HashSize(*hash)) return false;
  if (!attributes.Base64("saltValue", &cipher->salt)) return false;
  if (attributes.Number("saltSize") != cipher->salt.size) return false;
  cipher->keySize = keyBits / 8;
  cipher->hash = *hash;
  return true;
}

// Something encrypted: whole blocks that hold `size` bytes.
bool Holds(const Field& field, size_t size) {
  return field.size >= size && field.size % kAesBlock == 0;
}

class DescriptorReader {
 public:
  DescriptorReader(const DecryptionLimits& limits, AgileInfo* info)
      : limits_(limits), info_(info) {}

  bool Read(Bytes xml) {
    if (Loaded(limits_.work, LoadLibCrypto()) == nullptr) return false;
    const OwnedParser parser(XML_ParserCreate(nullptr));
    if (parser == nullptr) return CryptoFailed(limits_);
    parser_ = parser.get();
    XML_SetUserData(parser_, this);
    XML_SetStartElementHandler(parser_, OnElement);
    XML_SetStartDoctypeDeclHandler(parser_, OnDoctype);
    const char* text = static_cast<const char*>(static_cast<const void*>(xml.data()));
    const int size = static_cast<int>(xml.size());
    if (XML_Parse(parser_, text, size, XML_TRUE) != XML_STATUS_OK) {
      return XML_GetErrorCode(parser_) == XML_ERROR_NO_MEMORY && CryptoFailed(limits_);
    }
    return hasKeyData_ && hasPasswordKey_ && Fits();
  }

 private:
  static void OnElement(void* self, const XML_Char* name, const XML_Char** attributes) noexcept {
    auto* reader = static_cast<DescriptorReader*>(self);
    if (!reader->Take(LocalName(name), Attributes(attributes))) reader->Stop();
  }

  // No descriptor has one; without it there are no entities to expand.
  static void OnDoctype(void* self, const XML_Char*, const XML_Char*, const XML_Char*,
                        int) noexcept {
    static_cast<DescriptorReader*>(self)->Stop();
  }

  void Stop() { XML_StopParser(parser_, XML_FALSE); }

  bool Take(std::string_view name, const Attributes& attributes) {
    if (name == "keyData") return TakeKeyData(attributes);
    if (name == "dataIntegrity") {
      info_->hasIntegrity = true;
      return attributes.Base64("encryptedHmacKey", &info_->encryptedHmacKey) &&
             attributes.Base64("encryptedHmacValue", &info_->encryptedHmacValue);
    }
    if (name == "keyEncryptor") isPassword_ = attributes.Get("uri") == kPasswordUri;
    return name != "encryptedKey" || !isPassword_ || TakePasswordKey(attributes);
  }

  bool TakeKeyData(const Attributes& attributes) {
    if (hasKeyData_) return false;
    hasKeyData_ = true;
    return ReadCipher(attributes, &info_->package);
  }

  bool TakePasswordKey(const Attributes& attributes) {
    if (hasPasswordKey_) return false;
    hasPasswordKey_ = true;
    const std::optional<uint32_t> spins = attributes.Number("spinCount");
    if (!spins.has_value() || *spins > limits_.mostSpins) return false;
    info_->spinCount = *spins;
    return ReadCipher(attributes, &info_->password) &&
           attributes.Base64("encryptedVerifierHashInput", &info_->encryptedVerifier) &&
           attributes.Base64("encryptedVerifierHashValue", &info_->encryptedVerifierHash) &&
           attributes.Base64("encryptedKeyValue", &info_->encryptedKey);
  }

  // The two elements come in any order, so that this is asked at the end.
  bool Fits() const {
    const size_t packageHash = HashSize(info_->package.hash);
    if (info_->hasIntegrity && (!Holds(info_->encryptedHmacKey, packageHash) ||
                                !Holds(info_->encryptedHmacValue, packageHash))) {
      return false;
    }
    return Holds(info_->encryptedVerifier, info_->password.salt.size) &&
           Holds(info_->encryptedVerifierHash, HashSize(info_->password.hash)) &&
           Holds(info_->encryptedKey, info_->package.keySize);
  }

  const DecryptionLimits& limits_;
  AgileInfo* const info_;
  XML_Parser parser_ = nullptr;
  bool isPassword_ = false;  // the key encryptor that was last met
  bool hasKeyData_ = false;
  bool hasPasswordKey_ = false;
};

}  // namespace

bool ReadAgileDescriptor(Bytes xml, const DecryptionLimits& limits, AgileInfo* info) {
  return DescriptorReader(limits, info).Read(xml);
}

}  // namespace fi::crypto
