#include "toolkit/storage/chain.h"

namespace fi::storage {

void Chain::Start(Links& links, uint32_t first) {
  links_ = &links;
  length_ = first < links.Count() ? links.Count() : 0;
  cursor_ = frontier_ = mark_ = {0, first};
  stride_ = 1;
  points_[0] = first;
}

uint32_t Chain::At(uint32_t index) {
  if (index >= length_) return kNoUnit;
  Point at = NearestBefore(index);
  while (at.index < index) {
    const uint32_t before = at.unit;
    at = {at.index + 1, links_->Next(before)};
    const bool goesOn = at.unit < links_->Count() && at.unit != before;
    if (!goesOn || (at.index > frontier_.index && !Extend(at))) {
      length_ = at.index;
      return kNoUnit;
    }
  }
  cursor_ = at;
  return at.unit;
}

Chain::Point Chain::NearestBefore(uint32_t index) const {
  if (index >= frontier_.index) return frontier_;
  const uint32_t point = index / stride_;
  if (cursor_.index <= index && cursor_.index >= point * stride_) return cursor_;
  return {point * stride_, points_[point]};
}

// Takes a unit beyond the frontier. False when it closes a loop.
bool Chain::Extend(Point at) {
  if (at.unit == mark_.unit) return false;
  if (at.index / 2 >= mark_.index) mark_ = at;
  frontier_ = at;
  Remember(at);
  return true;
}

void Chain::Remember(Point at) {
  if (at.index / stride_ == kPoints) {
    for (uint32_t i = 1; i < kPoints / 2; ++i) points_[i] = points_[2 * i];
    stride_ *= 2;
  }
  if (at.index % stride_ == 0) points_[at.index / stride_] = at.unit;
}

}  // namespace fi::storage
