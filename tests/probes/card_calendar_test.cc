#include "probes/content/card_calendar.h"

#include <gtest/gtest.h>

#include <string>

#include "platform/format_ids.h"
#include "tests/support/probe_run.h"

namespace fi {
namespace {

using testing::ExpectAnswers;
using testing::ExpectAnswersWhenCut;

TEST(CardCalendar, NamesTheFirstLine) {
  const std::string blanks(3000, ' ');
  ExpectAnswers(CardCalendarProbe,
                {
                    {"contact", "BEGIN:VCARD\r\nVERSION:3.0\r\n", kFormatVCard},
                    {"calendar", "BEGIN:VCALENDAR\r\n", kFormatICalendar},
                    {"lower case", "begin:vcard\n", kFormatVCard},
                    {"mixed case", "bEgIn:vCaLeNdAr", kFormatICalendar},
                    {"blanks beside the colon", "BEGIN \t:\t VCALENDAR", kFormatICalendar},
                    {"blanks beyond a buffer", "BEGIN" + blanks + ":VCARD", kFormatVCard},
                    {"longer words", "BEGIN:VCALENDARS", kFormatICalendar},
                    {"card in a longer word", "BEGIN:VCARDIGAN", kFormatVCard},
                    {"another component", "BEGIN:VTODO\r\nSUMMARY:x", kNoMatch},
                    {"calendar cut by a line end", "BEGIN:VCALENDA\r\n", kNoMatch},
                    {"no V", "BEGIN:CALENDAR", kNoMatch},
                    {"blank before BEGIN", " BEGIN:VCARD", kNoMatch},
                    {"line end before the colon", "BEGIN\n:VCARD", kNoMatch},
                    {"blank behind the V", "BEGIN:V CARD", kNoMatch},
                    {"no letters under the case bit", "BEGIN:V#ARD    ", kNoMatch},
                });
}

TEST(CardCalendar, CutAnywhere) {
  ExpectAnswersWhenCut(CardCalendarProbe, "BEGIN:VCARD\r\nN:x\r\n", {{11, kFormatVCard}});
  ExpectAnswersWhenCut(CardCalendarProbe, "BEGIN:VCALENDAR\r\n", {{15, kFormatICalendar}});
}

}  // namespace
}  // namespace fi
