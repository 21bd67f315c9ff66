// The ODBC backend, through the Unicode (W) entry points only: Wine's ODBC layer lacks the ANSI
// ones. Text crosses as UTF-16 and comes back as code page 1250. Builds natively (unixODBC) and
// for Windows (odbc32), where the ODBC headers bring in the Windows headers they need.
#include "db/odbc_handles.h"

#if !defined(_WIN32)
#include <locale.h>
#endif

#include <cstring>
#include <set>

#include "base/text.h"
#include "db/backend.h"
#include "db/messages.h"

static_assert(sizeof(SQLWCHAR) == sizeof(char16_t), "ODBC wide characters must be UTF-16 code units");

namespace varion::db::detail {
namespace {

SQLWCHAR* W(std::u16string& s) { return reinterpret_cast<SQLWCHAR*>(s.data()); }

#if !defined(_WIN32)
// unixODBC turns our wide calls into 8-bit text for drivers without wide entry points (the SQLite
// driver is one), in the character set of the locale in force when the handles are allocated. A host
// in the "C" locale would send Latin-1 and lose every Polish letter outside it, so connections
// are made under a UTF-8 locale of the calling thread only; the host's process locale is untouched.
class Utf8ConnectLocale {
 public:
  Utf8ConnectLocale() {
    static const locale_t utf8 = newlocale(LC_CTYPE_MASK, "C.UTF-8", static_cast<locale_t>(nullptr));
    if (utf8) m_previous = uselocale(utf8);
  }
  ~Utf8ConnectLocale() {
    if (m_previous) uselocale(m_previous);
  }
  Utf8ConnectLocale(const Utf8ConnectLocale&) = delete;
  Utf8ConnectLocale& operator=(const Utf8ConnectLocale&) = delete;

 private:
  locale_t m_previous = static_cast<locale_t>(nullptr);
};
#else
// Under Wine and on Windows the driver manager's own conversion applies; nothing to adjust.
struct Utf8ConnectLocale {
  Utf8ConnectLocale() {}
  ~Utf8ConnectLocale() {}
};
#endif

std::u16string FromW(const SQLWCHAR* p, std::size_t units) {
  return std::u16string(reinterpret_cast<const char16_t*>(p), units);
}

struct Diagnostic {
  std::string state;
  std::string message;
};

// Every diagnostic record of a handle: the first one's SQLSTATE, all messages on separate lines.
Diagnostic ReadDiagnostic(SQLSMALLINT type, SQLHANDLE handle) {
  Diagnostic d;
  for (SQLSMALLINT record = 1; record <= 20; ++record) {
    SQLWCHAR state[6] = {};
    SQLINTEGER native = 0;
    SQLSMALLINT length = 0;
    std::u16string message(1024, u'\0');
    SQLRETURN rc = SQLGetDiagRecW(type, handle, record, state, &native, W(message),
                                  static_cast<SQLSMALLINT>(message.size()), &length);
    if (rc == SQL_NO_DATA || !SQL_SUCCEEDED(rc)) break;
    if (length >= static_cast<SQLSMALLINT>(message.size())) {
      message.assign(static_cast<std::size_t>(length) + 1, u'\0');
      SQLGetDiagRecW(type, handle, record, state, &native, W(message), static_cast<SQLSMALLINT>(message.size()),
                     &length);
    }
    message.resize(std::min<std::size_t>(static_cast<std::size_t>(length), message.size()));
    while (!message.empty() && (message.back() == u'\n' || message.back() == u'\r' || message.back() == u'\0'))
      message.pop_back();
    if (d.state.empty()) d.state = text::Utf16ToCp1250(FromW(state, 5));
    if (!d.message.empty()) d.message += '\n';
    d.message += text::Utf16ToCp1250(message);
  }
  if (d.state.empty()) d.state = "HY000";
  return d;
}

bool IsConnectionState(const std::string& state) {
  return state.compare(0, 2, "08") == 0 || state == "57P01" || state == "57P02" || state == "57P03";
}

FieldType TypeOfSql(SQLSMALLINT type, SQLSMALLINT digits) {
  switch (type) {
    case SQL_INTEGER:
    case SQL_SMALLINT:
    case SQL_TINYINT: return FieldType::Integer;
    case SQL_BIGINT: return FieldType::BigInt;
    case SQL_BIT: return FieldType::Bool;
    case SQL_REAL:
    case SQL_FLOAT:
    case SQL_DOUBLE: return FieldType::Double;
    case SQL_DECIMAL:
    case SQL_NUMERIC: return digits <= 4 ? FieldType::Amount : FieldType::Double;
    case SQL_TYPE_DATE:
    case SQL_TYPE_TIME:
    case SQL_TYPE_TIMESTAMP:
    case SQL_DATE:
    case SQL_TIME:
    case SQL_TIMESTAMP: return FieldType::Date;
    case SQL_CHAR:
    case SQL_VARCHAR:
    case SQL_LONGVARCHAR:
    case SQL_WCHAR:
    case SQL_WVARCHAR:
    case SQL_WLONGVARCHAR:
    case SQL_GUID: return FieldType::Text;
    case SQL_BINARY:
    case SQL_VARBINARY:
    case SQL_LONGVARBINARY: return FieldType::Binary;
    default: return FieldType::Unknown;
  }
}

std::string TypeName(SQLHSTMT st, SQLUSMALLINT column) {
  std::u16string buf(64, u'\0');
  SQLSMALLINT length = 0;
  if (!SQL_SUCCEEDED(SQLColAttributeW(st, column, SQL_DESC_TYPE_NAME, W(buf),
                                      static_cast<SQLSMALLINT>(buf.size() * sizeof(char16_t)), &length, nullptr)))
    return {};
  buf.resize(std::min<std::size_t>(static_cast<std::size_t>(length) / sizeof(char16_t), buf.size()));
  std::string name = text::Utf16ToCp1250(buf);
  for (char& ch : name) ch = (ch >= 'a' && ch <= 'z') ? static_cast<char>(ch - 32) : ch;
  return name;
}

bool IsAmountTypeName(const std::string& upper) {
  return upper.find("NUMERIC") != std::string::npos || upper.find("DECIMAL") != std::string::npos ||
         upper.find("MONEY") != std::string::npos;
}

bool IsTimeOnly(SQLSMALLINT type) { return type == SQL_TYPE_TIME || type == SQL_TIME; }

class OdbcConnection;

// Lowers a connection's count of live statements when the statement it stands for goes.
struct Uncount {
  void operator()(std::size_t* live) const { --*live; }
};

// One HSTMT, counted by its connection while it lives.
class StmtHandle {
 public:
  explicit StmtHandle(OdbcConnection& owner);
  SQLHSTMT Get() const { return m_handle.get(); }
  void Free() {
    m_handle.reset();
    m_counted.reset();
  }

 private:
  std::unique_ptr<std::size_t, Uncount> m_counted;
  unique_hstmt m_handle;
};

// A parameter's value and the buffers SQLBindParameter points into until the statement runs.
struct Parameter {
  Variant value;
  FieldType hint = FieldType::Unknown;
  std::u16string text;
  SQL_TIMESTAMP_STRUCT timestamp{};
  std::int64_t i64 = 0;
  std::int32_t i32 = 0;
  double dbl = 0;
  unsigned char bit = 0;
  SQLLEN indicator = 0;
};

class OdbcStatement;

class OdbcConnection final : public ConnectionBackend {
 public:
  OdbcConnection() = default;
  ~OdbcConnection() override { Close(); }

  void Connect(const std::u16string& connectionString) {
    Utf8ConnectLocale utf8;  // unixODBC fixes its conversion while the handles are made
    m_env = AllocateOdbc<SQL_HANDLE_ENV>(SQL_NULL_HANDLE);
    if (!m_env) throw ComError(kDbConnection, "SQLAllocHandle(SQL_HANDLE_ENV)", "HY001");
    SQLSetEnvAttr(m_env.get(), SQL_ATTR_ODBC_VERSION, reinterpret_cast<SQLPOINTER>(SQL_OV_ODBC3), 0);
    m_dbc = AllocateOdbc<SQL_HANDLE_DBC>(m_env.get());
    if (!m_dbc) {
      Diagnostic d = ReadDiagnostic(SQL_HANDLE_ENV, m_env.get());
      throw ComError(kDbConnection, d.message, d.state);
    }
    SQLSetConnectAttrW(Dbc(), SQL_ATTR_LOGIN_TIMEOUT, reinterpret_cast<SQLPOINTER>(static_cast<SQLULEN>(15)), 0);
    std::u16string in = connectionString;
    std::u16string out(1024, u'\0');
    SQLSMALLINT outLength = 0;
    SQLRETURN rc = SQLDriverConnectW(Dbc(), nullptr, W(in), SQL_NTS, W(out), static_cast<SQLSMALLINT>(out.size()),
                                     &outLength, SQL_DRIVER_NOPROMPT);
    if (!SQL_SUCCEEDED(rc)) {
      Diagnostic d = ReadDiagnostic(SQL_HANDLE_DBC, Dbc());
      throw ComError(kDbConnection, d.message, d.state);
    }
    m_link.reset(Dbc());
    m_dbms = InfoText(SQL_DBMS_NAME);
    m_version = InfoText(SQL_DBMS_VER);
    m_dialect = &DialectForServer(m_dbms);
  }

  std::string InfoText(SQLUSMALLINT what) {
    std::u16string buf(256, u'\0');
    SQLSMALLINT length = 0;
    if (!SQL_SUCCEEDED(SQLGetInfoW(Dbc(), what, W(buf), static_cast<SQLSMALLINT>(buf.size() * 2), &length)))
      return {};
    buf.resize(std::min<std::size_t>(static_cast<std::size_t>(length) / 2, buf.size()));
    return text::Utf16ToCp1250(buf);
  }

  // Entry check of every call that reaches the server.
  void RequireUsable() const {
    if (!m_link) throw ComError(kDbNotOpen, messages::ConnectionClosed());
    if (m_lost) throw ComError(kDbConnection, messages::ConnectionLost(), "08S01");
  }

  // Raises the diagnostic of a failed call; a connection-class SQLSTATE marks the link lost.
  [[noreturn]] void Raise(SQLSMALLINT type, SQLHANDLE handle) {
    Diagnostic d = ReadDiagnostic(type, handle);
    if (IsConnectionState(d.state)) {
      m_lost = true;
      throw ComError(kDbConnection, d.message, d.state);
    }
    throw ComError(kDbError, d.message, d.state);
  }

  void Check(SQLRETURN rc, SQLSMALLINT type, SQLHANDLE handle) {
    if (!SQL_SUCCEEDED(rc)) Raise(type, handle);
  }

  SQLHDBC Dbc() const { return m_dbc.get(); }
  std::size_t* LiveStatements() { return &m_liveStatements; }

  std::unique_ptr<StatementBackend> Prepare(std::string_view sql) override;

  std::int64_t Execute(std::string_view sql) override {
    RequireUsable();
    StmtHandle st(*this);
    std::u16string wide = text::Cp1250ToUtf16(sql);
    SQLRETURN rc = SQLExecDirectW(st.Get(), W(wide), SQL_NTS);
    return FinishExecution(rc, st.Get());
  }

  // Rows affected by an executed statement; further results are drained so that the handle
  // (and, on SQL Server, the connection) is free again.
  std::int64_t FinishExecution(SQLRETURN rc, SQLHSTMT st) {
    if (rc == SQL_NO_DATA) return 0;  // a searched UPDATE or DELETE that matched nothing
    Check(rc, SQL_HANDLE_STMT, st);
    SQLLEN rows = 0;
    if (!SQL_SUCCEEDED(SQLRowCount(st, &rows)) || rows < 0) rows = 0;
    SQLRETURN more;
    while ((more = SQLMoreResults(st)) != SQL_NO_DATA) {
      if (!SQL_SUCCEEDED(more)) Raise(SQL_HANDLE_STMT, st);
    }
    SQLFreeStmt(st, SQL_CLOSE);
    return rows;
  }

  Recordset Snapshot(SQLHSTMT st);

  Recordset OpenRS(std::string_view sql) override {
    RequireUsable();
    StmtHandle st(*this);
    std::u16string wide = text::Cp1250ToUtf16(sql);
    SQLRETURN rc = SQLExecDirectW(st.Get(), W(wide), SQL_NTS);
    if (rc == SQL_NO_DATA) return Recordset();
    Check(rc, SQL_HANDLE_STMT, st.Get());
    return Snapshot(st.Get());
  }

  void SetAutocommit(bool on) {
    SQLRETURN rc = SQLSetConnectAttrW(
        Dbc(), SQL_ATTR_AUTOCOMMIT,
        reinterpret_cast<SQLPOINTER>(static_cast<SQLULEN>(on ? SQL_AUTOCOMMIT_ON : SQL_AUTOCOMMIT_OFF)), 0);
    Check(rc, SQL_HANDLE_DBC, Dbc());
  }

  void BeginTrans() override {
    RequireUsable();
    if (m_inTransaction) throw ComError(kFail, messages::TransactionActive());
    SetAutocommit(false);
    m_inTransaction = true;
  }

  void EndTrans(SQLSMALLINT completion) {
    RequireUsable();
    if (!m_inTransaction) throw ComError(kFail, messages::NoTransaction());
    m_inTransaction = false;
    SQLRETURN rc = SQLEndTran(SQL_HANDLE_DBC, Dbc(), completion);
    // Autocommit goes back on even when the commit failed: the transaction is over either way.
    SQLRETURN back = SQLSetConnectAttrW(Dbc(), SQL_ATTR_AUTOCOMMIT,
                                        reinterpret_cast<SQLPOINTER>(static_cast<SQLULEN>(SQL_AUTOCOMMIT_ON)), 0);
    Check(rc, SQL_HANDLE_DBC, Dbc());
    Check(back, SQL_HANDLE_DBC, Dbc());
  }

  void CommitTrans() override { EndTrans(SQL_COMMIT); }
  void RollbackTrans() override { EndTrans(SQL_ROLLBACK); }
  bool InTransaction() const override { return m_inTransaction; }
  const SqlDialect& Dialect() const override { return *m_dialect; }
  std::string ServerName() const override { return m_dbms; }
  std::string ServerVersion() const override { return m_version; }
  bool IsOpen() const override { return m_link != nullptr; }
  std::size_t OpenStatementCount() const override { return m_liveStatements; }

  void Close() override;

  void Register(OdbcStatement* s) { m_statements.insert(s); }
  void Unregister(OdbcStatement* s) { m_statements.erase(s); }

 private:
  // In this order: the link ends before its handle is freed, and that before the environment.
  unique_henv m_env;
  unique_hdbc m_dbc;
  unique_odbc_link m_link;
  bool m_lost = false;
  bool m_inTransaction = false;
  std::string m_dbms;
  std::string m_version;
  const SqlDialect* m_dialect = &SqlServerDialect();
  std::size_t m_liveStatements = 0;
  std::set<OdbcStatement*> m_statements;
};

StmtHandle::StmtHandle(OdbcConnection& owner) : m_handle(AllocateOdbc<SQL_HANDLE_STMT>(owner.Dbc())) {
  if (!m_handle) owner.Raise(SQL_HANDLE_DBC, owner.Dbc());
  m_counted.reset(owner.LiveStatements());
  ++*m_counted;
}

class OdbcStatement final : public StatementBackend {
 public:
  OdbcStatement(OdbcConnection& owner, std::string_view sql) : m_owner(owner), m_handle(owner) {
    std::u16string wide = text::Cp1250ToUtf16(sql);
    m_owner.Check(SQLPrepareW(m_handle.Get(), W(wide), SQL_NTS), SQL_HANDLE_STMT, m_handle.Get());
    SQLSMALLINT count = 0;
    if (!SQL_SUCCEEDED(SQLNumParams(m_handle.Get(), &count))) count = 0;
    m_parameters.resize(static_cast<std::size_t>(count));
    m_owner.Register(this);
  }
  ~OdbcStatement() override { m_owner.Unregister(this); }

  int ParameterCount() const override { return static_cast<int>(m_parameters.size()); }

  void Bind(int index, const Variant& value, FieldType hint) override {
    Require();
    if (index < 1 || index > ParameterCount()) throw ComError(kInvalidArg, messages::NoParameter(index));
    Parameter& p = m_parameters[static_cast<std::size_t>(index - 1)];
    p.value = value;
    p.hint = hint;
  }

  void ClearBindings() override {
    Require();
    for (auto& p : m_parameters) p = Parameter();
  }

  std::int64_t Execute() override {
    Require();
    SQLRETURN rc = Run();
    return m_owner.FinishExecution(rc, m_handle.Get());
  }

  Recordset Open() override {
    Require();
    SQLRETURN rc = Run();
    if (rc == SQL_NO_DATA) return Recordset();
    m_owner.Check(rc, SQL_HANDLE_STMT, m_handle.Get());
    return m_owner.Snapshot(m_handle.Get());
  }

  void Release() override { m_handle.Free(); }

 private:
  void Require() const {
    if (!m_handle.Get()) throw ComError(kDbNotOpen, messages::StatementClosed());
    m_owner.RequireUsable();
  }

  SQLRETURN Run() {
    SQLHSTMT st = m_handle.Get();
    SQLFreeStmt(st, SQL_CLOSE);
    SQLFreeStmt(st, SQL_RESET_PARAMS);
    for (std::size_t i = 0; i < m_parameters.size(); ++i) BindOne(static_cast<SQLUSMALLINT>(i + 1), m_parameters[i]);
    return SQLExecute(st);
  }

  void BindOne(SQLUSMALLINT number, Parameter& p) {
    SQLSMALLINT cType = SQL_C_WCHAR, sqlType = SQL_WVARCHAR, digits = 0;
    SQLULEN size = 1;
    SQLPOINTER buffer = nullptr;
    SQLLEN bufferLength = 0;
    static std::uint8_t nothing = 0;
    FieldType kind = p.hint;
    switch (p.value.GetType()) {
      case Variant::Type::Int32: kind = FieldType::Integer; break;
      case Variant::Type::Int64: kind = FieldType::BigInt; break;
      case Variant::Type::Double: kind = FieldType::Double; break;
      case Variant::Type::Bool: kind = FieldType::Bool; break;
      case Variant::Type::Amount: kind = FieldType::Amount; break;
      case Variant::Type::Date: kind = FieldType::Date; break;
      case Variant::Type::Text: kind = FieldType::Text; break;
      case Variant::Type::Binary: kind = FieldType::Binary; break;
      default: break;
    }
    const bool isNull = p.value.IsEmptyOrNull();
    p.indicator = isNull ? SQL_NULL_DATA : 0;
    switch (kind) {
      case FieldType::Integer:
        cType = SQL_C_SLONG, sqlType = SQL_INTEGER, size = 10, buffer = &p.i32;
        if (!isNull) p.value.ToInt32(p.i32);
        break;
      case FieldType::BigInt:
        cType = SQL_C_SBIGINT, sqlType = SQL_BIGINT, size = 19, buffer = &p.i64;
        if (!isNull) p.value.ToInt64(p.i64);
        break;
      case FieldType::Double:
        cType = SQL_C_DOUBLE, sqlType = SQL_DOUBLE, size = 15, buffer = &p.dbl;
        if (!isNull) p.value.ToDouble(p.dbl);
        break;
      case FieldType::Bool: {
        cType = SQL_C_BIT, sqlType = SQL_BIT, size = 1, buffer = &p.bit;
        bool b = false;
        if (!isNull) p.value.ToBool(b);
        p.bit = b ? 1 : 0;
        break;
      }
      case FieldType::Amount: {
        // Sent as decimal text: exact, and every server converts it into its money type.
        cType = SQL_C_WCHAR, sqlType = SQL_DECIMAL, size = 19, digits = 4;
        std::string t;
        if (!isNull && Failed(p.value.ToText(t))) p.indicator = SQL_NULL_DATA;
        p.text = text::Cp1250ToUtf16(t);
        buffer = p.text.data();
        bufferLength = static_cast<SQLLEN>(p.text.size() * 2);
        if (p.indicator != SQL_NULL_DATA) p.indicator = bufferLength;
        break;
      }
      case FieldType::Date: {
        cType = SQL_C_TYPE_TIMESTAMP, sqlType = SQL_TYPE_TIMESTAMP, size = 19, buffer = &p.timestamp;
        DateTime d;
        DateParts parts;
        if (!isNull && Succeeded(p.value.ToDate(d)) && d.GetParts(parts)) {
          p.timestamp = SQL_TIMESTAMP_STRUCT{static_cast<SQLSMALLINT>(parts.year), static_cast<SQLUSMALLINT>(parts.month),
                                             static_cast<SQLUSMALLINT>(parts.day), static_cast<SQLUSMALLINT>(parts.hour),
                                             static_cast<SQLUSMALLINT>(parts.minute),
                                             static_cast<SQLUSMALLINT>(parts.second), 0};
        } else {
          p.indicator = SQL_NULL_DATA;
        }
        bufferLength = sizeof p.timestamp;
        break;
      }
      case FieldType::Binary: {
        cType = SQL_C_BINARY;
        const auto* bytes = p.value.GetBinary();
        std::size_t n = bytes ? bytes->size() : 0;
        sqlType = n > 8000 ? SQL_LONGVARBINARY : SQL_VARBINARY;
        size = n ? n : 1;
        buffer = n ? const_cast<std::uint8_t*>(bytes->data()) : &nothing;
        bufferLength = static_cast<SQLLEN>(n);
        if (!isNull) p.indicator = static_cast<SQLLEN>(n);
        break;
      }
      default: {
        std::string t;
        if (!isNull) p.value.ToText(t);
        p.text = text::Cp1250ToUtf16(t);
        sqlType = p.text.size() > 4000 ? SQL_WLONGVARCHAR : SQL_WVARCHAR;
        size = p.text.empty() ? 1 : p.text.size();
        buffer = p.text.data();
        bufferLength = static_cast<SQLLEN>(p.text.size() * 2);
        if (!isNull) p.indicator = bufferLength;
        break;
      }
    }
    SQLRETURN rc = SQLBindParameter(m_handle.Get(), number, SQL_PARAM_INPUT, cType, sqlType, size, digits, buffer,
                                    bufferLength, &p.indicator);
    m_owner.Check(rc, SQL_HANDLE_STMT, m_handle.Get());
  }

  OdbcConnection& m_owner;
  StmtHandle m_handle;
  std::vector<Parameter> m_parameters;
};

std::unique_ptr<StatementBackend> OdbcConnection::Prepare(std::string_view sql) {
  RequireUsable();
  return std::make_unique<OdbcStatement>(*this, sql);
}

void OdbcConnection::Close() {
  for (OdbcStatement* s : m_statements) s->Release();
  if (m_link && m_inTransaction && !m_lost) SQLEndTran(SQL_HANDLE_DBC, Dbc(), SQL_ROLLBACK);
  m_link.reset();
  m_dbc.reset();
  m_env.reset();
  m_inTransaction = false;
}

// Long values arrive in pieces: the first piece tells the total when the driver knows it, and
// the rest is then read in one call.
template <typename Unit>
bool GetLong(OdbcConnection& owner, SQLHSTMT st, SQLUSMALLINT column, SQLSMALLINT cType, std::vector<Unit>& out) {
  const std::size_t terminator = cType == SQL_C_BINARY ? 0 : 1;
  out.clear();
  Unit piece[2048];
  std::size_t capacity = sizeof piece / sizeof(Unit) - terminator;
  Unit* target = piece;
  std::vector<Unit> big;
  for (;;) {
    SQLLEN indicator = 0;
    SQLRETURN rc = SQLGetData(st, column, cType, target, static_cast<SQLLEN>((capacity + terminator) * sizeof(Unit)),
                              &indicator);
    if (rc == SQL_NO_DATA) return true;
    if (!SQL_SUCCEEDED(rc)) owner.Raise(SQL_HANDLE_STMT, st);
    if (indicator == SQL_NULL_DATA) return false;
    const bool truncated = indicator == SQL_NO_TOTAL || static_cast<std::size_t>(indicator) > capacity * sizeof(Unit);
    if (!truncated) {
      out.insert(out.end(), target, target + static_cast<std::size_t>(indicator) / sizeof(Unit));
      return true;
    }
    out.insert(out.end(), target, target + capacity);
    if (indicator != SQL_NO_TOTAL) {
      std::size_t rest = static_cast<std::size_t>(indicator) / sizeof(Unit) - capacity;
      big.assign(rest + terminator, Unit{});
      target = big.data();
      capacity = rest;
    }
  }
}

Recordset OdbcConnection::Snapshot(SQLHSTMT st) {
  SQLSMALLINT count = 0;
  Check(SQLNumResultCols(st, &count), SQL_HANDLE_STMT, st);
  std::vector<std::string> names;
  std::vector<FieldType> types;
  std::vector<bool> timeOnly;
  std::vector<bool> amountAsDouble;  // an amount the driver delivers as a double
  for (SQLUSMALLINT c = 1; c <= static_cast<SQLUSMALLINT>(count); ++c) {
    std::u16string name(256, u'\0');
    SQLSMALLINT nameLength = 0, type = 0, digits = 0, nullable = 0;
    SQLULEN size = 0;
    Check(SQLDescribeColW(st, c, W(name), static_cast<SQLSMALLINT>(name.size()), &nameLength, &type, &size, &digits,
                          &nullable),
          SQL_HANDLE_STMT, st);
    if (nameLength >= static_cast<SQLSMALLINT>(name.size())) {
      name.assign(static_cast<std::size_t>(nameLength) + 1, u'\0');
      Check(SQLDescribeColW(st, c, W(name), static_cast<SQLSMALLINT>(name.size()), &nameLength, &type, &size, &digits,
                            &nullable),
            SQL_HANDLE_STMT, st);
    }
    name.resize(static_cast<std::size_t>(nameLength));
    names.push_back(text::Utf16ToCp1250(name));
    FieldType fieldType = TypeOfSql(type, digits);
    // The SQLite driver describes NUMERIC and MONEY columns as doubles; their declared type
    // name still says they hold amounts.
    const bool doubleAmount = fieldType == FieldType::Double && IsAmountTypeName(TypeName(st, c));
    if (doubleAmount) fieldType = FieldType::Amount;
    types.push_back(fieldType);
    amountAsDouble.push_back(doubleAmount);
    timeOnly.push_back(IsTimeOnly(type));
  }
  CellStore cells;
  std::vector<char16_t> wide;
  std::vector<std::uint8_t> bytes;
  for (;;) {
    SQLRETURN rc = SQLFetch(st);
    if (rc == SQL_NO_DATA) break;
    Check(rc, SQL_HANDLE_STMT, st);
    for (SQLUSMALLINT c = 1; c <= static_cast<SQLUSMALLINT>(count); ++c) {
      const FieldType type = types[c - 1u];
      SQLLEN indicator = 0;
      switch (type) {
        case FieldType::Integer: {
          SQLINTEGER v = 0;
          Check(SQLGetData(st, c, SQL_C_SLONG, &v, 0, &indicator), SQL_HANDLE_STMT, st);
          cells.push_back(indicator == SQL_NULL_DATA ? Variant::MakeNull() : Variant(static_cast<std::int32_t>(v)));
          break;
        }
        case FieldType::BigInt: {
          SQLBIGINT v = 0;
          Check(SQLGetData(st, c, SQL_C_SBIGINT, &v, 0, &indicator), SQL_HANDLE_STMT, st);
          cells.push_back(indicator == SQL_NULL_DATA ? Variant::MakeNull() : Variant(static_cast<std::int64_t>(v)));
          break;
        }
        case FieldType::Double: {
          double v = 0;
          Check(SQLGetData(st, c, SQL_C_DOUBLE, &v, 0, &indicator), SQL_HANDLE_STMT, st);
          cells.push_back(indicator == SQL_NULL_DATA ? Variant::MakeNull() : Variant(v));
          break;
        }
        case FieldType::Bool: {
          unsigned char v = 0;
          Check(SQLGetData(st, c, SQL_C_BIT, &v, 0, &indicator), SQL_HANDLE_STMT, st);
          cells.push_back(indicator == SQL_NULL_DATA ? Variant::MakeNull() : Variant(v != 0));
          break;
        }
        case FieldType::Date: {
          if (timeOnly[c - 1u]) {
            SQL_TIME_STRUCT t{};
            Check(SQLGetData(st, c, SQL_C_TYPE_TIME, &t, sizeof t, &indicator), SQL_HANDLE_STMT, st);
            cells.push_back(indicator == SQL_NULL_DATA ? Variant::MakeNull()
                                                       : Variant(DateTime(1899, 12, 30, t.hour, t.minute, t.second)));
            break;
          }
          SQL_TIMESTAMP_STRUCT t{};
          Check(SQLGetData(st, c, SQL_C_TYPE_TIMESTAMP, &t, sizeof t, &indicator), SQL_HANDLE_STMT, st);
          if (indicator == SQL_NULL_DATA) {
            cells.push_back(Variant::MakeNull());
            break;
          }
          DateTime d(t.year, t.month, t.day, t.hour, t.minute, t.second);
          // Fractions are nanoseconds; the OLE date keeps whole seconds here.
          if (t.fraction >= 500000000u) d = d.AddSeconds(1);
          cells.emplace_back(d);
          break;
        }
        case FieldType::Binary: {
          if (!GetLong(*this, st, c, SQL_C_BINARY, bytes)) {
            cells.push_back(Variant::MakeNull());
            break;
          }
          cells.push_back(Variant(bytes));
          break;
        }
        case FieldType::Amount:
          if (amountAsDouble[c - 1u]) {
            double v = 0;
            Check(SQLGetData(st, c, SQL_C_DOUBLE, &v, 0, &indicator), SQL_HANDLE_STMT, st);
            if (indicator == SQL_NULL_DATA) {
              cells.push_back(Variant::MakeNull());
            } else {
              Amount a = Amount::FromDouble(v);
              if (a.IsValid()) {
                cells.emplace_back(a);
              } else {
                cells.emplace_back(v);
              }
            }
            break;
          }
          [[fallthrough]];
        default: {
          if (!GetLong(*this, st, c, SQL_C_WCHAR, wide)) {
            cells.push_back(Variant::MakeNull());
            break;
          }
          Variant v(text::Utf16ToCp1250(std::u16string_view(wide.data(), wide.size())));
          if (type == FieldType::Amount) {
            Amount a;
            if (Succeeded(v.ToAmount(a))) v = Variant(a);
          }
          cells.push_back(std::move(v));
          break;
        }
      }
    }
  }
  SQLFreeStmt(st, SQL_CLOSE);
  return Recordset(std::move(names), std::move(types), std::move(cells));
}

}  // namespace

std::shared_ptr<ConnectionBackend> OpenOdbc(const std::u16string& connectionString) {
  auto connection = std::make_shared<OdbcConnection>();
  connection->Connect(connectionString);
  return connection;
}

}  // namespace varion::db::detail
