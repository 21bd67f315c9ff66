// The parameter window in a real window: what it draws (links in their colours on the tinted
// page), and a click or the keyboard following a link to the parameter's dialog.
#include <windows.h>

#include <gtest/gtest.h>

#include <vector>

#include "params/params_html_wnd_win.h"
#include "tests/win_support.h"

namespace {

using varion::testing::MakeParentWindow;
using varion::testing::PumpMessages;

struct Dialogs : varion::params::IParamDialogs {
  bool ShowParamDialog(const varion::params::ParamDialogRequest& r, ZEST_PARAMS& p, const varion::db::Connection&) override {
    opened.push_back(r.kind);
    ZestParams::ZestParamsWrapper(p).SetDisplayValue("Młyn Żytni").SetEmpty(false);
    return true;
  }
  std::vector<varion::params::ParamDialogKind> opened;
};

// The window's client area painted into a memory bitmap.
struct Painted {
  explicit Painted(HWND hwnd) {
    GetClientRect(hwnd, &rc);
    HDC screen = GetDC(nullptr);
    dc = CreateCompatibleDC(screen);
    bmp = CreateCompatibleBitmap(screen, rc.right, rc.bottom);
    ReleaseDC(nullptr, screen);
    old = SelectObject(dc, bmp);
    SendMessageW(hwnd, WM_PRINTCLIENT, reinterpret_cast<WPARAM>(dc), PRF_CLIENT);
  }
  ~Painted() { SelectObject(dc, old), DeleteObject(bmp), DeleteDC(dc); }
  int Count(const RECT& r, COLORREF color) const {
    int n = 0;
    for (int y = r.top; y < r.bottom; ++y)
      for (int x = r.left; x < r.right; ++x) n += GetPixel(dc, x, y) == color;
    return n;
  }
  RECT rc{};
  HDC dc;
  HBITMAP bmp;
  HGDIOBJ old;
};

TEST(ParamsWindow, DrawsLinksInTheirColoursAndFollowsClicksAndKeys) {
  auto parent = MakeParentWindow(640, 200);
  Dialogs dialogs;
  CParamsHtmlWnd view;
  view.SetDialogs(&dialogs);
  view.SetHighlight(true);
  view.SetColors("#1F3F9F", "#B02020");
  CArrZestParams& params = view.GetParams();
  params.Add(ZestParams::ZestParamsDate().SetLabel("Okres").SetDisplayValue("bieżący miesiąc").SetEmpty(false));
  params.Add(ZestParams::ZestParamsString().SetLabel("Ukryty").SetVisible(false));
  params.Add(ZestParams::ZestParamsSelectionDbObject().SetLabel("Kontrahent").SetStandard(false));
  params.Add(ZestParams::ZestParamsCurrency().SetLabel("Kwota").SetValueStr("10,00 zł").SetEmpty(false));
  ASSERT_TRUE(view.Create(parent.get(), {0, 0, 600, 120}, 100));
  PumpMessages(50);

  struct Link {
    const char* href;
    const char* text;
    COLORREF color;
  } links[] = {{"std://0", "bieżący miesiąc", RGB(0x1F, 0x3F, 0x9F)}, {"self://2", "(nie podano wartości)", RGB(0xB0, 0x20, 0x20)},
               {"std://3", "10,00 zł", RGB(0x1F, 0x3F, 0x9F)}};
  ASSERT_EQ(view.GetLinkCount(), 3);
  const Painted painted(view.GetSafeHwnd());
  const int height = painted.rc.bottom;
  EXPECT_EQ(GetPixel(painted.dc, 598, height - 2), RGB(0xFF, 0xFB, 0xF0));  // the tinted page
  RECT rects[3];
  for (int i = 0; i < 3; ++i) {
    SCOPED_TRACE(links[i].href);
    std::string href, text;
    ASSERT_TRUE(view.GetLink(i, rects[i], href, text));
    EXPECT_EQ(href + " " + text, std::string(links[i].href) + " " + links[i].text);
    // At least the underline is drawn in the link's colour, and nothing in the other link colour.
    EXPECT_GE(painted.Count(rects[i], links[i].color), rects[i].right - rects[i].left - 4);
    EXPECT_EQ(painted.Count(rects[i], links[i].color ^ RGB(0x1F, 0x3F, 0x9F) ^ RGB(0xB0, 0x20, 0x20)), 0);
  }

  // A click on the empty contractor opens its database list and the page shows the choice.
  const POINT c{(rects[1].left + rects[1].right) / 2, (rects[1].top + rects[1].bottom) / 2};
  SendMessageW(view.GetSafeHwnd(), WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(c.x, c.y));
  SendMessageW(view.GetSafeHwnd(), WM_LBUTTONUP, 0, MAKELPARAM(c.x, c.y));
  ASSERT_EQ(dialogs.opened.size(), 1u);
  EXPECT_EQ(dialogs.opened[0], varion::params::ParamDialogKind::ComboDb);
  RECT r;
  std::string href, text;
  ASSERT_TRUE(view.GetLink(1, r, href, text));
  EXPECT_EQ(text, "Młyn Żytni");
  EXPECT_EQ(GetFocus(), view.GetSafeHwnd());

  // Beside the links nothing opens. The focus stays on the clicked link; the arrows move it round
  // the links (second, third, first, back to third) and Enter opens that one.
  SendMessageW(view.GetSafeHwnd(), WM_LBUTTONUP, 0, MAKELPARAM(2, height - 2));
  EXPECT_EQ(dialogs.opened.size(), 1u);
  for (WPARAM key : {VK_RIGHT, VK_RIGHT, VK_LEFT, VK_RETURN})
    SendMessageW(view.GetSafeHwnd(), WM_KEYDOWN, key, 0);
  ASSERT_EQ(dialogs.opened.size(), 2u);
  EXPECT_EQ(dialogs.opened[1], varion::params::ParamDialogKind::Currency);
}

}  // namespace
