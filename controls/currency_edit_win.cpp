#include "controls/currency_edit_win.h"

#include <commctrl.h>
#include <windowsx.h>

#include <algorithm>
#include <atomic>
#include <cstring>

#include "base/library_module_win.h"
#include "base/text.h"
#include "controls/balloon_tip_win.h"
#include "controls/clipboard_win.h"
#include "controls/private_messages.h"

namespace varion {
namespace {

constexpr UINT kRefusedBeep = MB_ICONEXCLAMATION;  // 0x30
constexpr UINT_PTR kHoverTimer = 1;
constexpr UINT kHoverMs = 10;
constexpr UINT kCopiedTipMs = 3000;
// The button width: the system's scroll-bar thumb width (metric 10).
constexpr int kButtonWidthMetric = SM_CXHTHUMB;
constexpr COLORREF kBitmapTransparent = RGB(255, 0, 255);
constexpr UINT_PTR kCalcTool = 1, kCopyTool = 2;
constexpr DWORD kFrameChanged = SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE | SWP_FRAMECHANGED;

HBITMAP LoadButtonBitmap(const wchar_t* name, SIZE& size) {
  HMODULE module = nullptr;
  if (!FindLibraryResource(name, MAKEINTRESOURCEW(2) /* RT_BITMAP */, &module)) return nullptr;
  auto* bitmap = static_cast<HBITMAP>(LoadImageW(module, name, IMAGE_BITMAP, 0, 0, LR_DEFAULTCOLOR));
  BITMAP info{};
  if (bitmap && GetObjectW(bitmap, sizeof info, &info)) size = {info.bmWidth, info.bmHeight};
  return bitmap;
}

std::atomic<CurrencyBeepHook> g_beepHook{nullptr};

void Beep() {
  if (CurrencyBeepHook hook = g_beepHook.load(std::memory_order_relaxed))
    hook(kRefusedBeep);
  else
    MessageBeep(kRefusedBeep);
}

// A typed character as the code page 1250 byte the model reads; 0 for one that has none.
char TypedChar(WPARAM ch) {
  if (ch < 0x80) return static_cast<char>(ch);
  const std::string narrow = text::WideToCp1250(std::wstring(1, static_cast<wchar_t>(ch)));
  return narrow.size() == 1 ? narrow[0] : '\0';
}

bool KeyDown(int vk) { return GetKeyState(vk) < 0; }

}  // namespace

CurrencyBeepHook SetCurrencyBeepHook(CurrencyBeepHook hook) { return g_beepHook.exchange(hook); }

}  // namespace varion

using varion::CurrencyEditModel;
using varion::CurrencySelection;

// Attaching ---------------------------------------------------------------------------------------

CVelCurrencyEdit::CVelCurrencyEdit() {
  m_calcBitmap.reset(varion::LoadButtonBitmap(L"IDB_CALC_BTN", m_calcSize));
  SIZE disabled{};
  m_calcBitmapDisabled.reset(varion::LoadButtonBitmap(L"IDB_CALC_BTN_DISABLED", disabled));
  m_copyBitmap.reset(varion::LoadButtonBitmap(L"IDB_BTNCOPY", m_copySize));
}

CVelCurrencyEdit* CVelCurrencyEdit::Attach(HWND edit) {
  if (auto* existing = FromHandle(edit)) return existing;
  auto* field = AttachNew<CVelCurrencyEdit>(edit);
  if (!field) return nullptr;
  SetWindowPos(edit, nullptr, 0, 0, 0, 0, varion::kFrameChanged);  // room for the buttons
  field->Initialize();
  return field;
}

CVelCurrencyEdit* CVelCurrencyEdit::FromHandle(HWND window) {
  return dynamic_cast<CVelCurrencyEdit*>(CVelControlBase::FromHandle(window));
}

BOOL CVelCurrencyEdit::AttachCreating(HWND edit, CREATESTRUCTW* create) {
  if (!create) return Attach(edit) != nullptr;  // called for a window that already exists
  return AttachNew<CVelCurrencyEdit>(edit) != nullptr;
}

CVelCurrencyEnterEdit* CVelCurrencyEnterEdit::Attach(HWND edit) {
  if (auto* existing = dynamic_cast<CVelCurrencyEnterEdit*>(CVelControlBase::FromHandle(edit))) return existing;
  if (CVelControlBase::FromHandle(edit)) return nullptr;  // another kind of field is attached
  auto* field = AttachNew<CVelCurrencyEnterEdit>(edit);
  if (!field) return nullptr;
  SetWindowPos(edit, nullptr, 0, 0, 0, 0, varion::kFrameChanged);
  field->Initialize();
  return field;
}

BOOL CVelCurrencyEnterEdit::AttachCreating(HWND edit, CREATESTRUCTW* create) {
  if (!create) return Attach(edit) != nullptr;
  return AttachNew<CVelCurrencyEnterEdit>(edit) != nullptr;
}

// The edit's own text at attaching becomes the value; text that is no amount gives zero.
void CVelCurrencyEdit::Initialize() {
  m_initialized = true;
  SyncStyle();
  std::wstring current(static_cast<size_t>(Default(WM_GETTEXTLENGTH, 0, 0)) + 1, L'\0');
  current.resize(static_cast<size_t>(
      Default(WM_GETTEXT, current.size(), reinterpret_cast<LPARAM>(current.data()))));
  const std::string text = varion::text::WideToCp1250(current);
  CurrencyEditModel::Result r = m_model.OnSetText(text.c_str());
  if (r.failed) r = m_model.OnSetText("");
  r.modified = false;
  Apply(r, true);
}

// Settings ----------------------------------------------------------------------------------------

void CVelCurrencyEdit::OnSetSettings(const std::string& symbol, unsigned decimals) {
  SyncStyle();
  Apply(m_model.OnSetSettings(symbol, decimals, ReadSelection()));
}

// Messages ----------------------------------------------------------------------------------------

LRESULT CVelCurrencyEdit::WindowProc(UINT msg, WPARAM wp, LPARAM lp) {
  switch (msg) {
    case WM_CREATE: {
      const LRESULT r = CVelEditBase::WindowProc(msg, wp, lp);
      if (r != -1 && !m_initialized) Initialize();
      return r;
    }
    case WM_CHAR:
      HideBalloon();
      // While the calculator is open the keyboard is its own: the field keeps the focus.
      if (IsCalcShown()) return SendMessageW(m_calc->GetHwnd(), msg, wp, lp);
      return OnChar(wp);
    case WM_KEYDOWN:
      if (IsCalcShown() && wp != VK_F4) return SendMessageW(m_calc->GetHwnd(), msg, wp, lp);
      return OnKeyDown(wp, lp);
    case WM_GETDLGCODE:
      // Enter and Esc belong to an open calculator, not to the dialog's buttons.
      return OnGetDlgCode(wp, lp) | (IsCalcShown() ? DLGC_WANTALLKEYS : 0);
    case WM_NOTIFY:
      if (lp && OnCalcNotify(*reinterpret_cast<const NMHDR*>(lp))) return 0;
      break;
    case WM_GETTEXT:
      return OnGetText(wp, lp);
    case WM_GETTEXTLENGTH:
      return static_cast<LRESULT>(varion::text::Cp1250ToWide(m_model.PlainText()).size());
    case WM_SETTEXT:
      return OnSetText(lp);
    case WM_COPY:
      varion::SetClipboardText(m_hWnd, GetCopyText());
      return 0;
    case WM_CUT:
      OnCut();
      return 0;
    case WM_PASTE:
      OnPaste();
      return 0;
    case WM_CLEAR: {
      SyncStyle();
      const CurrencySelection sel = ReadSelection();
      if (!m_model.IsReadOnly() && sel.start != sel.end) Apply(m_model.DigitDelete(false, sel));
      return 0;
    }
    case EM_REPLACESEL:
      OnReplaceSel(lp);
      return 0;
    // The edit's undo buffer holds texts the field never showed: there is nothing to undo.
    case WM_UNDO:
    case EM_UNDO:
    case EM_CANUNDO:
      return FALSE;
    case WM_KILLFOCUS:
      Apply(m_model.OnKillFocus(ReadSelection()));
      if (m_calc && reinterpret_cast<HWND>(wp) != m_calc->GetHwnd()) DropDownCalc(false);
      break;
    case WM_NCCALCSIZE:
      return OnNcCalcSize(wp, lp);
    case WM_NCHITTEST:
      return OnNcHitTest(wp, lp);
    case WM_NCPAINT: {
      const LRESULT r = CVelEditBase::WindowProc(msg, wp, lp);
      DrawButtons();
      return r;
    }
    case WM_NCMOUSEMOVE:
      RelayToTooltip(WM_MOUSEMOVE, lp);
      break;
    case WM_NCLBUTTONDOWN:
    case WM_NCLBUTTONDBLCLK:
      RelayToTooltip(WM_LBUTTONDOWN, lp);
      if (OnNcButtonDown(lp)) return 0;
      break;
    case WM_TIMER:
      if (wp != varion::kHoverTimer) break;
      OnHoverTimer();
      return 0;
    case WM_STYLECHANGED: {
      const LRESULT r = CVelEditBase::WindowProc(msg, wp, lp);
      const auto* change = reinterpret_cast<const STYLESTRUCT*>(lp);
      if (wp == static_cast<WPARAM>(GWL_STYLE) && change) OnStyleChanged(change->styleOld, change->styleNew);
      return r;
    }
    case WM_ENABLE: {
      const LRESULT r = CVelEditBase::WindowProc(msg, wp, lp);
      UpdateTooltips();
      RedrawFrame();
      return r;
    }
  }
  return CVelEditBase::WindowProc(msg, wp, lp);
}

LRESULT CVelCurrencyEdit::OnChar(WPARAM ch) {
  SyncStyle();
  Apply(m_model.OnChar(varion::TypedChar(ch), ReadSelection()));
  return 0;
}

LRESULT CVelCurrencyEdit::OnKeyDown(WPARAM vk, LPARAM flags) {
  SyncStyle();
  const CurrencyEditModel::Result r =
      m_model.OnKeyDown(static_cast<unsigned>(vk), varion::KeyDown(VK_SHIFT), varion::KeyDown(VK_CONTROL), ReadSelection());
  if (!r.handled) return Default(WM_KEYDOWN, vk, flags);
  Apply(r);
  return 0;
}

LRESULT CVelCurrencyEdit::OnGetDlgCode(WPARAM vk, LPARAM msg) { return Default(WM_GETDLGCODE, vk, msg); }

LRESULT CVelCurrencyEdit::OnGetText(WPARAM size, LPARAM buffer) const {
  auto* out = reinterpret_cast<wchar_t*>(buffer);
  if (!out || size == 0) return 0;
  const std::wstring plain = varion::text::Cp1250ToWide(m_model.PlainText());
  const size_t n = std::min(plain.size(), static_cast<size_t>(size) - 1);
  std::copy_n(plain.c_str(), n, out);
  out[n] = L'\0';
  return static_cast<LRESULT>(n);
}

LRESULT CVelCurrencyEdit::OnSetText(LPARAM text) {
  const auto* wide = reinterpret_cast<const wchar_t*>(text);
  const std::string narrow = wide ? varion::text::WideToCp1250(wide) : std::string();
  const CurrencyEditModel::Result r = m_model.OnSetText(wide ? narrow.c_str() : nullptr);
  Apply(r, true);
  return r.failed ? FALSE : TRUE;
}

void CVelCurrencyEdit::OnCut() {
  SyncStyle();
  const CurrencySelection sel = ReadSelection();
  varion::SetClipboardText(m_hWnd, GetCopyText());
  Apply(m_model.Cut(sel, nullptr));
}

void CVelCurrencyEdit::OnPaste() {
  std::string text;
  if (varion::GetClipboardText(m_hWnd, text)) PasteText(text);
}

// A program replacing the selection: the edited text is read as if pasted whole.
void CVelCurrencyEdit::OnReplaceSel(LPARAM text) {
  const auto* wide = reinterpret_cast<const wchar_t*>(text);
  const CurrencySelection sel = ReadSelection();
  std::wstring edited = m_shown;
  const size_t start = std::min(static_cast<size_t>(sel.start), edited.size());
  const size_t end = std::clamp(static_cast<size_t>(sel.end), start, edited.size());
  edited.replace(start, end - start, wide ? wide : L"");
  PasteText(varion::text::WideToCp1250(edited));
}

std::string CVelCurrencyEdit::GetCopyText() { return m_model.GetCopyText(ReadSelection()); }

void CVelCurrencyEdit::PasteText(const std::string& text) {
  SyncStyle();
  Apply(m_model.PasteText(text, ReadSelection()));
}

// Showing what the model says ---------------------------------------------------------------------

void CVelCurrencyEdit::SyncStyle() { m_model.SetStyle(static_cast<std::uint32_t>(GetWindowLongW(m_hWnd, GWL_STYLE))); }

CurrencySelection CVelCurrencyEdit::ReadSelection() {
  DWORD start = 0, end = 0;
  Default(EM_GETSEL, reinterpret_cast<WPARAM>(&start), reinterpret_cast<LPARAM>(&end));
  return {static_cast<int>(start), static_cast<int>(end)};
}

// An edit replaces only the characters that changed, as typing into a plain edit does: the edit's
// own set-text lays the whole line out again, which under Wine costs twice a typed character. A
// replacement the edit does not take whole (a text limit, no room without ES_AUTOHSCROLL) falls
// back to setting the text.
void CVelCurrencyEdit::ShowDisplay(const std::string& display, bool setText) {
  std::wstring wide = varion::text::Cp1250ToWide(display);
  if (wide == m_shown) return;
  if (!setText) {
    const size_t common = std::min(wide.size(), m_shown.size());
    size_t prefix = 0;
    while (prefix < common && wide[prefix] == m_shown[prefix]) ++prefix;
    size_t suffix = 0;
    while (suffix < common - prefix && wide[wide.size() - 1 - suffix] == m_shown[m_shown.size() - 1 - suffix]) ++suffix;
    const std::wstring middle = wide.substr(prefix, wide.size() - prefix - suffix);
    Default(EM_SETSEL, prefix, static_cast<LPARAM>(m_shown.size() - suffix));
    Default(EM_REPLACESEL, FALSE, reinterpret_cast<LPARAM>(middle.c_str()));
    std::wstring now(wide.size() + 2, L'\0');
    now.resize(static_cast<size_t>(Default(WM_GETTEXT, now.size(), reinterpret_cast<LPARAM>(now.data()))));
    if (now == wide) {
      m_shown = std::move(wide);
      return;
    }
  }
  m_shown = std::move(wide);
  Default(WM_SETTEXT, 0, reinterpret_cast<LPARAM>(m_shown.c_str()));
}

void CVelCurrencyEdit::Apply(const CurrencyEditModel::Result& r, bool setText) {
  if (r.beep) varion::Beep();
  // A program's text leaves the field unmodified, as the edit's own set-text does; other changes
  // shown without the user (a negative zero forgotten, new decimals) keep the flag as it was.
  const bool wasModified = !setText && Default(EM_GETMODIFY, 0, 0) != 0;
  ShowDisplay(r.display, setText);
  Default(EM_SETSEL, static_cast<WPARAM>(r.sel.start), r.sel.end);
  if (setText || r.modified || wasModified) Default(EM_SETMODIFY, r.modified || wasModified, 0);
  if (r.frameChanged)
    SetWindowPos(m_hWnd, nullptr, 0, 0, 0, 0,
                 SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE | SWP_FRAMECHANGED);
  switch (r.command) {
    case CurrencyEditModel::Command::Cut:
      PostMessageW(m_hWnd, WM_CUT, 0, 0);
      break;
    case CurrencyEditModel::Command::Copy:
      PostMessageW(m_hWnd, WM_COPY, 0, 0);
      break;
    case CurrencyEditModel::Command::Paste:
      PostMessageW(m_hWnd, WM_PASTE, 0, 0);
      break;
    case CurrencyEditModel::Command::ToggleCalculator:
      DropDownCalc(!IsCalcShown());
      break;
    case CurrencyEditModel::Command::None:
      break;
  }
  if (r.calculatorSettings && m_calc) SendCalcSettings();
}

// The calculator ----------------------------------------------------------------------------------

void CVelCurrencyEdit::SendCalcSettings() {
  SendMessageW(m_calc->GetHwnd(), varion::MsgCalcSettings(), static_cast<WPARAM>(m_model.Decimals()),
               reinterpret_cast<LPARAM>(m_model.Symbol().c_str()));
}

void CVelCurrencyEdit::DropDownCalc(bool show) {
  if (!show) {
    if (m_calc) m_calc->Hide();
    return;
  }
  if (!m_calc) m_calc = varion::CalculatorWindow::Create();
  if (!m_calc) return;
  const HWND calc = m_calc->GetHwnd();
  SendMessageW(calc, WM_SETFONT, static_cast<WPARAM>(SendMessageW(m_hWnd, WM_GETFONT, 0, 0)), FALSE);
  SendMessageW(calc, varion::MsgCalcOwner(), reinterpret_cast<WPARAM>(m_hWnd), 0);
  SendCalcSettings();
  SetWindowTextW(calc, varion::text::Cp1250ToWide(m_model.PlainText()).c_str());
  RECT r;
  GetWindowRect(m_hWnd, &r);
  m_calc->DropDown(r);
}

// The calculator's value becomes the field's as a text set by the user.
bool CVelCurrencyEdit::OnCalcNotify(const NMHDR& header) {
  if (!m_calc || header.hwndFrom != m_calc->GetHwnd()) return false;
  if (header.code != varion::kCalcNotifyValueChange && header.code != varion::kCalcNotifyCloseUp) return false;
  const auto& change = reinterpret_cast<const NMCLCVALUECHANGE&>(header);
  const std::string value(change.value, strnlen(change.value, sizeof change.value));
  SyncStyle();
  CurrencyEditModel::Result r = m_model.OnSetText(value.c_str());
  if (!r.failed) {
    r.modified = r.valueChanged || r.modified;
    Apply(r);
  }
  return true;
}

// The buttons in the frame ------------------------------------------------------------------------

// The calculator button takes the right end of what would be the client area, the copy button
// the width left of it.
LRESULT CVelCurrencyEdit::OnNcCalcSize(WPARAM wp, LPARAM lp) {
  auto* rect = reinterpret_cast<RECT*>(lp);  // also the first rectangle of NCCALCSIZE_PARAMS
  const RECT window = *rect;
  const LRESULT r = CVelEditBase::WindowProc(WM_NCCALCSIZE, wp, lp);
  SyncStyle();
  m_calcRect = m_copyRect = RECT{};
  RECT& client = *rect;
  m_clientOrigin = {client.left - window.left, client.top - window.top};
  if (m_model.HasCalculatorBtn()) {
    const int width = GetSystemMetrics(varion::kButtonWidthMetric);
    auto carve = [&](RECT& button) {
      const int left = std::max(client.left, client.right - width);
      button = {left - window.left, client.top - window.top, client.right - window.left, client.bottom - window.top};
      client.right = left;
    };
    carve(m_calcRect);
    if (m_model.ShowCopyButton()) carve(m_copyRect);
  }
  UpdateTooltips();
  return r;
}

LRESULT CVelCurrencyEdit::OnNcHitTest(WPARAM wp, LPARAM lp) {
  LRESULT hit = CVelEditBase::WindowProc(WM_NCHITTEST, wp, lp);
  const POINT p = ToWindow(lp);
  if (!PtInRect(&m_calcRect, p) && !PtInRect(&m_copyRect, p)) return hit;
  if (hit == HTNOWHERE) hit = HTBORDER;
  SyncStyle();
  if (!m_hot && m_model.IsCtrlEnabled()) {
    m_hot = true;
    if (!m_tooltip) {
      m_tooltip.reset(CreateWindowExW(WS_EX_TOPMOST, TOOLTIPS_CLASSW, nullptr, WS_POPUP | TTS_ALWAYSTIP | TTS_NOPREFIX,
                                      CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, m_hWnd, nullptr,
                                      varion::LibraryModule(), nullptr));
      UpdateTooltips();
    }
    RedrawFrame();
    m_hoverTimer.Set(m_hWnd, varion::kHoverTimer, varion::kHoverMs);
  }
  return hit;
}

// The system tells the frame no leaving, so a timer watches the cursor until it is gone.
void CVelCurrencyEdit::OnHoverTimer() {
  POINT cursor{};
  GetCursorPos(&cursor);
  const POINT p = ToWindow(MAKELPARAM(cursor.x, cursor.y));
  if (PtInRect(&m_calcRect, p) || PtInRect(&m_copyRect, p)) return;
  m_hoverTimer.Kill();
  m_hot = false;
  RedrawFrame();
}

bool CVelCurrencyEdit::OnNcButtonDown(LPARAM screenPoint) {
  const POINT p = ToWindow(screenPoint);
  if (PtInRect(&m_calcRect, p)) {
    ButtonClicked();
    return true;
  }
  if (PtInRect(&m_copyRect, p)) {
    CopyBtnClicked();
    return true;
  }
  return false;
}

void CVelCurrencyEdit::ButtonClicked() {
  if (GetCapture()) return;  // a drag or a menu of someone else's is under way
  if (GetFocus() != m_hWnd) SetFocus(m_hWnd);
  SyncStyle();
  if (!m_model.IsReadOnly()) DropDownCalc(!IsCalcShown());
}

void CVelCurrencyEdit::CopyBtnClicked() {
  if (GetFocus() != m_hWnd) SetFocus(m_hWnd);
  varion::SetClipboardText(m_hWnd, m_model.CopyButtonClicked());
  RECT r;
  GetWindowRect(m_hWnd, &r);
  varion::TipMsgBoxAt(m_hWnd, POINT{r.left, r.bottom}, "", "Skopiowano do schowka.", MB_ICONINFORMATION,
                      varion::kCopiedTipMs);
}

void CVelCurrencyEdit::OnStyleChanged(DWORD oldStyle, DWORD newStyle) {
  const DWORD changed = oldStyle ^ newStyle;
  if (changed & varion::kStyleNoCalculator) {
    SetWindowPos(m_hWnd, nullptr, 0, 0, 0, 0, varion::kFrameChanged);
  } else if (changed & (varion::kStyleReadOnly | varion::kStyleDisabled)) {
    UpdateTooltips();
    RedrawFrame();
  }
}

void CVelCurrencyEdit::DrawButtons() {
  if (IsRectEmpty(&m_calcRect) || !IsWindowVisible(m_hWnd)) return;
  const varion::WindowDc dc(m_hWnd, true);
  if (!dc) return;
  const varion::unique_dc memory(CreateCompatibleDC(dc.get()));
  SyncStyle();
  POINT cursor{};
  GetCursorPos(&cursor);
  const POINT at = ToWindow(MAKELPARAM(cursor.x, cursor.y));
  auto draw = [&](RECT face, HBITMAP bitmap, SIZE size) {
    if (IsRectEmpty(&face)) return;
    FillRect(dc.get(), &face, GetSysColorBrush(COLOR_BTNFACE));
    const bool hot = m_hot && PtInRect(&face, at);
    DrawEdge(dc.get(), &face, hot ? EDGE_RAISED : BDR_RAISEDINNER, BF_RECT);
    if (!bitmap || !memory) return;
    const varion::SelectedObject selected(memory.get(), bitmap);
    const int w = std::min<int>(size.cx, face.right - face.left), h = std::min<int>(size.cy, face.bottom - face.top);
    TransparentBlt(dc.get(), face.left + (face.right - face.left - w) / 2, face.top + (face.bottom - face.top - h) / 2,
                   w, h, memory.get(), 0, 0, w, h, varion::kBitmapTransparent);
  };
  draw(m_calcRect, m_model.IsCtrlEnabled() ? m_calcBitmap.get() : m_calcBitmapDisabled.get(), m_calcSize);
  draw(m_copyRect, m_copyBitmap.get(), m_copySize);
}

void CVelCurrencyEdit::RedrawFrame() {
  if (IsWindowVisible(m_hWnd)) SendMessageW(m_hWnd, WM_NCPAINT, 1, 0);
}

// The calculator's tip only while the field can be edited and its tip is wanted.
void CVelCurrencyEdit::UpdateTooltips() {
  if (!m_tooltip) return;
  SyncStyle();
  for (UINT_PTR id : {varion::kCalcTool, varion::kCopyTool}) {
    TTTOOLINFOW ti{};
    ti.cbSize = TTTOOLINFOW_V2_SIZE;
    ti.hwnd = m_hWnd;
    ti.uId = id;
    SendMessageW(m_tooltip.get(), TTM_DELTOOLW, 0, reinterpret_cast<LPARAM>(&ti));
  }
  auto add = [&](UINT_PTR id, const RECT& button, const char* text) {
    if (IsRectEmpty(&button)) return;
    std::wstring wide = varion::text::Cp1250ToWide(text);
    TTTOOLINFOW ti{};
    ti.cbSize = TTTOOLINFOW_V2_SIZE;
    ti.hwnd = m_hWnd;
    ti.uId = id;
    ti.rect = button;  // client coordinates, beyond the client area's right edge
    OffsetRect(&ti.rect, -m_clientOrigin.x, -m_clientOrigin.y);
    ti.lpszText = wide.data();
    SendMessageW(m_tooltip.get(), TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&ti));
  };
  if (m_model.IsCtrlEnabled() && !m_model.NoCalculatorTooltip()) add(varion::kCalcTool, m_calcRect, "Pokaż kalkulator");
  add(varion::kCopyTool, m_copyRect, "Kopiuj");
}

// The tooltip watches client messages only: the frame's mouse messages are passed to it in client
// coordinates, which lie right of the client area over the buttons.
void CVelCurrencyEdit::RelayToTooltip(UINT mouseMsg, LPARAM screenPoint) {
  if (!m_tooltip) return;
  POINT p{GET_X_LPARAM(screenPoint), GET_Y_LPARAM(screenPoint)};
  ScreenToClient(m_hWnd, &p);
  MSG msg{m_hWnd, mouseMsg, 0, MAKELPARAM(p.x, p.y), static_cast<DWORD>(GetMessageTime()), {}};
  SendMessageW(m_tooltip.get(), TTM_RELAYEVENT, 0, reinterpret_cast<LPARAM>(&msg));
}

POINT CVelCurrencyEdit::ToWindow(LPARAM screenPoint) const {
  RECT r;
  GetWindowRect(m_hWnd, &r);
  return {GET_X_LPARAM(screenPoint) - r.left, GET_Y_LPARAM(screenPoint) - r.top};
}

// The Enter variant -------------------------------------------------------------------------------

LRESULT CVelCurrencyEnterEdit::OnKeyDown(WPARAM vk, LPARAM flags) {
  if (vk != VK_RETURN) return CVelCurrencyEdit::OnKeyDown(vk, flags);
  SendMessageW(GetParent(m_hWnd), varion::kMsgCurrencyEnter, static_cast<WPARAM>(GetDlgCtrlID(m_hWnd)), 0);
  return 0;
}

// Enter must reach the field rather than press the dialog's default button.
LRESULT CVelCurrencyEnterEdit::OnGetDlgCode(WPARAM vk, LPARAM msg) {
  LRESULT code = CVelCurrencyEdit::OnGetDlgCode(vk, msg);
  const auto* m = reinterpret_cast<const MSG*>(msg);
  if (m && m->message == WM_KEYDOWN && m->wParam == VK_RETURN) code |= DLGC_WANTALLKEYS;
  return code;
}
