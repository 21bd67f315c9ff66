#include "controls/amount_words.h"

#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <sstream>

#include "tests/locale_guard.h"
#include "tests/seed.h"

namespace {

using varion::Amount;

struct TextCase {
  const char* text;
  const char* currency;
  int language;
  const char* expected;
};

TEST(KwotaSlownie, TextInPolishAndEnglish) {
  // Noun forms of ordinary amounts are covered by RandomAmountsReadBack; these rows hold the
  // empty and odd inputs, the column spacing, the limits and the other languages.
  const TextCase cases[] = {
      {"0", "PLN", 21, "zero PLN 0/100"}, {"-0", "PLN", 21, "zero PLN 0/100"}, {"", "PLN", 21, "zero PLN 0/100"},
      {nullptr, "PLN", 21, "zero PLN 0/100"}, {"0", nullptr, 21, "zero 0/100"}, {"E", "PLN", 21, "E"},
      {"12", "PLN", 21, "dwanaście  PLN  0/100"}, {"12,5", "PLN", 21, "dwanaście  PLN 50/100"},
      {"12,05", "PLN", 21, "dwanaście  PLN  5/100"}, {"123,456", "EUR", 21, "sto dwadzieścia trzy  EUR 45/100"},
      {"999999999999999", "PLN", 21,
       "dziewięćset dziewięćdziesiąt dziewięć bilionów dziewięćset dziewięćdziesiąt dziewięć miliardów "
       "dziewięćset dziewięćdziesiąt dziewięć milionów dziewięćset dziewięćdziesiąt dziewięć tysięcy "
       "dziewięćset dziewięćdziesiąt dziewięć  PLN  0/100"},
      // Digits beyond the fifteenth are ignored.
      {"7000000000000000017", "PLN", 21, "siedemnaście  PLN  0/100"},
      {"1000000000000000", "PLN", 21, "zero PLN  0/100"},
      // Other characters of the integer part are skipped: a sign, blanks, code page 1250 bytes.
      {"-1 234", "PLN", 21, "jeden tysiąc dwieście trzydzieści cztery  PLN  0/100"},
      {"\x80\xFF" "15", "PLN", 21, "piętnaście  PLN  0/100"}, {"15,x", "PLN", 21, "piętnaście  PLN  0/100"},
      {"11,9", "", 21, "jedenaście 90/100"}, {"21,01", "USD", 9, "twenty one  USD  1/100"},
      {"1111111", "GBP", 9, "one million one hundred eleven thousand one hundred eleven  GBP  0/100"},
      {"1000000000000", "USD", 9, "one tryllion  USD  0/100"},
      {"13", "EUR", 7, "thirteen  EUR  0/100"},  // German only through the overloads on a value
  };
  varion::testing::LocaleGuard polish(varion::LocaleValues{});
  for (const TextCase& c : cases) {
    SCOPED_TRACE(c.text ? c.text : "(null)");
    EXPECT_EQ(KwotaSlownie(c.text, c.currency, c.language), c.expected);
  }
  EXPECT_EQ(KwotaSlownie("12"), "dwanaście  PLN  0/100");
  EXPECT_EQ(KwotaSlownie(std::string("2,5"), "EUR"), "dwa  EUR 50/100");
}

TEST(KwotaSlownie, DecimalCharacterFollowsTheNumericSeparator) {
  struct Case {
    const char* numDecimal;
    const char* text;
    const char* expected;
  } cases[] = {
      {".", "12.5", "dwanaście  PLN 50/100"},
      {".", "12,5", "sto dwadzieścia pięć  PLN  0/100"},  // the comma is no decimal here
      {"<>", "12.5", "dwanaście  PLN 50/100"},      // two characters: "." is used
      {"<>", "12<5", "sto dwadzieścia pięć  PLN  0/100"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(std::string(c.numDecimal) + " " + c.text);
    varion::LocaleValues values;
    values.numDecimal = c.numDecimal;
    varion::testing::LocaleGuard guard(values);
    EXPECT_EQ(KwotaSlownie(c.text), c.expected);
  }
}

TEST(KwotaSlownie, Values) {
  struct Case {
    Amount value;
    int language;
    const char* expected;
  } cases[] = {
      {Amount::FromUnits(123, 4500), 21, "sto dwadzieścia trzy  PLN 45/100"},
      {Amount::FromUnits(-123, -4500), 21, "sto dwadzieścia trzy  PLN 45/100"},
      {Amount::FromUnits(12, 5000), 21, "dwanaście  PLN 50/100"},
      {Amount::FromUnits(12, 500), 21, "dwanaście  PLN  5/100"},
      {Amount::FromUnits(12, 99), 21, "dwanaście  PLN  0/100"}, {Amount::FromUnits(0), 21, "zero PLN 0/100"},
      {Amount::FromRaw(INT64_MIN), 21,
       "dziewięćset dwadzieścia dwa biliony trzysta trzydzieści siedem miliardów dwieście trzy miliony "
       "sześćset osiemdziesiąt pięć tysięcy czterysta siedemdziesiąt siedem  PLN 58/100"},
      {Amount::FromUnits(40), 9, "forty  PLN  0/100"}, {Amount::FromUnits(21, 500), 7, "einundzwanzig PLN 05/100"},
      {Amount::Invalid(), 21, ""}, {Amount::Null(), 21, ""},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.expected);
    for (const char* sep : {",", ".", "<>"}) {
      varion::LocaleValues values;
      values.numDecimal = sep;
      varion::testing::LocaleGuard guard(values);
      EXPECT_EQ(KwotaSlownie(c.value, c.language), c.expected);
    }
  }
}

TEST(InWorten, GermanGroupsAndPennies) {
  struct Case {
    Amount value;
    const char* expected;
  } cases[] = {
      {Amount::FromUnits(0), "null EUR 00/100"}, {Amount::FromUnits(1), "ein EUR 00/100"},
      {Amount::FromUnits(17, 9900), "siebzehn EUR 99/100"}, {Amount::FromUnits(99), "neunundneunzig EUR 00/100"},
      {Amount::FromUnits(100), "einhundert EUR 00/100"},
      {Amount::FromUnits(1234, 5678), "eintausendzweihundertvierunddreißig EUR 56/100"},
      {Amount::FromUnits(80070), "achtzigtausendsiebzig EUR 00/100"},
      {Amount::FromUnits(1000000), "eine million EUR 00/100"},
      {Amount::FromUnits(2000000), "zwei millionen EUR 00/100"},
      {Amount::FromUnits(3000012), "drei millionen zwölf EUR 00/100"},
      {Amount::FromUnits(5000000000), "fünf milliarden EUR 00/100"},
      {Amount::FromUnits(1001000001000), "eine billion eine milliarde eintausend EUR 00/100"},
      {Amount::FromUnits(-15), "fünfzehn EUR 00/100"}, {Amount::Invalid(), ""},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.expected);
    EXPECT_EQ(InWorten(c.value, "EUR"), c.expected);
  }
  EXPECT_EQ(InWorten(Amount::FromUnits(3), nullptr), "drei 00/100");
}

// Reads Polish words back into a number: an independent check of the tables and the noun forms.
long long ReadPolish(const std::string& words) {
  static const std::map<std::string, long long> kValues = [] {
    std::map<std::string, long long> m;
    const char* units[] = {"jeden", "dwa", "trzy", "cztery", "pięć", "sześć", "siedem", "osiem", "dziewięć",
                           "dziesięć", "jedenaście", "dwanaście", "trzynaście", "czternaście", "piętnaście",
                           "szesnaście", "siedemnaście", "osiemnaście", "dziewiętnaście"};
    const char* tens[] = {"dwadzieścia", "trzydzieści", "czterdzieści", "pięćdziesiąt", "sześćdziesiąt",
                          "siedemdziesiąt", "osiemdziesiąt", "dziewięćdziesiąt"};
    const char* hundreds[] = {"sto", "dwieście", "trzysta", "czterysta", "pięćset", "sześćset", "siedemset",
                              "osiemset", "dziewięćset"};
    for (int i = 0; i < 19; ++i) m[units[i]] = i + 1;
    for (int i = 0; i < 8; ++i) m[tens[i]] = (i + 2) * 10;
    for (int i = 0; i < 9; ++i) m[hundreds[i]] = (i + 1) * 100;
    return m;
  }();
  // Noun forms by the rule of the language: 1, 2..4 except teens, the rest.
  auto form = [](long long n) { return n == 1 ? 0 : (n % 10 >= 2 && n % 10 <= 4 && n % 100 / 10 != 1) ? 1 : 2; };
  static const std::map<std::string, std::pair<long long, int>> kNouns = {
      {"tysiąc", {1000, 0}}, {"tysiące", {1000, 1}}, {"tysięcy", {1000, 2}},
      {"milion", {1000000, 0}}, {"miliony", {1000000, 1}}, {"milionów", {1000000, 2}},
      {"miliard", {1000000000, 0}}, {"miliardy", {1000000000, 1}}, {"miliardów", {1000000000, 2}},
      {"bilion", {1000000000000, 0}}, {"biliony", {1000000000000, 1}}, {"bilionów", {1000000000000, 2}}};
  std::istringstream in(words);
  std::string w;
  long long total = 0, group = 0;
  while (in >> w) {
    if (auto v = kValues.find(w); v != kValues.end()) {
      group += v->second;
    } else if (auto n = kNouns.find(w); n != kNouns.end()) {
      if (form(group) != n->second.second) return -1;  // wrong noun form for the number
      total += group * n->second.first;
      group = 0;
    } else {
      return -2;
    }
  }
  return total + group;
}

TEST(KwotaSlownie, RandomAmountsReadBack) {
  varion::testing::LocaleGuard polish(varion::LocaleValues{});
  varion::testing::SeededRng rng;
  for (int i = 0; i < 5000; ++i) {
    // Mixed magnitudes so that small groups and zero groups both occur often.
    long long n = static_cast<long long>(rng() % 1000000000000000ull) / static_cast<long long>(std::pow(10, rng() % 15));
    if (rng() % 4 == 0) n = n / 1000 * 1000;
    int pennies = static_cast<int>(rng() % 100);
    char text[48];
    std::snprintf(text, sizeof text, "%lld,%02d", n, pennies);
    std::string out = KwotaSlownie(text, "PLN", 21);
    SCOPED_TRACE(text);
    size_t cur = out.find(" PLN ");
    ASSERT_NE(cur, std::string::npos) << out;
    std::string words = out.substr(0, cur);
    if (n == 0)
      EXPECT_EQ(words, "zero");
    else
      EXPECT_EQ(ReadPolish(words), n) << out;
    char penny[16];
    std::snprintf(penny, sizeof penny, "%2d/100", pennies);
    EXPECT_EQ(out.substr(cur + 5), penny);
  }
}

TEST(KwotaSlownie, MegabyteTextReadsItsLastDigits) {
  std::string big(1 << 20, '9');
  big += "000042,7";
  varion::testing::LocaleGuard polish(varion::LocaleValues{});
  EXPECT_EQ(KwotaSlownie(big), "dziewięćset dziewięćdziesiąt dziewięć bilionów dziewięćset dziewięćdziesiąt "
                               "dziewięć miliardów dziewięćset dziewięćdziesiąt dziewięć milionów "
                               "czterdzieści dwa  PLN 70/100");
}

}  // namespace
