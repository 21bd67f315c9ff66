// SQL literal writers for the statement builders. The free functions write the SQL Server forms
// (the production server); a dialect writes the same literals for SQLite and PostgreSQL.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "base/amount.h"
#include "base/date_time.h"
#include "base/export.h"

namespace varion {

// Text made fit for use between apostrophes: every apostrophe doubled. The result carries no
// apostrophes of its own. A NUL byte inside a string_view is dropped and the text after it kept,
// so a NUL can neither end the literal early nor hide what follows; a null pointer gives "".
VARION_API std::string SqlOkString(const char* text);
VARION_API std::string SqlOkString(std::string_view text);

// A date without a time of day: 'YYYYMMDD'. A date with one (after rounding to the second):
// CONVERT(DATETIME, 'YYYY-MM-DDTHH:MM:SS', 126). A null, invalid or out-of-range date: NULL.
VARION_API std::string SqlOkDate(double oleDate);
VARION_API std::string SqlOkDate(const DateTime& date);

// A plain number: "." as decimal point, no grouping, no trailing zeros (10, -12.5, 0.0001).
// A null or invalid amount: NULL.
VARION_API std::string SqlOkCurrency(std::int64_t tenThousandths);
VARION_API std::string SqlOkCurrency(Amount amount);

}  // namespace varion
