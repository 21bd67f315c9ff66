// The window handle type for headers that compile without <windows.h>. It names the same type
// as <windows.h> does (a pointer to the opaque struct HWND__), so both may be included together;
// in the portable build it is only ever stored and compared.
#pragma once

struct HWND__;
typedef struct HWND__* HWND;
