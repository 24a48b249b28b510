#include "probes/document/pdf_header.h"

#include <algorithm>
#include <string_view>

#include "registry/format_ids.h"
#include "stream/file_bytes.h"
#include "stream/text_view.h"

namespace fi {
namespace {

constexpr std::string_view kHeader = "%PDF-";
constexpr std::string_view kMark = "\xEF\xBB\xBF";
constexpr size_t kLastHeader = 1024;  // greatest offset of a header
constexpr size_t kWindow = 2048;
constexpr size_t kTail = 2048;     // the end of the file, where the end mark stands
constexpr size_t kBefore = 64;     // bytes before the header that tell text from wrapping
constexpr size_t kObjects = 1024;  // bytes behind the header that hold the first object

// "1.4" and what may follow it.
bool IsVersion(std::string_view text) {
  if (text.size() < 3 || !IsDigit(text[0]) || text[1] != '.' || !IsDigit(text[2])) return false;
  if (text.size() == 3) return false;
  const char next = text[3];
  return IsSpaceOrTab(next) || IsLineEnd(next) || next == '\0' || next == '%';
}

bool IsSpaces(std::string_view text) { return SkipSpace(text).empty(); }

// A header stands at the start of a line, or behind bytes that are no text.
bool MayPrecede(std::string_view before) {
  if (IsSpaces(before)) return true;
  const char last = before.back();
  return IsLineEnd(last) || last == '\0' || static_cast<uint8_t>(last) >= 0x80;
}

// Whether what stands right before the header reads as text: then it may be a text about PDF.
bool IsText(std::string_view before) {
  if (before.size() > kBefore) before.remove_prefix(before.size() - kBefore);
  return !IsSpaces(before) && std::all_of(before.begin(), before.end(), IsPlain);
}

bool HasEndMark(IdentificationStream* stream) {
  const uint64_t size = FileSize(stream);
  const uint64_t offset = size > kTail ? size - kTail : 0;
  const FileBytes<kTail> tail(stream, static_cast<int64_t>(offset));
  return tail.View().find("%%EOF") != std::string_view::npos;
}

bool IsHeader(IdentificationStream* stream, std::string_view text, size_t offset) {
  const std::string_view before = text.substr(0, offset);
  const std::string_view behind = text.substr(offset + kHeader.size());
  if (!IsVersion(behind) || !MayPrecede(before)) return false;
  if (!IsText(before)) return true;
  return behind.substr(0, kObjects).find(" 0 obj") != std::string_view::npos || HasEndMark(stream);
}

bool HoldsHeader(IdentificationStream* stream, std::string_view text) {
  size_t offset = text.find(kHeader);
  while (offset <= kLastHeader) {  // "not found" is beyond it
    if (IsHeader(stream, text, offset)) return true;
    offset = text.find(kHeader, offset + 1);
  }
  return false;
}

}  // namespace

bool HasPdfHeader(IdentificationStream* stream) {
  const FileBytes<kWindow> bytes(stream, 0);
  return HoldsHeader(stream, bytes.View());
}

FormatId PdfHeaderProbe(IdentificationStream* stream) {
  const FileBytes<kWindow> bytes(stream, 0);
  if (bytes.Holds(0, kMark)) return kNoMatch;
  return HoldsHeader(stream, bytes.View()) ? kFormatPdf : kNoMatch;
}

}  // namespace fi
