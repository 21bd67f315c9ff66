// Date texts that reach the date controls from outside: what a program sets, what a user pastes.
// Both the canonical year-month-day form and the day-first forms people type are read.
#pragma once

#include <string_view>

#include "base/date_time.h"
#include "base/export.h"

namespace varion {

// Reads a date, at midnight. Blanks around the text are ignored. Accepted:
// - the ISO forms of DateTime::ParseIso ("2024-12-31", "20241231", either followed by a time,
//   which is dropped: the controls hold days);
// - numbers separated by single ".", "-", "/" or blanks, in `fieldOrder`, a sequence of 'd',
//   'm' and 'r' (day, month, year) such as "dmr" for "31.12.2024". Day and month take one or two
//   digits, the year exactly four; a field missing from the order is 1 (a month-year text is the
//   first of the month). Three numbers whose year is not where the order puts it are read by
//   where the four digits stand: first, year-month-day; last, day-month-year (the Polish order).
//   An order without a year reads only the ISO forms.
// An empty or blank text gives Null; anything else that is not a real day gives Invalid.
VARION_API DateTime ParseDateInput(std::string_view text, std::string_view fieldOrder = "dmr");

}  // namespace varion
