#include "framework/extension_module_win.h"

#include <windows.h>
#include <commctrl.h>

#include "controls/locale_info_win.h"
#include "framework/hook_supp_win.h"

namespace varion {

bool InitExtensionModule() {
  InstallUserLocaleSource();
  // Tooltips (error balloons, info tips), date-time pickers, list views and sliders of the
  // exchange functions, and the standard classes the library copies.
  INITCOMMONCONTROLSEX icc{sizeof icc, ICC_WIN95_CLASSES | ICC_DATE_CLASSES | ICC_STANDARD_CLASSES};
  return InitCommonControlsEx(&icc) != FALSE;
}

void TermExtensionModule(bool processEnding) {
  // When the process ends, its threads are gone already and their hooks with them. When the
  // library is unloaded from a running process, threads that stay must lose the hooks that
  // point into it.
  if (processEnding) return;
  CHookSupp::RemoveAllUIHooks();
  CHookSupp::TermVelControls();
}

}  // namespace varion
