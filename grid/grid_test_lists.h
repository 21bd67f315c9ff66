// Sample list descriptions shared by the grid tests: contractors with their main address and
// the address's country, as an application would declare them.
#pragma once

#include "grid/cust_grid_cfg.h"

namespace varion::testing {

enum SampleTable : std::int32_t { kTabContractor = 1, kTabAddress = 2, kTabCountry = 3, kTabPersonal = 4 };

enum SampleColumn : std::int32_t {
  kColId = 1,
  kColSymbol,
  kColName,
  kColCity,
  kColCountry,
  kColTurnover,
  kColLabel,     // expression
  kColNote,      // kind 11
  kColPrice,     // a user-chosen price level
  kColInternal,  // never shown
  kSampleColumnCount = kColInternal,
};

inline CVelColInfo SampleColumnInfo(std::int32_t id, std::int32_t table, const char* field, const char* caption) {
  CVelColInfo c{};
  c.allowShow = 1;
  c.allowSort = 1;
  c.allowFilter = 1;
  c.dbFieldName = field;
  c.defCaption = caption;
  c.width = 80;
  c.visible = 1;
  c.textColor = -1;
  c.backColor = -1;
  c.tableID = table;
  c.columnID = id;
  return c;
}

inline CustomFormat SampleFormat(std::int32_t id, const char* condition, const char* extraTables = "",
                                 const char* column = "", bool active = true) {
  CustomFormat f;
  f.id = id;
  f.condition = condition;
  f.extraTables = extraTables;
  f.column = column;
  f.active = active;
  return f;
}

inline std::vector<CVelColInfo> SampleColumns() {
  std::vector<CVelColInfo> c = {
      SampleColumnInfo(kColId, kTabContractor, "kh_Id", "Id"),
      SampleColumnInfo(kColSymbol, kTabContractor, "kh_Symbol", "Symbol"),
      SampleColumnInfo(kColName, kTabContractor, "kh_Nazwa", "Nazwa"),
      SampleColumnInfo(kColCity, kTabAddress, "adr_Miejscowosc", "Miejscowość"),
      SampleColumnInfo(kColCountry, kTabCountry, "pa_Nazwa", "Państwo"),
      SampleColumnInfo(kColTurnover, kTabContractor, "kh_Obrot", "Obrót"),
      SampleColumnInfo(kColLabel, kTabContractor, "kh_Symbol || ' ' || kh_Nazwa AS Etykieta", "Etykieta"),
      SampleColumnInfo(kColNote, kTabContractor, "Uwagi", "Uwagi"),
      SampleColumnInfo(kColPrice, kTabContractor, "tc_CenaNetto", "Cena netto"),
      SampleColumnInfo(kColInternal, kTabContractor, "kh_Ukryty", "Ukryty"),
  };
  c[kColId - 1].forcePresent = 1;
  c[kColId - 1].visible = 0;
  c[kColTurnover - 1].fieldType = static_cast<std::int32_t>(VelFieldType::Amount);
  c[kColTurnover - 1].calcType = static_cast<std::int32_t>(CalcType::Sum);
  c[kColLabel - 1].isExpression = 1;
  c[kColLabel - 1].resultName = "Etykieta";
  c[kColNote - 1].kind = kColKindNoData;
  c[kColPrice - 1].visible = 0;
  c[kColInternal - 1].allowShow = 0;
  c[kColCity - 1].resultName = "Miasto";
  return c;
}

inline std::vector<CVelTableInfo> SampleTables() {
  return {
      {kTabContractor, 0, 0, "kh", "kh__Kontrahent", "kh_Id", "", "", 0, 0, ""},
      {kTabAddress, 0, kTabContractor, "adr", "adr__Ewid", "adr_Id", "adr_IdObiektu", "", 0, 0,
       "adr.adr_TypAdresu = 1"},
      {kTabCountry, 0, kTabAddress, "pa", "sl_Panstwo", "pa_Id", "adr_IdPanstwo", "", 1, 0, ""},
      {kTabPersonal, 0, kTabContractor, "PwDane", "pw_Dane", "pwd_Id", "pwd_IdObiektu", "", 0, 0, ""},
  };
}

inline CVelListInfo SampleList() {
  CVelListInfo l{};
  l.listID = 7;
  l.defSortColumnID = kColSymbol;
  l.defAscending = 1;
  l.title = "Kontrahenci";
  l.horLines = 1;
  l.verLines = 1;
  l.rowHeaderVisible = 1;
  l.rowHeight = 18;
  l.colHeaderHeight = 20;
  l.rowHeaderWidth = 16;
  l.keyField = "kh_Id";
  l.zoom = 100;
  l.where = "kh.kh_Aktywny = 1";
  l.sortColumnID = kColSymbol;
  l.ascending = 1;
  return l;
}

inline CMapCustGridCfg MakeSampleCfg() {
  const auto columns = SampleColumns();
  const auto tables = SampleTables();
  const CVelListInfo list = SampleList();
  return CMapCustGridCfg(&list, columns.data(), static_cast<int>(columns.size()), tables.data(),
                         static_cast<int>(tables.size()));
}

}  // namespace varion::testing
