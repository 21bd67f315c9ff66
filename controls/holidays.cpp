#include "controls/holidays.h"

#include <array>
#include <cstdint>
#include <cstring>

#include "controls/polish_words.h"

namespace {

// Easter Sunday as days after 1 March. The rule's D is March D, or April D - 31 past 31, which
// is D - 1 days after 1 March either way. The arithmetic truncates toward zero and keeps the
// dividend's sign in remainders, as the C++ operators do.
constexpr int EasterAfterMarch1(int year) {
  int c = year / 100;
  int g = year % 19;
  int y = year - 100 * c;
  int e = ((c - 15) / 2 + 202 - 11 * g) % 30;
  int k = (40 - c) % 4;
  int f = k - (k == 3 ? 1 : 0) - (k > 1 ? 1 : 0);
  int d = (20 - ((y / 4 + y) % 7) - f - ((e + 2) % 7)) % 7 + e + 22;
  return d - 1;
}

// Every year a date-time can hold, computed while compiling: the calendar views ask for
// thousands of days at a time.
constexpr int kFirstYear = 100, kLastYear = 9999;
constexpr auto kEasterAfterMarch1 = [] {
  std::array<std::uint8_t, kLastYear - kFirstYear + 1> t{};
  for (int y = kFirstYear; y <= kLastYear; ++y)
    t[static_cast<size_t>(y - kFirstYear)] = static_cast<std::uint8_t>(EasterAfterMarch1(y));
  return t;
}();

// Whole days since 1899-12-30 of a valid date-time, rounded to the second as its parts are: the
// last half second of a day belongs to the next one.
long long DayNumber(double serial) {
  long long days = static_cast<long long>(serial);  // truncates toward zero, as the serial counts
  double frac = serial - static_cast<double>(days);
  if ((frac < 0 ? -frac : frac) * 86400.0 >= 86399.5) ++days;
  return days;
}

char FoldLetter(unsigned char c) {
  // Lower case and without Polish diacritics, so "PAŹ", "paź" and "paz" compare equal.
  switch (c) {
    case 0xA5: case 0xB9: return 'a';  // Ą ą
    case 0xC6: case 0xE6: return 'c';  // Ć ć
    case 0xCA: case 0xEA: return 'e';  // Ę ę
    case 0xA3: case 0xB3: return 'l';  // Ł ł
    case 0xD1: case 0xF1: return 'n';  // Ń ń
    case 0xD3: case 0xF3: return 'o';  // Ó ó
    case 0x8C: case 0x9C: return 's';  // Ś ś
    case 0x8F: case 0x9F: case 0xAF: case 0xBF: return 'z';  // Ź ź Ż ż
    default: return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : static_cast<char>(c);
  }
}

std::string Fold(std::string_view s) {
  std::string out;
  out.reserve(s.size());
  for (char c : s) out += FoldLetter(static_cast<unsigned char>(c));
  return out;
}

}  // namespace

namespace varion {

const char* HolidayNameOf(int year, int month, int day) {
  switch (month * 100 + day) {
    case 101: return "Nowy Rok";
    case 106: return "Trzech Króli";
    case 501: return "Święto Państwowe";
    case 503: return "Święto Narodowe 3. Maja";
    case 815: return "Wniebowzięcie Najświętszej Marii Panny";
    case 1101: return "Wszystkich Świętych";
    case 1111: return "Święto Niepodległości";
    case 1112: return year == 2018 ? "100. Rocznica Odzyskania Niepodległości" : nullptr;
    case 1224: return year >= 2025 ? "Wigilia" : nullptr;
    case 1225: return "Boże Narodzenie (1. dzień)";
    case 1226: return "Boże Narodzenie (2. dzień)";
    default: break;
  }
  // Easter falls in March or April, Corpus Christi 60 days later, in June at the latest.
  if (month < 3 || month > 6 || year < kFirstYear || year > kLastYear) return nullptr;
  static constexpr int kMonthAfterMarch1[4] = {0, 31, 61, 92};  // March .. June
  int easter = kEasterAfterMarch1[static_cast<size_t>(year - kFirstYear)];
  int offset = kMonthAfterMarch1[month - 3] + day - 1 - easter;
  if (offset == 0) return "Wielkanoc (1. dzień)";
  if (offset == 1) return "Wielkanoc (2. dzień)";
  if (offset == 60) return "Boże Ciało";
  return nullptr;
}

const char* HolidayNameOf(const DateTime& date) {
  if (!date.IsValid()) return nullptr;
  long long days = DayNumber(date.Value());
  int y, m, d;
  CivilFromDays(days, y, m, d);
  return HolidayNameOf(y, m, d);
}

}  // namespace varion

const char* const CCalendarUtils::m_PolishMonthsNames[12] = {
    "Styczeń", "Luty", "Marzec", "Kwiecień", "Maj", "Czerwiec",
    "Lipiec", "Sierpień", "Wrzesień", "Październik", "Listopad", "Grudzień"};
const char* const CCalendarUtils::m_PolishShortMohtsNames[12] = {"Sty", "Lut", "Mar", "Kwi", "Maj", "Cze",
                                                                 "Lip", "Sie", "Wrz", "Paź", "Lis", "Gru"};
const char* const CCalendarUtils::m_PolishMonthsNamesLower[12] = {
    "styczeń", "luty", "marzec", "kwiecień", "maj", "czerwiec",
    "lipiec", "sierpień", "wrzesień", "październik", "listopad", "grudzień"};
const int CCalendarUtils::m_MonthsLengths[12] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};

COleDateTime CCalendarUtils::GetEasterDate(int year) {
  if (year < 100 || year > 9999) return COleDateTime::Invalid();
  int d = kEasterAfterMarch1[static_cast<size_t>(year - kFirstYear)] + 1;
  return d < 32 ? COleDateTime(year, 3, d) : COleDateTime(year, 4, d - 31);
}

int CCalendarUtils::GetMonthLength(int year, int month) {
  if (month < 0 || month > 11) return 0;
  return month == 1 && IsLeapYear(year) ? 29 : m_MonthsLengths[month];
}

std::string CCalendarUtils::GetPolishMonthName(int month) {
  return month >= 0 && month <= 11 ? m_PolishMonthsNames[month] : "";
}

std::string CCalendarUtils::GetPolishShortMonthName(int month) {
  return month >= 0 && month <= 11 ? m_PolishShortMohtsNames[month] : "";
}

std::string CCalendarUtils::GetMonthName(int month) {
  return month >= 0 && month <= 11 ? m_PolishMonthsNamesLower[month] : "";
}

std::string CCalendarUtils::GetDayName(int dayOfWeek, bool shortName) {
  static constexpr const char* kNames[7] = {"niedziela", "poniedziałek", "wtorek", "środa",
                                            "czwartek",  "piątek",       "sobota"};
  static constexpr const char* kShort[7] = {"Nd", "Pn", "Wt", "Śr", "Cz", "Pt", "So"};
  if (dayOfWeek < 1 || dayOfWeek > 7) return {};
  return shortName ? kShort[dayOfWeek - 1] : kNames[dayOfWeek - 1];
}

int CCalendarUtils::ConvertPolishMonthNameToNumber(const char* name) {
  if (!name) return 0;
  std::string_view s(name);
  size_t first = s.find_first_not_of(" \t");
  if (first == std::string_view::npos) return 0;
  s = s.substr(first, s.find_last_not_of(" \t") - first + 1);
  std::string folded = Fold(s);
  for (int m = 1; m <= 12; ++m) {
    if (folded == Fold(varion::PolishMonthLower(m)) || folded == Fold(varion::PolishMonthGenitive(m)) ||
        folded == Fold(varion::PolishMonthShortName(m)))
      return m;
  }
  return 0;
}

bool CCalendarUtils::IsLeapYear(int year) { return (year % 4 == 0 && year % 100 != 0) || year % 400 == 0; }

COleDateTime CCalendarUtils::GetLastDayOfMonth(const COleDateTime& date) {
  varion::DateParts p;
  if (!date.GetParts(p)) return date;
  return COleDateTime(p.year, p.month, COleDateTime::DaysInMonth(p.year, p.month), p.hour, p.minute, p.second);
}

bool CCalendarUtils::IsLastDayOfMonth(const COleDateTime& date) {
  varion::DateParts p;
  return date.GetParts(p) && p.day == COleDateTime::DaysInMonth(p.year, p.month);
}

bool CVelHolidayInfo::IsHoliday(const COleDateTime& date) { return varion::HolidayNameOf(date) != nullptr; }

std::string CVelHolidayInfo::GetHolidayName(const COleDateTime& date) {
  const char* name = varion::HolidayNameOf(date);
  return name ? name : "";
}

bool CVelHolidayInfo::IsWeekend(const COleDateTime& date) {
  int dow = date.GetDayOfWeek();
  return dow == 1 || dow == 7;
}

COleDateTime CVelHolidayInfo::GetFirstWeekday(const COleDateTime& date) { return GetNthWeekday(date, 1); }

COleDateTime CVelHolidayInfo::GetNthWeekday(const COleDateTime& date, int n) {
  varion::DateParts p;
  if (n < 1 || !date.GetParts(p)) return COleDateTime::Invalid();
  int last = COleDateTime::DaysInMonth(p.year, p.month);
  // 1 = Sunday .. 7 = Saturday for the first of the month, then one step per day.
  int dow = COleDateTime(p.year, p.month, 1).GetDayOfWeek();
  for (int day = 1; day <= last; ++day, dow = dow % 7 + 1) {
    if (dow == 1 || dow == 7 || varion::HolidayNameOf(p.year, p.month, day)) continue;
    if (--n == 0) return COleDateTime(p.year, p.month, day);
  }
  return COleDateTime::Invalid();
}
