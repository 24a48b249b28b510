#include "toolkit/crypto/iwork_package.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <memory>
#include <new>
#include <optional>

#include "platform/io.h"
#include "platform/work.h"
#include "toolkit/crypto/iwork_verifier.h"
#include "toolkit/crypto/package_view.h"
#include "toolkit/crypto/stream_bytes.h"
#include "toolkit/openssl/evp.h"

// The password stays because it is the key of the members' HMAC.
struct IworksContext {
  fi::crypto::SecretBytes<fi::crypto::kIworkKey> key;
  fi::crypto::PasswordText password;
};

namespace fi::crypto {
namespace {

std::optional<IworkVerifier> ReadVerifier(IOHandle* package, const DecryptionLimits& limits) {
  const io::OwnedHandle member = io::OpenMember(package, ".iwpv2");
  if (member == nullptr) return std::nullopt;
  // One byte more shows that the member is too long.
  std::array<uint8_t, kIworkVerifier + 1> bytes{};
  const size_t size = io::ReadFully(member.get(), bytes.data(), bytes.size());
  return ReadIworkVerifier(Bytes(bytes).first(size), limits);
}

// A member of the package: an IV, in CBC mode a meaningless block, the content, and padding of 1 to
// 16 bytes, each with the number of bytes as its value; at last an HMAC-SHA1 of the content.
class MemberReader {
 public:
  MemberReader(IOHandle* member, const IworksContext& context, Plaintext* plaintext)
      : member_(member),
        plaintext_(plaintext),
        aes_(AesMode::kCbc, context.key.view()),
        hmac_(HashAlgorithm::kSha1, context.password.view()) {}

  bool Read(const DecryptionLimits& limits) {
    const std::optional<uint64_t> size = StreamSize(member_);
    if (!size.has_value() || *size < kLeast || *size > kMaxIworkMember) return false;
    const uint64_t encrypted = *size - kAesBlock - kMac;
    if (encrypted % kAesBlock != 0) return false;
    if (!plaintext_->Reserve(encrypted, limits)) return NoMemory();
    if (io::ReadFully(member_, iv_.data(), iv_.size()) != iv_.size()) return false;
    for (uint64_t left = encrypted; left > 0;) {
      const auto part = static_cast<size_t>(std::min<uint64_t>(left, kSegment));
      if (!ReadSegment(part, left == encrypted, left == part)) return false;
      left -= part;
    }
    std::array<uint8_t, kMac> mac{};
    HashValue value;
    if (io::ReadFully(member_, mac.data(), kMac) != kMac) return false;
    return hmac_.Finish(&value) ? EqualSecrets(value.view(), mac) : NoMemory();
  }

 private:
  bool NoMemory() const {
    NoteNoMemory(member_);
    return false;
  }

  // Bytes of a whole number of blocks.
  bool ReadSegment(size_t size, bool isFirst, bool isLast) {
    if (io::ReadFully(member_, encrypted_.data(), size) != size) return false;
    const Bytes encrypted = Bytes(encrypted_).first(size);
    if (!aes_.Decrypt(iv_, encrypted, decrypted_.data())) return NoMemory();
    std::ranges::copy(encrypted.last(kAesBlock), iv_.begin());
    decrypted_.SetSize(size);
    Bytes content = decrypted_.view();
    if (isFirst) content = content.subspan(kAesBlock);
    if (isLast) {
      const uint8_t padding = content.back();
      if (padding == 0 || padding > kAesBlock) return false;
      const Bytes tail = content.last(padding);
      if (std::ranges::count(tail, padding) != padding) return false;
      content = content.first(content.size() - padding);
    }
    return (hmac_.Update(content) && plaintext_->Append(content)) || NoMemory();
  }

  static constexpr size_t kMac = 20;
  static constexpr uint64_t kLeast = kAesBlock + 2 * kAesBlock + kMac;
  static constexpr size_t kSegment = 4096;

  IOHandle* const member_;
  Plaintext* const plaintext_;
  AesDecryptor aes_;
  Hmac hmac_;
  std::array<uint8_t, kAesBlock> iv_{};
  std::array<uint8_t, kSegment> encrypted_;
  SecretBytes<kSegment> decrypted_;
};

DecryptionLimits LimitsFor(const IOHandle* handle) {
  DecryptionLimits limits;
  limits.work = WorkOf(handle);
  return limits;
}

}  // namespace

uint32_t PrepareIwork(IworksRequest* request, const DecryptionLimits& limits) {
  const std::optional<IworkVerifier> verifier = ReadVerifier(request->source.package, limits);
  std::unique_ptr<IworksContext> context(Allocated(limits.work, new (std::nothrow) IworksContext));
  if (!verifier.has_value() || context == nullptr) return kFiDecryptionFailed;
  const PasswordSource from{request->callback, request->source.passwordContext,
                            request->source.package};
  const uint32_t status = UnlockWithPassword(from, [&](Bytes password) {
    context->password.SetSize(0);
    if (!context->password.Append(password)) return Unlocked::kWrongPassword;
    if (Loaded(limits.work, LoadLibCrypto()) == nullptr) return Unlocked::kFailed;
    if (!AllowsRounds(limits, verifier->rounds)) return Unlocked::kFailed;
    const Unlocked unlocked = UnlockIwork(*verifier, password, &context->key);
    if (unlocked == Unlocked::kFailed) (void)CryptoFailed(limits);
    return unlocked;
  });
  if (status == kFiOk) request->source.context = context.release();
  return status;
}

}  // namespace fi::crypto

int16_t IworksInitDecryption(IworksRequest* request) noexcept {
  return static_cast<int16_t>(
      fi::crypto::PrepareIwork(request, fi::crypto::LimitsFor(request->source.package)));
}

IOHandle* IworksSetDecryptedTempFile(IOHandle* member, const IworksContext* context) noexcept {
  const auto limits = fi::crypto::LimitsFor(member);
  auto* view =
      fi::Allocated(limits.work, new (std::nothrow) fi::crypto::PackageView("", 1, limits.work));
  if (view == nullptr) return nullptr;
  fi::io::OwnedHandle owned(view);
  const fi::crypto::ErrorMark mark;
  fi::crypto::MemberReader reader(member, *context, &view->plaintext());
  if (reader.Read(limits)) return owned.release();
  (void)fi::io::Seek(member, kIoFromStart, 0);
  return nullptr;
}

void IworksEndDecryption(IworksContext* context) noexcept { delete context; }
