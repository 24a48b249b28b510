// Encrypted packages that other programs wrote, with the passwords that their sources state. The
// folder is found through FORMATID_CORPUS, or beside the source tree; where there is none, there is
// nothing to test.
#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <map>
#include <string>

#include "platform/decryption.h"
#include "platform/io.h"

namespace fi::crypto {
namespace {

namespace fs = std::filesystem;

// By the beginning of the file name, which is that of the SHA-256 of the file.
const std::map<std::string, std::string> kPasswords = {
    {"0121ff9f", "Password1234_"},
    {"06056246", "Password1234_"},
    {"168fecb5", "VelvetSweatshop"},
    {"26ffd455", "password"},
    {"3f792e39", "Password1234_"},
    {"4ed8b221", "p\xC3\xA4ssw\xC3\xB6rd"},
    {"509a2dea", "Password1234_"},
    {"544278e9", "password"},
    {"59c79d4d", "VelvetSweatshop"},
    {"70494fcc", "VelvetSweatshop"},
    {"77a8a4d9", "password"},
    {"7b7bc9c4", "password"},
    {"8370e820", "p\xC3\xA4ssw\xC3\xB6rd\xF0\x9F\x94\x92"},
    {"87968add", "password"},
    {"8dea8be9", "password"},
    {"944a77d7", "password"},
    {"95c55945", "password"},
    {"9babf0f3", "VelvetSweatshop"},
    {"a313fa4b", "password"},
    {"beaabbd7", "password"},
    {"c86534ac", "password"},
    {"c9989941", "p\xC3\xA4ssw\xC3\xB6rd\xF0\x9F\x94\x92"},
    {"ca3ec0a4", "password"},
    {"caae9622", "123"},
    {"d265dcf0", "Password1234_"},
    {"e2398063", "VelvetSweatshop"},
    {"ecd60169", "Password1234_"},
    {"f790bbce", "1234"},
};

const std::string* answer = nullptr;

uint32_t Answer(uint32_t, FIPasswordRequest* request, uintptr_t, uintptr_t) {
  std::memcpy(request->password, answer->c_str(), answer->size() + 1);
  return 0;
}

int16_t Open(IOHandle* document, const std::string& password, io::OwnedHandle* view) {
  answer = &password;
  const O12Options options{sizeof(options), {}};
  const O12PasswordSource source{sizeof(source), Answer, document, {}};
  IOHandle* handles[3];
  const int16_t status = O12InitDecryption(document, nullptr, nullptr, &options, &source,
                                           &handles[0], &handles[1], &handles[2]);
  view->reset(handles[2]);
  return status;
}

TEST(CorpusPackages, OpenWithTheirPasswords) {
  const char* named = std::getenv("FORMATID_CORPUS");
  const fs::path folder =
      fs::path(named != nullptr ? named : FORMATID_CORPUS_DIR) / "files" / "cfb-encrypted-ooxml";
  if (!fs::is_directory(folder)) GTEST_SKIP() << "no corpus in " << folder;
  size_t opened = 0;
  for (const auto& entry : fs::directory_iterator(folder)) {
    const std::string name = entry.path().filename().string();
    const auto found = kPasswords.find(name.substr(0, 8));
    if (found == kPasswords.end()) continue;
    IOHandle* file = nullptr;
    ASSERT_EQ(IOOpen(&file, kIoSourcePath, entry.path().c_str(), 1), kIoOk) << name;
    const io::OwnedHandle document(file);
    io::OwnedHandle view;
    EXPECT_EQ(Open(file, found->second + "x", &view), kFiWrongPassword) << name;
    ASSERT_EQ(Open(file, found->second, &view), kFiOk) << name;
    std::string start(2, '\0');
    EXPECT_EQ(io::Read(view.get(), start.data(), 2), 2u) << name;
    EXPECT_EQ(start, "PK") << name;
    ++opened;
  }
  EXPECT_EQ(opened, kPasswords.size());
}

}  // namespace
}  // namespace fi::crypto
