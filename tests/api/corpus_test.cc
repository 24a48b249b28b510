// Real files with known identifiers. See tests/support/corpus.h.

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "api/supplement.h"
#include "formatid/formatid.h"
#include "formatid/platform.h"
#include "platform/io.h"
#include "registry/format_ids.h"
#include "signature/signature_walk.h"
#include "tables/signature_table.h"
#include "tests/support/corpus.h"
#include "tests/support/plain_walk.h"

namespace fi {
namespace {

namespace fs = std::filesystem;

struct CorpusFile {
  std::string path;
  FormatId id = 0;  // 0: not settled
  uint32_t status = 0;
  uint16_t entry = 0;  // the deciding row; 0: none
};

// Columns of the manifest: path, id, status, entry, family ...
std::vector<CorpusFile> ReadManifest(const fs::path& folder) {
  std::vector<CorpusFile> files;
  std::ifstream manifest(folder / "manifest.tsv");
  std::string line;
  std::getline(manifest, line);
  while (std::getline(manifest, line)) {
    std::istringstream columns(line);
    std::string path, id, status, entry;
    std::getline(columns, path, '\t');
    std::getline(columns, id, '\t');
    std::getline(columns, status, '\t');
    std::getline(columns, entry, '\t');
    files.push_back({(folder / path).string(), static_cast<FormatId>(std::atoi(id.c_str())),
                     static_cast<uint32_t>(std::atoi(status.c_str())),
                     static_cast<uint16_t>(std::atoi(entry.c_str()))});
  }
  return files;
}

class CorpusTest : public ::testing::Test {
 protected:
  void SetUp() override {
    const fs::path folder = testing::CorpusFolder();
    if (folder.empty()) GTEST_SKIP() << "no corpus is named";
    files_ = ReadManifest(folder);
    ASSERT_FALSE(files_.empty()) << "no manifest.tsv in " << folder;
  }

  std::vector<CorpusFile> files_;
};

io::OwnedHandle Open(const std::string& path) {
  IOHandle* handle = nullptr;
  EXPECT_EQ(IOOpen(&handle, kIoSourcePath, path.c_str(), 1), kIoOk) << path;
  return io::OwnedHandle(handle);
}

TEST_F(CorpusTest, SettledFilesAnswerTheirIdentifiers) {
  uint32_t checked = 0;
  for (const CorpusFile& file : files_) {
    if (file.id == 0) continue;
    const io::OwnedHandle handle = Open(file.path);
    if (handle == nullptr) continue;
    FormatId id = 0;
    FIEvidence evidence{};
    const uint32_t flags = kFiUseFlags | kFiTextFallback;
    EXPECT_EQ(FIIdHandleEvidence(handle.get(), flags, &id, &evidence), file.status) << file.path;
    EXPECT_EQ(id, file.id) << file.path;
    EXPECT_EQ(evidence.signature, file.entry) << file.path;
    ++checked;
  }
  EXPECT_GT(checked, 2500u);
}

// The supplement speaks where the answer is general, and of message items by their class; nothing
// else changes.
TEST_F(CorpusTest, SupplementKeepsSpecificAnswers) {
  uint32_t named = 0;
  for (const CorpusFile& file : files_) {
    const io::OwnedHandle handle = Open(file.path);
    if (handle == nullptr) continue;
    for (const uint32_t delimited : {0u, uint32_t{kFiDelimitedText}}) {
      const uint32_t flags = kFiUseFlags | kFiTextFallback | delimited;
      FormatId base = 0;
      FormatId id = 0;
      const uint32_t status = FIIdHandle(handle.get(), flags, &base);
      FIEvidence evidence{};
      EXPECT_EQ(FIIdHandleEvidence(handle.get(), flags | kFiSupplement, &id, &evidence), status)
          << file.path;
      const bool isCorrected = (evidence.basis & kFiBasisCorrection) != 0;
      EXPECT_TRUE(id == base || isCorrected || IsGeneralAnswer(base)) << file.path << ' ' << id;
      EXPECT_TRUE(!isCorrected || evidence.signature == base) << file.path;
      named += id != base ? 1 : 0;
    }
  }
  EXPECT_GT(named, 500u);
}

TEST_F(CorpusTest, IndexAgreesWithThePlainWalk) {
  for (const CorpusFile& file : files_) {
    WalkResult results[2];
    for (const bool plain : {false, true}) {
      const io::OwnedHandle handle = Open(file.path);
      if (handle == nullptr) continue;
      const ScopedStream stream(handle.get());
      SignatureRun run;
      run.stream = stream.get();
      run.isStorage = io::GetInfo(handle.get(), kIoInfoIsStorage, nullptr) &&
                      io::GetInfo(handle.get(), kIoInfoClassId, run.classId.data());
      results[plain] = plain ? testing::PlainWalk(run) : WalkSignatures(run);
    }
    EXPECT_EQ(results[0].id, results[1].id) << file.path;
    EXPECT_EQ(results[0].row, results[1].row) << file.path;
  }
}

}  // namespace
}  // namespace fi
