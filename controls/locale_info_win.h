// The Windows source of the user default locale: the library installs it when it starts, so that
// CLocaleInfo reads GetLocaleInfoA without the portable code referring to Windows.
#pragma once

#include "base/export.h"

namespace varion {

// Makes GetLocaleInfoA(LOCALE_USER_DEFAULT) the user-locale source and re-reads CLocaleInfo.
VARION_API void InstallUserLocaleSource();

}  // namespace varion
