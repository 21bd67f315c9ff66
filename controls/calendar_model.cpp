#include "controls/calendar_model.h"

#include <algorithm>
#include <cassert>
#include <cstdio>

#include "controls/date_input.h"
#include "controls/holidays.h"

namespace varion {
namespace {

// The days a date-time can hold; the grid may show days beyond them, which are never chosen.
const long long kFirstDay = DaysFromCivil(100, 1, 1);
const long long kLastDay = DaysFromCivil(9999, 12, 31);

// 0 = Monday .. 6 = Sunday; day 0 (1899-12-30) was a Saturday.
int MondayIndex(long long day) { return static_cast<int>(((day + 5) % 7 + 7) % 7); }

// The day number of a valid date-time's calendar day, or false.
bool DayOf(const COleDateTime& date, long long& day) {
  DateParts p;
  if (!date.GetParts(p)) return false;
  day = DaysFromCivil(p.year, p.month, p.day);
  return true;
}

const DateTools::SystemClock kSystemClock;

}  // namespace

// Layout ----------------------------------------------------------------------------------------

CalRect CalendarLayout::Cell(int index) const {
  const int x = days.left + index % 7 * cellWidth;
  const int y = days.top + index / 7 * cellHeight;
  return {x, y, x + cellWidth, y + cellHeight};
}

CalHitTestValue CalendarLayout::HitTest(int x, int y, int* cell) const {
  if (cell) *cell = -1;
  if (days.Contains(x, y) && cellWidth > 0 && cellHeight > 0) {
    if (cell) *cell = (y - days.top) / cellHeight * 7 + (x - days.left) / cellWidth;
    return kCalHitDays;
  }
  struct Area {
    const CalRect* rect;
    CalHitTestValue value;
  };
  const Area areas[] = {{&prev, kCalHitPrev},         {&next, kCalHitNext},   {&month, kCalHitMonth},
                        {&year, kCalHitYear},         {&dayNames, kCalHitDayNames}, {&today, kCalHitToday}};
  for (const Area& a : areas)
    if (a.rect->Contains(x, y)) return a.value;
  return kCalHitNothing;
}

CalendarLayout ComputeCalendarLayout(const CalendarMetrics& m) {
  CalendarLayout l;
  const int text = std::max(m.textHeight, 1);
  const int pad = std::max(2, text / 4);
  const int header = text + 2 * pad;  // the navigation buttons are squares of this side
  // The column width follows the longest day name (or number), and the grid is at least as wide
  // as the header needs for the widest title between its buttons.
  const int title = std::max(m.titleWidth, m.monthNameWidth + m.spaceWidth + m.yearWidth);
  const int headerNeed = 2 * header + title + 4 * pad;
  l.cellWidth = std::max({m.dayNameWidth, m.dayNumberWidth, 1}) + 2 * pad;
  l.cellWidth = std::max(l.cellWidth, (headerNeed + 6) / 7);
  l.cellHeight = text + pad;
  const int width = 7 * l.cellWidth;
  const int left = pad, right = pad + width;

  int y = pad;
  l.prev = {left, y, left + header, y + header};
  l.next = {right - header, y, right, y + header};
  const int titleWidth = m.monthNameWidth + m.spaceWidth + m.yearWidth;
  const int titleLeft = left + (width - titleWidth) / 2;
  l.month = {titleLeft, y, titleLeft + m.monthNameWidth, y + header};
  l.year = {l.month.right + m.spaceWidth, y, l.month.right + m.spaceWidth + m.yearWidth, y + header};
  y += header;
  l.dayNames = {left, y, right, y + l.cellHeight};
  y += l.cellHeight;
  l.days = {left, y, right, y + 6 * l.cellHeight};
  y += 6 * l.cellHeight;
  l.today = {left, y, right, y + header};
  y += header;
  l.client = {0, 0, right + pad, y + pad};
  return l;
}

// Actions ---------------------------------------------------------------------------------------

void CalAction::Notify(int code, const COleDateTime& date) {
  assert(count < kMaxNotifications);
  if (count < kMaxNotifications) notifications[count++] = {code, date};
}

void CalAction::RedrawCell(int index) {
  if (redraw == kRedrawAll || index < 0) return;
  redraw = kRedrawCells;
  if (cells[0] == index || cells[1] == index) return;
  if (cells[0] < 0)
    cells[0] = index;
  else
    cells[1] = index;
}

// Model -----------------------------------------------------------------------------------------

CalendarModel::CalendarModel(const DateTools::IClock* clock) : m_clock(clock ? clock : &kSystemClock) {
  Show(std::clamp(Today(), kFirstDay, kLastDay));
}

long long CalendarModel::Today() const {
  long long day = 0;
  return DayOf(m_clock->Today(), day) ? day : kLastDay + 1;  // a clock without a date has no today
}

COleDateTime CalendarModel::DayDate(long long day) const {
  if (day < kFirstDay || day > kLastDay) return COleDateTime::Invalid();
  return COleDateTime(static_cast<double>(day));
}

COleDateTime CalendarModel::GetCellDate(int index) const {
  return index >= 0 && index < 42 ? DayDate(m_first + index) : COleDateTime::Invalid();
}

std::string CalendarModel::GetTitle() const {
  char buf[64];
  std::snprintf(buf, sizeof buf, "%s %ld", CCalendarUtils::GetPolishMonthName(m_month - 1).c_str(),
                static_cast<long>(m_year));
  return buf;
}

bool CalendarModel::DayInRange(long long day) const {
  if (day < kFirstDay || day > kLastDay) return false;
  if (m_upperSet && day > m_upper) return false;
  return !m_lowerSet || day >= m_lower;
}

long long CalendarModel::Clamp(long long day) const {
  if (m_lowerSet && day < m_lower) day = m_lower;
  if (m_upperSet && day > m_upper) day = m_upper;
  return day;
}

bool CalendarModel::IsInRange(const COleDateTime& date) const {
  long long day = 0;
  return DayOf(date, day) && DayInRange(day);
}

void CalendarModel::Show(long long day) {
  assert(day >= kFirstDay && day <= kLastDay);
  int d = 0;
  CivilFromDays(day, m_year, m_month, d);
  const long long first = day - (d - 1);
  m_first = first - MondayIndex(first);
  m_focus = day;
  assert(m_focus - m_first >= 0 && m_focus - m_first < 42);
}

bool CalendarModel::SetRange(unsigned flags, const COleDateTime& lower, const COleDateTime& upper) {
  long long low = 0, high = 0;
  const bool lowOk = DayOf(lower, low), highOk = DayOf(upper, high);
  switch (flags & (kCalRangeLower | kCalRangeUpper)) {
    case kCalRangeLower | kCalRangeUpper:
      if (!lowOk || !highOk || high <= low) return false;
      m_lower = low, m_upper = high;
      m_lowerSet = m_upperSet = true;
      break;
    case kCalRangeLower:
      if (!lowOk || (m_upperSet && low >= m_upper)) return false;
      m_lower = low;
      m_lowerSet = true;
      break;
    case kCalRangeUpper:
      if (!highOk || (m_lowerSet && high <= m_lower)) return false;
      m_upper = high;
      m_upperSet = true;
      break;
    default:
      m_lowerSet = m_upperSet = false;
      break;
  }
  // Limits are valid date-times, so the clamped day is always one the grid can show.
  if (!DayInRange(m_focus)) Show(Clamp(m_focus));
  return true;
}

unsigned CalendarModel::GetRange(COleDateTime& lower, COleDateTime& upper) const {
  lower = m_lowerSet ? DayDate(m_lower) : COleDateTime::Null();
  upper = m_upperSet ? DayDate(m_upper) : COleDateTime::Null();
  return (m_lowerSet ? kCalRangeLower : 0u) | (m_upperSet ? kCalRangeUpper : 0u);
}

bool CalendarModel::GetCurSel(COleDateTime& date) const {
  date = GetFocusedDate();
  return date.IsValid();
}

bool CalendarModel::SetCurSel(const COleDateTime& date) {
  long long day = 0;
  if (!DayOf(date, day) || !DayInRange(day)) return false;
  Show(day);
  return true;
}

std::string CalendarModel::GetText() const { return GetFocusedDate().Format("%Y-%m-%d"); }

bool CalendarModel::SetText(std::string_view text) { return SetCurSel(ParseDateInput(text, "dmr")); }

CalAction CalendarModel::CloseDropDown(int code) {
  CalAction a;
  a.handled = true;
  if (m_droppedDown && m_shown) {
    m_shown = false;
    a.hide = true;
    a.Notify(code);
  }
  return a;
}

CalAction CalendarModel::OnKeyDown(int key, keys::Modifiers mods) {
  CalAction a;
  const bool open = m_droppedDown && m_shown;
  switch (key) {
    case keys::kEscape:
    case keys::kTab:
    case keys::kF4:
      return open ? CloseDropDown(kCalNotifyCloseCancel) : a;
    case keys::kReturn:
      return open ? CloseDropDown(kCalNotifyCloseChosen) : a;
    case keys::kPrior:
    case keys::kNext:
      a.handled = true;
      if (ChangeMonth(key == keys::kPrior ? -1 : 1)) {
        a.RedrawAll();
        a.Notify(kCalNotifySelect, GetFocusedDate());
        a.Notify(kCalNotifySelChange, GetFocusedDate());
      }
      return a;
    case keys::kHome:
      return GoToToday();
    case keys::kLeft:
    case keys::kUp:
    case keys::kRight:
    case keys::kDown:
      return ProcessKey(key);
    case keys::kInsert:
      a.copy = mods.ctrl && !mods.shift;
      a.paste = mods.shift && !mods.ctrl;
      a.handled = a.copy || a.paste;
      return a;
    case keys::kC:
    case keys::kV:
      a.handled = mods.ctrl && !mods.alt;
      (key == keys::kC ? a.copy : a.paste) = a.handled;
      return a;
    default:
      return a;
  }
}

CalAction CalendarModel::ProcessKey(int key) {
  CalAction a;
  int delta = 0;
  switch (key) {
    case keys::kLeft: delta = -1; break;
    case keys::kUp: delta = -7; break;
    case keys::kRight: delta = 1; break;
    case keys::kDown: delta = 7; break;
    default: return a;
  }
  a.handled = true;
  const long long day = m_focus + delta;
  if (!DayInRange(day)) return a;
  const int oldIndex = GetFocusedIndex();
  const int newIndex = oldIndex + delta;
  int y = 0, m = 0, d = 0;
  CivilFromDays(day, y, m, d);
  if (m != m_month || y != m_year) {
    Show(day);
    a.RedrawAll();
  } else {
    m_focus = day;
    a.RedrawCell(oldIndex);
    a.RedrawCell(newIndex);
  }
  a.Notify(kCalNotifySelect, GetFocusedDate());
  a.Notify(kCalNotifySelChange, GetFocusedDate());
  return a;
}

bool CalendarModel::ChangeMonth(int months) {
  int y = 0, m = 0, d = 0;
  CivilFromDays(m_focus, y, m, d);
  const long long index = static_cast<long long>(y) * 12 + (m - 1) + months;
  if (index < 100 * 12 || index > 9999 * 12 + 11) return false;
  y = static_cast<int>(index / 12);
  m = static_cast<int>(index % 12) + 1;
  d = std::min(d, DateTime::DaysInMonth(y, m));
  const long long day = Clamp(DaysFromCivil(y, m, d));
  if (day == m_focus) return false;
  Show(day);
  return true;
}

CalAction CalendarModel::GoToToday() {
  CalAction a;
  a.handled = true;
  const long long today = Today();
  if (today == m_focus || !DayInRange(today)) return a;
  Show(today);
  a.RedrawAll();
  a.Notify(kCalNotifySelChange, GetFocusedDate());
  return a;
}

CalAction CalendarModel::OnSelectMonth(int month) {
  CalAction a;
  a.handled = true;
  if (month < 1 || month > 12 || month == m_month) return a;
  if (ChangeMonth(month - m_month)) {
    a.RedrawAll();
    a.Notify(kCalNotifySelChange, GetFocusedDate());
  }
  return a;
}

CalAction CalendarModel::OnCommand(int id) {
  if (id >= kCalCmdFirstMonth && id < kCalCmdFirstMonth + 12) return OnSelectMonth(id - kCalCmdFirstMonth + 1);
  if (id == kCalCmdGoToToday) return GoToToday();
  return {};
}

CalAction CalendarModel::OnLButtonDown(const CalendarLayout& layout, int x, int y) {
  CalAction a;
  int cell = -1;
  const CalHitTestValue hit = layout.HitTest(x, y, &cell);
  switch (hit) {
    case kCalHitPrev:
    case kCalHitNext:
      if (ChangeMonth(hit == kCalHitPrev ? -1 : 1)) {
        a.RedrawAll();
        a.Notify(kCalNotifySelChange, GetFocusedDate());
      }
      break;
    case kCalHitMonth:
      a.openMonthsMenu = true;
      break;
    case kCalHitToday:
      a = GoToToday();
      break;
    case kCalHitDays:
      m_pressed = cell;
      a.capture = true;
      a.RedrawCell(cell);
      break;
    default:
      break;
  }
  a.handled = true;
  a.takeFocus = true;
  return a;
}

CalAction CalendarModel::OnLButtonUp(const CalendarLayout& layout, int x, int y) {
  CalAction a;
  a.handled = true;
  a.releaseCapture = true;
  const int pressed = m_pressed;
  m_pressed = -1;
  int cell = -1;
  if (pressed >= 0 && layout.HitTest(x, y, &cell) == kCalHitDays && cell == pressed &&
      DayInRange(m_first + pressed)) {
    const long long day = m_first + pressed;
    int yy = 0, m = 0, d = 0;
    CivilFromDays(day, yy, m, d);
    if (m != m_month || yy != m_year) {
      Show(day);
      a.RedrawAll();
    } else {
      a.RedrawCell(GetFocusedIndex());
      m_focus = day;
    }
    a.Notify(kCalNotifySelect, GetFocusedDate());
    a.Notify(kCalNotifySelChange, GetFocusedDate());
    if (m_droppedDown && m_shown) {
      m_shown = false;
      a.hide = true;
      a.Notify(kCalNotifyCloseChosen);
    }
  }
  a.RedrawCell(pressed);  // no longer pressed (or newly focused)
  a.Notify(kCalNotifyClick);
  return a;
}

CalAction CalendarModel::OnOutsidePress() { return CloseDropDown(kCalNotifyCloseCancel); }

CalAction CalendarModel::OnActivateApp(bool active) {
  if (!active) return CloseDropDown(kCalNotifyCloseCancel);
  CalAction a;
  a.handled = true;
  return a;
}

CalAction CalendarModel::OnFocus(bool gained) {
  CalAction a;
  a.handled = true;
  m_hasFocus = gained;
  a.RedrawCell(GetFocusedIndex());
  return a;
}

void CalendarModel::GetCells(const CalendarLayout& layout, CalendarCells& cells) const {
  // A paint asks for every cell: walk the days, the range bounds and the rectangles forward from
  // cell 0 rather than converting each day number and multiplying out each rectangle.
  const long long today = Today();
  const int focused = GetFocusedIndex();
  const long long low = m_lowerSet ? std::max(m_lower, kFirstDay) : kFirstDay;
  const long long high = m_upperSet ? std::min(m_upper, kLastDay) : kLastDay;
  int y = 0, m = 0, d = 0;
  CivilFromDays(m_first, y, m, d);
  int monthLength = DateTime::DaysInMonth(y, m);
  CalRect rect = layout.Cell(0);
  for (int i = 0; i < 42; ++i) {
    const long long day = m_first + i;
    CalendarCell& c = cells[static_cast<size_t>(i)];
    c.index = i;
    c.year = y, c.month = m, c.day = d;
    c.rect = rect;
    c.holidayName = HolidayNameOf(y, m, d);
    unsigned f = 0;
    if (m == m_month) f |= CalendarCell::kInMonth;
    if (i % 7 >= 5) f |= CalendarCell::kWeekend;
    if (c.holidayName) f |= CalendarCell::kHoliday;
    if (day < low || day > high) f |= CalendarCell::kOutOfRange;
    if (day == today) f |= CalendarCell::kToday;
    if (i == focused) f |= CalendarCell::kFocused;
    if (i == m_pressed) f |= CalendarCell::kPressed;
    c.flags = f;
    if (++d > monthLength) {
      d = 1;
      if (++m > 12) m = 1, ++y;
      monthLength = DateTime::DaysInMonth(y, m);
    }
    if (i % 7 == 6) {
      rect.left = layout.days.left, rect.right = rect.left + layout.cellWidth;
      rect.top += layout.cellHeight, rect.bottom += layout.cellHeight;
    } else {
      rect.left += layout.cellWidth, rect.right += layout.cellWidth;
    }
  }
}

}  // namespace varion
