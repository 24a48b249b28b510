// Whole files on their way through the table: each meets the probe of its format, with the place
// and the code that the row names.

#include <gtest/gtest.h>

#include <string>

#include "formatid/formatid.h"
#include "formatid/platform.h"
#include "tests/support/bytes.h"
#include "tests/support/memory_handle.h"
#include "tests/support/probe_run.h"

namespace fi {
namespace {

using testing::BigEndian;
using testing::Bytes;
using testing::File;
using testing::LittleEndian;
using testing::MemoryHandle;

struct RowCase {
  FormatId id;
  uint16_t row;
  std::string file;
};

std::string Font(const std::string& version) {
  const std::string record(12, 'h');
  return version + BigEndian(3, 2) + std::string(6, '\0') + "head" + record + "hhea" + record +
         "name" + record;
}

TEST(ContentRows, LeadToTheirProbes) {
  const std::string eps = "\xC5\xD0\xD3\xC6" + std::string(16, '\0') + LittleEndian(30, 4);
  const std::string marks = "|N@|O" + std::string(100, 'x');
  const RowCase cases[] = {
      {1730, 66, Bytes("OggS\0\2") + std::string(20, '\0') + Bytes("\1\1x")},
      {6100, 67,
       File({{0, "ADSEGMENTEDFILE"}, {24, LittleEndian(1, 4)}, {40, LittleEndian(512, 4)}})},
      {6102, 68, File({{0, "ADCRYPT"}, {8, Bytes("\1\0")}, {22, Bytes("\0\0\1\0\0\0\1\0\0\0")}})},
      {6109, 69, Bytes("EVF\x09\x0D\x0A\xFF\0\1\2\0\0\0")},
      {6103, 70, Bytes("EVF2\x0D\x0A\x81\0\2\1\1\0\1\0\0\0")},
      {6105, 71, Bytes("LVF\x09\x0D\x0A\xFF\0\1\2\0\0\0")},
      {6107, 72, Bytes("LEF2\x0D\x0A\x81\0\2\1\1\0\2\0\0\0")},
      {1601, 155, Bytes("\0\x08\0\0\0\x09\0\0\0\x0A\0\0")},
      {1057, 190, "[encrypt]\r\nkey\r\n" + std::string(120, '\x90')},
      {1010, 201, File({{0, Bytes("S\4\2\1\4\0\0\0\xFD\xFF\1\0")}, {32, Bytes("\1\0\2\0")}})},
      {1504, 216, eps},
      {5004, 220, BigEndian(0, 6) + BigEndian(0x00090009, 4) + BigEndian(0x1101, 2)},
      {1571, 283, "#define a 1\n#define b 1\nstatic char c[] = {\n0, 0, 0};\n"},
      {1724, 291, Bytes("\0\0\0\x10") + "ftypmp42"},
      {2234, 297, "(DWF V06.00)PK"},
      {1196, 388, "BEGIN:VCALENDAR\r\n"},
      {2404, 400, Font(Bytes("\0\1\0\0"))},
      {2406, 401, Font("true")},
      {1021, 407, File({{0, Bytes("t\0")}, {118, Bytes("@\0")}, {120, marks}})},
      {1077, 408, File({{118, marks}})},
      {1136, 440, "<MIFFile JP4.00>\n"},
      {1019, 458, "\x1B[1$K"},
      {1472, 459, "TABLE\nVECTORS\nTUPLES\nDATA\n"},
      {6200, 464, "begin=Head\ntype=ptf\nend=Head\n"},
  };
  for (const RowCase& test : cases) {
    MemoryHandle handle(test.file, "x");
    FormatId id = 0;
    FIEvidence evidence{};
    ASSERT_EQ(FIIdHandleEvidence(&handle, kFiUseFlags, &id, &evidence), 0u);
    EXPECT_EQ(id, test.id);
    EXPECT_EQ(evidence.signature, test.row) << test.id;
  }
}

}  // namespace
}  // namespace fi
