#include "tests/win_support.h"

#include <map>

#include <commctrl.h>

namespace varion::testing {

void PumpMessages(DWORD ms) {
  const DWORD end = GetTickCount() + ms;
  for (;;) {
    MSG msg;
    while (PeekMessageW(&msg, nullptr, 0, 0, PM_REMOVE)) {
      TranslateMessage(&msg);
      DispatchMessageW(&msg);
    }
    DWORD now = GetTickCount();
    if (static_cast<LONG>(end - now) <= 0) break;
    MsgWaitForMultipleObjects(0, nullptr, FALSE, end - now, QS_ALLINPUT);
  }
}

unique_hwnd MakeParentWindow(int width, int height) {
  static const wchar_t kClass[] = L"VarionTestParent";
  static bool registered = [] {
    WNDCLASSW wc{};
    wc.lpfnWndProc = DefWindowProcW;
    wc.hInstance = GetModuleHandleW(nullptr);
    wc.hCursor = LoadCursorW(nullptr, reinterpret_cast<LPCWSTR>(IDC_ARROW));
    wc.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_BTNFACE + 1);
    wc.lpszClassName = kClass;
    return RegisterClassW(&wc) != 0;
  }();
  if (!registered) return nullptr;
  HWND h = CreateWindowExW(0, kClass, L"test", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 10, 10, width, height, nullptr,
                           nullptr, GetModuleHandleW(nullptr), nullptr);
  PumpMessages();
  return unique_hwnd(h);
}

std::string GetTextA(HWND h) {
  int len = static_cast<int>(SendMessageA(h, WM_GETTEXTLENGTH, 0, 0));
  std::string s(static_cast<size_t>(len) + 1, '\0');
  int got = static_cast<int>(SendMessageA(h, WM_GETTEXT, s.size(), reinterpret_cast<LPARAM>(s.data())));
  s.resize(static_cast<size_t>(got));
  return s;
}

namespace {
std::map<HWND, MessageRecorder*> g_recorders;
}

MessageRecorder::MessageRecorder(HWND window) : m_window(window) {
  g_recorders[window] = this;
  m_previous =
      reinterpret_cast<WNDPROC>(SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&MessageRecorder::Proc)));
}

MessageRecorder::~MessageRecorder() {
  if (IsWindow(m_window) &&
      reinterpret_cast<WNDPROC>(GetWindowLongPtrW(m_window, GWLP_WNDPROC)) == &MessageRecorder::Proc)
    SetWindowLongPtrW(m_window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(m_previous));
  g_recorders.erase(m_window);
}

LRESULT CALLBACK MessageRecorder::Proc(HWND h, UINT msg, WPARAM wp, LPARAM lp) {
  MessageRecorder* rec = g_recorders.at(h);
  rec->m_messages.push_back({msg, wp, msg == WM_NOTIFY ? static_cast<LPARAM>(reinterpret_cast<NMHDR*>(lp)->code) : lp});
  return CallWindowProcW(rec->m_previous, h, msg, wp, lp);
}

std::vector<UINT> MessageRecorder::NotificationCodes() const {
  std::vector<UINT> codes;
  for (const auto& m : m_messages)
    if (m.message == WM_NOTIFY) codes.push_back(static_cast<UINT>(m.lParam));
  return codes;
}

int MessageRecorder::Count(UINT message) const {
  int n = 0;
  for (const auto& m : m_messages) n += m.message == message;
  return n;
}

std::wstring ProgramFolder() {
  wchar_t path[MAX_PATH];
  DWORD n = GetModuleFileNameW(nullptr, path, MAX_PATH);
  std::wstring s(path, n);
  return s.substr(0, s.find_last_of(L"\\/") + 1);
}

}  // namespace varion::testing
