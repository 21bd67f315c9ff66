// What a database backend implements (SQLite directly, ODBC). Internal to db/: callers use
// Connection, Statement and the recordsets.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "base/sql_dialect.h"
#include "base/variant.h"
#include "db/recordset.h"

namespace varion::db::detail {

class StatementBackend {
 public:
  virtual ~StatementBackend() = default;
  virtual int ParameterCount() const = 0;
  // Parameters are 1-based; a value stays bound until replaced or cleared. The type hint
  // tells how to send a null (servers with typed parameters refuse an untyped null).
  virtual void Bind(int index, const Variant& value, FieldType hint) = 0;
  virtual void ClearBindings() = 0;
  virtual std::int64_t Execute() = 0;  // rows affected, 0 for statements that change none
  virtual Recordset Open() = 0;
  // Gives the handle back to the server; later calls raise ComError kDbNotOpen.
  virtual void Release() = 0;
};

class ConnectionBackend {
 public:
  virtual ~ConnectionBackend() = default;
  virtual std::unique_ptr<StatementBackend> Prepare(std::string_view sql) = 0;
  virtual std::int64_t Execute(std::string_view sql) = 0;
  virtual Recordset OpenRS(std::string_view sql) = 0;
  virtual void BeginTrans() = 0;
  virtual void CommitTrans() = 0;
  virtual void RollbackTrans() = 0;
  virtual bool InTransaction() const = 0;
  virtual const SqlDialect& Dialect() const = 0;
  virtual std::string ServerName() const = 0;
  virtual std::string ServerVersion() const = 0;
  virtual bool IsOpen() const = 0;
  virtual void Close() = 0;
  virtual std::size_t OpenStatementCount() const = 0;
};

// Opens a backend from the parsed connection string. The SQLite one exists in the native build.
std::shared_ptr<ConnectionBackend> OpenSqlite(const std::string& path, int busyTimeoutMs);
std::shared_ptr<ConnectionBackend> OpenOdbc(const std::u16string& connectionString);

// Dialect by the DBMS name a server reports; SQL Server for anything unknown.
const SqlDialect& DialectForServer(std::string_view dbmsName);

}  // namespace varion::db::detail
