// The size of a stream that is decrypted from its start to its end.
#ifndef FI_TOOLKIT_CRYPTO_STREAM_BYTES_H_
#define FI_TOOLKIT_CRYPTO_STREAM_BYTES_H_

#include <cstdint>
#include <optional>

#include "formatid/io.h"

namespace fi::crypto {

// The size of the stream in bytes, with the position at its start; none where that fails.
std::optional<uint64_t> StreamSize(IOHandle* stream);

}  // namespace fi::crypto

#endif  // FI_TOOLKIT_CRYPTO_STREAM_BYTES_H_
