// XML has no way to write the name of an element but its bytes, since there are no entities in
// names. So the bytes are searched, in any encoding in which those of ASCII stand for themselves:
// the name behind "<", or behind "<", a prefix and ":".

#include "probes/iwork/element_search.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <new>

#include "platform/io.h"
#include "platform/xml.h"

namespace fi {
namespace {

// What is searched at once, and what is seen of the bytes before: a longer prefix counts as one.
constexpr size_t kWindow = size_t{64} * 1024;
constexpr size_t kContext = 64;

// The longest name and the byte behind it.
constexpr size_t kReach = 33;

// Positions that are looked at together, at the speed of memory.
constexpr size_t kBlock = 64;

bool BeginsUtf16(const char* bytes) {
  const auto first = static_cast<uint8_t>(bytes[0]);
  const auto second = static_cast<uint8_t>(bytes[1]);
  return first == 0 || second == 0 || first + second == 0xFE + 0xFF;
}

// Whether the name may begin at one of the positions of a block.
bool MayBegin(std::string_view name, const char* at) {
  const char first = name.front();
  const char last = name.back();
  const char* const before = at - 1;
  const char* const end = at + name.size() - 1;
  uint8_t met = 0;
  for (size_t i = 0; i < kBlock; ++i) {
    const int mark = (before[i] == ':') | (before[i] == '<');
    met |= static_cast<uint8_t>(mark & (at[i] == first) & (end[i] == last));
  }
  return met != 0;
}

// Whether `at` stands in a start tag, behind the prefix where there is one. `begin` is the first
// byte that is known.
bool IsInStartTag(const char* begin, const char* at) {
  if (at[-1] == '<') return true;
  if (at[-1] != ':') return false;
  constexpr std::string_view kNoneOfNames = "<>/ \t\r\n\"'=";
  const char* before = at - 1;
  while (before != begin && kNoneOfNames.find(before[-1]) == std::string_view::npos) --before;
  return before == begin || before[-1] == '<';
}

bool IsStartTag(std::string_view name, const char* begin, const char* at) {
  constexpr std::string_view kBehindNames = "> \t\r\n/";
  return std::string_view(at, name.size()) == name &&
         kBehindNames.find(at[name.size()]) != std::string_view::npos && IsInStartTag(begin, at);
}

// Start tags of the name that begin between two places. kReach and kBlock bytes follow the last
// one.
uint32_t CountStartTags(std::string_view name, const char* begin, const char* at, const char* end) {
  uint32_t count = 0;
  for (; at < end; at += kBlock) {
    if (!MayBegin(name, at)) continue;
    const char* const last = std::min(at + kBlock, end);
    for (const char* place = at; place < last; ++place) {
      if (IsStartTag(name, begin, place)) ++count;
    }
  }
  return count;
}

class Search {
 public:
  Search(std::span<const std::string_view> names, IOHandle* document)
      : names_(names), document_(document) {}

  // Tags of all names, up to two.
  uint32_t Run() {
    buffer_.reset(new (std::nothrow) char[kContext + kWindow + kReach + kBlock]);
    if (buffer_ == nullptr || !io::Seek(document_, kIoFromStart, 0)) return 0;
    char* const bytes = buffer_.get();
    // The first byte of all has one before it.
    size_t begin = kContext - 1;
    size_t at = kContext;
    size_t end = kContext;
    bytes[begin] = ' ';
    uint32_t count = 0;
    for (uint32_t left = kXmlMaxDocument; left > 0 && count < 2;) {
      const auto wanted = static_cast<uint32_t>(std::min<size_t>(left, kContext + kWindow - end));
      const size_t got = io::ReadFully(document_, reinterpret_cast<uint8_t*>(bytes + end), wanted);
      if (left == kXmlMaxDocument && (got < 2 || BeginsUtf16(bytes + end))) return 0;
      end += got;
      left = got < wanted ? 0 : left - wanted;
      // The end of the document ends a name as a tag's end would: it may be that of a tag.
      std::fill_n(bytes + end, kReach + kBlock, ' ');
      const size_t last = left == 0 ? end : end - kReach;
      for (const std::string_view name : names_) {
        count += CountStartTags(name, bytes + begin, bytes + at, bytes + last);
      }
      begin = 0;
      at = kContext;
      const size_t kept = last - kContext;
      std::copy(bytes + kept, bytes + end, bytes);
      end -= kept;
    }
    return count;
  }

 private:
  const std::span<const std::string_view> names_;
  IOHandle* const document_;
  std::unique_ptr<char[]> buffer_;
};

}  // namespace

bool HasOneElementOf(std::span<const std::string_view> names, IOHandle* document) {
  uint32_t position = 0;
  if (!io::Tell(document, &position)) return false;
  const uint32_t count = Search(names, document).Run();
  return io::Seek(document, kIoFromStart, position) && count == 1;
}

}  // namespace fi
