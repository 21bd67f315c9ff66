// Helpers of the Windows test programs, in the manner of Wine's conformance tests: drain the
// message queue before asserting, record what a window receives, own every handle we create.
#pragma once

#include <windows.h>

#include <memory>
#include <string>
#include <type_traits>
#include <vector>

#include "base/handles_win.h"

namespace varion::testing {

using unique_hwnd = varion::unique_window;

// Processes every pending message, then waits up to `ms` for more and processes those too.
void PumpMessages(DWORD ms = 0);

// Registers a plain top-level window class once and makes a visible parent for controls.
unique_hwnd MakeParentWindow(int width = 400, int height = 300);

// Text of a window through WM_GETTEXT, as the code page 1250 bytes an ANSI caller sees.
std::string GetTextA(HWND h);

// One message a recorder saw.
struct Recorded {
  UINT message;
  WPARAM wParam;
  LPARAM lParam;
};

// Puts itself in front of a window's procedure (as Wine's conformance tests do) and records
// every message the window receives before passing it on; WM_NOTIFY codes are kept as the
// lParam. Taken out again in the destructor.
class MessageRecorder {
 public:
  explicit MessageRecorder(HWND window);
  ~MessageRecorder();
  MessageRecorder(const MessageRecorder&) = delete;
  MessageRecorder& operator=(const MessageRecorder&) = delete;

  const std::vector<Recorded>& Messages() const { return m_messages; }
  std::vector<UINT> NotificationCodes() const;
  int Count(UINT message) const;
  void Clear() { m_messages.clear(); }

 private:
  static LRESULT CALLBACK Proc(HWND, UINT, WPARAM, LPARAM);
  HWND m_window;
  WNDPROC m_previous = nullptr;
  std::vector<Recorded> m_messages;
};

// The folder of the running test program, as a Windows path with a trailing backslash.
std::wstring ProgramFolder();

}  // namespace varion::testing
