// The view of a decrypted package, where its bytes are kept, and what is left of them.
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <new>
#include <optional>
#include <string>
#include <vector>

#include "platform/io.h"
#include "tests/support/encrypted_package_writer.h"
#include "tests/support/open_handle.h"
#include "tests/support/package_opening.h"
#include "toolkit/openssl/secret_bytes.h"

namespace fi::testing {
namespace {

namespace fs = std::filesystem;

TEST(Decryption, ViewHasTheNameOfTheDocument) {
  const EncryptedPackage package = WriteAgile(Package(100), {});
  for (const bool hasName : {true, false}) {
    for (const bool wide : {true, false}) {
      Opening opening(package);
      opening.document.self.hasName = hasName;
      opening.document.self.wideName = wide;
      ASSERT_EQ(opening.Open({"secret"}), kFiOk);
      EXPECT_EQ(NameOf(opening.view.get()), hasName ? "report.xlsx" : "");
    }
  }
}

TEST(Decryption, ViewsNestFourDeep) {
  const EncryptedPackage package = WriteAgile(Package(100), {});
  for (const uint32_t depth : {0u, 1u, 3u, 4u, 5u}) {
    Opening opening(package);
    opening.document.viewDepth = depth;
    ASSERT_EQ(opening.Open({"secret"}), depth < 4 ? kFiOk : kFiDecryptionFailed) << depth;
    EXPECT_EQ(opening.asked.attempts.size(), depth < 4 ? 1u : 0u);
    uint32_t own = 0;
    if (depth >= 4) continue;
    ASSERT_TRUE(io::GetInfo(opening.view.get(), kIoInfoViewDepth, &own));
    EXPECT_EQ(own, depth + 1);
  }
}

class TemporaryFile : public ::testing::Test {
 protected:
  void SetUp() override {
    const char* before = ::getenv("TMPDIR");
    if (before != nullptr) before_ = before;
    std::string pattern = ::testing::TempDir() + "/decryptionXXXXXX";
    ASSERT_NE(::mkdtemp(pattern.data()), nullptr);
    folder_ = fs::canonical(pattern);
    ::setenv("TMPDIR", folder_.c_str(), 1);
  }

  void TearDown() override {
    fs::remove_all(folder_);
    before_.has_value() ? ::setenv("TMPDIR", before_->c_str(), 1) : ::unsetenv("TMPDIR");
  }

  // The files of this process that have no name and lie in the folder.
  std::vector<int> NamelessFiles() const {
    std::vector<int> found;
    for (int descriptor = 3; descriptor < 256; ++descriptor) {
      std::error_code error;
      const fs::path link = "/proc/self/fd/" + std::to_string(descriptor);
      const fs::path target = fs::read_symlink(link, error);
      if (target.parent_path() == folder_) found.push_back(descriptor);
    }
    return found;
  }

  fs::path folder_;
  std::optional<std::string> before_;
};

TEST_F(TemporaryFile, HoldsLargePackagesAndIsOverwritten) {
  const EncryptedPackage package = WriteAgile(Package(100000), {});
  Opening small(package);
  EXPECT_EQ(small.Open({"secret"}, {.mostMemory = 100000}), kFiOk);
  EXPECT_TRUE(NamelessFiles().empty());

  Opening large(package);
  ASSERT_EQ(large.Open({"secret"}, {.mostMemory = 99999}), kFiOk);
  EXPECT_EQ(large.Content(), Package(100000));
  EXPECT_TRUE(fs::is_empty(folder_));
  const std::vector<int> files = NamelessFiles();
  ASSERT_EQ(files.size(), 1u);
  struct stat status;
  ASSERT_EQ(::fstat(files[0], &status), 0);
  EXPECT_EQ(status.st_mode & 0777, 0600u);
  EXPECT_EQ(status.st_size, 100000);

  const int kept = ::dup(files[0]);
  large.view.reset();
  std::string after(100001, 'x');
  EXPECT_EQ(::pread(kept, after.data(), after.size(), 0), 100000);
  EXPECT_EQ(after.substr(0, 100000), std::string(100000, '\0'));
  ::close(kept);
  EXPECT_TRUE(NamelessFiles().empty());
}

TEST_F(TemporaryFile, IsGoneAfterAFailure) {
  EncryptedPackage package = WriteAgile(Package(100000), {});
  package.package.back() = static_cast<char>(package.package.back() ^ 1);
  EXPECT_EQ(Opening(package).Open({"secret"}, {.mostMemory = 1000}), kFiDecryptionFailed);
  EXPECT_TRUE(NamelessFiles().empty());
  EXPECT_TRUE(fs::is_empty(folder_));
}

TEST_F(TemporaryFile, HasToBePossible) {
  ::setenv("TMPDIR", (folder_ / "missing").c_str(), 1);
  const EncryptedPackage package = WriteAgile(Package(5000), {});
  EXPECT_EQ(Opening(package).Open({"secret"}, {.mostMemory = 4999}), kFiDecryptionFailed);
  EXPECT_EQ(Opening(package).Open({"secret"}, {.mostMemory = 5000}), kFiOk);
  EXPECT_EQ(Opening(package).Open({"secret"}, {.mostPlaintext = 4999}), kFiDecryptionFailed);
}

// Over the blocks in which memory is taken.
TEST(Decryption, ViewReadsAtAnyPosition) {
  const std::string content = Package(600000);
  const EncryptedPackage package = WriteStandard(content, {.spins = 10});
  for (const uint64_t mostMemory : {uint64_t{1} << 20, uint64_t{1}}) {
    Opening opening(package);
    ASSERT_EQ(opening.Open({"secret"}, {.standardSpins = 10, .mostMemory = mostMemory}), kFiOk);
    IOHandle* view = opening.view.get();
    ASSERT_TRUE(io::Has64Bit(view));
    for (const size_t offset : {0u, 262143u, 262144u, 524287u, 599999u, 600000u, 700000u}) {
      EXPECT_EQ(ReadFrom(view, static_cast<int64_t>(offset), 300000),
                offset < content.size() ? content.substr(offset) : "")
          << offset;
    }
    int64_t end = 0;
    ASSERT_TRUE(io::Seek64(view, kIoFromEnd, 0) && io::Tell64(view, &end));
    EXPECT_EQ(end, 600000);
  }
}

TEST(SecretBytes, AreWiped) {
  alignas(crypto::SecretBytes<32>) std::array<unsigned char, sizeof(crypto::SecretBytes<32>)>
      memory;
  // The compiler takes the bytes of an object that is gone for undefined; here they are looked at.
  const volatile unsigned char* seen = memory.data();
  auto* secret = new (memory.data()) crypto::SecretBytes<32>;
  ASSERT_TRUE(secret->Append(std::array<uint8_t, 4>{0xAA, 0xBB, 0xCC, 0xDD}));
  ASSERT_EQ(seen[0], 0xAA);
  secret->~SecretBytes<32>();
  for (size_t i = 0; i < 32; ++i) EXPECT_EQ(seen[i], 0) << i;
}

}  // namespace
}  // namespace fi::testing
