#include "stream/text_head.h"

#include <algorithm>
#include <cstring>

#include "formatid/io.h"
#include "stream/buffered_scan.h"
#include "stream/file_bytes.h"

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

TextHead::TextHead(IdentificationStream* stream) : form_(FormOf(stream)) {
  if (IdStreamSeek(stream, form_.start, kIoFromStart) != 0) return;
  if (form_.units == TextUnits::kBytes) {
    ReadBytes(stream);
  } else {
    ReadWords(stream);
  }
}

// Bytes are taken over as they are buffered.
void TextHead::ReadBytes(IdentificationStream* stream) {
  for (uint32_t c = IdStreamGetByte(stream); c != kEndOfData; c = IdStreamGetByte(stream)) {
    isCut_ = size_ == kCapacity;
    if (isCut_) return;
    text_[size_++] = static_cast<char>(c);
    const size_t more =
        std::min(kCapacity - size_, static_cast<size_t>(std::max(stream->remaining, 0)));
    std::memcpy(text_.data() + size_, stream->next, more);
    PassBuffered(stream, static_cast<uint32_t>(more));
    size_ += more;
  }
}

void TextHead::ReadWords(IdentificationStream* stream) {
  for (;;) {
    const int32_t unit =
        form_.units == TextUnits::kWordsLE ? IdStreamGetWordLE(stream) : IdStreamGetWordBE(stream);
    if (unit < 0) return;
    isCut_ = size_ == kCapacity;
    if (isCut_) return;
    text_[size_++] = unit > 0x7F ? '?' : static_cast<char>(unit);
  }
}

}  // namespace fi
