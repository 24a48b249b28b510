#include "probes/text_formats/text_window.h"

#include "formatid/io.h"
#include "probes/file_bytes.h"

namespace fi {
namespace {

TextForm FormOf(IdentificationStream* stream) {
  const FileBytes<3> mark(stream, 0);
  if (mark.Holds(0, "\xEF\xBB\xBF")) return {TextUnits::kBytes, 3};
  if (mark.Holds(0, "\xFF\xFE")) return {TextUnits::kWordsLE, 2};
  if (mark.Holds(0, "\xFE\xFF")) return {TextUnits::kWordsBE, 2};
  return {};
}

}  // namespace

TextWindow::TextWindow(IdentificationStream* stream) : form_(FormOf(stream)) {
  if (IdStreamSeek(stream, form_.start, kIoFromStart) == 0) Read(stream);
}

void TextWindow::Read(IdentificationStream* stream) {
  for (;;) {
    uint32_t c = 0;
    if (form_.units == TextUnits::kBytes) {
      c = IdStreamGetByte(stream);
      if (c == kEndOfData) return;
    } else {
      const int32_t unit = form_.units == TextUnits::kWordsLE ? IdStreamGetWordLE(stream)
                                                              : IdStreamGetWordBE(stream);
      if (unit < 0) return;
      c = unit > 0x7F ? '?' : static_cast<uint32_t>(unit);
    }
    isCut_ = size_ == kCapacity;
    if (isCut_) return;
    text_[size_++] = static_cast<char>(c);
  }
}

}  // namespace fi
