#include "db/schema/schema.h"

#include <gtest/gtest.h>

#include <set>

namespace varion::db::schema {
namespace {

TEST(SchemaTest, SqlServerStatementsAreExact) {
  const auto statements = CreateStatements(SqlServerDialect());
  auto has = [&](const std::string& sql) { return std::find(statements.begin(), statements.end(), sql) != statements.end(); };
  EXPECT_TRUE(has("CREATE TABLE pd_Ostrzezenia (ost_Id INT IDENTITY(1,1) PRIMARY KEY, ost_NumerProgramowy INT NOT NULL, "
                  "ost_IdUzytkownika INT NOT NULL, ost_NiePokazujWiecejFlagi INT NOT NULL, "
                  "ost_PokazujRazDlaWszystkich INT NOT NULL)"));
  EXPECT_TRUE(has("CREATE UNIQUE INDEX IX_cge_Klucz ON gr__KonfiguracjaEx (cge_Section, cge_User, cge_Service)"));
  EXPECT_TRUE(has("CREATE TABLE vw_KonfiguracjaDialogu (vwcg_Id INT IDENTITY(1,1) PRIMARY KEY, vwcg_Section VARCHAR(255) "
                  "NOT NULL, vwcg_User INT NOT NULL, vwcg_Service INT NOT NULL, vwcg_Data IMAGE, vwcg_FiltersData IMAGE)"));
}

TEST(SchemaTest, NamesAreUniqueAndKeysComeFirst) {
  std::set<std::string> tables;
  for (const TableDef& t : Tables()) {
    SCOPED_TRACE(t.name);
    EXPECT_TRUE(tables.insert(t.name).second);
    ASSERT_FALSE(t.columns.empty());
    EXPECT_EQ(t.columns[0].kind, ColumnKind::Id);
    std::set<std::string> columns;
    for (const ColumnDef& c : t.columns) EXPECT_TRUE(columns.insert(c.name).second) << c.name;
    EXPECT_EQ(FindTable(t.name), &t);
  }
  EXPECT_EQ(FindTable("LOG_LOGOWANIE"), FindTable("log_Logowanie"));
  EXPECT_EQ(FindTable("nie_ma"), nullptr);
}

}  // namespace
}  // namespace varion::db::schema
