// Date value types shared by forms, report parameters and SQL conditions: periods, a time of
// day, a month, a quarter, a date with an optional time, and a clock that tests can pin.
#pragma once

#include <compare>
#include <string>

#include "base/date_time.h"
#include "base/export.h"
#include "base/variant.h"

// COleDateTime with the helpers forms use; a drop-in for it.
class VARION_API CVelOleDateTime : public COleDateTime {
 public:
  using COleDateTime::COleDateTime;
  CVelOleDateTime() = default;
  CVelOleDateTime(const COleDateTime& other) : COleDateTime(other) {}

  // Both valid and on the same calendar day, whatever the time.
  bool IsSameDate(const COleDateTime& other) const;
  // A date variant; null (and invalid) give a null variant, as a database field wants it.
  _variant_t GetVariant() const;
  // Takes a date, a date text or a number of days; null and empty give a null value. False
  // (and the value unchanged) when the variant does not convert.
  bool SetVariant(const _variant_t& value);
  CVelOleDateTime GetLastDayOfMonth() const;  // the same time of day
  bool IsLastDayOfMonth() const;
};

namespace DateTools {

// A start and an end date-time. Comparisons use the half-second equality of date-times.
class VARION_API Period {
 public:
  Period() = default;
  Period(const COleDateTime& start, const COleDateTime& end) : m_start(start), m_end(end) {}

  const COleDateTime& GetStart() const { return m_start; }
  const COleDateTime& GetEnd() const { return m_end; }
  void SetStart(const COleDateTime& start) { m_start = start; }
  void SetEnd(const COleDateTime& end) { m_end = end; }

  bool operator<(const Period& other) const;  // by start, then by end
  bool operator==(const Period& other) const { return m_start == other.m_start && m_end == other.m_end; }
  bool Contains(const COleDateTime& date) const;      // both ends included
  bool FinishesBefore(const Period& other) const;     // this end <= other start
  bool StartsAfter(const Period& other) const;        // this start >= other end
  bool Overlaps(const Period& other) const;           // touching periods overlap
  bool IsEmpty() const;                               // as a default-made period
  // Both ends after 1899-12-30 and the end strictly later than the start: a period of a single
  // instant is not valid (a range from a date to the same date has no length).
  bool IsValid() const;

  // Calendar days from the start's day to the end's day, both included: 31 for 1-31 January.
  // 0 when an end is null or invalid or the end is before the start.
  int Length() const;
  // The period that follows: whole months give the same number of whole months after them
  // (January gives February with its 28 or 29 days, a quarter the next quarter); any other
  // period gives as many days starting the day after its end. Times of day are kept. A period
  // with a null or invalid end, or ending before it starts, gives a default-made period.
  Period NextPeriod() const;

 private:
  COleDateTime m_start;
  COleDateTime m_end;
};

// A time of day to the second.
class VARION_API TimeOnly {
 public:
  TimeOnly() = default;
  // Out-of-range parts give an invalid time (IsValid false) that prints as "".
  TimeOnly(int hour, int minute, int second = 0);
  explicit TimeOnly(const COleDateTime& dateTime);  // its time of day; invalid for null/invalid
  static TimeOnly Parse(const char* text);          // "H:MM" or "HH:MM:SS"; invalid otherwise

  bool IsValid() const { return m_seconds >= 0; }
  int GetHour() const { return IsValid() ? m_seconds / 3600 : -1; }
  int GetMinute() const { return IsValid() ? m_seconds / 60 % 60 : -1; }
  int GetSecond() const { return IsValid() ? m_seconds % 60 : -1; }
  int SecondsOfDay() const { return m_seconds; }
  // The date's day at this time; invalid when either is invalid.
  COleDateTime On(const COleDateTime& date) const;
  std::string ToString(bool withSeconds = false) const;  // "08:05" or "08:05:09"
  auto operator<=>(const TimeOnly&) const = default;

 private:
  int m_seconds = 0;
};

// A calendar month of a year.
class VARION_API MonthYear {
 public:
  MonthYear() = default;
  MonthYear(int month, int year) : m_month(month), m_year(year) {}
  explicit MonthYear(const COleDateTime& date);  // 0/0 (invalid) for null and invalid dates

  int GetMonth() const { return m_month; }
  int GetYear() const { return m_year; }
  bool IsValid() const { return m_month >= 1 && m_month <= 12 && m_year >= 100 && m_year <= 9999; }
  COleDateTime FirstDay() const;  // invalid when the month is
  COleDateTime LastDay() const;
  Period ToPeriod() const { return Period(FirstDay(), LastDay()); }
  MonthYear Next(int months = 1) const;  // invalid stays invalid
  std::string ToString() const;          // "Styczeń 2024"; "" when invalid
  auto operator<=>(const MonthYear& o) const {
    return m_year != o.m_year ? m_year <=> o.m_year : m_month <=> o.m_month;
  }
  bool operator==(const MonthYear&) const = default;

 private:
  int m_month = 0;
  int m_year = 0;
};

// A quarter of a year.
class VARION_API QuarterYear {
 public:
  QuarterYear() = default;
  QuarterYear(int quarter, int year) : m_quarter(quarter), m_year(year) {}
  explicit QuarterYear(const COleDateTime& date);

  int GetQuarter() const { return m_quarter; }
  int GetYear() const { return m_year; }
  bool IsValid() const { return m_quarter >= 1 && m_quarter <= 4 && m_year >= 100 && m_year <= 9999; }
  COleDateTime FirstDay() const;
  COleDateTime LastDay() const;
  Period ToPeriod() const { return Period(FirstDay(), LastDay()); }
  QuarterYear Next(int quarters = 1) const;
  std::string ToString() const;  // "III kwartał 2024"; "" when invalid
  auto operator<=>(const QuarterYear& o) const {
    return m_year != o.m_year ? m_year <=> o.m_year : m_quarter <=> o.m_quarter;
  }
  bool operator==(const QuarterYear&) const = default;

 private:
  int m_quarter = 0;
  int m_year = 0;
};

// A date that may carry a time of day (a due date "by the end of the day" or "at 14:00").
class VARION_API DateOptionalTime {
 public:
  DateOptionalTime() = default;
  explicit DateOptionalTime(const COleDateTime& date) : m_date(date.DateOnly()) {}
  DateOptionalTime(const COleDateTime& date, const TimeOnly& time) : m_date(date.DateOnly()), m_time(time), m_hasTime(true) {}

  const COleDateTime& GetDate() const { return m_date; }
  bool HasTime() const { return m_hasTime; }
  const TimeOnly& GetTime() const { return m_time; }
  void ClearTime() { m_hasTime = false; }
  // The date at its time, or at midnight without one.
  COleDateTime ToDateTime() const;
  // The last instant the value still covers: the time itself, or 23:59:59 of a date alone.
  COleDateTime LatestInstant() const;
  std::string ToString() const;  // "2024-03-31" or "2024-03-31 14:00"; "" for a null date

 private:
  COleDateTime m_date = COleDateTime::Null();
  TimeOnly m_time;
  bool m_hasTime = false;
};

// Where "now" comes from, so that rules depending on today can be tested.
class VARION_API IClock {
 public:
  virtual ~IClock() = default;
  virtual COleDateTime Now() const = 0;
  COleDateTime Today() const { return Now().DateOnly(); }
};

class VARION_API SystemClock : public IClock {
 public:
  COleDateTime Now() const override { return COleDateTime::Now(); }
};

// A clock that says what it was set to.
class VARION_API FixedClock : public IClock {
 public:
  explicit FixedClock(const COleDateTime& now) : m_now(now) {}
  void Set(const COleDateTime& now) { m_now = now; }
  COleDateTime Now() const override { return m_now; }

 private:
  COleDateTime m_now;
};

}  // namespace DateTools

class VARION_API CVelOleDateTimePeriod : public DateTools::Period {
 public:
  using DateTools::Period::Period;
  CVelOleDateTimePeriod() = default;
  CVelOleDateTimePeriod(const DateTools::Period& p) : DateTools::Period(p) {}
  // "01-03-2024 - 31-03-2024" in the date field's pattern; "od 01-03-2024" or "do 31-03-2024"
  // when one end is null or invalid; "" when both are.
  std::string toString() const;
};
