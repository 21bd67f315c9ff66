// Screenshots of the gallery's pages, copied from the screen as a person sees them and encoded by
// the platform's own image library (GDI+), so the project carries no image encoder of its own.
#pragma once

#include <windows.h>

#include <string>

namespace varion::demo {

// Saves the window, frame included, as a PNG file. False (with the reason on stderr) when the
// window is gone, the copy fails or GDI+ cannot write the file.
bool SaveWindowPng(HWND window, const std::wstring& path);

}  // namespace varion::demo
