// Every dictionary of the named fillers and filter combos read from a real database on every
// backend: the schema's tables, the seventh-character rule and the distinct query on each server.
#include "framework/fill_dictionaries.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>

#include "base/status.h"
#include "framework/fill_test_data.h"
#include "tests/db_backends.h"

namespace varion::fill {
namespace {

class FillOnServer : public ::testing::TestWithParam<std::string> {
 protected:
  FillOnServer() : m_db(GetParam()), m_conn(m_db.Connect()) { testing::CreateFillDatabase(m_conn); }
  testing::TestDatabase m_db;
  db::Connection m_conn;
};

Items SortedByData(Items items) {
  std::stable_sort(items.begin(), items.end(), [](const Item& a, const Item& b) { return a.data < b.data; });
  return items;
}

TEST_P(FillOnServer, EveryDictionaryGivesItsExtrasThenItsRows) {
  std::set<std::string> covered;
  for (const auto& c : testing::DictionaryCases()) {
    SCOPED_TRACE(c.name);
    covered.insert(c.name);
    const Dictionary* d = FindDictionary(c.name);
    ASSERT_NE(d, nullptr);
    // Rows come in the server's order (the statements have no ORDER BY); the extras always first.
    EXPECT_EQ(SortedByData(LoadDictionary(m_conn, *d, kNoExtras, c.numbers)), c.rows);
    const Items all = LoadDictionary(m_conn, *d, kAllExtras, c.numbers);
    std::size_t extras = 0;
    for (const ExtraItem& e : d->extras)
      if (e.text) {
        ASSERT_LT(extras, all.size());
        EXPECT_EQ(all[extras], (Item{e.text, e.data}));
        ++extras;
      }
    EXPECT_EQ(SortedByData(Items(all.begin() + static_cast<std::ptrdiff_t>(extras), all.end())), c.rows);
    if (d->extras[1].text) {  // the mask picks each extra on its own
      EXPECT_EQ(LoadDictionary(m_conn, *d, 2, c.numbers).front(), (Item{d->extras[1].text, d->extras[1].data}));
      EXPECT_EQ(LoadDictionary(m_conn, *d, 1, c.numbers).size(), c.rows.size() + 1);
    }
  }
  for (const Dictionary& d : Dictionaries()) EXPECT_TRUE(covered.count(d.name)) << d.name << " has no case";
}

TEST_P(FillOnServer, QueriesTablesAndDistinctValuesRunOnTheServer) {
  struct Case {
    std::string sql;
    RowFormat format;
    Items expected;
  } cases[] = {
      {SourceSql("sl_Panstwo"), {"%1!ls! (%2!ls!)", {"pa_Nazwa", "pa_KodPanstwaISO"}, "pa_Id"},
       {{"Polska (PL)", 1}, {"Niemcy (DE)", 2}}},
      {SourceSql("SELECT pa_Id, pa_Nazwa FROM sl_Panstwo WHERE pa_KodPanstwaISO = 'DE'"), {"%1!ls!", {"pa_Nazwa"}, "pa_Id"},
       {{"Niemcy", 2}}},
      // The distinct values in text order: three codes, two of them the same.
      {DistinctSql("1 AS ID", "kz_Kod", "sl_KodZus", ""), {"%1!ls!", {"TEXT_FIELD"}, "ID"}, {{"0110", 1}, {"0411", 1}}},
      {DistinctSql("kz_Kod", "kz_Kod", "sl_KodZus", "kz_Nazwa <> 'duplikat'"), {"%1!ls!", {"TEXT_FIELD"}, "kz_Kod"},
       {{"0110", 110}, {"0411", 411}}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.sql);
    db::Recordset rs = m_conn.OpenRS(c.sql);
    Items items = ReadItems(rs, c.format);
    if (c.sql.find("DISTINCT") == std::string::npos) items = SortedByData(items);
    EXPECT_EQ(items, c.expected);
  }
}

TEST_P(FillOnServer, AFailingQueryRaises) {
  const Dictionary broken{"Zepsuty", "sl_NieMaTakiejTabeli", "%1!ls!", {"x"}, "x_Id", {{"(dowolny)", kAnyItem}, {}}};
  EXPECT_THROW(LoadDictionary(m_conn, broken), ComError);
  const Dictionary wrongField{"ZlePole", "sl_Kasa", "%1!ls!", {"kas_Nieistniejace"}, "kas_Id", {}};
  try {
    LoadDictionary(m_conn, wrongField);
    ADD_FAILURE() << "read";
  } catch (const ComError& e) {
    EXPECT_EQ(e.Code(), kPointer);
  }
}

INSTANTIATE_TEST_SUITE_P(Backends, FillOnServer, ::testing::ValuesIn(varion::testing::DatabaseBackends()),
                         varion::testing::BackendTestName);

}  // namespace
}  // namespace varion::fill
