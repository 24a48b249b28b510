// Compound files: names, streams and storages, what is left of them when they are damaged, and what
// reading them costs.
#include "toolkit/storage/compound_file.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <iomanip>
#include <map>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

#include "platform/io.h"
#include "tests/support/compound_file_writer.h"
#include "tests/support/memory_handle.h"
#include "tests/support/open_handle.h"
#include "tests/support/samples.h"
#include "toolkit/io/positioned_handle.h"
#include "toolkit/memory/little_endian.h"

namespace fi::testing {
namespace {

constexpr char kClassBytes[] = "0123456789abcdef";
constexpr size_t kSector = 512;

bool IsStorage(IOHandle* handle) { return io::GetInfo(handle, kIoInfoIsStorage, nullptr); }

std::string ClassOf(IOHandle* handle) {
  std::array<char, 16> id;
  return io::GetInfo(handle, kIoInfoClassId, id.data()) ? std::string(id.data(), id.size()) : "";
}

void ExpectReadsAs(IOHandle* stream, const std::string& data) {
  const auto size = static_cast<int64_t>(data.size());
  int64_t end = -1;
  ASSERT_TRUE(io::Seek64(stream, kIoFromEnd, 0));
  ASSERT_TRUE(io::Tell64(stream, &end));
  EXPECT_EQ(end, size);
  for (const uint32_t piece : {1u, 64u, 700u, 1u << 20}) {
    EXPECT_TRUE(ReadFrom(stream, 0, piece) == data) << "in pieces of " << piece;
  }
  // Downwards, so that the chain is taken up in the middle again and again.
  for (const int64_t boundary : {262144, 65536, 8192, 4096, 4032, 512, 64, 1}) {
    for (const int64_t at : {boundary + 1, boundary, boundary - 1}) {
      const std::string expected = at > size ? "" : data.substr(static_cast<size_t>(at));
      EXPECT_TRUE(ReadFrom(stream, at, 5000) == expected) << "from " << at;
    }
  }
}

TEST(CompoundFile, ReadsStreamsOfEverySize) {
  std::vector<Node> streams;
  for (const size_t size : {0u, 1u, 63u, 64u, 65u, 511u, 512u, 513u, 4031u, 4095u, 4096u, 4097u,
                            8191u, 8192u, 70001u, 300000u}) {
    const std::string digits = std::to_string(size);
    streams.push_back(Stream({digits.begin(), digits.end()}, Pattern(size, 1)));
  }
  for (const CompoundOptions& options :
       {CompoundOptions{9, false}, {9, true}, {12, false}, {12, true}}) {
    const std::string image = WriteCompoundFile(streams, options);
    const io::OwnedHandle file = OpenMemory(image);
    for (const Node& node : streams) {
      SCOPED_TRACE(::testing::Message() << "shift " << options.sectorShift << " backwards "
                                        << options.backwards << " bytes " << node.data.size());
      const std::string name(node.name.begin(), node.name.end());
      const io::OwnedHandle stream = OpenStream(file.get(), name.c_str());
      ASSERT_NE(stream, nullptr);
      ExpectReadsAs(stream.get(), node.data);
      EXPECT_FALSE(IsStorage(stream.get()));
    }
  }
}

TEST(CompoundFile, FindsNamesWhateverTheTree) {
  const std::vector<Node> inOrder = {Stream(u"a", "A"),
                                     Stream(u"\u0141\u0142", "P"),
                                     Stream(u"\u00E9\u00F7\u00FF", "L"),
                                     Stream(u"BOOK", "B"),
                                     Stream(u"zeta", "Z"),
                                     Folder(u"ObjectPool", {}),
                                     Folder(u"\006DataSpaces", {}),
                                     Stream(u"WordDocument", "W"),
                                     Stream(u"\005SummaryInformation", "S"),
                                     Stream(u"1234567890123456789012345678901", "31")};
  for (const auto& nodes : {inOrder, std::vector<Node>(inOrder.rbegin(), inOrder.rend())}) {
    const std::string image = WriteCompoundFile(nodes);
    const io::OwnedHandle file = OpenMemory(image);
    for (const Sample& sample : ReadSamples("toolkit/storage_names.txt", 3)) {
      SCOPED_TRACE(sample.place);
      const std::string found = SampleBytes(sample.columns[2]);
      int32_t result = 0;
      const io::OwnedHandle child = OpenChild(file.get(), static_cast<uint32_t>(sample.Number(0)),
                                              SampleBytes(sample.columns[1]).c_str(), &result);
      EXPECT_EQ(result, found.empty() ? kIoNotFound : kIoOk);
      ASSERT_EQ(child == nullptr, found.empty());
      EXPECT_EQ(child == nullptr ? "" : NameOf(child.get()), found);
    }
  }
}

// Siblings as a list, which a search follows for so many steps and no further.
TEST(CompoundFile, SearchesEndAtTheLimitOfSiblings) {
  constexpr uint32_t kLimit = 1024;
  constexpr size_t kEntry = 128;
  std::vector<Node> nodes;
  for (uint32_t i = 0; i <= kLimit; ++i) {
    const std::string digits = std::to_string(10000 + i);
    nodes.push_back(Stream({digits.begin(), digits.end()}, "x"));
  }
  std::string image = WriteCompoundFile(nodes);
  const size_t sector =
      size_t{static_cast<uint8_t>(image[48])} | size_t{static_cast<uint8_t>(image[49])} << 8;
  const size_t directory = (sector + 1) * kSector;
  image.replace(directory + 76, 4, Word(1));
  for (uint32_t i = 1; i <= kLimit + 1; ++i) {
    const uint32_t right = i <= kLimit ? i + 1 : UINT32_MAX;
    image.replace(directory + i * kEntry + 68, 8, Word(UINT32_MAX) + Word(right));
  }
  const io::OwnedHandle file = OpenMemory(image);
  int32_t result = 0;
  EXPECT_NE(OpenChild(file.get(), kIoSourceStorageStream, "11023", &result), nullptr);
  EXPECT_EQ(OpenChild(file.get(), kIoSourceStorageStream, "11024", &result), nullptr);
}

TEST(CompoundFile, StoragesHaveClassesAndChildren) {
  const std::string deepData = Pattern(9000, 1);
  const std::string image = WriteCompoundFile(
      {Folder(u"Outer", {Stream(u"in.doc", "text"), Folder(u"Inner", {Stream(u"deep", deepData)})},
              kClassBytes)},
      {}, "fedcba9876543210");
  const io::OwnedHandle file = OpenMemory(image, "dir/outer.doc");
  EXPECT_TRUE(IsStorage(file.get()));
  EXPECT_EQ(ClassOf(file.get()), "fedcba9876543210");
  io::OwnedHandle outer = OpenFolder(file.get(), "outer");
  ASSERT_NE(outer, nullptr);
  EXPECT_TRUE(IsStorage(outer.get()));
  EXPECT_EQ(ClassOf(outer.get()), kClassBytes);
  EXPECT_EQ(ReadFrom(outer.get(), 0, 100), "");
  io::OwnedHandle inner = OpenFolder(outer.get(), "INNER");
  ASSERT_NE(inner, nullptr);
  EXPECT_EQ(ClassOf(inner.get()), std::string(16, '\0'));
  EXPECT_EQ(OpenStream(file.get(), "in.doc"), nullptr);
  EXPECT_EQ(ReadFrom(OpenStream(outer.get(), "in.doc").get(), 0, 100), "text");
  const io::OwnedHandle deep = OpenStream(inner.get(), "deep");
  ASSERT_NE(deep, nullptr);
  inner.reset();
  outer.reset();
  EXPECT_TRUE(ReadFrom(deep.get(), 0, 512) == deepData);
}

TEST(CompoundFile, StorageInAStreamDownToALimit) {
  std::string bytes = "not a storage";
  for (uint32_t i = 0; i < storage::kMaxNesting + 3; ++i) {
    bytes = WriteCompoundFile({Stream(u"embedded", bytes)}, {}, kClassBytes);
  }
  std::vector<io::OwnedHandle> handles;
  handles.push_back(OpenMemory(bytes));
  while (IsStorage(handles.back().get())) {
    EXPECT_EQ(ClassOf(handles.back().get()), kClassBytes);
    handles.push_back(OpenStream(handles.back().get(), "embedded"));
    ASSERT_NE(handles.back(), nullptr);
  }
  EXPECT_EQ(handles.size(), storage::kMaxNesting + 2);
  EXPECT_EQ(ReadFrom(handles.back().get(), 0, 4, 4), "\xD0\xCF\x11\xE0");
  while (!handles.empty()) handles.pop_back();
}

TEST(CompoundFile, OpenRefusesWhatIsNoQuestionForAStorage) {
  const std::string image = WriteCompoundFile({Stream(u"a", "A")});
  const std::string text(5000, 't');
  const io::OwnedHandle file = OpenMemory(image);
  const io::OwnedHandle plain = OpenMemory(text);
  for (const auto& [handle, type, name] :
       {std::tuple(file.get(), kIoSourceStorageStream, static_cast<const char*>(nullptr)),
        std::tuple(file.get(), kIoSourcePath, "a"),
        std::tuple(plain.get(), kIoSourceStorageStream, "a")}) {
    int32_t result = 0;
    EXPECT_EQ(OpenChild(handle, type, name, &result), nullptr);
    EXPECT_EQ(result, kIoError);
  }
  IOHandle* child = file.get();
  EXPECT_EQ(file->operations->open(file.get(), &child, kIoSourceSubStorage, nullptr, 1), kIoError);
  EXPECT_EQ(child, nullptr);
}

// The reader over a host's handle: short reads, 32-bit positions, and a read that fails.
TEST(CompoundFile, ReadsThroughAnyHandle) {
  const std::string data = Pattern(20000, 5);
  const std::string image =
      WriteCompoundFile({Stream(u"large", data), Stream(u"small", data.substr(0, 700))}, {9, true});
  const auto readBoth = [](MemoryHandle& handle) -> std::optional<std::string> {
    handle.position = 77;
    const auto file = storage::CompoundFile::Open(&handle, 0);
    if (file == nullptr) return std::nullopt;
    std::string both;
    for (const char* name : {"large", "small"}) {
      IOHandle* child = nullptr;
      if (file->Root().Open(&child, kIoSourceStorageStream, {&handle, name}) != kIoOk) continue;
      both += ReadFrom(io::OwnedHandle(child).get(), 0, 1000);
    }
    EXPECT_EQ(handle.position, 77);
    return both;
  };
  const std::string expected = data + data.substr(0, 700);
  MemoryHandle faultless(image);
  EXPECT_EQ(readBoth(faultless), expected);
  MemoryHandle narrow(image);
  narrow.has64Bit = false;
  narrow.mostPerRead = 7;
  EXPECT_EQ(readBoth(narrow), expected);
  for (uint64_t failing = 1; failing <= faultless.reads; ++failing) {
    MemoryHandle handle(image);
    handle.failingRead = failing;
    EXPECT_LE(readBoth(handle).value_or("").size(), expected.size()) << failing;
  }
}

struct Image {
  std::string bytes;
  std::map<std::string, std::string> streams;
};

// The images of storage_damage.txt.
Image SoundImage(const std::string& name) {
  const bool isBig = name.starts_with("big");
  const std::string large = Pattern(isBig ? 8 << 20 : 40 * kSector, 11);
  const std::string small = Pattern(1000, 12);
  std::vector<Node> nodes = {Stream(u"Large", large)};
  if (!isBig) {
    nodes = {Folder(u"Sub", {Stream(u"Inside", "inside")}), nodes[0], Stream(u"Small", small),
             Stream(u"Third", Pattern(600, 13))};
  }
  const CompoundOptions options{name == "4096" ? 12u : 9u, name == "big backwards"};
  return {WriteCompoundFile(nodes, options), {{"Large", large}, {"Small", small}}};
}

// Makes changes as in storage_damage.txt.
void Damage(std::string& image, const std::string& changes) {
  static const std::vector<Sample> kPlaces = ReadSamples("toolkit/storage_places.txt", 3);
  std::istringstream words(changes);
  std::string what;
  for (int64_t number = 0, value = 0; words >> what >> std::setbase(0) >> number;) {
    if (what == "cut") {
      image.resize(static_cast<size_t>(number));
      continue;
    }
    ASSERT_TRUE(words >> value) << changes;
    const auto place = std::ranges::find_if(
        kPlaces, [&](const Sample& sample) { return sample.columns[0] == what; });
    ASSERT_NE(place, kPlaces.end()) << changes;
    const int64_t offset = place->Number(1) + place->Number(2) * number;
    image.replace(static_cast<size_t>(offset), 4, Word(static_cast<uint32_t>(value)));
  }
  ASSERT_TRUE(words.eof()) << changes;
}

TEST(CompoundFile, DamagedOnesYieldWhatIsSound) {
  std::map<std::string, Image> images;
  for (const Sample& sample : ReadSamples("toolkit/storage_damage.txt", 5)) {
    const std::string& name = sample.columns[1];
    const std::string& streamName = sample.columns[3];
    const std::string& yields = sample.columns[4];
    SCOPED_TRACE(sample.place + " " + sample.columns[0]);
    if (!images.contains(name)) images[name] = SoundImage(name);
    Image image = images[name];
    Damage(image.bytes, sample.columns[2]);
    const io::OwnedHandle file = OpenMemory(image.bytes);
    ASSERT_EQ(IsStorage(file.get()), yields != "no storage");
    if (yields == "no storage") continue;
    EXPECT_EQ(OpenStream(file.get(), "Absent"), nullptr);
    const io::OwnedHandle stream = OpenStream(file.get(), streamName.c_str());
    ASSERT_EQ(stream == nullptr, yields == "absent");
    if (stream == nullptr) continue;
    const std::string data = ReadFrom(stream.get(), 0, 1 << 16, 16 << 20);
    EXPECT_EQ(std::to_string(data.size()), yields);
    EXPECT_TRUE(image.streams[streamName].starts_with(data));
    for (const size_t at : {data.size() - data.size() / 7, data.size() / 2, size_t{4097}}) {
      const std::string rest = at > data.size() ? "" : data.substr(at);
      EXPECT_TRUE(ReadFrom(stream.get(), static_cast<int64_t>(at), 1 << 16) == rest) << at;
    }
    EXPECT_TRUE(ReadFrom(stream.get(), 0, 1, 30000) == data.substr(0, 30000));
  }
}

// A loop of any length ends within three times its length, wherever it is entered.
TEST(CompoundFile, LoopsOfSectorsEnd) {
  const Image sound = SoundImage("small");
  for (uint32_t last = 0; last < 39; ++last) {
    for (const uint32_t back : {0u, last / 2, last}) {
      std::string image = sound.bytes;
      Damage(image,
             "size 2 0x7FFFFFFF link " + std::to_string(3 + last) + " " + std::to_string(3 + back));
      const io::OwnedHandle file = OpenMemory(image);
      const std::string data = ReadFrom(OpenStream(file.get(), "Large").get(), 0, 1 << 16, 1 << 20);
      const size_t length = (last + 1) * kSector;
      EXPECT_GE(data.size(), length);
      EXPECT_LE(data.size(), std::min(3 * length, image.size()));
      EXPECT_EQ(data.substr(0, length), sound.streams.at("Large").substr(0, length));
    }
  }
}

TEST(CompoundFile, AStorageInItselfCanBeOpenedForEver) {
  std::string image = SoundImage("small").bytes;
  Damage(image, "child 1 1");
  std::vector<io::OwnedHandle> handles;
  handles.push_back(OpenMemory(image));
  for (int depth = 0; depth < 1000; ++depth) {
    handles.push_back(OpenFolder(handles.back().get(), "Sub"));
    ASSERT_NE(handles.back(), nullptr);
  }
  while (!handles.empty()) handles.pop_back();
}

// Cut anywhere behind its directory, a file yields what is left of its streams.
TEST(CompoundFile, CutAtEveryPlace) {
  const std::string data = Pattern(40 * kSector, 11);
  for (const uint32_t shift : {9u, 12u}) {
    const std::string image = WriteCompoundFile({Stream(u"Large", data)}, {shift, false});
    const size_t start = size_t{3} << shift;
    for (size_t size = start + data.size(); size > start; size -= 61) {
      const std::string bytes = image.substr(0, size);
      const io::OwnedHandle file = OpenMemory(bytes);
      const io::OwnedHandle stream = OpenStream(file.get(), "Large");
      ASSERT_NE(stream, nullptr) << size;
      ASSERT_TRUE(ReadFrom(stream.get(), 0, 999) == data.substr(0, size - start)) << size;
    }
  }
}

class CountedFile final : public io::PositionedHandle {
 public:
  explicit CountedFile(std::string bytes) : PositionedHandle("x"), bytes_(std::move(bytes)) {}
  ~CountedFile() override = default;

  uint64_t reads = 0;
  uint64_t bytesRead = 0;

 protected:
  int64_t Size() override { return static_cast<int64_t>(bytes_.size()); }
  int32_t ReadAt(int64_t offset, uint8_t* buffer, uint32_t size, uint32_t* count) override {
    auto* out = reinterpret_cast<char*>(buffer);
    *count = static_cast<uint32_t>(bytes_.copy(out, size, static_cast<size_t>(offset)));
    ++reads;
    bytesRead += *count;
    return 0;
  }

 private:
  const std::string bytes_;
};

TEST(CompoundFile, OtherFilesCostOneLookAtTheirHead) {
  CountedFile file(std::string(100000, 'x'));
  for (int i = 0; i < 3; ++i) EXPECT_FALSE(IsStorage(&file));
  EXPECT_EQ(ClassOf(&file), "");
  EXPECT_EQ(file.reads, 1u);
  EXPECT_LE(file.bytesRead, kSector);
}

// From back to front, so that the way to each chain leads through the DIFAT.
TEST(CompoundFile, ALargeFileCostsAFewReads) {
  const std::string data = Pattern(16 << 20, 9);
  CountedFile file(WriteCompoundFile({Stream(u"WordDocument", data)}, {9, true}));
  for (const char* name : {"PP40", "EncryptedPackage", "Book", "Workbook", "VisioDocument",
                           "\006DataSpaces", "Props", "Quill"}) {
    EXPECT_EQ(OpenStream(&file, name), nullptr) << name;
  }
  const io::OwnedHandle stream = OpenStream(&file, "WordDocument");
  ASSERT_NE(stream, nullptr);
  EXPECT_EQ(ReadFrom(stream.get(), 0, 2048, 2048), data.substr(0, 2048));
  EXPECT_LE(file.reads, 10u);
  EXPECT_LE(file.bytesRead, 16u * 1024);
}

TEST(CompoundFile, NeighbouringSectorsAreReadInOneCall) {
  const std::string data = Pattern(1 << 20, 9);
  CountedFile file(WriteCompoundFile({Stream(u"data", data)}));
  const io::OwnedHandle stream = OpenStream(&file, "data");
  ASSERT_NE(stream, nullptr);
  file.reads = 0;
  EXPECT_TRUE(ReadFrom(stream.get(), 0, 1 << 20) == data);
  EXPECT_LE(file.reads, 6u);  // 2048 sectors, and the FAT that chains them
}

// A directory of 5 MB. Its chain has to be followed, in 40 KB of FAT; its entries are not.
TEST(CompoundFile, FortyThousandEntriesAreNotReadWhole) {
  std::vector<Node> nodes;
  for (int i = 100000; i < 140000; ++i) {
    const std::string digits = std::to_string(i);
    nodes.push_back(Stream({digits.begin(), digits.end()}, ""));
  }
  CountedFile file(WriteCompoundFile(nodes));
  for (const char* name : {"100000", "107777", "120000", "139998", "139999"}) {
    EXPECT_NE(OpenStream(&file, name), nullptr) << name;
  }
  EXPECT_LE(file.reads, 80u);
  file.reads = 0;
  for (const char* name : {"0", "050000", "140000", "120000x", "1000000"}) {
    EXPECT_EQ(OpenStream(&file, name), nullptr) << name;
  }
  EXPECT_LE(file.reads, 160u);
}

// What a storage of a few names answers by its tree alone: as it is searched first, and then,
// unless it is known to be in order, gone through from left to right.
class PlainSearch {
 public:
  explicit PlainSearch(const std::string& image) : image_(image) {
    const auto* header = reinterpret_cast<const uint8_t*>(image.data());
    at_ = (LoadLE32(header + 48) + 1) * kSector;
    (void)Entry(0, &entry_);
    root_ = entry_.child;
  }

  // The number of the entry, whatever its kind.
  std::optional<uint32_t> Find(const std::string& narrow) {
    storage::EntryName name;
    if (!storage::EntryName::Widen(narrow.c_str(), &name)) return std::nullopt;
    uint32_t id = root_;
    for (uint32_t looked = 0; looked < storage::kMaxSiblings && Entry(id, &entry_); ++looked) {
      const int order = CompareNames(name, entry_.name);
      if (order == 0) return id;
      id = order < 0 ? entry_.left : entry_.right;
    }
    if (isKept_) return std::nullopt;
    std::vector<uint32_t> path;
    std::optional<storage::EntryName> previous;
    bool inOrder = true;
    uint32_t met = 0;
    for (id = root_;; id = entry_.right) {
      for (; met < storage::kMaxSiblings && Entry(id, &entry_); ++met, id = entry_.left) {
        path.push_back(id);
      }
      if (path.empty()) break;
      id = path.back();
      path.pop_back();
      (void)Entry(id, &entry_);
      if (CompareNames(name, entry_.name) == 0) return id;
      inOrder &=
          previous.has_value() ? CompareNames(*previous, entry_.name) < 0 : entry_.name.length > 0;
      previous = entry_.name;
    }
    if (!isKnown_) isKept_ = inOrder;
    isKnown_ = true;
    return std::nullopt;
  }

 private:
  bool Entry(uint32_t id, storage::DirectoryEntry* entry) {
    const size_t at = at_ + size_t{id} * storage::kEntrySize;
    if (id == storage::kNoEntry || at > image_.size() - storage::kEntrySize) return false;
    *entry = storage::ParseEntry(reinterpret_cast<const uint8_t*>(image_.data()) + at, false);
    return entry->kind != storage::EntryKind::kUnused;
  }

  const std::string& image_;
  size_t at_;
  uint32_t root_;
  storage::DirectoryEntry entry_;
  bool isKnown_ = false;
  bool isKept_ = false;
};

// Compares answers on names that are there, on those that differ in case, and on others, in several
// orders: what is remembered must not show.
void ExpectAnswersOfPlainSearch(const std::string& image, uint32_t names, uint32_t seed) {
  const io::OwnedHandle file = OpenMemory(image);
  PlainSearch plain(image);
  for (uint32_t i = 0; i < 60; ++i) {
    seed = seed * 1664525 + 1013904223;
    std::string name = std::to_string(1000 + (seed >> 8) % (names + 3));
    name[0] = static_cast<char>(0xD0 | (seed >> 26 & 0x20));  // a letter of Latin-1 in both cases
    const std::optional<uint32_t> expected = plain.Find(name);
    const io::OwnedHandle stream = OpenStream(file.get(), name.c_str());
    ASSERT_EQ(stream != nullptr, expected.has_value()) << name;
    if (stream != nullptr) {
      EXPECT_EQ(ReadFrom(stream.get(), 0, 100), std::to_string(*expected)) << name;
    }
  }
}

// Trees in which links, names and uses are changed at random, so that they lose entries, repeat
// them, run into themselves or are out of order.
TEST(CompoundFile, IndexAnswersAsTheTreeDoes) {
  for (uint32_t seed = 1; seed < 400; ++seed) {
    const uint32_t count = seed % 29 + 1;
    std::vector<Node> nodes;
    for (uint32_t i = 0; i < count; ++i) {
      const std::string digits = std::to_string(1000 + i).substr(1);
      nodes.push_back(
          Stream(u"\u00D0" + std::u16string(digits.begin(), digits.end()), std::to_string(i + 1)));
    }
    std::string image = WriteCompoundFile(nodes);
    const auto* header = reinterpret_cast<const uint8_t*>(image.data());
    const size_t directory = (LoadLE32(header + 48) + 1) * kSector;
    uint32_t random = seed * 7919;
    for (uint32_t changes = seed % 5; changes > 0; --changes) {
      random = random * 1664525 + 1013904223;
      const uint32_t entry = (random >> 24) % count + 1;
      const size_t at = directory + size_t{entry} * storage::kEntrySize;
      const uint32_t other = (random >> 16 & 0xFF) % (count + 2);
      switch (random >> 12 & 3) {
        case 0:
          image.replace(at + 68, 4, Word(other));
          break;
        case 1:
          image.replace(at + 72, 4, Word(other));
          break;
        case 2:
          image[at + 6] = static_cast<char>('0' + other % 10);
          break;
        default:
          if (other % 4 == 0) image[at + 66] = 0;
      }
    }
    SCOPED_TRACE(seed);
    ExpectAnswersOfPlainSearch(image, count, seed);
    if (HasFatalFailure()) return;
  }
}

// More entries than are gone through: those behind the limit are found by the tree all the same.
TEST(CompoundFile, IndexOfAPartIsNotBelieved) {
  std::vector<Node> nodes;
  for (uint32_t i = 0; i < storage::kMaxSiblings + 200; ++i) {
    const std::string name = "X" + std::to_string(10000 + i).substr(1);
    nodes.push_back(Stream({name.begin(), name.end()}, ""));
  }
  for (const size_t count : {nodes.size(), size_t{storage::kMaxSiblings}, nodes.size() / 2}) {
    nodes.resize(count);
    const std::string image = WriteCompoundFile(nodes);
    const io::OwnedHandle file = OpenMemory(image);
    EXPECT_EQ(OpenStream(file.get(), "absent"), nullptr);
    for (const Node& node : nodes) {
      const std::string name(node.name.begin(), node.name.end());
      EXPECT_NE(OpenStream(file.get(), name.c_str()), nullptr) << name;
    }
  }
}

// Once a name was not there, others that are not cost no look at the directory.
TEST(CompoundFile, NamesThatAreNotThereCostOnePass) {
  std::vector<Node> nodes;
  for (int i = 100; i < 800; ++i) {
    const std::string digits = std::to_string(i);
    nodes.push_back(Stream({digits.begin(), digits.end()}, ""));
  }
  CountedFile file(WriteCompoundFile(nodes));
  EXPECT_EQ(OpenStream(&file, "absent"), nullptr);
  file.reads = 0;
  for (int i = 1000; i < 1100; ++i) {
    EXPECT_EQ(OpenStream(&file, std::to_string(i).c_str()), nullptr);
  }
  EXPECT_EQ(file.reads, 0u);
}

}  // namespace
}  // namespace fi::testing
