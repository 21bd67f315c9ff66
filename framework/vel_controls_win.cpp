#include "framework/vel_controls_win.h"

#include <commctrl.h>
#include <commdlg.h>

#include <mutex>
#include <shared_mutex>
#include <unordered_map>

#include "base/text.h"
#include "framework/private_messages.h"

namespace {

constexpr UINT_PTR kBlinkTimer = 0x7651;
constexpr UINT_PTR kBalloonTimer = 0x7652;
constexpr UINT kBlinkMs = 120;
constexpr int kBlinkToggles = 6;
constexpr UINT kBalloonMs = 6000;
// The object of a window, and the procedure it replaced, in a table of our own: subclassing is
// done by hand rather than through the common controls' subclass chain, and the object is found
// without window properties, because both cost a round trip to the window server on every
// message on some systems (Wine), which doubled the cost of creating a control.
struct Attached {
  CVelControlBase* object;
  WNDPROC oldProc;
};
std::shared_mutex g_tableMutex;
std::unordered_map<HWND, Attached> g_table;

Attached Lookup(HWND h) {
  std::shared_lock lock(g_tableMutex);
  auto it = g_table.find(h);
  return it == g_table.end() ? Attached{nullptr, nullptr} : it->second;
}
}  // namespace

CVelControlBase::CVelControlBase(HWND window, bool ownedByWindow) : m_hwnd(window), m_ownedByWindow(ownedByWindow) {
  std::unique_lock lock(g_tableMutex);
  auto [it, fresh] = g_table.try_emplace(window, Attached{this, nullptr});
  if (fresh)
    it->second.oldProc =
        reinterpret_cast<WNDPROC>(SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(StaticProc)));
  else
    it->second.object = this;  // our procedure is still in the window's chain from an earlier object
  m_oldProc = it->second.oldProc;
}

CVelControlBase::~CVelControlBase() { Detach(); }

void CVelControlBase::Detach() {
  if (!m_hwnd) return;
  std::unique_lock lock(g_tableMutex);
  auto it = g_table.find(m_hwnd);
  if (it != g_table.end() && it->second.object == this) {
    // Give the window its procedure back when nobody subclassed it after us; otherwise our
    // procedure stays in the chain and passes everything on.
    if (IsWindow(m_hwnd) && reinterpret_cast<WNDPROC>(GetWindowLongPtrW(m_hwnd, GWLP_WNDPROC)) == StaticProc) {
      SetWindowLongPtrW(m_hwnd, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(m_oldProc));
      g_table.erase(it);
    } else {
      it->second.object = nullptr;
    }
  }
  m_hwnd = nullptr;
}

CVelControlBase* CVelControlBase::FromHandle(HWND window) { return window ? Lookup(window).object : nullptr; }

HBRUSH CVelControlBase::FaultyBrush() {
  // One brush for the life of the process; the system frees it with the process.
  static HBRUSH brush = CreateSolidBrush(kFaultyBackground);
  return brush;
}

LRESULT CALLBACK CVelControlBase::StaticProc(HWND h, UINT msg, WPARAM wp, LPARAM lp) {
  const Attached a = Lookup(h);
  if (msg == WM_NCDESTROY) {
    {
      std::unique_lock lock(g_tableMutex);
      g_table.erase(h);
    }
    if (a.object) {
      a.object->m_hwnd = nullptr;
      if (a.object->m_ownedByWindow) delete a.object;
    }
    return a.oldProc ? CallWindowProcW(a.oldProc, h, msg, wp, lp) : DefWindowProcW(h, msg, wp, lp);
  }
  if (!a.object) return a.oldProc ? CallWindowProcW(a.oldProc, h, msg, wp, lp) : DefWindowProcW(h, msg, wp, lp);
  return a.object->WindowProc(msg, wp, lp);
}

LRESULT CVelControlBase::Default(UINT msg, WPARAM wp, LPARAM lp) {
  return CallWindowProcW(m_oldProc, m_hwnd, msg, wp, lp);
}

LRESULT CVelControlBase::WindowProc(UINT msg, WPARAM wp, LPARAM lp) {
  if (msg == varion::MsgMarkFaulty()) {
    OnMarkFaulty(wp != 0);
    return 1;
  }
  if (msg == varion::MsgIndicate()) {
    if (wp) OnIndicate();
    return 1;
  }
  if (msg == varion::MsgErrorText()) {
    if (const auto* t = reinterpret_cast<const varion::ErrorTextTriple*>(lp))
      OnErrorText(t->secondText, t->message, t->code);
    return 1;
  }
  switch (msg) {
    case WM_NCPAINT:
    case WM_PAINT: {
      LRESULT r = Default(msg, wp, lp);
      if (m_faulty != m_blinkOn) DrawFrame();
      return r;
    }
    case WM_SETFOCUS: {
      LRESULT r = Default(msg, wp, lp);
      if (m_faulty) ShowErrorBalloon();
      return r;
    }
    case WM_KILLFOCUS:
      m_balloon.Hide();
      break;
    case WM_TIMER:
      if (wp == kBlinkTimer) {
        m_blinkOn = !m_blinkOn;
        if (--m_blinkLeft <= 0) {
          KillTimer(m_hwnd, kBlinkTimer);
          m_blinkOn = false;
        }
        RedrawWindow(m_hwnd, nullptr, nullptr, RDW_FRAME | RDW_INVALIDATE | RDW_UPDATENOW);
        return 0;
      }
      if (wp == kBalloonTimer) {
        KillTimer(m_hwnd, kBalloonTimer);
        m_balloon.Hide();
        return 0;
      }
      break;
  }
  return Default(msg, wp, lp);
}

void CVelControlBase::OnMarkFaulty(bool faulty) {
  m_faulty = faulty;
  if (!faulty) {
    m_message.clear();
    m_title.clear();
    m_code = 0;
    m_balloon.Hide();
  }
  RedrawWindow(m_hwnd, nullptr, nullptr, RDW_FRAME | RDW_INVALIDATE | RDW_ERASE);
}

void CVelControlBase::OnIndicate() {
  m_blinkLeft = kBlinkToggles;
  m_blinkOn = false;
  SetTimer(m_hwnd, kBlinkTimer, kBlinkMs, nullptr);
  ShowErrorBalloon();
}

void CVelControlBase::OnErrorText(const char* title, const char* message, std::uint32_t code) {
  m_title = title ? title : "";
  m_message = message ? message : "";
  m_code = code;
  if (GetFocus() == m_hwnd || IsChild(m_hwnd, GetFocus())) ShowErrorBalloon();
}

void CVelControlBase::ShowErrorBalloon() {
  if (m_message.empty()) return;
  m_balloon.Show(m_hwnd, m_title, m_message, TTI_ERROR);
  SetTimer(m_hwnd, kBalloonTimer, kBalloonMs, nullptr);
}

void CVelControlBase::DrawFrame() {
  HDC dc = GetWindowDC(m_hwnd);
  if (!dc) return;
  RECT r;
  GetWindowRect(m_hwnd, &r);
  OffsetRect(&r, -r.left, -r.top);
  HBRUSH brush = CreateSolidBrush(kFaultyFrame);
  FrameRect(dc, &r, brush);
  InflateRect(&r, -1, -1);
  FrameRect(dc, &r, brush);
  DeleteObject(brush);
  ReleaseDC(m_hwnd, dc);
}

// Edits ------------------------------------------------------------------------------------------

CVelEditBase* CVelEditBase::Attach(HWND edit) {
  if (auto* existing = dynamic_cast<CVelEditBase*>(CVelControlBase::FromHandle(edit))) return existing;
  return IsWindow(edit) ? new CVelEditBase(edit, true) : nullptr;
}

LRESULT CVelEditBase::WindowProc(UINT msg, WPARAM wp, LPARAM lp) {
  // Typing is the user answering the balloon: it goes, the mark stays until the next check.
  if (msg == WM_CHAR) HideBalloon();
  return CVelControlBase::WindowProc(msg, wp, lp);
}

CVelComboBox* CVelComboBox::Attach(HWND combo) {
  if (auto* existing = dynamic_cast<CVelComboBox*>(CVelControlBase::FromHandle(combo))) return existing;
  return IsWindow(combo) ? new CVelComboBox(combo, true) : nullptr;
}

// The analytic-account edit -------------------------------------------------------------------------

CVelAnalitykaEdit* CVelAnalitykaEdit::Attach(HWND edit) {
  if (auto* existing = FromHandle(edit)) return existing;
  if (CVelControlBase::FromHandle(edit) || !IsWindow(edit)) return nullptr;
  return new CVelAnalitykaEdit(edit, true);
}

CVelAnalitykaEdit* CVelAnalitykaEdit::FromHandle(HWND window) {
  return dynamic_cast<CVelAnalitykaEdit*>(CVelControlBase::FromHandle(window));
}

void CVelAnalitykaEdit::SetAccount(long accountId, const std::string& text) {
  m_settingText = true;
  SetWindowTextW(GetHwnd(), varion::text::Cp1250ToWide(text).c_str());
  m_settingText = false;
  m_accountId = accountId;
}

LRESULT CVelAnalitykaEdit::WindowProc(UINT msg, WPARAM wp, LPARAM lp) {
  switch (msg) {
    // Any change of the text but SetAccount's leaves the account behind.
    case WM_SETTEXT:
      if (!m_settingText) m_accountId = 0;
      break;
    case WM_CHAR:
    case WM_PASTE:
    case WM_CUT:
    case WM_CLEAR:
    case WM_UNDO:
      m_accountId = 0;
      break;
  }
  return CVelEditBase::WindowProc(msg, wp, lp);
}

// The colour picker --------------------------------------------------------------------------------

CVelColorPicker* CVelColorPicker::Attach(HWND window) {
  if (auto* existing = FromHandle(window)) return existing;
  if (CVelControlBase::FromHandle(window) || !IsWindow(window)) return nullptr;
  auto* picker = new CVelColorPicker(window, true);
  InvalidateRect(window, nullptr, TRUE);
  return picker;
}

CVelColorPicker* CVelColorPicker::FromHandle(HWND window) {
  return dynamic_cast<CVelColorPicker*>(CVelControlBase::FromHandle(window));
}

void CVelColorPicker::SetColor(int mode, COLORREF color) {
  m_mode = mode == kChosen ? kChosen : kAutomatic;
  m_color = color;
  InvalidateRect(GetHwnd(), nullptr, TRUE);
}

void CVelColorPicker::SetAutomaticColor(COLORREF color) {
  m_automatic = color;
  InvalidateRect(GetHwnd(), nullptr, TRUE);
}

LRESULT CVelColorPicker::WindowProc(UINT msg, WPARAM wp, LPARAM lp) {
  switch (msg) {
    case WM_PAINT: {
      PAINTSTRUCT ps;
      HDC dc = BeginPaint(GetHwnd(), &ps);
      Paint(dc);
      EndPaint(GetHwnd(), &ps);
      if (IsFaulty()) DrawFrame();
      return 0;
    }
    case WM_ERASEBKGND:
      return 1;
    case WM_GETDLGCODE:
      return DLGC_WANTCHARS;
    case WM_LBUTTONDOWN:
      SetFocus(GetHwnd());
      return 0;
    case WM_LBUTTONUP:
      Choose();
      return 0;
    case WM_CHAR:
      if (wp == VK_SPACE) Choose();
      return 0;
    case WM_SETFOCUS:
    case WM_KILLFOCUS:
      InvalidateRect(GetHwnd(), nullptr, FALSE);
      break;
  }
  return CVelControlBase::WindowProc(msg, wp, lp);
}

void CVelColorPicker::Paint(HDC dc) {
  RECT r;
  GetClientRect(GetHwnd(), &r);
  FillRect(dc, &r, GetSysColorBrush(COLOR_BTNFACE));
  DrawEdge(dc, &r, EDGE_SUNKEN, BF_RECT | BF_ADJUST);
  InflateRect(&r, -2, -2);
  HBRUSH swatch = CreateSolidBrush(m_mode == kChosen ? m_color : m_automatic);
  FillRect(dc, &r, swatch);
  DeleteObject(swatch);
  if (m_mode == kAutomatic) {
    // The automatic colour says so, in white or black, whichever reads on it.
    const COLORREF c = m_automatic;
    const int luma = (GetRValue(c) * 299 + GetGValue(c) * 587 + GetBValue(c) * 114) / 1000;
    SetTextColor(dc, luma < 128 ? RGB(255, 255, 255) : RGB(0, 0, 0));
    SetBkMode(dc, TRANSPARENT);
    HGDIOBJ old = SelectObject(dc, reinterpret_cast<HFONT>(SendMessageW(GetParent(GetHwnd()), WM_GETFONT, 0, 0)));
    DrawTextW(dc, L"Automatyczny", -1, &r, DT_CENTER | DT_VCENTER | DT_SINGLELINE | DT_END_ELLIPSIS);
    SelectObject(dc, old);
  }
  if (GetFocus() == GetHwnd()) {
    InflateRect(&r, -2, -2);
    DrawFocusRect(dc, &r);
  }
}

void CVelColorPicker::Choose() {
  static COLORREF custom[16];
  CHOOSECOLORW cc{};
  cc.lStructSize = sizeof cc;
  cc.hwndOwner = GetParent(GetHwnd());
  cc.rgbResult = m_mode == kChosen ? m_color : m_automatic;
  cc.lpCustColors = custom;
  cc.Flags = CC_RGBINIT | CC_FULLOPEN;
  if (!ChooseColorW(&cc)) return;
  SetColor(kChosen, cc.rgbResult);
  const int id = GetDlgCtrlID(GetHwnd());
  SendMessageW(GetParent(GetHwnd()), WM_COMMAND, MAKEWPARAM(id, CBN_SELCHANGE), reinterpret_cast<LPARAM>(GetHwnd()));
}
