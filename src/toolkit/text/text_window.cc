#include "toolkit/text/text_window.h"

#include <new>

#include "platform/io.h"
#include "platform/work.h"

namespace fi {
namespace {

constexpr FormatId kUtf16Text = 4003;

// Narrows UTF-16 in place; the number of characters.
uint32_t Narrow(char* bytes, uint32_t size) {
  const auto byteAt = [bytes](uint32_t i) { return static_cast<uint8_t>(bytes[i]); };
  if (size < 2) return 0;
  // A mark tells the byte order; without one, the first character is an ASCII one.
  const bool bigEndian = byteAt(0) == 0xFE || byteAt(0) == 0;
  const uint32_t low = bigEndian ? 1 : 0;
  const bool marked = byteAt(low) == 0xFF && byteAt(1 - low) == 0xFE;
  uint32_t out = 0;
  for (uint32_t in = marked ? 2 : 0; size - in >= 2; in += 2) {
    bytes[out++] = byteAt(in + 1 - low) == 0 ? bytes[in + low] : static_cast<char>(0x80);
  }
  return out;
}

}  // namespace

TextWindow TextBuffer::Read(IOHandle* handle, FormatId id, uint32_t size) {
  bytes_.reset(new (std::nothrow) char[size]);
  if (bytes_ == nullptr) NoteNoMemory(handle);
  if (bytes_ == nullptr || !io::Seek(handle, kIoFromStart, 0)) return {};
  uint32_t filled = 0;
  while (filled < size) {
    const uint32_t count = io::Read(handle, bytes_.get() + filled, size - filled);
    if (count == 0) break;
    filled += count;
  }
  const bool cut = filled == size;
  if (id == kUtf16Text) return {{bytes_.get(), Narrow(bytes_.get(), filled)}, cut};
  std::string_view text(bytes_.get(), filled);
  constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";
  if (text.substr(0, kUtf8Mark.size()) == kUtf8Mark) text.remove_prefix(kUtf8Mark.size());
  return {text, cut};
}

}  // namespace fi
