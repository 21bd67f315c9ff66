// CParamDlg_Date: the dialog of a date parameter (types 2 and 20): one date or a range in the
// library's date fields with their calendar, or a named period (this month, the last 7 days,
// the previous month, ...) whose dates follow from today and are shown, not typed.
#pragma once

#include "paramdialogs/param_dlg_base_win.h"

class VARION_API CParamDlg_Date : public CParamDlg_Base {
 public:
  explicit CParamDlg_Date(ZEST_PARAMS& param, HWND parent = nullptr);

 protected:
  void LoadValues(CFlgDataExchange& dx, const varion::paramdlg::ParamEditValues& v) override;
  void SaveValues(CFlgDataExchange& dx, const varion::paramdlg::OperatorChoice& op,
                  varion::paramdlg::ParamEditValues& v) override;
  void EnableValues(const varion::paramdlg::OperatorChoice& op, bool any) override;
};
