#include "api/driver.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <string>

#include "api/extension.h"
#include "formatid/formatid.h"
#include "formatid/platform.h"
#include "tests/support/bytes.h"
#include "tests/support/memory_handle.h"
#include "tests/support/samples.h"
#include "tests/support/storage_samples.h"

namespace fi {
namespace {

using testing::Bytes;
using testing::MemoryHandle;
using testing::ReadSamples;
using testing::Sample;
using testing::SampleBytes;
using testing::SampleStorage;
using testing::StorageHandle;

constexpr uint32_t kText = kFiUseFlags | kFiTextFallback;

const std::string kPng = Bytes("\x89PNG\r\n\x1A\n\0\0\0\rIHDR");
const std::string kProse = "Only words, one after another, with nothing to name them by.\n";

std::array<uint8_t, 16> ClassOf(const std::string& bytes) {
  std::array<uint8_t, 16> id{};
  std::copy(bytes.begin(), bytes.end(), id.begin());
  return id;
}

TEST(Extension, OfFileNames) {
  struct Case {
    std::string name;
    const char* extension;
  };
  const Case cases[] = {
      {"REPORT.final.docx", "DOCX"},
      {"archive.tar.gz", "GZ"},
      {"x.jpeg2", "JPEG"},
      {"README", ""},
      {"", ""},
      {".profile", "PROF"},
      {"x.", ""},
      {"dir.d/name", "D/NA"},
      {"x.a\xE9", "A\xE9"},
      {"n" + std::string(254, 'a') + ".doc", "DOC"},
  };
  for (const Case& test : cases) {
    for (const bool wide : {false, true}) {
      MemoryHandle handle("", test.name);
      handle.wideName = wide;
      EXPECT_STREQ(ReadExtension(&handle).data(), test.extension) << test.name;
    }
  }
  MemoryHandle nameless("", "x.doc");
  nameless.hasName = false;
  EXPECT_STREQ(ReadExtension(&nameless).data(), "");
}

TEST(Driver, FlagsDecideWhatUnmatchedFilesAreCalled) {
  struct Case {
    const char* name;
    std::string file;
    uint32_t flags;
    FormatId id;
    uint16_t basis;
  };
  const std::string table = "name,number\none,1\ntwo,2\nthree,3\n";
  const Case cases[] = {
      {"empty, no fallback", "", kFiUseFlags, kFormatUnknown, kFiBasisNone},
      {"empty, fallback", "", kText, kFormatUnknown, kFiBasisNone},
      {"prose, no fallback", kProse, kFiUseFlags, kFormatUnknown, kFiBasisNone},
      {"prose, fallback", kProse, kText, 4005, kFiBasisText},
      {"prose, delimited text", kProse, kText | kFiDelimitedText, 4005, kFiBasisText},
      {"table, not asked for", table, kText, 4005, kFiBasisText},
      {"table, asked for", table, kText | kFiDelimitedText, 3204, kFiBasisText},
      {"table behind a mark, not asked for", "\xEF\xBB\xBF" + table, kText, 4025,
       kFiBasisSignature},
      {"table behind a mark, asked for", "\xEF\xBB\xBF" + table, kFiUseFlags | kFiDelimitedText,
       3204, kFiBasisSignature},
      {"signature", kPng, kFiUseFlags, 1574, kFiBasisSignature},
      {"binary", Bytes("\0\1\2\3\xFF\xFE"), kText, kFormatUnknown, kFiBasisNone},
  };
  for (const Case& test : cases) {
    MemoryHandle handle(test.file);
    const Answer answer = IdentifyHandle(&handle, test.flags);
    EXPECT_EQ(answer.status, 0u) << test.name;
    EXPECT_EQ(answer.id, test.id) << test.name;
    EXPECT_EQ(answer.evidence.basis, test.basis) << test.name;
    EXPECT_EQ(handle.position, 0) << test.name;
    EXPECT_EQ(handle.closes, 0u) << test.name;
  }
}

TEST(Driver, BehaviourOptionServesCallsWithoutFlags) {
  MemoryHandle handle(kProse);
  struct Case {
    uint32_t published;  // by a call with kFiUseFlags
    uint32_t word;
    FormatId id;
  };
  const Case cases[] = {
      {kText, 1, 4005},
      {kFiUseFlags, 0, kFormatUnknown},
      {kText | kFiDelimitedText, 3, 4005},
      {kFiUseFlags | kFiDelimitedText, 2, kFormatUnknown},
  };
  for (const Case& test : cases) {
    (void)IdentifyHandle(&handle, test.published);
    uint32_t word = 99;
    uint32_t size = sizeof(word);
    ASSERT_EQ(UTGetGlobalOption(kUtOptionBehaviour, &word, &size), 0u);
    EXPECT_EQ(word, test.word);
    EXPECT_EQ(IdentifyHandle(&handle, kFiTextFallback).id, test.id) << test.published;
  }
  const uint32_t everyBit = ~0u;
  ASSERT_EQ(UTSetOption(UTGetGlobalOptionSet(), kUtOptionBehaviour, &everyBit, 4), 0u);
  MemoryHandle executable(
      Bytes("\x7F"
            "ELF\1\1\1\0"));
  EXPECT_EQ(IdentifyHandle(&executable, 0).id, kFormatUnknown) << "no bit asks for the supplement";
}

TEST(Driver, ClassOnlyMode) {
  struct Case {
    const char* name;
    bool isStorage;
    std::string classId;
    uint32_t status;
    FormatId id;
  };
  const Case cases[] = {
      {"message", true, Bytes("\x0B\x0D\x02\0\0\0\0\0\xC0\0\0\0\0\0\0\x46"), 0, 1143},
      {"template", true, Bytes("\x46\xF0\x06\0\0\0\0\0\xC0\0\0\0\0\0\0\x46"), 0, 1311},
      {"no class", true, std::string(16, '\0'), 0, 1311},
      {"not a storage", false, "", 0, 1311},
      {"known to the signatures only", true,
       Bytes("\x10\x8D\x81\x64\x9B\x4F\xCF\x11\x86\xEA\x00\xAA\x00\xB9\x29\xE8"), kFiUnknownClass,
       0},
  };
  for (const Case& test : cases) {
    MemoryHandle handle(kPng);
    if (test.isStorage) handle.classId = ClassOf(test.classId);
    handle.position = 5;
    const Answer answer = IdentifyHandle(&handle, kFiClassOnly);
    EXPECT_EQ(answer.status, test.status) << test.name;
    EXPECT_EQ(answer.id, test.id) << test.name;
    EXPECT_EQ(handle.reads, 0u) << test.name;
    EXPECT_EQ(handle.position, 5) << test.name;
  }
}

TEST(Driver, StorageSamples) {
  for (const Sample& sample : ReadSamples("driver_storages.txt", 6)) {
    SCOPED_TRACE(sample.place + " " + sample.columns[4]);
    StorageHandle handle(SampleStorage(sample.columns[5]), sample.columns[3]);
    handle.classId = ClassOf(SampleBytes(sample.columns[2]));
    const Answer answer = IdentifyHandle(&handle, kFiUseFlags);
    EXPECT_EQ(answer.status, std::stoul(sample.columns[1]));
    EXPECT_EQ(answer.id, sample.Number(0));
    EXPECT_EQ(handle.openedFlags.size(), handle.closes);
  }
}

TEST(Driver, StorageThatNothingNamesIsNotText) {
  MemoryHandle handle(kProse);
  handle.classId = ClassOf("0123456789abcdef");
  const Answer answer = IdentifyHandle(&handle, kText);
  EXPECT_EQ(answer.status, 0u);
  EXPECT_EQ(answer.id, kFormatUnknown);
}

// Whichever call fails, the answer is a format or unknown, and nothing is closed or left open.
TEST(Driver, FailingCallsNeverHurt) {
  const std::string file = kProse + std::string(5000, '\n');
  for (uint64_t failing = 1; failing < 40; ++failing) {
    for (const bool reads : {true, false}) {
      MemoryHandle handle(file);
      (reads ? handle.failingRead : handle.failingSeek) = failing;
      const Answer answer = IdentifyHandle(&handle, kText);
      EXPECT_EQ(answer.status, 0u);
      EXPECT_TRUE(answer.id == 4005 || answer.id == kFormatUnknown) << answer.id;
      EXPECT_EQ(handle.closes, 0u);
    }
  }
}

TEST(Driver, NoHandleNoStream) {
  const Answer answer = IdentifyHandle(nullptr, 0);
  EXPECT_EQ(answer.status, FI_NO_STREAM);
  EXPECT_EQ(answer.id, kFormatUnknown);
}

// What identification may cost a file that is no container, counted at the handle.
TEST(Driver, ReadBudgets) {
  const std::string oneLine(1 << 20, '\x01');
  std::string binary;
  while (binary.size() < 1 << 20) binary += static_cast<char>(binary.size() * 7 + 1);
  std::string text;
  while (text.size() < 1 << 20) text += kProse;
  struct Case {
    const char* name;
    std::string file;
    uint64_t reads;
    uint64_t bytes;
  };
  const Case cases[] = {
      {"named by a signature", kPng + binary, 1, 2048},
      {"binary that nothing names", binary, 8, 80 * 1024},
      {"text", text, 12, 88 * 1024},  // a hundred lines, in which a mail header may begin
      {"a hundred lines of 1022 bytes", oneLine, 64, 184 * 1024},
  };
  for (const Case& test : cases) {
    MemoryHandle handle(test.file);
    (void)IdentifyHandle(&handle, kText | kFiDelimitedText);
    EXPECT_LE(handle.reads, test.reads) << test.name;
    EXPECT_LE(handle.bytesRead, test.bytes) << test.name;
  }
}

}  // namespace
}  // namespace fi
