#include "probes/iwork/iwork_records.h"

#include <algorithm>
#include <cstring>
#include <new>

#include "registry/format_ids.h"

namespace fi {
namespace {

constexpr IworkApplication kApplications[] = {
    {10000, kFormatPagesArchive, kFormatEncryptedPages},
    {4, kFormatKeynoteArchive, kFormatEncryptedKeynote},
    {12009, kFormatNumbersArchive, kFormatEncryptedNumbers},
};

// What the messages of one index come to.
struct Record {
  Work* work = nullptr;
  uint64_t payload = 0;  // bytes
  const IworkApplication* application = nullptr;
};

bool VisitMessage(void* context, uint32_t type, uint32_t length) {
  auto* record = static_cast<Record*>(context);
  if (record->work != nullptr && !record->work->SpendStep()) return false;
  record->payload += length;
  for (const IworkApplication& application : kApplications) {
    if (application.messageType == type) record->application = &application;
  }
  return record->application == nullptr;
}

}  // namespace

IworkRecords::~IworkRecords() {
  if (index_ != nullptr) explicit_bzero(index_.get(), kept_);
}

void IworkRecords::Take(Bytes content) {
  while (!ended_ && !content.empty()) {
    if (payload_ > 0) {
      const auto count = static_cast<size_t>(std::min<uint64_t>(payload_, content.size()));
      payload_ -= count;
      content = content.subspan(count);
    } else if (indexSize_ == 0) {
      TakeLength(&content);
    } else {
      TakeIndex(&content);
    }
  }
}

// A base-128 number, lowest bits first. One that takes more bytes than 64 bits do is damaged.
void IworkRecords::TakeLength(Bytes* content) {
  constexpr uint32_t kMostBytes = 10;
  const uint8_t byte = content->front();
  *content = content->subspan(1);
  length_ |= uint64_t{byte & 0x7FU} << (7 * lengthBytes_);
  ++lengthBytes_;
  if (byte >= 0x80) {
    if (lengthBytes_ == kMostBytes) End();
    return;
  }
  if (length_ == 0 || length_ > kMaxIworkIndex || length_ > kMaxIworkIndexes - indexes_) {
    return End();
  }
  indexSize_ = static_cast<size_t>(length_);
  indexes_ += indexSize_;
  length_ = 0;
  lengthBytes_ = 0;
}

void IworkRecords::TakeIndex(Bytes* content) {
  const size_t count = std::min(indexSize_ - kept_, content->size());
  const Bytes piece = content->first(count);
  *content = content->subspan(count);
  if (count == indexSize_) return ReadIndex(piece);
  if (index_ == nullptr) {
    if (held_.Hold(kMaxIworkIndex)) {
      index_.reset(Allocated(work_, new (std::nothrow) uint8_t[kMaxIworkIndex]));
    }
    if (index_ == nullptr) return End();
  }
  std::copy(piece.begin(), piece.end(), index_.get() + kept_);
  kept_ += count;
  if (kept_ < indexSize_) return;
  ReadIndex({index_.get(), kept_});
  explicit_bzero(index_.get(), kept_);
  kept_ = 0;
}

void IworkRecords::ReadIndex(Bytes index) {
  Record record{work_};
  indexSize_ = 0;
  if (!module_.readArchiveInfo(index.data(), index.size(), VisitMessage, &record)) return End();
  payload_ = record.payload;
  application_ = record.application;
  if (application_ != nullptr) End();
}

}  // namespace fi
