#include "grid/list_view_model.h"

namespace varion {

std::vector<ListViewColumn> ListViewModel::Columns() const {
  std::vector<ListViewColumn> out;
  for (int index : m_cfg.GetColumnIndexes()) {
    const CVelColInfoCustImpl& col = m_cfg.GetColumnInfo(index);
    int sort = 0;
    if (m_cfg.GetSortColumnID() == col.columnID) sort = m_cfg.GetAscending() ? 1 : -1;
    out.push_back({index, col.columnID, m_cfg.GetColCaption(col), col.width, col.align, sort});
  }
  return out;
}

std::vector<std::vector<std::string>> ListViewModel::Load(const db::Connection& connection) {
  m_cfg.SetDialect(connection.Dialect());
  const Status32 st = m_cfg.MakeSQL(m_sql);
  if (st < 0) throw ComError(st, "Nie można zbudować zapytania listy.");
  db::Recordset rs = connection.OpenRS(m_sql);
  // Fields by the name the statement gives them: the same for a custom statement.
  std::vector<int> fields;
  for (int index : m_cfg.GetColumnIndexes()) {
    const CVelColInfoCustImpl& col = m_cfg.GetColumnInfo(index);
    const std::string& name = col.isExpression || !col.resultName.empty() ? col.resultName : col.dbFieldName;
    fields.push_back(rs.FindField(name));
  }
  std::vector<std::vector<std::string>> rows;
  for (; !rs.IsEOF(); rs.MoveNext()) {
    std::vector<std::string>& row = rows.emplace_back();
    for (int field : fields) row.push_back(field < 0 ? std::string() : rs.GetCollect(field).AsText());
  }
  return rows;
}

bool ListViewModel::ClickColumn(int position) {
  const int index = m_cfg.GetVisibleColIndex(position);
  if (index < 0) return false;
  const CVelColInfoCustImpl& col = m_cfg.GetColumnInfo(index);
  if (!col.allowSort) return false;
  if (m_cfg.GetSortColumnID() == col.columnID) {
    m_cfg.SetAscending(!m_cfg.GetAscending());
  } else {
    m_cfg.SetSortColumnID(col.columnID);
    m_cfg.SetAscending(true);
  }
  return true;
}

bool ListViewModel::SetColumnWidth(int position, std::int32_t width) {
  const int index = m_cfg.GetVisibleColIndex(position);
  if (index < 0 || width < 0) return false;
  m_cfg.GetColumnInfo(index).width = width;
  return true;
}

}  // namespace varion
