#include "probes/storage/designer.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/support/storage_probe.h"

namespace fi {
namespace {

using testing::ExpectOverStorage;
using testing::StorageNode;
using testing::Stream;
using testing::Words16;

TEST(Designer, ByVersion) {
  const auto drawing = [](const std::string& tail) {
    return std::vector<StorageNode>{Stream("DesignerDoc", std::string(13, '\5') + tail)};
  };
  ExpectOverStorage(ProbeDesignerDoc, {
                                          {"version 5", drawing(Words16({5})), 1579},
                                          {"version 6", drawing(Words16({6})), 1608},
                                          {"version 4", drawing(Words16({4})), 1608},
                                          {"version 0x0105", drawing(Words16({0x0105})), 1608},
                                          {"cut in the version", drawing("\6"), 1579},
                                          {"cut before it", drawing(""), 1579},
                                          {"no stream", {}, 1579},
                                          {"no storage", drawing(Words16({6})), 1579, false},
                                      });
}

}  // namespace
}  // namespace fi
