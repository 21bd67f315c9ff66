#include "params/params_container.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>

#include "db/rt_instance.h"
#include "db/schema/schema.h"
#include "params/param_hist_tools.h"
#include "tests/db_backends.h"

namespace {

using varion::DateTime;
using varion::Variant;

// A container with its default parameters on a fixed day, 15 May 2024.
struct Report : CZestParamsContainer {
  Report() { SetClock(&clock), CreateDefParams(); }
  void Set(const char* name, const Variant& value) {
    ZEST_PARAMS* p = FindParam(name);
    if (!p) p = &GetParams()[GetParams().Add(ZestParams::ZestParamsSelectionDbObject())];
    p->AuxText = name;
    p->Value = value;
    p->Empty = value.IsEmptyOrNull();
  }
  DateTools::FixedClock clock{DateTime(2024, 5, 15, 9, 30)};
};

// Knows one custom field.
struct Provider : IFlgPolaWlasne {
  std::string ParseSql(const std::string& sql) override {
    std::string s = sql;
    return s.replace(s.find("{tw_Towar.tw_Nazwa}"), 19, "tw_Nazwa");
  }
};

TEST(FormatSql, TagsLiteralsAndPlaceholders) {
  Report r;
  ASSERT_EQ(CZestParamsContainer::g_tags.size(), 8u);
  EXPECT_EQ(CZestParamsContainer::g_tags.at("POPRZEDNI_MIESIAC").first, 19);
  r.Set("MAGAZYN", std::int32_t{2});
  Provider provider;
  struct Case {
    const char* sql;
    const char* expected;
    bool withProvider;
  } cases[] = {
      {"SELECT * FROM d WHERE m = WYBRANY_MAGAZYN AND d BETWEEN WYBRANY_OKRES_OD AND WYBRANY_OKRES_DO",
       "SELECT * FROM d WHERE m = 2 AND d BETWEEN '20240501' AND '20240531'", false},
      {"x = 'WYBRANY_MAGAZYN' AND y='it''s WYBRANY_MAGAZYN' AND WYBRANY_MAGAZYNY = NIEZNANY_TAG",
       "x = 'WYBRANY_MAGAZYN' AND y='it''s WYBRANY_MAGAZYN' AND WYBRANY_MAGAZYNY = NIEZNANY_TAG", false},
      {"BIEZACY_ROK_OD <= q AND q <= OSTATNIE_7_DNI_DO AND q > POPRZEDNI_MIESIAC_OD AND BIEZACY_ROK = 1",
       "'20240101' <= q AND q <= '20240515' AND q > '20240401' AND BIEZACY_ROK = 1", false},
      {"SELECT {tw_Towar.tw_Nazwa}, {kh__Kontrahent.kh_Nazwa} FROM t WHERE {abc} = {a_b.cd}",
       "SELECT NULL, NULL FROM t WHERE {abc} = {a_b.cd}", false},
      {"SELECT {tw_Towar.tw_Nazwa}, {kh__Kontrahent.kh_Nazwa} FROM t", "SELECT tw_Nazwa, NULL FROM t", true},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.sql);
    r.SetPolaWlasne(c.withProvider ? &provider : nullptr);
    std::string sql = c.sql;
    EXPECT_EQ(r.FormatSql(sql), varion::kOk);
    EXPECT_EQ(sql, c.expected);
  }
}

TEST(FormatSql, DatabaseErrorIsReturnedAndTheSqlKept) {
  Report r;  // no running instance: the employees cannot be read
  std::string sql = "SELECT 1 WHERE p IN (ID_PRACOWNIKA)";
  EXPECT_EQ(r.FormatSql(sql), varion::kDbNotOpen);
  EXPECT_EQ(sql, "SELECT 1 WHERE p IN (ID_PRACOWNIKA)");
}

TEST(ZestParamsContainer, StoredConfigurationRoundTrip) {
  Report saved;
  saved.Set("MAGAZYN", std::int32_t{3});
  saved.Set("UZYTKOWNIK", std::int32_t{42});  // never replaced from history
  saved.Set("TYLKO_TU", "1, 2");              // no such parameter where it is loaded
  varion::db::MemoryStream stream;
  ASSERT_EQ(saved.SaveCfg(stream), varion::kOk);

  Report loaded;
  loaded.clock.Set(DateTime(2025, 2, 3));  // the stored period is "bieżący miesiąc": now February 2025
  loaded.Set("UZYTKOWNIK", std::int32_t{7});
  stream.Seek(0, varion::db::SeekOrigin::Begin, nullptr);
  ASSERT_EQ(loaded.LoadCfg(stream), varion::kOk);
  EXPECT_TRUE(loaded.FindParam("MAGAZYN")->Value == Variant(std::int32_t{3}) && !loaded.FindParam("MAGAZYN")->Empty);
  EXPECT_TRUE(loaded.FindParam("UZYTKOWNIK")->Value == Variant(std::int32_t{7}) && !loaded.FindParam("TYLKO_TU"));
  EXPECT_EQ(loaded.FindParam("OKRES")->DisplayValue + " " + loaded.FindParam("OKRES")->ValueStr,
            "bieżący miesiąc 2025-02-01 AND 2025-02-28");

  // A broken or foreign stream changes nothing.
  std::vector<std::uint8_t> bytes = stream.Bytes();
  for (std::size_t cut : {std::size_t{0}, std::size_t{3}, bytes.size() / 2, bytes.size() - 1}) {
    SCOPED_TRACE(cut);
    varion::db::MemoryStream broken(std::vector<std::uint8_t>(bytes.begin(), bytes.begin() + cut));
    Report untouched;
    EXPECT_EQ(untouched.LoadCfg(broken), varion::kFail);
    EXPECT_TRUE(untouched.FindParam("MAGAZYN")->Empty);
  }
}

TEST(ParamHistTools, ListNamesExactlyTheParametersNotToReplace) {
  const std::wstring list = ParamHistTools::GetNotUpdatableParametersList();
  ASSERT_TRUE(!list.empty() && list.front() == L'\'' && list.back() == L'\'');
  std::size_t names = 0;
  for (std::size_t at = 1, end; (end = list.find(L'\'', at)) != std::wstring::npos; at = end + 3, ++names)
    EXPECT_FALSE(ParamHistTools::IsParameterUpdatable(list.substr(at, end - at)));
  EXPECT_EQ(names, static_cast<std::size_t>(std::count(list.begin(), list.end(), L',') + 1));
  EXPECT_TRUE(ParamHistTools::IsParameterUpdatable(L"OKRES"));
}

// Report SQL with tags, run on real servers after substitution.
class ReportSql : public ::testing::TestWithParam<std::string> {
 protected:
  ReportSql() : m_db(GetParam()), m_conn(m_db.Connect()) {
    varion::db::schema::CreateSchema(m_conn);
    m_conn.Execute(std::string("CREATE TABLE dok (id INT, mag INT, uz INT, pr INT, data ") + m_conn.Dialect().DateTimeType() + ")");
    // Documents: id, warehouse, user, employee, date.
    for (const char* sql : {"pr_Pracownik (pr_Imie) VALUES ('Ewa')", "pr_Pracownik (pr_Imie) VALUES ('Łucja')",
                            "ctx_Grupa (ctg_Nazwa, ctg_Sql) VALUES ('Handlowcy', 'SELECT 5 UNION SELECT 6')",
                            "dok VALUES (1, 2, 5, 1, '2024-05-01 00:00:00')", "dok VALUES (2, 2, 5, 2, '2024-05-31 00:00:00')",
                            "dok VALUES (3, 2, 6, 1, '2024-06-01 00:00:00')", "dok VALUES (4, 1, 5, 1, '2024-05-10 00:00:00')",
                            "dok VALUES (5, 2, 9, 2, '2024-04-30 00:00:00')", "dok VALUES (6, 2, 6, 2, '2024-05-20 00:00:00')"})
      m_conn.Execute(std::string("INSERT INTO ") + sql);
    CRtInstance::Install({m_conn, 5, "ADMIN", ""});
  }
  ~ReportSql() override { CRtInstance::Uninstall(); }

  std::set<int> Run(Report& report, const char* sql) {
    report.SetDialect(m_conn.Dialect());
    std::string text = sql;
    EXPECT_EQ(report.FormatSql(text), varion::kOk);
    std::set<int> ids;
    for (auto rs = m_conn.OpenRS(text); !rs.IsEOF(); rs.MoveNext()) ids.insert(rs.GetCollect(0).AsInt32());
    return ids;
  }

  varion::testing::TestDatabase m_db;
  varion::db::Connection m_conn;
};

TEST_P(ReportSql, TagsSelectTheRowsOfTheChosenValues) {
  const char* sql =
      "SELECT id FROM dok WHERE mag = WYBRANY_MAGAZYN AND data >= WYBRANY_OKRES_OD AND data <= WYBRANY_OKRES_DO "
      "AND uz IN (ID_UZYTKOWNIKA_CRM) AND pr IN (ID_PRACOWNIKA) AND {dok_Dokument.dok_Uwagi} IS NULL";
  struct Case {
    const char* name;
    Variant warehouse, employee, group;
    std::set<int> rows;
  } cases[] = {
      {"warehouse 2 in May, own rows, any employee", std::int32_t{2}, {}, {}, {1, 2}},
      {"one employee", std::int32_t{2}, std::int32_t{2}, {}, {2}},
      {"users of a CRM group", std::int32_t{2}, {}, std::int32_t{1}, {1, 2, 6}},
      {"no warehouse chosen", Variant::MakeNull(), {}, {}, {}},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    Report r;
    r.Set("MAGAZYN", c.warehouse);
    r.Set("PRACOWNIK", c.employee);
    r.Set("GRUPA_CRM", c.group);
    EXPECT_EQ(Run(r, sql), c.rows);
  }
  // Without any employee the list is NULL and selects nothing.
  m_conn.Execute("DELETE FROM pr_Pracownik");
  Report r;
  EXPECT_EQ(Run(r, "SELECT id FROM dok WHERE pr IN (ID_PRACOWNIKA) OR id = 4"), (std::set<int>{4}));
}

INSTANTIATE_TEST_SUITE_P(Backends, ReportSql, ::testing::ValuesIn(varion::testing::DatabaseBackends()),
                         varion::testing::BackendTestName);

}  // namespace
