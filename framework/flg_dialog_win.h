// CFlgDialog: the base of every data dialog. It opens a dialog template (modal, modeless or as a
// page inside another dialog), runs the load, validate and save cycle through CFlgDataExchange,
// collects every failure and shows them together (marks on the controls, focus on the first, an
// optional errors window), asks before throwing changes away, and brings read-only mode, the
// flexible layout with a remembered placement, stored configuration, info tips, help and a
// sphere menu button in the caption.
#pragma once

#include <windows.h>

#include <map>
#include <memory>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

#include "base/export.h"
#include "base/handles_win.h"
#include "controls/window_base_win.h"
#include "db/stream.h"
#include "framework/data_exchange.h"
#include "framework/dialog_cfg.h"
#include "framework/dock_edge.h"
#include "framework/errors_wnd_win.h"
#include "framework/flex_plugin_win.h"
#include "framework/grid_messages.h"
#include "framework/help_plugin_win.h"

namespace varion {

// What a dialog offers when it is placed inside another window.
class VARION_API IFlgChildWindow {
 public:
  virtual ~IFlgChildWindow() = default;
  virtual bool Create(HWND parent) = 0;
  virtual HWND GetHWND() const = 0;
};

// What a dialog offers to the grids it holds.
class VARION_API IGridMessageTarget {
 public:
  virtual ~IGridMessageTarget() = default;
  virtual void AddMessageFromGrid(UINT ctrlId, const ValidatableGrid::MessageData& message) = 0;
  virtual void RemoveMessagesFromGrid(UINT ctrlId) = 0;
  virtual std::vector<GridMessageCounts::Entry> GetWarningsFromGrid() const = 0;
};

}  // namespace varion

class VARION_API CFlgDialog : public varion::Window, public varion::IFlgChildWindow, public varion::IGridMessageTarget {
 public:
  // A control notification that marks the dialog modified.
  struct CTRL_ID_TO_CMD {
    UINT ctrlId;
    UINT cmd;
  };
  // EndDialog with this result inside DoModalContinue refreshes the dialog and keeps it open.
  static constexpr int kModalContinue = IDCONTINUE;
  static constexpr UINT kApplyId = 0x3021;  // the Apply button of property sheets
  static constexpr UINT kHelpIds[2] = {9, 0xE146};

  // The template is looked up in the library's resources, then in the program's.
  explicit CFlgDialog(UINT templateId, HWND parent = nullptr);
  explicit CFlgDialog(const char* templateName, HWND parent = nullptr);
  ~CFlgDialog() override;
  CFlgDialog(const CFlgDialog&) = delete;
  CFlgDialog& operator=(const CFlgDialog&) = delete;

  // The framework dialog's own operations.
  virtual INT_PTR DoModal();
  virtual BOOL OnInitDialog();
  virtual void OnOK();
  virtual void OnCancel();

  // The operations of the dialog base, in this order.
  virtual void AddFlexConstraints() {}
  virtual void SetCtrlsReadOnly(bool readOnly);
  virtual void OnSetCtrlsReadOnly(HWND control, const std::string& className, bool readOnly);
  virtual void SendErrorMsgToCtrl(const FLG_OBJECT_ERROR_INFO& error);
  virtual void IndicateErrorControl(const char* source, HWND window, UINT ctrlId);
  virtual void SubclassControls() {}
  virtual void OnLoadData(CFlgDataExchange&) {}
  virtual void OnSaveData(CFlgDataExchange&) {}
  virtual void OnApply();
  virtual void HandleOK();
  virtual bool HandleApply();
  virtual void HandleCancel();
  virtual bool BeforeUpdate() { return true; }
  virtual int OnUpdate() { return 0; }
  virtual void LoadDlgCfg(varion::db::ByteStream&) {}
  virtual void LoadDlgCfg();
  virtual void SaveDlgCfg(varion::db::ByteStream&) {}
  virtual void SaveDlgCfg();
  virtual std::string GetInfoText() { return {}; }
  virtual std::string GetInfoTitle() { return {}; }
  // MB_ICON* bits of the initial info tip.
  virtual UINT GetInfoType() { return MB_ICONINFORMATION; }
  virtual void ShowInitialInfoTip();
  virtual void LoadCustomFiltersCfg(varion::db::ByteStream&) {}
  virtual void SaveCustomFiltersCfg(varion::db::ByteStream&) {}
  virtual void SetReadOnly(bool readOnly);
  virtual void ShowErrors();
  virtual void RemoveErrors();
  virtual void RemoveError(UINT ctrlId);
  virtual void ShowControlsMessages();
  virtual std::string GetCaption();
  virtual void DisableMd2Events() {}
  virtual void SaveData();
  virtual void LoadData();
  virtual void HandleWindowLoaded() {}
  virtual void OnModified() {}
  virtual void EndDialog(int result);
  virtual void OnSphereMenu() {}
  virtual void OnRefreshDlg() {}
  virtual void OnRefreshModalContinueDlg() {}
  virtual void UndoData() {}

  // Hooks of the window procedure for derived dialogs: a command or any message; true when
  // handled (then `result` is the answer).
  virtual bool OnCommand(UINT id, UINT code, HWND control);
  virtual bool OnMessage(UINT msg, WPARAM wParam, LPARAM lParam, LRESULT& result);
  // The framework's own data exchange, run before SaveData on apply; false stops the apply.
  virtual bool UpdateData(bool /*saveAndValidate*/) { return true; }

  // Child window and grid interfaces.
  bool Create(HWND parent) override;  // modeless, owned by `parent`
  HWND GetHWND() const override { return m_hWnd; }
  void AddMessageFromGrid(UINT ctrlId, const ValidatableGrid::MessageData& message) override;
  void RemoveMessagesFromGrid(UINT ctrlId) override;
  std::vector<varion::GridMessageCounts::Entry> GetWarningsFromGrid() const override;

  // Modal loop that survives EndDialog(kModalContinue): OnRefreshModalContinueDlg, LoadData and
  // the loop again.
  INT_PTR DoModalContinue();
  // Creates this dialog as a page inside `parentDialog`, in place of (and with the identifier
  // of) the placeholder control `ctrlId`.
  bool CreateOnDialogItem(HWND parentDialog, UINT ctrlId);
  // For hosts that run their own message loop around a modeless dialog.
  bool PreTranslateMessage(MSG* msg);

  // Data and errors.
  bool HasErrors() const { return m_errors && !m_errors->IsEmpty(); }
  CObjErrorInfoArray* GetErrorsArray() const { return m_errors; }
  void SetErrorsArray(CObjErrorInfoArray* errors) { m_errors = errors; }
  void SetDefErrorsArray() { m_errors = &m_ownErrors; }
  // A page's data into (or from) the error list of the dialog that holds it, without emptying it.
  void SaveDataInto(CObjErrorInfoArray* errors);
  void LoadDataInto(CObjErrorInfoArray* errors);
  const std::string& GetTemplateName() const { return m_templateName; }
  UINT GetTemplateID() const { return m_templateId; }
  bool IsLoading() const { return m_loading; }
  int GetResult() const { return m_result; }
  void SetResultCodes(int ok, int cancel);
  // OK ends the dialog without applying; cancel ends it without asking; a clean apply succeeds
  // without BeforeUpdate and OnUpdate.
  void SetNoApplyOnOK(bool on) { m_noApplyOnOK = on; }
  void SetNoSavePrompt(bool on) { m_noSavePrompt = on; }
  void SetApplyWithoutUpdate(bool on) { m_applyWithoutUpdate = on; }

  // Modified state.
  bool IsModified() const { return m_modified; }
  void Modified() { SetModified(true); }
  // Calls OnModified when the state changes.
  void SetModified(bool modified);
  void SetModifiedNoCheck(bool modified) { m_modified = modified; }
  void SetCtrlIdsForModified(std::vector<CTRL_ID_TO_CMD> entries) { m_modifiedBy = std::move(entries); }
  void AddCtrlIdForModified(UINT ctrlId, UINT cmd);
  void RemoveCtrlIdForModified(UINT ctrlId);
  // Marks the dialog modified when the notification is in the table (never while loading).
  bool CheckIfModified(UINT ctrlId, UINT cmd);

  // Read-only mode.
  bool IsReadOnly() const { return m_readOnly; }
  void AddCtrlNoDisable(UINT ctrlId) { m_noDisable.insert(ctrlId); }

  // Configuration identity.
  const std::string& GetFlxProfileSection() const { return m_flex.GetProfileSection(); }
  void SetFlxProfileSection(std::string section) { m_flex.SetProfileSection(std::move(section)); }
  std::string GetSection() const;
  void SetSection(std::string section) { m_section = std::move(section); }
  int GetService() const { return m_service; }
  void SetService(int service) { m_service = service; }
  int GetUser() const;
  void SetUser(int user) { m_user = user; }
  void SetDataForCfgSave(std::shared_ptr<IFlgDataFactory> factory) { m_cfgFactory = std::move(factory); }

  // Flexible layout and placement.
  CVelFlexPlugin& FlexPlugin() { return m_flex; }
  bool AddIfNotPresentFlexConstraint(UINT ctrlId, double left, double right, double top, double bottom);
  void ReplaceFlexConstraint(UINT ctrlId, double left, double right, double top, double bottom, bool keepBase = true);
  void ReplaceFlexConstraint(UINT ctrlId, const CVelFlexHorizontalConstraint& horizontal,
                             const CVelFlexVerticalConstraint& vertical, bool keepBase = true);
  bool SetFlexConstraintBaseRect(UINT ctrlId, const RECT& rect);
  void OnRedoFlexLayout() { m_flex.OnRedoFlexLayout(); }
  void SetDefaultSize(int cx, int cy) { m_flex.SetDefaultSize(cx, cy); }
  void SetMinTracking(int cx, int cy) { m_flex.SetMinTracking(cx, cy); }
  void SetNoHResize(bool on) { m_flex.SetNoHResize(on); }

  // The errors window.
  void EnableErrorsWnd(bool enable);
  CErrorsWnd& ErrorsWnd() { return m_errorsWnd; }
  void AddErrorsToToolWnd();
  varion::DockResult GetErrorsWndDockEdge(POINT cursor) const;
  void OnDockErrorsWnd(const varion::DockResult& dock);
  varion::DockEdge GetErrorsWndEdge() const { return m_dockEdge; }

  // Info tips.
  void ShowInfoTip(UINT ctrlId, UINT templateId, const std::string& title, const std::string& text, UINT style);
  void SetInitialInfoTipCtrlId(UINT ctrlId) { m_initialTipCtrl = ctrlId; }

  // Help: the help file of this dialog (the default one unless set).
  void SetHelpFile(std::wstring path) { m_helpFile = std::move(path); }
  const varion::CVelHelpPlugin& HelpPlugin() const { return m_help; }
  void ShowHelp();

  // Fonts and colours of controls.
  void SetBold(UINT ctrlId);
  void SetBoldForPrevious(UINT ctrlId);
  void SetFont(UINT ctrlId, int pointSize, bool bold = false, const char* face = nullptr);
  void SetNormalFont(UINT ctrlId);
  void SetBkgndColor(UINT ctrlId, COLORREF color);
  void SetColorWindowBkgnd(bool on);

  // Accelerators, translated by the dialog's modal loop (or PreTranslateMessage).
  bool LoadAcceleratorsTable(UINT resourceId);
  bool LoadOwnedAcceleratorsTable(const ACCEL* entries, int count);
  void LoadExternalAcceleratorsTable(HACCEL table);
  void DestroyAcceleratorTableIfExists();

  // The sphere menu button in the caption; set before the window opens.
  void EnableSphereMenu(bool on) { m_sphereMenu = on; }
  bool HasSphereMenu() const { return m_sphereMenu; }
  // Its rectangle in screen coordinates (empty without one).
  RECT GetSphereRect() const;

  // The page created in place of a control of this dialog, found by its template name.
  CFlgDialog* FindNestedPage(const std::string& templateName) const;
  static CFlgDialog* FromHandle(HWND window);

 protected:
  HWND GetParentWindow() const { return m_parent; }
  // The window's messages (the caption's sphere button) and the dialog manager's.
  LRESULT WindowProc(UINT msg, WPARAM wp, LPARAM lp) override;
  INT_PTR DialogProc(UINT msg, WPARAM wp, LPARAM lp) override;
  void OnFinalMessage() override;
  std::string FailureArea() const override { return "dialog " + m_templateName; }
  std::string FailureCaption() const override;

 private:
  struct Gdi;
  INT_PTR HandleMessage(UINT msg, WPARAM wp, LPARAM lp);
  bool CreateFromTemplate(HWND parent, bool asChild);
  INT_PTR RunModal(bool continueLoop);
  void RunModalLoop();
  HWND FindErrorControl(const char* source, HWND window, UINT ctrlId) const;
  INT_PTR OnCtlColor(UINT msg, HDC dc, HWND control);
  void SetReadOnlyIn(HWND container, bool readOnly);
  void DrawSphere();
  void SetupSphereMenu();
  // Logs and shows the failure in flight (inside a catch block).
  void ReportCurrentFailure() noexcept;
  // Logs the failure in flight and adds it to the error list as a dialog-level error; false when
  // there is no error list to take it.
  bool RecordCurrentFailure();

  std::string m_templateName;
  UINT m_templateId = 0;
  HWND m_parent = nullptr;
  CObjErrorInfoArray m_ownErrors;
  CObjErrorInfoArray* m_errors = &m_ownErrors;
  bool m_loading = false;
  bool m_modified = false;
  std::vector<CTRL_ID_TO_CMD> m_modifiedBy;
  bool m_readOnly = false;
  std::set<UINT> m_noDisable;
  int m_okResult = IDOK, m_cancelResult = IDCANCEL;
  bool m_noApplyOnOK = false, m_noSavePrompt = false, m_applyWithoutUpdate = false;
  int m_result = 0;
  bool m_modal = false, m_modalEnded = false;
  bool m_isPage = false;
  varion::GridMessageCounts m_gridMessages;
  std::string m_section;
  int m_service = 0;
  int m_user = -1;
  std::shared_ptr<IFlgDataFactory> m_cfgFactory;
  CVelFlexPlugin m_flex;
  CErrorsWnd m_errorsWnd;
  bool m_errorsWndEnabled = false;
  varion::DockEdge m_dockEdge = varion::DockEdge::None;
  UINT m_initialTipCtrl = 0;
  std::wstring m_helpFile;
  varion::CVelHelpPlugin m_help;
  std::unique_ptr<Gdi> m_gdi;
  std::map<UINT, COLORREF> m_ctrlColors;
  bool m_windowBkgnd = false;
  varion::AcceleratorTable m_accel;
  bool m_sphereMenu = false;
};
