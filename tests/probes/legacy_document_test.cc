#include "probes/storage/legacy_document.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/support/bytes.h"
#include "tests/support/storage_probe.h"

namespace fi {
namespace {

using testing::Bytes;
using testing::ExpectOverStorage;
using testing::Storage;
using testing::Stream;
using testing::Words16;

TEST(LegacyDocument, ByStreams) {
  const auto book = [](const std::string& bytes) { return std::vector{Stream("Book", bytes)}; };
  const auto word = [](const std::string& bytes) {
    return std::vector{Stream("WordDocument", bytes)};
  };
  ExpectOverStorage(
      ProbeLegacyDocument,
      {
          {"no storage", {Stream("Book", Bytes("\x09\x08"))}, 1082, false},
          {"empty storage", {}, 0},
          {"BIFF2", book(Bytes("\x09\x00")), 1424},
          {"BIFF3", book(Bytes("\x09\x02")), 1424},
          {"BIFF4", book(Bytes("\x09\x04")), 1424},
          {"BIFF5", book(Bytes("\x09\x08")), 1424},
          {"other generation", book(Bytes("\x09\x01")), 1082},
          {"other record", book(Bytes("\x0A\x08")), 1082},
          {"one byte", book("\x09"), 1082},
          {"empty book", book(""), 1082},
          {"Workbook", {Stream("Workbook", Bytes("\x09\x08"))}, 1424},
          {"BOOK", {Stream("BOOK", Bytes("\x09\x08"))}, 0},
          {"Book first", {Stream("Workbook", Bytes("\x09\x08")), Stream("Book", "x")}, 1082},
          {"a workbook wins over a Word document",
           {Stream("WordDocument", Words16({0, 0xC1})), Stream("Workbook", Bytes("\x09\x08"))},
           1424},
          {"Word 6", word(Words16({0xA5DC, 0x65})), 1082},
          {"Word 95", word(Words16({0xA5DC, 0x69})), 1082},
          {"above Word 95", word(Words16({0xA5DC, 0x6A})), 1126},
          {"Word 97", word(Words16({0xA5EC, 0xC1})), 1126},
          {"large version", word(Words16({0xA5EC, 0x8000})), 1126},
          {"version cut", word(Bytes("\xEC\xA5\x65")), 1126},
          {"empty Word document", word(""), 1126},
          {"a storage of that name", {Storage("WordDocument")}, 0},
      });
}

}  // namespace
}  // namespace fi
