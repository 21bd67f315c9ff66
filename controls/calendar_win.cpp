#include "controls/calendar_win.h"

#include <commctrl.h>
#include <windowsx.h>

#include <algorithm>
#include <cstring>

#include "base/library_module_win.h"
#include "base/text.h"
#include "controls/calendar_accessible_win.h"
#include "controls/holidays.h"
#include "controls/system_time_win.h"

using varion::CalAction;
using varion::CalendarCell;

namespace {

constexpr wchar_t kClassName[] = L"vel_calendar";

const DateTools::IClock* g_defaultClock = nullptr;
CVelCalendar::MenuChooser g_menuChooser = nullptr;
// The dropped-down calendar of this thread that the mouse hook watches; one at a time, as only
// one field can have its calendar open.
thread_local CVelCalendar* t_dropped = nullptr;
const DateTools::SystemClock kSystemClock;

using unique_memory_dc = varion::unique_handle_of<HDC, DeleteDC>;

// Colours of the grid; the system's where a theme would choose, fixed where the meaning is ours.
constexpr COLORREF kHolidayText = RGB(200, 0, 0);
constexpr COLORREF kHolidayBack = RGB(255, 234, 234);
constexpr COLORREF kWeekendText = RGB(176, 32, 32);
constexpr COLORREF kTodayFrame = RGB(200, 0, 0);
constexpr COLORREF kUnavailableBack = RGB(236, 236, 236);
constexpr COLORREF kInactiveSelection = RGB(204, 228, 247);
constexpr COLORREF kNavigationKey = RGB(255, 0, 255);  // the bitmap's transparent colour

// Day names of the header row, Monday first: COleDateTime's day numbers.
constexpr int kWeekOrder[7] = {2, 3, 4, 5, 6, 7, 1};

RECT ToRect(const varion::CalRect& r) { return RECT{r.left, r.top, r.right, r.bottom}; }

SIZE TextSize(HDC dc, const std::string& text) {
  SIZE size{};
  const std::wstring wide = varion::text::Cp1250ToWide(text);
  GetTextExtentPoint32W(dc, wide.c_str(), static_cast<int>(wide.size()), &size);
  return size;
}

void DrawTextIn(HDC dc, const std::string& text, RECT rect, UINT format) {
  const std::wstring wide = varion::text::Cp1250ToWide(text);
  DrawTextW(dc, wide.c_str(), static_cast<int>(wide.size()), &rect, format | DT_SINGLELINE | DT_NOPREFIX);
}

void Fill(HDC dc, const RECT& rect, COLORREF color) {
  SetBkColor(dc, color);
  ExtTextOutW(dc, 0, 0, ETO_OPAQUE, &rect, nullptr, 0, nullptr);
}

void Frame(HDC dc, const RECT& rect, COLORREF color) {
  varion::unique_brush brush(CreateSolidBrush(color));
  FrameRect(dc, &rect, brush.get());
}

std::string FooterText(const COleDateTime& today) {
  return today.IsValid() ? "Dzisiaj: " + today.Format("%Y-%m-%d") : std::string();
}

}  // namespace

CVelCalendar::CVelCalendar() : m_clock(g_defaultClock), m_model(g_defaultClock) {}

void CVelCalendar::SetDefaultClock(const DateTools::IClock* clock) { g_defaultClock = clock; }
void CVelCalendar::SetMenuChooser(MenuChooser chooser) { g_menuChooser = chooser; }

CVelCalendar* CVelCalendar::Create(DWORD exStyle, const wchar_t* title, DWORD style, const RECT& rect, HWND parent,
                                   UINT id) {
  // The class may already be there from the creation hook's table, with the default procedure;
  // the calendar then subclasses its window like any attached control.
  WNDCLASSEXW wc{};
  wc.cbSize = sizeof wc;
  if (!GetClassInfoExW(varion::LibraryModule(), kClassName, &wc)) {
    wc = WNDCLASSEXW{};
    wc.cbSize = sizeof wc;
    wc.style = CS_VREDRAW | CS_HREDRAW | CS_DBLCLKS | CS_GLOBALCLASS;  // as the creation hook registers it
    wc.lpfnWndProc = DefWindowProcW;
    wc.hInstance = varion::LibraryModule();
    wc.hCursor = LoadCursorW(nullptr, reinterpret_cast<LPCWSTR>(IDC_ARROW));
    wc.lpszClassName = kClassName;
    if (!RegisterClassExW(&wc) && GetLastError() != ERROR_CLASS_ALREADY_EXISTS) return nullptr;
  }
  const bool child = (style & WS_CHILD) != 0;
  HWND h = CreateWindowExW(exStyle, kClassName, title ? title : L"", style, rect.left, rect.top,
                           rect.right - rect.left, rect.bottom - rect.top, parent,
                           child ? reinterpret_cast<HMENU>(static_cast<UINT_PTR>(id)) : nullptr,
                           varion::LibraryModule(), nullptr);
  if (!h) return nullptr;
  CVelCalendar* self = Attach(h);
  if (!self) {
    DestroyWindow(h);
    return nullptr;
  }
  if (rect.right - rect.left <= 0 || rect.bottom - rect.top <= 0) {
    const SIZE size = self->GetIdealSize();
    SetWindowPos(h, nullptr, 0, 0, size.cx, size.cy, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
  }
  return self;
}

CVelCalendar* CVelCalendar::Attach(HWND window) {
  if (!IsWindow(window)) return nullptr;
  if (auto* existing = FromHandle(window)) return existing;
  auto* self = new CVelCalendar;
  if (!self->AttachWindow(window, kOwnedByWindow)) {
    delete self;
    return nullptr;
  }
  self->Initialize();
  return self;
}

void CVelCalendar::Initialize() {
  NONCLIENTMETRICSW metrics{};
  metrics.cbSize = sizeof metrics;
  if (SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0))
    m_ownFont.reset(CreateFontIndirectW(&metrics.lfMessageFont));
  m_font = m_ownFont ? m_ownFont.get() : static_cast<HFONT>(GetStockObject(DEFAULT_GUI_FONT));
  HMODULE module = nullptr;
  if (varion::FindLibraryResource(L"IDB_CALNAVI_BTNS", reinterpret_cast<LPCWSTR>(RT_BITMAP), &module))
    m_navigation.reset(static_cast<HBITMAP>(LoadImageW(module, L"IDB_CALNAVI_BTNS", IMAGE_BITMAP, 0, 0, 0)));
  m_tooltip.reset(CreateWindowExW(WS_EX_TOPMOST, TOOLTIPS_CLASSW, nullptr, WS_POPUP | TTS_ALWAYSTIP | TTS_NOPREFIX,
                                  CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, m_hWnd, nullptr,
                                  varion::LibraryModule(), nullptr));
  Measure();
}

HWND CVelCalendar::GetOwner() const {
  if (m_owner && IsWindow(m_owner)) return m_owner;
  HWND owner = GetWindow(m_hWnd, GW_OWNER);
  return owner ? owner : GetParent(m_hWnd);
}

void CVelCalendar::SetDroppedDown(bool droppedDown) {
  m_model.SetDroppedDown(droppedDown);
  HookMouse(droppedDown && IsWindowVisible(m_hWnd));
}

SIZE CVelCalendar::GetIdealSize() const {
  RECT r = ToRect(m_layout.client);
  AdjustWindowRectEx(&r, static_cast<DWORD>(GetWindowLongPtrW(m_hWnd, GWL_STYLE)), FALSE,
                     static_cast<DWORD>(GetWindowLongPtrW(m_hWnd, GWL_EXSTYLE)));
  return SIZE{r.right - r.left, r.bottom - r.top};
}

// Layout -----------------------------------------------------------------------------------------

void CVelCalendar::Measure() {
  varion::WindowDc dc(m_hWnd);
  if (!dc) return;
  LOGFONTW lf{};
  GetObjectW(m_font, sizeof lf, &lf);
  lf.lfWeight = FW_BOLD;
  m_boldFont.reset(CreateFontIndirectW(&lf));

  varion::CalendarMetrics m;
  {
    varion::SelectedObject font(dc.get(), m_font);
    TEXTMETRICW tm{};
    GetTextMetricsW(dc.get(), &tm);
    m.textHeight = tm.tmHeight;
    for (int dow = 1; dow <= 7; ++dow)
      m.dayNameWidth = std::max<int>(m.dayNameWidth, TextSize(dc.get(), CCalendarUtils::GetDayName(dow, true)).cx);
    for (const char* number : {"28", "30", "31", "22", "00"})
      m.dayNumberWidth = std::max<int>(m.dayNumberWidth, TextSize(dc.get(), number).cx);
    m.todayWidth = TextSize(dc.get(), FooterText(COleDateTime(2000, 12, 28))).cx;
  }
  {
    // The title is bold; the widest title of any month keeps the window's size while paging.
    varion::SelectedObject font(dc.get(), m_boldFont.get());
    const int month = m_model.GetDisplayedMonth();
    m.monthNameWidth = TextSize(dc.get(), CCalendarUtils::GetPolishMonthName(month - 1)).cx;
    m.spaceWidth = TextSize(dc.get(), " ").cx;
    m.yearWidth = TextSize(dc.get(), std::to_string(m_model.GetDisplayedYear())).cx;
    for (int i = 0; i < 12; ++i)
      m.titleWidth = std::max<int>(m.titleWidth, TextSize(dc.get(), CCalendarUtils::GetPolishMonthName(i) + " 2000").cx);
  }
  m_layout = varion::ComputeCalendarLayout(m);
  m_model.GetCells(m_layout, m_cells);
  UpdateTooltips();
}

void CVelCalendar::UpdateTooltips() {
  if (!m_tooltip) return;
  HWND tip = m_tooltip.get();
  TTTOOLINFOW info{};
  info.cbSize = sizeof info;
  while (SendMessageW(tip, TTM_ENUMTOOLSW, 0, reinterpret_cast<LPARAM>(&info))) {
    SendMessageW(tip, TTM_DELTOOLW, 0, reinterpret_cast<LPARAM>(&info));
    info = TTTOOLINFOW{};
    info.cbSize = sizeof info;
  }
  for (const CalendarCell& cell : m_cells) {
    if (!(cell.flags & CalendarCell::kHoliday) || !cell.holidayName) continue;
    std::wstring name = varion::text::Cp1250ToWide(cell.holidayName);
    TTTOOLINFOW tool{};
    tool.cbSize = sizeof tool;
    tool.uFlags = 0;
    tool.hwnd = m_hWnd;
    tool.uId = static_cast<UINT_PTR>(cell.index);
    tool.rect = ToRect(cell.rect);
    tool.lpszText = name.data();
    SendMessageW(tip, TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
  }
}

// Actions ----------------------------------------------------------------------------------------

void CVelCalendar::Apply(const CalAction& a, POINT pointer) {
  const int year = m_model.GetDisplayedYear(), month = m_model.GetDisplayedMonth();
  // A dropped-down calendar leaves the focus with its date field, which passes the keys on.
  if (a.takeFocus && !m_model.IsDroppedDown() && GetFocus() != m_hWnd) SetFocus(m_hWnd);
  if (a.capture) SetCapture(m_hWnd);
  if (a.releaseCapture && GetCapture() == m_hWnd) ReleaseCapture();
  if (a.openMonthsMenu) {
    ClientToScreen(m_hWnd, &pointer);
    OpenMonthsMenu(pointer);
  }
  if (year != m_model.GetDisplayedYear() || month != m_model.GetDisplayedMonth()) {
    Measure();  // the title's widths follow the month
    InvalidateRect(m_hWnd, nullptr, FALSE);
  } else if (a.redraw == CalAction::kRedrawAll) {
    m_model.GetCells(m_layout, m_cells);
    InvalidateRect(m_hWnd, nullptr, FALSE);
  } else if (a.redraw == CalAction::kRedrawCells) {
    m_model.GetCells(m_layout, m_cells);
    for (int index : a.cells) InvalidateCell(index);
  }
  if (a.copy) PostMessageW(m_hWnd, WM_COPY, 0, 0);
  if (a.paste) PostMessageW(m_hWnd, WM_PASTE, 0, 0);
  // The model has moved before the window hears of it: compare with the day last announced.
  if (!(m_announced == m_model.GetFocusedDate())) {
    m_announced = m_model.GetFocusedDate();
    varion::NotifyCalendarFocus(m_hWnd, m_model.GetFocusedIndex());
  }
  if (a.hide) ShowWindow(m_hWnd, SW_HIDE);
  for (int i = 0; i < a.count; ++i) SendNotification(a.notifications[i]);
}

void CVelCalendar::SendNotification(const varion::CalNotification& n) {
  HWND owner = GetOwner();
  if (!owner) return;
  NMSELCHANGE change{};
  change.nmhdr.hwndFrom = m_hWnd;
  change.nmhdr.idFrom = static_cast<UINT_PTR>(GetDlgCtrlID(m_hWnd));
  change.nmhdr.code = static_cast<UINT>(n.code);
  if (n.date.IsValid()) {
    change.stSelStart = varion::ToSystemTime(n.date);
    change.stSelEnd = change.stSelStart;
  }
  SendMessageW(owner, WM_NOTIFY, change.nmhdr.idFrom, reinterpret_cast<LPARAM>(&change));
}

void CVelCalendar::InvalidateCell(int index) {
  if (index < 0 || index >= 42) return;
  RECT r = ToRect(m_layout.Cell(index));
  InvalidateRect(m_hWnd, &r, FALSE);
}

UINT CVelCalendar::TrackMenu(HMENU menu, POINT screen) {
  if (g_menuChooser) return g_menuChooser(menu, screen);
  return static_cast<UINT>(TrackPopupMenu(menu, TPM_RETURNCMD | TPM_NONOTIFY | TPM_LEFTALIGN | TPM_TOPALIGN,
                                          screen.x, screen.y, 0, m_hWnd, nullptr));
}

void CVelCalendar::OpenMonthsMenu(POINT screen) {
  varion::unique_menu menu(CreatePopupMenu());
  if (!menu) return;
  for (int i = 0; i < 12; ++i) {
    const std::wstring name = varion::text::Cp1250ToWide(CCalendarUtils::GetPolishMonthName(i));
    const UINT checked = i + 1 == m_model.GetDisplayedMonth() ? MF_CHECKED : MF_UNCHECKED;
    AppendMenuW(menu.get(), MF_STRING | checked, static_cast<UINT_PTR>(varion::kCalCmdFirstMonth + i), name.c_str());
  }
  if (const UINT command = TrackMenu(menu.get(), screen)) SendMessageW(m_hWnd, WM_COMMAND, command, 0);
}

void CVelCalendar::OpenContextMenu(POINT screen) {
  HMODULE module = nullptr;
  if (!varion::FindLibraryResource(L"IDM_GOTOTODAY", reinterpret_cast<LPCWSTR>(RT_MENU), &module)) return;
  varion::unique_menu menu(LoadMenuW(module, L"IDM_GOTOTODAY"));
  HMENU popup = menu ? GetSubMenu(menu.get(), 0) : nullptr;
  if (!popup) return;
  if (const UINT command = TrackMenu(popup, screen)) SendMessageW(m_hWnd, WM_COMMAND, command, 0);
}

void CVelCalendar::Copy() {
  const std::string text = m_model.GetText();
  varion::ClipboardOpen clipboard(m_hWnd);
  if (!clipboard) return;
  EmptyClipboard();
  HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, text.size() + 1);
  if (!memory) return;
  if (void* p = GlobalLock(memory)) {
    std::memcpy(p, text.c_str(), text.size() + 1);
    GlobalUnlock(memory);
  }
  if (!SetClipboardData(CF_TEXT, memory)) GlobalFree(memory);  // the clipboard owns it once set
}

void CVelCalendar::Paste() {
  std::string text;
  {
    varion::ClipboardOpen clipboard(m_hWnd);
    if (!clipboard) return;
    HANDLE data = GetClipboardData(CF_TEXT);
    if (!data) return;
    if (const char* p = static_cast<const char*>(GlobalLock(data))) {
      text.assign(p, strnlen(p, GlobalSize(data)));
      GlobalUnlock(data);
    }
  }
  const std::wstring wide = varion::text::Cp1250ToWide(text);
  if (!OnSetText(reinterpret_cast<LPARAM>(wide.c_str()))) {
    MessageBeep(MB_OK);
    return;
  }
  // A paste is the user's choice of a day, told as a key's would be.
  CalAction a;
  a.Notify(varion::kCalNotifySelect, m_model.GetFocusedDate());
  a.Notify(varion::kCalNotifySelChange, m_model.GetFocusedDate());
  Apply(a, POINT{});
}

void CVelCalendar::HookMouse(bool on) {
  if (on) {
    if (!m_mouseHook)
      m_mouseHook.reset(SetWindowsHookExW(WH_MOUSE, MouseHookProc, nullptr, GetCurrentThreadId()));
    t_dropped = this;
  } else {
    m_mouseHook.reset();
    if (t_dropped == this) t_dropped = nullptr;
  }
}

LRESULT CALLBACK CVelCalendar::MouseHookProc(int code, WPARAM wParam, LPARAM lParam) {
  if (code == HC_ACTION && t_dropped) {
    switch (wParam) {
      case WM_LBUTTONDOWN: case WM_LBUTTONDBLCLK: case WM_RBUTTONDOWN: case WM_RBUTTONDBLCLK:
      case WM_MBUTTONDOWN: case WM_MBUTTONDBLCLK: case WM_NCLBUTTONDOWN: case WM_NCLBUTTONDBLCLK:
      case WM_NCRBUTTONDOWN: case WM_NCRBUTTONDBLCLK: case WM_NCMBUTTONDOWN: case WM_NCMBUTTONDBLCLK: {
        const auto* info = reinterpret_cast<const MOUSEHOOKSTRUCT*>(lParam);
        HWND self = t_dropped->m_hWnd;
        // Posted: the press goes on to its window first, and the calendar closes after it.
        if (info->hwnd != self && !IsChild(self, info->hwnd)) PostMessageW(self, kMsgOutsidePress, 0, 0);
        break;
      }
      default:
        break;
    }
  }
  return CallNextHookEx(nullptr, code, wParam, lParam);
}

// Painting ---------------------------------------------------------------------------------------

void CVelCalendar::Paint(HDC dc, const RECT& clip) {
  m_model.GetCells(m_layout, m_cells);  // today may have moved on since the last change
  Fill(dc, clip, GetSysColor(COLOR_WINDOW));
  SetBkMode(dc, TRANSPARENT);
  PaintHeader(dc);
  {
    varion::SelectedObject font(dc, m_font);
    for (int column = 0; column < 7; ++column) {
      RECT r = ToRect(m_layout.Cell(column));
      r.top = m_layout.dayNames.top;
      r.bottom = m_layout.dayNames.bottom;
      SetTextColor(dc, column >= 5 ? kWeekendText : GetSysColor(COLOR_GRAYTEXT));
      DrawTextIn(dc, CCalendarUtils::GetDayName(kWeekOrder[column], true), r, DT_CENTER | DT_VCENTER);
    }
    // A line under the day names.
    RECT line = ToRect(m_layout.dayNames);
    line.top = line.bottom - 1;
    Fill(dc, line, GetSysColor(COLOR_BTNSHADOW));
    SetBkMode(dc, TRANSPARENT);
    for (const CalendarCell& cell : m_cells) {
      RECT r = ToRect(cell.rect), dummy;
      if (IntersectRect(&dummy, &r, &clip)) PaintCell(dc, cell);
    }
  }
  // Footer: today as the clock gives it; a press goes there.
  const COleDateTime today = (m_clock ? m_clock : &kSystemClock)->Today();
  const std::string footer = FooterText(today);
  varion::SelectedObject font(dc, m_font);
  SetTextColor(dc, GetSysColor(COLOR_WINDOWTEXT));
  DrawTextIn(dc, footer, ToRect(m_layout.today), DT_CENTER | DT_VCENTER);
}

void CVelCalendar::PaintHeader(HDC dc) {
  RECT header{m_layout.client.left, m_layout.client.top, m_layout.client.right, m_layout.dayNames.top};
  Fill(dc, header, GetSysColor(COLOR_BTNFACE));
  SetBkMode(dc, TRANSPARENT);
  // The navigation bitmap holds two square glyphs side by side, previous then next, on a
  // transparent key colour; they grow by whole pixels with the button so they stay crisp.
  BITMAP bm{};
  if (m_navigation && GetObjectW(m_navigation.get(), sizeof bm, &bm) && bm.bmHeight > 0) {
    unique_memory_dc source(CreateCompatibleDC(dc));
    varion::SelectedObject bitmap(source.get(), m_navigation.get());
    const int glyph = bm.bmHeight;
    const int scale = std::max(1, (m_layout.prev.Height() - 4) / (glyph + glyph / 4));
    for (int i = 0; i < 2; ++i) {
      const varion::CalRect& b = i == 0 ? m_layout.prev : m_layout.next;
      const int side = glyph * scale;
      TransparentBlt(dc, b.left + (b.Width() - side) / 2, b.top + (b.Height() - side) / 2, side, side, source.get(),
                     i * glyph, 0, glyph, glyph, kNavigationKey);
    }
  }
  varion::SelectedObject font(dc, m_boldFont.get());
  SetTextColor(dc, GetSysColor(COLOR_BTNTEXT));
  DrawTextIn(dc, CCalendarUtils::GetPolishMonthName(m_model.GetDisplayedMonth() - 1), ToRect(m_layout.month),
             DT_LEFT | DT_VCENTER);
  DrawTextIn(dc, std::to_string(m_model.GetDisplayedYear()), ToRect(m_layout.year), DT_LEFT | DT_VCENTER);
}

void CVelCalendar::PaintCell(HDC dc, const CalendarCell& cell) {
  const RECT r = ToRect(cell.rect);
  const unsigned f = cell.flags;
  const bool hasFocus = GetFocus() == m_hWnd;
  COLORREF back = GetSysColor(COLOR_WINDOW);
  COLORREF text = GetSysColor(COLOR_WINDOWTEXT);
  if (f & CalendarCell::kWeekend) text = kWeekendText;
  if (f & CalendarCell::kHoliday) {
    back = kHolidayBack;
    text = kHolidayText;
  }
  if (!(f & CalendarCell::kInMonth)) text = GetSysColor(COLOR_GRAYTEXT);
  if (f & CalendarCell::kOutOfRange) {
    back = kUnavailableBack;
    text = GetSysColor(COLOR_GRAYTEXT);
  }
  if (f & CalendarCell::kFocused) {
    // The selection stays visible without the focus, in a pale tone of the highlight.
    const bool active = hasFocus || m_model.IsDroppedDown();
    back = active ? GetSysColor(COLOR_HIGHLIGHT) : kInactiveSelection;
    text = active ? GetSysColor(COLOR_HIGHLIGHTTEXT) : GetSysColor(COLOR_WINDOWTEXT);
  }
  if (f & CalendarCell::kPressed) back = GetSysColor(COLOR_BTNSHADOW);
  Fill(dc, r, back);
  SetBkMode(dc, TRANSPARENT);
  if (cell.day > 0) {
    varion::SelectedObject font(dc, (f & CalendarCell::kHoliday) ? m_boldFont.get() : m_font);
    SetTextColor(dc, text);
    DrawTextIn(dc, std::to_string(cell.day), r, DT_CENTER | DT_VCENTER);
  }
  if (f & CalendarCell::kOutOfRange) {
    // A stroke across the number: the day exists but cannot be chosen.
    RECT strike{r.left + 3, (r.top + r.bottom) / 2, r.right - 3, (r.top + r.bottom) / 2 + 1};
    Fill(dc, strike, GetSysColor(COLOR_GRAYTEXT));
  }
  if (f & CalendarCell::kToday) Frame(dc, r, kTodayFrame);
  if ((f & CalendarCell::kFocused) && hasFocus) {
    RECT focus{r.left + 1, r.top + 1, r.right - 1, r.bottom - 1};
    SetTextColor(dc, GetSysColor(COLOR_WINDOWTEXT));
    SetBkColor(dc, GetSysColor(COLOR_WINDOW));
    DrawFocusRect(dc, &focus);
  }
}

// Messages ---------------------------------------------------------------------------------------

LRESULT CVelCalendar::OnKeyDown(WPARAM key) {
  varion::keys::Modifiers mods;
  mods.ctrl = GetKeyState(VK_CONTROL) < 0;
  mods.shift = GetKeyState(VK_SHIFT) < 0;
  mods.alt = GetKeyState(VK_MENU) < 0;
  const CalAction a = m_model.OnKeyDown(static_cast<int>(key), mods);
  Apply(a, POINT{});
  return a.handled ? 0 : 1;
}

LRESULT CVelCalendar::OnButtonDown(LPARAM lParam) {
  const POINT p{GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)};
  Apply(m_model.OnLButtonDown(m_layout, p.x, p.y), p);
  return 0;
}

LRESULT CVelCalendar::OnButtonUp(LPARAM lParam) {
  const POINT p{GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)};
  Apply(m_model.OnLButtonUp(m_layout, p.x, p.y), p);
  return 0;
}

LRESULT CVelCalendar::OnGetText(WPARAM size, LPARAM buffer) const {
  const std::wstring text = varion::text::Cp1250ToWide(m_model.GetText());
  auto* out = reinterpret_cast<wchar_t*>(buffer);
  if (!out || size == 0) return 0;
  const std::size_t n = std::min<std::size_t>(text.size(), size - 1);
  std::copy_n(text.data(), n, out);
  out[n] = L'\0';
  return static_cast<LRESULT>(n);
}

LRESULT CVelCalendar::OnSetText(LPARAM text) {
  const auto* wide = reinterpret_cast<const wchar_t*>(text);
  if (!wide || !m_model.SetText(varion::text::WideToCp1250(wide))) return FALSE;
  Measure();
  InvalidateRect(m_hWnd, nullptr, FALSE);
  return TRUE;
}

LRESULT CVelCalendar::OnSetRange(WPARAM flags, LPARAM limits) {
  const auto* st = reinterpret_cast<const SYSTEMTIME*>(limits);
  if (!st && flags) return FALSE;
  const COleDateTime lower = (flags & varion::kCalRangeLower) ? varion::FromSystemDate(st[0]) : COleDateTime::Null();
  const COleDateTime upper = (flags & varion::kCalRangeUpper) ? varion::FromSystemDate(st[1]) : COleDateTime::Null();
  if (!m_model.SetRange(static_cast<unsigned>(flags), lower, upper)) return FALSE;
  Measure();
  InvalidateRect(m_hWnd, nullptr, FALSE);
  return TRUE;
}

LRESULT CVelCalendar::OnGetRange(LPARAM limits) const {
  COleDateTime lower, upper;
  const unsigned flags = m_model.GetRange(lower, upper);
  if (auto* st = reinterpret_cast<SYSTEMTIME*>(limits)) {
    st[0] = (flags & varion::kCalRangeLower) ? varion::ToSystemTime(lower) : SYSTEMTIME{};
    st[1] = (flags & varion::kCalRangeUpper) ? varion::ToSystemTime(upper) : SYSTEMTIME{};
  }
  return static_cast<LRESULT>(flags);
}

LRESULT CVelCalendar::OnSetFont(HFONT font, bool redraw) {
  m_font = font ? font : (m_ownFont ? m_ownFont.get() : static_cast<HFONT>(GetStockObject(DEFAULT_GUI_FONT)));
  Measure();
  const SIZE size = GetIdealSize();
  SetWindowPos(m_hWnd, nullptr, 0, 0, size.cx, size.cy, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
  if (redraw) InvalidateRect(m_hWnd, nullptr, TRUE);
  return 0;
}

LRESULT CVelCalendar::WindowProc(UINT msg, WPARAM wParam, LPARAM lParam) {
  switch (msg) {
    case WM_PAINT: {
      varion::PaintDc paint(m_hWnd);
      RECT client;
      GetClientRect(m_hWnd, &client);
      // Painted off screen first so that paging does not flicker.
      unique_memory_dc memory(CreateCompatibleDC(paint.get()));
      varion::unique_bitmap bitmap(CreateCompatibleBitmap(paint.get(), std::max<LONG>(client.right, 1),
                                                          std::max<LONG>(client.bottom, 1)));
      {
        varion::SelectedObject selected(memory.get(), bitmap.get());
        Paint(memory.get(), client);
        const RECT& r = paint.Info().rcPaint;
        BitBlt(paint.get(), r.left, r.top, r.right - r.left, r.bottom - r.top, memory.get(), r.left, r.top, SRCCOPY);
      }
      return 0;
    }
    case WM_PRINTCLIENT: {
      RECT client;
      GetClientRect(m_hWnd, &client);
      Paint(reinterpret_cast<HDC>(wParam), client);
      return 0;
    }
    case WM_ERASEBKGND:
      return 1;
    case WM_GETDLGCODE:
      return DLGC_WANTARROWS | DLGC_WANTCHARS | (m_model.IsDroppedDown() ? DLGC_WANTALLKEYS : 0);
    case WM_KEYDOWN:
    case WM_SYSKEYDOWN:
      if (OnKeyDown(wParam) == 0) return 0;
      break;
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK:
      return OnButtonDown(lParam);
    case WM_LBUTTONUP:
      return OnButtonUp(lParam);
    case WM_MOUSEMOVE:
      if (m_tooltip) {
        MSG relay{m_hWnd, msg, wParam, lParam, static_cast<DWORD>(GetMessageTime()), {GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)}};
        SendMessageW(m_tooltip.get(), TTM_RELAYEVENT, 0, reinterpret_cast<LPARAM>(&relay));
      }
      return 0;
    case WM_MOUSEACTIVATE:
      // A drop-down leaves the activation (and the focus) with its date field.
      if (m_model.IsDroppedDown()) return MA_NOACTIVATE;
      break;
    case WM_CONTEXTMENU: {
      POINT p{GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)};
      if (p.x == -1 && p.y == -1) {  // from the keyboard: at the focused day
        const varion::CalRect cell = m_layout.Cell(m_model.GetFocusedIndex());
        p = POINT{cell.left, cell.bottom};
        ClientToScreen(m_hWnd, &p);
      }
      OpenContextMenu(p);
      return 0;
    }
    case WM_COMMAND: {
      const CalAction a = m_model.OnCommand(LOWORD(wParam));
      if (!a.handled) break;
      Apply(a, POINT{});
      return 0;
    }
    case WM_SETFOCUS:
    case WM_KILLFOCUS:
      Apply(m_model.OnFocus(msg == WM_SETFOCUS), POINT{});
      InvalidateCell(m_model.GetFocusedIndex());
      if (msg == WM_SETFOCUS)
        NotifyWinEvent(EVENT_OBJECT_FOCUS, m_hWnd, OBJID_CLIENT, m_model.GetFocusedIndex() + 1);
      return 0;
    case WM_GETOBJECT:
      if (const LRESULT object = varion::AnswerCalendarGetObject(m_hWnd, wParam, lParam)) return object;
      break;
    case WM_ACTIVATEAPP:
      Apply(m_model.OnActivateApp(wParam != 0), POINT{});
      break;
    case WM_SHOWWINDOW:
      m_model.OnShow(wParam != 0);
      HookMouse(wParam != 0 && m_model.IsDroppedDown());
      break;
    case WM_WINDOWPOSCHANGED: {
      const auto* pos = reinterpret_cast<const WINDOWPOS*>(lParam);
      if (pos->flags & (SWP_SHOWWINDOW | SWP_HIDEWINDOW)) {
        m_model.OnShow((pos->flags & SWP_SHOWWINDOW) != 0);
        HookMouse((pos->flags & SWP_SHOWWINDOW) && m_model.IsDroppedDown());
      }
      break;
    }
    case kMsgOutsidePress:
      Apply(m_model.OnOutsidePress(), POINT{});
      return 0;
    case WM_COPY:
      Copy();
      return 0;
    case WM_PASTE:
      Paste();
      return 0;
    case WM_GETTEXT:
      return OnGetText(wParam, lParam);
    case WM_GETTEXTLENGTH:
      return static_cast<LRESULT>(varion::text::Cp1250ToWide(m_model.GetText()).size());
    case WM_SETTEXT:
      return OnSetText(lParam);
    case WM_SETFONT:
      return OnSetFont(reinterpret_cast<HFONT>(wParam), LOWORD(lParam) != 0);
    case WM_GETFONT:
      return reinterpret_cast<LRESULT>(m_font);
    case MCM_GETCURSEL: {
      COleDateTime date;
      auto* st = reinterpret_cast<SYSTEMTIME*>(lParam);
      if (!st || !m_model.GetCurSel(date) || !date.IsValid()) return FALSE;
      *st = varion::ToSystemTime(date);
      return TRUE;
    }
    case MCM_SETCURSEL: {
      const auto* st = reinterpret_cast<const SYSTEMTIME*>(lParam);
      if (!st || !m_model.SetCurSel(varion::FromSystemDate(*st))) return FALSE;
      Measure();
      InvalidateRect(m_hWnd, nullptr, FALSE);
      return TRUE;
    }
    case DTM_SETRANGE:
    case MCM_SETRANGE:
      return OnSetRange(wParam, lParam);
    case DTM_GETRANGE:
    case MCM_GETRANGE:
      return OnGetRange(lParam);
    case WM_DESTROY:
      HookMouse(false);
      break;
    default:
      break;
  }
  return Default(msg, wParam, lParam);
}
