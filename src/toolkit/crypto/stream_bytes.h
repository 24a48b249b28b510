// Whole reads of a handle, for streams that are decrypted from their start to their end.
#ifndef FI_TOOLKIT_CRYPTO_STREAM_BYTES_H_
#define FI_TOOLKIT_CRYPTO_STREAM_BYTES_H_

#include <cstddef>
#include <cstdint>
#include <optional>

#include "formatid/io.h"

namespace fi::crypto {

// The size of the stream in bytes, with the position at its start; none where that fails.
std::optional<uint64_t> StreamSize(IOHandle* stream);

// Reads until `size` bytes are there or the stream ends, and returns their number: a read may give
// less than it was asked for.
size_t ReadFully(IOHandle* stream, uint8_t* buffer, size_t size);

}  // namespace fi::crypto

#endif  // FI_TOOLKIT_CRYPTO_STREAM_BYTES_H_
