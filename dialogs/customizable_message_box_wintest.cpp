// The message box in real windows: the keyboard (Enter, Esc, Alt+letter), the layout read back
// from the child windows, help that never ends the box, the link, the don't-show-again choice
// in the profile, a failing save, the disabled close box, and the framework's boxes through the
// seam.
#include <windows.h>

#include <gtest/gtest.h>

#include <deque>
#include <functional>
#include <vector>

#include "base/text.h"
#include "dialogs/customizable_message_box_win.h"
#include "diagnostics/framework_log.h"
#include "diagnostics/message_box_seam_win.h"
#include "framework/help_plugin_win.h"
#include "framework/hook_supp_win.h"
#include "dialogs/message_box_wintest_support.h"
#include "tests/win_support.h"

namespace CMB {
namespace {

using varion::testing::GetTextA;
using varion::testing::PumpMessages;
using testing::PostKey;
using testing::TimerAnswer;

// A box that runs a driver once its window has loaded, the way a user would act on it.
class DrivenBox : public CustomizableMessageBox {
 public:
  using CustomizableMessageBox::CustomizableMessageBox;
  std::function<void(DrivenBox&)> driver;
  int opened = 0;
  void HandleWindowLoaded() override {
    ++opened;
    if (driver) driver(*this);
  }
  HWND Item(int id) const { return GetDlgItem(m_hWnd, id); }
};

void PostAltLetter(HWND target, wchar_t letter) { PostMessageW(target, WM_SYSCHAR, letter, 1 | (1 << 29)); }
void PostClick(HWND control) {
  PostMessageW(control, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(2, 2));
  PostMessageW(control, WM_LBUTTONUP, 0, MAKELPARAM(2, 2));
}

// Remembers what the framework logs and what the seam shows, and puts both back afterwards.
class MessageBoxWinTest : public ::testing::Test {
 protected:
  void SetUp() override {
    CHookSupp::InitVXAXVelControls(nullptr);
    varion::SetDefaultHelpFile(L"");
    m_previousLog = varion::SetFrameworkLogSink(
        [this](std::string_view area, std::string_view text) { m_log.push_back(std::string(area) + ": " + std::string(text)); });
    m_previousBox = varion::SetFrameworkMessageBox([this](HWND, const std::string& text, const std::string&, UINT) {
      m_boxes.push_back(text);
      return IDOK;
    });
  }
  void TearDown() override {
    varion::SetFrameworkLogSink(m_previousLog);
    varion::SetFrameworkMessageBox(m_previousBox);
  }
  std::vector<std::string> m_log, m_boxes;

 private:
  varion::FrameworkLogSink m_previousLog;
  varion::FrameworkMessageBoxFn m_previousBox;
};

TEST_F(MessageBoxWinTest, KeyboardEnterEscAndAltLetter) {
  ButtonsSetting okOnly = InitButtonsSetting();
  okOnly[ButtonId::No].visible = IsVisible(false);
  okOnly[ButtonId::Cancel].visible = IsVisible(false);
  ButtonsSetting noDefault = InitButtonsSetting();
  noDefault[ButtonId::Ok].isDefault = IsDefault(false);
  noDefault[ButtonId::No].isDefault = IsDefault(true);
  struct Case {
    const char* name;
    ButtonsSetting buttons;
    std::function<void(DrivenBox&)> keys;
    std::optional<ButtonId> answer;
  };
  const Case cases[] = {
      {"Enter presses the default button", InitButtonsSetting(), [](DrivenBox&) { PostKey(GetFocus(), VK_RETURN); },
       ButtonId::Ok},
      {"Enter follows the default", noDefault, [](DrivenBox&) { PostKey(GetFocus(), VK_RETURN); }, ButtonId::No},
      {"Esc is Cancel", InitButtonsSetting(), [](DrivenBox&) { PostKey(GetFocus(), VK_ESCAPE); }, ButtonId::Cancel},
      {"Esc without a Cancel button ends with none", okOnly, [](DrivenBox&) { PostKey(GetFocus(), VK_ESCAPE); },
       std::nullopt},
      {"Alt+N is No", InitButtonsSetting(), [](DrivenBox&) { PostAltLetter(GetFocus(), L'n'); }, ButtonId::No},
      {"Alt+A is Cancel", InitButtonsSetting(), [](DrivenBox&) { PostAltLetter(GetFocus(), L'a'); }, ButtonId::Cancel},
      {"a mouse click", InitButtonsSetting(), [](DrivenBox& b) { PostClick(b.Item(30106)); }, ButtonId::No},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    DrivenBox box(MessageBoxType::Question, "Dokument został zmieniony.", "Czy zapisać zmiany?", c.buttons);
    box.driver = c.keys;
    EXPECT_EQ(box.Show(), c.answer);
    EXPECT_EQ(box.opened, 1);
  }
  EXPECT_TRUE(m_boxes.empty());
}

// The child windows as placed, in client coordinates of the box.
RECT ChildRect(HWND dialog, int id) {
  RECT r{};
  HWND h = GetDlgItem(dialog, id);
  if (!h || !IsWindowVisible(h)) return r;
  GetWindowRect(h, &r);
  MapWindowPoints(nullptr, dialog, reinterpret_cast<POINT*>(&r), 2);
  return r;
}

TEST_F(MessageBoxWinTest, LayoutWrapsKeepsButtonsApartAndFitsTheMonitor) {
  std::string longText;
  while (longText.size() < 10000) longText += "Zażółć gęślą jaźń w bardzo długim opisie. ";
  struct Case {
    const char* name;
    std::string description;
    bool scrolls;
  };
  const Case cases[] = {
      {"a paragraph wraps", "Nie można zamknąć okresu, ponieważ w rejestrze VAT są dokumenty niezaksięgowane "
                            "z datą wcześniejszą niż data zamknięcia. Zaksięguj je albo zmień datę.", false},
      {"ten thousand characters scroll", longText, true},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    DrivenBox box(MessageBoxType::Warning, c.description, "Czy mimo to kontynuować?", InitButtonsSetting());
    box.SetURL("https://pomoc.example.com/okresy").SetDataSavingSettings(
        std::make_unique<RegistrySetting>("Ostrzezenia", "Okresy", std::make_shared<varion::MemoryProfile>()));
    box.driver = [&](DrivenBox& b) {
      HWND d = b.m_hWnd;
      RECT window;
      GetWindowRect(d, &window);
      MONITORINFO mi{sizeof mi, {}, {}, 0};
      GetMonitorInfoW(MonitorFromWindow(d, MONITOR_DEFAULTTOPRIMARY), &mi);
      EXPECT_GE(window.left, mi.rcWork.left);
      EXPECT_GE(window.top, mi.rcWork.top);
      EXPECT_LE(window.right, mi.rcWork.right);
      EXPECT_LE(window.bottom, mi.rcWork.bottom);
      RECT client;
      GetClientRect(d, &client);
      std::vector<RECT> rects;
      for (int id = kIdcIcon; id <= 30107; ++id) {
        const RECT r = ChildRect(d, id);
        ASSERT_FALSE(IsRectEmpty(&r)) << "control " << id << " is not shown";
        EXPECT_LE(r.right, client.right) << id;
        EXPECT_LE(r.bottom, client.bottom) << id;
        for (const RECT& other : rects) {
          RECT both;
          EXPECT_FALSE(IntersectRect(&both, &r, &other)) << "control " << id << " overlaps another";
        }
        rects.push_back(r);
      }
      HWND info = b.Item(kIdcInfo);
      for (int id : {kIdcInfo, kIdcQuestion})
        EXPECT_TRUE(GetWindowLongPtrW(b.Item(id), GWL_STYLE) & ES_READONLY) << "the user cannot edit the texts";
      const LRESULT lines = SendMessageW(info, EM_GETLINECOUNT, 0, 0);
      EXPECT_GT(lines, 1) << "the text wraps";
      const bool scrollBar = (GetWindowLongPtrW(info, GWL_STYLE) & WS_VSCROLL) != 0;
      EXPECT_EQ(scrollBar, c.scrolls);
      if (!c.scrolls) {
        // Every line is inside the rectangle: the last character's position is above its bottom.
        const int last = GetWindowTextLengthW(info) - 1;
        const LRESULT pos = SendMessageW(info, EM_POSFROMCHAR, static_cast<WPARAM>(last), 0);
        RECT r;
        GetClientRect(info, &r);
        EXPECT_LT(static_cast<short>(HIWORD(pos)), r.bottom);
      }
      EXPECT_EQ(GetTextA(b.Item(30105)), "&OK");
      EXPECT_EQ(GetTextA(b.Item(30106)), "&Nie");
      EXPECT_EQ(GetTextA(b.Item(30107)), "&Anuluj");
      EXPECT_NE(SendMessageW(b.Item(kIdcIcon), STM_GETICON, 0, 0), 0);
      EXPECT_EQ(GetTextA(d), "Ostrzeżenie");
      PostKey(GetFocus(), VK_RETURN);
    };
    EXPECT_EQ(box.Show(), ButtonId::Ok);
  }
}

TEST_F(MessageBoxWinTest, HelpNeverEndsTheBoxAndTheLinkOpensWithOpen) {
  std::vector<std::pair<std::string, std::string>> opened;
  // A help file whose section for the box's template holds its help text.
  const std::wstring helpFile = varion::testing::ProgramFolder() + L"cmb_help.ini";
  WritePrivateProfileStringW(L"IDD_CMB_MESSAGEBOX", L"Text", L"Stawki zmieniają się co roku.", helpFile.c_str());
  varion::SetDefaultHelpFile(helpFile);
  const LinkOpener previous = SetLinkOpener(
      [&](HWND, const std::string& verb, const std::string& url) { opened.emplace_back(verb, url); });
  DrivenBox box(MessageBoxType::Information, "Zmieniły się stawki.", "", InitButtonsSetting());
  box.SetButtonSetting(ButtonId::No, ButtonSetting::HelpButton()).SetURL("https://pomoc.example.com/stawki");
  int helpSeen = -1;
  box.driver = [&](DrivenBox& b) {
    SendMessageW(b.Item(30106), BM_CLICK, 0, 0);
    helpSeen = IsWindow(b.m_hWnd) && IsWindowVisible(b.m_hWnd) ? 1 : 0;
    EXPECT_EQ(GetTextA(b.Item(30106)), "Pomoc");
    PostClick(b.Item(kIdcLink));
    PostMessageW(b.Item(30105), BM_CLICK, 0, 0);
  };
  EXPECT_EQ(box.Show(), ButtonId::Ok);
  SetLinkOpener(previous);
  EXPECT_EQ(helpSeen, 1);
  ASSERT_EQ(opened.size(), 1u);
  EXPECT_EQ(opened[0].first, "open");
  EXPECT_EQ(opened[0].second, "https://pomoc.example.com/stawki");
  ASSERT_EQ(m_boxes.size(), 1u) << "help shows its text and the box stays";
  EXPECT_EQ(m_boxes[0], "Stawki zmieniają się co roku.");
  DeleteFileW(helpFile.c_str());
}

TEST_F(MessageBoxWinTest, DontShowAgainIsRememberedOnlyThroughAnAnswer) {
  auto profile = std::make_shared<varion::MemoryProfile>();
  const auto ask = [&](std::function<void(DrivenBox&)> driver) {
    DrivenBox box(MessageBoxType::Question, "Usunąć dokument?", "", InitButtonsSetting());
    box.SetDataSavingSettings(std::make_unique<RegistrySetting>("Pytania", "Usun", profile));
    box.driver = std::move(driver);
    const auto answer = box.Show();
    EXPECT_EQ(box.WasOpened(), box.opened == 1);
    return std::make_pair(answer, box.opened);
  };
  // Ticked, then Cancel: nothing remembered.
  auto r = ask([](DrivenBox& b) {
    SendMessageW(b.Item(kIdcDontShowAgain), BM_CLICK, 0, 0);
    PostMessageW(b.Item(30107), BM_CLICK, 0, 0);
  });
  EXPECT_EQ(r, std::make_pair(std::optional(ButtonId::Cancel), 1));
  EXPECT_EQ(profile->GetInt("Pytania", "Usun"), std::nullopt);
  // Ticked with Alt+W, then Esc (the close box's way): nothing remembered either.
  r = ask([](DrivenBox& b) {
    PostAltLetter(GetFocus(), L'w');
    PostKey(b.Item(30105), VK_ESCAPE);
  });
  EXPECT_EQ(r, std::make_pair(std::optional(ButtonId::Cancel), 1));
  EXPECT_EQ(profile->GetInt("Pytania", "Usun"), std::nullopt);
  // Ticked, then No: remembered, and the next box does not open.
  r = ask([](DrivenBox& b) {
    PostAltLetter(GetFocus(), L'w');
    PostAltLetter(b.Item(30105), L'n');
  });
  EXPECT_EQ(r, std::make_pair(std::optional(ButtonId::No), 1));
  EXPECT_EQ(profile->GetInt("Pytania", "Usun"), 1);
  r = ask([](DrivenBox&) { PostKey(GetFocus(), VK_RETURN); });
  EXPECT_EQ(r, std::make_pair(std::optional<ButtonId>(), 0));
}

// A setting whose storage fails, as a database that went away.
class FailingSetting : public DataSavingSettings {
 public:
  bool failCanShow = false;
  bool CanShow() override { return failCanShow ? throw varion::ComError(varion::kDbError, "brak połączenia") : true; }
  void SaveData() override { throw varion::ComError(varion::kDbError, "Invalid object name 'pd_Ostrzezenia'."); }
  void HandleBtnClickDontShowAgain(bool) override {}
};

TEST_F(MessageBoxWinTest, AFailingSaveIsLoggedAndTheAnswerStillCounts) {
  for (bool failCanShow : {false, true}) {
    SCOPED_TRACE(failCanShow);
    m_log.clear();
    auto setting = std::make_unique<FailingSetting>();
    setting->failCanShow = failCanShow;
    DrivenBox box(MessageBoxType::Error, "Nie udało się zapisać.", "", InitButtonsSetting());
    box.SetDataSavingSettings(std::move(setting));
    box.driver = [](DrivenBox& b) {
      SendMessageW(b.Item(kIdcDontShowAgain), BM_CLICK, 0, 0);
      PostKey(GetFocus(), VK_RETURN);
    };
    EXPECT_EQ(box.Show(), ButtonId::Ok);
    EXPECT_EQ(box.opened, 1);
    ASSERT_EQ(m_log.size(), failCanShow ? 2u : 1u);
    EXPECT_NE(m_log.back().find("pd_Ostrzezenia"), std::string::npos) << m_log.back();
    EXPECT_TRUE(m_boxes.empty()) << "the failure is not shown over the answer";
  }
}

TEST_F(MessageBoxWinTest, DisabledCloseButtonLeavesOnlyTheButtons) {
  DrivenBox box(MessageBoxType::Warning, "Trwa zamykanie miesiąca.", "", InitButtonsSetting());
  box.SetDisableCloseButton(true).SetVisualStyle(true).SetTitle("Zamknięcie");
  int stillOpen = 0;
  box.driver = [&](DrivenBox& b) {
    const UINT state = GetMenuState(GetSystemMenu(b.m_hWnd, FALSE), SC_CLOSE, MF_BYCOMMAND);
    EXPECT_TRUE(state & MF_GRAYED);
    EXPECT_EQ(GetTextA(b.m_hWnd), "Zamknięcie");
    SendMessageW(b.m_hWnd, WM_COMMAND, IDCANCEL, 0);
    SendMessageW(b.m_hWnd, WM_SYSCOMMAND, SC_CLOSE, 0);
    stillOpen = IsWindowVisible(b.m_hWnd) ? 1 : 0;
    PostMessageW(b.Item(30106), BM_CLICK, 0, 0);
  };
  EXPECT_EQ(box.Show(), ButtonId::No);
  EXPECT_EQ(stillOpen, 1);
}

TEST_F(MessageBoxWinTest, TheFrameworkSeamShowsTheBoxAndMapsTheAnswers) {
  const varion::FrameworkMessageBoxFn previous = InstallAsFrameworkMessageBox();
  struct Case {
    UINT type;
    UINT key;
    int answer;
    const char* seen;
  };
  const Case cases[] = {
      {MB_YESNOCANCEL | MB_ICONQUESTION, VK_RETURN, IDYES, "Zapis|&Tak|&Nie|&Anuluj"},
      {MB_YESNOCANCEL | MB_ICONQUESTION, VK_ESCAPE, IDCANCEL, "Zapis|&Tak|&Nie|&Anuluj"},
      {MB_OK | MB_ICONERROR, VK_ESCAPE, IDOK, "Zapis|&OK"},
      {MB_OKCANCEL, VK_ESCAPE, IDCANCEL, "Zapis|&OK|&Anuluj"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.seen);
    TimerAnswer answer([&](HWND) { PostKey(GetFocus(), c.key); });
    EXPECT_EQ(varion::FrameworkMessageBox(nullptr, "Zapisać zmiany?", "Zapis", c.type), c.answer);
    ASSERT_EQ(TimerAnswer::s_seen.size(), 1u);
    EXPECT_EQ(TimerAnswer::s_seen[0], c.seen);
  }
  varion::SetFrameworkMessageBox(previous);
  EXPECT_TRUE(m_boxes.empty());
}

}  // namespace
}  // namespace CMB
