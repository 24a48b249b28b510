#include "probes/storage/word_fib.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/support/bytes.h"
#include "tests/support/storage_probe.h"

namespace fi {
namespace {

using testing::ExpectOverStorage;
using testing::Patch;
using testing::Storage;
using testing::StorageHandle;
using testing::StorageNode;
using testing::Stream;
using testing::Words16;
using testing::Words32;

constexpr uint32_t kSection = 48;

struct Property {
  uint32_t id;
  std::string text;
};

// A property set of one section that holds these strings.
std::string Summary(const std::vector<Property>& properties) {
  const auto count = static_cast<uint32_t>(properties.size());
  std::string table;
  std::string values;
  for (const Property& property : properties) {
    const auto offset = static_cast<uint32_t>(8 + 8 * count + values.size());
    table += Words32({property.id, offset});
    values += Words32({30, static_cast<uint32_t>(property.text.size() + 1)});
    values += property.text + std::string(4 - property.text.size() % 4, '\0');
  }
  return testing::File(
      {{0, Words32({0x0000FFFE})},
       {kSection - 4, Words32({kSection})},
       {kSection, Words32({static_cast<uint32_t>(table.size() + values.size()) + 8, count})},
       {kSection + 8, table + values}},
      0, '\0');
}

StorageNode SummaryStream(const std::string& bytes) {
  return Stream("\005SummaryInformation", bytes);
}

std::vector<StorageNode> Named(const std::string& application) {
  return {SummaryStream(Summary({{2, "A title"}, {18, application}, {4, "An author"}}))};
}

// With a file-information block of this product version.
std::vector<StorageNode> NamedWithBlock(const std::string& application, uint16_t product) {
  std::vector<StorageNode> children = Named(application);
  children.push_back(Stream("WordDocument", Words16({0xA5EC, 0xC1, product})));
  return children;
}

TEST(WordFib, ApplicationNames) {
  ExpectOverStorage(
      ProbeWordFib,
      {
          {"6.0", Named("Microsoft Word 6.0"), 1082},
          {"8.0", Named("Microsoft Word 8.0"), 1126},
          {"9.0", Named("Microsoft Word 9.0"), 1146},
          {"10.0", Named("Microsoft Word 10.0"), 1185},
          {"10.1", Named("Microsoft Word 10.1"), 1185},
          {"11.5", Named("Microsoft Word 11.5"), 1186},
          {"for Windows 95", Named("Microsoft Word for Windows 95"), 1082},
          {"for Windows 96", Named("Microsoft Word for Windows 96"), 1146},
          {"for, cut", {SummaryStream(Summary({{18, "Microsoft Word for"}}))}, 1146},
          {"the name decides, not the block", NamedWithBlock("Microsoft Word 8.0", 0x6000), 1126},
          {"for Windows 96 asks no block", NamedWithBlock("Microsoft Word for Windows 96", 0),
           1146},
      });
}

TEST(WordFib, ProductVersions) {
  ExpectOverStorage(
      ProbeWordFib,
      {
          {"2003", NamedWithBlock("Microsoft Office Word", 0x6000), 1186},
          {"below 2003", NamedWithBlock("Microsoft Office Word", 0x5FFF), 1185},
          {"2002", NamedWithBlock("Microsoft Office Word", 0x4000), 1185},
          {"below 2002", NamedWithBlock("Microsoft Office Word", 0x3FFF), 1146},
          {"2000", NamedWithBlock("Microsoft Office Word", 0x2000), 1146},
          {"below 2000", NamedWithBlock("Microsoft Office Word", 0x1FFF), 1126},
          {"12.0 is no known version", NamedWithBlock("Microsoft Word 12.0", 0x1000), 1126},
          {"10 without its stop", NamedWithBlock("Microsoft Word 10", 0x1000), 1126},
          {"short name", NamedWithBlock("Writer", 0x2000), 1146},
          {"no block", Named("Microsoft Office Word"), 1146},
          {"empty block", {Named("Microsoft Office Word")[0], Stream("WordDocument")}, 1186},
          {"half a version",
           {Named("Microsoft Office Word")[0], Stream("WordDocument", Words16({0, 0}) + "\x10")},
           1186},
      });
}

// A value that reaches past the end of the stream, or of 32 bits, is a name that tells nothing.
TEST(WordFib, NamesOutOfReach) {
  for (const uint32_t offset : {0x1000u, 0x7FFFFFFFu, 0x80000000u, 0xFFFFFFFFu}) {
    std::string summary = Summary({{18, "Microsoft Word 9.0"}});
    summary.replace(kSection + 12, 4, Words32({offset}));
    ExpectOverStorage(
        ProbeWordFib,
        {{"far", {SummaryStream(summary), Stream("WordDocument", Words16({0, 0, 0x4000}))}, 1185}});
  }
}

TEST(WordFib, LaterPropertiesOverride) {
  const Property nine{18, "Microsoft Word 9.0"};
  const Property ten{18, "Microsoft Word 10.0"};
  const Property keep{18, "Microsoft Word for Windows 96"};
  const Property other{18, "Microsoft Office Word"};
  const StorageNode block = Stream("WordDocument", Words16({0, 0, 0x6000}));
  ExpectOverStorage(
      ProbeWordFib,
      {
          {"ten, nine", {SummaryStream(Summary({ten, {2, "title"}, nine}))}, 1146},
          {"nine, ten", {SummaryStream(Summary({nine, {2, "title"}, ten}))}, 1185},
          {"ten, keep", {SummaryStream(Summary({ten, keep}))}, 1185},
          {"ten, block", {SummaryStream(Summary({ten, other})), block}, 1186},
          {"ten, block, keep", {SummaryStream(Summary({ten, other, keep})), block}, 1186},
          {"block, ten", {SummaryStream(Summary({other, ten})), block}, 1185},
          {"ten, no block", {SummaryStream(Summary({ten, other}))}, 1185},
      });
}

TEST(WordFib, DamagedSummaries) {
  const std::string nine = Summary({{18, "Microsoft Word 9.0"}, {2, "title"}});
  const auto patched = [&](const Patch& patch) {
    std::string bytes = nine;
    bytes.replace(patch.offset, patch.bytes.size(), patch.bytes);
    return std::vector<StorageNode>{SummaryStream(bytes)};
  };
  const auto cut = [&](size_t size) {
    return std::vector<StorageNode>{SummaryStream(nine.substr(0, size))};
  };
  ExpectOverStorage(
      ProbeWordFib,
      {
          {"whole", cut(nine.size()), 1146},
          {"empty", cut(0), 1126},
          {"mark cut", cut(3), 1126},
          {"other mark", patched({0, Words32({0xFEFF})}), 1146},
          {"other version", patched({0, Words32({0x1FFFE})}), 1146},
          {"section offset cut", cut(kSection - 1), 1126},
          {"count cut", cut(kSection + 7), 1126},
          {"no properties", patched({kSection + 4, Words32({0})}), 1146},
          {"table cut", cut(kSection + 8 + 15), 1126},
          {"more properties than bytes", patched({kSection + 4, Words32({200})}), 1126},
          {"section past the end", patched({kSection - 4, Words32({0xFFFFFFFF})}), 1126},
          {"count of 17 bits", patched({kSection + 4, Words32({0x10001})}), 1126},
      });
}

TEST(WordFib, WithoutSummary) {
  const auto word = [](const std::string& bytes) {
    return std::vector<StorageNode>{Stream("WordDocument", bytes)};
  };
  std::string primary = Words32({0, 0, 76});
  for (const char c : std::string("{C73DFACD-061F-43B0-8B64-0C620D2A8B50}")) {
    primary += Words16({static_cast<uint8_t>(c)});
  }
  const StorageNode managed =
      Storage("\006DataSpaces",
              {Storage("TransformInfo",
                       {Storage("DRMEncryptedTransform", {Stream("\006Primary", primary)})})});
  ExpectOverStorage(
      ProbeWordFib,
      {
          {"version 100", word(Words16({0, 100})), 1146},
          {"version 101", word(Words16({0, 101})), 1102},
          {"version 105", word(Words16({0, 105})), 1102},
          {"version 106", word(Words16({0, 106})), 1146},
          {"version cut", word(Words16({0}) + "e"), 1146},
          {"empty", word(""), 1146},
          {"encrypted package", {Stream("EncryptedPackage")}, 1313},
          {"rights-managed package", {Stream("EncryptedPackage"), managed}, 1318},
          {"the document wins", {Stream("EncryptedPackage"), word(Words16({0, 101}))[0]}, 1102},
          {"nothing", {}, 1146},
          {"no storage", {Stream("EncryptedPackage")}, 1146, false},
      });
}

// The offset wraps to the "9.0" that stands in the header where positions are counted in 32 bits.
TEST(WordFib, OffsetsDoNotWrap) {
  std::string summary = Summary({{18, "Microsoft Word 10.0"}});
  summary.replace(30, 3, "9.0");
  summary.replace(kSection + 12, 4, Words32({0xFFFFFFFF - kSection + 1 + 30 - 23}));
  ExpectOverStorage(
      ProbeWordFib,
      {{"wraps", {SummaryStream(summary), Stream("WordDocument", Words16({0, 0, 0x4000}))}, 1185}});
}

TEST(WordFib, MoreThanCanBeCounted) {
  for (const uint32_t count : {0xFFFFu, 0x10000u}) {
    std::string summary = testing::File(
        {{0, Words32({0x0000FFFE})}, {kSection - 4, Words32({kSection, 0, count})}}, 0, '\0');
    summary.resize(summary.size() + 8 * size_t{count});
    StorageHandle handle({SummaryStream(summary)});
    EXPECT_EQ(RunOverStorage(ProbeWordFib, handle), count == 0xFFFF ? 1146 : 1126);
  }
}

// The largest table that can be counted, all of it names that lie apart, on which a walk by refills
// of the buffer would read 260 MB.
TEST(WordFib, ReadsALargeTableOnce) {
  constexpr uint32_t kCount = 0xFFFF;
  std::string summary = testing::File(
      {{0, Words32({0x0000FFFE})}, {kSection - 4, Words32({kSection, 0, kCount})}}, 0, '\0');
  for (uint32_t i = 0; i < kCount; ++i) summary += Words32({18, i % 2 == 0 ? 8u : 500000u});
  StorageHandle handle({SummaryStream(summary), Stream("WordDocument", Words16({0, 0, 0x4000}))});
  EXPECT_EQ(RunOverStorage(ProbeWordFib, handle), 1185);
  EXPECT_LE(handle.state.bytesRead, 3 * summary.size());
  EXPECT_EQ(handle.state.opens, 2u);
}

}  // namespace
}  // namespace fi
