#include "run/hasher.h"

#include <dlfcn.h>
#include <openssl/crypto.h>
#include <openssl/evp.h>
#include <unistd.h>
#include <xxhash.h>

#include <array>
#include <cerrno>
#include <iterator>
#include <utility>

namespace fi::app {
namespace {

struct KindRow {
  std::string_view name;
  const char* digest;  // libcrypto's name; nullptr: libxxhash computes it
};

// In the order of HashKind.
constexpr KindRow kKinds[] = {{"md5", "MD5"},
                              {"sha1", "SHA1"},
                              {"sha256", "SHA256"},
                              {"sha512", "SHA512"},
                              {"blake2b512", "BLAKE2B-512"},
                              {"xxh128", nullptr}};

constexpr const char* kCryptoLibrary = "libcrypto.so.3";
constexpr const char* kXxhLibrary = "libxxhash.so.0";
constexpr size_t kBlock = size_t{64} << 10;

const KindRow& RowOf(HashKind kind) { return kKinds[static_cast<size_t>(kind)]; }

template <class Function>
bool Find(void* library, const char* name, Function& function) {
  function = reinterpret_cast<Function>(::dlsym(library, name));
  return function != nullptr;
}

std::string Hex(const uint8_t* bytes, size_t size) {
  constexpr char kDigits[] = "0123456789abcdef";
  std::string text;
  text.reserve(size * 2);
  for (size_t i = 0; i < size; ++i) {
    text += kDigits[bytes[i] >> 4];
    text += kDigits[bytes[i] & 15];
  }
  return text;
}

}  // namespace

// A library context of its own reads no configuration, which could load code of others.
struct HashFunctions {
  decltype(&OPENSSL_init_crypto) initCrypto = nullptr;
  decltype(&OSSL_LIB_CTX_new) newLibrary = nullptr;
  decltype(&OSSL_LIB_CTX_free) freeLibrary = nullptr;
  decltype(&EVP_MD_fetch) fetch = nullptr;
  decltype(&EVP_MD_free) freeDigest = nullptr;
  decltype(&EVP_MD_CTX_new) newContext = nullptr;
  decltype(&EVP_MD_CTX_free) freeContext = nullptr;
  decltype(&EVP_DigestInit_ex) init = nullptr;
  decltype(&EVP_DigestUpdate) update = nullptr;
  decltype(&EVP_DigestFinal_ex) final = nullptr;
  decltype(&XXH3_createState) createState = nullptr;
  decltype(&XXH3_freeState) freeState = nullptr;
  decltype(&XXH3_128bits_reset) reset = nullptr;
  decltype(&XXH3_128bits_update) updateState = nullptr;
  decltype(&XXH3_128bits_digest) digest = nullptr;

  OSSL_LIB_CTX* library = nullptr;
  std::array<EVP_MD*, std::size(kKinds)> digests = {};

  ~HashFunctions() {
    for (EVP_MD* each : digests) {
      if (each != nullptr) freeDigest(each);
    }
    if (library != nullptr) freeLibrary(library);
  }

  bool LoadCrypto() {
    if (library != nullptr) return true;
    void* loaded = ::dlopen(kCryptoLibrary, RTLD_NOW | RTLD_LOCAL);
    const bool isWhole =
        loaded != nullptr && Find(loaded, "OPENSSL_init_crypto", initCrypto) &&
        Find(loaded, "OSSL_LIB_CTX_new", newLibrary) &&
        Find(loaded, "OSSL_LIB_CTX_free", freeLibrary) && Find(loaded, "EVP_MD_fetch", fetch) &&
        Find(loaded, "EVP_MD_free", freeDigest) && Find(loaded, "EVP_MD_CTX_new", newContext) &&
        Find(loaded, "EVP_MD_CTX_free", freeContext) && Find(loaded, "EVP_DigestInit_ex", init) &&
        Find(loaded, "EVP_DigestUpdate", update) && Find(loaded, "EVP_DigestFinal_ex", final);
    if (!isWhole || initCrypto(OPENSSL_INIT_NO_LOAD_CONFIG, nullptr) != 1) return false;
    library = newLibrary();
    return library != nullptr;
  }

  bool LoadXxh() {
    void* loaded = ::dlopen(kXxhLibrary, RTLD_NOW | RTLD_LOCAL);
    return loaded != nullptr && Find(loaded, "XXH3_createState", createState) &&
           Find(loaded, "XXH3_freeState", freeState) && Find(loaded, "XXH3_128bits_reset", reset) &&
           Find(loaded, "XXH3_128bits_update", updateState) &&
           Find(loaded, "XXH3_128bits_digest", digest);
  }
};

namespace {

// One hash on its way.
class Running {
 public:
  Running(const HashFunctions& functions, HashKind kind) : functions_(functions) {
    if (RowOf(kind).digest == nullptr) {
      state_ = functions.createState();
      isSound_ = state_ != nullptr && functions.reset(state_) == XXH_OK;
    } else {
      context_ = functions.newContext();
      const EVP_MD* digest = functions.digests[static_cast<size_t>(kind)];
      isSound_ = context_ != nullptr && functions.init(context_, digest, nullptr) == 1;
    }
  }
  Running(Running&& other) noexcept
      : functions_(other.functions_),
        context_(std::exchange(other.context_, nullptr)),
        state_(std::exchange(other.state_, nullptr)),
        isSound_(other.isSound_) {}
  Running& operator=(Running&&) = delete;
  ~Running() {
    if (context_ != nullptr) functions_.freeContext(context_);
    if (state_ != nullptr) (void)functions_.freeState(state_);
  }

  void Add(const uint8_t* bytes, size_t size) {
    if (!isSound_) return;
    isSound_ = state_ != nullptr ? functions_.updateState(state_, bytes, size) == XXH_OK
                                 : functions_.update(context_, bytes, size) == 1;
  }

  // Empty when it could not be computed.
  std::string Finish() {
    if (!isSound_) return {};
    std::array<uint8_t, EVP_MAX_MD_SIZE> bytes;
    unsigned size = 0;
    if (state_ != nullptr) {
      const XXH128_hash_t hash = functions_.digest(state_);
      for (; size < 8; ++size) bytes[size] = static_cast<uint8_t>(hash.high64 >> (56 - 8 * size));
      for (; size < 16; ++size) bytes[size] = static_cast<uint8_t>(hash.low64 >> (120 - 8 * size));
    } else if (functions_.final(context_, bytes.data(), &size) != 1) {
      return {};
    }
    return Hex(bytes.data(), size);
  }

 private:
  const HashFunctions& functions_;
  EVP_MD_CTX* context_ = nullptr;
  XXH3_state_t* state_ = nullptr;
  bool isSound_ = false;
};

std::vector<Running> Begin(const HashFunctions& functions, const std::vector<HashKind>& kinds) {
  std::vector<Running> all;
  all.reserve(kinds.size());
  for (const HashKind kind : kinds) all.emplace_back(functions, kind);
  return all;
}

void Finish(std::vector<Running>& all, std::vector<std::string>& hashes) {
  hashes.clear();
  for (Running& each : all) hashes.push_back(each.Finish());
}

}  // namespace

std::string_view HashName(HashKind kind) { return RowOf(kind).name; }

bool FindHash(std::string_view name, HashKind& kind) {
  for (size_t i = 0; i < std::size(kKinds); ++i) {
    if (kKinds[i].name != name) continue;
    kind = static_cast<HashKind>(i);
    return true;
  }
  return false;
}

Hasher::Hasher(std::vector<HashKind> kinds)
    : kinds_(std::move(kinds)), functions_(std::make_unique<HashFunctions>()) {}

Hasher::~Hasher() = default;

bool Hasher::Load(std::string& error) {
  for (const HashKind kind : kinds_) {
    const char* digest = RowOf(kind).digest;
    if (digest == nullptr) {
      if (functions_->LoadXxh()) continue;
      error = std::string("--hash xxh128 needs the library ") + kXxhLibrary;
      return false;
    }
    EVP_MD*& fetched = functions_->digests[static_cast<size_t>(kind)];
    if (functions_->LoadCrypto() && fetched == nullptr)
      fetched = functions_->fetch(functions_->library, digest, nullptr);
    if (fetched != nullptr) continue;
    error = "--hash " + std::string(HashName(kind)) + " needs the library " + kCryptoLibrary;
    return false;
  }
  return true;
}

int Hasher::HashFile(int descriptor, std::vector<std::string>& hashes) const {
  std::vector<Running> all = Begin(*functions_, kinds_);
  std::array<uint8_t, kBlock> block;
  for (off_t offset = 0;;) {
    const ssize_t count = ::pread(descriptor, block.data(), block.size(), offset);
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) return errno;
    if (count == 0) break;
    for (Running& each : all) each.Add(block.data(), static_cast<size_t>(count));
    offset += count;
  }
  Finish(all, hashes);
  return 0;
}

void Hasher::HashMemory(std::span<const uint8_t> bytes, std::vector<std::string>& hashes) const {
  std::vector<Running> all = Begin(*functions_, kinds_);
  for (Running& each : all) each.Add(bytes.data(), bytes.size());
  Finish(all, hashes);
}

}  // namespace fi::app
