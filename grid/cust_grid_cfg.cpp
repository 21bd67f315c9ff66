// Construction, descriptions, columns, visible order and settings of CMapCustGridCfg.
#include "grid/cust_grid_cfg.h"

#include <algorithm>

using varion::ComError;
using varion::kFail;
using varion::kInvalidArg;
using varion::kOk;
using varion::Status32;

namespace {

struct OperatorRow {
  varion::FilterOperator op;
  const char* text;
};

const OperatorRow kOperators[] = {
    {varion::FilterOperator::Equal, "równe"},
    {varion::FilterOperator::NotEqual, "różne od"},
    {varion::FilterOperator::Less, "mniejsze od"},
    {varion::FilterOperator::LessOrEqual, "mniejsze lub równe"},
    {varion::FilterOperator::Greater, "większe od"},
    {varion::FilterOperator::GreaterOrEqual, "większe lub równe"},
    {varion::FilterOperator::Contains, "zawiera"},
    {varion::FilterOperator::NotContains, "nie zawiera"},
    {varion::FilterOperator::BeginsWith, "zaczyna się od"},
    {varion::FilterOperator::EndsWith, "kończy się na"},
    {varion::FilterOperator::IsEmpty, "jest puste"},
    {varion::FilterOperator::IsNotEmpty, "nie jest puste"},
};

// Which operators each field type offers, as bits of FilterOperator.
constexpr unsigned Bit(varion::FilterOperator op) { return 1u << static_cast<unsigned>(op); }
using FO = varion::FilterOperator;
constexpr unsigned kOrdered = Bit(FO::Equal) | Bit(FO::NotEqual) | Bit(FO::Less) | Bit(FO::LessOrEqual) |
                              Bit(FO::Greater) | Bit(FO::GreaterOrEqual) | Bit(FO::IsEmpty) | Bit(FO::IsNotEmpty);
constexpr unsigned kTextOps = Bit(FO::Equal) | Bit(FO::NotEqual) | Bit(FO::Contains) | Bit(FO::NotContains) |
                              Bit(FO::BeginsWith) | Bit(FO::EndsWith) | Bit(FO::IsEmpty) | Bit(FO::IsNotEmpty);

unsigned OperatorsOf(VelFieldType type) {
  switch (type) {
    case VelFieldType::Integer:
    case VelFieldType::Amount:
    case VelFieldType::Double:
    case VelFieldType::Date: return kOrdered;
    case VelFieldType::Bool: return Bit(FO::Equal) | Bit(FO::NotEqual);
    case VelFieldType::List: return Bit(FO::Equal) | Bit(FO::NotEqual) | Bit(FO::IsEmpty) | Bit(FO::IsNotEmpty);
    default: return kTextOps;
  }
}

std::string JoinLines(const std::vector<varion::ComboItem>& items) {
  std::string out;
  for (const auto& item : items) {
    if (!out.empty()) out += '\n';
    out += item.text;
  }
  return out;
}

[[noreturn]] void ThrowBadIndex(const char* what) {
  throw ComError(kInvalidArg, std::string("Nieprawidłowy indeks: ") + what);
}

}  // namespace

std::vector<varion::ComboItem> CBaseCustGridCfg::FillOperatorsListComboBox(VelFieldType type) {
  std::vector<varion::ComboItem> items;
  const unsigned ops = OperatorsOf(type);
  for (const OperatorRow& row : kOperators)
    if (ops & Bit(row.op)) items.push_back({row.text, static_cast<std::int32_t>(row.op)});
  return items;
}

std::string CBaseCustGridCfg::FillOperatorsListChoiceList(VelFieldType type) {
  return JoinLines(FillOperatorsListComboBox(type));
}

CMapCustGridCfg::CMapCustGridCfg() : m_customColumns(std::make_unique<CCustomColumnsCfgImpl>()) {}

CMapCustGridCfg::CMapCustGridCfg(const CVelListInfo* list, const CVelColInfo* columns, int columnCount,
                                 const CVelTableInfo* tables, int tableCount, std::int32_t source)
    : CMapCustGridCfg() {
  m_source = source;
  if (list) SetList(*list);
  SetTables(tables, tableCount);
  SetColumns(columns, columnCount);
}

CMapCustGridCfg::CMapCustGridCfg(const CMapCustGridCfg& other) : CBaseCustGridCfg(other) { *this = other; }

CMapCustGridCfg& CMapCustGridCfg::operator=(const CMapCustGridCfg& other) {
  if (this == &other) return *this;
  CBaseCustGridCfg::operator=(other);
  m_list = other.m_list;
  m_columns = other.m_columns;
  m_tables = other.m_tables;
  m_customColumns = other.m_customColumns->Clone();
  m_formats = other.m_formats ? std::make_unique<varion::CustomFormatSet>(*other.m_formats) : nullptr;
  m_formatsSource = other.m_formatsSource;
  m_connection = other.m_connection;
  m_loadStatus = other.m_loadStatus;
  m_visible = other.m_visible;
  m_translationStored = other.m_translationStored;
  m_translationCurrent = other.m_translationCurrent;
  m_customNames = other.m_customNames;
  m_calcIds = other.m_calcIds;
  m_sql = other.m_sql;
  m_storedSql = other.m_storedSql;
  m_storedSqlVersion = other.m_storedSqlVersion;
  m_filterWhere = other.m_filterWhere;
  m_userWhere = other.m_userWhere;
  m_calcUserWhere = other.m_calcUserWhere;
  m_customEntryWhere = other.m_customEntryWhere;
  m_groupBy = other.m_groupBy;
  m_source = other.m_source;
  m_gridVersion = other.m_gridVersion;
  m_ignoreForcePresent = other.m_ignoreForcePresent;
  m_sqlChanged = other.m_sqlChanged;
  m_ignoreEmptyMainTable = other.m_ignoreEmptyMainTable;
  m_usePwTable = other.m_usePwTable;
  m_autoUpdate = other.m_autoUpdate;
  m_suppressLayout = other.m_suppressLayout;
  m_filterActive = other.m_filterActive;
  m_useCustomNamesInList = other.m_useCustomNamesInList;
  return *this;
}

CMapCustGridCfg::~CMapCustGridCfg() = default;

std::unique_ptr<CBaseCustGridCfg> CMapCustGridCfg::Clone() const { return std::make_unique<CMapCustGridCfg>(*this); }

// --- columns ---------------------------------------------------------------------------------

bool CMapCustGridCfg::HasCustomColumns() const { return AllowCustomColumns() && m_customColumns->GetCount() > 0; }

ICustomColumnsCfg* CMapCustGridCfg::CustomColumns() { return AllowCustomColumns() ? m_customColumns.get() : nullptr; }

int CMapCustGridCfg::GetTotalColumnsCount() const {
  return static_cast<int>(m_columns.size()) + (HasCustomColumns() ? m_customColumns->GetCount() : 0);
}

CMapCustGridCfg::Col* CMapCustGridCfg::ColumnAt(int index) {
  return const_cast<Col*>(static_cast<const CMapCustGridCfg*>(this)->ColumnAt(index));
}

const CMapCustGridCfg::Col* CMapCustGridCfg::ColumnAt(int index) const {
  const int internal = GetInternalColumnsCount();
  if (index < 0) return nullptr;
  if (index < internal) return &m_columns[static_cast<size_t>(index)];
  if (!HasCustomColumns()) return nullptr;
  return m_customColumns->GetColumn(index - internal);
}

const CVelColInfoCustImpl& CMapCustGridCfg::GetColumnInfo(int index) const {
  const Col* col = ColumnAt(index);
  if (!col) ThrowBadIndex("kolumna");
  return *col;
}

CVelColInfoCustImpl& CMapCustGridCfg::GetColumnInfo(int index) {
  Col* col = ColumnAt(index);
  if (!col) ThrowBadIndex("kolumna");
  return *col;
}

const CVelTableInfoImpl& CMapCustGridCfg::GetTable(int index) const {
  if (index < 0 || index >= GetTablesCount()) ThrowBadIndex("tabela");
  return m_tables[static_cast<size_t>(index)];
}

int CMapCustGridCfg::GetTableIndexFromTableID(std::int32_t tableID) const {
  for (size_t i = 0; i < m_tables.size(); ++i)
    if (m_tables[i].tableID == tableID) return static_cast<int>(i);
  return 0;
}

const std::string& CMapCustGridCfg::AliasOfTable(std::int32_t tableID) const {
  static const std::string kNone;
  if (m_tables.empty()) return kNone;
  return m_tables[static_cast<size_t>(GetTableIndexFromTableID(tableID))].alias;
}

VelFieldType CMapCustGridCfg::GetFieldType(int index) const {
  return static_cast<VelFieldType>(GetColumnInfo(index).fieldType);
}

std::string CMapCustGridCfg::GetColFieldName(int index) const { return GetColumnInfo(index).dbFieldName; }

int CMapCustGridCfg::GetColumnIndexFromColumnID(std::int32_t columnID) const {
  const int total = GetTotalColumnsCount();
  if (!HasCustomSql()) return columnID >= 1 && columnID <= total ? columnID - 1 : -1;
  for (int i = 0; i < total; ++i)
    if (ColumnAt(i)->columnID == columnID) return i;
  return -1;
}

void CMapCustGridCfg::RenumberUserColumns() {
  const int internal = GetInternalColumnsCount();
  for (int k = 0; k < m_customColumns->GetCount(); ++k) m_customColumns->GetColumn(k)->columnID = internal + 1 + k;
}

void CMapCustGridCfg::SetTables(const CVelTableInfo* tables, int count) {
  m_tables.clear();
  for (int i = 0; tables && i < count; ++i) {
    m_tables.emplace_back();
    m_tables.back().InitTableInfo(tables[i], m_source);
  }
  m_sqlChanged = true;
}

void CMapCustGridCfg::SetColumns(const CVelColInfo* columns, int count) {
  m_columns.clear();
  for (int i = 0; columns && i < count; ++i) {
    m_columns.emplace_back();
    m_columns.back().InitColumnInfo(columns[i], m_source, m_ignoreForcePresent != 0);
  }
  RenumberUserColumns();
  GenerateDefaultColumnsInfo();
  m_sqlChanged = true;
}

void CMapCustGridCfg::InsertColumn(int index, const CVelColInfo& column) {
  index = std::clamp(index, 0, GetInternalColumnsCount());
  Col col;
  col.InitColumnInfo(column, m_source, m_ignoreForcePresent != 0);
  m_columns.insert(m_columns.begin() + index, std::move(col));
  ShiftVisibleFrom(index, 1);
  for (std::int32_t& current : m_translationCurrent)
    if (current >= index) ++current;
  RenumberUserColumns();
  UpdateVisibilityForColIndex(index);
  m_sqlChanged = true;
}

void CMapCustGridCfg::AddColumn(const CVelColInfo& column) { InsertColumn(GetInternalColumnsCount(), column); }

void CMapCustGridCfg::SetList(const CVelListInfo& list) {
  m_list.InitListInfo(list);
  m_sqlChanged = true;
}

// --- visible order ---------------------------------------------------------------------------

void CMapCustGridCfg::GenerateDefaultColumnsInfo() {
  m_visible.clear();
  for (int i = 0; i < GetTotalColumnsCount(); ++i) {
    const Col* col = ColumnAt(i);
    if (col->visible && col->allowShow) m_visible.push_back(i);
  }
}

int CMapCustGridCfg::GetVisibleColIndex(int position) const {
  if (position < 0 || position >= GetColumnsCount()) return -1;
  return m_visible[static_cast<size_t>(position)];
}

void CMapCustGridCfg::ShiftVisibleFrom(int index, int by) {
  for (int& v : m_visible)
    if (v >= index) v += by;
}

void CMapCustGridCfg::UpdateVisibilityForColIndex(int index) {
  const Col* col = ColumnAt(index);
  if (!col) return;
  const auto it = std::find(m_visible.begin(), m_visible.end(), index);
  if (col->visible && col->allowShow) {
    if (it == m_visible.end()) m_visible.push_back(index);
  } else if (it != m_visible.end()) {
    m_visible.erase(it);
  }
}

bool CMapCustGridCfg::MoveVisibleColumn(int from, int to) {
  const int n = GetColumnsCount();
  if (from < 0 || from >= n || to < 0 || to >= n) return false;
  if (from == to) return true;
  const auto first = m_visible.begin();
  if (from < to) std::rotate(first + from, first + from + 1, first + to + 1);
  else std::rotate(first + to, first + from, first + from + 1);
  return true;
}

void CMapCustGridCfg::RemoveFromVisibleCols(int index) {
  m_visible.erase(std::remove(m_visible.begin(), m_visible.end(), index), m_visible.end());
  if (Col* col = ColumnAt(index)) col->visible = 0;
  m_sqlChanged = true;
}

void CMapCustGridCfg::AddNewColsToVisibility() {
  for (int i = 0; i < GetTotalColumnsCount(); ++i) {
    const Col* col = ColumnAt(i);
    if (col->visible && col->allowShow && std::find(m_visible.begin(), m_visible.end(), i) == m_visible.end())
      m_visible.push_back(i);
  }
}

void CMapCustGridCfg::UpdateCfgAfterCfgChanges() {
  RenumberUserColumns();
  std::vector<int> kept;
  for (int index : m_visible) {
    const Col* col = ColumnAt(index);
    if (col && col->visible && col->allowShow && std::find(kept.begin(), kept.end(), index) == kept.end())
      kept.push_back(index);
  }
  m_visible = std::move(kept);
  AddNewColsToVisibility();
  VerifySortInfo();
  m_sqlChanged = true;
}

int CMapCustGridCfg::GetIndexFromColWoH(int col) const { return GetVisibleColIndex(col); }

int CMapCustGridCfg::GetColFromColumnIdWoH(std::int32_t columnID) const {
  const int index = GetColumnIndexFromColumnID(columnID);
  if (index < 0) return -1;
  const auto it = std::find(m_visible.begin(), m_visible.end(), index);
  return it == m_visible.end() ? -1 : static_cast<int>(it - m_visible.begin());
}

int CMapCustGridCfg::GetMaxVisibleColumns() const {
  int n = 0;
  for (int i = 0; i < GetTotalColumnsCount(); ++i) n += ColumnAt(i)->allowShow ? 1 : 0;
  return n;
}

int CMapCustGridCfg::ConvertFrozenColNumberToColumnPosition() const {
  return std::clamp(m_list.frozenColCount, 0, GetColumnsCount());
}

int CMapCustGridCfg::GetImageColumnsCount() const {
  return static_cast<int>(std::count_if(m_visible.begin(), m_visible.end(), [&](int i) {
    const int kind = ColumnAt(i)->kind;
    return kind == varion::kColKindImage || kind == varion::kColKindCheckImage;
  }));
}

// --- sort ------------------------------------------------------------------------------------

bool CMapCustGridCfg::IsSortColumnUsable(std::int32_t columnID) const {
  const Col* col = ColumnAt(GetColumnIndexFromColumnID(columnID));
  return col && col->allowShow && col->visible && col->allowSort;
}

bool CMapCustGridCfg::VerifySortInfo() {
  if (m_list.sortColumnID == 0 || IsSortColumnUsable(m_list.sortColumnID)) return false;
  m_list.sortColumnID = IsSortColumnUsable(m_list.defSortColumnID) ? m_list.defSortColumnID : 0;
  m_sqlChanged = true;
  return true;
}

void CMapCustGridCfg::SetSortColumnID(std::int32_t columnID) {
  if (m_list.sortColumnID == columnID) return;
  m_list.sortColumnID = columnID;
  m_sqlChanged = true;
}

void CMapCustGridCfg::SetAscending(bool ascending) {
  if ((m_list.ascending != 0) == ascending) return;
  m_list.ascending = ascending;
  m_sqlChanged = true;
}

// --- per-column setters ----------------------------------------------------------------------

bool CMapCustGridCfg::IsColVisible(std::int32_t columnID) const {
  const Col* col = ColumnAt(GetColumnIndexFromColumnID(columnID));
  return col && col->visible && col->allowShow;
}

bool CMapCustGridCfg::SetAllowShow(std::int32_t columnID, bool allow) {
  const int index = GetColumnIndexFromColumnID(columnID);
  Col* col = ColumnAt(index);
  if (!col) return false;
  col->allowShow = allow;
  UpdateVisibilityForColIndex(index);
  m_sqlChanged = true;
  return true;
}

bool CMapCustGridCfg::SetVisible(std::int32_t columnID, bool visible) {
  const int index = GetColumnIndexFromColumnID(columnID);
  Col* col = ColumnAt(index);
  if (!col) return false;
  col->visible = visible;
  UpdateVisibilityForColIndex(index);
  m_sqlChanged = true;
  return true;
}

bool CMapCustGridCfg::SetDBFieldName(std::int32_t columnID, const std::string& field) {
  Col* col = ColumnAt(GetColumnIndexFromColumnID(columnID));
  if (!col) return false;
  col->dbFieldName = field;
  m_sqlChanged = true;
  return true;
}

bool CMapCustGridCfg::SetAllowSort(std::int32_t columnID, bool allow) {
  Col* col = ColumnAt(GetColumnIndexFromColumnID(columnID));
  if (!col) return false;
  col->allowSort = allow;
  return true;
}

bool CMapCustGridCfg::SetOrderBySection(std::int32_t columnID, const std::string& ascending,
                                        const std::string& descending) {
  Col* col = ColumnAt(GetColumnIndexFromColumnID(columnID));
  if (!col) return false;
  col->orderByAsc = ascending;
  col->orderByDesc = descending;
  m_sqlChanged = true;
  return true;
}

bool CMapCustGridCfg::ChangeDefColCaption(std::int32_t columnID, const std::string& caption) {
  Col* col = ColumnAt(GetColumnIndexFromColumnID(columnID));
  if (!col) return false;
  col->defCaption = caption;
  return true;
}

void CMapCustGridCfg::SetCustomColumnsNames(std::vector<std::pair<std::string, std::string>> names) {
  m_customNames = std::move(names);
}

std::string CMapCustGridCfg::GetColCaption(const CVelColInfoCustImpl& column) const {
  if (!column.caption.empty()) return column.caption;
  for (const auto& [field, name] : m_customNames)
    if (field == column.dbFieldName && !name.empty()) return name;
  return column.defCaption;
}

std::string CMapCustGridCfg::GetColCaption(int index) const { return GetColCaption(GetColumnInfo(index)); }

std::vector<varion::CheckListItem> CMapCustGridCfg::FillAwaiableColumnsCheckListBox() const {
  std::vector<varion::CheckListItem> items;
  for (int i = 0; i < GetTotalColumnsCount(); ++i) {
    const Col& col = *ColumnAt(i);
    if (!col.allowShow) continue;
    std::string text = m_useCustomNamesInList ? GetColCaption(col) : (col.caption.empty() ? col.defCaption : col.caption);
    items.push_back({std::move(text), col.columnID, col.visible != 0});
  }
  return items;
}

std::vector<varion::ComboItem> CMapCustGridCfg::FillFilterColumnsComboBox() const {
  std::vector<varion::ComboItem> items;
  for (int i = 0; i < GetTotalColumnsCount(); ++i) {
    const Col& col = *ColumnAt(i);
    if (!col.allowShow || !col.allowFilter || col.kind == varion::kColKindNoData ||
        col.kind == varion::kColKindComputed || col.dbFieldName.empty())
      continue;
    items.push_back({GetColCaption(col), col.columnID});
  }
  return items;
}

std::string CMapCustGridCfg::FillFilterColumnsChoiceList() const { return JoinLines(FillFilterColumnsComboBox()); }

std::vector<varion::ComboItem> CMapCustGridCfg::FillVisibleColumnsComboBox() const {
  std::vector<varion::ComboItem> items;
  for (int index : m_visible) items.push_back({GetColCaption(*ColumnAt(index)), index});
  return items;
}

// --- conditions and switches -----------------------------------------------------------------

Status32 CMapCustGridCfg::SetFilterWhere(const std::string& where) {
  if (where == m_filterWhere) return kOk;
  m_filterWhere = where;
  m_sqlChanged = true;
  return kOk;
}

Status32 CMapCustGridCfg::SetUserWhere(const std::string& where) {
  if (where == m_userWhere) return kOk;
  m_userWhere = where;
  m_sqlChanged = true;
  return kOk;
}

Status32 CMapCustGridCfg::SetCalcUserWhere(const std::string& where) {
  m_calcUserWhere = where;
  return kOk;
}

std::string CMapCustGridCfg::ReplaceFilterWhere(const std::string& where) {
  std::string old = std::move(m_filterWhere);
  m_filterWhere = where;
  return old;
}

void CMapCustGridCfg::ActivateFilter(bool active) {
  if (m_filterActive == active) return;
  m_filterActive = active;
  if (!m_filterWhere.empty()) m_sqlChanged = true;
}

Status32 CMapCustGridCfg::SetTableWhere(std::int32_t tableID, const std::string& where) {
  if (m_tables.empty()) return kFail;
  m_tables[static_cast<size_t>(GetTableIndexFromTableID(tableID))].condition = where;
  m_sqlChanged = true;
  return kOk;
}

Status32 CMapCustGridCfg::AppendTableWhere(std::int32_t tableID, const std::string& where) {
  if (m_tables.empty()) return kFail;
  if (where.empty()) return kOk;
  std::string& condition = m_tables[static_cast<size_t>(GetTableIndexFromTableID(tableID))].condition;
  if (!condition.empty()) condition += " AND ";
  condition += where;
  m_sqlChanged = true;
  return kOk;
}

void CMapCustGridCfg::SetSql(const std::string& sql) {
  m_storedSql.clear();
  if (sql == m_sql) return;
  m_sql = sql;
  m_sqlChanged = true;
}

void CMapCustGridCfg::SetGroupBy(const std::string& groupBy) {
  if (groupBy == m_groupBy) return;
  m_groupBy = groupBy;
  m_sqlChanged = true;
}

void CMapCustGridCfg::SetUsePwTable(bool use) {
  if (use == m_usePwTable) return;
  m_usePwTable = use;
  m_sqlChanged = true;
}

// --- copies from another configuration -------------------------------------------------------

void CMapCustGridCfg::DuplicateWhereInfo(const CMapCustGridCfg& from) {
  m_filterWhere = from.m_filterWhere;
  m_userWhere = from.m_userWhere;
  m_calcUserWhere = from.m_calcUserWhere;
  m_customEntryWhere = from.m_customEntryWhere;
  m_groupBy = from.m_groupBy;
  m_filterActive = from.m_filterActive;
  m_sqlChanged = true;
}

void CMapCustGridCfg::DuplicateListInfo(const CMapCustGridCfg& from) {
  m_list = from.m_list;
  m_sqlChanged = true;
}

void CMapCustGridCfg::DuplicateColumnsInfo(const CMapCustGridCfg& from) {
  m_columns = from.m_columns;
  m_customColumns = from.m_customColumns->Clone();
  m_visible = from.m_visible;
  m_sqlChanged = true;
}

void CMapCustGridCfg::DuplicateTableInfo(const CMapCustGridCfg& from) {
  m_tables = from.m_tables;
  m_sqlChanged = true;
}

// --- conditional formats ---------------------------------------------------------------------

varion::CustomFormatSet& CMapCustGridCfg::CustomFormats() {
  if (!m_formats) m_formats = std::make_unique<varion::CustomFormatSet>();
  return *m_formats;
}

const varion::CustomFormat* CMapCustGridCfg::ApplyCustomFmt(std::int32_t formatValue) const {
  return m_formats ? m_formats->Apply(formatValue) : nullptr;
}
