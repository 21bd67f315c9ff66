// The embedded SQLite backend, linked directly into the native build. Text crosses as UTF-8.
#include <sqlite3.h>

#include <cstring>
#include <set>

#include "base/text.h"
#include "db/backend.h"
#include "db/messages.h"

namespace varion::db::detail {
namespace {

struct DbCloser {
  void operator()(sqlite3* db) const { sqlite3_close_v2(db); }
};
struct StmtFinalizer {
  void operator()(sqlite3_stmt* st) const { sqlite3_finalize(st); }
};
using unique_db = std::unique_ptr<sqlite3, DbCloser>;
using unique_stmt = std::unique_ptr<sqlite3_stmt, StmtFinalizer>;

// SQLite has no SQLSTATE; these are the ODBC classes closest to each result code, so that
// callers can tell a constraint violation from a syntax error on every backend.
const char* SqlStateOf(int code, bool preparing) {
  switch (code & 0xFF) {
    case SQLITE_CONSTRAINT: return "23000";
    case SQLITE_BUSY:
    case SQLITE_LOCKED: return "HYT00";
    case SQLITE_CANTOPEN:
    case SQLITE_NOTADB: return "08001";
    case SQLITE_TOOBIG: return "22001";
    case SQLITE_MISMATCH: return "22018";
    case SQLITE_RANGE: return "07009";
    default: return preparing ? "42000" : "HY000";
  }
}

[[noreturn]] void Raise(sqlite3* db, int code, bool preparing) {
  std::string message = text::Utf8ToCp1250(db ? sqlite3_errmsg(db) : sqlite3_errstr(code));
  throw ComError(kDbError, std::move(message), SqlStateOf(code, preparing));
}

bool Contains(const std::string& upper, const char* word) { return upper.find(word) != std::string::npos; }

// The column type by its declared type, with SQLite's own affinity words and the server types
// our schema writes for the other dialects.
FieldType TypeFromDeclaration(const char* declared) {
  if (!declared) return FieldType::Unknown;
  std::string u;
  for (const char* p = declared; *p; ++p) u += (*p >= 'a' && *p <= 'z') ? static_cast<char>(*p - 32) : *p;
  if (Contains(u, "BIGINT")) return FieldType::BigInt;
  if (Contains(u, "INT")) return FieldType::Integer;
  if (Contains(u, "CHAR") || Contains(u, "TEXT") || Contains(u, "CLOB")) return FieldType::Text;
  if (Contains(u, "BLOB") || Contains(u, "BINARY") || Contains(u, "IMAGE") || Contains(u, "BYTEA"))
    return FieldType::Binary;
  if (Contains(u, "MONEY") || Contains(u, "NUMERIC") || Contains(u, "DECIMAL") || Contains(u, "CURRENCY"))
    return FieldType::Amount;
  if (Contains(u, "REAL") || Contains(u, "FLOA") || Contains(u, "DOUB")) return FieldType::Double;
  if (Contains(u, "DATE") || Contains(u, "TIME")) return FieldType::Date;
  if (Contains(u, "BOOL") || Contains(u, "BIT")) return FieldType::Bool;
  return FieldType::Unknown;
}

std::string TextOf(sqlite3_value* value) {
  const char* p = reinterpret_cast<const char*>(sqlite3_value_text(value));
  int n = sqlite3_value_bytes(value);
  return text::Utf8ToCp1250(std::string_view(p ? p : "", static_cast<std::size_t>(n)));
}

Variant::Bytes BytesOf(sqlite3_value* value) {
  const auto* p = static_cast<const std::uint8_t*>(sqlite3_value_blob(value));
  int n = sqlite3_value_bytes(value);
  return p ? Variant::Bytes(p, p + n) : Variant::Bytes();
}

Variant IntegerValue(sqlite3_int64 v) {
  if (v >= INT32_MIN && v <= INT32_MAX) return Variant(static_cast<std::int32_t>(v));
  return Variant(static_cast<std::int64_t>(v));
}

// One cell: the declared type decides the variant type when the stored value fits it; a value
// stored in another class (SQLite lets any column hold anything) comes as it is. The value
// functions run without the connection's mutex, unlike the sqlite3_column_* ones.
Variant CellOf(sqlite3_value* value, FieldType type) {
  switch (sqlite3_value_type(value)) {
    case SQLITE_NULL: return Variant::MakeNull();
    case SQLITE_INTEGER: {
      sqlite3_int64 v = sqlite3_value_int64(value);
      switch (type) {
        case FieldType::BigInt: return Variant(static_cast<std::int64_t>(v));
        case FieldType::Double: return Variant(static_cast<double>(v));
        case FieldType::Bool: return Variant(v != 0);
        case FieldType::Amount: {
          Amount a = Amount::FromUnits(v);
          return a.IsValid() ? Variant(a) : IntegerValue(v);
        }
        default: return IntegerValue(v);
      }
    }
    case SQLITE_FLOAT: {
      double v = sqlite3_value_double(value);
      if (type == FieldType::Amount) {
        Amount a = Amount::FromDouble(v);
        if (a.IsValid()) return Variant(a);
      }
      return Variant(v);
    }
    case SQLITE_BLOB:
      if (type == FieldType::Text) return Variant(TextOf(value));
      return Variant(BytesOf(value));
    default: {
      if (type == FieldType::Binary) return Variant(BytesOf(value));
      Variant v(TextOf(value));
      if (type == FieldType::Date) {
        DateTime d;
        if (Succeeded(v.ToDate(d))) return Variant(d);
      } else if (type == FieldType::Amount) {
        Amount a;
        if (Succeeded(v.ToAmount(a))) return Variant(a);
      }
      return v;
    }
  }
}

class SqliteConnection;

class SqliteStatement final : public StatementBackend {
 public:
  SqliteStatement(SqliteConnection& owner, unique_stmt stmt);
  ~SqliteStatement() override;
  int ParameterCount() const override { return sqlite3_bind_parameter_count(Handle()); }
  void Bind(int index, const Variant& value, FieldType hint) override;
  void ClearBindings() override { sqlite3_clear_bindings(Handle()); }
  std::int64_t Execute() override;
  Recordset Open() override;
  void Release() override { m_stmt.reset(); }

 private:
  sqlite3_stmt* Handle() const {
    if (!m_stmt) throw ComError(kDbNotOpen, messages::StatementClosed());
    return m_stmt.get();
  }
  SqliteConnection& m_owner;
  unique_stmt m_stmt;
};

class SqliteConnection final : public ConnectionBackend {
 public:
  SqliteConnection(unique_db db) : m_db(std::move(db)) {}
  ~SqliteConnection() override { Close(); }

  sqlite3* Db() const {
    if (!m_db) throw ComError(kDbNotOpen, messages::ConnectionClosed());
    return m_db.get();
  }

  unique_stmt PrepareOne(std::string_view& sql) const {
    sqlite3_stmt* st = nullptr;
    const char* tail = nullptr;
    int rc = sqlite3_prepare_v2(Db(), sql.data(), static_cast<int>(sql.size()), &st, &tail);
    unique_stmt owned(st);
    if (rc != SQLITE_OK) Raise(Db(), rc, true);
    sql.remove_prefix(static_cast<std::size_t>(tail - sql.data()));
    return owned;
  }

  std::unique_ptr<StatementBackend> Prepare(std::string_view sql) override {
    std::string utf8 = text::Cp1250ToUtf8(sql);
    std::string_view rest = utf8;
    unique_stmt st = PrepareOne(rest);
    if (!st) throw ComError(kDbError, "Instrukcja SQL jest pusta.", "42000");
    return std::make_unique<SqliteStatement>(*this, std::move(st));
  }

  std::int64_t StepToEnd(sqlite3_stmt* st) {
    const sqlite3_int64 before = sqlite3_total_changes64(Db());
    int rc;
    while ((rc = sqlite3_step(st)) == SQLITE_ROW) {
    }
    if (rc != SQLITE_DONE) {
      sqlite3_reset(st);
      Raise(Db(), rc, false);
    }
    sqlite3_reset(st);
    return sqlite3_total_changes64(Db()) - before;
  }

  std::int64_t Execute(std::string_view sql) override {
    std::string utf8 = text::Cp1250ToUtf8(sql);
    std::string_view rest = utf8;
    std::int64_t changed = 0;
    while (!rest.empty()) {
      unique_stmt st = PrepareOne(rest);
      if (!st) break;  // only blanks or comments were left
      changed += StepToEnd(st.get());
    }
    return changed;
  }

  Recordset Snapshot(sqlite3_stmt* st) {
    const int n = sqlite3_column_count(st);
    std::vector<std::string> names;
    std::vector<FieldType> types;
    names.reserve(static_cast<std::size_t>(n));
    for (int c = 0; c < n; ++c) {
      names.push_back(text::Utf8ToCp1250(sqlite3_column_name(st, c)));
      types.push_back(TypeFromDeclaration(sqlite3_column_decltype(st, c)));
    }
    CellStore cells;
    int rc;
    while ((rc = sqlite3_step(st)) == SQLITE_ROW)
      for (int c = 0; c < n; ++c) cells.push_back(CellOf(sqlite3_column_value(st, c), types[static_cast<std::size_t>(c)]));
    if (rc != SQLITE_DONE) {
      sqlite3_reset(st);
      Raise(Db(), rc, false);
    }
    sqlite3_reset(st);
    return Recordset(std::move(names), std::move(types), std::move(cells));
  }

  Recordset OpenRS(std::string_view sql) override {
    std::string utf8 = text::Cp1250ToUtf8(sql);
    std::string_view rest = utf8;
    unique_stmt st = PrepareOne(rest);
    if (!st) return Recordset();
    return Snapshot(st.get());
  }

  void BeginTrans() override {
    if (InTransaction()) throw ComError(kFail, messages::TransactionActive());
    Execute("BEGIN");
  }
  void CommitTrans() override {
    if (!InTransaction()) throw ComError(kFail, messages::NoTransaction());
    Execute("COMMIT");
  }
  void RollbackTrans() override {
    if (!InTransaction()) throw ComError(kFail, messages::NoTransaction());
    Execute("ROLLBACK");
  }
  bool InTransaction() const override { return m_db && !sqlite3_get_autocommit(m_db.get()); }

  const SqlDialect& Dialect() const override { return SqliteDialect(); }
  std::string ServerName() const override { return "SQLite"; }
  std::string ServerVersion() const override { return sqlite3_libversion(); }
  bool IsOpen() const override { return m_db != nullptr; }

  void Close() override {
    if (!m_db) return;
    for (SqliteStatement* s : m_statements) s->Release();
    m_db.reset();
  }

  std::size_t OpenStatementCount() const override {
    std::size_t n = 0;
    if (m_db)
      for (sqlite3_stmt* s = sqlite3_next_stmt(m_db.get(), nullptr); s; s = sqlite3_next_stmt(m_db.get(), s)) ++n;
    return n;
  }

  void Register(SqliteStatement* s) { m_statements.insert(s); }
  void Unregister(SqliteStatement* s) { m_statements.erase(s); }

 private:
  unique_db m_db;
  std::set<SqliteStatement*> m_statements;
};

SqliteStatement::SqliteStatement(SqliteConnection& owner, unique_stmt stmt) : m_owner(owner), m_stmt(std::move(stmt)) {
  m_owner.Register(this);
}

SqliteStatement::~SqliteStatement() { m_owner.Unregister(this); }

void SqliteStatement::Bind(int index, const Variant& value, FieldType) {
  sqlite3_stmt* st = Handle();
  if (index < 1 || index > sqlite3_bind_parameter_count(st)) throw ComError(kInvalidArg, messages::NoParameter(index));
  int rc = SQLITE_OK;
  switch (value.GetType()) {
    case Variant::Type::Empty:
    case Variant::Type::Null: rc = sqlite3_bind_null(st, index); break;
    case Variant::Type::Int32: rc = sqlite3_bind_int(st, index, *value.GetInt32()); break;
    case Variant::Type::Int64:
    case Variant::Type::Bool: {
      std::int64_t v = 0;
      value.ToInt64(v);
      rc = sqlite3_bind_int64(st, index, v);
      break;
    }
    case Variant::Type::Double: {
      double v = 0;
      value.ToDouble(v);
      rc = sqlite3_bind_double(st, index, v);
      break;
    }
    case Variant::Type::Amount: {
      Amount a;
      if (Failed(value.ToAmount(a))) {
        rc = sqlite3_bind_null(st, index);
      } else if (a.Raw() % Amount::kScale == 0) {
        rc = sqlite3_bind_int64(st, index, a.Raw() / Amount::kScale);
      } else {
        rc = sqlite3_bind_double(st, index, a.ToDouble());
      }
      break;
    }
    case Variant::Type::Date: {
      DateTime d;
      if (Failed(value.ToDate(d))) {
        rc = sqlite3_bind_null(st, index);
      } else {
        // The form every SQLite date literal of ours has, so that dates compare as text.
        std::string t = d.Format("%Y-%m-%d %H:%M:%S");
        rc = sqlite3_bind_text(st, index, t.data(), static_cast<int>(t.size()), SQLITE_TRANSIENT);
      }
      break;
    }
    case Variant::Type::Text: {
      std::string t = text::Cp1250ToUtf8(*value.GetText());
      rc = sqlite3_bind_text64(st, index, t.data(), t.size(), SQLITE_TRANSIENT, SQLITE_UTF8);
      break;
    }
    case Variant::Type::Binary: {
      const auto& b = *value.GetBinary();
      // A null pointer would bind NULL: an empty blob needs a real (empty) buffer.
      static const std::uint8_t kNothing = 0;
      rc = sqlite3_bind_blob64(st, index, b.empty() ? &kNothing : b.data(), b.size(), SQLITE_TRANSIENT);
      break;
    }
  }
  if (rc != SQLITE_OK) Raise(m_owner.Db(), rc, false);
}

std::int64_t SqliteStatement::Execute() {
  sqlite3_stmt* st = Handle();
  sqlite3_reset(st);
  return m_owner.StepToEnd(st);
}

Recordset SqliteStatement::Open() {
  sqlite3_stmt* st = Handle();
  sqlite3_reset(st);
  return m_owner.Snapshot(st);
}

}  // namespace

std::shared_ptr<ConnectionBackend> OpenSqlite(const std::string& path, int busyTimeoutMs) {
  sqlite3* raw = nullptr;
  int rc = sqlite3_open_v2(text::Cp1250ToUtf8(path).c_str(), &raw, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE,
                           nullptr);
  unique_db db(raw);
  if (rc != SQLITE_OK) {
    std::string message = text::Utf8ToCp1250(raw ? sqlite3_errmsg(raw) : sqlite3_errstr(rc));
    throw ComError(kDbConnection, message + " (" + path + ")", "08001");
  }
  sqlite3_busy_timeout(db.get(), busyTimeoutMs);
  sqlite3_extended_result_codes(db.get(), 1);
  return std::make_shared<SqliteConnection>(std::move(db));
}

}  // namespace varion::db::detail
