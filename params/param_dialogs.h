// Which editing dialog serves a parameter type, the interface through which the parameter view
// opens those dialogs, and the access check that comes before any of them.
#pragma once

#include <optional>

#include "base/export.h"
#include "base/status.h"
#include "db/connection.h"
#include "params/zest_params.h"

namespace varion::params {

enum class ParamDialogKind {
  String,                  // CParamDlg_String
  Currency,                // CParamDlg_Currency
  Date,                    // CParamDlg_Date
  Combo,                   // CParamDlg_Combo
  ComboDb,                 // CParamDlg_ComboDb
  Instynkt,                // CParamDlg_Instynkt
  ComboDbString,           // CParamDlg_ComboDbString
  Checklist,               // CParamDlg_Checklist
  ChecklistDb,             // CParamDlg_ChecklistDb
  DateEx,                  // CParamDlg_DateEx
  DateEx2,                 // CParamDlg_DateEx2
  Lookup,                  // the lookup chooser (ShowLookupCtrl)
  MultiselectionComboDb,   // CParamsDlg_MultiselectionComboDb
  DateHour,                // CParamsDlg_DateHour
  Klas,                    // CParamDlg_Klas, a classifier choice
};

struct ParamDialogRequest {
  ParamDialogKind kind;
  int comboMode = 0;        // Combo: the parameter type it edits (3, 4 or 5)
  int dialogOption = 0;     // Combo: the view's dialog option, or 0 for type 14
  bool sortable = false;    // ChecklistDb: the sortable list of type 16
  bool multiple = false;    // Lookup: several records (type 15) or one (type 17)
  bool usesConnection = false;
};

// The dialog of a parameter type; nothing for -1, 8 and any type above 21.
VARION_API std::optional<ParamDialogRequest> ParamDialogFor(int type, int dialogOption);

// The parameter dialogs. Each edits the record's value fields, DisplayValue and Empty and tells
// whether the user confirmed; on Cancel the record stays as it was.
class VARION_API IParamDialogs {
 public:
  virtual ~IParamDialogs() = default;
  virtual bool ShowParamDialog(const ParamDialogRequest& request, ZEST_PARAMS& param,
                               const db::Connection& connection) = 0;
};

}  // namespace varion::params

// Checks of the functions that an edition or a user's rights may withhold. The check shows its
// own message when it refuses; a negative result means "refused".
class VARION_API CAccessControl {
 public:
  class IChecker {
   public:
    virtual ~IChecker() = default;
    virtual varion::Status32 CheckStdFuncAccessAndShowMessage(UprawnieniaDoWersji right) = 0;
  };
  // Not owned; null (the default) allows everything. One per process, set by the host at start.
  static void SetChecker(IChecker* checker);
  static varion::Status32 CheckStdFuncAccessAndShowMessage(UprawnieniaDoWersji right);
};
