#include "controls/date_tools.h"

#include <cstdio>

#include "controls/holidays.h"
#include "controls/polish_words.h"

namespace {

// "<=" on date-times: less or equal within half a second; false whenever one is invalid.
bool NotAfter(const COleDateTime& a, const COleDateTime& b) { return a < b || a == b; }

// Whole days since 1899-12-30 of the calendar day of a valid date-time.
long long DayIndex(const COleDateTime& d) {
  varion::DateParts p;
  d.GetParts(p);
  return varion::DaysFromCivil(p.year, p.month, p.day);
}

// The time of day of a valid date-time in seconds.
int SecondsOf(const COleDateTime& d) {
  varion::DateParts p;
  d.GetParts(p);
  return p.hour * 3600 + p.minute * 60 + p.second;
}

COleDateTime AtDay(long long day, int seconds) {
  return COleDateTime(static_cast<double>(day)).AddSeconds(seconds);
}

}  // namespace

// --- CVelOleDateTime ---

bool CVelOleDateTime::IsSameDate(const COleDateTime& other) const {
  return IsValid() && other.IsValid() && DayIndex(*this) == DayIndex(other);
}

_variant_t CVelOleDateTime::GetVariant() const {
  if (!IsValid()) return _variant_t::MakeNull();
  return _variant_t(static_cast<const COleDateTime&>(*this));
}

bool CVelOleDateTime::SetVariant(const _variant_t& value) {
  if (value.IsEmptyOrNull()) {
    *this = COleDateTime::Null();
    return true;
  }
  if (const std::string* text = value.GetText(); text && text->empty()) {
    *this = COleDateTime::Null();
    return true;
  }
  COleDateTime converted;
  if (varion::Failed(value.ToDate(converted)) || !converted.IsValid()) return false;
  *this = converted;
  return true;
}

CVelOleDateTime CVelOleDateTime::GetLastDayOfMonth() const { return CCalendarUtils::GetLastDayOfMonth(*this); }

bool CVelOleDateTime::IsLastDayOfMonth() const { return CCalendarUtils::IsLastDayOfMonth(*this); }

namespace DateTools {

// --- Period ---

bool Period::operator<(const Period& other) const {
  if (m_start < other.m_start) return true;
  return m_start == other.m_start && m_end < other.m_end;
}

bool Period::Contains(const COleDateTime& date) const { return NotAfter(m_start, date) && NotAfter(date, m_end); }

bool Period::FinishesBefore(const Period& other) const { return NotAfter(m_end, other.m_start); }

bool Period::StartsAfter(const Period& other) const { return NotAfter(other.m_end, m_start); }

bool Period::Overlaps(const Period& other) const { return !(m_end < other.m_start) && !(other.m_end < m_start); }

bool Period::IsEmpty() const {
  const Period blank;
  return m_start == blank.m_start && m_end == blank.m_end;
}

bool Period::IsValid() const {
  return m_start.IsValid() && m_end.IsValid() && m_start.Value() > 0.0 && m_end.Value() > 0.0 && m_end > m_start;
}

int Period::Length() const {
  if (!m_start.IsValid() || !m_end.IsValid()) return 0;
  long long days = DayIndex(m_end) - DayIndex(m_start);
  return days < 0 ? 0 : static_cast<int>(days + 1);
}

Period Period::NextPeriod() const {
  int length = Length();
  if (length == 0) return Period();
  varion::DateParts s, e;
  m_start.GetParts(s);
  m_end.GetParts(e);
  if (s.day == 1 && e.day == COleDateTime::DaysInMonth(e.year, e.month)) {
    int months = (e.year - s.year) * 12 + (e.month - s.month) + 1;
    COleDateTime first = COleDateTime(e.year, e.month, 1).AddMonths(1);
    COleDateTime lastMonth = first.AddMonths(months - 1);
    if (!first.IsValid() || !lastMonth.IsValid()) return Period();
    int y = lastMonth.GetYear(), m = lastMonth.GetMonth();
    return Period(COleDateTime(first.GetYear(), first.GetMonth(), 1, s.hour, s.minute, s.second),
                  COleDateTime(y, m, COleDateTime::DaysInMonth(y, m), e.hour, e.minute, e.second));
  }
  long long startDay = DayIndex(m_end) + 1;
  return Period(AtDay(startDay, SecondsOf(m_start)), AtDay(startDay + length - 1, SecondsOf(m_end)));
}

// --- TimeOnly ---

TimeOnly::TimeOnly(int hour, int minute, int second) {
  bool ok = hour >= 0 && hour < 24 && minute >= 0 && minute < 60 && second >= 0 && second < 60;
  m_seconds = ok ? hour * 3600 + minute * 60 + second : -1;
}

TimeOnly::TimeOnly(const COleDateTime& dateTime) : m_seconds(dateTime.IsValid() ? SecondsOf(dateTime) : -1) {}

TimeOnly TimeOnly::Parse(const char* text) {
  TimeOnly invalid(-1, 0);
  if (!text) return invalid;
  int parts[3] = {0, 0, 0};
  int count = 0, digits = 0;
  for (const char* p = text;; ++p) {
    if (*p >= '0' && *p <= '9') {
      if (++digits > 2) return invalid;
      parts[count] = parts[count] * 10 + (*p - '0');
    } else if ((*p == ':' || *p == '\0') && digits > 0 && (count == 0 || digits == 2)) {
      ++count;
      digits = 0;
      if (*p == '\0') break;
      if (count == 3) return invalid;
    } else {
      return invalid;
    }
  }
  if (count < 2) return invalid;
  return TimeOnly(parts[0], parts[1], parts[2]);
}

COleDateTime TimeOnly::On(const COleDateTime& date) const {
  if (!IsValid() || !date.IsValid()) return COleDateTime::Invalid();
  return AtDay(DayIndex(date), m_seconds);
}

std::string TimeOnly::ToString(bool withSeconds) const {
  if (!IsValid()) return {};
  char buf[16];
  if (withSeconds)
    std::snprintf(buf, sizeof buf, "%02d:%02d:%02d", GetHour(), GetMinute(), GetSecond());
  else
    std::snprintf(buf, sizeof buf, "%02d:%02d", GetHour(), GetMinute());
  return buf;
}

// --- MonthYear ---

MonthYear::MonthYear(const COleDateTime& date) {
  varion::DateParts p;
  if (date.GetParts(p)) {
    m_month = p.month;
    m_year = p.year;
  }
}

COleDateTime MonthYear::FirstDay() const { return IsValid() ? COleDateTime(m_year, m_month, 1) : COleDateTime::Invalid(); }

COleDateTime MonthYear::LastDay() const {
  return IsValid() ? COleDateTime(m_year, m_month, COleDateTime::DaysInMonth(m_year, m_month)) : COleDateTime::Invalid();
}

MonthYear MonthYear::Next(int months) const {
  if (!IsValid()) return *this;
  long long index = static_cast<long long>(m_year) * 12 + (m_month - 1) + months;
  MonthYear next(static_cast<int>(index % 12) + 1, static_cast<int>(index / 12));
  return next.IsValid() ? next : MonthYear();
}

std::string MonthYear::ToString() const {
  if (!IsValid()) return {};
  return NazwaMiesiaca(m_month) + ' ' + std::to_string(m_year);
}

// --- QuarterYear ---

QuarterYear::QuarterYear(const COleDateTime& date) {
  varion::DateParts p;
  if (date.GetParts(p)) {
    m_quarter = (p.month - 1) / 3 + 1;
    m_year = p.year;
  }
}

COleDateTime QuarterYear::FirstDay() const {
  return IsValid() ? COleDateTime(m_year, m_quarter * 3 - 2, 1) : COleDateTime::Invalid();
}

COleDateTime QuarterYear::LastDay() const {
  return IsValid() ? COleDateTime(m_year, m_quarter * 3, COleDateTime::DaysInMonth(m_year, m_quarter * 3))
                   : COleDateTime::Invalid();
}

QuarterYear QuarterYear::Next(int quarters) const {
  if (!IsValid()) return *this;
  long long index = static_cast<long long>(m_year) * 4 + (m_quarter - 1) + quarters;
  QuarterYear next(static_cast<int>(index % 4) + 1, static_cast<int>(index / 4));
  return next.IsValid() ? next : QuarterYear();
}

std::string QuarterYear::ToString() const {
  if (!IsValid()) return {};
  return NazwaKwartalu(m_quarter) + ' ' + std::to_string(m_year);
}

// --- DateOptionalTime ---

COleDateTime DateOptionalTime::ToDateTime() const {
  if (!m_date.IsValid()) return m_date;
  return m_hasTime ? m_time.On(m_date) : m_date;
}

COleDateTime DateOptionalTime::LatestInstant() const {
  if (!m_date.IsValid()) return m_date;
  return m_hasTime ? m_time.On(m_date) : TimeOnly(23, 59, 59).On(m_date);
}

std::string DateOptionalTime::ToString() const {
  if (!m_date.IsValid()) return {};
  std::string out = m_date.Format("%Y-%m-%d");
  if (m_hasTime && m_time.IsValid()) out += ' ' + m_time.ToString();
  return out;
}

}  // namespace DateTools

std::string CVelOleDateTimePeriod::toString() const {
  const COleDateTime& s = GetStart();
  const COleDateTime& e = GetEnd();
  if (s.IsValid() && e.IsValid()) return s.Format("%d-%m-%Y") + " - " + e.Format("%d-%m-%Y");
  if (s.IsValid()) return "od " + s.Format("%d-%m-%Y");
  if (e.IsValid()) return "do " + e.Format("%d-%m-%Y");
  return {};
}
