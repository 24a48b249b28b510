// Compound files as they should be: names, streams, storages, and what reading them costs.
#include "toolkit/storage/compound_file.h"

#include <gtest/gtest.h>

#include <array>
#include <optional>
#include <string>
#include <vector>

#include "platform/io.h"
#include "tests/support/compound_file_writer.h"
#include "tests/support/memory_handle.h"
#include "tests/support/open_handle.h"
#include "tests/support/sparse_compound_file.h"

namespace fi::testing {
namespace {

constexpr char kClassBytes[] = "0123456789abcdef";

bool IsStorage(IOHandle* handle) { return io::GetInfo(handle, kIoInfoIsStorage, nullptr); }

std::string ClassOf(IOHandle* handle) {
  std::array<char, 16> id;
  return io::GetInfo(handle, kIoInfoClassId, id.data()) ? std::string(id.data(), id.size()) : "";
}

std::string NameOf(IOHandle* handle) {
  std::array<char, kIoNameCapacity> name;
  return io::GetInfo(handle, kIoInfoFileName, name.data()) ? name.data() : "";
}

struct Layout {
  const char* name;
  CompoundOptions options;
};

const Layout kLayouts[] = {
    {"version 3", {9, SiblingTree::kBalanced, false, false}},
    {"version 4", {12, SiblingTree::kBalanced, false, false}},
    {"version 3 backwards", {9, SiblingTree::kBalanced, true, false}},
    {"version 4 backwards", {12, SiblingTree::kBalanced, true, false}},
};

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
  for (const int64_t boundary : {262144, 65536, 8192, 4096, 4032, 512, 64, 0}) {
    for (const int64_t at : {boundary + 1, boundary, boundary - 1}) {
      if (at < 0) continue;
      const std::string expected = at > size ? "" : data.substr(static_cast<size_t>(at));
      EXPECT_TRUE(ReadFrom(stream, at, 5000) == expected) << "from " << at;
    }
  }
}

TEST(CompoundFileTest, ReadsStreamsOfEverySize) {
  constexpr size_t kSizes[] = {0,    1,    63,   64,   65,   511,  512,   513,
                               4031, 4095, 4096, 4097, 8191, 8192, 70001, 300000};
  std::vector<Node> streams;
  for (const size_t size : kSizes) {
    const std::string digits = std::to_string(size);
    streams.push_back(Stream(std::u16string(digits.begin(), digits.end()),
                             Pattern(size, static_cast<uint32_t>(size))));
  }
  for (const Layout& layout : kLayouts) {
    const CompoundImage image = WriteCompoundFile(streams, layout.options);
    const io::OwnedHandle file = OpenMemory(image.bytes);
    for (const Node& node : streams) {
      SCOPED_TRACE(std::string(layout.name) + ", bytes " + std::to_string(node.data.size()));
      const std::string name(node.name.begin(), node.name.end());
      const io::OwnedHandle stream = OpenStream(file.get(), name.c_str());
      ASSERT_NE(stream, nullptr);
      ExpectReadsAs(stream.get(), node.data);
      EXPECT_FALSE(IsStorage(stream.get()));
    }
  }
}

TEST(CompoundFileTest, FindsNamesWhateverTheTree) {
  const std::vector<Node> nodes = {
      Stream(u"WordDocument", "W"),
      Stream(u"zeta", "Z"),
      Stream(u"\005SummaryInformation", "S"),
      Folder(u"\006DataSpaces", {}),
      Folder(u"ObjectPool", {}),
      Stream(u"\u00E9\u00F7\u00FF", "L"),
      Stream(u"\u0141\u0142", "P"),
      Stream(u"a", "A"),
      Stream(u"1234567890123456789012345678901", "31"),
      Stream(u"BOOK", "B"),
  };
  struct Case {
    const char* name;
    uint32_t type;
    const char* found;  // the name as stored, null: not found
  };
  const Case kCases[] = {
      {"WordDocument", kIoSourceStorageStream, "WordDocument"},
      {"WORDDOCUMENT", kIoSourceStorageStream, "WordDocument"},
      {"Zeta", kIoSourceStorageStream, "zeta"},
      {"Book", kIoSourceStorageStream, "BOOK"},
      {"A", kIoSourceStorageStream, "a"},
      {"\005SummaryInformation", kIoSourceStorageStream, "\005SummaryInformation"},
      {"SummaryInformation", kIoSourceStorageStream, nullptr},
      {"\006DataSpaces", kIoSourceSubStorage, "\006DataSpaces"},
      {"\006dataspaces", kIoSourceStorageStream, nullptr},
      {"ObjectPool", kIoSourceSubStorage, "ObjectPool"},
      {"WordDocument", kIoSourceSubStorage, nullptr},
      {"\xE9\xF7\xFF", kIoSourceStorageStream, "\xE9\xF7\xFF"},
      {"\xC9\xF7\xFF", kIoSourceStorageStream, "\xE9\xF7\xFF"},
      {"\xE9\xD7\xFF", kIoSourceStorageStream, nullptr},
      {"\x41\x42", kIoSourceStorageStream, nullptr},  // the low bytes of another name
      {"1234567890123456789012345678901", kIoSourceStorageStream,
       "1234567890123456789012345678901"},
      {"12345678901234567890123456789012", kIoSourceStorageStream, nullptr},
      {"WordDocumen", kIoSourceStorageStream, nullptr},
      {"", kIoSourceStorageStream, nullptr},
      {"Root Entry", kIoSourceSubStorage, nullptr},
  };
  for (const SiblingTree tree :
       {SiblingTree::kBalanced, SiblingTree::kRightList, SiblingTree::kUnsortedList}) {
    const CompoundImage image = WriteCompoundFile(nodes, {9, tree, false, false});
    const io::OwnedHandle file = OpenMemory(image.bytes);
    for (const Case& c : kCases) {
      SCOPED_TRACE(std::to_string(static_cast<int>(tree)) + " " + c.name);
      int32_t result = 0;
      const io::OwnedHandle child = OpenChild(file.get(), c.type, c.name, &result);
      EXPECT_EQ(result, c.found == nullptr ? kIoNotFound : kIoOk);
      ASSERT_EQ(child != nullptr, c.found != nullptr);
      if (child != nullptr) {
        EXPECT_EQ(NameOf(child.get()), c.found);
      }
    }
  }
}

TEST(CompoundFileTest, StoragesHaveClassesAndChildren) {
  const std::string deepData = Pattern(9000, 1);
  const CompoundImage image = WriteCompoundFile(
      {Folder(u"Outer", {Stream(u"in.doc", "text"), Folder(u"Inner", {Stream(u"deep", deepData)})},
              kClassBytes)},
      {}, "fedcba9876543210");
  const io::OwnedHandle file = OpenMemory(image.bytes, "dir/outer.doc");
  EXPECT_TRUE(IsStorage(file.get()));
  EXPECT_EQ(ClassOf(file.get()), "fedcba9876543210");
  EXPECT_EQ(NameOf(file.get()), "outer.doc");
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
  io::OwnedHandle deep = OpenStream(inner.get(), "deep");
  ASSERT_NE(deep, nullptr);
  inner.reset();
  outer.reset();
  EXPECT_TRUE(ReadFrom(deep.get(), 0, 512) == deepData);
  deep.reset();
  EXPECT_TRUE(IsStorage(file.get()));
}

TEST(CompoundFileTest, OpensStoragesAThousandDeep) {
  constexpr int kDepth = 1000;
  Node node = Stream(u"end", "found");
  for (int depth = 0; depth < kDepth; ++depth) node = Folder(u"next", {node});
  const CompoundImage image = WriteCompoundFile({node});
  std::vector<io::OwnedHandle> handles;
  handles.push_back(OpenMemory(image.bytes));
  for (int depth = 0; depth < kDepth; ++depth) {
    handles.push_back(OpenFolder(handles.back().get(), "next"));
    ASSERT_NE(handles.back(), nullptr) << depth;
  }
  EXPECT_EQ(ReadFrom(OpenStream(handles.back().get(), "end").get(), 0, 9), "found");
  while (!handles.empty()) handles.pop_back();
}

// More than the 109 FAT sectors that the header lists.
TEST(CompoundFileTest, FollowsTheFatBeyondTheHeader) {
  const std::string data = Pattern(8 << 20, 3);
  for (const bool backwards : {false, true}) {
    const CompoundImage image =
        WriteCompoundFile({Stream(u"big", data)}, {9, SiblingTree::kBalanced, backwards, false});
    ASSERT_FALSE(image.difat.empty());
    const io::OwnedHandle file = OpenMemory(image.bytes);
    const io::OwnedHandle stream = OpenStream(file.get(), "big");
    ASSERT_NE(stream, nullptr);
    for (const size_t at : {data.size() - 3000, size_t{7} << 20, size_t{4097}, size_t{0}}) {
      EXPECT_TRUE(ReadFrom(stream.get(), static_cast<int64_t>(at), 1 << 16) == data.substr(at))
          << "from " << at;
    }
  }
}

TEST(CompoundFileTest, StorageInAStreamDownToALimit) {
  std::string bytes = "not a storage";
  for (uint32_t i = 0; i < storage::kMaxNesting + 3; ++i) {
    bytes = WriteCompoundFile({Stream(u"embedded", bytes)}, {}, kClassBytes).bytes;
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

TEST(CompoundFileTest, OpenRefusesWhatIsNoQuestionForAStorage) {
  const std::string image = WriteCompoundFile({Stream(u"a", "A")}).bytes;
  const std::string text(5000, 't');
  const io::OwnedHandle file = OpenMemory(image);
  const io::OwnedHandle plain = OpenMemory(text);
  EXPECT_EQ(ClassOf(plain.get()), "");
  struct Case {
    IOHandle* handle;
    uint32_t type;
    const char* name;
  };
  const Case kCases[] = {{file.get(), kIoSourceStorageStream, nullptr},
                         {file.get(), kIoSourcePath, "a"},
                         {plain.get(), kIoSourceStorageStream, "a"}};
  for (const Case& c : kCases) {
    int32_t result = 0;
    EXPECT_EQ(OpenChild(c.handle, c.type, c.name, &result), nullptr);
    EXPECT_EQ(result, kIoError);
  }
  IOHandle* child = file.get();
  EXPECT_EQ(file->operations->open(file.get(), &child, kIoSourceSubStorage, nullptr, 1), kIoError);
  EXPECT_EQ(child, nullptr);
}

// The reader over a host's handle: short reads, 32-bit positions, and a read that fails.
TEST(CompoundFileTest, ReadsThroughAnyHandle) {
  const std::string data = Pattern(20000, 5);
  const CompoundImage image =
      WriteCompoundFile({Stream(u"large", data), Stream(u"small", data.substr(0, 700))},
                        {9, SiblingTree::kBalanced, true, false});
  const auto readBoth = [](MemoryHandle& handle) -> std::optional<std::string> {
    handle.position = 77;
    const auto file = storage::CompoundFile::Open(&handle, 0);
    if (file == nullptr) return std::nullopt;
    std::string both;
    for (const char* name : {"large", "small"}) {
      IOHandle* child = nullptr;
      if (file->root().Open(&child, kIoSourceStorageStream, {&handle, name}) != kIoOk) continue;
      const io::OwnedHandle stream(child);
      both += ReadFrom(stream.get(), 0, 1000);
    }
    EXPECT_EQ(handle.position, 77);
    return both;
  };
  const std::string expected = data + data.substr(0, 700);
  MemoryHandle faultless(image.bytes);
  EXPECT_EQ(readBoth(faultless), expected);
  MemoryHandle narrow(image.bytes);
  narrow.has64Bit = false;
  narrow.mostPerRead = 7;
  EXPECT_EQ(readBoth(narrow), expected);
  for (uint64_t failing = 1; failing <= faultless.reads; ++failing) {
    MemoryHandle handle(image.bytes);
    handle.failingRead = failing;
    const std::optional<std::string> read = readBoth(handle);
    if (read.has_value()) {
      EXPECT_LE(read->size(), expected.size()) << failing;
    }
  }
}

class CountingHandle final : public io::PositionedHandle {
 public:
  explicit CountingHandle(std::string bytes) : PositionedHandle("x"), bytes_(std::move(bytes)) {}
  ~CountingHandle() override = default;

  std::vector<std::pair<int64_t, uint32_t>> reads;  // offset and size

 protected:
  int64_t Size() override { return static_cast<int64_t>(bytes_.size()); }
  int32_t ReadAt(int64_t offset, uint8_t* buffer, uint32_t size, uint32_t* count) override {
    reads.emplace_back(offset, size);
    *count = static_cast<uint32_t>(
        bytes_.copy(reinterpret_cast<char*>(buffer), size, static_cast<size_t>(offset)));
    return 0;
  }

 private:
  std::string bytes_;
};

TEST(CompoundFileTest, OtherFilesCostOneLookAtTheirHead) {
  CountingHandle handle(std::string(100000, 'x'));
  for (int i = 0; i < 3; ++i) EXPECT_FALSE(IsStorage(&handle));
  EXPECT_EQ(ClassOf(&handle), "");
  ASSERT_EQ(handle.reads.size(), 1u);
  EXPECT_EQ(handle.reads[0].first, 0);
  EXPECT_LE(handle.reads[0].second, 512u);
}

TEST(CompoundFileTest, NeighbouringSectorsAreReadInOneCall) {
  const std::string data = Pattern(1 << 20, 9);
  CountingHandle handle(WriteCompoundFile({Stream(u"data", data)}).bytes);
  const io::OwnedHandle stream = OpenStream(&handle, "data");
  ASSERT_NE(stream, nullptr);
  handle.reads.clear();
  EXPECT_TRUE(ReadFrom(stream.get(), 0, 1 << 20) == data);
  EXPECT_LE(handle.reads.size(), 18u);  // 2048 sectors, mapped by 16 or 17 sectors of the FAT
}

constexpr uint32_t kHalfGigabyte = 1 << 20;  // in sectors

const char* const kAbsent[] = {"PP40",          "EncryptedPackage", "PowerPoint Document",
                               "Book",          "Workbook",         "NOVELL_MAIN",
                               "MatOST",        "Contents",         "PerfectOffice_MAIN",
                               "VisioDocument", "FileHeader",       "__properties_version1.0",
                               "Quill",         "\006DataSpaces",   "WksSSWorkBook",
                               "Props"};

// A document of half a gigabyte whose directory stands at its end, as it does when it grew.
TEST(CompoundFileTest, ALargeFileCostsAFewDozenReads) {
  const uint32_t first = SparseCompoundFile::FirstFree(kHalfGigabyte);
  const SparseCompoundFile::Extent body = {first, kHalfGigabyte - first - 8};
  const auto entry = [&](uint32_t id) {
    constexpr std::array<const char16_t*, 6> kNames = {
        u"Root Entry", u"Data", u"1Table", u"CompObj", u"ObjectPool", u"WordDocument"};
    EntryRecord record;
    if (id >= kNames.size()) return record;
    record.name = kNames[id];
    record.kind = id == 0 ? 5 : 2;
    record.start = body.first;
    record.size = id == 0 ? 0 : uint64_t{body.count} * 512;
    if (id == 0) record.child = 3;
    if (id == 3) record.left = 2;
    if (id == 2) record.left = 1;
    if (id == 3) record.right = 4;
    if (id == 4) record.right = 5;
    return record;
  };
  SparseCompoundFile file(kHalfGigabyte, {kHalfGigabyte - 8, 8}, {body}, entry);
  ASSERT_TRUE(IsStorage(&file));
  for (const char* name : kAbsent) EXPECT_EQ(OpenStream(&file, name), nullptr) << name;
  const io::OwnedHandle stream = OpenStream(&file, "WordDocument");
  ASSERT_NE(stream, nullptr);
  const std::string head = ReadFrom(stream.get(), 0, 2048, 2048);
  ASSERT_EQ(head.size(), 2048u);
  EXPECT_EQ(static_cast<uint8_t>(head[512]), SparseCompoundFile::Fill(body.first + 1));
  // Most of it is the way through the DIFAT to the last sector of the FAT: 64 sectors, one a read.
  EXPECT_LE(file.reads, 72u);
  EXPECT_LE(file.bytesRead, 40u * 1024);
}

// A directory of 128 MB. Its chain has to be followed, in 1 MB of FAT; its entries are not.
TEST(CompoundFileTest, AMillionEntriesAreNotReadWhole) {
  constexpr uint32_t kEntries = 1000000;
  constexpr uint32_t kSectors = 280000;
  const auto name = [](uint32_t id) {
    const std::string digits = std::to_string(10000000 + id);
    return std::u16string(digits.begin(), digits.end());
  };
  // Entry 1 + i is the i-th name; the tree halves the range at each step.
  const auto entry = [&](uint32_t id) {
    EntryRecord record;
    if (id > kEntries) return record;
    record.kind = id == 0 ? 5 : 2;
    record.name = name(id);
    if (id == 0) record.child = 1 + kEntries / 2;
    uint32_t low = 1;
    uint32_t high = kEntries + 1;
    while (id != 0 && low + (high - low) / 2 != id) {
      const uint32_t middle = low + (high - low) / 2;
      (id < middle ? high : low) = id < middle ? middle : middle + 1;
    }
    if (id != 0 && low < id) record.left = low + (id - low) / 2;
    if (id != 0 && id + 1 < high) record.right = id + 1 + (high - id - 1) / 2;
    return record;
  };
  const SparseCompoundFile::Extent directory = {SparseCompoundFile::FirstFree(kSectors),
                                                kEntries / 4 + 1};
  SparseCompoundFile file(kSectors, directory, {}, entry);
  for (const uint32_t id : {1u, 77777u, 500001u, 999999u, 1000000u}) {
    EXPECT_NE(OpenStream(&file, std::to_string(10000000 + id).c_str()), nullptr) << id;
  }
  const uint64_t hits = file.reads;
  EXPECT_LE(hits, 2200u);
  for (const char* absent : kAbsent) EXPECT_EQ(OpenStream(&file, absent), nullptr) << absent;
  EXPECT_EQ(OpenStream(&file, "20000000"), nullptr);
  EXPECT_LE(file.reads - hits, 1600u);
}

}  // namespace
}  // namespace fi::testing
