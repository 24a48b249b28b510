#include "probes/system/marks_elsewhere.h"

#include <cstdint>
#include <string_view>

#include "registry/format_ids.h"
#include "stream/file_bytes.h"

namespace fi {
namespace {

using namespace std::string_view_literals;

using Head = FileBytes<2048>;

struct Mark {
  uint16_t offset;
  std::string_view bytes;
  FormatId id;
};

// The first logo bytes of cartridges, which the machines themselves ask for.
constexpr auto kAdvanceLogo = "\x24\xFF\xAE\x51\x69\x9A\xA2\x21"sv;
constexpr auto kBoyLogo = "\xCE\xED\x66\x66\xCC\x0D\x00\x0B"sv;

constexpr Mark kMarks[] = {
    {4, "\xEF\xCD\xAB\x89"sv, kFormatEseDatabase},
    {4, "TFL3"sv, kFormatTensorFlowLite},
    {4, "\xF8\x72\x6F\xBA"sv, kFormatLosslessAudio},
    {4, "\xF8\x72\x6F\xBB"sv, kFormatLosslessAudio},
    {4, "\x0A\x09OSMHeader"sv, kFormatPointData},
    {4, kAdvanceLogo, kFormatCartridgeImage},
    {8, "DUCK"sv, kFormatDuckDb},
    // Berkeley DB: B-tree, hash table and queue, in either byte order.
    {12, "\x62\x31\x05\x00"sv, kFormatBerkeleyDb},
    {12, "\x00\x05\x31\x62"sv, kFormatBerkeleyDb},
    {12, "\x61\x15\x06\x00"sv, kFormatBerkeleyDb},
    {12, "\x00\x06\x15\x61"sv, kFormatBerkeleyDb},
    {12, "\x53\x22\x04\x00"sv, kFormatBerkeleyDb},
    {12, "\x00\x04\x22\x53"sv, kFormatBerkeleyDb},
    {14, "\xC0HBAM7"sv, kFormatFileMaker},
    {13, " VW1"sv, kFormatVectorWorks},
    {14, "VectorWork"sv, kFormatVectorWorks},
    {20, "!Scream!"sv, kFormatOtherModule},
    {36, "acsp"sv, kFormatIccProfile},
    {44, "SCRM"sv, kFormatScreamTracker3},
    {44, "PTMF"sv, kFormatOtherModule},
    {192, kAdvanceLogo, kFormatCartridgeImage},
    {256, "SEGA MEGA DRIVE"sv, kFormatCartridgeImage},
    {256, "SEGA GENESIS"sv, kFormatCartridgeImage},
    {260, kBoyLogo, kFormatCartridgeImage},
    {344, "n+1\0"sv, kFormatNifti},
    {344, "ni1\0"sv, kFormatNifti},
    // ProTracker by the number of its channels.
    {1080, "M.K."sv, kFormatProTracker},
    {1080, "M!K!"sv, kFormatProTracker},
    {1080, "FLT4"sv, kFormatProTracker},
    {1080, "4CHN"sv, kFormatProTracker},
    {1080, "6CHN"sv, kFormatProTracker},
    {1080, "8CHN"sv, kFormatProTracker},
};

constexpr Mark kVolumeMarks[] = {
    {3, "NTFS    "sv, kFormatNtfsVolume},       {3, "EXFAT   "sv, kFormatFatVolume},
    {512, "EFI PART"sv, kFormatPartitionTable}, {1024, "H+\x00\x04"sv, kFormatHfsVolume},
    {1024, "HX\x00\x05"sv, kFormatHfsVolume},
};

template <size_t kCount>
FormatId FindMark(const Head& head, const Mark (&marks)[kCount]) {
  const std::string_view bytes = head.View();
  for (const Mark& mark : marks) {
    const size_t end = mark.offset + mark.bytes.size();
    if (end > bytes.size()) continue;
    if (bytes[mark.offset] == mark.bytes[0] &&
        bytes.substr(mark.offset, mark.bytes.size()) == mark.bytes) {
      return mark.id;
    }
  }
  return kNoMatch;
}

// A boot sector of FAT: its closing mark, and the name of the kind that DOS 4 and later write.
bool IsFatBootSector(const Head& head) {
  const bool isBootSector = head.Byte(0) == 0xEB || head.Byte(0) == 0xE9;
  return isBootSector && head.Holds(510, "\x55\xAA") &&
         (head.Holds(54, "FAT1") || head.Holds(82, "FAT32"));
}

// The superblock of ext2 to ext4 at 1 KB. Its mark is of two bytes, so that the state, what to do
// on errors, the size of a block (1 KB to 64 KB) and the revision must be in range too.
bool IsExtVolume(const Head& head) {
  constexpr size_t kBlock = 1024;
  if (!head.Holds(kBlock + 56, "\x53\xEF")) return false;
  const uint32_t behaviour = head.WordLE(kBlock + 60);
  return head.WordLE(kBlock + 58) <= 7 && behaviour >= 1 && behaviour <= 3 &&
         head.DwordLE(kBlock + 24) <= 6 && head.DwordLE(kBlock + 76) <= 1 &&
         head.DwordLE(kBlock) != 0;
}

// Autodesk animations: kind, and behind the header of 128 bytes the kind of the first frame.
bool IsAnimation(const Head& head) {
  const uint32_t kind = head.WordLE(4);
  const uint32_t frame = head.WordLE(132);
  return (kind == 0xAF11 || kind == 0xAF12) && (frame == 0xF1FA || frame == 0xF100);
}

// The driver descriptor of an Apple partition map: blocks of 512 bytes, and at the second block the
// mark of the first entry.
bool IsApplePartitionMap(const Head& head) {
  return head.Holds(0, "ER\x02\x00"sv) && head.Holds(512, "PM\x00\x00"sv);
}

}  // namespace

FormatId MarkElsewhereProbe(IdentificationStream* stream) {
  const Head head(stream, 0);
  if (const FormatId id = FindMark(head, kMarks); id != kNoMatch) return id;
  return IsAnimation(head) ? kFormatFlicAnimation : kNoMatch;
}

FormatId VolumeProbe(IdentificationStream* stream) {
  const Head head(stream, 0);
  if (const FormatId id = FindMark(head, kVolumeMarks); id != kNoMatch) return id;
  if (IsFatBootSector(head)) return kFormatFatVolume;
  if (IsExtVolume(head)) return kFormatExtVolume;
  return IsApplePartitionMap(head) ? kFormatPartitionTable : kNoMatch;
}

}  // namespace fi
