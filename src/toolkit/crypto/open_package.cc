#include "toolkit/crypto/open_package.h"

#include <algorithm>
#include <array>
#include <memory>
#include <new>
#include <string_view>
#include <variant>

#include "platform/io.h"
#include "platform/work.h"
#include "toolkit/crypto/encryption_info.h"
#include "toolkit/crypto/package_key.h"
#include "toolkit/crypto/package_stream.h"
#include "toolkit/crypto/package_view.h"
#include "toolkit/crypto/password.h"
#include "toolkit/crypto/stream_bytes.h"
#include "toolkit/openssl/evp.h"

namespace fi::crypto {
namespace {

io::OwnedHandle OpenStream(IOHandle* document, const char* name) {
  const IOChildSource source{document, name};
  IOHandle* stream = nullptr;
  if (document->operations->open(document, &stream, kIoSourceStorageStream, &source, 1) != 0) {
    return nullptr;
  }
  return io::OwnedHandle(stream);
}

EncryptionInfo ReadInfo(IOHandle* document, const DecryptionLimits& limits) {
  const io::OwnedHandle stream = OpenStream(document, "EncryptionInfo");
  // One byte more than is allowed shows that the stream is too long.
  constexpr size_t kRoom = kMaxEncryptionInfo + 1;
  const std::unique_ptr<uint8_t[]> bytes(Allocated(limits.work, new (std::nothrow) uint8_t[kRoom]));
  if (stream == nullptr || bytes == nullptr) return {};
  const size_t size = io::ReadFully(stream.get(), bytes.get(), kRoom);
  if (size == kRoom) return {};
  return ReadEncryptionInfo({bytes.get(), size}, limits);
}

Unlocked Unlock(const EncryptionInfo& info, const DecryptionLimits& limits, Bytes text,
                PackageKey* key) {
  Password password;
  const char* characters = static_cast<const char*>(static_cast<const void*>(text.data()));
  if (!EncodePassword({characters, text.size()}, &password)) return Unlocked::kWrongPassword;
  if (Loaded(limits.work, LoadLibCrypto()) == nullptr) return Unlocked::kFailed;
  const ErrorMark mark;
  Unlocked unlocked = Unlocked::kFailed;
  if (const auto* agile = std::get_if<AgileInfo>(&info)) {
    if (!AllowsRounds(limits, agile->spinCount)) return unlocked;
    unlocked = UnlockAgile(*agile, password.view(), key);
  } else if (const auto* standard = std::get_if<StandardInfo>(&info)) {
    if (!AllowsRounds(limits, limits.standardSpins)) return unlocked;
    unlocked = UnlockStandard(*standard, limits, password.view(), key);
  }
  if (unlocked == Unlocked::kFailed) (void)CryptoFailed(limits);
  return unlocked;
}

using Name = std::array<char, kIoNameCapacity>;

// The file name of the document, which is the name of the package; empty without a name. Characters
// beyond ASCII become "?"; known extensions have none.
Name NameOf(IOHandle* document) {
  Name name{};
  uint32_t width = kIoNameNarrow;
  (void)io::GetInfo(document, kIoInfoNameWidth, &width);
  if (width == kIoNameWide) {
    std::array<uint16_t, kIoNameCapacity> wide{};
    if (!io::GetInfo(document, kIoInfoFileName, wide.data())) return name;
    std::transform(wide.begin(), wide.end(), name.begin(),
                   [](uint16_t unit) { return unit < 0x80 ? static_cast<char>(unit) : '?'; });
  } else if (!io::GetInfo(document, kIoInfoFileName, name.data())) {
    name[0] = '\0';
  }
  name.back() = '\0';
  return name;
}

}  // namespace

uint32_t OpenPackage(IOHandle* document, const O12PasswordSource& source,
                     const DecryptionLimits& limits, IOHandle** package) {
  uint32_t depth = 0;
  if (!io::GetInfo(document, kIoInfoViewDepth, &depth)) depth = 0;
  if (depth >= kMaxViewDepth) return kFiDecryptionFailed;
  const EncryptionInfo info = ReadInfo(document, limits);
  const io::OwnedHandle stream = OpenStream(document, "EncryptedPackage");
  if (std::holds_alternative<std::monostate>(info) || stream == nullptr) {
    return kFiDecryptionFailed;
  }
  PackageKey key;
  const PasswordSource from{source.callback, source.context, source.document};
  const uint32_t status = UnlockWithPassword(
      from, [&](Bytes password) { return Unlock(info, limits, password, &key); });
  if (status != kFiOk) return status;

  auto* view = Allocated(
      limits.work, new (std::nothrow) PackageView(NameOf(document).data(), depth + 1, limits.work));
  if (view == nullptr) return kFiDecryptionFailed;
  io::OwnedHandle owned(view);
  const ErrorMark mark;
  if (!DecryptPackage(stream.get(), key, limits, &view->plaintext())) return kFiDecryptionFailed;
  *package = owned.release();
  return kFiOk;
}

}  // namespace fi::crypto

int16_t O12InitDecryption(IOHandle* document, void* /*reserved1*/, void* /*reserved2*/,
                          const O12Options* /*options*/, const O12PasswordSource* source,
                          IOHandle** first, IOHandle** second, IOHandle** package) noexcept {
  *first = nullptr;
  *second = nullptr;
  *package = nullptr;
  fi::crypto::DecryptionLimits limits;
  limits.work = fi::WorkOf(document);
  return static_cast<int16_t>(fi::crypto::OpenPackage(document, *source, limits, package));
}
