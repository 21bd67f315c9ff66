#include "controls/small_controls_win.h"

#include <commctrl.h>
#include <windowsx.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <mutex>
#include <optional>

#include "base/library_module_win.h"
#include "base/text.h"
#include "controls/ident_edit_win.h"
#include "controls/ident_rules.h"

namespace varion {
namespace {

using unique_pen = unique_gdi_of<HPEN>;

std::mutex g_menuMutex;
ChoiceMenuHook g_menuHook;

std::wstring WindowTextOf(HWND window) {
  std::wstring text(static_cast<size_t>(GetWindowTextLengthW(window)) + 1, L'\0');
  text.resize(static_cast<size_t>(GetWindowTextW(window, text.data(), static_cast<int>(text.size()))));
  return text;
}

HFONT ParentFont(HWND window) {
  auto font = reinterpret_cast<HFONT>(SendMessageW(GetParent(window), WM_GETFONT, 0, 0));
  return font ? font : static_cast<HFONT>(GetStockObject(DEFAULT_GUI_FONT));
}

// The brush the parent paints its static controls with, as a dialog of ours tints them.
HBRUSH ParentBackground(HWND window, HDC dc) {
  auto brush = reinterpret_cast<HBRUSH>(
      SendMessageW(GetParent(window), WM_CTLCOLORSTATIC, reinterpret_cast<WPARAM>(dc), reinterpret_cast<LPARAM>(window)));
  return brush ? brush : GetSysColorBrush(COLOR_BTNFACE);
}

int ShowChoiceMenu(HWND owner, const std::vector<std::string>& choices, int current) {
  ChoiceMenuHook hook;
  {
    std::lock_guard lock(g_menuMutex);
    hook = g_menuHook;
  }
  if (hook) return hook(owner, choices, current);
  const unique_menu menu(CreatePopupMenu());
  if (!menu) return -1;
  for (size_t i = 0; i < choices.size(); ++i)
    AppendMenuW(menu.get(), MF_STRING | (static_cast<int>(i) == current ? MF_CHECKED : 0), i + 1,
                text::Cp1250ToWide(choices[i]).c_str());
  RECT r;
  GetWindowRect(owner, &r);
  const int picked = static_cast<int>(TrackPopupMenu(menu.get(), TPM_RETURNCMD | TPM_LEFTALIGN | TPM_TOPALIGN | TPM_NONOTIFY,
                                                     r.left, r.bottom, 0, owner, nullptr));
  return picked - 1;
}

// The symbols of the action buttons, drawn in a square of side `s` around the centre.
void DrawActionSymbol(HDC dc, CVelActionButton::Action action, POINT c, int s, bool enabled) {
  static constexpr COLORREF kColours[] = {RGB(0, 130, 0), RGB(170, 100, 0), RGB(40, 70, 150), RGB(200, 0, 0)};
  const COLORREF colour = enabled ? kColours[action] : GetSysColor(COLOR_GRAYTEXT);
  const int h = s / 2;
  const unique_pen pen(CreatePen(PS_SOLID, std::max(2, s / 6), colour));
  const SelectedObject selected(dc, pen.get());
  const auto line = [dc](int x1, int y1, int x2, int y2) {
    MoveToEx(dc, x1, y1, nullptr);
    LineTo(dc, x2, y2);
  };
  switch (action) {
    case CVelActionButton::kAdd:
      line(c.x - h, c.y, c.x + h + 1, c.y);
      line(c.x, c.y - h, c.x, c.y + h + 1);
      break;
    case CVelActionButton::kDelete:
      line(c.x - h, c.y - h, c.x + h + 1, c.y + h + 1);
      line(c.x + h, c.y - h, c.x - h - 1, c.y + h + 1);
      break;
    case CVelActionButton::kEdit:  // a pencil over a line of writing
      line(c.x - h + 2, c.y + h - 4, c.x + h, c.y - h + 2);
      line(c.x - h, c.y + h, c.x + h, c.y + h);
      break;
    case CVelActionButton::kList:
      for (int row = -1; row <= 1; ++row) line(c.x - h, c.y + row * h * 2 / 3, c.x + h + 1, c.y + row * h * 2 / 3);
      break;
  }
}

struct ActionRow {
  const char* className;
  CVelActionButton::Action action;
  const char* tooltip;
};
const ActionRow kActions[] = {
    {"vel_addbtn", CVelActionButton::kAdd, "Dodaj"},
    {"vel_editbtn", CVelActionButton::kEdit, "Edytuj"},
    {"vel_listbtn", CVelActionButton::kList, "Lista"},
    {"vel_deletebtn", CVelActionButton::kDelete, "Usuń"},
};

std::string ClassOf(HWND window) {
  wchar_t name[100] = {};
  const int n = GetClassNameW(window, name, static_cast<int>(std::size(name)));
  return text::WideToCp1250(std::wstring_view(name, static_cast<size_t>(std::max(n, 0))));
}

}  // namespace

void SetChoiceMenuHook(ChoiceMenuHook hook) {
  std::lock_guard lock(g_menuMutex);
  g_menuHook = std::move(hook);
}

}  // namespace varion

// Clickable ---------------------------------------------------------------------------------------

void CVelClickable::Click() {
  if (!IsWindowEnabled(m_hWnd)) return;
  SendMessageW(GetParent(m_hWnd), WM_COMMAND, MAKEWPARAM(GetDlgCtrlID(m_hWnd), BN_CLICKED),
               reinterpret_cast<LPARAM>(m_hWnd));
}

LRESULT CVelClickable::WindowProc(UINT msg, WPARAM wp, LPARAM lp) {
  switch (msg) {
    case WM_GETDLGCODE: {
      // Enter clicks the focused button instead of the dialog's default one.
      const auto* m = reinterpret_cast<const MSG*>(lp);
      LRESULT code = DLGC_BUTTON | DLGC_UNDEFPUSHBUTTON;
      if (m && m->message == WM_KEYDOWN && m->wParam == VK_RETURN) code |= DLGC_WANTMESSAGE;
      return code;
    }
    case WM_KEYDOWN:
      if (wp == VK_SPACE) {
        m_spaceDown = true;
        InvalidateRect(m_hWnd, nullptr, FALSE);
        return 0;
      }
      if (wp == VK_RETURN) return Click(), 0;
      break;
    case WM_KEYUP:
      if (wp == VK_SPACE && m_spaceDown) {
        m_spaceDown = false;
        InvalidateRect(m_hWnd, nullptr, FALSE);
        Click();
        return 0;
      }
      break;
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK:
      SetFocus(m_hWnd);
      SetCapture(m_hWnd);
      m_pressed = m_inside = true;
      InvalidateRect(m_hWnd, nullptr, FALSE);
      return 0;
    case WM_MOUSEMOVE: {
      if (!m_hot) {
        m_hot = true;
        TRACKMOUSEEVENT tme{sizeof tme, TME_LEAVE, m_hWnd, 0};
        TrackMouseEvent(&tme);
        InvalidateRect(m_hWnd, nullptr, FALSE);
      }
      if (m_pressed) {
        RECT r;
        GetClientRect(m_hWnd, &r);
        const POINT p{GET_X_LPARAM(lp), GET_Y_LPARAM(lp)};
        const bool inside = PtInRect(&r, p) != FALSE;
        if (inside != m_inside) InvalidateRect(m_hWnd, nullptr, FALSE);
        m_inside = inside;
      }
      return 0;
    }
    case WM_MOUSELEAVE:
      m_hot = false;
      InvalidateRect(m_hWnd, nullptr, FALSE);
      return 0;
    case WM_LBUTTONUP: {
      if (!m_pressed) return 0;
      RECT r;
      GetClientRect(m_hWnd, &r);
      const POINT p{GET_X_LPARAM(lp), GET_Y_LPARAM(lp)};
      const bool click = PtInRect(&r, p) != FALSE;
      m_pressed = false;
      if (GetCapture() == m_hWnd) ReleaseCapture();
      InvalidateRect(m_hWnd, nullptr, FALSE);
      if (click) Click();
      return 0;
    }
    case WM_CAPTURECHANGED:
      m_pressed = false;
      InvalidateRect(m_hWnd, nullptr, FALSE);
      return 0;
    case WM_ERASEBKGND:
      return 1;
    case WM_PAINT: {
      {
        varion::PaintDc dc(m_hWnd);
        RECT r;
        GetClientRect(m_hWnd, &r);
        Paint(dc.get(), r);
        if (GetFocus() == m_hWnd) {
          InflateRect(&r, -2, -2);
          DrawFocusRect(dc.get(), &r);
        }
      }
      if (IsFaulty()) DrawFrame();
      return 0;
    }
    case WM_PRINTCLIENT: {
      RECT r;
      GetClientRect(m_hWnd, &r);
      Paint(reinterpret_cast<HDC>(wp), r);
      return 0;
    }
    case WM_SETFOCUS:
    case WM_KILLFOCUS:
      m_spaceDown = false;
      InvalidateRect(m_hWnd, nullptr, FALSE);
      break;
    case WM_ENABLE:
    case WM_SETTEXT: {
      const LRESULT r = CVelControlBase::WindowProc(msg, wp, lp);
      InvalidateRect(m_hWnd, nullptr, FALSE);
      return r;
    }
  }
  return CVelControlBase::WindowProc(msg, wp, lp);
}

// Action buttons ------------------------------------------------------------------------------------

const char* CVelActionButton::TooltipText(Action action) {
  for (const auto& row : varion::kActions)
    if (row.action == action) return row.tooltip;
  return "";
}

BOOL CVelActionButton::AttachCreating(HWND window, CREATESTRUCTW* create) {
  const std::string cls = varion::ClassOf(window);
  const auto* row = std::find_if(std::begin(varion::kActions), std::end(varion::kActions),
                                 [&cls](const auto& r) { return _stricmp(r.className, cls.c_str()) == 0; });
  if (row == std::end(varion::kActions)) return FALSE;
  auto* button = AttachNew<CVelActionButton>(window);
  if (!button) return FALSE;
  button->m_action = row->action;
  if (!create) button->MakeTooltip();
  return TRUE;
}

void CVelActionButton::MakeTooltip() {
  if (m_tooltip) return;
  m_tooltip.reset(CreateWindowExW(WS_EX_TOPMOST, TOOLTIPS_CLASSW, nullptr, WS_POPUP | TTS_ALWAYSTIP | TTS_NOPREFIX,
                                  CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, m_hWnd, nullptr,
                                  varion::LibraryModule(), nullptr));
  if (!m_tooltip) return;
  std::wstring tip = varion::text::Cp1250ToWide(TooltipText(m_action));
  TOOLINFOW ti{};
  ti.cbSize = sizeof ti;
  ti.uFlags = TTF_IDISHWND;
  ti.hwnd = GetParent(m_hWnd);
  ti.uId = reinterpret_cast<UINT_PTR>(m_hWnd);
  ti.lpszText = tip.data();
  SendMessageW(m_tooltip.get(), TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&ti));
}

LRESULT CVelActionButton::WindowProc(UINT msg, WPARAM wp, LPARAM lp) {
  switch (msg) {
    case WM_CREATE: {
      const LRESULT r = CVelClickable::WindowProc(msg, wp, lp);
      if (r != -1) MakeTooltip();
      return r;
    }
    case WM_MOUSEMOVE:
    case WM_LBUTTONDOWN:
    case WM_LBUTTONUP:
      // The tooltip learns of the mouse from us rather than by subclassing the window.
      if (m_tooltip) {
        MSG m{m_hWnd, msg, wp, lp, static_cast<DWORD>(GetMessageTime()), {}};
        SendMessageW(m_tooltip.get(), TTM_RELAYEVENT, 0, reinterpret_cast<LPARAM>(&m));
      }
      break;
  }
  return CVelClickable::WindowProc(msg, wp, lp);
}

void CVelActionButton::Paint(HDC dc, const RECT& client) {
  RECT r = client;
  FillRect(dc, &r, GetSysColorBrush(COLOR_BTNFACE));
  if (Pressed())
    DrawEdge(dc, &r, BDR_SUNKENOUTER, BF_RECT);
  else if (Hot())
    DrawEdge(dc, &r, BDR_RAISEDINNER, BF_RECT);
  const int shift = Pressed() ? 1 : 0;
  const POINT centre{(r.left + r.right) / 2 + shift, (r.top + r.bottom) / 2 + shift};
  const int side = std::max(6, std::min<int>(r.right - r.left, r.bottom - r.top) - 10);
  varion::DrawActionSymbol(dc, m_action, centre, side, IsWindowEnabled(m_hWnd) != FALSE);
}

// Bitmap button -------------------------------------------------------------------------------------

BOOL CVelBmpButton::AttachCreating(HWND window, CREATESTRUCTW* create) {
  auto* button = AttachNew<CVelBmpButton>(window);
  if (button && !create) button->LoadNamedBitmap();
  return button != nullptr;
}

void CVelBmpButton::LoadNamedBitmap() {
  m_bitmap.reset();
  const std::wstring name = varion::WindowTextOf(m_hWnd);
  if (name.empty()) return;
  LPCWSTR resource = name.c_str();
  if (name[0] == L'#') resource = MAKEINTRESOURCEW(_wtoi(name.c_str() + 1));
  for (HMODULE module : {GetModuleHandleW(nullptr), varion::LibraryModule()}) {
    m_bitmap.reset(static_cast<HBITMAP>(LoadImageW(module, resource, IMAGE_BITMAP, 0, 0, LR_DEFAULTCOLOR)));
    if (m_bitmap) return;
  }
}

LRESULT CVelBmpButton::WindowProc(UINT msg, WPARAM wp, LPARAM lp) {
  switch (msg) {
    case WM_CREATE: {
      const LRESULT r = CVelClickable::WindowProc(msg, wp, lp);
      LoadNamedBitmap();
      return r;
    }
    case WM_SETTEXT: {
      const LRESULT r = CVelClickable::WindowProc(msg, wp, lp);
      LoadNamedBitmap();
      return r;
    }
  }
  return CVelClickable::WindowProc(msg, wp, lp);
}

void CVelBmpButton::Paint(HDC dc, const RECT& client) {
  RECT r = client;
  FillRect(dc, &r, GetSysColorBrush(COLOR_BTNFACE));
  DrawEdge(dc, &r, Pressed() ? EDGE_SUNKEN : (Hot() ? EDGE_RAISED : BDR_RAISEDINNER), BF_RECT);
  const int shift = Pressed() ? 1 : 0;
  const UINT state = IsWindowEnabled(m_hWnd) ? DSS_NORMAL : DSS_DISABLED;
  if (m_bitmap) {
    BITMAP bm{};
    GetObjectW(m_bitmap.get(), sizeof bm, &bm);
    const int x = (r.right - r.left - bm.bmWidth) / 2 + shift, y = (r.bottom - r.top - bm.bmHeight) / 2 + shift;
    DrawStateW(dc, nullptr, nullptr, reinterpret_cast<LPARAM>(m_bitmap.get()), 0, x, y, bm.bmWidth, bm.bmHeight,
               DST_BITMAP | state);
    return;
  }
  // No such bitmap: the name shows, so that a wrong name is seen on the form.
  const varion::SelectedObject font(dc, varion::ParentFont(m_hWnd));
  SetBkMode(dc, TRANSPARENT);
  SetTextColor(dc, GetSysColor(IsWindowEnabled(m_hWnd) ? COLOR_BTNTEXT : COLOR_GRAYTEXT));
  OffsetRect(&r, shift, shift);
  DrawTextW(dc, varion::WindowTextOf(m_hWnd).c_str(), -1, &r, DT_CENTER | DT_VCENTER | DT_SINGLELINE | DT_END_ELLIPSIS);
}

// Hyperlink -------------------------------------------------------------------------------------------

BOOL CVelHyperlink::AttachCreating(HWND window, CREATESTRUCTW*) { return AttachNew<CVelHyperlink>(window) != nullptr; }

bool CVelHyperlink::SetAddress(const std::string& address) {
  const bool mail = address.size() > 7 && _strnicmp(address.c_str(), "mailto:", 7) == 0;
  const auto checked = varion::IdentAddressToOpen(mail ? varion::IdentKind::Email : varion::IdentKind::Www, address);
  m_address = checked.value_or("");
  return checked.has_value();
}

void CVelHyperlink::Click() {
  if (!IsWindowEnabled(m_hWnd)) return;
  CVelClickable::Click();
  if (!m_address.empty()) varion::OpenShellAddress(GetParent(m_hWnd), m_address);
}

LRESULT CVelHyperlink::WindowProc(UINT msg, WPARAM wp, LPARAM lp) {
  if (msg == WM_SETCURSOR && LOWORD(lp) == HTCLIENT) {
    SetCursor(LoadCursorW(nullptr, reinterpret_cast<LPCWSTR>(IDC_HAND)));
    return TRUE;
  }
  return CVelClickable::WindowProc(msg, wp, lp);
}

void CVelHyperlink::PaintLink(HDC dc, RECT r, const std::wstring& text) {
  LOGFONTW lf{};
  GetObjectW(varion::ParentFont(m_hWnd), sizeof lf, &lf);
  lf.lfUnderline = TRUE;
  const varion::unique_font underlined(CreateFontIndirectW(&lf));
  const varion::SelectedObject font(dc, underlined.get());
  SetBkMode(dc, TRANSPARENT);
  SetTextColor(dc, !IsWindowEnabled(m_hWnd) ? GetSysColor(COLOR_GRAYTEXT) : Hot() ? RGB(200, 0, 0) : RGB(0, 0, 204));
  DrawTextW(dc, text.c_str(), -1, &r, DT_LEFT | DT_VCENTER | DT_SINGLELINE | DT_END_ELLIPSIS | DT_NOPREFIX);
}

void CVelHyperlink::Paint(HDC dc, const RECT& client) {
  FillRect(dc, &client, varion::ParentBackground(m_hWnd, dc));
  PaintLink(dc, client, varion::WindowTextOf(m_hWnd));
}

// Combo link -------------------------------------------------------------------------------------------

BOOL CVelComboHyperlink::AttachCreating(HWND window, CREATESTRUCTW*) {
  auto* link = AttachNew<CVelComboHyperlink>(window);
  if (!link) return FALSE;
  link->m_withCaption = _stricmp(varion::ClassOf(window).c_str(), "vel_combohyperlinkex") == 0;
  return TRUE;
}

void CVelComboHyperlink::Click() {
  if (!IsWindowEnabled(m_hWnd) || m_items.empty()) return;
  std::vector<std::string> texts;
  for (const Item& item : m_items) texts.push_back(item.text);
  Choose(varion::ShowChoiceMenu(m_hWnd, texts, m_current));
}

void CVelComboHyperlink::Choose(int index) {
  if (index < 0 || index >= static_cast<int>(m_items.size()) || index == m_current) return;
  m_current = index;
  InvalidateRect(m_hWnd, nullptr, FALSE);
  SendMessageW(GetParent(m_hWnd), WM_COMMAND, MAKEWPARAM(GetDlgCtrlID(m_hWnd), CBN_SELCHANGE),
               reinterpret_cast<LPARAM>(m_hWnd));
}

LRESULT CVelComboHyperlink::WindowProc(UINT msg, WPARAM wp, LPARAM lp) {
  const int count = static_cast<int>(m_items.size());
  const auto valid = [count](WPARAM i) { return static_cast<int>(i) >= 0 && static_cast<int>(i) < count; };
  switch (msg) {
    case CB_ADDSTRING: {
      const auto* text = reinterpret_cast<const wchar_t*>(lp);
      m_items.push_back({varion::text::WideToCp1250(text ? text : L""), 0});
      return count;
    }
    case CB_RESETCONTENT:
      m_items.clear();
      m_current = -1;
      InvalidateRect(m_hWnd, nullptr, FALSE);
      return CB_OKAY;
    case CB_GETCOUNT:
      return count;
    case CB_SETCURSEL:
      // As in a combo box: the program's choice sends no notification.
      m_current = valid(wp) ? static_cast<int>(wp) : -1;
      InvalidateRect(m_hWnd, nullptr, FALSE);
      return m_current < 0 ? CB_ERR : m_current;
    case CB_GETCURSEL:
      return m_current < 0 ? CB_ERR : m_current;
    case CB_GETLBTEXTLEN:
      return valid(wp) ? static_cast<LRESULT>(varion::text::Cp1250ToWide(m_items[wp].text).size()) : CB_ERR;
    case CB_GETLBTEXT: {
      if (!valid(wp) || !lp) return CB_ERR;
      const std::wstring text = varion::text::Cp1250ToWide(m_items[wp].text);
      std::copy(text.c_str(), text.c_str() + text.size() + 1, reinterpret_cast<wchar_t*>(lp));
      return static_cast<LRESULT>(text.size());
    }
    case CB_SETITEMDATA:
      if (!valid(wp)) return CB_ERR;
      m_items[wp].data = lp;
      return CB_OKAY;
    case CB_GETITEMDATA:
      return valid(wp) ? m_items[wp].data : CB_ERR;
    case WM_KEYDOWN:
      if (wp == VK_F4) return Click(), 0;
      if (wp == VK_UP || wp == VK_DOWN) {
        Choose(m_current < 0 ? 0 : m_current + (wp == VK_UP ? -1 : 1));
        return 0;
      }
      break;
    case WM_SYSKEYDOWN:
      if (wp == VK_DOWN || wp == VK_UP) return Click(), 0;
      break;
    case WM_GETDLGCODE:
      return CVelHyperlink::WindowProc(msg, wp, lp) | DLGC_WANTARROWS;
  }
  return CVelHyperlink::WindowProc(msg, wp, lp);
}

void CVelComboHyperlink::Paint(HDC dc, const RECT& client) {
  FillRect(dc, &client, varion::ParentBackground(m_hWnd, dc));
  RECT r = client;
  if (m_withCaption) {
    const std::wstring caption = varion::WindowTextOf(m_hWnd) + L" ";
    const varion::SelectedObject font(dc, varion::ParentFont(m_hWnd));
    SetBkMode(dc, TRANSPARENT);
    SetTextColor(dc, GetSysColor(COLOR_WINDOWTEXT));
    RECT measure = r;
    DrawTextW(dc, caption.c_str(), -1, &measure, DT_SINGLELINE | DT_CALCRECT | DT_NOPREFIX);
    DrawTextW(dc, caption.c_str(), -1, &r, DT_LEFT | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX);
    r.left = measure.right;
  }
  const std::wstring choice = m_current >= 0 ? varion::text::Cp1250ToWide(m_items[m_current].text) : L"...";
  PaintLink(dc, r, choice + L" \x25BE");
}

// Info frame ------------------------------------------------------------------------------------------

BOOL CVelInfoFrame::AttachCreating(HWND window, CREATESTRUCTW*) { return AttachNew<CVelInfoFrame>(window) != nullptr; }

LRESULT CVelInfoFrame::WindowProc(UINT msg, WPARAM wp, LPARAM lp) {
  switch (msg) {
    case WM_ERASEBKGND:
      return 1;
    case WM_SETTEXT:
    case WM_SIZE: {
      const LRESULT r = CVelControlBase::WindowProc(msg, wp, lp);
      InvalidateRect(m_hWnd, nullptr, FALSE);
      return r;
    }
    case WM_PAINT:
    case WM_PRINTCLIENT: {
      std::optional<varion::PaintDc> paint;
      HDC dc = reinterpret_cast<HDC>(wp);
      if (msg == WM_PAINT) dc = paint.emplace(m_hWnd).get();
      RECT r;
      GetClientRect(m_hWnd, &r);
      FillRect(dc, &r, GetSysColorBrush(COLOR_INFOBK));
      FrameRect(dc, &r, GetSysColorBrush(COLOR_BTNSHADOW));
      // A large icon where the panel is tall enough for it, else a small one.
      const int icon = r.bottom - r.top >= 48 ? 32 : 16;
      DrawIconEx(dc, r.left + 8, r.top + 8, LoadIconW(nullptr, reinterpret_cast<LPCWSTR>(IDI_INFORMATION)), icon, icon,
                 0, nullptr, DI_NORMAL);
      RECT textRect{r.left + 16 + icon, r.top + 8, r.right - 8, r.bottom - 6};
      const varion::SelectedObject font(dc, varion::ParentFont(m_hWnd));
      SetBkMode(dc, TRANSPARENT);
      SetTextColor(dc, GetSysColor(COLOR_INFOTEXT));
      DrawTextW(dc, varion::WindowTextOf(m_hWnd).c_str(), -1, &textRect, DT_LEFT | DT_WORDBREAK | DT_NOPREFIX | DT_END_ELLIPSIS);
      return 0;
    }
  }
  return CVelControlBase::WindowProc(msg, wp, lp);
}

// Background panel -------------------------------------------------------------------------------------

BOOL CVelBkgnd::AttachCreating(HWND window, CREATESTRUCTW*) { return AttachNew<CVelBkgnd>(window) != nullptr; }

LRESULT CVelBkgnd::WindowProc(UINT msg, WPARAM wp, LPARAM lp) {
  switch (msg) {
    case WM_NCHITTEST:
      return HTTRANSPARENT;
    case WM_ERASEBKGND:
    case WM_PRINTCLIENT: {
      const auto dc = reinterpret_cast<HDC>(wp);
      RECT r;
      GetClientRect(m_hWnd, &r);
      FillRect(dc, &r, varion::ParentBackground(m_hWnd, dc));
      return msg == WM_ERASEBKGND ? 1 : 0;
    }
  }
  return CVelControlBase::WindowProc(msg, wp, lp);
}

// Pie of a percentage -----------------------------------------------------------------------------------

BOOL CVelPiePercent::AttachCreating(HWND window, CREATESTRUCTW*) { return AttachNew<CVelPiePercent>(window) != nullptr; }

LRESULT CVelPiePercent::WindowProc(UINT msg, WPARAM wp, LPARAM lp) {
  switch (msg) {
    case PBM_SETPOS: {
      const int previous = m_percent;
      m_percent = std::clamp(static_cast<int>(static_cast<INT_PTR>(wp)), 0, 100);
      if (previous != m_percent) InvalidateRect(m_hWnd, nullptr, TRUE);
      return previous;
    }
    case PBM_GETPOS:
      return m_percent;
    case WM_ERASEBKGND:
      return 1;
    case WM_PRINTCLIENT: {
      RECT r;
      GetClientRect(m_hWnd, &r);
      Paint(reinterpret_cast<HDC>(wp), r);
      return 0;
    }
    case WM_PAINT: {
      varion::PaintDc dc(m_hWnd);
      RECT r;
      GetClientRect(m_hWnd, &r);
      Paint(dc.get(), r);
      return 0;
    }
  }
  return CVelControlBase::WindowProc(msg, wp, lp);
}

void CVelPiePercent::Paint(HDC dc, const RECT& client) {
  FillRect(dc, &client, varion::ParentBackground(m_hWnd, dc));
  const int side = std::max(0, std::min<int>(client.right - client.left, client.bottom - client.top) - 2);
  const int cx = (client.left + client.right) / 2, cy = (client.top + client.bottom) / 2, radius = side / 2;
  const RECT box{cx - radius, cy - radius, cx + radius, cy + radius};
  const varion::unique_gdi_of<HPEN> pen(CreatePen(PS_SOLID, 1, GetSysColor(COLOR_BTNSHADOW)));
  const varion::SelectedObject selectedPen(dc, pen.get());
  {
    const varion::SelectedObject brush(dc, GetSysColorBrush(COLOR_WINDOW));
    Ellipse(dc, box.left, box.top, box.right, box.bottom);
  }
  if (m_percent > 0) {
    // From twelve o'clock, clockwise.
    const varion::SelectedObject brush(dc, GetSysColorBrush(COLOR_HIGHLIGHT));
    if (m_percent >= 100) {
      Ellipse(dc, box.left, box.top, box.right, box.bottom);
    } else {
      const double angle = m_percent * 2 * 3.14159265358979323846 / 100;
      const int ex = cx + static_cast<int>(std::lround(std::sin(angle) * radius * 2));
      const int ey = cy - static_cast<int>(std::lround(std::cos(angle) * radius * 2));
      const int previous = SetArcDirection(dc, AD_CLOCKWISE);
      Pie(dc, box.left, box.top, box.right, box.bottom, cx, box.top - radius, ex, ey);
      SetArcDirection(dc, previous);
    }
  }
  const std::wstring label = std::to_wstring(m_percent) + L"%";
  const varion::SelectedObject font(dc, varion::ParentFont(m_hWnd));
  SetBkMode(dc, OPAQUE);
  SetBkColor(dc, GetSysColor(COLOR_WINDOW));
  SetTextColor(dc, GetSysColor(COLOR_WINDOWTEXT));
  RECT textRect = box;
  DrawTextW(dc, label.c_str(), -1, &textRect, DT_CENTER | DT_VCENTER | DT_SINGLELINE);
}
