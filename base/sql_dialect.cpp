#include "base/sql_dialect.h"

#include "base/sql_literal.h"

namespace varion {
namespace {

std::string Enclose(std::string_view name, char open, char close) {
  std::string out(1, open);
  for (char c : name) {
    out += c;
    if (c == close) out += c;
  }
  out += close;
  return out;
}

class SqlServer final : public SqlDialect {
 public:
  DialectKind Kind() const override { return DialectKind::SqlServer; }
  const char* Name() const override { return "SQL Server"; }
  std::string TopClause(int rows) const override { return "TOP " + std::to_string(rows) + " "; }
  std::string LimitClause(int) const override { return {}; }
  std::string DateLiteral(const DateTime& d) const override { return SqlOkDate(d); }
  std::string DateTimeLiteral(const DateTime& d) const override {
    if (!d.IsValid()) return "NULL";
    return "CONVERT(DATETIME, '" + d.Format("%Y-%m-%dT%H:%M:%S") + "', 126)";
  }
  std::string TimeOfDay(std::string_view c) const override {
    std::string col(c);
    return "DATEADD(DAY, -DATEDIFF(day, 0, " + col + "), " + col + ")";
  }
  std::string TimeLiteral(std::string_view t) const override { return "'" + std::string(t) + "'"; }
  const char* BlobType() const override { return "IMAGE"; }
  const char* DateTimeType() const override { return "DATETIME"; }
  const char* AmountType() const override { return "MONEY"; }
  const char* TextType(int length) const override { return length > 255 ? "VARCHAR(MAX)" : "VARCHAR(255)"; }
  const char* IdentityType() const override { return "INT IDENTITY(1,1) PRIMARY KEY"; }
  std::string Concat(std::string_view a, std::string_view b) const override {
    return std::string(a) + " + " + std::string(b);
  }
  std::string QuoteIdentifier(std::string_view n) const override { return Enclose(n, '[', ']'); }
};

class Sqlite final : public SqlDialect {
 public:
  DialectKind Kind() const override { return DialectKind::Sqlite; }
  const char* Name() const override { return "SQLite"; }
  std::string TopClause(int) const override { return {}; }
  std::string LimitClause(int rows) const override { return " LIMIT " + std::to_string(rows); }
  std::string DateLiteral(const DateTime& d) const override { return DateTimeLiteral(d); }
  std::string DateTimeLiteral(const DateTime& d) const override {
    if (!d.IsValid()) return "NULL";
    return d.Format("'%Y-%m-%d %H:%M:%S'");
  }
  std::string TimeOfDay(std::string_view c) const override {
    return "strftime('%H:%M:%f', " + std::string(c) + ")";
  }
  std::string TimeLiteral(std::string_view t) const override { return "'" + std::string(t) + "'"; }
  const char* BlobType() const override { return "BLOB"; }
  // Declared DATETIME (NUMERIC affinity keeps the ISO text as text) so that readers know the
  // column holds dates.
  const char* DateTimeType() const override { return "DATETIME"; }
  const char* AmountType() const override { return "NUMERIC"; }
  const char* TextType(int) const override { return "TEXT"; }
  const char* IdentityType() const override { return "INTEGER PRIMARY KEY AUTOINCREMENT"; }
  std::string Concat(std::string_view a, std::string_view b) const override {
    return std::string(a) + " || " + std::string(b);
  }
  std::string QuoteIdentifier(std::string_view n) const override { return Enclose(n, '"', '"'); }
};

class Postgres final : public SqlDialect {
 public:
  DialectKind Kind() const override { return DialectKind::Postgres; }
  const char* Name() const override { return "PostgreSQL"; }
  std::string TopClause(int) const override { return {}; }
  std::string LimitClause(int rows) const override { return " LIMIT " + std::to_string(rows); }
  std::string DateLiteral(const DateTime& d) const override {
    if (!d.IsValid()) return "NULL";
    return d.HasTimeOfDay() ? DateTimeLiteral(d) : d.Format("DATE '%Y-%m-%d'");
  }
  std::string DateTimeLiteral(const DateTime& d) const override {
    if (!d.IsValid()) return "NULL";
    return d.Format("TIMESTAMP '%Y-%m-%d %H:%M:%S'");
  }
  std::string TimeOfDay(std::string_view c) const override { return "CAST(" + std::string(c) + " AS TIME)"; }
  std::string TimeLiteral(std::string_view t) const override { return "TIME '" + std::string(t) + "'"; }
  const char* BlobType() const override { return "BYTEA"; }
  const char* DateTimeType() const override { return "TIMESTAMP(3)"; }
  const char* AmountType() const override { return "NUMERIC(19,4)"; }
  const char* TextType(int) const override { return "TEXT"; }
  const char* IdentityType() const override { return "SERIAL PRIMARY KEY"; }
  std::string Concat(std::string_view a, std::string_view b) const override {
    return std::string(a) + " || " + std::string(b);
  }
  std::string QuoteIdentifier(std::string_view n) const override { return Enclose(n, '"', '"'); }
};

}  // namespace

const SqlDialect& SqlServerDialect() {
  static const SqlServer d;
  return d;
}
const SqlDialect& SqliteDialect() {
  static const Sqlite d;
  return d;
}
const SqlDialect& PostgresDialect() {
  static const Postgres d;
  return d;
}
const SqlDialect& DialectFor(DialectKind kind) {
  switch (kind) {
    case DialectKind::Sqlite: return SqliteDialect();
    case DialectKind::Postgres: return PostgresDialect();
    default: return SqlServerDialect();
  }
}

}  // namespace varion
