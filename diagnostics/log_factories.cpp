#include "diagnostics/log_factories.h"

#include "db/rt_instance.h"

namespace SimpleLog {
namespace Custom {
namespace File {

LoggerFactory::LoggerFactory(std::string name, std::shared_ptr<const ILoggerToggle> toggle, Formatting formatting)
    : m_name(std::move(name)), m_toggle(std::move(toggle)), m_formatting(formatting) {}

LoggerFactory& LoggerFactory::WithCustomDirectory(std::string directory) {
  m_directory = std::move(directory);
  return *this;
}

SimpleLoggerWrapper LoggerFactory::Get() const {
  try {
    return CreateLogger(std::make_shared<FileLoggerSink>(m_directory, m_name), m_toggle,
                        FormatterFactory::Create(m_formatting));
  } catch (...) {
    return Dummy::CreateLogger();
  }
}

}  // namespace File

namespace Db {

LoggerFactory::LoggerFactory(std::string name, std::shared_ptr<const ILoggerToggle> toggle)
    : m_name(std::move(name)), m_toggle(std::move(toggle)) {}

LoggerFactory& LoggerFactory::WithCustomConnection(varion::db::Connection connection) {
  m_connection = std::move(connection);
  return *this;
}

LoggerFactory& LoggerFactory::WithObjectContext(IFlgItem* objectContext) {
  m_object = objectContext;
  return *this;
}

SimpleLoggerWrapper LoggerFactory::Get() const {
  try {
    varion::db::Connection connection;
    if (m_connection) {
      connection = *m_connection;
    } else {
      try {
        connection = CRtInstance::GetConnection();
      } catch (const varion::ComError&) {
        // No instance yet: the logger stays, its rows fail quietly.
      }
    }
    std::shared_ptr<const IFramDbHeaderCreator> header;
    if (m_object) header = std::make_shared<ComFlgObjectContextDbHeaderCreator>(m_object);
    else header = std::make_shared<DefaultFramDbHeaderCreator>();
    auto sink = std::make_shared<FramDbLoggerSink>(m_name, std::make_shared<DefaultFramDbWriter>(std::move(connection)),
                                                   std::move(header));
    return CreateLogger(std::move(sink), m_toggle, nullptr);
  } catch (...) {
    return Dummy::CreateLogger();
  }
}

}  // namespace Db
}  // namespace Custom

namespace Default {

SimpleLoggerWrapper CreateLogger(std::string_view name, IFlgItem* objectContext) {
  try {
    auto toggle = std::make_shared<ParamLoggerToggle>(varion::RunningFlgInstance(), std::string(name));
    return Custom::Db::LoggerFactory(std::string(name), std::move(toggle)).WithObjectContext(objectContext).Get();
  } catch (...) {
    return Dummy::CreateLogger();
  }
}

void Write(std::string_view name, tagFramLogLevel level, std::string_view text) {
  CreateLogger(name).Write(level, text);
}

}  // namespace Default
}  // namespace SimpleLog
