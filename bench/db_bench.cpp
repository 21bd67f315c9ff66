// The recordset against a hand-written loop over the same backend's raw API, in the same run:
// reading 100 000 rows of (integer, text, amount), and adding 10 000 rows in one transaction
// through the updatable recordset against a prepared raw INSERT. Both sides deliver the same
// values: code page 1250 text and amounts.
#include <benchmark/benchmark.h>
#include <sql.h>
#include <sqlext.h>
#include <sqlite3.h>

#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>

#include "base/text.h"
#include "db/connection.h"

namespace {

using namespace varion;

constexpr int kRows = 100000;
constexpr int kInserts = 10000;

std::string Folder() {
  static const std::string dir = [] {
    auto p = std::filesystem::temp_directory_path() / ("varion-bench-" + std::to_string(::getpid()));
    std::filesystem::create_directories(p);
    std::atexit([] {
      std::error_code ec;
      std::filesystem::remove_all(std::filesystem::temp_directory_path() / ("varion-bench-" + std::to_string(::getpid())), ec);
    });
    return p.string();
  }();
  return dir;
}

std::string DbFile() { return Folder() + "/bench.db"; }

// 100 000 rows of (integer, text with Polish letters, amount), made once.
void EnsureRows() {
  static bool done = [] {
    db::Connection c = db::Connection::Open("Provider=SQLite;Data Source=" + DbFile());
    c.Execute("CREATE TABLE rows (id INT, name TEXT, amount NUMERIC)");
    c.Execute("CREATE TABLE added (id INT, name TEXT, amount NUMERIC)");
    c.BeginTrans();
    db::Statement insert = c.Prepare("INSERT INTO rows VALUES (?, ?, ?)");
    for (int i = 0; i < kRows; ++i)
      insert.Bind(1, i).Bind(2, "Kontrahent żółty nr " + std::to_string(i)).Bind(3, Amount::FromRaw(i * 12345LL)).Execute();
    c.CommitTrans();
    return true;
  }();
  (void)done;
}

std::string SqliteString() { return "Provider=SQLite;Data Source=" + DbFile(); }
std::string OdbcString() { return "Driver={SQLite3};Database=" + DbFile(); }

struct Totals {
  std::int64_t ids = 0;
  std::size_t chars = 0;
  std::int64_t raw = 0;
};

void ReadRecordset(benchmark::State& state, const std::string& connection) {
  EnsureRows();
  db::Connection c = db::Connection::Open(connection);
  for (auto _ : state) {
    Totals t;
    db::Recordset rs = c.OpenRS("SELECT id, name, amount FROM rows");
    for (; !rs.IsEOF(); rs.MoveNext()) {
      t.ids += *rs.GetCollect(0).GetInt32();
      t.chars += rs.GetCollect(1).GetText()->size();
      Amount a;
      rs.GetCollect(2).ToAmount(a);
      t.raw += a.Raw();
    }
    benchmark::DoNotOptimize(t);
    if (t.ids != std::int64_t(kRows) * (kRows - 1) / 2) state.SkipWithError("wrong sum");
  }
  state.SetItemsProcessed(state.iterations() * kRows);
}

void BM_Read_Recordset_Sqlite(benchmark::State& state) { ReadRecordset(state, SqliteString()); }
void BM_Read_Recordset_OdbcSqlite(benchmark::State& state) { ReadRecordset(state, OdbcString()); }

void BM_Read_Raw_Sqlite(benchmark::State& state) {
  EnsureRows();
  sqlite3* db = nullptr;
  sqlite3_open(DbFile().c_str(), &db);
  for (auto _ : state) {
    Totals t;
    sqlite3_stmt* st = nullptr;
    sqlite3_prepare_v2(db, "SELECT id, name, amount FROM rows", -1, &st, nullptr);
    while (sqlite3_step(st) == SQLITE_ROW) {
      t.ids += sqlite3_column_int(st, 0);
      const char* p = reinterpret_cast<const char*>(sqlite3_column_text(st, 1));
      std::string name = text::Utf8ToCp1250(std::string_view(p, static_cast<std::size_t>(sqlite3_column_bytes(st, 1))));
      t.chars += name.size();
      t.raw += Amount::FromDouble(sqlite3_column_double(st, 2)).Raw();
    }
    sqlite3_finalize(st);
    benchmark::DoNotOptimize(t);
  }
  sqlite3_close(db);
  state.SetItemsProcessed(state.iterations() * kRows);
}

struct OdbcRaw {
  SQLHENV env = SQL_NULL_HENV;
  SQLHDBC dbc = SQL_NULL_HDBC;
  OdbcRaw() {
    SQLAllocHandle(SQL_HANDLE_ENV, SQL_NULL_HANDLE, &env);
    SQLSetEnvAttr(env, SQL_ATTR_ODBC_VERSION, reinterpret_cast<SQLPOINTER>(SQL_OV_ODBC3), 0);
    SQLAllocHandle(SQL_HANDLE_DBC, env, &dbc);
    std::u16string cs = text::Cp1250ToUtf16(OdbcString());
    SQLDriverConnectW(dbc, nullptr, reinterpret_cast<SQLWCHAR*>(cs.data()), SQL_NTS, nullptr, 0, nullptr,
                      SQL_DRIVER_NOPROMPT);
  }
  ~OdbcRaw() {
    SQLDisconnect(dbc);
    SQLFreeHandle(SQL_HANDLE_DBC, dbc);
    SQLFreeHandle(SQL_HANDLE_ENV, env);
  }
};

void BM_Read_Raw_OdbcSqlite(benchmark::State& state) {
  EnsureRows();
  OdbcRaw odbc;
  std::u16string sql = u"SELECT id, name, amount FROM rows";
  for (auto _ : state) {
    Totals t;
    SQLHSTMT st = SQL_NULL_HSTMT;
    SQLAllocHandle(SQL_HANDLE_STMT, odbc.dbc, &st);
    SQLExecDirectW(st, reinterpret_cast<SQLWCHAR*>(sql.data()), SQL_NTS);
    while (SQLFetch(st) == SQL_SUCCESS) {
      SQLINTEGER id = 0;
      SQLLEN ind = 0;
      SQLGetData(st, 1, SQL_C_SLONG, &id, 0, &ind);
      char16_t buf[256];
      SQLGetData(st, 2, SQL_C_WCHAR, buf, sizeof buf, &ind);
      std::string name = text::Utf16ToCp1250(std::u16string_view(buf, static_cast<std::size_t>(ind) / 2));
      double amount = 0;
      SQLGetData(st, 3, SQL_C_DOUBLE, &amount, 0, &ind);
      t.ids += id;
      t.chars += name.size();
      t.raw += Amount::FromDouble(amount).Raw();
    }
    SQLFreeHandle(SQL_HANDLE_STMT, st);
    benchmark::DoNotOptimize(t);
  }
  state.SetItemsProcessed(state.iterations() * kRows);
}

void InsertRecordset(benchmark::State& state, const std::string& connection) {
  EnsureRows();
  db::Connection c = db::Connection::Open(connection);
  for (auto _ : state) {
    c.BeginTrans();
    db::UpdatableRecordset rs = c.OpenForUpdate("SELECT * FROM added WHERE 1 = 0");
    for (int i = 0; i < kInserts; ++i) {
      rs.AddNew();
      rs.PutCollect("name", "Wpis dziennika łódź nr " + std::to_string(i));
      rs.PutCollect("id", i);
      rs.PutCollect("amount", Amount::FromRaw(i * 101LL));
      rs.Update();
    }
    c.CommitTrans();
    state.PauseTiming();
    c.Execute("DELETE FROM added");
    state.ResumeTiming();
  }
  state.SetItemsProcessed(state.iterations() * kInserts);
}

void BM_Insert_Recordset_Sqlite(benchmark::State& state) { InsertRecordset(state, SqliteString()); }
void BM_Insert_Recordset_OdbcSqlite(benchmark::State& state) { InsertRecordset(state, OdbcString()); }

void BM_Insert_Raw_Sqlite(benchmark::State& state) {
  EnsureRows();
  sqlite3* db = nullptr;
  sqlite3_open(DbFile().c_str(), &db);
  for (auto _ : state) {
    sqlite3_exec(db, "BEGIN", nullptr, nullptr, nullptr);
    sqlite3_stmt* st = nullptr;
    sqlite3_prepare_v2(db, "INSERT INTO added (id, name, amount) VALUES (?, ?, ?)", -1, &st, nullptr);
    for (int i = 0; i < kInserts; ++i) {
      std::string name = text::Cp1250ToUtf8("Wpis dziennika łódź nr " + std::to_string(i));
      sqlite3_bind_int(st, 1, i);
      sqlite3_bind_text(st, 2, name.data(), static_cast<int>(name.size()), SQLITE_TRANSIENT);
      sqlite3_bind_double(st, 3, Amount::FromRaw(i * 101LL).ToDouble());
      sqlite3_step(st);
      sqlite3_reset(st);
    }
    sqlite3_finalize(st);
    sqlite3_exec(db, "COMMIT", nullptr, nullptr, nullptr);
    state.PauseTiming();
    sqlite3_exec(db, "DELETE FROM added", nullptr, nullptr, nullptr);
    state.ResumeTiming();
  }
  sqlite3_close(db);
  state.SetItemsProcessed(state.iterations() * kInserts);
}

void BM_Insert_Raw_OdbcSqlite(benchmark::State& state) {
  EnsureRows();
  OdbcRaw odbc;
  std::u16string sql = u"INSERT INTO added (id, name, amount) VALUES (?, ?, ?)";
  for (auto _ : state) {
    SQLSetConnectAttrW(odbc.dbc, SQL_ATTR_AUTOCOMMIT, reinterpret_cast<SQLPOINTER>(SQL_AUTOCOMMIT_OFF), 0);
    SQLHSTMT st = SQL_NULL_HSTMT;
    SQLAllocHandle(SQL_HANDLE_STMT, odbc.dbc, &st);
    SQLPrepareW(st, reinterpret_cast<SQLWCHAR*>(sql.data()), SQL_NTS);
    SQLINTEGER id = 0;
    std::u16string name;
    name.reserve(64);
    double amount = 0;
    SQLLEN idInd = 0, nameInd = 0, amountInd = 0;
    for (int i = 0; i < kInserts; ++i) {
      id = i;
      name = text::Cp1250ToUtf16("Wpis dziennika łódź nr " + std::to_string(i));
      nameInd = static_cast<SQLLEN>(name.size() * 2);
      amount = Amount::FromRaw(i * 101LL).ToDouble();
      SQLBindParameter(st, 1, SQL_PARAM_INPUT, SQL_C_SLONG, SQL_INTEGER, 10, 0, &id, 0, &idInd);
      SQLBindParameter(st, 2, SQL_PARAM_INPUT, SQL_C_WCHAR, SQL_WVARCHAR, name.size(), 0, name.data(), nameInd,
                       &nameInd);
      SQLBindParameter(st, 3, SQL_PARAM_INPUT, SQL_C_DOUBLE, SQL_DOUBLE, 15, 0, &amount, 0, &amountInd);
      SQLExecute(st);
    }
    SQLFreeHandle(SQL_HANDLE_STMT, st);
    SQLEndTran(SQL_HANDLE_DBC, odbc.dbc, SQL_COMMIT);
    SQLSetConnectAttrW(odbc.dbc, SQL_ATTR_AUTOCOMMIT, reinterpret_cast<SQLPOINTER>(SQL_AUTOCOMMIT_ON), 0);
    state.PauseTiming();
    db::Connection::Open(OdbcString()).Execute("DELETE FROM added");
    state.ResumeTiming();
  }
  state.SetItemsProcessed(state.iterations() * kInserts);
}

BENCHMARK(BM_Read_Raw_Sqlite)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Read_Recordset_Sqlite)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Read_Raw_OdbcSqlite)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Read_Recordset_OdbcSqlite)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Insert_Raw_Sqlite)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Insert_Recordset_Sqlite)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Insert_Raw_OdbcSqlite)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Insert_Recordset_OdbcSqlite)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
