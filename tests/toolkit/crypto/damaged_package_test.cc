// Descriptors and packages that are damaged, or made to cost much.
#include <gtest/gtest.h>

#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "tests/support/encrypted_package_writer.h"
#include "tests/support/package_opening.h"
#include "toolkit/crypto/evp.h"

namespace fi::crypto {
namespace {

using testing::EncryptedPackage;
using testing::Opening;
using testing::Package;
using testing::Replace;
using testing::WriteAgile;
using testing::WriteStandard;

// The value of the first attribute of that name behind `element`.
std::string SetAttribute(const std::string& text, const std::string& element,
                         const std::string& name, const std::string& value) {
  const size_t at = text.find(" " + name + "=\"", text.find("<" + element)) + name.size() + 3;
  std::string changed = text;
  return changed.replace(at, text.find('"', at) - at, value);
}

TEST(Decryption, DamagedStandardDescriptorsAreRefusedUnasked) {
  const EncryptedPackage good = WriteStandard(Package(100), {});
  // A 32-bit number, little-endian.
  const auto set = [](size_t offset, uint32_t value) {
    return [=](std::string info) {
      for (size_t k = 0; k < 4; ++k) info[offset + k] = static_cast<char>(value >> (8 * k) & 0xFF);
      return info;
    };
  };
  const struct {
    const char* name;
    std::function<std::string(const std::string&)> damage;
  } cases[] = {
      {"minor version 3 (extensible)", set(0, 0x30004)},
      {"minor version 4 with numbers", set(0, 0x40004)},
      {"major version 1", set(0, 0x20001)},
      {"header larger than the stream", set(8, 0xFFFFFFFF)},
      {"header one byte larger than the rest",
       [](std::string info) { return info.replace(8, 1, 1, static_cast<char>(info.size() - 11)); }},
      {"header smaller than its fields", set(8, 0x1F)},
      {"header over the verifier", set(8, 0x60)},
      {"no algorithm, and no AES flag",
       [&](std::string info) { return info.replace(12, 12, 12, 0); }},
      {"RC4", set(20, 0x6801)},
      {"another hash", set(24, 0x8003)},
      {"key size of another cipher", set(28, 0x100)},
      {"key size 0x80000000", set(28, 0x80000000)},
      {"no salt", set(66, 0)},
      {"salt of 4 GB", set(66, 0xFFFFFFFF)},
      {"another hash size", set(102, 0x21)},
      {"cut in the verifier",
       [](const std::string& info) { return info.substr(0, info.size() - 1); }},
      {"cut in the version", [](const std::string& info) { return info.substr(0, 7); }},
      {"empty", [](const std::string&) { return ""; }},
      {"larger than 64 KB",
       [](const std::string& info) { return info + std::string(65536, '\0'); }},
  };
  for (const auto& test : cases) {
    Opening opening(EncryptedPackage{test.damage(good.info), good.package});
    EXPECT_EQ(opening.Open({"secret"}), kFiDecryptionFailed) << test.name;
    EXPECT_TRUE(opening.asked.attempts.empty()) << test.name;
  }
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
TEST(Decryption, Base64IsTakenLiterally) {
  const struct {
    std::string text;
    std::optional<std::string> bytes;
  } cases[] = {
      {"AQID", "\1\2\3"},
      {"AQI=", "\1\2"},
      {"AQ==", "\1"},
      {"+/+/", "\xFB\xFF\xBF"},
      {"", std::nullopt},
      {"AQI", std::nullopt},
      {"A===", std::nullopt},
      {"====", std::nullopt},
      {"AQ=I", std::nullopt},
      {"AQ==AQID", std::nullopt},
      {"AQI\n", std::nullopt},
      {" AQI", std::nullopt},
      {"    AQID", std::nullopt},
      {"AQID\n\n\n\n", std::nullopt},
      {"AQI-", std::nullopt},
      {"AQIDAQID", std::nullopt},  // more than there is room for
      {std::string(260, 'A'), std::nullopt},
  };
  for (const auto& test : cases) {
    std::array<uint8_t, 5> room{};
    size_t size = 0;
    ASSERT_EQ(DecodeBase64(test.text, room.data(), room.size(), &size), test.bytes.has_value())
        << test.text;
    if (!test.bytes.has_value()) continue;
    EXPECT_EQ(std::string(room.begin(), room.begin() + static_cast<ptrdiff_t>(size)), *test.bytes);
  }
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
  EXPECT_LT(opening.document.BytesRead(), uint64_t{2} << 20);
}

}  // namespace
}  // namespace fi::crypto
