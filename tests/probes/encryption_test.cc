#include "probes/storage/encryption.h"

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <utility>

#include "tests/support/bytes.h"
#include "tests/support/memory_handle.h"
#include "tests/support/storage_probe.h"

namespace fi {
namespace {

using testing::Bytes;
using testing::ExpectOverStorage;
using testing::MemoryHandle;
using testing::Storage;
using testing::Stream;

TEST(EncryptionInfo, Version) {
  const auto info = [](const std::string& bytes) {
    return std::vector<testing::StorageNode>{Stream("EncryptionInfo", bytes)};
  };
  ExpectOverStorage(ReadEncryptionInfoVersion,
                    {
                        {"agile", info(Bytes("\x04\x00\x04\x00\x40\x00\x00\x00<")), 4},
                        {"standard", info(Bytes("\x03\x00\x02\x00\x24\x00\x00\x00")), 2},
                        {"major is not judged", info(Bytes("\xFF\xFF\x02\x00\x00\x00\x00\x00")), 2},
                        {"extensible", info(Bytes("\x04\x00\x03\x00\x10\x00\x00\x00")), -1},
                        {"high byte of minor", info(Bytes("\x04\x00\x04\x01\x40\x00\x00\x00")), -1},
                        {"six bytes", info(Bytes("\x04\x00\x04\x00\x40\x00")), -1},
                        {"seven bytes", info(Bytes("\x04\x00\x04\x00\x40\x00\x00")), -1},
                        {"empty", info(""), -1},
                        {"none", {}, -1},
                        {"a storage", {Storage("EncryptionInfo")}, -1},
                    });
}

// A handle that writes its mark when it is closed.
class MarkedHandle : public MemoryHandle {
 public:
  MarkedHandle(std::string bytes, char mark, std::string* log)
      : MemoryHandle(std::move(bytes)), table_(*operations), mark_(mark), log_(log) {
    table_.close = Close;
    operations = &table_;
  }

 private:
  static int32_t Close(IOHandle* handle) {
    const auto* self = static_cast<MarkedHandle*>(handle);
    self->log_->push_back(self->mark_);
    return 0;
  }

  IOHandleOperations table_;
  char mark_;
  std::string* log_;
};

// The stand-in of the toolkit's decryption: what it is to answer, and what it was asked.
struct Decryption {
  int16_t status = 0;
  IOHandle* handles[3] = {};
  IOHandle* document = nullptr;
  uint32_t askedCode = 0;
};

Decryption* decryption = nullptr;

int16_t Decrypt(IOHandle* document, void* reserved1, void* reserved2, const O12Options* options,
                const O12PasswordSource* source, IOHandle** first, IOHandle** second,
                IOHandle** package) noexcept {
  decryption->document = document;
  EXPECT_EQ(reserved1, nullptr);
  EXPECT_EQ(reserved2, nullptr);
  EXPECT_EQ(options->size, 48u);
  for (const uint32_t word : options->reserved) EXPECT_EQ(word, 0u);
  EXPECT_EQ(source->size, 32u);
  EXPECT_EQ(source->document, document);
  FIPasswordRequest request{sizeof(FIPasswordRequest), 0, nullptr, source->document, 0};
  decryption->askedCode = source->callback(0, &request, 0, 0);
  EXPECT_EQ(request.attempts, 1u);
  *first = decryption->handles[0];
  *second = decryption->handles[1];
  *package = decryption->handles[2];
  return decryption->status;
}

struct Outcome {
  uint32_t status;
  FormatId id;
  std::string closed;
};

// With handles for those of "1", "2" and "P" that `handles` lists.
Outcome Reidentify(int16_t status, const std::string& handles) {
  std::string closed;
  MarkedHandle first("", '1', &closed);
  MarkedHandle second("", '2', &closed);
  MarkedHandle package("%PDF-1.4\n", 'P', &closed);
  MemoryHandle document("");
  Decryption plan;
  plan.status = status;
  if (handles.find('1') != std::string::npos) plan.handles[0] = &first;
  if (handles.find('2') != std::string::npos) plan.handles[1] = &second;
  if (handles.find('P') != std::string::npos) plan.handles[2] = &package;
  decryption = &plan;
  FormatId id = 7;
  const uint32_t result = DecryptAndReidentify(&document, &id, Decrypt);
  decryption = nullptr;
  EXPECT_EQ(plan.document, &document);
  EXPECT_EQ(plan.askedCode, uint32_t{kFiNoCallback});
  return {result, id, closed};
}

TEST(DecryptAndReidentify, StatusIdentifierAndHandles) {
  struct Case {
    const char* name;
    int16_t status;
    const char* handles;
    uint32_t result;
    FormatId id;
    const char* closed;
  };
  const Case cases[] = {
      {"content of another kind", 0, "12P", 0, 1819, "P21"},
      {"package alone", 0, "P", 0, 1819, "P"},
      {"no package", 0, "1", 0, 1999, "1"},
      {"no password", 11, "", 11, 7, ""},
      {"wrong password", 3328, "", 3328, 7, ""},
      {"failed with handles", 14, "12P", 14, 7, "P21"},
      {"negative", -5, "", 0xFFFFFFFB, 7, ""},
  };
  for (const Case& test : cases) {
    const Outcome outcome = Reidentify(test.status, test.handles);
    EXPECT_EQ(outcome.status, test.result) << test.name;
    EXPECT_EQ(outcome.id, test.id) << test.name;
    EXPECT_EQ(outcome.closed, test.closed) << test.name;
  }
}

TEST(MapDecryptedId, EveryIdentifier) {
  const std::vector<std::pair<std::set<int>, FormatId>> rows = {
      {{1312, 1314, 1327, 1328}, 1313},
      {{1336, 1337, 1338, 1339, 1372, 1373, 1374, 1375, 1384, 1385, 1386, 1387}, 1355},
      {{1455, 1459, 1464, 1465, 1466, 1471}, 1456},
      {{1457}, 1470},
      {{1476, 1477, 1478, 1479, 1480, 1488, 1489, 1490, 1491, 1492}, 1482},
      {{2500, 2501, 2502, 2503, 2504}, 1482},
      {{1481, 1493, 2505}, 1483},
      {{1635, 2208, 2209, 2210, 2211, 2212}, 1637},
      {{2222, 2223, 2224, 2225, 2226, 2227, 2235, 2236, 2237, 2238, 2239, 2240}, 2228},
      {{2262, 2263, 2264, 2265, 2266, 2267}, 2228},
      {{2510}, 2511},
  };
  for (int id = 0; id <= 0xFFFF; ++id) {
    FormatId expected = 1819;
    for (const auto& [ids, encrypted] : rows) {
      if (ids.count(id) != 0) expected = encrypted;
    }
    ASSERT_EQ(MapDecryptedId(static_cast<FormatId>(id)), expected) << id;
  }
}

}  // namespace
}  // namespace fi
