#include "framework/dialog_cfg.h"

#include <gtest/gtest.h>

#include <map>

#include "base/status.h"
#include "db/rt_instance.h"
#include "db/schema/schema.h"
#include "diagnostics/simple_log.h"
#include "diagnostics/framework_log.h"
#include "tests/db_backends.h"

namespace varion {
namespace {

// What a dialog writes: a width, a text and (for the filters) a flag.
struct Settings {
  std::int32_t width = 0;
  std::string title;
  std::int32_t filterFlag = 0;
  bool dataRead = false, filtersRead = false;
};

DialogCfgStreams Writers(const Settings& s) {
  return {[&s](db::ByteStream& st) {
            CfgWriteInt32(st, s.width);
            CfgWriteText(st, s.title);
          },
          [&s](db::ByteStream& st) { CfgWriteInt32(st, s.filterFlag); }};
}

DialogCfgStreams Readers(Settings& s) {
  return {[&s](db::ByteStream& st) {
            s.width = CfgReadInt32(st);
            s.title = CfgReadText(st);
            s.dataRead = true;
          },
          [&s](db::ByteStream& st) {
            s.filterFlag = CfgReadInt32(st);
            s.filtersRead = true;
          }};
}

class DialogCfgDbTest : public ::testing::TestWithParam<std::string> {
 protected:
  DialogCfgDbTest() : m_db(GetParam()), m_conn(m_db.Connect()), m_factory(m_conn) { db::schema::CreateSchema(m_conn); }
  testing::TestDatabase m_db;
  db::Connection m_conn;
  DbDialogCfgFactory m_factory;
};

TEST_P(DialogCfgDbTest, StreamsRoundTripPerSectionUserAndServiceAndASaveReplaces) {
  Settings a{640, "Kontrahenci — łódzkie", 3};
  ASSERT_TRUE(SaveDialogCfg(m_factory, "Kontrahent", 7, 1, Writers(a)));
  Settings other{100, "inny użytkownik", 0};
  ASSERT_TRUE(SaveDialogCfg(m_factory, "Kontrahent", 8, 1, Writers(other)));
  a.width = 800;
  ASSERT_TRUE(SaveDialogCfg(m_factory, "Kontrahent", 7, 1, Writers(a)));
  EXPECT_EQ(m_conn.OpenRS("SELECT vwcg_Id FROM vw_KonfiguracjaDialogu").GetRecordCount(), 2u);

  Settings back;
  EXPECT_TRUE(LoadDialogCfg(m_factory, "Kontrahent", 7, 1, Readers(back)));
  EXPECT_EQ(back.width, 800);
  EXPECT_EQ(back.title, "Kontrahenci — łódzkie");
  EXPECT_EQ(back.filterFlag, 3);

  Settings none;
  EXPECT_FALSE(LoadDialogCfg(m_factory, "Kontrahent", 7, 2, Readers(none)));
  EXPECT_FALSE(none.dataRead || none.filtersRead);

  // The stored data stream opens with the format value.
  auto record = m_factory.LoadDialogCfg("Kontrahent", 8, 1);
  ASSERT_TRUE(record);
  ASSERT_GE(record->data.size(), 4u);
  EXPECT_EQ(record->data[0], 'V');
  EXPECT_EQ(record->data[3], '1');
}

INSTANTIATE_TEST_SUITE_P(Backends, DialogCfgDbTest, ::testing::ValuesIn(testing::DatabaseBackends()),
                         testing::BackendTestName);

// A factory in memory, whose stored bytes a test can damage.
class MemoryFactory : public IFlgDataFactory {
 public:
  std::optional<DialogCfgRecord> LoadDialogCfg(std::string_view section, std::int32_t user,
                                               std::int32_t service) override {
    if (failing) throw ComError(kFail, "serwer niedostępny");
    auto it = records.find(Key(section, user, service));
    if (it == records.end()) return std::nullopt;
    return it->second;
  }
  void SaveDialogCfg(const DialogCfgRecord& r) override {
    if (failing) throw ComError(kFail, "serwer niedostępny");
    records[Key(r.section, r.user, r.service)] = r;
  }
  static std::string Key(std::string_view s, std::int32_t u, std::int32_t v) {
    return std::string(s) + "|" + std::to_string(u) + "|" + std::to_string(v);
  }
  std::map<std::string, DialogCfgRecord> records;
  bool failing = false;
};

class LogCapture {
 public:
  LogCapture() {
    m_previous = SetFrameworkLogSink([this](std::string_view, std::string_view text) { lines.emplace_back(text); });
  }
  ~LogCapture() { SetFrameworkLogSink(m_previous); }
  std::vector<std::string> lines;

 private:
  FrameworkLogSink m_previous;
};

TEST(DialogCfg, DamagedOrForeignStreamsAreIgnoredWithALogEntry) {
  struct Case {
    const char* what;
    std::function<void(DialogCfgRecord&)> damage;
    bool dataRead, filtersRead;
  } cases[] = {
      {"intact", [](DialogCfgRecord&) {}, true, true},
      {"another format", [](DialogCfgRecord& r) { r.data[0] = 'X'; }, false, true},
      {"shorter than the format value", [](DialogCfgRecord& r) { r.data.resize(3); }, false, true},
      {"empty streams", [](DialogCfgRecord& r) { r.data.clear(), r.filtersData.clear(); }, false, false},
      {"cut in the middle of the text", [](DialogCfgRecord& r) { r.data.resize(r.data.size() - 2); }, false, true},
      {"text length beyond the stream", [](DialogCfgRecord& r) { r.data[8] = 0xFF, r.data[11] = 0x7F; }, false, true},
      {"filters cut", [](DialogCfgRecord& r) { r.filtersData.resize(1); }, true, false},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.what);
    MemoryFactory factory;
    Settings s{320, "Faktury", 1};
    ASSERT_TRUE(SaveDialogCfg(factory, "Faktura", 1, 0, Writers(s)));
    c.damage(factory.records.begin()->second);
    LogCapture log;
    Settings back;
    EXPECT_EQ(LoadDialogCfg(factory, "Faktura", 1, 0, Readers(back)), c.dataRead);
    EXPECT_EQ(back.dataRead, c.dataRead);
    EXPECT_EQ(back.filtersRead, c.filtersRead);
    const std::size_t expectedLines = (c.dataRead ? 0 : 1) + (c.filtersRead ? 0 : 1);
    EXPECT_EQ(log.lines.size(), expectedLines);
  }
}

TEST(DialogCfg, AFailingFactoryIsLoggedAndNothingElseHappens) {
  MemoryFactory factory;
  factory.failing = true;
  LogCapture log;
  Settings s{1, "x", 2};
  EXPECT_FALSE(SaveDialogCfg(factory, "A", 0, 0, Writers(s)));
  Settings back;
  EXPECT_FALSE(LoadDialogCfg(factory, "A", 0, 0, Readers(back)));
  EXPECT_FALSE(back.dataRead);
  ASSERT_EQ(log.lines.size(), 2u);
  EXPECT_NE(log.lines[0].find("serwer niedostępny"), std::string::npos);
}

}  // namespace
}  // namespace varion

namespace varion {
namespace {

// Without a sink of its own the framework writes into the running instance's database log,
// when the instance's log switch says so.
TEST(FrameworkLog, DefaultEntriesReachTheDatabaseLogWhenSwitchedOn) {
  testing::TestDatabase database("sqlite");
  db::Connection c = database.Connect();
  db::schema::CreateSchema(c);
  CRtInstance::Install({c, 3, "KASIA", "STANOWISKO-1"});
  struct Uninstall {
    ~Uninstall() { CRtInstance::Uninstall(); }
  } uninstall;
  auto rows = [&] { return c.OpenRS("SELECT log_Informacje, log_Obszar FROM log_Logowanie").GetRecordCount(); };

  FrameworkLog("dialog configuration", "przełącznik wyłączony");
  EXPECT_EQ(rows(), 0u);
  c.Execute("INSERT INTO log_Parametry (logp_Wlaczone) VALUES (1)");
  FrameworkLog("dialog configuration", "strumień uszkodzony");
  ASSERT_EQ(rows(), 1u);
  db::Recordset rs = c.OpenRS("SELECT log_Informacje, log_Obszar, log_Rodzaj FROM log_Logowanie");
  EXPECT_EQ(rs.GetCollect("log_Obszar"), Variant("Varion.Framework"));
  EXPECT_EQ(rs.GetCollect("log_Rodzaj").AsInt32(), FramLogWarning);
  EXPECT_NE(rs.GetCollect("log_Informacje").AsText().find("strumień uszkodzony"), std::string::npos);
}

}  // namespace
}  // namespace varion
