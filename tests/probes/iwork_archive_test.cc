// iWork archives, plain and encrypted, in packages that are doubles.
#include "probes/package/iwork_archive.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include "formatid/formatid.h"
#include "tests/support/encrypted_package_writer.h"
#include "tests/support/iwork_writer.h"
#include "tests/support/samples.h"
#include "tests/support/storage_handle.h"

namespace fi {
namespace {

using testing::EncryptedIwork;
using testing::Sample;
using testing::StorageNode;

constexpr char kArchive[] = "Index/Document.iwa";
const std::string kPages("\x07\x12\x05\x08\x90\x4E\x18\x00", 8);

// Answers with its passwords in turn while it lives.
class Host {
 public:
  explicit Host(std::vector<std::string> passwords) : passwords_(std::move(passwords)) {
    current = this;
    (void)UTSetGlobalData(kUtDataPasswordCallback, &callback_);
  }
  ~Host() { (void)UTSetGlobalData(kUtDataPasswordCallback, nullptr); }
  Host(const Host&) = delete;
  Host& operator=(const Host&) = delete;

  uint32_t asked = 0;

 private:
  static uint32_t Answer(uint32_t, FIPasswordRequest* request, uintptr_t, uintptr_t) {
    EXPECT_EQ(request->attempts, current->asked);
    if (current->asked++ >= current->passwords_.size()) return kFiNoCallback;
    current->passwords_[current->asked - 1].copy(request->password, request->capacity);
    return 0;
  }

  static inline Host* current = nullptr;
  FIPasswordCallback callback_ = Answer;
  std::vector<std::string> passwords_;
};

struct Answer {
  int id;
  int result;

  friend bool operator==(const Answer&, const Answer&) = default;
};

Answer Run(std::vector<StorageNode> members, uint32_t mostPerRead = UINT32_MAX) {
  testing::StorageHandle package(std::move(members));
  package.mostPerRead = mostPerRead;
  package.has64Bit = mostPerRead == UINT32_MAX;
  FormatId id = 7;
  const GoOn result = IworkArchiveProbe(&package, &id);
  EXPECT_EQ(package.openedFlags.size(), package.closes);
  EXPECT_EQ(package.closedEarly, 0u);
  return {id, result};
}

StorageNode Member(const char* name, std::string bytes) {
  return {name, false, std::move(bytes), {}};
}

TEST(IworkArchive, Records) {
  const Host host({"secret", "secret"});
  for (const Sample& sample : testing::ReadSamples("iwork_archives.txt", 4)) {
    SCOPED_TRACE(sample.place + " " + sample.columns[2]);
    const std::string content = testing::SampleBytes(sample.columns[3]);
    const Answer expected{sample.Number(0), kChainEnds};
    const std::string archive = testing::WriteIworkArchive(content, 65536);
    EXPECT_EQ(Run({Member(kArchive, archive)}), expected);
    if (content.size() > 1000) continue;
    const StorageNode split = Member(kArchive, testing::WriteIworkArchive(content, 3));
    EXPECT_EQ(Run({split}, 1), expected);
    EXPECT_EQ(Run({{"Index.zip", true, "", {split}}}), expected);
    const EncryptedIwork encrypted = testing::WriteIwork(archive, {});
    const Host asked({"secret"});
    EXPECT_EQ(Run({Member(".iwpv2", encrypted.verifier), Member(kArchive, encrypted.member)}),
              (Answer{sample.Number(1), kChainEnds}));
  }
}

TEST(IworkArchive, Packages) {
  const StorageNode archive = Member(kArchive, testing::WriteIworkArchive(kPages, 65536));
  const Host host({});
  EXPECT_EQ(Run({}), (Answer{1802, kGoOn}));
  EXPECT_EQ(Run({Member("Index.zip", "no package")}), (Answer{1802, kGoOn}));
  EXPECT_EQ(Run({{"Index.zip", true, "", {}}}), (Answer{1802, kGoOn}));
  EXPECT_EQ(Run({Member(kArchive, "no chunk")}), (Answer{1834, kChainEnds}));
  EXPECT_EQ(Run({Member(kArchive, archive.bytes + '\1')}), (Answer{1834, kChainEnds}));
  EXPECT_EQ(Run({{"Index.zip", true, "", {Member(kArchive, "x")}}, archive}), (Answer{1390, 0}));
  EXPECT_EQ(Run({Member(".iwpv", ""), archive}), (Answer{1390, 0}));
}

TEST(IworkArchive, Decryption) {
  using Edit = void (*)(EncryptedIwork&);
  const Edit none = [](EncryptedIwork&) {};
  const struct {
    const char* name;
    std::vector<std::string> passwords;
    Edit edit;
    Answer expected;
    uint32_t asked;
  } cases[] = {
      {"right at once", {"secret"}, none, {1393, 0}, 1},
      {"right at last", {"Secret", "secret ", "secret"}, none, {1393, 0}, 3},
      {"none given", {}, none, {1834, 11}, 1},
      {"declined after a wrong one", {"wrong"}, none, {1834, 3328}, 2},
      {"wrong three times", {"a", "b", "c", "secret"}, none, {1834, 3328}, 3},
      {"too long", {std::string(1024, 'x'), "secret"}, none, {1393, 0}, 2},
      {"empty", {""}, [](auto& p) { p = testing::WriteIwork(p.member, {.password = ""}); },
       {1834, 0}, 1},
      {"verifier cut", {"secret"}, [](auto& p) { p.verifier.pop_back(); }, {1834, 14}, 0},
      {"verifier longer", {"secret"}, [](auto& p) { p.verifier += '\0'; }, {1834, 14}, 0},
      {"other version", {"secret"}, [](auto& p) { p.verifier[0] = 3; }, {1834, 14}, 0},
      {"other format", {"secret"}, [](auto& p) { p.verifier[2] = 2; }, {1834, 14}, 0},
      {"no rounds", {"x"}, [](auto& p) { p.verifier.replace(4, 4, 4, '\0'); }, {1834, 14}, 0},
      {"too many rounds", {"x"}, [](auto& p) { p.verifier[7] = 1; }, {1834, 14}, 0},
      {"verifier changed", {"secret"}, [](auto& p) { p.verifier[103] ^= 1; }, {1834, 3328}, 2},
      {"HMAC changed", {"secret"}, [](auto& p) { p.member.back() ^= 1; }, {1834, 0}, 1},
      {"first block changed", {"secret"}, [](auto& p) { p.member[16] ^= 1; }, {1834, 0}, 1},
      {"IV changed", {"secret"}, [](auto& p) { p.member[0] ^= 1; }, {1393, 0}, 1},
      {"one byte less", {"secret"}, [](auto& p) { p.member.pop_back(); }, {1834, 0}, 1},
      {"a block less", {"secret"}, [](auto& p) { p.member.erase(32, 16); }, {1834, 0}, 1},
      {"no block", {"secret"}, [](auto& p) { p.member.resize(36); }, {1834, 0}, 1},
      {"no member", {"secret"}, [](auto& p) { p.member.clear(); }, {1834, 0}, 1},
      {"padding of 17", {"secret"},
       [](auto& p) {
         p = testing::WriteIwork(testing::WriteIworkArchive(kPages, 99), {.padding = 17});
       },
       {1834, 0}, 1},
      {"not encrypted", {"secret"},
       [](auto& p) { p.member = testing::WriteIworkArchive(kPages, 99); }, {1834, 0}, 1},
  };
  for (const auto& test : cases) {
    SCOPED_TRACE(test.name);
    EncryptedIwork package = testing::WriteIwork(testing::WriteIworkArchive(kPages, 99), {});
    test.edit(package);
    for (const uint32_t mostPerRead : {UINT32_MAX, 5U}) {
      const Host host(test.passwords);
      EXPECT_EQ(Run({Member(".iwpv2", package.verifier), Member(kArchive, package.member)},
                    mostPerRead),
                test.expected);
      EXPECT_EQ(host.asked, test.asked);
    }
  }
}

// A document of the application itself; its hint says what the password is.
TEST(IworkArchive, DocumentOfTheCorpus) {
  const char* named = std::getenv("FORMATID_CORPUS");
  const std::filesystem::path folder = named != nullptr ? named : FORMATID_CORPUS_DIR;
  const std::string path = folder / "files/iwork13/bcb4baf4_test-issue-93.numbers";
  if (!std::filesystem::exists(path)) GTEST_SKIP() << "no corpus in " << folder;
  const Host host({"wrong", "password"});
  FormatId id = 0;
  EXPECT_EQ(FIIdFile(kIoSourcePath, path.c_str(), 0, &id), kFiOk);
  EXPECT_EQ(id, 1395);
}

}  // namespace
}  // namespace fi
