// The window classes and the creation hook, in real windows.
#include <windows.h>
#include <commctrl.h>

#include <gtest/gtest.h>

#include <string>
#include <thread>

#include "base/text.h"
#include "framework/hook_supp_win.h"
#include "base/library_module_win.h"
#include "controls/calendar_win.h"
#include "controls/date_edit_win.h"
#include "controls/ident_edit_win.h"
#include "controls/small_controls_win.h"
#include "controls/private_messages.h"
#include "controls/currency_edit_win.h"
#include "controls/vel_controls_win.h"
#include "diagnostics/failure_boundary_win.h"
#include "diagnostics/message_box_seam_win.h"
#include "tests/win_support.h"

namespace varion {
namespace {

using testing::MakeParentWindow;
using testing::PumpMessages;
using testing::unique_hwnd;

unique_hwnd Create(HWND parent, const wchar_t* cls, DWORD style = WS_BORDER) {
  return unique_hwnd(CreateWindowExW(0, cls, L"", WS_CHILD | WS_VISIBLE | style, 10, 10, 160, 22, parent,
                                     reinterpret_cast<HMENU>(100), GetModuleHandleW(nullptr), nullptr));
}

class HookTest : public ::testing::Test {
 protected:
  void SetUp() override {
    CHookSupp::InitVXAXVelControls(nullptr);
    CHookSupp::InstallUIHook();
    m_parent = MakeParentWindow();
    ASSERT_TRUE(m_parent);
  }
  unique_hwnd m_parent;
};

TEST_F(HookTest, ClassesAreRegisteredAsCopiesOrAsOwnGlobalClasses) {
  std::size_t count = 0;
  const VelClassEntry* table = VelClassTable(&count);
  ASSERT_EQ(count, 41u);
  for (std::size_t i = 0; i < count; ++i) {
    SCOPED_TRACE(table[i].name);
    WNDCLASSEXW wc{};
    wc.cbSize = sizeof wc;
    ASSERT_TRUE(GetClassInfoExW(LibraryModule(), text::Cp1250ToWide(table[i].name).c_str(), &wc));
    EXPECT_TRUE(wc.style & CS_GLOBALCLASS);
    if (table[i].baseClass) {
      WNDCLASSEXW base{};
      base.cbSize = sizeof base;
      ASSERT_TRUE(GetClassInfoExW(nullptr, text::Cp1250ToWide(table[i].baseClass).c_str(), &base));
      EXPECT_EQ(wc.style, base.style | CS_GLOBALCLASS);
      EXPECT_EQ(wc.lpfnWndProc, base.lpfnWndProc);
      EXPECT_EQ(wc.cbWndExtra, base.cbWndExtra);
    } else {
      EXPECT_EQ(wc.style, static_cast<UINT>(CS_GLOBALCLASS | 11));
      EXPECT_EQ(wc.hbrBackground, nullptr);
      EXPECT_EQ(wc.hCursor, LoadCursorW(nullptr, reinterpret_cast<LPCWSTR>(IDC_ARROW)));
    }
  }
  for (const wchar_t* name : {L"VXAX_Edit", L"VXAX_ListBox", L"VXAX_ComboBox"}) {
    WNDCLASSEXW wc{};
    wc.cbSize = sizeof wc;
    EXPECT_TRUE(GetClassInfoExW(LibraryModule(), name, &wc)) << text::WideToCp1250(name);
  }
  // Global: found whatever instance a template's window is created with.
  WNDCLASSEXW wc{};
  wc.cbSize = sizeof wc;
  EXPECT_TRUE(GetClassInfoExW(reinterpret_cast<HINSTANCE>(0x12340000), L"vel_curredit", &wc));
}

TEST_F(HookTest, EachNameGetsItsObjectAndOtherClassesPassUnchanged) {
  struct Case {
    const wchar_t* cls;
    DWORD style;
    const char* expected;  // nullptr: no object
  } cases[] = {
      {L"vel_curredit", WS_BORDER, "amount"},       {L"vel_currenteredit", WS_BORDER, "amount enter"},
      {L"vel_dateedit", WS_BORDER, "edit"},         {L"vel_idwewnetrznyedit", WS_BORDER, "edit"},
      {L"vel_analitykaedit", WS_BORDER, "analityka"}, {L"DropdownCombobox", CBS_DROPDOWN, "combo"},
      {L"vel_eyes", 0, nullptr},  // a class of its own, not in the map
      {L"VXAX_Edit", WS_BORDER, nullptr},           {L"Edit", WS_BORDER, nullptr},
      {L"VEL_CURREDIT", WS_BORDER, "amount"},  // class names ignore case
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(text::WideToCp1250(c.cls));
    unique_hwnd w = Create(m_parent.get(), c.cls, c.style);
    ASSERT_TRUE(w);
    CVelControlBase* object = CVelControlBase::FromHandle(w.get());
    if (!c.expected) {
      EXPECT_EQ(object, nullptr);
      continue;
    }
    ASSERT_NE(object, nullptr);
    const std::string kind = c.expected;
    const bool enter = dynamic_cast<CVelCurrencyEnterEdit*>(object) != nullptr;
    const bool right = kind == "edit"           ? dynamic_cast<CVelEditBase*>(object) != nullptr
                       : kind == "amount"       ? CVelCurrencyEdit::FromHandle(w.get()) != nullptr && !enter
                       : kind == "amount enter" ? enter
                       : kind == "analityka"    ? CVelAnalitykaEdit::FromHandle(w.get()) != nullptr
                                                : dynamic_cast<CVelComboBox*>(object) != nullptr;
    EXPECT_TRUE(right) << kind;
  }
  // An amount field made by the hook shows its value once the edit exists.
  unique_hwnd amount(CreateWindowExW(0, L"vel_curredit", L"1234,5", WS_CHILD | WS_BORDER, 0, 0, 120, 20,
                                     m_parent.get(), nullptr, nullptr, nullptr));
  EXPECT_EQ(CVelCurrencyEdit::FromHandle(amount.get())->GetValue(), Amount::FromRaw(12345000));
  // The copy still behaves as the system class: typing lands in the text.
  unique_hwnd edit = Create(m_parent.get(), L"vel_adresedit");
  SetFocus(edit.get());
  for (wchar_t ch : std::wstring(L"12\u0105")) SendMessageW(edit.get(), WM_CHAR, ch, 1);
  EXPECT_EQ(testing::GetTextA(edit.get()), "12ą");
}

TEST_F(HookTest, IdentifierClassesGetTheFieldOfTheirKind) {
  for (int k = static_cast<int>(IdentKind::Nip); k <= static_cast<int>(IdentKind::Param); ++k) {
    const auto kind = static_cast<IdentKind>(k);
    SCOPED_TRACE(IdentClassName(kind));
    unique_hwnd w = Create(m_parent.get(), text::Cp1250ToWide(IdentClassName(kind)).c_str());
    const CVelIdentEdit* field = CVelIdentEdit::FromHandle(w.get());
    ASSERT_NE(field, nullptr);
    EXPECT_EQ(field->GetKind(), kind);
    // Made by the hook, the field finishes its set-up on WM_CREATE: its limit and browse button.
    EXPECT_EQ(static_cast<std::size_t>(SendMessageW(w.get(), EM_GETLIMITTEXT, 0, 0)), IdentMaxLength(kind));
    const bool browses = kind == IdentKind::Folder || kind == IdentKind::File;
    HWND button = GetDlgItem(w.get(), CVelIdentEdit::kBrowseButtonId);
    EXPECT_EQ(button != nullptr, browses);
    if (button) {
      RECT client, r;
      GetClientRect(w.get(), &client);
      GetWindowRect(button, &r);
      MapWindowPoints(nullptr, w.get(), reinterpret_cast<POINT*>(&r), 2);
      EXPECT_TRUE(IsWindowVisible(button));
      EXPECT_GT(r.right - r.left, 0);
      EXPECT_EQ(r.right, client.right) << r.left << "," << r.top << "," << r.right << "," << r.bottom;
    }
  }
}

TEST_F(HookTest, SmallControlClassesGetTheirObjects) {
  const struct {
    const wchar_t* cls;
    bool (*right)(HWND);
  } cases[] = {
      {L"vel_addbtn", [](HWND h) { return CVelActionButton::FromHandle(h)->GetAction() == CVelActionButton::kAdd; }},
      {L"vel_deletebtn", [](HWND h) { return CVelActionButton::FromHandle(h)->GetAction() == CVelActionButton::kDelete; }},
      {L"vel_bmpbutton", [](HWND h) { return CVelBmpButton::FromHandle(h) != nullptr; }},
      {L"vel_hyperlink", [](HWND h) { return CVelHyperlink::FromHandle(h) != nullptr; }},
      {L"vel_combohyperlinkex", [](HWND h) { return CVelComboHyperlink::FromHandle(h) != nullptr; }},
      {L"vel_piepercent", [](HWND h) { return CVelPiePercent::FromHandle(h) != nullptr; }},
      {L"vel_infoframe", [](HWND h) { return CVelControlBase::FromHandle(h) != nullptr; }},
      {L"vel_bkgnd", [](HWND h) { return CVelControlBase::FromHandle(h) != nullptr; }},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(text::WideToCp1250(c.cls));
    unique_hwnd w = Create(m_parent.get(), c.cls, 0);
    ASSERT_NE(CVelControlBase::FromHandle(w.get()), nullptr);
    EXPECT_TRUE(c.right(w.get()));
  }
  // Made by the hook, an action button gets its tooltip on WM_CREATE.
  unique_hwnd add = Create(m_parent.get(), L"vel_addbtn", 0);
  EXPECT_NE(CVelActionButton::FromHandle(add.get())->GetTooltip(), nullptr);
}

TEST_F(HookTest, DateFieldsAndCalendarsGetTheirOwnObjects) {
  // A template's date field is the segmented field, its calendar the library's own, which
  // takes the size its font asks for and answers the month-calendar messages.
  unique_hwnd date = Create(m_parent.get(), L"vel_dateedit");
  ASSERT_NE(CVelDateEdit::FromHandle(date.get()), nullptr);
  EXPECT_TRUE(SetWindowTextA(date.get(), "2025-12-24"));
  EXPECT_EQ(testing::GetTextA(date.get()), "2025-12-24");
  EXPECT_FALSE(SetWindowTextA(date.get(), "Wigilia"));

  unique_hwnd calendar = Create(m_parent.get(), L"vel_calendar", 0);
  CVelCalendar* object = CVelCalendar::FromHandle(calendar.get());
  ASSERT_NE(object, nullptr);
  SYSTEMTIME st{};
  EXPECT_TRUE(SendMessageW(calendar.get(), MCM_GETCURSEL, 0, reinterpret_cast<LPARAM>(&st)));
  EXPECT_TRUE(SetWindowTextA(calendar.get(), "2025-12-24"));
  EXPECT_EQ(testing::GetTextA(calendar.get()), "2025-12-24");
}

int g_dispatches = 0;
BOOL CountingProc(HWND, CREATESTRUCTW* cs) {
  ++g_dispatches;
  return cs != nullptr;
}

TEST_F(HookTest, InstallingTwiceHooksOnceAndTheMapCanBeEdited) {
  CHookSupp::InstallUIHook();
  CHookSupp::InstallUIHook();
  ASSERT_TRUE(CHookSupp::IsUIHookInstalled());
  g_dispatches = 0;
  CHookSupp::AddSubclassProc("vel_calculator", CountingProc);
  Create(m_parent.get(), L"vel_calculator");
  EXPECT_EQ(g_dispatches, 1);

  CHookSupp::RemoveSubclassProc("vel_calculator");
  Create(m_parent.get(), L"vel_calculator");
  EXPECT_EQ(g_dispatches, 1);

  CHookSupp::AddSubclassProc("vel_calculator", CountingProc);
  CHookSupp::AddSubclassProc("vel_planner", CountingProc);
  CHookSupp::RemoveSubclassProc(CountingProc);  // every entry with that procedure
  Create(m_parent.get(), L"vel_calculator");
  Create(m_parent.get(), L"vel_planner");
  EXPECT_EQ(g_dispatches, 1);
  EXPECT_EQ(CHookSupp::FindSubclassProc("vel_planner"), nullptr);

  // Replacing an entry: the newest procedure wins.
  const VelSubclassProc original = CHookSupp::FindSubclassProc("vel_wwwedit");
  ASSERT_NE(original, nullptr);
  CHookSupp::AddSubclassProc("vel_wwwedit", CountingProc);
  unique_hwnd w = Create(m_parent.get(), L"vel_wwwedit");
  EXPECT_EQ(g_dispatches, 2);
  EXPECT_EQ(CVelControlBase::FromHandle(w.get()), nullptr);
  CHookSupp::AddSubclassProc("vel_wwwedit", original);

  CHookSupp::SetSubclassingEnabled(false);
  unique_hwnd off = Create(m_parent.get(), L"vel_curredit");
  CHookSupp::SetSubclassingEnabled(true);
  EXPECT_EQ(CVelControlBase::FromHandle(off.get()), nullptr);
}

TEST_F(HookTest, HookIsPerThread) {
  bool withoutHook = true, withHook = false, installedBefore = true;
  std::thread t([&] {
    unique_hwnd a(CreateWindowExW(0, L"vel_curredit", L"", WS_POPUP, 0, 0, 50, 20, nullptr, nullptr, nullptr, nullptr));
    withoutHook = CVelControlBase::FromHandle(a.get()) != nullptr;
    installedBefore = CHookSupp::IsUIHookInstalled();
    CHookSupp::InstallUIHook();
    unique_hwnd b(CreateWindowExW(0, L"vel_curredit", L"", WS_POPUP, 0, 0, 50, 20, nullptr, nullptr, nullptr, nullptr));
    withHook = CVelControlBase::FromHandle(b.get()) != nullptr;
    b.reset();
    CHookSupp::RemoveUIHook();
  });
  t.join();
  EXPECT_FALSE(installedBefore);
  EXPECT_FALSE(withoutHook);
  EXPECT_TRUE(withHook);
  EXPECT_TRUE(CHookSupp::IsUIHookInstalled());  // this thread's hook is untouched
}

BOOL ThrowingProc(HWND, CREATESTRUCTW*) {
  EXPECT_EQ(CHookSupp::m_nHookGuard.load(), 1);
  throw std::runtime_error("subclass failed");
}

TEST_F(HookTest, ThrowingSubclassProcedureIsReportedAndTheWindowIsStillCreated) {
  const unsigned caught = FailuresCaughtOnThread();
  auto previous = SetFrameworkMessageBox([](HWND, const std::string&, const std::string&, UINT) { return IDOK; });
  CHookSupp::AddSubclassProc("vel_planner", ThrowingProc);
  unique_hwnd w = Create(m_parent.get(), L"vel_planner");
  CHookSupp::RemoveSubclassProc("vel_planner");
  SetFrameworkMessageBox(previous);
  EXPECT_TRUE(IsWindow(w.get()));
  EXPECT_EQ(FailuresCaughtOnThread(), caught + 1);
  EXPECT_EQ(CHookSupp::m_nHookGuard.load(), 0);
}

TEST_F(HookTest, UnloadingRemovesTheHooksOfThreadsStillRunning) {
  const unique_file installed(CreateEventW(nullptr, TRUE, FALSE, nullptr)),
      removed(CreateEventW(nullptr, TRUE, FALSE, nullptr));
  bool attachedAfter = true;
  std::thread t([&] {
    CHookSupp::InstallUIHook();
    SetEvent(installed.get());
    WaitForSingleObject(removed.get(), 5000);
    unique_hwnd a(CreateWindowExW(0, L"vel_curredit", L"", WS_POPUP, 0, 0, 50, 20, nullptr, nullptr, nullptr, nullptr));
    attachedAfter = CVelControlBase::FromHandle(a.get()) != nullptr;
  });
  WaitForSingleObject(installed.get(), 5000);
  EXPECT_EQ(CHookSupp::InstalledUIHookCount(), 2u);  // this thread's and the other's
  CHookSupp::RemoveAllUIHooks();
  EXPECT_EQ(CHookSupp::InstalledUIHookCount(), 0u);
  SetEvent(removed.get());
  t.join();
  EXPECT_FALSE(attachedAfter);
  CHookSupp::InstallUIHook();
}

TEST_F(HookTest, WindowCreatedBeforeInitialisationStaysPlain) {
  CHookSupp::RemoveUIHook();
  CHookSupp::TermVelControls();
  // A class of the same name registered by someone else before the library starts.
  WNDCLASSEXW wc{};
  wc.cbSize = sizeof wc;
  ASSERT_TRUE(GetClassInfoExW(nullptr, L"Edit", &wc));
  wc.cbSize = sizeof wc;
  wc.hInstance = GetModuleHandleW(nullptr);
  wc.lpszClassName = L"vel_curredit";
  ASSERT_TRUE(RegisterClassExW(&wc));

  CHookSupp::InstallUIHook();  // not initialised: nothing happens
  EXPECT_FALSE(CHookSupp::IsUIHookInstalled());
  unique_hwnd early = Create(m_parent.get(), L"vel_curredit");
  ASSERT_TRUE(early);

  CHookSupp::InitVXAXVelControls(nullptr);
  CHookSupp::InstallUIHook();
  unique_hwnd late = Create(m_parent.get(), L"vel_curredit");
  EXPECT_EQ(CVelControlBase::FromHandle(early.get()), nullptr);
  EXPECT_NE(CVelControlBase::FromHandle(late.get()), nullptr);

  early.reset();
  late.reset();
  CHookSupp::TermVelControls();
  UnregisterClassW(L"vel_curredit", GetModuleHandleW(nullptr));
  CHookSupp::InitVXAXVelControls(nullptr);
}

TEST(HookDeathTest, ClassNameOfAHundredCharactersStopsTheProcess) {
  CHookSupp::InitVXAXVelControls(nullptr);
  auto createWithNameOf = [](size_t length) {
    std::wstring name(length, L'x');
    WNDCLASSW wc{};
    wc.lpfnWndProc = DefWindowProcW;
    wc.hInstance = GetModuleHandleW(nullptr);
    wc.lpszClassName = name.c_str();
    RegisterClassW(&wc);
    CHookSupp::InstallUIHook();
    HWND h = CreateWindowExW(0, name.c_str(), L"", WS_POPUP, 0, 0, 10, 10, nullptr, nullptr, nullptr, nullptr);
    DestroyWindow(h);
    return h != nullptr;
  };
  EXPECT_TRUE(createWithNameOf(99));
  EXPECT_EXIT(createWithNameOf(100), ::testing::ExitedWithCode(3), "");
}

TEST_F(HookTest, VisualStyleIsInheritedFromTheNearestParentThatHasOne) {
  unique_hwnd child = Create(m_parent.get(), L"vel_bkgnd");
  EXPECT_EQ(CHookSupp::GetVisualStyle(child.get()), VVS_DEFAULT);
  CHookSupp::SetVisualStyle(m_parent.get(), VVS_OFFICE);
  EXPECT_EQ(CHookSupp::GetVisualStyle(child.get()), VVS_OFFICE);
  CHookSupp::SetVisualStyle(child.get(), VVS_CLASSIC);
  EXPECT_EQ(CHookSupp::GetVisualStyle(child.get()), VVS_CLASSIC);
  EXPECT_EQ(CHookSupp::GetVisualStyle(m_parent.get()), VVS_OFFICE);
  CHookSupp::SetVisualStyle(child.get(), VVS_DEFAULT);
  EXPECT_EQ(CHookSupp::GetVisualStyle(child.get()), VVS_OFFICE);
}

struct GridCalls {
  unsigned init = 0, lineModeFlags = 0;
  BOOL lineMode = FALSE;
  int terminated = 0;
} g_grid;

TEST(GridBinding, InitGridStartsTheHostsGridLibraryWithItsValues) {
  CHookSupp::SetGridBinding({});
  EXPECT_FALSE(CHookSupp::InitGrid(7));
  GridLibraryBinding b;
  b.GXInit = [](unsigned v) { g_grid.init = v; };
  b.GXSetNewGridLineMode = [](BOOL on, unsigned f) {
    g_grid.lineMode = on;
    g_grid.lineModeFlags = f;
  };
  b.GXTerminate = [] { ++g_grid.terminated; };
  CHookSupp::SetGridBinding(b);
  EXPECT_TRUE(CHookSupp::InitGrid(0x21));
  EXPECT_EQ(g_grid.init, 3584u);
  EXPECT_EQ(g_grid.lineMode, TRUE);
  EXPECT_EQ(g_grid.lineModeFlags, 0x21u);
  CHookSupp::TerminateGrid();
  EXPECT_EQ(g_grid.terminated, 1);
  CHookSupp::SetGridBinding({});
}

// The three private messages, seen on screen.
TEST_F(HookTest, ControlsShowTheirErrorsVisibly) {
  unique_hwnd edit = Create(m_parent.get(), L"vel_curredit");
  CVelControlBase* object = CVelControlBase::FromHandle(edit.get());
  ASSERT_NE(object, nullptr);
  auto cornerColour = [&] {
    RedrawWindow(edit.get(), nullptr, nullptr, RDW_FRAME | RDW_INVALIDATE | RDW_UPDATENOW);
    PumpMessages(20);
    const WindowDc dc(edit.get(), true);
    COLORREF c = GetPixel(dc.get(), 0, 0);
    return c;
  };
  EXPECT_NE(cornerColour(), CVelControlBase::kFaultyFrame);

  SendMessageW(edit.get(), MsgMarkFaulty(), 1, 0);
  EXPECT_TRUE(object->IsFaulty());
  EXPECT_EQ(cornerColour(), CVelControlBase::kFaultyFrame);

  ErrorTextTriple triple{"Kwota", "Proszę wprowadzić kwotę.", 5};
  SendMessageW(edit.get(), MsgErrorText(), 0, reinterpret_cast<LPARAM>(&triple));
  EXPECT_EQ(object->GetErrorMessage(), "Proszę wprowadzić kwotę.");
  EXPECT_EQ(object->GetErrorTitle(), "Kwota");
  EXPECT_EQ(object->GetErrorCode(), 5u);
  EXPECT_FALSE(object->Balloon().IsVisible());  // not focused: nothing pops up yet

  SendMessageW(edit.get(), MsgIndicate(), 1, 0);
  PumpMessages(20);
  ASSERT_TRUE(object->Balloon().IsVisible());
  wchar_t shown[128] = {};
  TTTOOLINFOW ti{};
  ti.cbSize = TTTOOLINFOW_V2_SIZE;
  ti.hwnd = edit.get();
  ti.uId = 1;
  ti.lpszText = shown;
  SendMessageW(object->Balloon().Window(), TTM_GETTEXTW, std::size(shown), reinterpret_cast<LPARAM>(&ti));
  EXPECT_EQ(text::WideToCp1250(shown), "Proszę wprowadzić kwotę.");

  // Focus elsewhere hides the balloon; focus back shows it again while the control is faulty.
  SetFocus(edit.get());
  EXPECT_TRUE(object->Balloon().IsVisible());
  SetFocus(m_parent.get());
  EXPECT_FALSE(object->Balloon().IsVisible());
  SetFocus(edit.get());
  EXPECT_TRUE(object->Balloon().IsVisible());

  SendMessageW(edit.get(), MsgMarkFaulty(), 0, 0);
  EXPECT_FALSE(object->IsFaulty());
  EXPECT_FALSE(object->Balloon().IsVisible());
  EXPECT_EQ(object->GetErrorMessage(), "");
  PumpMessages(900);  // let the blinking end
  EXPECT_NE(cornerColour(), CVelControlBase::kFaultyFrame);
}

}  // namespace
}  // namespace varion
