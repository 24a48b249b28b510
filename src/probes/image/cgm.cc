#include "probes/image/cgm.h"

#include <string_view>

#include "registry/format_ids.h"
#include "stream/file_bytes.h"
#include "stream/text_view.h"

namespace fi {
namespace {

// An element of the binary form is a word, of which the lowest five bits hold the length of its
// parameters in bytes or, when all are set, say that another word does.
constexpr uint32_t kLengthBits = 0x001F;
constexpr uint32_t kBeginMetafile = 0x0020;
constexpr uint32_t kMetafileVersion = 0x1022;
constexpr uint32_t kNewestVersion = 4;
constexpr uint32_t kPartitioned = 0x8000;  // the parameters go on in another piece

// White space before the word that begins the clear text.
constexpr uint32_t kMaxBlanks = 32;
// Separators between that word and the name.
constexpr uint32_t kMaxSeparators = 8;

bool IsBinary(IdentificationStream* stream) {
  const FileBytes<4> begin(stream, 0);
  if ((begin.WordBE(0) & ~kLengthBits) != kBeginMetafile) return false;
  uint32_t length = begin.WordBE(0) & kLengthBits;
  int64_t next = 2;
  if (length == kLengthBits) {
    length = begin.WordBE(2);
    if (length >= kPartitioned) return false;
    next = 4;
  }
  const FileBytes<4> version(stream, next + length + length % 2);
  return version.WordBE(0) == kMetafileVersion && version.WordBE(2) >= 1 &&
         version.WordBE(2) <= kNewestVersion;
}

// The next byte, without the two bytes that clear text ignores wherever they stand in a word.
uint32_t NextOfWord(IdentificationStream* stream) {
  uint32_t byte = IdStreamGetByte(stream);
  for (uint32_t i = 0; i < kMaxSeparators && (byte == '_' || byte == '$'); ++i) {
    byte = IdStreamGetByte(stream);
  }
  return byte;
}

bool IsClearText(IdentificationStream* stream) {
  if (IdStreamSeek(stream, 0, kIoFromStart) != 0) return false;
  uint32_t byte = NextOfWord(stream);
  for (uint32_t i = 0; i < kMaxBlanks && IsWhiteSpaceByte(byte); ++i) byte = NextOfWord(stream);
  for (const char letter : std::string_view("BEGMF")) {
    if ((byte & ~0x20u) != static_cast<uint8_t>(letter)) return false;
    byte = NextOfWord(stream);
  }
  for (uint32_t i = 0; i < kMaxSeparators && IsWhiteSpaceByte(byte); ++i)
    byte = IdStreamGetByte(stream);
  return byte == '"' || byte == '\'';
}

}  // namespace

FormatId CgmProbe(IdentificationStream* stream) {
  return IsBinary(stream) || IsClearText(stream) ? kFormatCgm : kNoMatch;
}

}  // namespace fi
