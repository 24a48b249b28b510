// What opens and what does not, for passwords and settings of both schemes.
#include "platform/decryption.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "tests/support/encrypted_package_writer.h"
#include "tests/support/package_opening.h"
#include "toolkit/crypto/password.h"

namespace fi::crypto {
namespace {

using testing::AgileSettings;
using testing::AnswerRequest;
using testing::EncryptedPackage;
using testing::Host;
using testing::Opening;
using testing::Package;
using testing::Replace;
using testing::WriteAgile;
using testing::WriteStandard;

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

TEST(Decryption, FlagsOrAlgorithmOfTheStandardSchemeMayBeLeftOut) {
  const EncryptedPackage good = WriteStandard(Package(100), {});
  EncryptedPackage open = good;
  open.info.replace(20, 12, 12, '\0');
  EXPECT_EQ(Opening(open).Open({"secret"}), kFiOk);
  EncryptedPackage noFlags = good;
  noFlags.info.replace(12, 4, 4, '\0');
  EXPECT_EQ(Opening(noFlags).Open({"secret"}), kFiOk);
}

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

TEST(Decryption, ExportedFunctionOpensWithTheLimitsOfTheLibrary) {
  Opening opening(WriteStandard(Package(5000), {}));
  IOHandle* handles[3] = {&opening.document, &opening.document, &opening.document};
  const O12Options options{sizeof(O12Options), {}};
  const O12PasswordSource source{sizeof(source), AnswerRequest, &opening.document, {}};
  Host declining{{}, {}, &opening.document, true};
  testing::host = &declining;
  EXPECT_EQ(O12InitDecryption(&opening.document, nullptr, nullptr, &options, &source, &handles[0],
                              &handles[1], &handles[2]),
            kFiPasswordNeeded);
  for (IOHandle* handle : handles) EXPECT_EQ(handle, nullptr);
  Host willing{{"secret"}, {}, &opening.document, true};
  testing::host = &willing;
  EXPECT_EQ(O12InitDecryption(&opening.document, nullptr, nullptr, &options, &source, &handles[0],
                              &handles[1], &handles[2]),
            kFiOk);
  EXPECT_EQ(handles[0], nullptr);
  EXPECT_EQ(handles[1], nullptr);
  opening.view.reset(handles[2]);
  EXPECT_EQ(opening.Content(), Package(5000));
}

}  // namespace
}  // namespace fi::crypto
