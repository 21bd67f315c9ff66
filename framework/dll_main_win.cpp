// Entry point of varion.dll: the library starts with the process that loads it, hooks every
// user-interface thread that attaches, and stops with the process.
#include <windows.h>

#include "framework/extension_module_win.h"
#include "framework/error_informator_win.h"
#include "framework/hook_supp_win.h"

BOOL WINAPI DllMain(HINSTANCE, DWORD reason, LPVOID reserved) {
  switch (reason) {
    case DLL_PROCESS_ATTACH:
      return varion::InitExtensionModule() ? TRUE : FALSE;
    case DLL_PROCESS_DETACH:
      varion::TermExtensionModule(reserved != nullptr);
      CVelErrorInformator::Free();
      break;
    case DLL_THREAD_ATTACH:
      CHookSupp::InstallUIHook();
      break;
    case DLL_THREAD_DETACH:
      CHookSupp::RemoveUIHook();
      break;
  }
  return TRUE;
}
