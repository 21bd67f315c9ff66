#include "diagnostics/log_platform.h"
#include "diagnostics/log_toggles.h"

namespace SimpleLog {

RegistryLoggerToggle::RegistryLoggerToggle() : RegistryLoggerToggle(kEnableSimpleLoggingKey) {}

RegistryLoggerToggle::RegistryLoggerToggle(std::string_view key) : m_enabled(varion::logplatform::UserKeyExists(key)) {}

}  // namespace SimpleLog
