// A report's parameter container: its default parameters, its SQL and the substitution of the
// run-time tags in that SQL, the named date ranges (CDateRangeTags), and the container's
// configuration stored to a stream.
//
// Tags are whole words in the report SQL (letters, digits and "_" around them end a tag):
//   WYBRANY_MAGAZYN        the identifier of the parameter named "MAGAZYN", NULL when none chosen
//   WYBRANY_OKRES_OD/_DO   the from and to dates of the parameter named "OKRES" as date literals
//                          (a named period counted from today), NULL when not set
//   ID_WYBRANEGO_OKRESU    the identifier of the parameter named "ID_OKRESU" (a fiscal year or
//                          another period chosen from a list), NULL when none chosen
//   ID_UZYTKOWNIKA         the logged-in user's number
//   ID_UZYTKOWNIKA_CRM     the users of the CRM group chosen in the parameter "GRUPA_CRM" (the
//                          group's stored SQL, as a subquery), else the logged-in user's number
//   ID_PRACOWNIKA          the employee chosen in the parameter "PRACOWNIK", or every employee
//                          when none is chosen (a list for "IN (...)"; NULL when there are none)
//   <date tag>_OD, _DO     the first or last day of a named period, e.g. BIEZACY_MIESIAC_OD
// A parameter's name is its AuxText. An identifier is the parameter's Value as a number; an
// empty parameter has none. Anything else in the SQL, including unknown tags, stays as written.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <utility>

#include "base/export.h"
#include "base/sql_dialect.h"
#include "base/status.h"
#include "controls/date_tools.h"
#include "db/stream.h"
#include "params/zest_params.h"

// A provider of a report's custom fields: fills the braced placeholders {prefix_table.prefix_field}
// it knows in the report SQL and returns the new text.
class VARION_API IFlgPolaWlasne {
 public:
  virtual ~IFlgPolaWlasne() = default;
  virtual std::string ParseSql(const std::string& sql) = 0;
};

// Tag name to (period code, display text), in name order.
class VARION_API CDateRangeTags : public std::map<std::string, std::pair<int, std::string>> {};

class VARION_API CZestParamsContainer {
 public:
  // The named date ranges: eight tags, filled on first use.
  static CDateRangeTags g_tags;

  CZestParamsContainer();
  virtual ~CZestParamsContainer() = default;

  // Fills the container's parameter list with the report's defaults.
  virtual void CreateDefParams();

  CArrZestParams& GetParams() { return m_params; }
  const CArrZestParams& GetParams() const { return m_params; }
  // The parameter with this name (AuxText), or null.
  ZEST_PARAMS* FindParam(const std::string& name);

  void SetSql(std::string sql) { m_sql = std::move(sql); }
  std::string GetSql() const { return m_sql; }
  // The dialect of the date literals that replace tags (SQL Server by default).
  void SetDialect(const varion::SqlDialect& dialect) { m_dialect = &dialect; }
  // Where "today" comes from; not owned; the system clock by default.
  void SetClock(const DateTools::IClock* clock) { m_clock = clock; }
  // The custom-fields provider; not owned; may be null.
  void SetPolaWlasne(IFlgPolaWlasne* provider) { m_polaWlasne = provider; }

  // The report SQL with every tag replaced and leftover placeholders turned into NULL. kOk, or the
  // code of the database error met on the way (`sql` is then left as it was).
  varion::Status32 FormatSql(std::string& sql);

  // The parameters' chosen values. Stored per parameter by name; a parameter set to a named
  // period keeps the period's tag, so "bieżący miesiąc" stays the current month when loaded.
  // Loading leaves alone parameters missing from the stream, those whose type changed, and those
  // ParamHistTools says must not be replaced. kFail for a stream that is not such a configuration
  // (nothing is changed then).
  varion::Status32 SaveCfg(varion::db::ByteStream& stream) const;
  varion::Status32 LoadCfg(varion::db::ByteStream& stream);

 private:

  static void FillTags();
  // A date tag: the record becomes that named period (values null, code in Value3, its range
  // text and display text). False and the record untouched for an unknown tag.
  bool GetTagDateTimeRange(const std::string& tag, ZEST_PARAMS& param) const;
  // "<date tag>_OD" or "<date tag>_DO": the first or last day of the period.
  bool GetSqlDateTimeRange(const std::string& tag, COleDateTime& date) const;
  // Hands the SQL to the custom-fields provider, then turns unfilled placeholders into NULL.
  void ParseTagSqlQuery(std::string& sql) const;
  // The replacement of one tag, or false to keep the word.
  bool TagValue(const std::string& tag, std::string& value);
  // The from/to dates of a parameter: its own dates or those of its named period.
  bool ParamPeriod(const ZEST_PARAMS& p, DateTools::Period& period) const;
  const DateTools::IClock& Clock() const;
  const varion::SqlDialect& Dialect() const { return m_dialect ? *m_dialect : varion::SqlServerDialect(); }

  CArrZestParams m_params;
  std::string m_sql;
  IFlgPolaWlasne* m_polaWlasne = nullptr;
  const DateTools::IClock* m_clock = nullptr;
  const varion::SqlDialect* m_dialect = nullptr;
};
