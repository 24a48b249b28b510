#include "probes/storage/quattro_pro.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/support/storage_probe.h"

namespace fi {
namespace {

using testing::ExpectOverStorage;
using testing::Storage;
using testing::StorageNode;
using testing::Stream;
using testing::Words32;

TEST(QuattroPro, PerfectOfficeMain) {
  const auto main = [](const std::string& bytes) {
    return std::vector<StorageNode>{Stream("PerfectOffice_MAIN", bytes)};
  };
  const std::string marks = Words32({0x00020000, 0x00C91007});
  for (const FormatId code : {FormatId{1447}, FormatId{1450}, FormatId{1453}}) {
    const auto probe = [code](IdentificationStream* stream) {
      return ProbePerfectOfficeMain(stream, code);
    };
    ExpectOverStorage(probe, {
                                 {"notebook", main(marks), 1433},
                                 {"more behind it", main(marks + "more"), 1433},
                                 {"first word", main(Words32({0x00020001, 0x00C91007})), code},
                                 {"second word", main(Words32({0x00020000, 0x00C91008})), code},
                                 {"seven bytes", main(marks.substr(0, 7)), code},
                                 {"empty", main(""), code},
                                 {"no stream", {}, code},
                                 {"no storage", main(marks), 0, false},
                             });
  }
}

TEST(QuattroPro, NativeContentMain) {
  const auto main = [](const std::string& bytes) {
    return std::vector<StorageNode>{Stream("NativeContent_MAIN", bytes)};
  };
  const std::string marks = Words32({0x000E0001}) + "QPW9";
  ExpectOverStorage(ProbeNativeContentMain,
                    {
                        {"notebook", main(marks), 1445},
                        {"first word", main(Words32({0x000E0002}) + "QPW9"), 0},
                        {"second word", main(Words32({0x000E0001}) + "QPW8"), 0},
                        {"seven bytes", main(marks.substr(0, 7)), 0},
                        {"no stream", {Storage("NativeContent_MAIN")}, 0},
                        {"no storage", main(marks), 0, false},
                    });
}

}  // namespace
}  // namespace fi
