// The database connection, shaped like ADO's: open from a connection string, Execute a statement,
// OpenRS a read-only static recordset, open an updatable recordset to add rows, prepare a
// statement with bound parameters, and run transactions. A Connection is a shared handle, as the
// reference-counted ADO pointer is: copies use the same server connection.
//
// Connection strings:
//   "Provider=SQLite;Data Source=/path/file.db"  the embedded SQLite (native build only);
//                                                 optional "Busy Timeout" in milliseconds.
//   anything else                                 ODBC (SQLDriverConnectW), for example
//                                                 "Driver={SQLite3};Database=/path/file.db" or
//                                                 "Driver={PostgreSQL Unicode};Server=...";
//                                                 ADO's "Provider=MSDASQL" is accepted and dropped.
// Every failure raises ComError: the server's own message and SQLSTATE when the server refused.
// A connection serves one thread at a time, as an ADO connection serves its apartment.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "base/export.h"
#include "base/sql_dialect.h"
#include "base/variant.h"
#include "db/recordset.h"
#include "db/updatable_recordset.h"

namespace varion::db {

namespace detail {
class ConnectionBackend;
class StatementBackend;
}  // namespace detail

// A statement prepared once and run any number of times with "?" parameters. Values are sent
// bound, never pasted into the SQL text. Move-only; it gives its handle back when destroyed or
// when its connection closes.
class VARION_API Statement {
 public:
  Statement(Statement&&) noexcept;
  Statement& operator=(Statement&&) noexcept;
  ~Statement();

  int ParameterCount() const;
  // 1-based. An empty or null variant binds NULL; `hint` names the column type for that NULL.
  Statement& Bind(int index, const Variant& value, FieldType hint = FieldType::Unknown);
  Statement& ClearBindings();
  std::int64_t Execute();  // rows affected
  Recordset Open();        // a static snapshot of the result

 private:
  friend class Connection;
  friend class UpdatableRecordset;
  Statement(std::shared_ptr<detail::ConnectionBackend> connection, std::unique_ptr<detail::StatementBackend> impl);
  std::shared_ptr<detail::ConnectionBackend> m_connection;
  std::unique_ptr<detail::StatementBackend> m_impl;
};

class VARION_API Connection {
 public:
  Connection() = default;  // not open; every call raises ComError kDbNotOpen
  static Connection Open(std::string_view connectionString);

  // Runs one statement (SQLite: every statement of the text) and gives the rows it changed.
  std::int64_t Execute(std::string_view sql) const;
  Recordset OpenRS(std::string_view sql) const;
  Statement Prepare(std::string_view sql) const;
  // An updatable recordset over a single-table SELECT, usually one that returns no rows
  // ("SELECT * FROM log_Logowanie WHERE 1 = 0"), to add rows to that table.
  UpdatableRecordset OpenForUpdate(std::string_view sql) const;

  void BeginTrans() const;
  void CommitTrans() const;
  void RollbackTrans() const;
  bool InTransaction() const;

  const SqlDialect& Dialect() const;
  // The DBMS name as the server gives it ("SQLite", "PostgreSQL", "Microsoft SQL Server").
  std::string ServerName() const;
  std::string ServerVersion() const;

  bool IsOpen() const;
  // Closes the server connection for every copy; statements still alive are released.
  void Close() const;
  // Statement handles currently allocated on this connection (diagnostics and leak tests).
  std::size_t OpenStatementCount() const;

  explicit operator bool() const { return IsOpen(); }

 private:
  explicit Connection(std::shared_ptr<detail::ConnectionBackend> backend) : m_backend(std::move(backend)) {}
  detail::ConnectionBackend& Backend() const;
  std::shared_ptr<detail::ConnectionBackend> m_backend;
};

}  // namespace varion::db
