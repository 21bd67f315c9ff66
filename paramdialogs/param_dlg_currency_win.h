// CParamDlg_Currency: the dialog of an amount parameter (type 1): one amount, or two for the
// range, in the library's amount fields, compared by the operator the record allows.
#pragma once

#include "paramdialogs/param_dlg_base_win.h"

class VARION_API CParamDlg_Currency : public CParamDlg_Base {
 public:
  explicit CParamDlg_Currency(ZEST_PARAMS& param, HWND parent = nullptr);

 protected:
  void LoadValues(CFlgDataExchange& dx, const varion::paramdlg::ParamEditValues& v) override;
  void SaveValues(CFlgDataExchange& dx, const varion::paramdlg::OperatorChoice& op,
                  varion::paramdlg::ParamEditValues& v) override;
};
