#include "probes/storage/workbook.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/support/storage_probe.h"

namespace fi {
namespace {

using testing::ExpectOverStorage;
using testing::StorageHandle;
using testing::StorageNode;
using testing::Stream;
using testing::Words16;

// The first record with its build and year.
std::string Book(uint16_t build, uint16_t year) {
  return Words16({0x0809, 16, 0x0600, 5, build, year});
}

TEST(Workbook, ByBuildAndYear) {
  const auto book = [](uint16_t build, uint16_t year) {
    return std::vector<StorageNode>{Stream("Workbook", Book(build, year))};
  };
  ExpectOverStorage(ProbeWorkbook,
                    {
                        {"no storage", {Stream("Workbook", Book(5110, 1997))}, 1438, false},
                        {"5110", book(5110, 1997), 1451},
                        {"5612", book(5612, 1997), 1451},
                        {"6111", book(6111, 1997), 1448},
                        {"6214", book(6214, 1997), 1448},
                        {"7106", book(7106, 1997), 1448},
                        {"8124", book(8124, 1997), 1448},
                        {"6214 in 1996", book(6214, 1996), 1438},
                        {"5110 in no year", book(5110, 0), 1451},
                        {"other build", book(6112, 1997), 1446},
                        {"no build", book(0, 0), 1446},
                        {"year cut", {Stream("Workbook", Book(5110, 1997).substr(0, 11))}, 1438},
                        {"build cut", {Stream("Workbook", Book(5110, 1997).substr(0, 9))}, 1438},
                        {"empty stream", {Stream("Workbook")}, 1438},
                        {"no stream", {Stream("WordDocument")}, 0},
                        {"WORKBOOK", {Stream("WORKBOOK", Book(6111, 1997))}, 1448},
                        {"Book", {Stream("Book", Book(6111, 1997))}, 1448},
                        {"BOOK", {Stream("BOOK", Book(6111, 1997))}, 1448},
                        {"upper case before Book",
                         {Stream("Book", Book(1, 1997)), Stream("WORKBOOK", Book(5110, 1997))},
                         1451},
                        {"Book before upper case",
                         {Stream("BOOK", Book(1, 1997)), Stream("Book", Book(5110, 1997))},
                         1451},
                    });
}

TEST(Workbook, OpensWithItsOwnFlags) {
  StorageHandle handle({Stream("Workbook", Book(5110, 1997))});
  EXPECT_EQ(RunOverStorage(ProbeWorkbook, handle), 1451);
  EXPECT_EQ(handle.state.openedFlags, std::vector<uint32_t>{513});
}

}  // namespace
}  // namespace fi
