#include "signature/namespace_reader.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/support/bytes.h"
#include "tests/support/memory_handle.h"

namespace fi {
namespace {

using testing::Bytes;

// The name, "(none)", or "(unread)".
std::string Read(const std::string& file) {
  testing::MemoryHandle handle(file);
  const ScopedStream stream(&handle);
  NamespaceBuffer buffer = UnreadNamespace();
  ReadXmlNamespace(stream.get(), buffer);
  if (buffer[0] == kNamespaceNone) return "(none)";
  if (buffer[0] == kNamespaceUnread) return "(unread)";
  std::string name;
  for (size_t i = 0; buffer[i] != 0; ++i) name += static_cast<char>(buffer[i]);
  return name;
}

// A document whose namespace attribute ends, with its "=", at the given count of bytes.
std::string EndingAt(size_t count) {
  const std::string head = "<?xml version=\"1.0\"?><r ";
  const std::string attribute = "xmlns=";
  // The three bytes behind the "?" that closes the declaration are swallowed without being counted.
  const size_t padding = count + 3 - head.size() - attribute.size();
  return head + std::string(padding, ' ') + attribute + "'urn:x'>";
}

TEST(NamespaceReader, Documents) {
  const std::string declaration = "<?xml version=\"1.0\"?>";
  struct Case {
    const char* name;
    std::string file;
    std::string expected;
  };
  const Case cases[] = {
      {"double quotes", declaration + "\n<r xmlns=\"urn:x\">", "urn:x"},
      {"apostrophes", declaration + "\n<r xmlns='urn:x'>", "urn:x"},
      {"other quote inside", declaration + "\n<r xmlns='a\"b'>", "a\"b"},
      {"byte-order mark", "\xEF\xBB\xBF" + declaration + "\n<r xmlns='urn:x'>", "urn:x"},
      {"bytes are not decoded", declaration + "\n<r xmlns='\xC3\xA9'>", "\xC3\xA9"},
      {"empty namespace", declaration + "\n<r xmlns=''>", ""},
      {"prefixed only", declaration + "\n<r xmlns:p='urn:x'>", "(none)"},
      {"default after prefixed", declaration + "\n<p:r xmlns:p='a' xmlns='b'>", "b"},
      {"blank before =", declaration + "\n<r xmlns ='urn:x'>", "(none)"},
      {"no quotes", declaration + "\n<r xmlns=urn:x>", "(none)"},
      {"unclosed value", declaration + "\n<r xmlns='urn:x", "(none)"},
      {"no declaration", "<r xmlns='urn:x'>", "(none)"},
      {"declaration in capitals", "<?XML version='1.0'?>\n<r xmlns='urn:x'>", "(none)"},
      {"UTF-16", Bytes("\xFF\xFE<\0?\0x\0m\0l\0"), "(none)"},
      {"instruction aid", declaration + "\n<?aid style='50'?><r xmlns='urn:x'>", "aid"},
      {"instruction aid behind text", declaration + "\n<r>a?aid", "(none)"},
      {"end inside an instruction", declaration + "\n<?ai", "(none)"},
      {"three bytes behind a ? are swallowed", declaration + "<r xmlns='urn:x'>", "urn:x"},
      {"value of 255 bytes", declaration + "\n<r xmlns='" + std::string(255, 'v') + "'>",
       std::string(255, 'v')},
      {"value of 256 bytes", declaration + "\n<r xmlns='" + std::string(256, 'v') + "'>", "(none)"},
      {"token that fills the buffer starts again",
       declaration + "\n<" + std::string(255, 'n') + "xmlns='urn:x'>", "urn:x"},
      {"token one short of it", declaration + "\n<" + std::string(254, 'n') + "xmlns='urn:x'>",
       "(none)"},
      {"within the first kilobyte", EndingAt(1024), "urn:x"},
      {"one byte behind it", EndingAt(1025), "(none)"},
      {"empty file", "", "(none)"},
      {"shorter than a mark", "<?", "(none)"},
  };
  for (const Case& test : cases) EXPECT_EQ(Read(test.file), test.expected) << test.name;
}

}  // namespace
}  // namespace fi
