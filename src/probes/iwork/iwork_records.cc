#include "probes/iwork/iwork_records.h"

#include "registry/format_ids.h"

namespace fi {
namespace {

constexpr IworkApplication kApplications[] = {
    {10000, kFormatPagesArchive, kFormatEncryptedPages},
    {4, kFormatKeynoteArchive, kFormatEncryptedKeynote},
    {12009, kFormatNumbersArchive, kFormatEncryptedNumbers},
};

using Bytes = std::span<const uint8_t>;

// Takes a base-128 number, lowest bits first, off the front of `bytes`. False when it does not end
// within them, or takes more bytes than 64 bits do.
bool TakeVarint(Bytes* bytes, uint64_t* value) {
  constexpr size_t kMostBytes = 10;
  uint64_t number = 0;
  for (size_t i = 0; i < kMostBytes && i < bytes->size(); ++i) {
    const uint8_t byte = (*bytes)[i];
    number |= uint64_t{byte & 0x7FU} << (7 * i);
    if (byte < 0x80) {
      *bytes = bytes->subspan(i + 1);
      *value = number;
      return true;
    }
  }
  return false;
}

// What the messages of one index come to.
struct Record {
  uint64_t payload = 0;  // bytes
  const IworkApplication* application = nullptr;
};

bool VisitMessage(void* context, uint32_t type, uint32_t length) {
  auto* record = static_cast<Record*>(context);
  record->payload += length;
  for (const IworkApplication& application : kApplications) {
    if (application.messageType == type) record->application = &application;
  }
  return record->application == nullptr;
}

}  // namespace

const IworkApplication* FindIworkApplication(Bytes archive, const IworkModule& module) {
  size_t indexes = 0;
  while (!archive.empty()) {
    uint64_t size = 0;
    if (!TakeVarint(&archive, &size) || size == 0 || size > archive.size()) return nullptr;
    if (size > kMaxIworkIndex || size > kMaxIworkIndexes - indexes) return nullptr;
    const Bytes index = archive.first(static_cast<size_t>(size));
    archive = archive.subspan(index.size());
    indexes += index.size();

    Record record;
    if (!module.readArchiveInfo(index.data(), index.size(), VisitMessage, &record)) return nullptr;
    if (record.application != nullptr) return record.application;
    if (record.payload >= archive.size()) return nullptr;
    archive = archive.subspan(static_cast<size_t>(record.payload));
  }
  return nullptr;
}

}  // namespace fi
