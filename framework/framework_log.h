// Where the dialog framework reports what it had to skip (a corrupt configuration stream, a
// placement it could not use). The logging subsystem plugs in here; until then, and whenever
// nothing is plugged in, entries go to the debugger output on Windows and to stderr elsewhere.
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
