#include "probes/content/versioned_6100.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/format_ids.h"
#include "tests/support/bytes.h"
#include "tests/support/probe_run.h"

namespace fi {
namespace {

using testing::Bytes;
using testing::ExpectAnswers;
using testing::ExpectAnswersWhenCut;
using testing::File;
using testing::LittleEndian;
using testing::MemoryHandle;
using testing::Patch;
using testing::RunProbe;

std::string Ad1(uint32_t segment, uint32_t headerSize) {
  return File({{24, LittleEndian(segment, 4)}, {40, LittleEndian(headerSize, 4)}}, 512);
}

TEST(Versioned6100, Ad1) {
  ExpectAnswers(Ad1Probe, {
                              {"first", Ad1(1, 512), kFormatAd1First},
                              {"second", Ad1(2, 512), kFormatAd1Later},
                              {"largest", Ad1(UINT32_MAX, 512), kFormatAd1Later},
                              {"none", Ad1(0, 512), kNoMatch},
                              {"other header size", Ad1(1, 4096), kNoMatch},
                              {"header size beyond 16 bits", Ad1(1, 0x10200), kNoMatch},
                          });
  ExpectAnswersWhenCut(Ad1Probe, Ad1(1, 512), {{44, kFormatAd1First}});
}

std::string Encrypted(const std::vector<Patch>& patches) {
  std::string file = File({{8, LittleEndian(1, 2)},
                           {22, LittleEndian(0, 2)},
                           {24, LittleEndian(1, 4)},
                           {28, LittleEndian(1, 4)}},
                          64);
  for (const Patch& patch : patches) file.replace(patch.offset, patch.bytes.size(), patch.bytes);
  return file;
}

TEST(Versioned6100, Ad1Encrypted) {
  ExpectAnswers(Ad1EncryptedProbe,
                {
                    {"smallest", Encrypted({}), kFormatAd1Encrypted},
                    {"largest", Encrypted({{24, "\x03"}, {28, "\x02"}}), kFormatAd1Encrypted},
                    {"first field 4", Encrypted({{24, "\x04"}}), kNoMatch},
                    {"first field 0", Encrypted({{24, Bytes("\0")}}), kNoMatch},
                    {"second field 3", Encrypted({{28, "\x03"}}), kNoMatch},
                    {"second field 0", Encrypted({{28, Bytes("\0")}}), kNoMatch},
                    {"second field beyond 16 bits", Encrypted({{30, "\x01"}}), kNoMatch},
                    {"word at 8", Encrypted({{9, "\x01"}}), kNoMatch},
                    {"word at 22", Encrypted({{23, "\x01"}}), kNoMatch},
                });
  ExpectAnswersWhenCut(Ad1EncryptedProbe, Encrypted({}), {{32, kFormatAd1Encrypted}});
}

// A file of the second EnCase version with a trailer whose word is `flags`.
std::string Version2(uint32_t segment, uint32_t flags, const std::string& version = Bytes("\2\1"),
                     uint32_t compression = 2) {
  return File({{8, version},
               {10, LittleEndian(compression, 2)},
               {12, LittleEndian(segment, 4)},
               {200, LittleEndian(flags, 4)}},
              260);
}

TEST(Versioned6100, EnCaseEx01) {
  ExpectAnswers(EnCaseEx01Probe,
                {
                    {"first", Version2(1, 0xFFFFFFFD), kFormatEnCaseEx01First},
                    {"later", Version2(2, 0), kFormatEnCaseEx01Later},
                    {"first encrypted", Version2(1, 2), kFormatEnCaseEx01FirstEncrypted},
                    {"later encrypted", Version2(0x10001, 2), kFormatEnCaseEx01LaterEncrypted},
                    {"largest", Version2(UINT32_MAX, 0), kFormatEnCaseEx01Later},
                    {"no segment", Version2(0, 2), kNoMatch},
                    {"other version", Version2(1, 0, Bytes("\1\1")), kNoMatch},
                    {"other minor version", Version2(1, 0, Bytes("\2\2")), kNoMatch},
                    {"other compression", Version2(1, 0, Bytes("\2\1"), 3), kNoMatch},
                });
}

TEST(Versioned6100, EnCaseLx01) {
  ExpectAnswers(EnCaseLx01Probe,
                {
                    {"first", Version2(1, 0), kFormatEnCaseLx01First},
                    {"first encrypted", Version2(1, 2), kFormatEnCaseLx01FirstEncrypted},
                    {"later", Version2(2, 0), kFormatEnCaseLx01Later},
                    {"last", Version2(2126, 0), kFormatEnCaseLx01Later},
                    {"last encrypted", Version2(2126, 2), kFormatEnCaseLx01LaterEncrypted},
                    {"beyond the last", Version2(2127, 0), kNoMatch},
                    {"a word only", Version2(0x10001, 0), kFormatEnCaseLx01First},
                    {"no segment", Version2(0x10000, 0), kNoMatch},
                    {"other compression", Version2(1, 0, Bytes("\2\1"), 3), kNoMatch},
                });
}

// Where there is no trailer, the word behind the header is taken for it.
TEST(Versioned6100, TrailerOfShortFiles) {
  const std::string plain = Version2(1, 0, Bytes("\2\1"), 0);
  const std::string ex01 = plain.substr(0, 16) + LittleEndian(2, 4) + std::string(80, '\0');
  // From 60 bytes on the word lies in the header, where only the 2 at offset 8 has the flag.
  ExpectAnswersWhenCut(EnCaseEx01Probe, ex01,
                       {{16, kFormatEnCaseEx01First},
                        {20, kFormatEnCaseEx01FirstEncrypted},
                        {60, kFormatEnCaseEx01First},
                        {68, kFormatEnCaseEx01FirstEncrypted},
                        {69, kFormatEnCaseEx01First},
                        {76, kFormatEnCaseEx01FirstEncrypted},
                        {77, kFormatEnCaseEx01First}});
  const std::string lx01 = plain.substr(0, 14) + LittleEndian(2, 4) + std::string(42, '\0');
  ExpectAnswersWhenCut(EnCaseLx01Probe, lx01.substr(0, 59),
                       {{14, kFormatEnCaseLx01First}, {18, kFormatEnCaseLx01FirstEncrypted}});
}

TEST(Versioned6100, TrailerThatCannotBeRead) {
  MemoryHandle noSeek(Version2(1, 2));
  noSeek.failingSeek = 2;  // behind the one to the header
  EXPECT_EQ(RunProbe(EnCaseEx01Probe, noSeek), kFormatEnCaseEx01First);
  std::string large = Version2(1, 0);
  large.insert(100, std::string(4096, 'x'));
  large[large.size() - 60] = 2;
  MemoryHandle noRead(large);
  noRead.failingRead = 2;
  EXPECT_EQ(RunProbe(EnCaseEx01Probe, noRead), kFormatEnCaseEx01First);
  MemoryHandle sound(large);
  EXPECT_EQ(RunProbe(EnCaseEx01Probe, sound), kFormatEnCaseEx01FirstEncrypted);
}

std::string Version1(uint32_t segment, const std::string& first = "\x01",
                     const std::string& zeros = Bytes("\0\0")) {
  return File({{8, first}, {9, LittleEndian(segment, 2)}, {11, zeros}}, 32);
}

TEST(Versioned6100, EnCaseVersion1) {
  ExpectAnswers(EnCaseL01Probe, {
                                    {"first", Version1(1), kFormatEnCaseL01First},
                                    {"second", Version1(2), kFormatEnCaseL01Later},
                                    {"last", Version1(774), kFormatEnCaseL01Later},
                                    {"beyond the last", Version1(775), kNoMatch},
                                    {"none", Version1(0), kNoMatch},
                                    {"byte 8", Version1(1, "\x02"), kNoMatch},
                                    {"byte 11", Version1(1, "\x01", "\x01"), kNoMatch},
                                    {"byte 12 is free", Version1(1, "\x01", Bytes("\0\x01")),
                                     kFormatEnCaseL01First},
                                });
  ExpectAnswersWhenCut(EnCaseL01Probe, Version1(1), {{12, kFormatEnCaseL01First}});
  ExpectAnswers(EnCaseE01Probe, {
                                    {"first", Version1(1), kFormatEnCaseE01First},
                                    {"second", Version1(2), kFormatEnCaseE01Later},
                                    {"largest", Version1(0xFFFF), kFormatEnCaseE01Later},
                                    {"none", Version1(0), kNoMatch},
                                    {"byte 8", Version1(1, Bytes("\0")), kNoMatch},
                                    {"byte 11", Version1(1, "\x01", "\x01"), kNoMatch},
                                    {"byte 12", Version1(1, "\x01", Bytes("\0\x01")), kNoMatch},
                                });
  ExpectAnswersWhenCut(EnCaseE01Probe, Version1(2), {{13, kFormatEnCaseE01Later}});
}

}  // namespace
}  // namespace fi
