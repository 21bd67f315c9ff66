// The named periods of report parameters ("bieżący miesiąc", "ostatnie 7 dni", ...) by their
// period code, counted from the day an injectable clock says is today.
//
// Polish conventions:
// - A week runs from Monday to Sunday.
// - The current day, week, month, quarter and year are whole calendar periods containing today.
// - The last 7 and the last 30 days end with today and include it (today and the 6 or 29 days
//   before).
// - The previous month is the whole calendar month before the current one, whatever today's day.
// Both ends are dates at midnight and both are included: a condition on a column holding times
// must treat the end as a whole day.
#pragma once

#include <string>

#include "base/export.h"
#include "base/variant.h"
#include "controls/date_tools.h"

namespace varion {

// Period codes of the date tags. 18 is not used.
enum NamedPeriodCode : int {
  kPeriodCurrentDay = 11,
  kPeriodCurrentWeek = 12,
  kPeriodCurrentMonth = 13,
  kPeriodCurrentQuarter = 14,
  kPeriodCurrentYear = 15,
  kPeriodLast7Days = 16,
  kPeriodLast30Days = 17,
  kPeriodPreviousMonth = 19,
};

// The period of a code on the clock's today; false (and `out` untouched) for any other code.
VARION_API bool NamedPeriod(int code, const DateTools::IClock& clock, DateTools::Period& out);

}  // namespace varion

// The range text of a period: "2024-05-01 AND 2024-05-31". A named period code gives its own
// dates on the clock's today; any other code gives the two values as they are. A side that is no
// date shows as "Invalid DateTime".
VARION_API std::string GetDokOkresFormatBetween(int code, const _variant_t& from, const _variant_t& to,
                                                const DateTools::IClock& clock);
