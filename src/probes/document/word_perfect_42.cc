#include "probes/document/word_perfect_42.h"

#include <algorithm>
#include <array>
#include <iterator>

#include "registry/format_ids.h"
#include "stream/buffered_scan.h"
#include "stream/file_bytes.h"

namespace fi {
namespace {

constexpr size_t kHead = 512;               // bytes that must hold a function
constexpr uint32_t kWindow = 16 * 1024;     // bytes that are walked; format settings come early
constexpr uint32_t kMaxGroup = 1024;        // bytes of a group of variable length
constexpr uint32_t kMostStrangeShare = 10;  // one in ten bytes between groups, at most

constexpr uint32_t kFirstFunction = 0x80;
constexpr uint32_t kFirstGroup = 0xC0;
constexpr uint32_t kLastGroup = 0xFE;

// Bytes of each group from C0 on, those at both ends included; 0: not fixed.
constexpr std::array<uint8_t, 0x40> kGroupBytes = {
    6, 4,   3, 5,   5, 6,  4,  6, 8, 42, 3, 6, 4, 3,  4,  3,   // C0
    6, 0,   0, 4,   4, 4,  6,  0, 4, 4,  4, 4, 0, 24, 4,  0,   // D0
    4, 3,   0, 150, 6, 23, 11, 3, 3, 0,  0, 0, 4, 0,  44, 18,  // E0
    6, 106, 0, 100, 4, 0,  5,  0, 0, 0,  0, 0, 0, 0,  0,  0};  // F0

// Functions that switch an attribute on or off from there.
enum Attribute : uint8_t { kRevised, kStruckOut, kUnderlined, kBold, kAttributes };
struct Switch {
  uint8_t function;
  Attribute attribute;
  bool on;
};
constexpr Switch kSwitches[] = {
    {0x90, kRevised, true},    {0x91, kRevised, false},   {0x92, kStruckOut, true},
    {0x93, kStruckOut, false}, {0x94, kUnderlined, true}, {0x95, kUnderlined, false},
    {0x9D, kBold, true},       {0x9C, kBold, false},
};

// Whether the bytes so far are UTF-8, whose sequences can look like groups.
class Utf8Watch {
 public:
  void See(uint32_t byte) {
    if (pending_ > 0) {
      valid_ = valid_ && (byte & 0xC0) == 0x80;
      --pending_;
    } else if (byte >= 0x80) {
      pending_ = byte >= 0xF0 ? 3 : byte >= 0xE0 ? 2 : 1;
      valid_ = valid_ && byte >= 0xC2 && byte <= 0xF4;
    }
  }
  bool valid() const { return valid_; }

 private:
  bool valid_ = true;
  uint32_t pending_ = 0;
};

class Walk {
 public:
  explicit Walk(IdentificationStream* stream) : stream_(stream) {}

  // Walks the window. False at what no document holds.
  bool Run() {
    for (uint32_t byte = Next(); byte != kEndOfData; byte = Next()) {
      if (byte == 0 || byte > kLastGroup) return false;
      if (byte >= kFirstGroup) {
        if (!TakeGroup(byte)) return false;
      } else if (byte >= kFirstFunction) {
        ++strange_;
        TakeFunction(byte);
      } else {
        ++plain_;
        if (byte < ' ' && (byte < '\t' || byte > '\r')) ++strange_;
        SkipText();
      }
    }
    return true;
  }

  // Whether what was walked is such a document, rather than text in some code page.
  bool IsDocument() const {
    if (utf8_.valid() || plain_ == 0 || strange_ * kMostStrangeShare >= plain_ + strange_)
      return false;
    return fixedGroups_ > 0 || (pairsSound_ && HasPairs());
  }

 private:
  uint32_t Next() {
    if (left_ == 0) return kEndOfData;
    --left_;
    const uint32_t byte = IdStreamGetByte(stream_);
    if (byte != kEndOfData) utf8_.See(byte);
    return byte;
  }

  // Passes the printable characters that are buffered.
  void SkipText() {
    const uint32_t most = std::min(left_, static_cast<uint32_t>(std::max(stream_->remaining, 0)));
    uint32_t count = 0;
    while (count < most && stream_->next[count] >= ' ' && stream_->next[count] < kFirstFunction) {
      ++count;
    }
    PassBuffered(stream_, count);
    plain_ += count;
    left_ -= count;
  }

  // Passes a group whose first byte was read. A group that the end of the window cuts counts for
  // nothing.
  bool TakeGroup(uint32_t code) {
    const uint32_t fixed = kGroupBytes[code - kFirstGroup];
    const uint32_t most = fixed > 0 ? fixed : kMaxGroup;
    bool same = true;     // a run of one byte is line art, no group
    bool binary = false;  // parameters are small numbers; text may stand between two equal letters
    for (uint32_t size = 2; size <= most; ++size) {
      const uint32_t byte = Next();
      if (byte == kEndOfData) return left_ == 0;
      if (byte == code && (fixed == 0 || size == fixed)) {
        if (fixed > 0 && binary) ++fixedGroups_;
        return fixed == 0 || !same;
      }
      same = same && byte == code;
      binary = binary || byte < ' ';
    }
    return false;
  }

  // Whether an attribute was switched on and off that such documents have. In code page 1252 the
  // functions from 91 to 95 are quotation marks and a bullet, and the apostrophe is among them.
  bool HasPairs() const {
    const bool mayBeQuotes = seen_[kRevised] || seen_[kStruckOut];
    return pairs_[kBold] > 0 || (pairs_[kUnderlined] > 0 && !mayBeQuotes);
  }

  void TakeFunction(uint32_t byte) {
    for (const Switch& entry : kSwitches) {
      if (entry.function != byte) continue;
      bool& on = on_[entry.attribute];
      if (on == entry.on) pairsSound_ = false;
      if (on && !entry.on) ++pairs_[entry.attribute];
      seen_[entry.attribute] = true;
      on = entry.on;
      return;
    }
  }

  IdentificationStream* stream_;
  uint32_t left_ = kWindow;
  Utf8Watch utf8_;
  uint32_t plain_ = 0;
  uint32_t strange_ = 0;  // functions of one byte, and controls that are no line ends
  uint32_t fixedGroups_ = 0;
  std::array<uint32_t, kAttributes> pairs_{};  // how often each was switched on and off
  bool pairsSound_ = true;
  std::array<bool, kAttributes> seen_{};
  std::array<bool, kAttributes> on_{};
};

bool HoldsFunction(IdentificationStream* stream) {
  const FileBytes<kHead> head(stream, 0);
  const auto view = head.View();
  return std::any_of(view.begin(), view.end(),
                     [](char c) { return static_cast<uint8_t>(c) >= kFirstFunction; });
}

}  // namespace

FormatId WordPerfect42Probe(IdentificationStream* stream) {
  if (!HoldsFunction(stream) || IdStreamSeek(stream, 0, kIoFromStart) != 0) return kNoMatch;
  Walk walk(stream);
  return walk.Run() && walk.IsDocument() ? kFormatWordPerfect42 : kNoMatch;
}

}  // namespace fi
