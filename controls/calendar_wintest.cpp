// The calendar window under Wine: messages, keys and clicks at computed coordinates, the menus
// answered by a chooser, the drop-down's closing, what the parent is told and what is painted.
// The model's rules are tested natively; these tests check the window's translation of them.
#include <windows.h>

#include <commctrl.h>
#include <gtest/gtest.h>
#include <oleacc.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include "base/text.h"
#include "controls/calendar_win.h"
#include "controls/system_time_win.h"
#include "tests/win_support.h"

namespace {

using varion::testing::PumpMessages;

struct Notice {
  int code;
  SYSTEMTIME start;
  SYSTEMTIME end;
};

std::vector<Notice> g_notices;

LRESULT CALLBACK ParentProc(HWND h, UINT msg, WPARAM wp, LPARAM lp) {
  if (msg == WM_NOTIFY) {
    const auto* header = reinterpret_cast<const NMHDR*>(lp);
    Notice n{static_cast<int>(header->code), {}, {}};
    if (n.code == varion::kCalNotifySelect || n.code == varion::kCalNotifySelChange) {
      const auto* change = reinterpret_cast<const NMSELCHANGE*>(lp);
      n.start = change->stSelStart;
      n.end = change->stSelEnd;
    }
    g_notices.push_back(n);
    return 0;
  }
  return DefWindowProcW(h, msg, wp, lp);
}

HWND MakeParent() {
  static const bool registered = [] {
    WNDCLASSW wc{};
    wc.lpfnWndProc = ParentProc;
    wc.hInstance = GetModuleHandleW(nullptr);
    wc.lpszClassName = L"CalendarTestParent";
    wc.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_WINDOW + 1);
    return RegisterClassW(&wc) != 0;
  }();
  EXPECT_TRUE(registered);
  return CreateWindowExW(0, L"CalendarTestParent", L"calendar test", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 50, 50, 500,
                         400, nullptr, nullptr, GetModuleHandleW(nullptr), nullptr);
}

std::string Ymd(const SYSTEMTIME& st) {
  char text[16];
  std::snprintf(text, sizeof text, "%04u-%02u-%02u", st.wYear, st.wMonth, st.wDay);
  return text;
}

SYSTEMTIME St(int y, int m, int d) {
  SYSTEMTIME st{};
  st.wYear = static_cast<WORD>(y);
  st.wMonth = static_cast<WORD>(m);
  st.wDay = static_cast<WORD>(d);
  return st;
}

std::vector<int> Codes() {
  std::vector<int> codes;
  for (const Notice& n : g_notices) codes.push_back(n.code);
  return codes;
}

// Every test starts on Tuesday, 31 December 2024 from a fixed clock, in a fresh parent.
class CalendarWin : public ::testing::Test {
 protected:
  void SetUp() override {
    CVelCalendar::SetDefaultClock(&m_clock);
    m_parent.reset(MakeParent());
    ASSERT_TRUE(m_parent);
    m_calendar = CVelCalendar::Create(0, L"", WS_CHILD | WS_VISIBLE | WS_TABSTOP, RECT{10, 10, 10, 10},
                                      m_parent.get(), 77);
    ASSERT_NE(m_calendar, nullptr);
    m_hwnd = m_calendar->GetHwnd();
    PumpMessages();
    g_notices.clear();
  }
  void TearDown() override {
    CVelCalendar::SetMenuChooser(nullptr);
    CVelCalendar::SetDefaultClock(nullptr);
    m_parent.reset();
  }

  std::string Text() const { return varion::testing::GetTextA(m_hwnd); }
  bool SetCurSel(int y, int m, int d) {
    SYSTEMTIME st = St(y, m, d);
    return SendMessageW(m_hwnd, MCM_SETCURSEL, 0, reinterpret_cast<LPARAM>(&st)) != 0;
  }
  bool SetRange(WPARAM flags, SYSTEMTIME lower, SYSTEMTIME upper) {
    SYSTEMTIME limits[2] = {lower, upper};
    return SendMessageW(m_hwnd, DTM_SETRANGE, flags, reinterpret_cast<LPARAM>(limits)) != 0;
  }
  POINT CellCentre(int index) const {
    const varion::CalRect r = m_calendar->Layout().Cell(index);
    return POINT{(r.left + r.right) / 2, (r.top + r.bottom) / 2};
  }
  static POINT Centre(const varion::CalRect& r) { return POINT{(r.left + r.right) / 2, (r.top + r.bottom) / 2}; }
  void Click(POINT p) {
    SendMessageW(m_hwnd, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(p.x, p.y));
    SendMessageW(m_hwnd, WM_LBUTTONUP, 0, MAKELPARAM(p.x, p.y));
  }
  void Key(WPARAM key) { SendMessageW(m_hwnd, WM_KEYDOWN, key, 1); }
  // The index of a day of the displayed grid, -1 when it is not shown.
  int IndexOf(int y, int m, int d) const {
    for (int i = 0; i < 42; ++i) {
      const COleDateTime date = m_calendar->Model().GetCellDate(i);
      if (date.IsValid() && date.GetYear() == y && date.GetMonth() == m && date.GetDay() == d) return i;
    }
    return -1;
  }

  DateTools::FixedClock m_clock{COleDateTime(2024, 12, 31, 10, 30, 0)};
  varion::testing::unique_hwnd m_parent;
  CVelCalendar* m_calendar = nullptr;
  HWND m_hwnd = nullptr;
};

TEST_F(CalendarWin, MessagesReadAndSetTheSelectionTextAndRange) {
  EXPECT_EQ(Text(), "2024-12-31");
  SYSTEMTIME st{};
  ASSERT_TRUE(SendMessageW(m_hwnd, MCM_GETCURSEL, 0, reinterpret_cast<LPARAM>(&st)));
  EXPECT_EQ(Ymd(st), "2024-12-31");
  EXPECT_EQ(st.wDayOfWeek, 2);  // Tuesday, counted from Sunday = 0

  struct Case {
    const char* what;
    const char* text;  // WM_SETTEXT, ANSI
    bool accepted;
    const char* shown;
  } texts[] = {
      {"ISO date", "2025-03-07", true, "2025-03-07"},
      {"Polish order", "15.08.2025", true, "2025-08-15"},
      {"not a date", "2026x03", false, "2025-08-15"},
      {"impossible day", "2025-02-30", false, "2025-08-15"},
      {"empty", "", false, "2025-08-15"},
  };
  for (const Case& c : texts) {
    SCOPED_TRACE(c.what);
    EXPECT_EQ(SetWindowTextA(m_hwnd, c.text) != FALSE, c.accepted);
    EXPECT_EQ(Text(), c.shown);
  }
  EXPECT_TRUE(g_notices.empty()) << "a program's change is not the user's choice";

  struct RangeCase {
    const char* what;
    WPARAM flags;
    SYSTEMTIME lower, upper;
    bool accepted;
    const char* shown;  // the selection afterwards, moved into the range
  } ranges[] = {
      {"both limits", GDTR_MIN | GDTR_MAX, St(2025, 8, 1), St(2025, 8, 10), true, "2025-08-10"},
      {"equal limits", GDTR_MIN | GDTR_MAX, St(2025, 8, 5), St(2025, 8, 5), false, "2025-08-10"},
      {"upper before lower", GDTR_MIN | GDTR_MAX, St(2025, 9, 5), St(2025, 8, 5), false, "2025-08-10"},
      {"lower after the upper", GDTR_MIN, St(2025, 8, 20), SYSTEMTIME{}, false, "2025-08-10"},
      {"lower alone", GDTR_MIN, St(2025, 8, 9), SYSTEMTIME{}, true, "2025-08-10"},
      {"upper at the lower", GDTR_MAX, SYSTEMTIME{}, St(2025, 8, 9), false, "2025-08-10"},
      {"invalid upper", GDTR_MAX, SYSTEMTIME{}, St(2025, 13, 1), false, "2025-08-10"},
  };
  for (const RangeCase& c : ranges) {
    SCOPED_TRACE(c.what);
    EXPECT_EQ(SetRange(c.flags, c.lower, c.upper), c.accepted);
    EXPECT_EQ(Text(), c.shown);
  }
  SYSTEMTIME limits[2]{};
  EXPECT_EQ(SendMessageW(m_hwnd, DTM_GETRANGE, 0, reinterpret_cast<LPARAM>(limits)), GDTR_MIN | GDTR_MAX);
  EXPECT_EQ(Ymd(limits[0]), "2025-08-09");
  EXPECT_EQ(Ymd(limits[1]), "2025-08-10");
  EXPECT_FALSE(SetCurSel(2025, 8, 11)) << "outside the range";
  EXPECT_TRUE(SetCurSel(2025, 8, 9));
  EXPECT_EQ(Text(), "2025-08-09");
  EXPECT_TRUE(SetRange(0, SYSTEMTIME{}, SYSTEMTIME{}));
  EXPECT_EQ(SendMessageW(m_hwnd, MCM_GETRANGE, 0, reinterpret_cast<LPARAM>(limits)), 0);
  EXPECT_TRUE(SetCurSel(2030, 1, 1));
  EXPECT_EQ(Text(), "2030-01-01");
}

TEST_F(CalendarWin, KeysMoveTheFocusAndTellTheParentWithTheDay) {
  struct Case {
    const char* what;
    SYSTEMTIME start;
    WPARAM key;
    const char* shown;
    std::vector<int> codes;  // the payload of -746 and -749 is the shown day
  } cases[] = {
      {"right into the next year", St(2024, 12, 31), VK_RIGHT, "2025-01-01", {-746, -749}},
      {"left", St(2024, 12, 31), VK_LEFT, "2024-12-30", {-746, -749}},
      {"up a week into the previous month", St(2025, 3, 3), VK_UP, "2025-02-24", {-746, -749}},
      {"down a week", St(2025, 3, 3), VK_DOWN, "2025-03-10", {-746, -749}},
      {"page down keeps the day", St(2025, 1, 31), VK_NEXT, "2025-02-28", {-746, -749}},
      {"page up", St(2025, 3, 15), VK_PRIOR, "2025-02-15", {-746, -749}},
      {"home goes to today", St(2025, 3, 15), VK_HOME, "2024-12-31", {-749}},
      {"home on today says nothing", St(2024, 12, 31), VK_HOME, "2024-12-31", {}},
      {"enter without a drop-down", St(2025, 3, 15), VK_RETURN, "2025-03-15", {}},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    SYSTEMTIME start = c.start;
    ASSERT_TRUE(SendMessageW(m_hwnd, MCM_SETCURSEL, 0, reinterpret_cast<LPARAM>(&start)));
    g_notices.clear();
    Key(c.key);
    EXPECT_EQ(Text(), c.shown);
    EXPECT_EQ(Codes(), c.codes);
    for (const Notice& n : g_notices) {
      EXPECT_EQ(Ymd(n.start), c.shown);
      EXPECT_EQ(Ymd(n.end), c.shown);
    }
  }
}

TEST_F(CalendarWin, CtrlCCopiesTheDayAndCtrlVTakesOnlyADay) {
  auto ctrlKey = [&](WPARAM key) {
    BYTE state[256] = {};
    GetKeyboardState(state);
    state[VK_CONTROL] = 0x80;
    SetKeyboardState(state);
    Key(key);
    state[VK_CONTROL] = 0;
    SetKeyboardState(state);
    PumpMessages(10);  // copy and paste are posted
  };
  auto putText = [](const char* text) {
    varion::ClipboardOpen clipboard(nullptr);
    ASSERT_TRUE(clipboard);
    EmptyClipboard();
    HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, std::strlen(text) + 1);
    std::memcpy(GlobalLock(memory), text, std::strlen(text) + 1);
    GlobalUnlock(memory);
    SetClipboardData(CF_TEXT, memory);
  };
  ctrlKey('C');
  {
    varion::ClipboardOpen clipboard(nullptr);
    ASSERT_TRUE(clipboard);
    HANDLE data = GetClipboardData(CF_TEXT);
    ASSERT_NE(data, nullptr);
    EXPECT_STREQ(static_cast<const char*>(GlobalLock(data)), "2024-12-31");
    GlobalUnlock(data);
  }
  putText("2026x03");
  ctrlKey('V');
  EXPECT_EQ(Text(), "2024-12-31");
  EXPECT_TRUE(g_notices.empty());
  putText("15.08.2025");
  ctrlKey('V');
  EXPECT_EQ(Text(), "2025-08-15");
  EXPECT_EQ(Codes(), (std::vector<int>{-746, -749}));
}

TEST_F(CalendarWin, RangeRefusesKeysAndClicksOutsideIt) {
  ASSERT_TRUE(SetRange(GDTR_MIN | GDTR_MAX, St(2024, 12, 10), St(2024, 12, 31)));
  g_notices.clear();
  struct Case {
    const char* what;
    WPARAM key;
  } keys[] = {{"right past the upper limit", VK_RIGHT}, {"down past it", VK_DOWN}, {"page down", VK_NEXT}};
  for (const Case& c : keys) {
    SCOPED_TRACE(c.what);
    Key(c.key);
    EXPECT_EQ(Text(), "2024-12-31");
  }
  EXPECT_TRUE(g_notices.empty());
  // A click on a shown day outside the range: only the release is reported.
  Click(CellCentre(IndexOf(2024, 12, 9)));
  EXPECT_EQ(Text(), "2024-12-31");
  EXPECT_EQ(Codes(), (std::vector<int>{-2}));
}

TEST_F(CalendarWin, ClicksAtCellsAndButtonsSelectAndPage) {
  // A day of the displayed month, then one of the next month shown in the grid.
  Click(CellCentre(IndexOf(2024, 12, 5)));
  EXPECT_EQ(Text(), "2024-12-05");
  EXPECT_EQ(Codes(), (std::vector<int>{-746, -749, -2}));
  EXPECT_EQ(Ymd(g_notices[0].start), "2024-12-05");
  g_notices.clear();
  Click(CellCentre(IndexOf(2025, 1, 2)));
  EXPECT_EQ(Text(), "2025-01-02");
  EXPECT_EQ(m_calendar->Model().GetDisplayedMonth(), 1);

  struct Case {
    const char* what;
    varion::CalRect area;
    const char* shown;
    std::vector<int> codes;
  } cases[] = {
      {"previous month button", m_calendar->Layout().prev, "2024-12-02", {-749, -2}},
      {"next month button", m_calendar->Layout().next, "2025-01-02", {-749, -2}},
      {"day names only take the focus", m_calendar->Layout().dayNames, "2025-01-02", {-2}},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    g_notices.clear();
    Click(Centre(c.area));
    EXPECT_EQ(Text(), c.shown);
    EXPECT_EQ(Codes(), c.codes);
  }
  EXPECT_EQ(GetFocus(), m_hwnd);
  // A press that leaves the cell before the release chooses nothing.
  g_notices.clear();
  const POINT from = CellCentre(IndexOf(2025, 1, 8)), to = CellCentre(IndexOf(2025, 1, 20));
  SendMessageW(m_hwnd, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(from.x, from.y));
  EXPECT_EQ(GetCapture(), m_hwnd);
  SendMessageW(m_hwnd, WM_LBUTTONUP, 0, MAKELPARAM(to.x, to.y));
  EXPECT_NE(GetCapture(), m_hwnd);
  EXPECT_EQ(Text(), "2025-01-02");
  EXPECT_EQ(Codes(), (std::vector<int>{-2}));
}

// The chooser stands in for the user at a pop-up menu.
struct MenuSeen {
  std::vector<std::pair<UINT, std::string>> items;
  UINT checked = 0;
  UINT answer = 0;
};
MenuSeen g_menu;

UINT ChooseFromMenu(HMENU menu, POINT) {
  g_menu.items.clear();
  g_menu.checked = 0;
  for (int i = 0; i < GetMenuItemCount(menu); ++i) {
    char text[64] = {};
    GetMenuStringA(menu, static_cast<UINT>(i), text, sizeof text, MF_BYPOSITION);
    const UINT id = GetMenuItemID(menu, i);
    g_menu.items.emplace_back(id, text);
    if (GetMenuState(menu, static_cast<UINT>(i), MF_BYPOSITION) & MF_CHECKED) g_menu.checked = id;
  }
  return g_menu.answer;
}

TEST_F(CalendarWin, MonthsMenuAndContextMenuCarryTheirCommands) {
  CVelCalendar::SetMenuChooser(ChooseFromMenu);
  struct Case {
    const char* what;
    UINT answer;
    const char* shown;
    std::vector<int> codes;
  } cases[] = {
      {"June", 30005, "2024-06-30", {-749, -2}},
      {"the shown month again", 30005, "2024-06-30", {-2}},
      {"February keeps a day it has", 30001, "2024-02-29", {-749, -2}},
      {"dismissed", 0, "2024-02-29", {-2}},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    g_menu.answer = c.answer;
    g_notices.clear();
    Click(Centre(m_calendar->Layout().month));
    ASSERT_EQ(g_menu.items.size(), 12u);
    EXPECT_EQ(g_menu.items[0], (std::pair<UINT, std::string>(30000, "Styczeń")));
    EXPECT_EQ(g_menu.items[11], (std::pair<UINT, std::string>(30011, "Grudzień")));
    EXPECT_EQ(Text(), c.shown);
    EXPECT_EQ(Codes(), c.codes);
  }
  EXPECT_EQ(g_menu.checked, 30001u) << "the shown month is checked";

  // The context menu's command 3 goes to today, from the mouse and from the keyboard.
  g_menu.answer = 3;
  g_notices.clear();
  POINT screen{20, 20};
  ClientToScreen(m_hwnd, &screen);
  SendMessageW(m_hwnd, WM_CONTEXTMENU, reinterpret_cast<WPARAM>(m_hwnd), MAKELPARAM(screen.x, screen.y));
  ASSERT_EQ(g_menu.items.size(), 1u);
  EXPECT_EQ(g_menu.items[0].first, 3u);
  EXPECT_EQ(Text(), "2024-12-31");
  EXPECT_EQ(Codes(), (std::vector<int>{-749}));
  g_notices.clear();
  SendMessageW(m_hwnd, WM_CONTEXTMENU, reinterpret_cast<WPARAM>(m_hwnd), MAKELPARAM(-1, -1));
  EXPECT_TRUE(g_notices.empty()) << "already on today";
}

class DroppedCalendarWin : public CalendarWin {
 protected:
  void SetUp() override {
    CalendarWin::SetUp();
    m_drop = CVelCalendar::Create(WS_EX_TOOLWINDOW, L"", WS_POPUP | WS_BORDER, RECT{100, 100, 100, 100},
                                  m_parent.get(), 0);
    ASSERT_NE(m_drop, nullptr);
    m_drop->SetOwner(m_parent.get());
    m_drop->SetDroppedDown(true);
  }
  void Open() {
    ShowWindow(m_drop->GetHwnd(), SW_SHOWNOACTIVATE);
    PumpMessages();
    g_notices.clear();
  }
  CVelCalendar* m_drop = nullptr;
};

TEST_F(DroppedCalendarWin, KeysAndDeactivationCloseIt) {
  struct Case {
    const char* what;
    UINT msg;
    WPARAM wParam;
    std::vector<int> codes;
  } cases[] = {
      {"enter chooses", WM_KEYDOWN, VK_RETURN, {-5001}},
      {"escape", WM_KEYDOWN, VK_ESCAPE, {-5002}},
      {"tab", WM_KEYDOWN, VK_TAB, {-5002}},
      {"F4", WM_KEYDOWN, VK_F4, {-5002}},
      {"the application deactivated", WM_ACTIVATEAPP, FALSE, {-5002}},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    Open();
    ASSERT_TRUE(IsWindowVisible(m_drop->GetHwnd()));
    SendMessageW(m_drop->GetHwnd(), c.msg, c.wParam, 0);
    EXPECT_FALSE(IsWindowVisible(m_drop->GetHwnd()));
    EXPECT_EQ(Codes(), c.codes);
  }
  // A click on a day closes it with the day.
  Open();
  const varion::CalRect cell = m_drop->Layout().Cell(10);
  const POINT p{(cell.left + cell.right) / 2, (cell.top + cell.bottom) / 2};
  SendMessageW(m_drop->GetHwnd(), WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(p.x, p.y));
  SendMessageW(m_drop->GetHwnd(), WM_LBUTTONUP, 0, MAKELPARAM(p.x, p.y));
  EXPECT_FALSE(IsWindowVisible(m_drop->GetHwnd()));
  EXPECT_EQ(Codes(), (std::vector<int>{-746, -749, -5001, -2}));
}

TEST_F(DroppedCalendarWin, APressOnAnotherWindowClosesIt) {
  Open();
  // A real press, through the input queue, on the parent's client area.
  SetForegroundWindow(m_parent.get());
  POINT target{300, 300};
  ClientToScreen(m_parent.get(), &target);
  RECT dropRect;
  GetWindowRect(m_drop->GetHwnd(), &dropRect);
  ASSERT_FALSE(PtInRect(&dropRect, target));
  SetCursorPos(target.x, target.y);
  INPUT input[2]{};
  input[0].type = input[1].type = INPUT_MOUSE;
  input[0].mi.dwFlags = MOUSEEVENTF_LEFTDOWN;
  input[1].mi.dwFlags = MOUSEEVENTF_LEFTUP;
  ASSERT_EQ(SendInput(2, input, sizeof(INPUT)), 2u);
  for (int i = 0; i < 20 && IsWindowVisible(m_drop->GetHwnd()); ++i) PumpMessages(25);
  EXPECT_FALSE(IsWindowVisible(m_drop->GetHwnd()));
  EXPECT_EQ(Codes(), (std::vector<int>{-5002}));
}

// Painting, read back through WM_PRINTCLIENT into a bitmap of our own.
class PaintedCalendar {
 public:
  explicit PaintedCalendar(HWND window) {
    RECT client;
    GetClientRect(window, &client);
    m_width = client.right;
    m_height = client.bottom;
    HDC screen = GetDC(nullptr);
    m_dc = CreateCompatibleDC(screen);
    m_bitmap = CreateCompatibleBitmap(screen, m_width, m_height);
    ReleaseDC(nullptr, screen);
    m_old = SelectObject(m_dc, m_bitmap);
    SendMessageW(window, WM_PRINTCLIENT, reinterpret_cast<WPARAM>(m_dc), PRF_CLIENT);
  }
  ~PaintedCalendar() {
    SelectObject(m_dc, m_old);
    DeleteObject(m_bitmap);
    DeleteDC(m_dc);
  }
  COLORREF At(int x, int y) const { return GetPixel(m_dc, x, y); }
  // How many pixels of a colour lie inside a rectangle.
  int Count(const varion::CalRect& r, COLORREF color) const {
    int n = 0;
    for (int y = r.top; y < r.bottom; ++y)
      for (int x = r.left; x < r.right; ++x) n += At(x, y) == color;
    return n;
  }

 private:
  int m_width = 0, m_height = 0;
  HDC m_dc = nullptr;
  HBITMAP m_bitmap = nullptr;
  HGDIOBJ m_old = nullptr;
};

TEST_F(CalendarWin, PaintsHolidaysTodayAndUnavailableDays) {
  constexpr COLORREF kHolidayBack = RGB(255, 234, 234), kTodayFrame = RGB(200, 0, 0);
  constexpr COLORREF kUnavailable = RGB(236, 236, 236);
  ASSERT_TRUE(SetCurSel(2025, 12, 15));
  ASSERT_TRUE(SetRange(GDTR_MIN, St(2025, 12, 3), SYSTEMTIME{}));
  m_clock.Set(COleDateTime(2025, 12, 10));
  InvalidateRect(m_hwnd, nullptr, FALSE);
  const varion::CalendarLayout& layout = m_calendar->Layout();
  PaintedCalendar painted(m_hwnd);
  struct Case {
    const char* what;
    int y, m, d;
    COLORREF color;
    bool expected;
  } cases[] = {
      {"Wigilia", 2025, 12, 24, kHolidayBack, true},
      {"Christmas", 2025, 12, 25, kHolidayBack, true},
      {"a working day", 2025, 12, 23, kHolidayBack, false},
      {"today outlined", 2025, 12, 10, kTodayFrame, true},
      {"a day before the lower limit", 2025, 12, 2, kUnavailable, true},
      {"the lower limit itself", 2025, 12, 3, kUnavailable, false},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    const int index = IndexOf(c.y, c.m, c.d);
    ASSERT_GE(index, 0);
    EXPECT_EQ(painted.Count(layout.Cell(index), c.color) > 0, c.expected);
  }
  // The holidays of the grid are named by the tooltip: 24, 25, 26 December, 1 and 6 January.
  HWND tip = m_calendar->GetTooltip();
  ASSERT_NE(tip, nullptr);
  EXPECT_EQ(SendMessageW(tip, TTM_GETTOOLCOUNT, 0, 0), 5);
  wchar_t text[80] = {};
  TTTOOLINFOW info{};
  info.cbSize = sizeof info;
  info.hwnd = m_hwnd;
  info.uId = static_cast<UINT_PTR>(IndexOf(2025, 12, 24));
  info.lpszText = text;
  SendMessageW(tip, TTM_GETTEXTW, 80, reinterpret_cast<LPARAM>(&info));
  EXPECT_EQ(varion::text::WideToCp1250(text), "Wigilia");
}

TEST_F(CalendarWin, DrawsDaysAtTheEdgesOfWhatADateHolds) {
  // The grid around the first and the last day a date-time holds, and a year far outside the
  // field's usual range: painting and paging there neither crash nor select a day beyond them.
  struct Case {
    const char* what;
    const char* text;
    WPARAM key;
    const char* shown;
  } cases[] = {
      {"the first day", "0100-01-01", VK_PRIOR, "0100-01-01"},
      {"before 1900", "1850-06-15", VK_LEFT, "1850-06-14"},
      {"after 2100", "2150-06-15", VK_NEXT, "2150-07-15"},
      {"the last day", "9999-12-31", VK_RIGHT, "9999-12-31"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    ASSERT_TRUE(SetWindowTextA(m_hwnd, c.text));
    { PaintedCalendar painted(m_hwnd); }
    Key(c.key);
    { PaintedCalendar painted(m_hwnd); }
    UpdateWindow(m_hwnd);
    EXPECT_EQ(Text(), c.shown);
  }
}

TEST_F(CalendarWin, SizesItselfFromItsFont) {
  // The same face at 96 and at 144 DPI: a larger font gives a proportionally larger calendar,
  // and every column is wide enough for the widest day name.
  auto sizeFor = [&](int pixels, SIZE& client, int& widestName, varion::CalendarLayout& layout) {
    LOGFONTW lf{};
    lf.lfHeight = -pixels;
    lstrcpyW(lf.lfFaceName, L"Tahoma");
    HFONT font = CreateFontIndirectW(&lf);
    SendMessageW(m_hwnd, WM_SETFONT, reinterpret_cast<WPARAM>(font), TRUE);
    EXPECT_EQ(reinterpret_cast<HFONT>(SendMessageW(m_hwnd, WM_GETFONT, 0, 0)), font);
    RECT r;
    GetClientRect(m_hwnd, &r);
    client = SIZE{r.right, r.bottom};
    layout = m_calendar->Layout();
    HDC dc = GetDC(m_hwnd);
    HGDIOBJ old = SelectObject(dc, font);
    widestName = 0;
    for (const char* name : {"Pn", "Wt", "Śr", "Cz", "Pt", "So", "Nd"}) {
      SIZE s;
      GetTextExtentPoint32A(dc, name, 2, &s);
      widestName = std::max<int>(widestName, s.cx);
    }
    SelectObject(dc, old);
    ReleaseDC(m_hwnd, dc);
    SendMessageW(m_hwnd, WM_SETFONT, 0, FALSE);
    DeleteObject(font);
  };
  SIZE small{}, large{};
  int smallName = 0, largeName = 0;
  varion::CalendarLayout smallLayout, largeLayout;
  sizeFor(11, small, smallName, smallLayout);
  sizeFor(17, large, largeName, largeLayout);
  EXPECT_EQ(small.cx, smallLayout.client.Width());
  EXPECT_EQ(small.cy, smallLayout.client.Height());
  EXPECT_EQ(large.cx, largeLayout.client.Width());
  EXPECT_GE(smallLayout.cellWidth, smallName);
  EXPECT_GE(largeLayout.cellWidth, largeName);
  const double ratio = static_cast<double>(large.cy) / small.cy;
  EXPECT_GT(ratio, 1.3);
  EXPECT_LT(ratio, 1.8);
}

// Accessibility, read the way a screen reader reads it: through oleacc and win events.
struct WinEvent {
  DWORD event;
  HWND window;
  LONG object, child;
};
std::vector<WinEvent> g_events;

void CALLBACK RecordWinEvent(HWINEVENTHOOK, DWORD event, HWND window, LONG object, LONG child, DWORD, DWORD) {
  g_events.push_back({event, window, object, child});
}

std::string FromBstr(BSTR text) {
  std::string s = text ? varion::text::WideToCp1250(std::wstring(text, SysStringLen(text))) : std::string();
  SysFreeString(text);
  return s;
}

TEST_F(CalendarWin, ReadersGetTheTitleTheSpokenDayAndADayPerCell) {
  const HRESULT com = CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
  using FromWindowFn = HRESULT(WINAPI*)(HWND, DWORD, REFIID, void**);
  HMODULE oleacc = LoadLibraryW(L"oleacc.dll");
  ASSERT_NE(oleacc, nullptr);
  const auto fromWindow =
      reinterpret_cast<FromWindowFn>(reinterpret_cast<void*>(GetProcAddress(oleacc, "AccessibleObjectFromWindow")));
  ASSERT_NE(fromWindow, nullptr);
  IAccessible* acc = nullptr;
  ASSERT_EQ(fromWindow(m_hwnd, static_cast<DWORD>(OBJID_CLIENT), __uuidof(IAccessible), reinterpret_cast<void**>(&acc)),
            S_OK);
  ASSERT_NE(acc, nullptr);
  VARIANT self{};
  self.vt = VT_I4;
  self.lVal = CHILDID_SELF;
  BSTR text = nullptr;
  ASSERT_EQ(acc->get_accName(self, &text), S_OK);
  EXPECT_EQ(FromBstr(text), "Grudzień 2024");
  ASSERT_EQ(acc->get_accValue(self, &text), S_OK);
  EXPECT_EQ(FromBstr(text), "wtorek, 31 grudnia 2024");
  LONG children = 0;
  EXPECT_EQ(acc->get_accChildCount(&children), S_OK);
  EXPECT_EQ(children, 42);
  VARIANT role{};
  EXPECT_EQ(acc->get_accRole(self, &role), S_OK);
  EXPECT_EQ(role.lVal, ROLE_SYSTEM_TABLE);

  struct Case {
    int y, m, d;
    const char* name;
    const char* description;
  } days[] = {
      {2024, 12, 25, "środa, 25 grudnia 2024", "Boże Narodzenie (1. dzień)"},
      {2025, 1, 5, "niedziela, 5 stycznia 2025", ""},
      {2024, 11, 25, "poniedziałek, 25 listopada 2024", ""},
  };
  for (const Case& c : days) {
    SCOPED_TRACE(c.name);
    VARIANT child{};
    child.vt = VT_I4;
    child.lVal = IndexOf(c.y, c.m, c.d) + 1;
    ASSERT_GT(child.lVal, 0);
    ASSERT_EQ(acc->get_accName(child, &text), S_OK);
    EXPECT_EQ(FromBstr(text), c.name);
    acc->get_accDescription(child, &text);
    EXPECT_EQ(FromBstr(text), c.description);
    EXPECT_EQ(acc->get_accRole(child, &role), S_OK);
    EXPECT_EQ(role.lVal, ROLE_SYSTEM_CELL);
  }

  // Moving the focus raises a focus event on the new day and a value change on the calendar.
  HWINEVENTHOOK hook = SetWinEventHook(EVENT_OBJECT_FOCUS, EVENT_OBJECT_VALUECHANGE, nullptr, RecordWinEvent, 0, 0,
                                       WINEVENT_OUTOFCONTEXT);
  ASSERT_NE(hook, nullptr);
  PumpMessages();  // earlier events out of the way
  g_events.clear();
  Key(VK_LEFT);
  PumpMessages(20);
  UnhookWinEvent(hook);
  std::vector<std::pair<DWORD, LONG>> seen;
  for (const WinEvent& e : g_events)
    if (e.window == m_hwnd && e.object == OBJID_CLIENT) seen.emplace_back(e.event, e.child);
  const LONG moved = IndexOf(2024, 12, 30) + 1;
  EXPECT_EQ(seen, (std::vector<std::pair<DWORD, LONG>>{{EVENT_OBJECT_FOCUS, moved},
                                                       {EVENT_OBJECT_VALUECHANGE, CHILDID_SELF}}));
  ASSERT_EQ(acc->get_accValue(self, &text), S_OK);
  EXPECT_EQ(FromBstr(text), "poniedziałek, 30 grudnia 2024");
  DestroyWindow(m_parent.release());
  EXPECT_NE(acc->get_accName(self, &text), S_OK) << "nothing to read once the window is gone";
  acc->Release();
  if (SUCCEEDED(com)) CoUninitialize();
}

}  // namespace
