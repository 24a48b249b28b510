// XML documents: the reader delivers the same whatever the pieces are in which it gets them, what
// Expat alone delivers, and not more than the document may hold. The first byte chooses the size of
// the pieces.
#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

#include "platform/xml.h"
#include "tests/support/memory_handle.h"
#include "toolkit/xml/pull_parser.h"

namespace {

using fi::testing::MemoryHandle;
using fi::xml::ExpatParser;
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
    Require(parser.TagSize() <= fi::xml::kMaxTagText + 2);
    all.append(parser.isEnd() ? "-" : "+").append(parser.localName()).append("\n");
    all.append(parser.namespaceUri()).append(parser.Attribute("Id").value_or("\n"));
    Require(parser.Content().size() <= fi::xml::kMaxContent);
    contentAt = all.size();
    all.append(parser.Content());
  }
  all.resize(contentAt);
  Require(parser.Next() == result);
  return all.append(1, static_cast<char>('0' + static_cast<int>(result)));
}

// The scanner of plain documents against Expat: the same tags with the same attributes, and the
// same content, which is asked for at some tags as the byte says.
void CompareWithExpat(const std::string& document, uint32_t chunk) {
  MemoryHandle handle(document);
  MemoryHandle other(document);
  PullParser parser(&handle, chunk, fi::xml::kLargestChunk);
  ExpatParser expat({}, &other, chunk, fi::xml::kLargestChunk);
  for (uint32_t i = 0;; ++i) {
    const PullParser::Result result = expat.Next();
    Require(parser.Next() == result);
    if (result != PullParser::Result::kTag) return;
    Require(parser.isEnd() == expat.isEnd() && parser.localName() == expat.localName());
    Require(parser.namespaceUri() == expat.namespaceUri());
    std::string_view left = expat.TagText();
    left.remove_prefix(left.find('\0') + 1);
    while (!expat.isEnd() && !left.empty()) {
      const std::string_view name(left.data());
      Require(parser.Attribute(name) == expat.Attribute(name));
      left.remove_prefix(name.size() + 1);
      left.remove_prefix(left.find('\0') + 1);
    }
    Require(parser.Attribute("xmlns") == expat.Attribute("xmlns"));
    if ((chunk >> (i % 4) & 1) == 0) continue;
    Require(parser.Content() == expat.Content());
  }
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
  CompareWithExpat(document, data[0] + 1u);
  ReadWide(document);
  return 0;
}
