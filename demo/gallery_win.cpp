#include "demo/gallery_win.h"

#include "base/text.h"

namespace varion::demo {

std::vector<std::pair<int, PageFactory>>& PageRegistry() {
  static std::vector<std::pair<int, PageFactory>> registry;
  return registry;
}

namespace {

HWND AddChild(HWND parent, const GalleryContext& ctx, const wchar_t* cls, DWORD style, DWORD exStyle, int id, int x,
              int y, int w, int h, const std::string& text, bool bold) {
  HWND h2 = CreateWindowExW(exStyle, cls, text::Cp1250ToWide(text).c_str(), WS_CHILD | WS_VISIBLE | style, x, y, w, h,
                            parent, reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), GetModuleHandleW(nullptr),
                            nullptr);
  SendMessageW(h2, WM_SETFONT, reinterpret_cast<WPARAM>(bold ? ctx.boldFont : ctx.font), TRUE);
  return h2;
}

}  // namespace

HWND AddLabel(HWND parent, const GalleryContext& ctx, int x, int y, int w, int h, const std::string& text, bool bold) {
  return AddChild(parent, ctx, L"STATIC", SS_LEFT | SS_NOPREFIX, 0, -1, x, y, w, h, text, bold);
}

HWND AddEdit(HWND parent, const GalleryContext& ctx, int id, int x, int y, int w, int h, const std::string& text,
             DWORD extraStyle) {
  return AddChild(parent, ctx, L"EDIT", WS_TABSTOP | ES_AUTOHSCROLL | extraStyle, WS_EX_CLIENTEDGE, id, x, y, w, h,
                  text, false);
}

HWND AddButton(HWND parent, const GalleryContext& ctx, int id, int x, int y, int w, int h, const std::string& text) {
  return AddChild(parent, ctx, L"BUTTON", WS_TABSTOP | BS_PUSHBUTTON, 0, id, x, y, w, h, text, false);
}

void SetText(HWND window, const std::string& text) { SetWindowTextW(window, text::Cp1250ToWide(text).c_str()); }

std::string GetText(HWND window) {
  int n = GetWindowTextLengthW(window);
  std::wstring w(static_cast<size_t>(n) + 1, L'\0');
  GetWindowTextW(window, w.data(), n + 1);
  w.resize(static_cast<size_t>(n));
  return text::WideToCp1250(w);
}

}  // namespace varion::demo
