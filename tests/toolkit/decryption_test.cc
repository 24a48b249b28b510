#include "platform/decryption.h"

#include <dirent.h>
#include <gtest/gtest.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <cstdint>
#include <functional>
#include <new>
#include <optional>
#include <string>
#include <vector>

#include "platform/io.h"
#include "tests/support/encrypted_package_writer.h"
#include "tests/support/stream_storage.h"
#include "toolkit/crypto/open_package.h"
#include "toolkit/crypto/password.h"
#include "toolkit/crypto/secret_bytes.h"

namespace fi::crypto {
namespace {

using testing::AgileSettings;
using testing::EncryptedPackage;
using testing::StandardSettings;
using testing::StreamStorage;
using testing::WriteAgile;
using testing::WriteStandard;

// The host of these tests: answers in turn; where the answers end, it declines.
struct Host {
  std::vector<std::string> answers;
  std::vector<uint32_t> attempts;
  IOHandle* document = nullptr;
  bool asExpected = true;
};

Host* host = nullptr;

uint32_t Answer(uint32_t code, FIPasswordRequest* request, uintptr_t first, uintptr_t second) {
  host->asExpected = host->asExpected && code == kFiPasswordOfPackage && first == 0 &&
                     second == 0 && request->size == sizeof(FIPasswordRequest) &&
                     request->capacity == kPasswordCapacity && request->document == host->document;
  const size_t turn = host->attempts.size();
  host->attempts.push_back(request->attempts);
  if (turn >= host->answers.size()) return kFiNoCallback;
  const std::string& answer = host->answers[turn];
  answer.copy(request->password, request->capacity);
  // What the host does to the record has no effect on the next request.
  request->capacity = 0;
  request->password = nullptr;
  return 0;
}

// One opening of a package, and whatever is asserted about every one of them.
class Opening {
 public:
  explicit Opening(const EncryptedPackage& streams)
      : document({{"EncryptionInfo", streams.info}, {"EncryptedPackage", streams.package}}) {}
  explicit Opening(std::map<std::string, std::string> streams) : document(std::move(streams)) {}

  uint32_t Open(std::vector<std::string> answers, const DecryptionLimits& limits = {}) {
    asked = Host{std::move(answers), {}, &document, true};
    host = &asked;
    IOHandle* package = nullptr;
    const O12PasswordSource source{sizeof(source), Answer, &document, {}};
    const uint32_t status = OpenPackage(&document, source, limits, &package);
    view.reset(package);
    EXPECT_TRUE(asked.asExpected);
    EXPECT_EQ(document.opens(), document.closes());
    EXPECT_EQ(package != nullptr, status == kFiOk);
    return status;
  }

  std::string Content() {
    std::string content;
    std::array<char, 1000> buffer;
    while (const uint32_t count = io::Read(view.get(), buffer.data(), buffer.size())) {
      content.append(buffer.data(), count);
    }
    return content;
  }

  StreamStorage document;
  Host asked;
  io::OwnedHandle view;
};

std::string Package(size_t size) {
  std::string bytes = "PK";
  for (size_t i = 2; i < size; ++i) bytes += static_cast<char>(i * i >> 3);
  bytes.resize(size);
  return bytes;
}

std::string Replace(std::string text, const std::string& from, const std::string& to) {
  const size_t at = text.find(from);
  EXPECT_NE(at, std::string::npos) << from;
  return at == std::string::npos ? text : text.replace(at, from.size(), to);
}

// The value of the first attribute of that name behind `element`.
std::string SetAttribute(const std::string& text, const std::string& element,
                         const std::string& name, const std::string& value) {
  const size_t at = text.find(" " + name + "=\"", text.find("<" + element)) + name.size() + 3;
  std::string changed = text;
  return changed.replace(at, text.find('"', at) - at, value);
}

TEST(Decryption, StandardEncryptionOpens) {
  for (const size_t keyBits : {128u, 192u, 256u}) {
    for (const size_t size : {0u, 1u, 4095u, 4096u, 4097u, 100000u}) {
      Opening opening(WriteStandard(Package(size), {.keyBits = keyBits}));
      EXPECT_EQ(opening.Open({"secret"}), kFiOk) << keyBits << " " << size;
      EXPECT_EQ(opening.Content(), Package(size)) << keyBits << " " << size;
    }
  }
}

TEST(Decryption, AgileEncryptionOpens) {
  std::vector<AgileSettings> cases;
  for (const char* hash : {"SHA1", "SHA256", "SHA384", "SHA512"}) {
    for (const size_t keyBits : {128u, 192u, 256u}) {
      cases.push_back({.keyBits = keyBits, .hash = hash});
      cases.push_back({.passwordKeyBits = keyBits, .passwordHash = hash, .spins = 0});
    }
  }
  cases.push_back({.integrity = false});
  for (const size_t saltSize : {1u, 8u, 20u, 64u}) {
    cases.push_back({.saltSize = saltSize});
    cases.push_back({.passwordSaltSize = saltSize});
  }
  for (const AgileSettings& settings : cases) {
    Opening opening(WriteAgile(Package(5000), settings));
    EXPECT_EQ(opening.Open({"secret"}), kFiOk)
        << settings.hash << settings.keyBits << " " << settings.passwordHash
        << settings.passwordKeyBits << " " << settings.saltSize << settings.passwordSaltSize;
    EXPECT_EQ(opening.Content(), Package(5000));
  }
  for (const size_t size : {0u, 1u, 4095u, 4096u, 4097u, 8192u, 100000u}) {
    for (const bool integrity : {true, false}) {
      Opening opening(WriteAgile(Package(size), {.integrity = integrity}));
      EXPECT_EQ(opening.Open({"secret"}), kFiOk) << size;
      EXPECT_EQ(opening.Content(), Package(size)) << size;
    }
  }
}

TEST(Decryption, PasswordIsAskedForUpToThreeTimes) {
  const std::string overlong(1024, 'x');
  const struct {
    const char* name;
    std::vector<std::string> answers;
    uint32_t status;
    size_t asked;
  } cases[] = {
      {"right", {"secret"}, kFiOk, 1},
      {"wrong, then right", {"Secret", "secret"}, kFiOk, 2},
      {"right at last", {"", "secre", "secret"}, kFiOk, 3},
      {"right too late", {"a", "b", "c", "secret"}, kFiWrongPassword, 3},
      {"declined", {}, kFiPasswordNeeded, 1},
      {"declined after a wrong one", {"a"}, kFiWrongPassword, 2},
      {"broken UTF-8 is wrong", {"secret\xC3", "secret"}, kFiOk, 2},
      {"without a terminator is wrong", {overlong, "secret"}, kFiOk, 2},
  };
  const EncryptedPackage packages[] = {WriteStandard(Package(100), {}),
                                       WriteAgile(Package(100), {})};
  for (const auto& test : cases) {
    for (const EncryptedPackage& package : packages) {
      Opening opening(package);
      EXPECT_EQ(opening.Open(test.answers), test.status) << test.name;
      std::vector<uint32_t> attempts(test.asked);
      for (uint32_t i = 0; i < test.asked; ++i) attempts[i] = i;
      EXPECT_EQ(opening.asked.attempts, attempts) << test.name;
    }
  }
}

TEST(Decryption, PasswordsOfAllCharacters) {
  std::string longest;
  for (int i = 0; i < 255; ++i) longest += "\xE6\x97\xA5";
  const struct {
    const char* utf8;
    std::u16string password;
  } cases[] = {
      {"", u""},
      {"p\xC3\xA4ss \xE6\x97\xA5\xF0\x9F\x94\x91", u"p\u00E4ss \u65E5\U0001F511"},
      {longest.c_str(), std::u16string(255, u'\u65E5')},
  };
  for (const auto& test : cases) {
    Opening agile(WriteAgile("PK", {.password = test.password}));
    EXPECT_EQ(agile.Open({test.utf8}), kFiOk) << test.utf8;
    Opening standard(WriteStandard("PK", {.password = test.password}));
    EXPECT_EQ(standard.Open({test.utf8}), kFiOk) << test.utf8;
  }

  const std::string unusable[] = {"\x80",
                                  "\xC1\x81",
                                  "\xE0\x80\x81",
                                  "\xED\xA0\x80",
                                  "\xF0\x80\x80\x81",
                                  "\xF4\x90\x80\x80",
                                  "\xF8\x88\x80\x80",
                                  "\xE6\x97",
                                  "\xE6\x97x",
                                  longest + "x",
                                  std::string(256, 'x')};
  for (const std::string& text : unusable) {
    Password password;
    EXPECT_FALSE(EncodePassword(text, &password)) << text;
  }
}

TEST(Decryption, DamagedStandardDescriptorsAreRefusedUnasked) {
  const EncryptedPackage good = WriteStandard(Package(100), {});
  const auto set = [](size_t offset, const char* bytes) {
    return [=](std::string info) { return info.replace(offset, 4, bytes, 4); };
  };
  const struct {
    const char* name;
    std::function<std::string(std::string)> damage;
  } cases[] = {
      {"minor version 3 (extensible)", set(0, "\4\0\3\0")},
      {"minor version 4 with numbers", set(0, "\4\0\4\0")},
      {"major version 1", set(0, "\1\0\2\0")},
      {"header larger than the stream", set(8, "\xFF\xFF\xFF\xFF")},
      {"header smaller than its fields", set(8, "\x1F\0\0\0")},
      {"header over the verifier", set(8, "\x60\0\0\0")},
      {"no algorithm, and no AES flag",
       [&](std::string info) { return info.replace(12, 12, 12, 0); }},
      {"RC4", set(20, "\1\x68\0\0")},
      {"another hash", set(24, "\3\x80\0\0")},
      {"key size of another cipher", set(28, "\0\1\0\0")},
      {"key size 0x80000000", set(28, "\0\0\0\x80")},
      {"no salt", set(66, "\0\0\0\0")},
      {"salt of 4 GB", set(66, "\xFF\xFF\xFF\xFF")},
      {"another hash size", set(102, "\x21\0\0\0")},
      {"cut in the verifier", [](std::string info) { return info.substr(0, info.size() - 1); }},
      {"cut in the version", [](std::string info) { return info.substr(0, 7); }},
      {"empty", [](std::string) { return ""; }},
      {"larger than 64 KB", [](std::string info) { return info + std::string(65536, '\0'); }},
  };
  for (const auto& test : cases) {
    Opening opening(EncryptedPackage{test.damage(good.info), good.package});
    EXPECT_EQ(opening.Open({"secret"}), kFiDecryptionFailed) << test.name;
    EXPECT_TRUE(opening.asked.attempts.empty()) << test.name;
  }
}

TEST(Decryption, FlagsOrAlgorithmOfTheStandardSchemeMayBeLeftOut) {
  const EncryptedPackage good = WriteStandard(Package(100), {});
  EncryptedPackage open = good;
  open.info.replace(20, 12, 12, '\0');
  EXPECT_EQ(Opening(open).Open({"secret"}), kFiOk);
  EncryptedPackage noFlags = good;
  noFlags.info.replace(12, 4, 4, '\0');
  EXPECT_EQ(Opening(noFlags).Open({"secret"}), kFiOk);
}

TEST(Decryption, DamagedAgileDescriptorsAreRefusedUnasked) {
  const EncryptedPackage good = WriteAgile(Package(100), {});
  const struct {
    const char* element;
    const char* attribute;
    std::string value;
  } attributes[] = {
      {"p:encryptedKey", "spinCount", "10000001"},
      {"p:encryptedKey", "spinCount", "4294967295"},
      {"p:encryptedKey", "spinCount", "99999999999999999999"},
      {"p:encryptedKey", "spinCount", "-1"},
      {"p:encryptedKey", "spinCount", ""},
      {"p:encryptedKey", "spinCount", "1000x"},
      {"p:encryptedKey", "keyBits", "129"},
      {"p:encryptedKey", "keyBits", "4294967168"},
      {"p:encryptedKey", "hashAlgorithm", "MD5"},
      {"p:encryptedKey", "hashSize", "20"},
      {"p:encryptedKey", "saltSize", "17"},
      {"p:encryptedKey", "encryptedVerifierHashInput", ""},
      {"p:encryptedKey", "encryptedVerifierHashInput", "AAAA"},
      {"p:encryptedKey", "encryptedVerifierHashValue", "AAAAAAAAAAAAAAAAAAAAAA=="},
      {"p:encryptedKey", "encryptedKeyValue", "AAAAAAAAAAAAAAAAAAAAAA=="},
      {"p:encryptedKey", "encryptedKeyValue", std::string(60000, 'A')},
      {"keyData", "keyBits", "0"},
      {"keyData", "blockSize", "0"},
      {"keyData", "blockSize", "8"},
      {"keyData", "saltSize", "0"},
      {"keyData", "saltSize", "4294967295"},
      {"keyData", "saltValue", ""},
      {"keyData", "saltValue", "===="},
      {"keyData", "saltValue", "c3R1d3h5ent8fX5/gIGC!w=="},
      {"keyData", "saltValue", "AA==AAAAAAAAAAAAAAAAAAA="},
      {"keyData", "saltValue", "AAAAAAAAAAAAAAAAAAAAA==="},
      {"keyData", "saltValue", "  AAAAAAAAAAAAAAAAAAAAAA"},
      {"keyData", "cipherAlgorithm", "DES"},
      {"keyData", "cipherChaining", "ChainingModeCFB"},
      {"keyData", "hashAlgorithm", "WHIRLPOOL"},
      {"dataIntegrity", "encryptedHmacKey", "AAAAAAAAAAAAAAAAAAAAAA=="},
      {"dataIntegrity", "encryptedHmacValue", "?"},
  };
  std::vector<std::string> damaged;
  for (const auto& test : attributes) {
    damaged.push_back(SetAttribute(good.info, test.element, test.attribute, test.value));
  }
  const std::string keyData = good.info.substr(
      good.info.find("<keyData"), good.info.find("<dataIntegrity") - good.info.find("<keyData"));
  damaged.push_back(Replace(good.info, keyData, ""));
  damaged.push_back(Replace(good.info, keyData, keyData + keyData));
  damaged.push_back(
      Replace(good.info, "uri=\"http://schemas.microsoft.com/office/2006/keyEncryptor/password",
              "uri=\"http://schemas.microsoft.com/office/2006/keyEncryptor/certificate"));
  damaged.push_back(Replace(good.info, "</encryption>", ""));
  damaged.push_back(Replace(good.info, "</encryption>", "</encryption><more/>"));
  damaged.push_back(Replace(good.info, "<encryption", "<!DOCTYPE encryption []><encryption"));
  damaged.push_back(good.info + std::string(65536, ' '));
  damaged.push_back(good.info.substr(0, 8));

  const auto start = std::chrono::steady_clock::now();
  for (const std::string& info : damaged) {
    Opening opening(EncryptedPackage{info, good.package});
    EXPECT_EQ(opening.Open({"secret"}), kFiDecryptionFailed) << info.substr(8, 2000);
    EXPECT_TRUE(opening.asked.attempts.empty()) << info.substr(8, 2000);
  }
  // Ten million rounds take seconds.
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(2));
}

// Documents that are encrypted for certificates too have a key encryptor for each; and there are
// writers who leave out the prefix.
TEST(Decryption, PasswordKeyIsFoundByItsEncryptor) {
  const EncryptedPackage good = WriteAgile(Package(100), {});
  const std::string certificate =
      "<keyEncryptor uri=\"http://schemas.microsoft.com/office/2006/keyEncryptor/certificate\">"
      "<c:encryptedKey xmlns:c=\"c\" encryptedKeyValue=\"AAAA\"/></keyEncryptor>";
  for (const std::string& info :
       {Replace(good.info, "<keyEncryptors>", "<keyEncryptors>" + certificate),
        Replace(good.info, "</keyEncryptors>", certificate + "</keyEncryptors>"),
        Replace(good.info, "<p:encryptedKey", "<encryptedKey")}) {
    Opening opening(EncryptedPackage{info, good.package});
    EXPECT_EQ(opening.Open({"secret"}), kFiOk) << info.substr(8);
  }
}

TEST(Decryption, SpinsUpToTheLimitAreTaken) {
  const EncryptedPackage package = WriteAgile(Package(100), {.spins = 2000});
  EXPECT_EQ(Opening(package).Open({"secret"}, {.mostSpins = 2000}), kFiOk);
  EXPECT_EQ(Opening(package).Open({"secret"}, {.mostSpins = 1999}), kFiDecryptionFailed);
}

TEST(Decryption, TamperedStreams) {
  const EncryptedPackage agile = WriteAgile(Package(9000), {});
  const EncryptedPackage unchecked = WriteAgile(Package(9000), {.integrity = false});
  const EncryptedPackage standard = WriteStandard(Package(9000), {});
  const auto flip = [](std::string bytes, size_t offset) {
    bytes[offset] = static_cast<char>(bytes[offset] ^ 1);
    return bytes;
  };
  const std::string hmac(88, 'A');
  const std::string verifier(24, 'A');
  const struct {
    const char* name;
    EncryptedPackage streams;
    uint32_t status;
  } cases[] = {
      {"package byte", {agile.info, flip(agile.package, 5000)}, kFiDecryptionFailed},
      {"package size", {agile.info, flip(agile.package, 0)}, kFiDecryptionFailed},
      {"byte behind the package", {agile.info, agile.package + "x"}, kFiDecryptionFailed},
      {"package cut", {agile.info, agile.package.substr(0, 5000)}, kFiDecryptionFailed},
      {"package byte, no HMAC", {unchecked.info, flip(unchecked.package, 5000)}, kFiOk},
      {"package byte, standard", {standard.info, flip(standard.package, 5000)}, kFiOk},
      {"HMAC value",
       {SetAttribute(agile.info, "dataIntegrity", "encryptedHmacValue", hmac.substr(2) + "=="),
        agile.package},
       kFiDecryptionFailed},
      {"verifier",
       {SetAttribute(agile.info, "p:encryptedKey", "encryptedVerifierHashInput",
                     verifier.substr(2) + "=="),
        agile.package},
       kFiWrongPassword},
      {"verifier, standard", {flip(standard.info, 90), standard.package}, kFiWrongPassword},
      {"verifier hash, standard", {flip(standard.info, 107), standard.package}, kFiWrongPassword},
      {"package of 7 bytes", {standard.info, "1234567"}, kFiDecryptionFailed},
      {"empty package", {agile.info, ""}, kFiDecryptionFailed},
  };
  for (const auto& test : cases) {
    Opening opening(test.streams);
    EXPECT_EQ(opening.Open({"secret", "secret", "secret"}), test.status) << test.name;
  }
}

TEST(Decryption, SizeBeyondTheStreamIsCutToWhatIsThere) {
  const struct {
    const char* name;
    std::string size;
  } cases[] = {{"more than the stream", std::string("\x28\x23\0\0\0\0\0\0", 8)},
               {"2^63 bytes", std::string("\0\0\0\0\0\0\0\x80", 8)},
               {"2^64 - 1 bytes", std::string(8, '\xFF')}};
  const std::string whole = Package(8992);
  for (const auto& test : cases) {
    for (EncryptedPackage package :
         {WriteStandard(whole, {}), WriteAgile(whole, {.integrity = false})}) {
      package.package.replace(0, 8, test.size);
      Opening all(package);
      EXPECT_EQ(all.Open({"secret"}), kFiOk) << test.name;
      EXPECT_EQ(all.Content(), whole) << test.name;
      // The last block is not whole.
      package.package.pop_back();
      Opening cut(package);
      EXPECT_EQ(cut.Open({"secret"}), kFiOk) << test.name;
      EXPECT_EQ(cut.Content(), whole.substr(0, whole.size() - 16)) << test.name;
    }
  }
}

TEST(Decryption, BytesBehindThePackageAreReadForTheHmacUpToALimit) {
  EncryptedPackage package = WriteAgile(Package(100), {});
  package.package += std::string(8 << 20, 'x');
  Opening opening(package);
  EXPECT_EQ(opening.Open({"secret"}), kFiDecryptionFailed);
  EXPECT_LT(opening.document.bytesRead(), uint64_t{2} << 20);
}

TEST(Decryption, BothStreamsAreNeeded) {
  const EncryptedPackage good = WriteAgile(Package(100), {});
  for (const std::map<std::string, std::string>& streams : {std::map<std::string, std::string>{},
                                                            {{"EncryptionInfo", good.info}},
                                                            {{"EncryptedPackage", good.package}}}) {
    Opening opening(streams);
    EXPECT_EQ(opening.Open({"secret"}), kFiDecryptionFailed);
    EXPECT_TRUE(opening.asked.attempts.empty());
  }
}

TEST(Decryption, DocumentsWithShortReadsAnd32BitPositions) {
  Opening opening(WriteAgile(Package(9000), {}));
  opening.document.mostPerRead = 7;
  opening.document.has64Bit = false;
  EXPECT_EQ(opening.Open({"secret"}), kFiOk);
  EXPECT_EQ(opening.Content(), Package(9000));
}

TEST(Decryption, ViewHasTheNameOfTheDocument) {
  const EncryptedPackage package = WriteAgile(Package(100), {});
  for (const bool hasName : {true, false}) {
    for (const bool wide : {true, false}) {
      Opening opening(package);
      opening.document.self.hasName = hasName;
      opening.document.self.wideName = wide;
      ASSERT_EQ(opening.Open({"secret"}), kFiOk);
      std::array<char, kIoNameCapacity> name{};
      ASSERT_TRUE(io::GetInfo(opening.view.get(), kIoInfoFileName, name.data()));
      EXPECT_STREQ(name.data(), hasName ? "report.xlsx" : "");
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

// The files of this process that have no name and lie in `folder`.
std::vector<int> NamelessFiles(const std::string& folder) {
  std::vector<int> found;
  for (int descriptor = 3; descriptor < 256; ++descriptor) {
    std::array<char, 4096> target{};
    const std::string link = "/proc/self/fd/" + std::to_string(descriptor);
    if (::readlink(link.c_str(), target.data(), target.size() - 1) < 0) continue;
    if (std::string(target.data()).starts_with(folder + "/")) found.push_back(descriptor);
  }
  return found;
}

size_t CountEntries(const std::string& folder) {
  size_t count = 0;
  DIR* directory = ::opendir(folder.c_str());
  while (::readdir(directory) != nullptr) ++count;
  ::closedir(directory);
  return count - 2;
}

class TemporaryFile : public ::testing::Test {
 protected:
  void SetUp() override {
    const char* before = ::getenv("TMPDIR");
    if (before != nullptr) before_ = before;
    std::string pattern = ::testing::TempDir() + "/decryptionXXXXXX";
    ASSERT_NE(::mkdtemp(pattern.data()), nullptr);
    std::array<char, PATH_MAX> path{};
    ASSERT_NE(::realpath(pattern.c_str(), path.data()), nullptr);
    folder_ = path.data();
    ::setenv("TMPDIR", folder_.c_str(), 1);
  }

  void TearDown() override {
    ::rmdir(folder_.c_str());
    if (before_.has_value()) {
      ::setenv("TMPDIR", before_->c_str(), 1);
    } else {
      ::unsetenv("TMPDIR");
    }
  }

  std::string folder_;
  std::optional<std::string> before_;
};

TEST_F(TemporaryFile, HoldsLargePackagesAndIsOverwritten) {
  const EncryptedPackage package = WriteAgile(Package(100000), {});
  Opening small(package);
  EXPECT_EQ(small.Open({"secret"}, {.mostMemory = 100000}), kFiOk);
  EXPECT_TRUE(NamelessFiles(folder_).empty());

  Opening large(package);
  ASSERT_EQ(large.Open({"secret"}, {.mostMemory = 99999}), kFiOk);
  EXPECT_EQ(large.Content(), Package(100000));
  EXPECT_EQ(CountEntries(folder_), 0u);
  const std::vector<int> files = NamelessFiles(folder_);
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
  EXPECT_TRUE(NamelessFiles(folder_).empty());
}

TEST_F(TemporaryFile, IsGoneAfterAFailure) {
  EncryptedPackage package = WriteAgile(Package(100000), {});
  package.package.back() = static_cast<char>(package.package.back() ^ 1);
  EXPECT_EQ(Opening(package).Open({"secret"}, {.mostMemory = 1000}), kFiDecryptionFailed);
  EXPECT_TRUE(NamelessFiles(folder_).empty());
  EXPECT_EQ(CountEntries(folder_), 0u);
}

TEST_F(TemporaryFile, HasToBePossible) {
  ::setenv("TMPDIR", (folder_ + "/missing").c_str(), 1);
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
      std::string bytes(300000, '\0');
      ASSERT_TRUE(io::Seek(view, kIoFromStart, static_cast<uint32_t>(offset)));
      bytes.resize(io::Read(view, bytes.data(), 300000));
      EXPECT_EQ(bytes, offset < content.size() ? content.substr(offset, 300000) : "") << offset;
    }
    int64_t end = 0;
    ASSERT_TRUE(io::Seek64(view, kIoFromEnd, 0) && io::Tell64(view, &end));
    EXPECT_EQ(end, 600000);
  }
}

TEST(Decryption, ExportedFunctionOpensWithTheLimitsOfTheLibrary) {
  Opening opening(WriteStandard(Package(5000), {}));
  IOHandle* handles[3] = {&opening.document, &opening.document, &opening.document};
  const O12Options options{sizeof(O12Options), {}};
  const O12PasswordSource source{sizeof(source), Answer, &opening.document, {}};
  Host declining{{}, {}, &opening.document, true};
  host = &declining;
  EXPECT_EQ(O12InitDecryption(&opening.document, nullptr, nullptr, &options, &source, &handles[0],
                              &handles[1], &handles[2]),
            kFiPasswordNeeded);
  for (IOHandle* handle : handles) EXPECT_EQ(handle, nullptr);
  Host willing{{"secret"}, {}, &opening.document, true};
  host = &willing;
  EXPECT_EQ(O12InitDecryption(&opening.document, nullptr, nullptr, &options, &source, &handles[0],
                              &handles[1], &handles[2]),
            kFiOk);
  EXPECT_EQ(handles[0], nullptr);
  EXPECT_EQ(handles[1], nullptr);
  opening.view.reset(handles[2]);
  EXPECT_EQ(opening.Content(), Package(5000));
}

TEST(SecretBytes, AreWiped) {
  alignas(SecretBytes<32>) std::array<unsigned char, sizeof(SecretBytes<32>)> memory;
  // The compiler takes the bytes of an object that is gone for undefined; here they are looked at.
  const volatile unsigned char* seen = memory.data();
  auto* secret = new (memory.data()) SecretBytes<32>;
  ASSERT_TRUE(secret->Append(std::array<uint8_t, 4>{0xAA, 0xBB, 0xCC, 0xDD}));
  ASSERT_EQ(seen[0], 0xAA);
  secret->~SecretBytes<32>();
  for (size_t i = 0; i < 32; ++i) EXPECT_EQ(seen[i], 0) << i;
}

}  // namespace
}  // namespace fi::crypto
