#include "probes/system/dos_executable.h"

#include <string_view>

#include "registry/format_ids.h"
#include "stream/file_bytes.h"

namespace fi {
namespace {

constexpr size_t kDosHeaderSize = 28;
constexpr size_t kHeaderSize = 64;  // with the place of the newer header

using Header = FileBytes<kHeaderSize>;

// Text has letters where these fields are small.
bool IsDosProgram(const Header& header) {
  constexpr uint32_t kPageSize = 512;
  const uint32_t bytesInLastPage = header.WordLE(2);
  const uint32_t pages = header.WordLE(4);
  const uint32_t paragraphsOfHeader = header.WordLE(8);
  return header.size() >= kDosHeaderSize && bytesInLastPage < kPageSize && pages > 0 &&
         paragraphsOfHeader > 0;
}

bool HasNewerHeader(IdentificationStream* stream, const Header& header) {
  const uint32_t place = header.DwordLE(kHeaderSize - 4);
  if (header.size() < kHeaderSize || place < kHeaderSize) return false;
  const FileBytes<4> mark(stream, place);
  return mark.Holds(0, std::string_view("PE\0\0", 4)) ||
         (mark.size() == 4 && (mark.Holds(0, "NE") || mark.Holds(0, "LE") || mark.Holds(0, "LX")));
}

}  // namespace

FormatId DosExecutableProbe(IdentificationStream* stream) {
  const Header header(stream, 0);
  return IsDosProgram(header) || HasNewerHeader(stream, header) ? kFormatExecutable : kNoMatch;
}

}  // namespace fi
