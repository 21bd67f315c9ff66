// CFlgDialog: creation, the window procedure, the modal loop, and the load, apply, OK and cancel
// cycle with the modified and read-only states.
#include "framework/flg_dialog_win.h"

#include <commctrl.h>

#include <algorithm>
#include <cstring>
#include <utility>

#include "base/status.h"
#include "base/text.h"
#include "db/rt_instance.h"
#include "framework/exchange_rules.h"
#include "diagnostics/failure_boundary_win.h"
#include "diagnostics/framework_log.h"
#include "framework/flg_dialog_gdi_win.h"
#include "framework/hook_supp_win.h"
#include "base/library_module_win.h"
#include "diagnostics/message_box_seam_win.h"
#include "controls/private_messages.h"
#include "controls/vel_controls_win.h"

namespace {

std::string ClassNameOf(HWND h) {
  wchar_t buf[257];
  const int n = GetClassNameW(h, buf, static_cast<int>(std::size(buf)));
  return varion::text::WideToCp1250(std::wstring_view(buf, n > 0 ? static_cast<size_t>(n) : 0));
}

// Window classes that take EM_SETREADONLY instead of being disabled: the system edit, the
// library's edit kinds and their copies.
bool IsEditClass(const std::string& cls) {
  if (_stricmp(cls.c_str(), "Edit") == 0 || _stricmp(cls.c_str(), "VXAX_Edit") == 0 ||
      _strnicmp(cls.c_str(), "RichEdit", 8) == 0)
    return true;
  std::size_t count = 0;
  const varion::VelClassEntry* table = varion::VelClassTable(&count);
  for (std::size_t i = 0; i < count; ++i)
    if (table[i].baseClass && _stricmp(table[i].baseClass, "Edit") == 0 && _stricmp(table[i].name, cls.c_str()) == 0)
      return true;
  return false;
}

std::string CaptionWithoutAccelerator(HWND h) {
  std::wstring w(static_cast<size_t>(GetWindowTextLengthW(h)) + 1, L'\0');
  GetWindowTextW(h, w.data(), static_cast<int>(w.size()));
  w.resize(wcslen(w.c_str()));
  std::erase(w, L'&');
  return varion::text::WideToCp1250(w);
}

// Makes a popup template into a page template: a child control parent without a frame.
void MakeChildTemplate(std::vector<BYTE>& t) {
  if (t.size() < 16) return;
  DWORD* style;
  DWORD* exStyle;
  const bool extended =
      reinterpret_cast<const WORD*>(t.data())[0] == 1 && reinterpret_cast<const WORD*>(t.data())[1] == 0xFFFF;
  if (extended) {
    exStyle = reinterpret_cast<DWORD*>(t.data() + 8);
    style = reinterpret_cast<DWORD*>(t.data() + 12);
  } else {
    style = reinterpret_cast<DWORD*>(t.data());
    exStyle = reinterpret_cast<DWORD*>(t.data() + 4);
  }
  *style &= ~static_cast<DWORD>(WS_POPUP | WS_CAPTION | WS_THICKFRAME | WS_SYSMENU | DS_MODALFRAME | WS_MINIMIZEBOX |
                                WS_MAXIMIZEBOX | WS_VISIBLE | WS_DISABLED);
  *style |= WS_CHILD | DS_CONTROL;
  *exStyle |= WS_EX_CONTROLPARENT;
  *exStyle &= ~static_cast<DWORD>(WS_EX_DLGMODALFRAME | WS_EX_WINDOWEDGE);
}

}  // namespace

CFlgDialog::CFlgDialog(UINT templateId, HWND parent)
    : m_templateName("#" + std::to_string(templateId)), m_templateId(templateId), m_parent(parent) {}

CFlgDialog::CFlgDialog(const char* templateName, HWND parent)
    : m_templateName(templateName ? templateName : ""), m_parent(parent) {}

CFlgDialog::~CFlgDialog() {
  // Destroyed here, while the object is whole, so that WM_DESTROY still saves the placement.
  if (IsWindow(m_hWnd)) {
    m_modal = false;
    DestroyWindow(m_hWnd);
  }
}

CFlgDialog* CFlgDialog::FromHandle(HWND window) { return FromHandleAs<CFlgDialog>(window); }

CFlgDataExchange::CFlgDataExchange(CFlgDialog& dialog, bool flag)
    : CFlgDataExchange(dialog.GetErrorsArray(), dialog.m_hWnd, dialog.GetTemplateName().c_str(), flag) {}

CFlgDataExchange::CFlgDataExchange(const CFlgDialog& dialog, bool flag)
    : CFlgDataExchange(dialog.GetErrorsArray(), dialog.m_hWnd, dialog.GetTemplateName().c_str(), flag) {}

// Creation ---------------------------------------------------------------------------------------------

bool CFlgDialog::CreateFromTemplate(HWND parent, bool asChild) {
  if (IsWindow(m_hWnd)) return false;
  const std::wstring wideName = varion::text::Cp1250ToWide(m_templateName);
  LPCWSTR name = m_templateId ? MAKEINTRESOURCEW(m_templateId) : wideName.c_str();
  HMODULE module = nullptr;
  HRSRC res = varion::FindLibraryResource(name, reinterpret_cast<LPCWSTR>(RT_DIALOG), &module);
  if (!res) return false;
  HGLOBAL loaded = LoadResource(module, res);
  const void* bytes = loaded ? LockResource(loaded) : nullptr;
  if (!bytes) return false;
  std::vector<BYTE> copy(static_cast<const BYTE*>(bytes),
                         static_cast<const BYTE*>(bytes) + SizeofResource(module, res));
  if (asChild) MakeChildTemplate(copy);
  // Every window of the template is created on this thread: make sure the library's controls
  // get their objects even when the host has not installed the hook here.
  CHookSupp::InstallUIHook();
  return CreateDialogOf(module, reinterpret_cast<LPCDLGTEMPLATEW>(copy.data()), parent) != nullptr;
}

bool CFlgDialog::Create(HWND parent) {
  m_modal = false;
  m_isPage = false;
  if (!CreateFromTemplate(parent, false)) return false;
  ShowWindow(m_hWnd, m_flex.ShouldShowMaximized() ? SW_SHOWMAXIMIZED : SW_SHOW);
  return true;
}

bool CFlgDialog::CreateOnDialogItem(HWND parentDialog, UINT ctrlId) {
  HWND placeholder = GetDlgItem(parentDialog, static_cast<int>(ctrlId));
  if (!placeholder) return false;
  RECT r;
  GetWindowRect(placeholder, &r);
  MapWindowPoints(nullptr, parentDialog, reinterpret_cast<POINT*>(&r), 2);
  m_modal = false;
  m_isPage = true;
  if (!CreateFromTemplate(parentDialog, true)) return false;
  SetWindowLongPtrW(m_hWnd, GWLP_ID, static_cast<LONG_PTR>(ctrlId));
  // After the placeholder in the z-order, so the tab order runs through the page where the
  // placeholder stood.
  SetWindowPos(m_hWnd, placeholder, r.left, r.top, r.right - r.left, r.bottom - r.top, SWP_NOACTIVATE | SWP_SHOWWINDOW);
  DestroyWindow(placeholder);
  return true;
}

INT_PTR CFlgDialog::DoModal() { return RunModal(false); }

INT_PTR CFlgDialog::DoModalContinue() { return RunModal(true); }

INT_PTR CFlgDialog::RunModal(bool continueLoop) {
  HWND owner = m_parent ? GetAncestor(m_parent, GA_ROOT) : nullptr;
  m_modal = true;
  m_modalEnded = false;
  m_isPage = false;
  m_result = -1;
  if (!CreateFromTemplate(owner, false)) {
    m_modal = false;
    return -1;
  }
  // Whatever happens below, the owner is enabled again and the dialog goes: a host whose owner
  // stayed disabled would look hung.
  struct ModalScope {
    CFlgDialog& dialog;
    HWND owner;
    bool ownerWasEnabled;
    ~ModalScope() {
      if (owner && ownerWasEnabled) EnableWindow(owner, TRUE);
      if (IsWindow(dialog.m_hWnd)) {
        // The owner takes the activation back before the dialog disappears, so it never flickers
        // to another application.
        if (owner) SetActiveWindow(owner);
        DestroyWindow(dialog.m_hWnd);
      }
      dialog.m_modal = false;
    }
  } scope{*this, owner, owner && IsWindowEnabled(owner)};
  if (owner) EnableWindow(owner, FALSE);
  if (!m_modalEnded) ShowWindow(m_hWnd, m_flex.ShouldShowMaximized() ? SW_SHOWMAXIMIZED : SW_SHOW);
  for (;;) {
    RunModalLoop();
    if (!continueLoop || m_result != kModalContinue || !IsWindow(m_hWnd)) break;
    m_modalEnded = false;
    // A failing refresh is reported and the dialog stays with what it showed.
    try {
      OnRefreshModalContinueDlg();
      LoadData();
      SetModifiedNoCheck(false);
    } catch (...) {
      ReportCurrentFailure();
    }
  }
  return m_result;
}

void CFlgDialog::RunModalLoop() {
  while (!m_modalEnded && IsWindow(m_hWnd)) {
    MSG msg;
    const BOOL got = GetMessageW(&msg, nullptr, 0, 0);
    if (got == 0) {  // WM_QUIT: give it back to the outer loop and end as cancelled
      PostQuitMessage(static_cast<int>(msg.wParam));
      m_result = m_cancelResult;
      break;
    }
    if (got < 0) break;
    if (!PreTranslateMessage(&msg)) {
      TranslateMessage(&msg);
      DispatchMessageW(&msg);
    }
  }
}

bool CFlgDialog::PreTranslateMessage(MSG* msg) {
  if (!IsWindow(m_hWnd) || !msg) return false;
  if (m_accel.get() && (msg->hwnd == m_hWnd || IsChild(m_hWnd, msg->hwnd)) &&
      TranslateAcceleratorW(m_hWnd, m_accel.get(), msg))
    return true;
  return IsDialogMessageW(m_hWnd, msg) != FALSE;
}

void CFlgDialog::EndDialog(int result) {
  m_result = result;
  if (m_modal) {
    m_modalEnded = true;
    PostMessageW(m_hWnd, WM_NULL, 0, 0);  // wakes the modal loop
  } else if (!m_isPage && IsWindow(m_hWnd)) {
    DestroyWindow(m_hWnd);
  }
}

// The window procedure ------------------------------------------------------------------------------------

INT_PTR CFlgDialog::DialogProc(UINT msg, WPARAM wp, LPARAM lp) {
  // The window base runs this inside the library's failure boundary: a failure in a derived
  // dialog's handler is logged and shown, and the message counts as handled.
  return HandleMessage(msg, wp, lp);
}

void CFlgDialog::OnFinalMessage() { m_modalEnded = true; }

std::string CFlgDialog::FailureCaption() const {
  return const_cast<CFlgDialog*>(this)->GetCaption();
}

void CFlgDialog::ReportCurrentFailure() noexcept {
  std::string caption;
  try {
    caption = GetCaption();
  } catch (...) {
  }
  varion::ReportFailure(m_hWnd, FailureArea(), varion::DescribeFailure(std::current_exception()), caption);
}

bool CFlgDialog::RecordCurrentFailure() {
  const varion::Failure failure = varion::DescribeFailure(std::current_exception());
  varion::LogFailure(FailureArea(), failure);
  if (!m_errors) return false;
  // CheckIfEmptyAddErrorAndThrow records its error before it throws.
  for (const auto& r : *m_errors)
    if (r.message == failure.text) return true;
  CFlgDataExchange(*this, false)
      .AddError(0, failure.text.c_str(), GetCaption().c_str(), static_cast<std::uint32_t>(failure.code));
  return true;
}

bool CFlgDialog::OnCommand(UINT, UINT, HWND) { return false; }

bool CFlgDialog::OnMessage(UINT, WPARAM, LPARAM, LRESULT&) { return false; }

INT_PTR CFlgDialog::HandleMessage(UINT msg, WPARAM wp, LPARAM lp) {
  LRESULT result = 0;
  if (msg != WM_INITDIALOG && OnMessage(msg, wp, lp, result)) {
    SetWindowLongPtrW(m_hWnd, DWLP_MSGRESULT, result);
    return TRUE;
  }
  if (msg == varion::MsgWindowLoaded()) {
    if (m_cfgFactory) LoadDlgCfg();
    ShowInitialInfoTip();
    HandleWindowLoaded();
    return TRUE;
  }
  switch (msg) {
    case WM_INITDIALOG: {
      // A derived dialog's opening that throws still leaves a dialog with its placement.
      BOOL focusDefault = TRUE;
      try {
        focusDefault = OnInitDialog();
      } catch (...) {
        ReportCurrentFailure();
      }
      if (!m_isPage) varion::CallGuarded(m_hWnd, FailureArea(), [this] { m_flex.LoadFromReg(); });
      return focusDefault;
    }
    case WM_COMMAND: {
      const UINT id = LOWORD(wp), code = HIWORD(wp);
      HWND control = reinterpret_cast<HWND>(lp);
      CheckIfModified(id, code);
      if (OnCommand(id, code, control)) return TRUE;
      if (code == BN_CLICKED || !control) {
        switch (id) {
          case IDOK:
            OnOK();
            return TRUE;
          case IDCANCEL:
            OnCancel();
            return TRUE;
          case kApplyId:
            OnApply();
            return TRUE;
          case kHelpIds[0]:
          case kHelpIds[1]:
            ShowHelp();
            return TRUE;
        }
      }
      return FALSE;
    }
    case WM_HELP:
      ShowHelp();
      return TRUE;
    case WM_SIZE:
      if (wp != SIZE_MINIMIZED) m_flex.PositionControls(LOWORD(lp), HIWORD(lp));
      if (m_dockEdge != varion::DockEdge::None) OnDockErrorsWnd({m_dockEdge, {}});
      return FALSE;
    case WM_MOVE:
      if (m_dockEdge != varion::DockEdge::None) OnDockErrorsWnd({m_dockEdge, {}});
      return FALSE;
    case WM_GETMINMAXINFO:
      m_flex.OnGetMinMaxInfo(reinterpret_cast<MINMAXINFO*>(lp));
      return TRUE;
    case WM_CTLCOLOREDIT:
    case WM_CTLCOLORSTATIC:
    case WM_CTLCOLORLISTBOX:
    case WM_CTLCOLORBTN:
    case WM_CTLCOLORDLG:
      return OnCtlColor(msg, reinterpret_cast<HDC>(wp), reinterpret_cast<HWND>(lp));
    case WM_DESTROY: {
      // Each step on its own: a configuration writer that fails must not keep the placement
      // from being saved, nor the errors window and tips from going.
      const std::string area = FailureArea();
      if (!m_isPage) varion::CallGuarded(m_hWnd, area, [this] { m_flex.SaveToReg(); });
      if (m_cfgFactory) varion::CallGuarded(m_hWnd, area, [this] { SaveDlgCfg(); });
      m_errorsWnd.Destroy();
      varion::HideTipMsgBox();
      return FALSE;
    }
  }
  return FALSE;
}

// Opening --------------------------------------------------------------------------------------------------

BOOL CFlgDialog::OnInitDialog() {
  if (m_sphereMenu) SetupSphereMenu();
  PostMessageW(m_hWnd, varion::MsgWindowLoaded(), 0, 0);
  m_flex.Attach(m_hWnd);
  if (!m_help.Init(m_helpFile.empty() ? varion::GetDefaultHelpFile() : m_helpFile, m_templateName)) {
    const std::wstring noHelp = varion::text::Cp1250ToWide(varion::msg::kNoHelp);
    for (UINT id : kHelpIds)
      if (HWND b = GetDlgItem(m_hWnd, static_cast<int>(id))) SetWindowTextW(b, noHelp.c_str());
  }
  // Every step runs whatever an earlier one threw: a dialog whose load failed must still open
  // read-only when it is read-only, with its layout and its controls' messages.
  const auto step = [this](auto&& run) {
    try {
      run();
    } catch (...) {
      ReportCurrentFailure();
    }
  };
  step([this] { SubclassControls(); });
  step([this] { LoadData(); });
  step([this] { SetCtrlsReadOnly(m_readOnly); });
  step([this] { AddFlexConstraints(); });
  step([this] { ShowControlsMessages(); });
  return TRUE;
}

// Data -----------------------------------------------------------------------------------------------------

namespace {
// Sets the loading flag for a scope and puts the previous value back, also when a load throws.
struct LoadingScope {
  bool& flag;
  bool previous;
  explicit LoadingScope(bool& f) : flag(f), previous(std::exchange(f, true)) {}
  ~LoadingScope() { flag = previous; }
};
}  // namespace

void CFlgDialog::LoadData() {
  CFlgDataExchange dx(*this, false);
  if (m_errors) m_errors->RemoveAll();
  LoadingScope loading(m_loading);
  OnLoadData(dx);
}

void CFlgDialog::SaveData() {
  CFlgDataExchange dx(*this, false);
  if (m_errors) m_errors->RemoveAll();
  OnSaveData(dx);
}

void CFlgDialog::LoadDataInto(CObjErrorInfoArray* errors) {
  CFlgDataExchange dx(errors, m_hWnd, m_templateName.c_str(), false);
  LoadingScope loading(m_loading);
  OnLoadData(dx);
}

void CFlgDialog::SaveDataInto(CObjErrorInfoArray* errors) {
  CFlgDataExchange dx(errors, m_hWnd, m_templateName.c_str(), false);
  OnSaveData(dx);
}

void CFlgDialog::SetResultCodes(int ok, int cancel) {
  m_okResult = ok;
  m_cancelResult = cancel;
}

// Apply, OK and cancel --------------------------------------------------------------------------------------

void CFlgDialog::OnOK() { HandleOK(); }
void CFlgDialog::OnCancel() { HandleCancel(); }
void CFlgDialog::OnApply() {
  if (HandleApply()) SetModified(false);
}

bool CFlgDialog::HandleApply() {
  if (!UpdateData(true)) return false;
  try {
    SaveData();
  } catch (...) {
    // A half-finished save never goes on to the update. Without an error list to show it in,
    // the failure is shown on its own.
    if (!RecordCurrentFailure()) {
      ReportCurrentFailure();
      return false;
    }
  }
  if (HasErrors()) {
    ShowErrors();
    AddErrorsToToolWnd();
    return false;
  }
  if (m_applyWithoutUpdate) return true;
  try {
    if (!BeforeUpdate()) return false;
    return OnUpdate() >= 0;
  } catch (...) {
    // A refused update (the database said no) keeps the dialog open with the reason shown, in
    // the errors window too, so that its lines index the list they show.
    if (!RecordCurrentFailure()) {
      ReportCurrentFailure();
      return false;
    }
    ShowErrors();
    AddErrorsToToolWnd();
    return false;
  }
}

void CFlgDialog::HandleOK() {
  if (m_noApplyOnOK || HandleApply()) EndDialog(m_okResult);
}

void CFlgDialog::HandleCancel() {
  if (!m_noSavePrompt && !m_readOnly && m_modified) {
    switch (
        varion::FrameworkMessageBox(m_hWnd, varion::msg::kSavePrompt, GetCaption(), MB_YESNOCANCEL | MB_ICONQUESTION)) {
      case IDCANCEL:
        return;
      case IDYES:
        HandleOK();
        return;
      default:
        break;
    }
  }
  UndoData();
  EndDialog(m_cancelResult);
}

std::string CFlgDialog::GetCaption() {
  if (!IsWindow(m_hWnd)) return {};
  std::wstring w(static_cast<size_t>(GetWindowTextLengthW(m_hWnd)) + 1, L'\0');
  GetWindowTextW(m_hWnd, w.data(), static_cast<int>(w.size()));
  w.resize(wcslen(w.c_str()));
  return varion::text::WideToCp1250(w);
}

// Modified ---------------------------------------------------------------------------------------------------

void CFlgDialog::SetModified(bool modified) {
  if (m_modified == modified) return;
  m_modified = modified;
  OnModified();
}

void CFlgDialog::AddCtrlIdForModified(UINT ctrlId, UINT cmd) {
  for (const auto& e : m_modifiedBy)
    if (e.ctrlId == ctrlId && e.cmd == cmd) return;
  m_modifiedBy.push_back({ctrlId, cmd});
}

void CFlgDialog::RemoveCtrlIdForModified(UINT ctrlId) {
  std::erase_if(m_modifiedBy, [ctrlId](const CTRL_ID_TO_CMD& e) { return e.ctrlId == ctrlId; });
}

bool CFlgDialog::CheckIfModified(UINT ctrlId, UINT cmd) {
  if (m_loading) return false;
  for (const auto& e : m_modifiedBy) {
    if (e.ctrlId == ctrlId && e.cmd == cmd) {
      SetModified(true);
      return true;
    }
  }
  return false;
}

// Read-only -----------------------------------------------------------------------------------------------------

void CFlgDialog::SetReadOnly(bool readOnly) {
  m_readOnly = readOnly;
  if (IsWindow(m_hWnd)) SetCtrlsReadOnly(readOnly);
}

// Both ways, every control that is not left alone goes to OnSetCtrlsReadOnly, including one that
// is already read-only or disabled: the hook decides, so a dialog that overrides it sees every
// control. (The default hook only toggles ES_READONLY on edits, so an edit the template disabled
// stays disabled.)
void CFlgDialog::SetCtrlsReadOnly(bool readOnly) {
  if (IsWindow(m_hWnd)) SetReadOnlyIn(m_hWnd, readOnly);
}

void CFlgDialog::SetReadOnlyIn(HWND container, bool readOnly) {
  for (HWND h = GetWindow(container, GW_CHILD); h; h = GetWindow(h, GW_HWNDNEXT)) {
    const std::string cls = ClassNameOf(h);
    if (cls == "#32770") {
      SetReadOnlyIn(h, readOnly);
      continue;
    }
    if (_stricmp(cls.c_str(), "Static") == 0 || cls == "vel_infoframe") continue;
    if (_stricmp(cls.c_str(), "Button") == 0 && CaptionWithoutAccelerator(h) == "Zamknij") continue;
    if (m_noDisable.count(static_cast<UINT>(GetDlgCtrlID(h)))) continue;
    OnSetCtrlsReadOnly(h, cls, readOnly);
  }
}

void CFlgDialog::OnSetCtrlsReadOnly(HWND control, const std::string& className, bool readOnly) {
  if (IsEditClass(className))
    SendMessageW(control, EM_SETREADONLY, readOnly ? TRUE : FALSE, 0);
  else
    EnableWindow(control, readOnly ? FALSE : TRUE);
}

// Configuration -------------------------------------------------------------------------------------------------

std::string CFlgDialog::GetSection() const {
  if (!m_section.empty()) return m_section;
  return GetFlxProfileSection().empty() ? m_templateName : GetFlxProfileSection();
}

int CFlgDialog::GetUser() const { return m_user >= 0 ? m_user : CRtInstance::GetUserId(); }

void CFlgDialog::LoadDlgCfg() {
  if (!m_cfgFactory) return;
  varion::LoadDialogCfg(*m_cfgFactory, GetSection(), GetUser(), m_service,
                        {[this](varion::db::ByteStream& s) { LoadDlgCfg(s); },
                         [this](varion::db::ByteStream& s) { LoadCustomFiltersCfg(s); }});
}

void CFlgDialog::SaveDlgCfg() {
  if (!m_cfgFactory) return;
  varion::SaveDialogCfg(*m_cfgFactory, GetSection(), GetUser(), m_service,
                        {[this](varion::db::ByteStream& s) { SaveDlgCfg(s); },
                         [this](varion::db::ByteStream& s) { SaveCustomFiltersCfg(s); }});
}

// Flexible layout ---------------------------------------------------------------------------------------------------

bool CFlgDialog::AddIfNotPresentFlexConstraint(UINT id, double left, double right, double top, double bottom) {
  return m_flex.AddIfNotPresentFlexConstraint(id, left, right, top, bottom);
}

void CFlgDialog::ReplaceFlexConstraint(UINT id, double left, double right, double top, double bottom, bool keepBase) {
  m_flex.ReplaceFlexConstraint(id, left, right, top, bottom, keepBase);
}

void CFlgDialog::ReplaceFlexConstraint(UINT id, const CVelFlexHorizontalConstraint& h,
                                       const CVelFlexVerticalConstraint& v, bool keepBase) {
  m_flex.ReplaceFlexConstraint(id, h, v, keepBase);
}

bool CFlgDialog::SetFlexConstraintBaseRect(UINT id, const RECT& rect) {
  return m_flex.SetFlexConstraintBaseRect(id, rect);
}
