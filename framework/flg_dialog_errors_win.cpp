// CFlgDialog: showing errors on controls and in the errors window, grid messages and info tips.
#include <functional>

#include "base/text.h"
#include "controls/balloon_tip_win.h"
#include "framework/exchange_rules.h"
#include "framework/flg_dialog_win.h"
#include "diagnostics/message_box_seam_win.h"
#include "controls/private_messages.h"

namespace {

void ForEachDescendant(HWND parent, const std::function<void(HWND)>& fn) {
  for (HWND h = GetWindow(parent, GW_CHILD); h; h = GetWindow(h, GW_HWNDNEXT)) {
    fn(h);
    ForEachDescendant(h, fn);
  }
}

// A balloon draws its icon only beside a title, so a grid message's tip is titled by its kind.
const char* TitleOfIcon(unsigned icon) {
  switch (icon) {
    case ValidatableGrid::kIconError:
      return "Błąd";
    case ValidatableGrid::kIconWarning:
      return "Ostrzeżenie";
    case ValidatableGrid::kIconQuestion:
      return "Pytanie";
    default:
      return "Informacja";
  }
}

UINT StyleOfIcon(unsigned icon) {
  switch (icon) {
    case ValidatableGrid::kIconError:
      return MB_ICONERROR;
    case ValidatableGrid::kIconWarning:
      return MB_ICONWARNING;
    case ValidatableGrid::kIconQuestion:
      return MB_ICONQUESTION;
    default:
      return MB_ICONINFORMATION;
  }
}

}  // namespace

CFlgDialog* CFlgDialog::FindNestedPage(const std::string& templateName) const {
  CFlgDialog* found = nullptr;
  if (!IsWindow(m_hWnd)) return nullptr;
  ForEachDescendant(m_hWnd, [&](HWND h) {
    CFlgDialog* page = FromHandle(h);
    if (!found && page && page != this && page->GetTemplateName() == templateName) found = page;
  });
  return found;
}

HWND CFlgDialog::FindErrorControl(const char* source, HWND window, UINT ctrlId) const {
  FLG_OBJECT_ERROR_INFO probe;
  probe.source = source;
  HWND container = m_hWnd;
  if (!varion::IsOwnSource(probe, m_templateName)) {
    if (CFlgDialog* page = FindNestedPage(probe.Source()))
      container = page->GetHWND();
    else if (IsWindow(window))
      container = window;
  }
  return GetDlgItem(container, static_cast<int>(ctrlId));
}

void CFlgDialog::ShowErrors() {
  RemoveErrors();
  if (!HasErrors()) return;
  for (const auto& record : *m_errors) SendErrorMsgToCtrl(record);
  const FLG_OBJECT_ERROR_INFO& first = m_errors->GetAt(0);
  IndicateErrorControl(first.source, first.dialog, first.ctrlId);
}

void CFlgDialog::RemoveErrors() {
  if (!IsWindow(m_hWnd)) return;
  const UINT clear = varion::MsgMarkFaulty();
  ForEachDescendant(m_hWnd, [clear](HWND h) { SendMessageW(h, clear, 0, 0); });
}

void CFlgDialog::RemoveError(UINT ctrlId) {
  if (m_errors) {
    if (auto record = CFlgDataExchange(*this, false).GetError(ctrlId)) {
      if (HWND h = FindErrorControl(record->source, record->dialog, ctrlId))
        SendMessageW(h, varion::MsgMarkFaulty(), 0, 0);
      CFlgDataExchange(*this, false).RemoveError(ctrlId);
      return;
    }
  }
  if (HWND h = GetDlgItem(m_hWnd, static_cast<int>(ctrlId))) SendMessageW(h, varion::MsgMarkFaulty(), 0, 0);
}

void CFlgDialog::SendErrorMsgToCtrl(const FLG_OBJECT_ERROR_INFO& error) {
  if (varion::IsDialogLevelError(error, m_templateName)) {
    varion::FrameworkMessageBox(m_hWnd, error.message, error.secondText, MB_OK | MB_ICONERROR);
    return;
  }
  HWND control = FindErrorControl(error.source, error.dialog, error.ctrlId);
  if (!control) return;
  SendMessageW(control, varion::MsgMarkFaulty(), 1, 0);
  const varion::ErrorTextTriple triple{error.secondText.c_str(), error.message.c_str(), error.code};
  SendMessageW(control, varion::MsgErrorText(), 0, reinterpret_cast<LPARAM>(&triple));
}

void CFlgDialog::IndicateErrorControl(const char* source, HWND window, UINT ctrlId) {
  HWND control = FindErrorControl(source, window, ctrlId);
  if (!control) return;
  HWND focus = GetFocus();
  const bool focused = focus == control || IsChild(control, focus);
  if (IsWindowEnabled(control) && !focused) {
    // Through the dialog manager, so the default button and an edit's selection follow.
    HWND dialog = GetParent(control);
    SendMessageW(dialog ? dialog : m_hWnd, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(control), TRUE);
    if (GetFocus() != control && !IsChild(control, GetFocus())) SetFocus(control);
  } else {
    SendMessageW(control, varion::MsgIndicate(), 1, 0);
  }
}

// The errors window -----------------------------------------------------------------------------------------

void CFlgDialog::EnableErrorsWnd(bool enable) {
  m_errorsWndEnabled = enable;
  if (enable && IsWindow(m_hWnd) && !m_errorsWnd.Exists()) {
    m_errorsWnd.Create(m_hWnd);
    m_errorsWnd.onChoose = [this](int index) {
      if (m_errors && index >= 0 && static_cast<std::size_t>(index) < m_errors->GetCount()) {
        const FLG_OBJECT_ERROR_INFO& r = m_errors->GetAt(static_cast<std::size_t>(index));
        IndicateErrorControl(r.source, r.dialog, r.ctrlId);
      }
    };
    m_errorsWnd.onMoved = [this] {
      POINT cursor;
      GetCursorPos(&cursor);
      OnDockErrorsWnd(GetErrorsWndDockEdge(cursor));
    };
  }
  if (!enable && m_errorsWnd.Exists()) ShowWindow(m_errorsWnd.GetHwnd(), SW_HIDE);
}

void CFlgDialog::AddErrorsToToolWnd() {
  if (!m_errorsWnd.Exists() || !m_errorsWndEnabled) return;
  std::vector<std::string> lines;
  if (m_errors)
    for (const auto& r : *m_errors) lines.push_back(varion::ErrorListLine(r.message));
  m_errorsWnd.SetLines(lines);
  // On first appearance the window docks below the dialog.
  if (m_dockEdge == varion::DockEdge::None && !IsWindowVisible(m_errorsWnd.GetHwnd()))
    OnDockErrorsWnd({varion::DockEdge::Bottom, {}});
  ShowWindow(m_errorsWnd.GetHwnd(), SW_SHOWNOACTIVATE);
}

varion::DockResult CFlgDialog::GetErrorsWndDockEdge(POINT cursor) const {
  RECT d{}, e{};
  GetWindowRect(m_hWnd, &d);
  if (m_errorsWnd.Exists()) GetWindowRect(m_errorsWnd.GetHwnd(), &e);
  return varion::GetErrorsWndDockEdge({d.left, d.top, d.right, d.bottom}, e.right - e.left, e.bottom - e.top,
                                      {cursor.x, cursor.y});
}

void CFlgDialog::OnDockErrorsWnd(const varion::DockResult& dock) {
  m_dockEdge = dock.edge;
  if (dock.edge == varion::DockEdge::None || !m_errorsWnd.Exists()) return;
  // The corner follows from the edge and the dialog as it is now (the dialog may have moved
  // since the cursor was tested).
  RECT d, e;
  GetWindowRect(m_hWnd, &d);
  GetWindowRect(m_errorsWnd.GetHwnd(), &e);
  POINT cursor{};
  switch (dock.edge) {
    case varion::DockEdge::Bottom:
      cursor = {(d.left + d.right) / 2, d.bottom};
      break;
    case varion::DockEdge::Left:
      cursor = {d.left, (d.top + d.bottom) / 2};
      break;
    case varion::DockEdge::Top:
      cursor = {(d.left + d.right) / 2, d.top};
      break;
    case varion::DockEdge::Right:
      cursor = {d.right, (d.top + d.bottom) / 2};
      break;
    case varion::DockEdge::None:
      break;
  }
  const varion::DockResult placed = GetErrorsWndDockEdge(cursor);
  SetWindowPos(m_errorsWnd.GetHwnd(), nullptr, placed.topLeft.x, placed.topLeft.y, 0, 0,
               SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOSIZE);
}

// Grid messages and info tips ----------------------------------------------------------------------------------

void CFlgDialog::AddMessageFromGrid(UINT ctrlId, const ValidatableGrid::MessageData& message) {
  const auto recordText = m_gridMessages.Add(ctrlId, message);
  if (!recordText) return;
  CFlgDataExchange dx(*this, false);
  dx.RemoveError(ctrlId);
  dx.AddError(ctrlId, recordText->c_str());
}

void CFlgDialog::RemoveMessagesFromGrid(UINT ctrlId) { m_gridMessages.Remove(ctrlId); }

std::vector<varion::GridMessageCounts::Entry> CFlgDialog::GetWarningsFromGrid() const {
  return m_gridMessages.Warnings();
}

void CFlgDialog::ShowControlsMessages() {
  for (const auto& e : m_gridMessages.Distinct()) {
    if (e.data.templateId != m_templateId) continue;
    const std::string text =
        e.count >= 2 && !e.data.countedText.empty() ? varion::CountedText(e.data.countedText, e.count) : e.data.text;
    // The message's type supplies the tip's style bits; its icon decides the icon bits.
    const UINT style = (static_cast<UINT>(e.data.type) & ~static_cast<UINT>(MB_ICONMASK)) | StyleOfIcon(e.data.icon);
    ShowInfoTip(e.ctrlId, e.data.templateId, TitleOfIcon(e.data.icon), text, style);
  }
}

void CFlgDialog::ShowInfoTip(UINT ctrlId, UINT templateId, const std::string& title, const std::string& text,
                             UINT style) {
  if (templateId != m_templateId || !IsWindow(m_hWnd)) return;
  if (HWND control = GetDlgItem(m_hWnd, static_cast<int>(ctrlId))) varion::TipMsgBox(control, title, text, style);
}

void CFlgDialog::ShowInitialInfoTip() {
  if (!m_initialTipCtrl) return;
  const std::string text = GetInfoText();
  if (!text.empty()) ShowInfoTip(m_initialTipCtrl, m_templateId, GetInfoTitle(), text, GetInfoType());
}
