// Properties of real files. The folder is found through FORMATID_CORPUS, or beside the source tree;
// where there is none, there is nothing to test.

#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "formatid/identify.h"
#include "formatid/properties.h"
#include "tests/support/samples.h"

namespace fi {
namespace {

namespace fs = std::filesystem;

struct Found {
  std::string name;
  std::string encryption;
  std::string puid;
  std::string candidates;
};

Found Look(const fs::path& path) {
  const std::string text = path.string();
  FIRequest request = FI_REQUEST_INIT;
  FIResult result = FI_RESULT_INIT;
  FIProperties properties = FI_PROPERTIES_INIT;
  request.source.kind = kFiSourcePath;
  request.source.path = text.c_str();
  request.properties = &properties;
  FIIdentify(&request, &result);
  Found found{path.filename().string(), "", properties.puid, result.puids};
  for (uint32_t i = 0; i < properties.count; ++i) {
    if (std::strcmp(properties.items[i].name, "encryption") == 0) {
      found.encryption = properties.items[i].value;
    }
  }
  return found;
}

const std::vector<Found>& Corpus() {
  static const std::vector<Found> kFiles = [] {
    std::vector<Found> files;
    const char* named = std::getenv("FORMATID_CORPUS");
    const fs::path folder = named != nullptr ? fs::path(named) : fs::path(FORMATID_CORPUS_DIR);
    std::ifstream manifest(folder / "manifest.tsv");
    std::string line;
    std::getline(manifest, line);
    while (std::getline(manifest, line)) {
      files.push_back(Look(folder / line.substr(0, line.find('\t'))));
    }
    return files;
  }();
  return kFiles;
}

// "fmt/736" of "1a2b3c4d_fmt-736-signature-id-1063.cwk": what a file was made to be that the
// registry's signatures are tried with. Empty for other files.
std::string LabelOf(const std::string& name) {
  size_t at = name.find("x-fmt-");
  if (at == std::string::npos) at = name.find("fmt-");
  if (at == std::string::npos || name.find("signature-id-") == std::string::npos) return "";
  const size_t number = name.find("fmt-", at) + 4;
  const std::string series = name.substr(at, number - 1 - at);
  return series + "/" + name.substr(number, name.find('-', number) - number);
}

bool Holds(std::string_view list, std::string_view puid) {
  while (!list.empty()) {
    const size_t comma = list.find(',');
    if (list.substr(0, comma) == puid) return true;
    if (comma == std::string_view::npos) return false;
    list.remove_prefix(comma + 1);
  }
  return false;
}

TEST(PropertiesOfTheCorpus, AllEncryptedFilesSaySoAndNoOther) {
  if (Corpus().empty()) GTEST_SKIP() << "no corpus";
  std::map<std::string, std::string> expected;
  for (const testing::Sample& row : testing::ReadSamples("encrypted_corpus.txt", 2)) {
    expected[row.columns[0]] = row.columns[1];
  }
  size_t seen = 0;
  for (const Found& file : Corpus()) {
    const auto row = expected.find(file.name);
    if (row != expected.end()) {
      ++seen;
      EXPECT_EQ(file.encryption, row->second) << file.name;
    } else {
      EXPECT_TRUE(file.encryption.empty() || file.encryption == "none")
          << file.name << " " << file.encryption;
    }
  }
  EXPECT_EQ(seen, expected.size());
}

TEST(PropertiesOfTheCorpus, PronomIdentifiersAreRightWhereTheyAreGiven) {
  if (Corpus().empty()) GTEST_SKIP() << "no corpus";
  size_t known = 0;
  size_t exact = 0;
  for (const Found& file : Corpus()) {
    const std::string label = LabelOf(file.name);
    if (label.empty()) continue;
    EXPECT_TRUE(file.puid.empty() || file.puid == label) << file.name << " " << file.puid;
    if (!Holds(file.candidates, label)) continue;  // recognised as something else
    ++known;
    if (file.puid == label) ++exact;
  }
  RecordProperty("known", static_cast<int>(known));
  RecordProperty("exact", static_cast<int>(exact));
  EXPECT_GT(known, 0u);
  EXPECT_GE(exact * 10, known * 7) << exact << " of " << known;
}

}  // namespace
}  // namespace fi
