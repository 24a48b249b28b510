// The tags of an XML document one after the other. Documents as programs write them are scanned; at
// the first thing that the scanner leaves to others, Expat takes over: it parses what was read once
// more, up to where the scanner stood.
#ifndef FI_TOOLKIT_XML_PULL_PARSER_H_
#define FI_TOOLKIT_XML_PULL_PARSER_H_

#include <cstdint>
#include <memory>
#include <optional>
#include <string_view>

#include "formatid/io.h"
#include "platform/work.h"
#include "toolkit/memory/growing_array.h"
#include "toolkit/xml/expat_parser.h"
#include "toolkit/xml/limits.h"
#include "toolkit/xml/plain_scanner.h"

namespace fi::xml {

class PullParser {
 public:
  using Result = PullResult;

  // Reads the borrowed handle from its position, at first in pieces of `firstChunk` bytes, which
  // grow to `largestChunk`.
  explicit PullParser(IOHandle* handle, uint32_t firstChunk = kFirstChunk,
                      uint32_t largestChunk = kLargestChunk);
  PullParser(const PullParser&) = delete;
  PullParser& operator=(const PullParser&) = delete;

  // Goes to the next tag. What it answers other than kTag stays the answer.
  Result Next();

  // Of the current tag. Views are valid until the next call of Next or Content. An element without
  // content has a start and an end like every other.
  bool isEnd() const { return tagIsPlain_ ? plain_.isEnd() : expat_->isEnd(); }
  std::string_view namespaceUri() const {
    return tagIsPlain_ ? plain_.namespaceUri() : expat_->namespaceUri();
  }
  std::string_view localName() const {
    return tagIsPlain_ ? plain_.localName() : expat_->localName();
  }

  // The value of the first attribute of that local name. `*place`, unless null, becomes an offset
  // in a buffer of TagSize() bytes: there the value has its own room, of its size plus one byte at
  // least.
  std::optional<std::string_view> Attribute(std::string_view localName, size_t* place = nullptr);
  size_t TagSize() const { return TagText().size(); }

  // Notes for the identification that memory ran out.
  void NoteNoMemory() const { fi::NoteNoMemory(handle_); }

  // The character data between this tag and the next one, of which the first kMaxContent bytes are
  // kept: the last character may be cut. Valid until the next call of Next.
  std::string_view Content();

 private:
  std::string_view TagText() const { return tagIsPlain_ ? plain_.TagText() : expat_->TagText(); }
  std::optional<std::string_view> Decoded(std::string_view value, size_t place);
  bool GoOn(PlainScanner::Step step);
  bool ReadMore(size_t size);

  IOHandle* const handle_;
  const uint32_t firstChunk_;
  const uint32_t largestChunk_;
  uint32_t chunk_;
  bool isWhole_ = false;
  bool tagIsPlain_ = true;
  uint32_t delivered_ = 0;        // tags of the scanner
  Result result_ = Result::kTag;  // other: the answer of Next from now on
  GrowingArray<char> document_;   // with a NUL behind it
  GrowingArray<char> decoded_;    // values that held references, each at its place
  PlainScanner plain_;
  std::unique_ptr<ExpatParser> expat_;  // once it has taken over
};

}  // namespace fi::xml

#endif  // FI_TOOLKIT_XML_PULL_PARSER_H_
