// The date field under Wine: characters and keys reaching the model through a real edit, what
// it shows and what it answers for its text, the frame buttons, and the calendar dropped down
// under it and closed again. The editing rules themselves are tested natively.
#include <windows.h>

#include <commctrl.h>
#include <gtest/gtest.h>

#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include "base/text.h"
#include "controls/balloon_tip_win.h"
#include "controls/calendar_win.h"
#include "controls/date_edit_win.h"
#include "tests/win_support.h"

namespace {

using varion::testing::PumpMessages;

struct Change {
  DWORD flags;
  SYSTEMTIME st;
};
std::vector<Change> g_changes;

LRESULT CALLBACK ParentProc(HWND h, UINT msg, WPARAM wp, LPARAM lp) {
  if (msg == WM_NOTIFY && reinterpret_cast<const NMHDR*>(lp)->code == DTN_DATETIMECHANGE) {
    const auto* change = reinterpret_cast<const NMDATETIMECHANGE*>(lp);
    g_changes.push_back({change->dwFlags, change->st});
    return 0;
  }
  return DefWindowProcW(h, msg, wp, lp);
}

HWND MakeParent() {
  static const bool registered = [] {
    WNDCLASSW wc{};
    wc.lpfnWndProc = ParentProc;
    wc.hInstance = GetModuleHandleW(nullptr);
    wc.lpszClassName = L"DateEditTestParent";
    wc.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_WINDOW + 1);
    return RegisterClassW(&wc) != 0;
  }();
  EXPECT_TRUE(registered);
  return CreateWindowExW(0, L"DateEditTestParent", L"date field test", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 60, 60, 420,
                         300, nullptr, nullptr, GetModuleHandleW(nullptr), nullptr);
}

std::string Ymd(const SYSTEMTIME& st) {
  char text[16];
  std::snprintf(text, sizeof text, "%04u-%02u-%02u", st.wYear, st.wMonth, st.wDay);
  return text;
}

std::string ClipboardText() {
  varion::ClipboardOpen clipboard(nullptr);
  if (!clipboard) return "<closed>";
  HANDLE data = GetClipboardData(CF_UNICODETEXT);
  if (!data) return "";
  std::wstring text(static_cast<const wchar_t*>(GlobalLock(data)));
  GlobalUnlock(data);
  return varion::text::WideToCp1250(text);
}

void PutOnClipboard(const std::wstring& text) {
  varion::ClipboardOpen clipboard(nullptr);
  ASSERT_TRUE(clipboard);
  EmptyClipboard();
  HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, (text.size() + 1) * sizeof(wchar_t));
  std::memcpy(GlobalLock(memory), text.c_str(), (text.size() + 1) * sizeof(wchar_t));
  GlobalUnlock(memory);
  SetClipboardData(CF_UNICODETEXT, memory);
}

// A field on 31 December 2024 by a fixed clock, empty, focused, in a fresh parent.
class DateEditWin : public ::testing::Test {
 protected:
  void SetUp() override {
    CVelDateEdit::SetDefaultClock(&m_clock);
    CVelCalendar::SetDefaultClock(&m_clock);
    m_parent.reset(MakeParent());
    ASSERT_TRUE(m_parent);
    m_hwnd = CreateWindowExW(WS_EX_CLIENTEDGE, L"Edit", L"", WS_CHILD | WS_VISIBLE | WS_TABSTOP, 20, 20, 160, 24,
                             m_parent.get(), reinterpret_cast<HMENU>(55), GetModuleHandleW(nullptr), nullptr);
    m_edit = CVelDateEdit::Attach(m_hwnd);
    ASSERT_NE(m_edit, nullptr);
    SetFocus(m_hwnd);
    PumpMessages();
    g_changes.clear();
  }
  void TearDown() override {
    m_parent.reset();
    CVelDateEdit::SetDefaultClock(nullptr);
    CVelCalendar::SetDefaultClock(nullptr);
  }

  // What the edit shows (its own buffer), and what it answers for its text.
  std::string Shown() const {
    wchar_t text[64] = {};
    *reinterpret_cast<WORD*>(text) = 63;
    const LRESULT n = SendMessageW(m_hwnd, EM_GETLINE, 0, reinterpret_cast<LPARAM>(text));
    return varion::text::WideToCp1250(std::wstring(text, static_cast<std::size_t>(n)));
  }
  std::string Text() const { return varion::testing::GetTextA(m_hwnd); }
  int Caret() const {
    DWORD start = 0, end = 0;
    SendMessageW(m_hwnd, EM_GETSEL, reinterpret_cast<WPARAM>(&start), reinterpret_cast<LPARAM>(&end));
    return static_cast<int>(end);
  }
  void Type(const char* chars) {
    for (const char* c = chars; *c; ++c) SendMessageW(m_hwnd, WM_CHAR, static_cast<unsigned char>(*c), 1);
  }
  void Key(WPARAM key) { SendMessageW(m_hwnd, WM_KEYDOWN, key, 1); }
  POINT ButtonCentre(CVelDateEdit::Button b) const {
    RECT window, r = m_edit->ButtonRect(b);
    GetWindowRect(m_hwnd, &window);
    return POINT{window.left + (r.left + r.right) / 2, window.top + (r.top + r.bottom) / 2};
  }
  void ClickButton(CVelDateEdit::Button b) {
    const POINT p = ButtonCentre(b);
    const LRESULT hit = SendMessageW(m_hwnd, WM_NCHITTEST, 0, MAKELPARAM(p.x, p.y));
    ASSERT_EQ(hit, HTBORDER);
    SendMessageW(m_hwnd, WM_NCLBUTTONDOWN, static_cast<WPARAM>(hit), MAKELPARAM(p.x, p.y));
  }

  DateTools::FixedClock m_clock{COleDateTime(2024, 12, 31, 9, 0, 0)};
  varion::testing::unique_hwnd m_parent;
  HWND m_hwnd = nullptr;
  CVelDateEdit* m_edit = nullptr;
};

TEST_F(DateEditWin, CharactersGoThroughTheFieldsAndTheTextIsCanonical) {
  struct Case {
    const char* what;
    const char* typed;
    const char* shown;
    const char* text;  // WM_GETTEXT: what the data exchange reads
    int caret;
    int changes;
  } cases[] = {
      {"a day that cannot grow moves on", "4", "04-mm-rrrr", "", 3, 0},
      {"a whole date", "31122024", "31-12-2024", "2024-12-31", 6, 1},
      {"letters are not taken", "3x1a12b2025", "31-12-2025", "2025-12-31", 6, 1},
      {"an impossible day keeps the last value", "31022024", "31-02-2024", "", 6, 0},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    ASSERT_TRUE(m_edit->SetValue(COleDateTime::Null()));
    g_changes.clear();
    Type(c.typed);
    EXPECT_EQ(Shown(), c.shown);
    EXPECT_EQ(Text(), c.text);
    EXPECT_EQ(GetWindowTextLengthA(m_hwnd), static_cast<int>(std::string(c.text).size()));
    EXPECT_EQ(Caret(), c.caret);
    ASSERT_EQ(static_cast<int>(g_changes.size()), c.changes);
    if (c.changes) {
      EXPECT_EQ(g_changes.back().flags, static_cast<DWORD>(GDT_VALID));
      EXPECT_EQ(Ymd(g_changes.back().st), c.text);
    }
  }
  // Leaving the field puts an unfinished entry back to the value.
  SetFocus(m_parent.get());
  EXPECT_EQ(Shown(), "dd-mm-rrrr");
}

TEST_F(DateEditWin, KeysStepTheFieldUnderTheCaretWithinTheRange) {
  ASSERT_TRUE(m_edit->SetRange(COleDateTime(2024, 1, 1), COleDateTime(2025, 1, 15)));
  ASSERT_TRUE(m_edit->SetValue(COleDateTime(2024, 12, 31)));
  struct Case {
    const char* what;
    WPARAM key;
    const char* text;
  } cases[] = {
      {"up steps the day into January", VK_UP, "2025-01-01"},
      {"right moves to the month", VK_RIGHT, "2025-01-01"},
      {"up on the month would leave the range", VK_UP, "2025-01-01"},
      {"down on the month", VK_DOWN, "2024-12-01"},
      {"ctrl+end takes the upper limit", VK_END, "2025-01-15"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    BYTE state[256] = {};
    GetKeyboardState(state);
    state[VK_CONTROL] = c.key == VK_END ? 0x80 : 0;
    SetKeyboardState(state);
    Key(c.key);
    EXPECT_EQ(Text(), c.text);
  }
  BYTE state[256] = {};
  GetKeyboardState(state);
  state[VK_CONTROL] = 0;
  SetKeyboardState(state);
}

TEST_F(DateEditWin, ProgramTextIsADayOrRefused) {
  struct Case {
    const char* what;
    const char* text;
    bool taken;
    const char* after;
  } cases[] = {
      {"the field's own form", "05-02-2024", true, "2024-02-05"},
      {"the data exchange's form", "2024-03-31", true, "2024-03-31"},
      {"with a time of day", "2024-04-01 10:20:30", true, "2024-04-01"},
      {"not a date", "2026x03", false, "2024-04-01"},
      {"before the field's range", "1850-01-01", false, "2024-04-01"},
      {"empty clears", "", true, ""},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    EXPECT_EQ(SetWindowTextA(m_hwnd, c.text) != FALSE, c.taken);
    EXPECT_EQ(Text(), c.after);
  }
  // A paste that is not a day changes nothing.
  ASSERT_TRUE(SetWindowTextA(m_hwnd, "2024-04-01"));
  PutOnClipboard(L"2026x03");
  SendMessageW(m_hwnd, WM_PASTE, 0, 0);
  EXPECT_EQ(Text(), "2024-04-01");
  PutOnClipboard(L"7.5.2023");
  SendMessageW(m_hwnd, WM_PASTE, 0, 0);
  EXPECT_EQ(Text(), "2023-05-07");
}

TEST_F(DateEditWin, PatternRebuildsTheFields) {
  ASSERT_TRUE(m_edit->SetValue(COleDateTime(2024, 12, 31)));
  struct Case {
    const char* pattern;
    const char* shown;
  } cases[] = {{"rrrr.mm.dd", "2024.12.31"}, {"yyyy/mm/dd", "2024/12/31"}, {"dd-mm-rrrr", "31-12-2024"}};
  for (const Case& c : cases) {
    SCOPED_TRACE(c.pattern);
    m_edit->SetPattern(c.pattern);
    EXPECT_EQ(Shown(), c.shown);
    EXPECT_EQ(Text(), "2024-12-31");
  }
}

TEST_F(DateEditWin, FrameButtonsTakeTheirWidthAndAnswerHitTests) {
  RECT client;
  GetClientRect(m_hwnd, &client);
  const int withOne = client.right;
  m_edit->ShowCopyButton(true);
  GetClientRect(m_hwnd, &client);
  EXPECT_EQ(withOne - client.right, GetSystemMetrics(10));
  for (CVelDateEdit::Button b : {CVelDateEdit::kCalendarButton, CVelDateEdit::kCopyButton}) {
    const POINT p = ButtonCentre(b);
    EXPECT_EQ(SendMessageW(m_hwnd, WM_NCHITTEST, 0, MAKELPARAM(p.x, p.y)), HTBORDER);
  }
  // Entering a button starts the hover polling (timer 1); a timer that exists can be killed.
  EXPECT_TRUE(KillTimer(m_hwnd, CVelDateEdit::kHoverTimer));
  RECT window;
  GetWindowRect(m_hwnd, &window);
  EXPECT_EQ(SendMessageW(m_hwnd, WM_NCHITTEST, 0, MAKELPARAM(window.left + 5, window.top + 5)), HTCLIENT)
      << "the text area stays the edit's";
  RECT calendar = m_edit->ButtonRect(CVelDateEdit::kCalendarButton), copy = m_edit->ButtonRect(CVelDateEdit::kCopyButton);
  EXPECT_EQ(copy.right, calendar.left) << "the copy button sits left of the calendar button";
  EXPECT_EQ(calendar.right - calendar.left, GetSystemMetrics(10));

  HWND tip = m_edit->GetTooltip();
  ASSERT_NE(tip, nullptr);
  ASSERT_EQ(SendMessageW(tip, TTM_GETTOOLCOUNT, 0, 0), 2);
  const char* expected[] = {"Pokaż kalendarz", "Kopiuj"};
  for (int i = 0; i < 2; ++i) {
    wchar_t text[80] = {};
    TTTOOLINFOW info{};
    info.cbSize = sizeof info;
    info.hwnd = m_hwnd;
    info.uId = static_cast<UINT_PTR>(i + 1);
    info.lpszText = text;
    SendMessageW(tip, TTM_GETTEXTW, 80, reinterpret_cast<LPARAM>(&info));
    EXPECT_EQ(varion::text::WideToCp1250(text), expected[i]);
  }

  // The copy button copies the day as shown and says so in a balloon.
  ASSERT_TRUE(m_edit->SetValue(COleDateTime(2024, 7, 9)));
  ClickButton(CVelDateEdit::kCopyButton);
  EXPECT_EQ(ClipboardText(), "09-07-2024");
  EXPECT_EQ(varion::CurrentTipText(m_hwnd), "Skopiowano do schowka.");
  EXPECT_EQ(GetFocus(), m_hwnd);
}

TEST_F(DateEditWin, CalendarDropsDownUnderTheFieldAndClosesUp) {
  ASSERT_TRUE(m_edit->SetRange(COleDateTime(2024, 6, 1), COleDateTime(2025, 1, 10)));
  ASSERT_TRUE(m_edit->SetValue(COleDateTime(2024, 12, 31)));
  struct Case {
    const char* what;
    std::vector<WPARAM> keys;  // while dropped down; 0 stands for the focus leaving the field
    const char* text;
  } cases[] = {
      {"enter takes the moved day", {VK_RIGHT, VK_RIGHT, VK_RETURN}, "2025-01-02"},
      {"escape keeps the value", {VK_DOWN, VK_ESCAPE}, "2025-01-02"},
      {"tab keeps it", {VK_LEFT, VK_TAB}, "2025-01-02"},
      {"F4 keeps it", {VK_LEFT, VK_F4}, "2025-01-02"},
      {"the upper limit stops the move", {VK_DOWN, VK_DOWN, VK_RETURN}, "2025-01-09"},
      {"focus elsewhere keeps it", {VK_LEFT, 0}, "2025-01-09"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    SetFocus(m_hwnd);
    ClickButton(CVelDateEdit::kCalendarButton);
    ASSERT_TRUE(m_edit->IsDroppedDown());
    EXPECT_EQ(GetFocus(), m_hwnd) << "the field keeps the focus";
    HWND cal = m_edit->GetCalendar()->GetHwnd();
    RECT field, below;
    GetWindowRect(m_hwnd, &field);
    GetWindowRect(cal, &below);
    EXPECT_EQ(below.top, field.bottom);
    EXPECT_EQ(below.left, field.left);
    EXPECT_EQ(varion::testing::GetTextA(cal), Text()) << "the calendar opens on the value";
    SYSTEMTIME limits[2]{};
    EXPECT_EQ(SendMessageW(cal, DTM_GETRANGE, 0, reinterpret_cast<LPARAM>(limits)), GDTR_MIN | GDTR_MAX);
    EXPECT_EQ(Ymd(limits[1]), "2025-01-10");
    for (WPARAM key : c.keys) {
      if (key)
        Key(key);
      else
        SetFocus(m_parent.get());
    }
    EXPECT_FALSE(m_edit->IsDroppedDown());
    EXPECT_EQ(Text(), c.text);
  }
  // The calendar button toggles, and a click on a day closes with that day.
  SetFocus(m_hwnd);
  ClickButton(CVelDateEdit::kCalendarButton);
  ClickButton(CVelDateEdit::kCalendarButton);
  EXPECT_FALSE(m_edit->IsDroppedDown());
  ClickButton(CVelDateEdit::kCalendarButton);
  CVelCalendar* calendar = m_edit->GetCalendar();
  int index = -1;
  for (int i = 0; i < 42 && index < 0; ++i) {
    const COleDateTime d = calendar->Model().GetCellDate(i);
    if (d.GetYear() == 2025 && d.GetMonth() == 1 && d.GetDay() == 3) index = i;
  }
  ASSERT_GE(index, 0);
  const varion::CalRect r = calendar->Layout().Cell(index);
  const LPARAM at = MAKELPARAM((r.left + r.right) / 2, (r.top + r.bottom) / 2);
  g_changes.clear();
  SendMessageW(calendar->GetHwnd(), WM_LBUTTONDOWN, MK_LBUTTON, at);
  SendMessageW(calendar->GetHwnd(), WM_LBUTTONUP, 0, at);
  EXPECT_FALSE(m_edit->IsDroppedDown());
  EXPECT_EQ(Text(), "2025-01-03");
  ASSERT_EQ(g_changes.size(), 1u);
  EXPECT_EQ(Ymd(g_changes[0].st), "2025-01-03");
  // Keys: Alt+Down opens it, the application losing activation closes it.
  SendMessageW(m_hwnd, WM_SYSKEYDOWN, VK_DOWN, 1 << 29);
  ASSERT_TRUE(m_edit->IsDroppedDown());
  SendMessageW(calendar->GetHwnd(), WM_ACTIVATEAPP, FALSE, 0);
  EXPECT_FALSE(m_edit->IsDroppedDown());
  EXPECT_EQ(Text(), "2025-01-03");
}

TEST_F(DateEditWin, AnEmptyFieldOpensTheCalendarOnTodayFromTheClock) {
  ClickButton(CVelDateEdit::kCalendarButton);
  ASSERT_TRUE(m_edit->IsDroppedDown());
  EXPECT_EQ(varion::testing::GetTextA(m_edit->GetCalendar()->GetHwnd()), "2024-12-31");
  Key(VK_ESCAPE);
  EXPECT_EQ(Text(), "") << "closing without a choice leaves the field empty";
}

}  // namespace
