// The structure of a PDF file (ISO 32000-1, 7.5): header, cross-reference sections, trailer, and
// objects by their numbers. Nothing is repaired: an object that the sections do not lead to is
// absent.
#ifndef FI_PROPERTIES_PDF_PDF_FILE_H_
#define FI_PROPERTIES_PDF_PDF_FILE_H_

#include <array>
#include <cstdint>
#include <memory>
#include <span>
#include <string_view>

#include "stream/id_stream.h"

namespace fi::pdf {

// What is read of a file beside its tail, in bytes.
inline constexpr uint32_t kMaxBytesRead = 256 * 1024;

class PdfFile {
 public:
  // `stream` is borrowed. Null when memory runs out.
  static std::unique_ptr<PdfFile> Make(IdentificationStream* stream);

  // The first kilobyte, from the header on. Empty without a header.
  std::string_view head() const { return head_; }
  int64_t headerOffset() const { return headerOffset_; }

  // Bytes behind the line of the last end-of-file mark; -1 when the tail has no mark.
  int64_t trailingBytes() const { return trailingBytes_; }
  bool hasStartXref() const { return startXref_ > 0; }
  int64_t startXref() const { return startXref_; }
  int64_t size() const { return size_; }

  // The dictionary of the newest trailer; empty when the cross-reference section cannot be read.
  std::string_view trailer() const { return trailer_; }

  // The value of an object, up to 16 KB of it, until the next call. Empty when it is not found.
  std::string_view Object(uint32_t number);

  // What `value` stands for: the object that it refers to, else itself.
  std::string_view Resolve(std::string_view value);

  // The first bytes of the stream of an object, inflated where it is packed so, until the next
  // call.
  std::string_view StreamOf(uint32_t number);

 private:
  static constexpr uint32_t kHeadSize = 1024;
  static constexpr uint32_t kTailSize = 4096;
  static constexpr uint32_t kTrailerSize = 4096;
  static constexpr uint32_t kObjectSize = 16 * 1024;
  static constexpr uint32_t kPackedSize = 128 * 1024;
  static constexpr uint32_t kInflatedSize = 512 * 1024;

  // Where an object lies: at an offset, or as the n-th of an object stream.
  struct Place {
    enum class Kind : uint8_t { kNone, kOffset, kInStream } kind = Kind::kNone;
    uint64_t where = 0;  // the offset, or the number of the object stream
  };

  // A cross-reference section and those it points to; 0: none.
  struct Section {
    int64_t offset = 0;
    int64_t previous = 0;
    int64_t hybrid = 0;
  };

  explicit PdfFile(IdentificationStream* stream) : stream_(stream) {}

  void ReadHead();
  void ReadTail();
  uint32_t ReadAt(int64_t offset, std::span<char> out);
  std::string_view ReadText(int64_t offset, std::span<char> out);

  Place Find(uint32_t number);
  bool LookInSection(uint32_t number, Section* section, Place* place);
  bool LookInTable(uint32_t number, int64_t offset, Place* place, int64_t* trailerOffset);
  bool LookInStream(uint32_t number, Section* section, Place* place);
  void KeepTrailer(std::string_view dictionary);
  std::string_view ReadObjectAt(uint64_t offset, uint32_t number, std::span<char> out,
                                int64_t* dataOffset);
  std::string_view Inflated(std::string_view dictionary, int64_t dataOffset);
  std::string_view ObjectInStream(uint32_t number, uint64_t streamNumber);

  IdentificationStream* const stream_;
  int64_t size_ = 0;
  uint32_t left_ = kMaxBytesRead;
  int64_t headerOffset_ = -1;
  int64_t trailingBytes_ = -1;
  int64_t startXref_ = 0;
  int64_t inflatedFrom_ = -1;  // offset of the packed data that inflated_ holds
  size_t inflatedLength_ = 0;
  std::string_view head_;
  std::string_view trailer_;
  std::array<char, kHeadSize> headBytes_;
  std::array<char, kTrailerSize> trailerBytes_;
  std::array<char, kObjectSize> object_;
  std::array<char, kObjectSize> section_;
  std::array<char, kPackedSize> packed_;
  std::array<char, kInflatedSize> inflated_;
};

}  // namespace fi::pdf

#endif  // FI_PROPERTIES_PDF_PDF_FILE_H_
