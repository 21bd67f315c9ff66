// Text on the clipboard, as the library's controls put it there and read it back: Unicode text,
// handed over in code page 1250 like every other text of the library.
#pragma once

#include <windows.h>

#include <string>

#include "base/export.h"

namespace varion {

// Replaces the clipboard's contents with the text. False when the clipboard could not be opened
// or the memory not allocated.
VARION_API bool SetClipboardText(HWND owner, const std::string& text);
// The clipboard's text; false, and `text` empty, when it holds none.
VARION_API bool GetClipboardText(HWND owner, std::string& text);

}  // namespace varion
