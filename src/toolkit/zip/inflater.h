// Raw deflate data (RFC 1951), inflated piece by piece.
#ifndef FI_TOOLKIT_ZIP_INFLATER_H_
#define FI_TOOLKIT_ZIP_INFLATER_H_

#include <zlib.h>

#include <cstdint>
#include <span>

namespace fi::zip {

class Inflater {
 public:
  Inflater() = default;
  ~Inflater();
  Inflater(const Inflater&) = delete;
  Inflater& operator=(const Inflater&) = delete;

  // Makes it ready for the beginning of a stream. False when memory runs out.
  bool Start();

  struct Step {
    uint32_t consumed;
    uint32_t produced;
    bool ended;     // the stream is complete or broken: there is no more
    bool noMemory;  // and that is why
  };

  // Goes on with the next bytes of the stream. REQUIRES: Start.
  Step Run(std::span<const uint8_t> input, uint8_t* output, uint32_t size);

 private:
  z_stream stream_{};
  bool ready_ = false;
};

}  // namespace fi::zip

#endif  // FI_TOOLKIT_ZIP_INFLATER_H_
