#include "base/status.h"

#include <cstdio>

namespace varion {

ComError::ComError(Status32 code, std::string message, std::string sqlState)
    : std::runtime_error(message), m_code(code), m_message(std::move(message)), m_sqlState(std::move(sqlState)) {}

std::string StatusText(Status32 code) {
  char buf[16];
  std::snprintf(buf, sizeof buf, "0x%08X", static_cast<unsigned>(code));
  return buf;
}

}  // namespace varion
