#include "paramdialogs/param_dlg_currency_win.h"

#include "framework/data_exchange_win.h"

using namespace varion::paramdlg;

CParamDlg_Currency::CParamDlg_Currency(ZEST_PARAMS& param, HWND parent)
    : CParamDlg_Base(IDD_PARAMDLG_CURRENCY, param, ValueKind::Amount, parent) {}

void CParamDlg_Currency::LoadValues(CFlgDataExchange& dx, const ParamEditValues& v) {
  DLX_Text(dx, IDC_PARAMDLG_VALUE, v.amount);
  DLX_Text(dx, IDC_PARAMDLG_VALUE2, v.amount2);
}

void CParamDlg_Currency::SaveValues(CFlgDataExchange& dx, const OperatorChoice& op, ParamEditValues& v) {
  DSX_Text(dx, IDC_PARAMDLG_VALUE, v.amount);
  if (op.range) DSX_Text(dx, IDC_PARAMDLG_VALUE2, v.amount2);
}
