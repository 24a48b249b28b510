// Contacts and calendars: text whose first line is BEGIN:VCARD or BEGIN:VCALENDAR.
#ifndef FI_PROBES_MAIL_CARD_CALENDAR_H_
#define FI_PROBES_MAIL_CARD_CALENDAR_H_

#include "formatid/formatid.h"
#include "stream/id_stream.h"

namespace fi {

// kFormatVCard, kFormatICalendar or kNoMatch. Reads from the start of the file; any letter case.
FormatId CardCalendarProbe(IdentificationStream* stream);

}  // namespace fi

#endif  // FI_PROBES_MAIL_CARD_CALENDAR_H_
