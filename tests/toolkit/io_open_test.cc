// Handles that IOOpen makes: what opens, under which name, and what is read from where.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <fstream>
#include <string>

#include "formatid/io.h"
#include "platform/io.h"
#include "tests/support/open_handle.h"
#include "tests/support/samples.h"

namespace fi::testing {
namespace {

namespace fs = std::filesystem;

class IoOpen : public ::testing::Test {
 protected:
  void SetUp() override {
    std::string pattern = (fs::temp_directory_path() / "formatid-io-XXXXXX").string();
    ASSERT_NE(mkdtemp(pattern.data()), nullptr);
    folder_ = pattern;
  }
  void TearDown() override { fs::remove_all(folder_); }

  std::string Path(const std::string& name) const { return (folder_ / name).string(); }
  std::string Write(const std::string& name, const std::string& bytes) const {
    std::ofstream(Path(name), std::ios::binary) << bytes;
    return Path(name);
  }

  fs::path folder_;
};

io::OwnedHandle Open(uint32_t sourceType, const void* source) {
  IOHandle* handle = nullptr;
  EXPECT_EQ(IOOpen(&handle, sourceType, source, 1), kIoOk);
  return io::OwnedHandle(handle);
}

// Reads at every offset around the blocks that a file handle keeps, in several sizes and orders.
void CheckReads(const io::OwnedHandle& handle, const std::string& bytes) {
  const auto size = static_cast<int64_t>(bytes.size());
  for (const int64_t offset :
       {int64_t{0}, int64_t{2048}, int64_t{4095}, int64_t{4096}, size / 2, size - 4097, size - 4096,
        size - 18, size - 1, size, size + 5, int64_t{4090}, int64_t{1}}) {
    for (const uint32_t count : {1u, 18u, 2048u, 4096u, 9000u}) {
      if (offset < 0) continue;
      const std::string rest = offset < size ? bytes.substr(static_cast<size_t>(offset)) : "";
      const std::string got = ReadFrom(handle.get(), offset, count, count);
      int64_t position = 0;
      ASSERT_TRUE(io::Tell64(handle.get(), &position));
      ASSERT_EQ(position, offset + static_cast<int64_t>(got.size()));
      ASSERT_GE(got.size(), std::min<size_t>(count, rest.size())) << offset << " size " << count;
      ASSERT_TRUE(rest.starts_with(got)) << offset << " size " << count;
    }
  }
}

TEST_F(IoOpen, EverySourceReadsTheSame) {
  for (const size_t size : {0u, 1u, 4095u, 4096u, 4097u, 8191u, 20000u}) {
    SCOPED_TRACE(size);
    const std::string bytes = Pattern(size, 3);
    const std::string path = Write("file.bin", bytes);
    CheckReads(Open(kIoSourcePath, path.c_str()), bytes);
    const std::u16string wide(path.begin(), path.end());
    CheckReads(Open(kIoSourceWidePath, wide.c_str()), bytes);
    CheckReads(OpenMemory(bytes), bytes);

    const int descriptor = ::open(path.c_str(), O_RDONLY);
    ASSERT_EQ(::lseek(descriptor, 0, SEEK_END), static_cast<off_t>(size));
    const IODescriptorSource source = {descriptor, nullptr};
    CheckReads(Open(kIoSourceDescriptor, &source), bytes);
    EXPECT_EQ(::lseek(descriptor, 0, SEEK_CUR), static_cast<off_t>(size));  // not moved
    EXPECT_EQ(::close(descriptor), 0);                                      // not closed either
  }
}

TEST_F(IoOpen, Seeks) {
  const std::string bytes(100, 'x');
  const io::OwnedHandle handle = OpenMemory(bytes);
  for (const Sample& sample : ReadSamples("toolkit/seeks.txt", 3)) {
    int64_t position = 0;
    ASSERT_TRUE(io::Seek64(handle.get(), kIoFromStart, 7));
    const bool moved = io::Seek64(handle.get(), static_cast<uint32_t>(sample.Number(0)),
                                  std::stoll(sample.columns[1]));
    EXPECT_EQ(moved, sample.columns[2] != "no") << sample.place;
    ASSERT_TRUE(io::Tell64(handle.get(), &position));
    EXPECT_EQ(position, moved ? std::stoll(sample.columns[2]) : 7) << sample.place;
  }
  // Offsets of 32 bits: unsigned from the start, signed otherwise.
  uint32_t low = 0;
  EXPECT_TRUE(io::Seek(handle.get(), kIoFromStart, 0xFFFFFFF0u) && io::Tell(handle.get(), &low));
  EXPECT_EQ(low, 0xFFFFFFF0u);
  EXPECT_TRUE(io::Seek(handle.get(), kIoFromEnd, 0u - 4) && io::Tell(handle.get(), &low));
  EXPECT_EQ(low, 96u);
}

TEST_F(IoOpen, Names) {
  const std::string longName = std::string(300, 'n') + ".doc";
  const std::pair<const char*, std::string> cases[] = {
      {"/a/b/c.doc", "c.doc"},
      {"c.doc", "c.doc"},
      {"a/", ""},
      {nullptr, ""},
      {longName.c_str(), longName.substr(longName.size() - 259)},
  };
  for (const auto& [given, expected] : cases) {
    EXPECT_EQ(NameOf(OpenMemory("", given).get()), expected);
  }
  const std::string path = Write("n\xC3\xA4me.doc", "x");
  EXPECT_EQ(NameOf(Open(kIoSourcePath, path.c_str()).get()), "n\xC3\xA4me.doc");
}

TEST_F(IoOpen, WidePaths) {
  Write("\xC3\xA4\xE2\x82\xAC\xF0\x9F\x98\x80", "found");
  const std::string folder = Path("");
  const std::pair<std::u16string, int32_t> cases[] = {
      {u"\u00E4\u20AC\U0001F600", kIoOk},
      {u"missing", kIoNotFound},
      {std::u16string(u"\xD83D", 1), kIoError},        // a high surrogate alone
      {std::u16string(u"\xDE00\xDE00", 2), kIoError},  // two low ones
      {std::u16string(u"\xD83D\xE000", 2), kIoError},  // a high one, then what stands above the low
      {std::u16string(u"\xD83D\xDBFF", 2), kIoError},  // a high one, then what stands below them
      {std::u16string(5000, u'x'), kIoError},          // longer than any path
  };
  for (const auto& [name, result] : cases) {
    IOHandle* handle = nullptr;
    const std::u16string path = std::u16string(folder.begin(), folder.end()) + name;
    EXPECT_EQ(IOOpen(&handle, kIoSourceWidePath, path.c_str(), 1), result);
    const io::OwnedHandle owned(handle);
    EXPECT_EQ(handle != nullptr, result == kIoOk);
  }
}

// A fifo without a writer would block whoever opens it for reading: the test would hang.
TEST_F(IoOpen, WhatIsNoRegularFileIsNotOpened) {
  ASSERT_EQ(::mkfifo(Path("fifo").c_str(), 0600), 0);
  ASSERT_EQ(::symlink("loop", Path("loop").c_str()), 0);
  ASSERT_EQ(::symlink("nowhere", Path("dangling").c_str()), 0);
  Write("file", "x");
  const struct {
    std::string path;
    int32_t result;
    int error;
  } cases[] = {
      {Path("fifo"), kIoError, ESPIPE},
      {Path(""), kIoError, EISDIR},
      {"/dev/null", kIoError, ESPIPE},
      {Path("missing"), kIoNotFound, ENOENT},
      {Path("file/below"), kIoNotFound, ENOTDIR},
      {Path("loop"), kIoError, ELOOP},
      {Path("dangling"), kIoNotFound, ENOENT},
      {"", kIoNotFound, ENOENT},
  };
  IOHandle* handle = nullptr;
  for (const auto& test : cases) {
    errno = 0;
    EXPECT_EQ(IOOpen(&handle, kIoSourcePath, test.path.c_str(), 1), test.result) << test.path;
    EXPECT_EQ(errno, test.error) << test.path;
    EXPECT_EQ(handle, nullptr);
  }
  int ends[2];
  ASSERT_EQ(::pipe(ends), 0);
  const IODescriptorSource source = {ends[0], "x"};
  EXPECT_EQ(IOOpen(&handle, kIoSourceDescriptor, &source, 1), kIoError);
  ::close(ends[0]);
  ::close(ends[1]);
  EXPECT_EQ(IOOpen(&handle, kIoSourceDescriptor, &source, 1), kIoError);
  const IOMemorySource nothing = {nullptr, 5, nullptr};
  EXPECT_EQ(IOOpen(&handle, kIoSourceMemory, &nothing, 1), kIoError);
  EXPECT_EQ(IOOpen(nullptr, kIoSourcePath, "x", 1), kIoError);
}

TEST_F(IoOpen, UnreadableFileIsAccessDenied) {
  const std::string path = Write("secret", "x");
  ASSERT_EQ(::chmod(path.c_str(), 0), 0);
  const uid_t user = ::geteuid();
  ASSERT_EQ(::seteuid(user == 0 ? 65534 : user), 0);  // everything is readable to root
  IOHandle* handle = nullptr;
  EXPECT_EQ(IOOpen(&handle, kIoSourcePath, path.c_str(), 1), kIoAccessDenied);
  ASSERT_EQ(::seteuid(user), 0);
}

TEST_F(IoOpen, FileThatShrinksOrGrowsWhileItIsRead) {
  const std::string path = Write("file", std::string(20000, 'x'));
  const io::OwnedHandle handle = Open(kIoSourcePath, path.c_str());
  EXPECT_EQ(ReadFrom(handle.get(), 0, 2048, 2048).size(), 2048u);
  ASSERT_EQ(::truncate(path.c_str(), 10000), 0);
  EXPECT_EQ(ReadFrom(handle.get(), 20000 - 18, 18), "");
  EXPECT_EQ(ReadFrom(handle.get(), 9990, 18).size(), 10u);
  int32_t error = -1;
  EXPECT_TRUE(io::GetInfo(handle.get(), kIoInfoReadError, &error));
  EXPECT_EQ(error, 0);

  const io::OwnedHandle growing = Open(kIoSourcePath, path.c_str());
  std::ofstream(path, std::ios::app) << std::string(5000, 'g');
  EXPECT_EQ(ReadFrom(growing.get(), 9999, 18, 1), "x");
}

TEST_F(IoOpen, ReadErrorsAreKept) {
  const std::string path = Write("file", "some bytes");
  const int descriptor = ::open(path.c_str(), O_WRONLY);
  const IODescriptorSource source = {descriptor, "x"};
  const io::OwnedHandle handle = Open(kIoSourceDescriptor, &source);
  char byte = 0;
  uint32_t count = 7;
  EXPECT_NE(handle->operations->read(handle.get(), &byte, 1, &count), 0);
  int32_t error = 0;
  EXPECT_TRUE(io::GetInfo(handle.get(), kIoInfoReadError, &error));
  EXPECT_EQ(error, EBADF);
  ::close(descriptor);
}

TEST_F(IoOpen, FileWithoutASize) {
  const io::OwnedHandle handle = Open(kIoSourcePath, "/proc/self/status");
  EXPECT_EQ(ReadFrom(handle.get(), 0, 64, 5).substr(0, 5), "Name:");
}

TEST_F(IoOpen, OtherQuestionsAreRefused) {
  const std::string bytes = "x";
  const io::OwnedHandle handle = OpenMemory(bytes);
  EXPECT_TRUE(io::GetInfo(handle.get(), kIoInfoHas64Bit, nullptr));
  EXPECT_FALSE(io::GetInfo(handle.get(), 4711, nullptr));
  IOHandle* child = handle.get();
  EXPECT_NE(handle->operations->open(handle.get(), &child, kIoSourcePackage, nullptr, 1), 0);
  EXPECT_EQ(child, nullptr);
}

}  // namespace
}  // namespace fi::testing
