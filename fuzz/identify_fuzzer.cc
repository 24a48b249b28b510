// A whole identification of any bytes under any flags. What the handle is like (short reads, 32-bit
// positions) and how large the stream's buffer is must not change the answer; the handle stays
// open; and what is read stays within a bound per byte of the file. The supplement changes no
// specific answer. The library's own handle sees compound files as storages; of other files it must
// say the same.
//
// Input: the file, see identify_input.h. A seed is named after the identifier that it reaches.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "api/supplement.h"
#include "formatid/formatid.h"
#include "formatid/platform.h"
#include "fuzz/identify_input.h"
#include "tests/support/memory_handle.h"

namespace {

using fi::testing::MemoryHandle;

constexpr uint64_t kReadPerByte = 64;
constexpr uint64_t kReadAnyway = 1 << 20;

struct Answer {
  uint32_t status;
  FormatId id;
  FIEvidence evidence;

  bool operator==(const Answer& other) const {
    return status == other.status && id == other.id && evidence.basis == other.evidence.basis &&
           evidence.signature == other.evidence.signature;
  }
};

void Require(bool condition) {
  if (!condition) std::abort();
}

Answer Identify(MemoryHandle& handle, uint32_t flags, uint32_t bufferKilobytes, size_t size) {
  Require(UTSetOption(UTGetGlobalOptionSet(), kUtOptionBufferSize, &bufferKilobytes, 4) == 0);
  Answer answer{};
  answer.status = FIIdHandleEvidence(&handle, flags, &answer.id, &answer.evidence);
  Require(handle.closes == 0);
  Require(handle.bytesRead <= kReadPerByte * size + kReadAnyway);
  return answer;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const fi::fuzz::IdentifyInput input = fi::fuzz::ReadIdentifyInput(data, size);
  const uint32_t flags = input.flags;
  const std::string name = input.name;
  const std::string file(input.file);

  MemoryHandle plain(file, name);
  const Answer answer = Identify(plain, flags, 2, file.size());
  Require((flags & kFiClassOnly) != 0 || answer.id != 0);

  MemoryHandle slow(file, name);
  slow.mostPerRead = file.size() < 4096 ? 1 : 7;
  Require(Identify(slow, flags, 1, file.size()) == answer);

  MemoryHandle narrow(file, name);
  narrow.has64Bit = false;
  narrow.wideName = true;
  Require(Identify(narrow, flags, 64, file.size()) == answer);

  if ((flags & kFiSupplement) != 0) {
    MemoryHandle again(file, name);
    const Answer base = Identify(again, flags & ~uint32_t{kFiSupplement}, 2, file.size());
    Require(base.status == answer.status);
    // A specific answer changes by a correction only, which names it; messages by their class.
    const bool isCorrected = (answer.evidence.basis & kFiBasisCorrection) != 0;
    Require(fi::IsGeneralAnswer(base.id) || base == answer ||
            (isCorrected && answer.evidence.signature == base.id));
  }

  const IOMemorySource source = {file.data(), file.size(), name.c_str()};
  IOHandle* own = nullptr;
  Require(IOOpen(&own, kIoSourceMemory, &source, 1) == kIoOk);
  const bool isStorage = own->operations->getInfo(own, kIoInfoIsStorage, nullptr) == 0;
  Answer ofOwn{};
  ofOwn.status = FIIdHandleEvidence(own, flags, &ofOwn.id, &ofOwn.evidence);
  Require(isStorage || ofOwn == answer);
  own->operations->close(own);
  return 0;
}
