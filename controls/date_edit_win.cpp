#include "controls/date_edit_win.h"

#include <commctrl.h>
#include <windowsx.h>

#include <algorithm>
#include <cstring>

#include "base/library_module_win.h"
#include "base/text.h"
#include "controls/balloon_tip_win.h"
#include "controls/calendar_win.h"
#include "controls/system_time_win.h"

namespace {

const DateTools::IClock* g_defaultClock = nullptr;

// The buttons are as wide as a scroll bar's thumb (system metric 10, SM_CXHTHUMB).
constexpr int kButtonMetric = 10;
constexpr COLORREF kGlyphKey = RGB(255, 0, 255);

int ButtonWidth() { return GetSystemMetrics(kButtonMetric); }

using unique_memory_dc = varion::unique_handle_of<HDC, DeleteDC>;

HBITMAP LoadLibraryBitmap(const wchar_t* name) {
  HMODULE module = nullptr;
  if (!varion::FindLibraryResource(name, reinterpret_cast<LPCWSTR>(RT_BITMAP), &module)) return nullptr;
  return static_cast<HBITMAP>(LoadImageW(module, name, IMAGE_BITMAP, 0, 0, 0));
}

// The copy glyph: two overlapping sheets, drawn rather than loaded so that it scales with the
// button.
void DrawCopyGlyph(HDC dc, const RECT& button, bool enabled) {
  const int side = std::max<int>(6, std::min<int>(button.right - button.left, button.bottom - button.top) - 6);
  const int sheet = side * 2 / 3;
  const int left = button.left + (button.right - button.left - side) / 2;
  const int top = button.top + (button.bottom - button.top - side) / 2;
  varion::unique_brush ink(CreateSolidBrush(GetSysColor(enabled ? COLOR_BTNTEXT : COLOR_GRAYTEXT)));
  varion::unique_brush paper(CreateSolidBrush(GetSysColor(COLOR_WINDOW)));
  const RECT back{left, top, left + sheet, top + sheet};
  const RECT front{left + side - sheet, top + side - sheet, left + side, top + side};
  for (const RECT& r : {back, front}) {
    FillRect(dc, &r, paper.get());
    FrameRect(dc, &r, ink.get());
  }
}

}  // namespace

CVelDateEdit::CVelDateEdit() : m_model(g_defaultClock) {}

void CVelDateEdit::SetDefaultClock(const DateTools::IClock* clock) { g_defaultClock = clock; }

CVelDateEdit* CVelDateEdit::FromHandle(HWND window) {
  return dynamic_cast<CVelDateEdit*>(CVelControlBase::FromHandle(window));
}

CVelDateEdit* CVelDateEdit::Attach(HWND edit) {
  if (auto* existing = FromHandle(edit)) return existing;
  auto* self = AttachNew<CVelDateEdit>(edit);
  if (self) self->Initialize();
  return self;
}

void CVelDateEdit::Initialize() {
  m_calendarBitmap.reset(LoadLibraryBitmap(L"IDB_CALENDAR_BTN"));
  m_calendarDisabledBitmap.reset(LoadLibraryBitmap(L"IDB_CALENDAR_BTN_DISABLED"));
  m_tooltip.reset(CreateWindowExW(WS_EX_TOPMOST, TOOLTIPS_CLASSW, nullptr, WS_POPUP | TTS_ALWAYSTIP | TTS_NOPREFIX,
                                  CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, m_hWnd, nullptr,
                                  varion::LibraryModule(), nullptr));
  // A program's text already in the edit becomes the value when it is a day.
  const LRESULT length = Default(WM_GETTEXTLENGTH, 0, 0);
  std::wstring text(static_cast<std::size_t>(length) + 1, L'\0');
  Default(WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()));
  text.resize(wcslen(text.c_str()));
  m_model.SetText(varion::text::WideToCp1250(text));
  ShowText();
  UpdateFrame();
}

// Value and pattern --------------------------------------------------------------------------------

void CVelDateEdit::SetPattern(const std::string& pattern) {
  SendMessageW(m_hWnd, WM_SETREDRAW, FALSE, 0);
  m_model.SetPattern(pattern);
  ShowText();
  SendMessageW(m_hWnd, WM_SETREDRAW, TRUE, 0);
  RedrawWindow(m_hWnd, nullptr, nullptr, RDW_INVALIDATE | RDW_FRAME | RDW_ERASE);
}

bool CVelDateEdit::SetValue(const COleDateTime& value) {
  if (!m_model.SetValue(value)) return false;
  m_model.SetCaretPos(0);  // a program's value is read from its first field
  ShowText();
  return true;
}

bool CVelDateEdit::SetRange(const COleDateTime& lower, const COleDateTime& upper) {
  const COleDateTime before = m_model.GetValue();
  if (!m_model.SetRange(lower, upper)) return false;
  ShowText();
  if (!(before == m_model.GetValue()) || before.GetStatus() != m_model.GetValue().GetStatus()) NotifyValueChanged();
  return true;
}

void CVelDateEdit::ShowCopyButton(bool show) {
  if (m_showCopy == show) return;
  m_showCopy = show;
  UpdateFrame();
}

void CVelDateEdit::UpdateFrame() {
  SetWindowPos(m_hWnd, nullptr, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE | SWP_FRAMECHANGED);
  UpdateTooltips();
}

void CVelDateEdit::ShowText() {
  const std::wstring text = varion::text::Cp1250ToWide(m_model.GetText());
  // Straight to the edit: our own WM_SETTEXT is a program's request to parse a day.
  Default(WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text.c_str()));
  PlaceCaret();
}

void CVelDateEdit::PlaceCaret() {
  const int caret = m_model.GetCaret();
  Default(EM_SETSEL, static_cast<WPARAM>(caret), caret);
}

void CVelDateEdit::NotifyValueChanged() {
  HWND parent = GetParent(m_hWnd);
  if (!parent) return;
  NMDATETIMECHANGE change{};
  change.nmhdr.hwndFrom = m_hWnd;
  change.nmhdr.idFrom = static_cast<UINT_PTR>(GetDlgCtrlID(m_hWnd));
  change.nmhdr.code = DTN_DATETIMECHANGE;
  const COleDateTime value = m_model.GetValue();
  change.dwFlags = value.IsValid() ? GDT_VALID : GDT_NONE;
  if (value.IsValid()) change.st = varion::ToSystemTime(value);
  SendMessageW(parent, WM_NOTIFY, change.nmhdr.idFrom, reinterpret_cast<LPARAM>(&change));
}

void CVelDateEdit::Apply(const varion::DateEditResult& r) {
  if (r.beep) MessageBeep(MB_ICONEXCLAMATION);
  if (r.textChanged)
    ShowText();
  else if (r.handled)
    PlaceCaret();
  if (r.valueChanged) NotifyValueChanged();
  if (r.dropDown) DropDown();
}

std::string CVelDateEdit::GetCopyText() const {
  if (m_model.GetEntry() == varion::DateEntry::Date) return m_model.GetText();
  return m_model.GetCanonicalText();
}

// Drop-down ----------------------------------------------------------------------------------------

bool CVelDateEdit::IsDroppedDown() const {
  return m_calendar && m_calendarWindow && IsWindowVisible(m_calendarWindow.get());
}

void CVelDateEdit::DropDown() {
  if (IsDroppedDown() || !IsWindowEnabled(m_hWnd) || (GetWindowLongPtrW(m_hWnd, GWL_STYLE) & ES_READONLY)) return;
  if (!m_calendarWindow || !IsWindow(m_calendarWindow.get())) {
    HWND root = GetAncestor(m_hWnd, GA_ROOT);
    m_calendar = CVelCalendar::Create(WS_EX_TOOLWINDOW | WS_EX_TOPMOST, L"", WS_POPUP | WS_BORDER, RECT{0, 0, 0, 0},
                                      root, 0);
    if (!m_calendar) return;
    m_calendarWindow.reset(m_calendar->GetHwnd());
    m_calendar->SetOwner(m_hWnd);
    m_calendar->SetDroppedDown(true);
  }
  HWND cal = m_calendarWindow.get();
  SendMessageW(cal, WM_SETFONT, static_cast<WPARAM>(SendMessageW(m_hWnd, WM_GETFONT, 0, 0)), FALSE);
  SYSTEMTIME limits[2] = {varion::ToSystemTime(m_model.GetLower()), varion::ToSystemTime(m_model.GetUpper())};
  const WPARAM flags = (m_model.GetLower().IsValid() ? GDTR_MIN : 0) | (m_model.GetUpper().IsValid() ? GDTR_MAX : 0);
  SendMessageW(cal, DTM_SETRANGE, 0, 0);  // the old limits first, so any new pair is accepted
  SendMessageW(cal, DTM_SETRANGE, flags, reinterpret_cast<LPARAM>(limits));
  if (m_model.GetValue().IsValid()) {
    SYSTEMTIME st = varion::ToSystemTime(m_model.GetValue());
    SendMessageW(cal, MCM_SETCURSEL, 0, reinterpret_cast<LPARAM>(&st));
  } else {
    SendMessageW(cal, WM_COMMAND, varion::kCalCmdGoToToday, 0);
  }
  // Under the field, or above it when the work area ends first.
  RECT field, calendar;
  GetWindowRect(m_hWnd, &field);
  GetWindowRect(cal, &calendar);
  const int width = calendar.right - calendar.left, height = calendar.bottom - calendar.top;
  MONITORINFO monitor{};
  monitor.cbSize = sizeof monitor;
  GetMonitorInfoW(MonitorFromWindow(m_hWnd, MONITOR_DEFAULTTONEAREST), &monitor);
  int x = field.left, y = field.bottom;
  if (y + height > monitor.rcWork.bottom && field.top - height >= monitor.rcWork.top) y = field.top - height;
  x = std::max<int>(monitor.rcWork.left, std::min<int>(x, monitor.rcWork.right - width));
  SetWindowPos(cal, HWND_TOPMOST, x, y, 0, 0, SWP_NOSIZE | SWP_NOACTIVATE | SWP_SHOWWINDOW);
}

void CVelDateEdit::CloseUp() {
  // Through the calendar's own Esc, so that its owner hears -5002 as from any other close.
  if (IsDroppedDown()) SendMessageW(m_calendarWindow.get(), WM_KEYDOWN, VK_ESCAPE, 0);
}

bool CVelDateEdit::IsKeyForCalendar(WPARAM key) const {
  switch (key) {
    case VK_RETURN: case VK_ESCAPE: case VK_TAB: case VK_F4: case VK_LEFT: case VK_RIGHT: case VK_UP:
    case VK_DOWN: case VK_PRIOR: case VK_NEXT: case VK_HOME:
      return true;
    default:
      return false;
  }
}

LRESULT CVelDateEdit::OnNotify(const NMHDR* header) {
  if (!header || !m_calendar || header->hwndFrom != m_calendarWindow.get()) return 0;
  if (static_cast<int>(header->code) == varion::kCalNotifyCloseChosen) {
    SYSTEMTIME st{};
    if (SendMessageW(header->hwndFrom, MCM_GETCURSEL, 0, reinterpret_cast<LPARAM>(&st)))
      Apply(m_model.OnCalendarSelect(varion::FromSystemDate(st)));
  }
  return 0;
}

// Buttons ------------------------------------------------------------------------------------------

RECT CVelDateEdit::ButtonRect(Button button) const {
  RECT client, window;
  GetClientRect(m_hWnd, &client);
  GetWindowRect(m_hWnd, &window);
  POINT origin{0, 0};
  ClientToScreen(m_hWnd, &origin);
  const int left = origin.x - window.left + client.right, top = origin.y - window.top;
  const int w = ButtonWidth();
  // The copy button sits left of the calendar button.
  const int index = button == kCopyButton ? 0 : (m_showCopy ? 1 : 0);
  if (button == kNoButton || (button == kCopyButton && !m_showCopy)) return RECT{};
  return RECT{left + index * w, top, left + (index + 1) * w, top + client.bottom};
}

CVelDateEdit::Button CVelDateEdit::ButtonAt(POINT screen) const {
  RECT window;
  GetWindowRect(m_hWnd, &window);
  const POINT p{screen.x - window.left, screen.y - window.top};
  for (Button b : {kCalendarButton, kCopyButton}) {
    const RECT r = ButtonRect(b);
    if (PtInRect(&r, p)) return b;
  }
  return kNoButton;
}

void CVelDateEdit::UpdateTooltips() {
  if (!m_tooltip) return;
  HWND tip = m_tooltip.get();
  RECT window;
  GetWindowRect(m_hWnd, &window);
  POINT origin{0, 0};
  ClientToScreen(m_hWnd, &origin);
  for (Button b : {kCalendarButton, kCopyButton}) {
    TTTOOLINFOW tool{};
    tool.cbSize = sizeof tool;
    tool.hwnd = m_hWnd;
    tool.uId = static_cast<UINT_PTR>(b) + 1;
    SendMessageW(tip, TTM_DELTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
    RECT r = ButtonRect(b);
    if (IsRectEmpty(&r)) continue;
    // The tool's rectangle is in client coordinates, right of the client area.
    OffsetRect(&r, window.left - origin.x, window.top - origin.y);
    std::wstring text = varion::text::Cp1250ToWide(b == kCalendarButton ? "Pokaż kalendarz" : "Kopiuj");
    tool.rect = r;
    tool.lpszText = text.data();
    SendMessageW(tip, TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
  }
}

void CVelDateEdit::PaintButtons() {
  varion::WindowDc dc(m_hWnd, true);
  if (!dc) return;
  const bool enabled = IsWindowEnabled(m_hWnd) != FALSE;
  for (Button b : {kCalendarButton, kCopyButton}) {
    RECT r = ButtonRect(b);
    if (IsRectEmpty(&r)) continue;
    FillRect(dc.get(), &r, GetSysColorBrush(COLOR_BTNFACE));
    if (m_hot == b && enabled) DrawEdge(dc.get(), &r, BDR_RAISEDINNER, BF_RECT);
    if (b == kCopyButton) {
      DrawCopyGlyph(dc.get(), r, enabled);
      continue;
    }
    HBITMAP glyph = enabled ? m_calendarBitmap.get() : m_calendarDisabledBitmap.get();
    BITMAP bm{};
    if (!glyph || !GetObjectW(glyph, sizeof bm, &bm)) continue;
    unique_memory_dc source(CreateCompatibleDC(dc.get()));
    varion::SelectedObject selected(source.get(), glyph);
    const int side = std::min<int>({bm.bmWidth, r.right - r.left, r.bottom - r.top});
    TransparentBlt(dc.get(), r.left + (r.right - r.left - side) / 2, r.top + (r.bottom - r.top - side) / 2, side,
                   side, source.get(), 0, 0, bm.bmWidth, bm.bmHeight, kGlyphKey);
  }
}

LRESULT CVelDateEdit::OnNcHitTest(LPARAM lParam) {
  const Button b = ButtonAt(POINT{GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)});
  if (b == kNoButton) return Default(WM_NCHITTEST, 0, lParam);
  if (m_hot != b && IsWindowEnabled(m_hWnd)) {
    m_hot = b;
    SendMessageW(m_hWnd, WM_NCPAINT, 1, 0);
    m_hoverTimer.Set(m_hWnd, kHoverTimer, kHoverMs);
  }
  return HTBORDER;
}

void CVelDateEdit::OnButtonClick(Button button) {
  if (button == kCalendarButton) {
    if (GetCapture()) return;
    if (GetFocus() != m_hWnd) SetFocus(m_hWnd);
    if (IsDroppedDown())
      CloseUp();
    else
      DropDown();
  } else if (button == kCopyButton) {
    if (GetFocus() != m_hWnd) SetFocus(m_hWnd);
    CopyToClipboard();
    varion::TipMsgBox(m_hWnd, "", "Skopiowano do schowka.", MB_ICONINFORMATION, kCopiedTipMs);
  }
}

void CVelDateEdit::CopyToClipboard() {
  const std::wstring text = varion::text::Cp1250ToWide(GetCopyText());
  if (text.empty()) return;
  varion::ClipboardOpen clipboard(m_hWnd);
  if (!clipboard) return;
  EmptyClipboard();
  const std::size_t bytes = (text.size() + 1) * sizeof(wchar_t);
  HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, bytes);
  if (!memory) return;
  if (void* p = GlobalLock(memory)) {
    std::memcpy(p, text.c_str(), bytes);
    GlobalUnlock(memory);
  }
  if (!SetClipboardData(CF_UNICODETEXT, memory)) GlobalFree(memory);  // the clipboard owns it once set
}

void CVelDateEdit::PasteFromClipboard() {
  std::wstring text;
  {
    varion::ClipboardOpen clipboard(m_hWnd);
    if (!clipboard) return;
    HANDLE data = GetClipboardData(CF_UNICODETEXT);
    if (!data) return;
    if (const auto* p = static_cast<const wchar_t*>(GlobalLock(data))) {
      text.assign(p, wcsnlen(p, GlobalSize(data) / sizeof(wchar_t)));
      GlobalUnlock(data);
    }
  }
  Apply(m_model.Paste(varion::text::WideToCp1250(text)));
}

// Messages -----------------------------------------------------------------------------------------

LRESULT CVelDateEdit::OnChar(WPARAM ch, LPARAM lParam) {
  // Control characters keep the edit's meaning (Ctrl+C, Ctrl+V and Ctrl+X become clipboard
  // messages, which come back to us); Backspace was handled with its key.
  if (ch == VK_BACK) return 0;
  if (ch < 0x20) return CVelEditBase::WindowProc(WM_CHAR, ch, lParam);
  const std::string c = varion::text::WideToCp1250(std::wstring(1, static_cast<wchar_t>(ch)));
  if (c.size() == 1) Apply(m_model.OnChar(c[0]));
  return 0;
}

LRESULT CVelDateEdit::OnKeyDown(UINT msg, WPARAM key, LPARAM lParam) {
  if (IsDroppedDown() && IsKeyForCalendar(key)) {
    SendMessageW(m_calendarWindow.get(), WM_KEYDOWN, key, lParam);
    return 0;
  }
  varion::keys::Modifiers mods;
  mods.ctrl = GetKeyState(VK_CONTROL) < 0;
  mods.shift = GetKeyState(VK_SHIFT) < 0;
  mods.alt = msg == WM_SYSKEYDOWN || GetKeyState(VK_MENU) < 0;
  const varion::DateEditResult r = m_model.OnKeyDown(static_cast<int>(key), mods);
  if (!r.handled) return CVelEditBase::WindowProc(msg, key, lParam);
  Apply(r);
  return 0;
}

LRESULT CVelDateEdit::OnSetText(LPARAM text) {
  const auto* wide = reinterpret_cast<const wchar_t*>(text);
  const std::string t = wide ? varion::text::WideToCp1250(wide) : std::string();
  const COleDateTime before = m_model.GetValue();
  bool taken = m_model.SetText(t);
  if (!taken) {
    // The data exchange writes "2024-03-31" (with a time of day for a date-time); that form is
    // unambiguous whatever the field order of the pattern.
    const COleDateTime iso = COleDateTime::ParseIso(t);
    taken = iso.IsValid() && m_model.SetValue(iso.DateOnly());
  }
  if (!taken) return FALSE;
  m_model.SetCaretPos(0);
  ShowText();
  if (!(before == m_model.GetValue()) || before.GetStatus() != m_model.GetValue().GetStatus()) NotifyValueChanged();
  return TRUE;
}

LRESULT CVelDateEdit::OnGetText(WPARAM size, LPARAM buffer) const {
  const std::wstring text = varion::text::Cp1250ToWide(m_model.GetCanonicalText());
  auto* out = reinterpret_cast<wchar_t*>(buffer);
  if (!out || size == 0) return 0;
  const std::size_t n = std::min<std::size_t>(text.size(), size - 1);
  std::copy_n(text.data(), n, out);
  out[n] = L'\0';
  return static_cast<LRESULT>(n);
}

LRESULT CVelDateEdit::WindowProc(UINT msg, WPARAM wParam, LPARAM lParam) {
  switch (msg) {
    case WM_CHAR:
      return OnChar(wParam, lParam);
    case WM_KEYDOWN:
    case WM_SYSKEYDOWN:
      return OnKeyDown(msg, wParam, lParam);
    case WM_GETDLGCODE:
      return CVelEditBase::WindowProc(msg, wParam, lParam) | DLGC_WANTARROWS |
             (IsDroppedDown() ? DLGC_WANTALLKEYS : 0);
    case WM_SETTEXT:
      return OnSetText(lParam);
    case WM_GETTEXT:
      return OnGetText(wParam, lParam);
    case WM_GETTEXTLENGTH:
      return static_cast<LRESULT>(m_model.GetCanonicalText().size());
    case WM_COPY:
    case WM_CUT:  // the fields cannot lose their text to a cut; it copies
      CopyToClipboard();
      return 0;
    case WM_PASTE:
      PasteFromClipboard();
      return 0;
    case WM_CLEAR:
    case WM_UNDO:
    case EM_UNDO:
    case EM_REPLACESEL:
      return 0;
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK: {
      const LRESULT r = CVelEditBase::WindowProc(msg, wParam, lParam);
      const LRESULT hit = Default(EM_CHARFROMPOS, 0, lParam);
      m_model.SetCaretPos(LOWORD(hit));
      PlaceCaret();
      return r;
    }
    case WM_SETFOCUS: {
      const LRESULT r = CVelEditBase::WindowProc(msg, wParam, lParam);
      PlaceCaret();
      return r;
    }
    case WM_KILLFOCUS:
      CloseUp();
      Apply(m_model.Settle());
      break;
    case WM_NOTIFY:
      return OnNotify(reinterpret_cast<const NMHDR*>(lParam));
    case WM_NCCALCSIZE: {
      const LRESULT r = CVelEditBase::WindowProc(msg, wParam, lParam);
      auto* rect = reinterpret_cast<RECT*>(lParam);
      const int width = ButtonWidth() * (m_showCopy ? 2 : 1);
      rect->right = std::max(rect->left, rect->right - width);
      return r;
    }
    case WM_NCPAINT: {
      const LRESULT r = CVelEditBase::WindowProc(msg, wParam, lParam);
      PaintButtons();
      return r;
    }
    case WM_ENABLE:
    case WM_SIZE: {
      const LRESULT r = CVelEditBase::WindowProc(msg, wParam, lParam);
      UpdateTooltips();
      RedrawWindow(m_hWnd, nullptr, nullptr, RDW_FRAME | RDW_INVALIDATE);
      return r;
    }
    case WM_NCHITTEST:
      return OnNcHitTest(lParam);
    case WM_NCMOUSEMOVE:
      if (m_tooltip) {
        POINT p{GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)};
        ScreenToClient(m_hWnd, &p);
        MSG relay{m_hWnd, WM_MOUSEMOVE, 0, MAKELPARAM(p.x, p.y), static_cast<DWORD>(GetMessageTime()),
                  {GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)}};
        SendMessageW(m_tooltip.get(), TTM_RELAYEVENT, 0, reinterpret_cast<LPARAM>(&relay));
      }
      break;
    case WM_NCLBUTTONDOWN:
    case WM_NCLBUTTONDBLCLK:
      if (wParam == HTBORDER) {
        const Button b = ButtonAt(POINT{GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)});
        if (b != kNoButton) {
          OnButtonClick(b);
          return 0;
        }
      }
      break;
    case WM_TIMER:
      if (wParam == kHoverTimer) {
        POINT cursor;
        GetCursorPos(&cursor);
        if (ButtonAt(cursor) == kNoButton) {
          m_hoverTimer.Kill();
          m_hot = kNoButton;
          SendMessageW(m_hWnd, WM_NCPAINT, 1, 0);
        }
        return 0;
      }
      break;
    case WM_NCDESTROY:
      m_calendarWindow.reset();
      m_calendar = nullptr;
      break;
    default:
      break;
  }
  return CVelEditBase::WindowProc(msg, wParam, lParam);
}
