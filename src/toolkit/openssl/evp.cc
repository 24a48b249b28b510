#include "toolkit/openssl/evp.h"

#include <algorithm>
#include <array>
#include <climits>

namespace fi::crypto {
namespace {

// The names by which libcrypto knows the algorithm.
const char* NameOf(HashAlgorithm algorithm) {
  switch (algorithm) {
    case HashAlgorithm::kSha1:
      return "SHA1";
    case HashAlgorithm::kSha256:
      return "SHA256";
    case HashAlgorithm::kSha384:
      return "SHA384";
    case HashAlgorithm::kSha512:
      break;
  }
  return "SHA512";
}

const char* NameOf(AesMode mode, size_t keySize) {
  const bool ecb = mode == AesMode::kEcb;
  switch (keySize) {
    case 16:
      return ecb ? "AES-128-ECB" : "AES-128-CBC";
    case 24:
      return ecb ? "AES-192-ECB" : "AES-192-CBC";
    case 32:
      return ecb ? "AES-256-ECB" : "AES-256-CBC";
    default:
      return nullptr;
  }
}

// Characters of base64 that are looked at. The longest value that anyone asks for has 64 bytes.
constexpr size_t kMaxBase64 = 256;

}  // namespace

size_t HashSize(HashAlgorithm algorithm) {
  switch (algorithm) {
    case HashAlgorithm::kSha1:
      return 20;
    case HashAlgorithm::kSha256:
      return 32;
    case HashAlgorithm::kSha384:
      return 48;
    case HashAlgorithm::kSha512:
      break;
  }
  return 64;
}

ErrorMark::ErrorMark() : lib_(LoadLibCrypto()) {
  if (lib_ != nullptr) (void)lib_->ERR_set_mark();
}

ErrorMark::~ErrorMark() {
  if (lib_ != nullptr) (void)lib_->ERR_pop_to_mark();
}

Hasher::Hasher(HashAlgorithm algorithm) : lib_(LoadLibCrypto()) {
  if (lib_ == nullptr) return;
  digest_ = lib_->EVP_MD_fetch(lib_->context, NameOf(algorithm), nullptr);
  context_ = lib_->EVP_MD_CTX_new();
}

Hasher::~Hasher() {
  if (lib_ == nullptr) return;
  lib_->EVP_MD_CTX_free(context_);
  lib_->EVP_MD_free(digest_);
}

bool Hasher::Hash(std::initializer_list<Bytes> parts, HashValue* value) {
  if (digest_ == nullptr || context_ == nullptr) return false;
  if (lib_->EVP_DigestInit_ex(context_, digest_, nullptr) != 1) return false;
  for (const Bytes part : parts) {
    if (lib_->EVP_DigestUpdate(context_, part.data(), part.size()) != 1) return false;
  }
  unsigned int size = 0;
  if (lib_->EVP_DigestFinal_ex(context_, value->data(), &size) != 1) return false;
  value->SetSize(size);
  return true;
}

AesDecryptor::AesDecryptor(AesMode mode, Bytes key) : lib_(LoadLibCrypto()), mode_(mode) {
  const char* name = NameOf(mode, key.size());
  if (lib_ == nullptr || name == nullptr) return;
  cipher_ = lib_->EVP_CIPHER_fetch(lib_->context, name, nullptr);
  context_ = lib_->EVP_CIPHER_CTX_new();
  if (cipher_ == nullptr || context_ == nullptr) return;
  ready_ = lib_->EVP_DecryptInit_ex(context_, cipher_, nullptr, key.data(), nullptr) == 1;
}

AesDecryptor::~AesDecryptor() {
  if (lib_ == nullptr) return;
  lib_->EVP_CIPHER_CTX_free(context_);
  lib_->EVP_CIPHER_free(cipher_);
}

bool AesDecryptor::Decrypt(Bytes iv, Bytes in, uint8_t* out) {
  if (!ready_ || in.size() % kAesBlock != 0 || in.size() > INT_MAX) return false;
  const uint8_t* start = nullptr;
  if (mode_ == AesMode::kCbc) {
    if (iv.size() != kAesBlock) return false;
    start = iv.data();
  }
  // Without a key the one that is set stays, with a fresh chain.
  if (lib_->EVP_DecryptInit_ex(context_, nullptr, nullptr, nullptr, start) != 1) return false;
  if (lib_->EVP_CIPHER_CTX_set_padding(context_, 0) != 1) return false;
  int stored = 0;
  const int size = static_cast<int>(in.size());
  return lib_->EVP_DecryptUpdate(context_, out, &stored, in.data(), size) == 1 && stored == size;
}

Hmac::Hmac(HashAlgorithm algorithm, Bytes key) : lib_(LoadLibCrypto()) {
  if (lib_ == nullptr) return;
  mac_ = lib_->EVP_MAC_fetch(lib_->context, "HMAC", nullptr);
  if (mac_ == nullptr) return;
  context_ = lib_->EVP_MAC_CTX_new(mac_);
  if (context_ == nullptr) return;
  // The parameter wants a pointer to something that it could change.
  std::array<char, 8> digest{};
  std::string_view(NameOf(algorithm)).copy(digest.data(), digest.size() - 1);
  const OSSL_PARAM parameters[] = {
      lib_->OSSL_PARAM_construct_utf8_string(OSSL_MAC_PARAM_DIGEST, digest.data(), 0),
      lib_->OSSL_PARAM_construct_end()};
  ready_ = lib_->EVP_MAC_init(context_, key.data(), key.size(), parameters) == 1;
}

Hmac::~Hmac() {
  if (lib_ == nullptr) return;
  lib_->EVP_MAC_CTX_free(context_);
  lib_->EVP_MAC_free(mac_);
}

bool Hmac::Update(Bytes bytes) {
  return ready_ && lib_->EVP_MAC_update(context_, bytes.data(), bytes.size()) == 1;
}

bool Hmac::Finish(HashValue* value) {
  size_t size = 0;
  if (!ready_ || lib_->EVP_MAC_final(context_, value->data(), &size, kMaxHash) != 1) return false;
  value->SetSize(size);
  return true;
}

bool DeriveKey(Bytes password, Bytes salt, uint32_t rounds, uint8_t* key, size_t size) {
  const LibCrypto* lib = LoadLibCrypto();
  if (lib == nullptr || rounds == 0 || rounds > INT_MAX) return false;
  EVP_KDF* const function = lib->EVP_KDF_fetch(lib->context, "PBKDF2", nullptr);
  if (function == nullptr) return false;
  EVP_KDF_CTX* const context = lib->EVP_KDF_CTX_new(function);
  lib->EVP_KDF_free(function);
  if (context == nullptr) return false;
  // Parameters want pointers to what they could change. The last number lifts the lower bounds of
  // NIST SP 800-132, which RFC 8018 does not have.
  std::array<char, 5> digest = {'S', 'H', 'A', '1', '\0'};
  int withoutBounds = 1;
  const auto octets = [lib](const char* name, Bytes bytes) {
    return lib->OSSL_PARAM_construct_octet_string(name, const_cast<uint8_t*>(bytes.data()),
                                                  bytes.size());
  };
  const OSSL_PARAM parameters[] = {
      lib->OSSL_PARAM_construct_utf8_string(OSSL_KDF_PARAM_DIGEST, digest.data(), 0),
      octets(OSSL_KDF_PARAM_PASSWORD, password),
      octets(OSSL_KDF_PARAM_SALT, salt),
      lib->OSSL_PARAM_construct_uint(OSSL_KDF_PARAM_ITER, &rounds),
      lib->OSSL_PARAM_construct_int(OSSL_KDF_PARAM_PKCS5, &withoutBounds),
      lib->OSSL_PARAM_construct_end()};
  const bool derived = lib->EVP_KDF_derive(context, key, size, parameters) == 1;
  lib->EVP_KDF_CTX_free(context);
  return derived;
}

bool EqualSecrets(Bytes left, Bytes right) {
  const LibCrypto* lib = LoadLibCrypto();
  return lib != nullptr && left.size() == right.size() &&
         lib->CRYPTO_memcmp(left.data(), right.data(), left.size()) == 0;
}

// EVP_DecodeBlock forgives blanks at both ends and "=" anywhere, and counts the padding as bytes.
bool DecodeBase64(std::string_view text, uint8_t* out, size_t capacity, size_t* size) {
  const LibCrypto* lib = LoadLibCrypto();
  if (lib == nullptr || text.empty() || text.size() > kMaxBase64 || text.size() % 4 != 0) {
    return false;
  }
  const size_t digits = std::min(text.find('='), text.size());
  const size_t padding = text.size() - digits;
  if (padding > 2 || text.find_first_not_of('=', digits) != std::string_view::npos) return false;
  if (text.find_first_of(" \t\r\n") != std::string_view::npos) return false;
  std::array<uint8_t, kMaxBase64> in{};
  std::copy(text.begin(), text.end(), in.begin());
  std::array<uint8_t, kMaxBase64> decoded{};
  const int count = lib->EVP_DecodeBlock(decoded.data(), in.data(), static_cast<int>(text.size()));
  if (count < 0 || static_cast<size_t>(count) < padding) return false;
  const size_t bytes = static_cast<size_t>(count) - padding;
  if (bytes > capacity) return false;
  std::copy_n(decoded.begin(), bytes, out);
  *size = bytes;
  return true;
}

}  // namespace fi::crypto
