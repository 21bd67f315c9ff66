#include "grid/custom_columns.h"

const CVelColInfoCustImpl* CCustomColumnsCfgImpl::GetColumn(int index) const {
  if (index < 0 || index >= GetCount()) return nullptr;
  return &m_columns[static_cast<size_t>(index)];
}

CVelColInfoCustImpl* CCustomColumnsCfgImpl::GetColumn(int index) {
  if (index < 0 || index >= GetCount()) return nullptr;
  return &m_columns[static_cast<size_t>(index)];
}

int CCustomColumnsCfgImpl::AddColumn(const CVelColInfoCustImpl& column) {
  if (column.dbFieldName.empty()) return -1;
  if (column.isExpression && column.resultName.empty()) return -1;
  m_columns.push_back(column);
  return GetCount() - 1;
}

bool CCustomColumnsCfgImpl::RemoveColumn(int index) {
  if (index < 0 || index >= GetCount()) return false;
  m_columns.erase(m_columns.begin() + index);
  return true;
}

std::unique_ptr<ICustomColumnsCfg> CCustomColumnsCfgImpl::Clone() const {
  return std::make_unique<CCustomColumnsCfgImpl>(*this);
}

int CCustomColumnsCfgImpl::AddField(const std::string& caption, std::int32_t tableID, const std::string& field,
                                    VelFieldType type) {
  CVelColInfoCustImpl col;
  col.defCaption = caption;
  col.tableID = tableID;
  col.dbFieldName = field;
  col.fieldType = static_cast<std::int32_t>(type);
  return AddColumn(col);
}

int CCustomColumnsCfgImpl::AddExpression(const std::string& caption, const std::string& expression,
                                         const std::string& resultName, VelFieldType type) {
  if (expression.empty() || resultName.empty()) return -1;
  CVelColInfoCustImpl col;
  col.defCaption = caption;
  col.dbFieldName = "(" + expression + ") AS " + resultName;
  col.isExpression = 1;
  col.resultName = resultName;
  col.fieldType = static_cast<std::int32_t>(type);
  return AddColumn(col);
}
