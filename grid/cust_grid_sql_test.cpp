#include <gtest/gtest.h>

#include <algorithm>
#include <functional>

#include "grid/grid_test_lists.h"

namespace varion {
namespace {

using testing::MakeSampleCfg;
using namespace varion::testing;

const std::string kFields =
    "kh.kh_Id,kh.kh_Symbol,kh.kh_Nazwa,adr.adr_Miejscowosc AS Miasto,pa.pa_Nazwa,kh.kh_Obrot,"
    "kh_Symbol || ' ' || kh_Nazwa AS Etykieta,NULL AS Uwagi";
const std::string kFrom =
    "kh__Kontrahent AS kh LEFT JOIN adr__Ewid AS adr ON kh.kh_Id=adr.adr_IdObiektu AND adr.adr_TypAdresu = 1"
    " LEFT JOIN sl_Panstwo AS pa ON adr.adr_IdPanstwo=pa.pa_Id";
const std::string kHead = "SELECT " + kFields + " FROM " + kFrom;

TEST(MakeSQL, StandardStatementFollowsTheConfiguration) {
  struct Case {
    const char* name;
    std::function<void(CMapCustGridCfg&)> change;
    std::string sql;
    bool allColumns = false;
  } cases[] = {
      {"plain", [](CMapCustGridCfg&) {}, kHead + " WHERE kh.kh_Aktywny = 1 ORDER BY kh.kh_Symbol"},
      {"filter then user condition",
       [](CMapCustGridCfg& c) {
         c.SetUserWhere("kh.kh_Symbol LIKE 'A%'");
         c.SetFilterWhere("kh.kh_Typ = 2");
       },
       kHead + " WHERE kh.kh_Aktywny = 1 AND kh.kh_Typ = 2 AND kh.kh_Symbol LIKE 'A%' ORDER BY kh.kh_Symbol"},
      {"inactive filter",
       [](CMapCustGridCfg& c) {
         c.SetFilterWhere("kh.kh_Typ = 2");
         c.ActivateFilter(false);
       },
       kHead + " WHERE kh.kh_Aktywny = 1 ORDER BY kh.kh_Symbol"},
      {"joined table condition keeps rows without a joined row",
       [](CMapCustGridCfg& c) { c.SetTableWhere(kTabAddress, "adr.adr_Kraj = 'PL'"); },
       kHead + " WHERE ((adr_Id is NULL) OR (adr.adr_Kraj = 'PL')) AND kh.kh_Aktywny = 1 ORDER BY kh.kh_Symbol"},
      {"main table condition and an appended one",
       [](CMapCustGridCfg& c) {
         c.SetTableWhere(kTabContractor, "kh.kh_Typ <> 3");
         c.AppendTableWhere(kTabContractor, "kh.kh_Id > 0");
       },
       kHead + " WHERE kh.kh_Typ <> 3 AND kh.kh_Id > 0 AND kh.kh_Aktywny = 1 ORDER BY kh.kh_Symbol"},
      {"unknown table identifier names the main table",
       [](CMapCustGridCfg& c) { c.SetTableWhere(77, "kh.kh_Typ <> 3"); },
       kHead + " WHERE kh.kh_Typ <> 3 AND kh.kh_Aktywny = 1 ORDER BY kh.kh_Symbol"},
      {"personal data table with its flag", [](CMapCustGridCfg& c) { c.SetUsePwTable(true); },
       kHead + " LEFT JOIN pw_Dane AS PwDane ON kh.kh_Id=PwDane.pwd_IdObiektu WHERE kh.kh_Aktywny = 1"
               " ORDER BY kh.kh_Symbol"},
      {"descending without sections", [](CMapCustGridCfg& c) { c.SetAscending(false); },
       kHead + " WHERE kh.kh_Aktywny = 1 ORDER BY kh.kh_Symbol DESC"},
      {"descending section used as it stands",
       [](CMapCustGridCfg& c) {
         c.SetOrderBySection(kColSymbol, "kh.kh_Symbol, kh.kh_Id", "kh.kh_Symbol DESC, kh.kh_Id");
         c.SetAscending(false);
       },
       kHead + " WHERE kh.kh_Aktywny = 1 ORDER BY kh.kh_Symbol DESC, kh.kh_Id"},
      {"descending from the ascending section",
       [](CMapCustGridCfg& c) {
         c.SetOrderBySection(kColSymbol, "kh.kh_Symbol, kh.kh_Id", "");
         c.SetAscending(false);
       },
       kHead + " WHERE kh.kh_Aktywny = 1 ORDER BY kh.kh_Symbol, kh.kh_Id DESC"},
      {"ascending section", [](CMapCustGridCfg& c) { c.SetOrderBySection(kColSymbol, "kh.kh_Nazwa", "x"); },
       kHead + " WHERE kh.kh_Aktywny = 1 ORDER BY kh.kh_Nazwa"},
      {"expression sorts by its result name", [](CMapCustGridCfg& c) { c.SetSortColumnID(kColLabel); },
       kHead + " WHERE kh.kh_Aktywny = 1 ORDER BY Etykieta"},
      {"joined column sorts by alias and field", [](CMapCustGridCfg& c) { c.SetSortColumnID(kColCity); },
       kHead + " WHERE kh.kh_Aktywny = 1 ORDER BY adr.adr_Miejscowosc"},
      {"no sort column", [](CMapCustGridCfg& c) { c.SetSortColumnID(0); }, kHead + " WHERE kh.kh_Aktywny = 1"},
      {"unknown sort column", [](CMapCustGridCfg& c) { c.SetSortColumnID(500); },
       kHead + " WHERE kh.kh_Aktywny = 1"},
      {"group by before order by", [](CMapCustGridCfg& c) { c.SetGroupBy("kh.kh_Symbol"); },
       kHead + " WHERE kh.kh_Aktywny = 1 GROUP BY kh.kh_Symbol ORDER BY kh.kh_Symbol"},
      {"all columns take hidden ones but not those never shown", [](CMapCustGridCfg&) {},
       "SELECT " + kFields + ",kh.tc_CenaNetto FROM " + kFrom + " WHERE kh.kh_Aktywny = 1 ORDER BY kh.kh_Symbol",
       true},
      {"hidden column leaves the field list",
       [](CMapCustGridCfg& c) {
         c.SetVisible(kColCity, false);
         c.SetVisible(kColCountry, false);
       },
       "SELECT kh.kh_Id,kh.kh_Symbol,kh.kh_Nazwa,kh.kh_Obrot,kh_Symbol || ' ' || kh_Nazwa AS Etykieta,"
       "NULL AS Uwagi FROM " + kFrom + " WHERE kh.kh_Aktywny = 1 ORDER BY kh.kh_Symbol"},
      {"renamed field", [](CMapCustGridCfg& c) { c.SetDBFieldName(kColName, "kh_NazwaPelna"); },
       "SELECT kh.kh_Id,kh.kh_Symbol,kh.kh_NazwaPelna,adr.adr_Miejscowosc AS Miasto,pa.pa_Nazwa,kh.kh_Obrot,"
       "kh_Symbol || ' ' || kh_Nazwa AS Etykieta,NULL AS Uwagi FROM " + kFrom +
           " WHERE kh.kh_Aktywny = 1 ORDER BY kh.kh_Symbol"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    CMapCustGridCfg cfg = MakeSampleCfg();
    c.change(cfg);
    std::string sql = "untouched";
    ASSERT_EQ(cfg.MakeSQL(sql, c.allColumns), kOk);
    EXPECT_EQ(sql, c.sql);
    EXPECT_FALSE(cfg.IsSQLChanged());
  }
}

TEST(MakeSQL, HiddenSortColumnDropsOrderByAndResetsTheSortColumn) {
  CMapCustGridCfg cfg = MakeSampleCfg();
  cfg.SetSortColumnID(kColPrice);
  std::string sql;
  ASSERT_EQ(cfg.MakeSQL(sql), kOk);
  EXPECT_EQ(sql, kHead + " WHERE kh.kh_Aktywny = 1");
  EXPECT_EQ(cfg.GetSortColumnID(), 0);
}

TEST(MakeSQL, TablesOtherThanTheSampleOnes) {
  const CVelColInfo expression = [] {
    CVelColInfo c = SampleColumnInfo(1, 1, "CURRENT_DATE AS Dzis", "Dziś");
    c.isExpression = 1;
    c.resultName = "Dzis";
    return c;
  }();
  const CVelColInfo plain = SampleColumnInfo(1, 1, "kh_Symbol", "Symbol");
  const CVelColInfo child = SampleColumnInfo(2, 2, "adr_Ulica", "Ulica");
  const CVelColInfo twoColumns[] = {plain, child};
  struct Case {
    const char* name;
    std::vector<CVelTableInfo> tables;
    std::vector<CVelColInfo> columns;
    bool ignoreEmptyMain;
    std::string sql;
  } cases[] = {
      {"empty main table with the flag: no FROM", {{1, 0, 0, "x", "", "", "", "", 0, 0, ""}}, {expression}, true,
       "SELECT CURRENT_DATE AS Dzis"},
      {"empty main table without the flag", {{1, 0, 0, "x", "", "", "", "", 0, 0, ""}}, {expression}, false,
       "SELECT CURRENT_DATE AS Dzis FROM  AS x"},
      {"only a main table", {{1, 0, 0, "kh", "kh__Kontrahent", "kh_Id", "", "", 0, 0, ""}}, {plain}, false,
       "SELECT kh.kh_Symbol FROM kh__Kontrahent AS kh"},
      {"undeclared parent joins the main table",
       {{1, 0, 0, "kh", "kh__Kontrahent", "kh_Id", "", "", 0, 0, ""},
        {2, 0, 99, "adr", "adr__Ewid", "adr_Id", "adr_IdObiektu", "", 0, 0, ""}},
       {twoColumns[0], twoColumns[1]}, false,
       "SELECT kh.kh_Symbol,adr.adr_Ulica FROM kh__Kontrahent AS kh LEFT JOIN adr__Ewid AS adr ON "
       "kh.kh_Id=adr.adr_IdObiektu"},
      {"column of an undeclared table reads the main table",
       {{1, 0, 0, "kh", "kh__Kontrahent", "kh_Id", "", "", 0, 0, ""}}, {twoColumns[0], twoColumns[1]}, false,
       "SELECT kh.kh_Symbol,kh.adr_Ulica FROM kh__Kontrahent AS kh"},
      {"reversed join with an extra condition",
       {{1, 0, 0, "adr", "adr__Ewid", "adr_Id", "", "", 0, 0, ""},
        {2, 0, 1, "kh", "kh__Kontrahent", "kh_Id", "adr_IdObiektu", "", 1, 0, "kh.kh_Aktywny = 1"}},
       {twoColumns[0], twoColumns[1]}, false,
       "SELECT adr.kh_Symbol,kh.adr_Ulica FROM adr__Ewid AS adr LEFT JOIN kh__Kontrahent AS kh ON "
       "adr.adr_IdObiektu=kh.kh_Id AND kh.kh_Aktywny = 1"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    CMapCustGridCfg cfg(nullptr, c.columns.data(), static_cast<int>(c.columns.size()), c.tables.data(),
                        static_cast<int>(c.tables.size()));
    cfg.SetIgnoreEmptyMainTable(c.ignoreEmptyMain);
    std::string sql;
    ASSERT_EQ(cfg.MakeSQL(sql), kOk);
    EXPECT_EQ(sql, c.sql);
  }
}

TEST(MakeSQL, FailuresLeaveTheOutputAndTheChangedFlag) {
  const CVelColInfo column = SampleColumnInfo(1, 1, "kh_Symbol", "Symbol");
  CVelColInfo expressionWithoutName = SampleColumnInfo(1, 1, "1 AS Jeden", "Jeden");
  expressionWithoutName.isExpression = 1;
  const CVelTableInfo main = {1, 0, 0, "kh", "kh__Kontrahent", "kh_Id", "", "", 0, 0, ""};
  CVelListInfo sorted = SampleList();
  sorted.sortColumnID = 1;
  struct Case {
    const char* name;
    CMapCustGridCfg cfg;
  } cases[] = {
      {"no tables", CMapCustGridCfg(nullptr, &column, 1, nullptr, 0)},
      {"no columns", CMapCustGridCfg(nullptr, nullptr, 0, &main, 1)},
      {"sorted expression without a result name", CMapCustGridCfg(&sorted, &expressionWithoutName, 1, &main, 1)},
  };
  for (Case& c : cases) {
    SCOPED_TRACE(c.name);
    std::string sql = "untouched";
    EXPECT_EQ(c.cfg.MakeSQL(sql), kFail);
    EXPECT_EQ(sql, "untouched");
    EXPECT_TRUE(c.cfg.IsSQLChanged());
  }
}

TEST(MakeSQL, CustomStatement) {
  struct Case {
    const char* name;
    std::string custom;
    std::function<void(CMapCustGridCfg&)> change;
    std::string sql;
  } cases[] = {
      {"conditions go into the placeholder", "SELECT * FROM kh__Kontrahent AS kh WHERE 1 = 1 AND 0 = 0",
       [](CMapCustGridCfg& c) {
         c.SetFilterWhere("kh.kh_Typ = 2");
         c.SetUserWhere("kh.kh_Id > 5");
       },
       "SELECT * FROM kh__Kontrahent AS kh WHERE kh.kh_Id > 5 AND kh.kh_Typ = 2 ORDER BY kh_Symbol"},
      {"every placeholder is replaced",
       "SELECT a FROM t WHERE 1 = 1 AND 0 = 0 UNION SELECT a FROM u WHERE 1 = 1 AND 0 = 0",
       [](CMapCustGridCfg& c) { c.SetFilterWhere("a > 1"); },
       "SELECT a FROM t WHERE a > 1 UNION SELECT a FROM u WHERE a > 1 ORDER BY kh_Symbol"},
      {"without a placeholder the conditions have no effect", "SELECT * FROM kh__Kontrahent",
       [](CMapCustGridCfg& c) {
         c.SetFilterWhere("kh.kh_Typ = 2");
         c.SetUserWhere("kh.kh_Id > 5");
       },
       "SELECT * FROM kh__Kontrahent ORDER BY kh_Symbol"},
      {"no condition keeps the placeholder", "SELECT * FROM t WHERE 1 = 1 AND 0 = 0", [](CMapCustGridCfg&) {},
       "SELECT * FROM t WHERE 1 = 1 AND 0 = 0 ORDER BY kh_Symbol"},
      {"a field name with a blank is bracketed", "SELECT * FROM v",
       [](CMapCustGridCfg& c) {
         c.SetDBFieldName(kColSymbol, "Nazwa skrócona");
         c.SetAscending(false);
       },
       "SELECT * FROM v ORDER BY [Nazwa skrócona] DESC"},
      {"a tab counts as a blank", "SELECT * FROM v",
       [](CMapCustGridCfg& c) { c.SetDBFieldName(kColSymbol, "a\tb"); }, "SELECT * FROM v ORDER BY [a\tb]"},
      {"the list's base condition and the tables' do not apply", "SELECT * FROM v WHERE 1 = 1 AND 0 = 0",
       [](CMapCustGridCfg& c) { c.SetTableWhere(kTabContractor, "kh.kh_Typ = 1"); },
       "SELECT * FROM v WHERE 1 = 1 AND 0 = 0 ORDER BY kh_Symbol"},
      {"format placeholders without a formats object stay",
       "SELECT {formatowanie_warunek} FROM t{formatowanie_dodatkowetabele}", [](CMapCustGridCfg&) {},
       "SELECT {formatowanie_warunek} FROM t{formatowanie_dodatkowetabele} ORDER BY kh_Symbol"},
      {"format placeholders with formats",
       "SELECT a, {formatowanie_warunek} AS f FROM t{formatowanie_dodatkowetabele}",
       [](CMapCustGridCfg& c) {
         c.CustomFormats().Add(SampleFormat(3, "x.b > 0", " LEFT JOIN x ON x.a = t.a"));
       },
       "SELECT a, CASE WHEN (x.b > 0) THEN 3 ELSE 0 END AS f FROM t LEFT JOIN x ON x.a = t.a ORDER BY kh_Symbol"},
      {"format placeholders with no active format",
       "SELECT a, {formatowanie_warunek} AS f FROM t{formatowanie_dodatkowetabele}",
       [](CMapCustGridCfg& c) { c.CustomFormats().Add(SampleFormat(3, "b > 0", "", "", false)); },
       "SELECT a, 0 AS f FROM t ORDER BY kh_Symbol"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    CMapCustGridCfg cfg = MakeSampleCfg();
    cfg.SetSql(c.custom);
    c.change(cfg);
    std::string sql;
    ASSERT_EQ(cfg.MakeSQL(sql), kOk);
    EXPECT_EQ(sql, c.sql);
  }
}

// Brackets, the default server's quoting, are in CustomStatement.
TEST(MakeSQL, CustomStatementQuotesForItsServer) {
  struct Case {
    const SqlDialect* dialect;
    const char* orderBy;
  } cases[] = {{&SqliteDialect(), "\"Nazwa skrócona\""}, {&PostgresDialect(), "\"Nazwa skrócona\""}};
  for (const Case& c : cases) {
    SCOPED_TRACE(c.dialect->Name());
    CMapCustGridCfg cfg = MakeSampleCfg();
    cfg.SetDialect(*c.dialect);
    cfg.SetSql("SELECT * FROM v");
    cfg.SetDBFieldName(kColSymbol, "Nazwa skrócona");
    std::string sql;
    ASSERT_EQ(cfg.MakeSQL(sql), kOk);
    EXPECT_EQ(sql, std::string("SELECT * FROM v ORDER BY ") + c.orderBy);
  }
}

TEST(MakeSQLEx, ClausesSeparately) {
  CMapCustGridCfg cfg = MakeSampleCfg();
  cfg.CustomFormats().Add(SampleFormat(1, "kh.kh_Obrot > 1000", " LEFT JOIN z AS z ON 1=1"));
  cfg.SetUserWhere("kh.kh_Id > 0");
  cfg.SetGroupBy("kh.kh_Id");
  SqlClauses with, without;
  ASSERT_EQ(cfg.MakeSQLEx(with, false, true), kOk);
  ASSERT_EQ(cfg.MakeSQLEx(without, false, false), kOk);
  EXPECT_EQ(without.fields, kFields);
  EXPECT_EQ(with.fields, kFields + ",CASE WHEN (kh.kh_Obrot > 1000) THEN 1 ELSE 0 END AS vel_Formatowanie");
  EXPECT_EQ(without.from, kFrom);
  EXPECT_EQ(with.from, kFrom + " LEFT JOIN z AS z ON 1=1");
  EXPECT_EQ(with.fromWord, "FROM");
  EXPECT_EQ(with.where, "kh.kh_Aktywny = 1 AND kh.kh_Id > 0");
  EXPECT_EQ(with.groupBy, "kh.kh_Id");
  EXPECT_EQ(with.orderBy, "kh.kh_Symbol");
  EXPECT_EQ(with.customSql, "");

  cfg.SetSql("SELECT {formatowanie_warunek} FROM t WHERE 1 = 1 AND 0 = 0");
  ASSERT_EQ(cfg.MakeSQLEx(with, false, true), kOk);
  ASSERT_EQ(cfg.MakeSQLEx(without, false, false), kOk);
  EXPECT_EQ(with.customSql, "SELECT CASE WHEN (kh.kh_Obrot > 1000) THEN 1 ELSE 0 END FROM t WHERE kh.kh_Id > 0"
                            " ORDER BY kh_Symbol");
  EXPECT_EQ(without.customSql, "SELECT {formatowanie_warunek} FROM t WHERE kh.kh_Id > 0 ORDER BY kh_Symbol");
  EXPECT_EQ(with.fields, "");
  EXPECT_EQ(with.fromWord, "");
}

TEST(MakeSQLEx, NoFromWordForAListWithoutAMainTable) {
  CVelColInfo column = SampleColumnInfo(1, 1, "1 AS Jeden", "Jeden");
  column.isExpression = 1;
  column.resultName = "Jeden";
  const CVelTableInfo main = {1, 0, 0, "x", "", "", "", "", 0, 0, ""};
  CMapCustGridCfg cfg(nullptr, &column, 1, &main, 1);
  cfg.SetIgnoreEmptyMainTable(true);
  SqlClauses clauses;
  ASSERT_EQ(cfg.MakeSQLEx(clauses), kOk);
  EXPECT_EQ(clauses.fields, "1 AS Jeden");
  EXPECT_EQ(clauses.fromWord, "");
  EXPECT_EQ(clauses.from, "");
}

TEST(CustomFormats, HiddenColumnThatAFormatColoursIsQueried) {
  CMapCustGridCfg cfg = MakeSampleCfg();
  cfg.CustomFormats().Add(SampleFormat(2, "kh.kh_Obrot < 0", "", "Cena netto"));
  std::string fields;
  ASSERT_EQ(cfg.MakeFieldsListEx(fields, false, false), kOk);
  EXPECT_EQ(fields, kFields + ",kh.tc_CenaNetto");
  cfg.CustomFormats().TurnOffAll();
  ASSERT_EQ(cfg.MakeFieldsListEx(fields, false, false), kOk);
  EXPECT_EQ(fields, kFields);
}

TEST(CustomColumns, UserColumnsJoinTheFieldListAfterTheProgramColumns) {
  CMapCustGridCfg cfg = MakeSampleCfg();
  EXPECT_EQ(cfg.CustomColumns(), nullptr);  // the sample list does not offer them

  CVelListInfo list = SampleList();
  list.allowCustomColumns = 1;
  cfg.SetList(list);
  auto* custom = dynamic_cast<CCustomColumnsCfgImpl*>(cfg.CustomColumns());
  ASSERT_NE(custom, nullptr);
  EXPECT_EQ(custom->AddField("Ulica", kTabAddress, "adr_Ulica"), 0);
  EXPECT_EQ(custom->AddExpression("Długość", "LENGTH(kh.kh_Nazwa)", "Dlugosc", VelFieldType::Integer), 1);
  EXPECT_EQ(custom->AddExpression("Zła", "", "X"), -1);
  cfg.UpdateCfgAfterCfgChanges();

  EXPECT_EQ(cfg.GetTotalColumnsCount(), kSampleColumnCount + 2);
  EXPECT_EQ(cfg.GetColumnsCount(), 9);
  EXPECT_EQ(cfg.GetColumnInfo(kSampleColumnCount + 1).columnID, kSampleColumnCount + 2);
  std::string sql;
  cfg.SetSortColumnID(kSampleColumnCount + 2);
  ASSERT_EQ(cfg.MakeSQL(sql), kOk);
  EXPECT_EQ(sql, "SELECT " + kFields + ",adr.adr_Ulica,(LENGTH(kh.kh_Nazwa)) AS Dlugosc FROM " + kFrom +
                     " WHERE kh.kh_Aktywny = 1 ORDER BY Dlugosc");
  const std::vector<int> map = cfg.GetColToRsItemMap();
  const std::vector<int> expected = {0, 1, 2, 3, 4, 5, 6, 7, -1, -1, 8, 9};
  EXPECT_EQ(map, expected);
}

TEST(ColumnIdentifiers, StandardByPositionCustomStatementBySearch) {
  CMapCustGridCfg cfg = MakeSampleCfg();
  cfg.ChangeDefColCaption(kColName, "Nazwa pełna");
  struct Case {
    std::int32_t id;
    int standard, custom;
  } cases[] = {{1, 0, 0}, {kSampleColumnCount, kSampleColumnCount - 1, kSampleColumnCount - 1},
               {0, -1, -1}, {kSampleColumnCount + 1, -1, -1}, {-3, -1, -1}};
  for (const Case& c : cases) {
    SCOPED_TRACE(c.id);
    EXPECT_EQ(cfg.GetColumnIndexFromColumnID(c.id), c.standard);
  }
  // Identifiers that do not follow positions are found only with a custom statement.
  std::vector<CVelColInfo> columns = SampleColumns();
  std::swap(columns[0].columnID, columns[2].columnID);
  CMapCustGridCfg swapped(nullptr, columns.data(), static_cast<int>(columns.size()), nullptr, 0);
  EXPECT_EQ(swapped.GetColumnIndexFromColumnID(kColId), 0);
  swapped.SetSql("SELECT 1");
  EXPECT_EQ(swapped.GetColumnIndexFromColumnID(kColId), 2);
  EXPECT_EQ(swapped.GetColumnIndexFromColumnID(kColName), 0);
  EXPECT_EQ(cfg.GetColCaption(kColName - 1), "Nazwa pełna");
}

TEST(Summaries, CalculatedColumnsOverTheListRows) {
  CMapCustGridCfg cfg = MakeSampleCfg();
  cfg.SetUserWhere("kh.kh_Id > 5");
  cfg.SetFilterWhere("kh.kh_Typ = 2");
  cfg.SetCalcUserWhere("kh.kh_Id < 100");
  std::string sql;
  ASSERT_EQ(cfg.MakeCalcSQL(sql), kOk);
  EXPECT_EQ(sql, "SELECT SUM(kh.kh_Obrot) AS vel_Calc6 FROM " + kFrom +
                     " WHERE kh.kh_Aktywny = 1 AND kh.kh_Typ = 2 AND kh.kh_Id < 100");

  CVelListInfo list = SampleList();
  list.allowSelectedSum = 1;
  list.selectedSum = 1;
  cfg.SetList(list);
  ASSERT_EQ(cfg.MakeCalcSQL(sql), kOk);
  EXPECT_EQ(sql, "SELECT SUM(kh.kh_Obrot) AS vel_Calc6 FROM " + kFrom +
                     " WHERE kh.kh_Aktywny = 1 AND kh.kh_Typ = 2 AND kh.kh_Id < 100 AND 1 = 0");
  cfg.SetCalcIdArray({4, 8});
  ASSERT_EQ(cfg.MakeCalcSQL(sql), kOk);
  EXPECT_EQ(sql, "SELECT SUM(kh.kh_Obrot) AS vel_Calc6 FROM " + kFrom +
                     " WHERE kh.kh_Aktywny = 1 AND kh.kh_Typ = 2 AND kh.kh_Id < 100 AND kh.kh_Id IN (4,8)");

  ASSERT_EQ(cfg.GetFullSummaryQuery(sql), kOk);
  EXPECT_EQ(sql, "SELECT SUM(vel_Lista.kh_Obrot) AS vel_Calc6 FROM (" + kHead +
                     " WHERE kh.kh_Aktywny = 1 AND kh.kh_Typ = 2 AND kh.kh_Id > 5) AS vel_Lista");
  EXPECT_TRUE(cfg.IsSQLChanged());  // the list's own statement was not made

  cfg.SetSql("SELECT kh_Id, kh_Obrot FROM kh__Kontrahent WHERE 1 = 1 AND 0 = 0");
  ASSERT_EQ(cfg.MakeCalcSQL(sql), kOk);
  EXPECT_EQ(sql, "SELECT SUM(vel_Lista.kh_Obrot) AS vel_Calc6 FROM (SELECT kh_Id, kh_Obrot FROM kh__Kontrahent "
                 "WHERE kh.kh_Id < 100 AND kh.kh_Typ = 2) AS vel_Lista WHERE vel_Lista.kh_Id IN (4,8)");

  cfg.SetVisible(kColTurnover, false);
  EXPECT_EQ(cfg.MakeCalcSQL(sql), kFalse);
  EXPECT_EQ(sql, "");
  EXPECT_EQ(cfg.GetFullSummaryQuery(sql), kFalse);
}

TEST(ConditionSetters, OnlyAChangedTextMarksTheStatementChanged) {
  struct Case {
    const char* name;
    std::function<void(CMapCustGridCfg&)> change;
    bool changed;
  } cases[] = {
      {"same filter", [](CMapCustGridCfg& c) { c.SetFilterWhere("a = 1"); }, false},
      {"other filter", [](CMapCustGridCfg& c) { c.SetFilterWhere("a = 2"); }, true},
      {"same user condition", [](CMapCustGridCfg& c) { c.SetUserWhere("b = 1"); }, false},
      {"other user condition", [](CMapCustGridCfg& c) { c.SetUserWhere(""); }, true},
      {"replaced filter", [](CMapCustGridCfg& c) { EXPECT_EQ(c.ReplaceFilterWhere("z"), "a = 1"); }, false},
      {"table condition", [](CMapCustGridCfg& c) { c.AppendTableWhere(kTabCountry, "pa.pa_Id > 0"); }, true},
      {"empty appended table condition", [](CMapCustGridCfg& c) { c.AppendTableWhere(kTabCountry, ""); }, false},
      {"same sort column", [](CMapCustGridCfg& c) { c.SetSortColumnID(kColSymbol); }, false},
      {"direction", [](CMapCustGridCfg& c) { c.SetAscending(false); }, true},
      {"field name", [](CMapCustGridCfg& c) { c.SetDBFieldName(kColName, "x"); }, true},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    CMapCustGridCfg cfg = MakeSampleCfg();
    cfg.SetFilterWhere("a = 1");
    cfg.SetUserWhere("b = 1");
    std::string sql;
    ASSERT_EQ(cfg.MakeSQL(sql), kOk);
    ASSERT_FALSE(cfg.IsSQLChanged());
    c.change(cfg);
    EXPECT_EQ(cfg.IsSQLChanged(), c.changed);
  }
}

TEST(MakeGroupByHelper, LeavesOutColumnsByKindAndModule) {
  auto column = [](std::int32_t kind, const char* field, bool visible) {
    CVelColInfo c = SampleColumnInfo(1, 1, field, "k");
    c.kind = kind;
    c.visible = visible;
    return c;
  };
  const std::vector<CVelColInfo> columns = {
      column(0, "kh_Symbol", true),    column(9, "kh_Obraz", true),  column(10, "kh_Znak", true),
      column(11, "Saldo", true),       column(12, "Wyliczone", true), column(20, "rz_Kwota", true),
      column(21, "rz_Zaleglosc", false), column(22, "rz_Dni", true), column(6, "adr_Pelny", true),
      column(0, "", false),            column(0, "kh_Nazwa", false),
  };
  const CVelTableInfo main = {1, 0, 0, "kh", "kh__Kontrahent", "kh_Id", "", "", 0, 0, ""};
  const CMapCustGridCfg cfg(nullptr, columns.data(), static_cast<int>(columns.size()), &main, 1);
  struct Case {
    const char* module;
    std::string groupBy;
  } cases[] = {
      {"Handel.Kontrahenci", "kh_Symbol,adr_Adres,adr_Miejscowosc,kh_Nazwa"},
      {"Finanse.Ledgor.Rozrachunki.WgKontrahentow.Modul.O",
       "kh_Symbol,Saldo,Wyliczone,rz_Kwota,rz_Zaleglosc,rz_Dni,adr_Adres,adr_Miejscowosc,kh_Nazwa"},
      {"Finanse.Ledgor.Rozrachunki.WgKontrahentow.Modul.W",
       "kh_Symbol,Saldo,Wyliczone,rz_Kwota,rz_Zaleglosc,rz_Dni,adr_Adres,adr_Miejscowosc,kh_Nazwa"},
      {"Finanse.Rozrachunki.WgKontrahentow.Modul",
       "kh_Symbol,Saldo,Wyliczone,rz_Kwota,rz_Zaleglosc,rz_Dni,adr_Adres,adr_Miejscowosc,kh_Nazwa"},
      {"Finanse.Rozrachunki.WgKontrahentow.Modul.X", "kh_Symbol,adr_Adres,adr_Miejscowosc,kh_Nazwa"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.module);
    std::string groupBy;
    ASSERT_EQ(MakeGroupByHelper(cfg, c.module, groupBy), kOk);
    EXPECT_EQ(groupBy, c.groupBy);
  }
  // A visible column without a field is left out the same at the start, in the middle and at the end.
  const CVelColInfo noField = column(0, "", true), a = column(0, "a", true), b = column(0, "b", true);
  const std::vector<CVelColInfo> orders[] = {{noField, a, b}, {a, noField, b}, {a, b, noField}, {noField, a, noField, noField, b}};
  for (const auto& order : orders) {
    const CMapCustGridCfg withEmpty(nullptr, order.data(), static_cast<int>(order.size()), &main, 1);
    std::string groupBy;
    ASSERT_EQ(MakeGroupByHelper(withEmpty, "m", groupBy), kOk);
    EXPECT_EQ(groupBy, "a,b");
  }
  std::string untouched = "x";
  EXPECT_EQ(MakeGroupByHelper(CMapCustGridCfg(), "m", untouched), kFail);
  EXPECT_EQ(untouched, "x");
}

TEST(Descriptions, CopyingAppliesTheSourceForcePresentAndListTextRules) {
  struct Case {
    const char* name;
    std::int32_t kind, source, cfgSource;
    const char* listText;
    int ignoreForcePresent;
    std::int32_t expectedSource;
    const char* expectedList;
    std::uint32_t expectedForce;
  } cases[] = {
      {"own source kept", 0, 5, 9, "", 0, 5, "", 0},
      {"source 0 takes the configuration's", 0, 0, 9, "", 0, 9, "", 0},
      {"list kind gets a closing line feed", kColKindList, 1, 0, "1=Tak\n0=Nie", 0, 1, "1=Tak\n0=Nie\n", 0},
      {"flag list kind too", kColKindFlagList, 1, 0, "1=A", 0, 1, "1=A\n", 0},
      {"closed list text unchanged", kColKindList, 1, 0, "1=A\n", 0, 1, "1=A\n", 0},
      {"empty list text unchanged", kColKindList, 1, 0, "", 0, 1, "", 0},
      {"other kinds unchanged", 3, 1, 0, "1=A", 0, 1, "1=A", 0},
      {"ignoring force-present forces every column", 0, 1, 0, "", 1, 1, "", 1},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    CVelColInfo info = SampleColumnInfo(1, 1, "kh_Symbol", "Symbol");
    info.kind = c.kind;
    info.source = c.source;
    info.listText = c.listText;
    CMapCustGridCfg cfg;
    cfg.SetSource(c.cfgSource);
    cfg.IgnoreForcePresentInSQL(c.ignoreForcePresent);
    cfg.SetColumns(&info, 1);
    const CVelColInfoCustImpl& col = cfg.GetColumnInfo(0);
    EXPECT_EQ(col.source, c.expectedSource);
    EXPECT_EQ(col.listText, c.expectedList);
    EXPECT_EQ(col.forcePresent, c.expectedForce);
  }
  CVelTableInfo table = SampleTables()[1];
  CVelTableInfoImpl record;
  record.InitTableInfo(table, 4);
  EXPECT_EQ(record.source, 4);
  table.source = 2;
  record.InitTableInfo(table, 4);
  EXPECT_EQ(record.source, 2);
  EXPECT_EQ(record.extraJoin, "adr.adr_TypAdresu = 1");
}

TEST(VisibleOrder, SettersKeepTheOrderAndTheFlagsTogether) {
  CMapCustGridCfg cfg = MakeSampleCfg();
  const std::vector<int> initial = {1, 2, 3, 4, 5, 6, 7};
  ASSERT_EQ(cfg.GetColumnIndexes(), initial);
  struct Step {
    const char* name;
    std::function<bool(CMapCustGridCfg&)> act;
    std::vector<int> order;
  } steps[] = {
      {"hide", [](auto& c) { return c.SetVisible(kColCity, false); }, {1, 2, 4, 5, 6, 7}},
      {"show again goes last", [](auto& c) { return c.SetVisible(kColCity, true); }, {1, 2, 4, 5, 6, 7, 3}},
      {"showing a shown column changes nothing", [](auto& c) { return c.SetVisible(kColCity, true); },
       {1, 2, 4, 5, 6, 7, 3}},
      {"not allowed to show", [](auto& c) { return c.SetAllowShow(kColName, false); }, {1, 4, 5, 6, 7, 3}},
      {"allowed again", [](auto& c) { return c.SetAllowShow(kColName, true); }, {1, 4, 5, 6, 7, 3, 2}},
      {"a never-shown column cannot be shown", [](auto& c) { return c.SetVisible(kColInternal, true); },
       {1, 4, 5, 6, 7, 3, 2}},
      {"unknown identifier", [](auto& c) { return !c.SetVisible(99, true); }, {1, 4, 5, 6, 7, 3, 2}},
      {"remove by index",
       [](auto& c) {
         c.RemoveFromVisibleCols(kColCountry - 1);
         return !c.IsColVisible(kColCountry);
       },
       {1, 5, 6, 7, 3, 2}},
      {"default order from the flags", [](auto& c) { c.GenerateDefaultColumnsInfo(); return true; }, {1, 2, 3, 5, 6, 7}},
  };
  for (const Step& s : steps) {
    SCOPED_TRACE(s.name);
    EXPECT_TRUE(s.act(cfg));
    EXPECT_EQ(cfg.GetColumnIndexes(), s.order);
    for (int i = 0; i < cfg.GetTotalColumnsCount(); ++i) {
      const bool inOrder = std::find(s.order.begin(), s.order.end(), i) != s.order.end();
      EXPECT_EQ(cfg.IsColVisible(i + 1), inOrder) << i;
    }
  }
  EXPECT_EQ(cfg.GetVisibleColIndex(0), 1);
  EXPECT_EQ(cfg.GetVisibleColIndex(6), -1);
  EXPECT_EQ(cfg.GetColFromColumnIdWoH(kColCity), 2);
  EXPECT_EQ(cfg.GetColFromColumnIdWoH(kColCountry), -1);
  EXPECT_THROW(cfg.GetColumnInfo(kSampleColumnCount), ComError);
}

}  // namespace
}  // namespace varion
