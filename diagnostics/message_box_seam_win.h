// The one way the dialog framework asks the user something or tells them something in a box:
// the save prompt, dialog-level errors and help texts. The message-box subsystem replaces the
// system box here, and tests put an answering function in place, so that nothing ever waits for
// a person. A host that wants the library's own box here (its look, sized to long texts) calls
// CMB::InstallAsFrameworkMessageBox once (dialogs/customizable_message_box_win.h). It is not the
// default: the host chooses how its own questions look. Where that box cannot open, the system
// box answers instead, so that no question and no failure report is lost.
#pragma once

#include <windows.h>

#include <functional>
#include <string>

#include "base/export.h"

namespace varion {

// Texts are code page 1250; `type` takes the MB_* bits; the answer is an ID* value.
using FrameworkMessageBoxFn =
    std::function<int(HWND owner, const std::string& text, const std::string& caption, UINT type)>;

// Returns the function it replaces; an empty function restores the system box.
VARION_API FrameworkMessageBoxFn SetFrameworkMessageBox(FrameworkMessageBoxFn fn);
VARION_API int FrameworkMessageBox(HWND owner, const std::string& text, const std::string& caption, UINT type);
// The operating system's own box: what the seam shows when nothing is installed, and where an
// installed box turns when it cannot show itself.
VARION_API int SystemMessageBox(HWND owner, const std::string& text, const std::string& caption, UINT type);

}  // namespace varion
