#include "base/time_value.h"

#include <gtest/gtest.h>

namespace varion {
namespace {

TEST(TimeValue, SecondsSinceTheEpochBothWays) {
  struct Case {
    DateTime date;
    std::int64_t seconds;
  } cases[] = {
      {DateTime(1970, 1, 1), 0},
      {DateTime(2024, 2, 29, 12, 0, 0), 1709208000},
      {DateTime(1969, 12, 31, 23, 59, 59), -1},
      {DateTime(1899, 12, 29, 6, 0, 0), -2209226400},  // before the OLE epoch: the fraction still counts forwards
      {DateTime(2038, 1, 19, 3, 14, 8), 2147483648LL},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.seconds);
    EXPECT_EQ(TimeValue::FromDateTime(c.date).GetTime(), c.seconds);
    EXPECT_EQ(TimeValue(c.seconds).ToDateTime(), c.date);
  }
  EXPECT_EQ(TimeValue::FromDateTime(DateTime::Null()), TimeValue());
  EXPECT_EQ(TimeValue::FromDateTime(DateTime::Invalid()), TimeValue());
}

}  // namespace
}  // namespace varion
