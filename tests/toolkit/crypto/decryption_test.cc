// What opens and what does not: passwords and settings of both schemes, and damaged packages, which
// may also be made to cost much.
#include "platform/decryption.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include "tests/support/encrypted_package_writer.h"
#include "tests/support/package_opening.h"
#include "tests/support/samples.h"
#include "toolkit/crypto/password.h"
#include "toolkit/openssl/evp.h"

namespace fi::testing {
namespace {

TEST(Decryption, PackagesOfEverySizeOpen) {
  for (const size_t size : {0u, 1u, 4095u, 4096u, 4097u, 8192u, 100000u}) {
    for (const EncryptedPackage& package :
         {WriteStandard(Package(size), {}), WriteStandard(Package(size), {.keyBits = 192}),
          WriteStandard(Package(size), {.keyBits = 256}), WriteAgile(Package(size), {}),
          WriteAgile(Package(size), {.integrity = false})}) {
      Opening opening(package);
      EXPECT_EQ(opening.Open({"secret"}), kFiOk) << size;
      EXPECT_EQ(opening.Content(), Package(size)) << size;
    }
  }
}

TEST(Decryption, AgileSettings) {
  std::vector<AgileSettings> cases;
  for (const char* hash : {"SHA1", "SHA256", "SHA384", "SHA512"}) {
    for (const size_t keyBits : {128u, 192u, 256u}) {
      cases.push_back({.keyBits = keyBits, .hash = hash});
      cases.push_back({.passwordKeyBits = keyBits, .passwordHash = hash, .spins = 0});
    }
  }
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
}

TEST(Decryption, PasswordIsAskedForUpToThreeTimes) {
  const std::string right =
      "s\xC3\xA9"
      "cret \xF0\x9F\x94\x91";
  const struct {
    const char* name;
    std::vector<std::string> answers;
    uint32_t status;
    size_t asked;
  } cases[] = {
      {"right", {right}, kFiOk, 1},
      {"wrong, then right", {"S" + right.substr(1), right}, kFiOk, 2},
      {"right at last", {"", right.substr(0, 7), right}, kFiOk, 3},
      {"right too late", {"a", "b", "c", right}, kFiWrongPassword, 3},
      {"declined", {}, kFiPasswordNeeded, 1},
      {"declined after a wrong one", {"a"}, kFiWrongPassword, 2},
      {"broken UTF-8 is wrong", {right + "\xC3", right}, kFiOk, 2},
      {"without a terminator is wrong", {std::string(1024, 'x'), right}, kFiOk, 2},
  };
  const std::u16string wide = u"s\u00E9cret \U0001F511";
  const EncryptedPackage packages[] = {WriteStandard(Package(100), {.password = wide}),
                                       WriteAgile(Package(100), {.password = wide})};
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

TEST(Decryption, PasswordsAreUtf8) {
  crypto::Password password;
  for (const Sample& sample : ReadSamples("toolkit/passwords.txt", 2)) {
    const bool usable = sample.columns[1] != "no";
    ASSERT_EQ(crypto::EncodePassword(SampleBytes(sample.columns[0]), &password), usable)
        << sample.place;
    const std::string units(password.view().begin(), password.view().end());
    if (usable) {
      EXPECT_EQ(units, SampleBytes(sample.columns[1])) << sample.place;
    }
  }
  std::string longest;
  for (int i = 0; i < 255; ++i) longest += "\xE6\x97\xA5";
  EXPECT_FALSE(crypto::EncodePassword(longest + "x", &password));
  Opening opening(WriteAgile("PK", {.password = std::u16string(255, u'\u65E5')}));
  EXPECT_EQ(opening.Open({longest}), kFiOk);
}

// Makes the change of a row of encrypted_packages.txt.
void Change(std::string* stream, const std::string& place, const std::string& bytes) {
  std::istringstream words(place);
  std::string what;
  std::string rest;
  words >> what;
  std::getline(words >> std::ws, rest);
  if (what == "at") {
    stream->replace(std::stoul(rest), bytes.size(), bytes);
  } else if (what == "flip") {
    (*stream)[std::stoul(rest)] ^= 1;
  } else if (what == "cut") {
    stream->resize(std::stoul(rest));
  } else if (what == "end") {
    *stream += bytes;
  } else if (what == "text") {
    stream->replace(stream->find(rest), rest.size(), bytes);
  } else {
    const std::string attribute = " " + rest + "=\"";
    const size_t at = stream->find(attribute, stream->find("<" + what)) + attribute.size();
    stream->replace(at, stream->find('"', at) - at, bytes);
  }
}

TEST(Decryption, DamagedPackages) {
  const std::map<std::string, EncryptedPackage> sound = {
      {"standard", WriteStandard(Package(9000), {})},
      {"agile", WriteAgile(Package(9000), {})},
      {"unchecked", WriteAgile(Package(9000), {.integrity = false})}};
  const std::map<std::string, uint32_t> statuses = {
      {"ok", kFiOk}, {"wrong", kFiWrongPassword}, {"damaged", kFiDecryptionFailed}};
  for (const Sample& sample : ReadSamples("toolkit/encrypted_packages.txt", 7)) {
    SCOPED_TRACE(sample.place + " " + sample.columns[0]);
    EncryptedPackage package = sound.at(sample.columns[1]);
    std::string& stream = sample.columns[2] == "info" ? package.info : package.package;
    const std::string before = stream;
    Change(&stream, sample.columns[3], SampleBytes(sample.columns[4]));
    EXPECT_NE(stream, before);
    Opening opening(package);
    EXPECT_EQ(opening.Open({"secret", "secret", "secret"}), statuses.at(sample.columns[5]));
    // Whoever is asked has passed the limits on what a try costs.
    EXPECT_EQ(std::to_string(opening.asked.attempts.size()), sample.columns[6]);
  }
}

TEST(Decryption, Base64IsTakenLiterally) {
  for (const Sample& sample : ReadSamples("toolkit/base64.txt", 2)) {
    std::array<uint8_t, 5> room{};
    size_t size = 0;
    const bool right =
        crypto::DecodeBase64(SampleBytes(sample.columns[0]), room.data(), room.size(), &size);
    ASSERT_EQ(right, sample.columns[1] != "no") << sample.place;
    if (!right) continue;
    EXPECT_EQ(std::string(room.data(), room.data() + size), SampleBytes(sample.columns[1]));
  }
}

TEST(Decryption, SizeBeyondTheStreamIsCutToWhatIsThere) {
  const std::string whole = Package(8992);
  for (const char* size : {"28 23 00*6", "00*7 80", "FF*8"}) {
    for (EncryptedPackage package :
         {WriteStandard(whole, {}), WriteAgile(whole, {.integrity = false})}) {
      package.package.replace(0, 8, SampleBytes(size));
      Opening all(package);
      EXPECT_EQ(all.Open({"secret"}), kFiOk) << size;
      EXPECT_EQ(all.Content(), whole) << size;
      package.package.pop_back();  // the last block is not whole
      Opening cut(package);
      EXPECT_EQ(cut.Open({"secret"}), kFiOk) << size;
      EXPECT_EQ(cut.Content(), whole.substr(0, whole.size() - 16)) << size;
    }
  }
}

TEST(Decryption, BytesBehindThePackageAreReadForTheHmacUpToALimit) {
  EncryptedPackage package = WriteAgile(Package(100), {});
  package.package += std::string(8 << 20, 'x');
  Opening opening(package);
  EXPECT_EQ(opening.Open({"secret"}), kFiDecryptionFailed);
  EXPECT_LT(opening.document.BytesRead(), uint64_t{2} << 20);
}

TEST(Decryption, SpinsUpToTheLimitAreTaken) {
  const EncryptedPackage package = WriteAgile(Package(100), {.spins = 2000});
  EXPECT_EQ(Opening(package).Open({"secret"}, {.mostSpins = 2000}), kFiOk);
  EXPECT_EQ(Opening(package).Open({"secret"}, {.mostSpins = 1999}), kFiDecryptionFailed);
}

TEST(Decryption, BothStreamsAreNeeded) {
  const EncryptedPackage good = WriteAgile(Package(100), {});
  for (const auto& stream :
       {std::pair{"EncryptionInfo", good.info}, std::pair{"EncryptedPackage", good.package}}) {
    Opening opening(std::map<std::string, std::string>{stream});
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

TEST(Decryption, ExportedFunctionOpensWithTheLimitsOfTheLibrary) {
  Opening opening(WriteStandard(Package(5000), {}));
  IOHandle* handles[3] = {&opening.document, &opening.document, &opening.document};
  const O12Options options{sizeof(O12Options), {}};
  const O12PasswordSource source{sizeof(source), AnswerRequest, &opening.document, {}};
  const auto open = [&] {
    return O12InitDecryption(&opening.document, nullptr, nullptr, &options, &source, &handles[0],
                             &handles[1], &handles[2]);
  };
  Host declining{{}, {}, &opening.document, true};
  host = &declining;
  EXPECT_EQ(open(), kFiPasswordNeeded);
  for (IOHandle* handle : handles) EXPECT_EQ(handle, nullptr);
  Host willing{{"secret"}, {}, &opening.document, true};
  host = &willing;
  EXPECT_EQ(open(), kFiOk);
  EXPECT_EQ(handles[0], nullptr);
  EXPECT_EQ(handles[1], nullptr);
  opening.view.reset(handles[2]);
  EXPECT_EQ(opening.Content(), Package(5000));
}

}  // namespace
}  // namespace fi::testing
