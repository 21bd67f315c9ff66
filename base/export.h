// VARION_API marks what the DLL exports. Inside the static core and the tests it is empty;
// a host that includes our headers and links varion.dll gets dllimport.
#pragma once

#if defined(_WIN32) && !defined(VARION_STATIC)
#if defined(VARION_BUILDING_DLL)
#define VARION_API __declspec(dllexport)
#else
#define VARION_API __declspec(dllimport)
#endif
#else
#define VARION_API
#endif
