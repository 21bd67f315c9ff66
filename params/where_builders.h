// The SQL condition of one report parameter, by its type and the operator the user chose. Each
// builder returns false when it cannot make a condition (an unknown operator, a value of the wrong
// kind); the parameter then adds nothing to the WHERE text. The SQL Server dialect writes the
// production texts; SQLite and PostgreSQL write conditions that select the same rows.
#pragma once

#include <string>
#include <string_view>

#include "base/sql_dialect.h"
#include "params/zest_params.h"

namespace varion::params {

// Which builder serves a type: the one-parameter condition knows fewer types than the whole list
// (checklists, lookups and multiselections only take part in the list's WHERE text).
enum class WhereBuilder { None, String, Currency, Date, DateWholeDay, Hour, SingleText, Identifiers };
WhereBuilder BuilderForType(int type, bool wholeList);

// The builders. `out` is only meaningful when they return true.
bool BuildString(const ZEST_PARAMS& p, std::string& out);
bool BuildCurrency(const ZEST_PARAMS& p, std::string& out);
bool BuildDate(const ZEST_PARAMS& p, const SqlDialect& dialect, std::string& out);
bool BuildDateWholeDay(const ZEST_PARAMS& p, const SqlDialect& dialect, std::string& out);
bool BuildHour(const ZEST_PARAMS& p, const SqlDialect& dialect, std::string& out);
bool BuildSingleText(const ZEST_PARAMS& p, std::string& out);
bool BuildIdentifiers(const ZEST_PARAMS& p, std::string& out);

// A list that may stand inside "IN (...)": numbers, each an optional sign and digits, separated
// by commas, with blanks (space, tab) anywhere between. Whatever else a text holds (a bracket,
// a quote, a NUL byte, an empty item) it is not pasted into SQL.
bool IsNumberList(std::string_view text);

// The condition put in place of one that cannot be built safely: it selects no rows, so a
// rejected value narrows the report instead of lifting its restriction.
inline constexpr const char* kSelectsNothing = "(1=0)";

// Records a rejected IN list under the parameter's label (a warning in the framework log).
void LogRejectedList(const ZEST_PARAMS& p, std::string_view list);

// Runs the builder of a kind; false for None.
bool RunBuilder(WhereBuilder builder, const ZEST_PARAMS& p, const SqlDialect& dialect, std::string& out);

}  // namespace varion::params
