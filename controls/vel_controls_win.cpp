#include "controls/vel_controls_win.h"

#include <commctrl.h>
#include <commdlg.h>

#include "base/text.h"
#include "controls/private_messages.h"

namespace {

constexpr UINT_PTR kBlinkTimer = 0x7651;
constexpr UINT_PTR kBalloonTimer = 0x7652;
constexpr UINT kBlinkMs = 120;
constexpr int kBlinkToggles = 6;
constexpr UINT kBalloonMs = 6000;

}  // namespace

HBRUSH CVelControlBase::FaultyBrush() {
  // One brush for the life of the process; the system frees it with the process.
  static const varion::unique_brush brush(CreateSolidBrush(kFaultyBackground));
  return brush.get();
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
          m_blinkTimer.Kill();
          m_blinkOn = false;
        }
        RedrawWindow(m_hWnd, nullptr, nullptr, RDW_FRAME | RDW_INVALIDATE | RDW_UPDATENOW);
        return 0;
      }
      if (wp == kBalloonTimer) {
        m_balloonTimer.Kill();
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
  RedrawWindow(m_hWnd, nullptr, nullptr, RDW_FRAME | RDW_INVALIDATE | RDW_ERASE);
}

void CVelControlBase::OnIndicate() {
  m_blinkLeft = kBlinkToggles;
  m_blinkOn = false;
  m_blinkTimer.Set(m_hWnd, kBlinkTimer, kBlinkMs);
  ShowErrorBalloon();
}

void CVelControlBase::OnErrorText(const char* title, const char* message, std::uint32_t code) {
  m_title = title ? title : "";
  m_message = message ? message : "";
  m_code = code;
  if (GetFocus() == m_hWnd || IsChild(m_hWnd, GetFocus())) ShowErrorBalloon();
}

void CVelControlBase::ShowErrorBalloon() {
  if (m_message.empty()) return;
  m_balloon.Show(m_hWnd, m_title, m_message, TTI_ERROR);
  m_balloonTimer.Set(m_hWnd, kBalloonTimer, kBalloonMs);
}

void CVelControlBase::DrawFrame() {
  varion::WindowDc dc(m_hWnd, true);
  if (!dc) return;
  RECT r;
  GetWindowRect(m_hWnd, &r);
  OffsetRect(&r, -r.left, -r.top);
  const varion::unique_brush brush(CreateSolidBrush(kFaultyFrame));
  FrameRect(dc.get(), &r, brush.get());
  InflateRect(&r, -1, -1);
  FrameRect(dc.get(), &r, brush.get());
}

// Edits ------------------------------------------------------------------------------------------

CVelEditBase* CVelEditBase::Attach(HWND edit) {
  if (auto* existing = dynamic_cast<CVelEditBase*>(CVelControlBase::FromHandle(edit))) return existing;
  return AttachNew<CVelEditBase>(edit);
}

LRESULT CVelEditBase::WindowProc(UINT msg, WPARAM wp, LPARAM lp) {
  // Typing is the user answering the balloon: it goes, the mark stays until the next check.
  if (msg == WM_CHAR) HideBalloon();
  return CVelControlBase::WindowProc(msg, wp, lp);
}

CVelComboBox* CVelComboBox::Attach(HWND combo) {
  if (auto* existing = dynamic_cast<CVelComboBox*>(CVelControlBase::FromHandle(combo))) return existing;
  return AttachNew<CVelComboBox>(combo);
}

// The analytic-account edit -------------------------------------------------------------------------

CVelAnalitykaEdit* CVelAnalitykaEdit::Attach(HWND edit) {
  if (auto* existing = FromHandle(edit)) return existing;
  return AttachNew<CVelAnalitykaEdit>(edit);
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
  auto* picker = AttachNew<CVelColorPicker>(window);
  if (picker) InvalidateRect(window, nullptr, TRUE);
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
      {
        varion::PaintDc dc(GetHwnd());
        Paint(dc.get());
      }
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
  const varion::unique_brush swatch(CreateSolidBrush(m_mode == kChosen ? m_color : m_automatic));
  FillRect(dc, &r, swatch.get());
  if (m_mode == kAutomatic) {
    // The automatic colour says so, in white or black, whichever reads on it.
    const COLORREF c = m_automatic;
    const int luma = (GetRValue(c) * 299 + GetGValue(c) * 587 + GetBValue(c) * 114) / 1000;
    SetTextColor(dc, luma < 128 ? RGB(255, 255, 255) : RGB(0, 0, 0));
    SetBkMode(dc, TRANSPARENT);
    const varion::SelectedObject font(dc, reinterpret_cast<HFONT>(SendMessageW(GetParent(GetHwnd()), WM_GETFONT, 0, 0)));
    DrawTextW(dc, L"Automatyczny", -1, &r, DT_CENTER | DT_VCENTER | DT_SINGLELINE | DT_END_ELLIPSIS);
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
