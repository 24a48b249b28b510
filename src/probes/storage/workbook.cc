#include "probes/storage/workbook.h"

#include "registry/format_ids.h"
#include "stream/child_stream.h"

namespace fi {
namespace {

// Deliberate: the workbook is opened with these flags, where all other children are opened with 1.
// Both ask for reading; a host that opens children itself may tell them apart.
constexpr uint32_t kOpenWorkbook = 513;

// The first record: type, length, version and kind, then build and year, 16 bits each.
constexpr uint32_t kBuildAt = 8;
constexpr uint32_t kYearAt = 10;
constexpr int32_t kYearOfExcel97 = 1996;

FormatId ByBuild(IdentificationStream* book) {
  (void)IdStreamSeek(book, kBuildAt, kIoFromStart);
  const int32_t build = IdStreamGetWordLE(book);
  if (build < 0) return kFormatExcel97;
  (void)IdStreamSeek(book, kYearAt, kIoFromStart);
  const int32_t year = IdStreamGetWordLE(book);
  if (year < 0 || year == kYearOfExcel97) return kFormatExcel97;
  switch (build) {
    case 5110:
    case 5612:
      return kFormatExcel2003;
    case 6111:
    case 6214:
    case 7106:
    case 8124:
      return kFormatExcel2002;
    default:
      return kFormatExcel2000;
  }
}

constexpr uint32_t kVersionAt = 4;
constexpr int32_t kBiff8 = 0x0600;

// The version of the stream's first record; negative where there is none.
int32_t VersionOf(IOHandle* document, const char* lower, const char* upper) {
  for (const char* name : {lower, upper}) {
    const ChildStream book(document, name, kOpenWorkbook);
    if (!book) continue;
    (void)IdStreamSeek(book.get(), kVersionAt, kIoFromStart);
    return IdStreamGetWordLE(book.get());
  }
  return -1;
}

}  // namespace

bool IsBiff8Workbook(IOHandle* document) {
  const int32_t older = VersionOf(document, "Book", "BOOK");
  if (older >= 0) return older == kBiff8;
  return VersionOf(document, "Workbook", "WORKBOOK") == kBiff8;
}

FormatId ProbeWorkbook(IdentificationStream* stream) {
  if (!IsStorage(stream->handle)) return kFormatExcel97;
  for (const char* name : {"Workbook", "WORKBOOK", "Book", "BOOK"}) {
    const ChildStream book(stream->handle, name, kOpenWorkbook);
    if (book) return ByBuild(book.get());
  }
  return kNoMatch;
}

}  // namespace fi
