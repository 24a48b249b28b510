// What an identification may cost, and that it keeps to it. Counts only: benchmarks have the time.
#include "platform/work.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <string>
#include <utility>
#include <vector>

#include "tests/support/compound_file_writer.h"
#include "tests/support/corpus.h"
#include "tests/support/encrypted_package_writer.h"
#include "tests/support/hostile_files.h"
#include "tests/support/identify_work.h"
#include "tests/support/iwork_writer.h"
#include "tests/support/open_handle.h"
#include "tests/support/samples.h"
#include "tests/support/zip_writer.h"

namespace fi::testing {
namespace {

std::string Repeated(const std::string& text, size_t count) {
  std::string all;
  for (size_t i = 0; i < count; ++i) all += text;
  return all;
}

std::string Archive(const std::string& content, uint16_t method = 8) {
  return ZipWriter().Add("Index/Document.iwa", content, {.method = method}).Finish();
}

std::string Nested(const std::string& package) {
  return ZipWriter().Add("Index.zip", package).Finish();
}

std::string Word() { return SamplePackage("$WORD_2016"); }

// Files that are made to cost much, and what they may cost within the default limits. The classes
// of faults are those that were published of programs that look into files.
TEST(WorkLimits, BoundWhatHostileFilesCost) {
  constexpr uint64_t kMegabyte = uint64_t{1} << 20;
  const std::string blanks(size_t{65} << 20, ' ');
  const struct {
    const char* name;
    std::string bytes;
    uint64_t reads, bytesRead, inflated, memory;
    WorkLimit limit;
  } cases[] = {
      {"messages of nothing in full indexes", Archive(UnfoldingArchive(8, 40)), 64, kMegabyte,
       16 * kMegabyte, 2 * kMegabyte, WorkLimit::kSteps},
      {"an archive of zeros", Archive(UnfoldingArchive(0, 60)), 64, kMegabyte, 24 * kMegabyte,
       4 * kMegabyte, WorkLimit::kNone},
      {"a chunk of more than is held",
       Archive(std::string(1, '\0') + LittleEndian(2'400'005, 3) +
               UnfoldingBlock("ab", 51'200'000)),
       64, 3 * kMegabyte, 8 * kMegabyte, 24 * kMegabyte, WorkLimit::kNone},
      {"a directory of a million entries", PackageOfEntries(1'000'000), 64, 64 * kMegabyte,
       kMegabyte, 24 * kMegabyte, WorkLimit::kMemory},
      {"a small one inside", Nested(PackageOfEntries(600'000)), 256, kMegabyte, 33 * kMegabyte,
       24 * kMegabyte, WorkLimit::kNone},
      {"a bomb of zeros", Nested(std::string(size_t{60} << 20, '\0')), 4096, kMegabyte,
       33 * kMegabyte, kMegabyte, WorkLimit::kNone},
      {"a directory that goes to and fro", ToAndFroCompoundFile(2040), 700, 3 * kMegabyte, 0,
       kMegabyte, WorkLimit::kNone},
      {"a large one", ToAndFroCompoundFile(13'000), 32'768, 64 * kMegabyte, 0, kMegabyte,
       WorkLimit::kBytesRead},
      {"blanks without an end", blanks, 32'768, 64 * kMegabyte, 0, kMegabyte, WorkLimit::kReads},
      {"headers of mail without an end", Repeated("Received: from a by b\r\n", 3'000'000), 32'768,
       64 * kMegabyte, 0, kMegabyte, WorkLimit::kReads},
      {"elements in elements", Repeated("<a>", 1'000'000), 256, kMegabyte, 0, kMegabyte,
       WorkLimit::kNone},
  };
  for (const auto& each : cases) {
    SCOPED_TRACE(each.name);
    Work work;
    (void)IdentifyBytes(each.bytes, &work);
    EXPECT_LE(work.spent.reads, each.reads);
    EXPECT_LE(work.spent.bytesRead, each.bytesRead);
    EXPECT_LE(work.spent.bytesInflated, each.inflated);
    EXPECT_LE(work.spent.memory, each.memory);
    EXPECT_EQ(work.limit, each.limit);
    EXPECT_FALSE(work.noMemory);
    EXPECT_EQ(work.readError, 0);
  }
}

bool Cancels(void* count) { return --*static_cast<int*>(count) < 0; }

TEST(WorkLimits, EachEndsTheWork) {
  const std::string archive =
      WriteIworkArchive(std::string("\x07\x12\x05\x08\x90\x4E\x18\x00", 8), 9);
  // Its directory lies behind what may be inflated: the reader moves there, and asks once.
  const std::string padded =
      ZipWriter().Add("pad", Pattern(20'000, 1), {.method = 0}).Add("b", "b").Finish();
  const std::string compound = ToAndFroCompoundFile(2040);
  const struct {
    WorkLimit limit;
    std::string bytes;
    void (*set)(WorkLimits*);
  } cases[] = {
      {WorkLimit::kBytesRead, Word(), [](WorkLimits* l) { l->bytesRead = 900; }},
      {WorkLimit::kReads, Word(), [](WorkLimits* l) { l->reads = 2; }},
      {WorkLimit::kBytesInflated, Word(), [](WorkLimits* l) { l->bytesInflated = 40; }},
      {WorkLimit::kBytesInflated, Archive(archive, 0), [](WorkLimits* l) { l->bytesInflated = 0; }},
      {WorkLimit::kBytesInflated, Nested(padded), [](WorkLimits* l) { l->bytesInflated = 5000; }},
      {WorkLimit::kSteps, Word(), [](WorkLimits* l) { l->steps = 3; }},
      {WorkLimit::kSteps, compound, [](WorkLimits* l) { l->steps = 900; }},
      {WorkLimit::kMemory, Word(), [](WorkLimits* l) { l->memory = 10; }},
      {WorkLimit::kDepth, Nested(Archive(archive)), [](WorkLimits* l) { l->depth = 1; }},
      {WorkLimit::kDeadline, Word(), [](WorkLimits* l) { l->deadline = 1; }},
  };
  for (const auto& each : cases) {
    SCOPED_TRACE(static_cast<int>(each.limit));
    Work free;
    (void)IdentifyBytes(each.bytes, &free);
    EXPECT_EQ(free.limit, WorkLimit::kNone);
    WorkLimits limits;
    each.set(&limits);
    Work work(limits);
    (void)IdentifyBytes(each.bytes, &work);
    EXPECT_EQ(work.limit, each.limit);
    EXPECT_LE(work.spent.bytesRead, limits.bytesRead);
    EXPECT_LE(work.spent.reads, limits.reads);
    EXPECT_LE(work.spent.steps, limits.steps);
    EXPECT_LE(work.spent.memory, limits.memory);
  }
  int looks = 3;
  Work cancelled;
  cancelled.cancel = Cancels;
  cancelled.cancelContext = &looks;
  (void)IdentifyBytes(compound, &cancelled);
  EXPECT_EQ(cancelled.limit, WorkLimit::kCancelled);
  EXPECT_EQ(looks, -1) << "nobody is asked again";
  EXPECT_LE(cancelled.spent.steps, 4u * 64);
}

// The password of every try; how many there were.
int asked = 0;
uint32_t GivePassword(uint32_t, FIPasswordRequest* request, uintptr_t, uintptr_t) {
  ++asked;
  std::string("secret").copy(request->password, request->capacity);
  return 0;
}

TEST(WorkLimits, KeyDerivationIsRefusedBeforeItsFirstRound) {
  FIPasswordCallback callback = GivePassword;
  (void)UTSetGlobalData(kUtDataPasswordCallback, &callback);
  const auto identify = [](uint32_t rounds, uint64_t most, Work* work) {
    const EncryptedPackage package = WriteAgile(Word(), {.spins = rounds});
    const std::string document = WriteCompoundFile(
        {Stream(u"EncryptionInfo", package.info), Stream(u"EncryptedPackage", package.package)});
    work->limits.keyRounds = most;
    return IdentifyBytes(document, work, "x.bin", 0);
  };
  Work enough;
  EXPECT_EQ(identify(1000, 1000, &enough).status, kFiOk);
  EXPECT_EQ(enough.spent.keyRounds, 1000u);
  EXPECT_EQ(enough.limit, WorkLimit::kNone);
  Work refused;
  EXPECT_EQ(identify(1001, 1000, &refused).status, kFiDecryptionFailed);
  EXPECT_EQ(refused.spent.keyRounds, 0u);
  EXPECT_EQ(refused.limit, WorkLimit::kKeyRounds);
  EXPECT_EQ(asked, 2);
  const EncryptedIwork iwork = WriteIwork(WriteIworkArchive("x", 9), {.rounds = 1001});
  Work alsoRefused({.keyRounds = 1000});
  EXPECT_EQ(IdentifyBytes(ZipWriter()
                              .Add(".iwpv2", iwork.verifier)
                              .Add("Index/Document.iwa", iwork.member)
                              .Finish(),
                          &alsoRefused)
                .id,
            1834);
  EXPECT_EQ(alsoRefused.limit, WorkLimit::kKeyRounds);
  (void)UTSetGlobalData(kUtDataPasswordCallback, nullptr);
}

// As much as an honest document may hold, with the record and without it.
TEST(WorkLimits, LeaveHonestFilesWhole) {
  const struct {
    const char* name;
    std::string bytes;
    int id;
  } cases[] = {
      {"overrides in front of the main part", LongContentTypes(20'000),
       IdentifyBytes(LongContentTypes(1), nullptr).id},
      {"titles in front of the version", LongTitles(45'000, "docProps/app.xml"), 2500},
      {"properties above the root", LongTitles(3, "../docProps/app.xml"), 2500},
  };
  for (const auto& each : cases) {
    SCOPED_TRACE(each.name);
    Work work;
    const Outcome outcome = IdentifyBytes(each.bytes, &work);
    EXPECT_EQ(work.limit, WorkLimit::kNone);
    EXPECT_EQ(outcome.id, each.id);
    EXPECT_EQ(IdentifyBytes(each.bytes, nullptr).id, outcome.id);
  }
}

// Samples of all kinds answer the same with the record, which stays clean; and so does the corpus.
TEST(WorkLimits, ChangeNoAnswer) {
  std::vector<std::pair<std::string, std::string>> files;  // name, bytes
  for (const Sample& sample : ReadSamples("supplement.txt", 4, 1)) {
    files.emplace_back(sample.columns[3], SampleBytes(sample.columns[2]));
  }
  for (const Sample& sample : ReadSamples("packages.txt", 5, 1)) {
    files.emplace_back("x", SamplePackage(sample.columns[3]));
  }
  ASSERT_GT(files.size(), 900u);
  for (const auto& [name, bytes] : files) {
    Work work;
    const Outcome with = IdentifyBytes(bytes, &work, name);
    const Outcome without = IdentifyBytes(bytes, nullptr, name);
    EXPECT_EQ(with.id, without.id);
    EXPECT_EQ(with.status, without.status);
    EXPECT_EQ(work.limit, WorkLimit::kNone);
    EXPECT_FALSE(work.noMemory || work.readError != 0);
  }
}

TEST(WorkLimits, NoFileOfTheCorpusMeetsThem) {
  const std::filesystem::path folder = testing::CorpusFolder();
  if (!std::filesystem::exists(folder)) GTEST_SKIP() << "no corpus in " << folder;
  WorkSpent most;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
    if (!entry.is_regular_file()) continue;
    Work work;
    IOHandle* opened = nullptr;
    const std::string path = entry.path();
    ASSERT_EQ(OpenSource(&opened, kIoSourcePath, path.c_str(), &work), kIoOk) << path;
    const io::OwnedHandle handle(opened);
    (void)IdentifyWithWork(opened, kEverything, &work);
    EXPECT_EQ(work.limit, WorkLimit::kNone) << path << " " << static_cast<int>(work.limit);
    const auto raise = [](uint64_t& value, uint64_t to) { value = std::max(value, to); };
    raise(most.bytesRead, work.spent.bytesRead);
    raise(most.reads, work.spent.reads);
    raise(most.bytesInflated, work.spent.bytesInflated);
    raise(most.steps, work.spent.steps);
    raise(most.memory, work.spent.memory);
  }
  RecordProperty("bytesRead", std::to_string(most.bytesRead));
  RecordProperty("reads", std::to_string(most.reads));
  RecordProperty("bytesInflated", std::to_string(most.bytesInflated));
  RecordProperty("steps", std::to_string(most.steps));
  RecordProperty("memory", std::to_string(most.memory));
}

}  // namespace
}  // namespace fi::testing
