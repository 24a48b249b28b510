// The tags of any XML document one after the other, over Expat. The parser stops behind each tag
// until the caller asks for the next, so a document is parsed only as far as its reader reads.
// UTF-8, UTF-16 and supersets of ASCII are known. Names and values are UTF-8.
#ifndef FI_TOOLKIT_XML_EXPAT_PARSER_H_
#define FI_TOOLKIT_XML_EXPAT_PARSER_H_

#include <expat.h>

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <string_view>
#include <type_traits>

#include "formatid/io.h"
#include "toolkit/memory/growing_array.h"
#include "toolkit/xml/limits.h"

namespace fi::xml {

enum class PullResult { kTag, kEndOfData, kMalformed, kNoMemory };

class ExpatParser {
 public:
  using Result = PullResult;

  // Reads what was read `before`, and then the handle from its position, at first in pieces of
  // `firstChunk` bytes, which grow to `largestChunk`. Both are borrowed.
  ExpatParser(std::string_view before, IOHandle* handle, uint32_t firstChunk,
              uint32_t largestChunk);
  ExpatParser(const ExpatParser&) = delete;
  ExpatParser& operator=(const ExpatParser&) = delete;

  // Goes to the next tag. What it answers other than kTag stays the answer.
  Result Next();

  // Of the current tag. Views are valid until the next call of Next. An element without content has
  // a start and an end like every other.
  bool isEnd() const { return tag().isEnd; }
  std::string_view namespaceUri() const { return tag().namespaceUri; }
  std::string_view localName() const { return tag().localName; }

  // The value of the first attribute of that local name. A NUL stands behind it.
  std::optional<std::string_view> Attribute(std::string_view localName) const;

  // All that is kept of the tag; the values of its attributes point into it.
  std::string_view TagText() const { return {tag().text.data(), tag().text.size()}; }

  // The character data between this tag and the next one, of which the first kMaxContent bytes are
  // kept: the last character may be cut. Valid until the next call of Next.
  std::string_view Content();

 private:
  struct Tag {
    bool isEnd = true;
    bool endFollows = false;  // an element without content: its end is the next tag
    std::string_view namespaceUri;
    std::string_view localName;
    size_t attributesAt = 0;
    GrowingArray<char> text;  // the name, then names and values of attributes, each with its NUL
  };

  struct Free {
    void operator()(XML_Parser parser) const { XML_ParserFree(parser); }
  };

  static void OnStart(void* self, const XML_Char* name, const XML_Char** attributes) noexcept;
  static void OnEnd(void* self, const XML_Char* name) noexcept;
  static void OnText(void* self, const XML_Char* text, int size) noexcept;
  static void OnDoctype(void* self, const XML_Char* name, const XML_Char* systemId,
                        const XML_Char* publicId, int hasSubset) noexcept;
  static void OnNamespace(void* self, const XML_Char* prefix, const XML_Char* uri) noexcept;

  static int OnEncoding(void* self, const XML_Char* name, XML_Encoding* encoding) noexcept;

  const Tag& tag() const { return tags_[current_]; }
  Tag& following() { return tags_[1 - current_]; }

  Result Advance();
  XML_Status Feed();
  uint32_t ReadChunk(char* buffer, uint32_t size);
  bool StoreTag(std::string_view name, bool isEnd);
  bool StoreAttributes(const XML_Char** attributes);
  bool CountItem(const XML_Char* name);
  bool CountName(const XML_Char* name);
  bool Append(Tag& tag, std::string_view text);
  void Complete();
  void Fail(Result result);
  void NoMemory();

  std::string_view before_;  // what is left of it
  IOHandle* const handle_;
  std::unique_ptr<std::remove_pointer_t<XML_Parser>, Free> parser_;
  uint32_t chunk_;
  const uint32_t largestChunk_;
  uint32_t fed_ = 0;
  uint32_t parsed_ = 0;  // of it, as far as is known
  uint32_t items_ = 0;   // kFreeItems at most
  uint32_t depth_ = 0;
  Result result_ = Result::kTag;  // what stands behind the last tag, kTag while it is not known
  bool endOfData_ = false;
  bool suspended_ = false;
  bool stored_ = false;     // the following tag is complete
  bool readAhead_ = false;  // Content has read up to the following tag, or to the end
  size_t current_ = 0;
  std::array<Tag, 2> tags_;
  GrowingArray<char> content_;
  // Names behind the free items.
  uint32_t nameCount_ = 0;
  uint64_t nameBytes_ = 0;
  uint64_t expanded_ = 0;
  uint64_t nameSalt_ = 0;
  GrowingArray<uint64_t> names_;
};

}  // namespace fi::xml

#endif  // FI_TOOLKIT_XML_EXPAT_PARSER_H_
