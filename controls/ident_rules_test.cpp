#include "controls/ident_rules.h"

#include <gtest/gtest.h>

#include <string>

namespace varion {
namespace {

using K = IdentKind;

bool AllAccepted(K kind, const std::string& text, const IdentOptions& o) {
  for (char c : text)
    if (!IdentAcceptsChar(kind, c, o)) return false;
  return true;
}

IdentOptions Decimals2() {
  IdentOptions o;
  o.decimals = 2;
  o.min = -100;
  o.max = 1000;
  return o;
}
IdentOptions WithSeconds() {
  IdentOptions o;
  o.seconds = true;
  return o;
}

// One row per rule: whether typing the input gets every character in, what leaving the field
// makes of it, and whether the result passes.
struct Case {
  K kind;
  std::string input;
  bool typed;
  std::string normalised;
  bool valid;
  IdentOptions options = {};
};

TEST(IdentRules, TypingNormalisingChecking) {
  const Case cases[] = {
      {K::Nip, " 1234563218 ", true, "1234563218", true},
      {K::Nip, "123-456-32-18", true, "123-456-32-18", true},  // the checksum on the digits ParsujNip finds
      {K::Nip, "123 456 32 18", true, "1234563218", true},
      {K::Nip, "1234563219", true, "1234563219", false},
      {K::Nip, "PL1234563218", false, "PL1234563218", true},    // set by the program, not typed
      {K::Nip, "DE123456789", false, "DE123456789", false},
      {K::Nip, "123456321", true, "123456321", false},
      {K::NipEx, "de 123456789", true, "DE123456789", true},   // foreign: no Polish checksum
      {K::NipEx, "pl1234563218", true, "PL1234563218", true},
      {K::NipEx, "PL1234563219", true, "PL1234563219", false},
      {K::NipEx, "DE", true, "DE", false},
      {K::Pesel, "44051401458", true, "44051401458", true},
      {K::Pesel, "44051401459", true, "44051401459", false},
      {K::Pesel, "4405140145a", false, "4405140145a", false},
      {K::Regon, "123456785", true, "123456785", true},
      {K::Regon, "123456786", true, "123456786", false},
      {K::IdWewnetrzny, "1010000001-00001", true, "1010000001-00001", true},
      {K::IdWewnetrzny, "0010000001-00001", true, "0010000001-00001", false},
      {K::Rachunek, "61109010140000071219812874", true, "61 1090 1014 0000 0712 1981 2874", true},
      {K::Rachunek, "pl61 1090 1014 0000 0712 1981 2874", true, "PL61 1090 1014 0000 0712 1981 2874", true},
      {K::Rachunek, "62109010140000071219812874", true, "62 1090 1014 0000 0712 1981 2874", false},
      {K::Rachunek, "6110901014000007121981287", true, "6110901014000007121981287", false},
      {K::Rachunek, "DE61109010140000071219812874", false, "DE61109010140000071219812874", false},
      {K::Email, " jan.kowalski@firma.pl", false, "jan.kowalski@firma.pl", true},  // pasted with a blank
      {K::Email, "@firma.pl", true, "@firma.pl", false},
      {K::Email, "jan@firma", true, "jan@firma", false},
      {K::Email, "jan kowalski@firma.pl", false, "jan kowalski@firma.pl", false},
      {K::Www, "www.firma.pl", true, "www.firma.pl", true},
      {K::Www, "https://firma.com.pl:8443/oferta?id=5", true, "https://firma.com.pl:8443/oferta?id=5", true},
      {K::Www, "localhost", true, "localhost", false},
      {K::Www, "javascript:alert(1)", true, "javascript:alert(1)", false},
      {K::Www, "ftp://firma.pl", true, "ftp://firma.pl", false},
      {K::Gg, "1234567", true, "1234567", true},
      {K::Gg, "0123", true, "0123", false},
      {K::Gg, "4294967296", true, "4294967296", false},
      {K::Skype, "jan.kowalski_1", true, "jan.kowalski_1", true},
      {K::Skype, "live:jan_1", true, "live:jan_1", true},
      {K::Skype, "1janek", true, "1janek", false},
      {K::Skype, "jan", true, "jan", false},
      {K::Number, "0012", true, "12", true},
      {K::Number, "-0", true, "0", true},
      {K::Number, "1.5", false, "1,5", false},  // an integer field takes no separator
      {K::Number, "12,5", true, "12,5", true, Decimals2()},
      {K::Number, "12.50", true, "12,50", true, Decimals2()},
      {K::Number, "12,505", true, "12,505", false, Decimals2()},
      {K::Number, "1000,01", true, "1000,01", false, Decimals2()},
      {K::Number, "-100", true, "-100", true, Decimals2()},
      {K::Number, "1 000", false, "1000", true, Decimals2()},
      {K::Number, "1-2", true, "1-2", false},
      {K::Time, "930", true, "09:30", true},
      {K::Time, "9:5", true, "09:05", true},
      {K::Time, "24:00", true, "24:00", false},
      {K::Time, "12:60", true, "12:60", false},
      {K::Time, "12:30:15", true, "12:30:15", false},  // no seconds in this field
      {K::Time, "9:5:7", true, "09:05:07", true, WithSeconds()},
      {K::Time, "093007", true, "09:30:07", true, WithSeconds()},
      {K::Time, "12:30", true, "12:30:00", true, WithSeconds()},
      {K::Folder, "C:\\Dokumenty\\Faktury", true, "C:\\Dokumenty\\Faktury", true},
      {K::Folder, "\\\\serwer\\udzial\\", true, "\\\\serwer\\udzial\\", true},
      {K::Folder, "C:\\Dok*", false, "C:\\Dok*", false},
      {K::Folder, "C:\\a:b", true, "C:\\a:b", false},
      {K::File, "C:\\Dokumenty\\raport.pdf", true, "C:\\Dokumenty\\raport.pdf", true},
      {K::File, "C:\\Dokumenty\\", true, "C:\\Dokumenty\\", false},
      {K::File, "C:\\Dokumenty\\raport.", true, "C:\\Dokumenty\\raport.", false},
      {K::Adres, "  ul. Długa   5/7 ", true, "ul. Długa 5/7", true},
      {K::Adres, "Długa", true, "Długa", false},
      {K::Adres, "ul. Długa 5; DROP", false, "ul. Długa 5; DROP", false},
      {K::Param, " Hurtownia \"Łódź\" ", true, " Hurtownia \"Łódź\" ", true},  // any text, as typed
      {K::Param, "a\tb", false, "a\tb", true},
      // An empty field is never faulty: whether a value is required is the dialog's rule.
      {K::Pesel, "", true, "", true},
      {K::Rachunek, "   ", true, "", true},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(std::string(IdentClassName(c.kind)) + " \"" + c.input + "\"");
    EXPECT_EQ(AllAccepted(c.kind, c.input, c.options), c.typed);
    const std::string normalised = IdentNormalise(c.kind, c.input, c.options);
    EXPECT_EQ(normalised, c.normalised);
    EXPECT_EQ(IdentCheck(c.kind, normalised, c.options), c.valid);
    // Leaving the field twice changes nothing the second time.
    EXPECT_EQ(IdentNormalise(c.kind, normalised, c.options), normalised);
  }
}

// Every kind: pasted text keeps only what typing would let in, cut to the room left; a text of
// 100 000 characters is filtered, normalised and checked without harm.
TEST(IdentRules, PasteFilterAndHugeText) {
  const std::string noise = "1a-\r\n\t@.PL: \x9C\xB9";
  std::string huge;
  while (huge.size() < 100000) huge += noise;
  for (int k = static_cast<int>(K::Nip); k <= static_cast<int>(K::Param); ++k) {
    const K kind = static_cast<K>(k);
    SCOPED_TRACE(IdentClassName(kind));
    EXPECT_EQ(IdentKindOfClass(IdentClassName(kind)), kind);
    const std::size_t room = IdentMaxLength(kind);
    const std::string pasted = IdentFilter(kind, huge, room);
    EXPECT_LE(pasted.size(), room);
    EXPECT_TRUE(AllAccepted(kind, pasted, {}));
    EXPECT_EQ(pasted.find_first_of("\r\n\t"), std::string::npos);
    EXPECT_LE(IdentFilter(kind, huge, 3).size(), 3u);
    EXPECT_EQ(IdentCheck(kind, IdentNormalise(kind, huge)), kind == K::Param);  // a parameter takes any text
  }
  EXPECT_EQ(IdentFilter(K::Pesel, "440514-01458 x", 20), "44051401458");
  EXPECT_EQ(IdentFilter(K::Rachunek, "61-1090-1014", 7), "6110901");
  EXPECT_EQ(IdentKindOfClass("VEL_RBEDIT"), K::Rachunek);
  EXPECT_EQ(IdentKindOfClass("vel_curredit"), std::nullopt);
}

// The account check follows ISO 13616: the check digits are 02 to 98, the rearranged number with
// letters as 10 to 35 leaves 1 modulo 97.
TEST(IdentRules, AccountNumberIbanRule) {
  const struct {
    const char* text;
    int expected;
  } cases[] = {
      {"PL61109010140000071219812874", 1},
      {"PL61 1090 1014 0000 0712 1981 2874", 1},
      {"27114020040000300201355387", 1},
      {"PL10105000997603123456789123", 1},
      {"PL97114020040000300201355388", 1},
      {"PL27114020040000300201355388", 0},  // one digit off
      {"PL72114020040000300201355387", 0},  // check digits swapped
      {"PL02000000000000000000000036", 1},
      {"PL99000000000000000000000036", 0},  // remainder 1, but 99 is never a check value
      {"PL98000000000000000000000054", 1},
      {"PL01000000000000000000000054", 0},
      {"PL97000000000000000000000072", 1},
      {"PL00000000000000000000000072", 0},
      {"DE89370400440532013000", 0},        // a valid German IBAN is no Polish account
      {"PL6110901014000007121981287", 0},   // 25 digits
      {"PL611090101400000712198128745", 0}, // 27 digits
      {"PL61109010140000071219812A74", 0},
      {"", 0},
      {nullptr, 0},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.text ? c.text : "(null)");
    EXPECT_EQ(PoprawnyNrRachunku(c.text), c.expected);
  }
}

// A Ctrl+click opens only "mailto:" or http(s) addresses that pass the field's check.
TEST(IdentRules, AddressToOpen) {
  const struct {
    K kind;
    const char* text;
    std::optional<std::string> expected;
  } cases[] = {
      {K::Email, "jan@firma.pl", "mailto:jan@firma.pl"},
      {K::Email, "MAILTO:jan@firma.pl", "mailto:jan@firma.pl"},
      {K::Email, "jan@firma.pl?body=x", std::nullopt},
      {K::Email, "jan@firma.pl,ala@firma.pl", std::nullopt},
      {K::Email, "jan@firma", std::nullopt},
      {K::Www, "www.firma.pl", "http://www.firma.pl"},
      {K::Www, "HTTPS://firma.pl/a", "HTTPS://firma.pl/a"},
      {K::Www, "file://c/windows", std::nullopt},
      {K::Www, "cmd.exe /c calc", std::nullopt},
      {K::Www, "", std::nullopt},
      {K::Nip, "1234563218", std::nullopt},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.text);
    EXPECT_EQ(IdentAddressToOpen(c.kind, c.text), c.expected);
  }
}

TEST(IdentRules, TimeStepsByField) {
  const struct {
    const char* text;
    std::size_t caret;
    int direction;
    bool seconds;
    const char* expected;
  } cases[] = {
      {"09:30", 0, 1, false, "10:30"},  {"23:30", 1, 1, false, "00:30"},  {"09:00", 3, -1, false, "09:59"},
      {"09:59", 4, 1, false, "09:00"},  // minutes wrap without carrying into the hour
      {"09:30", 9, 1, false, "09:31"},  // a caret past the end is in the last field
      {"09:30:59", 7, 1, true, "09:30:00"}, {"xx", 0, -1, false, "23:00"}, {"", 4, 1, true, "00:01:00"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.text);
    IdentOptions o;
    o.seconds = c.seconds;
    EXPECT_EQ(StepTimeField(c.text, c.caret, c.direction, o), c.expected);
  }
}

}  // namespace
}  // namespace varion
