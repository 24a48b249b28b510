// Identifications under failing reads and failing allocations: whatever is answered then, the
// record tells of the failure, unless the answer is the undisturbed one. The program has functions
// of the system under its own control, and so stands apart from the other tests.
#include <gtest/gtest.h>
#include <sys/mman.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <iterator>
#include <string>
#include <utility>
#include <vector>

#include "tests/support/compound_file_writer.h"
#include "tests/support/encrypted_package_writer.h"
#include "tests/support/identify_work.h"
#include "tests/support/iwork_writer.h"
#include "tests/support/samples.h"
#include "tests/support/zip_writer.h"

namespace {

// Calls of one kind since the last start, and the one from 1 that fails; 0: none. A lasting failure
// is that of the later ones too.
struct Calls {
  bool counts = false;
  uint64_t count = 0;
  uint64_t failing = 0;
  bool lasts = false;

  bool Fails() {
    if (!counts) return false;
    ++count;
    return failing != 0 && (lasts ? count >= failing : count == failing);
  }
};

Calls reads;
Calls allocations;

}  // namespace

extern "C" {

void* __libc_malloc(size_t size);
void* __libc_calloc(size_t count, size_t size);
void* __libc_realloc(void* block, size_t size);

void* malloc(size_t size) {
  if (!allocations.Fails()) return __libc_malloc(size);
  errno = ENOMEM;
  return nullptr;
}

void* calloc(size_t count, size_t size) {
  if (!allocations.Fails()) return __libc_calloc(count, size);
  errno = ENOMEM;
  return nullptr;
}

void* realloc(void* block, size_t size) {
  if (!allocations.Fails()) return __libc_realloc(block, size);
  errno = ENOMEM;
  return nullptr;
}

ssize_t pread(int descriptor, void* buffer, size_t size, off_t offset) {
  if (!reads.Fails()) return ::syscall(SYS_pread64, descriptor, buffer, size, offset);
  errno = EIO;
  return -1;
}

}  // extern "C"

namespace fi::testing {
namespace {

// A file in memory, read through its descriptor.
class File {
 public:
  File(std::string name, const std::string& bytes)
      : name_(std::move(name)), descriptor_(::memfd_create("sample", 0)) {
    EXPECT_EQ(::write(descriptor_, bytes.data(), bytes.size()), static_cast<ssize_t>(bytes.size()));
  }
  ~File() { ::close(descriptor_); }
  File(const File&) = delete;
  File& operator=(const File&) = delete;

  // Without a handle there is no answer, and whoever opens it knows.
  bool Identify(Work* work, Outcome* outcome) const {
    const IODescriptorSource source{descriptor_, name_.c_str()};
    IOHandle* opened = nullptr;
    if (OpenSource(&opened, kIoSourceDescriptor, &source, work) != kIoOk) return false;
    const Answer answer = IdentifyWithWork(opened, kEverything, work);
    *outcome = {answer.status, answer.id};
    (void)opened->operations->close(opened);
    return true;
  }

 private:
  std::string name_;
  int descriptor_;
};

uint32_t GivePassword(uint32_t, FIPasswordRequest* request, uintptr_t, uintptr_t) {
  constexpr char kPassword[] = "secret";
  std::copy(std::begin(kPassword), std::end(kPassword), request->password);
  return 0;
}

// Of all kinds: text and binary, packages, storages, encrypted documents.
std::vector<std::pair<std::string, std::string>> Files() {
  std::vector<std::pair<std::string, std::string>> files;
  const auto take = [&](const char* data, size_t columns, size_t each, auto make) {
    const std::vector<Sample> samples = ReadSamples(data, columns, 1);
    for (size_t i = 0; i < samples.size(); i += each) make(samples[i]);
  };
  take("supplement.txt", 4, 5, [&](const Sample& sample) {
    files.emplace_back(sample.columns[3], SampleBytes(sample.columns[2]));
  });
  take("packages.txt", 5, 4,
       [&](const Sample& sample) { files.emplace_back("x", SamplePackage(sample.columns[3])); });
  take("package_supplement.txt", 4, 4, [&](const Sample& sample) {
    std::string package = SamplePackage(sample.columns[2]);
    files.emplace_back("x", package);
    package.resize(package.find("PK\1\2"));
    files.emplace_back("x", package);
  });
  files.emplace_back("x.doc", WriteCompoundFile({Stream(u"WordDocument", std::string(5000, 'x'))}));
  files.emplace_back("x.xls", WriteCompoundFile({Stream(u"Workbook", std::string(900, 'x'))}));
  files.emplace_back("x", WriteCompoundFile({Folder(u"Props", {}), Stream(u"zz", "1")}));
  files.emplace_back("x.csv", "a;b;c\n1;2;3\n4;5;6\n7;8;9\n");
  const std::string word = SamplePackage("$WORD_2016");
  for (const EncryptedPackage& package :
       {WriteAgile(word, {.spins = 2}), WriteStandard(word, {})}) {
    files.emplace_back("x.bin", WriteCompoundFile({Stream(u"EncryptionInfo", package.info),
                                                   Stream(u"EncryptedPackage", package.package)}));
  }
  const std::string archive =
      WriteIworkArchive(std::string("\x07\x12\x05\x08\x90\x4E\x18\x00", 8), 3);
  files.emplace_back("x", ZipWriter().Add("Index/Document.iwa", archive).Finish());
  const EncryptedIwork iwork = WriteIwork(archive, {.rounds = 2});
  files.emplace_back(
      "x",
      ZipWriter().Add(".iwpv2", iwork.verifier).Add("Index/Document.iwa", iwork.member).Finish());
  return files;
}

struct Figures {
  uint64_t runs = 0;
  uint64_t told = 0;  // of them, another answer and a record that tells why
};

bool Tells(const Work& work) { return work.noMemory || work.readError != 0; }

// Fails each call of a kind, and looks at what is answered.
void FailEach(const std::string& name, const std::string& bytes, bool lasts, Calls* calls,
              Figures* figures) {
  const File file(name, bytes);
  Work sound;
  Outcome expected;
  *calls = {true, 0, 0, false};
  const bool opened = file.Identify(&sound, &expected);
  calls->counts = false;
  ASSERT_TRUE(opened);
  ASSERT_FALSE(Tells(sound));
  const uint64_t count = std::min<uint64_t>(calls->count, 400);
  for (uint64_t failing = 1; failing <= count; ++failing) {
    Work work;
    Outcome outcome;
    *calls = {true, 0, failing, lasts};
    const bool answered = file.Identify(&work, &outcome);
    calls->counts = false;
    ++figures->runs;
    if (!answered) continue;
    const bool same = outcome.id == expected.id && outcome.status == expected.status;
    if (!same) ++figures->told;
    EXPECT_TRUE(same || Tells(work)) << failing << " of " << calls->count << ": " << outcome.id
                                     << " for " << expected.id << ", status " << outcome.status;
    EXPECT_TRUE(work.readError == 0 || work.readError == EIO);
  }
}

TEST(Failures, OfReadsAndAllocationsAreTold) {
  FIPasswordCallback callback = GivePassword;
  (void)UTSetGlobalData(kUtDataPasswordCallback, &callback);
  const auto files = Files();
  EXPECT_GE(files.size(), 300u);
  Figures ofReads;
  Figures ofAllocations;
  for (size_t i = 0; i < files.size(); ++i) {
    SCOPED_TRACE("file " + std::to_string(i) + " " + files[i].first);
    for (const bool lasts : {false, true}) {
      FailEach(files[i].first, files[i].second, lasts, &reads, &ofReads);
      FailEach(files[i].first, files[i].second, lasts, &allocations, &ofAllocations);
    }
  }
  (void)UTSetGlobalData(kUtDataPasswordCallback, nullptr);
  // The calls were those of the library.
  EXPECT_GT(ofReads.told, 300u);
  EXPECT_GT(ofAllocations.told, 300u);
  std::printf("reads: %zu runs, %zu told; allocations: %zu runs, %zu told\n",
              static_cast<size_t>(ofReads.runs), static_cast<size_t>(ofReads.told),
              static_cast<size_t>(ofAllocations.runs), static_cast<size_t>(ofAllocations.told));
}

}  // namespace
}  // namespace fi::testing
