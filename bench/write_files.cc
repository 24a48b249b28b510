// Writes the files over which bench/instructions counts: FOLDER/KIND/NUMBER, the same ones each
// time. They are the samples of the tests, and larger files of the kinds that are met most.
//
// usage: formatid_bench_files FOLDER

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <map>
#include <string>
#include <vector>

#include "bench/packages.h"
#include "tests/support/compound_file_writer.h"
#include "tests/support/open_handle.h"
#include "tests/support/samples.h"
#include "tests/support/storage_samples.h"
#include "tests/support/zip_writer.h"

namespace {

using fi::testing::Sample;

class Writer {
 public:
  explicit Writer(const char* folder) : folder_(folder) {}

  void Write(const std::string& kind, const std::string& bytes) {
    char name[16];
    std::snprintf(name, sizeof(name), "%04u", ++counts_[kind]);
    std::filesystem::create_directories(folder_ / kind);
    std::ofstream file(folder_ / kind / name, std::ios::binary);
    file << bytes;
    good_ = good_ && file.flush().good();
  }

  bool good() const { return good_; }

 private:
  const std::filesystem::path folder_;
  std::map<std::string, unsigned> counts_;
  bool good_ = true;
};

std::vector<fi::testing::Node> Nodes(const std::vector<fi::testing::StorageNode>& storage) {
  std::vector<fi::testing::Node> nodes;
  for (const fi::testing::StorageNode& node : storage) {
    std::u16string name;
    for (const char c : node.name) name += static_cast<unsigned char>(c);
    nodes.push_back({name, node.isStorage, node.bytes, "", Nodes(node.children)});
  }
  return nodes;
}

void WriteSamples(Writer& writer) {
  for (const Sample& sample : fi::testing::ReadSamples("signatures.txt", 3)) {
    writer.Write("signature", fi::testing::SampleBytes(sample.columns[2]));
  }
  for (const Sample& sample : fi::testing::ReadSamples("packages.txt", 4)) {
    writer.Write("package", fi::testing::SamplePackage(sample.columns[3]));
  }
  for (const Sample& sample : fi::testing::ReadSamples("storages.txt", 4)) {
    const auto storage = fi::testing::SampleStorage(sample.columns[3]);
    writer.Write("storage", fi::testing::WriteCompoundFile(Nodes(storage)));
  }
  const std::filesystem::path probes = std::filesystem::path(FORMATID_TEST_DATA_DIR) / "probes";
  std::vector<std::string> names;
  for (const auto& entry : std::filesystem::directory_iterator(probes)) {
    names.push_back(entry.path().filename());
  }
  std::sort(names.begin(), names.end());
  for (const std::string& name : names) {
    for (const Sample& sample : fi::testing::ReadSamples("probes/" + name, 3)) {
      writer.Write("probe", fi::testing::SampleBytes(sample.columns[2]));
    }
  }
}

std::string Lines(size_t size, const char* before, const char* behind) {
  std::string text;
  for (size_t line = 0; text.size() < size; ++line) {
    text.append(before).append(std::to_string(line * line)).append(behind);
  }
  return text;
}

// An index of half a megabyte in the XML of early iWork documents.
std::string IworkIndex() {
  const std::string root =
      "<sl:document xmlns:sl=\"http://developer.apple.com/namespaces/sl\" "
      "xmlns:sf=\"http://developer.apple.com/namespaces/sf\">";
  return root + Lines(500000, "<sf:p sf:style=\"paragraph\" sf:id=\"", "\">Words.<sf:br/></sf:p>") +
         "</sl:document>";
}

void WriteLargerFiles(Writer& writer) {
  const std::string docx = fi::bench::OfficeOpenXml();
  const std::string odt = fi::bench::OpenDocument();
  const std::string iwork = fi::testing::ZipWriter()
                                .Add("buildVersionHistory.plist", "")
                                .Add("index.xml", IworkIndex())
                                .Finish();
  std::vector<fi::testing::Node> message;
  for (int i = 1000; i < 1100; ++i) {
    const std::string name = "__substg1.0_" + std::to_string(i) + "001E";
    message.push_back(fi::testing::Stream({name.begin(), name.end()}, "text"));
  }
  message.push_back(fi::testing::Stream(u"__properties_version1.0", std::string(500, '\0')));
  const std::string storage = fi::testing::WriteCompoundFile(message);
  const std::string prose =
      Lines(100000, "Only words, line after line, and a number such as ", ".\n");
  const std::string table = Lines(100000, "a name;12,50;", ";2001-05-17\n");
  for (int i = 0; i < 20; ++i) {
    writer.Write("docx", docx);
    writer.Write("odt", odt);
    writer.Write("cut_zip", docx.substr(0, docx.size() / 2));
    writer.Write("message", storage);
    writer.Write("prose", prose);
    writer.Write("table", table);
    writer.Write("binary", "x" + fi::testing::Pattern(100000, 1));
  }
  writer.Write("iwork", iwork);
}

}  // namespace

int main(int count, char** arguments) {
  if (count != 2) {
    std::fputs("usage: formatid_bench_files FOLDER\n", stderr);
    return 2;
  }
  Writer writer(arguments[1]);
  WriteSamples(writer);
  WriteLargerFiles(writer);
  if (!writer.good()) std::fputs("formatid_bench_files: cannot write\n", stderr);
  return writer.good() ? 0 : 1;
}
