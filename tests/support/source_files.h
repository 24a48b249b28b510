// Files for tests that go through whole identifications: samples of all kinds, written by the
// tests' own writers, and the files of the folder that FORMATID_CORPUS names.
#ifndef FI_TESTS_SUPPORT_SOURCE_FILES_H_
#define FI_TESTS_SUPPORT_SOURCE_FILES_H_

#include <filesystem>
#include <string>
#include <vector>

namespace fi::testing {

struct SourceFile {
  std::string name;  // without directories
  std::string bytes;
};

// Some hundred files of all kinds: signatures, text, packages, compound files, encrypted ones.
std::vector<SourceFile> SampleFiles();

// The regular files below the corpus folder, in the order of their paths; none where there is no
// such folder.
std::vector<std::filesystem::path> CorpusFiles();

std::string ReadFile(const std::filesystem::path& path);

// A folder for the files of a test, gone with it.
class TemporaryFolder {
 public:
  TemporaryFolder();
  ~TemporaryFolder();
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  // Writes the file in place of the one before it; its path.
  std::filesystem::path Write(const SourceFile& file) const;

 private:
  std::filesystem::path path_;
};

}  // namespace fi::testing

#endif  // FI_TESTS_SUPPORT_SOURCE_FILES_H_
