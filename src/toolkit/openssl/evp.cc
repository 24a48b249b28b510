#include "toolkit/openssl/evp.h"

#include <algorithm>
#include <array>
#include <climits>

namespace fi::crypto {
namespace {

// The names by which libcrypto knows the algorithm.
const char* NameOf(HashAlgorithm algorithm) {
  switch (algorithm) {
    case HashAlgorithm::kMd5:
      return "MD5";
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
    case HashAlgorithm::kMd5:
      return 16;
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
  digest_ = lib_->EVP_MD_fetch(nullptr, NameOf(algorithm), nullptr);
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
  cipher_ = lib_->EVP_CIPHER_fetch(nullptr, name, nullptr);
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

bool EncryptAes128Cbc(Bytes key, Bytes iv, Bytes in, uint8_t* out) {
  const LibCrypto* lib = LoadLibCrypto();
  if (lib == nullptr || key.size() != kAesBlock || iv.size() != kAesBlock ||
      in.size() % kAesBlock != 0 || in.size() > INT_MAX) {
    return false;
  }
  EVP_CIPHER* cipher = lib->EVP_CIPHER_fetch(nullptr, "AES-128-CBC", nullptr);
  EVP_CIPHER_CTX* context = lib->EVP_CIPHER_CTX_new();
  int stored = 0;
  const int size = static_cast<int>(in.size());
  const bool encrypted =
      cipher != nullptr && context != nullptr &&
      lib->EVP_EncryptInit_ex(context, cipher, nullptr, key.data(), iv.data()) == 1 &&
      lib->EVP_CIPHER_CTX_set_padding(context, 0) == 1 &&
      lib->EVP_EncryptUpdate(context, out, &stored, in.data(), size) == 1 && stored == size;
  lib->EVP_CIPHER_CTX_free(context);
  lib->EVP_CIPHER_free(cipher);
  return encrypted;
}

Hmac::Hmac(HashAlgorithm algorithm, Bytes key) : lib_(LoadLibCrypto()) {
  if (lib_ == nullptr) return;
  mac_ = lib_->EVP_MAC_fetch(nullptr, "HMAC", nullptr);
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
  const auto text = static_cast<const char*>(static_cast<const void*>(password.data()));
  return lib != nullptr && rounds > 0 && rounds <= INT_MAX &&
         lib->PKCS5_PBKDF2_HMAC_SHA1(text, static_cast<int>(password.size()), salt.data(),
                                     static_cast<int>(salt.size()), static_cast<int>(rounds),
                                     static_cast<int>(size), key) == 1;
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
