// Encrypted packages over a stand-in of the toolkit's decryption.
#include "probes/protection/encryption.h"
#include "api/driver.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <sstream>
#include <string>

#include "probes/protection/encrypted_package.h"
#include "tests/support/memory_handle.h"
#include "tests/support/samples.h"
#include "tests/support/storage_samples.h"

namespace fi {
namespace {

using testing::MemoryHandle;
using testing::ReadSamples;
using testing::Sample;
using testing::StorageHandle;

// A handle that writes its mark when it is closed.
class MarkedHandle : public MemoryHandle {
 public:
  MarkedHandle(const char* bytes, char mark, std::string* log)
      : MemoryHandle(bytes), table_(*operations), mark_(mark), log_(log) {
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

// What a decryption is to answer, with those handles of "1", "2" and "P" that are listed.
struct Decryption {
  int16_t status;
  std::string handles;
  uint32_t calls = 0;
  std::string closed = "";
  MarkedHandle first{"", '1', &closed};
  MarkedHandle second{"", '2', &closed};
  MarkedHandle package{"%PDF-1.4\n", 'P', &closed};
};

Decryption* decryption = nullptr;

int16_t Decrypt(IOHandle* document, void* reserved1, void* reserved2, const O12Options* options,
                const O12PasswordSource* source, IOHandle** first, IOHandle** second,
                IOHandle** package) noexcept {
  ++decryption->calls;
  EXPECT_EQ(reserved1, nullptr);
  EXPECT_EQ(reserved2, nullptr);
  EXPECT_EQ(options->size, 48u);
  for (const uint32_t word : options->reserved) EXPECT_EQ(word, 0u);
  EXPECT_EQ(source->size, 32u);
  EXPECT_EQ(source->document, document);
  FIPasswordRequest request{sizeof(FIPasswordRequest), 0, nullptr, source->document, 0};
  EXPECT_EQ(source->callback(0, &request, 0, 0), uint32_t{kFiNoCallback});
  EXPECT_EQ(request.attempts, 1u);
  const std::string& handles = decryption->handles;
  if (handles.find('1') != std::string::npos) *first = &decryption->first;
  if (handles.find('2') != std::string::npos) *second = &decryption->second;
  if (handles.find('P') != std::string::npos) *package = &decryption->package;
  return decryption->status;
}

TEST(DecryptAndReidentify, StatusIdentifierAndHandles) {
  const struct {
    const char* name;
    int16_t status;
    const char* handles;
    uint32_t result;
    FormatId id;
    const char* closed;
  } cases[] = {
      {"content of another kind", 0, "12P", 0, 1819, "P21"},
      {"no package", 0, "1", 0, 1999, "1"},
      {"wrong password", 3328, "", 3328, 7, ""},
      {"failed with handles", 14, "12P", 14, 7, "P21"},
      {"negative", -5, "", 0xFFFFFFFB, 7, ""},
  };
  for (const auto& test : cases) {
    Decryption plan{test.status, test.handles};
    decryption = &plan;
    MemoryHandle document("");
    const ScopedStream stream(&document, kHostJob);
    FormatId id = 7;
    EXPECT_EQ(DecryptAndReidentify(stream.get(), &id, Decrypt), test.result) << test.name;
    EXPECT_EQ(id, test.id) << test.name;
    EXPECT_EQ(plan.closed, test.closed) << test.name;
  }
}

TEST(EncryptedPackage, Samples) {
  for (const Sample& sample : ReadSamples("encrypted_packages.txt", 7)) {
    std::istringstream extensions(sample.columns[4]);
    for (std::string extension; extensions >> extension;) {
      SCOPED_TRACE(sample.place + " " + sample.columns[5] + " " + extension);
      if (extension == "-") extension.clear();
      const auto status = static_cast<int16_t>(sample.Number(3));
      Decryption plan{status, status == 0 ? "P" : ""};
      decryption = &plan;
      StorageHandle handle(testing::SampleStorage(sample.columns[6]));
      const ScopedStream stream(&handle, kHostJob);
      FormatId id = 0xFFFF;
      EXPECT_EQ(ClassifyEncryptedPackage(stream.get(), extension.c_str(), &id, Decrypt),
                std::stoul(sample.columns[1]));
      EXPECT_EQ(id, sample.Number(0));
      EXPECT_EQ(plan.calls, std::stoul(sample.columns[2]));
      EXPECT_EQ(plan.closed, status == 0 && plan.calls > 0 ? "P" : "");
      EXPECT_EQ(handle.openedFlags.size(), handle.closes);
      EXPECT_EQ(handle.closedEarly, 0u);
    }
  }
}

}  // namespace
}  // namespace fi
