#include "framework/flex_layout.h"

#include <gtest/gtest.h>

namespace {

using varion::FlexRect;

TEST(FlexLayout, FactorsMoveEdgesByTheirShareOfTheGrowth) {
  const FlexRect base{10, 20, 110, 40};
  struct Case {
    double l, r, t, b;
    int newW, newH;
    FlexRect expected;
  } cases[] = {
      {0, 0, 0, 0, 500, 400, base},                       // stays
      {0, 1, 0, 0, 500, 400, {10, 20, 210, 40}},          // stretches right with the width
      {1, 1, 0, 0, 500, 400, {110, 20, 210, 40}},         // moves with the right edge
      {0, 0, 1, 1, 500, 400, {10, 120, 110, 140}},        // moves down
      {0, 0, 0, 1, 500, 400, {10, 20, 110, 140}},         // grows downwards
      {0.5, 0.5, 0.5, 0.5, 501, 301, {61, 21, 161, 41}},  // 50.5 and 0.5 round away from zero
      {0.5, 1, 0, 0, 403, 300, {12, 20, 113, 40}},        // 1.5 rounds to 2
      {0, 1, 0, 1, 300, 250, base},                       // smaller than the base: no shrinking
      {0, 1, 0, 1, 200, 500, {10, 20, 110, 240}},         // narrower but taller: height only
      {0.33, 0.66, 0, 0, 700, 300, {109, 20, 308, 40}},   // 99 and 198
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(::testing::Message() << c.l << "," << c.r << "," << c.t << "," << c.b << " -> " << c.newW << "x"
                                      << c.newH);
    CVelFlexConstraint k{1, {c.l, c.r}, {c.t, c.b}, base};
    EXPECT_EQ(CVelFlexConstraintList::Position(k, base, 400, 300, c.newW, c.newH), c.expected);
  }
}

TEST(FlexLayout, AddIfNotPresentKeepsTheFirstAndReplaceOverwrites) {
  CVelFlexConstraintList list;
  EXPECT_TRUE(list.AddIfNotPresent(5, 0, 1, 0, 0));
  EXPECT_FALSE(list.AddIfNotPresent(5, 1, 1, 1, 1));
  ASSERT_NE(list.Find(5), nullptr);
  EXPECT_EQ(list.Find(5)->horizontal, CVelFlexHorizontalConstraint(0, 1));
  EXPECT_FALSE(list.Find(5)->base);

  EXPECT_TRUE(list.SetBaseRect(5, {1, 2, 3, 4}));
  EXPECT_FALSE(list.SetBaseRect(6, {1, 2, 3, 4}));
  list.Replace(5, {1, 1}, {0, 1});
  EXPECT_EQ(list.Find(5)->horizontal, CVelFlexHorizontalConstraint(1, 1));
  EXPECT_EQ(list.Find(5)->vertical, CVelFlexVerticalConstraint(0, 1));
  ASSERT_TRUE(list.Find(5)->base);
  EXPECT_EQ(*list.Find(5)->base, (FlexRect{1, 2, 3, 4}));
  list.Replace(5, {0, 0}, {0, 0}, false);
  EXPECT_FALSE(list.Find(5)->base);

  list.Replace(8, {0, 1}, {0, 0});  // a control without a constraint gets one
  EXPECT_EQ(list.Items().size(), 2u);
  EXPECT_TRUE(list.Remove(5));
  EXPECT_FALSE(list.Remove(5));
  EXPECT_EQ(list.Items().size(), 1u);
}

}  // namespace
