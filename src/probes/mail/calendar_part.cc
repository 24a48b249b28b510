#include "probes/mail/calendar_part.h"

#include "stream/text_view.h"

namespace fi {
namespace {

constexpr std::string_view kCalendarParts[] = {"valarm",   "vavailability", "vevent", "vfreebusy",
                                               "vjournal", "vtimezone",     "vtodo"};

}  // namespace

bool IsCalendarPart(std::string_view text) {
  constexpr std::string_view kBegin = "begin:";
  if (!StartsWithNoCase(text, kBegin)) return false;
  Lines lines(text.substr(kBegin.size()));
  std::string_view name;
  if (!lines.Next(&name)) return false;
  for (const std::string_view part : kCalendarParts) {
    if (EqualsNoCase(TrimBlanks(name), part)) return true;
  }
  return false;
}

}  // namespace fi
