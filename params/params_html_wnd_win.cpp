#include "params/params_html_wnd_win.h"

#include <windowsx.h>

#include <algorithm>
#include <cstdlib>

#include "base/status.h"
#include "base/text.h"
#include "controls/calendar_tools.h"

namespace {

constexpr int kMargin = 8;  // pixels around the text, as a page's body margin
constexpr COLORREF kHighlight = RGB(0xff, 0xfb, 0xf0);

HINSTANCE ThisModule() {
  HMODULE module = nullptr;
  GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                     reinterpret_cast<LPCWSTR>(&ThisModule), &module);
  return module;
}

COLORREF CssColor(const std::string& css, COLORREF fallback) {
  const std::uint32_t c = CalendarTools::ParseColor(css.c_str());
  return c == CalendarTools::kInvalidColor ? fallback : static_cast<COLORREF>(c);
}

// "9pt" or "12px" as a font height in logical units of the screen; 9 pt for anything else.
int FontHeight(const std::string& size) {
  char* end = nullptr;
  const double value = std::strtod(size.c_str(), &end);
  HDC screen = GetDC(nullptr);
  const int dpi = GetDeviceCaps(screen, LOGPIXELSY);
  ReleaseDC(nullptr, screen);
  if (value > 0 && std::string(end) == "px") return -static_cast<int>(value + 0.5);
  return -MulDiv(value > 0 ? static_cast<int>(value + 0.5) : 9, dpi, 72);
}

}  // namespace

CParamsHtmlWnd::~CParamsHtmlWnd() {
  if (m_hwnd && IsWindow(m_hwnd)) DestroyWindow(m_hwnd);
}

bool CParamsHtmlWnd::Create(HWND parent, const RECT& rect, int id) {
  static const ATOM registered = [] {
    WNDCLASSEXW wc{};
    wc.cbSize = sizeof wc;
    wc.style = CS_HREDRAW | CS_VREDRAW | CS_DBLCLKS;
    wc.lpfnWndProc = WndProc;
    wc.hInstance = ThisModule();
    wc.hCursor = LoadCursorW(nullptr, MAKEINTRESOURCEW(32512));  // IDC_ARROW
    wc.lpszClassName = kClassName;
    return RegisterClassExW(&wc);
  }();
  if (!registered) return false;
  m_hwnd = CreateWindowExW(0, kClassName, L"", WS_CHILD | WS_VISIBLE | WS_TABSTOP, rect.left, rect.top,
                           rect.right - rect.left, rect.bottom - rect.top, parent,
                           reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), ThisModule(), this);
  if (!m_hwnd) return false;
  InitDescr();
  return true;
}

void CParamsHtmlWnd::WriteContents(const char* html) {
  CParamsHtmlCtrl::WriteContents(html);
  m_runs = varion::params::PageRuns(Contents());
  // The page keeps its shape when a value changes, so the focused link stays where it was.
  if (m_focusRun >= static_cast<int>(m_runs.size()) || (m_focusRun >= 0 && m_runs[m_focusRun].href.empty())) m_focusRun = -1;
  Reflow();
}

void CParamsHtmlWnd::MakeFonts() {
  const std::string key = FontFamily() + "/" + FontSize();
  if (m_font && key == m_fontKey) return;
  m_fontKey = key;
  LOGFONTW lf{};
  lf.lfHeight = FontHeight(FontSize());
  lf.lfWeight = FW_NORMAL;
  lf.lfCharSet = EASTEUROPE_CHARSET;
  lf.lfQuality = CLEARTYPE_QUALITY;
  const std::wstring face = varion::text::Cp1250ToWide(FontFamily()).substr(0, LF_FACESIZE - 1);
  std::copy(face.begin(), face.end(), lf.lfFaceName);
  m_font.reset(CreateFontIndirectW(&lf));
  lf.lfUnderline = TRUE;
  m_linkFont.reset(CreateFontIndirectW(&lf));
}

void CParamsHtmlWnd::Reflow() {
  if (!m_hwnd) return;
  MakeFonts();
  HDC dc = GetDC(m_hwnd);
  HGDIOBJ old = SelectObject(dc, m_font.get());
  TEXTMETRICW tm{};
  GetTextMetricsW(dc, &tm);
  m_lineHeight = tm.tmHeight + tm.tmExternalLeading;
  RECT client{};
  GetClientRect(m_hwnd, &client);
  // Links are drawn in the same face, only underlined, so one font measures both.
  m_boxes = varion::params::FlowRuns(m_runs, std::max<int>(1, client.right - 2 * kMargin), m_lineHeight,
                                     [dc](std::string_view text) {
                                       const std::wstring w = varion::text::Cp1250ToWide(text);
                                       SIZE size{};
                                       GetTextExtentPoint32W(dc, w.c_str(), static_cast<int>(w.size()), &size);
                                       return static_cast<int>(size.cx);
                                     });
  SelectObject(dc, old);
  ReleaseDC(m_hwnd, dc);
  InvalidateRect(m_hwnd, nullptr, TRUE);
}

void CParamsHtmlWnd::Paint(HDC dc) {
  RECT client{};
  GetClientRect(m_hwnd, &client);
  HBRUSH background = CreateSolidBrush(Highlight() ? kHighlight : GetSysColor(COLOR_WINDOW));
  FillRect(dc, &client, background);
  DeleteObject(background);
  SetBkMode(dc, TRANSPARENT);
  const COLORREF defined = CssColor(DefinedColor(), RGB(0, 0, 0xC0));
  const COLORREF undefined = CssColor(UndefinedColor(), RGB(0xC0, 0, 0));
  HGDIOBJ old = SelectObject(dc, m_font.get());
  for (const varion::params::PageBox& box : m_boxes) {
    const varion::params::PageRun& run = m_runs[box.run];
    const bool link = !run.href.empty();
    SelectObject(dc, link ? m_linkFont.get() : m_font.get());
    SetTextColor(dc, link ? (run.defined ? defined : undefined) : GetSysColor(COLOR_WINDOWTEXT));
    std::wstring w = varion::text::Cp1250ToWide(box.text);
    if (link && !w.empty() && w.back() == L' ') w.pop_back();  // no underline under a trailing blank
    TextOutW(dc, kMargin + box.x, kMargin / 2 + box.y, w.c_str(), static_cast<int>(w.size()));
    if (link && box.run == m_focusRun && GetFocus() == m_hwnd) {
      RECT r{kMargin + box.x - 1, kMargin / 2 + box.y, kMargin + box.x + box.width + 1, kMargin / 2 + box.y + m_lineHeight};
      DrawFocusRect(dc, &r);
    }
  }
  SelectObject(dc, old);
}

std::vector<int> CParamsHtmlWnd::LinkRuns() const {
  std::vector<int> runs;
  for (int i = 0; i < static_cast<int>(m_runs.size()); ++i)
    if (!m_runs[i].href.empty()) runs.push_back(i);
  return runs;
}

int CParamsHtmlWnd::GetLinkCount() const { return static_cast<int>(LinkRuns().size()); }

bool CParamsHtmlWnd::GetLink(int index, RECT& rect, std::string& href, std::string& text) const {
  const std::vector<int> runs = LinkRuns();
  if (index < 0 || index >= static_cast<int>(runs.size())) return false;
  for (const varion::params::PageBox& box : m_boxes) {
    if (box.run != runs[index]) continue;
    rect = {kMargin + box.x, kMargin / 2 + box.y, kMargin + box.x + box.width, kMargin / 2 + box.y + m_lineHeight};
    href = m_runs[box.run].href;
    text = m_runs[box.run].text;
    return true;
  }
  return false;
}

int CParamsHtmlWnd::LinkRunAt(POINT pt) const {
  for (const varion::params::PageBox& box : m_boxes) {
    const RECT r{kMargin + box.x, kMargin / 2 + box.y, kMargin + box.x + box.width, kMargin / 2 + box.y + m_lineHeight};
    if (PtInRect(&r, pt) && !m_runs[box.run].href.empty()) return box.run;
  }
  return -1;
}

void CParamsHtmlWnd::MoveFocus(bool back) {
  const std::vector<int> runs = LinkRuns();
  if (runs.empty()) return;
  auto at = std::find(runs.begin(), runs.end(), m_focusRun);
  if (at == runs.end()) m_focusRun = back ? runs.back() : runs.front();
  else if (back) m_focusRun = at == runs.begin() ? runs.back() : *(at - 1);
  else m_focusRun = at + 1 == runs.end() ? runs.front() : *(at + 1);
  InvalidateRect(m_hwnd, nullptr, TRUE);
}

void CParamsHtmlWnd::Follow(int run) {
  if (run < 0 || run >= static_cast<int>(m_runs.size())) return;
  const std::string href = m_runs[run].href;  // the page is rewritten while the link is followed
  try {
    OnBeforeNavigate2(href.c_str());
  } catch (const varion::ComError& e) {
    // Nothing may leave a window procedure: the dialog's database error is shown here.
    const std::wstring text = varion::text::Cp1250ToWide(e.Message() + "\n" + varion::StatusText(e.Code()));
    MessageBoxW(GetAncestor(m_hwnd, GA_ROOT), text.c_str(), L"Parametry zestawienia", MB_OK | MB_ICONERROR);
  }
}

LRESULT CALLBACK CParamsHtmlWnd::WndProc(HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam) {
  if (msg == WM_NCCREATE) {
    auto* self = static_cast<CParamsHtmlWnd*>(reinterpret_cast<CREATESTRUCTW*>(lParam)->lpCreateParams);
    self->m_hwnd = hwnd;
    SetWindowLongPtrW(hwnd, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(self));
  }
  auto* self = reinterpret_cast<CParamsHtmlWnd*>(GetWindowLongPtrW(hwnd, GWLP_USERDATA));
  if (!self) return DefWindowProcW(hwnd, msg, wParam, lParam);
  if (msg == WM_NCDESTROY) {
    SetWindowLongPtrW(hwnd, GWLP_USERDATA, 0);
    self->m_hwnd = nullptr;
    return DefWindowProcW(hwnd, msg, wParam, lParam);
  }
  return self->OnMessage(msg, wParam, lParam);
}

LRESULT CParamsHtmlWnd::OnMessage(UINT msg, WPARAM wParam, LPARAM lParam) {
  switch (msg) {
    case WM_SIZE:
      Reflow();
      return 0;
    case WM_ERASEBKGND:
      return 1;  // Paint fills the background
    case WM_PAINT: {
      PAINTSTRUCT ps;
      HDC dc = BeginPaint(m_hwnd, &ps);
      Paint(dc);
      EndPaint(m_hwnd, &ps);
      return 0;
    }
    case WM_PRINTCLIENT:
      Paint(reinterpret_cast<HDC>(wParam));
      return 0;
    case WM_SETCURSOR: {
      POINT pt;
      GetCursorPos(&pt);
      ScreenToClient(m_hwnd, &pt);
      if (LOWORD(lParam) == HTCLIENT && LinkRunAt(pt) >= 0) {
        SetCursor(LoadCursorW(nullptr, MAKEINTRESOURCEW(32649)));  // IDC_HAND
        return TRUE;
      }
      break;
    }
    case WM_LBUTTONDOWN:
      SetFocus(m_hwnd);
      return 0;
    case WM_LBUTTONUP: {
      const int run = LinkRunAt({GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)});
      if (run >= 0) {
        m_focusRun = run;
        Follow(run);
      }
      return 0;
    }
    case WM_GETDLGCODE:
      return DLGC_WANTARROWS | DLGC_WANTCHARS | (wParam == VK_RETURN ? DLGC_WANTMESSAGE : 0);
    case WM_KEYDOWN:
      if (wParam == VK_TAB || wParam == VK_RIGHT || wParam == VK_DOWN || wParam == VK_LEFT || wParam == VK_UP) {
        MoveFocus(wParam == VK_LEFT || wParam == VK_UP || (wParam == VK_TAB && GetKeyState(VK_SHIFT) < 0));
        return 0;
      }
      if (wParam == VK_RETURN || wParam == VK_SPACE) {
        Follow(m_focusRun);
        return 0;
      }
      break;
    case WM_SETFOCUS:
    case WM_KILLFOCUS:
      InvalidateRect(m_hwnd, nullptr, TRUE);
      return 0;
    default:
      break;
  }
  return DefWindowProcW(m_hwnd, msg, wParam, lParam);
}
