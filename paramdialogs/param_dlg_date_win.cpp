#include "paramdialogs/param_dlg_date_win.h"

#include "controls/date_edit_win.h"
#include "framework/data_exchange_win.h"
#include "params/named_periods.h"

using namespace varion::paramdlg;

CParamDlg_Date::CParamDlg_Date(ZEST_PARAMS& param, HWND parent)
    : CParamDlg_Base(IDD_PARAMDLG_DATE, param, ValueKind::Date, parent) {}

void CParamDlg_Date::LoadValues(CFlgDataExchange& dx, const ParamEditValues& v) {
  DLX_Text(dx, IDC_PARAMDLG_VALUE, v.date);
  DLX_Text(dx, IDC_PARAMDLG_VALUE2, v.date2);
}

void CParamDlg_Date::SaveValues(CFlgDataExchange& dx, const OperatorChoice& op, ParamEditValues& v) {
  if (op.periodCode) return;  // the dates come from today when the record is written
  DSX_Text(dx, IDC_PARAMDLG_VALUE, v.date);
  if (op.range) DSX_Text(dx, IDC_PARAMDLG_VALUE2, v.date2);
}

void CParamDlg_Date::EnableValues(const OperatorChoice& op, bool any) {
  CParamDlg_Base::EnableValues(op, any);
  if (any || !op.periodCode) return;
  DateTools::Period period;
  if (!varion::NamedPeriod(op.periodCode, Clock(), period)) return;
  if (auto* from = CVelDateEdit::FromHandle(GetDlgItem(m_hWnd, IDC_PARAMDLG_VALUE))) from->SetValue(period.GetStart());
  if (auto* to = CVelDateEdit::FromHandle(GetDlgItem(m_hWnd, IDC_PARAMDLG_VALUE2))) to->SetValue(period.GetEnd());
}
