// The updatable recordset of the "add a row" pattern: open it from a single-table SELECT, AddNew,
// set fields by name in any order, Update. Update is an INSERT into that table of the fields that
// were set, with every value bound as a parameter; the prepared INSERT is kept for the next row
// that sets the same fields.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/export.h"
#include "base/variant.h"
#include "db/recordset.h"

namespace varion::db {

namespace detail {
class ConnectionBackend;
}
class Statement;

class VARION_API UpdatableRecordset {
 public:
  UpdatableRecordset(UpdatableRecordset&&) noexcept;
  UpdatableRecordset& operator=(UpdatableRecordset&&) noexcept;
  ~UpdatableRecordset();

  const std::string& TableName() const { return m_table; }
  // The rows the SELECT returned, read-only.
  Recordset& Rows() { return m_rows; }
  int GetFieldCount() const { return m_rows.GetFieldCount(); }
  const std::string& GetFieldName(int index) const { return m_rows.GetFieldName(index); }

  // Starts a new row; values set before and not stored are dropped.
  void AddNew();
  // A field that does not exist raises ComError kPointer; a value that cannot take the field's
  // type raises kTypeMismatch (or kOverflow). Without AddNew: kDbEof.
  void PutCollect(std::string_view name, const Variant& value);
  // The value set for the new row (empty when not set).
  const Variant& GetCollect(std::string_view name) const;
  // Stores the new row; it stays readable through GetCollect until the next AddNew.
  void Update();
  void CancelUpdate();
  bool IsEditing() const { return m_editing; }

 private:
  friend class Connection;
  UpdatableRecordset(std::shared_ptr<detail::ConnectionBackend> connection, std::string table, Recordset rows);
  int RequireField(std::string_view name) const;

  std::shared_ptr<detail::ConnectionBackend> m_connection;
  std::string m_table;
  Recordset m_rows;
  std::vector<Variant> m_values;
  std::vector<bool> m_set;
  bool m_editing = false;
  // The INSERT prepared for the set of fields of the last stored row.
  std::vector<bool> m_preparedFor;
  std::unique_ptr<Statement> m_insert;
};

// The table a single-table SELECT reads: the name after FROM, or "" when the statement joins,
// lists several tables or reads a subquery.
VARION_API std::string SingleTableOf(std::string_view select);

}  // namespace varion::db
