// The small controls in real windows: what a click, Space and Enter send to the parent, the
// action buttons' tooltips, the link's address and the combo link's choice, and what the panels
// and the pie paint.
#include <windows.h>
#include <commctrl.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "base/handles_win.h"
#include "base/text.h"
#include "controls/ident_edit_win.h"
#include "controls/small_controls_win.h"
#include "tests/win_support.h"

namespace varion {
namespace {

using testing::PumpMessages;
using testing::unique_hwnd;

constexpr COLORREF kParentColour = RGB(10, 200, 30);

// What the parent heard: WM_COMMAND notifications with the control that sent them.
struct Heard {
  int id;
  int code;
  HWND control;
};
std::vector<Heard> g_heard;

LRESULT CALLBACK ParentProc(HWND h, UINT msg, WPARAM wp, LPARAM lp) {
  if (msg == WM_COMMAND) {
    g_heard.push_back({LOWORD(wp), HIWORD(wp), reinterpret_cast<HWND>(lp)});
    return 0;
  }
  if (msg == WM_CTLCOLORSTATIC) {
    static const unique_brush brush(CreateSolidBrush(kParentColour));
    return reinterpret_cast<LRESULT>(brush.get());
  }
  return DefWindowProcW(h, msg, wp, lp);
}

class SmallControlsTest : public ::testing::Test {
 protected:
  static void SetUpTestSuite() {
    WNDCLASSW wc{};
    wc.lpfnWndProc = ParentProc;
    wc.hInstance = GetModuleHandleW(nullptr);
    wc.lpszClassName = L"SmallControlsParent";
    RegisterClassW(&wc);
    for (const wchar_t* name : {L"vel_addbtn", L"vel_editbtn", L"vel_listbtn", L"vel_deletebtn", L"vel_bmpbutton",
                                L"vel_hyperlink", L"vel_combohyperlink", L"vel_combohyperlinkex", L"vel_infoframe",
                                L"vel_bkgnd", L"vel_piepercent"})
      Window::RegisterWindowClass(name, CS_DBLCLKS | CS_GLOBALCLASS);
  }
  void SetUp() override {
    g_heard.clear();
    m_parent.reset(CreateWindowExW(0, L"SmallControlsParent", L"test", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 10, 10, 500,
                                   300, nullptr, nullptr, GetModuleHandleW(nullptr), nullptr));
    ASSERT_TRUE(m_parent);
    SetForegroundWindow(m_parent.get());
  }
  void TearDown() override {
    SetShellOpenHook(nullptr);
    SetChoiceMenuHook(nullptr);
  }

  // A window of the class with its object attached as the creation hook attaches it.
  HWND Make(const wchar_t* cls, BOOL (*attach)(HWND, CREATESTRUCTW*), const wchar_t* text = L"", int w = 100,
            int h = 40) {
    m_controls.emplace_back(CreateWindowExW(0, cls, text, WS_CHILD | WS_VISIBLE | WS_TABSTOP, 10, 10, w, h,
                                            m_parent.get(), reinterpret_cast<HMENU>(55), nullptr, nullptr));
    HWND window = m_controls.back().get();
    EXPECT_TRUE(attach(window, nullptr));
    PumpMessages();
    return window;
  }
  int Clicks(HWND control) const {
    int n = 0;
    for (const Heard& h : g_heard) n += h.id == 55 && h.code == BN_CLICKED && h.control == control;
    return n;
  }

  unique_hwnd m_parent;
  std::vector<unique_hwnd> m_controls;
};

// Every way of pressing a button, and the ways that are no press.
TEST_F(SmallControlsTest, ButtonsClickOnMouseSpaceAndEnter) {
  const struct {
    const char* what;
    void (*act)(HWND);
    int clicks;
  } actions[] = {
      {"mouse down and up inside",
       [](HWND b) {
         SendMessageW(b, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(5, 5));
         SendMessageW(b, WM_LBUTTONUP, 0, MAKELPARAM(6, 6));
       },
       1},
      {"released outside",
       [](HWND b) {
         SendMessageW(b, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(5, 5));
         SendMessageW(b, WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(300, 5));
         SendMessageW(b, WM_LBUTTONUP, 0, MAKELPARAM(300, 5));
       },
       0},
      {"up without down", [](HWND b) { SendMessageW(b, WM_LBUTTONUP, 0, MAKELPARAM(5, 5)); }, 0},
      {"space",
       [](HWND b) {
         SendMessageW(b, WM_KEYDOWN, VK_SPACE, 1);
         SendMessageW(b, WM_KEYUP, VK_SPACE, 1);
       },
       1},
      {"space released after the focus left",
       [](HWND b) {
         SendMessageW(b, WM_KEYDOWN, VK_SPACE, 1);
         SetFocus(GetParent(b));
         SendMessageW(b, WM_KEYUP, VK_SPACE, 1);
       },
       0},
      {"enter", [](HWND b) { SendMessageW(b, WM_KEYDOWN, VK_RETURN, 1); }, 1},
      {"disabled",
       [](HWND b) {
         EnableWindow(b, FALSE);
         SendMessageW(b, WM_KEYDOWN, VK_RETURN, 1);
         EnableWindow(b, TRUE);
       },
       0},
  };
  const struct {
    const wchar_t* cls;
    BOOL (*attach)(HWND, CREATESTRUCTW*);
  } kinds[] = {{L"vel_addbtn", CVelActionButton::AttachCreating},
               {L"vel_deletebtn", CVelActionButton::AttachCreating},
               {L"vel_bmpbutton", CVelBmpButton::AttachCreating},
               {L"vel_hyperlink", CVelHyperlink::AttachCreating}};
  for (const auto& k : kinds) {
    HWND button = Make(k.cls, k.attach);
    for (const auto& a : actions) {
      SCOPED_TRACE(text::WideToCp1250(k.cls) + ": " + a.what);
      SetFocus(button);
      g_heard.clear();
      a.act(button);
      PumpMessages();
      EXPECT_EQ(Clicks(button), a.clicks);
    }
    // In a dialog, Enter on the focused button is the button's, not the default button's.
    MSG enter{button, WM_KEYDOWN, VK_RETURN, 1, 0, {}};
    EXPECT_TRUE(SendMessageW(button, WM_GETDLGCODE, VK_RETURN, reinterpret_cast<LPARAM>(&enter)) & DLGC_WANTMESSAGE);
  }
}

TEST_F(SmallControlsTest, ActionButtonsCarryTheirTooltips) {
  const struct {
    const wchar_t* cls;
    CVelActionButton::Action action;
    const char* tip;
  } cases[] = {{L"vel_addbtn", CVelActionButton::kAdd, "Dodaj"},
               {L"vel_editbtn", CVelActionButton::kEdit, "Edytuj"},
               {L"vel_listbtn", CVelActionButton::kList, "Lista"},
               {L"vel_deletebtn", CVelActionButton::kDelete, "Usuń"}};
  for (const auto& c : cases) {
    SCOPED_TRACE(c.tip);
    HWND button = Make(c.cls, CVelActionButton::AttachCreating);
    const CVelActionButton* object = CVelActionButton::FromHandle(button);
    ASSERT_NE(object, nullptr);
    EXPECT_EQ(object->GetAction(), c.action);
    ASSERT_NE(object->GetTooltip(), nullptr);
    wchar_t buffer[80] = {};
    TOOLINFOW ti{};
    ti.cbSize = sizeof ti;
    ti.hwnd = m_parent.get();
    ti.uId = reinterpret_cast<UINT_PTR>(button);
    ti.lpszText = buffer;
    SendMessageW(object->GetTooltip(), TTM_GETTEXTW, std::size(buffer), reinterpret_cast<LPARAM>(&ti));
    EXPECT_EQ(text::WideToCp1250(buffer), c.tip);
  }
  // Another class name gets no action button.
  unique_hwnd other(CreateWindowExW(0, L"vel_bkgnd", L"", WS_CHILD, 0, 0, 10, 10, m_parent.get(), nullptr, nullptr,
                                    nullptr));
  EXPECT_FALSE(CVelActionButton::AttachCreating(other.get(), nullptr));
}

TEST_F(SmallControlsTest, LinkOpensOnlyCheckedAddresses) {
  std::vector<std::string> opened;
  SetShellOpenHook([&](HWND, const std::string& a) { opened.push_back(a); });
  HWND link = Make(L"vel_hyperlink", CVelHyperlink::AttachCreating, L"Strona");
  auto* object = CVelHyperlink::FromHandle(link);
  const struct {
    const char* address;
    bool kept;
    const char* opens;
  } cases[] = {{"www.firma.pl", true, "http://www.firma.pl"},
               {"mailto:biuro@firma.pl", true, "mailto:biuro@firma.pl"},
               {"file:///C:/Windows/notepad.exe", false, nullptr},
               {"javascript:alert(1)", false, nullptr},
               {"", false, nullptr}};
  for (const auto& c : cases) {
    SCOPED_TRACE(c.address);
    EXPECT_EQ(object->SetAddress(c.address), c.kept);
    opened.clear();
    g_heard.clear();
    SendMessageW(link, WM_KEYDOWN, VK_RETURN, 1);
    EXPECT_EQ(Clicks(link), 1);  // the parent hears of every click
    if (c.opens) {
      ASSERT_EQ(opened.size(), 1u);
      EXPECT_EQ(opened[0], c.opens);
    } else {
      EXPECT_TRUE(opened.empty());
    }
  }
}

TEST_F(SmallControlsTest, ComboLinkIsAChoiceAmongTexts) {
  int menuShown = 0, menuAnswer = 0;
  std::vector<std::string> offered;
  SetChoiceMenuHook([&](HWND, const std::vector<std::string>& choices, int) {
    ++menuShown;
    offered = choices;
    return menuAnswer;
  });
  HWND link = Make(L"vel_combohyperlinkex", CVelComboHyperlink::AttachCreating, L"Okres:", 250, 20);
  EXPECT_EQ(SendMessageW(link, CB_GETCURSEL, 0, 0), CB_ERR);
  for (const wchar_t* t : {L"styczeń", L"luty", L"marzec"}) SendMessageW(link, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(t));
  EXPECT_EQ(SendMessageW(link, CB_GETCOUNT, 0, 0), 3);
  EXPECT_EQ(SendMessageW(link, CB_SETCURSEL, 1, 0), 1);
  EXPECT_EQ(SendMessageW(link, CB_SETITEMDATA, 2, 77), CB_OKAY);
  EXPECT_EQ(SendMessageW(link, CB_GETITEMDATA, 2, 0), 77);
  wchar_t text[20] = {};
  EXPECT_EQ(SendMessageW(link, CB_GETLBTEXT, 0, reinterpret_cast<LPARAM>(text)), 7);
  EXPECT_EQ(text::WideToCp1250(text), "styczeń");
  EXPECT_EQ(SendMessageW(link, CB_GETLBTEXT, 3, reinterpret_cast<LPARAM>(text)), CB_ERR);
  EXPECT_TRUE(g_heard.empty());  // the program's choice is not announced

  const struct {
    const char* what;
    void (*act)(HWND);
    int answer;
    int selected;
    int changes;
    int menus;
  } steps[] = {
      {"down", [](HWND l) { SendMessageW(l, WM_KEYDOWN, VK_DOWN, 1); }, 0, 2, 1, 0},
      {"down at the end", [](HWND l) { SendMessageW(l, WM_KEYDOWN, VK_DOWN, 1); }, 0, 2, 0, 0},
      {"click, first picked",
       [](HWND l) {
         SendMessageW(l, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(5, 5));
         SendMessageW(l, WM_LBUTTONUP, 0, MAKELPARAM(5, 5));
       },
       0, 0, 1, 1},
      {"F4, menu closed", [](HWND l) { SendMessageW(l, WM_KEYDOWN, VK_F4, 1); }, -1, 0, 0, 1},
      {"alt+down, same picked", [](HWND l) { SendMessageW(l, WM_SYSKEYDOWN, VK_DOWN, 1 | (1 << 29)); }, 0, 0, 0, 1},
      {"up at the start", [](HWND l) { SendMessageW(l, WM_KEYDOWN, VK_UP, 1); }, 0, 0, 0, 0},
  };
  for (const auto& s : steps) {
    SCOPED_TRACE(s.what);
    menuShown = 0;
    menuAnswer = s.answer;
    g_heard.clear();
    s.act(link);
    EXPECT_EQ(SendMessageW(link, CB_GETCURSEL, 0, 0), s.selected);
    int changes = 0;
    for (const Heard& h : g_heard) changes += h.code == CBN_SELCHANGE && h.control == link;
    EXPECT_EQ(changes, s.changes);
    EXPECT_EQ(menuShown, s.menus);
  }
  EXPECT_EQ(offered, (std::vector<std::string>{"styczeń", "luty", "marzec"}));
  SendMessageW(link, CB_RESETCONTENT, 0, 0);
  EXPECT_EQ(SendMessageW(link, CB_GETCURSEL, 0, 0), CB_ERR);
  EXPECT_EQ(SendMessageW(link, CB_GETCOUNT, 0, 0), 0);
}

// Paints the window's client area into a bitmap and reads a pixel of it.
class Snapshot {
 public:
  explicit Snapshot(HWND window) {
    GetClientRect(window, &m_rect);
    HDC screen = GetDC(nullptr);
    m_dc.reset(CreateCompatibleDC(screen));
    m_bitmap.reset(CreateCompatibleBitmap(screen, m_rect.right, m_rect.bottom));
    ReleaseDC(nullptr, screen);
    m_selected = SelectObject(m_dc.get(), m_bitmap.get());
    SendMessageW(window, WM_ERASEBKGND, reinterpret_cast<WPARAM>(m_dc.get()), 0);
    SendMessageW(window, WM_PRINTCLIENT, reinterpret_cast<WPARAM>(m_dc.get()), PRF_CLIENT);
  }
  ~Snapshot() { SelectObject(m_dc.get(), m_selected); }
  COLORREF At(int x, int y) const { return GetPixel(m_dc.get(), x, y); }
  const RECT& Rect() const { return m_rect; }

 private:
  RECT m_rect{};
  unique_dc m_dc;
  unique_bitmap m_bitmap;
  HGDIOBJ m_selected = nullptr;
};

TEST_F(SmallControlsTest, PieShowsThePercentageSetByMessage) {
  HWND pie = Make(L"vel_piepercent", CVelPiePercent::AttachCreating, L"", 100, 100);
  const struct {
    int set;
    int previous;
    int now;
  } steps[] = {{25, 0, 25}, {150, 25, 100}, {-5, 100, 0}, {60, 0, 60}};
  for (const auto& s : steps) {
    SCOPED_TRACE(s.set);
    EXPECT_EQ(SendMessageW(pie, PBM_SETPOS, static_cast<WPARAM>(s.set), 0), s.previous);
    EXPECT_EQ(SendMessageW(pie, PBM_GETPOS, 0, 0), s.now);
  }
  // At 25% the quarter from twelve to three o'clock is filled, the rest is not.
  SendMessageW(pie, PBM_SETPOS, 25, 0);
  const Snapshot shot(pie);
  const COLORREF filled = GetSysColor(COLOR_HIGHLIGHT), empty = GetSysColor(COLOR_WINDOW);
  EXPECT_EQ(shot.At(50 + 25, 50 - 25), filled);
  EXPECT_EQ(shot.At(50 - 25, 50 - 25), empty);
  EXPECT_EQ(shot.At(50 + 25, 50 + 25), empty);
  EXPECT_EQ(shot.At(1, 1), kParentColour);  // outside the circle: the parent's background
}

TEST_F(SmallControlsTest, PanelsPaintTheirBackgrounds) {
  HWND frame = Make(L"vel_infoframe", CVelInfoFrame::AttachCreating, L"Uwaga: dane są tylko do odczytu.", 300, 60);
  const Snapshot frameShot(frame);
  EXPECT_EQ(frameShot.At(290, 50), GetSysColor(COLOR_INFOBK));
  EXPECT_EQ(frameShot.At(0, 0), GetSysColor(COLOR_BTNSHADOW));

  HWND background = Make(L"vel_bkgnd", CVelBkgnd::AttachCreating, L"", 120, 40);
  const Snapshot backgroundShot(background);
  EXPECT_EQ(backgroundShot.At(60, 20), kParentColour);
  // The mouse goes through the panel to what lies under it.
  EXPECT_EQ(SendMessageW(background, WM_NCHITTEST, 0, MAKELPARAM(30, 30)), HTTRANSPARENT);
}

TEST_F(SmallControlsTest, BitmapButtonLoadsTheBitmapItsTextNames) {
  HWND button = Make(L"vel_bmpbutton", CVelBmpButton::AttachCreating, L"IDB_CALC_BTN");
  const auto* object = CVelBmpButton::FromHandle(button);
  ASSERT_NE(object, nullptr);
  EXPECT_NE(object->GetBitmap(), nullptr);
  SetWindowTextW(button, L"IDB_NO_SUCH_BITMAP");
  EXPECT_EQ(object->GetBitmap(), nullptr);
  SetWindowTextW(button, L"IDB_CALENDAR_BTN");
  EXPECT_NE(object->GetBitmap(), nullptr);
}

}  // namespace
}  // namespace varion
