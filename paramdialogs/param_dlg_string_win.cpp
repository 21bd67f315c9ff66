#include "paramdialogs/param_dlg_string_win.h"

#include "framework/data_exchange_win.h"

using namespace varion::paramdlg;

CParamDlg_String::CParamDlg_String(ZEST_PARAMS& param, HWND parent)
    : CParamDlg_Base(IDD_PARAMDLG_STRING, param, ValueKind::Text, parent) {}

void CParamDlg_String::LoadValues(CFlgDataExchange& dx, const ParamEditValues& v) {
  DLX_Text(dx, IDC_PARAMDLG_VALUE, v.text);
}

void CParamDlg_String::SaveValues(CFlgDataExchange& dx, const OperatorChoice&, ParamEditValues& v) {
  DSX_Text(dx, IDC_PARAMDLG_VALUE, v.text);
}

void CParamDlg_String::EnableValues(const OperatorChoice& op, bool any) {
  // The any operator compares with nothing.
  EnableItem(IDC_PARAMDLG_VALUE, !any && op.bits != ZestParams::OperatorBitsString(ZestParams::CompareStringAny));
}
