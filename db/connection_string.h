// Connection strings in the ADO and ODBC form: "Key=Value;Key={value; with semicolons}".
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "base/export.h"
#include "base/status.h"

namespace varion::db {

class VARION_API ConnectionString {
 public:
  // Keys keep their spelling and order; a value in braces may hold ';' and '}}' stands for '}'.
  // Malformed text (a pair without '=', an unclosed brace) gives kInvalidArg.
  static Status32 Parse(std::string_view text, ConnectionString& out);

  // Case-insensitive key lookup; the last occurrence wins, as in ODBC.
  std::optional<std::string> Get(std::string_view key) const;
  void Remove(std::string_view key);
  void Set(std::string_view key, std::string value);
  // Back to text, bracing values that need it.
  std::string ToString() const;

  const std::vector<std::pair<std::string, std::string>>& Pairs() const { return m_pairs; }

 private:
  std::vector<std::pair<std::string, std::string>> m_pairs;
};

}  // namespace varion::db
