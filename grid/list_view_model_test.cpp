#include "grid/list_view_model.h"

#include <gtest/gtest.h>

#include <functional>

#include "grid/grid_test_lists.h"
#include "tests/db_backends.h"

namespace varion {
namespace {

using namespace varion::testing;

std::vector<std::string> Captions(const ListViewModel& m) {
  std::vector<std::string> out;
  for (const ListViewColumn& c : m.Columns())
    out.push_back(c.caption + (c.sort > 0 ? "+" : c.sort < 0 ? "-" : "") + (c.width != 80 ? "@" + std::to_string(c.width) : ""));
  return out;
}

TEST(ListViewModel, UserActionsChangeTheConfiguration) {
  CMapCustGridCfg cfg = MakeSampleCfg();
  ListViewModel model(cfg);
  struct Step {
    const char* name;
    std::function<bool(ListViewModel&)> act;
    std::vector<std::string> columns;
  } steps[] = {
      {"as declared", [](auto&) { return true; },
       {"Symbol+", "Nazwa", "Miejscowość", "Państwo", "Obrót", "Etykieta", "Uwagi"}},
      {"click another column", [](auto& m) { return m.ClickColumn(2); },
       {"Symbol", "Nazwa", "Miejscowość+", "Państwo", "Obrót", "Etykieta", "Uwagi"}},
      {"click it again", [](auto& m) { return m.ClickColumn(2); },
       {"Symbol", "Nazwa", "Miejscowość-", "Państwo", "Obrót", "Etykieta", "Uwagi"}},
      {"drag right", [](auto& m) { return m.MoveColumn(0, 3); },
       {"Nazwa", "Miejscowość-", "Państwo", "Symbol", "Obrót", "Etykieta", "Uwagi"}},
      {"drag left", [](auto& m) { return m.MoveColumn(5, 1); },
       {"Nazwa", "Etykieta", "Miejscowość-", "Państwo", "Symbol", "Obrót", "Uwagi"}},
      {"drag outside", [](auto& m) { return !m.MoveColumn(0, 7); },
       {"Nazwa", "Etykieta", "Miejscowość-", "Państwo", "Symbol", "Obrót", "Uwagi"}},
      {"resize", [](auto& m) { return m.SetColumnWidth(0, 150); },
       {"Nazwa@150", "Etykieta", "Miejscowość-", "Państwo", "Symbol", "Obrót", "Uwagi"}},
      {"hide", [](auto& m) { return m.ShowColumn(kColCountry, false); },
       {"Nazwa@150", "Etykieta", "Miejscowość-", "Symbol", "Obrót", "Uwagi"}},
      {"show a hidden one", [](auto& m) { return m.ShowColumn(kColPrice, true); },
       {"Nazwa@150", "Etykieta", "Miejscowość-", "Symbol", "Obrót", "Uwagi", "Cena netto"}},
      {"hide the sort column", [](auto& m) { return m.ShowColumn(kColCity, false); },
       {"Nazwa@150", "Etykieta", "Symbol", "Obrót", "Uwagi", "Cena netto"}},
  };
  for (const Step& s : steps) {
    SCOPED_TRACE(s.name);
    EXPECT_TRUE(s.act(model));
    EXPECT_EQ(Captions(model), s.columns);
  }
  cfg.SetAllowSort(kColNote, false);
  EXPECT_FALSE(model.ClickColumn(4));
  EXPECT_FALSE(model.ClickColumn(6));
}

TEST(ListViewModel, RowsFollowTheShownColumnsForBothKindsOfStatement) {
  TestDatabase database(DatabaseBackends().front());
  const db::Connection c = database.Connect();
  c.Execute("CREATE TABLE kh__Kontrahent (kh_Id INT, kh_Symbol TEXT, kh_Nazwa TEXT, kh_Obrot NUMERIC, kh_Aktywny INT)");
  c.Execute("INSERT INTO kh__Kontrahent VALUES (1, 'B', 'Beta', 10.5, 1), (2, 'A', 'Alfa', NULL, 1), (3, 'C', 'x', 0, 0)");
  const CVelTableInfo table = SampleTables()[0];
  std::vector<CVelColInfo> columns = SampleColumns();
  columns.resize(kColTurnover);
  columns[kColCity - 1].tableID = columns[kColCountry - 1].tableID = kTabContractor;
  columns[kColCity - 1].visible = columns[kColCountry - 1].visible = 0;
  const CVelListInfo list = SampleList();
  CMapCustGridCfg cfg(&list, columns.data(), static_cast<int>(columns.size()), &table, 1);
  ListViewModel model(cfg);
  model.MoveColumn(2, 0);
  EXPECT_EQ(model.Load(c), (std::vector<std::vector<std::string>>{{"", "A", "Alfa"}, {"10.5", "B", "Beta"}}));
  EXPECT_EQ(model.Sql(),
            "SELECT kh.kh_Id,kh.kh_Symbol,kh.kh_Nazwa,kh.kh_Obrot FROM kh__Kontrahent AS kh WHERE kh.kh_Aktywny = 1 "
            "ORDER BY kh.kh_Symbol");
  cfg.SetSql("SELECT kh_Nazwa, kh_Symbol FROM kh__Kontrahent");
  EXPECT_EQ(model.Load(c), (std::vector<std::vector<std::string>>{{"", "A", "Alfa"}, {"", "B", "Beta"}, {"", "C", "x"}}));
}

}  // namespace
}  // namespace varion
