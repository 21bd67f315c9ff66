#include "controls/time_edit_model.h"

#include <gtest/gtest.h>

#include <map>
#include <string>

namespace {

using namespace varion;

// Plays a script on the field: characters go to OnChar, "<Name>" presses a key ("^" for Ctrl),
// "<Paste:text>" pastes. Returns the number of beeps; `changes` counts value changes.
int Play(TimeEditModel& m, const std::string& script, int* changes = nullptr) {
  static const std::map<std::string, int> kKeys = {
      {"Up", keys::kUp},     {"Down", keys::kDown}, {"Left", keys::kLeft}, {"Right", keys::kRight},
      {"Home", keys::kHome}, {"End", keys::kEnd},   {"Del", keys::kDelete}, {"Back", keys::kBack},
      {"Tab", keys::kTab}};
  int beeps = 0;
  for (size_t i = 0; i < script.size(); ++i) {
    DateEditResult r;
    if (script[i] == '<') {
      const size_t end = script.find('>', i);
      std::string name = script.substr(i + 1, end - i - 1);
      i = end;
      keys::Modifiers mods;
      if (name[0] == '^') {
        mods.ctrl = true;
        name.erase(0, 1);
      }
      r = name.rfind("Paste:", 0) == 0 ? m.Paste(name.substr(6)) : m.OnKeyDown(kKeys.at(name), mods);
    } else {
      r = m.OnChar(script[i]);
    }
    beeps += r.beep ? 1 : 0;
    if (changes && r.valueChanged) ++*changes;
  }
  return beeps;
}

TEST(TimeEdit, KeysGiveTextAndCanonical) {
  struct Case {
    bool seconds;
    const char* start;  // SetText before the script
    const char* script;
    const char* text;
    const char* canonical;
    int caret, beeps;
  } cases[] = {
      // Digit entry: 0..2 wait for the hour's second digit, 3..9 are an hour at once.
      {false, "", "", "gg:mm", "", 0, 0},
      {false, "", "2", "2g:mm", "", 1, 0},
      {false, "", "7", "07:mm", "", 3, 0},
      {false, "", "0930", "09:30", "09:30", 3, 0},
      {false, "", "2359", "23:59", "23:59", 3, 0},
      {false, "", "24", "2g:mm", "", 1, 1},  // no hour 24
      {false, "", "2x3", "23:mm", "", 3, 1},
      {false, "", "96", "09:06", "09:06", 3, 0},  // 6..9 are a minute at once
      {false, "", "5", "05:mm", "", 3, 0},
      {false, "", "1260", "12:0m", "", 4, 0},  // the complete last field starts over
      // A separator finishes a field as typed; right after a field completed by itself it is
      // the habitual one and does not skip the next field.
      {false, "", "9:5", "09:5m", "", 4, 0},
      {false, "", "9:5:", "09:05", "09:05", 3, 0},
      {false, "", "1:2", "01:2m", "", 4, 0},
      {false, "", "0:0:", "00:00", "00:00", 3, 0},
      {false, "", "12:30", "12:30", "12:30", 3, 0},
      {true, "", "1:2:3:", "01:02:03", "01:02:03", 6, 0},
      {true, "", "235959", "23:59:59", "23:59:59", 6, 0},
      {true, "", "1230", "12:30:ss", "", 6, 0},
      // A complete field starts over with the next digit.
      {false, "09:30", "15", "15:30", "15:30", 3, 0},
      {false, "09:30", "<Right>4", "09:4m", "", 4, 0},
      // Stepping wraps inside the field and never carries into the next one.
      {false, "09:30", "<Up>", "10:30", "10:30", 0, 0},
      {false, "23:30", "<Up>", "00:30", "00:30", 0, 0},
      {false, "00:30", "<Down>", "23:30", "23:30", 0, 0},
      {false, "09:59", "<Right><Up>", "09:00", "09:00", 3, 0},
      {false, "09:00", "<End><Down>", "09:59", "09:59", 3, 0},
      {true, "09:00:59", "<End>+", "09:00:00", "09:00:00", 6, 0},
      {true, "09:00:00", "<End>--", "09:00:58", "09:00:58", 6, 0},
      {false, "", "<Up>", "00:mm", "", 0, 0},  // an empty field steps from nothing
      {false, "", "<Right><Down>", "gg:59", "", 3, 0},
      {false, "", "2<Up>", "03:mm", "", 0, 0},  // a waiting digit steps from itself
      // Moving between fields stops at the ends.
      {false, "09:30", "<Left><Left>", "09:30", "09:30", 0, 0},
      {true, "09:30:00", "<Right><Right><Right>", "09:30:00", "09:30:00", 6, 0},
      {true, "09:30:00", "<End><Home>", "09:30:00", "09:30:00", 0, 0},
      // Tab is the dialog's: the field ignores it.
      {false, "09:30", "<Tab>", "09:30", "09:30", 0, 0},
      // Clearing.
      {false, "09:30", "<Del>", "gg:30", "", 0, 0},
      {false, "09:30", "<Right><Back>", "09:mm", "", 3, 0},
      {false, "09:30", "<Right><Back><Back>", "gg:mm", "", 0, 0},  // an empty field clears the one before
      {true, "09:30:15", "<End><^Del>", "gg:mm:ss", "", 0, 0},
      {false, "09:30", "<^Back>14", "14:mm", "", 3, 0},
      // Characters a time cannot hold.
      {false, "09:30", "a/", "09:30", "09:30", 0, 2},
      // Pasting: the field's forms only, the caret back on the hour.
      {false, "", "<Paste:9:30>", "09:30", "09:30", 0, 0},
      {false, "", "<Paste: 0930 >", "09:30", "09:30", 0, 0},
      {true, "", "<Paste:12:30>", "12:30:00", "12:30:00", 0, 0},
      {false, "09:30", "<Paste:25:00>", "09:30", "09:30", 0, 1},
      {false, "09:30", "<Paste:12:30:15>", "09:30", "09:30", 0, 1},  // no seconds in this field
      {false, "09:30", "<Paste:>", "09:30", "09:30", 0, 1},
      {false, "09:30", "<Paste:gg:mm>", "gg:mm", "", 0, 0},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(std::string(c.start) + " / " + c.script);
    TimeEditModel m(c.seconds);
    ASSERT_TRUE(m.SetText(c.start));
    EXPECT_EQ(Play(m, c.script), c.beeps);
    EXPECT_EQ(m.GetText(), c.text);
    EXPECT_EQ(m.GetCanonicalText(), c.canonical);
    EXPECT_EQ(m.GetCaret(), c.caret);
  }
}

TEST(TimeEdit, ProgramTextAndForm) {
  TimeEditModel m;
  const std::string huge(100000, '1');
  struct Case {
    const char* text;
    bool taken;
    const char* shown;
  } cases[] = {
      {"7:05", true, "07:05"}, {"", true, "gg:mm"},  {"12:60", false, "gg:mm"},
      {"ab", false, "gg:mm"},  {"1:2:3:4", false, "gg:mm"}, {huge.c_str(), false, "gg:mm"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.text);
    m.SetText("");
    EXPECT_EQ(m.SetText(c.text), c.taken);
    EXPECT_EQ(m.GetText(), c.shown);
  }
  // A shown time survives switching the seconds on and off.
  ASSERT_TRUE(m.SetText("18:45"));
  m.SetSeconds(true);
  EXPECT_EQ(m.GetCanonicalText(), "18:45:00");
  ASSERT_TRUE(m.SetText("18:45:30"));
  m.SetSeconds(false);
  EXPECT_EQ(m.GetCanonicalText(), "18:45");
}

TEST(TimeEdit, ValueChangesAreReportedOncePerChange) {
  TimeEditModel m;
  int changes = 0;
  Play(m, "09", &changes);  // still incomplete: no value yet
  EXPECT_EQ(changes, 0);
  Play(m, "3", &changes);
  EXPECT_EQ(changes, 0);
  Play(m, "0", &changes);  // 09:30
  EXPECT_EQ(changes, 1);
  Play(m, "<Left><Up><Down>", &changes);
  EXPECT_EQ(changes, 3);
  Play(m, "<Del>", &changes);  // back to unfinished
  EXPECT_EQ(changes, 4);
}

TEST(TimeEdit, ClickPlacesTheCaretOnAField) {
  TimeEditModel m(true);
  ASSERT_TRUE(m.SetText("10:20:30"));
  // Positions 0..7 of "10:20:30"; a separator belongs to the field after it, past the end to the
  // last field.
  const int fields[] = {0, 0, 2, 2, 2, 4, 4, 4, 4, 4};
  for (int pos = 0; pos < 10; ++pos) {
    m.SetCaretPos(pos);
    EXPECT_EQ(m.GetField(), fields[pos]) << pos;
    int start = 0, length = 0;
    m.GetFieldSpan(start, length);
    EXPECT_EQ(start, fields[pos] / 2 * 3) << pos;
    EXPECT_EQ(length, 2);
  }
}

}  // namespace
