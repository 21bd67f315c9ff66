#include "base/variant.h"

#include <gtest/gtest.h>

namespace varion {
namespace {

TEST(Variant, ConversionsToInt32) {
  struct Case {
    Variant v;
    Status32 status;
    std::int32_t out;
  } cases[] = {
      {Variant(), kOk, 0},
      {Variant(42), kOk, 42},
      {Variant(std::int64_t{1} << 40), kOverflow, 0},
      {Variant(2.5), kOk, 2},   // half to even, as the automation conversion rounds
      {Variant(3.5), kOk, 4},
      {Variant(-2.5), kOk, -2},
      {Variant(" 17 "), kOk, 17},
      {Variant("12,5"), kOk, 12},
      {Variant("-2147483648"), kOk, -2147483647 - 1},
      {Variant("2147483648"), kOverflow, 0},
      {Variant("12abc"), kTypeMismatch, 0},
      {Variant(""), kTypeMismatch, 0},
      {Variant(true), kOk, -1},
      {Variant(Amount::FromRaw(25000)), kOk, 2},
      {Variant(Amount::FromRaw(35000)), kOk, 4},
      {Variant(Amount::Invalid()), kTypeMismatch, 0},
      {Variant::MakeNull(), kTypeMismatch, 0},
      {Variant(Variant::Bytes{1, 2}), kTypeMismatch, 0},
      {Variant(DateTime(2024, 5, 31)), kOk, 45443},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.v.AsText("<no text>"));
    std::int32_t out = -99;
    EXPECT_EQ(c.v.ToInt32(out), c.status);
    if (c.status == kOk) {
      EXPECT_EQ(out, c.out);
    }
  }
}

TEST(Variant, ConversionsToTextAmountAndDate) {
  struct TextCase {
    Variant v;
    Status32 status;
    std::string out;
  } texts[] = {
      {Variant(), kOk, ""},
      {Variant("Łódź"), kOk, "Łódź"},
      {Variant(-7), kOk, "-7"},
      {Variant(0.1), kOk, "0.1"},
      {Variant(Amount::FromRaw(-125000)), kOk, "-12.5"},
      {Variant(Amount::FromRaw(100000)), kOk, "10"},
      {Variant(DateTime(2024, 5, 31)), kOk, "2024-05-31"},
      {Variant(DateTime(2024, 5, 31, 13, 5, 0)), kOk, "2024-05-31 13:05:00"},
      {Variant(DateTime::Invalid()), kTypeMismatch, ""},
      {Variant::MakeNull(), kTypeMismatch, ""},
  };
  for (const auto& c : texts) {
    SCOPED_TRACE(c.out);
    std::string out;
    EXPECT_EQ(c.v.ToText(out), c.status);
    if (c.status == kOk) {
      EXPECT_EQ(out, c.out);
    }
  }

  Amount a;
  EXPECT_EQ(Variant("0.1").ToAmount(a), kOk);
  EXPECT_EQ(a.Raw(), 1000);  // exact decimal, no binary rounding
  EXPECT_EQ(Variant("-1 234,5").ToAmount(a), kOk);  // a blank groups thousands, "," is a decimal point
  EXPECT_EQ(a.Raw(), -12345000);
  EXPECT_EQ(Variant("1,234.5").ToAmount(a), kTypeMismatch);
  EXPECT_EQ(Variant(1e300).ToAmount(a), kOverflow);
  EXPECT_EQ(Variant(std::int64_t{1} << 62).ToAmount(a), kOverflow);

  DateTime d;
  EXPECT_EQ(Variant("2024-02-29 10:00").ToDate(d), kOk);
  EXPECT_TRUE(d == DateTime(2024, 2, 29, 10, 0, 0));
  EXPECT_EQ(Variant("29.02.2024").ToDate(d), kTypeMismatch);
  EXPECT_EQ(Variant(45443.5).ToDate(d), kOk);
  EXPECT_EQ(Variant(1e9).ToDate(d), kOverflow);
  EXPECT_EQ(Variant::MakeNull().ToDate(d), kTypeMismatch);
}

TEST(Variant, TypesAndEquality) {
  EXPECT_EQ(Variant().GetType(), Variant::Type::Empty);
  EXPECT_EQ(Variant::MakeNull().GetType(), Variant::Type::Null);
  EXPECT_TRUE(Variant::MakeNull().IsEmptyOrNull());
  EXPECT_EQ(Variant(static_cast<const char*>(nullptr)).GetType(), Variant::Type::Text);
  EXPECT_TRUE(Variant("5, 6") == Variant(std::string("5, 6")));
  EXPECT_FALSE(Variant(5) == Variant(std::int64_t{5}));  // a type change is a change
  EXPECT_EQ(Variant(12).AsInt32(), 12);
  EXPECT_EQ(Variant("x").AsInt32(-1), -1);
}

}  // namespace
}  // namespace varion
