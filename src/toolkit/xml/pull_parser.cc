#include "toolkit/xml/pull_parser.h"

#include <algorithm>
#include <charconv>
#include <new>
#include <utility>

#include "platform/io.h"
#include "toolkit/text/utf16.h"

namespace fi::xml {
namespace {

// Writes the character that `name` stands for, without "&" and ";", and returns its size.
size_t DecodeReference(std::string_view name, char* out) {
  uint32_t character = 0;
  if (name.front() == '#') {
    const bool isHex = name[1] == 'x';
    std::from_chars(name.data() + (isHex ? 2 : 1), name.data() + name.size(), character,
                    isHex ? 16 : 10);
  } else {
    constexpr std::pair<std::string_view, char32_t> kEntities[] = {
        {"amp", U'&'}, {"apos", U'\''}, {"gt", U'>'}, {"lt", U'<'}, {"quot", U'"'}};
    for (const auto& [entity, meant] : kEntities) {
      if (entity == name) character = meant;
    }
  }
  const auto unit = static_cast<char16_t>(character);  // none lies beyond the first plane
  size_t size = 0;
  return NarrowUtf16({&unit, 1}, out, 3, &size) ? size : 0;
}

}  // namespace

PullParser::PullParser(IOHandle* handle, uint32_t firstChunk, uint32_t largestChunk)
    : handle_(handle), firstChunk_(firstChunk), largestChunk_(largestChunk), chunk_(firstChunk) {}

PullParser::Result PullParser::Next() {
  if (result_ != Result::kTag) return result_;
  while (expat_ == nullptr) {
    const PlainScanner::Step step =
        document_.size() == 0 ? PlainScanner::Step::kMore : plain_.NextTag();
    if (step == PlainScanner::Step::kDone) {
      ++delivered_;
      return Result::kTag;
    }
    if (step == PlainScanner::Step::kEndOfData) return result_ = Result::kEndOfData;
    if (!GoOn(step)) return result_;
  }
  tagIsPlain_ = false;
  return result_ = expat_->Next();
}

std::optional<std::string_view> PullParser::Attribute(std::string_view localName, size_t* place) {
  const auto value = tagIsPlain_ ? plain_.Attribute(localName) : expat_->Attribute(localName);
  if (!value.has_value()) return std::nullopt;
  const auto at = static_cast<size_t>(value->data() - TagText().data());
  if (place != nullptr) *place = at;
  const bool isCoded = tagIsPlain_ && value->find('&') != std::string_view::npos;
  return isCoded ? Decoded(*value, at) : value;
}

// The scanner has checked the references. What they stand for is never longer than they are.
std::optional<std::string_view> PullParser::Decoded(std::string_view value, size_t place) {
  if (!decoded_.Resize(TagSize())) {
    NoteNoMemory();
    return std::nullopt;
  }
  char* const begin = decoded_.data() + place;
  char* out = begin;
  while (!value.empty()) {
    if (value.front() != '&') {
      *out++ = value.front();
      value.remove_prefix(1);
      continue;
    }
    const size_t end = value.find(';');
    out += DecodeReference(value.substr(1, end - 1), out);
    value.remove_prefix(end + 1);
  }
  return std::string_view(begin, static_cast<size_t>(out - begin));
}

std::string_view PullParser::Content() {
  while (expat_ == nullptr && result_ == Result::kTag) {
    std::string_view text;
    const PlainScanner::Step step = plain_.Text(&text);
    if (step == PlainScanner::Step::kDone) return text;
    if (!GoOn(step)) return {};
  }
  return expat_ == nullptr ? std::string_view() : expat_->Content();
}

// Lets the parser go on where the scanner stopped: reads more, or hands over to Expat. False when
// neither is possible; the result has the reason.
bool PullParser::GoOn(PlainScanner::Step step) {
  const size_t size = document_.size() == 0 ? 0 : document_.size() - 1;
  if (step == PlainScanner::Step::kMore && !isWhole_ && size < kMaxPlainDocument)
    return ReadMore(size);
  expat_.reset(new (std::nothrow)
                   ExpatParser({document_.data(), size}, handle_, firstChunk_, largestChunk_));
  if (expat_ == nullptr) {
    NoteNoMemory();
    result_ = Result::kNoMemory;
  }
  for (uint32_t i = 0; i < delivered_ && result_ == Result::kTag; ++i) result_ = expat_->Next();
  return result_ == Result::kTag;
}

bool PullParser::ReadMore(size_t size) {
  const uint32_t most = std::min(chunk_, static_cast<uint32_t>(kMaxPlainDocument - size));
  chunk_ = std::min(chunk_ * 2, largestChunk_);
  if (!document_.Resize(size + most + 1)) {
    NoteNoMemory();
    result_ = Result::kNoMemory;
    return false;
  }
  uint32_t count = 0;
  while (count < most && !isWhole_) {
    const uint32_t got = io::Read(handle_, document_.data() + size + count, most - count);
    isWhole_ = got == 0;
    count += got;
  }
  document_[size + count] = '\0';
  (void)document_.Resize(size + count + 1);
  plain_.SetDocument({document_.data(), size + count}, isWhole_);
  return true;
}

}  // namespace fi::xml
