#include <gtest/gtest.h>

#include <functional>

#include "grid/grid_test_lists.h"
#include "tests/seed.h"

namespace varion {
namespace {

using namespace varion::testing;

// The contractors list as an older program declared it, and as the current one does: one column
// removed (fax) with a new one in its place (e-mail), turnover's field renamed under the same
// caption, the phone's field and caption renamed in place, two columns appended.
std::vector<CVelColInfo> OldColumns() {
  std::vector<CVelColInfo> c = {
      SampleColumnInfo(1, 1, "kh_Id", "Id"),          SampleColumnInfo(2, 1, "kh_Symbol", "Symbol"),
      SampleColumnInfo(3, 1, "kh_Nazwa", "Nazwa"),    SampleColumnInfo(4, 2, "adr_Miejscowosc", "Miejscowość"),
      SampleColumnInfo(5, 1, "kh_Faks", "Faks"),      SampleColumnInfo(6, 1, "kh_Obrot", "Obrót"),
      SampleColumnInfo(7, 1, "kh_Telefon", "Telefon"), SampleColumnInfo(8, 1, "tc_CenaNetto", "Cena netto"),
  };
  c[0].forcePresent = 1;
  c[0].visible = 0;
  c[3].resultName = "Miasto";
  return c;
}

std::vector<CVelColInfo> NewColumns() {
  std::vector<CVelColInfo> c = OldColumns();
  c[4] = SampleColumnInfo(5, 1, "kh_Email", "E-mail");
  c[4].kind = 7;  // not the fax under a new name
  c[5].dbFieldName = "kh_ObrotNetto";
  c[6] = SampleColumnInfo(7, 1, "kh_Tel1", "Telefon 1");
  c[6].allowSort = 0;
  c.push_back(SampleColumnInfo(9, 1, "kh_NIP", "NIP"));
  c.push_back(SampleColumnInfo(10, 1, "kh_Regon", "REGON"));
  c[9].visible = 0;
  return c;
}

CVelListInfo NewList() {
  CVelListInfo l = SampleList();
  l.defSortColumnID = 4;
  l.sortColumnID = 4;
  return l;
}

CMapCustGridCfg MakeCfg(const std::vector<CVelColInfo>& columns, const CVelListInfo& list) {
  const auto tables = SampleTables();
  return CMapCustGridCfg(&list, columns.data(), static_cast<int>(columns.size()), tables.data(),
                         static_cast<int>(tables.size()));
}

// The user's layout of the old list: widths, the name hidden, an order of their own, the price
// column pointed at the third price level, sorted by fax descending.
CMapCustGridCfg OldUserLayout(std::int32_t sortColumnID = 5) {
  CMapCustGridCfg cfg = MakeCfg(OldColumns(), SampleList());
  const std::int32_t widths[] = {0, 111, 222, 333, 444, 555, 666, 777};
  for (int i = 1; i < 8; ++i) {
    cfg.GetColumnInfo(i).width = widths[i];
    cfg.SetVisible(i + 1, false);
  }
  for (std::int32_t id : {4, 2, 5, 6, 7, 8}) cfg.SetVisible(id, true);
  cfg.SetDBFieldName(8, "tc_CenaNetto3");
  cfg.ChangeDefColCaption(8, "Cena netto 3");
  cfg.GetColumnInfo(1).caption = "Skrót";
  cfg.GetColumnInfo(1).backColor = 0x00FF00;
  cfg.SetSortColumnID(sortColumnID);
  cfg.SetAscending(false);
  cfg.SetZoomValue(125);
  cfg.SetGridVersion(1);
  return cfg;
}

TEST(LayoutMerge, OlderLayoutKeepsTheUsersChoicesOnTheNewColumns) {
  const StoredLayoutRow row = OldUserLayout().MakeLayoutRow("Kontrahenci", 3, 1);
  CMapCustGridCfg cfg = MakeCfg(NewColumns(), NewList());
  cfg.SetGridVersion(2);
  ASSERT_EQ(cfg.LoadCfgFromRow(row), kOk);

  struct Expect {
    int index;
    std::int32_t width;
    bool visible;
    const char* field;
  } expected[] = {
      {1, 111, true, "kh_Symbol"},     {2, 222, false, "kh_Nazwa"},   {3, 333, true, "adr_Miejscowosc"},
      {4, 80, true, "kh_Email"},       {5, 555, true, "kh_ObrotNetto"}, {6, 666, true, "kh_Tel1"},
      {7, 777, true, "tc_CenaNetto3"}, {8, 80, true, "kh_NIP"},       {9, 80, false, "kh_Regon"},
  };
  for (const Expect& e : expected) {
    SCOPED_TRACE(e.index);
    const CVelColInfoCustImpl& col = cfg.GetColumnInfo(e.index);
    EXPECT_EQ(col.width, e.width);
    EXPECT_EQ(col.visible != 0, e.visible);
    EXPECT_EQ(col.dbFieldName, e.field);
    EXPECT_EQ(col.columnID, e.index + 1);
  }
  EXPECT_EQ(cfg.GetColumnInfo(1).caption, "Skrót");
  EXPECT_EQ(cfg.GetColumnInfo(1).backColor, 0x00FF00);
  EXPECT_EQ(cfg.GetColumnInfo(7).defCaption, "Cena netto 3");
  EXPECT_EQ(cfg.GetColumnInfo(6).defCaption, "Telefon 1");  // a renamed column keeps its new caption
  // Stored order City, Symbol, (fax), Turnover, Phone, Price; then the new visible columns.
  EXPECT_EQ(cfg.GetColumnIndexes(), (std::vector<int>{3, 1, 5, 6, 7, 4, 8}));
  EXPECT_EQ(cfg.GetTranslationCount(), 7);
  EXPECT_EQ(cfg.ApplyColumnTranslation(4), -1);
  EXPECT_EQ(cfg.GetZoomValue(), 125);
  EXPECT_EQ(cfg.GetSortColumnID(), 4);  // the fax is gone: the list's default, not column 5
  EXPECT_FALSE(cfg.GetAscending());
  EXPECT_EQ(cfg.GetListInfo().where, "kh.kh_Aktywny = 1");

  std::string sql;
  ASSERT_EQ(cfg.MakeSQL(sql), kOk);
  EXPECT_EQ(sql,
            "SELECT kh.kh_Id,kh.kh_Symbol,adr.adr_Miejscowosc AS Miasto,kh.kh_Email,kh.kh_ObrotNetto,kh.kh_Tel1,"
            "kh.tc_CenaNetto3,kh.kh_NIP FROM kh__Kontrahent AS kh LEFT JOIN adr__Ewid AS adr ON "
            "kh.kh_Id=adr.adr_IdObiektu AND adr.adr_TypAdresu = 1 LEFT JOIN sl_Panstwo AS pa ON "
            "adr.adr_IdPanstwo=pa.pa_Id WHERE kh.kh_Aktywny = 1 ORDER BY adr.adr_Miejscowosc DESC");

  // Saved again and loaded into the same program, nothing moves.
  CMapCustGridCfg again = MakeCfg(NewColumns(), NewList());
  ASSERT_EQ(again.LoadCfgFromRow(cfg.MakeLayoutRow("Kontrahenci", 3, 1)), kOk);
  for (int i = 0; i < cfg.GetTotalColumnsCount(); ++i) EXPECT_EQ(again.GetColumnInfo(i), cfg.GetColumnInfo(i));
  EXPECT_EQ(again.GetColumnIndexes(), cfg.GetColumnIndexes());
  EXPECT_EQ(again.GetListInfo(), cfg.GetListInfo());
}

TEST(LayoutMerge, SortColumnFollowsItsColumn) {
  struct Case {
    std::int32_t storedSort;
    std::int32_t sort;
  } cases[] = {
      {2, 2},  // matched by field
      {6, 6},  // matched by caption
      {7, 4},  // matched by position, but the new program does not sort by it: default
      {5, 4},  // removed: default
      {0, 0},  // none stays none
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.storedSort);
    CMapCustGridCfg cfg = MakeCfg(NewColumns(), NewList());
    ASSERT_EQ(cfg.LoadCfgFromRow(OldUserLayout(c.storedSort).MakeLayoutRow("K", 1, 1)), kOk);
    EXPECT_EQ(cfg.GetSortColumnID(), c.sort);
  }
}

TEST(LayoutMerge, UserFieldChoiceIsTakenOnlyAsAnIdentifier) {
  struct Case {
    const char* stored;
    const char* field;
  } cases[] = {
      {"tc_CenaNetto3", "tc_CenaNetto3"}, {"tc_CenaNetto_W2", "tc_CenaNetto_W2"},
      {"tc_CenaNetto3) OR (1=1", "tc_CenaNetto"}, {"tc_CenaNetto 3", "tc_CenaNetto"},
      {"tc_CenaBrutto3", "tc_CenaNetto"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.stored);
    CMapCustGridCfg old = OldUserLayout();
    old.SetDBFieldName(8, c.stored);
    CMapCustGridCfg cfg = MakeCfg(NewColumns(), NewList());
    ASSERT_EQ(cfg.LoadCfgFromRow(old.MakeLayoutRow("K", 1, 1)), kOk);
    EXPECT_EQ(cfg.GetColumnInfo(7).dbFieldName, c.field);
    EXPECT_EQ(cfg.GetColumnInfo(7).width, 777);
  }
}

TEST(LayoutMerge, PlainModeReadsByIdentifierWithoutMatching) {
  CMapCustGridCfg cfg = MakeCfg(NewColumns(), NewList());
  cfg.DisableAutoUpdate();
  ASSERT_EQ(cfg.LoadCfgFromRow(OldUserLayout().MakeLayoutRow("K", 1, 1)), kOk);
  EXPECT_EQ(cfg.GetColumnInfo(4).dbFieldName, "kh_Faks");  // the stored record, as stored
  EXPECT_EQ(cfg.GetColumnInfo(4).width, 444);
  EXPECT_EQ(cfg.GetColumnInfo(5).dbFieldName, "kh_Obrot");
  EXPECT_EQ(cfg.GetColumnIndexes(), (std::vector<int>{3, 1, 4, 5, 6, 7, 8}));
  EXPECT_EQ(cfg.GetSortColumnID(), 5);
}

TEST(LayoutMerge, UserColumnsSurviveUnderTheirReservedIdentifier) {
  CVelListInfo allowing = SampleList();
  allowing.allowCustomColumns = 1;
  CMapCustGridCfg cfg = MakeCfg(SampleColumns(), allowing);
  auto* custom = dynamic_cast<CCustomColumnsCfgImpl*>(cfg.CustomColumns());
  ASSERT_NE(custom, nullptr);
  custom->AddField("Ulica", kTabAddress, "adr_Ulica");
  custom->AddExpression("Długość", "LENGTH(kh.kh_Nazwa)", "Dlugosc");
  cfg.UpdateCfgAfterCfgChanges();
  cfg.SetVisible(kColSymbol, false);
  cfg.SetVisible(kColSymbol, true);  // Symbol now after the user's columns
  cfg.SetSortColumnID(kSampleColumnCount + 2);
  const StoredLayoutRow row = cfg.MakeLayoutRow("K", 1, 1);
  std::vector<StoredColumn> stored;
  ASSERT_EQ(ReadColumnBlob(*row.columns, stored), kOk);
  ASSERT_EQ(stored.size(), static_cast<size_t>(kSampleColumnCount + 2));
  EXPECT_EQ(stored[kSampleColumnCount].columnID, kUserColumnID);

  // Into a newer program with one more column of its own.
  std::vector<CVelColInfo> more = SampleColumns();
  more.push_back(SampleColumnInfo(kSampleColumnCount + 1, 1, "kh_Nowa", "Nowa"));
  CMapCustGridCfg newer = MakeCfg(more, allowing);
  ASSERT_EQ(newer.LoadCfgFromRow(row), kOk);
  const int first = kSampleColumnCount + 1;
  EXPECT_EQ(newer.GetColumnInfo(first).dbFieldName, "adr_Ulica");
  EXPECT_EQ(newer.GetColumnInfo(first + 1).resultName, "Dlugosc");
  EXPECT_EQ(newer.GetColumnInfo(first + 1).columnID, first + 2);
  EXPECT_EQ(newer.GetSortColumnID(), first + 2);
  const std::vector<int> order = {kColName - 1,  kColCity - 1,  kColCountry - 1, kColTurnover - 1, kColLabel - 1,
                                  kColNote - 1,  first,         first + 1,       kColSymbol - 1,   kSampleColumnCount};
  EXPECT_EQ(newer.GetColumnIndexes(), order);

  // A program that does not offer them keeps them for the next save.
  CMapCustGridCfg refusing = MakeCfg(SampleColumns(), SampleList());
  ASSERT_EQ(refusing.LoadCfgFromRow(row), kOk);
  EXPECT_EQ(refusing.GetTotalColumnsCount(), kSampleColumnCount);
  EXPECT_EQ(refusing.GetSortColumnID(), kColSymbol);
  CMapCustGridCfg back = MakeCfg(SampleColumns(), allowing);
  ASSERT_EQ(back.LoadCfgFromRow(refusing.MakeLayoutRow("K", 1, 1)), kOk);
  EXPECT_EQ(back.GetTotalColumnsCount(), kSampleColumnCount + 2);
  EXPECT_EQ(back.GetColumnInfo(first - 1).dbFieldName, "adr_Ulica");
}

TEST(LayoutMerge, ListRecordTakesOnlySaneUserItems) {
  struct Case {
    const char* name;
    std::function<void(CVelListInfoCustImpl&)> stored;
    std::function<void(const CVelListInfoCustImpl&)> check;
  } cases[] = {
      {"sizes", [](auto& l) { l.rowHeight = 30, l.colHeaderHeight = 40, l.rowHeaderWidth = 0; },
       [](auto& l) { EXPECT_EQ(l.rowHeight, 30); EXPECT_EQ(l.colHeaderHeight, 40); EXPECT_EQ(l.rowHeaderWidth, 0); }},
      {"insane sizes", [](auto& l) { l.rowHeight = -1, l.colHeaderHeight = 1001, l.frozenColCount = INT32_MIN; },
       [](auto& l) { EXPECT_EQ(l.rowHeight, 18); EXPECT_EQ(l.colHeaderHeight, 20); EXPECT_EQ(l.frozenColCount, 0); }},
      {"zoom", [](auto& l) { l.zoom = 10; }, [](auto& l) { EXPECT_EQ(l.zoom, 10); }},
      {"zoom of zero", [](auto& l) { l.zoom = 0; }, [](auto& l) { EXPECT_EQ(l.zoom, 100); }},
      {"zoom too large", [](auto& l) { l.zoom = 501; }, [](auto& l) { EXPECT_EQ(l.zoom, 100); }},
      {"modes the program does not allow", [](auto& l) { l.multiSel = 1, l.selectedSum = 1; },
       [](auto& l) { EXPECT_EQ(l.multiSel, 0); EXPECT_EQ(l.selectedSum, 0); }},
      {"program items stay", [](auto& l) { l.where = "1 = 0", l.title = "Stara", l.allowMultiSel = 1, l.listID = 99; },
       [](auto& l) {
         EXPECT_EQ(l.where, "kh.kh_Aktywny = 1"); EXPECT_EQ(l.title, "Kontrahenci");
         EXPECT_EQ(l.allowMultiSel, 0); EXPECT_EQ(l.listID, 7);
       }},
      {"lines and shading", [](auto& l) { l.horLines = 0, l.shadowMode = 1, l.wrapText = 1; },
       [](auto& l) { EXPECT_EQ(l.horLines, 0); EXPECT_EQ(l.shadowMode, 1); EXPECT_EQ(l.wrapText, 1); }},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    CMapCustGridCfg cfg = MakeSampleCfg();
    CVelListInfoCustImpl stored = cfg.GetListInfo();
    c.stored(stored);
    ASSERT_EQ(cfg.LoadListInfo(WriteListBlob(stored)), kOk);
    c.check(cfg.GetListInfo());
  }
}

TEST(StoredStatement, TakenOverOnlyAfterTheVersionCheck) {
  const std::string custom = "SELECT kh_Symbol FROM kh__Kontrahent WHERE 1 = 1 AND 0 = 0";
  struct Case {
    const char* name;
    Variant version;
    const char* lastUpdate;
    bool suppress;
    bool taken;
  } cases[] = {
      {"same grid version, this library", std::int32_t(3), "1.8700.0.6757", false, true},
      {"same grid version, older library", std::int32_t(3), "1.8699.9.9999", false, true},
      {"no library version", std::int32_t(3), "", false, true},
      {"grid version as text", Variant("3"), "1.8700.0.6757", false, true},
      {"newer library", std::int32_t(3), "1.8700.0.6758", false, false},
      {"newer library, shorter text", std::int32_t(3), "2.0", false, false},
      {"library version not a version", std::int32_t(3), "1.8700.x", false, false},
      {"other grid version", std::int32_t(2), "1.8700.0.6757", false, false},
      {"no grid version", Variant::MakeNull(), "1.8700.0.6757", false, false},
      {"default layout asked for", std::int32_t(3), "1.8700.0.6757", true, false},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    CMapCustGridCfg source = MakeSampleCfg();
    StoredLayoutRow row = source.MakeLayoutRow("K", 1, 1);
    row.version = c.version;
    row.lastUpdateVersion = c.lastUpdate;
    row.sql = custom;

    CMapCustGridCfg cfg = MakeSampleCfg();
    cfg.SetGridVersion(3);
    cfg.SetSuppressLayout(c.suppress);
    ASSERT_EQ(cfg.LoadCfgFromRow(row), kOk);
    EXPECT_EQ(cfg.HasCustomSql(), c.taken);
    EXPECT_EQ(cfg.IsAutoUpdate(), !c.taken);
    EXPECT_EQ(cfg.GetStoredSql(), c.taken ? "" : custom);
    const StoredLayoutRow saved = cfg.MakeLayoutRow("K", 1, 1);
    EXPECT_EQ(saved.sql, custom);  // never lost
    EXPECT_EQ(saved.lastUpdateVersion, "1.8700.0.6757");
    std::int64_t savedVersion = -1, storedVersion = -1;
    ASSERT_EQ(saved.version.ToInt64(savedVersion), kOk);
    if (c.taken || c.version.ToInt64(storedVersion) < 0) storedVersion = c.taken ? 3 : 0;
    EXPECT_EQ(savedVersion, storedVersion);
  }
}

TEST(StoredStatement, SetSqlDecidesAboutAParkedStatement) {
  StoredLayoutRow row = MakeSampleCfg().MakeLayoutRow("K", 1, 1);
  row.sql = "SELECT 1";
  row.version = std::int32_t(1);
  CMapCustGridCfg cfg = MakeSampleCfg();
  cfg.SetGridVersion(2);
  ASSERT_EQ(cfg.LoadCfgFromRow(row), kOk);
  ASSERT_EQ(cfg.GetStoredSql(), "SELECT 1");
  cfg.SetSql("");
  EXPECT_EQ(cfg.GetStoredSql(), "");
  const StoredLayoutRow saved = cfg.MakeLayoutRow("K", 1, 1);
  EXPECT_EQ(saved.sql, "");
  EXPECT_EQ(saved.version.AsInt32(-1), 2);
}

TEST(StoredLayout, SuppressedLayoutLeavesTheProgramColumns) {
  CMapCustGridCfg cfg = MakeCfg(NewColumns(), NewList());
  cfg.SetSuppressLayout(true);
  const std::vector<int> before = cfg.GetColumnIndexes();
  ASSERT_EQ(cfg.LoadCfgFromRow(OldUserLayout().MakeLayoutRow("K", 1, 1)), kOk);
  EXPECT_EQ(cfg.GetColumnIndexes(), before);
  EXPECT_EQ(cfg.GetColumnInfo(1).width, 80);
  EXPECT_EQ(cfg.GetSortColumnID(), 4);
  EXPECT_EQ(cfg.GetZoomValue(), 125);
  EXPECT_EQ(cfg.LoadColInfo(*OldUserLayout().MakeLayoutRow("K", 1, 1).columns), kOk);
  EXPECT_EQ(cfg.GetColumnInfo(1).width, 80);
}

TEST(StoredLayout, UserDefinedGridStartsEmpty) {
  CMapCustGridCfg source = MakeSampleCfg();
  const StoredLayoutRow row = source.MakeLayoutRow("Wlasny", 0, 0);
  CMapCustGridCfg cfg;
  ASSERT_EQ(cfg.LoadCustomCfgFromBlobs(*row.listInfo, *row.columns, *row.tables, *row.visibility), kOk);
  ASSERT_EQ(cfg.GetTotalColumnsCount(), kSampleColumnCount);
  ASSERT_EQ(cfg.GetTablesCount(), 4);
  for (int i = 0; i < cfg.GetTotalColumnsCount(); ++i) EXPECT_EQ(cfg.GetColumnInfo(i).columnID, i + 1);
  for (int i = 0; i < cfg.GetTablesCount(); ++i) EXPECT_EQ(cfg.GetTable(i).tableID, i + 1);
  EXPECT_EQ(cfg.GetListInfo(), source.GetListInfo());
  EXPECT_EQ(cfg.GetColumnIndexes(), source.GetColumnIndexes());
  cfg.SetCustomEntryWhere("kh.kh_Typ = 1");
  cfg.SetUserWhere("kh.kh_Id > 0");
  std::string sql;
  ASSERT_EQ(cfg.MakeSQLForCustomEntry(sql), kOk);
  // Table identifiers of columns are not stored: every column reads the main table.
  EXPECT_EQ(sql,
            "SELECT kh.kh_Id,kh.kh_Symbol,kh.kh_Nazwa,kh.adr_Miejscowosc AS Miasto,kh.pa_Nazwa,kh.kh_Obrot,"
            "kh_Symbol || ' ' || kh_Nazwa AS Etykieta,NULL AS Uwagi FROM kh__Kontrahent AS kh LEFT JOIN adr__Ewid "
            "AS adr ON kh.kh_Id=adr.adr_IdObiektu AND adr.adr_TypAdresu = 1 LEFT JOIN sl_Panstwo AS pa ON "
            "adr.adr_IdPanstwo=pa.pa_Id WHERE kh.kh_Aktywny = 1 AND kh.kh_Typ = 1 AND kh.kh_Id > 0 ORDER BY "
            "kh.kh_Symbol");
}

TEST(StoredLayout, DamagedOrMissingBlobChangesNothing) {
  const StoredLayoutRow good = OldUserLayout().MakeLayoutRow("K", 1, 1);
  using Blob = std::optional<LayoutBytes> StoredLayoutRow::*;
  const Blob blobs[] = {&StoredLayoutRow::listInfo, &StoredLayoutRow::columns, &StoredLayoutRow::tables,
                        &StoredLayoutRow::visibility};
  for (Blob blob : blobs) {
    CMapCustGridCfg cfg = MakeCfg(NewColumns(), NewList());
    const StoredLayoutRow before = cfg.MakeLayoutRow("K", 1, 1);
    StoredLayoutRow damaged = good;
    (damaged.*blob)->pop_back();
    EXPECT_EQ(cfg.LoadCfgFromRow(damaged), kFail);
    StoredLayoutRow missing = good;
    missing.*blob = std::nullopt;
    try {
      cfg.LoadCfgFromRow(missing);
      ADD_FAILURE() << "a missing field must raise";
    } catch (const ComError& e) {
      EXPECT_EQ(e.Code(), kPointer);
    }
    const StoredLayoutRow after = cfg.MakeLayoutRow("K", 1, 1);
    EXPECT_EQ(after.listInfo, before.listInfo);
    EXPECT_EQ(after.columns, before.columns);
    EXPECT_EQ(after.tables, before.tables);
    EXPECT_EQ(after.visibility, before.visibility);
  }
}

// Random damage to a valid layout: every load either applies or changes nothing, and what it
// applies leaves a configuration whose every index is in range.
TEST(StoredLayout, RandomDamageNeverBreaksTheConfiguration) {
  SeededRng rng;
  const StoredLayoutRow good = OldUserLayout().MakeLayoutRow("K", 1, 1);
  int applied = 0;
  for (int round = 0; round < 3000; ++round) {
    StoredLayoutRow row = good;
    LayoutBytes* blobs[] = {&*row.listInfo, &*row.columns, &*row.tables, &*row.visibility};
    LayoutBytes& b = *blobs[rng() % 4];
    switch (rng() % 4) {
      case 0: b[rng() % b.size()] ^= static_cast<std::uint8_t>(1u << (rng() % 8)); break;
      case 1: b.resize(rng() % b.size()); break;
      case 2: b.insert(b.begin() + static_cast<long>(rng() % b.size()), static_cast<std::uint8_t>(rng())); break;
      default: {
        const size_t at = (rng() % (b.size() / 4)) * 4;  // an int32 item set to an extreme
        const std::uint32_t v = rng() % 2 ? 0x80000000u : 0x7FFFFFFFu;
        for (int i = 0; i < 4; ++i) b[at + static_cast<size_t>(i)] = static_cast<std::uint8_t>(v >> (8 * i));
      }
    }
    CMapCustGridCfg cfg = MakeCfg(NewColumns(), NewList());
    const LayoutBytes before = cfg.SaveColInfo();
    const Status32 st = cfg.LoadCfgFromRow(row);
    ASSERT_TRUE(st == kOk || st == kFail);
    if (st == kFail) {
      ASSERT_EQ(cfg.SaveColInfo(), before);
      continue;
    }
    ++applied;
    for (int index : cfg.GetColumnIndexes()) ASSERT_TRUE(index >= 0 && index < cfg.GetTotalColumnsCount());
    std::string sql;
    cfg.MakeSQL(sql);
    cfg.VerifySortInfo();
    EXPECT_TRUE(cfg.GetSortColumnID() == 0 || cfg.GetColumnIndexFromColumnID(cfg.GetSortColumnID()) >= 0);
  }
  EXPECT_GT(applied, 0);
}

}  // namespace
}  // namespace varion
