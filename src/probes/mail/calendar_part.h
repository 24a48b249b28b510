// Parts of a calendar, which mail programs store without the calendar around them.
#ifndef FI_PROBES_MAIL_CALENDAR_PART_H_
#define FI_PROBES_MAIL_CALENDAR_PART_H_

#include <string_view>

namespace fi {

bool IsCalendarPart(std::string_view text);

}  // namespace fi

#endif  // FI_PROBES_MAIL_CALENDAR_PART_H_
