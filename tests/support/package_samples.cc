#include <string>
#include <vector>

#include "tests/support/storage_samples.h"
#include "tests/support/zip_writer.h"

namespace fi::testing {
namespace {

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

std::string SamplePackage(const std::string& notation) { return Package(SampleStorage(notation)); }

}  // namespace fi::testing
