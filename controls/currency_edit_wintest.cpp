// The amount field in real windows: what typing, keys, text messages and the clipboard do to the
// edit's display text and to the value it answers. The editing rules themselves are the model's
// and are tested natively; these tests check that the window hands every message to the model
// and shows what it answers.
#include <windows.h>
#include <commctrl.h>

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "base/text.h"
#include "controls/balloon_tip_win.h"
#include "controls/calculator_win.h"
#include "controls/clipboard_win.h"
#include "controls/currency_edit_win.h"
#include "base/library_module_win.h"
#include "tests/win_support.h"

namespace varion {
namespace {

using testing::GetTextA;
using testing::MessageRecorder;
using testing::PumpMessages;
using testing::unique_hwnd;

int g_beeps = 0;
void CountBeep(UINT type) {
  if (type == MB_ICONEXCLAMATION) ++g_beeps;
}

// A modifier held down for a scope, as the thread's keyboard state says.
class HeldKey {
 public:
  explicit HeldKey(int vk) : m_vk(vk) { Set(0x80); }
  ~HeldKey() { Set(0); }
  HeldKey(const HeldKey&) = delete;
  HeldKey& operator=(const HeldKey&) = delete;

 private:
  void Set(BYTE state) const {
    BYTE keys[256];
    GetKeyboardState(keys);
    keys[m_vk] = state;
    SetKeyboardState(keys);
  }
  int m_vk;
};

class CurrencyEditTest : public ::testing::Test {
 protected:
  void SetUp() override {
    m_previousBeep = SetCurrencyBeepHook(CountBeep);
    g_beeps = 0;
    m_parent = testing::MakeParentWindow(500, 200);
    ASSERT_TRUE(m_parent);
  }
  void TearDown() override { SetCurrencyBeepHook(m_previousBeep); }

  // A plain edit with the field attached; `style` adds edit styles.
  CVelCurrencyEdit* Make(DWORD style = 0, const wchar_t* text = L"", bool enter = false) {
    m_edit.reset(CreateWindowExW(WS_EX_CLIENTEDGE, L"EDIT", text, WS_CHILD | WS_VISIBLE | ES_AUTOHSCROLL | style,
                                 10, 10, 220, 24, m_parent.get(), reinterpret_cast<HMENU>(77), nullptr, nullptr));
    CVelCurrencyEdit* field = enter ? CVelCurrencyEnterEdit::Attach(m_edit.get()) : CVelCurrencyEdit::Attach(m_edit.get());
    PumpMessages();
    return field;
  }
  HWND Edit() const { return m_edit.get(); }
  // What the user sees: the edit's own text, not what WM_GETTEXT answers.
  std::string Shown() const {
    wchar_t buf[128] = {};
    const LRESULT n = CallWindowProcW(reinterpret_cast<WNDPROC>(GetClassLongPtrW(Edit(), GCLP_WNDPROC)), Edit(),
                                      WM_GETTEXT, std::size(buf), reinterpret_cast<LPARAM>(buf));
    return text::WideToCp1250(std::wstring_view(buf, static_cast<size_t>(n)));
  }
  std::pair<int, int> Selection() const {
    DWORD start = 0, end = 0;
    SendMessageW(Edit(), EM_GETSEL, reinterpret_cast<WPARAM>(&start), reinterpret_cast<LPARAM>(&end));
    return {static_cast<int>(start), static_cast<int>(end)};
  }
  void SetText(const char* text) const { SetWindowTextA(Edit(), text); }

  // Sends what typing `keys` sends: characters as WM_CHAR; {Del}, {Left}, {Right}, {Ins}, {F4} and
  // {Enter} as WM_KEYDOWN; a "S-" or "C-" inside the braces holds Shift or Ctrl.
  void Type(std::string_view keys) const {
    for (size_t i = 0; i < keys.size(); ++i) {
      if (keys[i] != '{') {
        SendMessageW(Edit(), WM_CHAR, static_cast<unsigned char>(keys[i]), 1);
        continue;
      }
      const size_t close = keys.find('}', i);
      std::string_view name = keys.substr(i + 1, close - i - 1);
      i = close;
      std::vector<std::unique_ptr<HeldKey>> held;
      while (name.size() > 2 && name[1] == '-') {
        held.push_back(std::make_unique<HeldKey>(name[0] == 'S' ? VK_SHIFT : VK_CONTROL));
        name.remove_prefix(2);
      }
      static const std::pair<std::string_view, int> kNames[] = {
          {"Del", VK_DELETE}, {"Left", VK_LEFT}, {"Right", VK_RIGHT}, {"Ins", VK_INSERT}, {"F4", VK_F4},
          {"Enter", VK_RETURN}, {"Esc", VK_ESCAPE}, {"C", 'C'}, {"V", 'V'}, {"X", 'X'}, {"Home", VK_HOME}};
      int vk = 0;
      for (const auto& [n, code] : kNames)
        if (n == name) vk = code;
      ASSERT_NE(vk, 0) << name;
      SendMessageW(Edit(), WM_KEYDOWN, static_cast<WPARAM>(vk), 1);
      PumpMessages();  // the clipboard keys post their messages
    }
  }

  unique_hwnd m_parent, m_edit;
  CurrencyBeepHook m_previousBeep = nullptr;
};

// Typed keys where positions matter: the display's grouping, sign and hidden decimals translated
// to the model's positions and back. Every row starts from a fresh field.
TEST_F(CurrencyEditTest, TypedKeysGoThroughTheRulesAndShowTheResult) {
  struct Case {
    const char* keys;
    unsigned setting;  // decimals or a command, given first; ~0u: none
    DWORD style;
    const char* start;  // text set before typing
    int selStart, selEnd;  // -1: the caret where setting the text put it
    const char* shown;
    const char* plain;
    int caret;
    int beeps;
  } cases[] = {
      {"1234567", ~0u, 0, "", -1, -1, "1 234 567,00", "1234567,0000", 9, 0},
      {"1234567890123", ~0u, 0, "", -1, -1, "123 456 789 012,00", "123456789012,0000", 15, 0},
      {"1", 4, 0, "", 6, 6, "0,0000", "0,0000", 6, 1},        // at the very end
      {"-5", ~0u, 0, "", -1, -1, "-5,00", "-5,0000", 2, 0},
      {"-5", kSetForbidMinus, 0, "", -1, -1, "5,00", "5,0000", 1, 0},
      {"\b", ~0u, 0, "-0,5", -1, -1, "0,50", "0,5000", 1, 0},
      {"{Del}", ~0u, 0, "1,23", 1, 1, "1,30", "1,3000", 1, 0},
      {"7", ~0u, 0, "1 234,5", 0, 5, "7,50", "7,5000", 1, 0},  // a selection is replaced
      {"{S-Left}", ~0u, 0, "123", 2, 3, "123,00", "123,0000", 1, 0},
      {"{S-Right}", ~0u, 0, "123", 1, 2, "123,00", "123,0000", 3, 0},
      {"5{Del}\b-", ~0u, ES_READONLY, "12", 0, 0, "12,00", "12,0000", 0, 0},  // read-only: nothing
      {"{Home}9", ~0u, 0, "12", -1, -1, "912,00", "912,0000", 1, 0},          // other keys: the edit's own
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.keys);
    SCOPED_TRACE(c.start);
    CVelCurrencyEdit* field = Make(c.style);
    ASSERT_NE(field, nullptr);
    if (c.setting != ~0u) field->OnSetSettings("", c.setting);
    SetText(c.start);
    if (c.selStart >= 0) SendMessageW(Edit(), EM_SETSEL, static_cast<WPARAM>(c.selStart), c.selEnd);
    g_beeps = 0;
    Type(c.keys);
    EXPECT_EQ(Shown(), c.shown);
    EXPECT_EQ(GetTextA(Edit()), c.plain);
    EXPECT_EQ(Selection(), std::make_pair(c.caret, c.caret));
    EXPECT_EQ(g_beeps, c.beeps);
  }
}

// One field typed into key by key: after each key the display, the value read back, the beeps,
// and how often the parent heard of a change (once per accepted key, never for a refused one).
TEST_F(CurrencyEditTest, EachKeyShowsItsResultAndTellsTheParentOnlyOfChanges) {
  struct Step {
    const char* keys;
    const char* shown;
    const char* plain;
    int beeps;
    int changes;
  } steps[] = {
      {"1", "1,00", "1,0000", 0, 1},      {"2", "12,00", "12,0000", 0, 1},    {"x", "12,00", "12,0000", 0, 0},
      {",", "12,00", "12,0000", 0, 0},    {"3", "12,30", "12,3000", 0, 1},    {"4", "12,34", "12,3400", 0, 1},
      {"5", "12,34", "12,3400", 1, 0},    {"-", "-12,34", "-12,3400", 0, 1}, {"\b", "-12,30", "-12,3000", 0, 1},
      {"-", "12,30", "12,3000", 0, 1},    {"{Left}", "12,30", "12,3000", 0, 0},
  };
  Make();
  MessageRecorder parent(m_parent.get());
  for (const Step& step : steps) {
    SCOPED_TRACE(step.keys);
    parent.Clear();
    g_beeps = 0;
    Type(step.keys);
    EXPECT_EQ(Shown(), step.shown);
    EXPECT_EQ(GetTextA(Edit()), step.plain);
    EXPECT_EQ(g_beeps, step.beeps);
    int changes = 0;
    for (const auto& m : parent.Messages())
      if (m.message == WM_COMMAND && HIWORD(m.wParam) == EN_CHANGE && reinterpret_cast<HWND>(m.lParam) == Edit())
        ++changes;
    EXPECT_EQ(changes, step.changes);
  }
}

// Texts set by programs and forms: the set-text rules, and WM_GETTEXT answering the plain text.
TEST_F(CurrencyEditTest, SetTextRoundsOrRefusesAndGetTextAnswersThePlainValue) {
  struct Case {
    const char* text;
    unsigned decimals;
    BOOL accepted;
    const char* shown;
    const char* plain;
  } cases[] = {
      {"1,005", 2, TRUE, "1,01", "1,0100"},
      {"1,0005", 4, TRUE, "1,0005", "1,0005"},
      {"1 234 567,891", 0, TRUE, "1 234 568", "1234568,0000"},
      {"", 2, TRUE, "0,00", "0,0000"},
      {"-", 2, TRUE, "-0,00", "-0,0000"},
      {"abc", 2, FALSE, "7,00", "7,0000"},  // refused: the value stays
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.text);
    CVelCurrencyEdit* field = Make(0, L"7");
    ASSERT_NE(field, nullptr);
    field->OnSetSettings("", c.decimals);
    const std::wstring wide = text::Cp1250ToWide(c.text);
    EXPECT_EQ(SendMessageW(Edit(), WM_SETTEXT, 0, reinterpret_cast<LPARAM>(wide.c_str())), c.accepted);
    EXPECT_EQ(Shown(), c.shown);
    EXPECT_EQ(GetTextA(Edit()), c.plain);
    EXPECT_EQ(GetWindowTextLengthW(Edit()), static_cast<int>(std::string_view(c.plain).size()));
    if (!c.accepted) {
      EXPECT_EQ(Selection(), std::make_pair(0, static_cast<int>(std::string_view(c.shown).size())));
    }
  }
  // Set through the ANSI entry point with the currency symbol shown.
  CVelCurrencyEdit* field = Make(0, L"2,5");
  field->OnSetSettings("zł", 2);
  EXPECT_EQ(Shown(), "2,50 zł");
  SetText("-1 234,5 zł");
  EXPECT_EQ(Shown(), "-1 234,50 zł");
  EXPECT_EQ(field->GetValue(), Amount::FromRaw(-12345000));
  // Text that is no amount when attaching gives zero.
  EXPECT_EQ(Make(0, L"dużo")->GetValue(), Amount::FromRaw(0));
  EXPECT_EQ(Shown(), "0,00");
  // Typing shows the whole amount even where the edit's text limit would cut it.
  SendMessageW(Edit(), EM_LIMITTEXT, 2, 0);
  Type("1234");
  EXPECT_EQ(Shown(), "1 234,00");
}

// A field that records what reaches its clipboard hooks.
class ProbeEdit : public CVelCurrencyEdit {
 public:
  static ProbeEdit* Make(HWND edit) {
    auto* probe = AttachNew<ProbeEdit>(edit);
    if (probe) probe->Initialize();
    return probe;
  }
  std::string GetCopyText() override {
    ++copies;
    return "kopia " + CVelCurrencyEdit::GetCopyText();
  }
  void PasteText(const std::string& text) override {
    pasted.push_back(text);
    CVelCurrencyEdit::PasteText(text);
  }
  int copies = 0;
  std::vector<std::string> pasted;
};

TEST_F(CurrencyEditTest, ClipboardKeysPostTheirMessagesAndRoundTripTheValue) {
  auto clipboard = [&] {
    std::string text;
    GetClipboardText(Edit(), text);
    return text;
  };
  CVelCurrencyEdit* field = Make();
  SetText("1234,5");
  SendMessageW(Edit(), EM_SETSEL, 0, -1);
  Type("{C-C}");
  EXPECT_EQ(clipboard(), "1234,50");
  SetText("1");
  Type("{C-V}");
  EXPECT_EQ(Shown(), "1 234,50");
  SendMessageW(Edit(), EM_SETSEL, 0, 5);  // a part: its digits, never the grouping
  Type("{S-Del}");                         // cut
  EXPECT_EQ(clipboard(), "1234");
  EXPECT_EQ(Shown(), "0,50");

  // Pasted: "-" dropped while minus is forbidden; what is no amount, or too long, changes nothing.
  const std::pair<std::string, const char*> pastes[] = {
      {"--5", "5,00"}, {"-7,25", "-7,25"}, {"abc", "9,00"}, {std::string(100000, '1'), "9,00"}};
  for (const auto& [clip, shown] : pastes) {
    SCOPED_TRACE(clip.substr(0, 10));
    SetText("9");
    field->OnSetSettings("", clip == "--5" ? kSetForbidMinus : kSetAllowMinus);
    ASSERT_TRUE(SetClipboardText(Edit(), clip));
    Type("{S-Ins}");
    EXPECT_EQ(Shown(), shown);
  }

  // Copy and paste go through the overridable pair.
  m_edit.reset(CreateWindowExW(0, L"EDIT", L"3", WS_CHILD | WS_VISIBLE, 10, 40, 200, 24, m_parent.get(), nullptr,
                               nullptr, nullptr));
  ProbeEdit* probe = ProbeEdit::Make(Edit());
  ASSERT_NE(probe, nullptr);
  Type("{C-C}");
  EXPECT_EQ(probe->copies, 1);
  EXPECT_EQ(clipboard(), "kopia 3,00");
  ASSERT_TRUE(SetClipboardText(Edit(), "12"));
  Type("{C-V}");
  EXPECT_EQ(probe->pasted, std::vector<std::string>{"12"});
  EXPECT_EQ(Shown(), "12,00");
}

TEST_F(CurrencyEditTest, EnterVariantReportsEnterToItsParentAndAsksTheDialogForIt) {
  for (bool enter : {false, true}) {
    SCOPED_TRACE(enter);
    Make(0, L"5", enter);
    MessageRecorder parent(m_parent.get());
    Type("{Enter}");
    int reported = 0;
    for (const auto& m : parent.Messages())
      if (m.message == kMsgCurrencyEnter) {
        ++reported;
        EXPECT_EQ(m.wParam, 77u);
        EXPECT_EQ(m.lParam, 0);
      }
    EXPECT_EQ(reported, enter ? 1 : 0);
    MSG msg{Edit(), WM_KEYDOWN, VK_RETURN, 0, 0, {}};
    const LRESULT code = SendMessageW(Edit(), WM_GETDLGCODE, VK_RETURN, reinterpret_cast<LPARAM>(&msg));
    EXPECT_EQ((code & DLGC_WANTALLKEYS) != 0, enter);
    EXPECT_EQ(Shown(), "5,00");
  }
}

TEST_F(CurrencyEditTest, LosingTheFocusForgetsANegativeZeroOnly) {
  auto modified = [&] { return SendMessageW(Edit(), EM_GETMODIFY, 0, 0) != 0; };
  Make();
  SetFocus(Edit());
  EXPECT_FALSE(modified());
  Type("-");
  EXPECT_EQ(Shown(), "-0,00");
  EXPECT_TRUE(modified());
  SetFocus(m_parent.get());
  EXPECT_EQ(Shown(), "0,00");
  EXPECT_EQ(GetTextA(Edit()), "0,0000");
  EXPECT_TRUE(modified());  // still the user's change
  SetText("");
  EXPECT_FALSE(modified());  // a program's text, as in a plain edit
  SetFocus(Edit());
  Type("-5");
  SetFocus(m_parent.get());
  EXPECT_EQ(GetTextA(Edit()), "-5,0000");
}

// The frame's buttons ------------------------------------------------------------------------------

// Where a button should be: right of the client area, as wide as the system's metric 10, in
// window coordinates; `index` 0 is the rightmost.
RECT ExpectedButton(HWND edit, int index) {
  RECT client, window;
  GetClientRect(edit, &client);
  GetWindowRect(edit, &window);
  POINT origin{0, 0};
  ClientToScreen(edit, &origin);
  const int w = GetSystemMetrics(10);
  int buttons = 0;
  for (const RECT& r : {CVelCurrencyEdit::FromHandle(edit)->CalcButtonRect(),
                        CVelCurrencyEdit::FromHandle(edit)->CopyButtonRect()})
    buttons += IsRectEmpty(&r) ? 0 : 1;
  const int left = origin.x - window.left + client.right + (buttons - 1 - index) * w;
  const int top = origin.y - window.top;
  return {left, top, left + w, top + client.bottom};
}

POINT ScreenCentre(HWND edit, const RECT& button) {
  RECT window;
  GetWindowRect(edit, &window);
  return {window.left + (button.left + button.right) / 2, window.top + (button.top + button.bottom) / 2};
}

LPARAM At(POINT p) { return MAKELPARAM(p.x, p.y); }

std::vector<std::string> ToolTexts(HWND tooltip) {
  std::vector<std::string> out;
  const auto n = static_cast<UINT>(SendMessageW(tooltip, TTM_GETTOOLCOUNT, 0, 0));
  for (UINT i = 0; i < n; ++i) {
    wchar_t text[80] = {};
    TTTOOLINFOW ti{};
    ti.cbSize = TTTOOLINFOW_V2_SIZE;
    ti.lpszText = text;
    if (SendMessageW(tooltip, TTM_ENUMTOOLSW, i, reinterpret_cast<LPARAM>(&ti))) out.push_back(text::WideToCp1250(text));
  }
  return out;
}

TEST_F(CurrencyEditTest, ButtonsTakeTheSystemWidthRightOfTheTextAndAnswerAsBorder) {
  const int w = GetSystemMetrics(10);
  ASSERT_GT(w, 0);
  unique_hwnd plain(CreateWindowExW(WS_EX_CLIENTEDGE, L"EDIT", L"", WS_CHILD | WS_VISIBLE | ES_AUTOHSCROLL, 10, 40,
                                    220, 24, m_parent.get(), nullptr, nullptr, nullptr));
  RECT plainClient;
  GetClientRect(plain.get(), &plainClient);
  struct Case {
    DWORD style;
    bool copy;
    int buttons;
  } cases[] = {{0, false, 1}, {0, true, 2}, {kStyleNoCalculator, true, 0}, {ES_READONLY, true, 2}};
  for (const Case& c : cases) {
    SCOPED_TRACE(::testing::Message() << c.style << " " << c.copy);
    CVelCurrencyEdit* field = Make(c.style);
    if (c.copy) field->OnSetSettings("", kSetShowCopyButton);
    RECT client;
    GetClientRect(Edit(), &client);
    EXPECT_EQ(plainClient.right - client.right, c.buttons * w);
    const RECT calc = field->CalcButtonRect(), copy = field->CopyButtonRect();
    EXPECT_EQ(IsRectEmpty(&calc), c.buttons == 0);
    EXPECT_EQ(IsRectEmpty(&copy), c.buttons < 2);
    if (c.buttons == 0) continue;
    const RECT expectedCalc = ExpectedButton(Edit(), 0);
    EXPECT_TRUE(EqualRect(&calc, &expectedCalc));
    EXPECT_EQ(SendMessageW(Edit(), WM_NCHITTEST, 0, At(ScreenCentre(Edit(), calc))), HTBORDER);
    if (c.buttons == 2) {
      const RECT expectedCopy = ExpectedButton(Edit(), 1);
      EXPECT_TRUE(EqualRect(&copy, &expectedCopy));
      EXPECT_EQ(SendMessageW(Edit(), WM_NCHITTEST, 0, At(ScreenCentre(Edit(), copy))), HTBORDER);
    }
    POINT inside{client.right / 2, client.bottom / 2};
    ClientToScreen(Edit(), &inside);
    EXPECT_EQ(SendMessageW(Edit(), WM_NCHITTEST, 0, At(inside)), HTCLIENT);
  }
  // The style bit taken away later brings the button back.
  Make(kStyleNoCalculator);
  SetWindowLongW(Edit(), GWL_STYLE, GetWindowLongW(Edit(), GWL_STYLE) & ~static_cast<LONG>(kStyleNoCalculator));
  EXPECT_FALSE(IsRectEmpty(&CVelCurrencyEdit::FromHandle(Edit())->CalcButtonRect()));
}

TEST_F(CurrencyEditTest, CopyButtonPutsTwoDecimalsOnTheClipboardAndSaysSo) {
  struct Case {
    const char* value;
    unsigned decimals;
    const char* copied;
  } cases[] = {{"1234,5678", 4, "1234.57"}, {"-0,5", 2, "-0.50"}, {"7", 0, "7.00"}};
  for (const Case& c : cases) {
    SCOPED_TRACE(c.value);
    CVelCurrencyEdit* field = Make();
    field->OnSetSettings("", c.decimals);
    field->OnSetSettings("", kSetShowCopyButton);
    SetText(c.value);
    SetFocus(m_parent.get());
    SendMessageW(Edit(), WM_NCLBUTTONDOWN, HTBORDER, At(ScreenCentre(Edit(), field->CopyButtonRect())));
    std::string clip;
    GetClipboardText(Edit(), clip);
    EXPECT_EQ(clip, c.copied);
    EXPECT_EQ(GetFocus(), Edit());
    EXPECT_EQ(CurrentTipText(Edit()), "Skopiowano do schowka.");
  }
  HideTipMsgBox();
  // The calculator button takes the focus too.
  CVelCurrencyEdit* field = Make();
  SetFocus(m_parent.get());
  SendMessageW(Edit(), WM_NCLBUTTONDOWN, HTBORDER, At(ScreenCentre(Edit(), field->CalcButtonRect())));
  EXPECT_EQ(GetFocus(), Edit());
}

TEST_F(CurrencyEditTest, HoveringMakesTheButtonsHotUntilTheMouseLeavesAndNamesThem) {
  auto buttonPixels = [&](const RECT& r) {
    RedrawWindow(Edit(), nullptr, nullptr, RDW_FRAME | RDW_INVALIDATE | RDW_UPDATENOW);
    const WindowDc dc(Edit(), true);
    std::vector<COLORREF> pixels;
    for (int y = r.top; y < r.bottom; ++y)
      for (int x = r.left; x < r.right; ++x) pixels.push_back(GetPixel(dc.get(), x, y));
    return pixels;
  };
  CVelCurrencyEdit* field = Make();
  field->OnSetSettings("", kSetShowCopyButton);
  const std::vector<COLORREF> enabledLook = buttonPixels(field->CalcButtonRect());
  const POINT calc = ScreenCentre(Edit(), field->CalcButtonRect());
  SetCursorPos(calc.x, calc.y);
  EXPECT_EQ(SendMessageW(Edit(), WM_NCHITTEST, 0, At(calc)), HTBORDER);
  EXPECT_TRUE(field->IsButtonHot());
  EXPECT_TRUE(field->IsHoverTimerRunning());
  ASSERT_NE(field->Tooltip(), nullptr);
  EXPECT_EQ(ToolTexts(field->Tooltip()), (std::vector<std::string>{"Pokaż kalkulator", "Kopiuj"}));
  RECT window;
  GetWindowRect(Edit(), &window);
  SetCursorPos(window.left - 30, window.bottom + 40);
  PumpMessages(60);
  EXPECT_FALSE(field->IsButtonHot());
  EXPECT_FALSE(field->IsHoverTimerRunning());

  // Read-only: the calculator's tip goes, the disabled bitmap shows and hovering changes nothing.
  SendMessageW(Edit(), EM_SETREADONLY, TRUE, 0);
  EXPECT_EQ(ToolTexts(field->Tooltip()), (std::vector<std::string>{"Kopiuj"}));
  EXPECT_NE(buttonPixels(field->CalcButtonRect()), enabledLook);
  SetCursorPos(calc.x, calc.y);
  EXPECT_EQ(SendMessageW(Edit(), WM_NCHITTEST, 0, At(calc)), HTBORDER);
  EXPECT_FALSE(field->IsButtonHot());
  EXPECT_FALSE(field->IsHoverTimerRunning());
  SendMessageW(Edit(), EM_SETREADONLY, FALSE, 0);
  EXPECT_EQ(buttonPixels(field->CalcButtonRect()), enabledLook);
  SetCursorPos(window.left - 30, window.bottom + 40);
}

// The calculator ----------------------------------------------------------------------------------

std::vector<UINT> CalcNotifications(const MessageRecorder& recorder) {
  std::vector<UINT> codes;
  for (const auto& m : recorder.Messages())
    if (m.message == WM_NOTIFY && m.wParam == CalculatorWindow::kControlId) codes.push_back(static_cast<UINT>(m.lParam));
  return codes;
}

// What the calculator was created with, as the creation hook sees it (the system drops the topmost
// bit of a child window afterwards).
CREATESTRUCTW g_calcCreated{};
LRESULT CALLBACK RecordCalculatorCreation(int code, WPARAM wp, LPARAM lp) {
  if (code == HCBT_CREATEWND) {
    wchar_t cls[32] = {};
    GetClassNameW(reinterpret_cast<HWND>(wp), cls, 32);
    if (std::wstring_view(cls) == L"vel_calculator") g_calcCreated = *reinterpret_cast<CBT_CREATEWNDW*>(lp)->lpcs;
  }
  return CallNextHookEx(nullptr, code, wp, lp);
}

TEST_F(CurrencyEditTest, CalculatorDropsDownUnderTheFieldAndItsResultBecomesTheValue) {
  CVelCurrencyEdit* field = Make();
  field->OnSetSettings("zł", 2);
  SetText("12,5");
  SetFocus(Edit());
  g_calcCreated = {};
  {
    const unique_hook recorder(SetWindowsHookExW(WH_CBT, RecordCalculatorCreation, nullptr, GetCurrentThreadId()));
    Type("{F4}");
  }
  CalculatorWindow* calc = field->Calculator();
  ASSERT_NE(calc, nullptr);
  const HWND c = calc->GetHwnd();
  EXPECT_TRUE(field->IsCalcShown());
  EXPECT_EQ(g_calcCreated.dwExStyle, 0x88u);
  EXPECT_EQ(static_cast<DWORD>(g_calcCreated.style), 0x44800000u);
  EXPECT_EQ(g_calcCreated.hwndParent, GetDesktopWindow());
  EXPECT_EQ(g_calcCreated.hMenu, reinterpret_cast<HMENU>(1));
  EXPECT_EQ(static_cast<DWORD>(GetWindowLongW(c, GWL_STYLE)), 0x44800000u | WS_VISIBLE);
  EXPECT_EQ(GetDlgCtrlID(c), 1);
  EXPECT_EQ(calc->Owner(), Edit());
  EXPECT_EQ(GetTextA(c), "12,5000");
  EXPECT_EQ(calc->Model().Value(), Amount::FromRaw(125000));
  EXPECT_EQ(calc->Model().Decimals(), 2);
  EXPECT_EQ(GetFocus(), Edit());  // shown without taking the activation
  RECT e, r;
  GetWindowRect(Edit(), &e);
  GetWindowRect(c, &r);
  EXPECT_EQ(r.top, e.bottom);
  EXPECT_EQ(r.left, e.left);

  // Keys typed into the field work the calculator; the field hears of each completed value, then
  // of the close-up.
  {
    MessageRecorder notes(Edit());
    Type("+2=");
    EXPECT_EQ(Shown(), "14,50 zł");
    EXPECT_TRUE(field->IsCalcShown());
    Type("*2");
    EXPECT_EQ(Shown(), "14,50 zł");  // the second operand is no value yet
    Type("{Enter}");
    EXPECT_FALSE(field->IsCalcShown());
    EXPECT_EQ(GetTextA(Edit()), "29,0000");
    EXPECT_EQ(CalcNotifications(notes), (std::vector<UINT>{kCalcNotifyValueChange, kCalcNotifyCloseUp}));
    EXPECT_TRUE(SendMessageW(Edit(), EM_GETMODIFY, 0, 0));
  }
  // Esc gives the value back that the calculator opened with.
  Type("{F4}");
  EXPECT_EQ(calc->Model().Value(), Amount::FromRaw(290000));
  Type("7");
  EXPECT_EQ(Shown(), "7,00 zł");
  Type("{Esc}");
  EXPECT_FALSE(field->IsCalcShown());
  EXPECT_EQ(Shown(), "29,00 zł");

  // Its own keys, clicked; new settings reach it while it exists.
  Type("{F4}");
  field->OnSetSettings("", 4);
  EXPECT_EQ(calc->Model().Decimals(), 4);
  for (char key : {'C', '7', ',', '2', '5'}) {
    const RECT k = calc->KeyRect(key);
    ASSERT_FALSE(IsRectEmpty(&k)) << key;
    SendMessageW(c, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM((k.left + k.right) / 2, (k.top + k.bottom) / 2));
    SendMessageW(c, WM_LBUTTONUP, 0, MAKELPARAM((k.left + k.right) / 2, (k.top + k.bottom) / 2));
  }
  EXPECT_EQ(Shown(), "7,2500");
  Type("{F4}");  // F4 closes it again
  EXPECT_FALSE(field->IsCalcShown());
  EXPECT_EQ(Shown(), "7,2500");
}

TEST_F(CurrencyEditTest, CalculatorButtonTogglesItAndLeavingTheFieldClosesIt) {
  struct Case {
    const char* how;
    std::function<void(HWND edit, HWND parent, HWND calc)> close;
  } cases[] = {
      {"button", [](HWND edit, HWND, HWND) {
         auto* f = CVelCurrencyEdit::FromHandle(edit);
         SendMessageW(edit, WM_NCLBUTTONDOWN, HTBORDER, At(ScreenCentre(edit, f->CalcButtonRect())));
       }},
      {"focus elsewhere", [](HWND, HWND parent, HWND) { SetFocus(parent); }},
      {"application deactivated", [](HWND, HWND, HWND calc) { SendMessageW(calc, WM_ACTIVATEAPP, FALSE, 0); }},
      {"click elsewhere", [](HWND, HWND parent, HWND) {
         RECT p;
         GetWindowRect(parent, &p);
         SetCursorPos(p.left + 300, p.top + 150);
         INPUT clicks[2] = {};
         clicks[0].type = clicks[1].type = INPUT_MOUSE;
         clicks[0].mi.dwFlags = MOUSEEVENTF_LEFTDOWN;
         clicks[1].mi.dwFlags = MOUSEEVENTF_LEFTUP;
         SendInput(2, clicks, sizeof(INPUT));
         PumpMessages(100);
       }},
  };
  for (auto& c : cases) {
    SCOPED_TRACE(c.how);
    CVelCurrencyEdit* field = Make();
    SetFocus(Edit());
    SendMessageW(Edit(), WM_NCLBUTTONDOWN, HTBORDER, At(ScreenCentre(Edit(), field->CalcButtonRect())));
    ASSERT_TRUE(field->IsCalcShown());
    c.close(Edit(), m_parent.get(), field->Calculator()->GetHwnd());
    PumpMessages(20);
    EXPECT_FALSE(field->IsCalcShown());
  }
  // Read-only: neither the button nor F4 opens it.
  CVelCurrencyEdit* field = Make(ES_READONLY);
  SetFocus(Edit());
  SendMessageW(Edit(), WM_NCLBUTTONDOWN, HTBORDER, At(ScreenCentre(Edit(), field->CalcButtonRect())));
  Type("{F4}");
  EXPECT_EQ(field->Calculator(), nullptr);
}

TEST_F(CurrencyEditTest, CalculatorStaysOnTheMonitor) {
  const RECT work{0, 0, 1000, 700};
  struct Case {
    RECT anchor;
    SIZE size;
    POINT expected;
  } cases[] = {
      {{100, 100, 300, 120}, {150, 120}, {100, 120}},  // below, left-aligned
      {{100, 600, 300, 620}, {150, 120}, {100, 480}},  // no room below: above
      {{900, 100, 990, 120}, {150, 120}, {850, 120}},  // kept inside on the right
      {{-50, 100, 100, 120}, {150, 120}, {0, 120}},    // and on the left
      {{100, 10, 300, 640}, {150, 120}, {100, 580}},   // room neither above nor below
  };
  for (const Case& c : cases) {
    const POINT p = CalculatorWindow::PlaceAgainst(c.anchor, c.size, work);
    EXPECT_EQ(p.x, c.expected.x) << c.anchor.left << "," << c.anchor.top;
    EXPECT_EQ(p.y, c.expected.y) << c.anchor.left << "," << c.anchor.top;
  }
}

LRESULT CALLBACK RefusingProc(HWND h, UINT msg, WPARAM wp, LPARAM lp) {
  return msg == WM_NCCREATE ? FALSE : DefWindowProcW(h, msg, wp, lp);
}

TEST_F(CurrencyEditTest, FieldWorksOnWhenNoCalculatorCanBeMade) {
  // A class of that name that refuses its windows takes the place of the calculator's.
  UnregisterClassW(L"vel_calculator", LibraryModule());
  WNDCLASSW wc{};
  wc.lpfnWndProc = RefusingProc;
  wc.hInstance = LibraryModule();
  wc.lpszClassName = L"vel_calculator";
  ASSERT_TRUE(RegisterClassW(&wc));
  CVelCurrencyEdit* field = Make();
  SetFocus(Edit());
  Type("{F4}");
  SendMessageW(Edit(), WM_NCLBUTTONDOWN, HTBORDER, At(ScreenCentre(Edit(), field->CalcButtonRect())));
  EXPECT_EQ(field->Calculator(), nullptr);
  EXPECT_FALSE(field->IsCalcShown());
  Type("42");
  EXPECT_EQ(Shown(), "42,00");
  m_edit.reset();
  EXPECT_TRUE(UnregisterClassW(L"vel_calculator", LibraryModule()));
}

}  // namespace
}  // namespace varion
