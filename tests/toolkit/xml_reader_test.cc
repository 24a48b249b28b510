// What the XML reader delivers of documents, whole, cut, and in every encoding and size of piece.
#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <string>

#include "platform/xml.h"
#include "tests/support/memory_handle.h"
#include "tests/support/samples.h"
#include "toolkit/xml/pull_parser.h"

namespace fi::testing {
namespace {

constexpr UTXMLTagName kPlain[] = {{1, "a"}, {2, "b"}};
constexpr UTXMLTagName kFirst[] = {{1, "a"}, {3, "c"}};
constexpr UTXMLTagName kSecond[] = {{9, "a"}, {4, "d"}};

std::string Printed(const char16_t* text, uint32_t length) {
  if (length > 1000) return "(" + std::to_string(length) + ")";
  std::string printed;
  for (; length > 0; --length, ++text) {
    std::array<char, 8> escaped{};
    const bool plain = *text >= ' ' && *text < 0x7F && *text != '\'';
    std::snprintf(escaped.data(), escaped.size(), plain ? "%c" : "\\u%04X", unsigned{*text});
    printed += escaped.data();
  }
  return printed;
}

// In the notation of toolkit/xml.txt.
std::string Delivered(const std::string& document, bool withContent) {
  MemoryHandle handle(document);
  handle.mostPerRead = withContent ? 1 : UINT32_MAX;
  xml::ScopedReader reader(&handle);
  UTXMLReader* const self = reader.get();
  EXPECT_EQ(UTXMLAddTagMap(self, "", 10, 11, kPlain, 2), kXmlOk);
  EXPECT_EQ(UTXMLAddTagMap(self, "n", 20, 21, kFirst, 2), kXmlOk);
  EXPECT_EQ(UTXMLAddTagMap(self, "n", 30, 31, kSecond, 2), kXmlOk);
  std::string delivered;
  UTXMLTag tag;
  int32_t status;
  while ((status = UTXMLReadNextTag(self, &tag, nullptr)) == kXmlOk) {
    EXPECT_EQ(tag.attributeNamespaceNumber, tag.id == 0 ? 0 : tag.namespaceNumber + 1);
    const bool isEnd = tag.flags == kXmlEndTag;
    delivered += (isEnd ? "-" : "+") + std::to_string(tag.id) + "@";
    delivered += std::to_string(tag.namespaceNumber);
    for (const char* name : {"x", "y"}) {
      const char16_t* value = nullptr;
      uint32_t length = 0;
      if (UTXMLGetAttribute(self, 0, name, &value, &length) != kXmlOk) continue;
      EXPECT_EQ(value[length], 0);
      delivered += std::string(" ") + name + "=" + Printed(value, length);
    }
    std::array<char16_t, 16> content;
    uint32_t length = 0;
    if (withContent) {
      EXPECT_EQ(UTXMLReadContent(self, 1, content.data(), content.size(), &length), kXmlOk);
    }
    if (length > 0) delivered += "'" + Printed(content.data(), length) + "'";
    delivered += ' ';
  }
  EXPECT_EQ(UTXMLReadNextTag(self, &tag, nullptr), status);
  return delivered + (status == kXmlEndOfData ? "end" : status == kXmlMalformed ? "fault" : "?");
}

std::string Utf16(const std::string& text, bool bigEndian) {
  std::string bytes = bigEndian ? "\xFE\xFF" : "\xFF\xFE";
  for (const char byte : text) {
    bytes += bigEndian ? std::string{'\0', byte} : std::string{byte, '\0'};
  }
  return bytes;
}

// Everything, with pieces of a fixed size.
std::string InPieces(const std::string& document, uint32_t chunk) {
  MemoryHandle handle(document);
  xml::PullParser parser(&handle, chunk, chunk);
  std::string all;
  xml::PullParser::Result result;
  while ((result = parser.Next()) == xml::PullParser::Result::kTag) {
    all.append(parser.isEnd() ? "-" : "+").append(parser.localName());
    all.append(parser.Attribute("x").value_or("?")).append(parser.Content());
  }
  return all + std::to_string(static_cast<int>(result));
}

bool IsPlain(const std::string& document) {
  return document.find("encoding=") == std::string::npos &&
         document.find_first_not_of(
             "\t\n\r !\"#$%&'()*+,-./0123456789:;<=>?@[]_"
             "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz") == std::string::npos;
}

TEST(XmlReader, Documents) {
  for (const Sample& sample : ReadSamples("toolkit/xml.txt", 3)) {
    SCOPED_TRACE(sample.place);
    const std::string document = SampleBytes(sample.columns[1]);
    const std::string& expected = sample.columns[2];
    EXPECT_EQ(Delivered(document, true), expected);
    const std::string tags = Delivered(document, false);
    if (document.size() > 2000) continue;

    EXPECT_EQ(InPieces(document, 1), InPieces(document, 4096));
    for (const bool bigEndian : {false, true}) {
      if (!IsPlain(document) || document.empty()) break;
      EXPECT_EQ(Delivered(Utf16(document, bigEndian), true), expected);
    }
    for (size_t size = 0; size < document.size(); ++size) {
      std::string cut = Delivered(document.substr(0, size), false);
      cut.erase(cut.find_last_of("+- ") + 1);
      EXPECT_TRUE(tags.starts_with(cut)) << size << ": " << cut;
    }
  }
}

// Nesting, names and attributes in numbers: reading ends, and soon.
TEST(XmlReader, Masses) {
  const auto repeated = [](const std::string& text, size_t count) {
    std::string all;
    for (size_t i = 0; i < count; ++i) all += text;
    return all;
  };
  const auto numbered = [](const std::string& before, const std::string& behind, size_t count) {
    std::string all;
    for (size_t i = 0; i < count; ++i) all.append(before).append(std::to_string(i)).append(behind);
    return all;
  };
  const std::string prefix = "<a xmlns:p=\"" + std::string(512, 'u') + "\"";
  EXPECT_EQ(Delivered(repeated("<a>", 1024) + repeated("</a>", 1024), false),
            repeated("+1@10 ", 1024) + repeated("-1@10 ", 1024) + "end");
  EXPECT_EQ(Delivered(repeated("<a>", 100000), false), repeated("+1@10 ", 1024) + "fault");
  // Of the last items before names are counted, one is left; the end of the root counts, too.
  const std::string most = numbered("<e", "/>", xml::kFreeItems - 5) + "<e f='' xmlns='n'/>" +
                           numbered("<g", "/>", xml::kMaxMoreNames);
  const std::string delivered =
      "+1@10 " + repeated("+0@0 -0@0 ", xml::kFreeItems - 4 + xml::kMaxMoreNames);
  EXPECT_EQ(Delivered("<a>" + most + "</a>", false), delivered + "-1@10 end");
  EXPECT_EQ(Delivered("<a>" + most + "<h/></a>", false), delivered + "+0@0 -0@0 fault");
  // Names that are met again are not, however many there are.
  EXPECT_EQ(Delivered("<a>" + repeated("<g>0123456789</g>", 200000) + "</a>", false),
            "+1@10 " + repeated("+0@0 -0@0 ", 200000) + "-1@10 end");
  EXPECT_EQ(Delivered("<a" + numbered(" e", "=\"\"", 20000) + "/>", false), "+1@10 -1@10 end");
  EXPECT_EQ(Delivered(prefix + numbered(" p:e", "=\"\"", 20000) + "/>", false), "+1@10 -1@10 end");
  const std::string heavy = "<b" + numbered(" p:e", "=\"\"", 5000) + "/>";
  const std::string expanded = Delivered(prefix + ">" + repeated(heavy, 40) + "</a>", false);
  EXPECT_TRUE(expanded.ends_with("fault")) << expanded.size();
}

TEST(XmlReader, SixteenBitStrings) {
  const struct {
    std::u16string text;
    uint32_t value;
    size_t digits;
  } numbers[] = {{u"16.0300", 16, 2},
                 {u"", 0, 0},
                 {u"x1", 0, 0},
                 {u"4294967297", 1, 10},
                 {u"0012\xFF11", 12, 4}};
  for (const auto& number : numbers) {
    uint32_t value = 7;
    const char16_t* end = nullptr;
    EXPECT_EQ(UTXMLGetDecDWord(number.text.c_str(), &value, &end), 0);
    EXPECT_EQ(value, number.value);
    EXPECT_EQ(end, number.text.c_str() + number.digits);
  }
  EXPECT_EQ(UTwsstrcmp(u"ab", "ab"), 0);
  EXPECT_LT(UTwsstrcmp(u"a", "ab"), 0);
  EXPECT_GT(UTwsstrcmp(u"ab\x0161", "aba"), 0);
  EXPECT_GT(UTwsstrcmp(u"\x0161", "\x61"), 0);  // the low byte is the same
  EXPECT_EQ(UTwsstrncmp(u"abc", "abd", 2), 0);
  EXPECT_GT(UTwsstrncmp(u"abd", "abc", 3), 0);
  EXPECT_EQ(UTwsstrncmp(u"ab", "ab", 9), 0);
  constexpr UTXMLStringValue kMap[] = {{5, "one"}, {6, "two"}};
  uint32_t value = 0;
  EXPECT_EQ(UTXMLFindStringInMap(u"two", kMap, 2, &value), 1);
  EXPECT_EQ(value, 6u);
  EXPECT_EQ(UTXMLFindStringInMap(u"tw", kMap, 2, &value), kXmlNotInMap);
}

}  // namespace
}  // namespace fi::testing
