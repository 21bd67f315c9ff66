// Parameter history: a report remembers the values its user chose last time, except for the
// parameters whose value comes from the session (the printing date, the user, the workstation)
// and must never be replaced by a remembered one.
#pragma once

#include <string>

#include "base/export.h"

namespace ParamHistTools {

// The names of those parameters as an SQL IN list: 'A','B','C' ("" when there are none).
VARION_API std::wstring GetNotUpdatableParametersList();
// False exactly for the names in that list.
VARION_API bool IsParameterUpdatable(const std::wstring& name);

}  // namespace ParamHistTools
