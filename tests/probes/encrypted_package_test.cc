#include "probes/storage/encrypted_package.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "probes/storage/classifier.h"
#include "tests/support/bytes.h"
#include "tests/support/memory_handle.h"
#include "tests/support/storage_probe.h"

namespace fi {
namespace {

using testing::Bytes;
using testing::MemoryHandle;
using testing::Storage;
using testing::StorageHandle;
using testing::StorageNode;
using testing::Stream;

// What the stand-in of the toolkit's decryption answers; a package where the status is 0.
struct Answer {
  int16_t status = 0;
  uint32_t calls = 0;
  MemoryHandle package{"%PDF-1.4\n"};
};

Answer* answer = nullptr;

int16_t Decrypt(IOHandle*, void*, void*, const O12Options*, const O12PasswordSource*, IOHandle**,
                IOHandle**, IOHandle** package) noexcept {
  ++answer->calls;
  if (answer->status == 0) *package = &answer->package;
  return answer->status;
}

const StorageNode kStandard = Stream("EncryptionInfo", Bytes("\x03\x00\x02\x00\x24\x00\x00\x00"));
const StorageNode kAgile = Stream("EncryptionInfo", Bytes("\x04\x00\x04\x00\x40\x00\x00\x00"));
const StorageNode kPackage = Stream("EncryptedPackage");
const StorageNode kWord = Stream("WordDocument");

StorageNode RightsManaged() {
  std::string primary(8, 'x');
  primary += Bytes("\x4C\x00\x00\x00");
  for (const char c : std::string("{C73DFACD-061F-43B0-8B64-0C620D2A8B50}")) {
    primary.push_back(c);
    primary.push_back('\0');
  }
  return Storage("\006DataSpaces",
                 {Storage("TransformInfo",
                          {Storage("DRMEncryptedTransform", {Stream("\006Primary", primary)})})});
}

struct Case {
  const char* name;
  std::vector<StorageNode> children;
  const char* extension;
  int16_t status;  // of the decryption
  FormatId expected;
  uint32_t expectedStatus;
  uint32_t decryptions;
};

void Check(const std::vector<Case>& cases) {
  for (const Case& test : cases) {
    SCOPED_TRACE(test.name);
    Answer plan;
    plan.status = test.status;
    answer = &plan;
    StorageHandle handle(test.children);
    FormatId id = 0xFFFF;
    const auto classify = [&](IdentificationStream* stream) -> int64_t {
      return ClassifyEncryptedPackage(stream, test.extension, &id, Decrypt);
    };
    EXPECT_EQ(RunOverStorage(classify, handle), test.expectedStatus);
    EXPECT_EQ(id, test.expected);
    EXPECT_EQ(plan.calls, test.decryptions);
    EXPECT_EQ(plan.package.closes, test.status == 0 ? test.decryptions : 0);
    answer = nullptr;
  }
}

TEST(EncryptedPackage, ExtensionsOfEachScheme) {
  struct Row {
    const char* extension;
    FormatId standard;
    FormatId agile;
    FormatId managed;
  };
  const Row rows[] = {
      {"PPTX", 1637, 2228, 1643}, {"PPTM", 1637, 2228, 1643}, {"POTX", 1637, 2228, 1643},
      {"POTM", 1637, 2228, 1643}, {"PPSM", 1637, 2228, 1643}, {"PPSX", 1637, 2228, 1643},
      {"XLSX", 1456, 1482, 1459}, {"XLTX", 1456, 1482, 1459}, {"XLSM", 1456, 1482, 1459},
      {"XLAM", 1456, 1482, 1459}, {"XLTM", 1456, 1482, 1459}, {"DOCX", 1313, 1355, 1318},
      {"DOTX", 1313, 1355, 1318}, {"DOCM", 1313, 1355, 1318}, {"DOTM", 1313, 1355, 1318},
      {"XLSB", 1470, 1483, 1470},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.extension);
    const bool workbook = row.standard == 1456;
    Check({
        {"standard", {kPackage, kStandard}, row.extension, 11, row.standard, 0, workbook ? 1u : 0u},
        {"agile", {kPackage, kAgile}, row.extension, 11, row.agile, 0, 0},
        {"rights-managed", {kPackage, RightsManaged()}, row.extension, 11, row.managed, 0, 0},
        {"neither", {kPackage}, row.extension, 11, row.standard, 0, 0},
    });
  }
}

TEST(EncryptedPackage, WithoutATellingExtension) {
  Check({
      {"agile, decrypted", {kPackage, kAgile}, "", 0, 1819, 0, 1},
      {"agile, no password", {kPackage, kAgile}, "TMP", 11, 1819, 11, 1},
      {"agile, wrong password", {kPackage, kAgile}, "", 3328, 1819, 3328, 1},
      {"standard, damaged", {kPackage, kStandard}, "XLS", 14, 1819, 14, 1},
      {"negative status", {kPackage, kAgile}, "", -2, 1819, 0xFFFFFFFE, 1},
      {"rights-managed", {kPackage, RightsManaged()}, "", 0, 1819, 0, 0},
      {"three characters of four", {kPackage}, "XLS", 0, 1819, 0, 0},
  });
}

TEST(EncryptedPackage, StandardWorkbooksAreLookedInto) {
  Check({
      {"decrypted", {kPackage, kStandard}, "XLSX", 0, 1819, 0, 1},
      {"no password", {kPackage, kStandard}, "XLSX", 11, 1456, 0, 1},
      {"wrong password", {kPackage, kStandard}, "XLSX", 3328, 1456, 0, 1},
      {"damaged", {kPackage, kStandard}, "XLSX", 14, 1456, 14, 1},
  });
}

TEST(EncryptedPackage, BesideAWordDocument) {
  Check({
      {"agile", {kPackage, kWord, kAgile}, "XLSX", 0, 1355, 0, 0},
      {"standard", {kPackage, kWord, kStandard}, "XLSX", 0, 1313, 0, 0},
      {"rights-managed", {kPackage, kWord, RightsManaged()}, "PPTX", 0, 1318, 0, 0},
      {"neither", {kPackage, kWord}, "", 0, 1313, 0, 0},
  });
}

TEST(EncryptedPackage, TheSchemeWinsOverTheTransform) {
  Check({{"both", {kPackage, kAgile, RightsManaged()}, "DOCX", 0, 1355, 0, 0}});
}

TEST(EncryptedPackage, ReachedThroughTheClassifier) {
  StorageHandle handle({kPackage, kAgile});
  FormatId id = 0;
  const auto classify = [&](IdentificationStream* stream) -> int64_t {
    return ClassifyCompoundDocument(stream, "PPSX", &id);
  };
  EXPECT_EQ(RunOverStorage(classify, handle), 0);
  EXPECT_EQ(id, 2228);
}

}  // namespace
}  // namespace fi
