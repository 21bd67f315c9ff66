// Database logging over every backend: the row, the header creators, the switch in
// "log_Parametry", the factories, and a missing table or a lost connection.
#include <gtest/gtest.h>

#include <algorithm>
#include <latch>
#include <set>
#include <stdexcept>
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

class FakeItem : public IFlgItem {
 public:
  FakeItem(std::int32_t type, std::int32_t typeEx, std::int32_t id, bool typeExFails = false)
      : m_type(type), m_typeEx(typeEx), m_id(id), m_typeExFails(typeExFails) {}
  std::int32_t GetObjectType() override { return m_type; }
  std::int32_t GetObjectTypeEx() override {
    if (m_typeExFails) throw varion::ComError(varion::kFail, "obiekt zamknięty");
    return m_typeEx;
  }
  std::int32_t GetObjectId() override { return m_id; }

 private:
  std::int32_t m_type, m_typeEx, m_id;
  bool m_typeExFails;
};

class FakeInstance : public IFlgInstance {
 public:
  explicit FakeInstance(Connection c, bool fails = false) : m_connection(std::move(c)), m_fails(fails) {}
  Connection GetConnection() override {
    if (m_fails) throw std::runtime_error("no server");
    return m_connection;
  }
  std::int32_t GetUserId() override { return 0; }
  std::string GetUserIdentifier() override { return {}; }
  std::string GetWorkstationName() override { return {}; }

 private:
  Connection m_connection;
  bool m_fails;
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
  void SetSwitches(std::initializer_list<int> values) {
    for (int v : values) m_conn.Execute("INSERT INTO log_Parametry (logp_Wlaczone) VALUES (" + std::to_string(v) + ")");
  }
  Recordset Rows(const Connection& c) const { return c.OpenRS("SELECT * FROM log_Logowanie ORDER BY log_Id"); }
  std::size_t RowCount() const { return Rows(m_db.Connect()).GetRecordCount(); }

  TestDatabase m_db;
  Connection m_conn;
};

TEST(DbLoggerQuery, FirstParameterRowPerDialect) {
  EXPECT_EQ(LogParametersQuery(varion::SqlServerDialect()), "SELECT TOP 1 * FROM log_Parametry ORDER BY logp_Id ASC");
  EXPECT_EQ(LogParametersQuery(varion::SqliteDialect()), "SELECT * FROM log_Parametry ORDER BY logp_Id ASC LIMIT 1");
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
  FramDbLoggerSink nullObject("Płace", writer, std::make_shared<ComFlgObjectContextDbHeaderCreator>(nullptr));

  const std::string multi = "Błąd zapisu: 'dokument' nie istnieje\r\ndruga linia";
  const std::string longText(100000, 'z');
  withObject.Write(FramLogWarning, multi);
  partly.Write(FramLogError, "b");
  plain.Write(static_cast<tagFramLogLevel>(7), longText);
  nullObject.Write(static_cast<tagFramLogLevel>(-1), "");

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
      {"Płace", null, null, null, -1, ""},
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

TEST_P(DbLoggerTest, MissingTableWritesNothingUntilItExists) {
  DefaultFramDbWriter writer(m_conn);
  FramDbLogHeader header{"Zakupy", {}, {}, {}};
  EXPECT_NE(writer.Write(header, FramLogError, "lost"), varion::kOk);
  FramDbLoggerSink sink("Zakupy", std::make_shared<DefaultFramDbWriter>(m_conn), nullptr);
  EXPECT_NO_THROW(sink.Write(FramLogError, "lost too"));
  CreateTables();
  EXPECT_EQ(writer.Write(header, FramLogError, "kept"), varion::kOk);
  sink.Write(FramLogInfo, "kept too");
  Recordset rs = Rows(m_conn);
  ASSERT_EQ(rs.GetRecordCount(), 2u);
  EXPECT_EQ(rs.GetCollect("log_Informacje"), Variant("kept"));
}

TEST_P(DbLoggerTest, LostConnectionWritesNothingAndRaisesNothing) {
  CreateTables();
  Connection own = m_db.Connect();
  SimpleLoggerWrapper logger =
      Custom::Db::LoggerFactory("Sprzedaż", std::make_shared<AlwaysOnLoggerToggle>()).WithCustomConnection(own).Get();
  logger.Write(FramLogInfo, "before");
  own.Close();
  EXPECT_NO_THROW(logger.Write(FramLogError, "after"));
  EXPECT_EQ(RowCount(), 1u);
  // A logger made while no instance is installed has no connection at all.
  SimpleLoggerWrapper orphan = Custom::Db::LoggerFactory("Sprzedaż", std::make_shared<AlwaysOnLoggerToggle>()).Get();
  EXPECT_NO_THROW(orphan.Write(FramLogError, "nowhere"));
  EXPECT_NO_THROW(Default::Write("Sprzedaż", FramLogError, "nowhere"));
  EXPECT_EQ(RowCount(), 1u);
}

TEST_P(DbLoggerTest, FirstParameterRowSwitchesDatabaseLogging) {
  struct Case {
    const char* what;
    bool table;
    std::vector<int> switches;
    bool enabled;
  };
  const Case cases[] = {
      {"no table", false, {}, false},        {"no row", true, {}, false},
      {"first row on", true, {1, 0}, true},  {"first row off", true, {0, 1}, false},
      {"any non-zero", true, {-5}, true},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    TestDatabase db(GetParam());
    Connection conn = db.Connect();
    if (c.table) varion::db::schema::CreateSchema(conn);
    for (int v : c.switches) conn.Execute("INSERT INTO log_Parametry (logp_Wlaczone) VALUES (" + std::to_string(v) + ")");
    EXPECT_EQ(NoDataFactoryParamLoggerToggle(conn).IsEnabled(), c.enabled);
    FakeInstance instance(conn);
    EXPECT_EQ(ParamLoggerToggle(&instance, "Grid").IsEnabled(), c.enabled);
    SimpleLoggerWrapper logger =
        Custom::Db::LoggerFactory("Grid", std::make_shared<ParamLoggerToggle>(&instance, "Grid")).WithCustomConnection(conn).Get();
    logger.Write(FramLogInfo, "x");
    if (c.table) {
      EXPECT_EQ(conn.OpenRS("SELECT * FROM log_Logowanie").GetRecordCount(), c.enabled ? 1u : 0u);
    }
  }
  FakeInstance failing(m_conn, true);
  EXPECT_FALSE(ParamLoggerToggle(&failing, "Grid").IsEnabled());
  EXPECT_FALSE(ParamLoggerToggle(nullptr, "Grid").IsEnabled());
  Connection closed = m_db.Connect();
  closed.Close();
  EXPECT_FALSE(NoDataFactoryParamLoggerToggle(closed).IsEnabled());
}

TEST_P(DbLoggerTest, DefaultLoggerFollowsTheRunningInstanceAndItsSwitch) {
  CreateTables();
  InstalledInstance instance(m_conn);
  Default::Write("Rozrachunki", FramLogError, "switch absent");
  SetSwitches({1});
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

std::string BackendName(const ::testing::TestParamInfo<std::string>& info) {
  std::string name = info.param;
  std::replace(name.begin(), name.end(), '-', '_');
  return name;
}

INSTANTIATE_TEST_SUITE_P(Backends, DbLoggerTest, ::testing::ValuesIn(varion::testing::DatabaseBackends()), BackendName);

}  // namespace
}  // namespace SimpleLog
