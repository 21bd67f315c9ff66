// The database-driven warning: its statements, the British-data condition on every backend, and
// whether it shows (its row created on first use, suppressed by this program's bit).
#include <gtest/gtest.h>

#include "db/schema/schema.h"
#include "dialogs/customizable_warning.h"
#include "dialogs/message_box_settings.h"
#include "tests/db_backends.h"

namespace {

using varion::db::Connection;
using varion::testing::TestDatabase;

TEST(CustomizableWarningSql, TextsAsWrittenAndTheirRowForm) {
  EXPECT_EQ(CCustomizableWarning::InsertSql(1042, 7, 4, 0),
            "INSERT INTO pd_Ostrzezenia (ost_NumerProgramowy, ost_IdUzytkownika, ost_NiePokazujWiecejFlagi, "
            "ost_PokazujRazDlaWszystkich) VALUES(1042, 7, 4, 0)");
  EXPECT_EQ(CCustomizableWarning::BrexitAccountsSql(3),
            "SELECT TOP 1 ? = ko_Id FROM pk_PlanKont LEFT JOIN pk_Kartoteka ON ko_IdKartoteki = kw_Id LEFT JOIN "
            "pd_RokObrotowy ON robr_Id = ko_IdRokuObrotowego WHERE robr_Zamkniety = 0 AND kw_Filtr1 = 3");
  EXPECT_EQ(CCustomizableWarning::BrexitContractorsSql(),
            "SELECT TOP 1 ? = kh_Id FROM kh__Kontrahent LEFT JOIN adr__Ewid ON adr_IdObiektu = kh_Id LEFT JOIN "
            "sl_Panstwo ON adr_IdPanstwo = pa_Id WHERE adr_TypAdresu = 1 AND pa_KodPanstwaISO = 'GB' ");
  const std::string contractors = CCustomizableWarning::BrexitContractorsSql();
  EXPECT_EQ(CCustomizableWarning::AsRowQuery(contractors, varion::SqlServerDialect()),
            "SELECT TOP 1 kh_Id AS [Output] FROM kh__Kontrahent LEFT JOIN adr__Ewid ON adr_IdObiektu = kh_Id LEFT JOIN "
            "sl_Panstwo ON adr_IdPanstwo = pa_Id WHERE adr_TypAdresu = 1 AND pa_KodPanstwaISO = 'GB' ");
  EXPECT_EQ(CCustomizableWarning::AsRowQuery(CCustomizableWarning::BrexitAccountsSql(3), varion::PostgresDialect()),
            "SELECT ko_Id AS \"Output\" FROM pk_PlanKont LEFT JOIN pk_Kartoteka ON ko_IdKartoteki = kw_Id LEFT JOIN "
            "pd_RokObrotowy ON robr_Id = ko_IdRokuObrotowego WHERE robr_Zamkniety = 0 AND kw_Filtr1 = 3 LIMIT 1");
  for (const char* bad : {"SELECT kh_Id FROM kh__Kontrahent", "SELECT TOP 1 ? = kh_Id", ""}) {
    SCOPED_TRACE(bad);
    EXPECT_THROW(CCustomizableWarning::AsRowQuery(bad, varion::SqliteDialect()), varion::ComError);
  }
}

constexpr long kMessage = 2020;
constexpr long kUser = 7;
constexpr long kBit = 2;

class CustomizableWarningTest : public ::testing::TestWithParam<std::string> {
 protected:
  CustomizableWarningTest() : m_db(GetParam()), m_conn(m_db.Connect()) { varion::db::schema::CreateSchema(m_conn); }

  CCustomizableWarning Warning(WarningKind kind, std::optional<long> filter = std::nullopt) const {
    return CCustomizableWarning(0, {kMessage, kBit, kind, filter}, {"", "Brexit", "", CMB::MessageBoxType::Warning, false},
                                m_conn, kUser);
  }
  void Run(const std::vector<std::string>& statements) const {
    for (const auto& s : statements) m_conn.Execute(s);
  }

  TestDatabase m_db;
  Connection m_conn;
};

TEST_P(CustomizableWarningTest, BritishDataDecidesTheBrexitWarning) {
  const std::vector<std::string> countries = {"INSERT INTO sl_Panstwo (pa_Id, pa_Nazwa, pa_KodPanstwaISO) VALUES (1, 'Wielka Brytania', 'GB')",
                                              "INSERT INTO sl_Panstwo (pa_Id, pa_Nazwa, pa_KodPanstwaISO) VALUES (2, 'Niemcy', 'DE')"};
  const std::vector<std::string> years = {"INSERT INTO pd_RokObrotowy (robr_Id, robr_Symbol, robr_Zamkniety) VALUES (1, '2019', 1)",
                                          "INSERT INTO pd_RokObrotowy (robr_Id, robr_Symbol, robr_Zamkniety) VALUES (2, '2020', 0)",
                                          "INSERT INTO pk_Kartoteka (kw_Id, kw_Nazwa, kw_Filtr1) VALUES (1, 'Kontrahenci GB', 5)"};
  const auto contractor = [](int address, int country) {
    return std::vector<std::string>{
        "INSERT INTO kh__Kontrahent (kh_Id, kh_Symbol, kh_Nazwa) VALUES (1, 'LON', 'London Trading Ltd')",
        "INSERT INTO adr__Ewid (adr_IdObiektu, adr_TypAdresu, adr_IdPanstwo) VALUES (1, " + std::to_string(address) +
            ", " + std::to_string(country) + ")"};
  };
  const auto account = [](int year) {
    return std::vector<std::string>{"INSERT INTO pk_PlanKont (ko_Id, ko_Numer, ko_IdKartoteki, ko_IdRokuObrotowego) VALUES "
                                    "(1, '201-GB', 1, " + std::to_string(year) + ")"};
  };
  struct Case {
    const char* name;
    std::vector<std::string> data;
    std::optional<long> filter;
    bool shows;
  };
  const Case cases[] = {
      {"no data", {}, 5, false},
      {"contractor with a main address in Great Britain", contractor(1, 1), std::nullopt, true},
      {"British address that is not the main one", contractor(2, 1), std::nullopt, false},
      {"main address in Germany", contractor(1, 2), std::nullopt, false},
      {"account of an open year under the filter", account(2), 5, true},
      {"account of a closed year", account(1), 5, false},
      {"account under another filter", account(2), 6, false},
      {"account but no filter given", account(2), std::nullopt, false},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    Run({"DELETE FROM adr__Ewid", "DELETE FROM kh__Kontrahent", "DELETE FROM pk_PlanKont", "DELETE FROM pk_Kartoteka",
         "DELETE FROM pd_RokObrotowy", "DELETE FROM sl_Panstwo"});
    Run(countries);
    Run(years);
    Run(c.data);
    CCustomizableWarning brexit = Warning(WarningKind::Brexit, c.filter);
    EXPECT_EQ(brexit.CzyPokazacOstrzenienieBrexit(), c.shows);
    EXPECT_EQ(brexit.DodatkoweWarunkiSpelnione(), c.shows);
    EXPECT_EQ(brexit.ShouldShow(), c.shows);
    EXPECT_TRUE(Warning(WarningKind::General, c.filter).DodatkoweWarunkiSpelnione());
  }
}

TEST_P(CustomizableWarningTest, RowIsCreatedOnFirstUseAndThisProgramsBitSilencesIt) {
  CCustomizableWarning general = Warning(WarningKind::General);
  EXPECT_TRUE(general.ShouldShow());
  EXPECT_TRUE(general.ShouldShow());
  auto rows = m_conn.OpenRS("SELECT ost_IdUzytkownika, ost_NiePokazujWiecejFlagi FROM pd_Ostrzezenia");
  ASSERT_EQ(rows.GetRecordCount(), 1u) << "one row, made once";
  EXPECT_EQ(rows.GetCollect(0).AsInt32(), kUser);
  EXPECT_EQ(rows.GetCollect(1).AsInt32(), 0);

  // The user ticks "don't show again" in the box: the setting toggles this program's bit.
  CMB::DatabaseSetting setting(kMessage, kBit, m_conn, kUser);
  setting.Init();
  setting.HandleBtnClickDontShowAgain(true);
  setting.SaveData();
  EXPECT_FALSE(general.ShouldShow());
  EXPECT_FALSE(Warning(WarningKind::Brexit).ShouldShow());

  m_conn.Execute("DROP TABLE pd_Ostrzezenia");
  EXPECT_THROW(general.ShouldShow(), varion::ComError);
}

INSTANTIATE_TEST_SUITE_P(Backends, CustomizableWarningTest, ::testing::ValuesIn(varion::testing::DatabaseBackends()),
                         varion::testing::BackendTestName);

}  // namespace
