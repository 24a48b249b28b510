// The functions of liblzma that are called. The library is loaded when the first compressed header
// of a 7z archive is met, and not with the program: most runs never need it.
#ifndef FI_TOOLKIT_LZMA_LIBLZMA_H_
#define FI_TOOLKIT_LZMA_LIBLZMA_H_

#include <lzma.h>

namespace fi::lzma {

struct LibLzma {
  decltype(&::lzma_raw_decoder) rawDecoder;
  decltype(&::lzma_code) code;
  decltype(&::lzma_end) end;
};

// The functions, all of them present; null when the system has no liblzma. It stays loaded until
// the process ends. Thread-safe.
const LibLzma* LoadLibLzma();

}  // namespace fi::lzma

#endif  // FI_TOOLKIT_LZMA_LIBLZMA_H_
