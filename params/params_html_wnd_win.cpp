#include "params/params_html_wnd_win.h"

#include <windowsx.h>

#include <algorithm>
#include <cstdlib>

#include "base/status.h"
#include "base/library_module_win.h"
#include "base/text.h"
#include "controls/calendar_tools.h"

namespace {

constexpr int kMargin = 8;  // pixels around the text, as a page's body margin
constexpr COLORREF kHighlight = RGB(0xff, 0xfb, 0xf0);

COLORREF CssColor(const std::string& css, COLORREF fallback) {
  const std::uint32_t c = CalendarTools::ParseColor(css.c_str());
  return c == CalendarTools::kInvalidColor ? fallback : static_cast<COLORREF>(c);
}

// "9pt" or "12px" as a font height in logical units of the screen; 9 pt for anything else.
int FontHeight(const std::string& size) {
  char* end = nullptr;
  const double value = std::strtod(size.c_str(), &end);
  const int dpi = GetDeviceCaps(varion::WindowDc(nullptr).get(), LOGPIXELSY);
  if (value > 0 && std::string(end) == "px") return -static_cast<int>(value + 0.5);
  return -MulDiv(value > 0 ? static_cast<int>(value + 0.5) : 9, dpi, 72);
}

}  // namespace

CParamsHtmlWnd::~CParamsHtmlWnd() {
  // Destroyed here, while the object is whole, rather than by the base after it is gone.
  if (IsWindow(m_hWnd)) DestroyWindow(m_hWnd);
}

bool CParamsHtmlWnd::Create(HWND parent, const RECT& rect, int id) {
  if (!RegisterWindowClass(kClassName, CS_HREDRAW | CS_VREDRAW | CS_DBLCLKS)) return false;
  if (!CreateWindowOf(0, kClassName, L"", WS_CHILD | WS_VISIBLE | WS_TABSTOP, rect, parent, static_cast<UINT_PTR>(id),
                      varion::LibraryModule()))
    return false;
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
  if (!m_hWnd) return;
  MakeFonts();
  const varion::WindowDc windowDc(m_hWnd);
  HDC dc = windowDc.get();
  const varion::SelectedObject font(dc, m_font.get());
  TEXTMETRICW tm{};
  GetTextMetricsW(dc, &tm);
  m_lineHeight = tm.tmHeight + tm.tmExternalLeading;
  RECT client{};
  GetClientRect(m_hWnd, &client);
  // Links are drawn in the same face, only underlined, so one font measures both.
  m_boxes = varion::params::FlowRuns(m_runs, std::max<int>(1, client.right - 2 * kMargin), m_lineHeight,
                                     [dc](std::string_view text) {
                                       const std::wstring w = varion::text::Cp1250ToWide(text);
                                       SIZE size{};
                                       GetTextExtentPoint32W(dc, w.c_str(), static_cast<int>(w.size()), &size);
                                       return static_cast<int>(size.cx);
                                     });
  InvalidateRect(m_hWnd, nullptr, TRUE);
}

void CParamsHtmlWnd::Paint(HDC dc) {
  RECT client{};
  GetClientRect(m_hWnd, &client);
  FillRect(dc, &client, varion::unique_brush(CreateSolidBrush(Highlight() ? kHighlight : GetSysColor(COLOR_WINDOW))).get());
  SetBkMode(dc, TRANSPARENT);
  const COLORREF defined = CssColor(DefinedColor(), RGB(0, 0, 0xC0));
  const COLORREF undefined = CssColor(UndefinedColor(), RGB(0xC0, 0, 0));
  const varion::SelectedObject font(dc, m_font.get());
  for (const varion::params::PageBox& box : m_boxes) {
    const varion::params::PageRun& run = m_runs[box.run];
    const bool link = !run.href.empty();
    SelectObject(dc, link ? m_linkFont.get() : m_font.get());
    SetTextColor(dc, link ? (run.defined ? defined : undefined) : GetSysColor(COLOR_WINDOWTEXT));
    std::wstring w = varion::text::Cp1250ToWide(box.text);
    if (link && !w.empty() && w.back() == L' ') w.pop_back();  // no underline under a trailing blank
    TextOutW(dc, kMargin + box.x, kMargin / 2 + box.y, w.c_str(), static_cast<int>(w.size()));
    if (link && box.run == m_focusRun && GetFocus() == m_hWnd) {
      RECT r{kMargin + box.x - 1, kMargin / 2 + box.y, kMargin + box.x + box.width + 1, kMargin / 2 + box.y + m_lineHeight};
      DrawFocusRect(dc, &r);
    }
  }
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
  InvalidateRect(m_hWnd, nullptr, TRUE);
}

void CParamsHtmlWnd::OnParamChanged(int index) {
  m_lastChanged = index;
  if (HWND parent = GetParent(m_hWnd))
    SendMessageW(parent, WM_COMMAND, MAKEWPARAM(GetDlgCtrlID(m_hWnd), kNotifyParamChanged),
                 reinterpret_cast<LPARAM>(m_hWnd));
}

void CParamsHtmlWnd::Follow(int run) {
  if (run < 0 || run >= static_cast<int>(m_runs.size())) return;
  const std::string href = m_runs[run].href;  // the page is rewritten while the link is followed
  // A dialog's database error goes to the window's failure boundary, which logs and shows it.
  OnBeforeNavigate2(href.c_str());
}

LRESULT CParamsHtmlWnd::WindowProc(UINT msg, WPARAM wParam, LPARAM lParam) {
  switch (msg) {
    case WM_SIZE:
      Reflow();
      return 0;
    case WM_ERASEBKGND:
      return 1;  // Paint fills the background
    case WM_PAINT: {
      varion::PaintDc dc(m_hWnd);
      Paint(dc.get());
      return 0;
    }
    case WM_PRINTCLIENT:
      Paint(reinterpret_cast<HDC>(wParam));
      return 0;
    case WM_SETCURSOR: {
      POINT pt;
      GetCursorPos(&pt);
      ScreenToClient(m_hWnd, &pt);
      if (LOWORD(lParam) == HTCLIENT && LinkRunAt(pt) >= 0) {
        SetCursor(LoadCursorW(nullptr, MAKEINTRESOURCEW(32649)));  // IDC_HAND
        return TRUE;
      }
      break;
    }
    case WM_LBUTTONDOWN:
      SetFocus(m_hWnd);
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
      InvalidateRect(m_hWnd, nullptr, TRUE);
      return 0;
    default:
      break;
  }
  return Default(msg, wParam, lParam);
}
