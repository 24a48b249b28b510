// The probes of packages through their dispatcher, over the samples of tests/data/packages.txt.

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "probes/package/dispatcher.h"
#include "probes/package/package_supplement.h"
#include "tests/support/samples.h"
#include "tests/support/storage_samples.h"
#include "tests/support/zip_writer.h"

namespace fi {
namespace {

using testing::MemoryHandle;
using testing::Sample;
using testing::SamplePackage;
using testing::SampleStorage;
using testing::StorageHandle;
using testing::StorageNode;

struct Found {
  int id;
  uint32_t status;

  friend bool operator==(const Found&, const Found&) = default;
};

Found RunPackage(IOHandle* handle) {
  const ScopedStream stream(handle);
  const PackageFormat format = PackageProbe(stream.get());
  return {format.id, format.status};
}

// Whatever the answer is, what was opened is closed, members first.
Found RunDouble(StorageHandle& handle) {
  const Found answer = RunPackage(&handle);
  EXPECT_EQ(handle.openedFlags.size(), handle.closes);
  EXPECT_EQ(handle.closedEarly, 0u);
  return answer;
}

TEST(PackageProbes, Samples) {
  for (const Sample& sample : testing::ReadSamples("packages.txt", 5, 1)) {
    SCOPED_TRACE(sample.place + " " + sample.columns[2]);
    const Found expected{sample.Number(0), static_cast<uint32_t>(sample.Number(1))};
    const std::vector<StorageNode> package = SampleStorage(sample.columns[3]);
    StorageHandle whole(package);
    EXPECT_EQ(RunDouble(whole), expected);
    const std::string members =
        sample.columns[4].empty() ? whole.openedMembers : " " + sample.columns[4];
    EXPECT_EQ(whole.openedMembers, members);
    MemoryHandle zip(SamplePackage(sample.columns[3]));
    EXPECT_EQ(RunPackage(&zip), expected) << "as a ZIP file";

    StorageHandle slow(package);
    slow.mostPerRead = 1;
    slow.has64Bit = false;
    EXPECT_EQ(RunDouble(slow), expected) << "byte by byte";

    for (uint64_t call = 1; call <= whole.openCalls; ++call) {
      StorageHandle failing(package);
      failing.failingOpen = call;
      (void)RunDouble(failing);
    }
    for (uint64_t call = 1; call <= whole.reads; ++call) {
      StorageHandle failing(package);
      failing.failingRead = call;
      (void)RunDouble(failing);
    }
  }
}

TEST(PackageProbes, LargePackagesAreReadInPlaces) {
  testing::ZipWriter writer;
  writer.Add("word/media/film.avi", std::string(20 << 20, 'x'), {.method = 0});
  for (const StorageNode& member : SampleStorage("$WORD_2016")) {
    writer.Add(member.name, member.bytes);
  }
  MemoryHandle handle(writer.Finish());
  EXPECT_EQ(RunPackage(&handle), (Found{1384, 0}));
  EXPECT_LE(handle.bytesRead, 64u * 1024);
}

std::vector<StorageNode> IndexPackage(const std::string& index) {
  std::vector<StorageNode> package = SampleStorage("$BUILDS; 'index.xml'=");
  package.back().bytes = index;
  return package;
}

// The index of a document in XML is cut off, so that an element inside the root may be the last
// one. Where that stands among others makes no difference, nor what only looks like one.
TEST(PackageProbes, LastElementOfAnIndex) {
  constexpr const char* kRoot = "<sl:document xmlns:sl='http://developer.apple.com/namespaces/sl'";
  const struct {
    const char* what;
    std::string attributes;
    std::string tag;
    int id;
  } cases[] = {
      {"prefix", " xmlns:n='http://developer.apple.com/namespaces/ls'", "<n:document/>", 1485},
      {"long prefix",
       " xmlns:" + std::string(90, 'n') + "='http://developer.apple.com/namespaces/ls'",
       "<" + std::string(90, 'n') + ":document/>", 1485},
      {"no prefix", "", "<presentation\nxmlns='http://developer.apple.com/namespaces/keynote2'>",
       2231},
      {"end tag only", "", "</sl:document><!--", 1367},
      {"cut tag", " xmlns:n='http://developer.apple.com/namespaces/ls'", "<n:document", 1367},
      {"attribute", " xmlns:n='http://developer.apple.com/namespaces/ls'",
       "<a n:document ='' b='<n:document/>'", 1367},
      {"comment", " xmlns:n='http://developer.apple.com/namespaces/ls'", "<!--<n:document/>-->",
       1367},
      {"longer name", " xmlns:n='http://developer.apple.com/namespaces/ls'", "<n:documents/>",
       1367},
      {"behind a fault", " xmlns:n='http://developer.apple.com/namespaces/ls'", "</a><n:document/>",
       1367},
  };
  for (const auto& each : cases) {
    for (size_t size = 65300; size < 65700; size += size < 65400 || size > 65600 ? 97 : 1) {
      std::string index = kRoot + each.attributes + ">";
      index.append(size - index.size(), ' ').append(each.tag);
      StorageHandle handle(IndexPackage(index));
      ASSERT_EQ(RunDouble(handle), (Found{each.id, 0})) << each.what << " at " << size;
    }
  }
}

// The names in it cannot be found as bytes.
TEST(PackageProbes, IndexInUtf16) {
  std::string index = "\xFF\xFE";
  for (const char c :
       std::string("<sl:document xmlns:sl='http://developer.apple.com/namespaces/sl'>"
                   "<document xmlns='http://developer.apple.com/namespaces/ls'/>")) {
    index += {c, '\0'};
  }
  StorageHandle handle(IndexPackage(index));
  EXPECT_EQ(RunDouble(handle), (Found{1485, 0}));
}

TEST(PackageProbes, FilesThatAreNoPackage) {
  MemoryHandle handle("PK\x03\x04 and nothing else");
  EXPECT_EQ(RunPackage(&handle), (Found{1802, 0}));

  IOHandleOperations careless = *handle.operations;
  careless.open = [](IOHandle*, IOHandle**, uint32_t, const void*, uint32_t) -> int32_t {
    return 0;
  };
  handle.operations = &careless;
  EXPECT_EQ(RunPackage(&handle), (Found{1802, 0})) << "a host that opens nothing, and says it did";
  EXPECT_EQ(PackageSupplement(ScopedStream(&handle).get()), kNoMatch);
  EXPECT_EQ(handle.closes, 0u);
}

}  // namespace
}  // namespace fi
