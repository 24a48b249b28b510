#include "tests/support/compound_file_writer.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace fi::testing {
namespace {

constexpr uint32_t kEndOfChain = 0xFFFFFFFE;
constexpr uint32_t kFreeSector = 0xFFFFFFFF;
constexpr uint32_t kNothing = 0xFFFFFFFF;  // no sibling, no child
constexpr uint32_t kFatSector = 0xFFFFFFFD;
constexpr uint32_t kDifatSector = 0xFFFFFFFC;
constexpr uint32_t kListed = 109;
constexpr size_t kEntry = 128;
constexpr size_t kCutoff = 4096;

void Append(std::string& bytes, uint64_t value, int size) {
  for (int i = 0; i < size; ++i) bytes += static_cast<char>(value >> (8 * i));
}

using Numbers = std::vector<uint32_t>;

std::string Words(const Numbers& words) {
  std::string bytes;
  for (const uint32_t word : words) bytes += Word(word);
  return bytes;
}

struct EntryRecord {
  std::u16string name;
  uint8_t kind;
  std::string classId;
  uint32_t left = kNothing;
  uint32_t right = kNothing;
  uint32_t child = kNothing;
  uint32_t start = 0;
  uint64_t size = 0;
};

std::string EntryBytes(const EntryRecord& entry) {
  std::string bytes;
  for (const char16_t unit : entry.name) Append(bytes, unit, 2);
  bytes.resize(64, '\0');
  Append(bytes, entry.name.size() * 2 + 2, 2);
  Append(bytes, entry.kind, 1);
  Append(bytes, 1, 1);  // black
  bytes += Words({entry.left, entry.right, entry.child}) + entry.classId;
  bytes.resize(116, '\0');
  Append(bytes, entry.start, 4);
  Append(bytes, entry.size, 8);
  return bytes;
}

std::string CompoundHeader(uint32_t shift, uint32_t directory, uint32_t miniFat, uint32_t difat,
                           const Numbers& fat) {
  std::string header = "\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1";
  header.resize(24, '\0');
  for (const uint32_t half : {0x3Eu, shift == 12 ? 4u : 3u, 0xFFFEu, shift, 6u}) {
    Append(header, half, 2);
  }
  header.resize(48, '\0');
  header += Words({directory, 0, kCutoff, miniFat, 0, difat, 0});
  header += Words(fat).substr(0, 4 * kListed);
  header.resize(512, '\xFF');
  return header;
}

// The sectors of a file or of its mini stream, and what chains them.
struct Units {
  size_t size;
  size_t ahead;  // bytes in front of the first
  bool backwards;
  std::string bytes;
  Numbers links;

  size_t CountFor(size_t length) const { return (length + size - 1) / size; }

  // Takes the next units and chains them.
  Numbers Allocate(size_t count) {
    Numbers units(count);
    std::iota(units.begin(), units.end(), static_cast<uint32_t>(links.size()));
    if (backwards) std::reverse(units.begin(), units.end());
    links.resize(links.size() + count, kEndOfChain);
    for (size_t i = 0; i + 1 < count; ++i) links[units[i]] = units[i + 1];
    bytes.resize(ahead + links.size() * size, '\0');
    return units;
  }

  void Put(const Numbers& units, const std::string& data) {
    for (size_t i = 0; i < units.size() && i * size < data.size(); ++i) {
      const std::string piece = data.substr(i * size, size);
      bytes.replace(ahead + units[i] * size, piece.size(), piece);
    }
  }

  // Appends `data`; its first unit, kEndOfChain when it is empty.
  uint32_t Place(const std::string& data) {
    const Numbers units = Allocate(CountFor(data.size()));
    Put(units, data);
    return units.empty() ? kEndOfChain : units[0];
  }
};

class Writer {
 public:
  explicit Writer(const CompoundOptions& options)
      : shift_(options.sectorShift),
        sectors_{size_t{1} << shift_, size_t{1} << shift_, options.backwards, "", {}},
        minis_{64, 0, options.backwards, "", {}} {}

  std::string Write(const std::vector<Node>& children, const std::string& rootClass) {
    Measure(children);
    const size_t words = sectors_.size / 4;
    const size_t entrySectors = sectors_.CountFor(count_ * kEntry);
    size_t fatCount = 0;
    size_t difatCount = 0;
    while (fatCount * words < most_ + entrySectors + fatCount + difatCount) {
      ++fatCount;
      difatCount = fatCount > kListed ? (fatCount - kListed + words - 2) / (words - 1) : 0;
    }
    const Numbers fat = sectors_.Allocate(fatCount);
    const Numbers difat = sectors_.Allocate(difatCount);
    const Numbers directory = sectors_.Allocate(entrySectors);
    entries_.push_back({u"Root Entry", 5, rootClass});
    Add(0, children);
    entries_[0].size = minis_.bytes.size();
    entries_[0].start = sectors_.Place(minis_.bytes);
    minis_.links.resize((minis_.links.size() + words - 1) / words * words, kFreeSector);
    const uint32_t miniFat = sectors_.Place(Words(minis_.links));
    std::string entries;
    for (const EntryRecord& entry : entries_) entries += EntryBytes(entry);
    sectors_.Put(directory, entries);
    PlaceTables(fat, difat);
    const uint32_t firstDifat = difat.empty() ? kEndOfChain : difat[0];
    const std::string header = CompoundHeader(shift_, directory[0], miniFat, firstDifat, fat);
    return sectors_.bytes.replace(0, header.size(), header);
  }

 private:
  // Counts the entries, and sectors that are enough for what is in them.
  void Measure(const std::vector<Node>& nodes) {
    for (const Node& node : nodes) {
      ++count_;
      most_ += node.data.size() / sectors_.size + 2;
      Measure(node.children);
    }
  }

  void Add(uint32_t parent, const std::vector<Node>& children) {
    const auto first = static_cast<uint32_t>(entries_.size());
    const auto end = static_cast<uint32_t>(first + children.size());
    for (const Node& node : children) {
      EntryRecord entry{node.name, 1, node.classId};
      if (!node.isStorage) {
        entry.kind = 2;
        entry.size = node.data.size();
        entry.start = (node.data.size() < kCutoff ? minis_ : sectors_).Place(node.data);
      }
      entries_.push_back(entry);
    }
    entries_[parent].child = Tree(first, end);
    for (uint32_t i = first; i < end; ++i) {
      if (children[i - first].isStorage) Add(i, children[i - first].children);
    }
  }

  // Makes a tree of the entries from `low` up to `high`, not included; the number of its root.
  uint32_t Tree(uint32_t low, uint32_t high) {
    if (low == high) return kNothing;
    const uint32_t middle = low + (high - low) / 2;
    entries_[middle].left = Tree(low, middle);
    entries_[middle].right = Tree(middle + 1, high);
    return middle;
  }

  void PlaceTables(const Numbers& fat, const Numbers& difat) {
    const size_t words = sectors_.size / 4;
    for (const uint32_t sector : fat) sectors_.links[sector] = kFatSector;
    for (const uint32_t sector : difat) sectors_.links[sector] = kDifatSector;
    sectors_.links.resize(fat.size() * words, kFreeSector);
    sectors_.Put(fat, Words(sectors_.links));
    Numbers listed;
    for (size_t i = 0; i < difat.size(); ++i) {
      for (size_t k = kListed + i * (words - 1); k < kListed + (i + 1) * (words - 1); ++k) {
        listed.push_back(k < fat.size() ? fat[k] : kFreeSector);
      }
      listed.push_back(i + 1 < difat.size() ? difat[i + 1] : kEndOfChain);
    }
    sectors_.Put(difat, Words(listed));
  }

  const uint32_t shift_;
  Units sectors_;
  Units minis_;
  std::vector<EntryRecord> entries_;
  size_t count_ = 1;
  size_t most_ = 2;
};

}  // namespace

Node Stream(std::u16string name, std::string data) {
  return {std::move(name), false, std::move(data), "", {}};
}

Node Folder(std::u16string name, std::vector<Node> children, std::string classId) {
  return {std::move(name), true, "", std::move(classId), std::move(children)};
}

std::string WriteCompoundFile(const std::vector<Node>& children, const CompoundOptions& options,
                              const std::string& rootClass) {
  return Writer(options).Write(children, rootClass);
}

std::string Word(uint32_t word) {
  std::string bytes;
  Append(bytes, word, 4);
  return bytes;
}

}  // namespace fi::testing
