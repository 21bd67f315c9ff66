// Entry point of every Windows test program: common controls and COM ready before any test.
#include <windows.h>
#include <commctrl.h>
#include <objbase.h>

#include <gtest/gtest.h>

int main(int argc, char** argv) {
  INITCOMMONCONTROLSEX icc{sizeof icc, ICC_WIN95_CLASSES | ICC_DATE_CLASSES | ICC_STANDARD_CLASSES};
  InitCommonControlsEx(&icc);
  CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
  // Message boxes must never wait for a person: error pop-ups of the system are off.
  SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX);
  ::testing::InitGoogleTest(&argc, argv);
  int rc = RUN_ALL_TESTS();
  CoUninitialize();
  return rc;
}
