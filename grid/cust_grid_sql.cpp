// Statement building of CMapCustGridCfg: the list statement, its clauses, the summary
// statements, and the GROUP BY helper.
#include <algorithm>
#include <string_view>

#include "grid/cust_grid_cfg.h"

using varion::kFail;
using varion::kFalse;
using varion::kOk;
using varion::Status32;

namespace {

// Custom statements carry this condition where the filter and user conditions go.
constexpr std::string_view kWherePlaceholder = "1 = 1 AND 0 = 0";
constexpr std::string_view kFmtConditionPlaceholder = "{formatowanie_warunek}";
constexpr std::string_view kFmtTablesPlaceholder = "{formatowanie_dodatkowetabele}";
// The personal-data table joins only when the list asks for it: it is large and per object.
constexpr std::string_view kPwAlias = "PwDane";
constexpr std::string_view kPwTable = "pw_Dane";
const std::string kLeftJoin = " LEFT JOIN ", kAs = " AS ", kOn = " ON ";

void ReplaceAll(std::string& text, std::string_view what, std::string_view with) {
  if (what.empty()) return;
  size_t pos = 0;
  while ((pos = text.find(what, pos)) != std::string::npos) {
    text.replace(pos, what.size(), with);
    pos += with.size();
  }
}

void AppendCondition(std::string& where, const std::string& part) {
  if (part.empty()) return;
  if (!where.empty()) where += " AND ";
  where += part;
}

const char* AggregateOf(std::int32_t calcType) {
  switch (static_cast<varion::CalcType>(calcType)) {
    case varion::CalcType::Sum: return "SUM";
    case varion::CalcType::Avg: return "AVG";
    case varion::CalcType::Min: return "MIN";
    case varion::CalcType::Max: return "MAX";
    case varion::CalcType::Count: return "COUNT";
    default: return nullptr;
  }
}

bool NeedsQuoting(const std::string& name) { return name.find_first_of(" \t") != std::string::npos; }

// An expression column's text ends with " AS " + its result name; a summary needs the bare
// expression.
std::string WithoutAlias(const std::string& expression, const std::string& resultName) {
  const std::string tail = " AS " + resultName;
  if (!resultName.empty() && expression.size() > tail.size() &&
      expression.compare(expression.size() - tail.size(), tail.size(), tail) == 0)
    return expression.substr(0, expression.size() - tail.size());
  return expression;
}

std::string CalcName(std::int32_t columnID) { return "vel_Calc" + std::to_string(columnID); }

}  // namespace

// --- clauses ---------------------------------------------------------------------------------

bool CMapCustGridCfg::IsColumnRequired(const CVelColInfoCustImpl& column, bool allColumns) const {
  if (column.forcePresent) return true;
  if (!column.allowShow) return false;
  return allColumns || column.visible ||
         (m_formats && m_formats->UsesColumn(column.dbFieldName, column.defCaption));
}

std::string CMapCustGridCfg::GetSqlForColumn(const CVelColInfoCustImpl& column, const std::string& tableAlias) const {
  if (column.isExpression) return column.dbFieldName;
  std::string sql;
  if (column.kind == varion::kColKindNoData) {
    sql.reserve(8 + column.dbFieldName.size());
    sql += "NULL AS ";
    sql += column.dbFieldName;
    return sql;
  }
  sql.reserve(tableAlias.size() + column.dbFieldName.size() + column.resultName.size() + 5);
  sql += tableAlias;
  sql += '.';
  sql += column.dbFieldName;
  if (!column.resultName.empty()) {
    sql += " AS ";
    sql += column.resultName;
  }
  return sql;
}

Status32 CMapCustGridCfg::MakeFieldsList(std::string& fields, bool allColumns) {
  return MakeFieldsListEx(fields, allColumns, true);
}

Status32 CMapCustGridCfg::MakeFieldsListEx(std::string& fields, bool allColumns, bool customFmts) {
  std::string out;
  out.reserve(fields.capacity() > 0 ? fields.capacity() : 1024);
  const std::string* alias = nullptr;
  std::int32_t aliasTable = 0;
  const int total = GetTotalColumnsCount();
  for (int i = 0; i < total; ++i) {
    const Col& col = *ColumnAt(i);
    // A column without a field has nothing to read; it is filled by the list owner.
    if (!IsColumnRequired(col, allColumns) || col.dbFieldName.empty()) continue;
    if (!alias || col.tableID != aliasTable) {
      alias = &AliasOfTable(col.tableID);
      aliasTable = col.tableID;
    }
    if (!out.empty()) out += ',';
    out += GetSqlForColumn(col, *alias);
  }
  if (customFmts && m_formats) m_formats->AppendFields(out);
  if (out.empty()) return kFail;
  fields = std::move(out);
  return kOk;
}

std::vector<int> CMapCustGridCfg::GetColToRsItemMap(bool allColumns) const {
  std::vector<int> map(static_cast<size_t>(GetTotalColumnsCount()), -1);
  int item = 0;
  for (size_t i = 0; i < map.size(); ++i) {
    const Col& col = *ColumnAt(static_cast<int>(i));
    if (IsColumnRequired(col, allColumns) && !col.dbFieldName.empty()) map[i] = item++;
  }
  return map;
}

std::string CMapCustGridCfg::GetFieldFromIndex(int index) const {
  const Col& col = GetColumnInfo(index);
  if (col.kind == varion::kColKindNoData) return {};
  if (col.isExpression) return WithoutAlias(col.dbFieldName, col.resultName);
  if (HasCustomSql()) return NeedsQuoting(col.dbFieldName) ? GetDialect().QuoteIdentifier(col.dbFieldName) : col.dbFieldName;
  return AliasOfTable(col.tableID) + "." + col.dbFieldName;
}

Status32 CMapCustGridCfg::MakeFrom(std::string& from, std::string& where) { return MakeFromEx(from, where, true); }

Status32 CMapCustGridCfg::MakeFromEx(std::string& from, std::string& where, bool customFmts) {
  if (m_tables.empty()) return kFail;
  const CVelTableInfoImpl& main = m_tables.front();
  if (main.tableName.empty() && m_ignoreEmptyMainTable) return kOk;
  from.reserve(from.size() + 64 * m_tables.size());
  from += main.tableName;
  from += " AS ";
  from += main.alias;
  AppendCondition(where, main.condition);
  for (size_t i = 1; i < m_tables.size(); ++i) {
    const CVelTableInfoImpl& t = m_tables[i];
    if (t.alias == kPwAlias && t.tableName == kPwTable && !m_usePwTable) continue;
    // A row without a joined row must survive the joined table's own condition.
    if (!t.condition.empty()) AppendCondition(where, "((" + t.keyField + " is NULL) OR (" + t.condition + "))");
    const CVelTableInfoImpl& parent = m_tables[static_cast<size_t>(GetTableIndexFromTableID(t.parentTableID))];
    for (const std::string* piece : {&kLeftJoin, &t.tableName, &kAs, &t.alias, &kOn, &parent.alias}) from += *piece;
    from += '.';
    const bool toParent = t.joinDirection == 0;
    from += toParent ? parent.keyField : t.linkField;
    from += '=';
    from += t.alias;
    from += '.';
    from += toParent ? t.linkField : t.keyField;
    if (!t.extraJoin.empty()) {
      from += " AND ";
      from += t.extraJoin;
    }
  }
  if (customFmts && m_formats) from += m_formats->GetExtraTables();
  return kOk;
}

Status32 CMapCustGridCfg::MakeGroupBy(std::string& groupBy, bool /*allColumns*/) {
  groupBy.clear();
  if (m_groupBy.empty()) return kOk;
  groupBy = m_groupBy;
  return kOk;
}

Status32 CMapCustGridCfg::MakeStandardOrderBy(const CVelColInfoCustImpl& column, std::string& orderBy) const {
  if (column.isExpression) {
    if (column.resultName.empty()) return kFail;
    orderBy = column.resultName;
    return kOk;
  }
  if (!HasCustomSql() && !m_tables.empty()) {
    orderBy = AliasOfTable(column.tableID) + "." + column.dbFieldName;
    return kOk;
  }
  orderBy = NeedsQuoting(column.dbFieldName) ? GetDialect().QuoteIdentifier(column.dbFieldName) : column.dbFieldName;
  return kOk;
}

Status32 CMapCustGridCfg::MakeOrderBy(std::string& orderBy) {
  orderBy.clear();
  if (m_list.sortColumnID == 0) return kOk;
  const Col* col = ColumnAt(GetColumnIndexFromColumnID(m_list.sortColumnID));
  if (!col) return kOk;
  if (!col->allowShow || !col->visible) {
    m_list.sortColumnID = 0;
    return kOk;
  }
  std::string text;
  if (m_list.ascending) {
    text = col->orderByAsc;
    if (text.empty()) {
      const Status32 st = MakeStandardOrderBy(*col, text);
      if (st < 0) return st;
    }
  } else if (!col->orderByDesc.empty()) {
    text = col->orderByDesc;
  } else {
    text = col->orderByAsc;
    if (text.empty()) {
      const Status32 st = MakeStandardOrderBy(*col, text);
      if (st < 0) return st;
    }
    text += " DESC";
  }
  orderBy = std::move(text);
  return kOk;
}

void CMapCustGridCfg::AppendUserWhere(std::string& where) const {
  AppendCondition(where, m_list.where);
  if (m_filterActive) AppendCondition(where, m_filterWhere);
}

// --- statements ------------------------------------------------------------------------------

std::string CMapCustGridCfg::ExpandCustomSql(const std::string& where, const std::string& orderBy,
                                             bool customFmts) const {
  std::string sql = m_sql;
  if (!where.empty()) ReplaceAll(sql, kWherePlaceholder, where);
  if (!orderBy.empty()) sql += " ORDER BY " + orderBy;
  if (customFmts && m_formats) {
    ReplaceAll(sql, kFmtConditionPlaceholder, m_formats->GetCondition());
    ReplaceAll(sql, kFmtTablesPlaceholder, m_formats->GetExtraTables());
  }
  return sql;
}

std::string CMapCustGridCfg::CustomSqlWhere(const std::string& first) const {
  std::string where = first;
  AppendCondition(where, m_userWhere);
  if (m_filterActive) AppendCondition(where, m_filterWhere);
  return where;
}

Status32 CMapCustGridCfg::BuildStatement(std::string& sql, bool allColumns, const std::string& entryWhere,
                                         bool orderBy) {
  if (HasCustomSql()) {
    std::string order;
    if (orderBy && MakeOrderBy(order) < 0) order.clear();
    sql = ExpandCustomSql(CustomSqlWhere(entryWhere), order, true);
    return kOk;
  }

  std::string fields, from, where, order, group;
  Status32 st = MakeFieldsList(fields, allColumns);
  if (st < 0) return st;
  st = MakeFrom(from, where);
  if (st < 0) return st;
  if (orderBy) {
    st = MakeOrderBy(order);
    if (st < 0) return st;
  }
  st = MakeGroupBy(group, allColumns);
  if (st < 0) return st;
  AppendUserWhere(where);
  AppendCondition(where, entryWhere);
  AppendCondition(where, m_userWhere);

  std::string text;
  text.reserve(fields.size() + from.size() + where.size() + group.size() + order.size() + 40);
  text += "SELECT ";
  text += fields;
  if (!(from.empty() && m_ignoreEmptyMainTable)) {
    text += " FROM ";
    text += from;
  }
  if (!where.empty()) {
    text += " WHERE ";
    text += where;
  }
  if (!group.empty()) {
    text += " GROUP BY ";
    text += group;
  }
  if (!order.empty()) {
    text += " ORDER BY ";
    text += order;
  }
  sql = std::move(text);
  m_sqlChanged = false;
  return kOk;
}

Status32 CMapCustGridCfg::MakeSQL(std::string& sql, bool allColumns) { return BuildStatement(sql, allColumns, {}, true); }

Status32 CMapCustGridCfg::MakeSQLForCustomEntry(std::string& sql, bool allColumns) {
  return BuildStatement(sql, allColumns, m_customEntryWhere, true);
}

Status32 CMapCustGridCfg::MakeSQLEx(varion::SqlClauses& clauses, bool allColumns, bool customFmts) {
  if (HasCustomSql()) {
    std::string order;
    if (MakeOrderBy(order) < 0) order.clear();
    clauses = {};
    clauses.customSql = ExpandCustomSql(CustomSqlWhere({}), order, customFmts);
    return kOk;
  }

  varion::SqlClauses out;
  Status32 st = MakeFieldsListEx(out.fields, allColumns, customFmts);
  if (st < 0) return st;
  st = MakeFromEx(out.from, out.where, customFmts);
  if (st < 0) return st;
  st = MakeOrderBy(out.orderBy);
  if (st < 0) return st;
  st = MakeGroupBy(out.groupBy, allColumns);
  if (st < 0) return st;
  AppendUserWhere(out.where);
  AppendCondition(out.where, m_userWhere);
  if (!(out.from.empty() && m_ignoreEmptyMainTable)) out.fromWord = "FROM";
  clauses = std::move(out);
  m_sqlChanged = false;
  return kOk;
}

// --- summaries -------------------------------------------------------------------------------

std::string CMapCustGridCfg::GetCalcSqlForColumn(const CVelColInfoCustImpl& column,
                                                 const std::string& tableAlias) const {
  const char* aggregate = AggregateOf(column.calcType);
  if (!aggregate || column.kind == varion::kColKindNoData || column.dbFieldName.empty()) return {};
  const std::string argument =
      column.isExpression ? WithoutAlias(column.dbFieldName, column.resultName) : tableAlias + "." + column.dbFieldName;
  return std::string(aggregate) + "(" + argument + ") AS " + CalcName(column.columnID);
}

Status32 CMapCustGridCfg::MakeCalcFieldsList(std::string& fields) {
  std::string out;
  for (int i = 0; i < GetTotalColumnsCount(); ++i) {
    const Col& col = *ColumnAt(i);
    if (!IsColumnRequired(col, false)) continue;
    const std::string item = GetCalcSqlForColumn(col, AliasOfTable(col.tableID));
    if (item.empty()) continue;
    if (!out.empty()) out += ",";
    out += item;
  }
  fields = std::move(out);
  return fields.empty() ? kFalse : kOk;
}

std::string CMapCustGridCfg::RecordsetName(const Col& column) const {
  const std::string& name = column.isExpression || !column.resultName.empty() ? column.resultName : column.dbFieldName;
  return NeedsQuoting(name) ? GetDialect().QuoteIdentifier(name) : name;
}

// Summaries over the list statement used as a derived table: columns by their recordset names.
std::string CMapCustGridCfg::MakeDerivedCalcFields() const {
  std::string out;
  for (int i = 0; i < GetTotalColumnsCount(); ++i) {
    const Col& col = *ColumnAt(i);
    const char* aggregate = AggregateOf(col.calcType);
    if (!aggregate || !IsColumnRequired(col, false) || col.kind == varion::kColKindNoData || col.dbFieldName.empty())
      continue;
    const std::string name = RecordsetName(col);
    if (name.empty()) continue;
    if (!out.empty()) out += ",";
    out += std::string(aggregate) + "(" + kCalcSourceAlias + "." + name + ") AS " + CalcName(col.columnID);
  }
  return out;
}

void CMapCustGridCfg::AppendCalcIdFrom(std::string& from) const {
  std::string where = m_calcUserWhere;
  if (m_filterActive) AppendCondition(where, m_filterWhere);
  from += "(" + ExpandCustomSql(where, {}, true) + ") AS " + kCalcSourceAlias;
}

void CMapCustGridCfg::AppendCalcIdWhere(std::string& where) const {
  if (!IsSelectedSumMode()) return;
  std::string key;
  if (HasCustomSql()) {
    if (!m_list.keyField.empty()) key = std::string(kCalcSourceAlias) + "." + m_list.keyField;
  } else if (!m_tables.empty() && !m_tables.front().keyField.empty()) {
    key = m_tables.front().alias + "." + m_tables.front().keyField;
  }
  if (key.empty()) return;
  if (m_calcIds.empty()) {
    AppendCondition(where, "1 = 0");  // nothing selected, nothing summed
    return;
  }
  std::string list;
  for (std::int32_t id : m_calcIds) {
    if (!list.empty()) list += ",";
    list += std::to_string(id);
  }
  AppendCondition(where, key + " IN (" + list + ")");
}

Status32 CMapCustGridCfg::MakeCalcSQL(std::string& sql) {
  sql.clear();
  std::string fields, from, where;
  if (HasCustomSql()) {
    fields = MakeDerivedCalcFields();
    if (fields.empty()) return kFalse;
    AppendCalcIdFrom(from);
  } else {
    Status32 st = MakeCalcFieldsList(fields);
    if (st != kOk) return st;
    st = MakeFrom(from, where);
    if (st < 0) return st;
    AppendUserWhere(where);
    AppendCondition(where, m_calcUserWhere);
  }
  AppendCalcIdWhere(where);
  std::string text = "SELECT " + fields;
  if (!(from.empty() && m_ignoreEmptyMainTable)) text += " FROM " + from;
  if (!where.empty()) text += " WHERE " + where;
  sql = std::move(text);
  return kOk;
}

Status32 CMapCustGridCfg::GetFullSummaryQuery(std::string& sql) {
  sql.clear();
  const std::string fields = MakeDerivedCalcFields();
  if (fields.empty()) return kFalse;
  std::string inner;
  const bool changed = m_sqlChanged;
  const Status32 st = BuildStatement(inner, false, {}, false);
  m_sqlChanged = changed;
  if (st < 0) return st;
  sql = "SELECT " + fields + " FROM (" + inner + ") AS " + kCalcSourceAlias;
  return kOk;
}

// --- GROUP BY helper -------------------------------------------------------------------------

Status32 MakeGroupByHelper(const CBaseCustGridCfg& cfg, const std::string& moduleId, std::string& groupBy) {
  const int total = cfg.GetTotalColumnsCount();
  if (total == 0) return kFail;
  const auto& modules = CMapCustGridCfg::kGroupBySettlementModules;
  const bool settlementModule =
      std::find(std::begin(modules), std::end(modules), std::string_view(moduleId)) != std::end(modules);
  std::string out;
  for (int i = 0; i < total; ++i) {
    const CVelColInfoCustImpl& col = cfg.GetColumnInfo(i);
    switch (col.kind) {
      case varion::kColKindImage:
      case varion::kColKindCheckImage: continue;
      case varion::kColKindNoData:
      case varion::kColKindComputed:
      case varion::kColKindBalance:
      case varion::kColKindOverdue:
      case varion::kColKindDaysOverdue:
        if (!settlementModule) continue;
        break;
      default: break;
    }
    if (!col.visible && col.dbFieldName.empty()) continue;
    // A visible column without a field has nothing to group by: it is left out wherever it
    // stands, so the list never holds an empty item (",," or a leading or trailing comma).
    const std::string_view item =
        col.kind == varion::kColKindAddress ? std::string_view("adr_Adres,adr_Miejscowosc") : col.dbFieldName;
    if (item.empty()) continue;
    if (!out.empty()) out += ",";
    out += item;
  }
  groupBy = std::move(out);
  return kOk;
}
