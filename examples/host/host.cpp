// A host program's first dialog on the library: a contractor form on CFlgDialog whose template
// names the library's amount, date and tax-number controls, with a combo filled from the
// program's SQLite database. It runs without a person: it types into the form, presses OK twice
// (once with mistakes), and prints what the form saved, the errors it collected, an amount in
// words and the WHERE text of a report over the saved values, in UTF-8.
#include <windows.h>

#include <cstdio>
#include <string>
#include <utility>

#include "base/text.h"
#include "controls/amount_words.h"
#include "db/connection.h"
#include "db/driver_path_win.h"
#include "diagnostics/message_box_seam_win.h"
#include "framework/data_exchange_win.h"
#include "framework/fillers_win.h"
#include "framework/flg_dialog_win.h"
#include "framework/hook_supp_win.h"
#include "host_resource.h"
#include "params/params_html_ctrl.h"

namespace {

void Print(const std::string& cp1250) { std::printf("%s\n", varion::text::Cp1250ToUtf8(cp1250).c_str()); }

class ContractorDialog : public CFlgDialog {
 public:
  explicit ContractorDialog(varion::db::Connection db) : CFlgDialog(IDD_HOST_CONTRACTOR), m_db(std::move(db)) {}

  std::string name = "Zielarnia";
  varion::Amount limit = varion::Amount::FromRaw(15000000);  // 1 500,00
  varion::DateTime since = varion::DateTime(2023, 5, 1);
  std::string nip = "5260250274";
  long branch = 20;

 protected:
  void OnLoadData(CFlgDataExchange& dx) override {
    // The branches from the program's dictionary: a table name, its text and key columns.
    CB_Fill(dx, IDC_HOST_BRANCH, m_db, "oddzialy", "od_Nazwa", "od_Id");
    DLX_Text(dx, IDC_HOST_NAME, name);
    DLX_Text(dx, IDC_HOST_LIMIT, limit);
    DLX_Text(dx, IDC_HOST_SINCE, since);
    DLX_Text(dx, IDC_HOST_NIP, nip);
    DLX_CBIdent(dx, IDC_HOST_BRANCH, branch);
  }
  // Every check runs and adds its error; the dialog shows them all at once.
  void OnSaveData(CFlgDataExchange& dx) override {
    DV_Required(dx, IDC_HOST_NAME);
    DSX_Text(dx, IDC_HOST_NAME, name);
    DSX_Text(dx, IDC_HOST_LIMIT, limit);
    DSX_Text(dx, IDC_HOST_SINCE, since);
    DV_PoprawnyNIP(dx, IDC_HOST_NIP);
    DSX_Text(dx, IDC_HOST_NIP, nip);
    DSX_CBIdent(dx, IDC_HOST_BRANCH, branch);
  }

 private:
  varion::db::Connection m_db;
};

// The program's own database: a dictionary of branches in an SQLite file through ODBC.
varion::db::Connection OpenDatabase(const std::wstring& path) {
  DeleteFileW(path.c_str());
  varion::db::Connection db = varion::db::Connection::Open(varion::db::SqliteOdbcConnectionString(path));
  db.Execute("CREATE TABLE oddzialy (od_Id INTEGER PRIMARY KEY, od_Nazwa VARCHAR(60) NOT NULL)");
  varion::db::Statement insert = db.Prepare("INSERT INTO oddzialy (od_Id, od_Nazwa) VALUES (?, ?)");
  for (auto [id, text] : {std::pair{10, "Centrala"}, {20, "Oddział Kraków"}, {30, "Oddział Gdańsk"}}) {
    insert.ClearBindings();
    insert.Bind(1, varion::Variant(std::int32_t{id})).Bind(2, varion::Variant(std::string(text))).Execute();
  }
  return db;
}

// A report over contractors: names beginning with the saved name, a limit of at least the saved
// one, the saved branch. Each value goes into the condition as the parameter's type demands.
std::string ReportWhere(const std::string& name, varion::Amount limit, long branch) {
  using namespace ZestParams;
  CParamsHtmlCtrl report;
  CArrZestParams& p = report.GetParams();
  p.Add(ZestParamsString().SetDbField("kh_Nazwa").SetLabel("Nazwa").SetValue(name).SetValue2(0x100).SetEmpty(false));
  p.Add(ZestParamsCurrency().SetDbField("kh_Limit").SetLabel("Limit").SetValue(limit).SetValue3(0x10).SetEmpty(false));
  p.Add(ZestParamsInstynkt().SetDbField("kh_OddzialId").SetLabel("Oddział").SetValue(std::int32_t(branch))
            .SetEmpty(false));
  return report.GetWhereString();
}

void Type(HWND dialog, int id, const wchar_t* text) { SetDlgItemTextW(dialog, id, text); }

}  // namespace

int main() {
  // Once, before the first dialog: registers the library's window classes ("vel_curredit" and
  // the rest) and hooks this thread, so template controls get their objects as they are made.
  CHookSupp::InitVXAXVelControls(nullptr);
  CHookSupp::InstallUIHook();
  // Boxes are answered at once: nobody is there to press a button.
  varion::SetFrameworkMessageBox([](HWND, const std::string& text, const std::string&, UINT) {
    Print("okno komunikatu: " + text);
    return IDOK;
  });

  wchar_t temp[MAX_PATH];
  GetTempPathW(MAX_PATH, temp);
  const std::wstring databasePath = std::wstring(temp) + L"varion-host-example.db";
  varion::db::Connection db = OpenDatabase(databasePath);
  ContractorDialog dialog(db);  // a copy of the handle: the same connection
  if (!dialog.Create(nullptr)) {
    std::printf("the dialog did not open (GetLastError %lu)\n", GetLastError());
    return 1;
  }
  HWND h = dialog.m_hWnd;

  // With mistakes: every one is collected, none stops the others. (The amount and date fields
  // refuse what is no amount or day as it is typed, so they keep a valid value.)
  Type(h, IDC_HOST_NAME, L"");
  Type(h, IDC_HOST_LIMIT, L"du\u017co");
  Type(h, IDC_HOST_NIP, L"5260250275");
  if (dialog.HandleApply()) Print("zapisano mimo błędów");
  for (const auto& error : *dialog.GetErrorsArray()) Print("błąd: " + error.message);

  // Corrected.
  Type(h, IDC_HOST_NAME, L"Hurtownia \u0141\u00f3d\u017a");
  Type(h, IDC_HOST_LIMIT, L"2 500,75");
  Type(h, IDC_HOST_SINCE, L"2024-03-01");
  Type(h, IDC_HOST_NIP, L"5260250274");
  SendDlgItemMessageW(h, IDC_HOST_BRANCH, CB_SETCURSEL, 2, 0);  // the third branch of the dictionary
  if (!dialog.HandleApply()) Print("nie zapisano");
  char saved[160];
  std::snprintf(saved, sizeof saved, "limit=%lld.%04lld; od=%04d-%02d-%02d; NIP=%s; oddział=%ld",
                static_cast<long long>(dialog.limit.Raw() / 10000), static_cast<long long>(dialog.limit.Raw() % 10000),
                dialog.since.GetYear(), dialog.since.GetMonth(), dialog.since.GetDay(), dialog.nip.c_str(),
                dialog.branch);
  Print("zapisano: nazwa=" + dialog.name + "; " + saved);
  Print("słownie: " + KwotaSlownie(dialog.limit));
  Print("warunek zestawienia: " + ReportWhere(dialog.name, dialog.limit, dialog.branch));
  DestroyWindow(h);
  db.Close();
  DeleteFileW(databasePath.c_str());
  return 0;
}
