// The stored layout of CMapCustGridCfg: the four blobs, and merging an older layout into the
// program's current columns. The rules are listed at the top of cust_grid_cfg.h.
#include <algorithm>
#include <string_view>

#include "grid/cust_grid_cfg.h"

using varion::ComError;
using varion::kFail;
using varion::kOk;
using varion::kPointer;
using varion::Status32;

namespace {

// Program columns that the user points at one of several numbered fields.
constexpr std::string_view kUserFieldNames[] = {
    "kh_Pole",  "tw_Pole",   "tc_CenaNetto", "tc_CenaBrutto", "pwd_Data",       "pwd_Fk",
    "pwd_Flaga", "pwd_Kwota", "pwd_Liczba",  "pwd_Tekst",     "pwd_TypObiektu",
};

// The user-defined field name that starts the field, or "".
std::string_view UserFieldNameOf(const std::string& field) {
  for (std::string_view name : kUserFieldNames)
    if (field.starts_with(name)) return name;
  return {};
}

bool IsIdentifierTail(std::string_view rest) {
  return std::all_of(rest.begin(), rest.end(), [](char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_';
  });
}

bool SaneSize(std::int32_t v) { return v >= 0 && v <= 1000; }

std::optional<std::int64_t> GridVersionOf(const varion::Variant& v) {
  std::int64_t value = 0;
  if (v.IsEmptyOrNull() || v.ToInt64(value) < 0) return std::nullopt;
  return value;
}

struct ParsedLayout {
  CVelListInfoCustImpl list;
  std::vector<varion::StoredColumn> columns;
  std::vector<CVelTableInfoImpl> tables;
  std::vector<std::int32_t> visibility;
};

Status32 ParseAll(std::span<const std::uint8_t> list, std::span<const std::uint8_t> columns,
                  std::span<const std::uint8_t> tables, std::span<const std::uint8_t> visibility, ParsedLayout& out) {
  if (varion::ReadListBlob(list, out.list) < 0) return kFail;
  if (varion::ReadColumnBlob(columns, out.columns) < 0) return kFail;
  if (varion::ReadTableBlob(tables, out.tables) < 0) return kFail;
  if (varion::ReadVisibilityBlob(visibility, out.visibility) < 0) return kFail;
  return kOk;
}

const varion::LayoutBytes& Need(const std::optional<varion::LayoutBytes>& blob, const char* field) {
  if (!blob) throw ComError(kPointer, std::string("Brak pola ") + field);
  return *blob;
}

}  // namespace

// --- writing ---------------------------------------------------------------------------------

varion::LayoutBytes CMapCustGridCfg::SaveListInfo() const { return varion::WriteListBlob(m_list); }

varion::LayoutBytes CMapCustGridCfg::SaveColInfo() const {
  std::vector<varion::StoredColumn> stored;
  stored.reserve(m_columns.size() + static_cast<size_t>(m_customColumns->GetCount()));
  for (const Col& col : m_columns) stored.push_back({col.columnID, col});
  // The user's columns are written even where the list does not offer them now.
  for (int k = 0; k < m_customColumns->GetCount(); ++k)
    stored.push_back({varion::kUserColumnID, *m_customColumns->GetColumn(k)});
  return varion::WriteColumnBlob(stored);
}

varion::LayoutBytes CMapCustGridCfg::SaveTableInfo() const { return varion::WriteTableBlob(m_tables); }

varion::LayoutBytes CMapCustGridCfg::SaveColVisibility() const {
  const std::vector<std::int32_t> order(m_visible.begin(), m_visible.end());
  return varion::WriteVisibilityBlob(order);
}

bool CMapCustGridCfg::LoadColumnInfo(varion::LayoutReader& in, CVelColInfoCustImpl& column) {
  return varion::LoadColumnRecord(in, column);
}

varion::StoredLayoutRow CMapCustGridCfg::MakeLayoutRow(const std::string& section, std::int32_t user,
                                                       std::int32_t service) const {
  varion::StoredLayoutRow row;
  row.section = section;
  row.user = user;
  row.service = service;
  const bool parked = !m_storedSql.empty();
  row.version = varion::Variant(static_cast<std::int32_t>(parked ? m_storedSqlVersion : m_gridVersion));
  row.listInfo = SaveListInfo();
  row.columns = SaveColInfo();
  row.tables = SaveTableInfo();
  row.visibility = SaveColVisibility();
  row.sql = parked ? m_storedSql : m_sql;
  row.lastUpdateVersion = varion::kLayoutVersionText;
  return row;
}

// --- reading ---------------------------------------------------------------------------------

Status32 CMapCustGridCfg::LoadCfgFromRow(const varion::StoredLayoutRow& row) {
  ParsedLayout parsed;
  if (ParseAll(Need(row.listInfo, "cge_BinListInfo"), Need(row.columns, "cge_BinColumns"),
               Need(row.tables, "cge_BinTables"), Need(row.visibility, "cge_BinVisibility"), parsed) < 0)
    return kFail;

  // The statement is decided first: a layout with its own statement is taken as stored.
  if (!row.sql.empty()) {
    const std::optional<std::int64_t> version = GridVersionOf(row.version);
    const std::optional<int> library =
        row.lastUpdateVersion.empty() ? std::optional<int>(-1)
                                      : varion::CompareVersionTexts(row.lastUpdateVersion, varion::kLayoutVersionText);
    const bool takeOver = !m_suppressLayout && version && *version == static_cast<std::int64_t>(m_gridVersion) &&
                          library && *library <= 0;
    if (takeOver) {
      m_sql = row.sql;
      m_storedSql.clear();
      m_autoUpdate = false;
    } else {
      m_storedSql = row.sql;
      m_storedSqlVersion = version.value_or(0);
    }
  }

  const bool startsEmpty = m_columns.empty();
  MergeListInfo(parsed.list, startsEmpty);
  if (!m_suppressLayout) ApplyColumns(parsed.columns);
  ApplyTables(std::move(parsed.tables));
  if (!m_suppressLayout) ApplyVisibility(parsed.visibility);
  m_sqlChanged = true;
  return kOk;
}

Status32 CMapCustGridCfg::LoadCustomCfgFromBlobs(std::span<const std::uint8_t> listInfo,
                                                 std::span<const std::uint8_t> columns,
                                                 std::span<const std::uint8_t> tables,
                                                 std::span<const std::uint8_t> visibility) {
  ParsedLayout parsed;
  if (ParseAll(listInfo, columns, tables, visibility, parsed) < 0) return kFail;
  MergeListInfo(parsed.list, m_columns.empty());
  ApplyColumns(parsed.columns);
  ApplyTables(std::move(parsed.tables));
  ApplyVisibility(parsed.visibility);
  m_sqlChanged = true;
  return kOk;
}

Status32 CMapCustGridCfg::LoadListInfo(std::span<const std::uint8_t> blob) {
  CVelListInfoCustImpl stored;
  if (varion::ReadListBlob(blob, stored) < 0) return kFail;
  MergeListInfo(stored, m_columns.empty());
  return kOk;
}

Status32 CMapCustGridCfg::LoadColInfo(std::span<const std::uint8_t> blob) {
  std::vector<varion::StoredColumn> stored;
  if (varion::ReadColumnBlob(blob, stored) < 0) return kFail;
  if (!m_suppressLayout) ApplyColumns(stored);
  return kOk;
}

Status32 CMapCustGridCfg::LoadTableInfo(std::span<const std::uint8_t> blob) {
  std::vector<CVelTableInfoImpl> stored;
  if (varion::ReadTableBlob(blob, stored) < 0) return kFail;
  ApplyTables(std::move(stored));
  return kOk;
}

Status32 CMapCustGridCfg::LoadColVisibility(std::span<const std::uint8_t> blob) {
  std::vector<std::int32_t> order;
  if (varion::ReadVisibilityBlob(blob, order) < 0) return kFail;
  if (!m_suppressLayout) ApplyVisibility(order);
  return kOk;
}

// --- merging ---------------------------------------------------------------------------------

void CMapCustGridCfg::MergeListInfo(const CVelListInfoCustImpl& stored, bool whole) {
  if (whole) {
    m_list = stored;
    return;
  }
  CVelListInfoCustImpl& l = m_list;
  if (l.allowMultiSel) l.multiSel = stored.multiSel;
  if (l.allowSelectedSum) l.selectedSum = stored.selectedSum;
  l.wrapText = stored.wrapText;
  l.horLines = stored.horLines;
  l.verLines = stored.verLines;
  l.rowHeaderVisible = stored.rowHeaderVisible;
  if (SaneSize(stored.rowHeight)) l.rowHeight = stored.rowHeight;
  if (SaneSize(stored.colHeaderHeight)) l.colHeaderHeight = stored.colHeaderHeight;
  if (SaneSize(stored.rowHeaderWidth)) l.rowHeaderWidth = stored.rowHeaderWidth;
  if (stored.zoom >= 10 && stored.zoom <= 500) l.zoom = stored.zoom;
  if (SaneSize(stored.frozenColCount)) l.frozenColCount = stored.frozenColCount;
  l.shadowMode = stored.shadowMode;
  l.autoStretch = stored.autoStretch;
  if (!m_suppressLayout) {
    l.sortColumnID = stored.sortColumnID;
    l.ascending = stored.ascending;
  }
}

void CMapCustGridCfg::MergeColumnInfo(const Col& stored, Col& program) const {
  program.width = stored.width;
  program.visible = stored.visible;
  program.caption = stored.caption;
  program.format = stored.format;
  program.decimals = stored.decimals;
  program.calcType = stored.calcType;
  program.align = stored.align;
  program.headerAlign = stored.headerAlign;
  program.multiLine = stored.multiLine;
  program.textColor = stored.textColor;
  program.backColor = stored.backColor;
  program.bold = stored.bold;
  program.italic = stored.italic;
  const std::string_view name = UserFieldNameOf(program.dbFieldName);
  if (!name.empty() && stored.dbFieldName.starts_with(name) &&
      IsIdentifierTail(std::string_view(stored.dbFieldName).substr(name.size()))) {
    program.dbFieldName = stored.dbFieldName;
    if (!stored.defCaption.empty()) program.defCaption = stored.defCaption;
  }
}

int CMapCustGridCfg::FindDefColumnByField(const Col& stored, int loadIndex, const std::vector<bool>& matched) const {
  if (stored.dbFieldName.empty()) return -1;
  const int n = GetInternalColumnsCount();
  auto same = [&](int i) {
    return !matched[i] && m_columns[i].dbFieldName == stored.dbFieldName && m_columns[i].resultName == stored.resultName;
  };
  // A column that has not moved is the usual case.
  if (loadIndex < n && same(loadIndex)) return loadIndex;
  // Field and result name first: one field may feed two columns under different names.
  for (int i = 0; i < n; ++i)
    if (same(i)) return i;
  for (int i = 0; i < n; ++i)
    if (!matched[i] && m_columns[i].dbFieldName == stored.dbFieldName) return i;
  const std::string_view name = UserFieldNameOf(stored.dbFieldName);
  if (name.empty()) return -1;
  for (int i = 0; i < n; ++i)
    if (!matched[i] && UserFieldNameOf(m_columns[i].dbFieldName) == name) return i;
  return -1;
}

int CMapCustGridCfg::FindDefColumnByName(const Col& stored, const std::vector<bool>& matched) const {
  if (stored.defCaption.empty()) return -1;
  for (int i = 0; i < GetInternalColumnsCount(); ++i)
    if (!matched[i] && m_columns[i].defCaption == stored.defCaption) return i;
  return -1;
}

int CMapCustGridCfg::FindDefColumnByChangedName(const Col& stored, std::int32_t storedID, int loadIndex,
                                                const std::vector<bool>& matched) const {
  if (loadIndex < 0 || loadIndex >= GetInternalColumnsCount() || matched[loadIndex]) return -1;
  const Col& col = m_columns[static_cast<size_t>(loadIndex)];
  return col.columnID == storedID && col.kind == stored.kind ? loadIndex : -1;
}

Status32 CMapCustGridCfg::ApplyColumns(const std::vector<varion::StoredColumn>& stored) {
  m_translationStored.clear();
  m_translationCurrent.clear();
  m_customColumns->RemoveAll();

  const bool startsEmpty = m_columns.empty();
  const int predefined = GetInternalColumnsCount();
  std::vector<bool> matched(static_cast<size_t>(predefined), false);
  std::vector<std::pair<int, int>> userColumns;  // load index, index among the user's columns
  const std::int32_t storedSort = m_list.sortColumnID;
  bool sortSeen = false;
  std::int32_t newSort = m_list.defSortColumnID;
  int sortUserColumn = -1;

  for (int i = 0; i < static_cast<int>(stored.size()); ++i) {
    const varion::StoredColumn& sc = stored[static_cast<size_t>(i)];
    int target = -1;
    if (sc.columnID == varion::kUserColumnID) {
      const int k = m_customColumns->AddColumn(sc.record);
      if (k >= 0) userColumns.emplace_back(i, k);
      // A user's column was saved with identifier position + 1 as its sort identifier.
      if (!sortSeen && storedSort != 0 && storedSort == i + 1) {
        sortSeen = true;
        if (k >= 0 && sc.record.allowSort) sortUserColumn = k;
      }
      continue;
    }
    if (startsEmpty) {
      Col col = sc.record;
      col.columnID = i + 1;
      m_columns.push_back(std::move(col));
      target = static_cast<int>(m_columns.size()) - 1;
    } else if (!m_autoUpdate) {
      for (int c = 0; c < predefined && target < 0; ++c)
        if (m_columns[static_cast<size_t>(c)].columnID == sc.columnID) target = c;
      if (target >= 0) varion::CopyStoredItems(sc.record, m_columns[static_cast<size_t>(target)]);
    } else {
      target = FindDefColumnByField(sc.record, i, matched);
      if (target < 0) target = FindDefColumnByName(sc.record, matched);
      if (target < 0 && i < predefined) target = FindDefColumnByChangedName(sc.record, sc.columnID, i, matched);
      if (target >= 0) {
        MergeColumnInfo(sc.record, m_columns[static_cast<size_t>(target)]);
        matched[static_cast<size_t>(target)] = true;
      }
    }
    if (target >= 0) {
      m_translationStored.push_back(i);
      m_translationCurrent.push_back(target);
    }
    if (!sortSeen && storedSort != 0 && sc.columnID == storedSort) {
      sortSeen = true;
      if (target >= 0 && m_columns[static_cast<size_t>(target)].allowSort)
        newSort = m_columns[static_cast<size_t>(target)].columnID;
    }
  }

  RenumberUserColumns();
  if (HasCustomColumns()) {
    const int internal = GetInternalColumnsCount();
    for (const auto& [loadIndex, k] : userColumns) {
      m_translationStored.push_back(loadIndex);
      m_translationCurrent.push_back(internal + k);
    }
    if (sortUserColumn >= 0) newSort = internal + 1 + sortUserColumn;
  }
  if (sortSeen) m_list.sortColumnID = newSort;
  m_sqlChanged = true;
  return kOk;
}

int CMapCustGridCfg::ApplyColumnTranslation(int storedIndex) const {
  for (size_t i = 0; i < m_translationStored.size(); ++i)
    if (m_translationStored[i] == storedIndex) return m_translationCurrent[i];
  return -1;
}

void CMapCustGridCfg::ApplyVisibility(const std::vector<std::int32_t>& order) {
  // The translation as a table by stored position; stored positions are load indexes, so the
  // table is no longer than the column blob was.
  std::vector<int> current;
  for (size_t i = 0; i < m_translationStored.size(); ++i) {
    const auto at = static_cast<size_t>(m_translationStored[i]);
    if (at >= current.size()) current.resize(at + 1, -1);
    if (current[at] < 0) current[at] = m_translationCurrent[i];
  }
  m_visible.clear();
  for (std::int32_t stored : order) {
    const int index = stored >= 0 && static_cast<size_t>(stored) < current.size() ? current[static_cast<size_t>(stored)] : -1;
    Col* col = ColumnAt(index);
    if (!col || !col->allowShow) continue;
    if (std::find(m_visible.begin(), m_visible.end(), index) != m_visible.end()) continue;
    m_visible.push_back(index);
    col->visible = 1;
  }
  AddNewColsToVisibility();
  m_sqlChanged = true;
}

void CMapCustGridCfg::ApplyTables(std::vector<CVelTableInfoImpl> stored) {
  if (m_tables.empty()) {
    for (size_t i = 0; i < stored.size(); ++i) stored[i].tableID = static_cast<std::int32_t>(i + 1);
    m_tables = std::move(stored);
  } else if (!m_autoUpdate && stored.size() == m_tables.size()) {
    for (size_t i = 0; i < stored.size(); ++i) {
      stored[i].tableID = m_tables[i].tableID;
      m_tables[i] = std::move(stored[i]);
    }
  } else {
    return;
  }
  m_sqlChanged = true;
}
