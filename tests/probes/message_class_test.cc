#include "probes/storage/message_class.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/support/storage_probe.h"

namespace fi {
namespace {

using testing::ExpectOverStorage;
using testing::StorageHandle;
using testing::StorageNode;
using testing::Stream;

constexpr char kNarrow[] = "__substg1.0_001A001E";
constexpr char kWide[] = "__substg1.0_001A001F";

int64_t AsMessage(IdentificationStream* stream) { return MapMessageClass(stream, 1143); }
int64_t AsTemplate(IdentificationStream* stream) { return MapMessageClass(stream, 1311); }
int64_t AsOther(IdentificationStream* stream) { return MapMessageClass(stream, 7); }

void Check(const char* name, const std::vector<StorageNode>& children, FormatId message,
           FormatId itemTemplate) {
  ExpectOverStorage(AsMessage, {{name, children, message}});
  ExpectOverStorage(AsTemplate, {{name, children, itemTemplate}});
  ExpectOverStorage(AsOther, {{name, children, itemTemplate}});
}

std::string Widened(const std::string& text) {
  std::string wide;
  for (const char c : text) {
    wide.push_back(c);
    wide.push_back('\0');
  }
  return wide;
}

TEST(MessageClass, Prefixes) {
  struct Case {
    const char* text;
    FormatId message;
    FormatId itemTemplate;
  };
  const Case cases[] = {
      {"IPM.Contact", 1349, 1350},
      {"IPM.Contact.Company", 1349, 1350},
      {"ipm.appointment", 1345, 1346},
      {"IPM.Schedule.Meeting.Request", 1345, 1346},
      {"IPM.OLE.CLASS.{00061055-0000-0000-C000-000000000046}", 1345, 1346},
      {"IPM.Note.NDR", 1357, 1358},
      {"IPM.Note.SMIME", 1365, 1366},
      {"IPM.Note.SMIME.MultipartSigned", 1363, 1364},
      {"IPM.Note.SMIME.MultipartSignature", 1365, 1366},
      {"IPM.Note.SMIMEMultipartSigned", 1365, 1366},
      {"IPM.Activity", 1347, 1348},
      {"IPM.DistList", 1361, 1362},
      {"IPM.Post.RSS", 1359, 1360},
      {"IPM.StickyNote", 1351, 1352},
      {"IPM.Task", 1353, 1354},
      {"IPM.TaskRequest.Accept", 1353, 1354},
      {"REPORT.IPM.Note.NDR", 1357, 1358},
      // Classes that have no identifier of their own.
      {"IPM.Note", 1143, 1311},
      {"IPM.Note.", 1143, 1311},
      {"IPM.Note.Rules.OofTemplate", 1143, 1311},
      {"IPM.Schedule", 1143, 1311},
      {"IPM", 1143, 1311},
      {"IPM.", 1143, 1311},
      {"XIPM.Contact", 1143, 1311},
      {"Contact", 1143, 1311},
      {"REPORT.IPM.Note.IPNRN", 1143, 1311},
      {"REPORT.IPM.Contact", 1143, 1311},
      {"", 1143, 1311},
      // The digit "0" is dropped wherever it stands.
      {"0IPM.Con0tact", 1349, 1350},
      {"IPM.Note0.NDR", 1357, 1358},
      {"IPM.1Contact", 1143, 1311},
  };
  for (const Case& test : cases) {
    Check(test.text, {Stream(kNarrow, test.text)}, test.message, test.itemTemplate);
  }
}

TEST(MessageClass, WhichStream) {
  Check("neither", {Stream("__substg1.0_0037001E", "IPM.Contact")}, 1143, 1311);
  Check("UTF-16", {Stream(kWide, Widened("IPM.Contact"))}, 1143, 1311);
  Check("8-bit text under the other name", {Stream(kWide, "IPM.Contact")}, 1349, 1350);
  Check("8-bit text first", {Stream(kWide, "IPM.Task"), Stream(kNarrow, "IPM.Post")}, 1359, 1360);
}

TEST(MessageClass, ReadsNoMoreThanItNeeds) {
  StorageHandle text({Stream(kNarrow, std::string(1 << 20, 'x'))});
  EXPECT_EQ(RunOverStorage(AsMessage, text), 1143);
  EXPECT_LE(text.state.bytesRead, 256u);
  StorageHandle zeros({Stream(kNarrow, std::string(1 << 20, '0') + "IPM.Contact")});
  EXPECT_EQ(RunOverStorage(AsMessage, zeros), 1143);
  EXPECT_LE(zeros.state.bytesRead, 64u * 1024);
}

}  // namespace
}  // namespace fi
