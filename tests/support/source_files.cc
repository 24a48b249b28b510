#include "tests/support/source_files.h"

#include <gtest/gtest.h>
#include <stdlib.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <iterator>

#include "tests/support/compound_file_writer.h"
#include "tests/support/corpus.h"
#include "tests/support/encrypted_package_writer.h"
#include "tests/support/samples.h"
#include "tests/support/storage_samples.h"
#include "tests/support/zip_writer.h"

namespace fi::testing {
namespace {

namespace fs = std::filesystem;

std::vector<Node> NodesOf(const std::vector<StorageNode>& children) {
  std::vector<Node> nodes;
  for (const StorageNode& child : children) {
    const std::u16string name(child.name.begin(), child.name.end());
    nodes.push_back(child.isStorage ? Folder(name, NodesOf(child.children))
                                    : Stream(name, child.bytes));
  }
  return nodes;
}

std::string EncryptedDocument() {
  const EncryptedPackage package = WriteAgile("PK", {.spins = 10});
  return WriteCompoundFile(
      {Stream(u"EncryptionInfo", package.info), Stream(u"EncryptedPackage", package.package)});
}

}  // namespace

std::vector<SourceFile> SampleFiles() {
  std::vector<SourceFile> files;
  for (const Sample& sample : ReadSamples("supplement.txt", 4, 1)) {
    const std::string& name = sample.columns[3];
    files.push_back({name.empty() ? "sample" : name, SampleBytes(sample.columns[2])});
  }
  for (const Sample& sample : ReadSamples("packages.txt", 5, 1)) {
    files.push_back({"package.zip", SamplePackage(sample.columns[3])});
  }
  for (const Sample& sample : ReadSamples("storages.txt", 5, 1)) {
    files.push_back({"storage.doc", WriteCompoundFile(NodesOf(SampleStorage(sample.columns[3])))});
  }
  files.push_back({"closed.xlsx", EncryptedDocument()});
  // Text that is read over many blocks, and binary content that nothing names.
  std::string lines;
  std::string bytes;
  while (lines.size() < 300'000)
    lines += "one line of plain prose, and " + std::to_string(lines.size()) + "\n";
  while (bytes.size() < 300'000) bytes += static_cast<char>(bytes.size() * 7 + 1);
  files.push_back({"long.txt", lines});
  files.push_back({"long.bin", bytes});
  files.push_back({"empty", ""});
  return files;
}

std::vector<fs::path> CorpusFiles() {
  const fs::path folder = CorpusFolder();
  std::vector<fs::path> files;
  if (!fs::is_directory(folder)) return files;
  for (const fs::directory_entry& entry : fs::recursive_directory_iterator(folder)) {
    if (entry.is_regular_file() && !entry.is_symlink()) files.push_back(entry.path());
  }
  std::sort(files.begin(), files.end());
  return files;
}

std::string ReadFile(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

TemporaryFolder::TemporaryFolder() {
  std::string name = (fs::temp_directory_path() / "formatid-XXXXXX").string();
  if (::mkdtemp(name.data()) == nullptr) ADD_FAILURE() << "no temporary folder";
  path_ = name;
}

TemporaryFolder::~TemporaryFolder() {
  std::error_code ignored;
  fs::remove_all(path_, ignored);
}

fs::path TemporaryFolder::Write(const SourceFile& file) const {
  const fs::path path = path_ / file.name;
  std::ofstream(path, std::ios::binary | std::ios::trunc) << file.bytes;
  return path;
}

}  // namespace fi::testing
