#include "controls/validators.h"

#include <gtest/gtest.h>


#include "tests/seed.h"

namespace {

struct Case {
  const char* text;
  int expected;
};

TEST(Validators, Pesel) {
  const Case cases[] = {
      {"44051401458", 1}, {"44051401459", 0}, {"02070803628", 1}, {"4405140145", 0},  {"440514014580", 0},
      {"4405a401458", 0}, {"44051401 58", 0}, {"-4051401458", 0}, {"", 0},            {nullptr, 0},
      {"\xB9" "4051401458", 0}, {"00000000000", 1},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.text ? c.text : "(null)");
    EXPECT_EQ(PoprawnyPESEL(c.text), c.expected);
  }
}

TEST(Validators, Regon) {
  const Case cases[] = {
      {"123456785", 1},       {"123456786", 0},  {"12345678", 0},  {"1234567850", 0},
      {"12345678512347", 0},  // the fourteen-digit form is refused even when it is right
      {"101000000", 1},       // weighted sum 10: remainder 10 counts as 0
      {"101000001", 0},
      {"12345678a", 0},       {nullptr, 0},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.text ? c.text : "(null)");
    EXPECT_EQ(PoprawnyREGON(c.text), c.expected);
  }
}

TEST(Validators, Nip) {
  struct NipCase {
    const char* text;
    int plain, checked;
  } cases[] = {
      {"1234563218", 1, 1},        {"1234563219", 1, 0},      {"PL1234563218", 1, 1},
      {"PL 1234563218", 1, 1},     {"PLPL 1234563218", 1, 1}, {"pl1234563218", 0, 0},
      {"123-456-32-18", 1, 0},     {"123-45-63-218", 1, 0},   {"PL123-456-32-18", 1, 0},
      {"12-3456-32-18", 0, 0},     {"123456321", 0, 0},       {"12345632189", 0, 0},
      {"1234563218 ", 0, 0},       {"DE1234563218", 0, 0},    {"", 0, 0},
      {nullptr, 0, 0},             {"PL", 0, 0},              {"\xFF\xFE" "1234563218", 0, 0},
      {"1234567890", 1, 0},        // weighted sum leaves 10: never valid
  };
  for (const NipCase& c : cases) {
    SCOPED_TRACE(c.text ? c.text : "(null)");
    EXPECT_EQ(PoprawnyNIP(c.text, false), c.plain);
    EXPECT_EQ(PoprawnyNIP(c.text, true), c.checked);
  }
}

// A weighted sum modulo 10 (PESEL) or 11 (NIP) with weights prime to the modulus notices every
// change of a single digit.
TEST(Validators, SingleDigitChangesAreCaught) {
  varion::testing::SeededRng rng;
  int pesels = 0, nips = 0;
  while (pesels < 300 || nips < 300) {
    std::string s(11, '0');
    for (char& c : s) c = static_cast<char>('0' + rng() % 10);
    for (char last = '0'; last <= '9'; ++last) {
      s[10] = last;
      if (PoprawnyPESEL(s.c_str()) && pesels < 300) {
        ++pesels;
        for (int i = 0; i < 11; ++i) {
          std::string t = s;
          t[i] = static_cast<char>('0' + (t[i] - '0' + 1 + rng() % 9) % 10);
          ASSERT_EQ(PoprawnyPESEL(t.c_str()), 0) << s << " -> " << t;
        }
      }
      std::string nip = s.substr(0, 9) + last;
      if (PoprawnyNIP(nip.c_str(), true) && nips < 300) {
        ++nips;
        for (int i = 0; i < 10; ++i) {
          std::string t = nip;
          t[i] = static_cast<char>('0' + (t[i] - '0' + 1 + rng() % 9) % 10);
          ASSERT_EQ(PoprawnyNIP(t.c_str(), true), 0) << nip << " -> " << t;
        }
      }
    }
  }
}

TEST(Validators, PatternChecks) {
  struct PatternCase {
    bool (*check)(const char*);
    const char* text;
    bool expected;
  } cases[] = {
      {PoprawnyNrEORI, "PL123456789012345", true},   {PoprawnyNrEORI, "PL12345678901234Z", true},
      {PoprawnyNrEORI, "PL12345678901234X", false},  {PoprawnyNrEORI, "xPL123456789012345", false},
      {PoprawnyNrEORI, "PL1234567890123456", false}, {PoprawnyNrEORI, nullptr, false},
      {PoprawnyEmail, "a@b.c", true},                {PoprawnyEmail, "jan.kowalski@firma.com.pl", true},
      {PoprawnyEmail, "@b.c", false},                {PoprawnyEmail, "a@bc", false},
      {PoprawnyEmail, "a@.c", false},                {PoprawnyEmail, "a@b.", false},
      {PoprawnyEmail, "a@b\n.c", false},             {PoprawnyEmail, "ą@ę.ł", true},
      {PoprawnyEmail, "", false},                    {PoprawnyEmail, nullptr, false},
      {PoprawnyIdWew, "1010000001-00001", true},     {PoprawnyIdWew, "1100000001-00001", true},
      {PoprawnyIdWew, "1000000001-00001", false},    {PoprawnyIdWew, "0110000001-00001", false},
      {PoprawnyIdWew, "1010000001-0001", false},     {PoprawnyIdWew, " 1010000001-00001", false},
      {PoprawnyKodCN, "8471", true},                 {PoprawnyKodCN, "8471 30", true},
      {PoprawnyKodCN, "8471 30 00", true},           {PoprawnyKodCN, "8471 30 00 11", true},
      {PoprawnyKodCN, "847130", false},              {PoprawnyKodCN, "847", false},
      {PoprawnyKodCN, "8471 3", false},              {PoprawnyKodCN, "", false},
  };
  for (const PatternCase& c : cases) {
    SCOPED_TRACE(c.text ? c.text : "(null)");
    EXPECT_EQ(c.check(c.text), c.expected);
  }
}

TEST(Validators, PostalCode) {
  struct PostalCase {
    const char* text;
    int flags, expected;
  } cases[] = {
      {"00-950", 0, 1},  {"00950", 0, 0}, {"00950", kKodPocztowyBezKreski, 1}, {"", 0, 0},
      {"", kKodPocztowyPusty, 1}, {nullptr, kKodPocztowyPusty, 1}, {"0-950", 3, 0}, {"00-9500", 3, 0},
      {"ab-cde", 3, 0},  {"00 950", 3, 0},
  };
  for (const PostalCase& c : cases) {
    SCOPED_TRACE(c.text ? c.text : "(null)");
    EXPECT_EQ(PoprawnyKodPocztowy(c.text, c.flags), c.expected);
  }
}

TEST(Validators, Cleaners) {
  struct CleanCase {
    const char* text;
    const char* digits;
    const char* alnum;
    bool onlyDigits;
  } cases[] = {
      {"123-456-32-18", "1234563218", "1234563218", false},
      {"PL 12_34", "1234", "PL1234", false},
      {"Żółć 7×3÷2", "732", "Żółć732", false},
      {"\x80\x81\xA0\xFF", "", "", false},
      {"0123", "0123", "0123", true},
      {"", "", "", true},
  };
  for (const CleanCase& c : cases) {
    SCOPED_TRACE(c.text);
    std::string d = c.text, a = c.text;
    UsunZnakiPozaCyframi(d);
    UsunZnakiPozaAlfanumerycznymi(a);
    EXPECT_EQ(d, c.digits);
    EXPECT_EQ(a, c.alnum);
    EXPECT_EQ(ContainsOnlyDigits(c.text), c.onlyDigits);
  }
  EXPECT_TRUE(ContainsOnlyDigits(nullptr));
}

TEST(Validators, FormatCnCode) {
  struct CnCase {
    const char* text;
    const char* formatted;  // FormatujKodCN
    const char* kept;       // FormatujNiepustyKodCN
  } cases[] = {
      {"84713000", "8471 30 00", "8471 30 00"},
      {"8471.30.00", "8471 30 00", "8471 30 00"},
      {"CN: 8471-30", "8471 30", "8471 30"},
      {"8471", "8471", "8471"},
      {"84713", "8471", "8471"},  // an odd digit is not a group
      {"8471300099", "8471 30 00", "8471 30 00"},
      {"84a71", "", "84a71"},     // letters break a code
      {"brak", "", "brak"},
      {"", "", ""},
  };
  for (const CnCase& c : cases) {
    SCOPED_TRACE(c.text);
    std::string a = c.text, b = c.text;
    FormatujKodCN(a);
    FormatujNiepustyKodCN(b);
    EXPECT_EQ(a, c.formatted);
    EXPECT_EQ(b, c.kept);
  }
}

// "." of the e-mail and CN patterns refuses only line feed and carriage return, as ECMAScript's
// does; a form feed, a vertical tab or the ellipsis of code page 1250 (0x85) is a character. The
// answer is the same for a short text and for one padded past the length where a regex engine
// would change its strategy.
TEST(Validators, DotRefusesOnlyLineTerminators) {
  struct Case {
    const char* tail;
    bool emailOk;       // "a@b.c" + tail
    const char* cn;     // FormatujKodCN("8471 30" + tail)
  } cases[] = {
      {"", true, "8471 30"},          {"\f", true, "8471 30"},     {"\v", true, "8471 30"},
      {"\t", true, "8471 30"},        {"\x85", true, "8471 30"},   {"x\x85\f y", true, "8471 30"},
      {"\n", false, ""},             {"\r", false, ""},           {"\r\n", false, ""},
      {"x\ny", false, ""},           {"\f\n", false, ""},
  };
  for (const Case& c : cases) {
    for (std::size_t pad : {std::size_t{0}, std::size_t{5000}, std::size_t{1} << 16}) {
      SCOPED_TRACE(::testing::Message() << "tail " << ::testing::PrintToString(std::string(c.tail)) << " pad " << pad);
      const std::string blanks(pad, ' ');
      EXPECT_EQ(PoprawnyEmail(("a@" + std::string(pad, 'b') + "b.c" + c.tail).c_str()), c.emailOk);
      EXPECT_EQ(PoprawnyEmail(("a@b.c" + blanks + c.tail).c_str()), c.emailOk);
      std::string cn = "8471 30" + blanks + c.tail;
      FormatujKodCN(cn);
      EXPECT_EQ(cn, c.cn);
      cn = blanks + "\n8471\n30" + c.tail;  // terminators before the code and between its digits are fine
      FormatujKodCN(cn);
      EXPECT_EQ(cn, c.cn);
    }
  }
}

TEST(Validators, ParseNip) {
  struct ParseCase {
    const char* text;
    bool parsed;
    const char* prefix;
    const char* separator;
    const char* number;
    bool foreign;
    const char* withPrefix;
  } cases[] = {
      {"PL1234563218", true, "PL", "", "1234563218", false, "PL1234563218"},
      {"pl 123-456-32-18", true, "pl", " ", "123-456-32-18", false, "PL1234563218"},
      {"DE -123456789", true, "DE", " -", "123456789", true, "DE123456789"},
      {"DE - 123456789", false, "", "", "", false, ""},
      {"1234563218", true, "", "", "1234563218", false, "1234563218"},
      {"ATU12345678", true, "ATU", "", "12345678", true, "ATU12345678"},
      {"CHE-123.456.789", false, "", "", "", false, ""},
      {"1-2-3-4-5", false, "", "", "", false, ""},
      {"PL 12 34", false, "", "", "", false, ""},
      {"", true, "", "", "", false, ""},
      {nullptr, true, "", "", "", false, ""},
  };
  for (const ParseCase& c : cases) {
    SCOPED_TRACE(c.text ? c.text : "(null)");
    auto nip = ParsujNip(c.text);
    ASSERT_EQ(nip.has_value(), c.parsed);
    if (!nip) continue;
    EXPECT_EQ(nip->prefiks, c.prefix);
    EXPECT_EQ(nip->separator, c.separator);
    EXPECT_EQ(nip->numer, c.number);
    EXPECT_EQ(nip->CzyPrefiksZagraniczny(), c.foreign);
    EXPECT_EQ(nip->PodajNumerZPrefiksemBezZnakowSpecjalnych(), c.withPrefix);
  }
}

TEST(Validators, MegabyteTexts) {
  std::string digits(1 << 20, '7');
  EXPECT_EQ(PoprawnyPESEL(digits.c_str()), 0);
  EXPECT_EQ(PoprawnyNIP(digits.c_str(), true), 0);
  EXPECT_FALSE(PoprawnyKodCN(digits.c_str()));
  std::string cn = digits;
  FormatujKodCN(cn);
  EXPECT_EQ(cn, "7777 77 77");
  // Long texts full of "@" are decided without the engine; the answer must agree with the pattern
  // on both sides of the length where that starts.
  for (size_t n : {size_t{4000}, size_t{1} << 20}) {
    std::string ats(n, '@');
    EXPECT_FALSE(PoprawnyEmail(ats.c_str()));
    EXPECT_TRUE(PoprawnyEmail(("a@b.c" + ats).c_str()));
    EXPECT_FALSE(PoprawnyEmail(("a@b.c" + ats + "\n").c_str()));
    EXPECT_FALSE(PoprawnyEmail((ats + ".").c_str()));
    EXPECT_TRUE(PoprawnyEmail((ats + ".x").c_str()));
  }
  std::string word(1 << 20, 'a');
  EXPECT_TRUE(ParsujNip(word.c_str()).has_value());  // all letters: a prefix and no number
  EXPECT_FALSE(ParsujNip((word + "1!").c_str()).has_value());
}

}  // namespace
