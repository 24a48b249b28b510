#include "probes/storage/legacy_document.h"

#include "registry/format_ids.h"
#include "stream/child_stream.h"

namespace fi {
namespace {

// A workbook begins with a record "beginning of file": the byte 9, and behind it the generation of
// the record.
// Deliberate: a stream that begins in another way is taken for a Word document.
FormatId ByFirstRecord(IdentificationStream* book) {
  constexpr uint32_t kBeginningOfFile = 0x09;
  if (IdStreamGetByte(book) != kBeginningOfFile) return kFormatWord6Or95;
  switch (IdStreamGetByte(book)) {
    case 0x00:
    case 0x02:
    case 0x04:
    case 0x08:
      return kFormatExcel5Or95;
    default:
      return kFormatWord6Or95;
  }
}

// Identifier, then version, 16 bits each. A version that cannot be read counts as a late one.
FormatId ByWordVersion(IdentificationStream* document) {
  constexpr int32_t kLastWord95 = 0x69;
  (void)IdStreamGetWordLE(document);
  const int32_t version = IdStreamGetWordLE(document);
  return version >= 0 && version <= kLastWord95 ? kFormatWord6Or95 : kFormatWord97;
}

}  // namespace

FormatId ProbeLegacyDocument(IdentificationStream* stream) {
  if (!IsStorage(stream->handle)) return kFormatWord6Or95;
  for (const char* name : {"Book", "Workbook"}) {
    if (const ChildStream book(stream->handle, name); book) return ByFirstRecord(book.get());
  }
  const ChildStream document(stream->handle, "WordDocument");
  return document ? ByWordVersion(document.get()) : kNoMatch;
}

}  // namespace fi
