#include "base/sql_literal.h"

namespace varion {

std::string SqlOkString(const char* text) { return text ? SqlOkString(std::string_view(text)) : std::string(); }

std::string SqlOkString(std::string_view text) {
  std::string out;
  out.reserve(text.size() + 8);
  for (char c : text) {
    if (c == '\0') continue;
    if (c == '\'') out += '\'';
    out += c;
  }
  return out;
}

std::string SqlOkDate(double oleDate) { return SqlOkDate(DateTime(oleDate)); }

std::string SqlOkDate(const DateTime& date) {
  if (!date.IsValid()) return "NULL";
  if (!date.HasTimeOfDay()) return date.Format("'%Y%m%d'");
  return "CONVERT(DATETIME, '" + date.Format("%Y-%m-%dT%H:%M:%S") + "', 126)";
}

std::string SqlOkCurrency(std::int64_t tenThousandths) { return SqlOkCurrency(Amount::FromRaw(tenThousandths)); }

std::string SqlOkCurrency(Amount amount) {
  if (!amount.IsValid()) return "NULL";
  std::string s = amount.Format(NumberFormat{".", "", "-", 0}, 4);
  while (s.back() == '0') s.pop_back();
  if (s.back() == '.') s.pop_back();
  return s;
}

}  // namespace varion
