#include "diagnostics/log_fields.h"

#include <cstdio>

#include "diagnostics/log_factories.h"

namespace SimpleLog {
namespace LogFields {

std::string Field::ToString() const {
  std::string out;
  out.reserve(name.size() + 1 + value.size());
  return out.append(name).append(1, '=').append(value);
}

#if defined(__cpp_lib_source_location)
Field SourceLocation(const std::source_location& where) {
  // The file's own name is enough to find it and keeps build folders out of the log.
  std::string_view file = where.file_name();
  if (const auto slash = file.find_last_of("/\\"); slash != std::string_view::npos) file.remove_prefix(slash + 1);
  std::string value(file);
  value.append(1, ':').append(std::to_string(where.line()));
  if (*where.function_name()) value.append(1, ' ').append(where.function_name());
  return Field{"source_location", std::move(value)};
}
#endif

std::string WithFields(std::string_view text, std::initializer_list<Field> fields) {
  std::string out(text);
  for (const Field& field : fields) out.append(1, ' ').append(field.ToString());
  return out;
}

}  // namespace LogFields

namespace ComHelpers {

void WriteComError(const SimpleLoggerWrapper& logger, std::string_view text, const varion::ComError& error) {
  try {
    char code[16];
    std::snprintf(code, sizeof code, "0x%x", static_cast<unsigned>(error.Code()));
    logger.Write(FramLogError, LogFields::WithFields(text, {{"error_message", error.Message()}, {"error_code", code}}));
  } catch (...) {
  }
}

}  // namespace ComHelpers
}  // namespace SimpleLog
