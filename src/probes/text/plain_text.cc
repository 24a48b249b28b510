// Plain text has no signature: its bytes are counted instead. The order of the questions is the
// order of their certainty: byte-order marks, NUL bytes, ASCII, UTF-8, EBCDIC, and last the 8-bit
// code pages, where nearly every byte is possible and only the shares speak. The figures behind the
// thresholds are in docs/text.md.
#include "probes/text/plain_text.h"

#include <algorithm>
#include <memory>
#include <new>
#include <numeric>

#include "platform/io.h"
#include "platform/work.h"
#include "probes/text/text_statistics.h"

namespace fi {
namespace {

constexpr FormatId kNotText = kFormatUnknown;

constexpr uint32_t kWindow = 64 * 1024;  // bytes read from the start of the file

struct Window {
  Bytes text;
  uint64_t fileSize = 0;

  bool IsCut() const { return fileSize > text.size(); }
};

// The size of the file, or the window's where the handle does not tell. Moves the handle.
uint64_t FileSize(IOHandle* handle) {
  if (io::Has64Bit(handle)) {
    int64_t size = 0;
    if (io::Seek64(handle, kIoFromEnd, 0) && io::Tell64(handle, &size) && size >= 0) {
      return static_cast<uint64_t>(size);
    }
  }
  uint32_t size = 0;
  return io::Seek(handle, kIoFromEnd, 0) && io::Tell(handle, &size) ? size : kWindow;
}

// Controls: text of any size may hold one in 64 bytes, and the filler at the end of a CP/M or DOS
// file does not count.
constexpr uint32_t kBytesPerControl = 64;

bool HasFewControls(uint32_t control, size_t size) { return control * kBytesPerControl <= size; }

// Drops the SUB characters that end a DOS file, when a line end shows that they follow text.
Bytes WithoutDosEnd(Bytes text) {
  constexpr uint8_t kSub = 0x1A;
  size_t size = text.size();
  while (size > 0 && text[size - 1] == kSub) --size;
  if (size == text.size()) return text;
  const Bytes rest = text.first(size);
  const bool hasLineEnd =
      std::any_of(rest.begin(), rest.end(), [](uint8_t byte) { return byte == 10 || byte == 13; });
  return hasLineEnd ? rest : text;
}

FormatId ByMark(Bytes text) {
  if (text.size() < 2) return kNotText;
  if ((text[0] == 0xFF && text[1] == 0xFE) || (text[0] == 0xFE && text[1] == 0xFF)) {
    return kTextUtf16;
  }
  // Deliberate: two of the mark's three bytes decide.
  return text[0] == 0xEF && text[1] == 0xBB ? kTextUtf8 : kNotText;
}

// Whether the text begins like UTF-16 without a mark whose first character is a Latin one.
bool MayBeUtf16(Bytes text) { return text.size() >= 2 && (text[0] == 0) != (text[1] == 0); }

// Whether the code unit belongs to a block of a script in daily use; six of ten random units do.
bool IsCommonUnit(uint32_t unit) {
  struct Range {
    uint16_t first;
    uint16_t last;
  };
  constexpr Range kCommon[] = {
      {0x00A0, 0x024F}, {0x0300, 0x074F}, {0x0900, 0x0EDF}, {0x10A0, 0x11FF},
      {0x1E00, 0x206F}, {0x20A0, 0x27BF}, {0x3000, 0x33FF}, {0x4E00, 0x9FFF},
      {0xAC00, 0xD7A3}, {0xFB00, 0xFDFB}, {0xFE70, 0xFEFF}, {0xFF01, 0xFFEE},
  };
  return std::any_of(std::begin(kCommon), std::end(kCommon), [unit](const Range& range) {
    return unit >= range.first && unit <= range.last;
  });
}

// Whether the bytes make sense as UTF-16 without a mark, in the byte order in which the first
// character is a Latin one.
bool IsUtf16(const Window& window) {
  // Units of other blocks; of random units one in three is.
  constexpr uint32_t kUnitsPerOdd = 32;
  const Bytes text = window.text;
  if (window.fileSize % 2 != 0) return false;
  const size_t low = text[0] == 0 ? 1 : 0;
  uint32_t control = 0;
  uint32_t odd = 0;
  uint32_t ascii = 0;
  bool wantsLow = false;
  const size_t units = text.size() / 2;
  for (size_t i = 0; i < units; ++i) {
    const uint32_t unit = text[2 * i + low] + 256U * text[2 * i + 1 - low];
    const bool isLow = (unit & 0xFC00) == 0xDC00;
    if (unit == 0 || isLow != wantsLow) return false;
    wantsLow = (unit & 0xFC00) == 0xD800;
    if (wantsLow || isLow) continue;
    if (unit < 0x80) {
      ++ascii;
      if (IsControl(static_cast<uint8_t>(unit))) ++control;
    } else if (!IsCommonUnit(unit)) {
      ++odd;
    }
  }
  // Blanks, line ends and digits are ASCII in every script.
  constexpr uint32_t kUnitsPerAscii = 64;
  if (wantsLow && !window.IsCut()) return false;
  return HasFewControls(control, units) && odd * kUnitsPerOdd <= units &&
         ascii * kUnitsPerAscii >= units;
}

uint32_t Sum(const Histogram& histogram, uint32_t first, uint32_t last) {
  return std::accumulate(histogram.begin() + first, histogram.begin() + last + 1, uint32_t{0});
}

// EBCDIC in its many code pages shares letters, digits, the blank and the line ends; the ASCII
// blank and line feed do not occur in it, while Shift-JIS and Big5 have 0x40 as a second byte
// beside them.
bool IsEbcdic(const Histogram& histogram, size_t size) {
  constexpr uint32_t kLeastBlanks = 2;     // one in a small file is chance
  constexpr uint32_t kBytesPerBlank = 64;  // prose has one in 7, source one in 20
  constexpr uint32_t kBlanksPerAscii = 8;
  const uint32_t blanks = histogram[0x40];
  uint32_t usual = blanks + histogram[0x15] + histogram[0x25] + histogram[0x0D];
  for (const uint32_t row : {0x81U, 0x91U, 0xC1U, 0xD1U}) usual += Sum(histogram, row, row + 8);
  for (const uint32_t row : {0xA2U, 0xE2U}) usual += Sum(histogram, row, row + 7);
  usual += Sum(histogram, 0xF0, 0xF9);
  return blanks >= kLeastBlanks && blanks * kBytesPerBlank >= size &&
         (histogram[' '] + histogram['\n']) * kBlanksPerAscii <= blanks && usual * 2 >= size;
}

// Bytes of a code page, one or two to a character. Controls rule binary data out (compressed data
// has one in ten bytes), and so does a lack of blanks (pixels, plotter data).
bool IsCodePage(const Histogram& histogram, const ByteCounts& counts, size_t size) {
  constexpr uint32_t kBytesPerBlank = 128;
  constexpr uint32_t kBytesPerStrayControl = 512;
  // A smaller file can lack controls by chance: there, high bytes must be few, or blanks and
  // letters outweigh the rest of ASCII by this much.
  constexpr size_t kSmall = 128;
  constexpr uint32_t kBytesPerHigh = 8;
  constexpr uint32_t kEvidence = 6;
  constexpr uint32_t kBlankWeight = 3;
  const uint32_t blanks = histogram[' '] + histogram['\t'] + histogram['\n'] + histogram['\r'];
  if (blanks * kBytesPerBlank < size || counts.control * kBytesPerStrayControl > size) return false;
  const uint32_t letters = Sum(histogram, 'A', 'Z') + Sum(histogram, 'a', 'z');
  const auto rest = static_cast<uint32_t>(size) - counts.high - blanks - letters;
  return size >= kSmall || counts.high * kBytesPerHigh <= size ||
         blanks * kBlankWeight + letters >= rest + kEvidence;
}

FormatId ClassifyBytes(const Window& window) {
  const Bytes text = WithoutDosEnd(window.text);
  const ByteCounts counts = CountBytes(text);
  if (counts.hasNul) return kNotText;
  const bool fewControls = HasFewControls(counts.control, text.size());
  if (counts.high == 0) return fewControls ? kTextAscii : kNotText;
  if (IsValidUtf8(text.subspan(counts.ascii), window.IsCut())) {
    return fewControls ? kTextUtf8 : kNotText;
  }
  const Histogram histogram = CountValues(text);
  if (IsEbcdic(histogram, text.size())) return kTextEbcdic;
  return IsCodePage(histogram, counts, text.size()) ? kTextCodePage : kNotText;
}

FormatId ClassifyWindow(const Window& window) {
  const Bytes text = window.text;
  if (text.empty()) return kNotText;
  if (const FormatId id = ByMark(text); id != kNotText) return id;
  if (MayBeUtf16(text)) return IsUtf16(window) ? kTextUtf16 : kNotText;
  return ClassifyBytes(window);
}

}  // namespace

bool IsBinaryHead(Bytes head) {
  if (head.size() < 2 || ByMark(head) != kNotText) return false;
  if (!MayBeUtf16(head)) return std::find(head.begin(), head.end(), 0) != head.end();
  for (size_t i = 0; head.size() - i >= 2; i += 2) {
    if (head[i] == 0 && head[i + 1] == 0) return true;
  }
  return false;
}

FormatId ClassifyPlainText(IdentificationStream* stream) {
  // Most binary files show in the bytes that the signatures have left in the stream's buffer.
  if (stream->bufferPos == 0 && IsBinaryHead(Bytes(stream->buffer, stream->filled))) {
    return kNotText;
  }
  IOHandle* handle = stream->handle;
  const uint64_t fileSize = FileSize(handle);
  const auto size = static_cast<uint32_t>(std::min<uint64_t>(fileSize, kWindow));
  const std::unique_ptr<uint8_t[]> buffer(new (std::nothrow) uint8_t[size]);
  if (buffer == nullptr) NoteNoMemory(handle);
  if (buffer == nullptr || !io::Seek(handle, kIoFromStart, 0)) return kNotText;
  const size_t filled = io::ReadFully(handle, buffer.get(), size);
  return ClassifyWindow({Bytes(buffer.get(), filled), fileSize});
}

}  // namespace fi
