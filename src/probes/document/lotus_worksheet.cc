#include "probes/document/lotus_worksheet.h"

#include "probes/image/icon.h"
#include "probes/image/tga.h"
#include "registry/format_ids.h"
#include "stream/file_bytes.h"

namespace fi {
namespace {

// Versions of worksheets: 0404 and up, 8006 for format files.
constexpr uint32_t kLowestVersion = 0x0100;

// Records are an opcode, a length and that many bytes; the last is opcode 1 without any.
constexpr int64_t kFirstRecord = 6;
constexpr int64_t kRecordHeaderSize = 4;
constexpr uint32_t kLastOpcode = 1;
constexpr uint32_t kOpcodeLimit = 0x0100;
constexpr uint32_t kMaxRecordSize = 4096;

// How many records behind the version prove a worksheet that does not end before.
constexpr uint32_t kRecords = 5;

bool HasRecords(IdentificationStream* stream) {
  const uint64_t size = FileSize(stream);
  int64_t position = kFirstRecord;
  for (uint32_t i = 0; i < kRecords; ++i) {
    const FileBytes<kRecordHeaderSize> record(stream, position);
    if (record.size() < kRecordHeaderSize) return false;
    const uint32_t length = record.WordLE(2);
    if (record.WordLE(0) == kLastOpcode && length == 0) return i > 0;
    if (record.WordLE(0) >= kOpcodeLimit || length > kMaxRecordSize) return false;
    position += kRecordHeaderSize + length;
    if (static_cast<uint64_t>(position) > size) return false;
  }
  return true;
}

}  // namespace

FormatId LotusWorksheetProbe(IdentificationStream* stream) {
  const FileBytes<2> version(stream, 4);
  if (version.size() < 2) return kNoMatch;
  if (version.WordLE(0) >= kLowestVersion) {
    return HasRecords(stream) ? kFormatLotusWorksheetOther : kNoMatch;
  }
  if (version.WordLE(0) == 0) return TgaProbe(stream);
  return CursorProbe(stream);
}

}  // namespace fi
