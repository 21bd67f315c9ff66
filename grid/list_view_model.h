// What a report-style list control shows of a grid configuration, and the user's actions on the
// control (header click, column drag, column resize, the column chooser) as changes of the
// configuration. The gallery's list view stands in with it for the grid library's own grid.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "base/export.h"
#include "db/connection.h"
#include "grid/cust_grid_cfg.h"

namespace varion {

struct ListViewColumn {
  int index = 0;               // the configuration's column index
  std::int32_t columnID = 0;
  std::string caption;
  std::int32_t width = 0;
  std::int32_t align = 0;      // 0 left, 1 centre, 2 right
  int sort = 0;                // 1 ascending, -1 descending, 0 not the sort column
};

class VARION_API ListViewModel {
 public:
  explicit ListViewModel(CMapCustGridCfg& cfg) : m_cfg(cfg) {}

  // The shown columns, in the order shown.
  std::vector<ListViewColumn> Columns() const;
  // Runs the list statement; a row holds the shown columns' texts in the order shown, "" for
  // NULL and for a column the recordset lacks. Raises ComError (a failed statement build too).
  std::vector<std::vector<std::string>> Load(const db::Connection& connection);
  // The statement of the last Load.
  const std::string& Sql() const { return m_sql; }

  // A header click sorts by the column; a second click turns the direction. False for a column
  // that does not sort.
  bool ClickColumn(int position);
  bool MoveColumn(int from, int to) { return m_cfg.MoveVisibleColumn(from, to); }
  bool SetColumnWidth(int position, std::int32_t width);
  bool ShowColumn(std::int32_t columnID, bool show) { return m_cfg.SetVisible(columnID, show); }

 private:
  CMapCustGridCfg& m_cfg;
  std::string m_sql;
};

}  // namespace varion
