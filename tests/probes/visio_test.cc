#include "probes/storage/visio.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/support/storage_probe.h"

namespace fi {
namespace {

using testing::ExpectOverStorage;
using testing::StorageNode;
using testing::Stream;
using testing::Words32;

TEST(Visio, ByVersion) {
  const auto drawing = [](const std::string& tail) {
    return std::vector<StorageNode>{Stream("VisioDocument", std::string(24, ' ') + tail)};
  };
  ExpectOverStorage(ProbeVisioDocument,
                    {
                        {"3", drawing(Words32({0x00030003})), 1607},
                        {"4", drawing(Words32({0x00040000})), 1586},
                        {"5", drawing(Words32({0x00050000})), 1595},
                        {"2000", drawing(Words32({0x00060000})), 1597},
                        {"2003", drawing(Words32({0x000B0000, 1})), 1631},
                        {"3 with another low word", drawing(Words32({0x00030000})), 0},
                        {"2003 with another low word", drawing(Words32({0x000B0001})), 0},
                        {"between", drawing(Words32({0x00070000})), 0},
                        {"cut in the version", drawing(std::string(3, '\0')), 0},
                        {"cut before it", {Stream("VisioDocument", "Visio")}, 0},
                        {"no stream", {}, 0},
                        {"no storage", drawing(Words32({0x000B0000})), 0, false},
                    });
}

}  // namespace
}  // namespace fi
