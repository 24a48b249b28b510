#include "probes/storage/project.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/support/storage_probe.h"

namespace fi {
namespace {

using testing::ExpectOverStorage;
using testing::Storage;
using testing::StorageNode;
using testing::Stream;

TEST(Project, ByStorageAndUserType) {
  const auto late = [](const std::string& tail) {
    return std::vector<StorageNode>{Storage("   114"),
                                    Stream("\001CompObj", std::string(51, '4') + tail)};
  };
  ExpectOverStorage(
      ProbeNumberedStorages,
      {
          {"2000", {Storage("   19")}, 1224},
          {"2007", {Storage("   112")}, 1226},
          {"the lowest number wins", {Storage("   112"), Storage("   19")}, 1224},
          {"2007 before 2010", {Storage("   114"), Storage("   112"), Stream("\001CompObj")}, 1226},
          {"2010", late("4"), 1228},
          {"2013", late("5"), 1233},
          {"2016", late("6.0"), 1234},
          {"a later digit", late("7"), 1999},
          {"an earlier digit", late("3"), 1999},
          {"cut", late(""), 1999},
          {"no user type", {Storage("   114")}, 0},
          {"user type alone", {Stream("\001CompObj", std::string(60, '4'))}, 0},
          {"user type below",
           {Storage("   114", {Stream("\001CompObj", std::string(60, '4'))})},
           0},
          {"streams", {Stream("   19"), Stream("   112"), Stream("   114")}, 0},
          {"two blanks", {Storage("  19"), Storage("19")}, 0},
          {"empty", {}, 0},
      });
}

}  // namespace
}  // namespace fi
