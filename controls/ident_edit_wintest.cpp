// The identifier edits in real windows: what typing, pasting and leaving do to the text, when the
// field marks itself faulty through the private message and when it takes the mark away, and
// what a Ctrl+click or the browse button asks of the shell. The rules themselves are tested
// natively; these tests check that every path into the edit goes through them.
#include <windows.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "base/text.h"
#include "controls/clipboard_win.h"
#include "controls/ident_edit_win.h"
#include "controls/private_messages.h"
#include "tests/win_support.h"

namespace varion {
namespace {

using testing::GetTextA;
using testing::MessageRecorder;
using testing::PumpMessages;
using testing::unique_hwnd;

int g_beeps = 0;
void CountBeep() { ++g_beeps; }

class IdentEditTest : public ::testing::Test {
 protected:
  void SetUp() override {
    m_previousBeep = SetIdentBeepHook(CountBeep);
    g_beeps = 0;
    m_parent = testing::MakeParentWindow(500, 200);
    ASSERT_TRUE(m_parent);
    SetForegroundWindow(m_parent.get());
  }
  void TearDown() override {
    SetIdentBeepHook(m_previousBeep);
    SetShellOpenHook(nullptr);
    SetPathChooserHook(nullptr);
  }

  CVelIdentEdit* Make(IdentKind kind, const wchar_t* text = L"") {
    m_edit.reset(CreateWindowExW(WS_EX_CLIENTEDGE, L"EDIT", text, WS_CHILD | WS_VISIBLE | ES_AUTOHSCROLL, 10, 10,
                                 300, 24, m_parent.get(), reinterpret_cast<HMENU>(77), nullptr, nullptr));
    CVelIdentEdit* field = CVelIdentEdit::Attach(m_edit.get(), kind);
    PumpMessages();
    return field;
  }
  HWND Edit() const { return m_edit.get(); }
  void Type(const std::string& cp1250) const {
    for (wchar_t ch : text::Cp1250ToWide(cp1250)) SendMessageW(Edit(), WM_CHAR, ch, 1);
  }
  void Leave() const {
    SetFocus(Edit());
    SetFocus(m_parent.get());
    PumpMessages();
  }
  bool Faulty() const { return CVelIdentEdit::FromHandle(Edit())->IsFaulty(); }

  unique_hwnd m_parent, m_edit;
  IdentBeepHook m_previousBeep = nullptr;
};

// Typing goes through the kind's filter (a refused character beeps), leaving tidies the text and
// marks the field through the private message when the value is wrong.
TEST_F(IdentEditTest, TypingRefusingLeavingAndMarking) {
  const struct {
    IdentKind kind;
    const char* typed;
    const char* shown;  // after typing
    int beeps;
    const char* left;   // after leaving
    bool faulty;
  } cases[] = {
      {IdentKind::Nip, "123-456-32-18", "123-456-32-18", 0, "123-456-32-18", false},
      {IdentKind::Nip, "12a34563219", "1234563219", 1, "1234563219", true},
      {IdentKind::NipEx, "de123456789", "DE123456789", 0, "DE123456789", false},
      {IdentKind::Pesel, "4405x1401458", "44051401458", 1, "44051401458", false},
      {IdentKind::Pesel, "440514014589", "44051401458", 0, "44051401458", false},  // the edit's limit
      {IdentKind::Regon, "123456786", "123456786", 0, "123456786", true},
      {IdentKind::IdWewnetrzny, "1010000001-00001", "1010000001-00001", 0, "1010000001-00001", false},
      {IdentKind::Rachunek, "pl61109010140000071219812874", "PL61109010140000071219812874", 0,
       "PL61 1090 1014 0000 0712 1981 2874", false},
      {IdentKind::Rachunek, "61109010140000071219812875", "61109010140000071219812875", 0,
       "61 1090 1014 0000 0712 1981 2875", true},
      {IdentKind::Email, "jan kowalski@firma", "jankowalski@firma", 1, "jankowalski@firma", true},
      {IdentKind::Www, "www.firma.pl", "www.firma.pl", 0, "www.firma.pl", false},
      {IdentKind::Gg, "12-34", "1234", 1, "1234", false},
      {IdentKind::Skype, "jan kowalski", "jankowalski", 1, "jankowalski", false},
      {IdentKind::Number, "0042x", "0042", 1, "42", false},
      {IdentKind::Time, "930", "930", 0, "09:30", false},
      {IdentKind::Time, "25:00", "25:00", 0, "25:00", true},
      {IdentKind::Folder, "C:\\Dok*umenty", "C:\\Dokumenty", 1, "C:\\Dokumenty", false},
      {IdentKind::File, "C:\\Dokumenty\\", "C:\\Dokumenty\\", 0, "C:\\Dokumenty\\", true},
      {IdentKind::Adres, "ul. Długa  5", "ul. Długa  5", 0, "ul. Długa 5", false},
      {IdentKind::Param, " Hurtownia \"Łódź\" ", " Hurtownia \"Łódź\" ", 0, " Hurtownia \"Łódź\" ", false},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(std::string(IdentClassName(c.kind)) + " " + c.typed);
    ASSERT_NE(Make(c.kind), nullptr);
    g_beeps = 0;
    SetFocus(Edit());
    MessageRecorder recorder(Edit());
    Type(c.typed);
    EXPECT_EQ(GetTextA(Edit()), c.shown);
    EXPECT_EQ(g_beeps, c.beeps);
    Leave();
    EXPECT_EQ(GetTextA(Edit()), c.left);
    EXPECT_EQ(Faulty(), c.faulty);
    // The mark travels as the private message, as a dialog's own marking does.
    bool marked = false;
    for (const auto& m : recorder.Messages())
      if (m.message == MsgMarkFaulty() && m.wParam == 1) marked = true;
    EXPECT_EQ(marked, c.faulty);
  }
}

TEST_F(IdentEditTest, CorrectingTheValueClearsTheMark) {
  Make(IdentKind::Pesel);
  SetFocus(Edit());
  Type("44051401459");
  Leave();
  ASSERT_TRUE(Faulty());
  // Typing it right takes the mark away at once.
  SetFocus(Edit());
  SendMessageW(Edit(), WM_CHAR, VK_BACK, 1);
  EXPECT_TRUE(Faulty());
  Type("8");
  EXPECT_FALSE(Faulty());
  // A program's text that fails is marked on leaving, and a right one replaces the mark.
  SetWindowTextA(Edit(), "123");
  Leave();
  EXPECT_TRUE(Faulty());
  SetWindowTextA(Edit(), "");
  Leave();
  EXPECT_FALSE(Faulty());
}

// Ctrl+V, WM_PASTE and Shift+Insert take the clipboard through the filter, cut to the room the
// selection leaves; 100 000 characters change nothing but the field's text.
TEST_F(IdentEditTest, PastedTextIsFilteredAndCut) {
  Make(IdentKind::Rachunek);
  SetFocus(Edit());
  ASSERT_TRUE(SetClipboardText(m_parent.get(), "PL 61-1090-1014-0000-0712-1981-2874\r\n"));
  SendMessageW(Edit(), WM_PASTE, 0, 0);
  EXPECT_EQ(GetTextA(Edit()), "PL 61109010140000071219812874");  // hyphens and the line break left out
  Leave();
  EXPECT_EQ(GetTextA(Edit()), "PL61 1090 1014 0000 0712 1981 2874");
  EXPECT_FALSE(Faulty());
  SetWindowTextA(Edit(), "");
  ASSERT_TRUE(SetClipboardText(m_parent.get(), std::string(40, '7')));
  SendMessageW(Edit(), WM_PASTE, 0, 0);
  EXPECT_EQ(GetTextA(Edit()), std::string(34, '7'));  // the longest print form

  Make(IdentKind::Pesel);
  SetFocus(Edit());
  std::string huge;
  while (huge.size() < 100000) huge += "4a\xB9-";
  ASSERT_TRUE(SetClipboardText(m_parent.get(), huge));
  SendMessageW(Edit(), WM_CHAR, 0x16, 1);  // Ctrl+V
  EXPECT_EQ(GetTextA(Edit()), "44444444444");
  SendMessageW(Edit(), EM_SETSEL, 2, 4);
  ASSERT_TRUE(SetClipboardText(m_parent.get(), "x0x5x1x"));
  SendMessageW(Edit(), WM_PASTE, 0, 0);
  EXPECT_EQ(GetTextA(Edit()), "44054444444");  // two characters replaced, room for two

  Make(IdentKind::Gg);
  ASSERT_TRUE(SetClipboardText(m_parent.get(), "abc"));
  g_beeps = 0;
  SendMessageW(Edit(), WM_PASTE, 0, 0);
  EXPECT_EQ(GetTextA(Edit()), "");
  EXPECT_EQ(g_beeps, 1);

  // A program may set any text; leaving a huge one checks it and marks it, and nothing breaks.
  Make(IdentKind::Email);
  SetWindowTextA(Edit(), huge.c_str());
  Leave();
  EXPECT_TRUE(Faulty());
}

TEST_F(IdentEditTest, CtrlClickOpensOnlyCheckedAddresses) {
  std::vector<std::string> opened;
  SetShellOpenHook([&](HWND, const std::string& address) { opened.push_back(address); });
  const struct {
    IdentKind kind;
    const char* text;
    const char* expected;  // nullptr: nothing opens, a beep
  } cases[] = {
      {IdentKind::Email, "jan@firma.pl", "mailto:jan@firma.pl"},
      {IdentKind::Email, "jan@firma.pl?body=x", nullptr},
      {IdentKind::Www, "www.firma.pl/oferta", "http://www.firma.pl/oferta"},
      {IdentKind::Www, "https://firma.pl", "https://firma.pl"},
      {IdentKind::Www, "file:///C:/Windows/notepad.exe", nullptr},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.text);
    Make(c.kind);
    SetWindowTextA(Edit(), c.text);
    opened.clear();
    g_beeps = 0;
    SendMessageW(Edit(), WM_LBUTTONDOWN, MK_LBUTTON | MK_CONTROL, MAKELPARAM(5, 5));
    SendMessageW(Edit(), WM_LBUTTONUP, MK_CONTROL, MAKELPARAM(5, 5));
    if (c.expected) {
      ASSERT_EQ(opened.size(), 1u);
      EXPECT_EQ(opened[0], c.expected);
    } else {
      EXPECT_TRUE(opened.empty());
      EXPECT_EQ(g_beeps, 1);
    }
  }
  // A click without Ctrl is an ordinary click.
  opened.clear();
  SendMessageW(Edit(), WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(5, 5));
  SendMessageW(Edit(), WM_LBUTTONUP, 0, MAKELPARAM(5, 5));
  EXPECT_TRUE(opened.empty());
}

TEST_F(IdentEditTest, BrowseButtonAndF4AskTheChooser) {
  std::vector<IdentKind> asked;
  SetPathChooserHook([&](HWND, IdentKind kind, std::string& path) {
    asked.push_back(kind);
    if (path.empty()) return false;  // the user cancelled
    path = kind == IdentKind::Folder ? "C:\\Faktury" : "C:\\Faktury\\f\xB3.pdf";
    return true;
  });
  Make(IdentKind::Folder);
  HWND button = GetDlgItem(Edit(), CVelIdentEdit::kBrowseButtonId);
  ASSERT_NE(button, nullptr);
  SendMessageW(button, BM_CLICK, 0, 0);
  PumpMessages();
  EXPECT_EQ(GetTextA(Edit()), "");  // cancelled: the text stays
  SetWindowTextA(Edit(), "C:\\");
  SendMessageW(button, BM_CLICK, 0, 0);
  PumpMessages();
  EXPECT_EQ(GetTextA(Edit()), "C:\\Faktury");

  Make(IdentKind::File, L"x");
  SetFocus(Edit());
  SendMessageW(Edit(), WM_KEYDOWN, VK_F4, 1);
  EXPECT_EQ(GetTextA(Edit()), "C:\\Faktury\\f\xB3.pdf");
  EXPECT_FALSE(Faulty());
  EXPECT_EQ(asked, (std::vector<IdentKind>{IdentKind::Folder, IdentKind::Folder, IdentKind::File}));
  // The text keeps clear of the button.
  const LRESULT margins = SendMessageW(Edit(), EM_GETMARGINS, 0, 0);
  RECT buttonRect;
  GetWindowRect(GetDlgItem(Edit(), CVelIdentEdit::kBrowseButtonId), &buttonRect);
  EXPECT_GE(HIWORD(margins), buttonRect.right - buttonRect.left);

}

TEST_F(IdentEditTest, TimeFieldStepsTheFieldUnderTheCaret) {
  Make(IdentKind::Time, L"09:30");
  SetFocus(Edit());
  const struct {
    int caret;
    WPARAM key;
    const char* expected;
  } steps[] = {{0, VK_UP, "10:30"}, {4, VK_DOWN, "10:29"}, {1, VK_DOWN, "09:29"}, {3, VK_UP, "09:30"}};
  for (const auto& s : steps) {
    SendMessageW(Edit(), EM_SETSEL, s.caret, s.caret);
    SendMessageW(Edit(), WM_KEYDOWN, s.key, 1);
    EXPECT_EQ(GetTextA(Edit()), s.expected);
    DWORD start = 0;
    SendMessageW(Edit(), EM_GETSEL, reinterpret_cast<WPARAM>(&start), 0);
    EXPECT_EQ(static_cast<int>(start), s.caret);
  }
}

TEST_F(IdentEditTest, NumberTakesTheLocaleSeparatorAndLimits) {
  CVelIdentEdit* field = Make(IdentKind::Number);
  IdentOptions options;
  options.decimals = 2;
  options.min = 0;
  options.max = 100;
  field->SetOptions(options);
  SetFocus(Edit());
  Type("99.5");
  EXPECT_EQ(GetTextA(Edit()), "99,5");  // the Polish separator whichever key was pressed
  Leave();
  EXPECT_FALSE(Faulty());
  SetFocus(Edit());
  SendMessageW(Edit(), EM_SETSEL, 4, 4);
  Type("1");
  Leave();
  EXPECT_EQ(GetTextA(Edit()), "99,51");
  EXPECT_FALSE(Faulty());
  SetWindowTextA(Edit(), "100,01");
  Leave();
  EXPECT_TRUE(Faulty());
}

}  // namespace
}  // namespace varion
