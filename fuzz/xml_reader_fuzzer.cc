// XML documents: the reader delivers the same whatever the pieces are in which it gets them, and
// not more than the document may hold. The first byte chooses the size of the pieces.
#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

#include "platform/xml.h"
#include "tests/support/memory_handle.h"
#include "toolkit/xml/pull_parser.h"

namespace {

using fi::testing::MemoryHandle;
using fi::xml::PullParser;

// Feeding byte by byte parses every piece of the document anew for each.
constexpr size_t kBytewise = 4096;

void Require(bool holds) {
  if (!holds) __builtin_trap();
}

// Without the content in which a fault stands: how much of it there is depends on the pieces.
std::string Delivered(const std::string& document, uint32_t chunk) {
  MemoryHandle handle(document);
  PullParser parser(&handle, chunk, chunk);
  std::string all;
  PullParser::Result result;
  size_t tags = 0;
  size_t contentAt = 0;
  while ((result = parser.Next()) == PullParser::Result::kTag) {
    Require(++tags <= document.size());
    Require(parser.TagText().size() <= fi::xml::kMaxTagText + 2);
    all.append(parser.isEnd() ? "-" : "+").append(parser.TagText());
    Require(parser.Content().size() <= fi::xml::kMaxContent);
    contentAt = all.size();
    all.append(parser.Content());
  }
  all.resize(contentAt);
  Require(parser.Next() == result);
  return all.append(1, static_cast<char>('0' + static_cast<int>(result)));
}

// Content is asked for at every third tag, attributes at every other, in both orders.
void ReadWide(const std::string& document) {
  constexpr UTXMLTagName kNames[] = {{1, "a"}, {2, "Relationship"}, {3, "Default"}};
  MemoryHandle handle(document);
  fi::xml::ScopedReader reader(&handle);
  UTXMLReader* const self = reader.get();
  Require(UTXMLAddTagMap(self, "", 1, 0, kNames, 3) == kXmlOk);
  Require(UTXMLAddTagMap(self, "n", 2, 0, kNames, 3) == kXmlOk);
  UTXMLTag tag;
  for (uint32_t i = 0; UTXMLReadNextTag(self, &tag, nullptr) == kXmlOk; ++i) {
    std::array<char16_t, 16> content;
    uint32_t length = 0;
    if (i % 3 == 0) {
      Require(UTXMLReadContent(self, 1, content.data(), content.size(), &length) == kXmlOk);
      Require(length <= content.size());
    }
    const char16_t* first = nullptr;
    const char16_t* second = nullptr;
    uint32_t firstLength = 0;
    if (i % 2 == 0 && UTXMLGetAttribute(self, 0, "Id", &first, &firstLength) == kXmlOk) {
      Require(tag.flags != kXmlEndTag);
      const std::u16string before(first, firstLength);
      (void)UTXMLGetAttribute(self, 0, "Target", &second, &length);
      Require(before == std::u16string_view(first, firstLength) && first[firstLength] == 0);
    }
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size == 0) return 0;
  const std::string document(data + 1, data + size);
  const std::string whole = Delivered(document, fi::xml::kLargestChunk);
  if (document.size() <= kBytewise) Require(whole == Delivered(document, data[0] % 32u + 1));
  ReadWide(document);
  return 0;
}
