// The grid configuration against real servers: generated statements over the library's
// contractor, address and country tables return the expected rows, and stored layouts, user-
// defined grids and conditional formats go through the database, on every backend.
#include <gtest/gtest.h>

#include <functional>

#include "db/schema/schema.h"
#include "grid/cust_grid_cfg.h"
#include "tests/db_backends.h"

namespace varion {
namespace {

using varion::testing::TestDatabase;

enum : std::int32_t { kId = 1, kSymbol, kName, kCity, kCountry, kLabel, kNote };

std::vector<std::string> Rows(const db::Connection& c, const std::string& sql) {
  db::Recordset rs = c.OpenRS(sql);
  std::vector<std::string> out;
  for (; !rs.IsEOF(); rs.MoveNext()) {
    std::string line;
    for (int i = 0; i < rs.GetFieldCount(); ++i) {
      const Variant& v = rs.GetCollect(i);
      line += (i ? "|" : "") + (v.IsNull() ? std::string("-") : v.AsText());
    }
    out.push_back(line);
  }
  return out;
}

class GridDbTest : public ::testing::TestWithParam<std::string> {
 protected:
  GridDbTest() : m_db(GetParam()), m_conn(m_db.Connect()) {
    db::schema::CreateSchema(m_conn);
    Insert("sl_Panstwo", "pa_Nazwa", {{"Polska"}, {"Niemcy"}});
    Insert("kh__Kontrahent", "kh_Symbol, kh_Nazwa, kh_Nip",
           {{"ALFA", "Alfa sp. z o.o.", "111"}, {"BETA", "Beta S.A.", "222"}, {"GAMMA", "Gamma", ""},
            {"DELTA", "Delta GmbH", "444"}});
    // Beta has a second address of another type; Gamma has none.
    Insert("adr__Ewid", "adr_IdObiektu, adr_TypAdresu, adr_Miejscowosc, adr_IdPanstwo",
           {{1, 1, "Kraków", 1}, {2, 1, "Poznań", 1}, {2, 2, "Gdańsk", 1}, {4, 1, "Berlin", 2}});
    const SqlDialect& d = m_conn.Dialect();
    m_label = d.Concat(d.Concat("kh.kh_Symbol", "'/'"), "kh.kh_Nip") + " AS Etykieta";
    m_columns = {Column(kId, 1, "kh_Id"),           Column(kSymbol, 1, "kh_Symbol"),
                 Column(kName, 1, "kh_Nazwa"),      Column(kCity, 2, "adr_Miejscowosc"),
                 Column(kCountry, 3, "pa_Nazwa"),   Column(kLabel, 1, m_label.c_str()),
                 Column(kNote, 1, "Uwagi")};
    m_columns[0].forcePresent = 1;
    m_columns[0].visible = 0;
    m_columns[0].calcType = static_cast<std::int32_t>(CalcType::Sum);
    m_columns[3].resultName = "Miasto";
    m_columns[4].resultName = "Panstwo";
    m_columns[5].isExpression = 1;
    m_columns[5].resultName = "Etykieta";
    m_columns[6].kind = kColKindNoData;
    m_list = CVelListInfo{};
    m_list.title = "Kontrahenci";
    m_list.keyField = "kh_Id";
    m_list.zoom = 100;
    m_list.defSortColumnID = kSymbol;
    m_list.sortColumnID = kSymbol;
    m_list.ascending = 1;
  }

  static CVelColInfo Column(std::int32_t id, std::int32_t table, const char* field) {
    CVelColInfo c{};
    c.allowShow = c.allowSort = c.allowFilter = c.visible = 1;
    c.dbFieldName = field;
    c.defCaption = field;
    c.width = 80;
    c.tableID = table;
    c.columnID = id;
    return c;
  }

  void Insert(const char* table, const char* columns, const std::vector<std::vector<Variant>>& rows) {
    std::string markers;
    for (size_t i = 0; i < rows.front().size(); ++i) markers += i ? ", ?" : "?";
    db::Statement s = m_conn.Prepare(std::string("INSERT INTO ") + table + " (" + columns + ") VALUES (" + markers + ")");
    for (const auto& row : rows) {
      for (size_t i = 0; i < row.size(); ++i) s.Bind(static_cast<int>(i + 1), row[i]);
      s.Execute();
    }
  }

  CMapCustGridCfg MakeCfg() const {
    static const CVelTableInfo tables[] = {
        {1, 0, 0, "kh", "kh__Kontrahent", "kh_Id", "", "", 0, 0, ""},
        {2, 0, 1, "adr", "adr__Ewid", "adr_Id", "adr_IdObiektu", "", 0, 0, "adr.adr_TypAdresu = 1"},
        {3, 0, 2, "pa", "sl_Panstwo", "pa_Id", "adr_IdPanstwo", "", 1, 0, ""},
    };
    CMapCustGridCfg cfg(&m_list, m_columns.data(), static_cast<int>(m_columns.size()), tables, 3);
    cfg.SetDialect(m_conn.Dialect());
    return cfg;
  }

  std::vector<std::string> Run(CMapCustGridCfg& cfg) {
    std::string sql;
    EXPECT_EQ(cfg.MakeSQL(sql), kOk);
    return Rows(m_conn, sql);
  }

  TestDatabase m_db;
  db::Connection m_conn;
  std::string m_label;
  std::vector<CVelColInfo> m_columns;
  CVelListInfo m_list{};
};

TEST_P(GridDbTest, GeneratedStatementsReturnTheExpectedRows) {
  const std::string alfa = "1|ALFA|Alfa sp. z o.o.|Kraków|Polska|ALFA/111|-";
  const std::string beta = "2|BETA|Beta S.A.|Poznań|Polska|BETA/222|-";
  const std::string gamma = "3|GAMMA|Gamma|-|-|GAMMA/|-";
  const std::string delta = "4|DELTA|Delta GmbH|Berlin|Niemcy|DELTA/444|-";
  struct Case {
    const char* name;
    std::function<void(CMapCustGridCfg&)> change;
    std::vector<std::string> rows;
  } cases[] = {
      {"joins in both directions keep a contractor without an address; one address type",
       [](CMapCustGridCfg&) {}, {alfa, beta, delta, gamma}},
      {"a joined table's condition keeps rows without a joined row",
       [](CMapCustGridCfg& c) { c.SetTableWhere(2, "adr.adr_Miejscowosc <> 'Kraków'"); }, {beta, delta, gamma}},
      {"filter and user conditions",
       [](CMapCustGridCfg& c) {
         c.SetFilterWhere("pa.pa_Nazwa = 'Polska'");
         c.SetUserWhere("kh.kh_Symbol <> 'ALFA'");
       },
       {beta}},
      {"descending by a joined column",
       [](CMapCustGridCfg& c) {
         c.SetUserWhere("adr.adr_Id IS NOT NULL");
         c.SetSortColumnID(kCity);
         c.SetAscending(false);
       },
       {beta, alfa, delta}},
      {"sorted by an expression", [](CMapCustGridCfg& c) { c.SetSortColumnID(kLabel); }, {alfa, beta, delta, gamma}},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    CMapCustGridCfg cfg = MakeCfg();
    c.change(cfg);
    EXPECT_EQ(Run(cfg), c.rows);
  }
}

TEST_P(GridDbTest, CustomStatementGroupingAndNoTable) {
  const SqlDialect& d = m_conn.Dialect();
  CMapCustGridCfg custom = MakeCfg();
  custom.SetSql("SELECT kh.kh_Symbol AS " + d.QuoteIdentifier("Symbol kontrahenta") +
                ", kh.kh_Nazwa FROM kh__Kontrahent AS kh WHERE 1 = 1 AND 0 = 0");
  custom.SetDBFieldName(kSymbol, "Symbol kontrahenta");
  custom.SetUserWhere("kh.kh_Id <> 3");
  custom.SetAscending(false);
  EXPECT_EQ(Run(custom), (std::vector<std::string>{"DELTA|Delta GmbH", "BETA|Beta S.A.", "ALFA|Alfa sp. z o.o."}));

  CVelColInfo grouped[] = {Column(1, 3, "pa_Nazwa"), Column(2, 1, "COUNT(*) AS Ile")};
  grouped[0].resultName = "Panstwo";
  grouped[1].isExpression = 1;
  grouped[1].resultName = "Ile";
  grouped[1].kind = kColKindComputed;
  CVelListInfo list = m_list;
  list.sortColumnID = 1;
  const CMapCustGridCfg base = MakeCfg();
  std::vector<CVelTableInfo> tables;
  for (int i = 0; i < base.GetTablesCount(); ++i) {
    const CVelTableInfoImpl& t = base.GetTable(i);
    tables.push_back({t.tableID, 0, t.parentTableID, t.alias.c_str(), t.tableName.c_str(), t.keyField.c_str(),
                      t.linkField.c_str(), "", t.joinDirection, 0, t.extraJoin.c_str()});
  }
  CMapCustGridCfg byCountry(&list, grouped, 2, tables.data(), static_cast<int>(tables.size()));
  std::string groupBy;
  ASSERT_EQ(MakeGroupByHelper(byCountry, "Handel.Kontrahenci", groupBy), kOk);
  EXPECT_EQ(groupBy, "pa_Nazwa");
  byCountry.SetGroupBy(groupBy);
  byCountry.SetUserWhere("pa.pa_Id IS NOT NULL");
  EXPECT_EQ(Run(byCountry), (std::vector<std::string>{"Niemcy|1", "Polska|2"}));

  CVelColInfo constant = Column(1, 1, "1 + 1 AS Dwa");
  constant.isExpression = 1;
  constant.resultName = "Dwa";
  const CVelTableInfo none = {1, 0, 0, "x", "", "", "", "", 0, 0, ""};
  CMapCustGridCfg noTable(nullptr, &constant, 1, &none, 1);
  noTable.SetIgnoreEmptyMainTable(true);
  EXPECT_EQ(Run(noTable), std::vector<std::string>{"2"});
}

TEST_P(GridDbTest, SummaryStatements) {
  CMapCustGridCfg cfg = MakeCfg();
  std::string sql;
  cfg.SetFilterWhere("pa.pa_Nazwa = 'Polska'");
  ASSERT_EQ(cfg.MakeCalcSQL(sql), kOk);
  EXPECT_EQ(Rows(m_conn, sql), std::vector<std::string>{"3"});
  cfg.SetFilterWhere("");
  cfg.SetAllowSelectedSum(true);
  cfg.SetSelectedSum(true);
  cfg.SetCalcIdArray({1, 4});
  ASSERT_EQ(cfg.MakeCalcSQL(sql), kOk);
  EXPECT_EQ(Rows(m_conn, sql), std::vector<std::string>{"5"});
  cfg.SetUserWhere("kh.kh_Id > 1");
  ASSERT_EQ(cfg.GetFullSummaryQuery(sql), kOk);
  EXPECT_EQ(Rows(m_conn, sql), std::vector<std::string>{"9"});
}

TEST_P(GridDbTest, ConditionalFormatsFromTheirTable) {
  Insert("gr_FormatowanieWarunkowe",
         "grf_Section, grf_IdListy, grf_IdUzytkownika, grf_Nazwa, grf_Warunek, grf_Tabele, grf_KolorTla, grf_Aktywny, "
         "grf_Kolejnosc",
         {{"Kontrahenci", 7, 0, "Zagraniczni", "pf.pa_Nazwa <> 'Polska'",
           " LEFT JOIN sl_Panstwo AS pf ON pf.pa_Id = adr.adr_IdPanstwo", 255, 1, 1},
          {"Kontrahenci", 7, 0, "Alfa", "kh.kh_Symbol = 'ALFA'", "", 65280, 1, 2},
          {"Kontrahenci", 7, 5, "Moje", "1 = 1", "", 0, 1, 3},
          {"Kontrahenci", 8, 0, "Inna lista", "1 = 1", "", 0, 1, 1}});
  auto formatOf = [&](CMapCustGridCfg& cfg) {
    std::vector<std::string> out;
    for (const std::string& row : Run(cfg)) out.push_back(row.substr(0, row.find('|')) + ":" + row.substr(row.rfind('|') + 1));
    return out;
  };
  CMapCustGridCfg cfg = MakeCfg();
  ASSERT_EQ(cfg.LoadCustomFmts(m_conn, "Kontrahenci", 7), kOk);
  EXPECT_EQ(formatOf(cfg), (std::vector<std::string>{"1:2", "2:0", "4:1", "3:0"}));
  ASSERT_NE(cfg.ApplyCustomFmt(1), nullptr);
  EXPECT_EQ(cfg.ApplyCustomFmt(1)->backColor, 255);
  EXPECT_EQ(cfg.ApplyCustomFmt(2)->name, "Alfa");

  ASSERT_EQ(cfg.LoadCustomFmts(m_conn, "Kontrahenci", 7, 5), kOk);
  EXPECT_EQ(formatOf(cfg), (std::vector<std::string>{"1:2", "2:3", "4:1", "3:3"}));
  ASSERT_EQ(cfg.TurnOffAllWarFmtForUserAndGrid(m_conn, "Kontrahenci", 5), kOk);
  EXPECT_EQ(cfg.RefreshCustomFmt(), kOk);
  EXPECT_EQ(formatOf(cfg), (std::vector<std::string>{"1:2", "2:0", "4:1", "3:0"}));
}

TEST_P(GridDbTest, LayoutSavedLoadedUpdatedAndDeleted) {
  CMapCustGridCfg cfg = MakeCfg();
  cfg.SetGridVersion(4);
  cfg.SetVisible(kName, false);
  cfg.GetColumnInfo(kCity - 1).width = 321;
  cfg.SetSortColumnID(kCity);
  cfg.SetAscending(false);
  cfg.SetZoomValue(150);
  EXPECT_FALSE(cfg.IsCfgExists(m_conn, "Kontrahenci", 3, 1));
  ASSERT_EQ(cfg.SaveCfg(m_conn, "Kontrahenci", 3, 1), kOk);
  EXPECT_TRUE(cfg.IsCfgExists(m_conn, "Kontrahenci", 3, 1));
  EXPECT_FALSE(cfg.IsCfgExists(m_conn, "Kontrahenci", 3, 2));

  CMapCustGridCfg loaded = MakeCfg();
  ASSERT_EQ(loaded.LoadCfg(m_conn, "Kontrahenci", 3, 1), kOk);
  const StoredLayoutRow a = cfg.MakeLayoutRow("Kontrahenci", 3, 1), b = loaded.MakeLayoutRow("Kontrahenci", 3, 1);
  EXPECT_EQ(a.listInfo, b.listInfo);
  EXPECT_EQ(a.columns, b.columns);
  EXPECT_EQ(a.visibility, b.visibility);
  EXPECT_EQ(Run(loaded), Run(cfg));

  cfg.SetVisible(kName, true);
  ASSERT_EQ(cfg.SaveCfg(m_conn, "Kontrahenci", 3, 1), kOk);  // the row is updated, not added
  EXPECT_EQ(Rows(m_conn, "SELECT cge_Version, cge_LastUpdateVersion FROM gr__KonfiguracjaEx"),
            std::vector<std::string>{"4|1.8700.0.6757"});
  CMapCustGridCfg constructed(&m_list, m_columns.data(), static_cast<int>(m_columns.size()), nullptr, 0, m_conn,
                              "Kontrahenci", 3, 1);
  EXPECT_EQ(constructed.GetLoadStatus(), kOk);
  EXPECT_TRUE(constructed.IsColVisible(kName));
  EXPECT_EQ(constructed.GetZoomValue(), 150);

  EXPECT_EQ(cfg.DeleteCfg(m_conn, "Kontrahenci", 3, 1), kOk);
  EXPECT_EQ(cfg.DeleteCfg(m_conn, "Kontrahenci", 3, 1), kFalse);
  EXPECT_EQ(loaded.LoadCfg(m_conn, "Kontrahenci", 3, 1), kFalse);
}

TEST_P(GridDbTest, EntryIsMadeOnceAndBadRowsChangeNothing) {
  CMapCustGridCfg cfg = MakeCfg();
  ASSERT_EQ(cfg.MakeEntryForCfg(m_conn, "Lista 'A'", 1, 0), kOk);
  cfg.SetZoomValue(200);
  EXPECT_EQ(cfg.MakeEntryForCfg(m_conn, "Lista 'A'", 1, 0), kFalse);
  CMapCustGridCfg loaded = MakeCfg();
  ASSERT_EQ(loaded.LoadCfg(m_conn, "Lista 'A'", 1, 0), kOk);
  EXPECT_EQ(loaded.GetZoomValue(), 100);

  const StoredLayoutRow before = loaded.MakeLayoutRow("x", 0, 0);
  db::Statement damage = m_conn.Prepare("UPDATE gr__KonfiguracjaEx SET cge_BinColumns = ?");
  damage.Bind(1, Variant(Variant::Bytes{1, 0, 0, 0, 9}), db::FieldType::Binary).Execute();
  EXPECT_EQ(loaded.LoadCfg(m_conn, "Lista 'A'", 1, 0), kFail);
  m_conn.Execute("UPDATE gr__KonfiguracjaEx SET cge_BinVisibility = NULL");
  try {
    loaded.LoadCfg(m_conn, "Lista 'A'", 1, 0);
    ADD_FAILURE() << "a NULL blob must raise";
  } catch (const ComError& e) {
    EXPECT_EQ(e.Code(), kPointer);
  }
  EXPECT_EQ(loaded.MakeLayoutRow("x", 0, 0).columns, before.columns);
  CMapCustGridCfg constructed(&m_list, m_columns.data(), static_cast<int>(m_columns.size()), nullptr, 0, m_conn,
                              "Lista 'A'", 1, 0);
  EXPECT_EQ(constructed.GetLoadStatus(), kPointer);
  EXPECT_EQ(constructed.GetTotalColumnsCount(), static_cast<int>(m_columns.size()));
}

TEST_P(GridDbTest, UserDefinedGrid) {
  CVelColInfo columns[] = {Column(1, 1, "kh_Id"), Column(2, 1, "kh_Symbol")};
  const CVelTableInfo table = {1, 0, 0, "kh", "kh__Kontrahent", "kh_Id", "", "", 0, 0, ""};
  CVelListInfo list = m_list;
  list.sortColumnID = 2;
  const StoredLayoutRow blobs = CMapCustGridCfg(&list, columns, 2, &table, 1).MakeLayoutRow("", 0, 0);
  Insert("gr__Grid", "gr_Section, gr_IdModulu, gr_TypEx, gr_Nazwa", {{"Moje", 3, 2, "Moja lista"}});
  Insert("gr_GridWlasny",
         "grg_IdGrida, grg_Sql, grg_BinListInfo, grg_BinColumns, grg_BinTables, grg_BinVisibility, grg_SqlWhere, "
         "grg_KolumnyWlasneWidoczne",
         {{1, "", *blobs.listInfo, *blobs.columns, *blobs.tables, *blobs.visibility, "kh.kh_Id <> 2", 0}});
  CMapCustGridCfg missing;
  EXPECT_EQ(missing.LoadCustomCfg(m_conn, "Moje", 3, 9), kFalse);
  CMapCustGridCfg cfg;
  ASSERT_EQ(cfg.LoadCustomCfg(m_conn, "Moje", 3, 2), kOk);
  std::string sql;
  ASSERT_EQ(cfg.MakeSQLForCustomEntry(sql), kOk);
  EXPECT_EQ(Rows(m_conn, sql), (std::vector<std::string>{"1|ALFA", "4|DELTA", "3|GAMMA"}));
}

INSTANTIATE_TEST_SUITE_P(Backends, GridDbTest, ::testing::ValuesIn(varion::testing::DatabaseBackends()),
                         varion::testing::BackendTestName);

}  // namespace
}  // namespace varion
