// The head of a text file as single bytes, whatever its encoding: what the delimited-text sniffer
// scans.
#ifndef FI_TOOLKIT_TEXT_TEXT_WINDOW_H_
#define FI_TOOLKIT_TEXT_TEXT_WINDOW_H_

#include <cstdint>
#include <memory>
#include <string_view>

#include "formatid/formatid.h"
#include "formatid/io.h"

namespace fi {

struct TextWindow {
  // ASCII characters stand for themselves; all that a delimited file needs is ASCII.
  std::string_view text;
  bool cut = false;  // the file may go on behind the window
};

// Holds the bytes of a window.
class TextBuffer {
 public:
  // Reads up to `size` bytes from the start of the file. `id` tells the encoding: UTF-16 text is
  // narrowed, with 0x80 for every code unit above ASCII, and a byte-order mark is left out. Empty
  // when nothing can be read. The window lives as long as this buffer, until the next call.
  TextWindow Read(IOHandle* handle, FormatId id, uint32_t size);

 private:
  std::unique_ptr<char[]> bytes_;
};

}  // namespace fi

#endif  // FI_TOOLKIT_TEXT_TEXT_WINDOW_H_
