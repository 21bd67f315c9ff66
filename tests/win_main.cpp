// Entry point of every Windows test program: the library started as varion.dll starts it, and
// COM ready, before any test.
#include <windows.h>
#include <objbase.h>

#include <gtest/gtest.h>

#include <cstdio>

#include "framework/extension_module_win.h"

int main(int argc, char** argv) {
  if (!varion::InitExtensionModule()) {
    std::fprintf(stderr, "varion: InitExtensionModule failed\n");
    return 2;
  }
  CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
  // Message boxes must never wait for a person: error pop-ups of the system are off.
  SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX);
  ::testing::InitGoogleTest(&argc, argv);
  int rc = RUN_ALL_TESTS();
  CoUninitialize();
  return rc;
}
