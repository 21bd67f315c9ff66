// The tables the library reads and writes, with the dictionaries the fillers and the gallery use,
// declared once and written for each dialect. Production SQL Server databases already hold them;
// the gallery and the tests create them on an empty database.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "base/export.h"
#include "base/sql_dialect.h"
#include "db/connection.h"

namespace varion::db::schema {

// The dialog configuration table (fields "vwcg_Section", "vwcg_User", "vwcg_Service",
// "vwcg_Data", "vwcg_FiltersData").
inline constexpr const char* kDialogConfigTable = "vw_KonfiguracjaDialogu";

enum class ColumnKind {
  Id,        // auto-numbered integer key
  Int,       // 32-bit integer
  Text,      // text up to `length` characters
  LongText,  // text without a practical limit (SQL statements, log messages)
  DateTime,
  Amount,    // money: four decimals
  Blob,      // image field
};

struct ColumnDef {
  const char* name;
  ColumnKind kind;
  int length = 0;  // Text only
  bool notNull = false;
  const char* defaultValue = nullptr;  // SQL literal of the DEFAULT clause, when there is one
};

struct IndexDef {
  const char* name;
  const char* columns;  // comma-separated
  bool unique;
};

struct TableDef {
  const char* name;
  std::span<const ColumnDef> columns;
  std::span<const IndexDef> indexes;
};

VARION_API std::span<const TableDef> Tables();
VARION_API const TableDef* FindTable(std::string_view name);

// The column type text of one column in a dialect.
VARION_API std::string ColumnType(const SqlDialect& dialect, const ColumnDef& column);
// CREATE TABLE and CREATE INDEX statements of every table, in order.
VARION_API std::vector<std::string> CreateStatements(const SqlDialect& dialect);
// Creates every table on an empty database in one transaction; on failure nothing is left
// behind and the server's error is raised.
VARION_API void CreateSchema(const Connection& connection);

}  // namespace varion::db::schema
