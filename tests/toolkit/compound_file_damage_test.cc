// Compound files that are cut, broken or made to mislead.
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "platform/io.h"
#include "tests/support/compound_file_writer.h"
#include "tests/support/open_handle.h"

namespace fi::testing {
namespace {

constexpr size_t kSector = 512;
constexpr size_t kLargeSize = 40 * kSector;
constexpr size_t kSmallSize = 1000;

bool IsStorage(IOHandle* handle) { return io::GetInfo(handle, kIoInfoIsStorage, nullptr); }

std::string Large() { return Pattern(kLargeSize, 11); }
std::string Small() { return Pattern(kSmallSize, 12); }

// Entries: 1 Large, 2 Small, 3 Sub, 4 Third, 5 Inside (in Sub). Large takes the first sectors.
CompoundImage Sound(uint32_t shift = 9) {
  return WriteCompoundFile(
      {Stream(u"Large", Large()), Stream(u"Small", Small()),
       Folder(u"Sub", {Stream(u"Inside", "inside")}), Stream(u"Third", Pattern(600, 13))},
      {shift, SiblingTree::kBalanced, false, false});
}

using Break = std::function<void(CompoundImage&)>;

Break PutHeader(size_t offset, uint32_t value) {
  return [=](CompoundImage& image) { image.SetWord(offset, value); };
}

TEST(CompoundFileDamageTest, IsNoStorageWithoutHeaderAndRoot) {
  struct Case {
    const char* name;
    uint32_t shift;
    Break apply;
    bool isStorage;
  };
  const auto cutTo = [](uint64_t size) {
    return [=](CompoundImage& image) { image.bytes.resize(size); };
  };
  const auto cutBehindRoot = [](int64_t by) {
    return [=](CompoundImage& image) {
      image.bytes.resize(image.EntryOffset(0) + 128 - static_cast<uint64_t>(by));
    };
  };
  const Case kCases[] = {
      {"sound", 9, [](CompoundImage&) {}, true},
      {"sound, large sectors", 12, [](CompoundImage&) {}, true},
      {"magic", 9, PutHeader(4, 0), false},
      {"byte order", 9, PutHeader(28, 0x0009FEFF), false},
      {"version 5", 9, PutHeader(24, 0x0005003E), false},
      {"version 0", 9, PutHeader(24, 0x0000003E), false},
      {"sector shift 10", 9, PutHeader(30, 0x0006000A), false},
      {"sector shift 31", 9, PutHeader(30, 0x0006001F), false},
      {"sector shift 0", 9, PutHeader(30, 0x00060000), false},
      {"small sectors said to be large", 9, PutHeader(30, 0x0006000C), false},
      {"large sectors said to be small", 12, PutHeader(30, 0x00060009), false},
      {"directory behind the end", 9, PutHeader(48, 100000), false},
      {"directory at the largest offset", 9, PutHeader(48, 0xFFFFFFF9), false},
      {"no directory", 9, PutHeader(48, kEndOfChain), false},
      {"directory in a stream", 9, PutHeader(48, 3), false},
      {"root is a storage", 9,
       [](CompoundImage& image) { image.bytes[image.EntryOffset(0) + 66] = 1; }, false},
      {"no bytes", 9, cutTo(0), false},
      {"magic only", 9, cutTo(8), false},
      {"cut in the header", 9, cutTo(511), false},
      {"cut behind the header", 9, cutTo(512), false},
      {"cut behind the header, large sectors", 12, cutTo(4096), false},
      {"cut behind the root", 9, cutBehindRoot(0), true},
      {"cut in the root", 9, cutBehindRoot(1), false},
      {"huge counts of sectors", 9,
       [](CompoundImage& image) {
         for (const size_t count : {40u, 44u, 64u, 72u}) image.SetWord(count, 0xFFFFFFFF);
       },
       true},
  };
  for (const Case& c : kCases) {
    CompoundImage image = Sound(c.shift);
    c.apply(image);
    const io::OwnedHandle file = OpenMemory(image.bytes);
    EXPECT_EQ(IsStorage(file.get()), c.isStorage) << c.name;
  }
}

// How many bytes a damaged stream still yields, all of them its own.
TEST(CompoundFileDamageTest, AStreamEndsAtTheBreak) {
  struct Case {
    const char* name;
    const char* stream;
    Break apply;
    size_t yields;
  };
  const Case kCases[] = {
      {"sector follows itself", "Large", [](CompoundImage& i) { i.SetLink(6, 6); }, 7 * kSector},
      {"first sector follows itself", "Large", [](CompoundImage& i) { i.SetLink(0, 0); }, kSector},
      {"link behind the end", "Large", [](CompoundImage& i) { i.SetLink(9, 5000); }, 10 * kSector},
      {"link free", "Large", [](CompoundImage& i) { i.SetLink(9, kFreeSector); }, 10 * kSector},
      {"chain too short", "Large", [](CompoundImage& i) { i.SetLink(20, kEndOfChain); },
       21 * kSector},
      {"start behind the end", "Large",
       [](CompoundImage& i) { i.SetEntry(1, kEntryStart, 0xFFFFFFF0); }, 0},
      {"FAT behind the end", "Large", PutHeader(76, 0xFFFFFF00), kSector},
      {"FAT not listed", "Large", PutHeader(76, kFreeSector), kSector},
      {"claims more than its chain", "Large",
       [](CompoundImage& i) { i.SetEntry(1, kEntrySize, 0xFFFFFFFF); }, kLargeSize},
      {"garbage above a 32-bit size", "Large",
       [](CompoundImage& i) { i.SetWord(i.EntryOffset(1) + kEntrySize + 4, 0xCDCDCDCD); },
       kLargeSize},
      {"mini sector follows itself", "Small", [](CompoundImage& i) { i.SetMiniLink(2, 2); },
       3 * 64},
      {"mini link out of range", "Small", [](CompoundImage& i) { i.SetMiniLink(2, 700000); },
       3 * 64},
      {"no mini FAT", "Small", PutHeader(60, kEndOfChain), 64},
      {"no mini stream", "Small", [](CompoundImage& i) { i.SetEntry(0, kEntryStart, kEndOfChain); },
       0},
      {"mini stream follows itself", "Small",
       [](CompoundImage& i) {
         const uint32_t start = i.Entry(0, kEntryStart);
         i.SetLink(start, start);
       },
       kSector},
      {"mini stream claims to be empty", "Small",
       [](CompoundImage& i) { i.SetEntry(0, kEntrySize, 0); }, kSmallSize},
      {"counts of sectors huge", "Small",
       [](CompoundImage& i) {
         for (const size_t count : {44u, 64u, 72u}) i.SetWord(count, 0xFFFFFFFF);
       },
       kSmallSize},
  };
  for (const Case& c : kCases) {
    SCOPED_TRACE(c.name);
    CompoundImage image = Sound();
    c.apply(image);
    const io::OwnedHandle file = OpenMemory(image.bytes);
    const io::OwnedHandle stream = OpenStream(file.get(), c.stream);
    ASSERT_NE(stream, nullptr);
    const std::string data = ReadFrom(stream.get(), 0, 4096, 1 << 20);
    const std::string whole = std::string(c.stream) == "Large" ? Large() : Small();
    EXPECT_EQ(data.size(), c.yields);
    EXPECT_TRUE(data == whole.substr(0, data.size()));
    EXPECT_TRUE(ReadFrom(stream.get(), 0, 1, 1 << 20) == data);
  }
}

// A loop of any length ends within three times its length, wherever it is entered.
TEST(CompoundFileDamageTest, LoopsOfSectorsEnd) {
  for (uint32_t last = 0; last < 39; ++last) {
    for (const uint32_t back : {0u, last / 2, last}) {
      CompoundImage image = Sound();
      image.SetLink(last, back);
      image.SetEntry(1, kEntrySize, 0x7FFFFFFF);
      const io::OwnedHandle file = OpenMemory(image.bytes);
      const io::OwnedHandle stream = OpenStream(file.get(), "Large");
      ASSERT_NE(stream, nullptr);
      const std::string data = ReadFrom(stream.get(), 0, 1 << 16, 1 << 20);
      EXPECT_GE(data.size(), (last + 1) * kSector);
      EXPECT_LE(data.size(), 3 * (last + 1) * kSector);
      EXPECT_LE(data.size(), image.bytes.size());
      EXPECT_EQ(data.substr(0, (last + 1) * kSector), Large().substr(0, (last + 1) * kSector));
    }
  }
}

TEST(CompoundFileDamageTest, DirectoriesThatRunIntoThemselves) {
  struct Case {
    const char* name;
    Break apply;
    bool findsLarge;
  };
  const Case kCases[] = {
      {"sound", [](CompoundImage&) {}, true},
      {"all are their own siblings",
       [](CompoundImage& i) {
         for (uint32_t id = 1; id <= 5; ++id) {
           i.SetEntry(id, kEntryLeft, id);
           i.SetEntry(id, kEntryRight, id);
         }
       },
       false},
      {"siblings in a circle",
       [](CompoundImage& i) {
         for (uint32_t id = 1; id <= 4; ++id) {
           i.SetEntry(id, kEntryLeft, id % 4 + 1);
           i.SetEntry(id, kEntryRight, id % 4 + 1);
         }
       },
       true},
      {"the root is its own child", [](CompoundImage& i) { i.SetEntry(0, kEntryChild, 0); }, false},
      {"siblings that do not exist",
       [](CompoundImage& i) {
         for (uint32_t id = 1; id <= 4; ++id) i.SetEntry(id, kEntryRight, 0xFFFFFFF0 + id);
         i.SetEntry(0, kEntryChild, 1);
       },
       true},
      {"child that does not exist", [](CompoundImage& i) { i.SetEntry(0, kEntryChild, 1 << 30); },
       false},
      {"the directory's first sector follows itself",
       [](CompoundImage& i) { i.SetLink(i.directory[0], i.directory[0]); }, true},
  };
  for (const Case& c : kCases) {
    SCOPED_TRACE(c.name);
    CompoundImage image = Sound();
    c.apply(image);
    const io::OwnedHandle file = OpenMemory(image.bytes);
    ASSERT_TRUE(IsStorage(file.get()));
    EXPECT_EQ(OpenStream(file.get(), "Absent"), nullptr);
    EXPECT_EQ(OpenStream(file.get(), "Large") != nullptr, c.findsLarge);
  }
}

TEST(CompoundFileDamageTest, AStorageInItselfCanBeOpenedForEver) {
  CompoundImage image = Sound();
  image.SetEntry(3, kEntryChild, 3);
  std::vector<io::OwnedHandle> handles;
  handles.push_back(OpenMemory(image.bytes));
  for (int depth = 0; depth < 100; ++depth) {
    handles.push_back(OpenFolder(handles.back().get(), "Sub"));
    ASSERT_NE(handles.back(), nullptr);
  }
  while (!handles.empty()) handles.pop_back();
}

TEST(CompoundFileDamageTest, DifatThatRunsIntoItself) {
  const std::string data = Pattern(8 << 20, 3);
  const CompoundImage sound = WriteCompoundFile({Stream(u"big", data)});
  ASSERT_FALSE(sound.difat.empty());
  const uint64_t last = sound.SectorOffset(sound.difat[0]) + kSector - 4;
  for (const uint32_t next : {sound.difat[0], 0u, 0xFFFFFFF0u}) {
    CompoundImage image = sound;
    image.SetWord(last, next);
    const io::OwnedHandle file = OpenMemory(image.bytes);
    const io::OwnedHandle stream = OpenStream(file.get(), "big");
    ASSERT_NE(stream, nullptr);
    EXPECT_TRUE(ReadFrom(stream.get(), 0, 1 << 16, 16 << 20) == data) << next;
  }
  CompoundImage image = sound;
  image.SetWord(68, kEndOfChain);
  const io::OwnedHandle file = OpenMemory(image.bytes);
  // The 109 FAT sectors of the header link 13,952 sectors, the last of them to one more.
  EXPECT_EQ(ReadFrom(OpenStream(file.get(), "big").get(), 0, 1 << 16, 16 << 20).size(),
            (109u * 128 + 1) * kSector);
}

// Cut anywhere behind its directory, a file yields what is left of its streams.
TEST(CompoundFileDamageTest, CutAtEveryPlace) {
  for (const uint32_t shift : {9u, 12u}) {
    CompoundOptions options;
    options.sectorShift = shift;
    options.tablesFirst = true;
    const CompoundImage image = WriteCompoundFile({Stream(u"Large", Large())}, options);
    const size_t start = image.SectorOffset(2);
    for (size_t size = image.bytes.size(); size > start; size -= 61) {
      const std::string bytes = image.bytes.substr(0, size);
      const io::OwnedHandle file = OpenMemory(bytes);
      const io::OwnedHandle stream = OpenStream(file.get(), "Large");
      ASSERT_NE(stream, nullptr) << size;
      const std::string data = ReadFrom(stream.get(), 0, 999, 1 << 20);
      ASSERT_TRUE(data == Large().substr(0, size - start)) << size;
    }
  }
}

}  // namespace
}  // namespace fi::testing
