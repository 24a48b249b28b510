#include "properties/families.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/support/memory_handle.h"
#include "tests/support/samples.h"
#include "tests/support/storage_handle.h"
#include "tests/support/storage_samples.h"
#include "tests/support/zip_writer.h"

namespace fi {
namespace {

using testing::MemoryHandle;
using testing::Sample;

// "name=value; name=value" in the order of the properties.
std::string PropertiesOf(IOHandle* handle, FormatId id) {
  PropertySet properties;
  const ScopedStream stream(handle);
  ReadProperties({stream.get(), id}, properties);
  std::string text;
  for (size_t i = 0; i < kPropertyCount; ++i) {
    const auto property = static_cast<Property>(i);
    if (!properties.Has(property)) continue;
    if (!text.empty()) text += "; ";
    text += std::string(NameOf(property)) + "=" + properties[property].text();
  }
  return text;
}

std::string File(const Sample& sample) {
  const std::string& form = sample.columns[3];
  return form == "package" ? testing::SamplePackage(sample.columns[4])
                           : testing::SampleBytes(sample.columns[4]);
}

TEST(Properties, OfSamples) {
  for (const Sample& sample : testing::ReadSamples("properties.txt", 5)) {
    SCOPED_TRACE(sample.place + " " + sample.columns[1]);
    const auto id = static_cast<FormatId>(sample.Number(0));
    if (sample.columns[3] == "storage") {
      testing::StorageHandle document(testing::SampleStorage(sample.columns[4]));
      EXPECT_EQ(PropertiesOf(&document, id), sample.columns[2]);
      EXPECT_EQ(document.openedFlags.size(), document.closes);
      continue;
    }
    const std::string file = File(sample);
    MemoryHandle whole(file);
    EXPECT_EQ(PropertiesOf(&whole, id), sample.columns[2]);
    MemoryHandle slow(file);
    slow.mostPerRead = 1;
    slow.has64Bit = false;
    EXPECT_EQ(PropertiesOf(&slow, id), sample.columns[2]) << "byte by byte";
  }
}

// A file that is cut tells no more than the whole one, apart from what its damage is.
TEST(Properties, OfCutSamples) {
  for (const Sample& sample : testing::ReadSamples("properties.txt", 5)) {
    if (sample.columns[3] == "storage") continue;
    const std::string file = File(sample);
    const auto id = static_cast<FormatId>(sample.Number(0));
    for (size_t size = 0; size < file.size(); size += 1 + size / 64) {
      MemoryHandle cut(file.substr(0, size));
      const std::string told = PropertiesOf(&cut, id);
      EXPECT_EQ(told.find("encryption=password") != std::string::npos &&
                    sample.columns[2].find("encryption=password") == std::string::npos,
                false)
          << sample.place << " cut to " << size << ": " << told;
    }
  }
}

}  // namespace
}  // namespace fi
