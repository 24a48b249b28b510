#include <algorithm>

#include "platform/lzma.h"
#include "toolkit/lzma/liblzma.h"

namespace fi {
namespace {

constexpr size_t kPropertiesSize = 5;

// One byte holds three counts of bits, the other four the size of the dictionary.
bool ReadOptions(std::span<const uint8_t> properties, size_t outSize, lzma_options_lzma* options) {
  constexpr uint32_t kLiteralContexts = 9;
  constexpr uint32_t kLiteralPositions = 5;
  constexpr uint32_t kCombinations = kLiteralContexts * kLiteralPositions * 5;
  if (properties.size() != kPropertiesSize || properties[0] >= kCombinations) return false;
  options->lc = properties[0] % kLiteralContexts;
  options->lp = properties[0] / kLiteralContexts % kLiteralPositions;
  options->pb = properties[0] / (kLiteralContexts * kLiteralPositions);
  // Nothing refers to what lies further back than the first byte of the output.
  options->dict_size = std::max(static_cast<uint32_t>(std::min<size_t>(outSize, UINT32_MAX)),
                                uint32_t{LZMA_DICT_SIZE_MIN});
  return true;
}

}  // namespace

size_t DecompressLzma(std::span<const uint8_t> properties, std::span<const uint8_t> packed,
                      std::span<uint8_t> out) {
  const lzma::LibLzma* const lib = lzma::LoadLibLzma();
  lzma_options_lzma options{};
  if (lib == nullptr || !ReadOptions(properties, out.size(), &options)) return 0;
  const lzma_filter filters[] = {{LZMA_FILTER_LZMA1, &options}, {LZMA_VLI_UNKNOWN, nullptr}};
  lzma_stream stream = LZMA_STREAM_INIT;
  if (lib->rawDecoder(&stream, filters) != LZMA_OK) return 0;
  stream.next_in = packed.data();
  stream.avail_in = packed.size();
  stream.next_out = out.data();
  stream.avail_out = out.size();
  const bool hasRun = lib->code(&stream, LZMA_RUN) != LZMA_PROG_ERROR;
  const size_t stored = hasRun ? out.size() - stream.avail_out : 0;
  lib->end(&stream);
  return stored;
}

}  // namespace fi
