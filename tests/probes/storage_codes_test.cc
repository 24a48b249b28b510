// The probe codes of compound documents lead to their probes.

#include <gtest/gtest.h>

#include <string>

#include "engine/probe_table.h"
#include "tests/support/bytes.h"
#include "tests/support/storage_probe.h"

namespace fi {
namespace {

using testing::Bytes;
using testing::Storage;
using testing::StorageHandle;
using testing::StorageNode;
using testing::Stream;
using testing::Words16;
using testing::Words32;

TEST(StorageCodes, EachLeadsToItsProbe) {
  struct Case {
    uint16_t code;
    StorageNode child;
    FormatId expected;
  };
  const StorageNode notebook = Stream("PerfectOffice_MAIN", Words32({0x00020000, 0x00C91007}));
  const StorageNode visio = Stream("VisioDocument", std::string(24, ' ') + Words32({0x00050000}));
  const StorageNode contact = Stream("__substg1.0_001A001E", "IPM.Contact");
  const Case cases[] = {
      {1082, Stream("Book", Bytes("\x09\x08")), 1424},
      {1143, contact, 1349},
      {1146, Stream("WordDocument", Words16({0, 101})), 1102},
      {1224, Storage("   112"), 1226},
      {1311, contact, 1350},
      {1445, Stream("NativeContent_MAIN", Words32({0x000E0001}) + "QPW9"), 1445},
      {1446, Stream("Workbook", Words16({0, 0, 0, 0, 5110, 1997})), 1451},
      {1447, notebook, 1433},
      {1447, Stream("Other"), 1447},
      {1450, notebook, 1433},
      {1450, Stream("Other"), 1450},
      {1453, notebook, 1433},
      {1453, Stream("Other"), 1453},
      {1569, Stream("Other"), 0},
      {1570, Stream("Other"), 0},
      {1579, Stream("DesignerDoc", std::string(20, '\7')), 1608},
      {1597, visio, 1595},
      {1631, visio, 1595},
      {1807, Stream("Other"), 0},
      {1999, Stream("PP40"), 1538},
      {2202, Stream("Contents", Bytes("\xE8\xAC\x22\x00")), 2201},
  };
  for (const Case& test : cases) {
    SCOPED_TRACE(test.code);
    StorageHandle handle({test.child});
    const ProbeEntry* entry = FindProbe(test.code);
    ASSERT_NE(entry, nullptr);
    SignatureRun run;
    const auto probe = [&](IdentificationStream* stream) -> int64_t {
      run.stream = stream;
      return entry->run({run, test.code});
    };
    EXPECT_EQ(RunOverStorage(probe, handle), test.expected);
    EXPECT_EQ(run.classifierRan, test.code == 1999 ? 1u : 0u);
    EXPECT_EQ(run.status, 0u);
  }
}

}  // namespace
}  // namespace fi
