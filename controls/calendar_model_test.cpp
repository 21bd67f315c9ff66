#include "controls/calendar_model.h"

#include <gtest/gtest.h>

#include "tests/seed.h"

#include <random>
#include <string>


namespace {

using namespace varion;
using DateTools::FixedClock;

COleDateTime D(int y, int m, int d) { return COleDateTime(y, m, d); }
const COleDateTime kNull = COleDateTime::Null();

std::string Codes(const CalAction& a) {
  std::string s;
  for (int i = 0; i < a.count; ++i) s += (s.empty() ? "" : " ") + std::to_string(a.notifications[i].code);
  return s;
}

const CalendarMetrics kMetrics{16, 18, 14, 60, 4, 30, 100, 80};

struct Calendar : ::testing::Test {
  FixedClock clock{D(2025, 12, 10)};  // a Wednesday; 1 December 2025 is a Monday
  CalendarModel cal{&clock};
  CalendarLayout layout = ComputeCalendarLayout(kMetrics);

  static void Center(const CalRect& r, int& x, int& y) { x = (r.left + r.right) / 2, y = (r.top + r.bottom) / 2; }
  CalAction Down(const CalRect& r) { return cal.OnLButtonDown(layout, (r.left + r.right) / 2, (r.top + r.bottom) / 2); }
};

TEST_F(Calendar, CellsOfDecember2025) {
  ASSERT_TRUE(cal.SetRange(kCalRangeUpper, kNull, D(2025, 12, 28)));
  CalendarCells cells;
  cal.GetCells(layout, cells);
  EXPECT_EQ(cal.GetTitle(), "Grudzień 2025");
  using C = CalendarCell;
  struct Case {
    int index;
    unsigned flags;
    const char* holiday;
  } cases[] = {
      {0, C::kInMonth, nullptr}, {5, C::kInMonth | C::kWeekend, nullptr}, {9, C::kInMonth | C::kToday | C::kFocused, nullptr},
      {23, C::kInMonth | C::kHoliday, "Wigilia"}, {24, C::kInMonth | C::kHoliday, "Boże Narodzenie (1. dzień)"},
      {27, C::kInMonth | C::kWeekend, nullptr},  // the upper limit is included
      {28, C::kInMonth | C::kOutOfRange, nullptr},
      {31, C::kOutOfRange | C::kHoliday, "Nowy Rok"},  // 1 January 2026, dimmed
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.index);
    const CalendarCell& cell = cells[static_cast<size_t>(c.index)];
    EXPECT_EQ(cell.flags, c.flags);
    EXPECT_STREQ(cell.holidayName ? cell.holidayName : "", c.holiday ? c.holiday : "");
    EXPECT_EQ(cell.rect, layout.Cell(c.index));
  }
  EXPECT_TRUE(cells[41].day == 11 && cells[41].month == 1);
}

TEST_F(Calendar, ArrowKeys) {
  struct Case {
    COleDateTime from, lower, upper;
    int key;
    COleDateTime to;
    const char* codes;
    CalAction::Redraw redraw;
  } cases[] = {
      {D(2025, 12, 10), kNull, kNull, keys::kRight, D(2025, 12, 11), "-746 -749", CalAction::kRedrawCells},
      {D(2025, 12, 10), kNull, kNull, keys::kDown, D(2025, 12, 17), "-746 -749", CalAction::kRedrawCells},
      {D(2025, 12, 31), kNull, kNull, keys::kRight, D(2026, 1, 1), "-746 -749", CalAction::kRedrawAll},
      {D(2025, 12, 3), kNull, kNull, keys::kUp, D(2025, 11, 26), "-746 -749", CalAction::kRedrawAll},
      {D(2024, 2, 26), kNull, kNull, keys::kDown, D(2024, 3, 4), "-746 -749", CalAction::kRedrawAll},
      {D(2025, 12, 10), kNull, D(2025, 12, 16), keys::kDown, D(2025, 12, 10), "", CalAction::kRedrawNone},
      {D(2025, 12, 10), D(2025, 12, 10), kNull, keys::kLeft, D(2025, 12, 10), "", CalAction::kRedrawNone},
      {D(2025, 12, 10), D(2025, 12, 3), kNull, keys::kUp, D(2025, 12, 3), "-746 -749", CalAction::kRedrawCells},
      {D(9999, 12, 31), kNull, kNull, keys::kRight, D(9999, 12, 31), "", CalAction::kRedrawNone},
      {D(100, 1, 3), kNull, kNull, keys::kUp, D(100, 1, 3), "", CalAction::kRedrawNone},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.from.Format("%Y-%m-%d") + " key " + std::to_string(c.key));
    ASSERT_TRUE(cal.SetRange(0, kNull, kNull));
    ASSERT_TRUE(cal.SetCurSel(c.from));
    if (c.lower.IsValid()) { ASSERT_TRUE(cal.SetRange(kCalRangeLower, c.lower, kNull)); }
    if (c.upper.IsValid()) { ASSERT_TRUE(cal.SetRange(kCalRangeUpper, kNull, c.upper)); }
    const int before = cal.GetFocusedIndex();
    CalAction a = cal.OnKeyDown(c.key);
    EXPECT_TRUE(a.handled);
    EXPECT_EQ(cal.GetFocusedDate(), c.to);
    EXPECT_EQ(Codes(a), c.codes);
    EXPECT_EQ(a.redraw, c.redraw);
    if (c.redraw == CalAction::kRedrawCells) { EXPECT_TRUE(a.cells[0] == before && a.cells[1] == cal.GetFocusedIndex()); }
    for (int i = 0; i < a.count; ++i) EXPECT_EQ(a.notifications[i].date, c.to);
  }
}

TEST_F(Calendar, SetRangeRules) {
  struct Case {
    unsigned preFlags;
    COleDateTime preLower, preUpper;
    unsigned flags;
    COleDateTime lower, upper;
    bool ok;
    unsigned flagsAfter;
    COleDateTime focus;
  } cases[] = {
      {0, kNull, kNull, 3, D(2025, 12, 1), D(2025, 12, 31), true, 3, D(2025, 12, 10)},
      {0, kNull, kNull, 3, D(2025, 12, 31), D(2025, 12, 31), false, 0, D(2025, 12, 10)},  // equal limits
      {0, kNull, kNull, 3, D(2025, 12, 31), D(2025, 12, 1), false, 0, D(2025, 12, 10)},
      {0, kNull, kNull, 3, kNull, D(2025, 12, 31), false, 0, D(2025, 12, 10)},
      {0, kNull, kNull, 3, COleDateTime(2025, 12, 1, 23), COleDateTime(2025, 12, 1, 23, 30), false, 0, D(2025, 12, 10)},
      {2, kNull, D(2025, 12, 20), 1, D(2025, 12, 20), kNull, false, 2, D(2025, 12, 10)},
      {2, kNull, D(2025, 12, 20), 1, D(2025, 12, 19), kNull, true, 3, D(2025, 12, 19)},  // the focus follows
      {1, D(2025, 12, 5), kNull, 2, kNull, D(2025, 12, 5), false, 1, D(2025, 12, 10)},
      {1, D(2025, 12, 5), kNull, 2, COleDateTime::Invalid(), D(2025, 12, 6), true, 3, D(2025, 12, 6)},
      {3, D(2025, 12, 5), D(2025, 12, 20), 0, kNull, kNull, true, 0, D(2025, 12, 10)},
      {0, kNull, kNull, 3, D(2026, 1, 5), D(2026, 2, 1), true, 3, D(2026, 1, 5)},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(std::to_string(c.flags) + " " + c.lower.Format("%Y-%m-%d") + " " + c.upper.Format("%Y-%m-%d"));
    CalendarModel fresh(&clock);
    ASSERT_TRUE(fresh.SetRange(c.preFlags, c.preLower, c.preUpper));
    EXPECT_EQ(fresh.SetRange(c.flags, c.lower, c.upper), c.ok);
    COleDateTime lower, upper;
    EXPECT_EQ(fresh.GetRange(lower, upper), c.flagsAfter);
    EXPECT_EQ(fresh.GetFocusedDate(), c.focus);
    EXPECT_EQ(fresh.GetDisplayedMonth(), c.focus.GetMonth());
  }
}

TEST_F(Calendar, ClosingKeysOnlyWhileDroppedDown) {
  struct Case {
    bool dropped;
    int key;
    bool handled, hide;
    const char* codes;
  } cases[] = {{true, keys::kEscape, true, true, "-5002"}, {true, keys::kTab, true, true, "-5002"},
               {true, keys::kF4, true, true, "-5002"},     {true, keys::kReturn, true, true, "-5001"},
               {false, keys::kEscape, false, false, ""},   {false, keys::kReturn, false, false, ""}};
  for (const Case& c : cases) {
    SCOPED_TRACE(std::to_string(c.key) + (c.dropped ? " dropped" : ""));
    cal.SetDroppedDown(c.dropped);
    cal.OnShow(true);
    CalAction a = cal.OnKeyDown(c.key);
    EXPECT_TRUE(a.handled == c.handled && a.hide == c.hide);
    EXPECT_EQ(Codes(a), c.codes);
    EXPECT_EQ(Codes(cal.OnKeyDown(c.key)), "");  // a hidden drop-down closes once
  }
  cal.SetDroppedDown(true), cal.OnShow(true);
  EXPECT_EQ(Codes(cal.OnActivateApp(true)), "");
  EXPECT_EQ(Codes(cal.OnActivateApp(false)), "-5002");
  cal.OnShow(true);
  EXPECT_EQ(Codes(cal.OnOutsidePress()), "-5002");
}

TEST_F(Calendar, MouseAndCommands) {
  struct Case {
    bool dropped;
    COleDateTime upper;
    int pressCell, releaseCell;  // -1: the area instead
    CalHitTestValue pressArea;
    const char* downCodes;
    const char* upCodes;
    COleDateTime focus;
  } cases[] = {
      {false, kNull, 15, 15, kCalHitDays, "", "-746 -749 -2", D(2025, 12, 16)},
      {true, kNull, 15, 15, kCalHitDays, "", "-746 -749 -5001 -2", D(2025, 12, 16)},
      {false, kNull, 15, 16, kCalHitDays, "", "-2", D(2025, 12, 10)},  // moved off the pressed day
      {false, D(2025, 12, 12), 15, 15, kCalHitDays, "", "-2", D(2025, 12, 10)},  // outside the range
      {false, kNull, 35, 35, kCalHitDays, "", "-746 -749 -2", D(2026, 1, 5)},  // a neighbouring month
      {false, kNull, -1, -1, kCalHitPrev, "-749", "-2", D(2025, 11, 10)},
      {false, kNull, -1, -1, kCalHitNext, "-749", "-2", D(2026, 1, 10)},
      {false, kNull, -1, -1, kCalHitYear, "", "-2", D(2025, 12, 10)},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(std::to_string(c.pressCell) + "/" + std::to_string(c.pressArea));
    CalendarModel m(&clock);
    m.SetDroppedDown(c.dropped), m.OnShow(true);
    if (c.upper.IsValid()) { ASSERT_TRUE(m.SetRange(kCalRangeUpper, kNull, c.upper)); }
    const CalRect areas[] = {{}, {}, layout.prev, layout.next, {}, {}, {}, layout.year};
    const CalRect press = c.pressCell >= 0 ? layout.Cell(c.pressCell) : areas[c.pressArea];
    int x, y;
    Center(press, x, y);
    CalAction down = m.OnLButtonDown(layout, x, y);
    EXPECT_TRUE(down.takeFocus && down.capture == (c.pressCell >= 0));
    EXPECT_EQ(Codes(down), c.downCodes);
    Center(c.releaseCell >= 0 ? layout.Cell(c.releaseCell) : press, x, y);
    CalAction up = m.OnLButtonUp(layout, x, y);
    EXPECT_EQ(Codes(up), c.upCodes);
    EXPECT_EQ(up.hide, c.dropped && std::string(c.upCodes).find("-5001") != std::string::npos);
    EXPECT_EQ(m.GetFocusedDate(), c.focus);
    EXPECT_EQ(m.GetPressedIndex(), -1);
  }

  EXPECT_TRUE(Down(layout.month).openMonthsMenu);
  EXPECT_EQ(Codes(cal.OnCommand(kCalCmdFirstMonth + 11)), "");  // December is shown
  EXPECT_EQ(Codes(cal.OnCommand(kCalCmdFirstMonth + 2)), "-749");
  EXPECT_EQ(cal.GetFocusedDate(), D(2025, 3, 10));
  EXPECT_EQ(Codes(Down(layout.today)), "-749");  // the footer goes to today
  EXPECT_EQ(Codes(cal.OnKeyDown(keys::kHome)), "");  // already today: nothing to say
  EXPECT_TRUE(cal.OnKeyDown(keys::kNext).handled);
  EXPECT_EQ(Codes(cal.OnCommand(kCalCmdGoToToday)), "-749");
  EXPECT_FALSE(cal.OnCommand(4).handled);
  ASSERT_TRUE(cal.SetCurSel(D(2024, 1, 31)));
  EXPECT_EQ(Codes(cal.OnKeyDown(keys::kNext)), "-746 -749");
  EXPECT_EQ(cal.GetFocusedDate(), D(2024, 2, 29));  // a day February lacks becomes its last
  ASSERT_TRUE(cal.SetRange(kCalRangeLower, D(2024, 2, 1), kNull));
  EXPECT_EQ(Codes(cal.OnKeyDown(keys::kPrior)), "-746 -749");
  EXPECT_EQ(cal.GetFocusedDate(), D(2024, 2, 1));  // stopped at the limit
  EXPECT_EQ(Codes(cal.OnKeyDown(keys::kPrior)), "");
  clock.Set(D(2024, 1, 15));
  EXPECT_EQ(Codes(cal.GoToToday()), "");  // today is outside the range
}

TEST_F(Calendar, TextsAndClipboardKeys) {
  const std::pair<const char*, const char*> cases[] = {  // text, the selection after it
      {"2024-02-29", "2024-02-29"}, {"24.12.2025", "2025-12-24"}, {" 1/3/2024 ", "2024-03-01"},
      {"2100-12-31 13:45", "2100-12-31"}, {"2023-02-29", nullptr}, {"jutro", nullptr}, {"", nullptr}};
  for (const auto& [text, after] : cases) {
    SCOPED_TRACE(text);
    CalendarModel m(&clock);
    EXPECT_EQ(m.SetText(text), after != nullptr);
    EXPECT_EQ(m.GetText(), after ? after : "2025-12-10");
  }
  ASSERT_TRUE(cal.SetRange(kCalRangeUpper, kNull, D(2025, 12, 31)));
  EXPECT_FALSE(cal.SetText("2026-01-01"));
  EXPECT_TRUE(cal.OnKeyDown(keys::kC, {.ctrl = true}).copy && cal.OnKeyDown(keys::kInsert, {.ctrl = true}).copy);
  EXPECT_TRUE(cal.OnKeyDown(keys::kV, {.ctrl = true}).paste && cal.OnKeyDown(keys::kInsert, {.shift = true}).paste);
  EXPECT_FALSE(cal.OnKeyDown(keys::kC).handled);
}

TEST(CalendarLayout, AreasFollowTheFont) {
  for (int scale : {2, 3}) {  // 96 and 144 DPI
    CalendarMetrics m = kMetrics;
    for (int* v : {&m.textHeight, &m.dayNameWidth, &m.dayNumberWidth, &m.monthNameWidth, &m.spaceWidth,
                   &m.yearWidth, &m.titleWidth, &m.todayWidth})
      *v = *v * scale / 2;
    SCOPED_TRACE(scale);
    const CalendarLayout l = ComputeCalendarLayout(m);
    EXPECT_GE(l.cellWidth, m.dayNameWidth + 2);
    EXPECT_TRUE(l.prev.right <= l.month.left && l.year.right <= l.next.left);
    const std::pair<CalRect, CalHitTestValue> areas[] = {{l.prev, kCalHitPrev},  {l.next, kCalHitNext},
                                                         {l.month, kCalHitMonth}, {l.year, kCalHitYear},
                                                         {l.dayNames, kCalHitDayNames}, {l.today, kCalHitToday}};
    for (const auto& [r, value] : areas) {
      EXPECT_EQ(l.HitTest((r.left + r.right) / 2, (r.top + r.bottom) / 2), value);
      EXPECT_TRUE(r.Width() > 0 && l.client.Contains(r.left, r.top) && l.client.Contains(r.right - 1, r.bottom - 1));
    }
    for (int i = 0, cell = -1; i < 42; ++i) {
      const CalRect r = l.Cell(i);
      EXPECT_TRUE(l.HitTest(r.left, r.top, &cell) == kCalHitDays && cell == i);
      EXPECT_TRUE(l.HitTest(r.right - 1, r.bottom - 1, &cell) == kCalHitDays && cell == i);
    }
    EXPECT_EQ(l.HitTest(l.client.right + 5, 0), kCalHitNothing);
  }
}

// Random keys, clicks, commands, ranges and days; after each step the model must keep its
// invariants and every notification sequence must be one the owner can make sense of.
TEST(CalendarProperty, RandomUse) {
  varion::testing::SeededRng rng;
  auto pick = [&rng](int n) { return static_cast<int>(rng() % static_cast<unsigned>(n)); };
  auto randomDay = [&] { return COleDateTime(pick(3) == 0 ? 100 + pick(9900) : 2020 + pick(10), 1 + pick(12), 1 + pick(28)); };
  FixedClock clock(D(2025, 12, 10));
  CalendarModel cal(&clock);
  const CalendarLayout layout = ComputeCalendarLayout(kMetrics);
  const int keyList[] = {keys::kLeft, keys::kRight, keys::kUp,  keys::kDown,   keys::kPrior,
                         keys::kNext, keys::kHome,  keys::kTab, keys::kReturn, keys::kEscape};
  CalendarCells cells;
  for (int step = 0; step < 20000; ++step) {
    const bool wasOpen = cal.IsDroppedDown() && cal.IsShown();
    CalAction a;
    bool release = false;
    switch (pick(12)) {
      case 0: clock.Set(randomDay()); break;
      case 1: cal.SetRange(static_cast<unsigned>(pick(4)), randomDay(), randomDay()); break;
      case 2: cal.SetCurSel(randomDay()); break;
      case 3: cal.SetDroppedDown(pick(2)); cal.OnShow(pick(4) != 0); break;
      case 4: a = cal.OnCommand(pick(4) ? kCalCmdFirstMonth + pick(12) : kCalCmdGoToToday); break;
      case 5: a = pick(2) ? cal.OnOutsidePress() : cal.OnActivateApp(pick(2)); break;
      case 6: a = cal.OnLButtonDown(layout, pick(layout.client.right), pick(layout.client.bottom)); break;
      case 7: a = cal.OnLButtonUp(layout, pick(layout.client.right), pick(layout.client.bottom)), release = true; break;
      default: a = cal.OnKeyDown(keyList[pick(10)]); break;
    }
    SCOPED_TRACE("step " + std::to_string(step) + ": " + Codes(a));
    const COleDateTime focus = cal.GetFocusedDate();
    ASSERT_TRUE(cal.IsInRange(focus));
    ASSERT_TRUE(focus.GetMonth() == cal.GetDisplayedMonth() && focus.GetYear() == cal.GetDisplayedYear());
    ASSERT_EQ(cal.GetCellDate(cal.GetFocusedIndex()), focus);
    // Exactly one focused cell; consecutive days from a Monday, the 1st in the first row.
    cal.GetCells(layout, cells);
    const long long first = DaysFromCivil(cells[0].year, cells[0].month, cells[0].day);
    ASSERT_EQ((first % 7 + 7) % 7, 2);  // day 0, 1899-12-30, was a Saturday
    int focused = 0;
    for (int i = 0; i < 42; ++i) {
      const CalendarCell& c = cells[static_cast<size_t>(i)];
      focused += (c.flags & CalendarCell::kFocused) ? 1 : 0;
      ASSERT_EQ(DaysFromCivil(c.year, c.month, c.day) - first, i);
      if (i < 7 && c.day == 1) { ASSERT_EQ(c.month, cal.GetDisplayedMonth()); }
    }
    ASSERT_EQ(focused, 1);

    // -746 comes only as the pair -746 -749; both carry the focused day; a closing code only
    // when an open drop-down hides; -2 only last, and only after a release.
    const std::string codes = Codes(a);
    for (int i = 0; i < a.count; ++i) {
      const CalNotification& n = a.notifications[i];
      if (n.code == kCalNotifySelect || n.code == kCalNotifySelChange) { ASSERT_EQ(n.date, focus); }
      if (n.code == kCalNotifySelect) { ASSERT_TRUE(i + 1 < a.count && a.notifications[i + 1].code == kCalNotifySelChange); }
      if (n.code == kCalNotifyClick) { ASSERT_TRUE(release && i + 1 == a.count); }
    }
    ASSERT_EQ(codes.find("-500") != std::string::npos, a.hide);
    if (a.hide) { ASSERT_TRUE(wasOpen && !cal.IsShown()); }
    if (release) { ASSERT_NE(codes.find("-2"), std::string::npos); }
  }
}

}  // namespace
