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

}  // namespace

FormatId ProbeWorkbook(IdentificationStream* stream) {
  if (!IsStorage(stream->handle)) return kFormatExcel97;
  for (const char* name : {"Workbook", "WORKBOOK", "Book", "BOOK"}) {
    const ChildStream book(stream->handle, name, kOpenWorkbook);
    if (book) return ByBuild(book.get());
  }
  return kNoMatch;
}

}  // namespace fi
