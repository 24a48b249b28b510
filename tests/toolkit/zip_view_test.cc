// Package views: members by name, whatever the directory says, within the limits.
#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "platform/io.h"
#include "stream/package_member.h"
#include "tests/support/bytes.h"
#include "tests/support/memory_handle.h"
#include "tests/support/open_handle.h"
#include "tests/support/samples.h"
#include "tests/support/storage_samples.h"
#include "tests/support/zip_writer.h"
#include "toolkit/zip/limits.h"

namespace fi::testing {
namespace {

std::string Changed(std::string bytes, const std::string& changes) {
  std::istringstream words(changes);
  for (std::string word; words >> word;) {
    const size_t colon = word.find(':');
    const std::string change = SampleBytes(word.substr(colon + 1));
    if (word[0] == '<') {
      bytes.insert(0, change);
    } else if (word[0] == '>') {
      bytes += change;
    } else if (word[0] == 'E') {
      bytes.replace(bytes.rfind(Bytes("PK\5\6")) + std::stoul(word.substr(2)), change.size(),
                    change);
    } else {
      const std::string signature = word[0] == 'L' ? Bytes("PK\3\4") : Bytes("PK\1\2");
      size_t at = bytes.find(signature);
      for (int left = word[1] - '0'; left > 0; --left) at = bytes.find(signature, at + 1);
      bytes.replace(at + std::stoul(word.substr(3)), change.size(), change);
    }
  }
  return bytes;
}

// The members' bytes, however they are read.
TEST(ZipView, MembersByName) {
  for (const Sample& sample : ReadSamples("toolkit/zip_views.txt", 3)) {
    SCOPED_TRACE(sample.place);
    const std::string bytes = Changed(SamplePackage(sample.columns[0]), sample.columns[1]);
    MemoryHandle file(bytes);
    const io::OwnedHandle view = OpenPackage(&file);
    EXPECT_EQ(view == nullptr, sample.columns[2] == "none");
    if (view == nullptr) continue;
    for (const StorageNode& node : SampleStorage(sample.columns[2])) {
      const io::OwnedHandle member = OpenMember(view.get(), node.name);
      EXPECT_EQ(member == nullptr, node.isStorage) << node.name;
      if (member == nullptr) continue;
      for (const uint32_t piece : {4096u, 1u, 100000u}) {
        EXPECT_EQ(ReadFrom(member.get(), 0, piece), node.bytes) << node.name << " by " << piece;
      }
      const size_t half = node.bytes.size() / 2;
      EXPECT_EQ(ReadFrom(member.get(), static_cast<int64_t>(half), 999), node.bytes.substr(half));
    }
    EXPECT_EQ(file.position, 0);
  }
}

TEST(ZipView, WideAndStreamedPackages) {
  const std::string long64 = std::string(40, '\0') + std::string(9000, 'l');
  const std::string bytes =
      ZipWriter()
          .Add("wide", long64, {.zip64 = true})
          .Add("streamed", long64, {.flags = 8, .extra = std::string(900, 'e')})
          .Add("stored", "s", {.method = 0, .zip64 = true})
          .Add(std::string(600, 'n'), "x")
          .Finish({.comment = "c", .zip64 = true});
  for (const std::string& prefix : {std::string(), std::string(7000, 'p')}) {
    MemoryHandle file(prefix + bytes);
    file.mostPerRead = prefix.empty() ? 5 : UINT32_MAX;
    const io::OwnedHandle view = OpenPackage(&file);
    ASSERT_NE(view, nullptr);
    const io::OwnedHandle wide = OpenMember(view.get(), "wide");
    const io::OwnedHandle streamed = OpenMember(view.get(), "streamed");
    for (const int64_t offset : {9000, 0, 39, 8000}) {  // both at once, to and fro
      const std::string rest = long64.substr(static_cast<size_t>(offset));
      EXPECT_EQ(ReadFrom(wide.get(), offset, 700), rest);
      EXPECT_EQ(ReadFrom(streamed.get(), offset, 700), rest);
    }
    EXPECT_EQ(ReadFrom(OpenMember(view.get(), "STORED").get(), 0, 9), "s");
    std::string names;
    for (IOMemberName name{0, ""}; io::GetInfo(view.get(), kIoInfoMemberName, &name); ++name.index)
      names += std::string(name.name) + " ";
    EXPECT_EQ(names, "wide streamed stored  ");
  }
  for (size_t size = 0; size < bytes.size(); ++size) {
    MemoryHandle cut(bytes.substr(0, size));
    EXPECT_EQ(OpenPackage(&cut) == nullptr, size < bytes.size() - 1) << size;
  }
}

// The extra field of ZIP64 holds those numbers alone that the entry itself has no room for: here
// the offset, and behind it nothing that counts.
TEST(ZipView, WideNumbersStandForThoseElsewhereOnly) {
  const std::string bytes =
      Changed(ZipWriter()
                  .Add("b", "bb", {.method = 0})
                  .Add("a", "data", {.method = 0, .zip64 = true})
                  .Finish(),
              "C1+20:0400000004000000 C1+51:2100000000000000'xxxxxxxxxxxxxxxx'");
  MemoryHandle file(bytes);
  const io::OwnedHandle view = OpenPackage(&file);
  ASSERT_NE(view, nullptr);
  const io::OwnedHandle member = OpenMember(view.get(), "a");
  ASSERT_NE(member, nullptr);
  EXPECT_EQ(ReadFrom(member.get(), 0, 100), "data");
}

TEST(ZipView, CostsAReadOfTheTailAndOnePerMember) {
  ZipWriter writer;
  for (char c = 'a'; c < 'u'; ++c) {
    writer.Add(std::string(3, c), Pattern(900, 1)).Raw(std::string(c == 'b' ? 20000000 : 0, 'x'));
  }
  MemoryHandle file(writer.Finish());
  const io::OwnedHandle view = OpenPackage(&file);
  EXPECT_EQ(file.reads, 1u);
  for (const char* name : {"aaa", "ccc", "ttt"}) {
    EXPECT_EQ(ReadFrom(OpenMember(view.get(), name).get(), 0, 2048), Pattern(900, 1));
  }
  EXPECT_EQ(OpenMember(view.get(), "none"), nullptr);
  EXPECT_EQ(file.reads, 4u);
  EXPECT_LE(file.bytesRead, 8000u);
}

// What can be read of a member of 64 MB of zeros, whatever its packed size claims, and how often.
TEST(ZipView, BombsEndAtTheLimits) {
  const std::string zeros(zip::kMaxInflated, '\0');
  MemoryHandle file(ZipWriter().Add("bomb", zeros, {.packedSize = 1u << 31}).Finish());
  const io::OwnedHandle view = OpenPackage(&file);
  const io::OwnedHandle bomb = OpenMember(view.get(), "bomb");
  const std::string read = ReadFrom(bomb.get(), 0, 1 << 20);
  EXPECT_GE(read.size(), zip::kFreeOfRatio);
  EXPECT_LE(read.size(), zip::kMaxRatio * 66000);
  const auto last = static_cast<int64_t>(read.size()) - 1;
  uint64_t times = 0;
  while (times < 100 && ReadFrom(bomb.get(), last, 1, 1).size() == 1) ++times;
  EXPECT_EQ(times, zip::kMaxInflatedByView / read.size() - 1);
}

// Empty blocks in front of a byte: how often views of a file and of a member get to it.
TEST(ZipView, PackedBytesEndAtTheLimits) {
  const std::string blocks = SampleBytes("(00 0000 FFFF)*60000 01 0100 FEFF 'x'");
  const std::string package =
      Changed(ZipWriter().Add("m", blocks, {.method = 0, .size = 1}).Finish(), "C0+10:08");
  MemoryHandle inner(package);
  MemoryHandle outer(ZipWriter().Add("n", package, {.method = 0}).Finish());
  const io::OwnedHandle outerView = OpenPackage(&outer);
  const io::OwnedHandle member = OpenMember(outerView.get(), "n");
  const auto times = [](IOHandle* handle) {
    const io::OwnedHandle view = OpenPackage(handle);
    uint64_t count = 0;
    while (count < 100 && ReadFrom(OpenMember(view.get(), "m").get(), 0, 9) == "x") ++count;
    return count;
  };
  EXPECT_EQ(times(&inner), zip::kMaxPasses + zip::kFreeOfPasses / package.size());
  EXPECT_EQ(times(member.get()), zip::kMaxPackedByNestedView / blocks.size());
}

// However a stored member is read, the deflated package that it lies in is inflated once.
TEST(ZipView, ReadsPackagesInPackagesForward) {
  const std::string content = Pattern(400000, 7);
  const std::string inner = ZipWriter().Add("m", content, {.method = 0}).Finish();
  const std::string outer = ZipWriter().Add("n", inner).Finish();
  MemoryHandle file(outer);
  const io::OwnedHandle view = OpenPackage(&file);
  const io::OwnedHandle package = OpenMember(view.get(), "n");
  const io::OwnedHandle innerView = OpenPackage(package.get());
  const io::OwnedHandle member = OpenMember(innerView.get(), "m");
  const uint64_t before = file.bytesRead;
  std::string read;
  for (size_t piece = 4; read.size() < content.size(); piece = piece * 3 % 9001) {
    std::string bytes(piece, '\0');
    bytes.resize(io::Read(member.get(), bytes.data(), static_cast<uint32_t>(piece)));
    ASSERT_FALSE(bytes.empty());
    read += bytes;
  }
  EXPECT_EQ(read, content);
  EXPECT_LE(file.bytesRead - before, outer.size());
}

TEST(ZipView, NestsToADepth) {
  std::string package = SamplePackage("'n'= 'x'");
  for (uint32_t i = 0; i < 9; ++i) package = ZipWriter().Add("n", package).Finish();
  MemoryHandle file(package);
  std::vector<io::OwnedHandle> handles;
  IOHandle* inner = &file;
  while (io::OwnedHandle view = OpenPackage(inner)) {
    handles.push_back(std::move(view));
    handles.push_back(OpenMember(handles.back().get(), "n"));
    inner = handles.back().get();
  }
  EXPECT_EQ(handles.size(), 2 * (zip::kMaxNesting + 1));
  while (!handles.empty()) handles.pop_back();
}

TEST(ZipView, AMillionEntries) {
  const std::string package = SamplePackage("'first'= 'x'; 'other'= 'found'");
  const size_t start = package.find(Bytes("PK\1\2"));
  const size_t end = package.rfind(Bytes("PK\5\6"));
  const std::string entry = package.substr(start, 46 + 5);
  for (const uint32_t more : {zip::kMaxEntries - 2, zip::kMaxEntries - 1}) {
    std::string bytes = package.substr(0, start);
    for (uint32_t i = 0; i < more; ++i) bytes += entry;
    bytes += package.substr(start);
    bytes.replace(bytes.size() - 10, 4, LittleEndian(end - start + more * entry.size(), 4));
    MemoryHandle file(bytes);
    const io::OwnedHandle view = OpenPackage(&file);
    ASSERT_EQ(view == nullptr, more == zip::kMaxEntries - 1);
    if (view == nullptr) continue;
    EXPECT_EQ(ReadFrom(OpenMember(view.get(), "OTHER").get(), 0, 9), "found");
    EXPECT_EQ(OpenMember(view.get(), "third"), nullptr);
  }
}

}  // namespace
}  // namespace fi::testing
