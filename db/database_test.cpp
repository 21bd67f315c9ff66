// One suite over every database backend: SQLite directly, ODBC to SQLite, ODBC to PostgreSQL;
// under Wine (database_wintest.cpp) the same suite runs on ODBC to SQLite.
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <random>

#include "base/sql_literal.h"
#include "db/connection.h"
#include "db/rt_instance.h"
#include "db/schema/schema.h"
#include "tests/db_backends.h"

namespace varion::db {
namespace {

using varion::testing::TestDatabase;

class DatabaseTest : public ::testing::TestWithParam<std::string> {
 protected:
  DatabaseTest() : m_db(GetParam()), m_conn(m_db.Connect()) {}

  // A table with one column of each kind the library stores.
  void CreateValueTable() {
    const SqlDialect& d = m_conn.Dialect();
    m_conn.Execute(std::string("CREATE TABLE rt (k INT NOT NULL, i INT, s ") + d.TextType(100000) + ", a " +
                   d.AmountType() + ", d " + d.DateTimeType() + ", b " + d.BlobType() + ")");
  }

  TestDatabase m_db;
  Connection m_conn;
};

std::string PolishSample() { return "Zażółć gęślą jaźń ZAŻÓŁĆ GĘŚLĄ JAŹŃ"; }

// Runs the call and checks that it raises ComError with the code.
void ExpectComError(const std::function<void()>& call, Status32 code) {
  try {
    call();
    ADD_FAILURE() << "no error";
  } catch (const ComError& e) {
    EXPECT_EQ(e.Code(), code) << e.Message();
  }
}

Variant::Bytes RandomBytes(std::size_t n, unsigned seed) {
  std::mt19937 gen(seed);
  Variant::Bytes b(n);
  for (auto& x : b) x = static_cast<std::uint8_t>(gen());
  return b;
}

TEST_P(DatabaseTest, ReportsServerAndDialect) {
  struct Case {
    const char* backend;
    DialectKind kind;
    const char* server;
  };
  const Case cases[] = {{"sqlite", DialectKind::Sqlite, "SQLite"},
                        {"odbc-sqlite", DialectKind::Sqlite, "SQLite"},
                        {"odbc-postgres", DialectKind::Postgres, "PostgreSQL"}};
  for (const Case& c : cases) {
    if (GetParam() != c.backend) continue;
    EXPECT_EQ(m_conn.Dialect().Kind(), c.kind);
    EXPECT_EQ(m_conn.ServerName(), c.server);
    EXPECT_FALSE(m_conn.ServerVersion().empty());
  }
}

TEST_P(DatabaseTest, ExecuteGivesRowsAffected) {
  CreateValueTable();
  EXPECT_EQ(m_conn.Execute("INSERT INTO rt (k, i) VALUES (1, 10)"), 1);
  EXPECT_EQ(m_conn.Execute("INSERT INTO rt (k, i) VALUES (2, 20)"), 1);
  EXPECT_EQ(m_conn.Execute("INSERT INTO rt (k, i) VALUES (3, 30)"), 1);
  EXPECT_EQ(m_conn.Execute("UPDATE rt SET i = i + 1 WHERE k >= 2"), 2);
  EXPECT_EQ(m_conn.Execute("DELETE FROM rt WHERE k = 99"), 0);
  EXPECT_EQ(m_conn.Execute("DELETE FROM rt"), 3);
}

// Every value goes in through bound parameters and through the updatable recordset, and comes
// back exactly, with the type its column has.
TEST_P(DatabaseTest, ValuesRoundTripExactly) {
  CreateValueTable();
  struct Case {
    const char* what;
    const char* column;
    Variant value;
  };
  std::string longText;
  for (int i = 0; i < 5000; ++i) longText += "ąę'\"ść–" + std::to_string(i);
  const Case cases[] = {
      {"empty text", "s", Variant(std::string())},
      {"apostrophes", "s", Variant("O'Brien'' ' ; DROP TABLE rt; --")},
      {"Polish letters", "s", Variant(PolishSample())},
      {"symbols of code page 1250", "s", Variant("€ „cytat” – ‰ § ©")},
      {"long text", "s", Variant(longText)},
      {"null text", "s", Variant::MakeNull()},
      {"zero", "i", Variant(0)},
      {"int32 max", "i", Variant(INT32_MAX)},
      {"int32 min", "i", Variant(INT32_MIN)},
      {"null integer", "i", Variant::MakeNull()},
      {"amount with four decimals", "a", Variant(Amount::FromRaw(123456))},
      {"negative ten-thousandth", "a", Variant(Amount::FromRaw(-1))},
      {"whole amount", "a", Variant(Amount::FromUnits(1000000))},
      // SQLite keeps 15 significant digits of a non-integer number.
      {"large amount", "a", Variant(Amount::FromRaw(999999999999999))},
      {"null amount", "a", Variant::MakeNull()},
      {"leap day with time", "d", Variant(DateTime(2024, 2, 29, 13, 45, 10))},
      {"midnight", "d", Variant(DateTime(1900, 1, 1))},
      {"last second", "d", Variant(DateTime(9999, 12, 31, 23, 59, 59))},
      {"null date", "d", Variant::MakeNull()},
      {"empty blob", "b", Variant(Variant::Bytes{})},
      {"zero byte", "b", Variant(Variant::Bytes{0})},
      {"every byte value", "b", Variant(RandomBytes(0, 0))},
      {"random blob", "b", Variant(RandomBytes(100000, 7))},
      {"null blob", "b", Variant::MakeNull()},
  };
  Variant::Bytes all(256);
  for (int i = 0; i < 256; ++i) all[static_cast<std::size_t>(i)] = static_cast<std::uint8_t>(i);

  Statement insert = m_conn.Prepare("INSERT INTO rt (k, i, s, a, d, b) VALUES (?, ?, ?, ?, ?, ?)");
  UpdatableRecordset added = m_conn.OpenForUpdate("SELECT * FROM rt WHERE 1 = 0");
  const char* columns[] = {"i", "s", "a", "d", "b"};
  int key = 0;
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    Variant value = std::string(c.what) == "every byte value" ? Variant(all) : c.value;
    // Through parameters: the other columns are null, sent without a type hint.
    insert.Bind(1, ++key);
    for (int p = 0; p < 5; ++p) insert.Bind(p + 2, std::string(columns[p]) == c.column ? value : Variant::MakeNull());
    EXPECT_EQ(insert.Execute(), 1);
    // Through the updatable recordset, setting the key last.
    added.AddNew();
    added.PutCollect(c.column, value);
    added.PutCollect("k", ++key);
    added.Update();

    Statement select = m_conn.Prepare(std::string("SELECT ") + c.column + " FROM rt WHERE k = ? OR k = ? ORDER BY k");
    Recordset rs = select.Bind(1, key - 1).Bind(2, key).Open();
    ASSERT_EQ(rs.GetRecordCount(), 2u);
    for (; !rs.IsEOF(); rs.MoveNext()) {
      const Variant& got = rs.GetCollect(0);
      EXPECT_EQ(got.GetType(), value.GetType());
      EXPECT_TRUE(got == value) << "got " << got.AsText("<no text>");
    }
  }
}

// Text the server holds beyond code page 1250 comes back with '?' for each character that the
// code page lacks; Polish letters made by the server itself come back exactly.
TEST_P(DatabaseTest, ServerTextComesBackInCodePage1250) {
  const bool postgres = m_db.IsPostgres();
  const std::string chinese = postgres ? "chr(20013)" : "char(20013)";
  const std::string polish = postgres ? "chr(322) || chr(243) || chr(380)" : "char(322, 243, 380)";
  Recordset rs = m_conn.OpenRS("SELECT " + chinese + " AS c, " + polish + " AS p, 'a' || " + chinese + " || 'b' AS m");
  EXPECT_EQ(rs.GetCollect("c"), Variant("?"));
  EXPECT_EQ(rs.GetCollect("p"), Variant("łóż"));
  EXPECT_EQ(rs.GetCollect("m"), Variant("a?b"));
}

TEST_P(DatabaseTest, ParametersAreCountedAndChecked) {
  CreateValueTable();
  Statement st = m_conn.Prepare("SELECT k FROM rt WHERE k = ? OR i = ?");
  EXPECT_EQ(st.ParameterCount(), 2);
  ExpectComError([&] { st.Bind(0, 1); }, kInvalidArg);
  ExpectComError([&] { st.Bind(3, 1); }, kInvalidArg);
  m_conn.Execute("INSERT INTO rt (k, i) VALUES (1, 7)");
  m_conn.Execute("INSERT INTO rt (k, i) VALUES (2, NULL)");
  // A bound value stays until replaced; ClearBindings makes every parameter NULL again.
  st.Bind(1, 99).Bind(2, 7);
  EXPECT_EQ(st.Open().GetRecordCount(), 1u);
  EXPECT_EQ(st.Bind(1, 2).Open().GetRecordCount(), 2u);
  EXPECT_EQ(st.ClearBindings().Open().GetRecordCount(), 0u);
}

TEST_P(DatabaseTest, RolledBackRowsOfTheUpdatableRecordsetAreGone) {
  CreateValueTable();
  UpdatableRecordset rs = m_conn.OpenForUpdate("SELECT k, s FROM rt WHERE 1 = 0");
  m_conn.BeginTrans();
  for (int k = 0; k < 10; ++k) {
    rs.AddNew();
    rs.PutCollect("k", k);
    rs.PutCollect("s", "do wycofania");
    rs.Update();
  }
  EXPECT_EQ(m_conn.OpenRS("SELECT COUNT(*) FROM rt").GetCollect(0).AsInt32(), 10);
  m_conn.RollbackTrans();
  EXPECT_EQ(m_conn.OpenRS("SELECT COUNT(*) FROM rt").GetCollect(0).AsInt32(), 0);
  // The kept INSERT still works after the rollback.
  rs.AddNew();
  rs.PutCollect("k", 1);
  rs.Update();
  EXPECT_EQ(rs.GetCollect("k"), Variant(1));
  EXPECT_EQ(m_conn.OpenRS("SELECT COUNT(*) FROM rt").GetCollect(0).AsInt32(), 1);
}

TEST_P(DatabaseTest, SixteenMegabyteBlobRoundTrips) {
  CreateValueTable();
  const Variant::Bytes big = RandomBytes(16u << 20, 16);
  Statement insert = m_conn.Prepare("INSERT INTO rt (k, b) VALUES (1, ?)");
  insert.Bind(1, big);
  EXPECT_EQ(insert.Execute(), 1);
  Recordset rs = m_conn.OpenRS("SELECT b FROM rt WHERE k = 1");
  ASSERT_FALSE(rs.IsEOF());
  EXPECT_TRUE(rs.GetBytes("b") == big);
  auto stream = rs.GetStream("B");
  EXPECT_EQ(stream->Size(), big.size());
  std::uint8_t head[4];
  std::size_t read = 0;
  ASSERT_EQ(stream->Read(head, sizeof head, &read), kOk);
  ASSERT_EQ(read, sizeof head);
  EXPECT_TRUE(std::equal(head, head + 4, big.begin()));
}

TEST_P(DatabaseTest, FieldsByNameAndIndex) {
  CreateValueTable();
  m_conn.Execute("INSERT INTO rt (k, i, s) VALUES (1, 42, 'x')");
  Recordset rs = m_conn.OpenRS("SELECT k, i AS Liczba, s FROM rt");
  ASSERT_EQ(rs.GetFieldCount(), 3);
  EXPECT_TRUE(SameName(rs.GetFieldName(1), "Liczba"));
  EXPECT_EQ(rs.FindField("LICZBA"), 1);
  EXPECT_EQ(rs.GetCollect("liczba"), Variant(42));
  EXPECT_EQ(rs.GetCollect(2), Variant("x"));

  struct Case {
    const char* what;
    std::function<void()> call;
  };
  const Case missing[] = {
      {"name", [&] { rs.GetCollect("nie_ma"); }},
      {"index past the end", [&] { rs.GetCollect(3); }},
      {"negative index", [&] { rs.GetCollect(-1); }},
      {"bytes", [&] { rs.GetBytes("nie_ma"); }},
      {"stream", [&] { rs.GetStream("nie_ma"); }},
  };
  for (const Case& c : missing) {
    SCOPED_TRACE(c.what);
    ExpectComError(c.call, kPointer);
  }
  Variant v;
  EXPECT_EQ(rs.GetFieldValue("nie_ma", v), kPointer);
  EXPECT_EQ(rs.GetFieldValue("k", v), kOk);
  EXPECT_EQ(v, Variant(1));
}

TEST_P(DatabaseTest, EndOfFile) {
  CreateValueTable();
  Recordset empty = m_conn.OpenRS("SELECT * FROM rt");
  EXPECT_TRUE(empty.IsEOF());
  EXPECT_EQ(empty.GetFieldCount(), 6);
  EXPECT_THROW(empty.MoveNext(), ComError);
  Variant v;
  EXPECT_EQ(empty.GetFieldValue("k", v), kDbEof);

  m_conn.Execute("INSERT INTO rt (k) VALUES (1)");
  m_conn.Execute("INSERT INTO rt (k) VALUES (2)");
  Recordset two = m_conn.OpenRS("SELECT k FROM rt ORDER BY k");
  std::vector<int> seen;
  for (; !two.IsEOF(); two.MoveNext()) seen.push_back(two.GetCollect(0).AsInt32());
  EXPECT_EQ(seen, (std::vector<int>{1, 2}));
  ExpectComError([&] { two.GetCollect("k"); }, kDbEof);
  two.MoveFirst();
  EXPECT_EQ(two.GetCollect("k"), Variant(1));
}

TEST_P(DatabaseTest, RefusedStatementCarriesServerMessageAndState) {
  CreateValueTable();
  m_conn.Execute("CREATE TABLE uq (k INT PRIMARY KEY)");
  m_conn.Execute("INSERT INTO uq VALUES (1)");
  const bool postgres = GetParam() == "odbc-postgres";
  const bool sqliteOdbc = GetParam() == "odbc-sqlite";
  struct Case {
    const char* sql;
    const char* messagePart;  // of the server's own text
    const char* state;        // expected SQLSTATE
  };
  const Case cases[] = {
      {"SELEC 1", "SELEC", postgres ? "42601" : sqliteOdbc ? "HY000" : "42000"},
      {"SELECT * FROM nie_ma_tabeli", "nie_ma_tabeli", postgres ? "42P01" : sqliteOdbc ? "HY000" : "42000"},
      {"INSERT INTO uq VALUES (1)", postgres ? "duplicate key" : "UNIQUE", postgres ? "23505" : sqliteOdbc ? "HY000" : "23000"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.sql);
    for (int path = 0; path < 3; ++path) {
      try {
        if (path == 0) m_conn.Execute(c.sql);
        if (path == 1) m_conn.OpenRS(c.sql);
        if (path == 2) m_conn.Prepare(c.sql).Execute();
        ADD_FAILURE() << "accepted";
      } catch (const ComError& e) {
        EXPECT_EQ(e.Code(), kDbError);
        EXPECT_NE(e.Message().find(c.messagePart), std::string::npos) << e.Message();
        EXPECT_EQ(e.SqlState(), c.state);
      }
    }
  }
  // The connection is still usable after refusals.
  EXPECT_EQ(m_conn.OpenRS("SELECT COUNT(*) FROM uq").GetCollect(0).AsInt32(), 1);
}

TEST_P(DatabaseTest, TransactionsCommitAndRollBack) {
  CreateValueTable();
  m_conn.BeginTrans();
  EXPECT_TRUE(m_conn.InTransaction());
  m_conn.Execute("INSERT INTO rt (k) VALUES (1)");
  m_conn.RollbackTrans();
  EXPECT_FALSE(m_conn.InTransaction());
  m_conn.BeginTrans();
  m_conn.Execute("INSERT INTO rt (k) VALUES (2)");
  // A second connection sees nothing before the commit.
  Connection other = m_db.Connect();
  if (GetParam() == "odbc-postgres") {
    EXPECT_EQ(other.OpenRS("SELECT COUNT(*) FROM rt").GetCollect(0).AsInt32(), 0);
  }
  m_conn.CommitTrans();
  Recordset rs = other.OpenRS("SELECT k FROM rt");
  ASSERT_EQ(rs.GetRecordCount(), 1u);
  EXPECT_EQ(rs.GetCollect(0).AsInt32(), 2);

  struct Case {
    const char* what;
    std::function<void()> call;
  };
  const Case misuse[] = {
      {"commit without begin", [&] { m_conn.CommitTrans(); }},
      {"rollback without begin", [&] { m_conn.RollbackTrans(); }},
      {"begin twice", [&] { m_conn.BeginTrans(); m_conn.BeginTrans(); }},
  };
  for (const Case& c : misuse) {
    SCOPED_TRACE(c.what);
    EXPECT_THROW(c.call(), ComError);
  }
  m_conn.RollbackTrans();
}

TEST_P(DatabaseTest, ClosedConnectionFailsCleanly) {
  CreateValueTable();
  Statement prepared = m_conn.Prepare("SELECT k FROM rt WHERE k = ?");
  Connection copy = m_conn;
  m_conn.Close();
  EXPECT_FALSE(copy.IsOpen());
  EXPECT_EQ(m_conn.OpenStatementCount(), 0u);
  struct Case {
    const char* what;
    std::function<void()> call;
  };
  const Case calls[] = {
      {"execute", [&] { copy.Execute("SELECT 1"); }},
      {"open", [&] { copy.OpenRS("SELECT 1"); }},
      {"prepare", [&] { copy.Prepare("SELECT 1"); }},
      {"begin", [&] { copy.BeginTrans(); }},
      {"prepared statement", [&] { prepared.Bind(1, 1).Open(); }},
      {"never opened", [&] { Connection().Execute("SELECT 1"); }},
  };
  for (const Case& c : calls) {
    SCOPED_TRACE(c.what);
    ExpectComError(c.call, kDbNotOpen);
  }
  m_conn.Close();  // closing twice is harmless
}

TEST_P(DatabaseTest, LostConnectionFailsCleanly) {
  if (!m_db.IsPostgres()) GTEST_SKIP() << "only a server connection can be lost";
  CreateValueTable();
  const int pid = m_conn.OpenRS("SELECT pg_backend_pid()").GetCollect(0).AsInt32();
  m_db.Admin().Execute("SELECT pg_terminate_backend(" + std::to_string(pid) + ")");
  for (int attempt = 0; attempt < 3; ++attempt) {
    SCOPED_TRACE(attempt);
    try {
      m_conn.Execute("INSERT INTO rt (k) VALUES (1)");
      ADD_FAILURE() << "a dead connection took a statement";
    } catch (const ComError& e) {
      EXPECT_TRUE(Failed(e.Code()));
      EXPECT_FALSE(e.Message().empty());
    }
  }
  m_conn.Close();
  // A new connection works.
  EXPECT_EQ(m_db.Connect().OpenRS("SELECT COUNT(*) FROM rt").GetCollect(0).AsInt32(), 0);
}

TEST_P(DatabaseTest, ManyStatementsLeaveNoHandle) {
  CreateValueTable();
  {
    Statement a = m_conn.Prepare("INSERT INTO rt (k, s) VALUES (?, ?)");
    Statement b = m_conn.Prepare("SELECT s FROM rt WHERE k = ?");
    EXPECT_EQ(m_conn.OpenStatementCount(), 2u);
  }
  EXPECT_EQ(m_conn.OpenStatementCount(), 0u);
  const int rounds = GetParam() == "odbc-postgres" ? 1500 : 3000;
  m_conn.BeginTrans();
  for (int i = 0; i < rounds; ++i) {
    Statement insert = m_conn.Prepare("INSERT INTO rt (k, s) VALUES (?, ?)");
    insert.Bind(1, i).Bind(2, "wiersz " + std::to_string(i)).Execute();
    if (i % 3 == 0) {
      ASSERT_EQ(m_conn.OpenRS("SELECT k FROM rt WHERE k = " + std::to_string(i)).GetRecordCount(), 1u);
    }
    if (i % 100 == 0) {
      // Refused statements must free their handles too; PostgreSQL aborts the transaction.
      if (GetParam() != "odbc-postgres") {
        EXPECT_THROW(m_conn.Execute("SELECT * FROM nie_ma"), ComError);
      }
      // Drivers may defer preparing to the first execution.
      EXPECT_THROW(m_conn.Prepare("SELEC").Execute(), ComError);
    }
    m_conn.Execute("UPDATE rt SET i = " + std::to_string(i) + " WHERE k = " + std::to_string(i));
  }
  m_conn.CommitTrans();
  EXPECT_EQ(m_conn.OpenStatementCount(), 0u);
  EXPECT_EQ(m_conn.OpenRS("SELECT COUNT(*) FROM rt").GetCollect(0).AsInt32(), rounds);
}

TEST_P(DatabaseTest, UpdatableRecordsetAddsRows) {
  CreateValueTable();
  UpdatableRecordset rs = m_conn.OpenForUpdate("SELECT * FROM rt WHERE 1 = 0");
  EXPECT_TRUE(SameName(rs.TableName(), "rt"));
  EXPECT_EQ(rs.GetFieldCount(), 6);
  for (int k = 1; k <= 3; ++k) {
    rs.AddNew();
    if (k != 2) rs.PutCollect("S", "wiersz " + std::to_string(k));
    rs.PutCollect("a", "12,5");  // text converts to the field's type, as ADO does
    rs.PutCollect("k", k);
    rs.Update();
  }
  Recordset rows = m_conn.OpenRS("SELECT k, s, a FROM rt ORDER BY k");
  ASSERT_EQ(rows.GetRecordCount(), 3u);
  rows.MoveNext();
  EXPECT_TRUE(rows.GetCollect("s").IsNull());
  EXPECT_EQ(rows.GetCollect("a"), Variant(Amount::FromRaw(125000)));

  struct Case {
    const char* what;
    std::function<void()> call;
    Status32 code;
  };
  const Case refused[] = {
      {"missing field", [&] { rs.AddNew(); rs.PutCollect("nie_ma", 1); }, kPointer},
      {"text into a number", [&] { rs.AddNew(); rs.PutCollect("i", "abc"); }, kTypeMismatch},
      {"number out of range", [&] { rs.AddNew(); rs.PutCollect("i", std::int64_t(1) << 40); }, kOverflow},
      {"text into a blob", [&] { rs.AddNew(); rs.PutCollect("b", "abc"); }, kTypeMismatch},
      {"update without AddNew", [&] { rs.CancelUpdate(); rs.Update(); }, kDbEof},
  };
  for (const Case& c : refused) {
    SCOPED_TRACE(c.what);
    ExpectComError(c.call, c.code);
  }
  // A refused row leaves no trace and no statement.
  EXPECT_EQ(m_conn.OpenRS("SELECT COUNT(*) FROM rt").GetCollect(0).AsInt32(), 3);
}

TEST_P(DatabaseTest, UpdatableRecordsetNeedsOneTable) {
  CreateValueTable();
  m_conn.Execute("CREATE TABLE other (k INT)");
  for (const char* sql : {"SELECT * FROM rt, other", "SELECT * FROM rt JOIN other ON rt.k = other.k",
                          "SELECT * FROM (SELECT * FROM rt) x", "SELECT 1"}) {
    SCOPED_TRACE(sql);
    EXPECT_THROW(m_conn.OpenForUpdate(sql), ComError);
  }
}

TEST_P(DatabaseTest, SchemaIsCreatedOnceOnAnEmptyDatabase) {
  schema::CreateSchema(m_conn);
  for (const schema::TableDef& table : schema::Tables()) {
    SCOPED_TRACE(table.name);
    Recordset rs = m_conn.OpenRS(std::string("SELECT * FROM ") + table.name + " WHERE 1 = 0");
    ASSERT_EQ(rs.GetFieldCount(), static_cast<int>(table.columns.size()));
    for (std::size_t i = 0; i < table.columns.size(); ++i)
      EXPECT_TRUE(SameName(rs.GetFieldName(static_cast<int>(i)), table.columns[i].name));
  }
  // A second run fails on the first table and changes nothing.
  EXPECT_THROW(schema::CreateSchema(m_conn), ComError);
  EXPECT_FALSE(m_conn.InTransaction());
  EXPECT_EQ(m_conn.OpenRS("SELECT COUNT(*) FROM log_Logowanie").GetCollect(0).AsInt32(), 0);
}

TEST_P(DatabaseTest, LogRowThroughTheEmptyRecordset) {
  schema::CreateSchema(m_conn);
  const DateTime when(2024, 5, 17, 8, 30, 0);
  UpdatableRecordset rs = m_conn.OpenForUpdate("SELECT * FROM log_Logowanie WHERE 1 = 0");
  rs.AddNew();
  // Any order of fields.
  rs.PutCollect("log_Informacje", "Błąd zapisu: 'dokument' nie istnieje");
  rs.PutCollect("log_Rodzaj", 3);
  rs.PutCollect("log_Obszar", "Księgowość");
  rs.PutCollect("log_Data", when);
  rs.PutCollect("log_Stanowisko", "KASA-1");
  rs.PutCollect("log_UzytkownikId", 7);
  rs.Update();
  Recordset back = m_conn.OpenRS("SELECT * FROM log_Logowanie");
  ASSERT_EQ(back.GetRecordCount(), 1u);
  EXPECT_EQ(back.GetCollect("log_Informacje"), Variant("Błąd zapisu: 'dokument' nie istnieje"));
  EXPECT_EQ(back.GetCollect("log_Obszar"), Variant("Księgowość"));
  EXPECT_EQ(back.GetCollect("log_Data"), Variant(when));
  EXPECT_EQ(back.GetCollect("log_Rodzaj"), Variant(3));
  EXPECT_TRUE(back.GetCollect("log_ObiektId").IsNull());
  EXPECT_EQ(back.GetCollect("log_Id").AsInt32(), 1);
}

TEST_P(DatabaseTest, LiteralWritersSurviveTheServer) {
  schema::CreateSchema(m_conn);
  const std::string name = "Kowalski O'Neil – „Łódź”";
  const std::string literal = "'" + SqlOkString(name) + "'";
  m_conn.Execute("INSERT INTO pd_Uzytkownik (uz_Nazwisko) VALUES (" + literal + ")");
  Recordset rs = m_conn.OpenRS("SELECT uz_Id, uz_Nazwisko FROM pd_Uzytkownik WHERE uz_Nazwisko = " + literal);
  ASSERT_EQ(rs.GetRecordCount(), 1u);
  EXPECT_EQ(rs.GetCollect("uz_Nazwisko"), Variant(name));
  // Text written inside the statement and text sent bound must be stored as the same bytes.
  Statement byParameter = m_conn.Prepare("SELECT COUNT(*) AS n FROM pd_Uzytkownik WHERE uz_Nazwisko = ?");
  byParameter.Bind(1, Variant(name));
  EXPECT_EQ(byParameter.Open().GetCollect("n").AsInt32(), 1);
}

TEST_P(DatabaseTest, RunningInstanceHandsOutItsConnection) {
  CreateValueTable();
  m_conn.Execute("INSERT INTO rt (k) VALUES (5)");
  CRtInstance::Install({m_conn, 12, "ADMIN", "STANOWISKO-3"});
  EXPECT_EQ(CRtInstance::GetUserId(), 12);
  EXPECT_EQ(CRtInstance::GetUserIdentifier(), "ADMIN");
  EXPECT_EQ(CRtInstance::GetWorkstationName(), "STANOWISKO-3");
  EXPECT_EQ(CRtInstance::OpenRS("SELECT k FROM rt").GetCollect("k"), Variant(5));
  EXPECT_EQ(CRtInstance::GetConnection().ServerName(), m_conn.ServerName());
  CRtInstance::Uninstall();
  EXPECT_FALSE(CRtInstance::IsInstalled());
  EXPECT_EQ(CRtInstance::GetUserId(), 0);
  EXPECT_THROW(CRtInstance::GetConnection(), ComError);
  EXPECT_TRUE(m_conn.IsOpen());  // the host's connection outlives the instance
}

INSTANTIATE_TEST_SUITE_P(Backends, DatabaseTest, ::testing::ValuesIn(varion::testing::DatabaseBackends()),
                         varion::testing::BackendTestName);

}  // namespace
}  // namespace varion::db
