#include "formatid/properties.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "formatid/identify.h"

namespace {

struct Call {
  FIResult result = FI_RESULT_INIT;
  FIProperties properties = FI_PROPERTIES_INIT;
  uint32_t status = 0;

  std::string Value(const char* name) const {
    for (uint32_t i = 0; i < properties.count; ++i) {
      if (std::strcmp(properties.items[i].name, name) == 0) return properties.items[i].value;
    }
    return "";
  }
};

Call Identify(const std::string& bytes, uint64_t bytesRead = 0) {
  Call call;
  FIRequest request = FI_REQUEST_INIT;
  request.source.kind = kFiSourceMemory;
  request.source.data = bytes.data();
  request.source.size = bytes.size();
  request.limits.bytesRead = bytesRead;
  request.properties = &call.properties;
  call.status = FIIdentify(&request, &call.result);
  return call;
}

const std::string kJpeg(
    "\xFF\xD8\xFF\xE0\x00\x10JFIF\x00\x01\x02\x00\x00\x01\x00\x01\x00\x00\xFF\xDB"
    "\x00\x43",
    24);

TEST(PropertiesOfTheCall, StandBesideTheAnswer) {
  const Call call = Identify(kJpeg);
  EXPECT_EQ(call.status, kFiOk);
  EXPECT_EQ(call.result.id, 1535);
  EXPECT_EQ(call.Value("version"), "1.02");
  EXPECT_EQ(call.Value("profile"), "JFIF");
  EXPECT_STREQ(call.properties.puid, "fmt/44");
  ASSERT_GT(call.properties.count, 0u);
  EXPECT_EQ(call.properties.items[0].offset, 2);
  EXPECT_STREQ(call.properties.items[0].place, "application segment");
}

TEST(PropertiesOfTheCall, KeepToTheLimitsAndChangeNoAnswer) {
  const std::string text = std::string(4000, 'a') + "\n" + std::string(4000, 'b');
  const Call whole = Identify(text);
  EXPECT_EQ(whole.Value("line_ends"), "lf");
  // As much as the identification itself reads: nothing is left for properties.
  const Call bounded = Identify(text, whole.result.spent.bytesRead);
  EXPECT_EQ(bounded.status, whole.status);
  EXPECT_EQ(bounded.result.id, whole.result.id);
}

TEST(PropertiesOfTheCall, RecordOfAnotherSizeIsRefused) {
  FIRequest request = FI_REQUEST_INIT;
  FIResult result = FI_RESULT_INIT;
  FIProperties properties = FI_PROPERTIES_INIT;
  request.source.kind = kFiSourceMemory;
  request.properties = &properties;
  for (const uint32_t size : {0u, 7u, static_cast<uint32_t>(sizeof(properties)) + 1}) {
    properties.size = size;
    EXPECT_EQ(FIIdentify(&request, &result), kFiInvalidRequest) << size;
  }
  properties = FI_PROPERTIES_INIT;
  properties.count = 9;
  EXPECT_EQ(FIIdentify(&request, &result), kFiOk);
  EXPECT_EQ(properties.count, 0u) << "of an empty file";
}

TEST(PropertiesOfTheCall, NamesAreDifferentAndEnd) {
  uint32_t count = 0;
  while (FIPropertyName(count) != nullptr) {
    for (uint32_t i = 0; i < count; ++i) EXPECT_STRNE(FIPropertyName(i), FIPropertyName(count));
    ++count;
  }
  EXPECT_LE(count, static_cast<uint32_t>(kFiMaxProperties));
  const std::string version = FIRegistryVersion();
  EXPECT_TRUE(version.starts_with(std::string(FIVersion()) + "-")) << version;
  EXPECT_EQ(version.size(), std::strlen(FIVersion()) + 17);
}

}  // namespace
