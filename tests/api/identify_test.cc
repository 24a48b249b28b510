// FIIdentify with requests as they should not be, and with callbacks that lie, fail and throw.

#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <functional>
#include <limits>
#include <new>
#include <stdexcept>
#include <string>
#include <vector>

#include "formatid/identify.h"
#include "formatid/platform.h"
#include "tests/support/compound_file_writer.h"
#include "tests/support/encrypted_package_writer.h"
#include "tests/support/source_files.h"
#include "tests/support/zip_writer.h"

namespace fi {
namespace {

constexpr char kGif[] = "GIF89a";

FIRequest MemoryRequest(const std::string& bytes, const char* name = nullptr) {
  FIRequest request = FI_REQUEST_INIT;
  request.source.kind = kFiSourceMemory;
  request.source.data = bytes.data();
  request.source.size = bytes.size();
  request.source.name = name;
  return request;
}

FIResult Outcome(const FIRequest& request) {
  FIResult result = FI_RESULT_INIT;
  EXPECT_EQ(FIIdentify(&request, &result), result.status);
  for (const char* text :
       {result.name, result.mimeType, result.extensions, result.puids, result.category}) {
    EXPECT_NE(text, nullptr);
  }
  return result;
}

std::string EncryptedDocument() {
  const testing::EncryptedPackage package = testing::WriteAgile("PK", {.spins = 100});
  return testing::WriteCompoundFile({testing::Stream(u"EncryptionInfo", package.info),
                                     testing::Stream(u"EncryptedPackage", package.package)});
}

TEST(Identify, RequestsThatAreNone) {
  const FIPart lacksData = {0, 5, nullptr};
  const FIPart wraps = {std::numeric_limits<uint64_t>::max() - 2, 5, kGif};
  const struct {
    const char* what;
    std::function<void(FIRequest*)> change;
  } cases[] = {
      {"size 0", [](FIRequest* r) { r->size = 0; }},
      {"a size too small", [](FIRequest* r) { r->size = sizeof(FIRequest) - 1; }},
      {"a size too large", [](FIRequest* r) { r->size = UINT32_MAX; }},
      {"an unknown flag", [](FIRequest* r) { r->flags |= kFiClassOnly; }},
      {"the highest flag", [](FIRequest* r) { r->flags |= 1u << 31; }},
      {"no kind", [](FIRequest* r) { r->source.kind = 0; }},
      {"an unknown kind", [](FIRequest* r) { r->source.kind = 7; }},
      {"no path", [](FIRequest* r) { r->source.kind = kFiSourcePath; }},
      {"no wide path", [](FIRequest* r) { r->source.kind = kFiSourceWidePath; }},
      {"no memory", [](FIRequest* r) { r->source.data = nullptr; }},
      {"too much memory", [](FIRequest* r) { r->source.size = FI_UNKNOWN_SIZE; }},
      {"no callback", [](FIRequest* r) { r->source.kind = kFiSourceCallbacks; }},
      {"a descriptor below 0",
       [](FIRequest* r) {
         r->source.kind = kFiSourceDescriptor;
         r->source.descriptor = -1;
       }},
      {"parts that are not there",
       [](FIRequest* r) {
         r->source.kind = kFiSourceParts;
         r->source.partCount = 1;
       }},
      {"a part without data",
       [&](FIRequest* r) {
         r->source.kind = kFiSourceParts;
         r->source.parts = &lacksData;
         r->source.partCount = 1;
       }},
      {"a part beyond all files",
       [&](FIRequest* r) {
         r->source.kind = kFiSourceParts;
         r->source.parts = &wraps;
         r->source.partCount = 1;
       }},
      {"a reserved field", [](FIRequest* r) { r->source.reserved = 1; }},
  };
  const std::string bytes = kGif;
  for (const auto& each : cases) {
    FIRequest request = MemoryRequest(bytes);
    each.change(&request);
    const FIResult result = Outcome(request);
    EXPECT_EQ(result.status, kFiInvalidRequest) << each.what;
    EXPECT_EQ(result.id, kFormatUnknown) << each.what;
  }
  FIResult result = FI_RESULT_INIT;
  EXPECT_EQ(FIIdentify(nullptr, &result), kFiInvalidRequest);
  const FIRequest request = MemoryRequest(bytes);
  EXPECT_EQ(FIIdentify(&request, nullptr), kFiInvalidRequest);
}

// A host that was built with later headers.
TEST(Identify, RecordsOfOtherReleases) {
  const std::string bytes = kGif;
  struct LaterRequest {
    FIRequest known;
    uint64_t later;
  } request = {MemoryRequest(bytes), 0};
  request.known.size = sizeof request;
  struct LaterResult {
    FIResult known;
    uint64_t later;
    uint64_t behind;
  } result = {FI_RESULT_INIT, 7, 8};
  result.known.size = offsetof(LaterResult, behind);
  EXPECT_EQ(FIIdentify(&request.known, &result.known), kFiOk);
  EXPECT_EQ(result.known.size, offsetof(LaterResult, behind));
  EXPECT_EQ(result.later, 0u) << "not known here";
  EXPECT_EQ(result.behind, 8u) << "not the record's";
  request.later = 1;
  EXPECT_EQ(FIIdentify(&request.known, &result.known), kFiInvalidRequest) << "asks for the unknown";

  FIResult small = FI_RESULT_INIT;
  small.size = 8;
  small.id = 77;
  EXPECT_EQ(FIIdentify(&request.known, &small), kFiInvalidRequest);
  EXPECT_EQ(small.id, 77) << "left alone";
}

// What a callback may do to the library. `fault` begins with the n-th call.
enum class Fault { kLiesAboutCount, kShrinks, kFails, kFailsBelowZero, kThrows, kMisses };

struct FaultyHost {
  const std::string* bytes;
  Fault fault;
  uint64_t at;
  uint64_t calls = 0;

  static int32_t ReadAt(void* context, uint64_t offset, void* buffer, uint32_t size,
                        uint32_t* count) {
    auto* host = static_cast<FaultyHost*>(context);
    if (++host->calls >= host->at) {
      switch (host->fault) {
        case Fault::kLiesAboutCount:
          *count = size + 1;
          return 0;
        case Fault::kShrinks:
          return 0;
        case Fault::kFails:
          return ENXIO;
        case Fault::kFailsBelowZero:
          return -77;
        case Fault::kThrows:
          throw std::runtime_error("of the host");
        case Fault::kMisses:
          return kFiReadMissing;
      }
    }
    if (offset >= host->bytes->size()) return 0;
    *count = static_cast<uint32_t>(std::min<uint64_t>(size, host->bytes->size() - offset));
    std::memcpy(buffer, host->bytes->data() + offset, *count);
    return 0;
  }
};

TEST(Identify, CallbacksThatLieFailAndThrow) {
  const testing::SourceFile files[] = {
      {"a.xlsx", EncryptedDocument()},
      {"a.zip", testing::ZipWriter().Add("META-INF/manifest.xml", "<a/>").Finish()},
      {"a.txt", std::string(20'000, 'x')},
  };
  const struct {
    Fault fault;
    uint32_t status;
    int32_t error;
  } cases[] = {
      {Fault::kLiesAboutCount, kFiReadFailed, EIO}, {Fault::kShrinks, kFiOk, 0},
      {Fault::kFails, kFiReadFailed, ENXIO},        {Fault::kFailsBelowZero, kFiReadFailed, -77},
      {Fault::kThrows, kFiReadFailed, EIO},         {Fault::kMisses, kFiOk, 0},
  };
  for (const testing::SourceFile& file : files) {
    for (const auto& each : cases) {
      for (const bool tellsSize : {true, false}) {
        uint64_t at = 1;
        for (; at < 200; ++at) {
          SCOPED_TRACE(file.name + " fault " + std::to_string(static_cast<int>(each.fault)) +
                       " at call " + std::to_string(at));
          FaultyHost host{&file.bytes, each.fault, at};
          FIRequest request = FI_REQUEST_INIT;
          request.source.kind = kFiSourceCallbacks;
          request.source.readAt = FaultyHost::ReadAt;
          request.source.context = &host;
          request.source.size = tellsSize ? file.bytes.size() : FI_UNKNOWN_SIZE;
          const FIResult result = Outcome(request);
          if (host.calls < at) break;
          const bool isOk = each.status == kFiOk;
          EXPECT_TRUE(result.status == each.status || (isOk && result.status != kFiReadFailed))
              << result.status;
          EXPECT_EQ(result.error, each.error);
          EXPECT_EQ(result.more != kFiMoreNone, each.fault == Fault::kMisses);
        }
        EXPECT_GT(at, 1u);
        EXPECT_LT(at, 200u);
      }
    }
  }
}

TEST(Identify, SourcesThatDoNotOpen) {
  const struct {
    const char* path;
    uint32_t status;
    int32_t error;
  } cases[] = {
      {"/nowhere/at/all", kFiNotFound, ENOENT},
      {"/", kFiNotOpened, EISDIR},
      {"/dev/null", kFiNotOpened, ESPIPE},
  };
  for (const auto& each : cases) {
    FIRequest request = FI_REQUEST_INIT;
    request.source.kind = kFiSourcePath;
    request.source.path = each.path;
    const FIResult result = Outcome(request);
    EXPECT_EQ(result.status, each.status) << each.path;
    EXPECT_EQ(result.error, each.error) << each.path;
  }
}

struct PasswordHost {
  std::vector<const char*> passwords;  // nullptr throws
  const FIRequest* job = nullptr;
  uint32_t asked = 0;

  static uint32_t Answer(void* context, const FIRequest* request, FIPasswordRequest* ask) {
    auto* host = static_cast<PasswordHost*>(context);
    host->job = request;
    EXPECT_EQ(ask->attempts, host->asked);
    if (host->asked == host->passwords.size()) return 1;
    const char* password = host->passwords[host->asked++];
    if (password == nullptr) throw std::runtime_error("of the host");
    std::strncpy(ask->password, password, ask->capacity);
    return 0;
  }
};

uint32_t NeverAsked(uint32_t, FIPasswordRequest*, uintptr_t, uintptr_t) {
  ADD_FAILURE() << "the process's callback was asked";
  return 1;
}

TEST(Identify, PasswordsBelongToTheirJob) {
  FIPasswordCallback ofProcess = NeverAsked;
  ASSERT_EQ(UTSetGlobalData(kUtDataPasswordCallback, &ofProcess), 0u);
  const std::string document = EncryptedDocument();
  const struct {
    std::vector<const char*> passwords;
    uint32_t status;
    uint32_t asked;
  } cases[] = {
      {{}, kFiPasswordNeeded, 0},
      {{"wrong"}, kFiWrongPassword, 1},
      {{"wrong", "no", "nor this", "secret"}, kFiWrongPassword, 3},
      {{"wrong", "secret"}, kFiOk, 2},
      {{nullptr}, kFiPasswordNeeded, 1},
  };
  for (const auto& each : cases) {
    PasswordHost host{each.passwords};
    FIRequest request = MemoryRequest(document);
    request.password = PasswordHost::Answer;
    request.passwordContext = &host;
    const FIResult result = Outcome(request);
    EXPECT_EQ(result.status, each.status) << each.passwords.size();
    EXPECT_EQ(host.asked, each.asked);
    EXPECT_EQ(host.job, &request);
    EXPECT_EQ(result.id, 1819);
  }
  EXPECT_EQ(Outcome(MemoryRequest(document)).status, kFiPasswordNeeded) << "no callback";
  ASSERT_EQ(UTSetGlobalData(kUtDataPasswordCallback, nullptr), 0u);
}

// Whatever a request asks for, the options of the process stay as they were, and do not matter.
TEST(Identify, NothingOfTheProcessIsReadOrSet) {
  const std::string text = "plain prose, in one line\n";
  UTOptionSet* set = UTGetGlobalOptionSet();
  for (const uint32_t word : {0u, 1u, 3u, 77u}) {
    ASSERT_EQ(UTSetOption(set, kUtOptionBehaviour, &word, sizeof word), 0u);
    FIRequest request = MemoryRequest(text);
    EXPECT_EQ(Outcome(request).id, 4005);
    request.flags = 0;
    EXPECT_EQ(Outcome(request).id, kFormatUnknown);
    uint32_t kept = 0;
    uint32_t size = sizeof kept;
    ASSERT_EQ(UTGetOption(set, kUtOptionBehaviour, &kept, &size), 0u);
    EXPECT_EQ(kept, word);
  }
}

struct CancellingHost {
  uint32_t after;
  uint32_t asked = 0;

  static int32_t Answer(void* context) {
    auto* host = static_cast<CancellingHost*>(context);
    return ++host->asked > host->after ? 1 : 0;
  }
};

TEST(Identify, LimitsAndCancellation) {
  std::string text;
  while (text.size() < 500'000) text += "a line of text that goes on and on\n";
  const struct {
    const char* what;
    uint64_t FILimits::*limit;
    uint64_t value;
    uint32_t number;
  } cases[] = {
      {"bytes", &FILimits::bytesRead, 3000, kFiLimitBytesRead},
      {"reads", &FILimits::reads, 2, kFiLimitReads},
  };
  for (const auto& each : cases) {
    FIRequest request = MemoryRequest(text);
    request.limits.*each.limit = each.value;
    const FIResult result = Outcome(request);
    EXPECT_EQ(result.status, kFiLimitReached) << each.what;
    EXPECT_EQ(result.limit, each.number) << each.what;
    EXPECT_LE(result.spent.*each.limit, each.value) << each.what;
    request.limits.*each.limit = FI_NO_LIMIT;
    EXPECT_EQ(Outcome(request).status, kFiOk) << each.what;
  }
  CancellingHost host{0};
  FIRequest request = MemoryRequest(text);
  request.cancel = CancellingHost::Answer;
  request.cancelContext = &host;
  const FIResult cancelled = Outcome(request);
  EXPECT_EQ(cancelled.status, kFiCancelled);
  EXPECT_EQ(cancelled.limit, kFiLimitNone);
  EXPECT_EQ(cancelled.spent.bytesRead, 0u);
  EXPECT_EQ(host.asked, 1u) << "not asked again";
  host = {UINT32_MAX};
  EXPECT_EQ(Outcome(request).status, kFiOk);
  EXPECT_GT(host.asked, 0u);
}

TEST(Identify, FactsAndTexts) {
  const std::string bytes = kGif;
  const FIResult result = Outcome(MemoryRequest(bytes, "picture.png"));
  FIFormatFacts facts{};
  ASSERT_EQ(UTGetFormatFacts(result.id, &facts), 0u);
  EXPECT_STREQ(result.name, facts.name);
  EXPECT_STREQ(result.mimeType, "image/gif");
  EXPECT_STREQ(result.extensions, facts.extensions);
  EXPECT_STREQ(result.puids, facts.puids);
  EXPECT_STREQ(result.category, facts.category);
  EXPECT_EQ(result.basis, kFiBasisSignature);
  EXPECT_GT(result.row, 0);
  EXPECT_EQ(result.fileSize, bytes.size());
  EXPECT_EQ(result.extensionFit, kFiFitsNot);

  const std::string text = "import this\n";
  EXPECT_EQ(Outcome(MemoryRequest(text, "script.py")).extensionFit, kFiFitUnknown) << "plain text";
  EXPECT_EQ(Outcome(MemoryRequest(text, "script.txt")).extensionFit, kFiFits);

  std::vector<std::string> texts;
  for (const uint32_t status : std::initializer_list<uint32_t>{
           kFiOk, kFiAccessDenied, kFiPasswordNeeded, kFiDecryptionFailed, kFiUnknownClass,
           kFiNotFound, kFiWrongPassword, kFiNotOpened, kFiReadFailed, kFiLimitReached,
           kFiCancelled, kFiNoMemory, kFiInvalidRequest}) {
    texts.emplace_back(FIStatusText(status));
  }
  for (uint32_t limit = kFiLimitNone; limit <= kFiLimitTime; ++limit) {
    texts.emplace_back(std::string("limit ") + FILimitText(limit));
  }
  for (uint16_t basis = kFiBasisNone; basis <= kFiBasisText; ++basis) {
    texts.emplace_back(std::string("basis ") + FIBasisText(basis));
  }
  std::sort(texts.begin(), texts.end());
  EXPECT_EQ(std::adjacent_find(texts.begin(), texts.end()), texts.end()) << "two of one text";
  for (const std::string& each : texts) EXPECT_FALSE(each.ends_with("unknown")) << each;
  EXPECT_STREQ(FIStatusText(4242), "unknown");
  const std::string version = std::to_string(FI_VERSION_MAJOR) + '.' +
                              std::to_string(FI_VERSION_MINOR) + '.' +
                              std::to_string(FI_VERSION_PATCH);
  EXPECT_EQ(FIVersion(), version);
  EXPECT_EQ(FIVersionNumber(), static_cast<uint32_t>(FI_VERSION_NUMBER));
}

}  // namespace
}  // namespace fi
