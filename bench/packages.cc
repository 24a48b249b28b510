#include "bench/packages.h"

#include "tests/support/zip_writer.h"

namespace fi::bench {
namespace {

constexpr char kDeclaration[] = "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n";

std::string Relationship(int number, const std::string& type, const std::string& target) {
  return "<Relationship Id=\"rId" + std::to_string(number) + "\" Type=\"http://schemas." + type +
         "\" Target=\"" + target + "\"/>";
}

std::string Override(const std::string& part, const std::string& type) {
  return "<Override PartName=\"" + part + "\" ContentType=\"application/vnd." + type + "+xml\"/>";
}

std::string FileEntry(const std::string& path, const std::string& type) {
  return "<manifest:file-entry manifest:full-path=\"" + path + "\" manifest:media-type=\"" + type +
         "\"/>";
}

std::string Body(size_t paragraphs) {
  std::string body = kDeclaration;
  body += "<document>";
  for (size_t i = 0; i < paragraphs; ++i) body += "<p>Paragraph " + std::to_string(i * i) + "</p>";
  return body + "</document>";
}

}  // namespace

std::string OfficeOpenXml() {
  const std::string office = "openxmlformats.org/officeDocument/2006/relationships/";
  const std::string relationships =
      kDeclaration +
      std::string(
          "<Relationships xmlns=\"http://schemas.openxmlformats.org/package/2006/"
          "relationships\">") +
      Relationship(3, office + "extended-properties", "docProps/app.xml") +
      Relationship(2, "openxmlformats.org/package/2006/relationships/metadata/core-properties",
                   "docProps/core.xml") +
      Relationship(1, office + "officeDocument", "word/document.xml") + "</Relationships>";
  const std::string word = "openxmlformats-officedocument.wordprocessingml.";
  const std::string types =
      kDeclaration +
      std::string(
          "<Types xmlns=\"http://schemas.openxmlformats.org/package/2006/content-types\">"
          "<Default Extension=\"rels\" ContentType=\"application/"
          "vnd.openxmlformats-package.relationships+xml\"/>"
          "<Default Extension=\"xml\" ContentType=\"application/xml\"/>") +
      Override("/word/document.xml", word + "document.main") +
      Override("/word/styles.xml", word + "styles") +
      Override("/word/settings.xml", word + "settings") +
      Override("/word/fontTable.xml", word + "fontTable") + "</Types>";
  const std::string properties =
      kDeclaration +
      std::string(
          "<Properties xmlns=\"http://schemas.openxmlformats.org/officeDocument/2006/"
          "extended-properties\" xmlns:vt=\"http://schemas.openxmlformats.org/"
          "officeDocument/2006/docPropsVTypes\"><Template>Normal.dotm</Template>"
          "<TotalTime>1</TotalTime><Pages>1</Pages><Words>800</Words>"
          "<Characters>5012</Characters><Application>Microsoft Office Word</Application>"
          "<DocSecurity>0</DocSecurity><Lines>41</Lines><Paragraphs>11</Paragraphs>"
          "<ScaleCrop>false</ScaleCrop><Company></Company>"
          "<LinksUpToDate>false</LinksUpToDate><SharedDoc>false</SharedDoc>"
          "<AppVersion>16.0000</AppVersion></Properties>");
  return testing::ZipWriter()
      .Add("[Content_Types].xml", types)
      .Add("_rels/.rels", relationships)
      .Add("word/document.xml", Body(2000))
      .Add("word/_rels/document.xml.rels", relationships)
      .Add("word/theme/theme1.xml", Body(300))
      .Add("word/settings.xml", Body(100))
      .Add("word/styles.xml", Body(800))
      .Add("word/fontTable.xml", Body(50))
      .Add("docProps/core.xml", Body(10))
      .Add("docProps/app.xml", properties)
      .Finish();
}

std::string OpenDocument() {
  const std::string type = "application/vnd.oasis.opendocument.text";
  const std::string manifest =
      kDeclaration +
      std::string(
          "<manifest:manifest xmlns:manifest=\"urn:oasis:names:tc:opendocument:xmlns:"
          "manifest:1.0\" manifest:version=\"1.2\"><manifest:file-entry "
          "manifest:full-path=\"/\" manifest:version=\"1.2\" manifest:media-type=\"") +
      type + "\"/>" + FileEntry("content.xml", "text/xml") + FileEntry("styles.xml", "text/xml") +
      FileEntry("meta.xml", "text/xml") + "</manifest:manifest>";
  const std::string meta =
      kDeclaration +
      std::string(
          "<office:document-meta xmlns:office=\"urn:oasis:names:tc:opendocument:xmlns:"
          "office:1.0\" xmlns:meta=\"urn:oasis:names:tc:opendocument:xmlns:meta:1.0\">"
          "<office:meta><meta:creation-date>2020-01-01</meta:creation-date>"
          "<meta:generator>LibreOffice/7.3.2$Linux_X86_64</meta:generator></office:meta>"
          "</office:document-meta>");
  return testing::ZipWriter()
      .Add("mimetype", type, {.method = 0})
      .Add("content.xml", Body(2000))
      .Add("styles.xml", Body(800))
      .Add("meta.xml", meta)
      .Add("META-INF/manifest.xml", manifest)
      .Finish();
}

}  // namespace fi::bench
