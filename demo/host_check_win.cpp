// A host application in miniature: links varion.dll through its import library, as the business
// applications do, and calls exported functions. Exit code 0 when every answer is right.
#include <windows.h>

#include <cstdio>
#include <thread>

#include "base/amount.h"
#include "base/sql_literal.h"
#include "base/text.h"
#include "framework/hook_supp_win.h"
#include "controls/vel_controls_win.h"

namespace {

// Whether a window of the class, made on this thread, gets its control object.
bool AttachedOnCreate(const wchar_t* cls) {
  HWND h = CreateWindowExW(0, cls, L"", WS_POPUP, 0, 0, 80, 20, nullptr, nullptr, nullptr, nullptr);
  const bool attached = CVelControlBase::FromHandle(h) != nullptr;
  DestroyWindow(h);
  return attached;
}

}  // namespace

int main() {
  int failures = 0, checks = 0;
  auto check = [&](bool ok, const char* what) {
    std::printf("%s: %s\n", ok ? "ok" : "FAILED", what);
    failures += !ok;
    ++checks;
  };
  check(varion::SqlOkString("O'Brien") == "O''Brien", "SqlOkString through the DLL");
  check(varion::SqlOkCurrency(-125000) == "-12.5", "SqlOkCurrency through the DLL");
  check(varion::text::Cp1250ToUtf16("\xA3") == u"\u0141", "code page conversion through the DLL");
  check(varion::Amount::Parse("1 234,5", varion::NumberFormat{}).Raw() == 12345000, "Amount::Parse through the DLL");

  // The library's classes and hook, as a host starts them: threads that attach before the
  // library is initialised get no hook; after it, every attaching thread is hooked by the DLL.
  bool early = true;
  std::thread([&] { early = CHookSupp::IsUIHookInstalled(); }).join();
  check(!early, "no hook on a thread attached before initialisation");
  CHookSupp::InitVXAXVelControls(nullptr);
  WNDCLASSEXW wc{};
  wc.cbSize = sizeof wc;
  check(GetClassInfoExW(GetModuleHandleW(L"varion.dll"), L"vel_curredit", &wc) != 0,
        "classes registered with the DLL's instance");
  check(!AttachedOnCreate(L"vel_curredit"), "the main thread has no hook until the host installs it");
  CHookSupp::InstallUIHook();
  check(AttachedOnCreate(L"vel_curredit"), "a control object on the main thread after InstallUIHook");
  bool hooked = false, attached = false;
  std::thread([&] {
    hooked = CHookSupp::IsUIHookInstalled();
    attached = AttachedOnCreate(L"DropdownCombobox");
  }).join();
  check(hooked && attached, "a new thread is hooked by the DLL's thread attach");
  std::printf("%d passed, %d failed\n", checks - failures, failures);
  return failures == 0 ? 0 : 1;
}
