#include "platform/iwork_module.h"

#include <google/protobuf/io/coded_stream.h>
#include <snappy-c.h>

#include <array>
#include <climits>

#include "platform/no_throw.h"

namespace fi {
namespace {

const char* Chars(const uint8_t* bytes) { return reinterpret_cast<const char*>(bytes); }

bool ReadBlockSize(const uint8_t* block, size_t size, size_t* contentSize) noexcept {
  return snappy_uncompressed_length(Chars(block), size, contentSize) == SNAPPY_OK;
}

bool ReadBlock(const uint8_t* block, size_t size, uint8_t* content, size_t contentSize) noexcept {
  size_t stored = contentSize;
  return snappy_uncompress(Chars(block), size, reinterpret_cast<char*>(content), &stored) ==
             SNAPPY_OK &&
         stored == contentSize;
}

bool CheckBlock(const uint8_t* block, size_t size) noexcept {
  return snappy_validate_compressed_buffer(Chars(block), size) == SNAPPY_OK;
}

enum WireType : uint32_t {
  kVarint = 0,
  kFixed64 = 1,
  kBytes = 2,
  kGroup = 3,
  kGroupEnd = 4,
  kFixed32 = 5
};

constexpr uint32_t Tag(uint32_t number, WireType type) { return number << 3 | type; }
constexpr uint32_t kMessages = Tag(2, kBytes);

// Goes through a TSP.ArchiveInfo, which is
//
//   1 identifier (number)     2 messages (each a MessageInfo)     3 whether to merge (number)
//
// and its messages, which are
//
//   1 type (number)     2 version (numbers)     3 length of the payload (number)
//   5, 6, 8 references (numbers)     others bytes
//
// Numbers are varints. A list of them stands one by one, or as bytes. What is of another kind than
// its number has, or of an unknown number, is passed over.
class InfoReader {
 public:
  InfoReader(const uint8_t* info, int size, IworkMessageVisitor visit, void* context)
      : input_(info, size), visit_(visit), context_(context) {
    (void)input_.PushLimit(size);
  }

  bool Read() {
    while (!AtEnd()) {
      uint32_t tag = 0;
      if (!ReadTag(&tag)) return false;
      if (tag == kMessages ? !ReadMessage() : !PassField(tag, kMaxGroups)) return false;
    }
    return true;
  }

 private:
  // Groups in groups, as the generated readers of the format allow.
  static constexpr size_t kMaxGroups = 100;

  bool AtEnd() { return input_.BytesUntilLimit() == 0; }

  // Tags and sizes take up to five bytes.
  bool ReadShort(uint64_t* value) {
    constexpr int kMostBytes = 5;
    const int before = input_.CurrentPosition();
    return input_.ReadVarint64(value) && input_.CurrentPosition() - before <= kMostBytes;
  }

  bool ReadTag(uint32_t* tag) {
    uint64_t value = 0;
    if (!ReadShort(&value)) return false;
    *tag = static_cast<uint32_t>(value);
    return *tag >> 3 != 0;
  }

  // Of bytes that are all there.
  bool ReadSize(int* size) {
    uint64_t value = 0;
    if (!ReadShort(&value) || value > static_cast<uint64_t>(input_.BytesUntilLimit())) return false;
    *size = static_cast<int>(value);
    return true;
  }

  bool ReadMessage() {
    int size = 0;
    if (!ReadSize(&size)) return false;
    const auto outer = input_.PushLimit(size);
    uint64_t type = 0;
    uint64_t length = 0;
    while (!AtEnd()) {
      uint32_t tag = 0;
      if (!ReadTag(&tag) || !ReadMessageField(tag, &type, &length)) return false;
    }
    input_.PopLimit(outer);
    if (visits_) {
      visits_ = visit_(context_, static_cast<uint32_t>(type), static_cast<uint32_t>(length));
    }
    return true;
  }

  bool ReadMessageField(uint32_t tag, uint64_t* type, uint64_t* length) {
    switch (tag) {
      case Tag(1, kVarint):
        return input_.ReadVarint64(type);
      case Tag(3, kVarint):
        return input_.ReadVarint64(length);
      case Tag(2, kBytes):
      case Tag(5, kBytes):
      case Tag(6, kBytes):
      case Tag(8, kBytes):
        return PassNumbers();
      default:
        return PassField(tag, kMaxGroups - 1);
    }
  }

  bool PassNumbers() {
    int size = 0;
    if (!ReadSize(&size)) return false;
    const auto outer = input_.PushLimit(size);
    while (!AtEnd()) {
      uint64_t number = 0;
      if (!input_.ReadVarint64(&number)) return false;
    }
    input_.PopLimit(outer);
    return true;
  }

  // Passes over a field; a group with its content. Groups nest at most `mostGroups` deep.
  bool PassField(uint32_t tag, size_t mostGroups) {
    std::array<uint32_t, kMaxGroups> groups;
    size_t depth = 0;
    for (;;) {
      const uint32_t type = tag & 7;
      if (type == kGroup) {
        if (depth == mostGroups) return false;
        groups[depth++] = tag;
      } else if (type == kGroupEnd) {
        if (depth == 0 || groups[--depth] != tag - 1) return false;
      } else if (!PassValue(type)) {
        return false;
      }
      if (depth == 0) return true;
      if (!ReadTag(&tag)) return false;
    }
  }

  bool PassValue(uint32_t type) {
    uint64_t number = 0;
    int size = 0;
    switch (type) {
      case kVarint:
        return input_.ReadVarint64(&number);
      case kFixed64:
        return input_.Skip(8);
      case kFixed32:
        return input_.Skip(4);
      case kBytes:
        return ReadSize(&size) && input_.Skip(size);
      default:
        return false;
    }
  }

  google::protobuf::io::CodedInputStream input_;
  const IworkMessageVisitor visit_;
  void* const context_;
  bool visits_ = true;
};

bool ReadArchiveInfo(const uint8_t* bytes, size_t size, IworkMessageVisitor visit,
                     void* context) noexcept {
  if (size > INT_MAX) return false;
  return NoThrow<bool>(
      false, [&] { return InfoReader(bytes, static_cast<int>(size), visit, context).Read(); });
}

constexpr IworkModule kModule = {kIworkModuleVersion, ReadBlockSize, ReadBlock, CheckBlock,
                                 ReadArchiveInfo};

}  // namespace
}  // namespace fi

const IworkModule* FI_IWORK_MODULE_SYMBOL() noexcept { return &fi::kModule; }
