#include "toolkit/zip/directory.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <new>
#include <utility>

#include "toolkit/zip/local_headers.h"
#include "toolkit/zip/records.h"

namespace fi::zip {
namespace {

// A number that equal names share, whatever the case of their letters: of the length and the last
// eight bytes. It passes over most other names; to build a better one costs more than it saves.
uint32_t KeyOf(std::string_view name) {
  constexpr uint64_t kLowerCase = 0x2020202020202020;
  constexpr uint64_t kSpread = 0x9E3779B97F4A7C15;
  uint64_t last = 0;
  const size_t used = std::min(name.size(), sizeof(last));
  std::memcpy(&last, name.data() + name.size() - used, used);
  return static_cast<uint32_t>(((last | kLowerCase) * kSpread) >> 32) +
         static_cast<uint32_t>(name.size());
}

char Folded(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c; }

bool EqualNames(std::string_view a, std::string_view b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](char left, char right) { return Folded(left) == Folded(right); });
}

// Takes numbers too large for their fields from the extra field of ZIP64, which has them in this
// order. Numbers missing there stay as they are.
void ReadWide(const uint8_t* extra, uint32_t size, Entry* entry) {
  while (size >= 4) {
    const uint16_t id = LoadLE16(extra);
    uint32_t length = LoadLE16(extra + 2);
    extra += 4;
    size -= 4;
    length = std::min(length, size);
    if (id == kWideExtra) {
      for (uint64_t* number : {&entry->size, &entry->packedSize, &entry->localOffset}) {
        if (*number != kElsewhere32 || length < 8) continue;
        *number = LoadLE64(extra);
        extra += 8;
        length -= 8;
      }
      return;
    }
    extra += length;
    size -= length;
  }
}

}  // namespace

uint8_t* Directory::NewBytes(uint64_t size) {
  return held_.Hold(size) ? Allocated(work_, new (std::nothrow) uint8_t[size]) : nullptr;
}

void Directory::Forget() {
  count_ = 0;
  index_.reset();
  block_.reset();
  held_.Release();
}

// The tail is read in a small piece first. Only when that shows no end record, a long comment may
// hide it.
bool Directory::LoadPlace(const io::HandleReader& reader, uint64_t fileSize,
                          DirectoryPlace* place) {
  const auto first = static_cast<uint32_t>(std::min<uint64_t>(fileSize, kTailRead));
  Tail tail{tail_.data(), first, fileSize - first};
  if (reader.ReadAt(tail.offset, tail_.data(), first) != first) return false;
  if (FindDirectory(reader, tail, place)) {
    if (place->start >= tail.offset) bytes_ = tail_.data() + (place->start - tail.offset);
    return true;
  }
  const auto whole = static_cast<uint32_t>(std::min<uint64_t>(fileSize, kMaxTail));
  if (whole == first) return false;
  const std::unique_ptr<uint8_t[]> bytes(Allocated(work_, new (std::nothrow) uint8_t[whole]));
  if (bytes == nullptr) return false;
  const uint32_t more = whole - first;
  tail = {bytes.get(), whole, fileSize - whole};
  if (reader.ReadAt(tail.offset, bytes.get(), more) != more) return false;
  std::memcpy(bytes.get() + more, tail_.data(), first);
  return FindDirectory(reader, tail, place);
}

bool Directory::Load(const io::HandleReader& reader, uint64_t fileSize) {
  DirectoryPlace place;
  if (!LoadPlace(reader, fileSize, &place) || place.size > kMaxDirectory) return false;
  size_ = place.size;
  shift_ = place.shift;
  if (bytes_ == nullptr) {
    block_.reset(NewBytes(size_));
    if (block_ == nullptr) return false;
    size_ = reader.ReadAt(place.start, block_.get(), static_cast<uint32_t>(size_));
    bytes_ = block_.get();
  }
  return BuildIndex();
}

bool Directory::Rebuild(const io::HandleReader& reader) {
  RebuiltDirectory rebuilt;
  if (!RebuildDirectory(reader, &rebuilt)) return false;
  block_ = std::move(rebuilt.bytes);
  bytes_ = block_.get();
  size_ = rebuilt.size;
  return BuildIndex();
}

bool Directory::BuildIndex() {
  const uint64_t most = std::min<uint64_t>(size_ / central::kSize, kMaxEntries);
  if (!held_.Hold(2 * most * sizeof(uint32_t))) return false;
  index_.reset(Allocated(work_, new (std::nothrow) uint32_t[2 * most]));
  if (index_ == nullptr) return false;
  uint32_t* const keys = index_.get();
  uint32_t* const starts = keys + most;
  keys_ = keys;
  starts_ = starts;
  for (uint64_t at = 0; size_ - at >= central::kSize;) {
    const uint8_t* const entry = bytes_ + at;
    if (LoadLE32(entry) != central::kSignature) break;
    const uint32_t nameLength = LoadLE16(entry + central::kNameLength);
    const uint64_t length = uint64_t{central::kSize} + nameLength +
                            LoadLE16(entry + central::kExtraLength) +
                            LoadLE16(entry + central::kCommentLength);
    if (length > size_ - at) break;
    if (count_ == most) return false;
    starts[count_] = static_cast<uint32_t>(at);
    keys[count_] = KeyOf(NameAt(count_));
    ++count_;
    at += length;
  }
  return true;
}

std::string_view Directory::NameAt(uint32_t index) const {
  const uint8_t* const entry = bytes_ + starts_[index];
  return {reinterpret_cast<const char*>(entry + central::kSize),
          LoadLE16(entry + central::kNameLength)};
}

Entry Directory::At(uint32_t index) const {
  const uint8_t* const bytes = bytes_ + starts_[index];
  Entry entry{NameAt(index),
              LoadLE16(bytes + central::kFlags),
              LoadLE16(bytes + central::kMethod),
              LoadLE32(bytes + central::kPackedSize),
              LoadLE32(bytes + central::kMemberSize),
              LoadLE32(bytes + central::kLocalOffset)};
  ReadWide(bytes + central::kSize + entry.name.size(), LoadLE16(bytes + central::kExtraLength),
           &entry);
  // An offset that the shift takes beyond all files leads nowhere.
  if (__builtin_add_overflow(entry.localOffset, shift_, &entry.localOffset)) {
    entry.localOffset = std::numeric_limits<uint64_t>::max();
  }
  return entry;
}

bool Directory::Find(std::string_view name, Entry* entry) const {
  const uint32_t key = KeyOf(name);
  for (uint32_t i = 0; i < count_; ++i) {
    if (keys_[i] != key || !EqualNames(NameAt(i), name)) continue;
    *entry = At(i);
    return true;
  }
  return false;
}

}  // namespace fi::zip
