// The parameter dialogs as the parameter view opens them (IParamDialogs): a followed link on the
// page reaches ShowParamDialog with the dialog the record's type needs, after the view's access
// check. This slice has the text, amount and date dialogs (types 0, 1, 2 and 20); for every
// other dialog of the view's table nothing opens yet and the record stays as it was. A host
// hands one of these to its view: view.SetDialogs(&dialogs).
#pragma once

#include <windows.h>

#include "base/export.h"
#include "controls/date_tools.h"
#include "params/param_dialogs.h"

namespace varion::paramdlg {

class VARION_API ParamDialogs : public params::IParamDialogs {
 public:
  explicit ParamDialogs(HWND owner = nullptr) : m_owner(owner) {}
  void SetOwner(HWND owner) { m_owner = owner; }
  // Where the date dialog's named periods count today from (the system clock when null).
  void SetClock(const DateTools::IClock* clock) { m_clock = clock; }

  // True when the user confirmed and the record was written.
  bool ShowParamDialog(const params::ParamDialogRequest& request, ZEST_PARAMS& param,
                       const db::Connection& connection) override;
  // Whether this slice has the dialog of a request.
  static bool HasDialog(const params::ParamDialogRequest& request);

 private:
  HWND m_owner;
  const DateTools::IClock* m_clock = nullptr;
};

}  // namespace varion::paramdlg
