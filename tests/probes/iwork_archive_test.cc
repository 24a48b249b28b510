// iWork archives, plain and encrypted, in packages that are doubles.
#include "probes/iwork/iwork_archive.h"
#include "api/driver.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <iterator>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "formatid/platform.h"
#include "tests/support/corpus.h"
#include "tests/support/encrypted_package_writer.h"
#include "tests/support/iwork_writer.h"
#include "tests/support/samples.h"
#include "tests/support/storage_samples.h"

namespace fi {
namespace {

using testing::EncryptedIwork;
using testing::ReadSamples;
using testing::Sample;
using testing::StorageNode;

// Answers with its passwords in turn while it lives.
class Host {
 public:
  explicit Host(const std::string& passwords) {
    std::istringstream words(passwords);
    passwords_.assign(std::istream_iterator<std::string>(words), {});
    current = this;
    (void)UTSetGlobalData(kUtDataPasswordCallback, &callback_);
  }
  ~Host() { (void)UTSetGlobalData(kUtDataPasswordCallback, nullptr); }
  Host(const Host&) = delete;
  Host& operator=(const Host&) = delete;

  int asked = 0;

 private:
  static uint32_t Answer(uint32_t, FIPasswordRequest* request, uintptr_t, uintptr_t) {
    const auto turn = static_cast<size_t>(current->asked++);
    EXPECT_EQ(request->attempts, turn);
    if (turn >= current->passwords_.size()) return kFiNoCallback;
    current->passwords_[turn].copy(request->password, request->capacity);
    return 0;
  }

  static inline Host* current = nullptr;
  FIPasswordCallback callback_ = Answer;
  std::vector<std::string> passwords_;
};

using Answer = std::pair<int, int>;  // identifier, and the status or that the chain goes on
constexpr int kNotEnded = 1;

Answer Identify(std::vector<StorageNode> members, uint32_t mostPerRead = UINT32_MAX) {
  testing::StorageHandle package(std::move(members));
  package.mostPerRead = mostPerRead;
  package.has64Bit = mostPerRead == UINT32_MAX;
  const PackageAnswer answer = IworkArchiveProbe(&package, kHostJob);
  EXPECT_EQ(package.openedFlags.size(), package.closes);
  EXPECT_EQ(package.closedEarly, 0u);
  return {answer.id, answer.ends ? static_cast<int>(answer.status) : kNotEnded};
}

std::vector<StorageNode> Members(const std::string& archive, const std::string& verifier = "") {
  std::vector<StorageNode> members = {{"Index/Document.iwa", false, archive, {}}};
  if (!verifier.empty()) members.push_back({".iwpv2", false, verifier, {}});
  return members;
}

TEST(IworkArchive, Packages) {
  for (const Sample& sample : ReadSamples("iwork_packages.txt", 4)) {
    EXPECT_EQ(Identify(testing::SampleStorage(sample.columns[3])),
              Answer(sample.Number(0), sample.Number(1)))
        << sample.place << sample.columns[2];
  }
}

TEST(IworkArchive, Records) {
  for (const Sample& sample : ReadSamples("iwork_archives.txt", 4)) {
    SCOPED_TRACE(sample.place + " " + sample.columns[2]);
    const std::string content = testing::SampleBytes(sample.columns[3]);
    const std::string archive = testing::WriteIworkArchive(content, 65536);
    EXPECT_EQ(Identify(Members(archive)), Answer(sample.Number(0), 0));
    const EncryptedIwork encrypted = testing::WriteIwork(archive, {});
    const Host host("secret");
    EXPECT_EQ(Identify(Members(encrypted.member, encrypted.verifier)), Answer(sample.Number(1), 0));
    if (content.size() > 1000) continue;
    EXPECT_EQ(Identify(Members(testing::WriteIworkArchive(content, 3)), 1),
              Answer(sample.Number(0), 0));
  }
}

void Change(const std::string& change, std::string* bytes) {
  const size_t place = change.size() > 1 ? std::stoul(change.substr(1)) : 0;
  if (change[0] == '^') bytes->at(place) = static_cast<char>(bytes->at(place) ^ 1);
  if (change[0] == '=') bytes->resize(place);
  if (change[0] == '+') *bytes += '\0';
}

TEST(IworkArchive, Decryption) {
  const std::string content("\x07\x12\x05\x08\x90\x4E\x18\x00", 8);
  const std::string archive = testing::WriteIworkArchive(content, 99);
  for (const Sample& sample : ReadSamples("iwork_decryption.txt", 7, 3)) {
    SCOPED_TRACE(sample.place + " " + sample.columns[3]);
    const std::string& change = sample.columns[6];
    EncryptedIwork package =
        testing::WriteIwork(archive, {.padding = static_cast<char>(change == "padding" ? 17 : 0)});
    if (!sample.columns[5].empty()) Change(sample.columns[5], &package.verifier);
    if (!change.empty() && change[0] != 'p') Change(change, &package.member);
    if (change == "plain") package.member = archive;
    for (const uint32_t mostPerRead : {UINT32_MAX, 5U}) {
      const Host host(sample.columns[4]);
      EXPECT_EQ(Identify(Members(package.member, package.verifier), mostPerRead),
                Answer(sample.Number(0), sample.Number(1)));
      EXPECT_EQ(host.asked, sample.Number(2));
    }
  }
}

// A document of the application itself; its hint says what the password is.
TEST(IworkArchive, DocumentOfTheCorpus) {
  const std::filesystem::path folder = testing::CorpusFolder();
  const std::string path = folder / "files/iwork13/bcb4baf4_test-issue-93.numbers";
  if (!std::filesystem::exists(path)) GTEST_SKIP() << "no corpus in " << folder;
  const Host host("wrong password");
  FormatId id = 0;
  EXPECT_EQ(FIIdFile(kIoSourcePath, path.c_str(), 0, &id), kFiOk);
  EXPECT_EQ(id, 1395);
}

}  // namespace
}  // namespace fi
