#include "controls/holidays.h"

#include <gtest/gtest.h>

#include <set>

#include "controls/calendar_tools.h"
#include "controls/polish_words.h"

namespace {

// Easter by the anonymous Gregorian computus, which is right for every year: the reference the
// deliberate differences of our rule are measured against.
COleDateTime ReferenceEaster(int y) {
  int a = y % 19, b = y / 100, c = y % 100, d = b / 4, e = b % 4, f = (b + 8) / 25, g = (b - f + 1) / 3;
  int h = (19 * a + b - d - g + 15) % 30, i = c / 4, k = c % 4, l = (32 + 2 * e + 2 * i - h - k) % 7;
  int m = (a + 11 * h + 22 * l) / 451;
  return COleDateTime(y, (h + l - 7 * m + 114) / 31, (h + l - 7 * m + 114) % 31 + 1);
}

TEST(Easter, KnownYearsAndTheKeptDifferences) {
  struct Case {
    int year, month, day;
  } cases[] = {{2024, 3, 31}, {2025, 4, 20}, {2000, 4, 23}, {2019, 4, 21}, {1954, 4, 25},
               {1981, 4, 26}, {2049, 4, 25}, {2076, 4, 26}, {2100, 4, 1}};
  for (const Case& c : cases) {
    SCOPED_TRACE(c.year);
    EXPECT_EQ(CCalendarUtils::GetEasterDate(c.year), COleDateTime(c.year, c.month, c.day));
  }
  std::set<int> differing;
  for (int y = 1900; y <= 2100; ++y)
    if (!(CCalendarUtils::GetEasterDate(y) == ReferenceEaster(y))) differing.insert(y);
  EXPECT_EQ(differing, (std::set<int>{1954, 1981, 2049, 2076, 2100}));

  for (int year : {99, 10000, -5, 0, INT32_MIN, INT32_MAX}) EXPECT_FALSE(CCalendarUtils::GetEasterDate(year).IsValid());
  EXPECT_TRUE(CCalendarUtils::GetEasterDate(100).IsValid());
  EXPECT_TRUE(CCalendarUtils::GetEasterDate(9999).IsValid());
}

TEST(Holidays, NamesByDate) {
  struct Case {
    int y, m, d;
    const char* name;  // nullptr: no holiday
  } cases[] = {
      {2024, 1, 1, "Nowy Rok"},
      {1950, 1, 6, "Trzech Króli"},  // no starting year
      {2024, 5, 1, "Święto Państwowe"},
      {2024, 5, 3, "Święto Narodowe 3. Maja"},
      {2024, 8, 15, "Wniebowzięcie Najświętszej Marii Panny"},
      {2024, 11, 1, "Wszystkich Świętych"},
      {2024, 11, 11, "Święto Niepodległości"},
      {2018, 11, 12, "100. Rocznica Odzyskania Niepodległości"},
      {2019, 11, 12, nullptr},
      {2024, 12, 24, nullptr},
      {2025, 12, 24, "Wigilia"},
      {2031, 12, 24, "Wigilia"},
      {2024, 12, 25, "Boże Narodzenie (1. dzień)"},
      {2024, 12, 26, "Boże Narodzenie (2. dzień)"},
      {2024, 3, 31, "Wielkanoc (1. dzień)"},
      {2024, 4, 1, "Wielkanoc (2. dzień)"},
      {2025, 4, 20, "Wielkanoc (1. dzień)"},
      {2025, 6, 19, "Boże Ciało"},
      {2025, 6, 8, nullptr},   // Pentecost is not in the list
      {1954, 4, 25, "Wielkanoc (1. dzień)"},
      {1954, 4, 18, nullptr},  // the kept quirk: the rule's Easter, not the true one
      {2100, 4, 2, "Wielkanoc (2. dzień)"},
      {2024, 5, 2, nullptr},
      {2024, 2, 29, nullptr},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(std::to_string(c.y) + "-" + std::to_string(c.m) + "-" + std::to_string(c.d));
    COleDateTime date(c.y, c.m, c.d, 13, 30, 0);  // the time of day does not matter
    EXPECT_EQ(CalendarTools::GetHolidayName(date), c.name ? c.name : "");
    EXPECT_EQ(CalendarTools::IsHoliday(date), c.name != nullptr);
    EXPECT_EQ(CVelHolidayInfo::GetHolidayName(date), c.name ? c.name : "");
    EXPECT_EQ(CVelHolidayInfo::IsHoliday(date), c.name != nullptr);
  }
  // 23:59:59.7 rounds to the next second, which is the next day, as the date's parts say.
  COleDateTime lateNewYearsEve(COleDateTime(2024, 12, 31).Value() + (86399.7 / 86400.0));
  EXPECT_EQ(lateNewYearsEve.GetDay(), 1);
  EXPECT_TRUE(CalendarTools::IsHoliday(lateNewYearsEve));

  for (const COleDateTime& bad : {COleDateTime::Null(), COleDateTime::Invalid()}) {
    EXPECT_FALSE(CalendarTools::IsHoliday(bad));
    EXPECT_FALSE(CVelHolidayInfo::IsWeekend(bad));
    EXPECT_EQ(CVelHolidayInfo::GetHolidayName(bad), "");
  }
}

TEST(CalendarUtils, MonthTables) {
  struct Case {
    int year, month, length;
  } lengths[] = {{2024, 1, 29}, {2023, 1, 28}, {1900, 1, 28}, {2000, 1, 29}, {2024, 0, 31},
                 {2024, 3, 30}, {2024, 11, 31}, {2024, 12, 0},  {2024, -1, 0}};
  for (const Case& c : lengths) {
    SCOPED_TRACE(std::to_string(c.year) + "/" + std::to_string(c.month));
    EXPECT_EQ(CCalendarUtils::GetMonthLength(c.year, c.month), c.length);
  }
  EXPECT_EQ(CCalendarUtils::GetPolishMonthName(0), "Styczeń");
  EXPECT_EQ(CCalendarUtils::GetPolishMonthName(9), "Październik");
  EXPECT_EQ(CCalendarUtils::GetPolishShortMonthName(9), "Paź");
  EXPECT_EQ(CCalendarUtils::GetMonthName(11), "grudzień");
  for (int bad : {-1, 12, 1000}) {
    EXPECT_EQ(CCalendarUtils::GetPolishMonthName(bad), "");
    EXPECT_EQ(CCalendarUtils::GetPolishShortMonthName(bad), "");
    EXPECT_EQ(CCalendarUtils::GetMonthName(bad), "");
  }
  EXPECT_EQ(CCalendarUtils::GetDayName(2), "poniedziałek");
  EXPECT_EQ(CCalendarUtils::GetDayName(4, true), "Śr");
  EXPECT_EQ(CCalendarUtils::GetDayName(8), "");
  EXPECT_EQ(CCalendarUtils::GetDayName(COleDateTime(2024, 12, 31).GetDayOfWeek()), "wtorek");
}

TEST(CalendarUtils, MonthNameToNumber) {
  struct Case {
    const char* name;
    int month;
  } cases[] = {{"styczeń", 1},   {"Styczeń", 1},     {"STYCZEŃ", 1},      {"stycznia", 1},  {"sty", 1},
               {"  luty ", 2},   {"października", 10}, {"pazdziernik", 10}, {"PAŹ", 10},    {"wrzesnia", 9},
               {"Grudzień", 12}, {"", 0},            {nullptr, 0},        {"janvier", 0},   {"st", 0},
               {"styczeńx", 0},  {"maj maj", 0},     {"\xFF\x80", 0}};
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name ? c.name : "(null)");
    EXPECT_EQ(CCalendarUtils::ConvertPolishMonthNameToNumber(c.name), c.month);
  }
}

TEST(CalendarUtils, LastDayOfMonth) {
  EXPECT_EQ(CCalendarUtils::GetLastDayOfMonth(COleDateTime(2024, 2, 10, 8, 0, 0)), COleDateTime(2024, 2, 29, 8, 0, 0));
  EXPECT_EQ(CCalendarUtils::GetLastDayOfMonth(COleDateTime(2023, 12, 31)), COleDateTime(2023, 12, 31));
  EXPECT_TRUE(CCalendarUtils::IsLastDayOfMonth(COleDateTime(2023, 2, 28)));
  EXPECT_FALSE(CCalendarUtils::IsLastDayOfMonth(COleDateTime(2024, 2, 28)));
  EXPECT_FALSE(CCalendarUtils::IsLastDayOfMonth(COleDateTime::Null()));
  EXPECT_TRUE(CCalendarUtils::GetLastDayOfMonth(COleDateTime::Null()).IsNull());
  EXPECT_TRUE(CCalendarUtils::IsLeapYear(2000));
  EXPECT_FALSE(CCalendarUtils::IsLeapYear(2100));
}

TEST(HolidayInfo, WeekendsAndWorkingDays) {
  EXPECT_TRUE(CVelHolidayInfo::IsWeekend(COleDateTime(2024, 12, 28)));   // Saturday
  EXPECT_TRUE(CVelHolidayInfo::IsWeekend(COleDateTime(2024, 12, 29)));   // Sunday
  EXPECT_FALSE(CVelHolidayInfo::IsWeekend(COleDateTime(2024, 12, 30)));  // Monday
  struct Case {
    int y, m, n;
    int day;  // 0: none
  } cases[] = {
      {2025, 1, 1, 2},   // 1 January is a holiday
      {2025, 1, 3, 7},   // 4-5 weekend, 6 Trzech Króli
      {2025, 5, 1, 2},   // 1 May holiday, 2 May a Friday
      {2025, 5, 20, 29}, // 3-4 weekend, Easter is in April that year
      {2025, 5, 21, 30},
      {2025, 5, 22, 0},
      {2025, 12, 1, 1},
      {2025, 12, 17, 23},  // 24, 25, 26 December are holidays from 2025 on
      {2025, 12, 18, 29},
      {2025, 2, 0, 0},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(std::to_string(c.m) + "/" + std::to_string(c.n));
    COleDateTime got = CVelHolidayInfo::GetNthWeekday(COleDateTime(c.y, c.m, 15), c.n);
    if (c.day == 0)
      EXPECT_FALSE(got.IsValid());
    else
      EXPECT_EQ(got, COleDateTime(c.y, c.m, c.day));
  }
  EXPECT_EQ(CVelHolidayInfo::GetFirstWeekday(COleDateTime(2025, 11, 30)), COleDateTime(2025, 11, 3));
  EXPECT_FALSE(CVelHolidayInfo::GetFirstWeekday(COleDateTime::Null()).IsValid());
}

TEST(PolishWords, NounFormAfterNumber) {
  struct Case {
    long long number;
    int form;
  } cases[] = {{1, 1},  {2, 2},   {5, 3},   {12, 3},   {22, 2},  {0, 3},    {-1, 1},  {-3, 2},    {11, 3},
               {14, 3}, {104, 2}, {112, 3}, {1001, 3}, {1024, 2}, {INT64_MIN, 3}, {INT64_MAX, 3}, {-22, 2}};
  const char* minuta[] = {"", "minuta", "minuty", "minut"};
  const char* pliki[] = {"", "plik", "pliki", "plików"};
  const wchar_t* letters[] = {L"", L"a", L"b", L"c"};
  ODMIANA_SLOWA own{"plik", "pliki", "plików"};
  ODMIANA_SLOWA_W ownW{L"a", L"b", L"c"};
  for (const Case& c : cases) {
    SCOPED_TRACE(c.number);
    EXPECT_EQ(OdmianaSlowa(6, c.number), minuta[c.form]);
    EXPECT_EQ(OdmianaSlowa(own, c.number), pliki[c.form]);
    EXPECT_EQ(OdmianaSlowaW(ownW, c.number), letters[c.form]);
  }
  EXPECT_EQ(OdmianaSlowa(0, 1), "dzień");
  EXPECT_EQ(OdmianaSlowa(7, 3), "lata");
  EXPECT_EQ(OdmianaSlowa(9, 25), "oczekujących sprzedaży");
  EXPECT_EQ(OdmianaSlowa(11, 2), "zawieszone");
  EXPECT_EQ(OdmianaSlowa(12, 1), "błąd");
  EXPECT_EQ(OdmianaSlowa(-1, 1), "błąd");
  EXPECT_EQ(OdmianaSlowaW(8, 5), L"miesi\u0119cy");
  EXPECT_EQ(OdmianaSlowaW(12, 5), L"b\u0142\u0105d");
  EXPECT_EQ(OdmianaSlowa(ODMIANA_SLOWA{nullptr, nullptr, nullptr}, 3), "");
}

TEST(PolishWords, MonthAndQuarterNames) {
  EXPECT_EQ(NazwaMiesiaca(1), "Styczeń");
  EXPECT_EQ(NazwaMiesiaca(10, 9), "Październik");  // the language changes nothing
  EXPECT_EQ(NazwaMiesiacaKrotka(12, 7), "Gru");
  EXPECT_EQ(NazwaKwartalu(3), "III kwartał");
  EXPECT_EQ(NazwaKwartalu(4), "IV kwartał");
  for (int bad : {0, 13, -1}) {
    EXPECT_EQ(NazwaMiesiaca(bad), "");
    EXPECT_EQ(NazwaMiesiacaKrotka(bad), "");
  }
  EXPECT_EQ(NazwaKwartalu(0), "");
  EXPECT_EQ(NazwaKwartalu(5), "");
}

}  // namespace
