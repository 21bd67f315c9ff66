// The fillers in real combo and list boxes on ODBC to SQLite under Wine: texts read back through
// CB_GETLBTEXT / LB_GETTEXT, item data through CB_GETITEMDATA / LB_GETITEMDATA.
#include <windows.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>

#include "base/text.h"
#include "db/rt_instance.h"
#include "diagnostics/framework_log.h"
#include "framework/business_fillers_win.h"
#include "framework/fill_dictionaries.h"
#include "framework/fill_test_data.h"
#include "framework/fillers_win.h"
#include "framework/framework_wintest.h"
#include "framework/hook_supp_win.h"
#include "tests/db_backends.h"
#include "tests/win_support.h"

namespace varion {
namespace {

using fill::Item;
using fill::Items;
using testing::GetTextA;
using testing::unique_hwnd;

INT_PTR CALLBACK PlainDialogProc(HWND, UINT msg, WPARAM, LPARAM) { return msg == WM_INITDIALOG; }

class FillersTest : public ::testing::Test {
 protected:
  FillersTest() : m_db("odbc-sqlite"), m_conn(m_db.Connect()) {}
  void SetUp() override {
    CHookSupp::InitVXAXVelControls(nullptr);  // the template names the library's combo class
    CHookSupp::InstallUIHook();
    testing::CreateFillDatabase(m_conn);
    m_dlg.reset(CreateDialogParamW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(IDD_TEST_EXCHANGE), nullptr,
                                   PlainDialogProc, 0));
    ASSERT_TRUE(m_dlg);
    m_dx = CFlgDataExchange(&m_errors, m_dlg.get(), "#9101");
    m_previousSink = SetFrameworkLogSink([this](std::string_view, std::string_view text) { m_log.emplace_back(text); });
  }
  void TearDown() override {
    SetFrameworkLogSink(m_previousSink);
    CRtInstance::Uninstall();
  }
  HWND Ctl(int id) const { return GetDlgItem(m_dlg.get(), id); }
  static bool IsCombo(HWND h) {
    wchar_t cls[32] = {};
    GetClassNameW(h, cls, 32);
    return _wcsicmp(cls, L"ComboBox") == 0 || _wcsicmp(cls, L"DropdownCombobox") == 0;
  }
  // Every item of a combo or list box: its text and its item data, as a host reads them.
  Items Read(int id) const {
    HWND h = Ctl(id);
    const bool combo = IsCombo(h);
    const UINT count = combo ? CB_GETCOUNT : LB_GETCOUNT, len = combo ? CB_GETLBTEXTLEN : LB_GETTEXTLEN,
               get = combo ? CB_GETLBTEXT : LB_GETTEXT, data = combo ? CB_GETITEMDATA : LB_GETITEMDATA;
    Items items;
    const LRESULT n = SendMessageW(h, count, 0, 0);
    for (LRESULT i = 0; i < n; ++i) {
      std::wstring t(static_cast<size_t>(SendMessageW(h, len, static_cast<WPARAM>(i), 0)) + 1, L'\0');
      SendMessageW(h, get, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(t.data()));
      t.resize(wcslen(t.c_str()));
      items.push_back({text::WideToCp1250(t), static_cast<std::int32_t>(SendMessageW(h, data, static_cast<WPARAM>(i), 0))});
    }
    return items;
  }
  int Selection(int id) const {
    return static_cast<int>(SendMessageW(Ctl(id), IsCombo(Ctl(id)) ? CB_GETCURSEL : LB_GETCURSEL, 0, 0));
  }

  testing::TestDatabase m_db;
  db::Connection m_conn;
  unique_hwnd m_dlg;
  CObjErrorInfoArray m_errors;
  CFlgDataExchange m_dx{&m_errors, nullptr, "#9101"};
  FrameworkLogSink m_previousSink;
  std::vector<std::string> m_log;
};

Items Sorted(Items items, std::size_t from) {
  std::stable_sort(items.begin() + static_cast<std::ptrdiff_t>(from), items.end(),
                   [](const Item& a, const Item& b) { return a.data < b.data; });
  return items;
}

TEST_F(FillersTest, ArraysWithExclusionsResetAndAppendInBothControls) {
  const LBEntry entries[] = {{1, "jeden"}, {2, "dwa"}, {3, "trzy"}};
  const long skip2[] = {2};
  const long skipAll[] = {3, 2, 1};
  for (int id : {IDC_X_DROPLIST, IDC_X_LIST}) {
    SCOPED_TRACE(id);
    const bool combo = id == IDC_X_DROPLIST;
    auto fill = [&](const LBEntry* e, int n, bool reset, const long* ex, int exn) {
      return combo ? CB_Fill(m_dx, id, e, n, reset, ex, exn) : LB_Fill(m_dx, id, e, n, reset, ex, exn);
    };
    EXPECT_TRUE(fill(entries, 3, true, skip2, 1));
    EXPECT_EQ(Read(id), (Items{{"jeden", 1}, {"trzy", 3}}));
    EXPECT_TRUE(fill(entries, 2, false, nullptr, 0));  // appended after what is there
    EXPECT_EQ(Read(id), (Items{{"jeden", 1}, {"trzy", 3}, {"jeden", 1}, {"dwa", 2}}));
    EXPECT_TRUE(fill(entries, 3, true, skipAll, 3));  // everything excluded: empty, and still true
    EXPECT_EQ(Read(id), Items{});
    EXPECT_TRUE(fill(entries, 1, true, nullptr, 0));
    EXPECT_FALSE(fill(entries, 0, true, nullptr, 0));  // refused: nothing touched
    EXPECT_FALSE(fill(nullptr, 3, true, nullptr, 0));
    EXPECT_EQ(Read(id), (Items{{"jeden", 1}}));
  }
  EXPECT_FALSE(CB_Fill(m_dx, IDC_X_MISSING, entries, 3));
  CFlgDataExchange noDialog(&m_errors, nullptr, "#9101");
  EXPECT_FALSE(LB_Fill(noDialog, IDC_X_LIST, entries, 3));
}

TEST_F(FillersTest, TextsResourcesAndPairs) {
  struct Case {
    const char* what;
    std::function<bool()> fill;
    int id;
    Items expected;
  } cases[] = {
      {"string array", [&] { return CB_Fill(m_dx, IDC_X_COMBO, CStringArray{"Łódź", "", "Kraków"}); }, IDC_X_COMBO,
       {{"Łódź", 0}, {"", 1}, {"Kraków", 2}}},
      {"resource lines", [&] { return LB_Fill(m_dx, IDC_X_LIST, UINT{IDS_TEST_FILL}); }, IDC_X_LIST,
       {{"tak", 0}, {"nie", 1}, {"brak", 2}}},
      {"two texts", [&] { return CB_Fill(m_dx, IDC_X_DROPLIST, "netto", "brutto"); }, IDC_X_DROPLIST,
       {{"netto", 0}, {"brutto", 1}}},
      {"two texts appended", [&] { return CB_Fill(m_dx, IDC_X_DROPLIST, "tak", nullptr, false); }, IDC_X_DROPLIST,
       {{"netto", 0}, {"brutto", 1}, {"tak", 0}, {"", 1}}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.what);
    EXPECT_TRUE(c.fill());
    EXPECT_EQ(Read(c.id), c.expected);
  }
  EXPECT_FALSE(CB_Fill(m_dx, IDC_X_COMBO, UINT{4242}));  // no such resource: the control keeps its items
  EXPECT_EQ(Read(IDC_X_COMBO).size(), 3u);
}

TEST_F(FillersTest, DatabaseFormsTablesQueriesRecordsetsAndDistinct) {
  struct Case {
    const char* what;
    std::function<bool()> fill;
    int id;
    Items expected;  // rows sorted by item data unless the statement orders them
    bool ordered;
  } cases[] = {
      {"table name", [&] { return CB_Fill(m_dx, IDC_X_DROPLIST, m_conn, "sl_Model", "mod_Nazwa", "mod_Id"); },
       IDC_X_DROPLIST, {{"Corolla", 1}, {"Octavia", 2}}, false},
      {"query by its seventh character",
       [&] { return LB_Fill(m_dx, IDC_X_LIST, m_conn, "SELECT * FROM sl_Kasa", "kas_Nazwa", "kas_Id"); }, IDC_X_LIST,
       {{"Kasa główna", 1}}, false},
      {"template over two fields",
       [&] {
         return CB_Fill(m_dx, IDC_X_COMBO, m_conn, "pd_Uzytkownik", "uz_Nazwisko", "uz_Id", true, "%1!ls!, %2!ls!",
                        "uz_Imie");
       },
       IDC_X_COMBO, {{"Kowalski, Jan", 1}, {"Wójcik, Zofia", 2}}, false},
      {"statement as it stands",
       [&] {
         return CB_FillRS(m_conn, m_dx, IDC_X_DROPLIST, "SELECT pa_Id, pa_Nazwa FROM sl_Panstwo ORDER BY pa_Nazwa",
                          "pa_Nazwa", "pa_Id");
       },
       IDC_X_DROPLIST, {{"Niemcy", 2}, {"Polska", 1}}, true},
      {"open recordset",
       [&] {
         db::Recordset rs = m_conn.OpenRS("SELECT * FROM sl_Oddzialy ORDER BY so_Id DESC");
         rs.MoveNext();
         return LB_Fill(m_dx, IDC_X_LIST, rs, "so_Nazwa", "so_Id");
       },
       IDC_X_LIST, {{"Oddział Gdańsk", 2}, {"Centrala", 1}}, true},
      {"distinct values",
       [&] { return CB_FillDistinct(m_conn, m_dx, IDC_X_COMBO, "sl_KodZus", "kz_Nazwa", "kz_Kod", "kz_Kod = '0411'"); },
       IDC_X_COMBO, {{"Umowa zlecenia", 411}, {"duplikat", 411}}, true},  // binary order: capitals first
      {"distinct without an identifier",
       [&] { return LB_FillDistinct(m_conn, m_dx, IDC_X_LIST, "sl_KodZus", "kz_Kod"); }, IDC_X_LIST,
       {{"0110", 1}, {"0411", 1}}, true},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.what);
    EXPECT_TRUE(c.fill());
    EXPECT_EQ(c.ordered ? Read(c.id) : Sorted(Read(c.id), 0), c.expected);
  }
  EXPECT_TRUE(m_log.empty());
}

TEST_F(FillersTest, AFailingSourceLeavesTheControlAsItWasAndIsLogged) {
  ASSERT_TRUE(CB_Fill(m_dx, IDC_X_DROPLIST, m_conn, "sl_Model", "mod_Nazwa", "mod_Id"));
  SendMessageW(Ctl(IDC_X_DROPLIST), CB_SETCURSEL, 1, 0);
  const Items before = Read(IDC_X_DROPLIST);
  struct Case {
    const char* what;
    std::function<bool()> fill;
  } cases[] = {
      {"no such table", [&] { return CB_Fill(m_dx, IDC_X_DROPLIST, m_conn, "sl_NieMa", "a", "b"); }},
      {"no such field", [&] { return CB_Fill(m_dx, IDC_X_DROPLIST, m_conn, "sl_Model", "mod_Brak", "mod_Id"); }},
      {"text as identifier", [&] { return CB_Fill(m_dx, IDC_X_DROPLIST, m_conn, "sl_Model", "mod_Nazwa", "mod_Nazwa"); }},
      {"refused template",
       [&] { return CB_Fill(m_dx, IDC_X_DROPLIST, m_conn, "sl_Model", "mod_Nazwa", "mod_Id", true, "%1!d!", nullptr); }},
      {"broken statement", [&] { return CB_FillRS(m_conn, m_dx, IDC_X_DROPLIST, "SELECT FROM", "a", "b"); }},
      {"closed connection", [&] { return CB_FillCrmBranza(db::Connection(), m_dx, IDC_X_DROPLIST); }},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.what);
    m_log.clear();
    EXPECT_FALSE(c.fill());
    EXPECT_EQ(Read(IDC_X_DROPLIST), before);
    EXPECT_EQ(Selection(IDC_X_DROPLIST), 1);
    ASSERT_EQ(m_log.size(), 1u);
    EXPECT_NE(m_log[0].find("nie została wypełniona"), std::string::npos) << m_log[0];
  }
  EXPECT_EQ(DLX_InitKasaFilter(m_dx, IDC_X_DROPLIST), 0);  // no running instance
  EXPECT_EQ(Read(IDC_X_DROPLIST), before);
}

TEST_F(FillersTest, NamedFillersAndFilterCombosCarryTheirDictionaries) {
  CRtInstance::Install({m_conn, 1, "ADMIN", ""});
  using Filler = std::function<bool(int id)>;
  auto filter = [&](int (*init)(CFlgDataExchange&, int)) {
    return [this, init](int id) { return init(m_dx, id) > 0; };
  };
  struct Case {
    const char* dictionary;
    Filler fill;
    unsigned extras;
  } cases[] = {
      {"CrmBranza", [&](int id) { return CB_FillCrmBranza(m_conn, m_dx, id); }, fill::kNoExtras},
      {"CrmPersonel", [&](int id) { return CB_FillCrmPersonel(m_conn, m_dx, id); }, 1},
      {"Division", [&](int id) { return CB_FillDivision(m_conn, m_dx, id); }, 3},
      {"Division", [&](int id) { return CB_FillDivision(m_conn, m_dx, id, false, true); }, 2},
      {"DrukarkiFiskalne", [&](int id) { return CB_FillDrukarkiFiskalne(m_conn, m_dx, id); }, fill::kNoExtras},
      {"AtrybutyDnia", [&](int id) { return CB_FillAtrybutyDnia(m_conn, m_dx, id); }, 1},
      {"DokumentyDefiniowalneDlaTypu", [&](int id) { return CB_FillDokumentyDefiniowalneDlaTypu(m_conn, m_dx, id, 2, 1); },
       fill::kNoExtras},
      {"DaneWystawiajacegoEmail", [&](int id) { return CB_FillDaneWystawiajacegoEmail(m_conn, m_dx, id); }, 1},
      {"Flaga_Nazwy", [&](int id) { return CB_FillFlaga_Nazwy(m_conn, m_dx, id, true, false); }, 1},
      {"Magazyn", [&](int id) { return LB_FillMagazyn(m_conn, m_dx, id); }, fill::kNoExtras},
      {"Panstwo", [&](int id) { return LB_FillPanstwo(m_conn, m_dx, id); }, fill::kNoExtras},
      {"Pracownik", [&](int id) { return CB_FillPracownik(m_conn, m_dx, id); }, fill::kNoExtras},
      {"ErpListFilter", filter(DLX_InitErpListFilter), 1},
      {"GrupyDokFilter", filter(DLX_InitGrupyDokFilter), 1},
      {"KasaFilter", filter(DLX_InitKasaFilter), 1},
      {"KategoriaFilter", filter(DLX_InitKategoriaFilter), 1},
      {"KodyCNFilter", filter(DLX_InitKodyCNFilter), 1},
      {"ModelFilter", filter(DLX_InitModelFilter), 1},
      {"PanstwoFilter", filter(DLX_InitPanstwoFilter), 1},
      {"PdmRachBankListFilter", filter(DLX_InitPdmRachBankListFilter), 1},
      {"PkwiuFilter", filter(DLX_InitPkwiuFilter), 1},
      {"PracRachBankListFilter", filter(DLX_InitPracRachBankListFilter), 1},
      {"RachBankListFilter", filter(DLX_InitRachBankListFilter), 1},
      {"RejestrKsiegowyFilter", filter(DLX_InitRejestrKsiegowyFilter), 1},
      {"SchematImportuFilter", filter(DLX_InitSchematImportuFilter), 1},
      {"SlMagListFilter", filter(DLX_InitSlMagListFilter), 1},
      {"UslugaBankListFilter", filter(DLX_InitUslugaBankListFilter), 1},
      {"ZleceniaFilter", filter(DLX_InitZleceniaFilter), 1},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.dictionary);
    const fill::Dictionary* d = fill::FindDictionary(c.dictionary);
    ASSERT_NE(d, nullptr);
    const auto expectedRows = std::find_if(testing::DictionaryCases().begin(), testing::DictionaryCases().end(),
                                           [&](const auto& k) { return std::string(k.name) == c.dictionary; });
    ASSERT_NE(expectedRows, testing::DictionaryCases().end());
    Items expected;
    for (unsigned i = 0; i < 2; ++i)
      if (c.extras & (1u << i)) expected.push_back({d->extras[i].text, d->extras[i].data});
    const std::size_t extras = expected.size();
    expected.insert(expected.end(), expectedRows->rows.begin(), expectedRows->rows.end());
    const bool list = std::string(c.dictionary) == "Magazyn" || std::string(c.dictionary) == "Panstwo";
    const int id = list ? IDC_X_LIST : IDC_X_DROPLIST;
    EXPECT_TRUE(c.fill(id));
    EXPECT_EQ(Sorted(Read(id), extras), expected);
    EXPECT_EQ(Selection(id), extras ? 0 : -1);  // the first extra item is the one shown
  }
  // The filter initialisers count what they put in; the recordset form reads the same rows.
  EXPECT_EQ(DLX_InitRachBankListFilter(m_dx, IDC_X_DROPLIST), 4);
  EXPECT_EQ(DLX_InitModelFilter(m_conn, m_dx, IDC_X_DROPLIST), 3);
  db::Recordset lists = m_conn.OpenRS("SELECT gr_Id, gr_Nazwa FROM gr__Grid");
  EXPECT_EQ(DLX_InitErpListFilterRs(m_dx, IDC_X_DROPLIST, lists), 2);
  EXPECT_EQ(Read(IDC_X_DROPLIST), (Items{{"(wszystkie)", fill::kAnyItem}, {"Lista kontrahentów", 1}}));
  EXPECT_TRUE(m_log.empty());
}

TEST_F(FillersTest, FixedListsDaysAndMonths) {
  EXPECT_TRUE(CB_FillDataDomyslna(m_dx, IDC_X_DROPLIST, 10));
  EXPECT_EQ(Read(IDC_X_DROPLIST), (Items{{"bieżący dzień", 0}, {"10. dzień miesiąca", 1}, {"ostatni dzień miesiąca", 2}}));
  EXPECT_TRUE(CB_FillCzestotliwoscOdpisuAM(m_dx, IDC_X_DROPLIST));
  EXPECT_EQ(Read(IDC_X_DROPLIST).back(), (Item{"inna", 5}));
  EXPECT_TRUE(CB_FillFVDateType(m_dx, IDC_X_DROPLIST));
  EXPECT_EQ(Read(IDC_X_DROPLIST).size(), 3u);
  EXPECT_TRUE(CB_FillDokumentVatRodzaje(m_dx, IDC_X_DROPLIST));
  EXPECT_EQ(Read(IDC_X_DROPLIST), (Items{{"sprzedaż", 0}, {"zakup", 1}}));
  EXPECT_TRUE(LB_Fill_Miesiac(m_dx, IDC_X_LIST));
  EXPECT_EQ(Read(IDC_X_LIST), fill::Months());
  EXPECT_TRUE(CB_Fill_DzienTygodnia(m_dx, IDC_X_COMBO));
  EXPECT_EQ(Read(IDC_X_COMBO), fill::DaysOfWeek());
  EXPECT_TRUE(CB_Fill_DzienMiesiaca(m_dx, IDC_X_DROPLIST));
  EXPECT_EQ(Read(IDC_X_DROPLIST), fill::DaysOfMonth());
  EXPECT_FALSE(CB_Fill_Miesiac(m_dx, IDC_X_MISSING));
}

TEST_F(FillersTest, ZusCodesSelectByTextNumberAndField) {
  CRtInstance::Install({m_conn, 1, "ADMIN", ""});
  m_conn.Execute(std::string("CREATE TABLE umowy (id INT, kod ") + m_conn.Dialect().TextType(4) + ", kodn INT, auto_id INT)");
  m_conn.Execute("INSERT INTO umowy VALUES (1, '0411', 110, 2)");
  db::Recordset row = m_conn.OpenRS("SELECT * FROM umowy");
  struct Case {
    const char* what;
    std::function<void()> load;
    int selected;
    const char* shown;
  } cases[] = {
      {"text", [&] { DLX_CB_Zus(m_dx, IDC_X_COMBO, "0110"); }, 0, "0110 Umowa o pracę"},
      {"first of two with one code", [&] { DLX_CB_Zus(m_dx, IDC_X_COMBO, "0411"); }, 1, "0411 Umowa zlecenia"},
      {"number as four digits", [&] { DLX_CB_Zus(m_dx, IDC_X_COMBO, 110L); }, 0, "0110 Umowa o pracę"},
      {"text field", [&] { DLX_CB_Zus(m_dx, IDC_X_COMBO, row, "kod"); }, 1, "0411 Umowa zlecenia"},
      {"number field", [&] { DLX_CB_Zus(m_dx, IDC_X_COMBO, row, "kodn"); }, 0, "0110 Umowa o pracę"},
      {"unknown code shown in the edit", [&] { DLX_CB_Zus(m_dx, IDC_X_COMBO, "9999"); }, -1, "9999"},
      {"prefix is not a code", [&] { DLX_CB_Zus(m_dx, IDC_X_COMBO, "011"); }, -1, "011"},
      {"no code", [&] { DLX_CB_Zus(m_dx, IDC_X_COMBO, 0L); }, -1, ""},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.what);
    c.load();
    EXPECT_EQ(Read(IDC_X_COMBO).size(), 3u);  // refilled, never appended
    EXPECT_EQ(Selection(IDC_X_COMBO), c.selected);
    EXPECT_EQ(GetTextA(Ctl(IDC_X_COMBO)), c.shown);
    if (c.selected >= 0) {
      EXPECT_EQ(SendMessageW(Ctl(IDC_X_COMBO), CB_GETITEMDATA, static_cast<WPARAM>(c.selected), 0), c.selected + 1);
    }
  }
}

TEST_F(FillersTest, RegistrationNumbersByTextIdentifierAndField) {
  CRtInstance::Install({m_conn, 1, "ADMIN", ""});
  m_conn.Execute(std::string("CREATE TABLE trasy (id INT, nr ") + m_conn.Dialect().TextType(20) + ", auto_id INT)");
  m_conn.Execute("INSERT INTO trasy VALUES (1, ' gd 0001 ', 2)");
  db::Recordset row = m_conn.OpenRS("SELECT * FROM trasy");
  struct Case {
    const char* what;
    std::function<void()> load;
    const char* shown;
  } cases[] = {
      {"text", [&] { DLX_NrAuto(m_dx, IDC_X_EDIT, " po 1234a"); }, "PO 1234A"},
      {"identifier", [&] { DLX_NrAuto(m_dx, IDC_X_EDIT, 1L); }, "KR 12345"},
      {"identifier of a lower-case number", [&] { DLX_NrAuto(m_dx, IDC_X_EDIT, 2L); }, "WA 9Z9Z"},
      {"unknown vehicle", [&] { DLX_NrAuto(m_dx, IDC_X_EDIT, 99L); }, ""},
      {"text field", [&] { DLX_NrAuto(m_dx, IDC_X_EDIT, row, "nr"); }, "GD 0001"},
      {"identifier field", [&] { DLX_NrAuto(m_dx, IDC_X_EDIT, row, "auto_id"); }, "WA 9Z9Z"},
      {"no vehicle", [&] { DLX_NrAuto(m_dx, IDC_X_EDIT, 0L); }, ""},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.what);
    SetWindowTextW(Ctl(IDC_X_EDIT), L"poprzedni");
    c.load();
    EXPECT_EQ(GetTextA(Ctl(IDC_X_EDIT)), c.shown);
  }
}

}  // namespace
}  // namespace varion
