// Timings of the combo fillers on Windows (run under Wine): a combo box filled with 10 000 rows of
// a dictionary on SQLite through ODBC by CB_Fill, against the loop a host would write by hand
// (raw ODBC: execute, fetch, get the two columns, CB_ADDSTRING and CB_SETITEMDATA) in the same
// run; and one fill of 100 000 rows. Each figure is the median of several turns.
#include <windows.h>
#include <sql.h>
#include <sqlext.h>

#include <algorithm>
#include <cstdio>
#include <string>
#include <vector>

#include "bench/win/bench_clock_win.h"
#include "base/text.h"
#include "db/connection.h"
#include "db/driver_path_win.h"
#include "framework/data_exchange.h"
#include "framework/fillers_win.h"

namespace {

using varion::bench::Median;
using varion::bench::Now;

void MakeTable(const varion::db::Connection& c, const char* table, int rows) {
  c.Execute(std::string("CREATE TABLE ") + table + " (mod_Id INTEGER PRIMARY KEY, mod_Nazwa VARCHAR(100))");
  c.BeginTrans();
  varion::db::Statement insert = c.Prepare(std::string("INSERT INTO ") + table + " (mod_Nazwa) VALUES (?)");
  for (int i = 1; i <= rows; ++i) insert.Bind(1, varion::Variant("Model żółty nr " + std::to_string(i))).Execute();
  c.CommitTrans();
}

// The hand-written loop: ODBC's wide API, a fetch per row, CB_ADDSTRING and CB_SETITEMDATA.
bool RawFill(const std::wstring& connection, HWND combo, const wchar_t* sql) {
  SQLHENV env = nullptr;
  SQLHDBC dbc = nullptr;
  SQLHSTMT stmt = nullptr;
  bool ok = false;
  SQLAllocHandle(SQL_HANDLE_ENV, SQL_NULL_HANDLE, &env);
  SQLSetEnvAttr(env, SQL_ATTR_ODBC_VERSION, reinterpret_cast<SQLPOINTER>(SQL_OV_ODBC3), 0);
  SQLAllocHandle(SQL_HANDLE_DBC, env, &dbc);
  std::wstring cs = connection;
  if (SQL_SUCCEEDED(SQLDriverConnectW(dbc, nullptr, reinterpret_cast<SQLWCHAR*>(cs.data()), SQL_NTS, nullptr, 0,
                                      nullptr, SQL_DRIVER_NOPROMPT))) {
    SQLAllocHandle(SQL_HANDLE_STMT, dbc, &stmt);
    std::wstring text = sql;
    if (SQL_SUCCEEDED(SQLExecDirectW(stmt, reinterpret_cast<SQLWCHAR*>(text.data()), SQL_NTS))) {
      SendMessageW(combo, CB_RESETCONTENT, 0, 0);
      SQLWCHAR name[256];
      SQLINTEGER id = 0;
      SQLLEN len = 0, idLen = 0;
      while (SQL_SUCCEEDED(SQLFetch(stmt))) {
        SQLGetData(stmt, 1, SQL_C_SLONG, &id, 0, &idLen);
        SQLGetData(stmt, 2, SQL_C_WCHAR, name, sizeof name, &len);
        const LRESULT at = SendMessageW(combo, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(name));
        SendMessageW(combo, CB_SETITEMDATA, static_cast<WPARAM>(at), id);
      }
      ok = true;
    }
    SQLFreeHandle(SQL_HANDLE_STMT, stmt);
    SQLDisconnect(dbc);
  }
  SQLFreeHandle(SQL_HANDLE_DBC, dbc);
  SQLFreeHandle(SQL_HANDLE_ENV, env);
  return ok;
}

}  // namespace

int main() {
  wchar_t folder[MAX_PATH];
  GetTempPathW(MAX_PATH, folder);
  const std::wstring path = std::wstring(folder) + L"varion_fillers_bench.db";
  DeleteFileW(path.c_str());
  const std::string cs = varion::db::SqliteOdbcConnectionString(path);
  varion::db::Connection c = varion::db::Connection::Open(cs);
  MakeTable(c, "sl_Model", 10000);
  MakeTable(c, "sl_ModelDuzy", 100000);

  HWND parent = CreateWindowExW(0, L"STATIC", L"", WS_POPUP, 0, 0, 400, 300, nullptr, nullptr, nullptr, nullptr);
  constexpr int kCombo = 100;
  HWND combo = CreateWindowExW(0, L"COMBOBOX", L"", WS_CHILD | CBS_DROPDOWNLIST | WS_VSCROLL, 0, 0, 200, 200, parent,
                               reinterpret_cast<HMENU>(static_cast<INT_PTR>(kCombo)), nullptr, nullptr);
  CFlgDataExchange dx(nullptr, parent, "bench");
  const std::wstring wideCs = varion::text::Cp1250ToWide(cs);

  // A new connection per raw turn, as the filler is given one already open: the raw loop's
  // connect is taken out by timing it alone.
  std::vector<double> filler, raw, ratios;
  constexpr int kTurns = 7;
  for (int turn = 0; turn < kTurns; ++turn) {
    double t0 = Now();
    if (!CB_Fill(dx, kCombo, c, "sl_Model", "mod_Nazwa", "mod_Id")) return 1;
    const double f = Now() - t0;
    t0 = Now();
    if (!RawFill(wideCs, combo, L"SELECT * FROM sl_Model")) return 1;
    const double r = Now() - t0;
    t0 = Now();
    RawFill(wideCs, combo, L"SELECT * FROM sl_Model WHERE 1 = 0");
    const double connectOnly = Now() - t0;
    filler.push_back(f);
    raw.push_back(r - connectOnly);
    ratios.push_back(f / (r - connectOnly));
  }
  std::printf("filling a combo with 10 000 rows from SQLite through ODBC, %d turns (medians)\n", kTurns);
  std::printf("  CB_Fill (table name, template %%1!ls!)  %8.1f ms\n", Median(filler) * 1e3);
  std::printf("  raw ODBC loop + CB_ADDSTRING           %8.1f ms\n", Median(raw) * 1e3);
  std::printf("  ratio                                  %8.2f x\n", Median(ratios));

  const double t0 = Now();
  const bool big = CB_Fill(dx, kCombo, c, "sl_ModelDuzy", "mod_Nazwa", "mod_Id");
  std::printf("  CB_Fill of 100 000 rows                %8.1f ms (%s, %ld items)\n", (Now() - t0) * 1e3,
              big ? "filled" : "FAILED", static_cast<long>(SendMessageW(combo, CB_GETCOUNT, 0, 0)));
  c.Close();
  DestroyWindow(parent);
  DeleteFileW(path.c_str());
  return big ? 0 : 1;
}
