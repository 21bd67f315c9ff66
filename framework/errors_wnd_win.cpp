#include "framework/errors_wnd_win.h"

#include "base/text.h"
#include "framework/exchange_rules.h"
#include "base/library_module_win.h"

namespace {

const wchar_t kClass[] = L"VarionErrorsWnd";
constexpr int kListId = 1;

}  // namespace

CErrorsWnd::~CErrorsWnd() { Destroy(); }

bool CErrorsWnd::Create(HWND owner, int width, int height) {
  if (Exists()) return true;
  if (!RegisterWindowClass(kClass, 0, reinterpret_cast<HBRUSH>(COLOR_BTNFACE + 1))) return false;
  return CreateWindowOf(WS_EX_TOOLWINDOW, kClass, varion::text::Cp1250ToWide(varion::msg::kErrorsWindowTitle).c_str(),
                        WS_POPUP | WS_CAPTION | WS_THICKFRAME | WS_SYSMENU, RECT{0, 0, width, height}, owner, 0,
                        varion::LibraryModule()) != nullptr;
}

void CErrorsWnd::Destroy() {
  if (Exists()) DestroyWindow(m_hWnd);
  m_list = nullptr;
}

void CErrorsWnd::SetLines(const std::vector<std::string>& lines) {
  if (!m_list) return;
  SendMessageW(m_list, LB_RESETCONTENT, 0, 0);
  for (const auto& line : lines)
    SendMessageW(m_list, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(varion::text::Cp1250ToWide(line).c_str()));
}

std::vector<std::string> CErrorsWnd::GetLines() const {
  std::vector<std::string> out;
  if (!m_list) return out;
  const LRESULT n = SendMessageW(m_list, LB_GETCOUNT, 0, 0);
  for (LRESULT i = 0; i < n; ++i) {
    std::wstring w(static_cast<size_t>(SendMessageW(m_list, LB_GETTEXTLEN, static_cast<WPARAM>(i), 0)) + 1, L'\0');
    SendMessageW(m_list, LB_GETTEXT, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(w.data()));
    w.resize(wcslen(w.c_str()));
    out.push_back(varion::text::WideToCp1250(w));
  }
  return out;
}

LRESULT CErrorsWnd::WindowProc(UINT msg, WPARAM wp, LPARAM lp) {
  switch (msg) {
    case WM_CREATE: {
      m_list = CreateWindowExW(0, L"LISTBOX", L"",
                               WS_CHILD | WS_VISIBLE | WS_VSCROLL | WS_HSCROLL | LBS_NOTIFY | LBS_NOINTEGRALHEIGHT, 0,
                               0, 10, 10, m_hWnd, reinterpret_cast<HMENU>(kListId), varion::LibraryModule(), nullptr);
      SendMessageW(m_list, WM_SETFONT, reinterpret_cast<WPARAM>(GetStockObject(DEFAULT_GUI_FONT)), FALSE);
      return 0;
    }
    case WM_SIZE:
      MoveWindow(m_list, 0, 0, LOWORD(lp), HIWORD(lp), TRUE);
      return 0;
    case WM_SETFOCUS:
      SetFocus(m_list);
      return 0;
    case WM_COMMAND:
      if (LOWORD(wp) == kListId && HIWORD(wp) == LBN_DBLCLK && onChoose) {
        const LRESULT sel = SendMessageW(m_list, LB_GETCURSEL, 0, 0);
        if (sel != LB_ERR) onChoose(static_cast<int>(sel));
      }
      return 0;
    case WM_CLOSE:
      ShowWindow(m_hWnd, SW_HIDE);  // closing only hides: the next errors show it again
      return 0;
    case WM_EXITSIZEMOVE:
      if (onMoved) onMoved();
      return 0;
  }
  return Default(msg, wp, lp);
}
