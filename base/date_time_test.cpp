#include "base/date_time.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

#include "tests/seed.h"

namespace varion {
namespace {

TEST(DateTime, KnownSerialsAndTheirParts) {
  // Serials as the OLE automation date counts them; 1900-01-01 is 2 (no 1900 leap-day quirk).
  struct Case {
    double serial;
    int y, mo, d, h, mi, s, dow, doy;
  } cases[] = {
      {0.0, 1899, 12, 30, 0, 0, 0, 7, 364},
      {2.0, 1900, 1, 1, 0, 0, 0, 2, 1},
      {45443.0, 2024, 5, 31, 0, 0, 0, 6, 152},
      {45351.75, 2024, 2, 29, 18, 0, 0, 5, 60},
      {-1.25, 1899, 12, 29, 6, 0, 0, 6, 363},
      {-0.5, 1899, 12, 30, 12, 0, 0, 7, 364},  // -0.x belongs to the epoch day
      {-657434.0, 100, 1, 1, 0, 0, 0, 6, 1},
      {-657434.5, 100, 1, 1, 12, 0, 0, 6, 1},  // the first day keeps its times below its midnight
      {2958465.0 + 86399.0 / 86400, 9999, 12, 31, 23, 59, 59, 6, 365},
      {36526.999999, 2000, 1, 2, 0, 0, 0, 1, 2},  // rounds to the next midnight
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.serial);
    DateTime t(c.serial);
    DateParts p;
    ASSERT_TRUE(t.GetParts(p));
    EXPECT_EQ(p.year, c.y);
    EXPECT_EQ(p.month, c.mo);
    EXPECT_EQ(p.day, c.d);
    EXPECT_EQ(p.hour, c.h);
    EXPECT_EQ(p.minute, c.mi);
    EXPECT_EQ(p.second, c.s);
    EXPECT_EQ(p.dayOfWeek, c.dow);
    EXPECT_EQ(p.dayOfYear, c.doy);
    if (c.serial != -0.5 && c.serial != 36526.999999) {
      DateTime back(c.y, c.mo, c.d, c.h, c.mi, c.s);
      EXPECT_NEAR(back.Value(), c.serial, 1e-9);
    }
  }
}

TEST(DateTime, OutOfRangeComponentsAndSerialsAreInvalid) {
  struct Case {
    int y, mo, d, h, mi, s;
  } cases[] = {
      {99, 12, 31, 0, 0, 0}, {10000, 1, 1, 0, 0, 0}, {2023, 2, 29, 0, 0, 0}, {2024, 0, 1, 0, 0, 0},
      {2024, 13, 1, 0, 0, 0}, {2024, 4, 31, 0, 0, 0}, {2024, 1, 0, 0, 0, 0}, {2024, 1, 1, 24, 0, 0},
      {2024, 1, 1, 0, 60, 0}, {2024, 1, 1, 0, 0, 60}, {2024, 1, 1, -1, 0, 0}, {1900, 2, 29, 0, 0, 0},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(::testing::Message() << c.y << "-" << c.mo << "-" << c.d);
    EXPECT_EQ(DateTime(c.y, c.mo, c.d, c.h, c.mi, c.s).GetStatus(), ValueStatus::Invalid);
  }
  EXPECT_TRUE(DateTime(2000, 2, 29).IsValid());
  for (double bad : {-657435.0, 2958466.0, std::numeric_limits<double>::quiet_NaN(),
                     std::numeric_limits<double>::infinity()})
    EXPECT_FALSE(DateTime(bad).IsValid());
  EXPECT_EQ(DateTime::Invalid().GetYear(), -1);
  EXPECT_EQ(DateTime::Null().Format("%Y"), "");
}

TEST(DateTime, AddMonthsClampsToMonthEndAndKeepsTheTime) {
  struct Case {
    DateTime from;
    int months;
    DateTime to;
  } cases[] = {
      {DateTime(2024, 1, 31, 10, 30, 0), 1, DateTime(2024, 2, 29, 10, 30, 0)},
      {DateTime(2023, 1, 31), 1, DateTime(2023, 2, 28)},
      {DateTime(2024, 3, 31), -1, DateTime(2024, 2, 29)},
      {DateTime(2024, 12, 15), 1, DateTime(2025, 1, 15)},
      {DateTime(2024, 1, 15), -13, DateTime(2022, 12, 15)},
      {DateTime(2024, 2, 29), 12, DateTime(2025, 2, 28)},
      {DateTime(9999, 12, 1), 1, DateTime::Invalid()},
      {DateTime(100, 1, 1), -1, DateTime::Invalid()},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.from.Format("%Y-%m-%d") + " + " + std::to_string(c.months));
    DateTime r = c.from.AddMonths(c.months);
    if (c.to.IsValid()) {
      EXPECT_TRUE(r == c.to) << r.Format("%Y-%m-%d %H:%M:%S");
    } else {
      EXPECT_FALSE(r.IsValid());
    }
  }
}

TEST(DateTime, AddDaysCrossesTheEpochWithTheOleRule) {
  DateTime t = DateTime(1899, 12, 30, 6, 0, 0).AddDays(-1);
  EXPECT_DOUBLE_EQ(t.Value(), -1.25);
  EXPECT_TRUE(DateTime(-1.25).AddDays(1) == DateTime(0.25));
  EXPECT_TRUE(DateTime(2024, 2, 28, 23, 0, 0).AddSeconds(3600) == DateTime(2024, 2, 29));
  EXPECT_FALSE(DateTime(9999, 12, 31).AddDays(1).IsValid());
}

TEST(DateTime, EqualityWithinHalfASecondNullAndInvalid) {
  const DateTime a(45443.5);
  EXPECT_TRUE(a == DateTime(45443.5 + 5.7e-6));
  EXPECT_FALSE(a == DateTime(45443.5 + 5.8e-6));
  EXPECT_TRUE(DateTime(-1.0 - 5.0e-6) == DateTime(-1.0));  // 1899-12-29 00:00:00.4
  EXPECT_TRUE(DateTime::Null() == DateTime::Null());
  EXPECT_FALSE(DateTime::Null() == a);
  EXPECT_FALSE(DateTime::Invalid() == DateTime::Invalid());
  EXPECT_FALSE(DateTime(-1.75) < DateTime(-1.25));  // same day: 18:00 is after 06:00
  EXPECT_TRUE(DateTime(-1.25) < DateTime(-1.75));
  EXPECT_TRUE(DateTime(-1.75) < DateTime(-0.5));
}

TEST(DateTime, FormatAndParseIso) {
  DateTime t(2024, 5, 7, 8, 9, 10);
  EXPECT_EQ(t.Format("%Y-%m-%d %H:%M:%S %j %y %% %Q"), "2024-05-07 08:09:10 128 24 % %Q");
  EXPECT_EQ(DateTime(100, 1, 1).Format("%Y"), "0100");
  struct Case {
    const char* text;
    bool valid;
    DateTime expected;
  } cases[] = {
      {"2024-05-07", true, DateTime(2024, 5, 7)},
      {"20240507", true, DateTime(2024, 5, 7)},
      {"2024-05-07 08:09", true, DateTime(2024, 5, 7, 8, 9, 0)},
      {"2024-05-07T08:09:10", true, DateTime(2024, 5, 7, 8, 9, 10)},
      {"2024-05-07 23:59:59.999", true, DateTime(2024, 5, 8)},
      {"2024-05-07 08:09:10.4", true, DateTime(2024, 5, 7, 8, 9, 10)},
      {"2024-02-30", false, {}}, {"2024-5-7", false, {}}, {"2024-05-07 8:09", false, {}},
      {"2024-05-07 08:09:10.", false, {}}, {"2024-05-07x", false, {}}, {"", false, {}},
      {"0099-12-31", false, {}}, {"2024-05-07 24:00", false, {}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.text);
    DateTime d = DateTime::ParseIso(c.text);
    EXPECT_EQ(d.IsValid(), c.valid);
    if (c.valid) {
      EXPECT_TRUE(d == c.expected) << d.Format("%Y-%m-%d %H:%M:%S");
    }
  }
}

TEST(DateTime, RandomSerialsSurviveThePartsRoundTrip) {
  varion::testing::SeededRng rng;
  std::uniform_int_distribution<long long> days(-657434, 2958465);
  std::uniform_int_distribution<int> secs(0, 86399);
  for (int i = 0; i < 20000; ++i) {
    long long d = days(rng);
    int s = secs(rng);
    double serial = d >= 0 ? d + s / 86400.0 : d - s / 86400.0;
    DateTime t(serial);
    DateParts p;
    ASSERT_TRUE(t.GetParts(p)) << serial;
    DateTime back(p.year, p.month, p.day, p.hour, p.minute, p.second);
    ASSERT_TRUE(back == t) << serial;
    ASSERT_EQ(DateTime::ParseIso(t.Format("%Y-%m-%d %H:%M:%S")) == t, true) << serial;
  }
}

}  // namespace
}  // namespace varion
