#include "tests/support/compound_file_writer.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace fi::testing {
namespace {

constexpr uint32_t kFatSector = 0xFFFFFFFD;
constexpr uint32_t kDifatSector = 0xFFFFFFFC;
constexpr uint32_t kListed = 109;
constexpr size_t kMiniSize = 64;
constexpr size_t kCutoff = 4096;

void Append(std::string& bytes, uint64_t value, int size) {
  for (int i = 0; i < size; ++i) bytes += static_cast<char>(value >> (8 * i));
}

// The format's order, for names of Latin letters.
bool Before(const std::u16string& a, const std::u16string& b) {
  if (a.size() != b.size()) return a.size() < b.size();
  const auto upper = [](std::u16string text) {
    for (char16_t& unit : text) {
      if (unit >= 'a' && unit <= 'z') unit = static_cast<char16_t>(unit - 32);
    }
    return text;
  };
  return upper(a) < upper(b);
}

class Writer {
 public:
  explicit Writer(const CompoundOptions& options) : options_(options) {
    image_.shift = options.sectorShift;
  }

  CompoundImage Write(std::vector<Node> children, std::string rootClass) {
    EntryRecord root;
    root.name = u"Root Entry";
    root.kind = 5;
    root.classId = std::move(rootClass);
    entries_.push_back(root);
    if (options_.tablesFirst) {
      image_.directory = Allocate(SectorsFor((children.size() + 1) * 128));
      image_.fat = Allocate(1);
    }
    Add(0, children);
    entries_[0].size = miniStream_.size();
    entries_[0].start = Place(miniStream_);
    std::string miniFat;
    for (const uint32_t link : miniLinks_) Append(miniFat, link, 4);
    miniFat.resize(SectorsFor(miniFat.size()) * SectorSize(), '\xFF');
    image_.miniFat = Allocate(SectorsFor(miniFat.size()));
    Put(image_.miniFat, miniFat);
    std::string directory;
    for (const EntryRecord& entry : entries_) directory += EntryBytes(entry);
    if (!options_.tablesFirst) image_.directory = Allocate(SectorsFor(directory.size()));
    Put(image_.directory, directory);
    PlaceTables();
    return std::move(image_);
  }

 private:
  size_t SectorSize() const { return size_t{1} << options_.sectorShift; }
  void Add(size_t parent, const std::vector<Node>& children) {
    const size_t first = entries_.size();
    for (const Node& node : children) {
      EntryRecord entry;
      entry.name = node.name;
      entry.kind = node.isStorage ? 1 : 2;
      entry.classId = node.classId;
      entry.size = node.data.size();
      if (!node.isStorage)
        entry.start = node.data.size() < kCutoff ? PlaceMini(node.data) : Place(node.data);
      entries_.push_back(entry);
    }
    std::vector<size_t> order(children.size());
    std::iota(order.begin(), order.end(), first);
    if (options_.tree != SiblingTree::kUnsortedList) {
      std::sort(order.begin(), order.end(),
                [this](size_t a, size_t b) { return Before(entries_[a].name, entries_[b].name); });
    }
    entries_[parent].child = Tree(order, 0, order.size());
    for (size_t i = 0; i < children.size(); ++i) {
      if (children[i].isStorage) Add(first + i, children[i].children);
    }
  }

  uint32_t Tree(const std::vector<size_t>& order, size_t low, size_t high) {
    if (low == high) return kNothing;
    if (options_.tree != SiblingTree::kBalanced) {
      for (size_t i = low; i + 1 < high; ++i) {
        entries_[order[i]].right = static_cast<uint32_t>(order[i + 1]);
      }
      return static_cast<uint32_t>(order[low]);
    }
    const size_t middle = low + (high - low) / 2;
    EntryRecord& entry = entries_[order[middle]];
    entry.left = Tree(order, low, middle);
    entry.right = Tree(order, middle + 1, high);
    return static_cast<uint32_t>(order[middle]);
  }

  // Takes the next sectors and chains them.
  std::vector<uint32_t> Allocate(size_t count) {
    std::vector<uint32_t> sectors(count);
    std::iota(sectors.begin(), sectors.end(), static_cast<uint32_t>(links_.size()));
    if (options_.backwards) std::reverse(sectors.begin(), sectors.end());
    links_.resize(links_.size() + count, kEndOfChain);
    for (size_t i = 0; i + 1 < count; ++i) links_[sectors[i]] = sectors[i + 1];
    body_.resize(links_.size() * SectorSize(), '\0');
    return sectors;
  }

  void Put(const std::vector<uint32_t>& sectors, const std::string& data) {
    for (size_t i = 0; i < sectors.size(); ++i) {
      const std::string piece = data.substr(i * SectorSize(), SectorSize());
      body_.replace(sectors[i] * SectorSize(), piece.size(), piece);
    }
  }

  size_t SectorsFor(size_t size) const { return (size + SectorSize() - 1) / SectorSize(); }

  // Appends `data`; its first sector, kEndOfChain when it is empty.
  uint32_t Place(const std::string& data) {
    const std::vector<uint32_t> sectors = Allocate(SectorsFor(data.size()));
    Put(sectors, data);
    return sectors.empty() ? kEndOfChain : sectors[0];
  }

  uint32_t PlaceMini(const std::string& data) {
    const size_t count = (data.size() + kMiniSize - 1) / kMiniSize;
    if (count == 0) return kEndOfChain;
    const size_t first = miniLinks_.size();
    miniLinks_.resize(first + count, kEndOfChain);
    miniStream_.resize((first + count) * kMiniSize);
    uint32_t next = kEndOfChain;
    for (size_t i = count; i-- > 0;) {
      const size_t mini = first + (options_.backwards ? count - 1 - i : i);
      const std::string piece = data.substr(i * kMiniSize, kMiniSize);
      miniStream_.replace(mini * kMiniSize, piece.size(), piece);
      miniLinks_[mini] = next;
      next = static_cast<uint32_t>(mini);
    }
    return next;
  }

  // The FAT behind everything that it maps, the DIFAT behind it; both map themselves too.
  void PlaceTables() {
    const size_t words = SectorSize() / 4;
    size_t fatCount = 0;
    size_t difatCount = 0;
    while (!options_.tablesFirst && fatCount * words < links_.size() + fatCount + difatCount) {
      ++fatCount;
      difatCount = fatCount > kListed ? (fatCount - kListed + words - 2) / (words - 1) : 0;
    }
    if (!options_.tablesFirst) image_.fat = Allocate(fatCount);
    image_.difat = Allocate(difatCount);
    for (const uint32_t sector : image_.fat) links_[sector] = kFatSector;
    for (const uint32_t sector : image_.difat) links_[sector] = kDifatSector;
    links_.resize(image_.fat.size() * words, kFreeSector);
    std::string fat;
    for (const uint32_t link : links_) Append(fat, link, 4);
    Put(image_.fat, fat);
    std::string difat;
    for (size_t i = 0; i < difatCount; ++i) {
      for (size_t k = kListed + i * (words - 1); k < kListed + (i + 1) * (words - 1); ++k) {
        Append(difat, k < fatCount ? image_.fat[k] : kFreeSector, 4);
      }
      Append(difat, i + 1 < difatCount ? image_.difat[i + 1] : kEndOfChain, 4);
    }
    Put(image_.difat, difat);
    const uint32_t miniFat = image_.miniFat.empty() ? kEndOfChain : image_.miniFat[0];
    image_.bytes = CompoundHeader(options_.sectorShift, image_.directory[0], miniFat,
                                  difatCount == 0 ? kEndOfChain : image_.difat[0]);
    image_.bytes.resize(SectorSize(), '\0');
    image_.bytes += body_;
    for (size_t i = 0; i < std::min<size_t>(image_.fat.size(), kListed); ++i) {
      image_.SetWord(76 + 4 * i, image_.fat[i]);
    }
  }

  CompoundOptions options_;
  CompoundImage image_;
  std::vector<EntryRecord> entries_;
  std::vector<uint32_t> links_;
  std::vector<uint32_t> miniLinks_;
  std::string miniStream_;
  std::string body_;
};

}  // namespace

Node Stream(std::u16string name, std::string data) {
  return {std::move(name), false, std::move(data), "", {}};
}

Node Folder(std::u16string name, std::vector<Node> children, std::string classId) {
  return {std::move(name), true, "", std::move(classId), std::move(children)};
}

uint64_t CompoundImage::EntryOffset(uint32_t id) const {
  const uint32_t perSector = (1u << shift) / 128;
  return SectorOffset(directory[id / perSector]) + id % perSector * 128;
}

void CompoundImage::SetWord(uint64_t offset, uint32_t value) {
  std::string word;
  Append(word, value, 4);
  bytes.replace(offset, 4, word);
}

uint32_t CompoundImage::Word(uint64_t offset) const {
  uint32_t value = 0;
  for (size_t i = 4; i-- > 0;) value = value << 8 | static_cast<uint8_t>(bytes[offset + i]);
  return value;
}

void CompoundImage::SetLink(uint32_t sector, uint32_t next) {
  const uint32_t words = (1u << shift) / 4;
  SetWord(SectorOffset(fat[sector / words]) + sector % words * 4, next);
}

void CompoundImage::SetMiniLink(uint32_t mini, uint32_t next) {
  const uint32_t words = (1u << shift) / 4;
  SetWord(SectorOffset(miniFat[mini / words]) + mini % words * 4, next);
}

CompoundImage WriteCompoundFile(std::vector<Node> children, const CompoundOptions& options,
                                std::string rootClass) {
  return Writer(options).Write(std::move(children), std::move(rootClass));
}

std::string EntryBytes(const EntryRecord& entry) {
  std::string bytes;
  for (const char16_t unit : entry.name) Append(bytes, unit, 2);
  bytes.resize(64, '\0');
  Append(bytes, entry.name.size() * 2 + 2, 2);
  Append(bytes, entry.kind, 1);
  Append(bytes, 1, 1);  // black
  for (const uint32_t word : {entry.left, entry.right, entry.child}) Append(bytes, word, 4);
  bytes += entry.classId;
  bytes.resize(116, '\0');
  Append(bytes, entry.start, 4);
  Append(bytes, entry.size, 8);
  return bytes;
}

std::string CompoundHeader(uint32_t shift, uint32_t directory, uint32_t miniFat, uint32_t difat) {
  std::string header = "\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1";
  header.resize(24, '\0');
  Append(header, 0x3E, 2);
  Append(header, shift == 12 ? 4 : 3, 2);
  Append(header, 0xFFFE, 2);
  Append(header, shift, 2);
  Append(header, 6, 2);
  header.resize(48, '\0');
  Append(header, directory, 4);
  Append(header, 0, 4);
  Append(header, kCutoff, 4);
  Append(header, miniFat, 4);
  Append(header, 0, 4);
  Append(header, difat, 4);
  Append(header, 0, 4);
  header.resize(512, '\xFF');
  return header;
}

}  // namespace fi::testing
