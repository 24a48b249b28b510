#include "probes/content/record_triplet.h"

#include <gtest/gtest.h>

#include <string>

#include "platform/format_ids.h"
#include "tests/support/probe_run.h"

namespace fi {
namespace {

using testing::ExpectAnswers;
using testing::ExpectAnswersWhenCut;
using testing::LittleEndian;

std::string Record(uint32_t type, size_t words) {
  return LittleEndian(type, 2) + LittleEndian(words, 2) + std::string(2 * words, '\x7F');
}

TEST(RecordTriplet, EachTypeOnce) {
  const std::string first = Record(0x0800, 20);
  const std::string second = Record(0x0900, 3);
  const std::string third = Record(0x0A00, 0);
  ExpectAnswers(
      RecordTripletProbe,
      {
          {"in order", first + second + third, kFormatMicroStationDesign7},
          {"reversed", third + second + first, kFormatMicroStationDesign7},
          {"with top bits and low bytes", Record(0x8801, 1) + Record(0x89FF, 1) + Record(0x8A00, 1),
           kFormatMicroStationDesign7},
          {"long records", Record(0x0800, 0xFFFF) + Record(0x0900, 5000) + third,
           kFormatMicroStationDesign7},
          {"last record beyond the end", first + second + LittleEndian(0xFFFF0A00, 4),
           kFormatMicroStationDesign7},
          {"one twice", first + first + second, kNoMatch},
          {"type 7", Record(0x0700, 1) + second + third, kNoMatch},
          {"type 11", first + second + Record(0x0B00, 1), kNoMatch},
          {"type in the low byte", Record(0x0008, 1) + second + third, kNoMatch},
      });
  ExpectAnswersWhenCut(RecordTripletProbe, first + second + Record(0x0A00, 2),
                       {{44 + 10 + 4, kFormatMicroStationDesign7}});
}

}  // namespace
}  // namespace fi
