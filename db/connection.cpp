#include "db/connection.h"

#include "base/text.h"
#include "db/backend.h"
#include "db/connection_string.h"
#include "db/messages.h"

namespace varion::db {

namespace detail {

const SqlDialect& DialectForServer(std::string_view dbmsName) {
  std::string lower;
  for (char c : dbmsName) lower += (c >= 'A' && c <= 'Z') ? static_cast<char>(c + 32) : c;
  if (lower.find("sqlite") != std::string::npos) return SqliteDialect();
  if (lower.find("postgres") != std::string::npos) return PostgresDialect();
  return SqlServerDialect();
}

#if defined(_WIN32)
// The embedded SQLite is linked only into the native build; Windows hosts reach SQLite through
// its ODBC driver.
std::shared_ptr<ConnectionBackend> OpenSqlite(const std::string&, int) {
  throw ComError(kNotImpl, messages::SqliteUnavailable());
}
#endif

}  // namespace detail

// ---- Statement ------------------------------------------------------------------------------

Statement::Statement(std::shared_ptr<detail::ConnectionBackend> connection,
                     std::unique_ptr<detail::StatementBackend> impl)
    : m_connection(std::move(connection)), m_impl(std::move(impl)) {}
Statement::Statement(Statement&&) noexcept = default;
Statement& Statement::operator=(Statement&& other) noexcept {
  // The handle goes first: its backend must outlive it.
  m_impl.reset();
  m_connection = std::move(other.m_connection);
  m_impl = std::move(other.m_impl);
  return *this;
}
Statement::~Statement() = default;

int Statement::ParameterCount() const {
  if (!m_impl) throw ComError(kDbNotOpen, messages::StatementClosed());
  return m_impl->ParameterCount();
}

Statement& Statement::Bind(int index, const Variant& value, FieldType hint) {
  if (!m_impl) throw ComError(kDbNotOpen, messages::StatementClosed());
  m_impl->Bind(index, value, hint);
  return *this;
}

Statement& Statement::ClearBindings() {
  if (!m_impl) throw ComError(kDbNotOpen, messages::StatementClosed());
  m_impl->ClearBindings();
  return *this;
}

std::int64_t Statement::Execute() {
  if (!m_impl) throw ComError(kDbNotOpen, messages::StatementClosed());
  return m_impl->Execute();
}

Recordset Statement::Open() {
  if (!m_impl) throw ComError(kDbNotOpen, messages::StatementClosed());
  return m_impl->Open();
}

// ---- Connection -----------------------------------------------------------------------------

Connection Connection::Open(std::string_view connectionString) {
  ConnectionString parsed;
  if (Failed(ConnectionString::Parse(connectionString, parsed)) || parsed.Pairs().empty())
    throw ComError(kInvalidArg, messages::BadConnectionString(connectionString));
  std::string provider = parsed.Get("Provider").value_or("");
  if (SameName(provider, "SQLite")) {
    auto path = parsed.Get("Data Source");
    if (!path || path->empty()) throw ComError(kInvalidArg, messages::BadConnectionString(connectionString));
    int timeout = 5000;
    if (auto t = parsed.Get("Busy Timeout")) timeout = Variant(*t).AsInt32(timeout);
    return Connection(detail::OpenSqlite(*path, timeout));
  }
  if (SameName(provider, "MSDASQL")) parsed.Remove("Provider");
  return Connection(detail::OpenOdbc(text::Cp1250ToUtf16(parsed.ToString())));
}

detail::ConnectionBackend& Connection::Backend() const {
  if (!m_backend || !m_backend->IsOpen()) throw ComError(kDbNotOpen, messages::ConnectionClosed());
  return *m_backend;
}

std::int64_t Connection::Execute(std::string_view sql) const { return Backend().Execute(sql); }
Recordset Connection::OpenRS(std::string_view sql) const { return Backend().OpenRS(sql); }

Statement Connection::Prepare(std::string_view sql) const {
  auto impl = Backend().Prepare(sql);
  return Statement(m_backend, std::move(impl));
}

UpdatableRecordset Connection::OpenForUpdate(std::string_view sql) const {
  std::string table = SingleTableOf(sql);
  if (table.empty()) throw ComError(kFail, messages::NotUpdatable(sql));
  Recordset rows = Backend().OpenRS(sql);
  return UpdatableRecordset(m_backend, std::move(table), std::move(rows));
}

void Connection::BeginTrans() const { Backend().BeginTrans(); }
void Connection::CommitTrans() const { Backend().CommitTrans(); }
void Connection::RollbackTrans() const { Backend().RollbackTrans(); }
bool Connection::InTransaction() const { return m_backend && m_backend->IsOpen() && m_backend->InTransaction(); }
const SqlDialect& Connection::Dialect() const { return Backend().Dialect(); }
std::string Connection::ServerName() const { return Backend().ServerName(); }
std::string Connection::ServerVersion() const { return Backend().ServerVersion(); }
bool Connection::IsOpen() const { return m_backend && m_backend->IsOpen(); }

void Connection::Close() const {
  if (m_backend) m_backend->Close();
}

std::size_t Connection::OpenStatementCount() const { return m_backend ? m_backend->OpenStatementCount() : 0; }

}  // namespace varion::db
