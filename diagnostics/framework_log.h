// Where the dialog framework reports what it had to skip (a corrupt configuration stream, a
// placement it could not use, a failure in a dialog's handler). By default an entry goes to the
// running instance's database log (SimpleLog, as a warning under the area "Varion.Framework",
// written when the instance's log switch is on) and to the debugger output on Windows or stderr
// elsewhere; tests and hosts may put a sink of their own in place.
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "base/export.h"

namespace varion {

using FrameworkLogSink = std::function<void(std::string_view area, std::string_view text)>;

// Returns the sink it replaces; an empty function restores the default.
VARION_API FrameworkLogSink SetFrameworkLogSink(FrameworkLogSink sink);
VARION_API void FrameworkLog(std::string_view area, std::string_view text);

}  // namespace varion
