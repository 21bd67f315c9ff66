#include "framework/window_placement.h"

#include <gtest/gtest.h>

namespace varion {
namespace {

const std::vector<FlexRect> kOneMonitor{{0, 0, 1920, 1040}};
// A second monitor to the left, a little lower.
const std::vector<FlexRect> kTwoMonitors{{0, 0, 1920, 1040}, {-1280, 100, 0, 1060}};

TEST(WindowPlacement, FiveValuesRoundTripAndAMissingOneMeansNone) {
  MemoryProfile profile;
  const StoredPlacement p{true, 640, 480, -20, 35};
  WritePlacement(profile, "Kontrahent", p);
  EXPECT_EQ(profile.GetInt("Kontrahent", "Maximized"), 1);
  EXPECT_EQ(profile.GetInt("Kontrahent", "Left"), -20);
  EXPECT_EQ(ReadPlacement(profile, "Kontrahent"), p);
  EXPECT_FALSE(ReadPlacement(profile, "Inny"));
  MemoryProfile partial;
  partial.WriteInt("S", "Width", 100);
  partial.WriteInt("S", "Height", 100);
  EXPECT_FALSE(ReadPlacement(partial, "S"));
}

TEST(WindowPlacement, RestoredRectAcceptsPullsBackOrFallsBack) {
  struct Case {
    const char* what;
    StoredPlacement stored;
    const std::vector<FlexRect>* monitors;
    std::optional<FlexRect> expected;
  } cases[] = {
      {"wholly on screen", {false, 600, 400, 100, 50}, &kOneMonitor, FlexRect{100, 50, 700, 450}},
      {"sticks out to the right", {false, 600, 400, 1700, 50}, &kOneMonitor, FlexRect{1320, 50, 1920, 450}},
      {"sticks out above", {false, 600, 400, 100, -100}, &kOneMonitor, FlexRect{100, 0, 700, 400}},
      {"on the left monitor", {false, 600, 400, -1000, 300}, &kTwoMonitors, FlexRect{-1000, 300, -400, 700}},
      {"left monitor unplugged", {false, 600, 400, -1000, 300}, &kOneMonitor, std::nullopt},
      {"only a sliver visible", {false, 600, 400, 1900, 50}, &kOneMonitor, std::nullopt},
      {"exactly the least visible part", {false, 600, 400, 1880, 1020}, &kOneMonitor, FlexRect{1320, 640, 1920, 1040}},
      {"parked minimised", {false, 600, 400, -32000, -32000}, &kOneMonitor, std::nullopt},
      {"zero size", {false, 0, 0, 100, 100}, &kOneMonitor, std::nullopt},
      {"negative size", {false, -600, 400, 100, 100}, &kOneMonitor, std::nullopt},
      {"larger than every screen", {false, 5000, 400, 0, 0}, &kOneMonitor, std::nullopt},
      {"wider than one screen but not both", {false, 2500, 400, -300, 200}, &kTwoMonitors, FlexRect{0, 200, 1920, 600}},
      {"no monitors", {false, 600, 400, 0, 0}, nullptr, std::nullopt},
  };
  const std::vector<FlexRect> none;
  for (const auto& c : cases) {
    SCOPED_TRACE(c.what);
    EXPECT_EQ(RestoredRect(c.stored, c.monitors ? *c.monitors : none), c.expected);
  }
}

TEST(WindowPlacement, MinimumTrackingSizeMakesSmallerStoredSizesAbsurd) {
  EXPECT_TRUE(IsValidWindowSize(300, 200, kOneMonitor, 300, 200));
  EXPECT_FALSE(IsValidWindowSize(299, 200, kOneMonitor, 300, 200));
  EXPECT_FALSE(IsValidWindowSize(300, 199, kOneMonitor, 300, 200));
  EXPECT_FALSE(IsValidWindowSize(kMinWindowSize - 1, 100, kOneMonitor));
  EXPECT_TRUE(IsValidWindowSize(1920, 1040, kOneMonitor));
  EXPECT_FALSE(IsValidWindowSize(1921, 1040, kOneMonitor));
}

}  // namespace
}  // namespace varion
