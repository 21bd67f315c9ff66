#include "paramdialogs/param_dialogs_win.h"

#include <memory>

#include "paramdialogs/param_dlg_currency_win.h"
#include "paramdialogs/param_dlg_date_win.h"
#include "paramdialogs/param_dlg_string_win.h"

namespace varion::paramdlg {

bool ParamDialogs::HasDialog(const params::ParamDialogRequest& request) {
  using K = params::ParamDialogKind;
  return request.kind == K::String || request.kind == K::Currency || request.kind == K::Date;
}

bool ParamDialogs::ShowParamDialog(const params::ParamDialogRequest& request, ZEST_PARAMS& param,
                                   const db::Connection&) {
  std::unique_ptr<CParamDlg_Base> dialog;
  switch (request.kind) {
    case params::ParamDialogKind::String: dialog = std::make_unique<CParamDlg_String>(param, m_owner); break;
    case params::ParamDialogKind::Currency: dialog = std::make_unique<CParamDlg_Currency>(param, m_owner); break;
    case params::ParamDialogKind::Date: dialog = std::make_unique<CParamDlg_Date>(param, m_owner); break;
    default: return false;
  }
  dialog->SetClock(m_clock);
  return dialog->DoModal() == IDOK;
}

}  // namespace varion::paramdlg
