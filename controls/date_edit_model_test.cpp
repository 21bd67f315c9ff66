#include "controls/date_edit_model.h"

#include <gtest/gtest.h>

#include "tests/seed.h"

#include <cctype>
#include <cstdio>
#include <map>
#include <random>
#include <string>

#include "controls/date_input.h"

namespace {

using namespace varion;
using DateTools::FixedClock;

COleDateTime D(int y, int m, int d) { return COleDateTime(y, m, d); }
const COleDateTime kNull = COleDateTime::Null();

// Plays a script on the field: characters go to OnChar, "<Name>" presses a key ("^" for Ctrl,
// "!" for Alt), "<Settle>" leaves the field. Returns the number of beeps.
int Play(DateEditModel& m, const std::string& script, DateEditResult* last = nullptr) {
  static const std::map<std::string, int> kKeys = {
      {"Up", keys::kUp},     {"Down", keys::kDown}, {"Left", keys::kLeft},  {"Right", keys::kRight},
      {"Home", keys::kHome}, {"End", keys::kEnd},   {"PgUp", keys::kPrior}, {"PgDn", keys::kNext},
      {"Del", keys::kDelete}, {"Back", keys::kBack}, {"F4", keys::kF4},     {"Tab", keys::kTab}};
  int beeps = 0;
  for (size_t i = 0; i < script.size(); ++i) {
    DateEditResult r;
    if (script[i] == '<') {
      const size_t end = script.find('>', i);
      std::string name = script.substr(i + 1, end - i - 1);
      i = end;
      keys::Modifiers mods;
      for (; name[0] == '^' || name[0] == '!'; name.erase(0, 1)) (name[0] == '^' ? mods.ctrl : mods.alt) = true;
      r = name == "Settle" ? m.Settle() : m.OnKeyDown(kKeys.at(name), mods);
    } else {
      r = m.OnChar(script[i]);
    }
    beeps += r.beep ? 1 : 0;
    if (last) *last = r;
  }
  return beeps;
}

struct DateEdit : ::testing::Test {
  FixedClock clock{D(2025, 12, 10)};
};

TEST_F(DateEdit, DigitEntry) {
  struct Case {
    const char* pattern;
    COleDateTime start;
    const char* script;
    const char* text;
    const char* value;  // canonical text
    DateEntry entry;
    int caret, beeps;
  } cases[] = {
      {"dd-mm-rrrr", kNull, "4", "04-mm-rrrr", "", DateEntry::Partial, 3, 0},  // 4 is a day at once
      {"dd-mm-rrrr", kNull, "3", "3d-mm-rrrr", "", DateEntry::Partial, 1, 0},  // 30 and 31 may follow
      {"dd-mm-rrrr", kNull, "051", "05-1m-rrrr", "", DateEntry::Partial, 4, 0},
      {"dd-mm-rrrr", kNull, "050202024", "05-02-2024", "2024-02-05", DateEntry::Date, 6, 0},  // leading 0 dropped
      {"dd-mm-rrrr", kNull, "3x2", "3d-mm-rrrr", "", DateEntry::Partial, 1, 2},
      {"dd-mm-rrrr", kNull, "1.3.2024", "01-03-2024", "2024-03-01", DateEntry::Date, 6, 0},
      {"dd-mm-rrrr", kNull, "0.", "0d-mm-rrrr", "", DateEntry::Partial, 1, 1},
      {"dd-mm-rrrr", kNull, "1.3.24.", "01-03-24rr", "", DateEntry::Partial, 8, 1},  // a year needs four digits
      {"dd-mm-rrrr", kNull, "31022024", "31-02-2024", "", DateEntry::NotADate, 6, 0},
      {"dd-mm-rrrr", kNull, "01011850", "01-01-1850", "", DateEntry::OutOfRange, 6, 0},
      {"dd-mm-rrrr", D(2024, 3, 15), "10", "10-03-2024", "2024-03-10", DateEntry::Date, 3, 0},
      {"dd-mm-rrrr", D(2024, 3, 15), "3102", "31-02-2024", "2024-03-31", DateEntry::NotADate, 6, 0},
      {"yyyy-mm-dd", kNull, "20241231", "2024-12-31", "2024-12-31", DateEntry::Date, 8, 0},
      {"YYYY/MM/DD", kNull, "2024/1/5", "2024/01/05", "2024-01-05", DateEntry::Date, 8, 0},
      {"d.m.yy", kNull, "452024", "04.05.2024", "2024-05-04", DateEntry::Date, 6, 0},
      {"mm.rrrr", kNull, "32024", "03.2024", "2024-03-01", DateEntry::Date, 3, 0},  // no day: the first
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(std::string(c.pattern) + " " + c.script);
    DateEditModel m(&clock);
    m.SetPattern(c.pattern);
    ASSERT_TRUE(m.SetValue(c.start));
    EXPECT_EQ(Play(m, c.script), c.beeps);
    EXPECT_EQ(m.GetText(), c.text);
    EXPECT_EQ(m.GetCanonicalText(), c.value);
    EXPECT_EQ(m.GetEntry(), c.entry);
    EXPECT_EQ(m.GetCaret(), c.caret);
  }
}

TEST_F(DateEdit, Keys) {
  struct Case {
    COleDateTime start;
    const char* script;
    const char* text;
    const char* value;
    int beeps;
  } cases[] = {
      {D(2024, 1, 31), "<Up>", "01-02-2024", "2024-02-01", 0},  // the day across the month end
      {D(2024, 3, 1), "-", "29-02-2024", "2024-02-29", 0},
      {D(2024, 1, 31), "<Right><Up>", "29-02-2024", "2024-02-29", 0},  // February has no 31st
      {D(2024, 2, 29), "<End><Up>", "28-02-2025", "2025-02-28", 0},
      {D(2024, 1, 31), "<PgUp>", "29-02-2024", "2024-02-29", 0},
      {D(2024, 1, 31), "<PgDn>", "31-12-2023", "2023-12-31", 0},
      {D(2100, 12, 31), "<Up><End><Up><PgUp>", "31-12-2100", "2100-12-31", 3},  // out of range
      {D(1900, 1, 1), "<Down>", "01-01-1900", "1900-01-01", 1},
      {D(2024, 5, 5), "<^Home>", "01-01-1900", "1900-01-01", 0},
      {D(2024, 5, 5), "<^End>", "31-12-2100", "2100-12-31", 0},
      {D(2024, 5, 5), "T", "10-12-2025", "2025-12-10", 0},
      {kNull, "<Up><PgDn>", "dd-mm-rrrr", "", 2},  // no day to step from
      {D(2024, 5, 5), "<Del>", "dd-05-2024", "2024-05-05", 0},  // unfinished: the value stays
      {D(2024, 5, 5), "<Del><Up>", "dd-05-2024", "2024-05-05", 1},
      {D(2024, 5, 5), "<Del><Settle>", "05-05-2024", "2024-05-05", 1},
      {D(2024, 5, 5), "<^Del>", "dd-mm-rrrr", "", 0},
      {D(2024, 5, 5), "<Right><Back><Back>", "dd-mm-2024", "2024-05-05", 0},
      {D(2024, 5, 5), "<Del><Del><Right><Del><Right><Del>", "dd-mm-rrrr", "", 0},  // empty: null
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.script);
    DateEditModel m(&clock);
    ASSERT_TRUE(m.SetValue(c.start));
    EXPECT_EQ(Play(m, c.script), c.beeps);
    EXPECT_EQ(m.GetText(), c.text);
    EXPECT_EQ(m.GetCanonicalText(), c.value);
  }
  DateEditModel m(&clock);
  DateEditResult r;
  for (const char* script : {"<F4>", "<!Down>", "<!Up>"}) EXPECT_TRUE((Play(m, script, &r), r.dropDown)) << script;
  EXPECT_FALSE((Play(m, "<Tab>", &r), r.handled));
}

TEST_F(DateEdit, TextsInAndOut) {
  struct Case {
    const char* pattern;
    const char* text;
    bool ok;
    const char* shown;
  } cases[] = {
      {"dd-mm-rrrr", "2024-03-31", true, "31-03-2024"},
      {"dd-mm-rrrr", " 31.3.2024", true, "31-03-2024"},
      {"dd-mm-rrrr", "2024-02-29 13:45:10", true, "29-02-2024"},  // the time a loaded value carries
      {"dd-mm-rrrr", "", true, "dd-mm-rrrr"},
      {"dd-mm-rrrr", "31-02-2024", false, "05-05-2024"},
      {"dd-mm-rrrr", "1850-01-01", false, "05-05-2024"},
      {"dd-mm-rrrr", "05-05-2024x", false, "05-05-2024"},
      {"dd-mm-rrrr", "3d-mm-rrrr", false, "05-05-2024"},
      {"dd--mm. rrrr", "31--12. 2024", true, "31--12. 2024"},
      {"rrrr-mm-dd", "12.3.2024", true, "2024-03-12"},  // numbers in the pattern's order
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(std::string(c.pattern) + " " + c.text);
    DateEditModel m(&clock);
    m.SetPattern(c.pattern);
    ASSERT_TRUE(m.SetValue(D(2024, 5, 5)));
    EXPECT_EQ(m.SetText(c.text), c.ok);
    EXPECT_EQ(m.GetText(), c.shown);
    EXPECT_EQ(m.Paste(c.text).beep, !c.ok || !*c.text);
  }
}

TEST_F(DateEdit, RangeAndCalendar) {
  DateEditModel m(&clock);
  EXPECT_TRUE(m.GetLower() == D(1900, 1, 1) && m.GetUpper() == D(2100, 12, 31));
  ASSERT_TRUE(m.SetValue(D(2024, 6, 15)));
  struct Case {
    COleDateTime lower, upper;
    bool ok;
    const char* value;
  } cases[] = {
      {D(2024, 1, 1), D(2024, 1, 1), false, "2024-06-15"},  // equal limits
      {D(2024, 2, 1), D(2024, 1, 1), false, "2024-06-15"},
      {COleDateTime::Invalid(), kNull, false, "2024-06-15"},
      {D(2024, 1, 1), D(2024, 6, 1), true, "2024-06-01"},  // the value moves to the nearest limit
      {D(2024, 6, 10), kNull, true, "2024-06-10"},
      {kNull, kNull, true, "2024-06-10"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.lower.Format("%Y-%m-%d") + " " + c.upper.Format("%Y-%m-%d"));
    EXPECT_EQ(m.SetRange(c.lower, c.upper), c.ok);
    EXPECT_EQ(m.GetCanonicalText(), c.value);
  }
  ASSERT_TRUE(m.SetRange(D(2024, 1, 1), D(2024, 12, 31)));
  EXPECT_FALSE(m.OnCalendarSelect(D(2025, 1, 1)).handled);
  EXPECT_FALSE(m.OnCalendarSelect(D(2023, 12, 31)).handled);
  const DateEditResult r = m.OnCalendarSelect(COleDateTime(2024, 12, 31, 18, 30));
  EXPECT_TRUE(r.valueChanged);
  EXPECT_EQ(m.GetCanonicalText(), "2024-12-31");  // time zero
  EXPECT_FALSE(m.GetValue().HasTimeOfDay());
  EXPECT_EQ(Play(m, "<End>2025"), 0);  // typed beyond the range: unfinished, not taken
  EXPECT_EQ(m.GetEntry(), DateEntry::OutOfRange);
  EXPECT_EQ(m.GetCanonicalText(), "2024-12-31");
}

// Formats a day as the pattern shows it, independently of the tokens.
std::string Shown(const std::string& pattern, const COleDateTime& v) {
  std::string out;
  for (size_t i = 0; i < pattern.size();) {
    size_t j = i;
    const char c = static_cast<char>(std::tolower(static_cast<unsigned char>(pattern[i])));
    while (j < pattern.size() && std::tolower(static_cast<unsigned char>(pattern[j])) == c) ++j;
    char buf[8];
    if (c == 'd' || c == 'm') std::snprintf(buf, sizeof buf, "%02d", c == 'd' ? v.GetDay() : v.GetMonth());
    if (c == 'r' || c == 'y') std::snprintf(buf, sizeof buf, "%04d", v.GetYear());
    out += (c == 'd' || c == 'm' || c == 'r' || c == 'y') ? std::string(buf) : pattern.substr(i, j - i);
    i = j;
  }
  return out;
}

// Random typing, keys, pastes, ranges and patterns: the shown text always reads back as the
// value, or as no date at all while the entry is unfinished.
TEST(DateEditProperty, RandomUse) {
  varion::testing::SeededRng rng;
  auto pick = [&rng](int n) { return static_cast<int>(rng() % static_cast<unsigned>(n)); };
  auto randomDay = [&] { return COleDateTime(1850 + pick(300), 1 + pick(12), 1 + pick(28)); };
  const char* patterns[] = {"dd-mm-rrrr", "yyyy-MM-dd", "d.m.yy", "dd/mm/rrrr"};
  const int keyList[] = {keys::kUp,    keys::kDown, keys::kLeft,   keys::kRight, keys::kHome,
                         keys::kEnd,   keys::kPrior, keys::kNext,  keys::kDelete, keys::kBack};
  const char chars[] = "0123456789012345678901234567890.-+Tx/";
  FixedClock clock(D(2025, 12, 10));
  DateEditModel m(&clock);
  std::string pattern = patterns[0];
  for (int step = 0; step < 20000; ++step) {
    switch (pick(20)) {
      case 0: pattern = patterns[pick(4)]; m.SetPattern(pattern); break;
      case 1: m.SetRange(pick(3) ? randomDay() : kNull, pick(3) ? randomDay() : kNull); break;
      case 2: m.Paste(pick(2) ? randomDay().Format(pick(2) ? "%d.%m.%Y" : "%Y-%m-%d") : "12-x-2024"); break;
      case 3: m.OnCalendarSelect(randomDay()); break;
      case 4: m.Settle(); break;
      case 5: m.SetCaretPos(pick(12)); break;
      case 6: clock.Set(randomDay()); break;
      case 7:
      case 8:
      case 9: m.OnKeyDown(keyList[pick(10)], {.ctrl = pick(8) == 0}); break;
      default: m.OnChar(chars[pick(sizeof chars - 1)]); break;
    }
    SCOPED_TRACE("step " + std::to_string(step) + " \"" + m.GetText() + "\"");
    const COleDateTime value = m.GetValue();
    ASSERT_TRUE(value.IsNull() || (m.IsInRange(value) && !value.HasTimeOfDay()));
    const COleDateTime read = m.ParseText(m.GetText());
    if (m.IsUnfinished()) {
      ASSERT_FALSE(read.IsValid());
    } else {
      ASSERT_EQ(read, value);
      if (value.IsValid()) { ASSERT_EQ(m.GetText(), Shown(pattern, value)); }
    }
    const std::string canonical = m.GetCanonicalText();
    ASSERT_EQ(canonical.empty(), value.IsNull());
    if (!canonical.empty()) { ASSERT_EQ(DateTime::ParseIso(canonical), value); }
    ASSERT_TRUE(m.GetCaret() >= 0 && m.GetCaret() <= static_cast<int>(m.GetText().size()));
  }
}

}  // namespace
