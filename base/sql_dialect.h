// Everything in SQL text that differs between servers. SQL Server is the production server and
// the default; SQLite and PostgreSQL write equivalent statements so that tests run on real
// servers. Date-times on SQLite are stored as text "YYYY-MM-DD HH:MM:SS[.fff]", which compares
// correctly as text; every literal the SQLite dialect writes has that full form.
#pragma once

#include <string>
#include <string_view>

#include "base/date_time.h"
#include "base/export.h"

namespace varion {

enum class DialectKind { SqlServer, Sqlite, Postgres };

class VARION_API SqlDialect {
 public:
  virtual ~SqlDialect() = default;
  virtual DialectKind Kind() const = 0;
  virtual const char* Name() const = 0;

  // Row limits: SQL Server writes "SELECT TOP n ...", the others "... LIMIT n". TopClause gives
  // "TOP n " (to follow "SELECT ") or ""; LimitClause gives " LIMIT n" (to end the statement) or "".
  virtual std::string TopClause(int rows) const = 0;
  virtual std::string LimitClause(int rows) const = 0;

  // A date literal: the date alone when it has no time of day, else date and time.
  // A null or invalid date gives NULL.
  virtual std::string DateLiteral(const DateTime& date) const = 0;
  // A date-time literal that always carries the time.
  virtual std::string DateTimeLiteral(const DateTime& date) const = 0;
  // The time of day of a date-time column, comparable with a time text "HH:MM:SS.fff".
  virtual std::string TimeOfDay(std::string_view column) const = 0;
  // A time-of-day literal from "HH:MM:SS.fff".
  virtual std::string TimeLiteral(std::string_view hhmmssfff) const = 0;
  // Column types of the schema.
  virtual const char* BlobType() const = 0;
  virtual const char* DateTimeType() const = 0;
  virtual const char* AmountType() const = 0;
  virtual const char* TextType(int length) const = 0;  // a stable pointer per length class
  virtual const char* IdentityType() const = 0;          // an auto-numbered integer key
  // Concatenation of two text expressions.
  virtual std::string Concat(std::string_view a, std::string_view b) const = 0;
  // A column or alias name that holds blanks or other characters an identifier cannot: SQL
  // Server brackets it, the others put it in double quotes; the closing mark inside is doubled.
  virtual std::string QuoteIdentifier(std::string_view name) const = 0;
};

VARION_API const SqlDialect& SqlServerDialect();
VARION_API const SqlDialect& SqliteDialect();
VARION_API const SqlDialect& PostgresDialect();
VARION_API const SqlDialect& DialectFor(DialectKind kind);

}  // namespace varion
