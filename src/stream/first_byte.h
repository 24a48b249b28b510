// The byte at the start of the file, on which a probe that runs on every file decides to look
// further.
#ifndef FI_STREAM_FIRST_BYTE_H_
#define FI_STREAM_FIRST_BYTE_H_

#include <cstdint>

#include "formatid/io.h"
#include "stream/id_stream.h"

namespace fi {

// kEndOfData for an empty file, or one that cannot be read. Leaves the stream behind the byte.
inline uint32_t FirstByte(IdentificationStream* stream) {
  if (IdStreamSeek(stream, 0, kIoFromStart) != 0) return kEndOfData;
  return IdStreamGetByte(stream);
}

}  // namespace fi

#endif  // FI_STREAM_FIRST_BYTE_H_
