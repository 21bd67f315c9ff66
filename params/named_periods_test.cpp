#include "params/named_periods.h"

#include <gtest/gtest.h>

namespace {

using varion::DateTime;

TEST(NamedPeriod, PolishCalendarRulesAcrossPeriodEnds) {
  struct Case {
    DateTime now;
    int code;
    const char* range;  // "from AND to", or "" when the code names no period
  } cases[] = {
      // A leap day, a Thursday.
      {DateTime(2024, 2, 29, 13, 30), 11, "2024-02-29 AND 2024-02-29"},
      {DateTime(2024, 2, 29), 12, "2024-02-26 AND 2024-03-03"},
      {DateTime(2024, 2, 29), 13, "2024-02-01 AND 2024-02-29"},
      {DateTime(2024, 2, 29), 14, "2024-01-01 AND 2024-03-31"},
      {DateTime(2024, 2, 29), 15, "2024-01-01 AND 2024-12-31"},
      {DateTime(2024, 2, 29), 16, "2024-02-23 AND 2024-02-29"},
      {DateTime(2024, 2, 29), 17, "2024-01-31 AND 2024-02-29"},
      {DateTime(2024, 2, 29), 19, "2024-01-01 AND 2024-01-31"},
      // The day after it: the previous month is the leap February.
      {DateTime(2024, 3, 1), 19, "2024-02-01 AND 2024-02-29"},
      {DateTime(2024, 3, 1), 16, "2024-02-24 AND 2024-03-01"},
      {DateTime(2024, 3, 1), 17, "2024-02-01 AND 2024-03-01"},
      {DateTime(2023, 3, 31), 19, "2023-02-01 AND 2023-02-28"},
      // New Year's Day, a Wednesday: the week and the last days reach into the old year.
      {DateTime(2025, 1, 1), 12, "2024-12-30 AND 2025-01-05"},
      {DateTime(2025, 1, 1), 16, "2024-12-26 AND 2025-01-01"},
      {DateTime(2025, 1, 1), 19, "2024-12-01 AND 2024-12-31"},
      {DateTime(2025, 1, 1), 14, "2025-01-01 AND 2025-03-31"},
      {DateTime(2024, 12, 31, 23, 59, 59), 14, "2024-10-01 AND 2024-12-31"},
      {DateTime(2024, 12, 31, 23, 59, 59), 11, "2024-12-31 AND 2024-12-31"},
      // A Sunday closes its week; the Monday after starts the next one and a quarter.
      {DateTime(2024, 6, 30, 23, 0), 12, "2024-06-24 AND 2024-06-30"},
      {DateTime(2024, 7, 1), 12, "2024-07-01 AND 2024-07-07"},
      {DateTime(2024, 7, 1), 14, "2024-07-01 AND 2024-09-30"},
      {DateTime(2024, 7, 1), 18, ""},
      {DateTime(2024, 7, 1), 10, ""},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.now.Format("%Y-%m-%d %H:%M code ") + std::to_string(c.code));
    DateTools::FixedClock clock(c.now);
    DateTools::Period p;
    const bool named = varion::NamedPeriod(c.code, clock, p);
    EXPECT_EQ(named, *c.range != '\0');
    if (!named) continue;
    EXPECT_EQ(p.GetStart().Format("%Y-%m-%d AND ") + p.GetEnd().Format("%Y-%m-%d"), c.range);
    EXPECT_FALSE(p.GetStart().HasTimeOfDay() || p.GetEnd().HasTimeOfDay());
    EXPECT_EQ(GetDokOkresFormatBetween(c.code, {}, {}, clock), c.range);
  }
}

TEST(NamedPeriod, RangeTextOfGivenDates) {
  DateTools::FixedClock clock(DateTime(2024, 7, 1));
  EXPECT_EQ(GetDokOkresFormatBetween(0x1000, DateTime(2024, 5, 1), DateTime(2024, 5, 31, 10, 0), clock),
            "2024-05-01 AND 2024-05-31");
  EXPECT_EQ(GetDokOkresFormatBetween(18, varion::Variant::MakeNull(), "2024-05-31", clock),
            "Invalid DateTime AND Invalid DateTime");
}

}  // namespace
