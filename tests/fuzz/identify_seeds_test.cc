// The seeds of the fuzz target `identify`: each reaches the format after whose number it is named.
// One that does not is of little use to a fuzzer, and nothing else would tell.
#include <gtest/gtest.h>

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "formatid/formatid.h"
#include "formatid/io.h"
#include "fuzz/identify_input.h"

namespace fi::fuzz {
namespace {

namespace fs = std::filesystem;

// What the target takes the bytes for, and the library for the file.
FormatId Identify(const std::string& bytes) {
  const IdentifyInput input =
      ReadIdentifyInput(reinterpret_cast<const uint8_t*>(bytes.data()), bytes.size());
  const IOMemorySource source = {input.file.data(), input.file.size(), input.name};
  FormatId id = 0;
  EXPECT_EQ(FIIdFile(kIoSourceMemory, &source, input.flags, &id), kFiOk);
  return id;
}

TEST(IdentifySeeds, ReachTheFormatsOfTheirNames) {
  size_t count = 0;
  for (const auto& seed : fs::directory_iterator(FORMATID_SEEDS_DIR "/identify")) {
    const std::string name = seed.path().filename().string();
    std::ifstream stream(seed.path(), std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(stream), {}};
    EXPECT_EQ(std::to_string(Identify(bytes)), name.substr(0, name.find('_'))) << name;
    EXPECT_EQ(name.starts_with("1999_"), bytes.empty()) << name << " reaches no format";
    ++count;
  }
  EXPECT_GT(count, 0u);
}

TEST(IdentifySeeds, FlagsAndNameStandBehindAMark) {
  const struct {
    std::string bytes;
    std::string file;
    const char* name;
    uint32_t flags;
  } cases[] = {
      {"", "", "x", 0x1B},
      {"ab", "ab", "x", 0x1B},
      {"ab\xF1\x1F\x04\x01", "ab", "x.ai", 0x06},
      {"\xF1\x1F\xFF\x0D", "", "x.ai", 0x1F},
      {"ab\xF1\x1F\x04\x01z", "ab\xF1\x1F\x04\x01z", "x", 0x1B},
  };
  for (const auto& test : cases) {
    const IdentifyInput input =
        ReadIdentifyInput(reinterpret_cast<const uint8_t*>(test.bytes.data()), test.bytes.size());
    EXPECT_EQ(input.file, test.file);
    EXPECT_STREQ(input.name, test.name);
    EXPECT_EQ(input.flags, test.flags);
  }
}

}  // namespace
}  // namespace fi::fuzz
