#include "tests/support/hostile_files.h"

#include <algorithm>
#include <numeric>
#include <random>
#include <vector>

#include "tests/support/bytes.h"
#include "tests/support/zip_writer.h"

namespace fi::testing {
namespace {

std::string Varint(uint64_t value) {
  std::string bytes;
  for (; value >= 0x80; value >>= 7) bytes += static_cast<char>(value | 0x80);
  return bytes + static_cast<char>(value);
}

std::string Chunk(const std::string& block) { return '\0' + LittleEndian(block.size(), 3) + block; }

void Put(std::string* bytes, size_t at, uint64_t value, size_t size) {
  bytes->replace(at, size, LittleEndian(value, size));
}

constexpr uint32_t kNone = 0xFFFFFFFF;
constexpr uint32_t kEnd = 0xFFFFFFFE;
constexpr size_t kSector = 512;

std::string DirectoryEntry(const std::string& name, uint8_t kind, uint32_t right, uint32_t child) {
  std::string entry(128, '\0');
  for (size_t i = 0; i < name.size(); ++i) entry[2 * i] = name[i];
  Put(&entry, 64, 2 * name.size() + 2, 2);
  Put(&entry, 66, kind, 1);
  Put(&entry, 67, 1, 1);
  Put(&entry, 68, kNone, 4);
  Put(&entry, 72, right, 4);
  Put(&entry, 76, child, 4);
  Put(&entry, 116, kEnd, 4);
  return entry;
}

}  // namespace

std::string UnfoldingBlock(const std::string& head, size_t size) {
  std::string block = Varint(size) + static_cast<char>((head.size() - 1) << 2) + head;
  for (size_t left = size - head.size(); left > 0;) {
    const size_t count = std::min<size_t>(left, 64);
    block += static_cast<char>((count - 1) << 2 | 2);
    block += LittleEndian(2, 2);
    left -= count;
  }
  return block;
}

std::string UnfoldingArchive(size_t indexes, size_t megabytes) {
  constexpr size_t kIndex = (size_t{1} << 20) - 2;
  std::string archive;
  for (size_t i = 0; i < indexes; ++i) {
    const std::string head = Varint(kIndex) + Bytes("\x08\x01\x12\x00");
    archive += Chunk(UnfoldingBlock(head, Varint(kIndex).size() + kIndex));
  }
  for (size_t i = 0; i < megabytes; ++i) {
    archive += Chunk(UnfoldingBlock(std::string(2, '\0'), size_t{1} << 20));
  }
  return archive;
}

std::string PackageOfEntries(uint32_t count) {
  std::string file = ZipWriter().Add("a", "x", {.method = 0}).Finish();
  const size_t start = file.find("PK\1\2");
  const std::string entry = file.substr(start, 46 + 1);
  std::string package = file.substr(0, start);
  for (uint32_t i = 0; i < count; ++i) package += entry;
  const size_t end = package.size();
  // The end record of ZIP64, its locator, and the end record that points to them.
  std::string wide = "PK\6\6" + LittleEndian(44, 8) + LittleEndian(45, 2) + LittleEndian(45, 2) +
                     LittleEndian(0, 8) + LittleEndian(count, 8) + LittleEndian(count, 8) +
                     LittleEndian(end - start, 8) + LittleEndian(start, 8);
  wide += "PK\6\7" + LittleEndian(0, 4) + LittleEndian(end, 8) + LittleEndian(1, 4);
  return package + wide + "PK\5\6" + LittleEndian(0, 4) + std::string(12, '\xFF') +
         LittleEndian(0, 2);
}

std::string ToAndFroCompoundFile(uint32_t sectors) {
  constexpr uint32_t kLinks = kSector / 4;
  constexpr uint32_t kChildren = 1023;
  const uint32_t tables = (sectors + kLinks - 1) / kLinks;  // at most 109, which the header lists
  const uint32_t used = sectors - tables;
  // Every eighth sector, then their neighbours: each step leads to another block of 4 KB.
  std::vector<uint32_t> order;
  for (uint32_t first = 0; first < 8; ++first) {
    for (uint32_t sector = first; sector < used; sector += 8) order.push_back(sector);
  }
  std::vector<uint32_t> links(tables * kLinks, kNone);
  for (size_t i = 0; i + 1 < order.size(); ++i) links[order[i]] = order[i + 1];
  links[order.back()] = kEnd;

  std::string file(kSector * (sectors + 1), '\0');
  file.replace(0, 8, "\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1");
  Put(&file, 24, 0x3E, 2);
  Put(&file, 26, 3, 2);
  Put(&file, 28, 0xFFFE, 2);
  Put(&file, 30, 9, 2);
  Put(&file, 32, 6, 2);
  Put(&file, 44, tables, 4);
  Put(&file, 48, order.front(), 4);
  Put(&file, 56, 4096, 4);
  Put(&file, 60, kEnd, 4);
  Put(&file, 68, kEnd, 4);
  for (uint32_t i = 0; i < 109; ++i) Put(&file, 76 + 4 * i, i < tables ? used + i : kNone, 4);
  for (size_t i = 0; i < links.size(); ++i) {
    Put(&file, kSector * (used + 1) + 4 * i, links[i], 4);
  }
  std::vector<uint32_t> ids(order.size() - 1);
  std::iota(ids.begin(), ids.end(), 1);
  std::shuffle(ids.begin(), ids.end(), std::mt19937(7));
  ids.resize(std::min<size_t>(ids.size(), kChildren));
  const auto place = [&](uint32_t sectorOfChain, const std::string& entry) {
    file.replace(kSector * (order[sectorOfChain] + 1), entry.size(), entry);
  };
  place(0, DirectoryEntry("Root Entry", 5, kNone, 4 * ids[0]));
  for (size_t i = 0; i < ids.size(); ++i) {
    const uint32_t next = i + 1 < ids.size() ? 4 * ids[i + 1] : kNone;
    place(ids[i], DirectoryEntry("zz" + std::to_string(10000 + i), 2, next, kNone));
  }
  return file;
}

namespace {

constexpr char kOffice[] = "http://schemas.openxmlformats.org/officeDocument/2006";
constexpr char kPackage[] = "http://schemas.openxmlformats.org/package/2006";

std::string OfficePackage(const std::string& overrides, const std::string& mainPart,
                          const std::string& mainType, const std::string& properties,
                          const std::string& target) {
  const std::string office = kOffice;
  const std::string package = kPackage;
  return ZipWriter()
      .Add("[Content_Types].xml", "<Types xmlns=\"" + package + "/content-types\">" + overrides +
                                      "<Override PartName=\"/" + mainPart + "\" ContentType=\"" +
                                      mainType + "\"/></Types>")
      .Add("_rels/.rels",
           "<Relationships xmlns=\"" + package + "/relationships\"><Relationship Id=\"a\" Type=\"" +
               office + "/relationships/officeDocument\" Target=\"" + mainPart +
               "\"/><Relationship Id=\"b\" Type=\"" + office +
               "/relationships/extended-properties\" Target=\"" + target + "\"/></Relationships>")
      .Add("docProps/app.xml", "<Properties xmlns=\"" + office +
                                   "/extended-properties\" xmlns:vt=\"" + office +
                                   "/docPropsVTypes\">" + properties + "</Properties>")
      .Finish();
}

constexpr char kOfficeType[] = "application/vnd.openxmlformats-officedocument.";

}  // namespace

std::string LongContentTypes(size_t overrides) {
  std::string list;
  for (size_t i = 0; i < overrides; ++i) {
    list += "<Override PartName=\"/word/media/part" + std::to_string(i) + ".xml\" ContentType=\"" +
            kOfficeType + "drawing+xml\"/>";
  }
  return OfficePackage(list, "word/document.xml",
                       std::string(kOfficeType) + "wordprocessingml.document.main+xml",
                       "<AppVersion>16.0300</AppVersion>", "docProps/app.xml");
}

std::string LongTitles(size_t titles, const std::string& target) {
  std::string list = "<TitlesOfParts><vt:vector size=\"" + std::to_string(titles) + "\">";
  for (size_t i = 0; i < titles; ++i) {
    list += "<vt:lpstr>A title of a sheet or a name that is forty long " + std::to_string(i) +
            "</vt:lpstr>";
  }
  return OfficePackage(
      "", "xl/workbook.xml", std::string(kOfficeType) + "spreadsheetml.sheet.main+xml",
      list + "</vt:vector></TitlesOfParts><AppVersion>16.0300</AppVersion>", target);
}

}  // namespace fi::testing
