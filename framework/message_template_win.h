// The platform's message formatter (FormatMessageW) over the same templates and arguments as the
// portable one; the Windows fillers format their item texts through it.
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "base/export.h"

namespace varion {

// False, with `out` unchanged, for the templates the portable formatter refuses (they would make
// FormatMessageW read an argument that is not a text) and when the formatter fails.
VARION_API bool PlatformFormatMessage(std::string_view tmpl, std::span<const std::string> args, std::string& out);

}  // namespace varion
