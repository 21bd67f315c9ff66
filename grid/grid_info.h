// A list grid is declared by the application as three constant structures: the list, its
// columns and the tables that feed it. The configuration copies them into records that it may
// change (the user's layout) and persist.
#pragma once

#include <cstdint>
#include <string>

#include "base/export.h"

// Field types of the filter dialogs: they choose the comparison operators offered for a column.
enum class VelFieldType : std::int32_t {
  Text = 0,
  Integer = 1,
  Amount = 2,
  Double = 3,
  Date = 4,
  Bool = 5,
  List = 6,  // a code shown through the column's list text
};

namespace varion {

// Column kinds with a rule attached to them. Every other value is a plain data column.
constexpr std::int32_t kColKindList = 4;        // a code shown through the list text
constexpr std::int32_t kColKindFlagList = 5;    // a bit set shown through the list text
constexpr std::int32_t kColKindAddress = 6;     // an address shown from the address fields
constexpr std::int32_t kColKindImage = 9;       // a picture chosen by the value
constexpr std::int32_t kColKindCheckImage = 10; // a check mark chosen by the value
constexpr std::int32_t kColKindNoData = 11;     // keeps its place in the recordset, queried as NULL
constexpr std::int32_t kColKindComputed = 12;   // filled by the list owner after reading
constexpr std::int32_t kColKindBalance = 20;    // settlement columns, meaningful only in the
constexpr std::int32_t kColKindOverdue = 21;    // settlement lists that group by contractor
constexpr std::int32_t kColKindDaysOverdue = 22;

// Aggregate of a column in the summary row; 0 means the column has no summary.
enum class CalcType : std::int32_t { None = 0, Sum = 1, Avg = 2, Min = 3, Max = 4, Count = 5 };

}  // namespace varion

// One table of a list, as the application declares it.
struct CVelTableInfo {
  std::int32_t tableID;         // the key by which columns and joins name the table
  std::int32_t secondID;        // kept and persisted, no part in the statement
  std::int32_t parentTableID;   // the table this one is joined to
  const char* alias;            // the table's name inside the statement
  const char* tableName;        // database table
  const char* keyField;         // this table's key field
  const char* linkField;        // see joinDirection
  const char* condition;        // this table's own condition
  // 0: linkField is a field of this table holding the parent's key; non-zero: linkField is a
  // field of the parent holding this table's key.
  std::uint32_t joinDirection;
  std::int32_t source;          // 0 takes the configuration's own source number
  const char* extraJoin;        // appended to the join condition with " AND "
};

// One column of a list, as the application declares it. The order of the members is the order
// in which applications write their constant tables; do not reorder.
struct CVelColInfo {
  std::uint32_t forcePresent;   // non-zero puts the column into every statement
  std::int32_t fieldType;       // VelFieldType
  std::int32_t allowShow;
  std::int32_t align;           // 0 left, 1 centre, 2 right
  std::int32_t allowSort;
  std::int32_t allowFilter;
  std::int32_t kind;
  const char* dbFieldName;      // field of the column's table, or an expression
  const char* defCaption;
  const char* orderByAsc;       // ORDER BY text for this column, ascending ("" = standard)
  const char* orderByDesc;      // used as it stands for descending ("" = ascending + " DESC")
  std::int32_t isExpression;    // dbFieldName is an expression carrying its own " AS " name
  const char* resultName;       // the name after " AS "
  std::int32_t width;           // pixels at zoom 100
  const char* listText;         // kinds 4 and 5: "code=text" lines separated by line feeds
  const char* format;           // display format of numbers and dates ("" = the type's own)
  std::int32_t minWidth;
  std::int32_t decimals;
  std::int32_t calcType;        // CalcType
  std::int32_t headerAlign;
  std::int32_t multiLine;
  std::int32_t visible;
  const char* caption;          // the user's own caption ("" = the default caption)
  const char* toolTip;
  const char* summaryFormat;    // text of the summary cell, "%s" standing for the value
  const char* filterField;      // field that filters use instead of dbFieldName ("" = same)
  std::int32_t textColor;       // COLORREF, -1 = the grid's own
  std::int32_t backColor;       // COLORREF, -1 = the grid's own
  std::int32_t bold;
  std::int32_t italic;
  std::int32_t readOnly;
  std::int32_t hyperlink;
  const char* description;      // help text of the column chooser
  std::int32_t tableID;
  std::int32_t columnID;        // 1-based; the position + 1 in a standard list
  std::int32_t source;          // 0 takes the configuration's own source number
  std::int32_t helpID;
  std::int32_t licenceModule;   // 0 = offered without a licence check
};

// The list as a whole, as the application declares it; the members are in the order of the
// stored list blob.
struct CVelListInfo {
  std::int32_t listID;
  std::int32_t defSortColumnID;    // where the sort goes when the stored one is not usable
  std::int32_t defAscending;
  const char* title;
  std::int32_t allowMultiSel;
  std::int32_t multiSel;
  std::int32_t allowSelectedSum;
  std::int32_t selectedSum;
  std::int32_t wrapText;
  std::int32_t horLines;
  std::int32_t verLines;
  std::int32_t rowHeaderVisible;
  std::int32_t rowHeight;          // pixels at zoom 100
  std::int32_t colHeaderHeight;
  std::int32_t rowHeaderWidth;
  const char* keyField;            // the field that identifies a row in the recordset
  std::int32_t zoom;               // percent
  std::int32_t frozenColCount;     // counted in visible columns
  const char* where;               // base condition of every standard statement
  const char* strikeOutField;      // a row whose field is non-zero is drawn struck out
  std::int32_t strikeOutActive;
  const char* helpKey;
  const char* printTitle;
  std::int32_t shadowMode;         // alternate row shading
  std::int32_t autoStretch;        // columns fill the width of the grid
  std::int32_t sortColumnID;       // 0 = no sort column
  std::int32_t ascending;
  std::int32_t allowCustomColumns;
};

// The configuration's record of one table.
struct VARION_API CVelTableInfoImpl {
  std::int32_t tableID = 0;
  std::int32_t secondID = 0;
  std::int32_t parentTableID = 0;
  std::string alias;
  std::string tableName;
  std::string keyField;
  std::string linkField;
  std::string condition;
  std::uint32_t joinDirection = 0;
  std::int32_t source = 0;
  std::string extraJoin;

  void InitTableInfo(const CVelTableInfo& info, std::int32_t cfgSource);
  bool operator==(const CVelTableInfoImpl&) const = default;
};

// The configuration's record of one column: the description plus the user's layout.
struct VARION_API CVelColInfoCustImpl {
  std::uint32_t forcePresent = 0;
  std::int32_t fieldType = 0;   // VelFieldType
  std::int32_t allowShow = 1;
  std::int32_t align = 0;
  std::int32_t allowSort = 1;
  std::int32_t allowFilter = 1;
  std::int32_t kind = 0;
  std::string dbFieldName;
  std::string defCaption;
  std::string orderByAsc;
  std::string orderByDesc;
  std::int32_t isExpression = 0;
  std::string resultName;
  std::int32_t width = 100;
  std::string listText;
  std::string format;
  std::int32_t minWidth = 0;
  std::int32_t decimals = 0;
  std::int32_t calcType = 0;
  std::int32_t headerAlign = 0;
  std::int32_t multiLine = 0;
  std::int32_t visible = 1;
  std::string caption;
  std::string toolTip;
  std::string summaryFormat;
  std::string filterField;
  std::int32_t textColor = -1;
  std::int32_t backColor = -1;
  std::int32_t bold = 0;
  std::int32_t italic = 0;
  std::int32_t readOnly = 0;
  std::int32_t hyperlink = 0;
  std::string description;
  std::int32_t tableID = 0;
  std::int32_t columnID = 0;
  std::int32_t source = 0;
  std::int32_t helpID = 0;
  std::int32_t licenceModule = 0;

  // Copies the description. A source of 0 takes cfgSource; with ignoreForcePresent every column
  // is forced into the statement (kept although the setting's name says the opposite: lists that
  // set it read every column of the recordset by position); a list text of kinds 4 and 5 is
  // closed with a line feed so that its last line parses like the others.
  void InitColumnInfo(const CVelColInfo& info, std::int32_t cfgSource, bool ignoreForcePresent);
  bool operator==(const CVelColInfoCustImpl&) const = default;
};

// The configuration's record of the list.
struct VARION_API CVelListInfoCustImpl {
  std::int32_t listID = 0;
  std::int32_t defSortColumnID = 0;
  std::int32_t defAscending = 1;
  std::string title;
  std::int32_t allowMultiSel = 0;
  std::int32_t multiSel = 0;
  std::int32_t allowSelectedSum = 0;
  std::int32_t selectedSum = 0;
  std::int32_t wrapText = 0;
  std::int32_t horLines = 1;
  std::int32_t verLines = 1;
  std::int32_t rowHeaderVisible = 1;
  std::int32_t rowHeight = 18;
  std::int32_t colHeaderHeight = 20;
  std::int32_t rowHeaderWidth = 16;
  std::string keyField;
  std::int32_t zoom = 100;
  std::int32_t frozenColCount = 0;
  std::string where;
  std::string strikeOutField;
  std::int32_t strikeOutActive = 0;
  std::string helpKey;
  std::string printTitle;
  std::int32_t shadowMode = 0;
  std::int32_t autoStretch = 0;
  std::int32_t sortColumnID = 0;
  std::int32_t ascending = 1;
  std::int32_t allowCustomColumns = 0;

  void InitListInfo(const CVelListInfo& info);
  bool operator==(const CVelListInfoCustImpl&) const = default;
};
