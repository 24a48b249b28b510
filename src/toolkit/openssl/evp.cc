#include "toolkit/openssl/evp.h"

#include <algorithm>
#include <array>

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

// The function of that number; null when there is none.
template <class Function>
Function* Find(const OSSL_DISPATCH* functions, int number) {
  for (; functions != nullptr && functions->function_id != 0; ++functions) {
    if (functions->function_id == number) return reinterpret_cast<Function*>(functions->function);
  }
  return nullptr;
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

Hasher::Hasher(HashAlgorithm algorithm) {
  const LibCrypto* lib = LoadLibCrypto();
  if (lib == nullptr) return;
  const OSSL_DISPATCH* functions = lib->FindAlgorithm(OSSL_OP_DIGEST, NameOf(algorithm));
  const auto create = Find<OSSL_FUNC_digest_newctx_fn>(functions, OSSL_FUNC_DIGEST_NEWCTX);
  free_ = Find<OSSL_FUNC_digest_freectx_fn>(functions, OSSL_FUNC_DIGEST_FREECTX);
  init_ = Find<OSSL_FUNC_digest_init_fn>(functions, OSSL_FUNC_DIGEST_INIT);
  update_ = Find<OSSL_FUNC_digest_update_fn>(functions, OSSL_FUNC_DIGEST_UPDATE);
  final_ = Find<OSSL_FUNC_digest_final_fn>(functions, OSSL_FUNC_DIGEST_FINAL);
  if (create == nullptr || free_ == nullptr) return;
  if (init_ == nullptr || update_ == nullptr || final_ == nullptr) return;
  state_ = create(lib->OSSL_PROVIDER_get0_provider_ctx(lib->provider));
}

// The provider wipes what it frees.
Hasher::~Hasher() {
  if (state_ != nullptr) free_(state_);
}

bool Hasher::Begin() { return state_ != nullptr && init_(state_, nullptr) == 1; }

bool Hasher::Add(Bytes bytes) { return update_(state_, bytes.data(), bytes.size()) == 1; }

bool Hasher::End(HashValue* value) {
  size_t size = 0;
  if (final_(state_, value->data(), &size, kMaxHash) != 1) return false;
  value->SetSize(size);
  return true;
}

bool Hasher::Hash(std::initializer_list<Bytes> parts, HashValue* value) {
  if (!Begin()) return false;
  for (const Bytes part : parts) {
    if (!Add(part)) return false;
  }
  return End(value);
}

AesDecryptor::AesDecryptor(AesMode mode, Bytes key) : mode_(mode) {
  const LibCrypto* lib = LoadLibCrypto();
  const char* name = NameOf(mode, key.size());
  if (lib == nullptr || name == nullptr) return;
  const OSSL_DISPATCH* functions = lib->FindAlgorithm(OSSL_OP_CIPHER, name);
  const auto create = Find<OSSL_FUNC_cipher_newctx_fn>(functions, OSSL_FUNC_CIPHER_NEWCTX);
  free_ = Find<OSSL_FUNC_cipher_freectx_fn>(functions, OSSL_FUNC_CIPHER_FREECTX);
  init_ = Find<OSSL_FUNC_cipher_decrypt_init_fn>(functions, OSSL_FUNC_CIPHER_DECRYPT_INIT);
  cipher_ = Find<OSSL_FUNC_cipher_cipher_fn>(functions, OSSL_FUNC_CIPHER_CIPHER);
  if (create == nullptr || free_ == nullptr || init_ == nullptr || cipher_ == nullptr) return;
  state_ = create(lib->OSSL_PROVIDER_get0_provider_ctx(lib->provider));
  ready_ = state_ != nullptr && init_(state_, key.data(), key.size(), nullptr, 0, nullptr) == 1;
}

AesDecryptor::~AesDecryptor() {
  if (state_ != nullptr) free_(state_);
}

bool AesDecryptor::Decrypt(Bytes iv, Bytes in, uint8_t* out) {
  if (!ready_ || in.size() % kAesBlock != 0) return false;
  if (mode_ == AesMode::kCbc) {
    // Without a key the one that is set stays, with a fresh chain.
    if (iv.size() != kAesBlock) return false;
    if (init_(state_, nullptr, 0, iv.data(), iv.size(), nullptr) != 1) return false;
  }
  if (in.empty()) return true;
  size_t stored = 0;
  return cipher_(state_, out, &stored, in.size(), in.data(), in.size()) == 1 && stored == in.size();
}

bool EncryptAes128Cbc(Bytes key, Bytes iv, Bytes in, uint8_t* out) {
  const LibCrypto* lib = LoadLibCrypto();
  if (lib == nullptr || key.size() != kAesBlock || iv.size() != kAesBlock) return false;
  if (in.size() % kAesBlock != 0) return false;
  const OSSL_DISPATCH* functions =
      lib->FindAlgorithm(OSSL_OP_CIPHER, NameOf(AesMode::kCbc, key.size()));
  const auto create = Find<OSSL_FUNC_cipher_newctx_fn>(functions, OSSL_FUNC_CIPHER_NEWCTX);
  const auto release = Find<OSSL_FUNC_cipher_freectx_fn>(functions, OSSL_FUNC_CIPHER_FREECTX);
  const auto init =
      Find<OSSL_FUNC_cipher_encrypt_init_fn>(functions, OSSL_FUNC_CIPHER_ENCRYPT_INIT);
  const auto cipher = Find<OSSL_FUNC_cipher_cipher_fn>(functions, OSSL_FUNC_CIPHER_CIPHER);
  if (create == nullptr || release == nullptr || init == nullptr || cipher == nullptr) return false;
  void* const state = create(lib->OSSL_PROVIDER_get0_provider_ctx(lib->provider));
  if (state == nullptr) return false;
  size_t stored = 0;
  const bool encrypted =
      init(state, key.data(), key.size(), iv.data(), iv.size(), nullptr) == 1 &&
      (in.empty() || cipher(state, out, &stored, in.size(), in.data(), in.size()) == 1) &&
      stored == in.size();
  release(state);
  return encrypted;
}

Hmac::Hmac(HashAlgorithm algorithm, Bytes key) : hasher_(algorithm) {
  const size_t block = HashSize(algorithm) <= 32 ? 64 : 128;
  HashValue hashed;
  if (key.size() > block) {
    if (!hasher_.Hash({key}, &hashed)) return;
    key = hashed.view();
  }
  inner_.SetSize(block);
  outer_.SetSize(block);
  for (size_t i = 0; i < block; ++i) {
    const uint8_t byte = i < key.size() ? key[i] : uint8_t{0};
    inner_.data()[i] = byte ^ 0x36;
    outer_.data()[i] = byte ^ 0x5C;
  }
  ready_ = Begin();
}

bool Hmac::Begin() { return hasher_.Begin() && hasher_.Add(inner_.view()); }

bool Hmac::Update(Bytes bytes) { return ready_ && hasher_.Add(bytes); }

bool Hmac::Finish(HashValue* value) {
  ready_ = ready_ && hasher_.End(value) && hasher_.Hash({outer_.view(), value->view()}, value);
  if (!ready_) return false;
  ready_ = Begin();
  return true;
}

bool DeriveKey(Bytes password, Bytes salt, uint32_t rounds, uint8_t* key, size_t size) {
  Hmac hmac(HashAlgorithm::kSha1, password);
  HashValue round;
  HashValue sum;
  for (uint32_t block = 1; size > 0; ++block) {
    const std::array<uint8_t, 4> number = {
        static_cast<uint8_t>(block >> 24), static_cast<uint8_t>(block >> 16),
        static_cast<uint8_t>(block >> 8), static_cast<uint8_t>(block)};
    if (rounds == 0 || !hmac.Update(salt) || !hmac.Update(number) || !hmac.Finish(&round)) {
      return false;
    }
    sum.SetSize(0);
    (void)sum.Append(round.view());
    for (uint32_t i = 1; i < rounds; ++i) {
      if (!hmac.Update(round.view()) || !hmac.Finish(&round)) return false;
      for (size_t byte = 0; byte < sum.size(); ++byte) sum.data()[byte] ^= round.data()[byte];
    }
    const size_t count = std::min(size, sum.size());
    std::copy_n(sum.data(), count, key);
    key += count;
    size -= count;
  }
  return true;
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
