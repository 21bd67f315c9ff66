#include "params/param_dialogs.h"

#include <atomic>

namespace varion::params {

std::optional<ParamDialogRequest> ParamDialogFor(int type, int dialogOption) {
  using K = ParamDialogKind;
  switch (type) {
    case ZestParamsTypeString: return ParamDialogRequest{K::String};
    case ZestParamsTypeCurrency: return ParamDialogRequest{K::Currency};
    case ZestParamsTypeDate:
    case ZestParamsTypeDateTime: return ParamDialogRequest{K::Date};
    case ZestParamsTypeSelection:
    case ZestParamsTypeSelectionIndex:
    case ZestParamsTypeSelectionData: return ParamDialogRequest{K::Combo, type, dialogOption};
    case ZestParamsTypeSelectionDataBezSlowaTo: return ParamDialogRequest{K::Combo, 5, 0};
    case ZestParamsTypeSelectionDbObject: return ParamDialogRequest{K::ComboDb, 0, 0, false, false, true};
    case ZestParamsTypeInstynkt: return ParamDialogRequest{K::Instynkt};
    case ZestParamsTypeSelectionDbString: return ParamDialogRequest{K::ComboDbString, 0, 0, false, false, true};
    case ZestParamsTypeChecklist: return ParamDialogRequest{K::Checklist};
    case ZestParamsTypeChecklistDb: return ParamDialogRequest{K::ChecklistDb, 0, 0, false};
    case ZestParamsTypeChecklistDbSort: return ParamDialogRequest{K::ChecklistDb, 0, 0, true};
    case ZestParamsTypeDateEx: return ParamDialogRequest{K::DateEx};
    case ZestParamsTypeDateEx2: return ParamDialogRequest{K::DateEx2};
    case ZestParamsTypeLookupMultisel: return ParamDialogRequest{K::Lookup, 0, 0, false, true};
    case ZestParamsTypeLookup: return ParamDialogRequest{K::Lookup, 0, 0, false, false};
    case ZestParamsTypeMultiselectionDbObject:
      return ParamDialogRequest{K::MultiselectionComboDb, 0, 0, false, false, true};
    case ZestParamsTypeDateHour: return ParamDialogRequest{K::DateHour};
    case ZestParamsTypeKlasyfikator: return ParamDialogRequest{K::Klas};
    default: return std::nullopt;
  }
}

}  // namespace varion::params

namespace {
std::atomic<CAccessControl::IChecker*> g_checker{nullptr};
}

void CAccessControl::SetChecker(IChecker* checker) { g_checker = checker; }

varion::Status32 CAccessControl::CheckStdFuncAccessAndShowMessage(UprawnieniaDoWersji right) {
  IChecker* checker = g_checker;
  return checker ? checker->CheckStdFuncAccessAndShowMessage(right) : varion::kOk;
}
