#include "controls/date_tokens.h"

#include <gtest/gtest.h>

#include "tests/locale_guard.h"

namespace {

using Input = CDtTokenActive::Input;

// A field with a range that takes what falls inside it.
class FakeField : public CDtTokenOwner {
 public:
  COleDateTime value = COleDateTime(2024, 1, 31);
  COleDateTime low = COleDateTime(1900, 1, 1), high = COleDateTime(2100, 12, 31);
  int offers = 0;
  COleDateTime GetDateValue() const override { return value; }
  bool OfferDateValue(const COleDateTime& v) override {
    ++offers;
    if (v < low || v > high) return false;
    value = v;
    return true;
  }
};

std::string Kinds(const CDtTokenList& tokens) {
  std::string out;
  for (const auto& t : tokens) {
    if (dynamic_cast<CDtTokenDay*>(t.get())) out += 'D';
    else if (dynamic_cast<CDtTokenMonth*>(t.get())) out += 'M';
    else if (dynamic_cast<CDtTokenYear*>(t.get())) out += 'Y';
    else out += "[" + t->GetText() + "]";
    out += std::to_string(t->GetWidth());
  }
  return out;
}

TEST(DateTokens, PatternToTokens) {
  struct Case {
    const char* pattern;
    const char* kinds;
  } cases[] = {
      {"dd-mm-rrrr", "D2[-]1M2[-]1Y4"}, {"yyyy-mm-dd", "Y4[-]1M2[-]1D2"}, {"YYYY/MM/DD", "Y4[/]1M2[/]1D2"},
      {"d.m.yy", "D1[.]1M1[.]1Y2"}, {"dd--mm. rr", "D2[--]2M2[.]1[ ]1Y2"},
      {"", "D2[.]1M2[.]1Y4"},  // the locale's short date format
      {"x", "[x]1"},
  };
  varion::testing::LocaleGuard polish(varion::LocaleValues{});
  for (const Case& c : cases) {
    SCOPED_TRACE(c.pattern);
    EXPECT_EQ(Kinds(BuildDateTokens(c.pattern, nullptr)), c.kinds);
  }
  varion::LocaleValues iso;
  iso.shortDate = "yyyy-MM-dd";
  varion::testing::LocaleGuard guard(iso);
  EXPECT_EQ(Kinds(BuildDateTokens("", nullptr)), "Y4[-]1M2[-]1D2");
}

TEST(DateTokens, DigitEntry) {
  struct Case {
    char field;  // d, m, r
    const char* keys;
    const char* verdicts;  // per key: R refused, W waiting, C complete
    const char* buffer;
    const char* text;
  } cases[] = {
      {'d', "4", "C", "4", "4"}, {'d', "3", "W", "3", "3d"}, {'d', "31", "WC", "31", "31"},
      {'d', "32", "WR", "3", "3d"}, {'d', "00", "WR", "0", "0d"}, {'d', "09", "WC", "09", "09"},
      {'d', "45", "CC", "5", "5"},  // a complete field starts over
      {'d', "x1", "RW", "1", "1d"}, {'m', "1", "W", "1", "1m"}, {'m', "2", "C", "2", "2"},
      {'m', "13", "WR", "1", "1m"}, {'m', "12", "WC", "12", "12"}, {'m', "00", "WR", "0", "0m"},
      {'r', "20", "WW", "20", "20rr"},
      {'r', "02024", "WWWWC", "2024", "2024"}, {'r', "0002024", "WWWWWWC", "2024", "2024"},
      {'r', "1999", "WWWC", "1999", "1999"}, {'r', "2024\xB9", "WWWCR", "2024", "2024"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(std::string(1, c.field) + " " + c.keys);
    auto tokens = BuildDateTokens(std::string(c.field == 'r' ? 4 : 2, c.field), nullptr);
    auto* token = dynamic_cast<CDtTokenActive*>(tokens.at(0).get());
    ASSERT_NE(token, nullptr);
    std::string verdicts;
    for (const char* k = c.keys; *k; ++k) {
      Input in = token->AddChar(*k);
      verdicts += in == Input::Refused ? 'R' : in == Input::Waiting ? 'W' : 'C';
    }
    EXPECT_EQ(verdicts, c.verdicts);
    EXPECT_EQ(token->GetBuffer(), c.buffer);
    EXPECT_EQ(token->GetText(), c.text);
  }
}

TEST(DateTokens, ValuesAndStepping) {
  FakeField field;
  auto tokens = BuildDateTokens("dd-mm-rrrr", &field);
  auto* day = dynamic_cast<CDtTokenActive*>(tokens[0].get());
  auto* month = dynamic_cast<CDtTokenActive*>(tokens[2].get());
  auto* year = dynamic_cast<CDtTokenActive*>(tokens[4].get());
  day->SetValue(5);
  year->SetValue(987);
  EXPECT_EQ(day->GetText(), "05");
  EXPECT_EQ(year->GetText(), "0987");
  EXPECT_EQ(day->GetValue(), 5);
  EXPECT_TRUE(day->IsComplete());
  day->Clear();
  EXPECT_EQ(day->GetValue(), -1);
  EXPECT_EQ(day->GetText(), "dd");

  EXPECT_TRUE(day->Step(+1));
  EXPECT_EQ(field.value, COleDateTime(2024, 2, 1));
  EXPECT_TRUE(day->Step(-1));
  EXPECT_TRUE(month->Step(+1));  // 31 January + 1 month: the end of February
  EXPECT_EQ(field.value, COleDateTime(2024, 2, 29));
  EXPECT_TRUE(year->Step(+1));
  EXPECT_EQ(field.value, COleDateTime(2025, 2, 28));

  field.value = COleDateTime(2100, 12, 31);
  EXPECT_FALSE(day->Step(+1));  // the range refuses it
  EXPECT_EQ(field.value, COleDateTime(2100, 12, 31));
  field.value = COleDateTime::Null();
  int before = field.offers;
  EXPECT_FALSE(month->Step(-1));  // nothing to step from
  EXPECT_EQ(field.offers, before);

  auto orphan = BuildDateTokens("dd", nullptr);
  EXPECT_FALSE(dynamic_cast<CDtTokenActive*>(orphan[0].get())->Step(1));
}

}  // namespace
