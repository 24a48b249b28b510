#include "stream/markup_reader.h"

#include "formatid/io.h"

namespace fi {

MarkupReader::MarkupReader(IdentificationStream* stream, const TextForm& form, uint32_t limit)
    : stream_(stream), units_(form.units), left_(limit) {
  if (IdStreamSeek(stream, form.start, kIoFromStart) != 0) left_ = 0;
}

uint32_t MarkupReader::Next() {
  if (held_) {
    held_ = false;
    return last_;
  }
  last_ = left_ > 0 ? Read() : kEndOfData;
  if (last_ == 0) {
    metNul_ = true;
    last_ = kEndOfData;
  }
  if (last_ == kEndOfData) left_ = 0;
  if (left_ > 0) --left_;
  return last_;
}

uint32_t MarkupReader::Read() {
  if (units_ == TextUnits::kBytes) return IdStreamGetByte(stream_);
  const int32_t unit =
      units_ == TextUnits::kWordsLE ? IdStreamGetWordLE(stream_) : IdStreamGetWordBE(stream_);
  if (unit < 0) return kEndOfData;
  return unit > 0x7F ? '?' : static_cast<uint32_t>(unit);
}

uint32_t MarkupReader::NextBehindSpace() {
  uint32_t c = Next();
  while (IsMarkupSpace(c)) c = Next();
  return c;
}

bool MarkupReader::SkipPast(std::string_view end) {
  // All characters before the last are the same, so that their number says all.
  size_t seen = 0;
  for (uint32_t c = Next(); c != kEndOfData; c = Next()) {
    if (seen + 1 >= end.size() && c == static_cast<uint8_t>(end.back())) return true;
    seen = c == static_cast<uint8_t>(end.front()) ? seen + 1 : 0;
  }
  return false;
}

}  // namespace fi
