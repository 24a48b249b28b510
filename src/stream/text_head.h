// The head of a text, decoded once for all probes of text formats: the mark is left out, and of
// 16-bit text each unit above ASCII becomes "?".
#ifndef FI_STREAM_TEXT_HEAD_H_
#define FI_STREAM_TEXT_HEAD_H_

#include <array>
#include <cstddef>
#include <string_view>

#include "stream/id_stream.h"
#include "stream/markup_reader.h"

namespace fi {

class TextHead {
 public:
  static constexpr size_t kCapacity = 4096;  // characters

  explicit TextHead(IdentificationStream* stream);

  std::string_view View() const { return {text_.data(), size_}; }
  // Whether the text goes on behind the window.
  bool isCut() const { return isCut_; }
  // Whether the file begins with a byte-order mark.
  bool isMarked() const { return form_.start != 0; }
  const TextForm& form() const { return form_; }

 private:
  void ReadBytes(IdentificationStream* stream);
  void ReadWords(IdentificationStream* stream);

  TextForm form_;
  std::array<char, kCapacity> text_;
  size_t size_ = 0;
  bool isCut_ = false;
};

}  // namespace fi

#endif  // FI_STREAM_TEXT_HEAD_H_
