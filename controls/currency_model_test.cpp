#include "controls/currency_model.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <random>

#include "tests/seed.h"

namespace varion {
void PrintTo(const CurrencySelection& sel, std::ostream* os) { *os << sel.start << ".." << sel.end; }
}  // namespace varion

namespace {

using varion::Amount;
using varion::CurrencyEditModel;
using varion::CurrencyKeyAction;
using varion::CurrencySelection;
using varion::LocaleValues;
using Command = CurrencyEditModel::Command;

LocaleValues Swiss() {  // "." decimal, apostrophe groups
  LocaleValues v;
  v.monDecimal = ".";
  v.monThousands = "'";
  return v;
}

LocaleValues TwoChar() {  // a two-character separator, no grouping
  LocaleValues v;
  v.monDecimal = "<>";
  v.monGrouping = "0;0";
  return v;
}

// A field driven the way its window drives it: the selection the edit would report, fed to each
// call and taken back from each result. Texts mark the selection: "12|,00" is a caret, "1[23],00"
// a selection.
struct Field {
  CLocaleInfo locale;
  CurrencyEditModel model;
  CurrencySelection sel;
  int beeps = 0;
  Command command = Command::None;
  bool handled = true;

  explicit Field(int decimals, LocaleValues v = {}, std::string_view symbol = "") : locale(v), model(locale) {
    model.OnSetSettings(symbol, static_cast<unsigned>(decimals), {});
  }

  void Take(const CurrencyEditModel::Result& r) {
    sel = r.sel;
    beeps += r.beep;
    command = r.command;
    handled = r.handled;
  }

  // Sets the marked text as the field's text ("-0,00" as "-", a negative zero) and the selection.
  void Start(std::string_view marked) {
    std::string plain;
    for (char c : marked) {
      if (c == '|' || c == '[') sel.start = sel.end = static_cast<int>(plain.size());
      else if (c == ']') sel.end = static_cast<int>(plain.size());
      else plain += c;
    }
    const bool negativeZero = plain[0] == '-' && plain.find_first_of("123456789") == std::string::npos;
    model.OnSetText(negativeZero ? "-" : plain.c_str());
    ASSERT_EQ(model.DisplayText(), plain);
  }

  // Characters go to OnChar; {D} Delete, {<} and {>} Shift+Left/Right, {F} F4, {K} focus lost.
  void Type(std::string_view keys) {
    for (size_t i = 0; i < keys.size(); ++i) {
      if (keys[i] != '{') {
        Take(model.OnChar(keys[i], sel));
        continue;
      }
      const char k = keys[i + 1];
      i += 2;
      if (k == 'K') Take(model.OnKillFocus(sel));
      else if (k == 'D') Take(model.OnKeyDown(varion::kVkDelete, false, false, sel));
      else if (k == 'F') Take(model.OnKeyDown(varion::kVkF4, false, false, sel));
      else Take(model.OnKeyDown(k == '<' ? varion::kVkLeft : varion::kVkRight, true, false, sel));
    }
  }

  std::string Marked() const {
    std::string s = model.DisplayText();
    if (sel.start == sel.end) return s.insert(static_cast<size_t>(sel.start), "|");
    s.insert(static_cast<size_t>(sel.end), "]");
    return s.insert(static_cast<size_t>(sel.start), "[");
  }
};

TEST(CurrencyEditModel, EditingRules) {
  struct Case {
    int decimals;
    const char* before;
    const char* keys;
    const char* after;
    int beeps;
  } cases[] = {
      // the integer part; a leading zero changes nothing, a digit before the sign goes behind it
      {2, "0|,00", "5", "5|,00", 0}, {2, "0|,00", "123", "123|,00", 0}, {2, "1|23,00", "9", "1 9|23,00", 0},
      {2, "|1 234,00", "0", "|1 234,00", 0}, {2, "|-12,00", "3", "-3|12,00", 0}, {0, "12|", "3", "123|", 0},
      {2, "123 456 789 012|,00", "3", "123 456 789 012|,00", 0},  // a 13th digit: silence
      {4, "-123 456 789 012|,0000", "3", "-123 456 789 012|,0000", 0},
      // the fraction: overwrite by shifting, nothing behind the editable decimals
      {2, "5,|00", "78", "5,78|", 0}, {2, "5,|12", "9", "5,9|1", 0}, {4, "5,|1234", "9", "5,9|123", 0},
      {2, "5,00|", "7", "5,00|", 1}, {4, "5,0000|", "7", "5,0000|", 1},
      // the decimal character
      {2, "1|2,00", ",", "12,|00", 0}, {0, "|12", ",", "12|", 0},
      // Backspace
      {4, "5|,0000", "\b", "0|,0000", 0}, {4, "-0|,5000", "\b", "0|,5000", 0}, {2, "-5|,25", "\b", "-|0,25", 0},
      {2, "5,|12", "\b", "0|,12", 0}, {2, "5,12|", "\b", "5,1|0", 0}, {2, "1 |234,00", "\b", "|234,00", 0},
      {2, "-|5,00", "\b", "|5,00", 0}, {2, "|5,00", "\b", "|5,00", 0},
      // Delete
      {4, "12|,3456", "{D}", "12|,4560", 0}, {2, "|5,25", "{D}", "0|,25", 0}, {2, "-|5,25", "{D}", "-0|,25", 0},
      {2, "|-5,00", "{D}", "|5,00", 0}, {2, "5,00|", "{D}", "5,00|", 0},
      // a selection
      {2, "1[23],00", "\b", "1|,00", 0}, {4, "5,[12]34", "\b", "5,|3400", 0}, {2, "1[2,3]4", "\b", "1,|40", 0},
      {2, "[12,3]4", "\b", "0|,40", 0}, {2, "1[23],00", "7", "17|,00", 0}, {2, "[1 234,56]", "9", "9|,00", 0},
      {2, "5[,]00", "7", "5,7|0", 0}, {2, "[12],00", "-", "|0,00", 0},
      // the sign and the negative zero; a stale negative zero does not come back
      {2, "0|,00", "-", "-0|,00", 0}, {2, "0|,00", "-5", "-5|,00", 0}, {2, "-0|,00", "{K}", "0|,00", 0},
      {2, "-0|,00", "-", "0|,00", 0}, {2, "12|,00", "-", "-12|,00", 0}, {2, "-12|,00", "-", "12|,00", 0},
      {2, "0|,00", "-\b", "0|,00", 0}, {2, "0|,00", "-5\b", "0|,00", 0}, {2, "0|,00", "-5-\b", "0|,00", 0},
      // Shift+arrows collapse to one caret beside the selection; characters that do nothing
      {2, "12|,00", "{<}", "1|2,00", 0}, {2, "1[2],00", "{>}", "12,|00", 0}, {2, "1|2,00", "a+ \x03", "1|2,00", 0},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(std::string(c.before) + " + " + c.keys);
    Field f(c.decimals);
    ASSERT_NO_FATAL_FAILURE(f.Start(c.before));
    f.Type(c.keys);
    EXPECT_EQ(f.Marked(), c.after);
    EXPECT_EQ(f.beeps, c.beeps);
  }
}

TEST(CurrencyEditModel, SetText) {
  struct Case {
    int decimals;
    const char* text;
    std::int64_t raw;  // the value after it; refused texts keep 7
    bool negativeZero, failed;
  } cases[] = {
      {2, "1,005", 10100, false, false}, {2, "-1,005", -10100, false, false}, {4, "1,005", 10050, false, false},
      {3, "1,2345", 12350, false, false}, {0, "2,5", 30000, false, false}, {2, "", 0, false, false},
      {2, "-", 0, true, false}, {2, "1 234,5 zł", 12345000, false, false}, {2, " 12.5 ", 125000, false, false},
      {2, "abc", 70000, false, true}, {2, "--5", 70000, false, true}, {2, "12a,5x", 70000, false, true},
      {2, "1234567890123", 70000, false, true}, {2, "-999999999999,99", -9999999999999900, false, false},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.text);
    Field f(c.decimals, {}, "zł");
    f.model.OnSetText("7");
    auto r = f.model.OnSetText(c.text);
    EXPECT_EQ(f.model.Value(), Amount::FromRaw(c.raw));
    EXPECT_EQ(f.model.IsNegativeZero(), c.negativeZero);
    EXPECT_EQ(r.failed, c.failed);
    if (c.failed) {
      EXPECT_EQ(r.sel, (CurrencySelection{0, static_cast<int>(r.display.size())}));
    }
  }
  Field f(2);
  f.model.OnSetText("-");
  EXPECT_EQ(f.model.PlainText(), "-0,0000");  // what WM_GETTEXT answers
  f.model.OnSetText("-1234,5");
  EXPECT_EQ(f.model.PlainText(), "-1234,5000");
}

TEST(CurrencyEditModel, PasteAndCopy) {
  Field f(2);
  f.Start("12|,00");
  EXPECT_TRUE(f.model.PasteText("abc", f.sel).failed);
  EXPECT_TRUE(f.model.PasteText(std::string(100000, '9'), f.sel).failed);
  EXPECT_TRUE(f.model.PasteText("--5", f.sel).failed);
  EXPECT_EQ(f.model.Value(), Amount::FromRaw(120000));
  f.model.OnSetSettings("", varion::kSetForbidMinus, f.sel);
  auto r = f.model.PasteText("--5", f.sel);
  EXPECT_TRUE(r.modified && r.valueChanged);
  EXPECT_EQ(f.model.Value(), Amount::FromRaw(50000));
  f.model.PasteText("-1234,5", f.sel);
  EXPECT_EQ(f.model.Value(), Amount::FromRaw(12345000));

  f.Start("[-1 234,56]");
  EXPECT_EQ(f.model.GetCopyText(f.sel), "-1234,56");
  EXPECT_EQ(f.model.GetCopyText({1, 5}), "123");
  EXPECT_EQ(f.model.GetCopyText({3, 3}), "-1234,56");  // nothing selected: the whole amount
  std::string cut;
  f.Take(f.model.Cut({2, 6}, &cut));
  EXPECT_EQ(cut, "234");
  EXPECT_EQ(f.Marked(), "-1|,56");
  EXPECT_EQ(f.model.CopyButtonText(), "-1.56");

  f.model.SetStyle(varion::kStyleReadOnly);
  f.Take(f.model.Cut({0, 6}, &cut));
  EXPECT_EQ(cut, "-1,56");
  EXPECT_EQ(f.model.DisplayText(), "-1,56");
  EXPECT_FALSE(f.model.PasteText("5", f.sel).valueChanged);
  f.Type("9\b-");
  EXPECT_EQ(f.model.DisplayText(), "-1,56");
}

TEST(CurrencyEditModel, Settings) {
  Field f(4);
  f.Start("1|,2345");
  auto r = f.model.OnSetSettings("zł", 2, f.sel);
  EXPECT_TRUE(r.calculatorSettings && r.valueChanged);
  EXPECT_EQ(r.display, "1,23 zł");  // rounded as a set text is
  EXPECT_EQ(f.model.OnSetSettings("", 9, f.sel).display, "1,2300");
  f.model.OnSetText("-999999999999,5");
  EXPECT_EQ(f.model.OnSetSettings("", 0, f.sel).display, "-999 999 999 999");  // not 13 digits
  EXPECT_EQ(f.model.Value(), Amount::FromRaw(-9999999999990000));
  f.model.OnSetSettings("", 4, f.sel);
  f.model.OnSetText("1,23");
  EXPECT_TRUE(f.model.OnSetSettings("", varion::kSetShowCopyButton, f.sel).frameChanged);
  f.model.OnSetSettings("", varion::kSetForbidMinus, f.sel);
  f.Type("-");
  EXPECT_EQ(f.model.Value(), Amount::FromRaw(12300));
  f.model.OnSetSettings("", varion::kSetAllowMinus, f.sel);
  f.Type("-");
  EXPECT_EQ(f.model.Value(), Amount::FromRaw(-12300));
  EXPECT_FALSE(f.model.BalloonPending());
  f.model.OnSetSettings("", varion::kSetBalloonPending, f.sel);
  EXPECT_TRUE(f.model.BalloonPending() && f.model.BalloonByte(0) && f.model.BalloonByte(1));
  EXPECT_EQ(f.model.CopyButtonClicked(), "-1.23");  // two decimals whatever the field shows
}

TEST(CurrencyEditModel, KeysTable) {
  using A = CurrencyKeyAction;
  using varion::kVkDelete, varion::kVkF4, varion::kVkInsert, varion::kVkLeft, varion::kVkRight;
  struct Case {
    unsigned vk;
    const char* state;  // s: Shift, c: Ctrl, r: read-only, n: no calculator button
    A action;
  } cases[] = {
      {kVkLeft, "s", A::SelectLeft}, {kVkRight, "sc", A::SelectRight}, {kVkLeft, "", A::Default},
      {kVkLeft, "sr", A::Ignore}, {kVkDelete, "", A::DeleteForward}, {kVkDelete, "s", A::Cut},
      {kVkDelete, "sr", A::Ignore}, {kVkInsert, "cr", A::Copy}, {kVkInsert, "s", A::Paste},
      {kVkInsert, "", A::Default}, {'C', "cr", A::Copy}, {'V', "c", A::Paste}, {'X', "c", A::Cut},
      {'X', "", A::Default}, {kVkF4, "", A::ToggleCalculator}, {kVkF4, "r", A::Ignore}, {kVkF4, "n", A::Ignore},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(std::to_string(c.vk) + c.state);
    auto has = [&](char k) { return std::string_view(c.state).find(k) != std::string_view::npos; };
    EXPECT_EQ(CurrencyEditModel::KeyActionFor(c.vk, has('s'), has('c'), has('r'), !has('n')), c.action);
  }
  Field f(2);
  f.Start("|5,00");
  f.Type("{<}");
  EXPECT_FALSE(f.handled);  // nothing left of the start: the edit moves the caret itself
  f.Start("5,00|");
  f.Type("{>}");
  EXPECT_FALSE(f.handled);
  f.Type("{F}");
  EXPECT_EQ(f.command, Command::ToggleCalculator);
  f.model.SetStyle(varion::kStyleNoCalculator | varion::kStyleDisabled);
  EXPECT_FALSE(f.model.HasCalculatorBtn() || f.model.IsCtrlEnabled() || f.model.IsReadOnly());
}

TEST(CurrencyEditModel, PositionsBetweenDisplayAndCanonical) {
  struct Case {
    LocaleValues locale;
    const char* symbol;
    const char* text;
    const char* display;
    const char* toCanonical;  // the canonical position of every display boundary
    const char* toDisplay;    // the display position of every canonical boundary
  } cases[] = {
      {{}, "", "-1234,56", "-1 234,56", "0122345678", "01245678999"},
      {{}, "zł", "5", "5,00 zł", "01234444", "0123444"},
      {Swiss(), "", "1234567.5", "1'234'567.50", "011234456789:", "01345789:;<<<"},
      {TwoChar(), "", "12<>5", "12<>50", "0122345", "01245666"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.display);
    CLocaleInfo locale(c.locale);
    CurrencyEditModel m(locale);
    m.OnSetSettings(c.symbol, 2, {});
    m.OnSetText(c.text);
    ASSERT_EQ(m.DisplayText(), c.display);
    std::string toCanonical, toDisplay;
    for (int d = 0; d <= static_cast<int>(m.DisplayText().size()); ++d)
      toCanonical += static_cast<char>('0' + m.ToCanonical(d));
    for (int p = 0; p <= static_cast<int>(m.CanonicalText().size()); ++p)
      toDisplay += static_cast<char>('0' + m.ToDisplay(p));
    EXPECT_EQ(toCanonical, c.toCanonical);
    EXPECT_EQ(toDisplay, c.toDisplay);
  }
  // "," is the decimal character everywhere, the locale's one too.
  Field swiss(2, Swiss());
  swiss.Start("1|2.00");
  swiss.Type(",");
  EXPECT_EQ(swiss.Marked(), "12.|00");
  swiss.Start("1|2.00");
  swiss.Type(".");
  EXPECT_EQ(swiss.Marked(), "12.|00");
}

TEST(CurrencyEditModel, CanonicalRules) {
  // A "-" negates what stands behind it; 18 characters (19 with "-") keep the current value.
  const Amount keep = Amount::FromRaw(5);
  EXPECT_EQ(CurrencyEditModel::TextToCurrency("1-2.3400", keep), Amount::FromRaw(100000 - 23400));
  EXPECT_EQ(CurrencyEditModel::TextToCurrency("-999999999999.9999", keep), Amount::FromRaw(-9999999999999999));
  EXPECT_EQ(CurrencyEditModel::TextToCurrency("1000000000000.0000", keep), keep);
  EXPECT_EQ(CurrencyEditModel::TextToCurrency("-1000000000000.0000", keep), keep);

  struct Case {
    const char* text;
    int pos, decimals;
    bool onEnd;
  } cases[] = {
      {"5.0000", 3, 2, false}, {"5.0000", 4, 2, true},  {"5.0000", 6, 4, true},  {"5.0000", 5, 4, false},
      {"5.0000", 1, 0, true},  {"5.0100", 1, 0, false}, {"5.0010", 5, 2, false},  // a hidden digit: not the end
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(std::string(c.text) + " at " + std::to_string(c.pos));
    EXPECT_EQ(CurrencyEditModel::IsCarretOnEnd(c.text, c.pos, c.decimals), c.onEnd);
  }
  // Behind the shown decimals: reachable only on canonical text.
  std::string text = "5.1234";
  int start = 6, end = 6;
  bool negativeZero = true;
  CurrencyEditModel::DigitDeleteBack(text, start, end, negativeZero);
  EXPECT_EQ(text + std::to_string(start), "5.12305");
}

// --- random editing ---

std::string RandomPaste(std::mt19937_64& rng) {
  static const char* const kPieces[] = {"-", "1", "23", "456", ",", ".", " ", "zł", "--5", "abc", "0", "999999"};
  std::string s;
  for (int n = static_cast<int>(rng() % 6); n > 0; --n) s += kPieces[rng() % std::size(kPieces)];
  return s;
}

// An optional "-", 1 to 12 integer digits with no leading zero, ".", four digits.
bool IsCanonical(const std::string& t) {
  const size_t sign = t[0] == '-', point = t.find('.'), digits = point - sign;
  if (point == std::string::npos || t.size() != point + 5 || digits < 1 || digits > 12) return false;
  if (digits > 1 && t[sign] == '0') return false;
  return t.find_first_not_of("0123456789", sign) == point && t.find_first_not_of("0123456789", point + 1) == t.npos;
}

TEST(CurrencyEditModel, RandomEditingKeepsItsInvariants) {
  varion::testing::SeededRng rng;
  const LocaleValues locales[] = {{}, Swiss(), TwoChar()};
  for (int round = 0; round < 12; ++round) {
    Field f(static_cast<int>(rng() % 5), locales[round % 3], round % 2 ? "zł" : "");
    if (rng() % 2) f.model.OnSetSettings("", varion::kSetForbidMinus, f.sel);
    for (int step = 0; step < 3000; ++step) {
      f.beeps = 0;
      const std::string displayBefore = f.model.DisplayText(), canonBefore = f.model.CanonicalText();
      const CurrencySelection selBefore = f.sel;
      const int caretBefore = f.model.ToCanonical(f.sel.start), size = static_cast<int>(displayBefore.size());
      const unsigned op = rng() % 20;
      std::string what;
      if (op < 16) {  // keys, digits most of them
        static const char* const kKeys[] = {"-", ",", ".", "\b", "\b", "x", "{D}", "{D}", "{<}", "{>}", "{K}"};
        what = op < 10 ? std::string(1, static_cast<char>('0' + rng() % 10)) : kKeys[rng() % std::size(kKeys)];
        f.Type(what);
      } else if (op < 18) {
        const auto pick = [&] { return static_cast<int>(rng() % static_cast<unsigned>(size + 1)); };
        const int a = pick(), b = pick();
        f.sel = {std::min(a, b), std::max(a, b)};
        what = "select";
      } else if (op == 18) {
        what = "paste " + RandomPaste(rng);
        f.Take(f.model.PasteText(what.substr(6), f.sel));
      } else {
        static const unsigned kCodes[] = {0, 1, 2, 3, 4, varion::kSetForbidMinus, varion::kSetAllowMinus};
        const unsigned code = kCodes[rng() % std::size(kCodes)];
        what = "settings " + std::to_string(code);
        f.Take(f.model.OnSetSettings(f.model.Symbol(), code, f.sel));
      }
      SCOPED_TRACE("step " + std::to_string(step) + ": " + what + " on " + f.Marked());

      const std::string canon = f.model.CanonicalText(), display = f.model.DisplayText();
      ASSERT_TRUE(IsCanonical(canon)) << canon;
      const size_t hidden = canon.size() - 4 + static_cast<size_t>(f.model.Decimals());
      ASSERT_EQ(canon.find_first_not_of('0', hidden), std::string::npos) << canon;
      ASSERT_TRUE(0 <= f.sel.start && f.sel.start <= f.sel.end && f.sel.end <= static_cast<int>(display.size()));
      ASSERT_EQ(CurrencyEditModel::TextToCurrency(canon, Amount::Invalid()), f.model.Value());
      ASSERT_TRUE(!f.model.IsNegativeZero() || f.model.Value().Raw() == 0);
      varion::NumberFormat format;
      format.decimal = f.locale.GetSymDec();
      format.thousands = f.locale.GetSymTho();
      ASSERT_EQ(Amount::Parse(display.substr(0, display.find(" zł")), format), f.model.Value()) << display;

      // A refused digit leaves text and caret alone: with a beep where there is no room, in
      // silence as a thirteenth integer digit.
      if (what.size() != 1 || what[0] < '0' || what[0] > '9') continue;
      const size_t intDigits = canonBefore.size() - 5 - (canonBefore[0] == '-');
      const bool thirteenth = intDigits == 12 && selBefore.start == selBefore.end &&
                              caretBefore <= static_cast<int>(canonBefore.size()) - 5;
      if (f.beeps || thirteenth) {
        ASSERT_EQ(display, displayBefore);
        ASSERT_EQ(f.sel, selBefore);
        ASSERT_FALSE(thirteenth && f.beeps);
      }
    }
  }
}

}  // namespace
