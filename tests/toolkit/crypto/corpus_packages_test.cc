// Encrypted packages that other programs wrote. Some of their passwords are stated by the sources
// of the samples, the others were found by trying. See
// tests/support/corpus.h.
#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <string>

#include "platform/decryption.h"
#include "platform/io.h"
#include "tests/support/corpus.h"
#include "tests/support/package_opening.h"
#include "tests/support/samples.h"

namespace fi::testing {
namespace {

namespace fs = std::filesystem;

TEST(CorpusPackages, OpenWithTheirPasswords) {
  const fs::path folder = CorpusFolder() / "files" / "cfb-encrypted-ooxml";
  if (!fs::is_directory(folder)) GTEST_SKIP() << "no corpus in " << folder;
  std::map<std::string, fs::path> files;
  for (const auto& entry : fs::directory_iterator(folder)) {
    files[entry.path().filename().string().substr(0, 8)] = entry.path();
  }
  for (const Sample& sample : ReadSamples("toolkit/package_passwords.txt", 2)) {
    SCOPED_TRACE(sample.place);
    const std::string password = SampleBytes(sample.columns[1]);
    IOHandle* file = nullptr;
    ASSERT_EQ(IOOpen(&file, kIoSourcePath, files[sample.columns[0]].c_str(), 1), kIoOk);
    const io::OwnedHandle document(file);
    Host trying{{password + "x", password}, {}, file, true};
    host = &trying;
    const O12Options options{sizeof(options), {}};
    const O12PasswordSource source{sizeof(source), AnswerRequest, file, {}};
    IOHandle* handles[3];
    ASSERT_EQ(O12InitDecryption(file, nullptr, nullptr, &options, &source, &handles[0], &handles[1],
                                &handles[2]),
              kFiOk);
    const io::OwnedHandle view(handles[2]);
    EXPECT_EQ(trying.attempts.size(), 2u);  // the wrong one does not fit
    std::string start(2, '\0');
    EXPECT_EQ(io::Read(view.get(), start.data(), 2), 2u);
    EXPECT_EQ(start, "PK");
  }
}

}  // namespace
}  // namespace fi::testing
