#include <windows.h>

#include <gtest/gtest.h>

#include "controls/amount_words.h"
#include "controls/date_tokens.h"
#include "controls/locale_info.h"
#include "tests/win_support.h"

namespace {

// The tests run with a Polish user locale: the values come from GetLocaleInfoA.
TEST(LocaleInfoWin, UserLocaleGivesThePolishSeparators) {
  varion::SetLocaleSource(nullptr);
  const CLocaleInfo& info = CLocaleInfo::GetTheLocaleInfo();
  EXPECT_EQ(info.GetCharDec(), ',');
  EXPECT_EQ(info.GetSymDec(), ",");
  EXPECT_EQ(info.GetSymNumSep(), ",");
  EXPECT_EQ(info.GetSymTho(), " ");  // the locale's no-break space, replaced
  EXPECT_EQ(info.GetSymThoGroup(), "3;0");
  EXPECT_EQ(info.GetSymNeg(), "-");
  // Whatever the exact short date format, it cuts into a day, a month and a year field.
  int fields = 0;
  for (const auto& token : BuildDateTokens("", nullptr)) fields += token->IsActive() ? 1 : 0;
  EXPECT_EQ(fields, 3) << info.GetShortDateFormat();
  EXPECT_EQ(info.CurrencyToDispText(varion::Amount::FromUnits(1234567, 8900), 2, "zł", 0), "1 234 567,89 zł");
  EXPECT_EQ(KwotaSlownie(varion::Amount::FromUnits(12, 5000)), "dwanaście  PLN 50/100");
}

// The library's start made GetLocaleInfoA the source: a separator the user changes in the
// regional settings reaches CLocaleInfo when it re-reads, while the Polish defaults would not.
TEST(LocaleInfoWin, StartInstalledTheUserLocaleAsTheSource) {
  char saved[10] = {};
  ASSERT_GT(GetLocaleInfoA(LOCALE_USER_DEFAULT, LOCALE_SMONDECIMALSEP, saved, sizeof saved), 0);
  ASSERT_TRUE(SetLocaleInfoA(LOCALE_USER_DEFAULT, LOCALE_SMONDECIMALSEP, "#"));
  struct Restore {
    const char* value;
    ~Restore() {
      SetLocaleInfoA(LOCALE_USER_DEFAULT, LOCALE_SMONDECIMALSEP, value);
      varion::SetLocaleSource(nullptr);
    }
  } restore{saved};
  varion::SetLocaleSource(nullptr);
  EXPECT_EQ(CLocaleInfo::GetTheLocaleInfo().GetSymDec(), "#");
  EXPECT_EQ(CLocaleInfo::GetTheLocaleInfo().GetCharDec(), '#');
  EXPECT_EQ(varion::UserLocaleValues().monDecimal, "#");
}

TEST(LocaleInfoWin, CurrencyToTextCalcMeasuresInTheDeviceContext) {
  struct ScreenDc {
    HDC dc = GetDC(nullptr);
    ~ScreenDc() { ReleaseDC(nullptr, dc); }
  } screen;
  HDC dc = screen.dc;
  ASSERT_NE(dc, nullptr);
  const CLocaleInfo& info = CLocaleInfo::GetTheLocaleInfo();
  const varion::Amount value = varion::Amount::FromUnits(1234567, 8900);
  std::string full = info.CurrencyToDispText(value, 2, nullptr, 0);
  SIZE size{};
  GetTextExtentPoint32A(dc, full.c_str(), static_cast<int>(full.size()), &size);
  RECT wide{0, 0, size.cx + 10, 20}, narrow{0, 0, size.cx / 2, 20}, tiny{0, 0, 1, 20};
  EXPECT_EQ(info.CurrencyToTextCalc(dc, wide, value, 2, 0), full);
  std::string shorter = info.CurrencyToTextCalc(dc, narrow, value, 2, 0);
  GetTextExtentPoint32A(dc, shorter.c_str(), static_cast<int>(shorter.size()), &size);
  EXPECT_LE(size.cx, narrow.right);
  EXPECT_LT(shorter.size(), full.size());
  EXPECT_EQ(info.CurrencyToTextCalc(dc, tiny, value, 2, 0), "#");
}

}  // namespace
