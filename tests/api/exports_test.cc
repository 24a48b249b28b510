#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include "api/password_relay.h"
#include "formatid/formatid.h"
#include "formatid/platform.h"
#include "tests/support/bytes.h"
#include "tests/support/memory_handle.h"

namespace {

const std::string kGif = "GIF89a";

IOMemorySource Memory(const std::string& bytes, const char* name = nullptr) {
  return {bytes.data(), bytes.size(), name};
}

TEST(Exports, InitSetsItsBitAndHidesThatItRanBefore) {
  UTOptionSet* set = UTGetGlobalOptionSet();
  uint32_t clients = 0x10;
  ASSERT_EQ(UTSetOption(set, kUtOptionClients, &clients, 4), 0u);
  EXPECT_EQ(FIInit(nullptr, nullptr, nullptr, nullptr), 0u);
  EXPECT_EQ(UTInit(2, nullptr, nullptr, nullptr), 0x900u);
  EXPECT_EQ(FIInit(nullptr, nullptr, nullptr, nullptr), 0u);
  uint32_t size = sizeof(clients);
  ASSERT_EQ(UTGetOption(set, kUtOptionClients, &clients, &size), 0u);
  EXPECT_EQ(clients, 0x14u);
  for (int i = 0; i < 5; ++i) EXPECT_EQ(FIDeInit(nullptr, nullptr, nullptr), 0u);
  EXPECT_EQ(FIInit(nullptr, nullptr, nullptr, nullptr), 0u);
}

TEST(Exports, EnumerationIsOrderedAndEnds) {
  uint16_t cursor = 0;
  uint16_t id = 0;
  char name[256];
  uint16_t previous = 0;
  uint32_t count = 0;
  for (uint16_t more = FIGetFirstId(&cursor, &id, name, sizeof(name)); more == 1;
       more = FIGetNextId(&cursor, &id, name, sizeof(name))) {
    ASSERT_GT(id, previous);
    ASSERT_EQ(cursor, id);
    ASSERT_STRNE(name, "");
    FIFormatFacts facts{};
    ASSERT_EQ(UTGetFormatFacts(id, &facts), 0u);
    ASSERT_STREQ(facts.name, name);
    previous = id;
    ++count;
  }
  EXPECT_EQ(cursor, 9999);
  EXPECT_EQ(id, 9999);
  EXPECT_GT(count, 800u);
  EXPECT_GT(previous, 6000);  // beyond what FIGetIDString serves
}

TEST(Exports, NamesAreServedForTheirRange) {
  struct Case {
    FormatId id;
    uint16_t size;
    const char* name;
  };
  const Case cases[] = {
      {1574, 256, "Portable Network Graphics (PNG)"},
      {1574, 9, "Portable"},
      {1574, 1, ""},
      {999, 256, ""},
      {5103, 256, ""},
      {6100, 256, ""},  // has a name, but not here
      {4999, 256, ""},  // has none
      {1999, 256, "Unknown format"},
  };
  for (const Case& test : cases) {
    char buffer[256] = "stale";
    EXPECT_EQ(FIGetIDString(test.id, buffer, test.size), std::strlen(test.name)) << test.id;
    EXPECT_STREQ(buffer, test.name) << test.id;
  }
  EXPECT_EQ(FIGetIDString(1574, nullptr, 10), 0);
  char untouched[] = "stale";
  EXPECT_EQ(FIGetIDString(1574, untouched, 0), 0);
  EXPECT_STREQ(untouched, "stale");
}

TEST(Exports, IdFileMapsWhatOpeningSays) {
  FormatId id = 77;
  EXPECT_EQ(FIIdFile(kIoSourcePath, "/no/such/file", 0, &id), kFiNotFound);
  EXPECT_EQ(id, 0);
  id = 77;
  EXPECT_EQ(FIIdFile(kIoSourcePath, "/", 0, &id), kFiOpenFailed);
  EXPECT_EQ(id, 0);
  EXPECT_EQ(FIIdFile(999, "/", 0, &id), kFiOpenFailed);
  EXPECT_EQ(FIIdFile(kIoSourcePath, nullptr, 0, nullptr), kFiOpenFailed);

  const IOMemorySource gif = Memory(kGif);
  char name[64] = "stale";
  EXPECT_EQ(FIIdFileEx(kIoSourceMemory, &gif, 0, &id, name, sizeof(name)), 0);
  EXPECT_EQ(id, 1503);
  EXPECT_STREQ(name, "Graphics Interchange Format (GIF)");
  EXPECT_EQ(FIIdFileEx(kIoSourceMemory, &gif, 0, nullptr, nullptr, 0), 0);

  char untouched[] = "stale";
  EXPECT_EQ(FIIdFileEx(kIoSourcePath, "/no/such/file", 0, &id, untouched, sizeof(untouched)), 58);
  EXPECT_STREQ(untouched, "stale");
}

TEST(Exports, IdFileTakesTheExtensionFromTheName) {
  const std::string bytes = "anything";
  FormatId id = 0;
  for (const auto& [name, expected] :
       std::vector<std::pair<const char*, FormatId>>{{"a/b.tga", 1512}, {"b.txt", 1999}}) {
    const IOMemorySource source = Memory(bytes, name);
    EXPECT_EQ(FIIdFile(kIoSourceMemory, &source, 0, &id), 0);
    EXPECT_EQ(id, expected) << name;
  }
}

TEST(Exports, IdHandleWithoutAnythingToWorkOn) {
  FormatId id = 0;
  EXPECT_EQ(FIIdHandle(nullptr, 0, &id), FI_NO_STREAM);
  EXPECT_EQ(id, kFormatUnknown);
  EXPECT_EQ(FIIdHandle(nullptr, 0, nullptr), FI_NO_STREAM);
}

TEST(Exports, IdSpecialIsForOneIdentifier) {
  fi::testing::MemoryHandle handle("begin 644 x\n#!!!!\n`\nend\n");
  EXPECT_EQ(FIIdSpecial(&handle, 4051), 0);
  EXPECT_EQ(handle.reads, 0u);
  EXPECT_EQ(FIIdSpecial(&handle, 4050), 4050);
  EXPECT_EQ(handle.closes, 0u);
  EXPECT_EQ(FIIdSpecial(nullptr, 4050), 0);
}

uint32_t DecliningCallback(uint32_t code, FIPasswordRequest* request, uintptr_t first,
                           uintptr_t second) {
  return code == 7 && first == 8 && second == 9 && request->attempts == 1 ? 3 : 4;
}

TEST(Exports, RelayAsksTheHostAndCounts) {
  FIPasswordRequest request{};
  ASSERT_EQ(UTSetGlobalData(kUtDataPasswordCallback, nullptr), 0u);
  EXPECT_EQ(fi::RelayPasswordRequest(7, &request, 8, 9), kFiNoCallback);
  EXPECT_EQ(request.attempts, 1u);
  FIPasswordCallback slot = DecliningCallback;
  ASSERT_EQ(UTSetGlobalData(kUtDataPasswordCallback, &slot), 0u);
  EXPECT_EQ(fi::RelayPasswordRequest(7, &request, 8, 9), 3u);
  EXPECT_EQ(request.attempts, 2u);
  slot = nullptr;
  EXPECT_EQ(fi::RelayPasswordRequest(7, &request, 8, 9), kFiNoCallback);
  EXPECT_EQ(request.attempts, 3u);
  ASSERT_EQ(UTSetGlobalData(kUtDataPasswordCallback, nullptr), 0u);
}

TEST(Options, Store) {
  UTOptionSet* set = UTGetGlobalOptionSet();
  uint32_t value = 5;
  uint32_t size = sizeof(value);
  EXPECT_NE(UTGetOption(set, 4711, &value, &size), 0u);
  EXPECT_EQ(value, 5u);
  EXPECT_EQ(UTSetOption(set, 4711, &value, 4), 0u);
  value = 6;
  size = 16;
  EXPECT_EQ(UTGetOption(set, 4711, &value, &size), 0u);
  EXPECT_EQ(value, 5u);
  EXPECT_EQ(size, 4u);
  size = 2;
  EXPECT_NE(UTGetOption(set, 4711, &value, &size), 0u);
  EXPECT_NE(UTSetOption(set, 4711, &value, 8), 0u);
  EXPECT_NE(UTGetOption(nullptr, 4711, &value, &size), 0u);
  // The store is finite; what it holds stays readable.
  uint32_t stored = 0;
  for (uint32_t option = 10000; option < 10100; ++option) {
    if (UTSetOption(set, option, &option, 4) == 0) ++stored;
  }
  EXPECT_GE(stored, 32u);
  size = 4;
  EXPECT_EQ(UTGetOption(set, 10000, &value, &size), 0u);
  EXPECT_EQ(value, 10000u);
}

TEST(Strings, ResourcesAreNumberedByBit16) {
  char buffer[64];
  EXPECT_EQ(UTGetString(0x10000 | 1574, buffer, sizeof(buffer), 0), 0u);
  EXPECT_NE(UTGetString(1574, buffer, sizeof(buffer), 0), 0u);
  EXPECT_STREQ(buffer, "");
  EXPECT_NE(UTGetString(0x30000 | 1574, buffer, sizeof(buffer), 0), 0u);
  EXPECT_EQ(UTGetString(0x10000 | 1574, nullptr, 0, 0), 0u);
}

}  // namespace
