#include "toolkit/storage/compound_file.h"

#include <algorithm>
#include <array>
#include <new>

#include "toolkit/memory/little_endian.h"

namespace fi::storage {
namespace {

constexpr uint32_t kHeaderSize = 512;
constexpr std::array<uint8_t, 8> kMagic = {0xD0, 0xCF, 0x11, 0xE0, 0xA1, 0xB1, 0x1A, 0xE1};

// Offsets in the header. Its counts of sectors are not used: the size of the file tells how many
// there can be.
constexpr uint32_t kMajorVersion = 26;
constexpr uint32_t kByteOrder = 28;
constexpr uint32_t kSectorShift = 30;
constexpr uint32_t kFirstDirectorySector = 48;
constexpr uint32_t kFirstMiniFatSector = 60;
constexpr uint32_t kFirstDifatSector = 68;
constexpr uint32_t kListedFatSectors = 76;

constexpr uint16_t kLittleEndianMark = 0xFFFE;
constexpr uint32_t kShiftOf512 = 9;
constexpr uint32_t kShiftOf4096 = 12;

bool IsHeader(const uint8_t* header) {
  const uint16_t version = LoadLE16(header + kMajorVersion);
  const uint16_t shift = LoadLE16(header + kSectorShift);
  return std::equal(kMagic.begin(), kMagic.end(), header) &&
         LoadLE16(header + kByteOrder) == kLittleEndianMark && (version == 3 || version == 4) &&
         (shift == kShiftOf512 || shift == kShiftOf4096);
}

bool IsMini(uint64_t size) { return size < kMiniStreamCutoff; }

}  // namespace

CompoundFile::CompoundFile(io::HandleReader reader, uint32_t nesting)
    : sectors_(reader),
      difat_(sectors_),
      fat_(sectors_, difat_),
      miniFat_(sectors_, fat_),
      nesting_(nesting) {}

std::unique_ptr<CompoundFile> CompoundFile::Open(IOHandle* handle, uint32_t nesting) {
  const io::HandleReader reader(handle);
  std::array<uint8_t, kHeaderSize> header;
  if (reader.ReadAt(0, header.data(), kHeaderSize) != kHeaderSize) return nullptr;
  if (!IsHeader(header.data())) return nullptr;
  std::unique_ptr<CompoundFile> file(new (std::nothrow) CompoundFile(reader, nesting));
  if (file == nullptr) NoteNoMemory(handle);
  if (file == nullptr || !file->Start(header.data())) return nullptr;
  return file;
}

bool CompoundFile::Start(const uint8_t* header) {
  sectors_.Start(LoadLE16(header + kSectorShift));
  wideSizes_ = LoadLE16(header + kMajorVersion) != 3;
  difat_.Start(header + kListedFatSectors, LoadLE32(header + kFirstDifatSector));
  directory_.Start(fat_, LoadLE32(header + kFirstDirectorySector));
  AllowLoads(1);
  DirectoryEntry root;
  if (!ReadEntry(0, &root) || root.kind != EntryKind::kRoot) return false;

  // As many mini sectors as the file has room for: where the mini stream ends, its chain tells.
  const uint64_t minis = uint64_t{sectors_.sectors()} << (sectors_.shift() - kMiniShift);
  miniStream_.Start(fat_, root.start);
  miniFat_.Start(LoadLE32(header + kFirstMiniFatSector),
                 static_cast<uint32_t>(std::min<uint64_t>(minis, kNoUnit)));
  root_.emplace(*this, root);
  return true;
}

const uint8_t* CompoundFile::EntryBytes(uint32_t id) {
  if (id == kNoEntry || !MayLoad()) return nullptr;
  const uint32_t shift = sectors_.shift() - kEntryShift;
  const uint32_t sector = directory_.At(id >> shift);
  if (sector == kNoUnit) return nullptr;
  const SectorView view = sectors_.Load(sector);
  const uint32_t offset = (id & ((1u << shift) - 1)) << kEntryShift;
  if (view.size < offset + kEntrySize) return nullptr;
  const uint8_t* const bytes = view.data + offset;
  return IsUsed(bytes) ? bytes : nullptr;
}

bool CompoundFile::ReadEntry(uint32_t id, DirectoryEntry* entry) {
  const uint8_t* const bytes = EntryBytes(id);
  if (bytes == nullptr) return false;
  *entry = ParseEntry(bytes, wideSizes_);
  return true;
}

int32_t CompoundFile::OtherInfo(uint32_t code, void* out) const {
  if (code != kIoInfoReadError) return -1;
  IOHandle* handle = reader().handle();
  return handle->operations->getInfo(handle, code, out);
}

Links& CompoundFile::LinksOf(uint64_t size) {
  if (IsMini(size)) return miniFat_;
  return fat_;
}

uint32_t CompoundFile::UnitShiftOf(uint64_t size) const {
  return IsMini(size) ? kMiniShift : sectors_.shift();
}

uint64_t CompoundFile::OffsetOf(uint64_t size, uint32_t unit) {
  if (!IsMini(size)) return sectors_.OffsetOf(unit);
  const uint32_t minisShift = sectors_.shift() - kMiniShift;
  const uint32_t sector = miniStream_.At(unit >> minisShift);
  if (sector == kNoUnit) return 0;
  const uint32_t within = unit & ((1u << minisShift) - 1);
  return sectors_.OffsetOf(sector) + (uint64_t{within} << kMiniShift);
}

}  // namespace fi::storage
