// Polish public holidays, Easter and the month and day tables the calendar views show.
#pragma once

#include <string>

#include "base/date_time.h"
#include "base/export.h"

namespace varion {

// The holiday's name for a civil date, or nullptr; no allocation, for the calendar views that ask
// for every cell they paint. Years outside 100..9999 have only the fixed-date holidays.
VARION_API const char* HolidayNameOf(int year, int month, int day);
VARION_API const char* HolidayNameOf(const DateTime& date);  // nullptr for null and invalid

}  // namespace varion

class VARION_API CCalendarUtils {
 public:
  // Tables by zero-based month index (the second table keeps its historical spelling).
  static const char* const m_PolishMonthsNames[12];
  static const char* const m_PolishShortMohtsNames[12];
  static const char* const m_PolishMonthsNamesLower[12];
  static const int m_MonthsLengths[12];

  // Easter Sunday, midnight. The rule has no correction for the epact values 28 and 29, so
  // 1954, 1981, 2049 and 2076 give 25 or 26 April and 2100 gives 1 April; kept on purpose, every
  // calendar view marks holidays by it. Years outside 100..9999 give an invalid date-time.
  static COleDateTime GetEasterDate(int year);
  // Days of the month by zero-based index; an index outside 0..11 gives 0.
  static int GetMonthLength(int year, int month);
  static std::string GetPolishMonthName(int month);       // "Styczeń"; "" outside 0..11
  static std::string GetPolishShortMonthName(int month);  // "Sty"; "" outside 0..11
  static std::string GetMonthName(int month);             // "styczeń"; "" outside 0..11
  // Day names by COleDateTime's day of week, 1 = Sunday .. 7 = Saturday: "niedziela" or, short,
  // the two letters of a calendar header ("Nd", "Pn", ...); "" outside 1..7.
  static std::string GetDayName(int dayOfWeek, bool shortName = false);
  // 1..12 for a month name in the nominative ("październik"), genitive ("października") or the
  // three-letter form ("paź"), in any letter case, with or without Polish diacritics and with
  // blanks around it; 0 for anything else.
  static int ConvertPolishMonthNameToNumber(const char* name);
  // Gregorian rule: every fourth year, but of the century years only every fourth (2000, not 1900).
  static bool IsLeapYear(int year);
  // The last day of the date's month at the date's time of day; null and invalid stay as they are.
  static COleDateTime GetLastDayOfMonth(const COleDateTime& date);
  static bool IsLastDayOfMonth(const COleDateTime& date);
};

// Holiday and weekend questions of the calendar views. A null or invalid date is neither.
class VARION_API CVelHolidayInfo {
 public:
  static bool IsHoliday(const COleDateTime& date);
  static std::string GetHolidayName(const COleDateTime& date);  // "" when no holiday
  static bool IsWeekend(const COleDateTime& date);
  // Working days: Monday to Friday that are not public holidays, as payment terms and payroll
  // count them. The first working day of the date's month, and the n-th (n from 1); an invalid
  // date-time when the month has fewer, for n below 1, and for a null or invalid date.
  static COleDateTime GetFirstWeekday(const COleDateTime& date);
  static COleDateTime GetNthWeekday(const COleDateTime& date, int n);
};
