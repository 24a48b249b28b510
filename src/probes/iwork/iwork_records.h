// The records of a decompressed iWork archive. Each is the length of an index (a varint), the index
// (a TSP.ArchiveInfo, which lists messages with type and length), and the messages one behind the
// other. The type of the document's root names the application.
#ifndef FI_PROBES_IWORK_IWORK_RECORDS_H_
#define FI_PROBES_IWORK_IWORK_RECORDS_H_

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>

#include "formatid/formatid.h"
#include "platform/iwork_module.h"
#include "platform/work.h"

namespace fi {

// An application, by the number of a message that only its documents have.
struct IworkApplication {
  uint32_t messageType;
  FormatId id;
  FormatId encryptedId;
};

// Bytes of one index, the largest piece in memory at once. Applications write some hundred bytes,
// and eight more for each object reference of a message.
inline constexpr size_t kMaxIworkIndex = size_t{1} << 20;

// Bytes of all indexes together, which bounds the time: a message of nothing takes two bytes.
inline constexpr size_t kMaxIworkIndexes = size_t{8} << 20;

// Walks through the records as the archive is decompressed, piece by piece.
class IworkRecords {
 public:
  // `work` is what the walk counts for, or null.
  IworkRecords(const IworkModule& module, Work* work) : module_(module), work_(work), held_(work) {}
  ~IworkRecords();
  IworkRecords(const IworkRecords&) = delete;
  IworkRecords& operator=(const IworkRecords&) = delete;

  // The next bytes of the archive.
  void Take(std::span<const uint8_t> content);

  // How many of the bytes that come next need not be given, only passed to Skip.
  uint64_t Unwanted() const { return ended_ ? UINT64_MAX : payload_; }

  // Passes over that many bytes. REQUIRES: count <= Unwanted().
  void Skip(uint64_t count) {
    if (!ended_) payload_ -= count;
  }

  // The application of the first message that is known; null when there is none so far. The walk
  // ends where a length or an index is damaged, and at the limits.
  const IworkApplication* application() const { return application_; }

 private:
  using Bytes = std::span<const uint8_t>;

  void TakeLength(Bytes* content);
  void TakeIndex(Bytes* content);
  void ReadIndex(Bytes index);
  void End() { ended_ = true; }

  const IworkModule& module_;
  Work* const work_;
  HeldMemory held_;
  bool ended_ = false;
  const IworkApplication* application_ = nullptr;
  uint64_t payload_ = 0;  // bytes up to the next record
  // Of the index that is next; its size is 0 until its length is complete.
  uint64_t length_ = 0;
  uint32_t lengthBytes_ = 0;
  size_t indexSize_ = 0;
  size_t indexes_ = 0;  // bytes of all so far
  // The beginning of an index that lies in several pieces.
  std::unique_ptr<uint8_t[]> index_;
  size_t kept_ = 0;
};

}  // namespace fi

#endif  // FI_PROBES_IWORK_IWORK_RECORDS_H_
