// What varion.dll does when a host loads and unloads it: the library's part of the start (the
// user's locale as CLocaleInfo's source, the common control classes its controls build on) and of
// the stop (its window classes go). Programs that link the library statically call it themselves.
#pragma once

#include "base/export.h"

namespace varion {

// False when the library cannot work in this process; the load then fails.
VARION_API bool InitExtensionModule();
// `processEnding`: the process is going away, so nothing but our own state is touched.
VARION_API void TermExtensionModule(bool processEnding);

}  // namespace varion
