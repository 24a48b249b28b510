#include "probes/keys/der_objects.h"

#include <cstdint>
#include <optional>
#include <string_view>

#include "registry/format_ids.h"
#include "stream/file_bytes.h"

namespace fi {
namespace {

using namespace std::string_view_literals;

using Head = FileBytes<64>;

constexpr uint8_t kSequence = 0x30;
constexpr uint8_t kIndefinite = 0x80;

// pkcs-7 (1.2.840.113549.1.7) as an object identifier of nine bytes, without its last arc.
constexpr auto kPkcs7 = "\x06\x09\x2A\x86\x48\x86\xF7\x0D\x01\x07"sv;

struct Sequence {
  size_t content = 0;              // where its first element begins
  std::optional<uint64_t> length;  // of the content; none where it ends with a mark
};

// The sequence at `offset`, if one with a length of more than 127 bytes begins there.
std::optional<Sequence> LongSequenceAt(const Head& head, size_t offset) {
  constexpr uint8_t kLongest = 4;
  if (head.Byte(offset) != kSequence || !head.Has(offset, 2)) return std::nullopt;
  const uint8_t form = head.Byte(offset + 1);
  if (form < kIndefinite || form > kIndefinite + kLongest) return std::nullopt;
  Sequence sequence;
  sequence.content = offset + 2;
  if (form == kIndefinite) return sequence;
  uint64_t length = 0;
  for (int i = kIndefinite; i < form; ++i) length = length << 8 | head.Byte(sequence.content++);
  sequence.length = length;
  return sequence;
}

FormatId FormatOfContent(const Head& head, size_t at) {
  if (head.Holds(at, kPkcs7)) return kFormatCmsDer;
  // PKCS #12: version 3, then a CMS object.
  if (head.Holds(at, "\x02\x01\x03"sv)) {
    const std::optional<Sequence> inner = LongSequenceAt(head, at + 3);
    return inner && head.Holds(inner->content, kPkcs7) ? kFormatPkcs12 : kNoMatch;
  }
  // A certificate of version 2 or 3: what is signed begins with the version and a serial number.
  const std::optional<Sequence> inner = LongSequenceAt(head, at);
  if (!inner || !head.Holds(inner->content, "\xA0\x03\x02\x01"sv)) return kNoMatch;
  const uint8_t version = head.Byte(inner->content + 4);
  const bool matches = version >= 1 && version <= 2 && head.Byte(inner->content + 5) == 0x02;
  return matches ? kFormatCertificateDer : kNoMatch;
}

}  // namespace

FormatId DerObjectProbe(IdentificationStream* stream) {
  constexpr uint64_t kLineEnd = 2;
  const Head head(stream, 0);
  const std::optional<Sequence> whole = LongSequenceAt(head, 0);
  if (!whole) return kNoMatch;
  const FormatId id = FormatOfContent(head, whole->content);
  if (id == kNoMatch || !whole->length) return id;
  const uint64_t size = FileSize(stream);
  const uint64_t end = whole->content + *whole->length;
  // What stands behind a PKCS #12 object is left alone by what reads it.
  return end <= size && (size - end <= kLineEnd || id == kFormatPkcs12) ? id : kNoMatch;
}

}  // namespace fi
