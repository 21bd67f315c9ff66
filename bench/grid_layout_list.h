// A large list for the grid benchmarks: 20 tables (a main table and joins in both directions,
// some with their own conditions) and 200 columns over them, three quarters of them shown.
#pragma once

#include <string>
#include <vector>

#include "grid/cust_grid_cfg.h"

namespace varion::bench {

struct LargeList {
  std::vector<std::string> texts;  // owns the descriptions' texts
  std::vector<CVelTableInfo> tables;
  std::vector<CVelColInfo> columns;
  CVelListInfo list{};

  LargeList() {
    texts.reserve(2000);
    for (int t = 0; t < 20; ++t) {
      CVelTableInfo info{};
      info.tableID = t + 1;
      info.parentTableID = t == 0 ? 0 : (t % 4 == 0 ? t : 1);
      info.alias = Keep("t" + std::to_string(t));
      info.tableName = Keep("tab_Tabela" + std::to_string(t));
      info.keyField = Keep("tb" + std::to_string(t) + "_Id");
      info.linkField = Keep("tb" + std::to_string(t) + "_IdNadrzedny");
      info.condition = Keep(t % 5 == 3 ? "t" + std::to_string(t) + ".tb_Aktywny = 1" : "");
      info.joinDirection = t % 3 == 2 ? 1 : 0;
      info.extraJoin = Keep(t % 7 == 6 ? "t" + std::to_string(t) + ".tb_Typ = 2" : "");
      tables.push_back(info);
    }
    for (int c = 0; c < 200; ++c) {
      CVelColInfo info{};
      info.allowShow = 1;
      info.allowSort = 1;
      info.kind = c % 50 == 49 ? kColKindNoData : 0;
      info.dbFieldName = Keep("tb" + std::to_string(c % 20) + "_Pole" + std::to_string(c));
      info.defCaption = Keep("Kolumna numer " + std::to_string(c));
      info.resultName = Keep(c % 3 == 0 ? "Wynik" + std::to_string(c) : "");
      info.width = 90;
      info.visible = c % 4 != 3;
      info.calcType = c % 10 == 0 ? 1 : 0;
      info.tableID = c % 20 + 1;
      info.columnID = c + 1;
      columns.push_back(info);
    }
    list.title = "Lista testowa";
    list.keyField = "tb0_Id";
    list.where = "t0.tb_Usuniety = 0";
    list.zoom = 100;
    list.defSortColumnID = 5;
    list.sortColumnID = 5;
    list.ascending = 1;
  }

  CMapCustGridCfg MakeCfg() const {
    return CMapCustGridCfg(&list, columns.data(), static_cast<int>(columns.size()), tables.data(),
                           static_cast<int>(tables.size()));
  }

 private:
  const char* Keep(std::string s) {
    texts.push_back(std::move(s));
    return texts.back().c_str();
  }
};

}  // namespace varion::bench
