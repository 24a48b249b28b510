// Builds containers from the choices that a fuzz input makes: ZIP packages, compound files and
// iWork archives in one another, some behind the password "secret". They are valid but for what the
// input changes in their structure, at any level, before it is packed into the next.
#ifndef FI_FUZZ_STRUCTURE_BUILDER_H_
#define FI_FUZZ_STRUCTURE_BUILDER_H_

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "tests/support/compound_file_writer.h"
#include "tests/support/encrypted_package_writer.h"
#include "tests/support/iwork_writer.h"
#include "tests/support/zip_writer.h"

namespace fi::fuzzing {

// The input as a row of choices; behind its end all are 0.
class Choices {
 public:
  Choices(const uint8_t* data, size_t size) : data_(data), size_(size) {}

  bool AtEnd() const { return at_ == size_; }
  uint8_t Byte() { return AtEnd() ? uint8_t{0} : data_[at_++]; }
  uint32_t Number() { return Byte() | static_cast<uint32_t>(Byte()) << 8; }

  // Below `bound`, which is not 0.
  size_t Below(size_t bound) { return Number() % bound; }

  std::string Text(size_t size) {
    std::string text;
    for (; text.size() < size && !AtEnd();) text += static_cast<char>(Byte());
    return text;
  }

  template <class Items>
  const auto& Of(const Items& items) {
    return items[Byte() % std::size(items)];
  }

 private:
  const uint8_t* const data_;
  const size_t size_;
  size_t at_ = 0;
};

class StructureBuilder {
 public:
  explicit StructureBuilder(Choices& choices) : choices_(choices) {}

  // A file; `depth` containers are around it.
  std::string Build(int depth = 0) {
    std::string bytes =
        Whole(depth == kMostDepth || parts_ >= kMostParts ? 0 : choices_.Byte() % 8, depth);
    if (bytes.size() > kMostBytes) bytes.resize(kMostBytes);
    // One part in four is changed; the file itself by whatever choices are left.
    if (choices_.Byte() % 4 == 3) Change(&bytes, 3);
    return bytes;
  }

  // Changes the structure at up to `most` places: sizes, offsets and counts more than content.
  void Change(std::string* bytes, int most) {
    for (int i = 0; i < most && !choices_.AtEnd() && !bytes->empty(); ++i) {
      const uint8_t how = choices_.Byte();
      size_t at = choices_.Below(bytes->size());
      // Directories stand at the end, headers at the beginning.
      if (how % 4 == 1) at %= 600;
      if (how % 4 == 2) at = bytes->size() - 1 - at % 400;
      at = std::min(at, bytes->size() - 1);
      ChangeAt(bytes, at, how >> 2);
    }
  }

 private:
  static constexpr int kMostDepth = 4;
  static constexpr int kMostParts = 24;
  static constexpr size_t kMostBytes = 1 << 18;

  std::string Whole(int kind, int depth) {
    ++parts_;
    switch (kind) {
      case 1:
        return Markup();
      case 2:
      case 3:
        return Package(depth);
      case 4:
        return CompoundFile(depth);
      case 5:
        return Encrypted(depth);
      case 6:
        return testing::WriteIworkArchive(choices_.Text(choices_.Byte()), 1 + choices_.Byte());
      case 7:
        return EncryptedIwork(depth);
      default:
        return choices_.Text(choices_.Byte());
    }
  }

  // What packages hold: content types, relationships, roots of documents.
  std::string Markup() {
    static constexpr const char* kTypes[] = {
        "wordprocessingml.document.main", "spreadsheetml.sheet.main",
        "presentationml.presentation.main", "wordprocessingml.template.main", "drawingml.chart"};
    static constexpr const char* kParts[] = {"/word/document.xml", "/xl/workbook.xml", "/a",
                                             "../docProps/app.xml", "ppt/presentation.xml"};
    std::string xml = "<?xml version=\"1.0\"?>";
    const int kind = choices_.Byte() % 3;
    const int count = choices_.Byte() % 12;
    xml += kind == 0
               ? "<Types xmlns=\"http://schemas.openxmlformats.org/package/2006/content-types\">"
           : kind == 1 ? "<Relationships "
                         "xmlns=\"http://schemas.openxmlformats.org/package/2006/relationships\">"
                       : "<a:" + choices_.Text(3) + " xmlns:a=\"" + choices_.Text(20) + "\">";
    for (int i = 0; i < count; ++i) {
      if (kind == 0) {
        xml += std::string("<Override PartName=\"") + choices_.Of(kParts) +
               "\" ContentType=\"application/vnd.openxmlformats-officedocument." +
               choices_.Of(kTypes) + "+xml\"/>";
      } else {
        xml += std::string("<Relationship Id=\"r") + std::to_string(i) +
               "\" Type=\"http://schemas.openxmlformats.org/officeDocument/2006/relationships/"
               "officeDocument\" Target=\"" +
               choices_.Of(kParts) + "\"/>";
      }
    }
    return xml + (kind == 0 ? "</Types>" : kind == 1 ? "</Relationships>" : "");
  }

  std::string Package(int depth) {
    static constexpr const char* kNames[] = {
        "[Content_Types].xml", "_rels/.rels", "word/document.xml", "xl/workbook.xml",
        "docProps/app.xml",    "mimetype",    "content.xml",       "META-INF/manifest.xml",
        "Index/Document.iwa",  "Index.zip",   "index.xml",         "a/"};
    testing::ZipWriter writer;
    const int count = choices_.Byte() % 6;
    for (int i = 0; i < count; ++i) {
      const uint8_t how = choices_.Byte();
      testing::ZipMember member;
      if ((how & 1) != 0) member.method = 0;
      if ((how & 2) != 0) member.flags = 8;
      member.zip64 = (how & 12) == 12;
      if ((how & 48) == 48) member.size = choices_.Number() << (how >> 6 << 3);
      if ((how & 80) == 80) member.offset = choices_.Number();
      const std::string name = choices_.Of(kNames);
      writer.Add(name, Build(depth + 1), member);
    }
    testing::ZipEnd end;
    end.zip64 = choices_.Byte() % 8 == 7;
    return writer.Finish(end);
  }

  std::string CompoundFile(int depth) {
    std::vector<testing::Node> nodes = Children(depth, 2);
    testing::CompoundOptions options;
    const uint8_t how = choices_.Byte();
    if ((how & 1) != 0) options.sectorShift = 12;
    options.backwards = (how & 2) != 0;
    return testing::WriteCompoundFile(nodes, options, ClassOf(how >> 2));
  }

  std::vector<testing::Node> Children(int depth, int folders) {
    static const std::u16string kNames[] = {
        u"WordDocument", u"Workbook", u"PowerPoint Document", u"\u0005SummaryInformation",
        u"1Table",       u"Contents", u"VisioDocument",       u"__substg1.0_001A001E",
        u"Book",         u"a"};
    std::vector<testing::Node> nodes;
    const int count = choices_.Byte() % 5;
    for (int i = 0; i < count; ++i) {
      const std::u16string name = choices_.Of(kNames);
      if (folders > 0 && choices_.Byte() % 4 == 0) {
        nodes.push_back(testing::Folder(name, Children(depth, folders - 1)));
      } else {
        nodes.push_back(testing::Stream(name, Build(depth + 1)));
      }
    }
    return nodes;
  }

  // The classes of Word, Excel and PowerPoint documents, and others.
  std::string ClassOf(int kind) {
    if (kind % 4 == 0) return "";
    if (kind % 4 == 1) {
      std::string bytes = choices_.Text(16);
      bytes.resize(16);
      return bytes;
    }
    std::string bytes = {static_cast<char>(kind % 2 == 0 ? 0x06 : 0x20),
                         static_cast<char>(kind % 2 == 0 ? 0x09 : 0x08), 2, 0};
    bytes.resize(8);
    return bytes + std::string("\xC0\0\0\0\0\0\0\x46", 8);
  }

  std::string Encrypted(int depth) {
    testing::AgileSettings settings;
    settings.spins = choices_.Byte() % 4;
    settings.integrity = choices_.Byte() % 2 == 0;
    const testing::EncryptedPackage streams = testing::WriteAgile(Build(depth + 1), settings);
    std::string info = streams.info;
    std::string package = streams.package;
    if (choices_.Byte() % 4 == 3) Change(&info, 2);
    if (choices_.Byte() % 4 == 3) Change(&package, 2);
    return testing::WriteCompoundFile(
        {testing::Stream(u"EncryptedPackage", package), testing::Stream(u"EncryptionInfo", info)});
  }

  std::string EncryptedIwork(int depth) {
    testing::IworkSettings settings;
    settings.rounds = 1 + choices_.Byte() % 4;
    settings.padding = static_cast<char>(choices_.Byte() % 3);
    const testing::EncryptedIwork parts = testing::WriteIwork(Build(depth + 1), settings);
    std::string verifier = parts.verifier;
    if (choices_.Byte() % 4 == 3) Change(&verifier, 1);
    testing::ZipWriter writer;
    writer.Add(".iwpv2", verifier).Add("Index/Document.iwa", parts.member);
    return writer.Finish();
  }

  void ChangeAt(std::string* bytes, size_t at, int how) {
    static constexpr std::array<uint32_t, 8> kNumbers = {
        0, 1, 0x7FFFFFFF, 0x80000000, 0xFFFFFFFA, 0xFFFFFFFE, 0xFFFFFFFF, 0x00010000};
    switch (how % 5) {
      case 0:
        (*bytes)[at] = static_cast<char>(choices_.Byte());
        break;
      case 1: {
        const std::string word = testing::Word(choices_.Of(kNumbers));
        bytes->replace(at, std::min(word.size(), bytes->size() - at), word);
        break;
      }
      case 2: {
        const std::string word = testing::Word(choices_.Number());
        bytes->replace(at, std::min(word.size(), bytes->size() - at), word);
        break;
      }
      case 3:
        bytes->erase(at, 1 + choices_.Byte());
        break;
      default:
        // What stands there once more, somewhere else.
        bytes->insert(choices_.Below(bytes->size()), bytes->substr(at, 1 + choices_.Byte()));
        break;
    }
  }

  Choices& choices_;
  int parts_ = 0;
};

}  // namespace fi::fuzzing

#endif  // FI_FUZZ_STRUCTURE_BUILDER_H_
