// Where a box keeps its don't-show-again choice: the profile integer, and the warnings table on
// every database backend (statements, the suppression rule, the deliberate toggling, the reset).
#include <gtest/gtest.h>

#include "db/rt_instance.h"
#include "db/schema/schema.h"
#include "dialogs/message_box_settings.h"
#include "tests/db_backends.h"

namespace CMB {
namespace {

using varion::db::Connection;
using varion::testing::TestDatabase;

TEST(WarningStatements, SqlServerTextsExactly) {
  EXPECT_EQ(WarningSelectSql(1042, 7),
            "SELECT * FROM pd_Ostrzezenia WHERE ost_NumerProgramowy=1042 AND (ost_IdUzytkownika=7 OR "
            "ost_PokazujRazDlaWszystkich=1)");
  EXPECT_EQ(WarningUpdateSql(5, 1042, 7),
            "UPDATE pd_Ostrzezenia SET ost_NiePokazujWiecejFlagi=5 WHERE ost_NumerProgramowy=1042 AND ost_IdUzytkownika=7");
  EXPECT_EQ(WarningInsertSql(1042, 7, -1, 1),
            "INSERT INTO pd_Ostrzezenia (ost_NumerProgramowy, ost_IdUzytkownika, ost_NiePokazujWiecejFlagi, "
            "ost_PokazujRazDlaWszystkich) VALUES (1042, 7, -1, 1)");
  EXPECT_EQ(ResetSuppressedMessagesSql(7, std::nullopt),
            "UPDATE pd_Ostrzezenia SET ost_NiePokazujWiecejFlagi=0 WHERE ost_IdUzytkownika=7");
  EXPECT_EQ(ResetSuppressedMessagesSql(7, 4),
            "UPDATE pd_Ostrzezenia SET ost_NiePokazujWiecejFlagi=ost_NiePokazujWiecejFlagi & -5 WHERE ost_IdUzytkownika=7 "
            "AND (ost_NiePokazujWiecejFlagi & 4) <> 0");
}

TEST(RegistrySetting, OnlyOneSuppressesAndOnlyATickIsSaved) {
  struct Case {
    std::optional<int> stored;
    bool shows;
  };
  for (const Case& c : {Case{std::nullopt, true}, Case{0, true}, Case{1, false}, Case{2, true}, Case{-1, true}}) {
    SCOPED_TRACE(c.stored.value_or(-99));
    auto profile = std::make_shared<varion::MemoryProfile>();
    if (c.stored) profile->WriteInt("Ostrzezenia", "Usun", *c.stored);
    RegistrySetting setting("Ostrzezenia", "Usun", profile);
    EXPECT_EQ(setting.CanShow(), c.shows);

    setting.SaveData();  // no tick: the profile stays as it was
    EXPECT_EQ(profile->GetInt("Ostrzezenia", "Usun"), c.stored);
    setting.HandleBtnClickDontShowAgain(true);
    setting.HandleBtnClickDontShowAgain(false);
    setting.SaveData();
    EXPECT_EQ(profile->GetInt("Ostrzezenia", "Usun"), c.stored);
    setting.HandleBtnClickDontShowAgain(true);
    setting.SaveData();
    EXPECT_EQ(profile->GetInt("Ostrzezenia", "Usun"), 1);
    EXPECT_FALSE(RegistrySetting("Ostrzezenia", "Usun", profile).CanShow());
  }
  RegistrySetting none("A", "B", nullptr);
  none.HandleBtnClickDontShowAgain(true);
  none.SaveData();
  EXPECT_TRUE(none.CanShow());
}

constexpr long kMessage = 1042;
constexpr long kUser = 7;
constexpr long kBit = 4;

class WarningsTableTest : public ::testing::TestWithParam<std::string> {
 protected:
  WarningsTableTest() : m_db(GetParam()), m_conn(m_db.Connect()) { varion::db::schema::CreateSchema(m_conn); }

  void AddRow(long message, long user, long flags, bool showOnce) {
    DatabaseSetting(message, kBit, m_conn, user).AddNewMessageToDatabase(user, flags, showOnce);
  }
  long FlagsOf(long message, long user) const {
    auto rs = m_conn.OpenRS("SELECT ost_NiePokazujWiecejFlagi FROM pd_Ostrzezenia WHERE ost_NumerProgramowy=" +
                            std::to_string(message) + " AND ost_IdUzytkownika=" + std::to_string(user));
    return rs.IsEOF() ? -999 : rs.GetCollect(0).AsInt32();
  }

  TestDatabase m_db;
  Connection m_conn;
};

struct Row {
  long message, user, flags;
  bool showOnce;
};

TEST_P(WarningsTableTest, WhoSeesTheMessage) {
  struct Case {
    const char* name;
    std::vector<Row> rows;
    long user;
    std::optional<long> bit;
    bool shows;
  };
  const Case cases[] = {
      {"no row", {}, kUser, kBit, true},
      {"own row holds this program's bit", {{kMessage, kUser, 4 | 1, false}}, kUser, kBit, false},
      {"own row holds another program's bit", {{kMessage, kUser, 1 | 8, false}}, kUser, kBit, true},
      {"own row without a bit known", {{kMessage, kUser, 4, false}}, kUser, std::nullopt, true},
      {"own show-once row with another program's bit", {{kMessage, kUser, 1, true}}, kUser, kBit, false},
      {"another user's show-once row with flags", {{kMessage, 99, 1, true}}, kUser, kBit, false},
      {"another user's show-once row beats an own clean row",
       {{kMessage, kUser, 0, false}, {kMessage, 99, 2, true}}, kUser, kBit, false},
      {"another user's show-once row without flags", {{kMessage, 99, 0, true}}, kUser, kBit, true},
      {"another user's own row", {{kMessage, 99, 4, false}}, kUser, kBit, true},
      {"another message", {{kMessage + 1, kUser, 4, true}}, kUser, kBit, true},
      {"no user", {{kMessage, 99, 4, true}}, 0, kBit, true},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    m_conn.Execute("DELETE FROM pd_Ostrzezenia");
    for (const Row& r : c.rows) AddRow(r.message, r.user, r.flags, r.showOnce);
    DatabaseSetting setting(kMessage, c.bit, m_conn, c.user);
    EXPECT_EQ(setting.CanShow(), c.shows);
    EXPECT_EQ(setting.IsMessageDisplayedHere(), !c.shows);
  }
}

TEST_P(WarningsTableTest, TogglingIsKeptAsWrittenAndSaved) {
  // Each step: the check box's state, then the flags after the click (kBit = 4).
  struct Step {
    bool checked;
    long flags;
  };
  struct Case {
    const char* name;
    long start;
    std::vector<Step> steps;
  };
  const Case cases[] = {
      {"check sets the bit", 1, {{true, 5}}},
      {"check again clears it: the toggle is a plain xor", 5, {{true, 1}}},
      {"uncheck keeps only the bit", 1 | 4 | 8, {{false, 4}}},
      {"check then uncheck leaves the bit on", 1, {{true, 5}, {false, 4}}},
      {"uncheck of a clean row empties the flags", 9, {{false, 0}}},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    m_conn.Execute("DELETE FROM pd_Ostrzezenia");
    AddRow(kMessage, kUser, c.start, false);
    AddRow(kMessage, 99, c.start, false);
    DatabaseSetting setting(kMessage, kBit, m_conn, kUser);
    setting.Init();
    for (const Step& s : c.steps) {
      setting.HandleBtnClickDontShowAgain(s.checked);
      EXPECT_EQ(setting.GetFlags(), s.flags);
    }
    setting.SaveData();
    EXPECT_EQ(FlagsOf(kMessage, kUser), c.steps.back().flags);
    EXPECT_EQ(FlagsOf(kMessage, 99), c.start) << "another user's row is not touched";
  }
}

TEST_P(WarningsTableTest, NothingChangesWithoutARowOrABit) {
  DatabaseSetting noRow(kMessage, kBit, m_conn, kUser);
  noRow.Init();
  noRow.HandleBtnClickDontShowAgain(true);
  EXPECT_EQ(noRow.GetFlags(), std::nullopt);
  noRow.SaveData();
  EXPECT_EQ(m_conn.OpenRS("SELECT * FROM pd_Ostrzezenia").GetRecordCount(), 0u);

  AddRow(kMessage, kUser, 1, false);
  DatabaseSetting noBit(kMessage, std::nullopt, m_conn, kUser);
  noBit.Init();
  noBit.HandleBtnClickDontShowAgain(true);
  noBit.SaveData();
  EXPECT_EQ(FlagsOf(kMessage, kUser), 1);
}

TEST_P(WarningsTableTest, ResetBringsBackOneUsersMessages) {
  struct Case {
    const char* name;
    std::optional<long> bit;
    std::int64_t changed;
    long flagsA, flagsB;
  };
  for (const Case& c : {Case{"every message of the user", std::nullopt, 2, 0, 0},
                        Case{"only this program's choices", kBit, 1, 1, 0}}) {
    SCOPED_TRACE(c.name);
    m_conn.Execute("DELETE FROM pd_Ostrzezenia");
    AddRow(kMessage, kUser, 1 | 4, false);
    AddRow(kMessage + 1, kUser, 2, false);
    AddRow(kMessage, 99, 4, false);
    EXPECT_EQ(ResetSuppressedMessages(m_conn, kUser, c.bit), c.changed);
    EXPECT_EQ(FlagsOf(kMessage, kUser), c.flagsA);
    EXPECT_EQ(FlagsOf(kMessage + 1, kUser), c.bit ? 2 : 0);
    EXPECT_EQ(FlagsOf(kMessage, 99), 4);
    EXPECT_TRUE(DatabaseSetting(kMessage, kBit, m_conn, kUser).CanShow());
  }
}

TEST_P(WarningsTableTest, RunningInstanceGivesConnectionAndUserAndFailuresRaise) {
  AddRow(kMessage, kUser, kBit, false);
  CRtInstance::Install({m_conn, static_cast<std::int32_t>(kUser), "jkowalska", "KASA-1"});
  DatabaseSetting setting(kMessage, kBit);
  EXPECT_FALSE(setting.CanShow());
  CRtInstance::Uninstall();

  m_conn.Execute("DROP TABLE pd_Ostrzezenia");
  DatabaseSetting broken(kMessage, kBit, m_conn, kUser);
  EXPECT_THROW(broken.Init(), varion::ComError);
}

INSTANTIATE_TEST_SUITE_P(Backends, WarningsTableTest, ::testing::ValuesIn(varion::testing::DatabaseBackends()),
                         varion::testing::BackendTestName);

}  // namespace
}  // namespace CMB
