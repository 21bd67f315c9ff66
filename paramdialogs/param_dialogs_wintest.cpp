// The parameter dialogs in real windows: each opened on a record, its controls set as a user
// sets them (operator list selection, typed keys, a pasted date), then OK or Cancel; the record
// and the report's WHERE text are asserted afterwards. Also the path from a followed link of
// the parameter view to the dialog and back to the page.
#include <windows.h>

#include <gtest/gtest.h>

#include <functional>
#include <string>

#include "controls/date_edit_win.h"
#include "framework/hook_supp_win.h"
#include "paramdialogs/param_dialogs_win.h"
#include "paramdialogs/param_dlg_currency_win.h"
#include "paramdialogs/param_dlg_date_win.h"
#include "paramdialogs/param_dlg_string_win.h"
#include "params/params_html_ctrl.h"
#include "tests/win_support.h"

namespace {

using varion::Amount;
using varion::DateTime;
using varion::Variant;
using varion::testing::GetTextA;

const DateTools::FixedClock kClock(DateTime(2024, 5, 15, 9, 0));

HWND Item(CParamDlg_Base& d, int id) { return GetDlgItem(d.GetHWND(), id); }

// What the operator list sends its dialog when a user picks an entry.
void PickOperator(CParamDlg_Base& d, std::uint32_t bits) {
  const auto& ops = d.Operators();
  for (std::size_t i = 0; i < ops.size(); ++i) {
    if (ops[i].bits != bits) continue;
    HWND list = Item(d, IDC_PARAMDLG_OPERATOR);
    SendMessageW(list, CB_SETCURSEL, i, 0);
    SendMessageW(d.GetHWND(), WM_COMMAND, MAKEWPARAM(IDC_PARAMDLG_OPERATOR, CBN_SELCHANGE), reinterpret_cast<LPARAM>(list));
    return;
  }
  ADD_FAILURE() << "operator 0x" << std::hex << bits << " not offered";
}

// Replaces a field's text by typed characters.
void Type(HWND field, const std::wstring& text) {
  SetFocus(field);
  SendMessageW(field, EM_SETSEL, 0, -1);
  SendMessageW(field, WM_KEYDOWN, VK_DELETE, 1);
  for (wchar_t ch : text) SendMessageW(field, WM_CHAR, ch, 1);
}

// A date pasted into the date field (its own paste path takes the ISO text).
void PutDate(HWND field, const wchar_t* iso) { SendMessageW(field, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(iso)); }

void Click(CParamDlg_Base& d, int id) { SendMessageW(Item(d, id), BM_CLICK, 0, 0); }

std::string WhereOf(const ZEST_PARAMS& p) {
  CParamsHtmlCtrl view;
  view.GetParams().Add(p);
  return view.GetWhereString();
}

// Runs a dialog with a driver called once its window has loaded.
class ParamDialogsTest : public ::testing::Test {
 protected:
  void SetUp() override {
    // The amount and date fields of the templates are the library's window classes.
    CHookSupp::InitVXAXVelControls(nullptr);
    CHookSupp::InstallUIHook();
  }
  void TearDown() override { CParamDlg_Base::SetOpenObserver(nullptr); }

  template <typename Dialog>
  INT_PTR Run(ZEST_PARAMS& record, std::function<void(CParamDlg_Base&)> driver) {
    opened = 0;
    CParamDlg_Base::SetOpenObserver([this, driver](CParamDlg_Base& d) {
      ++opened;
      driver(d);
    });
    Dialog dialog(record);
    dialog.SetClock(&kClock);
    return dialog.DoModal();
  }
  int opened = 0;
};

ZEST_PARAMS Named(ZEST_PARAMS p, const char* column) {
  ZestParams::ZestParamsWrapper(p).SetDbField(column).SetLabel("Nazwa <b>kontrahenta</b>");
  return p;
}

TEST_F(ParamDialogsTest, StringDialogStoresTheTextAndOperator) {
  ZEST_PARAMS p = Named(ZestParams::ZestParamsString(), "knt_Nazwa");
  ZestParams::ZestParamsWrapper(p).SetCompareOperatorString(ZestParams::CompareStringBeginsWith);
  std::string caption, label;
  std::size_t operators = 0;
  EXPECT_EQ(Run<CParamDlg_String>(p, [&](CParamDlg_Base& d) {
              caption = GetTextA(d.GetHWND());
              label = GetTextA(Item(d, IDC_PARAMDLG_LABEL));
              operators = SendMessageW(Item(d, IDC_PARAMDLG_OPERATOR), CB_GETCOUNT, 0, 0);
              EXPECT_FALSE(IsWindowVisible(Item(d, IDC_PARAMDLG_ANY)));  // the record does not allow any
              PickOperator(d, 0x100);
              Type(Item(d, IDC_PARAMDLG_VALUE), L"O'Bri\u0119n");
              Click(d, IDOK);
            }),
            IDOK);
  EXPECT_EQ(opened, 1);
  EXPECT_EQ(caption, "Nazwa kontrahenta");
  EXPECT_EQ(label, "Nazwa kontrahenta");
  EXPECT_EQ(operators, 2u);  // equal and begins with
  EXPECT_EQ(p.Value, Variant("O'Brięn"));
  EXPECT_EQ(p.Value2, Variant(std::int32_t{0x100}));
  EXPECT_FALSE(p.Empty);
  EXPECT_EQ(p.DisplayValue, "zaczyna się od O'Brięn");
  EXPECT_EQ(WhereOf(p), "((knt_Nazwa LIKE 'O''Brięn%'))");
}

TEST_F(ParamDialogsTest, CurrencyDialogStoresARangeFromItsAmountFields) {
  ZEST_PARAMS p = Named(ZestParams::ZestParamsCurrency(), "dok_Wartosc");
  bool secondEnabledBefore = true, secondEnabledAfter = false;
  EXPECT_EQ(Run<CParamDlg_Currency>(p, [&](CParamDlg_Base& d) {
              EXPECT_TRUE(IsWindowVisible(Item(d, IDC_PARAMDLG_ANY)));
              // A fresh amount parameter is empty: it opens on "any".
              EXPECT_EQ(IsDlgButtonChecked(d.GetHWND(), IDC_PARAMDLG_ANY), BST_CHECKED);
              Click(d, IDC_PARAMDLG_ANY);
              secondEnabledBefore = IsWindowEnabled(Item(d, IDC_PARAMDLG_VALUE2));
              PickOperator(d, 0x1000);
              secondEnabledAfter = IsWindowEnabled(Item(d, IDC_PARAMDLG_VALUE2));
              Type(Item(d, IDC_PARAMDLG_VALUE), L"10");
              Type(Item(d, IDC_PARAMDLG_VALUE2), L"1250,5");
              Click(d, IDOK);
            }),
            IDOK);
  EXPECT_FALSE(secondEnabledBefore);
  EXPECT_TRUE(secondEnabledAfter);
  EXPECT_EQ(p.Value, Variant(Amount::FromUnits(10)));
  EXPECT_EQ(p.Value2, Variant(Amount::FromUnits(1250, 5000)));
  EXPECT_EQ(p.Value3, Variant(std::int32_t{0x1000}));
  EXPECT_FALSE(p.Empty);
  EXPECT_EQ(p.DisplayValue, "od 10,00 do 1\xA0" "250,50");
  EXPECT_EQ(WhereOf(p), "(( (dok_Wartosc>=10) AND (dok_Wartosc<=1250.5) ))");
}

TEST_F(ParamDialogsTest, DateDialogStoresARangeOrANamedPeriod) {
  struct Case {
    const char* name;
    std::uint32_t op;
    const wchar_t *from, *to;
    Variant value, value2;
    const char* display;
    const char* where;
    const char* shown;  // the first date field's text before OK
  } cases[] = {
      {"typed range", 0x1000, L"2024-05-01", L"2024-05-31", DateTime(2024, 5, 1), DateTime(2024, 5, 31),
       "od 2024-05-01 do 2024-05-31", "(( (dok_Data>='20240501') AND (dok_Data<='20240531') ))", "2024-05-01"},
      {"previous month", 0x61000, nullptr, nullptr, DateTime(2024, 4, 1), DateTime(2024, 4, 30), "poprzedni miesiąc",
       "(( (dok_Data>='20240401') AND (dok_Data<='20240430') ))", "2024-04-01"},
      {"after a day", 0x8, L"2024-02-29", nullptr, DateTime(2024, 2, 29), Variant::MakeNull(), "po 2024-02-29",
       "((dok_Data>'20240229'))", "2024-02-29"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    ZEST_PARAMS p = Named(ZestParams::ZestParamsDate(), "dok_Data");
    ZestParams::ZestParamsWrapper(p).SetParam(0xFFFFF);
    std::string shownFrom;
    EXPECT_EQ(Run<CParamDlg_Date>(p, [&](CParamDlg_Base& d) {
                PickOperator(d, c.op);
                if (c.from) PutDate(Item(d, IDC_PARAMDLG_VALUE), c.from);
                if (c.to) PutDate(Item(d, IDC_PARAMDLG_VALUE2), c.to);
                shownFrom = GetTextA(Item(d, IDC_PARAMDLG_VALUE));
                Click(d, IDOK);
              }),
              IDOK);
    EXPECT_EQ(p.Value, c.value);
    EXPECT_EQ(p.Value2, c.value2);
    EXPECT_EQ(p.Value3, Variant(static_cast<std::int32_t>(c.op)));
    EXPECT_FALSE(p.Empty);
    EXPECT_EQ(p.DisplayValue, c.display);
    EXPECT_EQ(WhereOf(p), c.where);
    EXPECT_EQ(shownFrom, c.shown);  // a named period shows its dates
  }
}

// Every failure is shown at once on its control, the dialog stays open, and Cancel then leaves
// the record exactly as it was.
TEST_F(ParamDialogsTest, FailedChecksKeepTheDialogOpenAndCancelChangesNothing) {
  ZEST_PARAMS p = Named(ZestParams::ZestParamsDate(), "dok_Data");
  ZestParams::ZestParamsWrapper(p).SetParam(0x1000).SetValue(DateTime(2023, 1, 1)).SetValue3(std::int32_t{0x1000});
  const ZEST_PARAMS before = p;
  std::vector<std::pair<UINT, std::string>> errors;
  bool stillOpen = false;
  EXPECT_EQ(Run<CParamDlg_Date>(p, [&](CParamDlg_Base& d) {
              PutDate(Item(d, IDC_PARAMDLG_VALUE), L"2024-05-31");
              PutDate(Item(d, IDC_PARAMDLG_VALUE2), L"2024-05-01");
              Click(d, IDOK);
              stillOpen = IsWindow(d.GetHWND()) && d.HasErrors();
              if (d.GetErrorsArray())
                for (const auto& e : *d.GetErrorsArray()) errors.emplace_back(e.ctrlId, e.message);
              Click(d, IDCANCEL);
            }),
            IDCANCEL);
  EXPECT_TRUE(stillOpen);
  ASSERT_EQ(errors.size(), 1u);
  EXPECT_EQ(errors[0].first, static_cast<UINT>(IDC_PARAMDLG_VALUE2));
  EXPECT_EQ(errors[0].second, "Data końcowa nie może być wcześniejsza od początkowej.");
  EXPECT_EQ(p.Value, before.Value);
  EXPECT_EQ(p.Value2, before.Value2);
  EXPECT_EQ(p.Value3, before.Value3);
  EXPECT_EQ(p.Empty, before.Empty);
  EXPECT_EQ(p.DisplayValue, before.DisplayValue);
  EXPECT_EQ(p.Param, before.Param);

  // Cancel straight away, on a text parameter edited first.
  ZEST_PARAMS s = Named(ZestParams::ZestParamsString(), "knt_Nazwa");
  const ZEST_PARAMS sBefore = s;
  EXPECT_EQ(Run<CParamDlg_String>(s, [](CParamDlg_Base& d) {
              Type(Item(d, IDC_PARAMDLG_VALUE), L"abc");
              Click(d, IDCANCEL);
            }),
            IDCANCEL);
  EXPECT_TRUE(s.Value == sBefore.Value && s.Value2 == sBefore.Value2 && s.Empty == sBefore.Empty &&
              s.DisplayValue == sBefore.DisplayValue);

  // The amount dialog on a text record closes unchanged before anyone can type.
  EXPECT_EQ(Run<CParamDlg_Currency>(s, [](CParamDlg_Base& d) { Click(d, IDOK); }), IDCANCEL);
  EXPECT_EQ(opened, 0);
  EXPECT_TRUE(s.Value == sBefore.Value && s.Value3 == sBefore.Value3 && s.Empty == sBefore.Empty);
}

// A followed link of the page opens the dialog of the record's type; confirmed values show on
// the page and in the WHERE text. A type whose dialog is not here yet opens nothing.
TEST_F(ParamDialogsTest, TheViewOpensTheDialogOfTheFollowedLink) {
  varion::paramdlg::ParamDialogs dialogs;
  dialogs.SetClock(&kClock);
  CParamsHtmlCtrl view;
  view.SetDialogs(&dialogs);
  view.GetParams().Add(ZestParams::ZestParamsDate().SetLabel("Okres").SetDbField("dok_Data").SetParam(0xFFFFF));
  view.GetParams().Add(ZestParams::ZestParamsSelectionDbObject().SetLabel("Magazyn").SetDbField("mag_Id"));
  view.InitDescr();
  opened = 0;
  CParamDlg_Base::SetOpenObserver([this](CParamDlg_Base& d) {
    ++opened;
    PickOperator(d, 0x81000);  // current month
    Click(d, IDOK);
  });
  EXPECT_TRUE(view.OnBeforeNavigate2("std://0"));
  EXPECT_EQ(opened, 1);
  EXPECT_NE(view.Contents().find("\"std://0\"> bieżący miesiąc</a>"), std::string::npos) << view.Contents();
  EXPECT_EQ(view.GetWhereString(), "(( (dok_Data>='20240501') AND (dok_Data<='20240531') ))");

  const ZEST_PARAMS before = *view.GetParam(1);
  EXPECT_TRUE(view.OnBeforeNavigate2("std://1"));
  EXPECT_EQ(opened, 1);
  EXPECT_TRUE(view.GetParam(1)->Empty && view.GetParam(1)->Value == before.Value);
}

}  // namespace
