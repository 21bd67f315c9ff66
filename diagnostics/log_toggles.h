// The switches of SimpleLog. Each takes its answer once, when it is made, so that asking it on
// every entry costs nothing; a changed switch counts for loggers made afterwards.
#pragma once

#include <string>
#include <string_view>

#include "base/export.h"
#include "base/sql_dialect.h"
#include "db/connection.h"
#include "db/flg_interfaces.h"
#include "diagnostics/simple_log.h"

namespace SimpleLog {

class VARION_API AlwaysOnLoggerToggle final : public ILoggerToggle {
 public:
  bool IsEnabled() const override { return true; }
};

// The registry key under the current user's hive whose presence turns file logging on.
inline constexpr const char* kEnableSimpleLoggingKey = "SOFTWARE\\Orvant\\EnableSimpleLogging";

#if defined(_WIN32)
// On when the key can be opened for reading under HKEY_CURRENT_USER. Only the key's presence
// counts: values under it are not read.
class VARION_API RegistryLoggerToggle final : public ILoggerToggle {
 public:
  RegistryLoggerToggle();
  explicit RegistryLoggerToggle(std::string_view key);  // code page 1250
  bool IsEnabled() const override { return m_enabled; }

 private:
  bool m_enabled;
};
#endif

// Database logging is switched by the log parameter table: the first row by "logp_Id" decides,
// and its column "logp_Wlaczone" turns logging on when it is not 0. No table, no row, a NULL or a
// failing read leave logging off.
inline constexpr const char* kLogSwitchColumn = "logp_Wlaczone";

// The statement that reads the first parameter row, in the connection's dialect
// ("SELECT TOP 1 * FROM log_Parametry ORDER BY logp_Id ASC" on SQL Server).
VARION_API std::string LogParametersQuery(const varion::SqlDialect& dialect);
// The answer of the parameter table on a connection; never raises.
VARION_API bool ReadDatabaseLogSwitch(const varion::db::Connection& connection) noexcept;

// The switch read through a database connection of its own choosing.
class VARION_API NoDataFactoryParamLoggerToggle final : public ILoggerToggle {
 public:
  explicit NoDataFactoryParamLoggerToggle(const varion::db::Connection& connection);
  bool IsEnabled() const override { return m_enabled; }

 private:
  bool m_enabled;
};

// The switch read through the host's instance (its current connection). `name` names the logger
// the toggle serves. A null instance, or one without a connection, leaves logging off.
class VARION_API ParamLoggerToggle final : public ILoggerToggle {
 public:
  ParamLoggerToggle(IFlgInstance* instance, std::string name);
  bool IsEnabled() const override { return m_enabled; }
  const std::string& Name() const { return m_name; }

 private:
  std::string m_name;
  bool m_enabled;
};

}  // namespace SimpleLog
