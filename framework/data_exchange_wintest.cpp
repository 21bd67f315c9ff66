// The exchange functions on a real dialog made from a template that names the library's classes.
#include <windows.h>
#include <commctrl.h>
#include <oleauto.h>

#include <gtest/gtest.h>

#include "base/status.h"
#include "base/text.h"
#include "framework/data_exchange_win.h"
#include "framework/error_informator_win.h"
#include "framework/framework_wintest.h"
#include "framework/hook_supp_win.h"
#include "controls/currency_edit_win.h"
#include "controls/date_edit_win.h"
#include "controls/vel_controls_win.h"
#include "tests/win_support.h"

namespace varion {
namespace {

using testing::GetTextA;
using testing::unique_hwnd;

INT_PTR CALLBACK PlainDialogProc(HWND, UINT msg, WPARAM, LPARAM) { return msg == WM_INITDIALOG; }

class ExchangeTest : public ::testing::Test {
 protected:
  void SetUp() override {
    CHookSupp::InitVXAXVelControls(nullptr);
    CHookSupp::InstallUIHook();
    m_dlg.reset(CreateDialogParamW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(IDD_TEST_EXCHANGE), nullptr,
                                   PlainDialogProc, 0));
    ASSERT_TRUE(m_dlg);
    m_dx = CFlgDataExchange(&m_errors, m_dlg.get(), "#9101");
  }
  HWND Item(int id) const { return GetDlgItem(m_dlg.get(), id); }
  void Type(int id, const std::string& text) const { SetWindowTextW(Item(id), text::Cp1250ToWide(text).c_str()); }
  std::vector<std::string> Messages() const {
    std::vector<std::string> out;
    for (const auto& r : m_errors) out.push_back(r.message);
    return out;
  }

  CFlgDataExchange& Dx() { return m_dx; }

  unique_hwnd m_dlg;
  CObjErrorInfoArray m_errors;
  CFlgDataExchange m_dx{&m_errors, nullptr, "#9101"};
};

TEST_F(ExchangeTest, IntegersLoadInTheirFormatAndSaveOnlyWholeNumbersOfTheirType) {
  DLX_Text(Dx(), IDC_X_NUMBER, static_cast<short>(-32768));
  EXPECT_EQ(GetTextA(Item(IDC_X_NUMBER)), "-32768");
  DLX_Text(Dx(), IDC_X_NUMBER, 4294967295ul);
  EXPECT_EQ(GetTextA(Item(IDC_X_NUMBER)), "4294967295");
  DLX_Text(Dx(), IDC_X_STATIC, static_cast<unsigned char>(200));  // statics take text as well
  EXPECT_EQ(GetTextA(Item(IDC_X_STATIC)), "200");

  struct Case {
    const char* typed;
    const char* message;  // nullptr: saved
  } ucharCases[] = {{"255", nullptr},
                    {"256", "Proszę wprowadzić liczbę całkowitą z przedziału 0 i 255."},
                    {"-1", "Proszę wprowadzić liczbę całkowitą z przedziału 0 i 255."}};
  for (const auto& c : ucharCases) {
    SCOPED_TRACE(c.typed);
    m_errors.RemoveAll();
    Type(IDC_X_NUMBER, c.typed);
    unsigned char v = 7;
    DSX_Text(Dx(), IDC_X_NUMBER, v);
    if (c.message) {
      ASSERT_EQ(m_errors.GetCount(), 1u);
      EXPECT_EQ(m_errors[0].message, c.message);
      EXPECT_EQ(m_errors[0].ctrlId, static_cast<std::uint32_t>(IDC_X_NUMBER));
      EXPECT_STREQ(m_errors[0].source, "#9101");
      EXPECT_EQ(m_errors[0].dialog, m_dlg.get());
      EXPECT_EQ(v, 7);
    } else {
      EXPECT_EQ(m_errors.GetCount(), 0u);
      EXPECT_EQ(v, 255);
    }
  }

  m_errors.RemoveAll();
  Type(IDC_X_NUMBER, "12x");
  int i = 3;
  DSX_Text(Dx(), IDC_X_NUMBER, i);
  unsigned u = 3;
  Type(IDC_X_NUMBER, "-4");
  DSX_Text(Dx(), IDC_X_NUMBER, u);
  long l = 3;
  Type(IDC_X_NUMBER, " -2147483648 ");
  DSX_Text(Dx(), IDC_X_NUMBER, l);
  EXPECT_EQ(Messages(), (std::vector<std::string>{"Proszę wprowadzić liczbę całkowitą.",
                                                  "Proszę wprowadzić dodatnią liczbę całkowitą."}));
  EXPECT_EQ(l, -2147483648L);
  // A refused text leaves what the conversion read: the leading 12 of "12x", nothing of "-4".
  EXPECT_EQ(i, 12);
  EXPECT_EQ(u, 3u);
  // Only 31 characters are read: the 32nd digit is never seen.
  m_errors.RemoveAll();
  Type(IDC_X_NUMBER, std::string(31, '0') + "9");
  i = 5;
  DSX_Text(Dx(), IDC_X_NUMBER, i);
  EXPECT_EQ(i, 0);
  EXPECT_EQ(m_errors.GetCount(), 0u);
}

TEST_F(ExchangeTest, TextsRoundTripInCodePage1250AndMissingControlsReadEmpty) {
  DLX_Text(Dx(), IDC_X_EDIT, "Zażółć gęślą jaźń");
  std::string s;
  DSX_Text(Dx(), IDC_X_EDIT, s);
  EXPECT_EQ(s, "Zażółć gęślą jaźń");
  std::wstring w;
  DSX_Text(Dx(), IDC_X_EDIT, w);
  EXPECT_EQ(w, L"Za\u017c\u00f3\u0142\u0107 g\u0119\u015bl\u0105 ja\u017a\u0144");

  DLX_Text(Dx(), IDC_X_EDIT, "abcdef", 3);
  EXPECT_EQ(GetTextA(Item(IDC_X_EDIT)), "abc");
  DLX_Text(Dx(), IDC_X_EDIT, std::wstring(L"\u0141\u00f3d\u017a"));
  EXPECT_EQ(GetTextA(Item(IDC_X_EDIT)), "Łódź");
  char buf[4];
  DSX_Text(Dx(), IDC_X_EDIT, buf, sizeof buf);
  EXPECT_STREQ(buf, "Łód");

  s = "stare";
  DSX_Text(Dx(), IDC_X_MISSING, s);
  EXPECT_EQ(s, "");
  DLX_Text(Dx(), IDC_X_MISSING, "nic");  // nothing to write into, nothing breaks
  EXPECT_EQ(m_errors.GetCount(), 0u);

  Type(IDC_X_EDIT, "");
  VelGetWindowText(Item(IDC_X_EDIT), s);
  EXPECT_EQ(s.size(), 0u);
  Type(IDC_X_EDIT, "abcdef");
  VelGetWindowText(Item(IDC_X_EDIT), s, 4);
  EXPECT_EQ(s, "abcd");
  VelGetWindowText(Item(IDC_X_EDIT), w, 10);
  EXPECT_EQ(w, L"abcdef");
  EXPECT_EQ(GetStringFieldsTotalLength(Dx(), {IDC_X_EDIT, IDC_X_STATIC, IDC_X_MISSING}), 6 + 8);
  EXPECT_EQ(GetStringFieldsTotalLength(Dx(), {}), 0);
}

TEST_F(ExchangeTest, AmountsInAPlainEditShowInTheUsersFormAndParseWithTheSystemParser) {
  DLX_Text(Dx(), IDC_X_EDIT, Amount::FromRaw(-12345678900));
  EXPECT_EQ(GetTextA(Item(IDC_X_EDIT)), "-1 234 567,89");
  DLX_Text(Dx(), IDC_X_EDIT, Amount::Null());
  EXPECT_EQ(GetTextA(Item(IDC_X_EDIT)), "");
  // An amount with more than two decimals shows them all, so an unchanged form saves it back.
  DLX_Text(Dx(), IDC_X_EDIT, Amount::FromRaw(123456));
  EXPECT_EQ(GetTextA(Item(IDC_X_EDIT)), "12,3456");
  COleCurrency back;
  DSX_Text(Dx(), IDC_X_EDIT, back);
  EXPECT_EQ(back, Amount::FromRaw(123456));

  struct Case {
    const char* typed;
    bool ok;
    std::int64_t raw;
  } cases[] = {{"-1\xA0"
                "234\xA0"
                "567,89",
                true, -12345678900},
               {"1 234,5", true, 12345000},
               {"12,3456", true, 123456},
               {"12.5", false, 0},
               {"abc", false, 0},
               {"", false, 0},
               {"922337203685478", false, 0}};
  for (const auto& c : cases) {
    SCOPED_TRACE(c.typed);
    m_errors.RemoveAll();
    Type(IDC_X_EDIT, c.typed);
    COleCurrency a = Amount::FromRaw(99);
    DSX_Text(Dx(), IDC_X_EDIT, a);
    CY cy{};
    cy.int64 = 99;
    DSX_Text(Dx(), IDC_X_EDIT, cy);
    if (!c.ok) {
      EXPECT_EQ(Messages(), (std::vector<std::string>(2, "Proszę wprowadzić kwotę.")));
      EXPECT_EQ(a, Amount::FromRaw(0));
      EXPECT_EQ(cy.int64, 0);
    } else {
      EXPECT_EQ(m_errors.GetCount(), 0u);
      EXPECT_EQ(a.Raw(), c.raw);
      EXPECT_EQ(cy.int64, c.raw);
    }
  }
}

// The amount field answers its plain value to the text the exchange reads, and takes the text the
// exchange writes through its set-text rules: the functions need nothing of their own for it.
TEST_F(ExchangeTest, AmountsRoundTripThroughTheAmountField) {
  auto* field = CVelCurrencyEdit::FromHandle(Item(IDC_X_AMOUNT));
  ASSERT_NE(field, nullptr);
  auto shown = [&] {  // what the user sees: the edit's own text
    wchar_t buf[64] = {};
    const HWND h = Item(IDC_X_AMOUNT);
    CallWindowProcW(reinterpret_cast<WNDPROC>(GetClassLongPtrW(h, GCLP_WNDPROC)), h, WM_GETTEXT, std::size(buf),
                    reinterpret_cast<LPARAM>(buf));
    return text::WideToCp1250(buf);
  };
  struct Case {
    Amount value;
    unsigned decimals;
    const char* shown;
    const char* read;  // what the exchange reads
    std::int64_t back;
  } cases[] = {
      {Amount::FromRaw(-12345678900), 2, "-1 234 567,89", "-1234567,8900", -12345678900},
      {Amount::FromRaw(123456), 2, "12,35", "12,3500", 123500},  // the field's decimals round it
      {Amount::FromRaw(123456), 4, "12,3456", "12,3456", 123456},
      {Amount::FromRaw(-123456789012345), 4, "-12 345 678 901,2345", "-12345678901,2345", -123456789012345},
      {Amount::Null(), 2, "0,00", "0,0000", 0},  // an empty field is zero
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.shown);
    field->OnSetSettings("", c.decimals);
    DLX_Text(Dx(), IDC_X_AMOUNT, c.value);
    EXPECT_EQ(shown(), c.shown);
    EXPECT_EQ(GetTextA(Item(IDC_X_AMOUNT)), c.read);
    COleCurrency back = Amount::FromRaw(99);
    DSX_Text(Dx(), IDC_X_AMOUNT, back);
    EXPECT_EQ(back, Amount::FromRaw(c.back));
  }
  EXPECT_EQ(m_errors.GetCount(), 0u);

  // Typed: only what makes an amount gets in, and the exchange reads the value.
  field->OnSetSettings("", 2);
  DLX_Text(Dx(), IDC_X_AMOUNT, Amount::FromRaw(0));
  for (char ch : std::string("12a,5x")) SendMessageW(Item(IDC_X_AMOUNT), WM_CHAR, static_cast<WPARAM>(ch), 1);
  COleCurrency typed;
  DSX_Text(Dx(), IDC_X_AMOUNT, typed);
  EXPECT_EQ(typed, Amount::FromRaw(125000));
  // A text that is no amount is refused by the field: the value stays and nothing is reported.
  Type(IDC_X_AMOUNT, "dużo");
  DSX_Text(Dx(), IDC_X_AMOUNT, typed);
  EXPECT_EQ(typed, Amount::FromRaw(125000));
  EXPECT_EQ(m_errors.GetCount(), 0u);
}

TEST_F(ExchangeTest, DatesLoadAsYearMonthDayAndAnEmptyEditIsNull) {
  // A plain edit holds whatever the exchange writes and reads it back through the system's parser.
  DLX_Text(Dx(), IDC_X_EDIT, DateTime(2024, 2, 29));
  EXPECT_EQ(GetTextA(Item(IDC_X_EDIT)), "2024-02-29");
  DLX_Text(Dx(), IDC_X_EDIT, DateTime(2024, 2, 29, 13, 45, 10).Value());
  EXPECT_EQ(GetTextA(Item(IDC_X_EDIT)), "2024-02-29 13:45:10");
  DLX_TextDateDDMMYYYY(Dx(), IDC_X_EDIT, Variant(DateTime(2024, 3, 1)));
  EXPECT_EQ(GetTextA(Item(IDC_X_EDIT)), "01.03.2024");
  DLX_TextDateDDMMYYYY(Dx(), IDC_X_EDIT, Variant::MakeNull());
  EXPECT_EQ(GetTextA(Item(IDC_X_EDIT)), "");

  struct Case {
    const char* typed;
    DateTime expected;
    bool error;
  } cases[] = {
      {"2024-02-29", DateTime(2024, 2, 29), false},
      {"2024-02-29 13:45:10", DateTime(2024, 2, 29, 13, 45, 10), false},
      {"", DateTime::Null(), false},
      {"   ", DateTime::Invalid(), true},  // only an empty text is null; blanks go to the parser
      {" \t ", DateTime::Invalid(), true},
      {"jutro", DateTime::Invalid(), true},
      {"10000-01-01", DateTime::Invalid(), true},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.typed);
    m_errors.RemoveAll();
    Type(IDC_X_EDIT, c.typed);
    COleDateTime d;
    DSX_Text(Dx(), IDC_X_EDIT, d);
    double serial = 123.0;
    DSX_Text(Dx(), IDC_X_EDIT, serial);
    EXPECT_EQ(d.GetStatus(), c.expected.GetStatus());
    if (c.expected.IsValid()) {
      EXPECT_EQ(d, c.expected);
      EXPECT_DOUBLE_EQ(serial, c.expected.Value());
    } else {
      EXPECT_EQ(serial, 0.0);
    }
    EXPECT_EQ(m_errors.GetCount(), c.error ? 2u : 0u);
    if (c.error) {
      EXPECT_EQ(m_errors[0].message, "Proszę wprowadzić datę.");
    }
  }
}

TEST_F(ExchangeTest, DateFieldRoundTripsTheDayThroughTheExchange) {
  // The template's "vel_dateedit" is the segmented field: it shows the day in its pattern and
  // answers the exchange with the canonical text, so what is loaded is what is saved.
  ASSERT_NE(CVelDateEdit::FromHandle(Item(IDC_X_DATE)), nullptr);
  struct Case {
    const char* what;
    DateTime loaded;
    DateTime saved;
  } cases[] = {
      {"a leap day", DateTime(2024, 2, 29), DateTime(2024, 2, 29)},
      {"a time of day is not the field's", DateTime(2024, 2, 29, 13, 45, 10), DateTime(2024, 2, 29)},
      {"the last day of the range", DateTime(2100, 12, 31), DateTime(2100, 12, 31)},
      {"null empties it", DateTime::Null(), DateTime::Null()},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.what);
    m_errors.RemoveAll();
    DLX_Text(Dx(), IDC_X_DATE, c.loaded);
    COleDateTime d = DateTime(1999, 1, 1);
    DSX_Text(Dx(), IDC_X_DATE, d);
    EXPECT_EQ(d.GetStatus(), c.saved.GetStatus());
    if (c.saved.IsValid()) {
      EXPECT_EQ(d, c.saved);
    }
    EXPECT_EQ(m_errors.GetCount(), 0u);
  }
  DLX_TextDateDDMMYYYY(Dx(), IDC_X_DATE, Variant(DateTime(2024, 3, 1)));
  EXPECT_EQ(GetTextA(Item(IDC_X_DATE)), "2024-03-01");
  // A text that is no day never reaches the field, so the exchange still reads the last day.
  Type(IDC_X_DATE, "jutro");
  COleDateTime d;
  DSX_Text(Dx(), IDC_X_DATE, d);
  EXPECT_EQ(d, DateTime(2024, 3, 1));
  EXPECT_EQ(m_errors.GetCount(), 0u);
}

TEST_F(ExchangeTest, VariantsTakeTheRequestedType) {
  DLX_Text(Dx(), IDC_X_EDIT, Variant(Amount::FromRaw(15000)));
  EXPECT_EQ(GetTextA(Item(IDC_X_EDIT)), "1,50");
  DLX_Text(Dx(), IDC_X_EDIT, Variant(2.25));
  EXPECT_EQ(GetTextA(Item(IDC_X_EDIT)), "2,25");
  DLX_Text(Dx(), IDC_X_EDIT, Variant::MakeNull());
  EXPECT_EQ(GetTextA(Item(IDC_X_EDIT)), "");

  struct Case {
    const char* typed;
    VARTYPE type;
    Variant expected;
    const char* message;
  } cases[] = {
      {"42", VT_I4, Variant(std::int32_t{42}), nullptr},
      {"4000000000", VT_UI4, Variant(std::int64_t{4000000000}), nullptr},
      {"70000", VT_I2, Variant(), "Proszę wprowadzić liczbę całkowitą."},
      {"12,5", VT_R8, Variant(12.5), nullptr},
      {"x", VT_R8, Variant(), "Proszę wprowadzić liczbę."},
      {"1 000,25", VT_CY, Variant(Amount::FromRaw(10002500)), nullptr},
      {"2024-01-31", VT_DATE, Variant(DateTime(2024, 1, 31)), nullptr},
      {"   ", VT_DATE, Variant(), "Proszę wprowadzić datę."},
      {"", VT_DATE, Variant::MakeNull(), nullptr},
      {"   ", VT_I4, Variant::MakeNull(), nullptr},
      {"1", VT_BOOL, Variant(true), nullptr},
      {"", VT_I4, Variant::MakeNull(), nullptr},
      {"", VT_BSTR, Variant(""), nullptr},
      {"tekst", VT_BSTR, Variant("tekst"), nullptr},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(::testing::Message() << c.typed << " vt=" << c.type);
    m_errors.RemoveAll();
    Type(IDC_X_EDIT, c.typed);
    Variant v;
    DSX_Text(Dx(), IDC_X_EDIT, v, c.type);
    if (c.message) {
      ASSERT_EQ(m_errors.GetCount(), 1u);
      EXPECT_EQ(m_errors[0].message, c.message);
      EXPECT_TRUE(v.IsEmpty());
    } else {
      EXPECT_EQ(m_errors.GetCount(), 0u);
      EXPECT_EQ(v, c.expected);
    }
  }
}

TEST_F(ExchangeTest, CheckBoxesTakeStatesZeroOneTwoAndUncheckForAnythingElse) {
  struct Case {
    int id;
    long value;
    LRESULT state;
  } cases[] = {{IDC_X_CHECK3, 2, BST_INDETERMINATE}, {IDC_X_CHECK3, 3, BST_UNCHECKED}, {IDC_X_CHECK3, 1, BST_CHECKED},
               {IDC_X_CHECK3, -1, BST_UNCHECKED},    {IDC_X_CHECK, 1, BST_CHECKED},    {IDC_X_CHECK, 0, BST_UNCHECKED}};
  for (const auto& c : cases) {
    SCOPED_TRACE(::testing::Message() << c.id << " " << c.value);
    DLX_Check(Dx(), c.id, c.value);
    EXPECT_EQ(SendMessageW(Item(c.id), BM_GETCHECK, 0, 0), c.state);
    int saved = -5;
    DSX_Check(Dx(), c.id, saved);
    EXPECT_EQ(saved, c.state);
  }
  DLX_Check(Dx(), IDC_X_CHECK3, Variant::MakeNull());
  EXPECT_EQ(SendMessageW(Item(IDC_X_CHECK3), BM_GETCHECK, 0, 0), BST_INDETERMINATE);
  // Every state is saved as it is, into a variant as into an integer; 2 loads back as indeterminate.
  for (const auto& c : cases) {
    SCOPED_TRACE(::testing::Message() << "variant " << c.id << " " << c.value);
    DLX_Check(Dx(), c.id, Variant(static_cast<std::int32_t>(c.value)));
    Variant v = Variant::MakeNull();
    DSX_Check(Dx(), c.id, v);
    EXPECT_EQ(v, Variant(static_cast<std::int32_t>(c.state)));
    DLX_Check(Dx(), c.id, v);
    EXPECT_EQ(SendMessageW(Item(c.id), BM_GETCHECK, 0, 0), c.state);
  }
  DLX_Check(Dx(), IDC_X_CHECK, Variant::MakeNull());
  EXPECT_EQ(SendMessageW(Item(IDC_X_CHECK), BM_GETCHECK, 0, 0), BST_UNCHECKED);
  DLX_Check(Dx(), IDC_X_CHECK, true);
  bool b = false;
  DSX_Check(Dx(), IDC_X_CHECK, b);
  EXPECT_TRUE(b);
}

TEST_F(ExchangeTest, RadioGroupCountsOnlyRadiosUpToTheNextGroup) {
  auto checked = [&] {
    std::string s;
    for (int id : {IDC_X_RADIO1, IDC_X_RADIO2, IDC_X_RADIO3, IDC_X_AFTER_GROUP})
      s += SendMessageW(Item(id), BM_GETCHECK, 0, 0) == BST_CHECKED ? '1' : '0';
    return s;
  };
  DLX_Radio(Dx(), IDC_X_RADIO1, 2);  // the label between the second and third radio is not counted
  EXPECT_EQ(checked(), "0010");
  int v = -1;
  DSX_Radio(Dx(), IDC_X_RADIO1, v);
  EXPECT_EQ(v, 2);
  DLX_Radio(Dx(), IDC_X_RADIO1, 3);  // past the group: nothing stays checked
  EXPECT_EQ(checked(), "0000");
  v = 7;
  DSX_Radio(Dx(), IDC_X_RADIO1, v);
  EXPECT_EQ(v, 7);
  EXPECT_EQ(Messages(), (std::vector<std::string>{"Proszę wybrać przycisk."}));

  m_errors.RemoveAll();
  DLX_Radio(Dx(), IDC_X_YES, IDC_X_NO, false);
  bool yes = true;
  DSX_Radio(Dx(), IDC_X_YES, IDC_X_NO, yes);
  EXPECT_FALSE(yes);
  SendMessageW(Item(IDC_X_NO), BM_SETCHECK, BST_UNCHECKED, 0);
  DSX_Radio(Dx(), IDC_X_YES, IDC_X_NO, yes);
  ASSERT_EQ(m_errors.GetCount(), 1u);
  EXPECT_EQ(m_errors[0].ctrlId, static_cast<std::uint32_t>(IDC_X_YES));
}

void Fill(HWND h, UINT add, UINT setData, std::initializer_list<std::pair<const wchar_t*, long>> items) {
  for (auto [text, data] : items) {
    LRESULT i = SendMessageW(h, add, 0, reinterpret_cast<LPARAM>(text));
    SendMessageW(h, setData, static_cast<WPARAM>(i), data);
  }
}

TEST_F(ExchangeTest, CombosSelectByIdentIndexPrefixAndExactText) {
  const std::initializer_list<std::pair<const wchar_t*, long>> items = {
      {L"Gda\u0144sk", 10}, {L"Krak\u00f3w", 20}, {L"Krosno", 30}, {L"\u0141\u00f3d\u017a", 40}};
  Fill(Item(IDC_X_COMBO), CB_ADDSTRING, CB_SETITEMDATA, items);
  Fill(Item(IDC_X_DROPLIST), CB_ADDSTRING, CB_SETITEMDATA, items);
  auto sel = [&](int id) { return SendMessageW(Item(id), CB_GETCURSEL, 0, 0); };

  DLX_CBIdent(Dx(), IDC_X_DROPLIST, 30L);
  EXPECT_EQ(sel(IDC_X_DROPLIST), 2);
  long ident = 0;
  DSX_CBIdent(Dx(), IDC_X_DROPLIST, ident);
  EXPECT_EQ(ident, 30);
  DLX_CBIdent(Dx(), IDC_X_DROPLIST, 99L);
  EXPECT_EQ(sel(IDC_X_DROPLIST), CB_ERR);
  Variant vident(std::int32_t{5});
  DSX_CBIdent(Dx(), IDC_X_DROPLIST, vident);
  EXPECT_TRUE(vident.IsNull());
  DV_CBRequired(Dx(), IDC_X_DROPLIST);
  DV_CBRequired(Dx(), IDC_X_DROPLIST, "Wybierz oddział.");
  EXPECT_EQ(Messages(), (std::vector<std::string>{"Proszę wybrać element.", "Wybierz oddział."}));

  DLX_CBString(Dx(), IDC_X_COMBO, "kro");  // the first item that begins with it, whatever the case
  EXPECT_EQ(sel(IDC_X_COMBO), 2);
  std::string s;
  DSX_CBStringSelected(Dx(), IDC_X_COMBO, s);
  EXPECT_EQ(s, "Krosno");
  DLX_CBStringExact(Dx(), IDC_X_COMBO, "Kraków");
  EXPECT_EQ(sel(IDC_X_COMBO), 1);
  DLX_CBString(Dx(), IDC_X_COMBO, "Poznań");
  EXPECT_EQ(sel(IDC_X_COMBO), CB_ERR);
  EXPECT_EQ(GetTextA(Item(IDC_X_COMBO)), "Poznań");
  DSX_CBString(Dx(), IDC_X_COMBO, s);
  EXPECT_EQ(s, "Poznań");
  DSX_CBStringSelected(Dx(), IDC_X_COMBO, s);
  EXPECT_EQ(s, "");
  DLX_CBStringExact(Dx(), IDC_X_COMBO, "Krak");  // not a whole item
  EXPECT_EQ(sel(IDC_X_COMBO), CB_ERR);
  DLX_CBIndex(Dx(), IDC_X_COMBO, 3);
  int index = -1;
  DSX_CBIndex(Dx(), IDC_X_COMBO, index);
  EXPECT_EQ(index, 3);
}

TEST_F(ExchangeTest, ListBoxesFollowTheComboRules) {
  Fill(Item(IDC_X_LIST), LB_ADDSTRING, LB_SETITEMDATA, {{L"alfa", 1}, {L"beta", 2}, {L"gamma", 3}});
  DLX_LBIdent(Dx(), IDC_X_LIST, Variant(std::int32_t{3}));
  std::string s;
  DSX_LBString(Dx(), IDC_X_LIST, s);
  EXPECT_EQ(s, "gamma");
  DLX_LBString(Dx(), IDC_X_LIST, "BE");
  long ident = 0;
  DSX_LBIdent(Dx(), IDC_X_LIST, ident);
  EXPECT_EQ(ident, 2);
  DLX_LBStringExact(Dx(), IDC_X_LIST, "gam");
  int index = 5;
  DSX_LBIndex(Dx(), IDC_X_LIST, index);
  EXPECT_EQ(index, LB_ERR);
  DSX_LBStringExact(Dx(), IDC_X_LIST, s);
  EXPECT_EQ(s, "");
}

// The variant save overloads of check boxes, radio groups, combos and lists give the saved number
// the variant type asked for, as DSX_Text does.
TEST_F(ExchangeTest, VariantSavesCarryTheRequestedType) {
  Fill(Item(IDC_X_DROPLIST), CB_ADDSTRING, CB_SETITEMDATA, {{L"a", 10}, {L"b", 30}});
  Fill(Item(IDC_X_LIST), LB_ADDSTRING, LB_SETITEMDATA, {{L"a", 1}, {L"b", 2}});
  DLX_Check(Dx(), IDC_X_CHECK3, 2L);
  DLX_Radio(Dx(), IDC_X_RADIO1, 1);
  DLX_CBIdent(Dx(), IDC_X_DROPLIST, 30L);
  DLX_LBIdent(Dx(), IDC_X_LIST, 2L);
  struct Saver {
    void (*save)(CFlgDataExchange&, int, _variant_t&, VARTYPE);
    int id;
    std::int32_t n;
  } const savers[] = {{DSX_Check, IDC_X_CHECK3, 2}, {DSX_Radio, IDC_X_RADIO1, 1}, {DSX_CBIdent, IDC_X_DROPLIST, 30},
                      {DSX_LBIdent, IDC_X_LIST, 2}};
  struct Case {
    VARTYPE type;
    Variant (*expected)(std::int32_t n);
  } const cases[] = {
      {VT_I4, [](std::int32_t n) { return Variant(n); }},
      {VT_I2, [](std::int32_t n) { return Variant(n); }},
      {VT_I8, [](std::int32_t n) { return Variant(std::int64_t{n}); }},
      {VT_R8, [](std::int32_t n) { return Variant(double(n)); }},
      {VT_BOOL, [](std::int32_t n) { return Variant(n != 0); }},
      {VT_CY, [](std::int32_t n) { return Variant(Amount::FromUnits(n)); }},
      {VT_BSTR, [](std::int32_t n) { return Variant(std::to_string(n)); }},
  };
  for (const Saver& s : savers) {
    for (const Case& c : cases) {
      SCOPED_TRACE(::testing::Message() << "control " << s.id << " vt=" << c.type);
      Variant v = Variant::MakeNull();
      s.save(Dx(), s.id, v, c.type);
      EXPECT_EQ(v, c.expected(s.n));
      EXPECT_EQ(v.GetType(), c.expected(s.n).GetType());
    }
  }
  EXPECT_EQ(m_errors.GetCount(), 0u);
}

TEST_F(ExchangeTest, CheckListGivesTheIdentsOrPositionsOfCheckedItems) {
  HWND lv = Item(IDC_X_CHECKLIST);
  SendMessageW(lv, LVM_SETEXTENDEDLISTVIEWSTYLE, LVS_EX_CHECKBOXES, LVS_EX_CHECKBOXES);
  LVCOLUMNW col{};
  col.mask = LVCF_WIDTH;
  col.cx = 120;
  SendMessageW(lv, LVM_INSERTCOLUMNW, 0, reinterpret_cast<LPARAM>(&col));
  const wchar_t* names[] = {L"a", L"b", L"c", L"d"};
  for (int i = 0; i < 4; ++i) {
    LVITEMW item{};
    item.mask = LVIF_TEXT | LVIF_PARAM;
    item.iItem = i;
    item.pszText = const_cast<wchar_t*>(names[i]);
    item.lParam = 100 + i * 10;
    SendMessageW(lv, LVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&item));
  }
  for (int i : {0, 2, 3}) {
    LVITEMW state{};
    state.stateMask = LVIS_STATEIMAGEMASK;
    state.state = INDEXTOSTATEIMAGEMASK(2);
    SendMessageW(lv, LVM_SETITEMSTATE, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(&state));
  }
  CDWordArray idents, indexes;
  DSX_CLBIdent(Dx(), IDC_X_CHECKLIST, idents);
  DSX_CLBIndex(Dx(), IDC_X_CHECKLIST, indexes);
  EXPECT_EQ(idents, (CDWordArray{100, 120, 130}));
  EXPECT_EQ(indexes, (CDWordArray{0, 2, 3}));
  EXPECT_EQ(m_errors.GetCount(), 0u);

  // A plain list box has no check marks: an error for it, and the arrays keep what they held,
  // so a save never reads as "nothing checked".
  Fill(Item(IDC_X_LIST), LB_ADDSTRING, LB_SETITEMDATA, {{L"alfa", 1}, {L"beta", 2}});
  SendMessageW(Item(IDC_X_LIST), LB_SETCURSEL, 1, 0);
  DSX_CLBIdent(Dx(), IDC_X_LIST, idents);
  DSX_CLBIndex(Dx(), IDC_X_LIST, indexes);
  EXPECT_EQ(idents, (CDWordArray{100, 120, 130}));
  EXPECT_EQ(indexes, (CDWordArray{0, 2, 3}));
  EXPECT_EQ(Messages(), (std::vector<std::string>{"Ta lista nie ma pól wyboru.", "Ta lista nie ma pól wyboru."}));
  for (const auto& e : m_errors) EXPECT_EQ(e.ctrlId, static_cast<std::uint32_t>(IDC_X_LIST));
}

TEST_F(ExchangeTest, ScrollBarsSlidersAndPickersKeepTheirPositions) {
  SetScrollRange(Item(IDC_X_SCROLL), SB_CTL, 0, 100, FALSE);
  SendMessageW(Item(IDC_X_SLIDER), TBM_SETRANGE, TRUE, MAKELPARAM(0, 50));
  DLX_Scroll(Dx(), IDC_X_SCROLL, 42);
  DLX_Slider(Dx(), IDC_X_SLIDER, 17);
  int scroll = 0, slider = 0;
  DSX_Scroll(Dx(), IDC_X_SCROLL, scroll);
  DSX_Slider(Dx(), IDC_X_SLIDER, slider);
  EXPECT_EQ(scroll, 42);
  EXPECT_EQ(slider, 17);

  DLX_Time(Dx(), IDC_X_DATEPICK, DateTime(2023, 11, 5, 8, 30, 0));
  COleDateTime d;
  DSX_Time(Dx(), IDC_X_DATEPICK, d);
  EXPECT_EQ(d, DateTime(2023, 11, 5, 8, 30, 0));
  DLX_Time(Dx(), IDC_X_DATEPICK, DateTime::Null());  // a picker with a check box takes no date
  DSX_Time(Dx(), IDC_X_DATEPICK, d);
  EXPECT_TRUE(d.IsNull());
  DLX_Time(Dx(), IDC_X_DATEPICK, CTime(1709208000));
  CTime t;
  DSX_Time(Dx(), IDC_X_DATEPICK, t);
  EXPECT_EQ(t.GetTime(), 1709208000);

  DLX_Time(Dx(), IDC_X_TIMEPICK, 13L * 3600 + 45 * 60 + 7);
  long seconds = 0;
  DSX_Time(Dx(), IDC_X_TIMEPICK, seconds);
  EXPECT_EQ(seconds, 13L * 3600 + 45 * 60 + 7);

  // One date-time from a date edit and a time picker, or a date edit and a time edit.
  Type(IDC_X_DATE, "2024-05-31");
  EXPECT_EQ(DSX_DateAndTime(Dx(), IDC_X_DATE, IDC_X_TIMEPICK), DateTime(2024, 5, 31, 13, 45, 7));
  Type(IDC_X_TIMEEDIT, "7:05");
  EXPECT_EQ(DSX_DateAndTime(Dx(), IDC_X_DATE, IDC_X_TIMEEDIT), DateTime(2024, 5, 31, 7, 5, 0));
  DLX_Time(Dx(), IDC_X_DATEPICK, DateTime(2020, 1, 2));
  EXPECT_EQ(DSX_DateAndTime(Dx(), IDC_X_DATEPICK, IDC_X_TIMEEDIT), DateTime(2020, 1, 2, 7, 5, 0));
  Type(IDC_X_TIMEEDIT, "25:00");
  EXPECT_FALSE(DSX_DateAndTime(Dx(), IDC_X_DATE, IDC_X_TIMEEDIT).IsValid());
  Type(IDC_X_DATE, "");
  EXPECT_TRUE(DSX_DateAndTime(Dx(), IDC_X_DATE, IDC_X_TIMEEDIT).IsNull());
  EXPECT_EQ(Messages(), (std::vector<std::string>{"Proszę wprowadzić godzinę."}));
}

TEST_F(ExchangeTest, ColourPickerAndAnalyticAccountAreRealControls) {
  int mode = -1;
  COLORREF colour = 0;
  DSX_ColorPicker(Dx(), IDC_X_COLOR, mode, colour);  // no object yet: nothing read
  EXPECT_EQ(mode, -1);
  DLX_ColorPicker(Dx(), IDC_X_COLOR, CVelColorPicker::kChosen, RGB(10, 200, 30));
  DSX_ColorPicker(Dx(), IDC_X_COLOR, mode, colour);
  EXPECT_EQ(mode, CVelColorPicker::kChosen);
  EXPECT_EQ(colour, RGB(10, 200, 30));
  // The swatch is painted in the chosen colour.
  ShowWindow(m_dlg.get(), SW_SHOW);
  UpdateWindow(m_dlg.get());
  const WindowDc dc(Item(IDC_X_COLOR));
  RECT r;
  GetClientRect(Item(IDC_X_COLOR), &r);
  EXPECT_EQ(GetPixel(dc.get(), r.right / 2, r.bottom / 2), RGB(10, 200, 30));

  CVelAnalitykaEdit* edit = CVelAnalitykaEdit::FromHandle(Item(IDC_X_ANALITYKA));
  ASSERT_NE(edit, nullptr);
  edit->SetAccount(501, "501-01 Koszty zarządu");
  long account = 0;
  std::wstring text;
  DSX_Analityka(Dx(), IDC_X_ANALITYKA, account, text);
  EXPECT_EQ(account, 501);
  EXPECT_EQ(text::WideToCp1250(text), "501-01 Koszty zarządu");
  SendMessageW(Item(IDC_X_ANALITYKA), WM_CHAR, 'x', 1);  // a typed change leaves the account behind
  DSX_Analityka(Dx(), IDC_X_ANALITYKA, account, text);
  EXPECT_EQ(account, 0);
}

TEST_F(ExchangeTest, ChecksRecordTheirMessages) {
  Type(IDC_X_EDIT, "  \t ");
  DV_Required(Dx(), IDC_X_EDIT);
  DV_Required(Dx(), IDC_X_EDIT, "Podaj nazwę.");
  Type(IDC_X_EDIT, "ab");
  DV_Required(Dx(), IDC_X_EDIT);  // passes
  DV_MinChars(Dx(), IDC_X_EDIT, 3, static_cast<UINT>(IDS_TEST_MINCHARS));
  DV_MinChars(Dx(), IDC_X_EDIT, 3, static_cast<UINT>(9999));               // no such string: the standard text
  DV_MinChars(Dx(), IDC_X_EDIT, 2, static_cast<UINT>(IDS_TEST_MINCHARS));  // passes
  DV_MinChars(Dx(), IDC_X_EDIT, std::string("abcd"), 5);
  Type(IDC_X_EDIT, "Żółw");  // four letters, four bytes in code page 1250
  EXPECT_EQ(DSV_MaxChars(Dx(), IDC_X_EDIT, 4), 1);
  EXPECT_EQ(DSV_MaxChars(Dx(), IDC_X_EDIT, 3), 0);
  EXPECT_EQ(DSV_MaxChars(Dx(), IDC_X_EDIT, std::string("12345"), 5), 1);
  DV_MinLong(Dx(), IDC_X_EDIT, 4, 5);
  DV_MinLong(Dx(), IDC_X_EDIT, 5, 5);
  DV_MinLong(Dx(), IDC_X_EDIT, -1, 0, "Ilość nie może być ujemna.");
  EXPECT_EQ(Messages(), (std::vector<std::string>{
                            "Proszę wprowadzić wartość.",
                            "Podaj nazwę.",
                            "Nazwa musi mieć co najmniej trzy znaki.",
                            "Proszę wprowadzić przynajmniej 3 znaki(ów).",
                            "Proszę wprowadzić przynajmniej 5 znaki(ów).",
                            "Proszę wprowadzić najwyżej 3 znaków.",
                            "Proszę wprowadzić liczbę całkowitą większą lub równą 5.",
                            "Ilość nie może być ujemna.",
                        }));
}

TEST_F(ExchangeTest, EmailAndTaxNumberChecksLeaveEmptyFieldsToTheRequiredCheck) {
  struct Case {
    void (*check)(CFlgDataExchange&, int);
    const char* typed;
    const char* message;  // nullptr: passes
  } cases[] = {
      {DV_PoprawnyEmail, "biuro@firma.pl", nullptr},
      {DV_PoprawnyEmail, "biuro@firma", "Nieprawidłowy adres e-mail"},
      {DV_PoprawnyEmail, "@firma.pl", "Nieprawidłowy adres e-mail"},
      {DV_PoprawnyEmail, "", nullptr},
      {DV_PoprawnyNIP, "1234563218", nullptr},
      {DV_PoprawnyNIP, "PL 1234563218", nullptr},
      {DV_PoprawnyNIP, "1234563219", "Nieprawidłowy NIP"},
      {DV_PoprawnyNIP, "123-456-32-18", nullptr},  // separators as users type them
      {DV_PoprawnyNIP, "526-025-02-74", nullptr},
      {DV_PoprawnyNIP, "526-02-50-274", nullptr},
      {DV_PoprawnyNIP, "PL 5260250274", nullptr},
      {DV_PoprawnyNIP, "pl-526-025-02-74", nullptr},
      {DV_PoprawnyNIP, "526-025-02-75", "Nieprawidłowy NIP"},
      {DV_PoprawnyNIP, "DE 5260250274", "Nieprawidłowy NIP"},  // the Polish check digit says nothing of it
      {DV_PoprawnyNIP, "526 025 02 74", "Nieprawidłowy NIP"},  // blanks inside are not a shape the parser takes
      {DV_PoprawnyNIP, "52602502740", "Nieprawidłowy NIP"},
      {DV_PoprawnyNIP, "  ", nullptr},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.typed);
    m_errors.RemoveAll();
    Type(IDC_X_EDIT, c.typed);
    c.check(Dx(), IDC_X_EDIT);
    if (c.message) {
      EXPECT_EQ(Messages(), (std::vector<std::string>{c.message}));
    } else {
      EXPECT_EQ(m_errors.GetCount(), 0u);
    }
  }
}

TEST_F(ExchangeTest, RangeChecksIncludeBothBoundsAndWriteThemInTheirFormats) {
  DV_MinMaxInt(Dx(), 1, -5, -5, 10);
  DV_MinMaxInt(Dx(), 1, 10, -5, 10);
  DV_MinMaxByte(Dx(), 1, 0, 0, 255);
  DV_MinMaxDWord(Dx(), 1, 4294967295ul, 0, 4294967295ul);
  EXPECT_EQ(m_errors.GetCount(), 0u);
  DV_MinMaxInt(Dx(), 2, 11, -5, 10);
  DV_MinMaxShort(Dx(), 3, -6, -5, 10);
  DV_MinMaxByte(Dx(), 4, 0, 1, 200);
  DV_MinMaxUInt(Dx(), 5, 5, 6, 4000000000u);
  DV_MinMaxLong(Dx(), 6, -2147483647L - 1, 0, 1);
  DV_MinMaxSlider(Dx(), 7, 101, 0, 100);
  EXPECT_EQ(Messages(), (std::vector<std::string>{
                            "Proszę wprowadzić liczbę całkowitą z przedziału -5 i 10.",
                            "Proszę wprowadzić liczbę całkowitą z przedziału -5 i 10.",
                            "Proszę wprowadzić liczbę całkowitą z przedziału 1 i 200.",
                            "Proszę wprowadzić liczbę całkowitą z przedziału 6 i 4000000000.",
                            "Proszę wprowadzić liczbę całkowitą z przedziału 0 i 1.",
                            "Proszę wprowadzić liczbę całkowitą z przedziału 0 i 100.",
                        }));
}

TEST_F(ExchangeTest, OnlyTheEmptyCheckThrowsAndANullListDropsEverything) {
  Type(IDC_X_EDIT, "");
  try {
    CheckIfEmptyAddErrorAndThrow(Dx(), IDC_X_EDIT);
    ADD_FAILURE() << "no exception";
  } catch (const ComError& e) {
    EXPECT_EQ(e.Code(), kFail);
  }
  EXPECT_EQ(Messages(), (std::vector<std::string>{"Pole nie może być puste."}));
  Type(IDC_X_EDIT, "x");
  EXPECT_NO_THROW(CheckIfEmptyAddErrorAndThrow(Dx(), IDC_X_EDIT));

  CFlgDataExchange quiet(nullptr, m_dlg.get(), "#9101");
  Type(IDC_X_NUMBER, "abc");
  int v = 1;
  DSX_Text(quiet, IDC_X_NUMBER, v);
  DV_Required(quiet, IDC_X_MISSING);
  EXPECT_EQ(quiet.GetCount(), 0u);
  EXPECT_EQ(v, 1);
}

// A failing COM object that describes its failure through the error-information protocol.
class FailingObject : public ISupportErrorInfo {
 public:
  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** out) override {
    if (iid == IID_IUnknown || iid == IID_ISupportErrorInfo) {
      *out = static_cast<ISupportErrorInfo*>(this);
      AddRef();
      return S_OK;
    }
    *out = nullptr;
    return E_NOINTERFACE;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return ++m_refs; }
  ULONG STDMETHODCALLTYPE Release() override { return --m_refs; }
  HRESULT STDMETHODCALLTYPE InterfaceSupportsErrorInfo(REFIID iid) override {
    return iid == IID_IDispatch ? S_OK : S_FALSE;
  }
  void Fail(const wchar_t* description) {
    ICreateErrorInfo* create = nullptr;
    ASSERT_EQ(CreateErrorInfo(&create), S_OK);
    create->SetDescription(const_cast<LPOLESTR>(description));
    IErrorInfo* info = nullptr;
    create->QueryInterface(IID_IErrorInfo, reinterpret_cast<void**>(&info));
    SetErrorInfo(0, info);
    info->Release();
    create->Release();
  }
  ULONG m_refs = 1;
};

// A host's running instance that words one failure itself.
class WordingInstance : public IFlgInstance, public IFlgErrorInformation {
 public:
  db::Connection GetConnection() override { return {}; }
  std::int32_t GetUserId() override { return 1; }
  std::string GetUserIdentifier() override { return "ADMIN"; }
  std::string GetWorkstationName() override { return "STANOWISKO"; }
  bool DescribeError(HRESULT hr, IUnknown*, REFIID, std::string& message) override {
    if (hr != E_ACCESSDENIED) return false;
    message = "Brak uprawnień do kartoteki.";
    return true;
  }
};

TEST_F(ExchangeTest, ErrorsFromWindowsResourcesAndFailingCalls) {
  Dx().AddError(Item(IDC_X_EDIT), "przez okno");
  Dx().AddError(IDC_X_EDIT, static_cast<unsigned>(IDS_TEST_OTHER));
  Dx().AddError(IDC_X_EDIT, static_cast<unsigned>(9999));  // a missing string: empty message
  WordingInstance instance;
  FailingObject object;
  object.Fail(L"Naruszenie klucza obcego");
  Dx().AddErrorFromHR(IDC_X_DATE, E_FAIL, nullptr, &object, IID_IDispatch);
  Dx().AddErrorFromHR(IDC_X_DATE, E_ACCESSDENIED, &instance, &object, IID_IDispatch);
  Dx().AddErrorFromHR(IDC_X_DATE, E_FAIL, RunningFlgInstance(), nullptr, IID_IDispatch);  // no wording of its own
  ASSERT_EQ(m_errors.GetCount(), 6u);
  EXPECT_EQ(m_errors[0].ctrlId, static_cast<std::uint32_t>(IDC_X_EDIT));
  EXPECT_EQ(m_errors[1].message, "Inny tekst");
  EXPECT_EQ(m_errors[2].message, "");
  EXPECT_EQ(m_errors[3].message, "Naruszenie klucza obcego. (0x80004005)");
  EXPECT_EQ(m_errors[4].message, "Brak uprawnień do kartoteki.");
  EXPECT_NE(m_errors[5].message.find("(0x80004005)"), std::string::npos);
  EXPECT_EQ(object.m_refs, 1u);  // everything obtained was released
  CVelErrorInformator::Free();
}

}  // namespace
}  // namespace varion
