// The supplement for packages, over the samples of tests/data/package_supplement.txt.

#include "probes/package/package_supplement.h"

#include <gtest/gtest.h>

#include <string>

#include "probes/package/dispatcher.h"
#include "tests/support/samples.h"
#include "tests/support/storage_samples.h"
#include "tests/support/zip_writer.h"

namespace fi {
namespace {

using testing::MemoryHandle;
using testing::Sample;
using testing::StorageNode;

// The file of a package, with what the words of `damage` do to it.
std::string File(const std::string& package, const std::string& damage) {
  const auto done = [&](const char* word) { return damage.find(word) != std::string::npos; };
  const testing::ZipMember options{.method = static_cast<uint16_t>(done("stored") ? 0 : 8),
                                   .flags = static_cast<uint16_t>(done("behind") ? 8 : 0)};
  testing::ZipWriter writer;
  for (const StorageNode& node : testing::SampleStorage(package)) {
    testing::ZipWriter inner;
    for (const StorageNode& child : node.children)
      inner.Add(child.name, child.bytes, {.method = 0});
    writer.Add(node.name, node.isStorage ? inner.Finish() : node.bytes, options);
  }
  std::string file = writer.Finish();
  if (done("cut")) file.resize(file.find("PK\1\2"));
  const size_t less = damage.find("less(");
  if (less != std::string::npos) file.resize(file.size() - std::stoul(damage.substr(less + 5)));
  return file;
}

TEST(PackageSupplement, Samples) {
  for (const Sample& sample : testing::ReadSamples("package_supplement.txt", 4, 1)) {
    SCOPED_TRACE(sample.place + " " + sample.columns[1]);
    const std::string file = File(sample.columns[2], sample.columns[3]);
    MemoryHandle whole(file);
    {
      const ScopedStream stream(&whole);
      EXPECT_EQ(PackageProbe(stream.get()).id, 1802) << "not for the supplement";
    }
    whole.reads = 0;
    EXPECT_EQ(PackageSupplement(ScopedStream(&whole).get()), sample.Number(0));

    MemoryHandle slow(file);
    slow.mostPerRead = 1;
    slow.has64Bit = false;
    EXPECT_EQ(PackageSupplement(ScopedStream(&slow).get()), sample.Number(0)) << "byte by byte";
    for (uint64_t call = 1; call <= whole.reads; ++call) {
      MemoryHandle failing(file);
      failing.failingRead = call;
      (void)PackageSupplement(ScopedStream(&failing).get());
    }
  }
}

}  // namespace
}  // namespace fi
