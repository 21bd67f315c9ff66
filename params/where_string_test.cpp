// The WHERE text of report parameters: the SQL Server text of every builder, and the same
// conditions run on real SQLite and PostgreSQL, asserting the rows they select.
#include <gtest/gtest.h>

#include <set>

#include "db/connection.h"
#include "diagnostics/framework_log.h"
#include "params/params_html_ctrl.h"
#include "tests/db_backends.h"

namespace {

using varion::Amount;
using varion::DateTime;
using varion::Variant;

const Variant kNull = Variant::MakeNull();
Variant Day(int y, int m, int d, int h = 0, int mi = 0) { return DateTime(y, m, d, h, mi); }
Variant Money(std::int64_t units, std::int64_t frac = 0) { return Amount::FromUnits(units, frac); }

struct Param {
  int type;
  const char* column;
  Variant value{}, value2{}, value3{};
  std::uint32_t param = 1;
  bool visible = true, empty = false;

  ZEST_PARAMS Record() const {
    ZEST_PARAMS p;
    ZestParams::ZestParamsWrapper(p).SetType(static_cast<ZestParamsType>(type)).SetDbField(column).SetValue(value);
    ZestParams::ZestParamsWrapper(p).SetValue2(value2).SetValue3(value3).SetParam(param).SetVisible(visible).SetEmpty(empty);
    return p;
  }
};

std::string WhereOf(const Param& p, const varion::SqlDialect& dialect = varion::SqlServerDialect()) {
  CParamsHtmlCtrl view;
  view.SetDialect(dialect);
  view.GetParams().Add(p.Record());
  return view.GetWhereString(0);
}

// Rows (id, d, a, s, k) of the table the conditions run on: dates at day boundaries, times of day,
// amounts at the bounds, NULL identifiers, apostrophes and Polish letters.
const char* const kRows[] = {
    "1, '2024-05-30 12:00:00', 9.9999, 'Łódź', 1",         "2, '2024-05-31 00:00:00', 10, 'O''Brien', 2",
    "3, '2024-05-31 23:59:59.999', 15, 'Zażółć gęślą', NULL", "4, '2024-06-01 00:00:00', 20, 'Ołówek', 10",
    "5, '2024-06-01 08:00:00', 20.0001, 'o''brien', 12",      "6, '2024-06-02 12:01:00', -5, 'Gęś', 0",
};

struct Case {
  const char* name;
  Param param;
  const char* sqlServer;  // GetWhereString(index) on SQL Server
  std::set<int> rows;     // what the condition selects on every server
};

const Case kCases[] = {
    {"text equal, apostrophe", {0, "s", "O'Brien", 0x1}, "((s='O''Brien'))", {2}},
    {"text begins with", {0, "s", "Za", 0x100}, "((s LIKE 'Za%'))", {3}},
    {"text contains a Polish letter", {0, "s", "ó", 0x200}, "((s LIKE '%ó%'))", {1, 3, 4}},
    {"text in list", {0, "k", "1, 2", 0x20}, "((k IN (1, 2)))", {1, 2}},
    {"text in list by any-as-IN", {0, "k", "2, 10", 0x800}, "((k IN (2, 10)))", {2, 4}},
    {"text in list or null", {0, "k", "10", 0x30}, "((k IN (10) OR k IS NULL))", {3, 4}},
    {"amount equal", {1, "a", Money(10), {}, 0x1}, "((a=10))", {2}},
    {"amount less", {1, "a", Money(10), {}, 0x2}, "((a<10))", {1, 6}},
    {"amount at most", {1, "a", Money(9, 9999), {}, 0x4}, "((a<=9.9999))", {1, 6}},
    {"amount greater", {1, "a", Money(20), {}, 0x8}, "((a>20))", {5}},
    {"amount at least", {1, "a", Money(20), {}, 0x10}, "((a>=20))", {4, 5}},
    {"amount between", {1, "a", Money(10), Money(20), 0x1000}, "(( (a>=10) AND (a<=20) ))", {2, 3, 4}},
    {"amount negative bound", {1, "a", Money(-5), Money(-5), 0x1000}, "(( (a>=-5) AND (a<=-5) ))", {6}},
    {"date equal", {2, "d", Day(2024, 5, 31), {}, 0x100000}, "((d='20240531'))", {2}},
    {"date less", {2, "d", Day(2024, 5, 31), {}, 0x2}, "((d<'20240531'))", {1}},
    {"date at most: midnight only", {2, "d", Day(2024, 5, 31), {}, 0x400}, "((d<='20240531'))", {1, 2}},
    {"date greater", {2, "d", Day(2024, 6, 1), {}, 0x8}, "((d>'20240601'))", {5, 6}},
    {"date at least", {2, "d", Day(2024, 6, 1), {}, 0x10}, "((d>='20240601'))", {4, 5, 6}},
    {"date named period", {2, "d", Day(2024, 5, 31), Day(2024, 6, 1), 0xB1000},
     "(( (d>='20240531') AND (d<='20240601') ))", {2, 3, 4}},
    {"whole day equal", {20, "d", Day(2024, 5, 31), {}, 0x1}, "((d>='20240531') AND (d<'20240601'))", {2, 3}},
    {"whole day less", {20, "d", Day(2024, 5, 31), {}, 0x2}, "((d<'20240531'))", {1}},
    {"whole day at most", {20, "d", Day(2024, 5, 31), {}, 0x4}, "((d<'20240601'))", {1, 2, 3}},
    {"whole day greater", {20, "d", Day(2024, 5, 31), {}, 0x8}, "((d>='20240601'))", {4, 5, 6}},
    {"whole day at least", {20, "d", Day(2024, 6, 1), {}, 0x10}, "((d>='20240601'))", {4, 5, 6}},
    {"whole day range over a month end", {20, "d", Day(2024, 5, 31), Day(2024, 6, 1), 0x1000},
     "(( (d>='20240531') AND (d<'20240602') ))", {2, 3, 4, 5}},
    {"hour from 8 to 12", {19, "d", Day(2024, 1, 1, 8, 0), Day(2024, 1, 1, 12, 0), kNull},
     "((DATEADD(DAY, -DATEDIFF(day, 0, d), d) >= '08:00:00.000') AND (DATEADD(DAY, -DATEDIFF(day, 0, d), d) <= "
     "'12:00:59.999'))",
     {1, 5}},
    {"hour of midnight", {19, "d", Day(2024, 1, 1), Day(2024, 1, 1), kNull},
     "((DATEADD(DAY, -DATEDIFF(day, 0, d), d) >= '00:00:00.000') AND (DATEADD(DAY, -DATEDIFF(day, 0, d), d) <= "
     "'00:00:59.999'))",
     {2, 4}},
    {"hour of the last minute", {19, "d", Day(2024, 1, 1, 23, 59), Day(2024, 1, 1, 23, 59), kNull},
     "((DATEADD(DAY, -DATEDIFF(day, 0, d), d) >= '23:59:00.000') AND (DATEADD(DAY, -DATEDIFF(day, 0, d), d) <= "
     "'23:59:59.999'))",
     {3}},
    {"single text choice", {9, "s", "Gęś"}, "((s='Gęś'))", {6}},
    {"identifier list with 0 means null too", {6, "k", "0, 12", {}, {}, 0x10}, "((k IN (0, 12) OR k IS NULL))", {3, 5, 6}},
    {"identifier list: first 0 is inside 10", {14, "k", "10, 0", {}, {}, 0x40 | 0x1},
     "((k IN (10, 0) ))", {4, 6}},
    {"identifier list without 0", {5, "k", "10, 12", {}, {}, 0x10}, "((k IN (10, 12) ))", {4, 5}},
    {"identifier list, no null bits", {4, "k", "0, 1"}, "((k IN (0, 1)))", {1, 6}},
    {"one identifier", {7, "k", std::int32_t{2}}, "((k=2))", {2}},
    {"no object", {6, "k", kNull}, "((k IS NULL))", {3}},
};

TEST(WhereString, SqlServerTextOfEachBuilder) {
  for (const Case& c : kCases) {
    SCOPED_TRACE(c.name);
    EXPECT_EQ(WhereOf(c.param), c.sqlServer);
  }
}

TEST(WhereString, NoConditionForBadOrUnknownInput) {
  const Param cases[] = {
      // Unknown operators, operators of another type, values of the wrong kind.
      {0, "s", "x", 0x2}, {0, "s", "x", 0x40}, {0, "s", kNull, 0x1}, {0, "s", "x", "nie liczba"},
      {1, "a", Money(1), {}, 0x400}, {1, "a", "dziesięć", {}, 0x1}, {1, "a", Money(1), "x", 0x1000},
      {2, "d", Day(2024, 1, 1), {}, 0x20}, {2, "d", "nie data", {}, 0x1}, {20, "d", Day(2024, 1, 1), {}, 0x12345},
      {19, "d", Day(2024, 1, 1), Day(2024, 1, 1), std::int32_t{-1}},  // the hour needs a null Value3
      {6, "k", "1, 2", {}, {}, 0x40}, {6, "k", Money(3)},  // identifiers: any; neither list, number nor null
      // Types without a condition of their own, and those of the whole list only.
      {8, "k", std::int32_t{1}}, {-1, "k", std::int32_t{1}}, {21, "k", std::int32_t{1}}, {22, "k", std::int32_t{1}},
      {11, "k", "1"}, {15, "k", "1"}, {10, "k", "1, 2"}, {17, "k", "5, 6"}, {18, "k", "1", 0x20},
      // No column, hidden, empty.
      {0, "", "x", 0x1}, {0, "s", "x", 0x1, {}, 1, false}, {6, "k", std::int32_t{1}, {}, {}, 0x800, true, true},
  };
  for (const Param& p : cases) {
    SCOPED_TRACE(::testing::Message() << "type " << p.type << " op " << p.value2.AsText() << "/" << p.value3.AsText());
    EXPECT_EQ(WhereOf(p), "");
  }
}

// Text that would change the statement's structure, and bounds that cannot be written: each gives
// the condition that selects nothing, and a rejected list leaves a warning naming the parameter.
struct HostileCase {
  const char* name;
  Param param;
  bool logged;  // a list rejected, so a warning names the parameter
};

const HostileCase kHostile[] = {
    {"text IN: closing bracket and OR", {0, "k", "1) OR (1=1", 0x20}, true},
    {"text IN or null: statement after a semicolon", {0, "k", "1); DELETE FROM pt; --", 0x30}, true},
    {"text IN by any-as-IN: a quoted text", {0, "k", "'a'", 0x800}, true},
    {"text IN: empty item", {0, "k", "1,,2", 0x20}, true},
    {"text IN: blanks only", {0, "k", "  ", 0x20}, true},
    {"text IN: NUL byte inside", {0, "k", std::string("1,\0) OR (1=1", 13), 0x20}, true},
    {"text IN: a sign alone", {0, "k", "1, -", 0x20}, true},
    {"identifiers: bracket and OR", {6, "k", "1) OR (1=1"}, true},
    {"identifiers with null for 0: subquery", {4, "k", "0, (SELECT 1)", {}, {}, 0x10}, true},
    {"identifiers: comment", {7, "k", "1 --"}, true},
    {"whole day equal to the last day", {20, "d", Day(9999, 12, 31), {}, 0x1}, false},
    {"whole day at most the last day", {20, "d", Day(9999, 12, 31), {}, 0x4}, false},
    {"whole day after the last day", {20, "d", Day(9999, 12, 31), {}, 0x8}, false},
    {"whole day range to the last day", {20, "d", Day(2024, 1, 1), Day(9999, 12, 31), 0x1000}, false},
};

TEST(WhereString, HostileValuesSelectNothing) {
  std::vector<std::string> log;
  auto previous = varion::SetFrameworkLogSink([&log](std::string_view, std::string_view text) { log.emplace_back(text); });
  for (const HostileCase& c : kHostile) {
    SCOPED_TRACE(c.name);
    log.clear();
    CParamsHtmlCtrl view;
    ZEST_PARAMS record = c.param.Record();
    record.Label = "Kontrahent ąę";
    view.GetParams().Add(record);
    EXPECT_EQ(view.GetWhereString(0), "((1=0))");
    EXPECT_EQ(view.GetWhereString(), "((1=0))");
    ASSERT_EQ(log.size(), c.logged ? 2u : 0u);
    if (c.logged) {
      EXPECT_NE(log[0].find("\"Kontrahent ąę\""), std::string::npos) << log[0];
    }
  }
  // Numbers with signs and blanks anywhere pass as they are; so does a long list.
  EXPECT_EQ(WhereOf({0, "k", " +1,-2 ,\t3 ", 0x20}), "((k IN ( +1,-2 ,\t3 )))");
  EXPECT_EQ(WhereOf({6, "k", "-0, 12", {}, {}, 0x10}), "((k IN (-0, 12) OR k IS NULL))");
  std::string many = "0";
  for (int i = 1; i < 10000; ++i) many += ", " + std::to_string(i);
  EXPECT_EQ(WhereOf({6, "k", many}), "((k IN (" + many + ")))");
  EXPECT_TRUE(log.empty());
  varion::SetFrameworkLogSink(previous);
}

TEST(WhereString, WholeList) {
  auto inColumn = [](const char* column, const Variant& list) {
    ZEST_PARAMS p = ZestParams::ZestParamsEmpty().SetValue(list).SetEmpty(false);
    return ZEST_PARAMS(ZestParams::ZestParamsWrapper(p).SetSqlInColumn(column));
  };
  struct ListCase {
    const char* name;
    std::vector<ZEST_PARAMS> params;
    const char* whole;
    std::vector<std::string> single;  // GetWhereString(i) of each
  } cases[] = {
      {"all empty, no bits", {Param{1, "a", Money(1), {}, 0x1, 1, true, true}.Record(), Param{6, "k", "1", {}, {}, 0x1, true, true}.Record()}, "", {"", ""}},
      {"empty identifiers with an any-as-IN bit still count",
       {Param{6, "k", "1, 2", {}, {}, 0x800, false, true}.Record(), Param{1, "a", Money(1), {}, 0x1, 1, true, true}.Record()},
       "((k IN (1, 2)))", {"", ""}},
      {"never in the list, still alone", {Param{1, "a", Money(5), {}, 0x10, 0x1000000}.Record(), Param{7, "k", std::int32_t{2}}.Record()},
       "((k=2))", {"((a>=5))", "((k=2))"}},
      {"checklist, lookup and multiselection only in the list",
       {Param{10, "k", "1, 2"}.Record(), Param{17, "c", "5, 6"}.Record(), Param{18, "m", "3", 0x20}.Record()},
       "((k IN (1, 2)) AND (c IN (5, 6)) AND (m IN (3)))", {"", "", ""}},
      {"IN filters of columnless parameters bring their own AND",
       {inColumn("a", "1, 2"), Param{0, "s", "x", 0x40}.Record(), inColumn("b", "7"), Param{7, "k", std::int32_t{2}}.Record()},
       "(a IN (1, 2) AND b IN (7) AND (k=2))", {"", "", "", "((k=2))"}},
      {"IN filter skips a non-text value", {inColumn("a", ""), inColumn("b", std::int32_t{7})}, "", {"", ""}},
      {"IN filter of a text that is not a list selects nothing",
       {inColumn("a", "1) OR (1=1"), Param{7, "k", std::int32_t{2}}.Record()}, "((1=0) AND (k=2))", {"", "((k=2))"}},
  };
  for (const ListCase& c : cases) {
    SCOPED_TRACE(c.name);
    CParamsHtmlCtrl view;
    for (const ZEST_PARAMS& p : c.params) view.GetParams().Add(p);
    EXPECT_EQ(view.GetWhereString(), c.whole);
    for (std::size_t i = 0; i < c.single.size(); ++i) EXPECT_EQ(view.GetWhereString(static_cast<int>(i)), c.single[i]);
  }
}

class WhereOnServer : public ::testing::TestWithParam<std::string> {
 protected:
  WhereOnServer() : m_db(GetParam()), m_conn(m_db.Connect()) {
    const varion::SqlDialect& d = m_conn.Dialect();
    m_conn.Execute(std::string("CREATE TABLE pt (id INT, d ") + d.DateTimeType() + ", a " + d.AmountType() + ", s " +
                   d.TextType(100) + ", k INT)");
    for (const char* row : kRows) m_conn.Execute(std::string("INSERT INTO pt VALUES (") + row + ")");
  }

  std::set<int> Select(const std::string& where) const {
    std::set<int> ids;
    for (auto rs = m_conn.OpenRS("SELECT id FROM pt" + (where.empty() ? "" : " WHERE " + where)); !rs.IsEOF(); rs.MoveNext())
      ids.insert(rs.GetCollect(0).AsInt32());
    return ids;
  }

  varion::testing::TestDatabase m_db;
  varion::db::Connection m_conn;
};

TEST_P(WhereOnServer, EachConditionSelectsTheRowsMeant) {
  for (const Case& c : kCases) {
    const std::string where = WhereOf(c.param, m_conn.Dialect());
    SCOPED_TRACE(std::string(c.name) + ": " + where);
    EXPECT_EQ(Select(where), c.rows);
  }
}

TEST_P(WhereOnServer, HostileValuesSelectNoRows) {
  auto previous = varion::SetFrameworkLogSink([](std::string_view, std::string_view) {});
  for (const HostileCase& c : kHostile) {
    const std::string where = WhereOf(c.param, m_conn.Dialect());
    SCOPED_TRACE(std::string(c.name) + ": " + where);
    EXPECT_EQ(Select(where), std::set<int>{});
  }
  varion::SetFrameworkLogSink(previous);
}

TEST_P(WhereOnServer, WholeListIsTheIntersection) {
  CParamsHtmlCtrl view;
  view.SetConnection(m_conn);
  view.GetParams().Add(Param{1, "a", Money(10), Money(20), 0x1000}.Record());
  view.GetParams().Add(Param{20, "d", Day(2024, 5, 31), {}, 0x4}.Record());
  view.GetParams().Add(Param{6, "k", "0, 2, 10", {}, {}, 0x10}.Record());
  view.GetParams().Add(Param{0, "s", "x", 0x40}.Record());
  EXPECT_EQ(Select(view.GetWhereString()), (std::set<int>{2, 3}));
}

INSTANTIATE_TEST_SUITE_P(Backends, WhereOnServer, ::testing::ValuesIn(varion::testing::DatabaseBackends()),
                         varion::testing::BackendTestName);

}  // namespace
