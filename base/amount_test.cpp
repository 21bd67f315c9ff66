#include "base/amount.h"

#include <gtest/gtest.h>

#include <limits>

namespace varion {
namespace {

constexpr std::int64_t kMax = std::numeric_limits<std::int64_t>::max();
constexpr std::int64_t kMin = std::numeric_limits<std::int64_t>::min();

TEST(VelRound64C, HalvesGoAwayFromZeroAndOddPrecisionsLeaveTheValue) {
  struct Case {
    std::int64_t in;
    int precision;
    std::int64_t out;
  } cases[] = {
      {12345, 2, 12300},    {12350, 2, 12400},     {-12350, 2, -12400},  {12349, 2, 12300},
      {15000, 0, 20000},    {-15000, 0, -20000},   {14999, 0, 10000},    {5, 3, 10},
      {4, 3, 0},            {-5, 3, -10},          {12345, 1, 12000},    {125000000, -3, 130000000},
      {124999999, -3, 120000000}, {55000, -1, 100000}, {12345, 4, 12345}, {12345, -4, 12345},
      {12345, 7, 12345},    {kMax, 2, kMax},       {kMax - 2, 3, kMax - 2},  // the sum overflows
      {kMax - 10, 3, kMax - 7},
      {kMin, 2, kMin},      {0, 2, 0},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(::testing::Message() << c.in << " p=" << c.precision);
    EXPECT_EQ(VelRound64C(c.in, c.precision), c.out);
  }
  EXPECT_TRUE(VelRound64C(Amount::Null(), 2).IsNull());
}

TEST(Amount, ArithmeticReportsOverflowInsteadOfWrapping) {
  const Amount big = Amount::FromRaw(kMax), one = Amount::FromRaw(1);
  EXPECT_FALSE((big + one).IsValid());
  EXPECT_FALSE((Amount::FromRaw(kMin) - one).IsValid());
  EXPECT_FALSE((-Amount::FromRaw(kMin)).IsValid());
  EXPECT_FALSE((big * 2).IsValid());
  EXPECT_FALSE((one / 0).IsValid());
  EXPECT_FALSE((Amount::FromRaw(kMin) / -1).IsValid());
  EXPECT_EQ((Amount::FromRaw(25) / 10).Raw(), 3);    // 2.5 rounds away from zero
  EXPECT_EQ((Amount::FromRaw(-25) / 10).Raw(), -3);
  EXPECT_EQ((Amount::FromRaw(24) / -10).Raw(), -2);
  EXPECT_EQ((Amount::FromUnits(12, 5000) + Amount::FromUnits(-2)).Raw(), 105000);
  EXPECT_TRUE((Amount::Null() + one).IsNull());
  EXPECT_FALSE((Amount::Invalid() + Amount::Null()).IsValid());
  EXPECT_FALSE(Amount::FromUnits(kMax / 1000).IsValid());
}

TEST(Amount, FromDoubleRoundsToTenThousandthsAndRefusesWhatDoesNotFit) {
  EXPECT_EQ(Amount::FromDouble(0.1).Raw(), 1000);
  EXPECT_EQ(Amount::FromDouble(-1.00005).Raw(), -10001);
  EXPECT_FALSE(Amount::FromDouble(1e15).IsValid());
  EXPECT_FALSE(Amount::FromDouble(std::numeric_limits<double>::quiet_NaN()).IsValid());
  EXPECT_TRUE(Amount::FromDouble(9.2e14).IsValid());
}

const NumberFormat kPolish{",", "\xA0", "-", 3};
const NumberFormat kEnglish{".", ",", "-", 3};
const NumberFormat kSwiss{".", "'", "-", 3};
const NumberFormat kPlain{",", "", "-", 0};
const NumberFormat kTwoCharDecimal{"<>", ".", "~", 3};

TEST(Amount, FormatGroupsRoundsAndSigns) {
  struct Case {
    std::int64_t raw;
    const NumberFormat* f;
    int decimals;
    std::string out;
  } cases[] = {
      {12345678900, &kPolish, 2, "1\xA0" "234\xA0" "567,89"},
      {12345678950, &kEnglish, 2, "1,234,567.90"},  // 0.895 -> 0.90
      {-9999, &kPolish, 2, "-1,00"},
      {-49, &kPolish, 2, "0,00"},  // rounds to zero: no sign
      {1000000, &kSwiss, 0, "100"},
      {10000000000, &kSwiss, 4, "1'000'000.0000"},
      {kMin, &kPlain, 4, "-922337203685477,5808"},
      {kMax, &kEnglish, 0, "922,337,203,685,478"},
      {5000, &kTwoCharDecimal, 1, "0<>5"},
      {-12345000, &kTwoCharDecimal, 2, "~1.234<>50"},
      {123, &kPolish, 9, "0,0123"},  // at most four decimals
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.out);
    EXPECT_EQ(Amount::FromRaw(c.raw).Format(*c.f, c.decimals), c.out);
  }
  EXPECT_EQ(Amount::Null().Format(kPolish, 2), "");
}

TEST(Amount, ParseAcceptsLocaleFormsAndRefusesTheRest) {
  struct Case {
    std::string text;
    const NumberFormat* f;
    bool valid;
    std::int64_t raw;
  } cases[] = {
      {"1\xA0" "234,56", &kPolish, true, 12345600},
      {" 1 234,56 ", &kPolish, true, 12345600},
      {"-0,5", &kPolish, true, -5000},
      {"12.5", &kPolish, true, 125000},  // "." is taken as decimal where it is no group mark
      {"1,234.5", &kEnglish, true, 12345000},
      {"1.234,5", &kEnglish, false, 0},
      {"0,00005", &kPolish, true, 1},  // fifth decimal rounds half away from zero
      {"-0,00005", &kPolish, true, -1},
      {"0,00004999", &kPolish, true, 0},
      {"922337203685477,5807", &kPlain, true, kMax},
      {"922337203685477,5808", &kPlain, false, 0},
      {"-922337203685477,5808", &kPlain, true, kMin},
      {"99999999999999999999", &kPlain, false, 0},
      {"", &kPolish, false, 0},
      {"-", &kPolish, false, 0},
      {"12a", &kPolish, false, 0},
      {"1,2,3", &kPolish, false, 0},
      {" 1", &kPolish, true, 10000},
      {"1 ", &kPolish, true, 10000},
      {"1  2", &kPolish, false, 0},
      {"~3<>25", &kTwoCharDecimal, true, -32500},
      {"1.000<>5", &kTwoCharDecimal, true, 10005000},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.text);
    Amount a = Amount::Parse(c.text, *c.f);
    EXPECT_EQ(a.IsValid(), c.valid);
    if (c.valid) {
      EXPECT_EQ(a.Raw(), c.raw);
    }
  }
}

TEST(Amount, FormatThenParseIsTheIdentityAtEveryPrecision) {
  const NumberFormat* formats[] = {&kPolish, &kEnglish, &kSwiss, &kPlain, &kTwoCharDecimal};
  const std::int64_t values[] = {0, 1, -1, 9999, 10000, -123456789, 987654321012345, kMax, kMin};
  for (const NumberFormat* f : formats)
    for (std::int64_t v : values) {
      SCOPED_TRACE(v);
      Amount a = Amount::Parse(Amount::FromRaw(v).Format(*f, 4), *f);
      ASSERT_TRUE(a.IsValid());
      EXPECT_EQ(a.Raw(), v);
    }
}

}  // namespace
}  // namespace varion
