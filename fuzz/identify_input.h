// What an input of the target `identify` stands for. An input is a file as it is, so that any file
// may be a seed. Where its last four bytes are kMark, flags and a number, these two choose the
// flags and the name instead of the usual ones, and are no part of the file.
#ifndef FI_FUZZ_IDENTIFY_INPUT_H_
#define FI_FUZZ_IDENTIFY_INPUT_H_

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <string_view>

#include "formatid/formatid.h"

namespace fi::fuzz {

inline constexpr const char* kNames[] = {"x",     "x.ai",  "x.tga", "x.img", "x.wbm", "x.pwp",
                                         "x.jsh", "x.dat", "x.rbf", "x.pgl", "x.eml", "x.docx"};

inline constexpr std::string_view kMark = "\xF1\x1F";
inline constexpr uint32_t kAllFlags =
    kFiTextFallback | kFiUseFlags | kFiClassOnly | kFiDelimitedText | kFiSupplement;

struct IdentifyInput {
  std::string_view file;
  const char* name = kNames[0];
  uint32_t flags = kAllFlags & ~uint32_t{kFiClassOnly};
};

inline IdentifyInput ReadIdentifyInput(const uint8_t* data, size_t size) {
  IdentifyInput input;
  input.file = {reinterpret_cast<const char*>(data), size};
  if (size < kMark.size() + 2 ||
      input.file.substr(size - kMark.size() - 2, kMark.size()) != kMark) {
    return input;
  }
  // The behaviour comes from the flags, so that no run depends on the one before it.
  input.flags = (data[size - 2] & kAllFlags) | kFiUseFlags;
  input.name = kNames[data[size - 1] % std::size(kNames)];
  input.file.remove_suffix(kMark.size() + 2);
  return input;
}

}  // namespace fi::fuzz

#endif  // FI_FUZZ_IDENTIFY_INPUT_H_
