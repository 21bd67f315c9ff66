// The configuration of one list grid: the list's fixed description, the user's layout of it
// (columns shown, widths, order, sort column), its conditions, and the one SELECT statement
// that fills the grid. CBaseCustGridCfg is the abstract base; CMapCustGridCfg the implementation.
//
// Rules of the stored layout that the configuration fixes:
// - The column translation table maps a stored column position to the current one. It is
//   filled on every load of the column blob, in every mode (in the plain mode a stored column
//   maps to the column with its identifier; in a configuration that started empty, to itself),
//   so the visibility blob is always read through it.
// - Auto-update merge. A stored column is matched to a program column not matched before:
//   first by field name (exactly, preferring the column at the same position and one with the
//   same result name; for the user-defined fields listed under MergeColumnInfo also by their
//   common name), then by default caption, then, while its stored position is below the
//   number of program columns, by the program column at the same position when that column has
//   the stored identifier and kind (a column whose field and caption were both renamed). The
//   user's layout items of a match (width, visibility, own caption, format, decimals, summary,
//   alignment, multi-line, colours and font) replace the program's; everything that defines
//   the column (field, kind, table, sorting, permissions) stays the program's. Stored columns
//   without a match are dropped: the program no longer has them.
// - MergeColumnInfo and the user-defined fields "kh_Pole", "tw_Pole", "tc_CenaNetto",
//   "tc_CenaBrutto" and "pwd_*": the program declares such a column once; the user chooses which
//   numbered field it shows ("tc_CenaNetto3", "kh_Pole2") and its name. So when both the stored
//   and the program field start with the same one of these names, the stored field name and
//   default caption are taken over, provided the stored name continues with letters, digits or
//   underscores only.
// - Identifier 9999 marks a column the user added. Loading hands it to the custom-columns object
//   (kept there even when the list does not allow custom columns, so a later save writes it
//   back), and its stored position maps to its new place after the program's columns.
// - The list blob is merged (MergeListInfo): the user's items (selection and summary modes where
//   the program allows them, wrapping, lines, row header, sizes, zoom, frozen columns, shading,
//   stretching, sort column and direction) are taken over when their values are sane (sizes
//   0..1000, zoom 10..500, frozen columns 0..1000); the program's own items (identifiers, title,
//   permissions, key field, base condition, strike-out, help, print title) stay. A configuration
//   that starts without columns (a user-defined grid) takes the stored list record whole.
// - The table blob replaces the tables only in a configuration that starts without tables (table
//   identifiers are then position + 1), or outside the auto-update mode when it holds as many
//   tables as the program (identifiers kept by position). The join structure otherwise belongs
//   to the program version.
// - cge_Sql is taken over only when the stored grid version (cge_Version) equals the
//   configuration's and the stored cge_LastUpdateVersion is not newer than "1.8700.0.6757" (an
//   empty one is older). A statement that fails the check is not run but kept: GetStoredSql gives
//   it, and SaveCfg writes it back with the grid version it came with, until SetSql decides.
// - The suppress-layout flag is the host's "default layout" switch (SetSuppressLayout): while it
//   is set, loading takes the list record and tables but leaves the program's columns, visible
//   order and custom SQL alone. Nothing else sets it.
// - A blob that does not parse leaves the whole configuration as it was: all four blobs are
//   parsed before any of them is applied.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "base/export.h"
#include "base/sql_dialect.h"
#include "base/status.h"
#include "db/connection.h"
#include "grid/custom_columns.h"
#include "grid/custom_formats.h"
#include "grid/grid_info.h"
#include "grid/layout_blobs.h"
#include "grid/stored_layout.h"

namespace varion {

// The table of the conditional row formats (see CMapCustGridCfg::LoadCustomFmts).
constexpr const char* kCustomFormatsTable = "gr_FormatowanieWarunkowe";

// Comparison operators of the filter dialogs.
enum class FilterOperator : std::int32_t {
  Equal, NotEqual, Less, LessOrEqual, Greater, GreaterOrEqual,
  Contains, NotContains, BeginsWith, EndsWith, IsEmpty, IsNotEmpty,
};

// One entry of a combo box: its text and item data.
struct ComboItem {
  std::string text;
  std::int32_t data = 0;
  bool operator==(const ComboItem&) const = default;
};

// One entry of a check-list box.
struct CheckListItem {
  std::string text;
  std::int32_t data = 0;
  bool checked = false;
  bool operator==(const CheckListItem&) const = default;
};

// The clauses of a statement for callers that assemble it themselves (MakeSQLEx).
struct SqlClauses {
  std::string fields;
  std::string fromWord;   // "FROM", or "" for a list without a main table
  std::string from;
  std::string where;
  std::string groupBy;
  std::string orderBy;
  std::string customSql;  // set instead of all the others when the list has its own statement
};

}  // namespace varion

class VARION_API CBaseCustGridCfg {
 public:
  virtual ~CBaseCustGridCfg() = default;

  // Statements are written for this server; SQL Server unless told otherwise.
  void SetDialect(const varion::SqlDialect& dialect) { m_dialect = &dialect; }
  const varion::SqlDialect& GetDialect() const { return *m_dialect; }

  // Operators offered for a field type: as combo items (data = FilterOperator), and as the
  // grid's choice list (texts separated by line feeds).
  static std::vector<varion::ComboItem> FillOperatorsListComboBox(VelFieldType type);
  static std::string FillOperatorsListChoiceList(VelFieldType type);

  virtual bool IsSQLChanged() const = 0;
  virtual void SetSQLChanged(bool changed = true) = 0;
  virtual std::unique_ptr<CBaseCustGridCfg> Clone() const = 0;
  virtual int GetTotalColumnsCount() const = 0;
  virtual const CVelColInfoCustImpl& GetColumnInfo(int index) const = 0;
  virtual varion::Status32 MakeSQL(std::string& sql, bool allColumns = false) = 0;
  virtual varion::Status32 MakeOrderBy(std::string& orderBy) = 0;
  virtual varion::Status32 MakeGroupBy(std::string& groupBy, bool allColumns = false) = 0;
  virtual varion::Status32 MakeFrom(std::string& from, std::string& where) = 0;

 protected:
  CBaseCustGridCfg() = default;
  CBaseCustGridCfg(const CBaseCustGridCfg&) = default;
  CBaseCustGridCfg& operator=(const CBaseCustGridCfg&) = default;

 private:
  const varion::SqlDialect* m_dialect = &varion::SqlServerDialect();
};

class VARION_API CMapCustGridCfg : public CBaseCustGridCfg {
 public:
  // Module identifiers whose lists group settlements by contractor: there the settlement and
  // no-data columns take part in GROUP BY.
  static constexpr const char* kGroupBySettlementModules[] = {
      "Finanse.Ledgor.Rozrachunki.WgKontrahentow.Modul.O",
      "Finanse.Ledgor.Rozrachunki.WgKontrahentow.Modul.W",
      "Finanse.Rozrachunki.WgKontrahentow.Modul",
  };
  static constexpr const char* kCalcSourceAlias = "vel_Lista";

  CMapCustGridCfg();
  CMapCustGridCfg(const CVelListInfo* list, const CVelColInfo* columns, int columnCount, const CVelTableInfo* tables,
                  int tableCount, std::int32_t source = 0);
  // The same, then the user's stored layout: a failure to read it leaves the program's layout and
  // is kept in GetLoadStatus.
  CMapCustGridCfg(const CVelListInfo* list, const CVelColInfo* columns, int columnCount, const CVelTableInfo* tables,
                  int tableCount, const varion::db::Connection& connection, const std::string& section,
                  std::int32_t user, std::int32_t service);
  CMapCustGridCfg(const CMapCustGridCfg& other);
  CMapCustGridCfg& operator=(const CMapCustGridCfg& other);
  ~CMapCustGridCfg() override;

  // --- state flags -------------------------------------------------------------------------
  bool IsSQLChanged() const override { return m_sqlChanged; }
  void SetSQLChanged(bool changed = true) override { m_sqlChanged = changed; }
  // Puts an unusable sort column (unknown, not shown, not sortable) back to the list's default,
  // or to none when the default is unusable too. Returns whether it changed anything.
  virtual bool VerifySortInfo();
  std::unique_ptr<CBaseCustGridCfg> Clone() const override;

  // --- the column translation table of the last column-blob load ----------------------------
  // The current column index of a stored column position, or -1.
  virtual int ApplyColumnTranslation(int storedIndex) const;
  int GetTranslationCount() const { return static_cast<int>(m_translationStored.size()); }

  virtual VelFieldType GetFieldType(int index) const;
  virtual void DuplicateWhereInfo(const CMapCustGridCfg& from);
  virtual void DuplicateListInfo(const CMapCustGridCfg& from);
  virtual void DuplicateColumnsInfo(const CMapCustGridCfg& from);
  virtual void DuplicateTableInfo(const CMapCustGridCfg& from);

  // Columns are addressed by index over the program's columns followed by the user's columns
  // (when HasCustomColumns). An index outside that range throws ComError(kInvalidArg).
  const CVelColInfoCustImpl& GetColumnInfo(int index) const override;
  CVelColInfoCustImpl& GetColumnInfo(int index);
  // The column index shown at a visible position, or -1.
  virtual int GetVisibleColIndex(int position) const;
  // The visible order from the columns' visible flags, in column order.
  virtual void GenerateDefaultColumnsInfo();

  // --- stored layout in the database ------------------------------------------------------
  // Every one of these raises ComError for a database failure; LoadCfg and LoadCustomCfg also
  // for a missing blob field (kPointer). A section is a grid's name, user and service key its row.
  // The connection's server also sets the dialect of the statements.
  void SetConnection(const varion::db::Connection& connection);
  const varion::db::Connection& GetConnection() const { return m_connection; }
  varion::Status32 GetLoadStatus() const { return m_loadStatus; }
  // kFalse when no layout is stored, kFail when a blob is damaged (nothing is then changed).
  virtual varion::Status32 LoadCfg(const varion::db::Connection& connection, const std::string& section,
                                   std::int32_t user, std::int32_t service);
  // Sets every field of a new row of an updatable recordset over gr__KonfiguracjaEx.
  virtual void LoadCfgToRS(varion::db::UpdatableRecordset& rs, const std::string& section, std::int32_t user,
                           std::int32_t service) const;
  // Updates the row, or adds it when there is none, in one transaction (the caller's, if any).
  virtual varion::Status32 SaveCfg(const varion::db::Connection& connection, const std::string& section,
                                   std::int32_t user, std::int32_t service);
  virtual bool IsCfgExists(const varion::db::Connection& connection, const std::string& section, std::int32_t user,
                           std::int32_t service) const;
  // kFalse when there was no row.
  virtual varion::Status32 DeleteCfg(const varion::db::Connection& connection, const std::string& section,
                                     std::int32_t user, std::int32_t service);
  // Adds the row with the current layout when there is none (kOk); an existing row is left (kFalse).
  virtual varion::Status32 MakeEntryForCfg(const varion::db::Connection& connection, const std::string& section,
                                           std::int32_t user, std::int32_t service);
  // A user-defined grid: its four blobs into this (empty) configuration, its statement as the
  // custom statement, its condition for MakeSQLForCustomEntry. kFalse when there is no such grid.
  virtual varion::Status32 LoadCustomCfg(const varion::db::Connection& connection, const std::string& section,
                                         std::int32_t moduleId, std::optional<std::int32_t> gridType = std::nullopt);

  // --- stored layout ---------------------------------------------------------------------
  // Applies a stored row (see the rules at the top of this file). A missing blob field throws
  // ComError(kPointer); a blob that does not parse returns kFail and changes nothing.
  virtual varion::Status32 LoadCfgFromRow(const varion::StoredLayoutRow& row);
  // The row SaveCfg writes.
  virtual varion::StoredLayoutRow MakeLayoutRow(const std::string& section, std::int32_t user,
                                                std::int32_t service) const;
  // Applies a user-defined grid's blobs; the configuration should start empty.
  virtual varion::Status32 LoadCustomCfgFromBlobs(std::span<const std::uint8_t> listInfo,
                                                  std::span<const std::uint8_t> columns,
                                                  std::span<const std::uint8_t> tables,
                                                  std::span<const std::uint8_t> visibility);
  // The blob readers and writers one by one. The readers return kFail for a damaged blob and
  // leave the configuration as it was.
  varion::Status32 LoadListInfo(std::span<const std::uint8_t> blob);
  varion::Status32 LoadColInfo(std::span<const std::uint8_t> blob);
  varion::Status32 LoadTableInfo(std::span<const std::uint8_t> blob);
  varion::Status32 LoadColVisibility(std::span<const std::uint8_t> blob);
  varion::LayoutBytes SaveListInfo() const;
  varion::LayoutBytes SaveColInfo() const;
  varion::LayoutBytes SaveTableInfo() const;
  varion::LayoutBytes SaveColVisibility() const;
  static bool LoadColumnInfo(varion::LayoutReader& in, CVelColInfoCustImpl& column);

  void SetSuppressLayout(bool suppress) { m_suppressLayout = suppress; }
  bool GetSuppressLayout() const { return m_suppressLayout; }
  // A stored statement that failed the version check (see the top of this file), or "".
  const std::string& GetStoredSql() const { return m_storedSql; }

  // --- custom statement --------------------------------------------------------------------
  virtual void SetSql(const std::string& sql);
  virtual bool HasCustomSql() const { return !m_sql.empty(); }
  virtual const std::string& GetSql() const { return m_sql; }
  virtual void SetIgnoreEmptyMainTable(bool ignore) { m_ignoreEmptyMainTable = ignore; }

  // --- descriptions ------------------------------------------------------------------------
  virtual void SetTables(const CVelTableInfo* tables, int count);
  // Replaces the program's columns and rebuilds the visible order from their visible flags.
  virtual void SetColumns(const CVelColInfo* columns, int count);
  // Inserts a program column before index (count appends); the visible order follows it.
  virtual void InsertColumn(int index, const CVelColInfo& column);
  virtual void AddColumn(const CVelColInfo& column);
  virtual void SetList(const CVelListInfo& list);
  void SetSource(std::int32_t source) { m_source = source; }

  virtual bool AllowCustomColumns() const { return m_list.allowCustomColumns != 0; }
  virtual bool HasCustomColumns() const;
  // nullptr when the list does not allow custom columns. After changing the custom columns,
  // call UpdateCfgAfterCfgChanges.
  virtual ICustomColumnsCfg* CustomColumns();
  // Takes effect in the columns set afterwards.
  virtual void IgnoreForcePresentInSQL(int ignore) { m_ignoreForcePresent = ignore; }

  // Columns the user may show, checked when shown (data = column identifier).
  virtual std::vector<varion::CheckListItem> FillAwaiableColumnsCheckListBox() const;
  // After the columns or their visibility were changed from outside: renumbers the custom
  // columns, drops visible positions that no longer show and adds visible columns missing from
  // the order, verifies the sort column and marks the statement changed.
  virtual void UpdateCfgAfterCfgChanges();

  // --- statements --------------------------------------------------------------------------
  varion::Status32 MakeSQL(std::string& sql, bool allColumns = false) override;
  virtual varion::Status32 MakeSQLEx(varion::SqlClauses& clauses, bool allColumns = false, bool customFmts = true);
  // Summary row of the calculated columns over the list's rows: the calculated-column user
  // condition instead of the user condition, and only the selected rows in the selected-sum
  // mode. kFalse and "" when no shown column has a summary.
  virtual varion::Status32 MakeCalcSQL(std::string& sql);
  // Summary row over exactly the rows the list shows: the list statement without ORDER BY as a
  // derived table. kFalse and "" when no shown column has a summary.
  virtual varion::Status32 GetFullSummaryQuery(std::string& sql);
  // A user-defined grid's statement: as MakeSQL, with the grid's own condition first.
  virtual varion::Status32 MakeSQLForCustomEntry(std::string& sql, bool allColumns = false);
  varion::Status32 MakeFrom(std::string& from, std::string& where) override;
  virtual varion::Status32 MakeFromEx(std::string& from, std::string& where, bool customFmts);
  varion::Status32 MakeGroupBy(std::string& groupBy, bool allColumns = false) override;
  varion::Status32 MakeOrderBy(std::string& orderBy) override;
  virtual varion::Status32 MakeStandardOrderBy(const CVelColInfoCustImpl& column, std::string& orderBy) const;
  virtual varion::Status32 MakeFieldsList(std::string& fields, bool allColumns);
  virtual varion::Status32 MakeFieldsListEx(std::string& fields, bool allColumns, bool customFmts);
  virtual varion::Status32 MakeCalcFieldsList(std::string& fields);
  virtual std::string GetSqlForColumn(const CVelColInfoCustImpl& column, const std::string& tableAlias) const;
  // "SUM(alias.field) AS vel_Calc<id>" and the like; "" for a column without a summary.
  virtual std::string GetCalcSqlForColumn(const CVelColInfoCustImpl& column, const std::string& tableAlias) const;
  virtual bool IsColumnRequired(const CVelColInfoCustImpl& column, bool allColumns) const;
  virtual void AppendUserWhere(std::string& where) const;
  virtual void AppendCalcIdWhere(std::string& where) const;
  // The FROM source of a calculated statement over a list with its own statement.
  virtual void AppendCalcIdFrom(std::string& from) const;
  void SetGroupBy(const std::string& groupBy);
  const std::string& GetGroupBy() const { return m_groupBy; }

  // --- columns -----------------------------------------------------------------------------
  // The field expression of a column as a condition can use it ("" for kind 11).
  virtual std::string GetFieldFromIndex(int index) const;
  // Column index of a grid column counted without the row header (0 = first shown), or -1.
  virtual int GetIndexFromColWoH(int col) const;
  virtual int GetIndexFromColumnID(int columnID) const { return GetColumnIndexFromColumnID(columnID); }
  // Column index per grid column, counted without the row header.
  virtual std::vector<int> InitArrayIndexFromCol() const { return m_visible; }
  // Per column index, its position among the fields of the statement MakeSQL(allColumns)
  // builds, or -1 when the statement leaves the column out.
  virtual std::vector<int> GetColToRsItemMap(bool allColumns = false) const;
  virtual std::string GetColFieldName(int index) const;

  // --- conditions --------------------------------------------------------------------------
  // An equal text changes nothing; another one is stored and marks the statement changed. 0.
  virtual varion::Status32 SetFilterWhere(const std::string& where);
  virtual varion::Status32 SetUserWhere(const std::string& where);
  virtual const std::string& GetUserWhere() const { return m_userWhere; }
  virtual varion::Status32 SetCalcUserWhere(const std::string& where);
  virtual const std::string& GetCalcUserWhere() const { return m_calcUserWhere; }
  virtual const std::vector<std::int32_t>& GetCalcIdArray() const { return m_calcIds; }
  void SetCalcIdArray(std::vector<std::int32_t> ids) { m_calcIds = std::move(ids); }
  // Stores the filter condition without marking the statement changed; returns the old one.
  virtual std::string ReplaceFilterWhere(const std::string& where);
  const std::string& GetFilterWhere() const { return m_filterWhere; }
  // A deactivated filter keeps its condition, but statements leave it out.
  virtual bool IsFilterActive() const { return m_filterActive && !m_filterWhere.empty(); }
  virtual void ActivateFilter(bool active);
  // A table's own condition, found by table identifier (an unknown one names the main table).
  virtual varion::Status32 SetTableWhere(std::int32_t tableID, const std::string& where);
  virtual varion::Status32 AppendTableWhere(std::int32_t tableID, const std::string& where);
  // Condition of a user-defined grid (grg_SqlWhere), used by MakeSQLForCustomEntry.
  void SetCustomEntryWhere(const std::string& where) { m_customEntryWhere = where; }

  // --- list-wide settings ------------------------------------------------------------------
  virtual bool IsHorLinesVisible() const { return m_list.horLines != 0; }
  virtual void SetHorLinesVisible(bool on) { m_list.horLines = on; }
  virtual bool IsVerLinesVisible() const { return m_list.verLines != 0; }
  virtual void SetVerLinesVisible(bool on) { m_list.verLines = on; }
  virtual bool IsMultiSelMode() const { return m_list.allowMultiSel && m_list.multiSel; }
  virtual bool AllowMultiSelMode() const { return m_list.allowMultiSel != 0; }
  virtual bool AllowSelectedSum() const { return m_list.allowSelectedSum != 0; }
  virtual void SetAllowMultiSelMode(bool allow) { m_list.allowMultiSel = allow; }
  virtual void SetAllowSelectedSum(bool allow) { m_list.allowSelectedSum = allow; }
  virtual void SetMultiSel(bool on) { m_list.multiSel = on; }
  virtual bool IsSelectedSumMode() const { return m_list.allowSelectedSum && m_list.selectedSum; }
  virtual void SetSelectedSum(bool on) { m_list.selectedSum = on; }
  virtual bool IsWrapTextMode() const { return m_list.wrapText != 0; }
  virtual void SetWrapText(bool on) { m_list.wrapText = on; }
  virtual bool IsRowHeaderVisible() const { return m_list.rowHeaderVisible != 0; }
  virtual void SetRowHeaderVisible(bool on) { m_list.rowHeaderVisible = on; }
  virtual std::int32_t GetZoomValue() const { return m_list.zoom; }
  virtual void SetZoomValue(std::int32_t zoom) { m_list.zoom = zoom; }
  virtual std::int32_t GetFrozenColCount() const { return m_list.frozenColCount; }
  virtual void SetFrozenColCount(std::int32_t count) { m_list.frozenColCount = count; }
  virtual std::int32_t GetRowHeaderWidth() const { return m_list.rowHeaderWidth; }
  virtual void SetRowHeaderWidth(std::int32_t width) { m_list.rowHeaderWidth = width; }
  virtual std::int32_t GetColHeaderHeight() const { return m_list.colHeaderHeight; }
  virtual void SetColHeaderHeight(std::int32_t height) { m_list.colHeaderHeight = height; }
  virtual std::int32_t GetRowHeight() const { return m_list.rowHeight; }
  virtual void SetRowHeight(std::int32_t height) { m_list.rowHeight = height; }
  virtual std::int32_t GetSortColumnID() const { return m_list.sortColumnID; }
  virtual void SetSortColumnID(std::int32_t columnID);
  virtual bool GetAscending() const { return m_list.ascending != 0; }
  virtual void SetAscending(bool ascending);
  // Shown columns of the picture kinds (9 and 10).
  virtual int GetImageColumnsCount() const;
  virtual bool IsShadowMode() const { return m_list.shadowMode != 0; }
  virtual void SetShadowMode(bool on) { m_list.shadowMode = on; }
  virtual bool IsAutoStretchColumns() const { return m_list.autoStretch != 0; }
  virtual void SetAutoStretchColumns(bool on) { m_list.autoStretch = on; }
  virtual bool IsStrikeOutActive() const { return m_list.strikeOutActive && !m_list.strikeOutField.empty(); }
  virtual const std::string& GetStrikeOutField() const { return m_list.strikeOutField; }
  const CVelListInfoCustImpl& GetListInfo() const { return m_list; }
  std::uint32_t GetGridVersion() const { return m_gridVersion; }
  void SetGridVersion(std::uint32_t version) { m_gridVersion = version; }

  // --- per-column setters: all take a column identifier; false when it names no column -----
  virtual bool IsColVisible(std::int32_t columnID) const;
  virtual bool SetAllowShow(std::int32_t columnID, bool allow);
  virtual bool SetVisible(std::int32_t columnID, bool visible);
  virtual bool SetDBFieldName(std::int32_t columnID, const std::string& field);
  virtual bool SetAllowSort(std::int32_t columnID, bool allow);
  virtual bool SetOrderBySection(std::int32_t columnID, const std::string& ascending, const std::string& descending);
  virtual bool ChangeDefColCaption(std::int32_t columnID, const std::string& caption);
  // The user's own caption, else the installation's name of the field (SetCustomColumnsNames),
  // else the default caption.
  virtual std::string GetColCaption(const CVelColInfoCustImpl& column) const;
  virtual std::string GetColCaption(int index) const;

  // Columns a filter can use (data = column identifier), and the same as a choice list.
  virtual std::vector<varion::ComboItem> FillFilterColumnsComboBox() const;
  virtual std::string FillFilterColumnsChoiceList() const;
  // Columns the user may show.
  virtual int GetMaxVisibleColumns() const;
  // Columns shown.
  virtual int GetColumnsCount() const { return static_cast<int>(m_visible.size()); }
  // The program's columns and the user's columns.
  int GetTotalColumnsCount() const override;
  // The program's columns.
  virtual int GetInternalColumnsCount() const { return static_cast<int>(m_columns.size()); }
  // The grid column (counting the row header as 0) up to which columns are frozen.
  virtual int ConvertFrozenColNumberToColumnPosition() const;
  // Grid column of a column counted without the row header, or -1 when it is not shown.
  virtual int GetColFromColumnIdWoH(std::int32_t columnID) const;
  // For the standard statement the index is identifier - 1 (-1 outside 1..count); with a custom
  // statement the columns are searched for the identifier (-1 when none has it).
  virtual int GetColumnIndexFromColumnID(std::int32_t columnID) const;
  // Moves the column shown at one visible position to another (the grid's column drag).
  virtual bool MoveVisibleColumn(int from, int to);
  // Adds a column that is shown and allowed to show to the visible order, or removes it.
  virtual void UpdateVisibilityForColIndex(int index);
  virtual void RemoveFromVisibleCols(int index);
  virtual void SetUsePwTable(bool use);
  virtual bool GetUsePwTable() const { return m_usePwTable; }
  virtual int GetTablesCount() const { return static_cast<int>(m_tables.size()); }
  // Throws ComError(kInvalidArg) outside the array.
  virtual const CVelTableInfoImpl& GetTable(int index) const;
  // First table with the identifier; an unknown identifier gives 0, the main table.
  int GetTableIndexFromTableID(std::int32_t tableID) const;
  virtual void DisableAutoUpdate() { m_autoUpdate = false; }
  bool IsAutoUpdate() const { return m_autoUpdate; }
  // The installation's names of fields (field name, caption), e.g. of the user-defined fields.
  virtual void SetCustomColumnsNames(std::vector<std::pair<std::string, std::string>> names);
  // Whether the column lists of the dialogs show those names.
  virtual void SetUseCustomColumnNamesInColumnList(bool use) { m_useCustomNamesInList = use; }
  // The column indexes in visible order.
  virtual const std::vector<int>& GetColumnIndexes() const { return m_visible; }
  // Shown columns (data = column index).
  virtual std::vector<varion::ComboItem> FillVisibleColumnsComboBox() const;

  // --- conditional formats -----------------------------------------------------------------
  virtual bool HasCustomFmts() const { return m_formats != nullptr; }
  virtual void ResetCustomFmt() {
    m_formats.reset();
    m_formatsSource.reset();
    m_sqlChanged = true;
  }
  // Creates the formats object when there is none.
  varion::CustomFormatSet& CustomFormats();
  const varion::CustomFormatSet* GetCustomFormats() const { return m_formats.get(); }
  virtual const varion::CustomFormat* ApplyCustomFmt(std::int32_t formatValue) const;
  // The formats of a list from gr_FormatowanieWarunkowe (grid section name and list identifier):
  // those every user shares (user 0), or those and one user's own. They replace the formats held.
  virtual varion::Status32 LoadCustomFmts(const varion::db::Connection& connection, const std::string& name,
                                          std::int32_t listId);
  virtual varion::Status32 LoadCustomFmts(const varion::db::Connection& connection, const std::string& name,
                                          std::int32_t listId, std::int32_t userId);
  // Loads again what the last LoadCustomFmts loaded; kFalse when nothing was loaded.
  virtual varion::Status32 RefreshCustomFmt();
  // Switches off in the database the user's own formats of the grid, and all formats held.
  virtual varion::Status32 TurnOffAllWarFmtForUserAndGrid(const varion::db::Connection& connection,
                                                          const std::string& name, std::int32_t userId);

 private:
  using Col = CVelColInfoCustImpl;

  Col* ColumnAt(int index);
  const Col* ColumnAt(int index) const;
  const std::string& AliasOfTable(std::int32_t tableID) const;
  bool IsSortColumnUsable(std::int32_t columnID) const;
  void RenumberUserColumns();
  void ShiftVisibleFrom(int index, int by);
  void AddNewColsToVisibility();
  // The statement for MakeSQL, MakeSQLForCustomEntry and the summaries.
  varion::Status32 BuildStatement(std::string& sql, bool allColumns, const std::string& entryWhere, bool orderBy);
  // The custom statement with the condition in its placeholder, the ORDER BY appended and the
  // format placeholders filled.
  std::string ExpandCustomSql(const std::string& where, const std::string& orderBy, bool customFmts) const;
  // The condition of the custom statement: first, the user condition, the active filter.
  std::string CustomSqlWhere(const std::string& first) const;
  std::string RecordsetName(const Col& column) const;
  std::string MakeDerivedCalcFields() const;
  varion::Status32 ApplyColumns(const std::vector<varion::StoredColumn>& stored);
  void ApplyVisibility(const std::vector<std::int32_t>& order);
  void MergeListInfo(const CVelListInfoCustImpl& stored, bool whole);
  void MergeColumnInfo(const Col& stored, Col& program) const;
  int FindDefColumnByField(const Col& stored, int loadIndex, const std::vector<bool>& matched) const;
  int FindDefColumnByName(const Col& stored, const std::vector<bool>& matched) const;
  int FindDefColumnByChangedName(const Col& stored, std::int32_t storedID, int loadIndex,
                                 const std::vector<bool>& matched) const;
  void ApplyTables(std::vector<CVelTableInfoImpl> stored);
  varion::Status32 LoadFormats(const varion::db::Connection& connection, const std::string& name,
                               std::int32_t listId, std::optional<std::int32_t> userId);

  struct FormatsSource {
    varion::db::Connection connection;
    std::string name;
    std::int32_t listId = 0;
    std::optional<std::int32_t> userId;
  };

  CVelListInfoCustImpl m_list;
  std::vector<Col> m_columns;
  std::vector<CVelTableInfoImpl> m_tables;
  std::unique_ptr<ICustomColumnsCfg> m_customColumns;
  std::unique_ptr<varion::CustomFormatSet> m_formats;
  std::optional<FormatsSource> m_formatsSource;
  varion::db::Connection m_connection;
  varion::Status32 m_loadStatus = varion::kFalse;
  std::vector<int> m_visible;
  std::vector<std::int32_t> m_translationStored;
  std::vector<std::int32_t> m_translationCurrent;
  std::vector<std::pair<std::string, std::string>> m_customNames;
  std::vector<std::int32_t> m_calcIds;
  std::string m_sql;
  std::string m_storedSql;
  std::int64_t m_storedSqlVersion = 0;
  std::string m_filterWhere;
  std::string m_userWhere;
  std::string m_calcUserWhere;
  std::string m_customEntryWhere;
  std::string m_groupBy;
  std::int32_t m_source = 0;
  std::uint32_t m_gridVersion = 0;
  int m_ignoreForcePresent = 0;
  bool m_sqlChanged = true;
  bool m_ignoreEmptyMainTable = false;
  bool m_usePwTable = false;
  bool m_autoUpdate = true;
  bool m_suppressLayout = false;
  bool m_filterActive = true;
  bool m_useCustomNamesInList = false;
};

// The GROUP BY list of a configuration's columns for list owners that group: kinds 9 and 10
// never; kinds 11, 12, 20, 21 and 22 only in the settlement modules named above; hidden columns
// without a field never; kind 6 as "adr_Adres,adr_Miejscowosc". kFail when there are no columns.
VARION_API varion::Status32 MakeGroupByHelper(const CBaseCustGridCfg& cfg, const std::string& moduleId,
                                              std::string& groupBy);
