// The message box's buttons and layout: button numbers and identifiers, the click order, and
// a layout that wraps its texts, keeps its buttons apart and stays on the monitor.
#include <gtest/gtest.h>

#include <random>
#include <vector>

#include "dialogs/message_box_layout.h"
#include "dialogs/message_box_test_support.h"
#include "tests/seed.h"

namespace CMB {
namespace {

using M = LayoutMetrics;
using testing::FakeMeasure;

TEST(MessageBoxButtons, IdentifiersIconsAndDefaults) {
  struct Case {
    int id;
    std::optional<int> idc;
  };
  for (const Case& c : {Case{0, 30105}, Case{1, 30106}, Case{2, 30107}, Case{3, std::nullopt}, Case{-1, std::nullopt}}) {
    SCOPED_TRACE(c.id);
    EXPECT_EQ(GetButtonIDC(static_cast<ButtonId>(c.id)), c.idc);
    if (c.idc) {
      EXPECT_EQ(ButtonFromIDC(*c.idc), static_cast<ButtonId>(c.id));
    }
  }
  EXPECT_EQ(ButtonFromIDC(30104), std::nullopt);
  EXPECT_EQ(ButtonFromIDC(30108), std::nullopt);

  EXPECT_EQ(GetIconType(MessageBoxType::None), std::nullopt);
  EXPECT_EQ(GetIconType(MessageBoxType::Warning), 32515);
  EXPECT_EQ(GetIconType(MessageBoxType::Question), 32514);

  const ButtonsSetting defaults = InitButtonsSetting();
  ASSERT_EQ(defaults.size(), 3u);
  EXPECT_EQ(defaults.at(ButtonId::Ok).caption, "&OK");
  EXPECT_EQ(defaults.at(ButtonId::No).caption, "&Nie");
  EXPECT_EQ(defaults.at(ButtonId::Cancel).caption, "&Anuluj");
  EXPECT_TRUE(defaults.at(ButtonId::Ok).isDefault);
  const ButtonSetting help = ButtonSetting::HelpButton();
  EXPECT_EQ(help.caption, "Pomoc");
  EXPECT_TRUE(help.visible && help.helpButton);
}

TEST(MessageBoxButtons, ClickOrderHelpSaveEnd) {
  ButtonsSetting buttons = InitButtonsSetting();
  buttons[ButtonId::No] = ButtonSetting::HelpButton();
  ButtonsSetting cancelSaves = InitButtonsSetting();
  cancelSaves[ButtonId::Cancel].saveData = ShouldSaveData(true);
  ButtonsSetting hiddenOk = InitButtonsSetting();
  hiddenOk[ButtonId::Ok].visible = IsVisible(false);
  ButtonsSetting okOnly{{ButtonId::Ok, InitButtonsSetting()[ButtonId::Ok]}};
  okOnly[ButtonId::Ok].saveData = ShouldSaveData(false);

  struct Case {
    const char* name;
    const ButtonsSetting* buttons;
    ButtonId clicked;
    ClickOutcome expected;
  };
  const Case cases[] = {
      {"ok saves and ends", &buttons, ButtonId::Ok, {false, true, true, ButtonId::Ok}},
      {"help never ends", &buttons, ButtonId::No, {true, false, false, ButtonId::Ok}},
      {"cancel ends without saving", &buttons, ButtonId::Cancel, {false, false, true, ButtonId::Cancel}},
      {"cancel never saves even when set to", &cancelSaves, ButtonId::Cancel, {false, false, true, ButtonId::Cancel}},
      {"hidden button does nothing", &hiddenOk, ButtonId::Ok, {}},
      {"button not in the map does nothing", &okOnly, ButtonId::No, {}},
      {"a button that does not save just ends", &okOnly, ButtonId::Ok, {false, false, true, ButtonId::Ok}},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    EXPECT_EQ(DecideButtonClick(*c.buttons, c.clicked), c.expected);
  }
  EXPECT_EQ(EscapeButton(buttons), ButtonId::Cancel);
  EXPECT_EQ(EscapeButton(okOnly), std::nullopt);
  EXPECT_EQ(GetVisibleButtonsNumber(hiddenOk), 2);
}

LayoutInput Basic() {
  LayoutInput in;
  in.description = "Dokument został zmieniony.";
  in.question = "Czy zapisać zmiany?";
  in.buttons = InitButtonsSetting();
  in.hasIcon = true;
  return in;
}

TEST(MessageBoxLayout, WidthRules) {
  const FakeMeasure m;
  const int textLeft = M::kMargin + M::kIconSize + M::kIconGap;
  const int shortBox = textLeft + M::kMinTextWidth + M::kMargin;
  struct Case {
    const char* name;
    LayoutInput in;
    int width;
  };
  std::vector<Case> cases;
  LayoutInput oneButton = Basic();
  oneButton.buttons.erase(ButtonId::No);
  oneButton.buttons.erase(ButtonId::Cancel);
  cases.push_back({"short texts take the smallest text column", oneButton, shortBox});
  cases.push_back({"three buttons are wider than a short text", Basic(),
                   2 * M::kMargin + 3 * M::kMinButtonWidth + 2 * M::kButtonGap});
  LayoutInput asked = Basic();
  asked.windowWidth = 500;
  cases.push_back({"the asked width is kept", asked, 500});
  LayoutInput longText = Basic();
  longText.description = std::string(300, 'x') + " koniec";
  cases.push_back({"long texts wrap at the preferred width", longText,
                   textLeft + M::kPreferredTextWidth / FakeMeasure::kChar * FakeMeasure::kChar + M::kMargin});
  LayoutInput wideButtons = Basic();
  wideButtons.buttons[ButtonId::Ok].caption = std::string(30, 'W');  // 210 px of caption
  cases.push_back({"wide captions widen every button and the box", wideButtons,
                   2 * M::kMargin + 3 * (210 + M::kButtonPadding) + 2 * M::kButtonGap});
  LayoutInput check = Basic();
  check.dontShowAgain = std::string(60, 'n');
  cases.push_back({"the check box caption stays on one line", check,
                   textLeft + 60 * FakeMeasure::kChar + M::kCheckBoxExtra + M::kMargin});
  LayoutInput small = wideButtons;
  small.maxClient = {300, 400};
  cases.push_back({"never wider than the monitor allows", small, 300});
  LayoutInput noIcon = oneButton;
  noIcon.hasIcon = false;
  cases.push_back({"without an icon the text starts at the margin", noIcon, 2 * M::kMargin + M::kMinTextWidth});
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    EXPECT_EQ(CalculateWindowWidth(c.in, m), c.width);
  }
}

TEST(MessageBoxLayout, ButtonWidthIsAskedAtLeastMinimumAndFitsCaptions) {
  const FakeMeasure m;
  LayoutInput in = Basic();
  EXPECT_EQ(GetButtonWidth(in, m), M::kMinButtonWidth);
  in.buttonWidth = 120;
  EXPECT_EQ(GetButtonWidth(in, m), 120);
  in.buttons[ButtonId::Cancel].caption = "&Zapisz i zamknij wszystko";  // 25 characters shown
  EXPECT_EQ(GetButtonWidth(in, m), 25 * FakeMeasure::kChar + M::kButtonPadding);
  in.buttons[ButtonId::Cancel].visible = IsVisible(false);  // hidden captions do not count
  EXPECT_EQ(GetButtonWidth(in, m), 120);
}

TEST(MessageBoxLayout, TenThousandCharactersWrapAndScrollOnTheMonitor) {
  const FakeMeasure m;
  LayoutInput in = Basic();
  std::string text;
  while (text.size() < 10000) text += "Bardzo długi opis błędu ";
  in.description = text;
  in.url = "https://example.com/pomoc";
  in.dontShowAgain = "Nie pokazuj więcej";
  in.maxClient = {800, 560};
  const MessageBoxLayout l = UpdateCtrlsPos(in, m);
  EXPECT_LE(l.client.cy, 560);
  EXPECT_TRUE(l.infoScrolls);
  EXPECT_FALSE(l.questionScrolls);
  EXPECT_EQ(l.question.Height(), FakeMeasure::kLine);
  EXPECT_EQ(l.info.Height() % FakeMeasure::kLine, 0) << "a scrolled text shows whole lines";
  EXPECT_EQ(l.buttons[2].bottom + M::kMargin, l.client.cy);
}

TEST(MessageBoxLayout, AskedTextHeightsAreKept) {
  const FakeMeasure m;
  LayoutInput in = Basic();
  in.infoTextHeight = 90;
  in.questionTextHeight = 40;
  const MessageBoxLayout l = UpdateCtrlsPos(in, m);
  EXPECT_EQ(l.info.Height(), 90);
  EXPECT_EQ(l.question.Height(), 40);
  EXPECT_EQ(l.question.top, l.info.bottom + M::kGap);
}

// Random boxes on random monitors: whatever the texts and buttons, the box fits, nothing
// overlaps, every visible button is placed and equally wide, and a text either gets its
// measured height or says that it scrolls.
TEST(MessageBoxLayout, PropertyRandomBoxesFitAndNothingOverlaps) {
  varion::testing::SeededRng rng;
  const FakeMeasure m;
  const auto text = [&](int maxWords) {
    std::string s;
    const int words = std::uniform_int_distribution(0, maxWords)(rng);
    for (int i = 0; i < words; ++i) {
      if (!s.empty()) s += rng() % 9 == 0 ? '\n' : ' ';
      s += std::string(std::uniform_int_distribution(1, rng() % 20 == 0 ? 120 : 12)(rng), 'a' + char(rng() % 26));
    }
    return s;
  };
  for (int iteration = 0; iteration < 3000; ++iteration) {
    LayoutInput in;
    in.description = text(rng() % 10 == 0 ? 2000 : 40);
    in.question = text(rng() % 10 == 0 ? 600 : 12);
    in.url = rng() % 2 ? text(3) : "";
    in.dontShowAgain = rng() % 2 ? text(6) : "";
    in.hasIcon = rng() % 2;
    for (int b = 0; b < 3; ++b) {
      if (rng() % 4 == 0) continue;
      ButtonSetting s = rng() % 5 == 0 ? ButtonSetting::HelpButton() : InitButtonsSetting()[static_cast<ButtonId>(b)];
      s.caption = text(3);
      s.visible = IsVisible(rng() % 5 != 0);
      in.buttons[static_cast<ButtonId>(b)] = s;
    }
    in.windowWidth = rng() % 4 == 0 ? std::uniform_int_distribution(100, 1500)(rng) : 0;
    in.buttonWidth = rng() % 4 == 0 ? std::uniform_int_distribution(40, 200)(rng) : 0;
    in.maxClient = {std::uniform_int_distribution(480, 1900)(rng), std::uniform_int_distribution(400, 1000)(rng)};
    SCOPED_TRACE(iteration);

    const MessageBoxLayout l = UpdateCtrlsPos(in, m);
    ASSERT_LE(l.client.cx, in.maxClient.cx);
    ASSERT_LE(l.client.cy, in.maxClient.cy);
    std::vector<LayoutRect> placed;
    for (const LayoutRect* r : {&l.icon, &l.info, &l.question, &l.link, &l.checkBox}) placed.push_back(*r);
    int width = -1;
    for (const auto& [id, s] : in.buttons) {
      const LayoutRect& r = l.buttons[static_cast<int>(id)];
      ASSERT_EQ(!r.IsEmpty(), bool(s.visible));
      if (r.IsEmpty()) continue;
      if (width >= 0) {
        ASSERT_EQ(r.Width(), width);
      }
      width = r.Width();
      placed.push_back(r);
    }
    for (std::size_t i = 0; i < placed.size(); ++i) {
      if (placed[i].IsEmpty()) continue;
      ASSERT_GE(placed[i].left, 0);
      ASSERT_GE(placed[i].top, 0);
      ASSERT_LE(placed[i].right, l.client.cx) << "control " << i;
      ASSERT_LE(placed[i].bottom, l.client.cy) << "control " << i;
      for (std::size_t j = i + 1; j < placed.size(); ++j)
        ASSERT_FALSE(placed[i].Intersects(placed[j])) << "controls " << i << " and " << j;
    }
    const auto checkText = [&](const std::string& s, int asked, const LayoutRect& r, bool scrolls) {
      if (s.empty()) {
        EXPECT_TRUE(r.IsEmpty());
        return;
      }
      const int need = asked > 0 ? asked : m.MeasureWrapped(s, r.Width()).cy;
      EXPECT_EQ(scrolls, r.Height() < need);
      EXPECT_GE(r.Height(), FakeMeasure::kLine);
    };
    checkText(in.description, in.infoTextHeight, l.info, l.infoScrolls);
    checkText(in.question, in.questionTextHeight, l.question, l.questionScrolls);
  }
}

}  // namespace
}  // namespace CMB
