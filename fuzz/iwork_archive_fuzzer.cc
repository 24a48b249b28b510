// What an iWork package holds. Whatever that is, all that was opened is closed, and short reads and
// 32-bit positions change no answer.
//
// Input: a byte whose rest by three tells what follows: 0 an archive, 1 the content of one, 2 the
// verifier of an encrypted package and a member.

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <span>
#include <string>

#include "api/driver.h"
#include "platform/io.h"
#include "platform/iwork.h"
#include "probes/iwork/iwork_archive.h"
#include "probes/iwork/iwork_records.h"
#include "tests/support/stream_storage.h"
#include "toolkit/crypto/iwork_package.h"
#include "toolkit/crypto/iwork_verifier.h"

namespace {

using fi::testing::StreamStorage;

constexpr char kPassword[] = "secret";

void Require(bool condition) {
  if (!condition) std::abort();
}

void MakeNarrow(StreamStorage& package) {
  package.mostPerRead = 3;
  package.has64Bit = false;
}

FormatId Identify(const std::string& archive, bool narrow) {
  StreamStorage package({{"Index/Document.iwa", archive}});
  if (narrow) MakeNarrow(package);
  const fi::PackageAnswer answer = fi::IworkArchiveProbe(&package, fi::kHostJob);
  const FormatId id = answer.id;
  Require(answer.ends && answer.status == 0);
  Require(package.opens() == package.closes());
  Require(id == 0 || id == 1390 || id == 1834 || id == 2273 || id == 2509);
  return id;
}

// What the content of an archive says, given `piece` bytes at a time.
const fi::IworkApplication* Application(std::span<const uint8_t> content, size_t piece) {
  fi::IworkRecords records(*fi::LoadIworkModule(), nullptr);
  while (!content.empty()) {
    const size_t count = std::min(piece, content.size());
    records.Take(content.first(count));
    content = content.subspan(count);
  }
  return records.application();
}

// A wrong password first, so that the state of a try that failed is used again.
uint32_t Answer(uint32_t, FIPasswordRequest* request, uintptr_t, uintptr_t) {
  if (request->attempts > 0) std::memcpy(request->password, kPassword, sizeof(kPassword));
  return 0;
}

// What the member decrypts to, behind the status of the verifier.
std::string Decrypt(const std::string& verifier, const std::string& member, bool narrow) {
  StreamStorage package({{".iwpv2", verifier}});
  fi::testing::MemoryHandle archive(member);
  if (narrow) {
    MakeNarrow(package);
    archive.mostPerRead = 5;
    archive.has64Bit = false;
  }
  IworksRequest request{sizeof(request), Answer, {sizeof(request.source), &package, nullptr, {}}};
  const uint32_t status = fi::crypto::PrepareIwork(&request, {.mostSpins = 20});
  Require((status == 0) == (request.source.context != nullptr));
  Require(package.opens() == package.closes());
  std::string result = std::to_string(status);
  if (status == 0) {
    const fi::io::OwnedHandle view(IworksSetDecryptedTempFile(&archive, request.source.context));
    IworksEndDecryption(request.source.context);
    result += view == nullptr ? " failed" : " ";
    std::array<char, 100> buffer;
    while (const uint32_t count =
               view == nullptr ? 0 : fi::io::Read(view.get(), buffer.data(), buffer.size())) {
      result.append(buffer.data(), count);
    }
    Require(view == nullptr || result.size() + 51 <= member.size());
  }
  return result;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size == 0) return 0;
  const std::string bytes(data + 1, data + size);
  switch (data[0] % 3) {
    case 0:
      Require(Identify(bytes, false) == Identify(bytes, true));
      break;
    case 1:
      Require(Application({data + 1, size - 1}, size) == Application({data + 1, size - 1}, 3));
      break;
    default: {
      const std::string verifier = bytes.substr(0, fi::crypto::kIworkVerifier);
      const std::string member = bytes.substr(verifier.size());
      Require(Decrypt(verifier, member, false) == Decrypt(verifier, member, true));
      break;
    }
  }
  return 0;
}
