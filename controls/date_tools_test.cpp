#include "controls/date_tools.h"

#include <gtest/gtest.h>

namespace {

using DateTools::Period;

COleDateTime D(int y, int m, int d, int h = 0, int mi = 0, int s = 0) { return COleDateTime(y, m, d, h, mi, s); }

TEST(Period, Relations) {
  const Period jan(D(2024, 1, 1), D(2024, 1, 31));
  const Period feb(D(2024, 1, 31), D(2024, 2, 29));  // touches January at one instant
  const Period mar(D(2024, 3, 1), D(2024, 3, 31));
  const COleDateTime almost = D(2024, 1, 31).AddSeconds(-1);
  struct Case {
    const char* what;
    bool got, expected;
  } cases[] = {
      {"jan < feb", jan < feb, true},
      {"feb < jan", feb < jan, false},
      {"same start, shorter end first", Period(D(2024, 1, 1), D(2024, 1, 5)) < jan, true},
      {"equal is not less", jan < Period(D(2024, 1, 1), D(2024, 1, 31)), false},
      {"invalid start is never less", Period(COleDateTime::Invalid(), D(2024, 1, 1)) < jan, false},
      {"contains start", jan.Contains(D(2024, 1, 1)), true},
      {"contains end", jan.Contains(D(2024, 1, 31)), true},
      {"contains within half a second", jan.Contains(D(2024, 1, 31).AddDays(0.4 / 86400)), true},
      {"not after end", jan.Contains(D(2024, 1, 31, 0, 0, 1)), false},
      {"invalid date not contained", jan.Contains(COleDateTime::Invalid()), false},
      {"null date not contained", jan.Contains(COleDateTime::Null()), false},
      {"touching overlaps", jan.Overlaps(feb) && feb.Overlaps(jan), true},
      {"touching finishes before", jan.FinishesBefore(feb), true},
      {"touching starts after", feb.StartsAfter(jan), true},
      {"apart: no overlap", jan.Overlaps(mar), false},
      {"apart: finishes before", jan.FinishesBefore(mar), true},
      {"not finishing before an earlier one", mar.FinishesBefore(jan), false},
      {"one second short does not touch", Period(D(2024, 1, 1), almost).Overlaps(feb), false},
      {"default is empty", Period().IsEmpty(), true},
      {"january is not empty", jan.IsEmpty(), false},
      {"january is valid", jan.IsValid(), true},
      {"one instant is not valid", Period(D(2024, 1, 1), D(2024, 1, 1)).IsValid(), false},
      {"reversed is not valid", Period(D(2024, 2, 1), D(2024, 1, 1)).IsValid(), false},
      {"before 1900 is not valid", Period(D(1899, 12, 1), D(2024, 1, 1)).IsValid(), false},
      {"null end is not valid", Period(D(2024, 1, 1), COleDateTime::Null()).IsValid(), false},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    EXPECT_EQ(c.got, c.expected);
  }
}

TEST(Period, LengthAndNextPeriod) {
  struct Case {
    Period period;
    int length;
    Period next;
  } cases[] = {
      {Period(D(2024, 1, 1), D(2024, 1, 31)), 31, Period(D(2024, 2, 1), D(2024, 2, 29))},
      {Period(D(2023, 1, 1), D(2023, 1, 31)), 31, Period(D(2023, 2, 1), D(2023, 2, 28))},
      {Period(D(2024, 1, 1), D(2024, 3, 31)), 91, Period(D(2024, 4, 1), D(2024, 6, 30))},
      {Period(D(2024, 12, 1), D(2024, 12, 31, 23, 59, 59)), 31, Period(D(2025, 1, 1), D(2025, 1, 31, 23, 59, 59))},
      {Period(D(2024, 1, 1), D(2024, 12, 31)), 366, Period(D(2025, 1, 1), D(2025, 12, 31))},
      {Period(D(2024, 2, 26), D(2024, 3, 3)), 7, Period(D(2024, 3, 4), D(2024, 3, 10))},
      {Period(D(2024, 1, 15), D(2024, 2, 14)), 31, Period(D(2024, 2, 15), D(2024, 3, 16))},
      {Period(D(2024, 5, 5, 8), D(2024, 5, 5, 16)), 1, Period(D(2024, 5, 6, 8), D(2024, 5, 6, 16))},
      {Period(D(2024, 2, 1), D(2024, 1, 1)), 0, Period()},
      {Period(COleDateTime::Null(), D(2024, 1, 1)), 0, Period()},
      {Period(D(9999, 12, 1), D(9999, 12, 31)), 31, Period()},  // nothing follows
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(CVelOleDateTimePeriod(c.period).toString());
    EXPECT_EQ(c.period.Length(), c.length);
    Period next = c.period.NextPeriod();
    EXPECT_TRUE(next == c.next) << CVelOleDateTimePeriod(next).toString();
  }
}

TEST(TimeOnly, PartsParsingAndText) {
  struct Case {
    const char* text;
    bool valid;
    const char* shown;
  } cases[] = {{"8:05", true, "08:05"},     {"08:05:09", true, "08:05"}, {"23:59:59", true, "23:59"},
               {"24:00", false, ""},        {"12:60", false, ""},        {"12:5", false, ""},
               {"123:00", false, ""},       {"12:00:", false, ""},       {"12:00:00:00", false, ""},
               {"", false, ""},             {nullptr, false, ""},        {"ab:cd", false, ""},
               {":30", false, ""}};
  for (const Case& c : cases) {
    SCOPED_TRACE(c.text ? c.text : "(null)");
    DateTools::TimeOnly t = DateTools::TimeOnly::Parse(c.text);
    EXPECT_EQ(t.IsValid(), c.valid);
    EXPECT_EQ(t.ToString(), c.shown);
  }
  DateTools::TimeOnly t(14, 30, 15);
  EXPECT_EQ(t.ToString(true), "14:30:15");
  EXPECT_EQ(t.On(D(2024, 3, 1, 9)), D(2024, 3, 1, 14, 30, 15));
  EXPECT_EQ(DateTools::TimeOnly(D(2024, 3, 1, 9, 15, 0)), DateTools::TimeOnly(9, 15));
  EXPECT_LT(DateTools::TimeOnly(9, 15), t);
  EXPECT_FALSE(DateTools::TimeOnly(COleDateTime::Null()).IsValid());
  EXPECT_FALSE(DateTools::TimeOnly(-1, 0).On(D(2024, 1, 1)).IsValid());
}

TEST(MonthAndQuarter, BoundsSteppingAndNames) {
  DateTools::MonthYear feb(D(2024, 2, 14, 10));
  EXPECT_EQ(feb.FirstDay(), D(2024, 2, 1));
  EXPECT_EQ(feb.LastDay(), D(2024, 2, 29));
  EXPECT_EQ(feb.ToString(), "Luty 2024");
  EXPECT_EQ(feb.Next(11), DateTools::MonthYear(1, 2025));
  EXPECT_EQ(feb.Next(-2), DateTools::MonthYear(12, 2023));
  EXPECT_LT(feb, DateTools::MonthYear(3, 2024));
  EXPECT_LT(DateTools::MonthYear(12, 2023), feb);
  EXPECT_FALSE(DateTools::MonthYear(13, 2024).IsValid());
  EXPECT_EQ(DateTools::MonthYear(0, 2024).ToString(), "");
  EXPECT_FALSE(DateTools::MonthYear(12, 9999).Next().IsValid());
  EXPECT_FALSE(DateTools::MonthYear(COleDateTime::Null()).IsValid());

  DateTools::QuarterYear q(D(2024, 8, 31));
  EXPECT_EQ(q.GetQuarter(), 3);
  EXPECT_EQ(q.ToString(), "III kwartał 2024");
  EXPECT_EQ(q.FirstDay(), D(2024, 7, 1));
  EXPECT_EQ(q.LastDay(), D(2024, 9, 30));
  EXPECT_EQ(q.Next(2), DateTools::QuarterYear(1, 2025));
  EXPECT_EQ(q.Next(-3), DateTools::QuarterYear(4, 2023));
  EXPECT_FALSE(DateTools::QuarterYear(5, 2024).IsValid());
  EXPECT_EQ(DateTools::QuarterYear(5, 2024).ToString(), "");
  EXPECT_FALSE(DateTools::QuarterYear(5, 2024).FirstDay().IsValid());
  EXPECT_TRUE(q.ToPeriod().Contains(D(2024, 9, 30)));
}

TEST(DateOptionalTime, WithAndWithoutTime) {
  DateTools::DateOptionalTime day(D(2024, 3, 31, 17, 45));
  EXPECT_FALSE(day.HasTime());
  EXPECT_EQ(day.ToDateTime(), D(2024, 3, 31));
  EXPECT_EQ(day.LatestInstant(), D(2024, 3, 31, 23, 59, 59));
  EXPECT_EQ(day.ToString(), "2024-03-31");
  DateTools::DateOptionalTime at(D(2024, 3, 31), DateTools::TimeOnly(14, 0));
  EXPECT_EQ(at.ToDateTime(), D(2024, 3, 31, 14));
  EXPECT_EQ(at.LatestInstant(), D(2024, 3, 31, 14));
  EXPECT_EQ(at.ToString(), "2024-03-31 14:00");
  at.ClearTime();
  EXPECT_EQ(at.ToString(), "2024-03-31");
  EXPECT_EQ(DateTools::DateOptionalTime().ToString(), "");
  EXPECT_TRUE(DateTools::DateOptionalTime().ToDateTime().IsNull());
}

TEST(CVelOleDateTime, HelpersAndVariants) {
  CVelOleDateTime d(2024, 2, 10, 8, 30, 0);
  EXPECT_TRUE(d.IsSameDate(D(2024, 2, 10, 23, 59, 59)));
  EXPECT_FALSE(d.IsSameDate(D(2024, 2, 11)));
  EXPECT_FALSE(d.IsSameDate(COleDateTime::Null()));
  EXPECT_EQ(d.GetLastDayOfMonth(), D(2024, 2, 29, 8, 30));
  EXPECT_FALSE(d.IsLastDayOfMonth());
  EXPECT_TRUE(d.GetLastDayOfMonth().IsLastDayOfMonth());

  EXPECT_EQ(d.GetVariant().GetType(), _variant_t::Type::Date);
  EXPECT_TRUE(CVelOleDateTime(COleDateTime::Null()).GetVariant().IsNull());
  EXPECT_TRUE(CVelOleDateTime(COleDateTime::Invalid()).GetVariant().IsNull());

  CVelOleDateTime v;
  EXPECT_TRUE(v.SetVariant(_variant_t(std::string("2024-05-03"))));
  EXPECT_EQ(v, D(2024, 5, 3));
  EXPECT_TRUE(v.SetVariant(d.GetVariant()));
  EXPECT_EQ(v, d);
  EXPECT_FALSE(v.SetVariant(_variant_t(std::string("jutro"))));
  EXPECT_EQ(v, d);  // unchanged after a failed conversion
  EXPECT_TRUE(v.SetVariant(_variant_t(std::string())));
  EXPECT_TRUE(v.IsNull());
  EXPECT_TRUE(v.SetVariant(_variant_t::MakeNull()));
  EXPECT_TRUE(v.IsNull());
}

TEST(CVelOleDateTimePeriod, Text) {
  EXPECT_EQ(CVelOleDateTimePeriod(D(2024, 3, 1), D(2024, 3, 31)).toString(), "01-03-2024 - 31-03-2024");
  EXPECT_EQ(CVelOleDateTimePeriod(D(2024, 3, 1), COleDateTime::Null()).toString(), "od 01-03-2024");
  EXPECT_EQ(CVelOleDateTimePeriod(COleDateTime::Invalid(), D(2024, 3, 31)).toString(), "do 31-03-2024");
  EXPECT_EQ(CVelOleDateTimePeriod(COleDateTime::Null(), COleDateTime::Null()).toString(), "");
}

}  // namespace
