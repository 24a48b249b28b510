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
  if (form_.units == TextUnits::kBytes) {
    const FileBytes<kCapacity> bytes(stream, form_.start);
    size_ = bytes.View().copy(text_.data(), kCapacity);
    isCut_ = size_ == kCapacity && IdStreamGetByte(stream) != kEndOfData;
    return;
  }
  for (;;) {
    const int32_t unit = form_.units == TextUnits::kWordsLE ? IdStreamGetWordLE(stream)
                                                            : IdStreamGetWordBE(stream);
    if (unit < 0) return;
    isCut_ = size_ == kCapacity;
    if (isCut_) return;
    text_[size_++] = unit > 0x7F ? '?' : static_cast<char>(unit);
  }
}

}  // namespace fi
