// Ready-made loggers of SimpleLog: fluent factories for file and database loggers, the default
// database logger of the running instance, and one-entry helpers. Every factory returns a logger
// and raises nothing; a logger whose parts cannot work writes nothing.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "base/export.h"
#include "base/status.h"
#include "db/connection.h"
#include "db/flg_interfaces.h"
#include "diagnostics/db_logger_sink.h"
#include "diagnostics/file_logger_sink.h"
#include "diagnostics/log_fields.h"
#include "diagnostics/log_formatters.h"
#include "diagnostics/log_toggles.h"
#include "diagnostics/simple_log.h"

namespace SimpleLog {
namespace Custom {
namespace File {

// A logger writing to the file `name` (code page 1250) in the default directory or the one given.
class VARION_API LoggerFactory {
 public:
  LoggerFactory(std::string name, std::shared_ptr<const ILoggerToggle> toggle, Formatting formatting);
  LoggerFactory& WithCustomDirectory(std::string directory);
  SimpleLoggerWrapper Get() const;

 private:
  std::string m_name;
  std::shared_ptr<const ILoggerToggle> m_toggle;
  Formatting m_formatting;
  std::string m_directory;
};

}  // namespace File

namespace Db {

// A logger writing rows of "log_Logowanie" with `name` as their area, on the running instance's
// connection unless another is given. The text is written unchanged: the row has its own time.
class VARION_API LoggerFactory {
 public:
  LoggerFactory(std::string name, std::shared_ptr<const ILoggerToggle> toggle);
  LoggerFactory& WithCustomConnection(varion::db::Connection connection);
  // The object the rows are about; asked for its type and identifier in Get.
  LoggerFactory& WithObjectContext(IFlgItem* objectContext);
  SimpleLoggerWrapper Get() const;

 private:
  std::string m_name;
  std::shared_ptr<const ILoggerToggle> m_toggle;
  std::optional<varion::db::Connection> m_connection;
  IFlgItem* m_object = nullptr;
};

}  // namespace Db
}  // namespace Custom

namespace Default {

// The database logger of the running instance, switched by its log parameter table.
VARION_API SimpleLoggerWrapper CreateLogger(std::string_view name, IFlgItem* objectContext = nullptr);
// One entry through such a logger; the switch is read for this entry.
VARION_API void Write(std::string_view name, tagFramLogLevel level, std::string_view text);

}  // namespace Default

namespace ComHelpers {

// An error entry: the text followed by "error_message=<the error's message>" and
// "error_code=0x<code in hexadecimal>".
VARION_API void WriteComError(const SimpleLoggerWrapper& logger, std::string_view text, const varion::ComError& error);

}  // namespace ComHelpers

}  // namespace SimpleLog
