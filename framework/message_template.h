// Message-style templates ("%1!ls!", "%1!ls! (%2!ls!)") that turn a row's fields into an item
// text. The portable formatter follows the platform's message formatter for the part of the
// syntax the fillers use: inserts %1..%99 of text arguments with an optional printf text format
// between exclamation marks, and the escapes %% %n %r %t %0 and "%" before a blank, a full stop
// or an exclamation mark.
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "base/export.h"

namespace varion {

// Formats `tmpl` with the arguments (code page 1250). False, with `out` unchanged, when the
// template is malformed, refers to an argument it was not given, or asks for a format other than
// text ("s", "ls", "ws" with optional '-' flag, width and precision): the platform formatter
// would read the argument as something it is not.
VARION_API bool FormatMessageTemplate(std::string_view tmpl, std::span<const std::string> args, std::string& out);

// The highest argument number the template refers to (0 for none), or -1 when it is malformed.
VARION_API int MessageTemplateArgCount(std::string_view tmpl);

}  // namespace varion
