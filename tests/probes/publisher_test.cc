#include "probes/storage/publisher.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/support/bytes.h"
#include "tests/support/storage_probe.h"

namespace fi {
namespace {

using testing::Bytes;
using testing::ExpectOverStorage;
using testing::StorageNode;
using testing::Stream;

TEST(Publisher, ByContents) {
  const auto contents = [](const std::string& bytes) {
    return std::vector<StorageNode>{Stream("Contents", bytes)};
  };
  ExpectOverStorage(
      ProbeContentsStream,
      {
          {"up to 2000", contents(Bytes("\xE8\xAC\x22\x00")), 2201},
          {"since 2002", contents(Bytes("\xE8\xAC\x2C\x00more")), 2202},
          {"the handle denies to be a storage", contents(Bytes("\xE8\xAC\x2C\x00")), 2202, false},
          {"between", contents(Bytes("\xE8\xAC\x23\x00")), 0},
          {"first byte", contents(Bytes("\xE9\xAC\x2C\x00")), 0},
          {"second byte", contents(Bytes("\xE8\xAD\x2C\x00")), 0},
          {"fourth byte", contents(Bytes("\xE8\xAC\x2C\x01")), 0},
          {"cut", contents(Bytes("\xE8\xAC\x2C")), 0},
          {"empty", contents(""), 0},
          {"no stream", {Stream("CONTENTS")}, 0},
      });
}

}  // namespace
}  // namespace fi
