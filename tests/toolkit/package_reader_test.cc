// Relationships of packages and where they lead.
#include <gtest/gtest.h>

#include <array>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "platform/package.h"
#include "tests/support/open_handle.h"
#include "tests/support/samples.h"
#include "tests/support/zip_writer.h"
#include "toolkit/opc/part_name.h"

namespace fi::testing {
namespace {

using opc::Escapes;

std::string Resolved(const std::string& source, const std::string& target, Escapes escapes) {
  opc::PartName name;
  if (!opc::ResolveReference(source, target, escapes, &name)) return "no";
  return std::string(name.view());
}

TEST(PackageReader, Targets) {
  for (const Sample& sample : ReadSamples("toolkit/opc_targets.txt", 4, 1)) {
    const std::string source = sample.columns[0] == "-" ? "" : sample.columns[0];
    const std::string& target = sample.columns[1];
    const std::string& decoded = sample.columns[sample.columns[3].empty() ? 2 : 3];
    EXPECT_EQ(Resolved(source, target, Escapes::kAsWritten), sample.columns[2]) << sample.place;
    EXPECT_EQ(Resolved(source, target, Escapes::kDecoded), decoded) << sample.place;
  }
  // Names of 511 bytes fit.
  const std::string name(511, 'n');
  EXPECT_EQ(Resolved("", name, Escapes::kAsWritten), name);
  EXPECT_EQ(Resolved("", "./../" + name, Escapes::kAsWritten), name);
  EXPECT_EQ(Resolved("", name + "n", Escapes::kAsWritten), "no");
  EXPECT_EQ(Resolved("", std::string(1025, '%'), Escapes::kDecoded), "no");
}

struct PartCloser {
  void operator()(PKGHandle* part) const { PKGCloseFile(part); }
};
using Part = std::unique_ptr<PKGHandle, PartCloser>;

std::string Narrow(const char16_t* text, size_t length) { return {text, text + length}; }

// Takes the steps of toolkit/opc_packages.txt.
std::string Found(PKGHandle* package, const std::string& steps) {
  std::vector<Part> parts;
  std::string found;
  std::istringstream words(steps);
  for (std::string word; words >> word;) {
    const std::string what = word.substr(word.find('=') + 1);
    const std::u16string wide(what.begin(), what.end());
    PKGHandle* const last = parts.empty() ? package : parts.back().get();
    PKGRelationship relationship{};
    PKGHandle* part = nullptr;
    if (word.starts_with("rel=")) {
      if (PKGGetRelAttrByType(&relationship, nullptr, what.c_str(), last) != 0) return "none";
      EXPECT_EQ(relationship.target[relationship.targetLength], 0);
      const std::u16string id = relationship.id;
      found = Narrow(id.data(), id.size()) + (id.empty() ? "" : " ");
      found += Narrow(relationship.target, relationship.targetLength);
      if (found.ends_with(' ')) found.pop_back();
      continue;
    }
    const uint16_t status =
        word.starts_with("type=") ? PKGOpenFileByType(&part, &relationship, what.c_str(), package)
        : word.starts_with("id=") ? PKGOpenFileByRelId(&part, wide.c_str(), last)
                                  : PKGOpenFileByTarget(&part, wide.c_str(), package);
    EXPECT_EQ(status == 0, part != nullptr);
    if (status != 0) return "none";
    parts.emplace_back(part);
    // Each time it is asked for, the handle stands at the start.
    std::array<char, 100> head{};
    for (int i = 0; i < 2; ++i) {
      const uint32_t size = io::Read(PKGGetHIOFILE(part), head.data(), head.size());
      found.assign(head.data(), size);
    }
  }
  return found;
}

TEST(PackageReader, Packages) {
  for (const Sample& sample : ReadSamples("toolkit/opc_packages.txt", 4)) {
    SCOPED_TRACE(sample.place);
    const std::string bytes = SamplePackage(sample.columns[2]);
    const io::OwnedHandle file = OpenMemory(bytes);
    IOHandle* view = file.get();
    ASSERT_EQ(file->operations->open(file.get(), &view, kIoSourcePackage, nullptr, 0), 0);
    const io::OwnedHandle owned(view);
    PKGHandle* package = nullptr;
    if (PKGInitEx(view, &package) != 0) {
      EXPECT_EQ(sample.columns[3], "no package");
      continue;
    }
    EXPECT_EQ(PKGGetHIOFILE(package), nullptr);
    EXPECT_EQ(Found(package, sample.columns[1]), sample.columns[3]);
    EXPECT_EQ(Found(package, sample.columns[1]), sample.columns[3]);  // a second time as well
    PKGDeinit(package);
  }
  EXPECT_EQ(PKGCloseFile(nullptr), 0);
  EXPECT_EQ(PKGDeinit(nullptr), 0);
}

}  // namespace
}  // namespace fi::testing
