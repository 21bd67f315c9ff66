// Whether other contractors already carry a tax number, with the clashing rows, for the
// contractor form's warning.
#pragma once

#include <string>
#include <utility>

#include "base/export.h"
#include "base/sql_dialect.h"
#include "db/connection.h"

// The statement: at most maxRows main addresses (type 1) of contractors other than
// idKontrahenta (0 for a contractor not yet saved) and not detail recipients, whose stored number
// without hyphens and blanks equals the typed one; a Polish number matches with or without "PL",
// a foreign one with its prefix. Columns adr_Id, adr_Nazwa, adr_NazwaPelna, "BRAK" standing in for
// a missing name. Empty when the text holds no number (nothing can clash with it).
VARION_API std::string CzyNipUnikalnySql(const varion::SqlDialect& dialect, const char* nip, long idKontrahenta,
                                         long maxRows);

// First: true when no other contractor has the number (or there is no number). Second: the
// clashing rows as the statement above gives them. Database failures raise ComError.
VARION_API std::pair<bool, varion::db::Recordset> CzyNipUnikalny(const varion::db::Connection& connection,
                                                                 const char* nip, long idKontrahenta,
                                                                 long maxRows = 10);
// The same on the runtime instance's current connection.
VARION_API std::pair<bool, varion::db::Recordset> CzyNipUnikalny(const char* nip, long idKontrahenta,
                                                                 long maxRows = 10);
