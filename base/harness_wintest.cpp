// Proves the Windows test harness end to end: a real window, real keystrokes, the Polish locale.
#include <windows.h>

#include <gtest/gtest.h>

#include "base/text.h"
#include "tests/win_support.h"

namespace varion {
namespace {

using testing::GetTextA;
using testing::MakeParentWindow;
using testing::MessageRecorder;
using testing::PumpMessages;

TEST(Harness, EditChildReceivesTypedCharactersAndAnswersWmGetText) {
  auto parent = MakeParentWindow();
  ASSERT_TRUE(parent);
  HWND edit = CreateWindowExW(WS_EX_CLIENTEDGE, L"EDIT", L"", WS_CHILD | WS_VISIBLE | ES_AUTOHSCROLL, 10, 10, 200, 24,
                              parent.get(), reinterpret_cast<HMENU>(100), GetModuleHandleW(nullptr), nullptr);
  ASSERT_TRUE(edit);
  MessageRecorder recorder(edit);
  SetFocus(edit);
  // "Łódź" typed as a user types it: wide WM_CHAR messages.
  for (wchar_t ch : std::wstring(L"\u0141\u00f3d\u017a 12,5")) SendMessageW(edit, WM_CHAR, ch, 1);
  PumpMessages(50);
  EXPECT_EQ(recorder.Count(WM_CHAR), 9);
  EXPECT_EQ(GetTextA(edit), "Łódź 12,5");
  wchar_t wide[32] = {};
  GetWindowTextW(edit, wide, 32);
  EXPECT_EQ(text::WideToCp1250(wide), "Łódź 12,5");
  EXPECT_EQ(GetFocus(), edit);
}

TEST(Harness, PolishLocaleGivesCodePage1250AndPolishSeparators) {
  EXPECT_EQ(GetACP(), 1250u);
  char buf[16] = {};
  ASSERT_GT(GetLocaleInfoA(LOCALE_USER_DEFAULT, LOCALE_SMONDECIMALSEP, buf, sizeof buf), 0);
  EXPECT_STREQ(buf, ",");
  ASSERT_GT(GetLocaleInfoA(LOCALE_USER_DEFAULT, LOCALE_SDECIMAL, buf, sizeof buf), 0);
  EXPECT_STREQ(buf, ",");
  // The ANSI and our own conversion agree on every byte of the code page.
  for (int b = 0x80; b < 0x100; ++b) {
    char in = static_cast<char>(b);
    wchar_t out = 0;
    ASSERT_EQ(MultiByteToWideChar(1250, 0, &in, 1, &out, 1), 1);
    EXPECT_EQ(static_cast<char16_t>(out), text::Cp1250Char(static_cast<unsigned char>(b))) << b;
  }
}

}  // namespace
}  // namespace varion
