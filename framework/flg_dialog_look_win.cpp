// CFlgDialog: help, fonts and colours of controls, accelerators, and the sphere menu button
// drawn in the caption.
#include <windows.h>
#include <commctrl.h>

#include <algorithm>
#include <map>
#include <memory>
#include <type_traits>
#include <vector>

#include "base/text.h"
#include "framework/flg_dialog_gdi_win.h"
#include "framework/flg_dialog_win.h"
#include "base/library_module_win.h"
#include "controls/vel_controls_win.h"

namespace {

HFONT FontOf(HWND h) { return reinterpret_cast<HFONT>(SendMessageW(h, WM_GETFONT, 0, 0)); }

}  // namespace

void CFlgDialog::ShowHelp() { m_help.Show(m_hWnd, GetCaption()); }

// Fonts and colours ----------------------------------------------------------------------------------------

void CFlgDialog::SetFont(UINT ctrlId, int pointSize, bool bold, const char* face) {
  HWND control = GetDlgItem(m_hWnd, static_cast<int>(ctrlId));
  if (!control) return;
  LOGFONTW lf{};
  HFONT base = FontOf(control) ? FontOf(control) : FontOf(m_hWnd);
  if (!base || !GetObjectW(base, sizeof lf, &lf)) GetObjectW(GetStockObject(DEFAULT_GUI_FONT), sizeof lf, &lf);
  if (pointSize > 0) lf.lfHeight = -MulDiv(pointSize, GetDeviceCaps(varion::WindowDc(m_hWnd).get(), LOGPIXELSY), 72);
  lf.lfWeight = bold ? FW_BOLD : FW_NORMAL;
  if (face && *face) {
    const std::wstring w = varion::text::Cp1250ToWide(face);
    wcsncpy(lf.lfFaceName, w.c_str(), LF_FACESIZE - 1);
    lf.lfFaceName[LF_FACESIZE - 1] = L'\0';
  }
  varion::unique_font font(CreateFontIndirectW(&lf));
  if (!font) return;
  if (!m_gdi) m_gdi = std::make_unique<Gdi>();
  SendMessageW(control, WM_SETFONT, reinterpret_cast<WPARAM>(font.get()), TRUE);
  // The control uses the new font now; the one made for it before can go.
  m_gdi->fonts[ctrlId] = std::move(font);
}

void CFlgDialog::SetBold(UINT ctrlId) { SetFont(ctrlId, 0, true); }

void CFlgDialog::SetBoldForPrevious(UINT ctrlId) {
  HWND control = GetDlgItem(m_hWnd, static_cast<int>(ctrlId));
  HWND previous = control ? GetWindow(control, GW_HWNDPREV) : nullptr;
  if (previous) SetBold(static_cast<UINT>(GetDlgCtrlID(previous)));
}

void CFlgDialog::SetNormalFont(UINT ctrlId) {
  if (HWND control = GetDlgItem(m_hWnd, static_cast<int>(ctrlId)))
    SendMessageW(control, WM_SETFONT, reinterpret_cast<WPARAM>(FontOf(m_hWnd)), TRUE);
  if (m_gdi) m_gdi->fonts.erase(ctrlId);
}

void CFlgDialog::SetBkgndColor(UINT ctrlId, COLORREF color) {
  if (!m_gdi) m_gdi = std::make_unique<Gdi>();
  m_ctrlColors[ctrlId] = color;
  m_gdi->brushes[ctrlId].reset(CreateSolidBrush(color));
  if (HWND control = GetDlgItem(m_hWnd, static_cast<int>(ctrlId))) InvalidateRect(control, nullptr, TRUE);
}

void CFlgDialog::SetColorWindowBkgnd(bool on) {
  m_windowBkgnd = on;
  if (IsWindow(m_hWnd)) InvalidateRect(m_hWnd, nullptr, TRUE);
}

INT_PTR CFlgDialog::OnCtlColor(UINT msg, HDC dc, HWND control) {
  // A faulty control, or the edit inside a faulty combo.
  CVelControlBase* object = CVelControlBase::FromHandle(control);
  if (!object && control && GetParent(control) != m_hWnd) object = CVelControlBase::FromHandle(GetParent(control));
  if (object && object->IsFaulty() &&
      (msg == WM_CTLCOLOREDIT || msg == WM_CTLCOLORSTATIC || msg == WM_CTLCOLORLISTBOX)) {
    SetBkColor(dc, CVelControlBase::kFaultyBackground);
    return reinterpret_cast<INT_PTR>(CVelControlBase::FaultyBrush());
  }
  const UINT id = static_cast<UINT>(GetDlgCtrlID(control));
  if (auto it = m_ctrlColors.find(id); msg != WM_CTLCOLORDLG && it != m_ctrlColors.end() && m_gdi) {
    SetBkColor(dc, it->second);
    return reinterpret_cast<INT_PTR>(m_gdi->brushes[id].get());
  }
  if (m_windowBkgnd && (msg == WM_CTLCOLORDLG || msg == WM_CTLCOLORSTATIC || msg == WM_CTLCOLORBTN)) {
    SetBkColor(dc, GetSysColor(COLOR_WINDOW));
    return reinterpret_cast<INT_PTR>(GetSysColorBrush(COLOR_WINDOW));
  }
  return FALSE;
}

// Accelerators ----------------------------------------------------------------------------------------------

bool CFlgDialog::LoadAcceleratorsTable(UINT resourceId) {
  DestroyAcceleratorTableIfExists();
  HMODULE module = nullptr;
  if (!varion::FindLibraryResource(MAKEINTRESOURCEW(resourceId), reinterpret_cast<LPCWSTR>(RT_ACCELERATOR), &module))
    return false;
  // Tables loaded from resources belong to their module and are never destroyed by hand.
  m_accel.Borrow(LoadAcceleratorsW(module, MAKEINTRESOURCEW(resourceId)));
  return m_accel.get() != nullptr;
}

bool CFlgDialog::LoadOwnedAcceleratorsTable(const ACCEL* entries, int count) {
  DestroyAcceleratorTableIfExists();
  if (!entries || count <= 0) return false;
  m_accel.Own(CreateAcceleratorTableW(const_cast<ACCEL*>(entries), count));
  return m_accel.get() != nullptr;
}

void CFlgDialog::LoadExternalAcceleratorsTable(HACCEL table) {
  m_accel.Borrow(table);
}

void CFlgDialog::DestroyAcceleratorTableIfExists() { m_accel.Reset(); }

// The sphere menu button ------------------------------------------------------------------------------------------

void CFlgDialog::SetupSphereMenu() {
  // The button is drawn over the caption by us, which desktop composition would not show.
  if (const varion::unique_module dwm{LoadLibraryW(L"dwmapi.dll")}) {
    using SetAttribute = HRESULT(WINAPI*)(HWND, DWORD, LPCVOID, DWORD);
    if (auto set = reinterpret_cast<SetAttribute>(
            reinterpret_cast<void*>(GetProcAddress(dwm.get(), "DwmSetWindowAttribute")))) {
      const int disabled = 1;  // DWMNCRP_DISABLED for DWMWA_NCRENDERING_POLICY (2)
      set(m_hWnd, 2, &disabled, sizeof disabled);
    }
  }
  // A blank small icon keeps the caption text clear of the button.
  if (!m_gdi) m_gdi = std::make_unique<Gdi>();
  const int cx = GetSystemMetrics(SM_CXSMICON), cy = GetSystemMetrics(SM_CYSMICON);
  std::vector<BYTE> andMask(static_cast<size_t>((cx + 15) / 16 * 2 * cy), 0xFF), xorMask(andMask.size(), 0);
  m_gdi->blankIcon.reset(CreateIcon(varion::LibraryModule(), cx, cy, 1, 1, andMask.data(), xorMask.data()));
  SetWindowLongW(m_hWnd, GWL_EXSTYLE, GetWindowLongW(m_hWnd, GWL_EXSTYLE) & ~WS_EX_DLGMODALFRAME);
  SetWindowLongW(m_hWnd, GWL_STYLE, GetWindowLongW(m_hWnd, GWL_STYLE) | WS_SYSMENU);
  SendMessageW(m_hWnd, WM_SETICON, ICON_SMALL, reinterpret_cast<LPARAM>(m_gdi->blankIcon.get()));
  SetWindowPos(m_hWnd, nullptr, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE | SWP_FRAMECHANGED);
}

RECT CFlgDialog::GetSphereRect() const {
  RECT empty{0, 0, 0, 0};
  if (!m_sphereMenu || !IsWindow(m_hWnd) || !(GetWindowLongW(m_hWnd, GWL_STYLE) & WS_CAPTION)) return empty;
  RECT w, c;
  GetWindowRect(m_hWnd, &w);
  GetClientRect(m_hWnd, &c);
  POINT clientTop{0, 0};
  ClientToScreen(m_hWnd, &clientTop);
  const int border = clientTop.x - w.left;
  const int captionTop = w.top + border, captionBottom = clientTop.y;
  const int d = std::max(0, captionBottom - captionTop - 4);
  const int top = captionTop + (captionBottom - captionTop - d) / 2;
  return {w.left + border + 2, top, w.left + border + 2 + d, top + d};
}

void CFlgDialog::DrawSphere() {
  RECT s = GetSphereRect();
  if (IsRectEmpty(&s)) return;
  RECT w;
  GetWindowRect(m_hWnd, &w);
  OffsetRect(&s, -w.left, -w.top);
  const varion::WindowDc windowDc(m_hWnd, true);
  HDC dc = windowDc.get();
  if (!dc) return;
  const varion::SelectedObject pen(dc, GetStockObject(NULL_PEN));
  // A lit sphere: discs from the rim inwards, growing lighter and drifting towards the light at
  // the top left.
  constexpr int kSteps = 10;
  const int d = s.right - s.left;
  for (int i = 0; i < kSteps; ++i) {
    const double t = static_cast<double>(i) / kSteps;
    const int inset = static_cast<int>(t * d * 0.42);
    const int shift = static_cast<int>(t * d * 0.18);
    const varion::unique_brush b(CreateSolidBrush(
        RGB(static_cast<int>(20 + t * 170), static_cast<int>(70 + t * 150), static_cast<int>(150 + t * 100))));
    const varion::SelectedObject selected(dc, b.get());
    Ellipse(dc, s.left + inset - shift, s.top + inset - shift, s.right - inset - shift + 1,
            s.bottom - inset - shift + 1);
  }
}

LRESULT CFlgDialog::WindowProc(UINT msg, WPARAM wp, LPARAM lp) {
  if (!m_sphereMenu) return Default(msg, wp, lp);
  switch (msg) {
    case WM_NCPAINT:
    case WM_NCACTIVATE:
    case WM_SETTEXT:
    case WM_SETICON: {
      const LRESULT r = Default(msg, wp, lp);
      DrawSphere();
      return r;
    }
    case WM_NCHITTEST: {
      const RECT s = GetSphereRect();
      const POINT p{static_cast<short>(LOWORD(lp)), static_cast<short>(HIWORD(lp))};
      if (PtInRect(&s, p)) return HTSYSMENU;
      break;
    }
    case WM_NCLBUTTONDOWN:
    case WM_NCLBUTTONDBLCLK: {
      const RECT s = GetSphereRect();
      const POINT p{static_cast<short>(LOWORD(lp)), static_cast<short>(HIWORD(lp))};
      if (PtInRect(&s, p)) {
        if (msg == WM_NCLBUTTONDOWN) OnSphereMenu();
        return 0;
      }
      break;
    }
  }
  return Default(msg, wp, lp);
}
