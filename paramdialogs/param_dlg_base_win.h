// CParamDlg_Base: the dialog base of the report parameter dialogs. It receives one parameter
// record, shows the operators the record allows and the "any value" choice where the record
// allows it, moves the values between the record and the derived dialog's controls, checks them
// through the data exchange (every failure at once, marked on its control) and writes the record
// only when the user confirms: Cancel, or a check that fails, leaves it exactly as it was.
#pragma once

#include <windows.h>

#include <functional>
#include <vector>

#include "base/export.h"
#include "controls/date_tools.h"
#include "framework/flg_dialog_win.h"
#include "paramdialogs/param_dialog_ids.h"
#include "paramdialogs/param_edit.h"

class VARION_API CParamDlg_Base : public CFlgDialog {
 public:
  // The record must outlive the dialog; it is written on OK only. A record whose type is not of
  // the dialog's kind ends the dialog with Cancel as it opens.
  CParamDlg_Base(UINT templateId, ZEST_PARAMS& param, varion::paramdlg::ValueKind kind, HWND parent = nullptr);

  ZEST_PARAMS& GetParamRecord() const { return *m_param; }
  // Where the named periods count today from (the system clock when null); not owned.
  void SetClock(const DateTools::IClock* clock) { m_clock = clock; }

  // The operator list's entries, in list order.
  const std::vector<varion::paramdlg::OperatorChoice>& Operators() const { return m_operators; }

  // Called with every parameter dialog once its window has loaded (tests and the gallery drive
  // the dialog from here); the previous observer is returned. Not thread-safe: set it at start.
  using OpenObserver = std::function<void(CParamDlg_Base&)>;
  static OpenObserver SetOpenObserver(OpenObserver observer);

 protected:
  BOOL OnInitDialog() override;
  void OnLoadData(CFlgDataExchange& dx) override;
  void OnSaveData(CFlgDataExchange& dx) override;
  int OnUpdate() override;
  bool OnCommand(UINT id, UINT code, HWND control) override;
  void HandleWindowLoaded() override;

  // The value controls of the derived dialog.
  virtual void LoadValues(CFlgDataExchange& dx, const varion::paramdlg::ParamEditValues& v) = 0;
  // Reads what the chosen operator uses; a control whose text is no value adds its own error.
  virtual void SaveValues(CFlgDataExchange& dx, const varion::paramdlg::OperatorChoice& op,
                          varion::paramdlg::ParamEditValues& v) = 0;
  // Enables the value controls for an operator (and the any choice); a named period shows its
  // dates in them.
  virtual void EnableValues(const varion::paramdlg::OperatorChoice& op, bool any);

  // The operator chosen in the list (the first one when none is).
  varion::paramdlg::OperatorChoice SelectedOperator() const;
  bool AnyChecked() const;
  const DateTools::IClock& Clock() const;
  void EnableItem(int id, bool enable) const;

 private:
  void UpdateEnabled();

  ZEST_PARAMS* m_param;
  varion::paramdlg::ValueKind m_kind;
  const DateTools::IClock* m_clock = nullptr;
  std::vector<varion::paramdlg::OperatorChoice> m_operators;
  varion::paramdlg::ParamEditValues m_values;  // checked, waiting for OnUpdate
};
