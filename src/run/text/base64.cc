#include "run/text/base64.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace fi::app {

void AppendBase64(std::string_view bytes, std::string& out) {
  constexpr char kAlphabet[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  for (; !bytes.empty(); bytes.remove_prefix(std::min<size_t>(bytes.size(), 3))) {
    const size_t count = std::min<size_t>(bytes.size(), 3);
    uint32_t group = 0;
    for (size_t i = 0; i < 3; ++i) {
      group = group << 8 | (i < count ? static_cast<uint8_t>(bytes[i]) : 0u);
    }
    for (uint32_t i = 0; i < 4; ++i) {
      out += i <= count ? kAlphabet[group >> (18 - 6 * i) & 63] : '=';
    }
  }
}

}  // namespace fi::app
