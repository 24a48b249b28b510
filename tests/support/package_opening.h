// Opens an encrypted package over doubles of the document and of the host, and asserts what holds
// for every opening.
#ifndef FI_TESTS_SUPPORT_PACKAGE_OPENING_H_
#define FI_TESTS_SUPPORT_PACKAGE_OPENING_H_

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "platform/io.h"
#include "tests/support/encrypted_package_writer.h"
#include "tests/support/stream_storage.h"
#include "toolkit/crypto/open_package.h"

namespace fi::testing {

// The host of these tests: answers in turn; where the answers end, it declines.
struct Host {
  std::vector<std::string> answers;
  std::vector<uint32_t> attempts;
  IOHandle* document = nullptr;
  bool asExpected = true;
};

inline Host* host = nullptr;

inline uint32_t AnswerRequest(uint32_t code, FIPasswordRequest* request, uintptr_t first,
                              uintptr_t second) {
  host->asExpected = host->asExpected && code == kFiPasswordOfPackage && first == 0 &&
                     second == 0 && request->size == sizeof(FIPasswordRequest) &&
                     request->capacity == 1024 && request->document == host->document;
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
  explicit Opening(const std::map<std::string, std::string>& streams) : document(streams) {}

  uint32_t Open(std::vector<std::string> answers, const crypto::DecryptionLimits& limits = {}) {
    asked = Host{std::move(answers), {}, &document, true};
    host = &asked;
    IOHandle* package = nullptr;
    const O12PasswordSource source{sizeof(source), AnswerRequest, &document, {}};
    const uint32_t status = crypto::OpenPackage(&document, source, limits, &package);
    view.reset(package);
    EXPECT_TRUE(asked.asExpected);
    EXPECT_EQ(document.opens(), document.closes());
    EXPECT_EQ(document.openedFlags, std::vector<uint32_t>(document.opens(), 1));
    EXPECT_EQ(package != nullptr, status == kFiOk);
    return status;
  }

  std::string Content() {
    if (view == nullptr) return "no view";
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

inline std::string Package(size_t size) {
  std::string bytes = "PK";
  for (size_t i = 2; i < size; ++i) bytes += static_cast<char>(i * i >> 3);
  bytes.resize(size);
  return bytes;
}

}  // namespace fi::testing

#endif  // FI_TESTS_SUPPORT_PACKAGE_OPENING_H_
