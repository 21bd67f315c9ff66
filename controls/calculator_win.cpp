#include "controls/calculator_win.h"

#include <windowsx.h>

#include <algorithm>
#include <cstring>
#include <iterator>

#include "base/library_module_win.h"
#include "base/text.h"
#include "controls/locale_info.h"
#include "controls/private_messages.h"
#include "diagnostics/failure_boundary_win.h"

namespace varion {
namespace {

constexpr wchar_t kClassName[] = L"vel_calculator";
// As the creation hook registers the library's own classes: global, redrawn on resizing, with
// double clicks.
constexpr UINT kClassStyle = CS_GLOBALCLASS | CS_VREDRAW | CS_HREDRAW | CS_DBLCLKS;
constexpr DWORD kExStyle = 0x88;       // WS_EX_TOPMOST | WS_EX_TOOLWINDOW
constexpr DWORD kStyle = 0x44800000;   // WS_CHILD | WS_CLIPSIBLINGS | WS_BORDER
constexpr UINT kShowFlags = 0x41;      // SWP_NOSIZE | SWP_SHOWWINDOW: a child is never activated
constexpr UINT kMsgCloseUp = WM_USER + 1;  // posted by the mouse hook: a click elsewhere
constexpr int kMargin = 4, kGap = 3, kColumns = 5, kRows = 4;

struct Key {
  const wchar_t* label;  // nullptr: the locale's decimal separator
  char ch;
};
constexpr Key kKeys[kRows][kColumns] = {
    {{L"7", '7'}, {L"8", '8'}, {L"9", '9'}, {L"\u00F7", '/'}, {L"C", 'C'}},
    {{L"4", '4'}, {L"5", '5'}, {L"6", '6'}, {L"\u00D7", '*'}, {L"\u2190", '\b'}},
    {{L"1", '1'}, {L"2", '2'}, {L"3", '3'}, {L"-", '-'}, {L"%", '%'}},
    {{L"0", '0'}, {L"\u00B1", CalculatorWindow::kSignKey}, {nullptr, ','}, {L"+", '+'}, {L"=", '='}},
};

const wchar_t* OpSymbol(CalculatorModel::Op op) {
  switch (op) {
    case CalculatorModel::Op::Add:
      return L"+";
    case CalculatorModel::Op::Subtract:
      return L"-";
    case CalculatorModel::Op::Multiply:
      return L"\u00D7";
    case CalculatorModel::Op::Divide:
      return L"\u00F7";
    case CalculatorModel::Op::None:
      break;
  }
  return L"";
}

// The calculator open on this thread, for the mouse hook.
thread_local CalculatorWindow* t_open = nullptr;

}  // namespace

std::unique_ptr<CalculatorWindow> CalculatorWindow::Create() {
  if (!RegisterWindowClass(kClassName, kClassStyle)) return nullptr;
  std::unique_ptr<CalculatorWindow> calc(new CalculatorWindow);
  const RECT none{0, 0, 0, 0};
  if (!calc->CreateWindowOf(kExStyle, kClassName, L"", kStyle, none, GetDesktopWindow(), kControlId, LibraryModule()))
    return nullptr;
  return calc;
}

CalculatorWindow::~CalculatorWindow() {
  if (t_open == this) t_open = nullptr;
  // Our own window goes while this object still answers its messages.
  if (IsWindow(m_hWnd)) DestroyWindow(m_hWnd);
}

bool CalculatorWindow::IsShown() const { return m_hWnd && IsWindowVisible(m_hWnd); }

POINT CalculatorWindow::PlaceAgainst(const RECT& anchor, SIZE size, const RECT& workArea) {
  POINT p{anchor.left, anchor.bottom};
  if (p.y + size.cy > workArea.bottom && anchor.top - size.cy >= workArea.top) p.y = anchor.top - size.cy;
  p.x = std::max(workArea.left, std::min<LONG>(p.x, workArea.right - size.cx));
  p.y = std::max(workArea.top, std::min<LONG>(p.y, workArea.bottom - size.cy));
  return p;
}

void CalculatorWindow::DropDown(const RECT& anchor) {
  MONITORINFO monitor{};
  monitor.cbSize = sizeof monitor;
  if (!GetMonitorInfoW(MonitorFromRect(&anchor, MONITOR_DEFAULTTONEAREST), &monitor))
    monitor.rcWork = {0, 0, GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN)};
  const POINT at = PlaceAgainst(anchor, m_size, monitor.rcWork);
  m_pressed = -1;
  m_reported = m_model.ValueText();
  SetWindowPos(m_hWnd, HWND_TOP, at.x, at.y, 0, 0, kShowFlags);
  if (!m_mouseHook) m_mouseHook.reset(SetWindowsHookExW(WH_MOUSE, MouseHook, nullptr, GetCurrentThreadId()));
  t_open = this;
}

void CalculatorWindow::Hide() {
  m_mouseHook.reset();
  if (t_open == this) t_open = nullptr;
  if (m_hWnd) ShowWindow(m_hWnd, SW_HIDE);
}

void CalculatorWindow::CloseUp(bool cancel) {
  if (!IsShown()) return;
  if (!cancel && m_model.Pending() != CalculatorModel::Op::None) m_model.Equals();
  Hide();
  Notify(kCalcNotifyCloseUp, cancel ? m_opened : m_model.ValueText());
}

// A click anywhere but on the calculator and its field closes it; the close is posted, so the
// click itself goes on undisturbed.
LRESULT CALLBACK CalculatorWindow::MouseHook(int code, WPARAM wp, LPARAM lp) {
  if (code == HC_ACTION && t_open) {
    CallGuarded(nullptr, "calculator mouse hook", [&] {
      switch (wp) {
        case WM_LBUTTONDOWN:
        case WM_RBUTTONDOWN:
        case WM_MBUTTONDOWN:
        case WM_NCLBUTTONDOWN:
        case WM_NCRBUTTONDOWN:
        case WM_NCMBUTTONDOWN: {
          const HWND target = reinterpret_cast<const MOUSEHOOKSTRUCT*>(lp)->hwnd;
          const HWND calc = t_open->m_hWnd;
          if (target != calc && target != t_open->m_owner && !IsChild(calc, target))
            PostMessageW(calc, kMsgCloseUp, 0, 0);
          break;
        }
      }
    });
  }
  return CallNextHookEx(nullptr, code, wp, lp);
}

// Messages ----------------------------------------------------------------------------------------

LRESULT CalculatorWindow::WindowProc(UINT msg, WPARAM wp, LPARAM lp) {
  if (msg == MsgCalcOwner()) {
    m_owner = reinterpret_cast<HWND>(wp);
    return 0;
  }
  if (msg == MsgCalcSettings()) {
    m_model.SetDecimals(static_cast<int>(wp));
    const auto* symbol = reinterpret_cast<const char*>(lp);
    m_symbol = symbol ? symbol : "";
    InvalidateRect(m_hWnd, nullptr, TRUE);
    return 0;
  }
  switch (msg) {
    case WM_CREATE:
      Layout();
      return 0;
    case WM_SETFONT:
      m_font = reinterpret_cast<HFONT>(wp);
      Layout();
      if (lp) InvalidateRect(m_hWnd, nullptr, TRUE);
      return 0;
    case WM_GETFONT:
      return reinterpret_cast<LRESULT>(m_font);
    case WM_SETTEXT: {
      const auto* text = reinterpret_cast<const wchar_t*>(lp);
      m_opened = text ? text::WideToCp1250(text) : std::string();
      if (!m_model.SetValueText(m_opened)) m_model.Clear();
      m_reported = m_model.ValueText();
      InvalidateRect(m_hWnd, nullptr, TRUE);
      return Default(msg, wp, lp);
    }
    case WM_PAINT: {
      PaintDc dc(m_hWnd);
      Paint(dc.get());
      return 0;
    }
    case WM_ERASEBKGND:
      return 1;
    // Clicks must leave the activation, and with it the keyboard, with the field.
    case WM_MOUSEACTIVATE:
      return MA_NOACTIVATE;
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK:
      OnButtonDown({GET_X_LPARAM(lp), GET_Y_LPARAM(lp)});
      return 0;
    case WM_LBUTTONUP:
    case WM_CAPTURECHANGED:
      if (m_pressed >= 0) {
        m_pressed = -1;
        if (GetCapture() == m_hWnd) ReleaseCapture();
        InvalidateRect(m_hWnd, nullptr, FALSE);
      }
      return 0;
    case WM_KEYDOWN:
      OnKeyDown(wp);
      return 0;
    case WM_CHAR:
      OnChar(wp);
      return 0;
    case WM_GETDLGCODE:
      return DLGC_WANTALLKEYS | DLGC_WANTCHARS;
    case WM_ACTIVATEAPP:
      if (!wp) CloseUp(false);
      return 0;
    case kMsgCloseUp:
      CloseUp(false);
      return 0;
  }
  return Default(msg, wp, lp);
}

void CalculatorWindow::OnKeyDown(WPARAM vk) {
  if (!IsShown()) return;
  switch (vk) {
    case VK_RETURN:
      CloseUp(false);
      break;
    case VK_ESCAPE:
      CloseUp(true);
      break;
    case VK_DELETE:
      Press('C');
      break;
  }
}

void CalculatorWindow::OnChar(WPARAM ch) {
  // Enter and Esc act on the key press; their characters follow once the calculator is closed.
  if (!IsShown() || ch == '\r' || ch == 0x1B || ch >= 0x80) return;
  Press(static_cast<char>(ch));
}

void CalculatorWindow::OnButtonDown(POINT p) {
  for (int row = 0; row < kRows; ++row) {
    for (int col = 0; col < kColumns; ++col) {
      const RECT r = KeyRect(kKeys[row][col].ch);
      if (!PtInRect(&r, p)) continue;
      m_pressed = row * kColumns + col;
      SetCapture(m_hWnd);
      Press(kKeys[row][col].ch);
      return;
    }
  }
}

void CalculatorWindow::Press(char key) {
  if (key == kSignKey)
    m_model.Sign();
  else
    m_model.OnChar(key);
  InvalidateRect(m_hWnd, nullptr, FALSE);
  ReportValue();
}

// A number keyed as the second operand is no value of its own: the field hears of it once the
// operation completes.
void CalculatorWindow::ReportValue() {
  if (m_model.Pending() != CalculatorModel::Op::None) return;
  std::string value = m_model.ValueText();
  if (value == m_reported) return;
  m_reported = std::move(value);
  Notify(kCalcNotifyValueChange, m_reported);
}

void CalculatorWindow::Notify(UINT code, const std::string& value) {
  if (!IsWindow(m_owner)) return;
  NMCLCVALUECHANGE record{};
  record.hdr.hwndFrom = m_hWnd;
  record.hdr.idFrom = kControlId;
  record.hdr.code = code;
  const size_t n = std::min(value.size(), sizeof record.value - 1);
  std::memcpy(record.value, value.data(), n);
  SendMessageW(m_owner, WM_NOTIFY, kControlId, reinterpret_cast<LPARAM>(&record));
}

// Layout and drawing ------------------------------------------------------------------------------

// The keys are sized by the font: two digits wide and a line and a half high at the least.
void CalculatorWindow::Layout() {
  TEXTMETRICW tm{};
  {
    const WindowDc dc(m_hWnd);
    const SelectedObject font(dc.get(), m_font ? m_font : GetStockObject(DEFAULT_GUI_FONT));
    GetTextMetricsW(dc.get(), &tm);
  }
  const int line = std::max<int>(tm.tmHeight, 8);
  m_key = {std::max<LONG>(tm.tmAveCharWidth * 3 + 12, 26), line + line / 2 + 4};
  m_displayHeight = line + 10;
  RECT r{0, 0, 2 * kMargin + kColumns * m_key.cx + (kColumns - 1) * kGap,
         2 * kMargin + m_displayHeight + kRows * (m_key.cy + kGap)};
  AdjustWindowRectEx(&r, kStyle, FALSE, kExStyle);
  m_size = {r.right - r.left, r.bottom - r.top};
  SetWindowPos(m_hWnd, nullptr, 0, 0, m_size.cx, m_size.cy, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
}

RECT CalculatorWindow::KeyRect(char key) const {
  for (int row = 0; row < kRows; ++row)
    for (int col = 0; col < kColumns; ++col)
      if (kKeys[row][col].ch == key) {
        const int x = kMargin + col * (m_key.cx + kGap);
        const int y = kMargin + m_displayHeight + kGap + row * (m_key.cy + kGap);
        return {x, y, x + m_key.cx, y + m_key.cy};
      }
  return RECT{};
}

void CalculatorWindow::Paint(HDC dc) {
  RECT client;
  GetClientRect(m_hWnd, &client);
  FillRect(dc, &client, GetSysColorBrush(COLOR_BTNFACE));
  const SelectedObject font(dc, m_font ? m_font : GetStockObject(DEFAULT_GUI_FONT));
  SetBkMode(dc, TRANSPARENT);
  SetTextColor(dc, GetSysColor(COLOR_WINDOWTEXT));

  RECT display{kMargin, kMargin, client.right - kMargin, kMargin + m_displayHeight};
  FillRect(dc, &display, GetSysColorBrush(COLOR_WINDOW));
  DrawEdge(dc, &display, EDGE_SUNKEN, BF_RECT | BF_ADJUST);
  InflateRect(&display, -3, 0);
  DrawTextW(dc, OpSymbol(m_model.Pending()), -1, &display, DT_LEFT | DT_VCENTER | DT_SINGLELINE);
  std::string shown = m_model.DisplayText();
  if (!m_symbol.empty() && m_model.Error() == CalculatorModel::Status::Ok) shown += " " + m_symbol;
  const std::wstring wide = text::Cp1250ToWide(shown);
  DrawTextW(dc, wide.c_str(), -1, &display, DT_RIGHT | DT_VCENTER | DT_SINGLELINE | DT_END_ELLIPSIS);

  const std::wstring decimal = text::Cp1250ToWide(CLocaleInfo::GetTheLocaleInfo().GetSymDec());
  for (int row = 0; row < kRows; ++row) {
    for (int col = 0; col < kColumns; ++col) {
      const Key& key = kKeys[row][col];
      RECT r = KeyRect(key.ch);
      const bool pressed = m_pressed == row * kColumns + col;
      DrawFrameControl(dc, &r, DFC_BUTTON, DFCS_BUTTONPUSH | (pressed ? DFCS_PUSHED : 0));
      SetTextColor(dc, GetSysColor(COLOR_BTNTEXT));  // drawing the frame may leave another colour
      if (pressed) OffsetRect(&r, 1, 1);
      DrawTextW(dc, key.label ? key.label : decimal.c_str(), -1, &r, DT_CENTER | DT_VCENTER | DT_SINGLELINE);
    }
  }
}

}  // namespace varion
