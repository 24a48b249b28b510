#include "probes/storage/rights_management.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/support/bytes.h"
#include "tests/support/storage_probe.h"

namespace fi {
namespace {

using testing::Bytes;
using testing::ExpectOverStorage;
using testing::Storage;
using testing::StorageNode;
using testing::Stream;
using testing::Words32;

const std::string kIdentifier = "{C73DFACD-061F-43B0-8B64-0C620D2A8B50}";

std::string Primary(uint32_t length, const std::string& identifier) {
  std::string bytes = Words32({0x58, 1, length});
  for (const char c : identifier) {
    bytes.push_back(c);
    bytes.push_back('\0');
  }
  return bytes;
}

std::vector<StorageNode> Document(const std::string& primary) {
  return {Storage("\006DataSpaces",
                  {Storage("TransformInfo",
                           {Storage("DRMEncryptedTransform", {Stream("\006Primary", primary)})})})};
}

TEST(RightsManagedTransform, ByIdentifier) {
  std::string otherTail = kIdentifier;
  otherTail[19] = '_';
  std::string otherHead = kIdentifier;
  otherHead[18] = '_';
  std::string highByte = Primary(76, kIdentifier);
  highByte[12 + 2 * 3 + 1] = '\x01';
  const std::string whole = Primary(76, kIdentifier);
  ExpectOverStorage(
      CheckRightsManagedTransform,
      {
          {"the transform", Document(whole), 1},
          {"more behind it", Document(whole + "more"), 1},
          {"differs after 19 characters", Document(Primary(76, otherTail)), 1},
          {"differs in the 19th character", Document(Primary(76, otherHead)), 0},
          {"a high byte differs", Document(highByte), 0},
          {"length 78", Document(Primary(78, kIdentifier)), 0},
          {"length 75", Document(Primary(75, kIdentifier)), 0},
          {"37 characters and a half", Document(whole.substr(0, whole.size() - 1)), 0},
          {"ends in the length", Document(whole.substr(0, 11)), 0},
          {"empty", Document(""), 0},
      });
}

TEST(RightsManagedTransform, ByPath) {
  const StorageNode primary = Stream("\006Primary", Primary(76, kIdentifier));
  const StorageNode transform = Storage("DRMEncryptedTransform", {primary});
  ExpectOverStorage(
      CheckRightsManagedTransform,
      {
          {"nothing", {}, 0},
          {"without the control byte",
           {Storage("DataSpaces", {Storage("TransformInfo", {transform})})},
           0},
          {"empty spaces", {Storage("\006DataSpaces")}, 0},
          {"no transform", {Storage("\006DataSpaces", {Storage("TransformInfo")})}, 0},
          {"transform one level up", {Storage("\006DataSpaces", {transform})}, 0},
          {"password transform",
           {Storage("\006DataSpaces",
                    {Storage("TransformInfo", {Storage("StrongEncryptionTransform", {primary})})})},
           0},
          {"no primary",
           {Storage("\006DataSpaces",
                    {Storage("TransformInfo", {Storage("DRMEncryptedTransform")})})},
           0},
          {"primary a storage",
           {Storage("\006DataSpaces",
                    {Storage("TransformInfo",
                             {Storage("DRMEncryptedTransform", {Storage("\006Primary")})})})},
           0},
      });
}

TEST(DrmContent, ControlBytes) {
  for (char control = 1; control < 32; ++control) {
    const std::string name = control + std::string("DRMContent");
    const bool expected = control >= 7 && control <= 21;
    ExpectOverStorage(CheckDrmContentStream,
                      {{"stream", {Stream(name)}, expected}, {"storage", {Storage(name)}, 0}});
  }
  ExpectOverStorage(CheckDrmContentStream, {{"no control byte", {Stream("DRMContent")}, 0},
                                            {"more behind it", {Stream("\011DRMContents")}, 0}});
}

}  // namespace
}  // namespace fi
