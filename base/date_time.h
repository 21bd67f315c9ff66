// The OLE date-time: days since 1899-12-30 as a double, with a status. Before that day the
// integer part counts days backwards while the fraction still counts the time forward, so
// -1.25 is 1899-12-29 06:00. Two values are equal when they differ by less than half a second.
#pragma once

#include <string>
#include <string_view>

#include "base/export.h"
#include "base/value_status.h"

namespace varion {

// Broken-down date and time; dayOfWeek is 1 (Sunday) .. 7 (Saturday) as COleDateTime counts.
struct DateParts {
  int year = 1899, month = 12, day = 30, hour = 0, minute = 0, second = 0;
  int dayOfWeek = 0, dayOfYear = 0;
};

class VARION_API DateTime {
 public:
  // 0100-01-01 23:59:59: before the epoch the time of day counts away from zero, so the first
  // day's times lie below its midnight serial -657434.
  static constexpr double kMin = -657434.99999;
  static constexpr double kMax = 2958465.99999;          // 9999-12-31 23:59:59 (and a little)
  static constexpr double kHalfSecond = 5.787037037037037e-6;

  constexpr DateTime() = default;  // 1899-12-30 00:00, valid, as COleDateTime starts
  // A serial outside the supported range (or NaN) gives an invalid date-time.
  explicit DateTime(double oleDate);
  // Components out of range (years 100..9999, real days of the month, 0..23:59:59) give invalid.
  DateTime(int year, int month, int day, int hour = 0, int minute = 0, int second = 0);
  static constexpr DateTime Null() { return DateTime(0.0, ValueStatus::Null); }
  static constexpr DateTime Invalid() { return DateTime(0.0, ValueStatus::Invalid); }
  static DateTime FromUnixSeconds(long long seconds);  // whole seconds since 1970-01-01, UTC-free
  static DateTime Now();  // local wall-clock time

  ValueStatus GetStatus() const { return m_status; }
  bool IsValid() const { return m_status == ValueStatus::Valid; }
  bool IsNull() const { return m_status == ValueStatus::Null; }
  double Value() const { return m_date; }

  // Parts of a valid value, rounded to the nearest second; false for null or invalid.
  bool GetParts(DateParts& parts) const;
  int GetYear() const;
  int GetMonth() const;
  int GetDay() const;
  int GetHour() const;
  int GetMinute() const;
  int GetSecond() const;
  int GetDayOfWeek() const;  // 1 = Sunday .. 7 = Saturday
  int GetDayOfYear() const;  // 1 .. 366
  // Monday-based weekday, 1 = Monday .. 7 = Sunday, as Polish calendars count.
  int GetIsoDayOfWeek() const;
  bool HasTimeOfDay() const;  // a time other than midnight, after rounding to seconds
  DateTime DateOnly() const;

  bool SetDate(int year, int month, int day);
  bool SetDateTime(int year, int month, int day, int hour, int minute, int second);

  // Calendar arithmetic; the result is invalid when it leaves the supported range.
  DateTime AddDays(double days) const;
  DateTime AddSeconds(long long seconds) const;
  // Months are added to the calendar month; a day past the end of the new month is clamped to
  // its last day (31 January + 1 month = 28 or 29 February). The time of day is kept.
  DateTime AddMonths(int months) const;
  DateTime AddYears(int years) const { return AddMonths(years * 12); }

  // strftime-style: %Y %y %m %d %H %M %S %j %% (others copied as they stand). Null or invalid: "".
  std::string Format(std::string_view pattern) const;
  // ISO forms: "YYYY-MM-DD", "YYYYMMDD", and a date followed by " " or "T" and "HH:MM" or
  // "HH:MM:SS" (a fraction ".fff" is accepted and rounded to the second). Anything else: invalid.
  static DateTime ParseIso(std::string_view text);

  // Equal within half a second; null equals null; an invalid value equals nothing.
  bool operator==(const DateTime& other) const;
  bool operator<(const DateTime& other) const;
  bool operator>(const DateTime& other) const { return other < *this; }
  bool operator<=(const DateTime& other) const { return !(other < *this); }
  bool operator>=(const DateTime& other) const { return !(*this < other); }

  // Helpers of the Gregorian calendar.
  static bool IsLeapYear(int year);
  static int DaysInMonth(int year, int month);  // 0 for a month outside 1..12

 private:
  constexpr DateTime(double v, ValueStatus s) : m_date(v), m_status(s) {}
  double m_date = 0.0;
  ValueStatus m_status = ValueStatus::Valid;
};

// Whole days from 1899-12-30 to a civil date (no range check) and back.
VARION_API long long DaysFromCivil(int year, int month, int day);
VARION_API void CivilFromDays(long long days, int& year, int& month, int& day);

}  // namespace varion

using COleDateTime = varion::DateTime;
