#include "probes/drawing/dxf_text.h"

#include <algorithm>
#include <iterator>

#include "registry/format_ids.h"
#include "stream/file_bytes.h"
#include "stream/first_byte.h"
#include "stream/text_view.h"

namespace fi {
namespace {

constexpr size_t kWindow = 4096;  // bytes looked at
constexpr uint32_t kMaxComments = 32;
constexpr size_t kMaxCodeDigits = 4;

constexpr int kSectionCode = 0;
constexpr int kNameCode = 2;
constexpr int kCommentCode = 999;
constexpr int kNoCode = -1;  // negative codes are for programs, never for files

constexpr std::string_view kSections[] = {"header",   "classes", "tables",         "blocks",
                                          "entities", "objects", "thumbnailimage", "acdsdata"};

struct Pair {
  int code = kNoCode;
  std::string_view value;
};

int CodeOf(std::string_view line) {
  line = TrimBlanks(line);
  if (line.empty() || line.size() > kMaxCodeDigits) return kNoCode;
  int code = 0;
  for (const char digit : line) {
    if (!IsDigit(digit)) return kNoCode;
    code = code * 10 + (digit - '0');
  }
  return code;
}

bool NextPair(Lines& lines, Pair* pair) {
  std::string_view code;
  if (!lines.Next(&code) || !lines.Next(&pair->value)) return false;
  pair->code = CodeOf(code);
  pair->value = TrimBlanks(pair->value);
  return pair->code != kNoCode;
}

bool MayBegin(uint32_t byte) { return byte == ' ' || byte == '\t' || (byte >= '0' && byte <= '9'); }

}  // namespace

bool IsDxfText(std::string_view text) {
  Lines lines(text);
  Pair pair;
  for (uint32_t comments = 0; comments <= kMaxComments; ++comments) {
    if (!NextPair(lines, &pair)) return false;
    if (pair.code != kCommentCode) break;
    if (!std::all_of(pair.value.begin(), pair.value.end(),
                     [](char c) { return static_cast<unsigned char>(c) >= 0x80 || IsPlain(c); })) {
      return false;
    }
  }
  if (pair.code != kSectionCode || !EqualsNoCase(pair.value, "section")) return false;
  if (!NextPair(lines, &pair) || pair.code != kNameCode) return false;
  return std::any_of(std::begin(kSections), std::end(kSections),
                     [&pair](std::string_view name) { return EqualsNoCase(pair.value, name); });
}

FormatId DxfTextProbe(IdentificationStream* stream) {
  if (!MayBegin(FirstByte(stream))) return kNoMatch;
  const FileBytes<kWindow> bytes(stream, 0);
  return IsDxfText(bytes.View()) ? kFormatDxfText : kNoMatch;
}

}  // namespace fi
