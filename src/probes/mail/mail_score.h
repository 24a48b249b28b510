// The findings of a scan of header lines, in a message or in one of its parts.
#ifndef FI_PROBES_MAIL_MAIL_SCORE_H_
#define FI_PROBES_MAIL_MAIL_SCORE_H_

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "stream/line_reader.h"

namespace fi {

// What the header says about parts.
enum class MailParts : uint8_t {
  kNone,
  kRelated,        // a multipart/related content type is being read: its continuation lines count
  kMixedUnbounded  // a multipart/mixed or signed content type whose boundary was not on its line
};

// Headers that are looked at once, as bits of MailScore::seen.
enum MailHeader : uint16_t {
  kMimeVersion = 1 << 0,
  kContentType = 1 << 1,
  kContentDescription = 1 << 2,
  kTransferEncoding = 1 << 3,
  kNewsgroups = 1 << 4,
  kMessageId = 1 << 5,
  kDisposition = 1 << 6,
  kFrom = 1 << 7,
  kTo = 1 << 8,
  kSubject = 1 << 9,
  kDate = 1 << 10,
};

// The delimiter of the parts of a message, without its leading hyphens. Empty: there is none.
class MailBoundary {
 public:
  // Takes the value that a "boundary=" parameter begins with: up to the closing quote if it is
  // quoted, else the rest of the line. An empty value leaves no boundary.
  void Assign(std::string_view value) {
    if (value.starts_with('"')) {
      value.remove_prefix(1);
      value = value.substr(0, value.find('"'));
    }
    size_ = value.copy(bytes_.data(), bytes_.size());
  }
  void Clear() { size_ = 0; }
  bool Empty() const { return size_ == 0; }
  std::string_view Value() const { return {bytes_.data(), size_}; }

 private:
  LineBuffer bytes_;
  size_t size_ = 0;
};

// The counters are 16 bits wide and wrap: a header of more than 65,535 lines counts from 0 again.
struct MailScore {
  uint16_t line = 0;      // number of the line being looked at
  uint16_t mime = 0;      // points of MIME headers
  uint16_t envelope = 0;  // headers of the envelope: sender, receivers, subject, dates, stations

  // `envelope` when the first line came that is no known header.
  static constexpr uint16_t kNoOtherLine = 0xFFFF;
  uint16_t envelopeBeforeOther = kNoOtherLine;

  uint16_t nonTextLines = 0;
  uint16_t extensionHeaders = 0;  // "x-" headers
  uint16_t seen = 0;              // MailHeader bits

  MailParts enclosing = MailParts::kNone;  // what the message around this part said of its parts
  MailParts parts = MailParts::kNone;
  bool wantsBoundary = false;  // continuation lines may name the boundary
  MailBoundary boundary;

  bool mailboxSeparator = false;  // the first line is the "from " line of a mailbox
  bool numericFirstLine = false;
  bool secure = false;  // S/MIME
  bool isSigned = false;
  bool html = false;
  bool savedBy = false;  // a browser's mark in the sender header of a saved page
  bool foundBoundary = false;

  bool Saw(MailHeader header) const { return (seen & header) != 0; }
};

// Adds points to a counter, which wraps.
inline void Add(uint16_t& counter, uint32_t points) {
  counter = static_cast<uint16_t>(counter + points);
}

}  // namespace fi

#endif  // FI_PROBES_MAIL_MAIL_SCORE_H_
