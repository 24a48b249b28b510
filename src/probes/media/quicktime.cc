#include "probes/media/quicktime.h"

#include <algorithm>
#include <iterator>
#include <string_view>

#include "registry/format_ids.h"
#include "stream/file_bytes.h"

namespace fi {
namespace {

constexpr uint32_t kMaxAtoms = 8;

constexpr std::string_view kTypes[] = {"moov", "mdat", "free", "skip", "wide", "pnot", "PICT"};
constexpr std::string_view kMovieChildren[] = {"mvhd", "cmov", "rmra", "iods"};

// An atom's header, and the type of the atom inside it.
struct Atom {
  Atom(IdentificationStream* stream, uint64_t at, uint64_t fileSize)
      : bytes(stream, static_cast<int64_t>(at)) {
    room = fileSize - at;
    size = bytes.DwordBE(0);
    if (size == 1) {  // the size has 64 bits
      headerSize = 16;
      size = uint64_t{bytes.DwordBE(8)} << 32 | bytes.DwordBE(12);
    }
    toEnd = size == 0;
  }

  bool Is(std::string_view type) const { return bytes.Holds(4, type); }
  bool IsKnown() const {
    return std::any_of(std::begin(kTypes), std::end(kTypes),
                       [this](std::string_view type) { return Is(type); });
  }
  bool IsMovie() const {
    return Is("moov") &&
           std::any_of(std::begin(kMovieChildren), std::end(kMovieChildren),
                       [this](std::string_view type) { return bytes.Holds(headerSize + 4, type); });
  }
  bool Fits() const { return toEnd || (size >= headerSize && size <= room); }

  FileBytes<24> bytes;
  uint64_t room = 0;  // from here to the end of the file
  uint64_t size = 0;
  size_t headerSize = 8;
  bool toEnd = false;
};

bool WalkAtoms(IdentificationStream* stream) {
  const uint64_t fileSize = FileSize(stream);
  bool hasData = false;  // media data, whole, with another atom behind them
  bool hasWide = false;  // room for a longer header, kept by writers of media data
  uint64_t at = 0;
  for (uint32_t i = 0; i < kMaxAtoms && at < fileSize; ++i) {
    const Atom atom(stream, at, fileSize);
    if (!atom.IsKnown() || (i == 0 && !atom.Fits())) return false;
    if (atom.Is("moov")) return atom.IsMovie();
    if (hasData) return true;
    const bool ends = atom.toEnd || !atom.Fits();
    if (ends) return hasWide && atom.Is("mdat") && atom.size != 1;
    hasData |= atom.Is("mdat");
    hasWide |= atom.Is("wide");
    at += atom.size;
  }
  return false;
}

}  // namespace

FormatId QuickTimeProbe(IdentificationStream* stream) {
  // Nearly every file ends here.
  const FileBytes<8> first(stream, 0);
  const bool known = std::any_of(std::begin(kTypes), std::end(kTypes),
                                 [&](std::string_view type) { return first.Holds(4, type); });
  return known && WalkAtoms(stream) ? kFormatQuickTimeMovie : kNoMatch;
}

}  // namespace fi
