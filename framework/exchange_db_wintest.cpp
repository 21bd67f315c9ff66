// The exchange with recordset fields, and dialog configuration in the database, on ODBC to
// SQLite under Wine.
#include <windows.h>
#include <commctrl.h>

#include <gtest/gtest.h>

#include "base/status.h"
#include "base/text.h"
#include "db/schema/schema.h"
#include "framework/data_exchange_win.h"
#include "framework/flg_dialog_win.h"
#include "framework/framework_wintest.h"
#include "framework/hook_supp_win.h"
#include "controls/vel_controls_win.h"
#include "tests/db_backends.h"
#include "tests/win_support.h"

namespace varion {
namespace {

using testing::GetTextA;
using testing::unique_hwnd;

INT_PTR CALLBACK PlainDialogProc(HWND, UINT msg, WPARAM, LPARAM) { return msg == WM_INITDIALOG; }

class ExchangeDbTest : public ::testing::Test {
 protected:
  ExchangeDbTest() : m_db("odbc-sqlite"), m_conn(m_db.Connect()) {}
  void SetUp() override {
    CHookSupp::InitVXAXVelControls(nullptr);
    CHookSupp::InstallUIHook();
    const SqlDialect& d = m_conn.Dialect();
    m_conn.Execute(std::string("CREATE TABLE kontr (id INT, nazwa ") + d.TextType(60) + ", kwota " + d.AmountType() +
                   ", data " + d.DateTimeType() + ", stan INT, oddzial INT, poz INT, konto INT, konto_tekst " +
                   d.TextType(80) + ")");
    m_conn.Prepare("INSERT INTO kontr (id, nazwa, kwota, data, stan, oddzial, poz) VALUES (1, ?, ?, ?, 2, 30, 17)")
        .Bind(1, Variant("Młyn Żuławy"))
        .Bind(2, Variant(Amount::FromRaw(-25000000)))
        .Bind(3, Variant(DateTime(2024, 7, 15)))
        .Execute();
    m_dlg.reset(CreateDialogParamW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(IDD_TEST_EXCHANGE), nullptr,
                                   PlainDialogProc, 0));
    ASSERT_TRUE(m_dlg);
    HWND combo = Item(IDC_X_DROPLIST);
    for (auto [text, id] : {std::pair{L"Centrala", 10L}, {L"Gda\u0144sk", 30L}}) {
      const LRESULT i = SendMessageW(combo, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text));
      SendMessageW(combo, CB_SETITEMDATA, static_cast<WPARAM>(i), id);
    }
    SendMessageW(Item(IDC_X_SLIDER), TBM_SETRANGE, TRUE, MAKELPARAM(0, 100));
    m_dx = CFlgDataExchange(&m_errors, m_dlg.get(), "#9101");
  }
  HWND Item(int id) const { return GetDlgItem(m_dlg.get(), id); }
  void Type(int id, const std::string& text) const { SetWindowTextW(Item(id), text::Cp1250ToWide(text).c_str()); }

  testing::TestDatabase m_db;
  db::Connection m_conn;
  unique_hwnd m_dlg;
  CObjErrorInfoArray m_errors;
  CFlgDataExchange m_dx{&m_errors, nullptr, "#9101"};
};

TEST_F(ExchangeDbTest, FieldsLoadIntoControlsAsTheirValuesGo) {
  db::Recordset rs = m_conn.OpenRS("SELECT * FROM kontr WHERE id = 1");
  DLX_Text(m_dx, IDC_X_EDIT, rs, "nazwa");
  DLX_Text(m_dx, IDC_X_AMOUNT, rs, "kwota");
  DLX_Text(m_dx, IDC_X_DATE, rs, "data");
  DLX_Check(m_dx, IDC_X_CHECK3, rs, "stan");
  DLX_CBIdent(m_dx, IDC_X_DROPLIST, rs, "oddzial");
  DLX_Slider(m_dx, IDC_X_SLIDER, rs, "poz");
  DLX_Time(m_dx, IDC_X_DATEPICK, rs, "data");
  DLX_Text(m_dx, IDC_X_NUMBER, rs, "konto");  // NULL: empty
  EXPECT_EQ(GetTextA(Item(IDC_X_EDIT)), "Młyn Żuławy");
  EXPECT_EQ(GetTextA(Item(IDC_X_AMOUNT)), "-2500,0000");  // the amount field answers its plain value
  EXPECT_EQ(GetTextA(Item(IDC_X_DATE)), "2024-07-15");
  EXPECT_EQ(SendMessageW(Item(IDC_X_CHECK3), BM_GETCHECK, 0, 0), BST_INDETERMINATE);
  EXPECT_EQ(GetTextA(Item(IDC_X_DROPLIST)), "Gdańsk");
  EXPECT_EQ(SendMessageW(Item(IDC_X_SLIDER), TBM_GETPOS, 0, 0), 17);
  EXPECT_EQ(GetTextA(Item(IDC_X_NUMBER)), "");
  COleDateTime picked;
  DSX_Time(m_dx, IDC_X_DATEPICK, picked);
  EXPECT_EQ(picked.DateOnly(), DateTime(2024, 7, 15));
  EXPECT_EQ(DSV_MaxChars(m_dx, IDC_X_EDIT, rs, "nazwa", 5), 0);
  DV_MinChars(m_dx, IDC_X_EDIT, rs, "nazwa", 3);
  ASSERT_EQ(m_errors.GetCount(), 1u);
  EXPECT_EQ(m_errors[0].message, "Proszę wprowadzić najwyżej 5 znaków.");

  try {
    DLX_Text(m_dx, IDC_X_EDIT, rs, "nie_ma");
    ADD_FAILURE() << "no error";
  } catch (const ComError& e) {
    EXPECT_EQ(e.Code(), kPointer);
  }
}

TEST_F(ExchangeDbTest, ControlsSaveIntoTheNewRowAsTheFieldTypesRead) {
  Type(IDC_X_EDIT, "Zakład Ślusarski");
  Type(IDC_X_AMOUNT, "1 234,56");
  Type(IDC_X_DATE, "2025-01-02");
  Type(IDC_X_NUMBER, "42");
  SendMessageW(Item(IDC_X_CHECK3), BM_SETCHECK, BST_CHECKED, 0);
  SendMessageW(Item(IDC_X_DROPLIST), CB_SETCURSEL, 0, 0);
  SendMessageW(Item(IDC_X_SLIDER), TBM_SETPOS, TRUE, 64);
  CVelAnalitykaEdit::FromHandle(Item(IDC_X_ANALITYKA))->SetAccount(702, "702 Przychody");

  db::UpdatableRecordset up = m_conn.OpenForUpdate("SELECT * FROM kontr WHERE 1 = 0");
  up.AddNew();
  up.PutCollect("id", Variant(std::int32_t{2}));
  DSX_Text(m_dx, IDC_X_EDIT, up, "nazwa");
  DSX_Text(m_dx, IDC_X_AMOUNT, up, "kwota");
  DSX_Text(m_dx, IDC_X_DATE, up, "data");
  DSX_Text(m_dx, IDC_X_NUMBER, up, "poz");
  DSX_Check(m_dx, IDC_X_CHECK3, up, "stan");
  DSX_CBIdent(m_dx, IDC_X_DROPLIST, up, "oddzial");
  DSX_Analityka(m_dx, IDC_X_ANALITYKA, up, "konto", "konto_tekst");
  EXPECT_EQ(m_errors.GetCount(), 0u);
  up.Update();

  db::Recordset rs = m_conn.OpenRS("SELECT * FROM kontr WHERE id = 2");
  ASSERT_FALSE(rs.IsEOF());
  EXPECT_EQ(rs.GetCollect("nazwa"), Variant("Zakład Ślusarski"));
  EXPECT_EQ(rs.GetCollect("kwota"), Variant(Amount::FromRaw(12345600)));
  EXPECT_EQ(rs.GetCollect("data"), Variant(DateTime(2025, 1, 2)));
  EXPECT_EQ(rs.GetCollect("poz").AsInt32(), 42);
  EXPECT_EQ(rs.GetCollect("stan").AsInt32(), 1);
  EXPECT_EQ(rs.GetCollect("oddzial").AsInt32(), 10);
  EXPECT_EQ(rs.GetCollect("konto").AsInt32(), 702);
  EXPECT_EQ(rs.GetCollect("konto_tekst"), Variant("702 Przychody"));

  // A text that does not read as the field's type records its message and leaves the field. (The
  // amount field refuses such a text, so it comes from a plain edit.)
  Type(IDC_X_EDIT, "sto złotych");
  Type(IDC_X_DATE, "");
  up.AddNew();
  DSX_Text(m_dx, IDC_X_EDIT, up, "kwota");
  DSX_Text(m_dx, IDC_X_DATE, up, "data");
  ASSERT_EQ(m_errors.GetCount(), 1u);
  EXPECT_EQ(m_errors[0].message, "Proszę wprowadzić kwotę.");
  EXPECT_TRUE(up.GetCollect("kwota").IsEmpty());
  EXPECT_TRUE(up.GetCollect("data").IsNull());  // an empty date edit is a NULL date
}

class CfgDialog : public CFlgDialog {
 public:
  CfgDialog() : CFlgDialog(IDD_TEST_FORM) {}
  std::int32_t width = 0;
  void SaveDlgCfg(db::ByteStream& s) override { CfgWriteInt32(s, width); }
  void LoadDlgCfg(db::ByteStream& s) override { width = CfgReadInt32(s); }
  using CFlgDialog::LoadDlgCfg;
  using CFlgDialog::SaveDlgCfg;
};

TEST_F(ExchangeDbTest, DialogConfigurationLivesInTheDatabaseTable) {
  db::schema::CreateSchema(m_conn);
  auto factory = std::make_shared<DbDialogCfgFactory>(m_conn);
  // Opens a dialog of the same section and user; its configuration is read once it has loaded.
  auto open = [&](CfgDialog& d) {
    d.SetDataForCfgSave(factory);
    d.SetSection("Kontrahent.Lista");
    d.SetUser(4);
    const bool created = d.Create(nullptr);
    testing::PumpMessages(20);
    return created;
  };
  {
    CfgDialog d;
    ASSERT_TRUE(open(d));
    d.width = 333;
    DestroyWindow(d.m_hWnd);
  }
  db::Recordset rs = m_conn.OpenRS("SELECT vwcg_Section, vwcg_User, vwcg_Service FROM vw_KonfiguracjaDialogu");
  ASSERT_EQ(rs.GetRecordCount(), 1u);
  EXPECT_EQ(rs.GetCollect("vwcg_Section"), Variant("Kontrahent.Lista"));
  EXPECT_EQ(rs.GetCollect("vwcg_User").AsInt32(), 4);
  CfgDialog again;
  ASSERT_TRUE(open(again));
  EXPECT_EQ(again.width, 333);

  // A damaged row is ignored: the dialog opens with its own defaults.
  m_conn.Prepare("UPDATE vw_KonfiguracjaDialogu SET vwcg_Data = ?").Bind(1, Variant(Variant::Bytes{1, 2})).Execute();
  CfgDialog damaged;
  ASSERT_TRUE(open(damaged));
  EXPECT_EQ(damaged.width, 0);
  EXPECT_TRUE(IsWindow(damaged.m_hWnd));
}

}  // namespace
}  // namespace varion
