// One file, one answer: whatever the source is, and however little of it is known at first.

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <cstring>
#include <iostream>
#include <map>
#include <string>
#include <vector>

#include "formatid/identify.h"
#include "tests/support/source_files.h"

namespace fi {
namespace {

using testing::SourceFile;

FIResult Identify(const FISource& source, uint32_t flags = kFiEverything) {
  FIRequest request = FI_REQUEST_INIT;
  request.flags = flags;
  request.source = source;
  FIResult result = FI_RESULT_INIT;
  EXPECT_EQ(FIIdentify(&request, &result), result.status);
  return result;
}

std::string Describe(const FIResult& result) {
  return std::to_string(result.status) + ' ' + std::to_string(result.id) + " basis " +
         std::to_string(result.basis) + " row " + std::to_string(result.row) + " fit " +
         std::to_string(result.extensionFit) + ' ' + result.name;
}

// A host that reads a file of its own, in pieces.
struct Host {
  const std::string& bytes;
  uint32_t mostPerRead;
  uint64_t calls = 0;

  static int32_t ReadAt(void* context, uint64_t offset, void* buffer, uint32_t size,
                        uint32_t* count) {
    auto* host = static_cast<Host*>(context);
    ++host->calls;
    if (offset >= host->bytes.size()) return 0;
    // A grain of 0: reads as short as they come.
    const uint64_t most = host->mostPerRead != 0 ? host->mostPerRead : 1 + host->calls * 37 % 500;
    const uint64_t left = host->bytes.size() - offset;
    *count = static_cast<uint32_t>(std::min({uint64_t{size}, left, most}));
    std::memcpy(buffer, host->bytes.data() + offset, *count);
    return 0;
  }
};

FISource Named(uint32_t kind, const SourceFile& file) {
  FISource source{};
  source.kind = kind;
  source.name = file.name.c_str();
  source.size = file.bytes.size();
  return source;
}

FIResult ByCallbacks(const SourceFile& file, uint32_t grain, bool tellsSize) {
  Host host{file.bytes, grain};
  FISource source = Named(kFiSourceCallbacks, file);
  source.readAt = Host::ReadAt;
  source.context = &host;
  if (!tellsSize) source.size = FI_UNKNOWN_SIZE;
  return Identify(source);
}

// Begins with nothing, and gets what each answer wants.
FIResult BySteps(const SourceFile& file, bool tellsSize, uint64_t* got, uint64_t* steps) {
  std::vector<FIPart> parts;
  FISource source = Named(kFiSourceParts, file);
  if (!tellsSize) source.size = FI_UNKNOWN_SIZE;
  for (;;) {
    source.parts = parts.data();
    source.partCount = static_cast<uint32_t>(parts.size());
    const FIResult result = Identify(source);
    if (result.more == kFiMoreNone) return result;
    ++*steps;
    if (result.more == kFiMoreSize) {
      EXPECT_EQ(source.size, FI_UNKNOWN_SIZE) << file.name;
      source.size = file.bytes.size();
      continue;
    }
    const uint64_t from = result.wantedOffset;
    for (const FIPart& part : parts) {
      const bool known = from >= part.offset && from - part.offset < part.size;
      EXPECT_FALSE(known) << file.name << ": wants again what it was given";
      if (known) return result;
    }
    if (from >= file.bytes.size()) {
      // Behind the end of a file whose size was not told.
      EXPECT_EQ(source.size, FI_UNKNOWN_SIZE) << file.name;
      source.size = file.bytes.size();
      continue;
    }
    const uint64_t size = std::min<uint64_t>(result.wantedSize, file.bytes.size() - from);
    EXPECT_TRUE(size > 0 && (!tellsSize || size == result.wantedSize)) << file.name;
    parts.push_back({from, size, file.bytes.data() + from});
    *got += size;
  }
}

struct Tally {
  std::map<std::string, uint64_t> equal;
  uint64_t stepBytes = 0;
  uint64_t steps = 0;
  uint64_t allBytes = 0;
};

void CompareSources(const std::string& path, const SourceFile& file, Tally* tally) {
  FISource source{};
  source.kind = kFiSourcePath;
  source.path = path.c_str();
  const FIResult expected = Identify(source);
  EXPECT_TRUE(expected.id == kFormatUnknown || expected.basis != kFiBasisNone) << path;
  const auto compare = [&](const char* kind, const FIResult& result) {
    EXPECT_EQ(Describe(result), Describe(expected)) << kind << ": " << path;
    EXPECT_EQ(result.more, kFiMoreNone) << kind << ": " << path;
    if (Describe(result) == Describe(expected)) ++tally->equal[kind];
  };

  std::vector<uint16_t> wide(path.begin(), path.end());
  wide.push_back(0);
  const bool isAscii = std::all_of(path.begin(), path.end(), [](char c) { return c > 0; });
  source.kind = kFiSourceWidePath;
  source.widePath = wide.data();
  if (isAscii) compare("UTF-16 path", Identify(source));

  source = Named(kFiSourceMemory, file);
  source.data = file.bytes.data();
  compare("memory", Identify(source));

  source = Named(kFiSourceDescriptor, file);
  source.descriptor = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
  compare("descriptor", Identify(source));
  ::close(source.descriptor);

  compare("callbacks, 1 byte", ByCallbacks(file, 1, true));
  compare("callbacks, 7 bytes", ByCallbacks(file, 7, true));
  compare("callbacks, 4,099 bytes", ByCallbacks(file, 4099, true));
  compare("callbacks, all at once", ByCallbacks(file, UINT32_MAX, true));
  compare("callbacks, short reads", ByCallbacks(file, 0, true));
  compare("callbacks, size not told", ByCallbacks(file, UINT32_MAX, false));
  compare("beginnings", BySteps(file, true, &tally->stepBytes, &tally->steps));
  uint64_t unused = 0;
  compare("beginnings, size not told", BySteps(file, false, &unused, &unused));
  tally->allBytes += file.bytes.size();
}

void Print(const Tally& tally, uint64_t files) {
  std::cout << files << " files\n";
  for (const auto& [kind, count] : tally.equal) std::cout << "  " << count << "  " << kind << '\n';
  std::cout << "  beginnings: " << tally.steps << " requests, " << tally.stepBytes << " of "
            << tally.allBytes << " bytes\n";
}

TEST(Sources, SamplesAnswerTheSame) {
  const testing::TemporaryFolder folder;
  const std::vector<SourceFile> files = testing::SampleFiles();
  ASSERT_GT(files.size(), 300u);
  Tally tally;
  for (const SourceFile& file : files) CompareSources(folder.Write(file).string(), file, &tally);
  Print(tally, files.size());
}

TEST(Sources, CorpusAnswersTheSame) {
  const std::vector<std::filesystem::path> paths = testing::CorpusFiles();
  if (paths.empty()) GTEST_SKIP() << "no corpus";
  Tally tally;
  for (const std::filesystem::path& path : paths) {
    CompareSources(path.string(), {path.filename().string(), testing::ReadFile(path)}, &tally);
  }
  Print(tally, paths.size());
}

// The answers are those of the exports, but for the statuses that only the call has.
TEST(Sources, AnswersAreThoseOfTheExports) {
  const testing::TemporaryFolder folder;
  for (const SourceFile& file : testing::SampleFiles()) {
    const std::string path = folder.Write(file).string();
    FISource source{};
    source.kind = kFiSourcePath;
    source.path = path.c_str();
    for (const uint32_t flags : {uint32_t{0}, uint32_t{kFiTextFallback}, uint32_t{kFiEverything}}) {
      FormatId id = 0;
      const uint16_t status = FIIdFile(kIoSourcePath, path.c_str(), flags, &id);
      const FIResult result = Identify(source, flags);
      EXPECT_EQ(result.id, id != 0 ? id : FormatId{kFormatUnknown}) << file.name;
      EXPECT_TRUE(result.status == status || (status == 0 && result.status == kFiPasswordNeeded))
          << file.name << ' ' << status << ' ' << result.status;
    }
  }
}

// A name of the request stands for that of the path.
TEST(Sources, NameDecidesTheExtension) {
  const testing::TemporaryFolder folder;
  const std::string path = folder.Write({"upload.tmp", "GIF89a"}).string();
  FISource source{};
  source.kind = kFiSourcePath;
  source.path = path.c_str();
  EXPECT_EQ(Identify(source).extensionFit, kFiFitsNot);
  source.name = "dir/picture.GIF";
  EXPECT_EQ(Identify(source).extensionFit, kFiFits);
  source.name = "picture";
  EXPECT_EQ(Identify(source).extensionFit, kFiFitUnknown);
}

}  // namespace
}  // namespace fi
