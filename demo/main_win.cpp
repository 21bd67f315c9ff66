// The gallery's main window: the page list on the left, the chosen page on the right. Without a
// display (VARION_HEADLESS set by scripts/wine-run) it shows each page in turn, saves a
// screenshot of it into the output folder and exits.
#include <windows.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>

#include "base/text.h"
#include "demo/gallery_win.h"
#include "demo/screenshot_win.h"
#include "framework/extension_module_win.h"

namespace varion::demo {
namespace {

constexpr int kListId = 10;
constexpr int kListWidth = 230;
const wchar_t kMainClass[] = L"VarionGalleryMain";
const wchar_t kPageClass[] = L"VarionGalleryPage";

struct Gallery {
  GalleryContext ctx;
  std::vector<std::unique_ptr<GalleryPage>> pages;
  HWND main = nullptr;
  HWND list = nullptr;
  HWND pageWindow = nullptr;
  int current = -1;
};
Gallery g_gallery;

void LayoutChildren() {
  RECT rc;
  GetClientRect(g_gallery.main, &rc);
  MoveWindow(g_gallery.list, 8, 8, kListWidth, rc.bottom - 16, TRUE);
  if (g_gallery.pageWindow)
    MoveWindow(g_gallery.pageWindow, kListWidth + 16, 8, rc.right - kListWidth - 24, rc.bottom - 16, TRUE);
}

void ShowPage(int index) {
  if (index < 0 || index >= static_cast<int>(g_gallery.pages.size()) || index == g_gallery.current) return;
  if (g_gallery.pageWindow) DestroyWindow(g_gallery.pageWindow);
  g_gallery.current = index;
  g_gallery.pageWindow = CreateWindowExW(WS_EX_CONTROLPARENT, kPageClass, L"", WS_CHILD | WS_VISIBLE | WS_CLIPCHILDREN,
                                         0, 0, 10, 10, g_gallery.main, nullptr, GetModuleHandleW(nullptr), nullptr);
  LayoutChildren();
  g_gallery.pages[static_cast<size_t>(index)]->Create(g_gallery.pageWindow, g_gallery.ctx);
  SendMessageW(g_gallery.list, LB_SETCURSEL, static_cast<WPARAM>(index), 0);
}

LRESULT CALLBACK PageProc(HWND h, UINT msg, WPARAM wp, LPARAM lp) {
  GalleryPage* page = g_gallery.current >= 0 ? g_gallery.pages[static_cast<size_t>(g_gallery.current)].get() : nullptr;
  if (page && msg == WM_COMMAND && page->OnCommand(h, LOWORD(wp), HIWORD(wp), reinterpret_cast<HWND>(lp))) return 0;
  if (page && msg == WM_NOTIFY) {
    LRESULT result = 0;
    if (page->OnNotify(h, *reinterpret_cast<const NMHDR*>(lp), result)) return result;
  }
  if (page && msg == WM_DESTROY) page->OnPageDestroyed();
  if (LRESULT result = 0; page && page->OnMessage(h, msg, wp, lp, result)) return result;
  if (msg == WM_CTLCOLORSTATIC) {
    SetBkMode(reinterpret_cast<HDC>(wp), TRANSPARENT);
    return reinterpret_cast<LRESULT>(GetSysColorBrush(COLOR_WINDOW));
  }
  return DefWindowProcW(h, msg, wp, lp);
}

LRESULT CALLBACK MainProc(HWND h, UINT msg, WPARAM wp, LPARAM lp) {
  switch (msg) {
    case WM_SIZE:
      if (g_gallery.list) LayoutChildren();
      return 0;
    case WM_COMMAND:
      if (LOWORD(wp) == kListId && HIWORD(wp) == LBN_SELCHANGE)
        ShowPage(static_cast<int>(SendMessageW(g_gallery.list, LB_GETCURSEL, 0, 0)));
      return 0;
    case WM_DESTROY:
      PostQuitMessage(0);
      return 0;
  }
  return DefWindowProcW(h, msg, wp, lp);
}

void Pump(DWORD ms) {
  const DWORD end = GetTickCount() + ms;
  for (;;) {
    MSG m;
    while (PeekMessageW(&m, nullptr, 0, 0, PM_REMOVE)) {
      TranslateMessage(&m);
      DispatchMessageW(&m);
    }
    DWORD now = GetTickCount();
    if (static_cast<LONG>(end - now) <= 0) break;
    MsgWaitForMultipleObjects(0, nullptr, FALSE, end - now, QS_ALLINPUT);
  }
}

std::wstring ArgValue(int argc, wchar_t** argv, const wchar_t* name, std::wstring fallback) {
  for (int i = 1; i + 1 < argc; ++i)
    if (wcscmp(argv[i], name) == 0) return argv[i + 1];
  return fallback;
}

}  // namespace

int RunGallery(int argc, wchar_t** argv) {
  g_gallery.ctx.outDir = ArgValue(argc, argv, L"--out", L"out\\demo");
  CreateDirectoryW(g_gallery.ctx.outDir.c_str(), nullptr);
  g_gallery.ctx.databasePath = g_gallery.ctx.outDir + L"\\varion-demo.db";

  NONCLIENTMETRICSW ncm{};
  ncm.cbSize = sizeof ncm;
  SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof ncm, &ncm, 0);
  g_gallery.ctx.font = CreateFontIndirectW(&ncm.lfMessageFont);
  ncm.lfMessageFont.lfWeight = FW_BOLD;
  g_gallery.ctx.boldFont = CreateFontIndirectW(&ncm.lfMessageFont);

  auto& registry = PageRegistry();
  std::stable_sort(registry.begin(), registry.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
  for (const auto& [order, factory] : registry) g_gallery.pages.push_back(factory());

  HINSTANCE inst = GetModuleHandleW(nullptr);
  WNDCLASSW wc{};
  wc.lpfnWndProc = MainProc;
  wc.hInstance = inst;
  wc.hCursor = LoadCursorW(nullptr, reinterpret_cast<LPCWSTR>(IDC_ARROW));
  wc.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_BTNFACE + 1);
  wc.lpszClassName = kMainClass;
  RegisterClassW(&wc);
  wc.lpfnWndProc = PageProc;
  wc.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_WINDOW + 1);
  wc.lpszClassName = kPageClass;
  RegisterClassW(&wc);

  g_gallery.main = CreateWindowExW(0, kMainClass, L"Varion \u2014 galeria kontrolek", WS_OVERLAPPEDWINDOW, 20, 20, 1100,
                                   720, nullptr, nullptr, inst, nullptr);
  g_gallery.list = CreateWindowExW(WS_EX_CLIENTEDGE, L"LISTBOX", L"",
                                   WS_CHILD | WS_VISIBLE | WS_VSCROLL | LBS_NOTIFY | LBS_NOINTEGRALHEIGHT, 0, 0, 10, 10,
                                   g_gallery.main, reinterpret_cast<HMENU>(kListId), inst, nullptr);
  SendMessageW(g_gallery.list, WM_SETFONT, reinterpret_cast<WPARAM>(g_gallery.ctx.font), TRUE);
  for (const auto& page : g_gallery.pages)
    SendMessageW(g_gallery.list, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(page->Title().c_str()));
  ShowWindow(g_gallery.main, SW_SHOW);
  LayoutChildren();
  ShowPage(0);

  int rc = 0;
  const wchar_t* headless = _wgetenv(L"VARION_HEADLESS");
  if (headless && *headless) {
    for (size_t i = 0; i < g_gallery.pages.size(); ++i) {
      ShowPage(static_cast<int>(i));
      Pump(150);
      g_gallery.pages[i]->Exercise(g_gallery.pageWindow);
      // A page with more than one state worth seeing gets one picture of each: NN-page.png,
      // NN-page-2.png...
      for (int shot = 1;; ++shot) {
        RedrawWindow(g_gallery.main, nullptr, nullptr, RDW_INVALIDATE | RDW_ALLCHILDREN | RDW_UPDATENOW | RDW_ERASE);
        Pump(300);
        wchar_t name[64];
        swprintf(name, 64, L"\\%02zu-", i + 1);
        std::wstring path = g_gallery.ctx.outDir + name + text::Cp1250ToWide(g_gallery.pages[i]->Slug());
        if (shot > 1) path += L"-" + std::to_wstring(shot);
        path += L".png";
        if (SaveWindowPng(g_gallery.main, path)) {
          std::printf("gallery: saved %ls\n", path.c_str());
        } else {
          std::printf("gallery: could not save %ls\n", path.c_str());
          rc = 1;
        }
        std::fflush(stdout);
        if (!g_gallery.pages[i]->NextShot(g_gallery.pageWindow, shot + 1)) break;
      }
    }
    DestroyWindow(g_gallery.main);
    Pump(0);
  } else {
    MSG m;
    while (GetMessageW(&m, nullptr, 0, 0) > 0) {
      if (!IsDialogMessageW(g_gallery.pageWindow, &m)) {
        TranslateMessage(&m);
        DispatchMessageW(&m);
      }
    }
  }
  g_gallery.pages.clear();
  DeleteObject(g_gallery.ctx.font);
  DeleteObject(g_gallery.ctx.boldFont);
  return rc;
}

}  // namespace varion::demo

int wmain(int argc, wchar_t** argv) {
  if (!varion::InitExtensionModule()) return 2;
  return varion::demo::RunGallery(argc, argv);
}
