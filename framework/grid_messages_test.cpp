#include "framework/grid_messages.h"

#include <gtest/gtest.h>

namespace varion {
namespace {

using ValidatableGrid::MessageData;

const MessageData kNoPrice{"Brak ceny w pozycji.", "Brak ceny w %d pozycjach.", ValidatableGrid::kIconError, 0, 100};
const MessageData kNoQuantity{"Brak ilości.", "", ValidatableGrid::kIconError, 0, 100};
const MessageData kLowStock{"Niski stan.", "Niski stan w %d pozycjach.", ValidatableGrid::kIconWarning, 1, 100};

TEST(GridMessages, ErrorsGiveTheirRecordTextCountedFromTwoOn) {
  GridMessageCounts counts;
  struct Step {
    std::uint32_t ctrl;
    const MessageData* message;
    std::optional<std::string> recordText;
  } steps[] = {
      {10, &kNoPrice, "Brak ceny w pozycji."},
      {10, &kNoPrice, "Brak ceny w 2 pozycjach."},
      {10, &kNoPrice, "Brak ceny w 3 pozycjach."},
      {11, &kNoPrice, "Brak ceny w pozycji."},  // counted per control
      {10, &kLowStock, std::nullopt},           // a warning never becomes a record
      {10, &kLowStock, std::nullopt},
      {10, &kNoQuantity, "Brak ilości."},
      {10, &kNoQuantity, "Brak ilości."},  // not a counted message
  };
  for (std::size_t i = 0; i < std::size(steps); ++i) {
    SCOPED_TRACE(i);
    EXPECT_EQ(counts.Add(steps[i].ctrl, *steps[i].message), steps[i].recordText);
  }
  EXPECT_EQ(counts.Count(10, kNoPrice), 3u);
  EXPECT_EQ(counts.Count(10, kLowStock), 2u);

  auto warnings = counts.Warnings();
  ASSERT_EQ(warnings.size(), 1u);
  EXPECT_EQ(warnings[0].ctrlId, 10u);
  EXPECT_EQ(warnings[0].count, 2u);
  EXPECT_EQ(counts.Distinct().size(), 4u);

  counts.Remove(10);
  EXPECT_EQ(counts.Count(10, kNoPrice), 0u);
  EXPECT_EQ(counts.Count(11, kNoPrice), 1u);
  EXPECT_TRUE(counts.Warnings().empty());
  EXPECT_EQ(counts.Add(10, kNoPrice), "Brak ceny w pozycji.");
}

TEST(GridMessages, CountedTextReplacesEveryCountMarkOnly) {
  EXPECT_EQ(CountedText("%d z %d", 4), "4 z 4");
  EXPECT_EQ(CountedText("100%", 2), "100%");
  EXPECT_EQ(CountedText("%s %d", 12), "%s 12");
}

}  // namespace
}  // namespace varion
