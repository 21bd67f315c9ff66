// The dialog base in real dialogs: opening order, OK and apply with errors, the save prompt,
// read-only mode, nested pages, the flexible layout and placement, the errors window, grid
// messages, tips, help, accelerators, the sphere button and stored configuration.
#include <windows.h>
#include <commctrl.h>

#include <gtest/gtest.h>

#include <deque>
#include <functional>
#include <map>
#include <set>
#include <utility>

#include "base/status.h"
#include "base/text.h"
#include "controls/balloon_tip_win.h"
#include "framework/data_exchange_win.h"
#include "framework/flg_dialog_win.h"
#include "framework/framework_wintest.h"
#include "framework/help_plugin_win.h"
#include "framework/hook_supp_win.h"
#include "diagnostics/message_box_seam_win.h"
#include "controls/private_messages.h"
#include "controls/vel_controls_win.h"
#include "tests/win_support.h"

namespace varion {
namespace {

using testing::GetTextA;
using testing::PumpMessages;

// Every box the framework shows, answered at once from a queue (IDCANCEL when it runs dry).
struct BoxCall {
  std::string text, caption;
  UINT type;
};
class BoxAnswers {
 public:
  BoxAnswers() {
    m_previous = SetFrameworkMessageBox([this](HWND, const std::string& text, const std::string& caption, UINT type) {
      calls.push_back({text, caption, type});
      if (answers.empty()) return IDCANCEL;
      const int a = answers.front();
      answers.pop_front();
      return a;
    });
  }
  ~BoxAnswers() { SetFrameworkMessageBox(m_previous); }
  std::vector<BoxCall> calls;
  std::deque<int> answers;

 private:
  FrameworkMessageBoxFn m_previous;
};

// The contractor form of the tests: what it calls is recorded in order.
class FormDialog : public CFlgDialog {
 public:
  explicit FormDialog(HWND parent = nullptr) : CFlgDialog(IDD_TEST_FORM, parent) {
    SetCtrlIdsForModified({{IDC_F_NAME, EN_CHANGE}, {IDC_F_NOTE, EN_CHANGE}, {IDC_F_BRANCH, CBN_SELCHANGE}});
  }

  std::vector<std::string> calls;
  std::string name = "Hurtownia Łódź", note;
  Amount limit = Amount::FromRaw(15000000);
  DateTime since = DateTime(2023, 5, 1);
  long branch = 20;
  bool loadingInLoad = false;
  bool beforeUpdate = true;
  int onUpdate = 0;
  std::function<void(FormDialog&)> driver;
  std::function<void(FormDialog&)> atSubclass;

  void SubclassControls() override {
    calls.push_back("SubclassControls");
    if (atSubclass) atSubclass(*this);
  }
  void OnLoadData(CFlgDataExchange& dx) override {
    calls.push_back("OnLoadData");
    loadingInLoad = IsLoading();
    HWND combo = GetDlgItem(m_hWnd, IDC_F_BRANCH);
    if (SendMessageW(combo, CB_GETCOUNT, 0, 0) == 0) {
      for (auto [text, id] :
           {std::pair{L"Centrala", 10L}, {L"Oddzia\u0142 Krak\u00f3w", 20L}, {L"Oddzia\u0142 Gda\u0144sk", 30L}}) {
        const LRESULT i = SendMessageW(combo, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text));
        SendMessageW(combo, CB_SETITEMDATA, static_cast<WPARAM>(i), id);
      }
    }
    DLX_Text(dx, IDC_F_NAME, name);
    DLX_Text(dx, IDC_F_LIMIT, limit);
    DLX_Text(dx, IDC_F_DATE, since);
    DLX_CBIdent(dx, IDC_F_BRANCH, branch);
    DLX_Text(dx, IDC_F_NOTE, note);
  }
  void OnSaveData(CFlgDataExchange& dx) override {
    calls.push_back("OnSaveData");
    DV_Required(dx, IDC_F_NAME);
    DSX_Text(dx, IDC_F_NAME, name);
    DSV_MaxChars(dx, IDC_F_NAME, name, 40);
    DSX_Text(dx, IDC_F_LIMIT, limit);
    DSX_Text(dx, IDC_F_DATE, since);
    DSX_CBIdent(dx, IDC_F_BRANCH, branch);
    DV_CBRequired(dx, IDC_F_BRANCH);
    DSX_Text(dx, IDC_F_NOTE, note);
  }
  void SetCtrlsReadOnly(bool readOnly) override {
    calls.push_back("SetCtrlsReadOnly");
    CFlgDialog::SetCtrlsReadOnly(readOnly);
  }
  void AddFlexConstraints() override {
    calls.push_back("AddFlexConstraints");
    AddIfNotPresentFlexConstraint(IDC_F_NAME, 0, 1, 0, 0);
    AddIfNotPresentFlexConstraint(IDC_F_NOTE, 0, 1, 0, 0);
    AddIfNotPresentFlexConstraint(IDOK, 1, 1, 1, 1);
    AddIfNotPresentFlexConstraint(IDC_F_PAGE, 0, 1, 0, 1);
  }
  void ShowControlsMessages() override {
    calls.push_back("ShowControlsMessages");
    CFlgDialog::ShowControlsMessages();
  }
  bool BeforeUpdate() override {
    calls.push_back("BeforeUpdate");
    return beforeUpdate;
  }
  int OnUpdate() override {
    calls.push_back("OnUpdate");
    return onUpdate;
  }
  void UndoData() override { calls.push_back("UndoData"); }
  void HandleWindowLoaded() override {
    calls.push_back("HandleWindowLoaded");
    if (driver) driver(*this);
  }
  void OnModified() override { calls.push_back(IsModified() ? "modified" : "unmodified"); }
  void OnRefreshModalContinueDlg() override { calls.push_back("OnRefreshModalContinueDlg"); }
  void OnSphereMenu() override { calls.push_back("OnSphereMenu"); }
  bool OnCommand(UINT id, UINT, HWND) override {
    if (id < 40000) return false;
    calls.push_back("command " + std::to_string(id));
    return true;
  }

  HWND Item(int id) const { return GetDlgItem(m_hWnd, id); }
  void Type(int id, const std::string& text) const { SetWindowTextW(Item(id), text::Cp1250ToWide(text).c_str()); }
  void Click(int id) const { SendMessageW(Item(id), BM_CLICK, 0, 0); }
  int Count(const std::string& call) const { return static_cast<int>(std::count(calls.begin(), calls.end(), call)); }
};

class DialogTest : public ::testing::Test {
 protected:
  void SetUp() override {
    CHookSupp::InitVXAXVelControls(nullptr);
    CHookSupp::InstallUIHook();
    SetApplicationProfile(nullptr);
    SetDefaultHelpFile(L"");
  }
  void TearDown() override { SetApplicationProfile(nullptr); }
  static std::vector<std::string> Messages(const CFlgDialog& d) {
    std::vector<std::string> out;
    for (const auto& r : *d.GetErrorsArray()) out.push_back(r.message);
    return out;
  }
  BoxAnswers m_boxes;
};

TEST_F(DialogTest, OpeningRunsTheHooksInOrderAndLoadsTheControls) {
  FormDialog d;
  ASSERT_TRUE(d.Create(nullptr));
  EXPECT_EQ(d.calls, (std::vector<std::string>{"SubclassControls", "OnLoadData", "SetCtrlsReadOnly",
                                               "AddFlexConstraints", "ShowControlsMessages"}));
  EXPECT_TRUE(d.loadingInLoad);
  EXPECT_FALSE(d.IsLoading());
  EXPECT_FALSE(d.IsModified());  // the texts set while loading do not count as changes
  EXPECT_EQ(GetTextA(d.Item(IDC_F_NAME)), "Hurtownia Łódź");
  EXPECT_EQ(GetTextA(d.Item(IDC_F_LIMIT)), "1500,0000");  // the amount field answers its plain value
  EXPECT_EQ(GetTextA(d.Item(IDC_F_BRANCH)), "Oddział Kraków");
  // Without help both help buttons say so.
  EXPECT_EQ(GetTextA(d.Item(9)), "Brak pomocy");
  EXPECT_EQ(GetTextA(d.Item(0xE146)), "Brak pomocy");
  PumpMessages(30);
  EXPECT_EQ(d.calls.back(), "HandleWindowLoaded");
  EXPECT_EQ(d.Count("HandleWindowLoaded"), 1);
  // The library's classes in the template got their objects.
  EXPECT_NE(CVelControlBase::FromHandle(d.Item(IDC_F_LIMIT)), nullptr);
  EXPECT_EQ(d.GetTemplateName(), "#9102");
  EXPECT_EQ(d.GetTemplateID(), static_cast<UINT>(IDD_TEST_FORM));
}

TEST_F(DialogTest, OkWithErrorsShowsThemAllMarksTheControlsAndFocusesTheFirst) {
  FormDialog d;
  ASSERT_TRUE(d.Create(nullptr));
  d.Type(IDC_F_NAME, "   ");
  // The amount and date fields refuse texts that are no amount or day and keep their own, so
  // they raise no error.
  d.Type(IDC_F_LIMIT, "dużo");
  const std::string dateBefore = GetTextA(d.Item(IDC_F_DATE));
  d.Type(IDC_F_DATE, "2024-02-30x");
  EXPECT_EQ(GetTextA(d.Item(IDC_F_DATE)), dateBefore);
  SendMessageW(d.Item(IDC_F_BRANCH), CB_SETCURSEL, static_cast<WPARAM>(-1), 0);
  SetFocus(d.Item(IDC_F_NOTE));
  d.Click(IDOK);
  PumpMessages(20);
  ASSERT_TRUE(IsWindow(d.m_hWnd));  // errors keep the dialog open
  EXPECT_EQ(Messages(d), (std::vector<std::string>{"Proszę wprowadzić wartość.", "Proszę wybrać element."}));
  EXPECT_FALSE(CVelControlBase::FromHandle(d.Item(IDC_F_LIMIT))->IsFaulty());
  EXPECT_FALSE(CVelControlBase::FromHandle(d.Item(IDC_F_DATE))->IsFaulty());
  for (int id : {IDC_F_NAME, IDC_F_BRANCH}) {
    SCOPED_TRACE(id);
    auto* control = CVelControlBase::FromHandle(d.Item(id));
    ASSERT_NE(control, nullptr);
    EXPECT_TRUE(control->IsFaulty());
  }
  EXPECT_FALSE(CVelControlBase::FromHandle(d.Item(IDC_F_NIP))->IsFaulty());
  EXPECT_EQ(GetFocus(), d.Item(IDC_F_NAME));
  auto* name = CVelControlBase::FromHandle(d.Item(IDC_F_NAME));
  EXPECT_EQ(name->GetErrorMessage(), "Proszę wprowadzić wartość.");
  EXPECT_TRUE(name->Balloon().IsVisible());
  EXPECT_EQ(d.Count("BeforeUpdate"), 0);

  // The faulty edit is tinted by the dialog.
  const WindowDc dc(d.Item(IDC_F_NAME));
  const auto brush = reinterpret_cast<HBRUSH>(SendMessageW(
      d.m_hWnd, WM_CTLCOLOREDIT, reinterpret_cast<WPARAM>(dc.get()), reinterpret_cast<LPARAM>(d.Item(IDC_F_NAME))));
  EXPECT_EQ(brush, CVelControlBase::FaultyBrush());

  // Corrected: the marks go on the next check, and OK ends the dialog.
  d.Type(IDC_F_NAME, "Nowa nazwa");
  d.Type(IDC_F_LIMIT, "2 000,50");
  d.Type(IDC_F_DATE, "2024-03-01");
  SendMessageW(d.Item(IDC_F_BRANCH), CB_SETCURSEL, 2, 0);
  d.Click(IDOK);
  EXPECT_FALSE(IsWindow(d.m_hWnd));
  EXPECT_EQ(d.GetResult(), IDOK);
  EXPECT_EQ(d.name, "Nowa nazwa");
  EXPECT_EQ(d.limit, Amount::FromRaw(20005000));
  EXPECT_EQ(d.since, DateTime(2024, 3, 1));
  EXPECT_EQ(d.branch, 30);
  EXPECT_EQ(d.Count("BeforeUpdate"), 1);
  EXPECT_EQ(d.Count("OnUpdate"), 1);
}

TEST_F(DialogTest, ApplySucceedsOnlyAfterACleanSaveAndAnAcceptedUpdate) {
  struct Case {
    bool errors, skip, before;
    int update;
    bool result;
    int beforeCalls, updateCalls;
  } cases[] = {
      {false, false, true, 0, true, 1, 1},   {false, false, true, 5, true, 1, 1}, {false, false, true, -1, false, 1, 1},
      {false, false, false, 0, false, 1, 0}, {false, true, true, 0, true, 0, 0},  {true, true, true, 0, false, 0, 0},
      {true, false, true, 0, false, 0, 0},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(::testing::Message() << "errors " << c.errors << " skip " << c.skip << " before " << c.before
                                      << " update " << c.update);
    FormDialog d;
    ASSERT_TRUE(d.Create(nullptr));
    d.beforeUpdate = c.before;
    d.onUpdate = c.update;
    d.SetApplyWithoutUpdate(c.skip);
    if (c.errors) d.Type(IDC_F_NAME, "");
    EXPECT_EQ(d.HandleApply(), c.result);
    EXPECT_EQ(d.HasErrors(), c.errors);
    EXPECT_EQ(d.Count("BeforeUpdate"), c.beforeCalls);
    EXPECT_EQ(d.Count("OnUpdate"), c.updateCalls);
  }
}

class ThrowingDialog : public FormDialog {
 public:
  bool emptyCheck = false;
  void OnSaveData(CFlgDataExchange& dx) override {
    FormDialog::OnSaveData(dx);
    if (emptyCheck) CheckIfEmptyAddErrorAndThrow(dx, IDC_F_NIP);
  }
  int OnUpdate() override { throw ComError(kDbError, "Naruszenie ograniczenia UNIQUE", "23000"); }
  bool OnCommand(UINT id, UINT, HWND) override {
    if (id == 40200) throw std::runtime_error("handler failed");
    return false;
  }
};

TEST_F(DialogTest, ThrownErrorsInsideTheCycleAreShownAndNeverEscapeTheWindowProcedure) {
  ThrowingDialog d;
  ASSERT_TRUE(d.Create(nullptr));
  d.Type(IDC_F_NIP, "1234563218");
  d.Click(IDOK);  // OnUpdate throws: the dialog stays, the reason is shown
  ASSERT_TRUE(IsWindow(d.m_hWnd));
  ASSERT_EQ(m_boxes.calls.size(), 1u);
  EXPECT_EQ(m_boxes.calls[0].text, "Naruszenie ograniczenia UNIQUE");
  EXPECT_EQ(m_boxes.calls[0].caption, "Kontrahent");
  EXPECT_EQ(m_boxes.calls[0].type, static_cast<UINT>(MB_OK | MB_ICONERROR));

  // The empty check records once, though it throws as well.
  m_boxes.calls.clear();
  d.emptyCheck = true;
  d.Type(IDC_F_NIP, "");
  d.Click(IDOK);
  EXPECT_EQ(Messages(d), (std::vector<std::string>{"Pole nie może być puste."}));
  EXPECT_TRUE(m_boxes.calls.empty());
  EXPECT_EQ(GetFocus(), d.Item(IDC_F_NIP));

  SendMessageW(d.m_hWnd, WM_COMMAND, 40200, 0);
  ASSERT_EQ(m_boxes.calls.size(), 1u);
  EXPECT_EQ(m_boxes.calls[0].text, "handler failed");
  EXPECT_TRUE(IsWindow(d.m_hWnd));
}

TEST_F(DialogTest, CancelAsksOnlyAboutChangesOfAnEditableDialog) {
  struct Case {
    const char* what;
    bool modify, readOnly, noPrompt;
    int answer;
    bool asked, open;
    int result;
    int undo;
  } cases[] = {
      {"unchanged", false, false, false, 0, false, false, IDCANCEL, 1},
      {"changed, cancel the question", true, false, false, IDCANCEL, true, true, 0, 0},
      {"changed, do not save", true, false, false, IDNO, true, false, IDCANCEL, 1},
      {"changed, save", true, false, false, IDYES, true, false, IDOK, 0},
      {"changed but read-only", true, true, false, 0, false, false, IDCANCEL, 1},
      {"changed, prompt switched off", true, false, true, 0, false, false, IDCANCEL, 1},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.what);
    m_boxes.calls.clear();
    m_boxes.answers = {c.answer};
    FormDialog d;
    d.SetReadOnly(c.readOnly);
    d.SetNoSavePrompt(c.noPrompt);
    ASSERT_TRUE(d.Create(nullptr));
    if (c.modify) {
      d.Type(IDC_F_NOTE, "zmiana");  // a notification from the table marks the dialog modified
      EXPECT_TRUE(d.IsModified());
    }
    d.Click(IDCANCEL);
    if (c.readOnly) SendMessageW(d.m_hWnd, WM_COMMAND, IDCANCEL, 0);  // the button is disabled; the key still works
    ASSERT_EQ(m_boxes.calls.size(), c.asked ? 1u : 0u);
    if (c.asked) {
      EXPECT_EQ(m_boxes.calls[0].text, "Dane zostały zmienione. Czy zapisać wykonane zmiany?");
      EXPECT_EQ(m_boxes.calls[0].caption, "Kontrahent");
      EXPECT_EQ(m_boxes.calls[0].type, static_cast<UINT>(MB_YESNOCANCEL | MB_ICONQUESTION));
    }
    EXPECT_EQ(IsWindow(d.m_hWnd) != FALSE, c.open);
    if (!c.open) {
      EXPECT_EQ(d.GetResult(), c.result);
    }
    EXPECT_EQ(d.Count("UndoData"), c.undo);
  }
}

TEST_F(DialogTest, ModifiedFollowsTheTableAndTellsOnlyOnChange) {
  FormDialog d;
  ASSERT_TRUE(d.Create(nullptr));
  d.calls.clear();
  d.Type(IDC_F_NIP, "123");  // not in the table
  EXPECT_FALSE(d.IsModified());
  d.AddCtrlIdForModified(IDC_F_NIP, EN_CHANGE);
  d.AddCtrlIdForModified(IDC_F_NIP, EN_CHANGE);
  d.Type(IDC_F_NIP, "1234");
  d.Type(IDC_F_NAME, "x");
  EXPECT_TRUE(d.IsModified());
  EXPECT_EQ(d.calls, (std::vector<std::string>{"modified"}));
  d.SetModified(false);
  d.RemoveCtrlIdForModified(IDC_F_NIP);
  d.Type(IDC_F_NIP, "12345");
  EXPECT_FALSE(d.IsModified());
  d.SetModifiedNoCheck(true);
  EXPECT_EQ(d.calls, (std::vector<std::string>{"modified", "unmodified"}));
  d.LoadData();  // reloading never marks
  d.SetModified(false);
  d.calls.clear();
  d.LoadData();
  EXPECT_FALSE(d.IsModified());
}

TEST_F(DialogTest, ModalDialogIsDrivenByKeysAndEndsWithItsResult) {
  FormDialog d;
  d.driver = [](FormDialog& f) {
    HWND name = f.Item(IDC_F_NAME);
    SetFocus(name);
    SendMessageW(name, EM_SETSEL, 0, -1);
    for (wchar_t ch : std::wstring(L"Sp\u00f3\u0142ka")) PostMessageW(name, WM_CHAR, ch, 1);
    // Enter in an edit of a dialog presses the default button.
    PostMessageW(name, WM_KEYDOWN, VK_RETURN, 1);
  };
  EXPECT_EQ(d.DoModal(), IDOK);
  EXPECT_EQ(d.name, "Spółka");
  EXPECT_FALSE(IsWindow(d.m_hWnd));

  FormDialog e;
  e.driver = [](FormDialog& f) { PostMessageW(f.Item(IDC_F_NAME), WM_KEYDOWN, VK_ESCAPE, 1); };
  EXPECT_EQ(e.DoModal(), IDCANCEL);
  EXPECT_TRUE(m_boxes.calls.empty());
}

// "Save and add the next one": the dialog ends with kModalContinue twice, then with OK.
class ContinuedDialog : public FormDialog {
 public:
  int rounds = 0;
  std::vector<HWND> windows;
  explicit ContinuedDialog(HWND parent = nullptr) : FormDialog(parent) {
    driver = [](FormDialog& f) { PostMessageW(f.m_hWnd, GetAppMessageBase() + 100, 0, 0); };
  }
  bool OnMessage(UINT msg, WPARAM, LPARAM, LRESULT&) override {
    if (msg != GetAppMessageBase() + 100) return false;
    windows.push_back(m_hWnd);
    if (++rounds < 3) {
      EndDialog(kModalContinue);
      PostMessageW(m_hWnd, GetAppMessageBase() + 100, 0, 0);
    } else {
      EndDialog(IDOK);
    }
    return true;
  }
};

TEST_F(DialogTest, ModalContinueRefreshesAndKeepsTheWindow) {
  ContinuedDialog d;
  EXPECT_EQ(d.DoModalContinue(), IDOK);
  EXPECT_EQ(d.rounds, 3);
  ASSERT_EQ(d.windows.size(), 3u);
  EXPECT_EQ(d.windows[0], d.windows[2]);  // the same window every round
  EXPECT_EQ(d.Count("OnRefreshModalContinueDlg"), 2);
  EXPECT_EQ(d.Count("OnLoadData"), 3);
  EXPECT_FALSE(IsWindow(d.windows[0]));

  // Plain DoModal ends at the first EndDialog, whatever its result.
  ContinuedDialog once;
  EXPECT_EQ(once.DoModal(), CFlgDialog::kModalContinue);
  EXPECT_EQ(once.Count("OnRefreshModalContinueDlg"), 0);
}

TEST_F(DialogTest, ReadOnlyMakesEditsReadOnlyDisablesTheRestAndSparesTheNamedControls) {
  FormDialog d;
  d.SetReadOnly(true);
  d.AddCtrlNoDisable(IDCANCEL);
  ASSERT_TRUE(d.Create(nullptr));
  auto readOnly = [&](int id) { return (GetWindowLongW(d.Item(id), GWL_STYLE) & ES_READONLY) != 0; };
  auto enabled = [&](int id) { return IsWindowEnabled(d.Item(id)) != FALSE; };
  for (int id : {IDC_F_NAME, IDC_F_NIP, IDC_F_LIMIT, IDC_F_DATE, IDC_F_NOTE}) {
    SCOPED_TRACE(id);
    EXPECT_TRUE(readOnly(id));
    EXPECT_TRUE(enabled(id));
  }
  for (int id : {IDC_F_BRANCH, IDC_F_CHECK, IDOK, 9}) EXPECT_FALSE(enabled(id)) << id;
  for (int id : {IDC_F_LABEL, IDC_F_INFO, IDC_F_CLOSE, IDCANCEL}) EXPECT_TRUE(enabled(id)) << id;

  d.SetReadOnly(false);
  for (int id : {IDC_F_NAME, IDC_F_NOTE}) EXPECT_FALSE(readOnly(id)) << id;
  for (int id : {IDC_F_BRANCH, IDC_F_CHECK, IDOK}) EXPECT_TRUE(enabled(id)) << id;
  EXPECT_FALSE(enabled(IDC_F_DISABLED));  // disabled by its template, and stays so
}

// Every control that is not left alone reaches OnSetCtrlsReadOnly, on opening and both ways,
// including one that the template disabled or an earlier pass already made read-only.
TEST_F(DialogTest, ReadOnlyHookSeesEveryOtherControlEachTime) {
  struct Recording : FormDialog {
    std::vector<std::pair<int, bool>> seen;
    void OnSetCtrlsReadOnly(HWND control, const std::string& className, bool readOnly) override {
      seen.emplace_back(GetDlgCtrlID(control), readOnly);
      FormDialog::OnSetCtrlsReadOnly(control, className, readOnly);
    }
    std::vector<std::pair<int, bool>> Take() { return std::exchange(seen, {}); }
  } d;
  d.AddCtrlNoDisable(IDCANCEL);
  ASSERT_TRUE(d.Create(nullptr));
  auto ids = [](const std::vector<std::pair<int, bool>>& seen, bool readOnly) {
    std::set<int> out;
    for (const auto& [id, flag] : seen)
      if (flag == readOnly) out.insert(id);
    return out;
  };
  const std::vector<std::pair<int, bool>> opening = d.Take();
  const std::set<int> controls = ids(opening, false);
  EXPECT_EQ(opening.size(), controls.size());
  for (int id : {IDC_F_NAME, IDC_F_NIP, IDC_F_BRANCH, IDC_F_NOTE, IDC_F_CHECK, IDC_F_DISABLED, IDOK}) EXPECT_TRUE(controls.count(id)) << id;
  for (int id : {IDC_F_LABEL, IDC_F_INFO, IDC_F_CLOSE, IDCANCEL}) EXPECT_FALSE(controls.count(id)) << id;
  for (bool readOnly : {true, true, false, false}) {
    SCOPED_TRACE(readOnly);
    d.SetReadOnly(readOnly);
    const auto seen = d.Take();
    EXPECT_EQ(seen.size(), controls.size());
    EXPECT_EQ(ids(seen, readOnly), controls);
  }
}

class PageDialog : public CFlgDialog {
 public:
  PageDialog() : CFlgDialog(IDD_TEST_PAGE) {}
  std::string city = "Gdynia";
  void OnLoadData(CFlgDataExchange& dx) override { DLX_Text(dx, IDC_P_CITY, city); }
  void OnSaveData(CFlgDataExchange& dx) override {
    DV_Required(dx, IDC_P_STREET, "Podaj ulicę.");
    DSX_Text(dx, IDC_P_CITY, city);
  }
};

class FormWithPage : public FormDialog {
 public:
  PageDialog page;
  FormWithPage() {
    atSubclass = [this](FormDialog&) { page.CreateOnDialogItem(m_hWnd, IDC_F_PAGE); };
  }
  void OnSaveData(CFlgDataExchange& dx) override {
    FormDialog::OnSaveData(dx);
    page.SaveDataInto(dx.GetErrorsArray());
  }
};

TEST_F(DialogTest, NestedPageTakesThePlaceholderAndShowsItsOwnErrors) {
  FormWithPage d;
  ASSERT_TRUE(d.Create(nullptr));
  HWND page = d.page.GetHWND();
  ASSERT_TRUE(IsWindow(page));
  EXPECT_EQ(GetParent(page), d.m_hWnd);
  EXPECT_EQ(d.Item(IDC_F_PAGE), page);  // the placeholder's identifier, in its place
  EXPECT_EQ(GetTextA(GetDlgItem(page, IDC_P_CITY)), "Gdynia");
  EXPECT_EQ(d.FindNestedPage("#9103"), &d.page);

  d.Type(IDC_F_NAME, "");
  d.Click(IDOK);
  ASSERT_EQ(d.GetErrorsArray()->GetCount(), 2u);
  const auto& pageError = d.GetErrorsArray()->GetAt(1);
  EXPECT_STREQ(pageError.source, "#9103");
  auto* street = CVelControlBase::FromHandle(GetDlgItem(page, IDC_P_STREET));
  ASSERT_NE(street, nullptr);
  EXPECT_TRUE(street->IsFaulty());
  EXPECT_EQ(street->GetErrorMessage(), "Podaj ulicę.");
  EXPECT_EQ(GetFocus(), d.Item(IDC_F_NAME));
  // Pointing at the page's control reaches into the page.
  d.IndicateErrorControl(pageError.source, pageError.dialog, pageError.ctrlId);
  EXPECT_EQ(GetFocus(), GetDlgItem(page, IDC_P_STREET));

  // Read-only mode reaches the page's controls as well.
  d.SetReadOnly(true);
  EXPECT_TRUE(GetWindowLongW(GetDlgItem(page, IDC_P_CITY), GWL_STYLE) & ES_READONLY);
}

TEST_F(DialogTest, DialogLevelErrorsGoToABoxAndOthersToTheirControls) {
  FormDialog d;
  ASSERT_TRUE(d.Create(nullptr));
  CFlgDataExchange dx(d, false);
  dx.AddError(0, "Kontrahent o tym NIP już istnieje.", "Duplikat", 0);
  dx.AddError(IDC_F_NIP, "Nieprawidłowy NIP", "NIP", 7);
  dx.AddError(IDC_X_MISSING, "bez kontrolki");  // nothing to mark, nothing breaks
  d.ShowErrors();
  ASSERT_EQ(m_boxes.calls.size(), 1u);
  EXPECT_EQ(m_boxes.calls[0].text, "Kontrahent o tym NIP już istnieje.");
  EXPECT_EQ(m_boxes.calls[0].caption, "Duplikat");
  EXPECT_EQ(m_boxes.calls[0].type, static_cast<UINT>(MB_OK | MB_ICONERROR));
  auto* nip = CVelControlBase::FromHandle(d.Item(IDC_F_NIP));
  EXPECT_TRUE(nip->IsFaulty());
  EXPECT_EQ(nip->GetErrorTitle(), "NIP");
  EXPECT_EQ(nip->GetErrorCode(), 7u);

  d.RemoveError(IDC_F_NIP);
  EXPECT_FALSE(nip->IsFaulty());
  EXPECT_EQ(d.GetErrorsArray()->GetCount(), 2u);
  d.ShowErrors();  // the box again, and no mark on the NIP
  EXPECT_FALSE(nip->IsFaulty());

  // A disabled control cannot take the focus: it is pointed at instead.
  EnableWindow(d.Item(IDC_F_NOTE), FALSE);
  testing::MessageRecorder rec(d.Item(IDC_F_NOTE));
  d.IndicateErrorControl(d.GetTemplateName().c_str(), d.m_hWnd, IDC_F_NOTE);
  EXPECT_EQ(rec.Count(MsgIndicate()), 1);
  EXPECT_NE(GetFocus(), d.Item(IDC_F_NOTE));
}

TEST_F(DialogTest, ControlsGrowWithTheDialogButNeverShrinkBelowTheTemplate) {
  FormDialog d;
  ASSERT_TRUE(d.Create(nullptr));
  auto rectOf = [&](int id) {
    RECT r;
    GetWindowRect(d.Item(id), &r);
    MapWindowPoints(nullptr, d.m_hWnd, reinterpret_cast<POINT*>(&r), 2);
    return r;
  };
  const RECT name0 = rectOf(IDC_F_NAME), ok0 = rectOf(IDOK), label0 = rectOf(IDC_F_LABEL);
  RECT w;
  GetWindowRect(d.m_hWnd, &w);
  SetWindowPos(d.m_hWnd, nullptr, 0, 0, w.right - w.left + 100, w.bottom - w.top + 40, SWP_NOMOVE | SWP_NOZORDER);
  RECT name1 = rectOf(IDC_F_NAME), ok1 = rectOf(IDOK), label1 = rectOf(IDC_F_LABEL);
  EXPECT_EQ(name1.left, name0.left);
  EXPECT_EQ(name1.right, name0.right + 100);
  EXPECT_EQ(ok1.left, ok0.left + 100);
  EXPECT_EQ(ok1.top, ok0.top + 40);
  EXPECT_EQ(label1.right, label0.right);  // no constraint: stays

  // A client area smaller than the template's (the window itself cannot be dragged that small):
  // everything goes back to its base, nothing shrinks.
  const SIZE base = d.FlexPlugin().GetBaseClientSize();
  SendMessageW(d.m_hWnd, WM_SIZE, SIZE_RESTORED, MAKELPARAM(base.cx - 60, base.cy - 30));
  name1 = rectOf(IDC_F_NAME);
  ok1 = rectOf(IDOK);
  EXPECT_EQ(name1.right, name0.right);
  EXPECT_EQ(ok1.left, ok0.left);

  // The user cannot drag it smaller than the template, nor wider with a fixed width.
  MINMAXINFO mmi{};
  SendMessageW(d.m_hWnd, WM_GETMINMAXINFO, 0, reinterpret_cast<LPARAM>(&mmi));
  EXPECT_EQ(mmi.ptMinTrackSize.x, w.right - w.left);
  d.SetNoHResize(true);
  SendMessageW(d.m_hWnd, WM_GETMINMAXINFO, 0, reinterpret_cast<LPARAM>(&mmi));
  EXPECT_EQ(mmi.ptMaxTrackSize.x, mmi.ptMinTrackSize.x);
}

TEST_F(DialogTest, PlacementIsRememberedAndAnUnusableOneFallsBackToTheDefaultSize) {
  auto profile = std::make_shared<MemoryProfile>();
  SetApplicationProfile(profile);
  RECT placed{};
  {
    FormDialog d;
    d.SetFlxProfileSection("Kontrahent");
    ASSERT_TRUE(d.Create(nullptr));
    SetWindowPos(d.m_hWnd, nullptr, 120, 90, 700, 500, SWP_NOZORDER);
    GetWindowRect(d.m_hWnd, &placed);
    DestroyWindow(d.m_hWnd);
  }
  EXPECT_EQ(profile->GetInt("Kontrahent", "Width"), 700);
  EXPECT_EQ(profile->GetInt("Kontrahent", "Left"), 120);
  EXPECT_EQ(profile->GetInt("Kontrahent", "Maximized"), 0);
  {
    FormDialog d;
    d.SetFlxProfileSection("Kontrahent");
    ASSERT_TRUE(d.Create(nullptr));
    RECT r;
    GetWindowRect(d.m_hWnd, &r);
    EXPECT_EQ(r.left, placed.left);
    EXPECT_EQ(r.top, placed.top);
    EXPECT_EQ(r.right, placed.right);
    EXPECT_EQ(r.bottom, placed.bottom);
  }
  struct Case {
    const char* what;
    StoredPlacement stored;
  } bad[] = {{"off every screen", {false, 700, 500, 30000, 200}},
             {"absurd size", {false, 90000, 500, 10, 10}},
             {"parked minimised", {false, 700, 500, -32000, -32000}}};
  for (const auto& c : bad) {
    SCOPED_TRACE(c.what);
    WritePlacement(*profile, "Kontrahent", c.stored);
    FormDialog d;
    d.SetFlxProfileSection("Kontrahent");
    d.SetDefaultSize(640, 420);
    ASSERT_TRUE(d.Create(nullptr));
    RECT r;
    GetWindowRect(d.m_hWnd, &r);
    EXPECT_EQ(r.right - r.left, 640);
    EXPECT_EQ(r.bottom - r.top, 420);
  }
}

TEST_F(DialogTest, ErrorsWindowListsTheMessagesAndDocksWhereItIsDropped) {
  FormDialog d;
  ASSERT_TRUE(d.Create(nullptr));
  d.EnableErrorsWnd(true);
  d.Type(IDC_F_NAME, "");
  CFlgDataExchange(d, false);
  d.Click(IDOK);
  CErrorsWnd& w = d.ErrorsWnd();
  ASSERT_TRUE(w.Exists());
  EXPECT_TRUE(IsWindowVisible(w.GetHwnd()));
  EXPECT_EQ(w.GetLines(), (std::vector<std::string>{"Proszę wprowadzić wartość."}));
  CFlgDataExchange(d, false).AddError(IDC_F_LIMIT, "Limit przekracza należności.");
  d.AddErrorsToToolWnd();
  EXPECT_EQ(w.GetLines(), (std::vector<std::string>{"Proszę wprowadzić wartość.", "Limit przekracza należności."}));
  EXPECT_EQ(d.GetErrorsWndEdge(), DockEdge::Bottom);

  // Lines lose their line breaks.
  CFlgDataExchange(d, false).AddError(IDC_F_NOTE, "Pierwsza linia\r\ndruga\nkoniec");
  d.AddErrorsToToolWnd();
  EXPECT_EQ(w.GetLines().back(), "Pierwsza liniadrugakoniec");

  RECT dlg, err;
  GetWindowRect(d.m_hWnd, &dlg);
  GetWindowRect(w.GetHwnd(), &err);
  EXPECT_EQ(err.top, dlg.bottom);
  EXPECT_EQ(err.left, dlg.left);

  // Dropped with the cursor just left of the dialog: it docks to the left edge.
  SetCursorPos(dlg.left - 10, (dlg.top + dlg.bottom) / 2);
  SendMessageW(w.GetHwnd(), WM_EXITSIZEMOVE, 0, 0);
  GetWindowRect(w.GetHwnd(), &err);
  EXPECT_EQ(d.GetErrorsWndEdge(), DockEdge::Left);
  EXPECT_EQ(err.right, dlg.left);
  EXPECT_EQ(err.top, dlg.top);
  // It follows the dialog.
  SetWindowPos(d.m_hWnd, nullptr, dlg.left + 50, dlg.top + 20, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
  GetWindowRect(w.GetHwnd(), &err);
  EXPECT_EQ(err.right, dlg.left + 50);
  // Dropped far away: it floats.
  SetCursorPos(5, 5);
  SendMessageW(w.GetHwnd(), WM_EXITSIZEMOVE, 0, 0);
  EXPECT_EQ(d.GetErrorsWndEdge(), DockEdge::None);

  // Choosing a line points at its control.
  SetFocus(d.Item(IDC_F_NOTE));
  SendMessageW(w.GetList(), LB_SETCURSEL, 1, 0);
  SendMessageW(w.GetHwnd(), WM_COMMAND, MAKEWPARAM(1, LBN_DBLCLK), reinterpret_cast<LPARAM>(w.GetList()));
  EXPECT_EQ(GetFocus(), d.Item(IDC_F_LIMIT));
}

TEST_F(DialogTest, GridErrorsBecomeCountedRecordsAndWarningsStayMessages) {
  FormDialog d;
  ASSERT_TRUE(d.Create(nullptr));
  const ValidatableGrid::MessageData price{"Brak ceny w pozycji.", "Brak ceny w %d pozycjach.",
                                           ValidatableGrid::kIconError, 0, IDD_TEST_FORM};
  const ValidatableGrid::MessageData stock{"Niski stan magazynu.", "", ValidatableGrid::kIconWarning, 0, IDD_TEST_FORM};
  CFlgDataExchange(d, false).AddError(IDC_F_NOTE, "stary błąd tej kontrolki");
  d.AddMessageFromGrid(IDC_F_NOTE, price);
  d.AddMessageFromGrid(IDC_F_NOTE, price);
  d.AddMessageFromGrid(IDC_F_NIP, stock);
  EXPECT_EQ(Messages(d), (std::vector<std::string>{"Brak ceny w 2 pozycjach."}));
  ASSERT_EQ(d.GetWarningsFromGrid().size(), 1u);
  EXPECT_EQ(d.GetWarningsFromGrid()[0].ctrlId, static_cast<std::uint32_t>(IDC_F_NIP));

  d.ShowControlsMessages();
  EXPECT_EQ(CurrentTipText(d.Item(IDC_F_NOTE)), "Brak ceny w 2 pozycjach.");
  EXPECT_EQ(CurrentTipText(d.Item(IDC_F_NIP)), "Niski stan magazynu.");
  // Each tip carries its message's icon.
  EXPECT_EQ(CurrentTipIcon(d.Item(IDC_F_NOTE)), TTI_ERROR);
  EXPECT_EQ(CurrentTipIcon(d.Item(IDC_F_NIP)), TTI_WARNING);
  d.RemoveMessagesFromGrid(IDC_F_NIP);
  EXPECT_TRUE(d.GetWarningsFromGrid().empty());
  HideTipMsgBox();
  EXPECT_EQ(CurrentTipWindow(d.Item(IDC_F_NOTE)), nullptr);

  // Another template's messages are not this dialog's to show.
  d.ShowInfoTip(IDC_F_NAME, IDD_TEST_PAGE, "", "nie tutaj", MB_ICONINFORMATION);
  EXPECT_EQ(CurrentTipWindow(d.Item(IDC_F_NAME)), nullptr);
}

class TippedDialog : public FormDialog {
 public:
  std::string GetInfoText() override { return "Wpisz pełną nazwę z rejestru."; }
  std::string GetInfoTitle() override { return "Nazwa"; }
};

TEST_F(DialogTest, InitialInfoTipAndHelpText) {
  TippedDialog d;
  d.SetInitialInfoTipCtrlId(IDC_F_NAME);
  ASSERT_TRUE(d.Create(nullptr));
  PumpMessages(30);
  EXPECT_EQ(CurrentTipText(d.Item(IDC_F_NAME)), "Wpisz pełną nazwę z rejestru.");
  HideTipMsgBox();
  DestroyWindow(d.m_hWnd);

  // With a help file that has a text for the template the buttons keep their captions and show
  // the text.
  wchar_t dir[MAX_PATH], file[MAX_PATH];
  GetTempPathW(MAX_PATH, dir);
  GetTempFileNameW(dir, L"vhl", 0, file);
  WritePrivateProfileStringW(L"#9102", L"Text", L"Kartoteka kontrahenta.\\nNIP jest wymagany.", file);
  SetDefaultHelpFile(file);
  FormDialog h;
  ASSERT_TRUE(h.Create(nullptr));
  EXPECT_EQ(GetTextA(h.Item(9)), "Pomoc");
  h.Click(9);
  ASSERT_EQ(m_boxes.calls.size(), 1u);
  EXPECT_EQ(m_boxes.calls[0].text, "Kartoteka kontrahenta.\nNIP jest wymagany.");
  EXPECT_EQ(m_boxes.calls[0].caption, "Kontrahent");
  DestroyWindow(h.m_hWnd);
  SetDefaultHelpFile(L"");
  DeleteFileW(file);
}

TEST_F(DialogTest, FontsColoursAcceleratorsAndTheSphereButton) {
  FormDialog d;
  d.EnableSphereMenu(true);
  ASSERT_TRUE(d.LoadAcceleratorsTable(IDA_TEST));
  d.driver = [](FormDialog& f) {
    f.SetBold(IDC_F_NAME);
    f.SetBoldForPrevious(IDC_F_NAME);
    LOGFONTW lf{};
    GetObjectW(reinterpret_cast<HFONT>(SendMessageW(f.Item(IDC_F_LABEL), WM_GETFONT, 0, 0)), sizeof lf, &lf);
    EXPECT_EQ(lf.lfWeight, FW_BOLD);
    f.SetNormalFont(IDC_F_NAME);
    GetObjectW(reinterpret_cast<HFONT>(SendMessageW(f.Item(IDC_F_NAME), WM_GETFONT, 0, 0)), sizeof lf, &lf);
    EXPECT_NE(lf.lfWeight, FW_BOLD);
    f.SetFont(IDC_F_NOTE, 14, false, "Arial");
    GetObjectW(reinterpret_cast<HFONT>(SendMessageW(f.Item(IDC_F_NOTE), WM_GETFONT, 0, 0)), sizeof lf, &lf);
    EXPECT_STREQ(lf.lfFaceName, L"Arial");

    f.SetBkgndColor(IDC_F_NOTE, RGB(255, 255, 200));
    const WindowDc dc(f.Item(IDC_F_NOTE));
    auto brush = reinterpret_cast<HBRUSH>(SendMessageW(f.m_hWnd, WM_CTLCOLOREDIT, reinterpret_cast<WPARAM>(dc.get()),
                                                       reinterpret_cast<LPARAM>(f.Item(IDC_F_NOTE))));
    LOGBRUSH lb{};
    GetObjectW(brush, sizeof lb, &lb);
    EXPECT_EQ(lb.lbColor, RGB(255, 255, 200));
    EXPECT_EQ(GetBkColor(dc.get()), RGB(255, 255, 200));

    // The sphere in the caption: drawn there, and a click on it opens its menu.
    const RECT s = f.GetSphereRect();
    EXPECT_FALSE(IsRectEmpty(&s));
    const POINT centre{(s.left + s.right) / 2, (s.top + s.bottom) / 2};
    EXPECT_EQ(SendMessageW(f.m_hWnd, WM_NCHITTEST, 0, MAKELPARAM(centre.x, centre.y)), HTSYSMENU);
    SendMessageW(f.m_hWnd, WM_NCLBUTTONDOWN, HTSYSMENU, MAKELPARAM(centre.x, centre.y));
    RedrawWindow(f.m_hWnd, nullptr, nullptr, RDW_FRAME | RDW_INVALIDATE | RDW_UPDATENOW);
    const WindowDc wdc(f.m_hWnd, true);
    RECT w;
    GetWindowRect(f.m_hWnd, &w);
    const COLORREF c = GetPixel(wdc.get(), centre.x - w.left, centre.y - w.top);
    EXPECT_GT(GetBValue(c), GetRValue(c));  // blue, whatever the caption's colour

    // F6 from the accelerator table reaches the dialog as a command through the modal loop.
    PostMessageW(f.Item(IDC_F_NAME), WM_KEYDOWN, VK_F6, 1);
    PostMessageW(f.m_hWnd, WM_COMMAND, IDCANCEL, 0);
  };
  EXPECT_EQ(d.DoModal(), IDCANCEL);
  EXPECT_EQ(d.Count("OnSphereMenu"), 1);
  EXPECT_EQ(d.Count("command 40001"), 1);

  ACCEL own[] = {{FVIRTKEY, VK_F7, 40002}};
  FormDialog e;
  ASSERT_TRUE(e.LoadOwnedAcceleratorsTable(own, 1));
  e.driver = [](FormDialog& f) {
    PostMessageW(f.Item(IDC_F_NAME), WM_KEYDOWN, VK_F7, 1);
    PostMessageW(f.Item(IDC_F_NAME), WM_KEYDOWN, VK_F6, 1);  // not in this table
    PostMessageW(f.m_hWnd, WM_COMMAND, IDCANCEL, 0);
  };
  e.DoModal();
  EXPECT_EQ(e.Count("command 40002"), 1);
  EXPECT_EQ(e.Count("command 40001"), 0);
  e.DestroyAcceleratorTableIfExists();
}

// A store in memory for the configuration.
class MemoryCfgFactory : public IFlgDataFactory {
 public:
  std::optional<DialogCfgRecord> LoadDialogCfg(std::string_view section, std::int32_t user,
                                               std::int32_t service) override {
    ++loads;
    for (const auto& r : records)
      if (r.section == section && r.user == user && r.service == service) return r;
    return std::nullopt;
  }
  void SaveDialogCfg(const DialogCfgRecord& record) override {
    std::erase_if(records, [&](const DialogCfgRecord& r) {
      return r.section == record.section && r.user == record.user && r.service == record.service;
    });
    records.push_back(record);
  }
  std::vector<DialogCfgRecord> records;
  int loads = 0;
};

class ConfiguredDialog : public FormDialog {
 public:
  std::int32_t columnWidth = 80;
  std::string filter;
  void SaveDlgCfg(db::ByteStream& s) override { CfgWriteInt32(s, columnWidth); }
  void LoadDlgCfg(db::ByteStream& s) override { columnWidth = CfgReadInt32(s); }
  void SaveCustomFiltersCfg(db::ByteStream& s) override { CfgWriteText(s, filter); }
  void LoadCustomFiltersCfg(db::ByteStream& s) override { filter = CfgReadText(s); }
  using FormDialog::LoadDlgCfg;
  using FormDialog::SaveDlgCfg;
};

TEST_F(DialogTest, ConfigurationIsStoredOnCloseAndReadWhenTheWindowHasLoaded) {
  auto factory = std::make_shared<MemoryCfgFactory>();
  {
    ConfiguredDialog d;
    d.SetDataForCfgSave(factory);
    d.SetService(3);
    d.SetUser(12);
    d.SetFlxProfileSection("Kontrahent");
    ASSERT_TRUE(d.Create(nullptr));
    PumpMessages(20);
    d.columnWidth = 215;
    d.filter = "aktywni";
    DestroyWindow(d.m_hWnd);
  }
  ASSERT_EQ(factory->records.size(), 1u);
  EXPECT_EQ(factory->records[0].section, "Kontrahent");
  EXPECT_EQ(factory->records[0].user, 12);
  EXPECT_EQ(factory->records[0].service, 3);
  ConfiguredDialog again;
  again.SetDataForCfgSave(factory);
  again.SetService(3);
  again.SetUser(12);
  again.SetFlxProfileSection("Kontrahent");
  ASSERT_TRUE(again.Create(nullptr));
  EXPECT_EQ(again.columnWidth, 80);  // not yet: the window has not loaded
  PumpMessages(20);
  EXPECT_EQ(again.columnWidth, 215);
  EXPECT_EQ(again.filter, "aktywni");
}

// Throws from the handler named by `throwIn`: what a host's handler or a failing database does.
class FailingDialog : public ContinuedDialog {
 public:
  using ContinuedDialog::ContinuedDialog;
  std::string throwIn;
  void OnLoadData(CFlgDataExchange& dx) override {
    FormDialog::OnLoadData(dx);
    if (throwIn == "load") throw std::runtime_error("load failed");
  }
  void OnSaveData(CFlgDataExchange& dx) override {
    FormDialog::OnSaveData(dx);
    if (throwIn == "save") throw std::runtime_error("save failed");
  }
  int OnUpdate() override {
    if (throwIn == "update") throw ComError(kDbError, "Naruszenie ograniczenia UNIQUE", "23000");
    return FormDialog::OnUpdate();
  }
  void OnRefreshModalContinueDlg() override {
    FormDialog::OnRefreshModalContinueDlg();
    if (throwIn == "refresh") throw std::runtime_error("refresh failed");
  }
  // A host's configuration writer may throw anything, not only standard exceptions.
  void SaveDlgCfg(db::ByteStream&) override {
    if (throwIn == "cfg") throw 42;
  }
  using FormDialog::SaveDlgCfg;
};

TEST_F(DialogTest, OpeningFinishesEveryStepWhenLoadingThrows) {
  for (bool readOnly : {false, true}) {
    SCOPED_TRACE(readOnly ? "read-only" : "editable");
    m_boxes.calls.clear();
    FailingDialog d;
    d.driver = nullptr;
    d.throwIn = "load";
    d.SetReadOnly(readOnly);
    ASSERT_TRUE(d.Create(nullptr));
    EXPECT_EQ(d.calls, (std::vector<std::string>{"SubclassControls", "OnLoadData", "SetCtrlsReadOnly",
                                                 "AddFlexConstraints", "ShowControlsMessages"}));
    EXPECT_FALSE(d.IsLoading());
    ASSERT_EQ(m_boxes.calls.size(), 1u);
    EXPECT_EQ(m_boxes.calls[0].text, "load failed");
    EXPECT_EQ((GetWindowLongW(d.Item(IDC_F_NOTE), GWL_STYLE) & ES_READONLY) != 0, readOnly);
    // Changes count again once the failed load is over, so cancel asks, unless read-only.
    d.Type(IDC_F_NOTE, "zmiana");
    m_boxes.answers = {IDNO};
    d.Click(IDCANCEL);
    EXPECT_EQ(m_boxes.calls.size(), readOnly ? 1u : 2u);
    EXPECT_FALSE(IsWindow(d.m_hWnd));
  }
}

TEST_F(DialogTest, FailedRefreshOfAContinuedModalDialogLeavesTheOwnerEnabled) {
  testing::unique_hwnd owner(CreateWindowExW(0, L"STATIC", L"owner", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 300,
                                               200, nullptr, nullptr, nullptr, nullptr));
  FailingDialog d(owner.get());
  d.throwIn = "refresh";
  INT_PTR result = 0;
  EXPECT_NO_THROW(result = d.DoModalContinue());
  EXPECT_EQ(result, IDOK);
  EXPECT_EQ(d.Count("OnRefreshModalContinueDlg"), 2);
  EXPECT_EQ(m_boxes.calls.size(), 2u);
  EXPECT_TRUE(IsWindowEnabled(owner.get()));
  EXPECT_FALSE(IsWindow(d.windows.front()));
}

TEST_F(DialogTest, FailedSaveOrUpdateNeverGoesOnAndTheErrorsWindowShowsTheNewList) {
  FailingDialog d;
  d.driver = nullptr;
  ASSERT_TRUE(d.Create(nullptr));
  d.EnableErrorsWnd(true);
  d.throwIn = "update";
  d.Type(IDC_F_NAME, "");
  d.Click(IDOK);
  EXPECT_EQ(d.ErrorsWnd().GetLines(), (std::vector<std::string>{"Proszę wprowadzić wartość."}));
  d.Type(IDC_F_NAME, "Hurtownia");
  m_boxes.calls.clear();
  d.Click(IDOK);  // OnUpdate throws: the window lists what a double click will point at
  EXPECT_TRUE(IsWindow(d.m_hWnd));
  EXPECT_EQ(d.ErrorsWnd().GetLines(), Messages(d));
  EXPECT_EQ(Messages(d), (std::vector<std::string>{"Naruszenie ograniczenia UNIQUE"}));

  // Without an error list a throwing save is shown and stops the apply before the update.
  d.SetErrorsArray(nullptr);
  d.throwIn = "save";
  m_boxes.calls.clear();
  const int before = d.Count("BeforeUpdate");
  EXPECT_FALSE(d.HandleApply());
  EXPECT_EQ(d.Count("BeforeUpdate"), before);
  ASSERT_EQ(m_boxes.calls.size(), 1u);
  EXPECT_EQ(m_boxes.calls[0].text, "save failed");
  d.SetDefErrorsArray();
}

TEST_F(DialogTest, ConfigurationWriterThrowingAnythingWhileClosingIsReportedAndTheDialogStillGoes) {
  FailingDialog d;
  d.driver = nullptr;
  d.throwIn = "cfg";
  d.SetDataForCfgSave(std::make_shared<MemoryCfgFactory>());
  ASSERT_TRUE(d.Create(nullptr));
  HWND window = d.m_hWnd;
  DestroyWindow(window);
  EXPECT_FALSE(IsWindow(window));
  EXPECT_EQ(d.m_hWnd, nullptr);
  ASSERT_EQ(m_boxes.calls.size(), 1u);
  EXPECT_EQ(m_boxes.calls[0].text, "Nieznany błąd.");
}

TEST_F(DialogTest, SetFontFreesTheFontItMadeBeforeForTheSameControl) {
  FormDialog d;
  ASSERT_TRUE(d.Create(nullptr));
  d.SetFont(IDC_F_NOTE, 12, true);
  const auto first = reinterpret_cast<HFONT>(SendMessageW(d.Item(IDC_F_NOTE), WM_GETFONT, 0, 0));
  ASSERT_EQ(GetObjectType(first), static_cast<DWORD>(OBJ_FONT));
  d.SetFont(IDC_F_NOTE, 14);
  EXPECT_EQ(GetObjectType(first), 0u);
  const auto second = reinterpret_cast<HFONT>(SendMessageW(d.Item(IDC_F_NOTE), WM_GETFONT, 0, 0));
  EXPECT_EQ(GetObjectType(second), static_cast<DWORD>(OBJ_FONT));
  d.SetNormalFont(IDC_F_NOTE);
  EXPECT_EQ(GetObjectType(second), 0u);
}

}  // namespace
}  // namespace varion
