// The two streams of an encrypted package. Whatever they hold, all that was opened is closed, the
// view holds no more than the stream did, and what the document's handle is like (short reads,
// 32-bit positions) and where the plaintext is kept change neither the status nor a byte.
//
// Input: two bytes with the length of "EncryptionInfo", then that stream, then "EncryptedPackage".

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>

#include "platform/io.h"
#include "tests/support/stream_storage.h"
#include "toolkit/crypto/open_package.h"

namespace {

using fi::crypto::DecryptionLimits;
using fi::testing::StreamStorage;

constexpr char kPassword[] = "secret";

// Rounds cost the time that is for other inputs.
constexpr DecryptionLimits kInMemory = {.mostSpins = 20, .standardSpins = 20};
constexpr DecryptionLimits kInFile = {.mostSpins = 20, .standardSpins = 20, .mostMemory = 0};

void Require(bool condition) {
  if (!condition) std::abort();
}

// A wrong password first, so that the state of a try that failed is used again.
uint32_t Answer(uint32_t, FIPasswordRequest* request, uintptr_t, uintptr_t) {
  Require(request->capacity > sizeof(kPassword) && request->attempts < 3);
  if (request->attempts > 0) std::memcpy(request->password, kPassword, sizeof(kPassword));
  return 0;
}

struct Result {
  uint32_t status;
  std::string content;

  bool operator==(const Result&) const = default;
};

Result Open(StreamStorage& document, const DecryptionLimits& limits, size_t packageSize) {
  IOHandle* package = nullptr;
  const O12PasswordSource source{sizeof(source), Answer, &document, {}};
  Result result{fi::crypto::OpenPackage(&document, source, limits, &package), ""};
  const fi::io::OwnedHandle view(package);
  Require(document.opens() == document.closes());
  Require((package != nullptr) == (result.status == kFiOk));
  if (package == nullptr) return result;
  std::array<char, 1000> buffer;
  while (const uint32_t count = fi::io::Read(package, buffer.data(), buffer.size())) {
    result.content.append(buffer.data(), count);
  }
  Require(result.content.size() + 8 <= packageSize);
  int64_t end = 0;
  Require(fi::io::Seek64(package, kIoFromEnd, 0) && fi::io::Tell64(package, &end));
  Require(static_cast<size_t>(end) == result.content.size());
  return result;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size < 2) return 0;
  const size_t wanted = static_cast<size_t>(data[0]) | static_cast<size_t>(data[1]) << 8;
  const std::string all(reinterpret_cast<const char*>(data + 2), size - 2);
  const std::string info = all.substr(0, wanted);
  const std::string package = all.substr(info.size());

  StreamStorage plain({{"EncryptionInfo", info}, {"EncryptedPackage", package}});
  const Result result = Open(plain, kInMemory, package.size());

  StreamStorage narrow({{"EncryptionInfo", info}, {"EncryptedPackage", package}});
  narrow.mostPerRead = 3;
  narrow.has64Bit = false;
  Require(Open(narrow, kInFile, package.size()) == result);
  return 0;
}
