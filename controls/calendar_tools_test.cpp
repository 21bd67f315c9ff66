#include "controls/calendar_tools.h"

#include <gtest/gtest.h>

namespace {

// ISO week by its definition: the week belongs to the year of its Thursday.
int ReferenceIsoWeek(const COleDateTime& date) {
  int isoDay = date.GetIsoDayOfWeek();  // 1 Monday .. 7 Sunday
  COleDateTime thursday = date.AddDays(4 - isoDay);
  return (thursday.GetDayOfYear() - 1) / 7 + 1;
}

TEST(CalendarTools, IsoWeekNumbers) {
  struct Case {
    int y, m, d, week;
  } cases[] = {{2024, 12, 31, 1}, {2024, 12, 29, 52}, {2021, 1, 3, 53}, {2021, 1, 4, 1}, {2026, 12, 31, 53},
               {2027, 1, 1, 53},   {2027, 1, 4, 1},    {2024, 1, 1, 1},  {2000, 1, 1, 52}};
  for (const Case& c : cases) {
    SCOPED_TRACE(std::to_string(c.y) + "-" + std::to_string(c.m) + "-" + std::to_string(c.d));
    EXPECT_EQ(CalendarTools::GetWeekOfYear(COleDateTime(c.y, c.m, c.d, 23, 0, 0)), c.week);
  }
  // Every day of four centuries against the definition.
  for (COleDateTime d(1900, 1, 1); d < COleDateTime(2300, 1, 1); d = d.AddDays(1)) {
    ASSERT_EQ(CalendarTools::GetWeekOfYear(d), ReferenceIsoWeek(d)) << d.Format("%Y-%m-%d");
  }
  EXPECT_EQ(CalendarTools::GetWeekOfYear(COleDateTime::Null()), 0);
  EXPECT_EQ(CalendarTools::GetWeekOfYear(COleDateTime::Invalid()), 0);
}

TEST(CalendarTools, WeekdayFlags) {
  const int expected[] = {1, 64, 1, 2, 4, 8, 16, 32, 1};  // numbers 0..8
  for (int n = 0; n <= 8; ++n) {
    SCOPED_TRACE(n);
    EXPECT_EQ(CalendarTools::WeekdayFromDayNumber(n), expected[n]);
  }
  EXPECT_EQ(CalendarTools::WeekdayFromDayNumber(-7), 1);
}

TEST(CalendarTools, MonthDescriptions) {
  EXPECT_EQ(CalendarTools::GetMonthDescr(9, true), L"wrze\u015Bnia");
  EXPECT_EQ(CalendarTools::GetMonthDescr(9, false), L"wrzesie\u0144");
  EXPECT_EQ(CalendarTools::GetMonthDescr(10, true), L"pa\u017Adziernika");
  EXPECT_EQ(CalendarTools::GetMonthDescr(1, false), L"stycze\u0144");
  EXPECT_EQ(CalendarTools::GetMonthDescr(0, true), L"");
  EXPECT_EQ(CalendarTools::GetMonthDescr(13, false), L"");
}

TEST(CalendarTools, ParseColor) {
  struct Case {
    const char* text;
    std::uint32_t color;
  } cases[] = {
      {"#FF8000", 0x000080FF},      {"#ff8000", 0x000080FF},   {" 255, 128 ,0 ", 0x000080FF},
      {"RGB(1,2,3)", 0x00030201},   {"rgb( 0 , 0 , 255 )", 0x00FF0000},
      {"#FF800", CalendarTools::kInvalidColor},  {"#GG0000", CalendarTools::kInvalidColor},
      {"256,0,0", CalendarTools::kInvalidColor}, {"1,2", CalendarTools::kInvalidColor},
      {"1,2,3,4", CalendarTools::kInvalidColor}, {"RGB(1,2,3", CalendarTools::kInvalidColor},
      {"0001,2,3", CalendarTools::kInvalidColor}, {"", CalendarTools::kInvalidColor},
      {nullptr, CalendarTools::kInvalidColor},   {"\xE9,2,3", CalendarTools::kInvalidColor},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.text ? c.text : "(null)");
    EXPECT_EQ(CalendarTools::ParseColor(c.text), c.color);
  }
}

TEST(CalendarTools, BreakString) {
  struct Case {
    const char* text;
    int width;
    std::vector<std::string> parts;
  } cases[] = {
      {"Spotkanie z klientem", 10, {"Spotkanie", "z klientem"}},
      {"Spotkanie z klientem", 9, {"Spotkanie", "z", "klientem"}},
      {"Konstantynopolitańczykowianeczka", 10, {"Konstantyn", "opolitańcz", "ykowianecz", "ka"}},
      {"  ab   cd  ", 2, {"ab", "cd"}},
      {"ab cd", 5, {"ab cd"}},
      {"abc", 0, {"abc"}},
      {"", 5, {}},
      {nullptr, 5, {}},
      {"   ", 2, {}},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.text ? c.text : "(null)");
    std::vector<std::string> parts{"stale"};
    EXPECT_EQ(CalendarTools::BreakString(c.text, c.width, parts), static_cast<int>(c.parts.size()));
    EXPECT_EQ(parts, c.parts);
  }
}

}  // namespace
