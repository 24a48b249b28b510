#include "toolkit/zip/inflater.h"

namespace fi::zip {

Inflater::~Inflater() {
  if (ready_) inflateEnd(&stream_);
}

bool Inflater::Start() {
  if (ready_) return inflateReset(&stream_) == Z_OK;
  ready_ = inflateInit2(&stream_, -MAX_WBITS) == Z_OK;
  return ready_;
}

// With Z_FINISH a stream that ends in one step costs no window of 32 KB; one that does not goes on
// all the same, and reports the missing part as Z_BUF_ERROR.
Inflater::Step Inflater::Run(std::span<const uint8_t> input, uint8_t* output, uint32_t size) {
  stream_.next_in = const_cast<Bytef*>(input.data());  // it is not written to
  stream_.avail_in = static_cast<uInt>(input.size());
  stream_.next_out = output;
  stream_.avail_out = size;
  const int result = inflate(&stream_, Z_FINISH);
  return {static_cast<uint32_t>(input.size() - stream_.avail_in), size - stream_.avail_out,
          result != Z_OK && result != Z_BUF_ERROR, result == Z_MEM_ERROR};
}

}  // namespace fi::zip
