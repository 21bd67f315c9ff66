#include "controls/nip_unique.h"

#include <gtest/gtest.h>

#include <set>

#include "db/schema/schema.h"
#include "tests/db_backends.h"

namespace {

using varion::testing::TestDatabase;

TEST(CzyNipUnikalny, SqlServerStatement) {
  EXPECT_EQ(CzyNipUnikalnySql(varion::SqlServerDialect(), "PL 526-025-02-74", 7, 10),
            "SELECT TOP 10 adr_Id, COALESCE(adr_Nazwa, 'BRAK') AS adr_Nazwa, COALESCE(adr_NazwaPelna, 'BRAK') AS "
            "adr_NazwaPelna FROM adr__Ewid LEFT JOIN kh__Kontrahent ON adr_IdObiektu = kh_Id WHERE adr_TypAdresu = 1 "
            "AND REPLACE(REPLACE(UPPER(kh_Nip), '-', ''), ' ', '') IN ('5260250274', 'PL5260250274') AND kh_Id<>7 "
            "AND kh_OdbDet=0 ORDER BY adr_Id");
  EXPECT_EQ(CzyNipUnikalnySql(varion::SqlServerDialect(), "", 7, 10), "");
  EXPECT_EQ(CzyNipUnikalnySql(varion::SqlServerDialect(), "NIP: 123", 7, 10), "");  // no number in it
}

class NipUniqueTest : public ::testing::TestWithParam<std::string> {
 protected:
  void SetUp() override {
    m_db = std::make_unique<TestDatabase>(GetParam());
    m_connection = m_db->Connect();
    varion::db::schema::CreateSchema(m_connection);
    // Contractors 1..5 with their numbers written in different ways; 3 is a detail recipient.
    const char* contractors[] = {"('A', 'Alfa', '526-025-02-74', 0)", "('B', 'Beta', 'pl5260250274', 0)",
                                 "('C', 'Beta odbiorca', '5260250274', 1)", "('D', 'Delta GmbH', 'DE 123456789', 0)",
                                 "('E', 'Epsilon', '1234563218', 0)"};
    for (const char* row : contractors)
      m_connection.Execute(std::string("INSERT INTO kh__Kontrahent (kh_Symbol, kh_Nazwa, kh_Nip, kh_OdbDet) VALUES ") +
                           row);
    // Main addresses (type 1) of each, a second address of contractor 1, no full name for 2.
    const char* addresses[] = {"(1, 1, 'Alfa', 'Alfa sp. z o.o.')", "(2, 1, 'Beta', NULL)",
                               "(3, 1, 'Beta odb.', 'Beta odbiorca')", "(4, 1, 'Delta', 'Delta GmbH')",
                               "(5, 1, 'Epsilon', 'Epsilon S.A.')", "(1, 2, 'Alfa magazyn', 'Alfa magazyn')"};
    for (const char* row : addresses)
      m_connection.Execute(
          std::string("INSERT INTO adr__Ewid (adr_IdObiektu, adr_TypAdresu, adr_Nazwa, adr_NazwaPelna) VALUES ") + row);
  }

  std::unique_ptr<TestDatabase> m_db;
  varion::db::Connection m_connection;
};

TEST_P(NipUniqueTest, FindsOtherContractorsWithTheNumber) {
  struct Case {
    const char* nip;
    long editing, maxRows;
    std::set<std::string> clashes;  // adr_Nazwa / adr_NazwaPelna of the rows found
  } cases[] = {
      {"5260250274", 1, 10, {"Beta/BRAK"}},
      {"PL 526-025-02-74", 0, 10, {"Alfa/Alfa sp. z o.o.", "Beta/BRAK"}},
      {"526-025-02-74", 2, 10, {"Alfa/Alfa sp. z o.o."}},
      {"de123456789", 0, 10, {"Delta/Delta GmbH"}},
      {"123456789", 0, 10, {}},  // without its prefix a foreign number is another number
      {"1234563218", 5, 10, {}},
      {"9999999999", 0, 10, {}},
      {"", 0, 10, {}},
      {nullptr, 0, 10, {}},
      {"x'; DROP TABLE kh__Kontrahent; --", 0, 10, {}},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.nip ? c.nip : "(null)");
    auto [unique, rows] = CzyNipUnikalny(m_connection, c.nip, c.editing, c.maxRows);
    std::set<std::string> found;
    for (; !rows.IsEOF(); rows.MoveNext())
      found.insert(rows.GetCollect("adr_Nazwa").AsText() + "/" + rows.GetCollect("adr_NazwaPelna").AsText());
    EXPECT_EQ(found, c.clashes);
    EXPECT_EQ(unique, c.clashes.empty());
  }
  auto [unique, rows] = CzyNipUnikalny(m_connection, "5260250274", 0, 1);
  EXPECT_FALSE(unique);
  EXPECT_EQ(rows.GetRecordCount(), 1u);
  EXPECT_EQ(m_connection.OpenRS("SELECT kh_Id FROM kh__Kontrahent").GetRecordCount(), 5u);
}

INSTANTIATE_TEST_SUITE_P(Backends, NipUniqueTest, ::testing::ValuesIn(varion::testing::DatabaseBackends()),
                         varion::testing::BackendTestName);

}  // namespace
