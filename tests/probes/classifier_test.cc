#include "probes/storage/classifier.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "tests/support/bytes.h"
#include "tests/support/storage_probe.h"

namespace fi {
namespace {

using testing::Bytes;
using testing::ExpectOverStorage;
using testing::Storage;
using testing::StorageHandle;
using testing::StorageNode;
using testing::Stream;
using testing::Words16;
using testing::Words32;

int64_t Classify(IdentificationStream* stream) {
  FormatId id = 0xFFFF;
  EXPECT_EQ(ClassifyCompoundDocument(stream, "", &id), 0u);
  return id;
}

const std::string kHwp = "HWP Document File";

TEST(Classifier, EachStreamAndStorageOfTheTable) {
  ExpectOverStorage(
      Classify,
      {
          {"PowerPoint 4", {Stream("PP40")}, 1538},
          {"encrypted, scheme unknown", {Stream("EncryptedPackage")}, 1819},
          {"dual presentation", {Storage("PP97_DUALSTORAGE")}, 1592},
          {"PowerPoint", {Stream("PowerPoint Document", Words16({0x0F}))}, 1600},
          {"Word", {Stream("WordDocument", Words16({0xA5EC, 0x65}))}, 1082},
          {"Quattro Pro 7", {Stream("NOVELL_MAIN")}, 1433},
          {"Presentations", {Stream("PerfectOffice_MAIN", "\xFFWPC......")}, 1555},
          {"Excel 5", {Stream("Book")}, 1424},
          {"Excel 5, upper case", {Stream("BOOK")}, 1424},
          {"Works chart", {Stream("WksSSChart")}, 1460},
          {"Works", {Stream("WksSSWorkBook")}, 1460},
          {"Excel", {Stream("Workbook", Words16({0, 0, 0, 0, 1, 1997}))}, 1446},
          {"Excel, upper case", {Stream("WORKBOOK", Words16({0, 0, 0, 0, 1, 1997}))}, 1446},
          {"Quattro Pro 9", {Stream("NativeContent_MAIN", Words32({1, 2}))}, 1445},
          {"Hangul", {Stream("FileHeader", kHwp)}, 1180},
          {"Works 4 text", {Stream("MN0")}, 1105},
          {"mail item", {Stream("__properties_version1.0")}, 1143},
          {"none of them", {Stream("Contents"), Stream("MN1")}, 0},
          {"empty", {}, 0},
          {"stream where a storage belongs", {Stream("PP97_DUALSTORAGE")}, 0},
          {"storage where a stream belongs", {Storage("PP40"), Storage("Book")}, 0},
          {"names in another case", {Stream("workbook"), Stream("pp40")}, 0},
          {"no storage", {Stream("PP40")}, 0, false},
      });
}

// Children of a document stand in any order; the priority is the table's.
TEST(Classifier, EarlierRowsWin) {
  const std::vector<StorageNode> rows = {
      Stream("PP40"),
      Stream("EncryptedPackage"),
      Storage("PP97_DUALSTORAGE"),
      Stream("PowerPoint Document", Words16({0x03})),
      Stream("WordDocument", Words16({0xA5EC, 0x65})),
      Stream("NOVELL_MAIN"),
      Stream("PerfectOffice_MAIN", "\xFFWPC......"),
      Stream("Book"),
      Stream("WksSSChart"),
      Stream("Workbook", Words16({0, 0, 0, 0, 5110, 1997})),
      Stream("NativeContent_MAIN", Words32({1, 2})),
      Stream("FileHeader", kHwp),
      Stream("VisioDocument", std::string(24, ' ') + Words32({0x00060000})),
      Stream("MN0"),
      Stream("__properties_version1.0"),
  };
  // An encrypted package beside a Word document is Word's.
  const FormatId expected[] = {1538, 1313, 1592, 1543, 1082, 1433, 1555, 1424,
                               1460, 1451, 1445, 1180, 1597, 1105, 1143};
  ASSERT_EQ(rows.size(), std::size(expected));
  for (size_t first = 0; first < rows.size(); ++first) {
    std::vector<StorageNode> children(rows.begin() + static_cast<std::ptrdiff_t>(first),
                                      rows.end());
    std::reverse(children.begin(), children.end());
    StorageHandle handle(children);
    EXPECT_EQ(RunOverStorage(Classify, handle), expected[first]) << rows[first].name;
  }
}

TEST(Classifier, PerfectOffice) {
  const auto main = [](const std::string& bytes) {
    return std::vector<StorageNode>{Stream("PerfectOffice_MAIN", bytes)};
  };
  ExpectOverStorage(
      Classify,
      {
          {"document", main(Bytes("\xFFWPC\x10\x00\x00\x00\x01\x0A")), 1107},
          {"graphic", main(Bytes("\xFFWPC\x10\x00\x00\x00\x01\x16")), 1556},
          {"slide show", main(Bytes("\xFFWPC\x10\x00\x00\x00\x01\x0F")), 1555},
          {"product one byte late", main(Bytes("\xFFWPC\x10\x00\x00\x00\x01\x01\x0A")), 1555},
          {"product missing", main(Bytes("\xFFWPC\x10\x00\x00\x00\x01")), 1555},
          {"cut in the version", main(Bytes("\xFFWPC\x10")), 0},
          {"notebook", main(Bytes("\x00\x00\x02\x00\x07\x10")), 1444},
          {"notebook of another version", main(Bytes("\x00\x00\x02\x00\x10\x07")), 0},
          {"notebook, cut", main(Bytes("\x00\x00\x02\x00\x07")), 0},
          {"mark in the other order", main(Bytes("\x00\x02\x00\x00\x07\x10")), 0},
          {"foreign", main("CPW\xFF......"), 0},
          {"three bytes", main("\xFFWP"), 0},
          {"empty", main(""), 0},
      });
}

TEST(Classifier, PowerPoint) {
  const auto document = [](const std::string& bytes) {
    return std::vector<StorageNode>{Stream("PowerPoint Document", bytes)};
  };
  ExpectOverStorage(Classify, {
                                  {"record 3", document(Words16({3})), 1543},
                                  {"record 0x0103", document(Words16({0x0103})), 1600},
                                  {"record 0", document(Words16({0})), 1600},
                                  {"one byte", document("\x03"), 0},
                                  {"empty", document(""), 0},
                              });
}

// The probe behind answers 1102 for versions 101 to 105 without summary information, and 1146 for
// the rest, so that its part shows.
TEST(Classifier, WordVersions) {
  const auto document = [](const std::string& bytes) {
    return std::vector<StorageNode>{Stream("WordDocument", bytes)};
  };
  ExpectOverStorage(
      Classify,
      {
          {"version 0x65", document(Bytes("\xEC\xA5\x65\x00")), 1082},
          {"version 0x69", document(Bytes("\xEC\xA5\x69\x00")), 1082},
          {"version 0x6A", document(Bytes("\xEC\xA5\x6A\x00")), 1146},
          {"version 0xC1", document(Bytes("\xEC\xA5\xC1\x00")), 1146},
          {"version 0x68FF", document(Bytes("\xEC\xA5\xFF\x68")), 1146},
          {"version 0x6800", document(Bytes("\xEC\xA5\x00\x68")), 1082},
          {"version 0x6900 after no identifier", document(Bytes("\x00\x00\x00\x69")), 1082},
          {"version 0x6900", document(Bytes("\xEC\xA5\x00\x69")), 1146},
          {"three bytes", document(Bytes("\xEC\xA5\xC1")), 0},
          {"the probe sees the summary",
           {Stream("WordDocument", Bytes("\xEC\xA5\xC1\x00")), Stream("\005SummaryInformation")},
           1126},
      });
}

TEST(Classifier, HangulAndQuattroPro9) {
  const auto header = [](const std::string& bytes) {
    return std::vector<StorageNode>{Stream("FileHeader", bytes)};
  };
  const auto native = [](const std::string& bytes) {
    return std::vector<StorageNode>{Stream("NativeContent_MAIN", bytes)};
  };
  ExpectOverStorage(Classify,
                    {
                        {"exactly the two words", header("HWP Docu"), 1180},
                        {"seven bytes", header("HWP Doc"), 0},
                        {"second word differs", header("HWP Dock"), 0},
                        {"first word differs", header("HWP-Docu"), 0},
                        {"the notebook's marks", native(Words32({0xE0001, 0x39575051})), 1445},
                        {"any eight bytes", native("anything"), 1445},
                        {"seven bytes", native("anythin"), 0},
                        {"four bytes", native("anyt"), 0},
                    });
}

TEST(Classifier, RefinesByProbes) {
  const auto visio = [](uint32_t version) {
    return std::vector<StorageNode>{
        Stream("VisioDocument", std::string(24, ' ') + Words32({version}))};
  };
  ExpectOverStorage(
      Classify,
      {
          {"Visio 2003", visio(0x000B0000), 1631},
          {"Visio 5", visio(0x00050000), 1595},
          {"Visio, version unknown", visio(0x00070000), 0},
          {"Visio, cut", {Stream("VisioDocument", "Visio (TM) Drawing")}, 0},
          {"Excel 97", {Stream("Workbook", Words16({0, 0, 0, 0, 6214, 1996}))}, 1438},
          {"Excel 2002", {Stream("Workbook", Words16({0, 0, 0, 0, 6214, 1997}))}, 1448},
          {"contact",
           {Stream("__properties_version1.0"), Stream("__substg1.0_001A001E", "IPM.Contact")},
           1349},
      });
}

}  // namespace
}  // namespace fi
