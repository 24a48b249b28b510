// The XML reader of the platform: tag maps and 16-bit strings over the parser.
#include <array>
#include <cstdint>
#include <new>
#include <optional>
#include <string_view>

#include "platform/work.h"
#include "platform/xml.h"
#include "toolkit/memory/growing_array.h"
#include "toolkit/text/utf16.h"
#include "toolkit/xml/pull_parser.h"

namespace fi::xml {
namespace {

constexpr size_t kMaxMaps = 8;

struct TagMap {
  std::string_view namespaceUri;
  uint32_t namespaceNumber;
  uint32_t attributeNamespaceNumber;
  const UTXMLTagName* names;
  uint32_t count;
};

struct Reader {
  explicit Reader(IOHandle* handle) : parser(handle) {}

  PullParser parser;
  std::array<TagMap, kMaxMaps> maps{};
  size_t mapCount = 0;
  // The values of the current tag's attributes, each at its place in the tag: it has no more units
  // than bytes there, and a value does not move when others are asked for.
  GrowingArray<char16_t> values;
};

Reader* Of(UTXMLReader* reader) { return static_cast<Reader*>(reader->state); }

void Name(const Reader& reader, UTXMLTag* tag) {
  const std::string_view name = reader.parser.localName();
  const std::string_view uri = reader.parser.namespaceUri();
  // Most names of a map differ in their first byte.
  const char first = name.empty() ? '\0' : name.front();
  for (size_t i = 0; i < reader.mapCount; ++i) {
    const TagMap& map = reader.maps[i];
    if (map.namespaceUri != uri) continue;
    for (uint32_t entry = 0; entry < map.count; ++entry) {
      const UTXMLTagName& known = map.names[entry];
      if (*known.localName != first || name != known.localName) continue;
      tag->id = known.id;
      tag->namespaceNumber = map.namespaceNumber;
      tag->attributeNamespaceNumber = map.attributeNamespaceNumber;
      return;
    }
  }
}

int32_t Status(PullParser::Result result) {
  switch (result) {
    case PullParser::Result::kTag:
      return kXmlOk;
    case PullParser::Result::kEndOfData:
      return kXmlEndOfData;
    case PullParser::Result::kMalformed:
      return kXmlMalformed;
    case PullParser::Result::kNoMemory:
      break;
  }
  return kXmlFailure;
}

}  // namespace
}  // namespace fi::xml

using fi::xml::Of;
using fi::xml::Reader;

int32_t UTXMLInit(UTXMLReader* reader, IOHandle* handle) noexcept {
  reader->state = handle == nullptr ? nullptr : new (std::nothrow) Reader(handle);
  if (reader->state == nullptr) fi::NoteNoMemory(handle);
  return reader->state == nullptr ? kXmlFailure : kXmlOk;
}

void UTXMLDeInit(UTXMLReader* reader) noexcept {
  delete Of(reader);
  reader->state = nullptr;
}

int32_t UTXMLAddTagMap(UTXMLReader* reader, const char* namespaceUri, uint32_t namespaceNumber,
                       uint32_t attributeNamespaceNumber, const UTXMLTagName* names,
                       uint32_t count) noexcept {
  Reader* const self = Of(reader);
  if (self == nullptr || self->mapCount == self->maps.size()) return kXmlFailure;
  self->maps[self->mapCount++] = {namespaceUri, namespaceNumber, attributeNamespaceNumber, names,
                                  count};
  return kXmlOk;
}

int32_t UTXMLSetOption(UTXMLReader* reader, uint32_t /*option*/, uint32_t /*value*/) noexcept {
  return Of(reader) == nullptr ? kXmlFailure : kXmlOk;
}

int32_t UTXMLReadNextTag(UTXMLReader* reader, UTXMLTag* tag, void* /*workArea*/) noexcept {
  *tag = {};
  Reader* const self = Of(reader);
  if (self == nullptr) return kXmlFailure;
  const int32_t status = fi::xml::Status(self->parser.Next());
  if (status != kXmlOk) return status;
  if (self->parser.isEnd()) tag->flags = kXmlEndTag;
  fi::xml::Name(*self, tag);
  return kXmlOk;
}

int32_t UTXMLGetAttribute(UTXMLReader* reader, uint32_t /*attributeNamespaceNumber*/,
                          const char* localName, const char16_t** value,
                          uint32_t* length) noexcept {
  Reader* const self = Of(reader);
  if (self == nullptr) return kXmlFailure;
  size_t place = 0;
  const std::optional<std::string_view> found = self->parser.Attribute(localName, &place);
  if (!found.has_value()) return kXmlFailure;
  if (!self->values.Resize(self->parser.TagSize())) {
    self->parser.NoteNoMemory();
    return kXmlFailure;
  }
  char16_t* const out = self->values.data() + place;
  const size_t units = fi::WidenUtf8(*found, out, found->size());
  out[units] = 0;
  *value = out;
  *length = static_cast<uint32_t>(units);
  return kXmlOk;
}

int32_t UTXMLReadContent(UTXMLReader* reader, uint32_t /*mode*/, char16_t* buffer,
                         uint32_t capacity, uint32_t* length) noexcept {
  *length = 0;
  Reader* const self = Of(reader);
  if (self == nullptr) return kXmlFailure;
  *length = static_cast<uint32_t>(fi::WidenUtf8(self->parser.Content(), buffer, capacity));
  return kXmlOk;
}
