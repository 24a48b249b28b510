#include "tests/support/storage_samples.h"

#include <gtest/gtest.h>

#include <map>
#include <string_view>
#include <utility>

#include "tests/support/samples.h"
#include "tests/support/zip_writer.h"

namespace fi::testing {
namespace {

using Parts = std::map<std::string, std::string, std::less<>>;

std::string Expanded(std::string_view text, const Parts& parts) {
  constexpr std::string_view kNameCharacters = "ABCDEFGHIJKLMNOPQRSTUVWXYZ_0123456789";
  std::string expanded;
  for (size_t at = text.find('$'); at != std::string_view::npos; at = text.find('$')) {
    expanded += text.substr(0, at);
    text.remove_prefix(at + 1);
    const std::string_view name = text.substr(0, text.find_first_not_of(kNameCharacters));
    const auto part = parts.find(name);
    if (part == parts.end()) ADD_FAILURE() << "no part " << name;
    if (part != parts.end()) expanded += part->second;
    text.remove_prefix(name.size());
  }
  return expanded.append(text);
}

Parts ReadParts() {
  Parts parts;
  for (const char* file : {"storage_parts.txt", "package_parts.txt"}) {
    for (const Sample& sample : ReadSamples(file, 2)) {
      parts[sample.columns[0]] = Expanded(sample.columns[1], parts);
    }
  }
  return parts;
}

class StorageReader {
 public:
  explicit StorageReader(std::string_view notation) : rest_(notation) {}

  std::vector<StorageNode> Read() {
    std::vector<StorageNode> nodes = Nodes();
    if (!rest_.empty()) ADD_FAILURE() << "wrong notation at: " << rest_;
    return nodes;
  }

 private:
  std::vector<StorageNode> Nodes() {
    std::vector<StorageNode> nodes;
    while (true) {
      const std::string_view name = Until("={;}");
      if (rest_.empty() || rest_[0] == ';' || rest_[0] == '}') {
        if (name.find_first_not_of(' ') != std::string_view::npos) ADD_FAILURE() << name;
        return nodes;
      }
      StorageNode node{SampleBytes(name), rest_[0] == '{', "", {}};
      rest_.remove_prefix(1);
      if (node.isStorage) {
        node.children = Nodes();
        if (!rest_.starts_with('}')) ADD_FAILURE() << "a storage has no end: " << node.name;
        rest_.remove_prefix(rest_.empty() ? 0 : 1);
        (void)Until(";}");
      } else {
        node.bytes = SampleBytes(Until(";}"));
      }
      nodes.push_back(std::move(node));
      if (rest_.starts_with(';')) rest_.remove_prefix(1);
    }
  }

  // What stands before one of the marks or the end, from where the rest begins then.
  std::string_view Until(std::string_view marks) {
    bool quoted = false;
    size_t size = 0;
    for (; size < rest_.size(); ++size) {
      if (rest_[size] == '\'') quoted = !quoted;
      if (!quoted && marks.find(rest_[size]) != std::string_view::npos) break;
    }
    const std::string_view piece = rest_.substr(0, size);
    rest_.remove_prefix(size);
    return piece;
  }

  std::string_view rest_;
};

std::string Package(const std::vector<StorageNode>& nodes) {
  ZipWriter writer;
  for (const StorageNode& node : nodes) {
    if (node.isStorage) {
      writer.Add(node.name, Package(node.children), {.method = 0});
    } else {
      writer.Add(node.name, node.bytes);
    }
  }
  return writer.Finish();
}

}  // namespace

std::vector<StorageNode> SampleStorage(const std::string& notation) {
  static const Parts kParts = ReadParts();
  const std::string expanded = Expanded(notation, kParts);
  return StorageReader(expanded).Read();
}

std::string SamplePackage(const std::string& notation) { return Package(SampleStorage(notation)); }

}  // namespace fi::testing
