#include "controls/locale_info.h"

#include <gtest/gtest.h>

#include "tests/locale_guard.h"

namespace {

using varion::Amount;
using varion::LocaleValues;

LocaleValues Swiss() {  // apostrophe groups, "." decimal
  LocaleValues v;
  v.monDecimal = ".";
  v.numDecimal = ".";
  v.monThousands = "'";
  v.monGrouping = "3;0";
  return v;
}

LocaleValues Ungrouped() {  // grouping that starts with "0", two-character decimal separator
  LocaleValues v;
  v.monDecimal = "<>";
  v.monThousands = ".";
  v.monGrouping = "0;0";
  return v;
}

LocaleValues Indian() {  // "3;2;0" groups: still written in threes
  LocaleValues v;
  v.monDecimal = ".";
  v.monThousands = ",";
  v.monGrouping = "3;2;0";
  return v;
}

TEST(CLocaleInfo, ReadsTheSourceWithItsRules) {
  CLocaleInfo polish{LocaleValues{}};
  EXPECT_EQ(polish.GetCharDec(), ',');
  EXPECT_EQ(polish.GetSymTho(), " ");  // the no-break space becomes a space
  EXPECT_EQ(polish.GetSymThoGroup(), "3;0");
  EXPECT_EQ(polish.GetSymNeg(), "-");
  EXPECT_EQ(polish.GetSymNumSep(), ",");

  CLocaleInfo twoChar{Ungrouped()};
  EXPECT_EQ(twoChar.GetCharDec(), ',');  // "," for a separator longer than one character
  EXPECT_EQ(twoChar.GetSymDec(), "<>");

  LocaleValues longOnes;
  longOnes.monThousands = "\xA0\xA0" "abcdefghij";
  longOnes.monDecimal = "";
  CLocaleInfo cut{longOnes};
  EXPECT_EQ(cut.GetSymTho(), "  abcdefg");  // room for ten characters with the terminator
  EXPECT_EQ(cut.GetCharDec(), ',');
}

TEST(CLocaleInfo, ProcessWideObjectFollowsTheSource) {
  {
    varion::testing::LocaleGuard guard(Swiss());
    EXPECT_EQ(CLocaleInfo::GetTheLocaleInfo().GetCharDec(), '.');
    EXPECT_EQ(CLocaleInfo::GetTheLocaleInfo().GetSymTho(), "'");
  }
  EXPECT_EQ(CLocaleInfo::GetTheLocaleInfo().GetCharDec(), ',');
  EXPECT_EQ(CLocaleInfo::GetTheLocaleInfo().GetShortDateFormat(), "dd.MM.yyyy");

  // The platform's user-locale source is what an unpinned object reads, and a pin outranks it.
  varion::SetUserLocaleSource(Indian);
  EXPECT_EQ(CLocaleInfo::GetTheLocaleInfo().GetSymTho(), ",");
  EXPECT_EQ(varion::UserLocaleValues().monGrouping, "3;2;0");
  {
    varion::testing::LocaleGuard guard(Swiss());
    EXPECT_EQ(CLocaleInfo::GetTheLocaleInfo().GetSymTho(), "'");
  }
  EXPECT_EQ(CLocaleInfo::GetTheLocaleInfo().GetSymTho(), ",");
  varion::SetUserLocaleSource(nullptr);
  EXPECT_EQ(CLocaleInfo::GetTheLocaleInfo().GetSymTho(), " ");
}

TEST(CLocaleInfo, CurrencyToText) {
  struct Case {
    std::int64_t raw;
    bool locale, forceMinus;
    const char* polish;
    const char* twoChar;
  } cases[] = {
      {0, false, false, "0.0000", "0.0000"},
      {125000, false, false, "12.5000", "12.5000"},
      {-30000, false, false, "-3.0000", "-3.0000"},
      {1, true, false, "0,0001", "0<>0001"},
      {-99999, true, false, "-9,9999", "-9<>9999"},
      {0, false, true, "-0.0000", "-0.0000"},
      {-5000, false, true, "-0.5000", "-0.5000"},
      {INT64_MAX, false, false, "922337203685477.5807", "922337203685477.5807"},
      {INT64_MIN, true, false, "-922337203685477,5808", "-922337203685477<>5808"},
  };
  CLocaleInfo polish{LocaleValues{}}, twoChar{Ungrouped()};
  for (const Case& c : cases) {
    SCOPED_TRACE(c.polish);
    EXPECT_EQ(polish.CurrencyToText(Amount::FromRaw(c.raw), c.locale, c.forceMinus), c.polish);
    EXPECT_EQ(twoChar.CurrencyToText(Amount::FromRaw(c.raw), c.locale, c.forceMinus), c.twoChar);
  }
  EXPECT_EQ(polish.CurrencyToText(Amount::Invalid(), true, false), "");
  EXPECT_EQ(polish.CurrencyToText(Amount::Null(), true, false), "");
}

TEST(CLocaleInfo, TextToDispText) {
  struct Case {
    const char* text;
    char dec;
    const char* polish;
    const char* swiss;
    const char* ungrouped;
    const char* indian;
  } cases[] = {
      {"1234567.8900", '.', "1 234 567,8900", "1'234'567.8900", "1234567<>8900", "1,234,567.8900"},
      {"-1234.5", '.', "-1 234,5", "-1'234.5", "-1234<>5", "-1,234.5"},
      {"-123.5", '.', "-123,5", "-123.5", "-123<>5", "-123.5"},  // no separator after the sign
      {"123456", '.', "123 456", "123'456", "123456", "123,456"},
      {"12", ',', "12", "12", "12", "12"},
      {"", '.', "", "", "", ""},
      {".5", '.', ",5", ".5", "<>5", ".5"},
      {"1.2.3", '.', "12,3", "12.3", "12<>3", "12.3"},  // the last decimal character splits
      {"x1y234", '.', "x1 234", "x1'234", "x1234", "x1,234"},
      {"1 000 000", '.', "1 000 000", "1'000'000", "1000000", "1,000,000"},
  };
  CLocaleInfo polish{LocaleValues{}}, swiss{Swiss()}, ungrouped{Ungrouped()}, indian{Indian()};
  for (const Case& c : cases) {
    SCOPED_TRACE(c.text);
    EXPECT_EQ(polish.TextToDispText(c.text, c.dec), c.polish);
    EXPECT_EQ(swiss.TextToDispText(c.text, c.dec), c.swiss);
    EXPECT_EQ(ungrouped.TextToDispText(c.text, c.dec), c.ungrouped);
    EXPECT_EQ(indian.TextToDispText(c.text, c.dec), c.indian);
  }
  EXPECT_EQ(polish.TextToDispText(nullptr, '.'), "");
}

TEST(CLocaleInfo, CurrencyToDispText) {
  struct Case {
    std::int64_t raw;
    int decimals;
    const char* symbol;
    unsigned flags;
    const char* expected;
  } cases[] = {
      {12345678900, 2, "zł", 0, "1 234 567,89 zł"},
      {12345678999, 2, nullptr, 0, "1 234 567,89"},  // cut, not rounded
      {-12345000, 0, "", 0, "-1 234"},
      {-12345000, 4, nullptr, CLocaleInfo::kDispNoGrouping, "-1234,5000"},
      {-12, 2, nullptr, 0, "0,00"},  // cut to zero: no sign
      {0, 2, "zł", CLocaleInfo::kDispBlankZero, ""},
      {50, 2, nullptr, CLocaleInfo::kDispBlankZero, ""},
      {5000, 9, nullptr, 0, "0,5000"},  // decimals beyond four are four
      {5000, -1, nullptr, 0, "0"},
  };
  CLocaleInfo polish{LocaleValues{}};
  for (const Case& c : cases) {
    SCOPED_TRACE(c.expected);
    EXPECT_EQ(polish.CurrencyToDispText(Amount::FromRaw(c.raw), c.decimals, c.symbol, c.flags), c.expected);
  }
  EXPECT_EQ(polish.CurrencyToDispText(Amount::Invalid(), 2, "zł", 0), "");
}

TEST(CLocaleInfo, CurrencyToTextCalcFitsTheWidth) {
  // Every character 7 units wide.
  varion::TextWidth measure = [](std::string_view t) { return static_cast<int>(t.size()) * 7; };
  struct Case {
    std::int64_t raw;
    int width;
    const char* expected;
  } cases[] = {
      {12345678950, 200, "1 234 567,89"},   // decimals cut as the field shows them
      {12345678950, 84, "1 234 567,89"},    // exactly twelve characters
      {12345678950, 77, "1234567,89"},      // without separators
      {12345678950, 63, "1234567,9"},       // one decimal fewer, rounded
      {12345678950, 49, "1234568"},         // no decimals, rounded
      {12345678950, 48, "######"},          // does not fit at all
      {12345678950, 3, "#"},                // never nothing
  };
  CLocaleInfo polish{LocaleValues{}};
  for (const Case& c : cases) {
    SCOPED_TRACE(c.width);
    EXPECT_EQ(polish.CurrencyToTextCalc(measure, c.width, Amount::FromRaw(c.raw), 2, 0), c.expected);
  }
}

}  // namespace
