// CParamDlg_String: the dialog of a text parameter (type 0): a text and how the column is
// compared with it (equal, begins with, contains, in a list of numbers, any).
#pragma once

#include "paramdialogs/param_dlg_base_win.h"

class VARION_API CParamDlg_String : public CParamDlg_Base {
 public:
  explicit CParamDlg_String(ZEST_PARAMS& param, HWND parent = nullptr);

 protected:
  void LoadValues(CFlgDataExchange& dx, const varion::paramdlg::ParamEditValues& v) override;
  void SaveValues(CFlgDataExchange& dx, const varion::paramdlg::OperatorChoice& op,
                  varion::paramdlg::ParamEditValues& v) override;
  void EnableValues(const varion::paramdlg::OperatorChoice& op, bool any) override;
};
