#include "toolkit/xml/pull_parser.h"

#include <algorithm>
#include <new>

#include "platform/io.h"

namespace fi::xml {

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

std::string_view PullParser::Content() {
  while (expat_ == nullptr && result_ == Result::kTag) {
    std::string_view text;
    const PlainScanner::Step step = plain_.Text(&text);
    if (step == PlainScanner::Step::kDone) return text;
    if (!GoOn(step)) return {};
  }
  return expat_ == nullptr ? std::string_view() : expat_->Content();
}

// Sees to it that what stopped the scanner does not: reads more, or lets Expat take over. False
// when the result tells why there is no going on.
bool PullParser::GoOn(PlainScanner::Step step) {
  const size_t size = document_.size() == 0 ? 0 : document_.size() - 1;
  if (step == PlainScanner::Step::kMore && !isWhole_ && size < kMaxPlain) return ReadMore(size);
  expat_.reset(new (std::nothrow)
                   ExpatParser({document_.data(), size}, handle_, firstChunk_, largestChunk_));
  if (expat_ == nullptr) result_ = Result::kNoMemory;
  for (uint32_t i = 0; i < delivered_ && result_ == Result::kTag; ++i) result_ = expat_->Next();
  return result_ == Result::kTag;
}

bool PullParser::ReadMore(size_t size) {
  const uint32_t most = std::min(chunk_, static_cast<uint32_t>(kMaxPlain - size));
  chunk_ = std::min(chunk_ * 2, largestChunk_);
  if (!document_.Resize(size + most + 1)) {
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
