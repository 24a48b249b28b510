// Each header has the number of packed bytes behind it, and so gives the place of the next header.
// A writer that could not go back left the sizes to a descriptor behind the data (flag bit 3):
// deflated data marks its own end, and stored data ends at a descriptor with the size of the data
// in front. The bytes are not searched for headers, since a package stored inside has headers too.

#include "toolkit/zip/local_headers.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <new>
#include <span>
#include <utility>

#include "platform/work.h"
#include "toolkit/zip/inflater.h"
#include "toolkit/zip/limits.h"
#include "toolkit/zip/records.h"

namespace fi::zip {
namespace {

// What a 32-bit field can hold without meaning that the number stands elsewhere.
constexpr uint64_t kLargest = kElsewhere32 - 1;

struct LocalMember {
  uint64_t start;  // of its header
  uint64_t data;
  uint64_t packedSize;
  uint64_t size;
  uint16_t flags;
  uint16_t method;
};

void Store(uint8_t* to, uint64_t value, uint32_t bytes) {
  for (uint32_t i = 0; i < bytes; ++i) to[i] = static_cast<uint8_t>(value >> (8 * i));
}

class Scan {
 public:
  Scan(const io::HandleReader& reader, RebuiltDirectory* directory)
      : reader_(reader),
        work_(WorkOf(reader.handle())),
        fileSize_(reader.Size()),
        directory_(*directory) {}

  bool Run() {
    uint64_t at = 0;
    uint32_t count = 0;
    LocalMember member{};
    while (count < kMaxRebuilt && at <= kLargest && ReadHeader(at, &member)) {
      const bool more = MeasureData(&member) && SkipDescriptor(member, &at);
      if (!Append(member)) return false;
      ++count;
      if (!more) break;
    }
    return count > 0;
  }

 private:
  bool NoMemory() const {
    if (work_ != nullptr) work_->noMemory = true;
    return false;
  }

  // The name is in `block_` afterwards.
  bool ReadHeader(uint64_t at, LocalMember* member) {
    const uint32_t count = reader_.ReadAt(at, block_.data(), local::kSize + kMaxName);
    if (count < local::kSize || LoadLE32(block_.data()) != local::kSignature) return false;
    nameLength_ = LoadLE16(block_.data() + local::kNameLength);
    if (nameLength_ > count - local::kSize) return false;
    const uint8_t* const name = block_.data() + local::kSize;
    if (nameLength_ == 0 || std::find(name, name + nameLength_, 0) != name + nameLength_) {
      return false;
    }
    member->start = at;
    member->data = at + local::kSize + nameLength_ + LoadLE16(block_.data() + local::kExtraLength);
    member->flags = LoadLE16(block_.data() + local::kFlags);
    member->method = LoadLE16(block_.data() + local::kMethod);
    member->packedSize = LoadLE32(block_.data() + local::kPackedSize);
    member->size = LoadLE32(block_.data() + local::kMemberSize);
    return true;
  }

  // Settles the sizes. False when the data does not end in the file, or it is not known where.
  bool MeasureData(LocalMember* member) {
    const uint64_t left = fileSize_ - std::min(member->data, fileSize_);
    const bool wide = member->packedSize == kElsewhere32 || member->size == kElsewhere32;
    const bool later = (member->flags & kSizesBehind) != 0 && member->packedSize == 0;
    if (!wide && !later) {
      const bool whole = member->packedSize <= left;
      if (!whole) member->packedSize = left;
      return whole;
    }
    member->packedSize = left;
    member->size = kLargest;
    if (member->method == kStored && later) return FindDescriptor(member);
    return member->method == kDeflated && (member->flags & kEncrypted) == 0 && Inflate(member);
  }

  // Finds the end of stored data by the descriptor behind it.
  bool FindDescriptor(LocalMember* member) {
    std::array<uint8_t, kInputBlock> block;
    uint64_t passed = 0;
    while (examined_ <= kMaxRebuiltExamined) {
      const uint32_t count = reader_.ReadAt(member->data + passed, block.data(), kInputBlock);
      for (uint32_t i = 0; count - i >= descriptor::kSize && i < count; ++i) {
        if (block[i] != 'P' || !IsDescriptor(block.data() + i, count - i, passed + i)) continue;
        member->packedSize = member->size = passed + i;
        return true;
      }
      if (count < kInputBlock) return false;
      // What is left may be the beginning of a wide one.
      passed += kInputBlock - descriptor::kWideSize + 1;
      examined_ += kInputBlock;
    }
    return false;
  }

  // Of stored data of `size` bytes.
  static bool IsDescriptor(const uint8_t* bytes, uint32_t count, uint64_t size) {
    if (LoadLE32(bytes) != descriptor::kSignature) return false;
    const uint8_t* const sizes = bytes + descriptor::kPackedSize;
    if (LoadLE32(sizes) == size && LoadLE32(sizes + 4) == size) return true;
    return count >= descriptor::kWideSize && LoadLE64(sizes) == size && LoadLE64(sizes + 8) == size;
  }

  // Finds the end of deflated data by inflating it.
  bool Inflate(LocalMember* member) {
    std::array<uint8_t, kInputBlock> output;
    if (!inflater_.Start()) return NoMemory();
    uint64_t packed = 0;
    uint64_t size = 0;
    while (packed < member->packedSize) {
      std::array<uint8_t, kInputBlock> input;
      const uint32_t count = reader_.ReadAt(member->data + packed, input.data(), kInputBlock);
      std::span<const uint8_t> rest(input.data(), count);
      Inflater::Step step{};
      do {
        step = inflater_.Run(rest, output.data(), kInputBlock);
        rest = rest.subspan(step.consumed);
        packed += step.consumed;
        size += step.produced;
        examined_ += step.consumed + step.produced;
        if (work_ != nullptr) work_->SpendInflated(step.consumed, step.produced);
        if (step.noMemory) return NoMemory();
        if (examined_ > kMaxRebuiltExamined) return false;
        if (work_ != nullptr && work_->Inflatable() == 0) return false;
      } while (!step.ended && step.produced > 0);
      if (step.ended) {
        member->packedSize = packed;
        member->size = size;
        return true;
      }
      if (count < kInputBlock || rest.size() == count) return false;
    }
    return false;
  }

  // Where the next member begins. A descriptor may lack its signature, and has narrow or wide
  // sizes.
  bool SkipDescriptor(const LocalMember& member, uint64_t* next) {
    constexpr uint32_t kLongest = descriptor::kWideSize;
    *next = member.data + member.packedSize;
    if ((member.flags & kSizesBehind) == 0) return true;
    std::array<uint8_t, kLongest + 4> behind{};
    const uint32_t count = reader_.ReadAt(*next, behind.data(), kLongest + 4);
    for (uint32_t skipped = 0; skipped + 4 <= count; skipped += 4) {
      if (LoadLE32(behind.data() + skipped) != local::kSignature) continue;
      *next += skipped;
      return true;
    }
    return false;
  }

  bool Append(const LocalMember& member) {
    const uint64_t length = central::kSize + nameLength_;
    if (!Reserve(length)) return false;
    uint8_t* const entry = directory_.bytes.get() + directory_.size;
    std::memset(entry, 0, central::kSize);
    Store(entry, central::kSignature, 4);
    Store(entry + central::kFlags, member.flags, 2);
    Store(entry + central::kMethod, member.method, 2);
    Store(entry + central::kPackedSize, std::min(member.packedSize, kLargest), 4);
    Store(entry + central::kMemberSize, std::min(member.size, kLargest), 4);
    Store(entry + central::kNameLength, nameLength_, 2);
    Store(entry + central::kLocalOffset, member.start, 4);
    std::replace_copy(block_.data() + local::kSize, block_.data() + local::kSize + nameLength_,
                      entry + central::kSize, uint8_t{'\\'}, uint8_t{'/'});
    directory_.size += length;
    return true;
  }

  bool Reserve(uint64_t length) {
    if (length <= capacity_ - directory_.size) return true;
    const uint64_t capacity = 2 * capacity_ + kInputBlock;
    std::unique_ptr<uint8_t[]> bytes(new (std::nothrow) uint8_t[capacity]);
    if (bytes == nullptr) return NoMemory();
    if (directory_.size > 0) std::memcpy(bytes.get(), directory_.bytes.get(), directory_.size);
    directory_.bytes = std::move(bytes);
    capacity_ = capacity;
    return true;
  }

  const io::HandleReader& reader_;
  Work* const work_;
  const uint64_t fileSize_;
  RebuiltDirectory& directory_;
  uint64_t capacity_ = 0;
  uint64_t examined_ = 0;
  uint32_t nameLength_ = 0;
  Inflater inflater_;
  std::array<uint8_t, local::kSize + kMaxName> block_;
};

}  // namespace

bool RebuildDirectory(const io::HandleReader& reader, RebuiltDirectory* directory) {
  return Scan(reader, directory).Run();
}

}  // namespace fi::zip
