#include "diagnostics/log_toggles.h"

namespace SimpleLog {

std::string LogParametersQuery(const varion::SqlDialect& dialect) {
  return "SELECT " + dialect.TopClause(1) + "* FROM log_Parametry ORDER BY logp_Id ASC" + dialect.LimitClause(1);
}

bool ReadDatabaseLogSwitch(const varion::db::Connection& connection) noexcept {
  try {
    if (!connection.IsOpen()) return false;
    varion::db::Recordset rs = connection.OpenRS(LogParametersQuery(connection.Dialect()));
    if (rs.IsEOF()) return false;
    varion::Variant value;
    if (varion::Failed(rs.GetFieldValue(kLogSwitchColumn, value)) || value.IsEmptyOrNull()) return false;
    std::int32_t on = 0;
    return varion::Succeeded(value.ToInt32(on)) && on != 0;
  } catch (...) {
    return false;
  }
}

NoDataFactoryParamLoggerToggle::NoDataFactoryParamLoggerToggle(const varion::db::Connection& connection)
    : m_enabled(ReadDatabaseLogSwitch(connection)) {}

namespace {

bool ReadThroughInstance(IFlgInstance* instance) noexcept {
  if (!instance) return false;
  try {
    return ReadDatabaseLogSwitch(instance->GetConnection());
  } catch (...) {
    return false;
  }
}

}  // namespace

ParamLoggerToggle::ParamLoggerToggle(IFlgInstance* instance, std::string name)
    : m_name(std::move(name)), m_enabled(ReadThroughInstance(instance)) {}

}  // namespace SimpleLog
