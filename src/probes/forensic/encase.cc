#include "probes/forensic/encase.h"

#include "formatid/io.h"
#include "registry/format_ids.h"

namespace fi {
namespace {

bool SeekTo(IdentificationStream* stream, int64_t offset) {
  return IdStreamSeek(stream, offset, kIoFromStart) == 0;
}

// The segments that a header of the second EnCase version can stand for.
struct SegmentIds {
  FormatId first;
  FormatId later;
  FormatId firstEncrypted;
  FormatId laterEncrypted;
};

// Whether the trailer of the second EnCase version has the flag of encryption.
// Deliberate: a file too short for a trailer is not refused. The word behind its header is read
// instead, and a missing word has no flag.
bool SaysEncrypted(IdentificationStream* stream) {
  constexpr int64_t kTrailerSize = 60;
  constexpr uint32_t kEncrypted = 0x2;
  (void)IdStreamSeek(stream, -kTrailerSize, kIoFromEnd);
  uint32_t flags = 0;
  (void)IdStreamGetDwordLE(stream, &flags);
  return (flags & kEncrypted) != 0;
}

FormatId SegmentId(IdentificationStream* stream, bool first, const SegmentIds& ids) {
  if (SaysEncrypted(stream)) return first ? ids.firstEncrypted : ids.laterEncrypted;
  return first ? ids.first : ids.later;
}

// The fields that the two kinds of the second EnCase version share: version 2.1, and none, the
// first or the second method of compression. Leaves the stream at the segment number.
bool PassVersion2Header(IdentificationStream* stream) {
  constexpr int32_t kVersion = 0x0102;  // the major number in the first byte
  if (!SeekTo(stream, 8) || IdStreamGetWordLE(stream) != kVersion) return false;
  const int32_t compression = IdStreamGetWordLE(stream);
  return compression >= 0 && compression <= 2;
}

// The segment number of a header of the first EnCase version, which stands between a 1 and
// `zeroBytes` of 0; -1 when those differ or the file ends.
int32_t Version1Segment(IdentificationStream* stream, uint32_t zeroBytes) {
  if (!SeekTo(stream, 8) || IdStreamGetByte(stream) != 1) return -1;
  const int32_t segment = IdStreamGetWordLE(stream);
  for (; zeroBytes > 0; --zeroBytes) {
    if (IdStreamGetByte(stream) != 0) return -1;
  }
  return segment;
}

}  // namespace

FormatId EnCaseEx01Probe(IdentificationStream* stream) {
  constexpr SegmentIds kIds = {kFormatEnCaseEx01First, kFormatEnCaseEx01Later,
                               kFormatEnCaseEx01FirstEncrypted, kFormatEnCaseEx01LaterEncrypted};
  if (!PassVersion2Header(stream)) return kNoMatch;
  uint32_t segment = 0;
  if (IdStreamGetDwordLE(stream, &segment) != 0 || segment == 0) return kNoMatch;
  return SegmentId(stream, segment == 1, kIds);
}

FormatId EnCaseL01Probe(IdentificationStream* stream) {
  constexpr int32_t kLastSegment = 774;
  const int32_t segment = Version1Segment(stream, 1);
  if (segment < 1 || segment > kLastSegment) return kNoMatch;
  return segment == 1 ? kFormatEnCaseL01First : kFormatEnCaseL01Later;
}

FormatId EnCaseLx01Probe(IdentificationStream* stream) {
  constexpr SegmentIds kIds = {kFormatEnCaseLx01First, kFormatEnCaseLx01Later,
                               kFormatEnCaseLx01FirstEncrypted, kFormatEnCaseLx01LaterEncrypted};
  constexpr int32_t kLastSegment = 2126;
  if (!PassVersion2Header(stream)) return kNoMatch;
  // Deliberate: the lower half of the number only.
  const int32_t segment = IdStreamGetWordLE(stream);
  if (segment < 1 || segment > kLastSegment) return kNoMatch;
  return SegmentId(stream, segment == 1, kIds);
}

FormatId EnCaseE01Probe(IdentificationStream* stream) {
  const int32_t segment = Version1Segment(stream, 2);
  if (segment < 1) return kNoMatch;
  // Deliberate: the variant form (6115) is not told apart; how it differs is not publicly known.
  return segment == 1 ? kFormatEnCaseE01First : kFormatEnCaseE01Later;
}

}  // namespace fi
