// The XML reader over a list of content types as word processors write it: up to the part that
// decides, and whole.
#include <benchmark/benchmark.h>

#include <string>

#include "formatid/io.h"
#include "platform/io.h"
#include "platform/xml.h"

namespace {

std::string ContentTypes() {
  const std::string word = "application/vnd.openxmlformats-officedocument.wordprocessingml.";
  std::string document =
      "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\r\n"
      "<Types xmlns=\"http://schemas.openxmlformats.org/package/2006/content-types\">"
      "<Default Extension=\"rels\" "
      "ContentType=\"application/vnd.openxmlformats-package.relationships+xml\"/>"
      "<Default Extension=\"xml\" ContentType=\"application/xml\"/>";
  for (const char* part : {"document", "styles", "settings", "fontTable", "numbering", "header1",
                           "footer1", "webSettings"}) {
    document += std::string("<Override PartName=\"/word/") + part + ".xml\" ContentType=\"" + word;
    document += std::string(part) + "+xml\"/>";
  }
  return document + "</Types>";
}

void XmlContentTypes(benchmark::State& state) {
  constexpr UTXMLTagName kNames[] = {{101, "Default"}, {102, "Override"}, {103, "Types"}};
  const std::string document = ContentTypes();
  const IOMemorySource source = {document.data(), document.size(), nullptr};
  IOHandle* handle = nullptr;
  if (IOOpen(&handle, kIoSourceMemory, &source, 1) != kIoOk) return state.SkipWithError("IOOpen");
  const fi::io::OwnedHandle owned(handle);
  for (auto _ : state) {
    (void)fi::io::Seek(handle, kIoFromStart, 0);
    fi::xml::ScopedReader reader(handle);
    (void)UTXMLAddTagMap(reader.get(),
                         "http://schemas.openxmlformats.org/package/2006/content-types", 1, 0,
                         kNames, 3);
    UTXMLTag tag;
    for (int64_t starts = 0; starts < state.range(0);) {
      if (UTXMLReadNextTag(reader.get(), &tag, nullptr) != kXmlOk) break;
      if (tag.flags == kXmlEndTag) continue;
      ++starts;
      const char16_t* value = nullptr;
      uint32_t length = 0;
      const char* const name = tag.id == 101 ? "Extension" : "PartName";
      benchmark::DoNotOptimize(UTXMLGetAttribute(reader.get(), 0, name, &value, &length));
    }
  }
}
BENCHMARK(XmlContentTypes)->Arg(4)->Arg(1000);

}  // namespace
