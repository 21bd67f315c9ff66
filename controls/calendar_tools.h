// Free functions of the calendar views and date fields: ISO weeks, weekday flags, month texts,
// holidays, and two text helpers of the planner views.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "base/date_time.h"
#include "base/export.h"

namespace CalendarTools {

// ISO 8601 week number 1..53 (31 December 2024 is in week 1); 0 for a null or invalid date.
VARION_API int GetWeekOfYear(const COleDateTime& date);
// Day number 1 (Sunday) .. 7 (Saturday) to a one-bit flag: Monday 1, Tuesday 2, ... Sunday 64.
// Any number other than 1 and 3..7 gives 1 (Monday's flag, which 2 also gets that way).
VARION_API int WeekdayFromDayNumber(int dayNumber);
// "styczeń" or, genitive, "stycznia"; "" outside 1..12.
VARION_API std::wstring GetMonthDescr(int month, bool genitive);
VARION_API std::string GetHolidayName(const COleDateTime& date);  // "" when no holiday
VARION_API bool IsHoliday(const COleDateTime& date);

constexpr std::uint32_t kInvalidColor = 0xFFFFFFFFu;  // as CLR_INVALID
// A colour as COLORREF (0x00BBGGRR) from "#RRGGBB", "r,g,b" or "RGB(r,g,b)" (blanks allowed,
// each part 0..255); kInvalidColor for anything else.
VARION_API std::uint32_t ParseColor(const char* text);
// Cuts a text into lines of at most `width` characters for a narrow planner cell, breaking at
// blanks where it can and inside a word longer than a line. Blanks at a break are dropped.
// Fills `parts` (cleared first) and returns their count; a width below 1 gives the text whole.
VARION_API int BreakString(const char* text, int width, std::vector<std::string>& parts);

}  // namespace CalendarTools
