// Database logging over every backend: the row, the header creators, the switch in
// "log_Parametry", the factories, and a missing table or a lost connection.
#include <gtest/gtest.h>

#include <latch>
#include <set>
#include <thread>

#include "db/rt_instance.h"
#include "db/schema/schema.h"
#include "diagnostics/log_factories.h"
#include "diagnostics/log_platform.h"
#include "tests/db_backends.h"
#include "tests/log_test_support.h"

namespace SimpleLog {
namespace {

using varion::DateTime;
using varion::Variant;
using varion::db::Connection;
using varion::db::Recordset;
using varion::testing::FixedClock;
using varion::testing::TestDatabase;

struct FakeItem : IFlgItem {
  FakeItem(std::int32_t type, std::int32_t typeEx, std::int32_t id, bool typeExFails = false)
      : type(type), typeEx(typeEx), id(id), typeExFails(typeExFails) {}
  std::int32_t GetObjectType() override { return type; }
  std::int32_t GetObjectTypeEx() override { return typeExFails ? throw varion::ComError(varion::kFail, "zamknięty") : typeEx; }
  std::int32_t GetObjectId() override { return id; }
  std::int32_t type, typeEx, id;
  bool typeExFails;
};

// The running instance for one test, removed afterwards whatever happens.
struct InstalledInstance {
  explicit InstalledInstance(Connection c) { CRtInstance::Install({std::move(c), 7, "jkowalska", "KASA-1"}); }
  ~InstalledInstance() { CRtInstance::Uninstall(); }
};

class DbLoggerTest : public ::testing::TestWithParam<std::string> {
 protected:
  DbLoggerTest() : m_db(GetParam()), m_conn(m_db.Connect()) {}

  void CreateTables() { varion::db::schema::CreateSchema(m_conn); }
  Recordset Rows(const Connection& c) const { return c.OpenRS("SELECT * FROM log_Logowanie ORDER BY log_Id"); }

  TestDatabase m_db;
  Connection m_conn;
};

TEST(DbLoggerQuery, FirstParameterRowOnSqlServer) {
  EXPECT_EQ(LogParametersQuery(varion::SqlServerDialect()), "SELECT TOP 1 * FROM log_Parametry ORDER BY logp_Id ASC");
}

TEST_P(DbLoggerTest, RowCarriesHeaderInstanceProcessThreadKindAndText) {
  CreateTables();
  InstalledInstance instance(m_conn);
  auto writer = std::make_shared<DefaultFramDbWriter>(m_conn, std::make_shared<FixedClock>(DateTime(2025, 3, 14, 9, 26, 53)));
  FakeItem item(2, 5, 1234);
  FakeItem failing(3, 0, 99, true);
  FramDbLoggerSink withObject("Księgowość", writer, std::make_shared<ComFlgObjectContextDbHeaderCreator>(&item));
  FramDbLoggerSink partly("Kasa", writer, std::make_shared<ComFlgObjectContextDbHeaderCreator>(&failing));
  FramDbLoggerSink plain("Magazyn", writer, std::make_shared<DefaultFramDbHeaderCreator>());

  const std::string multi = "Błąd zapisu: 'dokument' nie istnieje\r\ndruga linia";
  const std::string longText(100000, 'z');
  withObject.Write(FramLogWarning, multi);
  partly.Write(FramLogError, "b");
  plain.Write(static_cast<tagFramLogLevel>(7), longText);

  struct Expected {
    const char* area;
    Variant type, typeEx, id;
    int kind;
    std::string text;
  };
  const Variant null = Variant::MakeNull();
  const Expected expected[] = {
      {"Księgowość", 2, 5, 1234, 2, multi},
      {"Kasa", 3, null, 99, 3, "b"},
      {"Magazyn", null, null, null, 7, longText},
  };
  Recordset rs = Rows(m_conn);
  ASSERT_EQ(rs.GetRecordCount(), std::size(expected));
  for (const Expected& e : expected) {
    SCOPED_TRACE(e.area);
    EXPECT_EQ(rs.GetCollect("log_Obszar"), Variant(e.area));
    EXPECT_EQ(rs.GetCollect("log_Data"), Variant(DateTime(2025, 3, 14, 9, 26, 53)));
    EXPECT_EQ(rs.GetCollect("log_Stanowisko"), Variant("KASA-1"));
    EXPECT_EQ(rs.GetCollect("log_UzytkownikId"), Variant(7));
    EXPECT_EQ(rs.GetCollect("log_UzytkownikIdentyfikator"), Variant("jkowalska"));
    EXPECT_EQ(rs.GetCollect("log_ObiektTyp"), e.type);
    EXPECT_EQ(rs.GetCollect("log_ObiektTypEx"), e.typeEx);
    EXPECT_EQ(rs.GetCollect("log_ObiektId"), e.id);
    EXPECT_EQ(rs.GetCollect("log_ProcesId").AsInt32(),
              static_cast<std::int32_t>(varion::logplatform::CurrentProcessId()));
    EXPECT_EQ(rs.GetCollect("log_WatekId").AsInt32(), static_cast<std::int32_t>(varion::logplatform::CurrentThreadId()));
    EXPECT_EQ(rs.GetCollect("log_Rodzaj"), Variant(e.kind));
    EXPECT_TRUE(rs.GetCollect("log_Informacje").AsText() == e.text);
    rs.MoveNext();
  }
}

TEST_P(DbLoggerTest, MissingTableOrLostConnectionWritesNothingAndRaisesNothing) {
  Connection own = m_db.Connect();
  SimpleLoggerWrapper logger =
      Custom::Db::LoggerFactory("Sprzedaż", std::make_shared<AlwaysOnLoggerToggle>()).WithCustomConnection(own).Get();
  DefaultFramDbWriter writer(own);
  EXPECT_NE(writer.Write(FramDbLogHeader{"Zakupy", {}, {}, {}}, FramLogError, "no table"), varion::kOk);
  EXPECT_NO_THROW(logger.Write(FramLogError, "no table"));
  CreateTables();  // found by the next entry
  logger.Write(FramLogInfo, "kept");
  own.Close();
  EXPECT_NO_THROW(logger.Write(FramLogError, "connection closed"));
  // Without an instance the default loggers have no connection at all.
  EXPECT_NO_THROW(Custom::Db::LoggerFactory("S", std::make_shared<AlwaysOnLoggerToggle>()).Get().Write(FramLogError, "x"));
  EXPECT_NO_THROW(Default::Write("Sprzedaż", FramLogError, "nowhere"));
  Recordset rs = Rows(m_conn);
  ASSERT_EQ(rs.GetRecordCount(), 1u);
  EXPECT_EQ(rs.GetCollect("log_Informacje"), Variant("kept"));
}

TEST_P(DbLoggerTest, FirstParameterRowSwitchesDatabaseLogging) {
  struct Case {
    const char* what;
    bool table;
    std::initializer_list<int> switches;
    bool enabled;
  };
  const Case cases[] = {{"no table", false, {}, false},
                        {"no row", true, {}, false},
                        {"first row on", true, {1, 0}, true},
                        {"first row off", true, {0, 1}, false},
                        {"any non-zero", true, {-5}, true}};
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    TestDatabase db(GetParam());
    Connection conn = db.Connect();
    if (c.table) varion::db::schema::CreateSchema(conn);
    for (int v : c.switches) conn.Execute("INSERT INTO log_Parametry (logp_Wlaczone) VALUES (" + std::to_string(v) + ")");
    EXPECT_EQ(NoDataFactoryParamLoggerToggle(conn).IsEnabled(), c.enabled);
    InstalledInstance instance(conn);
    EXPECT_EQ(ParamLoggerToggle(varion::RunningFlgInstance(), "Grid").IsEnabled(), c.enabled);
  }
  EXPECT_FALSE(ParamLoggerToggle(varion::RunningFlgInstance(), "no instance installed").IsEnabled());
  EXPECT_FALSE(ParamLoggerToggle(nullptr, "Grid").IsEnabled());
  Connection closed = m_db.Connect();
  closed.Close();
  EXPECT_FALSE(NoDataFactoryParamLoggerToggle(closed).IsEnabled());
}

TEST_P(DbLoggerTest, DefaultLoggerFollowsTheRunningInstanceAndItsSwitch) {
  CreateTables();
  InstalledInstance instance(m_conn);
  Default::Write("Rozrachunki", FramLogError, "switch absent");
  m_conn.Execute("INSERT INTO log_Parametry (logp_Wlaczone) VALUES (1)");
  FakeItem item(4, 0, 321);
  Default::CreateLogger("Rozrachunki", &item).Write(FramLogWarning, "with object");
  Default::Write("Rozrachunki", FramLogInfo, "one entry");
  m_conn.Execute("UPDATE log_Parametry SET logp_Wlaczone = 0");
  Default::Write("Rozrachunki", FramLogError, "switched off");
  Recordset rs = Rows(m_conn);
  ASSERT_EQ(rs.GetRecordCount(), 2u);
  EXPECT_EQ(rs.GetCollect("log_Informacje"), Variant("with object"));
  EXPECT_EQ(rs.GetCollect("log_ObiektId"), Variant(321));
  EXPECT_EQ(rs.GetCollect("log_Obszar"), Variant("Rozrachunki"));
  EXPECT_EQ(rs.GetCollect("log_UzytkownikIdentyfikator"), Variant("jkowalska"));
  rs.MoveNext();
  EXPECT_EQ(rs.GetCollect("log_Informacje"), Variant("one entry"));
  EXPECT_TRUE(rs.GetCollect("log_ObiektId").IsNull());
}

TEST_P(DbLoggerTest, ThreadsSharingOneLoggerStoreEveryRow) {
  CreateTables();
  SimpleLoggerWrapper logger =
      Custom::Db::LoggerFactory("Wątki", std::make_shared<AlwaysOnLoggerToggle>()).WithCustomConnection(m_conn).Get();
  const int threads = 4, perThread = 40;
  std::vector<std::thread> pool;
  // Every thread stays until all have written, so no thread id is handed out twice.
  std::latch done(threads);
  for (int t = 0; t < threads; ++t)
    pool.emplace_back([&, t] {
      for (int i = 0; i < perThread; ++i) logger.Write(FramLogInfo, std::to_string(t) + ":" + std::to_string(i));
      done.arrive_and_wait();
    });
  for (auto& th : pool) th.join();
  std::set<std::string> texts;
  std::set<std::int32_t> threadIds;
  for (Recordset rs = Rows(m_conn); !rs.IsEOF(); rs.MoveNext()) {
    texts.insert(rs.GetCollect("log_Informacje").AsText());
    threadIds.insert(rs.GetCollect("log_WatekId").AsInt32());
  }
  EXPECT_EQ(texts.size(), static_cast<std::size_t>(threads * perThread));
  EXPECT_EQ(threadIds.size(), static_cast<std::size_t>(threads));
}

INSTANTIATE_TEST_SUITE_P(Backends, DbLoggerTest, ::testing::ValuesIn(varion::testing::DatabaseBackends()),
                         varion::testing::BackendTestName);

}  // namespace
}  // namespace SimpleLog
