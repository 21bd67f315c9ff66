#include "framework/errors_wnd_win.h"

#include "base/text.h"
#include "framework/exchange_rules.h"
#include "framework/library_module_win.h"

namespace {

const wchar_t kClass[] = L"VarionErrorsWnd";
constexpr int kListId = 1;

}  // namespace

CErrorsWnd::~CErrorsWnd() { Destroy(); }

bool CErrorsWnd::Create(HWND owner, int width, int height) {
  if (Exists()) return true;
  WNDCLASSW wc{};
  if (!GetClassInfoW(varion::LibraryModule(), kClass, &wc)) {
    wc.lpfnWndProc = WndProc;
    wc.hInstance = varion::LibraryModule();
    wc.hCursor = LoadCursorW(nullptr, reinterpret_cast<LPCWSTR>(IDC_ARROW));
    wc.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_BTNFACE + 1);
    wc.lpszClassName = kClass;
    RegisterClassW(&wc);
  }
  m_hwnd =
      CreateWindowExW(WS_EX_TOOLWINDOW, kClass, varion::text::Cp1250ToWide(varion::msg::kErrorsWindowTitle).c_str(),
                      WS_POPUP | WS_CAPTION | WS_THICKFRAME | WS_SYSMENU, 0, 0, width, height, owner, nullptr,
                      varion::LibraryModule(), this);
  return m_hwnd != nullptr;
}

void CErrorsWnd::Destroy() {
  if (Exists()) DestroyWindow(m_hwnd);
  m_hwnd = m_list = nullptr;
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

LRESULT CALLBACK CErrorsWnd::WndProc(HWND h, UINT msg, WPARAM wp, LPARAM lp) {
  if (msg == WM_NCCREATE) {
    auto* self = static_cast<CErrorsWnd*>(reinterpret_cast<CREATESTRUCTW*>(lp)->lpCreateParams);
    self->m_hwnd = h;
    SetWindowLongPtrW(h, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(self));
  }
  auto* self = reinterpret_cast<CErrorsWnd*>(GetWindowLongPtrW(h, GWLP_USERDATA));
  if (!self) return DefWindowProcW(h, msg, wp, lp);
  if (msg == WM_NCDESTROY) {
    SetWindowLongPtrW(h, GWLP_USERDATA, 0);
    self->m_hwnd = self->m_list = nullptr;
    return DefWindowProcW(h, msg, wp, lp);
  }
  return self->Handle(msg, wp, lp);
}

LRESULT CErrorsWnd::Handle(UINT msg, WPARAM wp, LPARAM lp) {
  switch (msg) {
    case WM_CREATE: {
      m_list = CreateWindowExW(0, L"LISTBOX", L"",
                               WS_CHILD | WS_VISIBLE | WS_VSCROLL | WS_HSCROLL | LBS_NOTIFY | LBS_NOINTEGRALHEIGHT, 0,
                               0, 10, 10, m_hwnd, reinterpret_cast<HMENU>(kListId), varion::LibraryModule(), nullptr);
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
      ShowWindow(m_hwnd, SW_HIDE);  // closing only hides: the next errors show it again
      return 0;
    case WM_EXITSIZEMOVE:
      if (onMoved) onMoved();
      return 0;
  }
  return DefWindowProcW(m_hwnd, msg, wp, lp);
}
