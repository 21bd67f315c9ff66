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
    p.DisplayValue = "Młyn Żytni";
    p.Empty = false;
    return true;
  }
  std::vector<varion::params::ParamDialogKind> opened;
};

// The window's client area as the window paints it, pixel by pixel (0x00RRGGBB).
std::vector<std::uint32_t> Capture(HWND hwnd, int& width, int& height) {
  RECT rc;
  GetClientRect(hwnd, &rc);
  width = rc.right;
  height = rc.bottom;
  BITMAPINFO bi{};
  bi.bmiHeader.biSize = sizeof(BITMAPINFOHEADER);
  bi.bmiHeader.biWidth = width;
  bi.bmiHeader.biHeight = -height;  // top row first
  bi.bmiHeader.biPlanes = 1;
  bi.bmiHeader.biBitCount = 32;
  bi.bmiHeader.biCompression = BI_RGB;
  void* bits = nullptr;
  HDC screen = GetDC(nullptr);
  HDC dc = CreateCompatibleDC(screen);
  HBITMAP bmp = CreateDIBSection(screen, &bi, DIB_RGB_COLORS, &bits, nullptr, 0);
  HGDIOBJ old = SelectObject(dc, bmp);
  SendMessageW(hwnd, WM_PRINTCLIENT, reinterpret_cast<WPARAM>(dc), PRF_CLIENT);
  GdiFlush();
  const auto* px = static_cast<const std::uint32_t*>(bits);
  std::vector<std::uint32_t> out(px, px + width * height);
  SelectObject(dc, old);
  DeleteObject(bmp);
  DeleteDC(dc);
  ReleaseDC(nullptr, screen);
  for (auto& p : out) p &= 0xFFFFFF;
  return out;
}

int CountIn(const std::vector<std::uint32_t>& px, int width, const RECT& r, std::uint32_t rgb) {
  int n = 0;
  for (int y = r.top; y < r.bottom; ++y)
    for (int x = r.left; x < r.right; ++x) n += px[y * width + x] == rgb;
  return n;
}

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
    std::uint32_t rgb;
  } links[] = {{"std://0", "bieżący miesiąc", 0x1F3F9F}, {"self://2", "(nie podano wartości)", 0xB02020},
               {"std://3", "10,00 zł", 0x1F3F9F}};
  ASSERT_EQ(view.GetLinkCount(), 3);
  int width = 0, height = 0;
  const auto px = Capture(view.GetSafeHwnd(), width, height);
  ASSERT_EQ(width, 600);
  EXPECT_EQ(px[(height - 2) * width + width - 2], 0xFFFBF0u);  // the tinted page
  RECT rects[3];
  for (int i = 0; i < 3; ++i) {
    SCOPED_TRACE(links[i].href);
    std::string href, text;
    ASSERT_TRUE(view.GetLink(i, rects[i], href, text));
    EXPECT_EQ(href, links[i].href);
    EXPECT_EQ(text, links[i].text);
    // At least the underline is drawn in the link's colour, and nothing in the other link colour.
    EXPECT_GE(CountIn(px, width, rects[i], links[i].rgb), rects[i].right - rects[i].left - 4);
    EXPECT_EQ(CountIn(px, width, rects[i], links[i].rgb ^ 0x1F3F9F ^ 0xB02020), 0);
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
