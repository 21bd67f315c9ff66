// Helpers of the Windows test programs, in the manner of Wine's conformance tests: drain the
// message queue before asserting, record what a window receives, own every handle we create.
#pragma once

#include <windows.h>

#include <memory>
#include <string>
#include <type_traits>
#include <vector>

namespace varion::testing {

struct WindowDeleter {
  void operator()(HWND h) const {
    if (IsWindow(h)) DestroyWindow(h);
  }
};
using unique_hwnd = std::unique_ptr<std::remove_pointer_t<HWND>, WindowDeleter>;

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

// Subclasses a window (SetWindowSubclass) and records every message it receives before passing
// it on; WM_NOTIFY codes are kept in `notifications`. Removed in the destructor.
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
  static LRESULT CALLBACK Proc(HWND, UINT, WPARAM, LPARAM, UINT_PTR, DWORD_PTR);
  HWND m_window;
  std::vector<Recorded> m_messages;
};

// The folder of the running test program, as a Windows path with a trailing backslash.
std::wstring ProgramFolder();

}  // namespace varion::testing
