// The month calendar without its window: the 42-day grid, the focused and the pressed day, the
// displayed month, the range, and what every key, click and command does, down to the
// notifications the owner gets. The window measures text, paints the cells described here and
// carries out the returned actions; it decides nothing itself.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "base/date_time.h"
#include "base/export.h"
#include "controls/date_tools.h"
#include "controls/key_codes.h"

namespace varion {

// Areas of the calendar, numbered as the calendar's hit-test answers them. The header holds the
// two navigation buttons around the title "<month> <year>"; under it the row of day names, the
// grid, and a footer naming today.
enum CalHitTestValue : int {
  kCalHitNothing = 0,
  kCalHitDays = 1,
  kCalHitPrev = 2,      // left navigation button: previous month
  kCalHitNext = 3,      // right navigation button: next month
  kCalHitDayNames = 4,  // the row of day names; a press only takes the focus
  kCalHitToday = 5,     // the footer; a press goes to today
  kCalHitMonth = 6,     // the month name of the title; a press opens the months menu
  kCalHitYear = 7,      // the year of the title; a press only takes the focus (the year pages by
                        // the buttons, Page Up/Down and the months menu)
};

// Notification codes the owner receives.
constexpr int kCalNotifySelect = -746;        // a day is chosen by key or mouse
constexpr int kCalNotifySelChange = -749;     // the selection or the displayed month changed
constexpr int kCalNotifyClick = -2;           // after every left button release
constexpr int kCalNotifyCloseChosen = -5001;  // a dropped-down calendar closes with a chosen day
constexpr int kCalNotifyCloseCancel = -5002;  // a dropped-down calendar closes without one

// Commands: the months menu has January..December at 30000..30011, the context menu go-to-today.
constexpr int kCalCmdFirstMonth = 30000;
constexpr int kCalCmdGoToToday = 3;

// Limits of the range, as the date-picker range record flags them.
constexpr unsigned kCalRangeLower = 1;
constexpr unsigned kCalRangeUpper = 2;

struct CalRect {
  int left = 0, top = 0, right = 0, bottom = 0;
  bool Contains(int x, int y) const { return x >= left && x < right && y >= top && y < bottom; }
  int Width() const { return right - left; }
  int Height() const { return bottom - top; }
  bool operator==(const CalRect&) const = default;
};

// Text sizes the window measures in its font, in pixels; the layout follows from them alone, so
// the calendar looks the same at any DPI.
struct CalendarMetrics {
  int textHeight = 0;      // a line of text
  int dayNameWidth = 0;    // the widest short day name ("Pn" .. "Nd")
  int dayNumberWidth = 0;  // the widest day number ("28")
  int monthNameWidth = 0;  // the displayed month's name
  int spaceWidth = 0;      // the blank between month and year in the title
  int yearWidth = 0;       // the displayed year
  int titleWidth = 0;      // the widest title of any month, so paging never resizes the window
  int todayWidth = 0;      // the footer text
};

struct VARION_API CalendarLayout {
  CalRect client;  // the size the calendar asks for; everything below lies inside it
  CalRect prev, next, month, year, dayNames, days, today;
  int cellWidth = 0, cellHeight = 0;

  CalRect Cell(int index) const;
  // Areas tested in the order 1, 2, 3, 6, 7, 4, 5; `cell` gets the grid index on the day grid
  // and -1 elsewhere.
  CalHitTestValue HitTest(int x, int y, int* cell = nullptr) const;
};

VARION_API CalendarLayout ComputeCalendarLayout(const CalendarMetrics& metrics);

// One day of the grid, as the window paints it.
struct CalendarCell {
  enum Flags : unsigned {
    kInMonth = 1,     // a day of the displayed month (neighbouring months are dimmed)
    kWeekend = 2,     // Saturday or Sunday
    kHoliday = 4,     // a public holiday; holidayName says which
    kOutOfRange = 8,  // cannot be chosen: outside the range, or a day a date-time cannot hold
    kToday = 16,
    kFocused = 32,    // the selected day
    kPressed = 64,    // under a left button that has not been released
  };
  int index = 0;
  int year = 0, month = 0, day = 0;
  unsigned flags = 0;
  const char* holidayName = nullptr;  // for the tooltip; code page 1250
  CalRect rect;
};
using CalendarCells = std::array<CalendarCell, 42>;

// A notification to the owner; -746 and -749 carry the focused date as both ends of the
// selection, the others carry nothing (a null date).
struct CalNotification {
  int code = 0;
  COleDateTime date = COleDateTime::Null();
};

// What the window does after a call, in this order: take the focus, capture or release the
// mouse, open the months menu at the pointer, redraw, post copy or paste, hide, then send the
// notifications in order.
struct VARION_API CalAction {
  enum Redraw : std::uint8_t { kRedrawNone, kRedrawCells, kRedrawAll };
  static constexpr int kMaxNotifications = 4;

  bool handled = false;  // false: not the calendar's key or command; the window passes it on
  bool takeFocus = false;
  bool capture = false;
  bool releaseCapture = false;
  bool openMonthsMenu = false;
  bool copy = false;
  bool paste = false;
  bool hide = false;
  Redraw redraw = kRedrawNone;
  int cells[2] = {-1, -1};  // the cells to redraw with kRedrawCells; -1 for none
  int count = 0;
  CalNotification notifications[kMaxNotifications];

  void Notify(int code, const COleDateTime& date = COleDateTime::Null());
  void RedrawCell(int index);
  void RedrawAll() { redraw = kRedrawAll; }
};

// Weeks start on Monday: cell 0 is the Monday on or before the first of the displayed month, so
// the first row always holds the first and the month ends by cell 36. The focused day always
// lies in the displayed month: a move or a click onto a day of a neighbouring month shows that
// month, as people know it from the platform's own calendar. The focused day always lies in the
// range, which the model keeps when the range or the date changes.
class VARION_API CalendarModel {
 public:
  // Shows today of the clock (the system clock when null); the clock must outlive the model.
  explicit CalendarModel(const DateTools::IClock* clock = nullptr);

  COleDateTime GetFocusedDate() const { return DayDate(m_focus); }
  int GetFocusedIndex() const { return static_cast<int>(m_focus - m_first); }
  int GetPressedIndex() const { return m_pressed; }
  int GetDisplayedYear() const { return m_year; }
  int GetDisplayedMonth() const { return m_month; }
  COleDateTime GetCellDate(int index) const;  // invalid outside 0..41 and beyond a date-time's days
  // "%s %ld": the month's name and the year, "Grudzień 2025".
  std::string GetTitle() const;

  // Range test of a date's day. False after a set upper limit; true before no lower limit; else
  // true unless before the lower one. Both limits are included, whatever the time of day, and a
  // date that is not valid is never in range.
  bool IsInRange(const COleDateTime& date) const;
  // With both bits, both dates valid and the upper strictly after the lower; with the lower bit
  // alone, a valid date strictly before a set upper limit; with the upper bit alone, a valid date
  // strictly after a set lower limit. Only the day counts. Flags 0 removes both limits. On
  // failure nothing changes; on success a focused day outside the new range moves to the
  // nearest limit.
  bool SetRange(unsigned flags, const COleDateTime& lower, const COleDateTime& upper);
  // The flags of the set limits; unset limits come back null.
  unsigned GetRange(COleDateTime& lower, COleDateTime& upper) const;

  // The current selection: always there, so always true.
  bool GetCurSel(COleDateTime& date) const;
  // Shows and selects the day; false (nothing changes) for a date that is not valid or not in
  // range.
  bool SetCurSel(const COleDateTime& date);
  std::string GetText() const;  // the focused day, "Y-m-d"
  // A date text as ParseDateInput reads it (day first for the Polish forms); false when it is
  // not a date in range.
  bool SetText(std::string_view text);

  // The role of a drop-down under a date field, and whether that drop-down is showing now.
  void SetDroppedDown(bool droppedDown) { m_droppedDown = droppedDown; }
  bool IsDroppedDown() const { return m_droppedDown; }
  void OnShow(bool shown) { m_shown = shown; }
  bool IsShown() const { return m_shown; }
  bool HasFocus() const { return m_hasFocus; }

  CalAction OnKeyDown(int key, keys::Modifiers mods = {});
  // Left, Up, Right, Down move the focus by -1, -7, +1, +7 days; a day outside the range stops
  // the move. Notifies -746 and -749.
  CalAction ProcessKey(int key);
  // Moves the focused day by whole months (a day the new month lacks becomes its last day) and
  // into the range; false, and nothing changes, when that leaves the focus where it is or the
  // month lies beyond what a date-time holds.
  bool ChangeMonth(int months);
  CalAction GoToToday();
  CalAction OnSelectMonth(int month);  // 1..12
  CalAction OnCommand(int id);
  CalAction OnLButtonDown(const CalendarLayout& layout, int x, int y);  // a double click too
  CalAction OnLButtonUp(const CalendarLayout& layout, int x, int y);
  // A press on another window while dropped down (the mouse hook), and the application losing
  // activation: both close a showing drop-down without a choice.
  CalAction OnOutsidePress();
  CalAction OnActivateApp(bool active);
  CalAction OnFocus(bool gained);

  // Every cell with its date, flags and rectangle; today comes from the clock.
  void GetCells(const CalendarLayout& layout, CalendarCells& cells) const;

 private:
  bool DayInRange(long long day) const;
  long long Clamp(long long day) const;
  void Show(long long day);
  COleDateTime DayDate(long long day) const;
  long long Today() const;
  CalAction CloseDropDown(int code);

  const DateTools::IClock* m_clock;
  long long m_first = 0;  // day number (days since 1899-12-30) of cell 0
  long long m_focus = 0;  // day number of the focused day
  int m_year = 1899, m_month = 12;
  int m_pressed = -1;
  long long m_lower = 0, m_upper = 0;
  bool m_lowerSet = false, m_upperSet = false;
  bool m_droppedDown = false;
  bool m_shown = false;
  bool m_hasFocus = false;
};

}  // namespace varion
