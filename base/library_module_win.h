// The module whose resources the library reads: varion.dll inside the DLL, the program itself
// when the window code is linked statically (tests, gallery). Every resource lookup goes
// through here, so templates and strings are found the same way in both builds.
#pragma once

#include <windows.h>

#include <string>

#include "base/export.h"

namespace varion {

VARION_API HINSTANCE LibraryModule();

// A resource of the library's module, else of the program's; nullptr when neither has it.
// `module` receives the module that holds it.
VARION_API HRSRC FindLibraryResource(LPCWSTR name, LPCWSTR type, HMODULE* module);

// A string resource as code page 1250 text, looked up like FindLibraryResource; empty when
// missing.
VARION_API std::string LoadResourceString(UINT id);

}  // namespace varion
