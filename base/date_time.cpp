#include "base/date_time.h"

#include <chrono>
#include <cmath>
#include <ctime>

namespace varion {
namespace {

constexpr long long kSecondsPerDay = 86400;

bool InRange(double v) { return std::isfinite(v) && v >= DateTime::kMin && v <= DateTime::kMax; }

// Serial from whole days and seconds of the day, following the OLE rule for negative serials.
double ToSerial(long long days, long long secondsOfDay) {
  double frac = static_cast<double>(secondsOfDay) / kSecondsPerDay;
  return days >= 0 ? static_cast<double>(days) + frac : static_cast<double>(days) - frac;
}

// Whole days and seconds of the day of a serial, rounded to the nearest second.
void FromSerial(double v, long long& days, long long& seconds) {
  double whole = std::trunc(v);
  double frac = std::fabs(v - whole);
  days = static_cast<long long>(whole);
  seconds = std::llround(frac * kSecondsPerDay);
  if (seconds >= kSecondsPerDay) {
    seconds -= kSecondsPerDay;
    // One more second of the day moves forward in time: for negative serials the integer part
    // counts backwards, so the next day is one closer to zero.
    days += 1;
  }
  // -0.x serials belong to 1899-12-30 like 0.x does.
}

bool ValidTime(int h, int mi, int s) { return h >= 0 && h < 24 && mi >= 0 && mi < 60 && s >= 0 && s < 60; }

int ParseDigits(std::string_view s, size_t pos, size_t n, bool& ok) {
  int v = 0;
  if (pos + n > s.size()) {
    ok = false;
    return 0;
  }
  for (size_t i = pos; i < pos + n; ++i) {
    if (s[i] < '0' || s[i] > '9') {
      ok = false;
      return 0;
    }
    v = v * 10 + (s[i] - '0');
  }
  return v;
}

}  // namespace

long long DaysFromCivil(int year, int month, int day) {
  // Howard Hinnant's days_from_civil, shifted from 1970-01-01 to 1899-12-30 (25569 days).
  long long y = static_cast<long long>(year) - (month <= 2);
  long long era = (y >= 0 ? y : y - 399) / 400;
  long long yoe = y - era * 400;
  long long doy = (153 * (month + (month > 2 ? -3 : 9)) + 2) / 5 + day - 1;
  long long doe = yoe * 365 + yoe / 4 - yoe / 100 + doy;
  return era * 146097 + doe - 719468 + 25569;
}

void CivilFromDays(long long days, int& year, int& month, int& day) {
  long long z = days - 25569 + 719468;
  long long era = (z >= 0 ? z : z - 146096) / 146097;
  long long doe = z - era * 146097;
  long long yoe = (doe - doe / 1460 + doe / 36524 - doe / 146096) / 365;
  long long y = yoe + era * 400;
  long long doy = doe - (365 * yoe + yoe / 4 - yoe / 100);
  long long mp = (5 * doy + 2) / 153;
  day = static_cast<int>(doy - (153 * mp + 2) / 5 + 1);
  month = static_cast<int>(mp < 10 ? mp + 3 : mp - 9);
  year = static_cast<int>(y + (month <= 2));
}

bool DateTime::IsLeapYear(int year) { return (year % 4 == 0 && year % 100 != 0) || year % 400 == 0; }

int DateTime::DaysInMonth(int year, int month) {
  static constexpr int kDays[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  if (month < 1 || month > 12) return 0;
  return month == 2 && IsLeapYear(year) ? 29 : kDays[month - 1];
}

DateTime::DateTime(double oleDate) : m_date(oleDate), m_status(ValueStatus::Valid) {
  if (!InRange(oleDate)) *this = Invalid();
}

DateTime::DateTime(int year, int month, int day, int hour, int minute, int second) {
  if (!SetDateTime(year, month, day, hour, minute, second)) *this = Invalid();
}

DateTime DateTime::FromUnixSeconds(long long seconds) {
  long long days = seconds / kSecondsPerDay, rem = seconds % kSecondsPerDay;
  if (rem < 0) {
    rem += kSecondsPerDay;
    --days;
  }
  return DateTime(ToSerial(days + 25569, rem));
}

DateTime DateTime::Now() {
  std::time_t t = std::time(nullptr);
  std::tm local{};
#if defined(_WIN32)
  localtime_s(&local, &t);
#else
  localtime_r(&t, &local);
#endif
  return DateTime(local.tm_year + 1900, local.tm_mon + 1, local.tm_mday, local.tm_hour, local.tm_min,
                  local.tm_sec > 59 ? 59 : local.tm_sec);
}

bool DateTime::SetDate(int year, int month, int day) { return SetDateTime(year, month, day, 0, 0, 0); }

bool DateTime::SetDateTime(int year, int month, int day, int hour, int minute, int second) {
  if (year < 100 || year > 9999 || month < 1 || month > 12 || day < 1 || day > DaysInMonth(year, month) ||
      !ValidTime(hour, minute, second)) {
    *this = Invalid();
    return false;
  }
  m_date = ToSerial(DaysFromCivil(year, month, day), hour * 3600LL + minute * 60LL + second);
  m_status = ValueStatus::Valid;
  return true;
}

bool DateTime::GetParts(DateParts& p) const {
  if (!IsValid()) return false;
  long long days, secs;
  FromSerial(m_date, days, secs);
  CivilFromDays(days, p.year, p.month, p.day);
  p.hour = static_cast<int>(secs / 3600);
  p.minute = static_cast<int>(secs / 60 % 60);
  p.second = static_cast<int>(secs % 60);
  // 1899-12-30 was a Saturday (7).
  long long w = (days % 7 + 7 + 6) % 7;  // 0 = Sunday
  p.dayOfWeek = static_cast<int>(w) + 1;
  p.dayOfYear = static_cast<int>(days - DaysFromCivil(p.year, 1, 1)) + 1;
  return true;
}

#define VARION_PART(name, field)  \
  int DateTime::name() const {    \
    DateParts p;                  \
    return GetParts(p) ? p.field : -1; \
  }
VARION_PART(GetYear, year)
VARION_PART(GetMonth, month)
VARION_PART(GetDay, day)
VARION_PART(GetHour, hour)
VARION_PART(GetMinute, minute)
VARION_PART(GetSecond, second)
VARION_PART(GetDayOfWeek, dayOfWeek)
VARION_PART(GetDayOfYear, dayOfYear)
#undef VARION_PART

int DateTime::GetIsoDayOfWeek() const {
  int d = GetDayOfWeek();
  return d < 0 ? -1 : (d == 1 ? 7 : d - 1);
}

bool DateTime::HasTimeOfDay() const {
  if (!IsValid()) return false;
  long long days, secs;
  FromSerial(m_date, days, secs);
  return secs != 0;
}

DateTime DateTime::DateOnly() const {
  if (!IsValid()) return *this;
  long long days, secs;
  FromSerial(m_date, days, secs);
  return DateTime(static_cast<double>(days));
}

DateTime DateTime::AddSeconds(long long seconds) const {
  if (!IsValid()) return *this;
  long long days, secs;
  FromSerial(m_date, days, secs);
  long long total = secs + seconds;
  long long dd = total / kSecondsPerDay, rem = total % kSecondsPerDay;
  if (rem < 0) {
    rem += kSecondsPerDay;
    --dd;
  }
  if (dd > 4000000 || dd < -4000000) return Invalid();
  return DateTime(ToSerial(days + dd, rem));
}

DateTime DateTime::AddDays(double days) const {
  if (!IsValid()) return *this;
  if (!std::isfinite(days) || std::fabs(days) > 4.0e6) return Invalid();
  return AddSeconds(std::llround(days * kSecondsPerDay));
}

DateTime DateTime::AddMonths(int months) const {
  DateParts p;
  if (!GetParts(p)) return *this;
  long long index = static_cast<long long>(p.year) * 12 + (p.month - 1) + months;
  long long y = index / 12;
  int m = static_cast<int>(index % 12) + 1;
  if (y < 100 || y > 9999) return Invalid();
  int d = p.day;
  int last = DaysInMonth(static_cast<int>(y), m);
  if (d > last) d = last;
  return DateTime(static_cast<int>(y), m, d, p.hour, p.minute, p.second);
}

std::string DateTime::Format(std::string_view pattern) const {
  DateParts p;
  if (!GetParts(p)) return {};
  std::string out;
  out.reserve(pattern.size() + 8);
  // Zero-padded decimal digits; SQL literals of every report condition go through here, so no
  // formatted-output machinery per field.
  auto digits = [&out](int value, int width) {
    char buf[12];
    int n = 0;
    bool negative = value < 0;
    unsigned v = negative ? 0u - static_cast<unsigned>(value) : static_cast<unsigned>(value);
    do {
      buf[n++] = static_cast<char>('0' + v % 10);
      v /= 10;
    } while (v);
    while (n < width) buf[n++] = '0';
    if (negative) out += '-';
    while (n) out += buf[--n];
  };
  for (size_t i = 0; i < pattern.size(); ++i) {
    char c = pattern[i];
    if (c != '%' || i + 1 == pattern.size()) {
      out += c;
      continue;
    }
    char conversion = pattern[++i];
    switch (conversion) {
      case 'Y': digits(p.year, 4); break;
      case 'y': digits(p.year % 100, 2); break;
      case 'm': digits(p.month, 2); break;
      case 'd': digits(p.day, 2); break;
      case 'H': digits(p.hour, 2); break;
      case 'M': digits(p.minute, 2); break;
      case 'S': digits(p.second, 2); break;
      case 'j': digits(p.dayOfYear, 3); break;
      case '%': out += '%'; break;
      default:
        out += '%';
        out += conversion;
        break;
    }
  }
  return out;
}

DateTime DateTime::ParseIso(std::string_view s) {
  bool ok = true;
  int y, mo, d;
  size_t pos;
  if (s.size() >= 10 && s[4] == '-' && s[7] == '-') {
    y = ParseDigits(s, 0, 4, ok);
    mo = ParseDigits(s, 5, 2, ok);
    d = ParseDigits(s, 8, 2, ok);
    pos = 10;
  } else if (s.size() >= 8) {
    y = ParseDigits(s, 0, 4, ok);
    mo = ParseDigits(s, 4, 2, ok);
    d = ParseDigits(s, 6, 2, ok);
    pos = 8;
  } else {
    return Invalid();
  }
  int h = 0, mi = 0, sec = 0;
  bool roundUp = false;
  if (ok && pos < s.size()) {
    if ((s[pos] != ' ' && s[pos] != 'T') || s.size() < pos + 6 || s[pos + 3] != ':') return Invalid();
    h = ParseDigits(s, pos + 1, 2, ok);
    mi = ParseDigits(s, pos + 4, 2, ok);
    pos += 6;
    if (ok && pos < s.size()) {
      if (s[pos] != ':') return Invalid();
      sec = ParseDigits(s, pos + 1, 2, ok);
      pos += 3;
      if (ok && pos < s.size()) {
        if (s[pos] != '.' || pos + 1 == s.size()) return Invalid();
        for (size_t i = pos + 1; i < s.size(); ++i)
          if (s[i] < '0' || s[i] > '9') return Invalid();
        roundUp = s[pos + 1] >= '5';
        pos = s.size();
      }
    }
  }
  if (!ok || pos != s.size()) return Invalid();
  DateTime r(y, mo, d, h, mi, sec);
  return roundUp && r.IsValid() ? r.AddSeconds(1) : r;
}

namespace {

// Position on the time line: negative serials carry their time of day forward.
double TimeLine(double v) {
  double whole = std::trunc(v);
  return whole + std::fabs(v - whole);
}

}  // namespace

bool DateTime::operator==(const DateTime& other) const {
  if (m_status == ValueStatus::Null || other.m_status == ValueStatus::Null)
    return m_status == other.m_status;
  if (!IsValid() || !other.IsValid()) return false;
  return std::fabs(TimeLine(m_date) - TimeLine(other.m_date)) < kHalfSecond;
}

bool DateTime::operator<(const DateTime& other) const {
  if (!IsValid() || !other.IsValid()) return false;
  if (*this == other) return false;
  return TimeLine(m_date) < TimeLine(other.m_date);
}

}  // namespace varion
