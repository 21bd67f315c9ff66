#include "grid/stored_layout.h"

#include <vector>

#include "base/sql_literal.h"

namespace varion {
namespace {

bool ParseVersion(const std::string& text, std::vector<long long>& parts) {
  parts.clear();
  long long part = -1;
  for (char c : text) {
    if (c >= '0' && c <= '9') {
      if (part > 100000000) return false;  // no version part is that long
      part = (part < 0 ? 0 : part * 10) + (c - '0');
    } else if (c == '.') {
      if (part < 0) return false;
      parts.push_back(part);
      part = -1;
    } else {
      return false;
    }
  }
  if (part < 0) return false;
  parts.push_back(part);
  return true;
}

}  // namespace

std::string MakeLayoutKeyWhere(const std::string& section, std::int32_t user, std::int32_t service) {
  return std::string(kLayoutSectionField) + "='" + SqlOkString(section) + "' AND " + kLayoutUserField + "=" +
         std::to_string(user) + " AND " + kLayoutServiceField + "=" + std::to_string(service);
}

std::string MakeLayoutSelect(const std::string& section, std::int32_t user, std::int32_t service) {
  return std::string(
             "SELECT cge_Section, cge_User, cge_Service, cge_Version, cge_BinListInfo, cge_BinColumns, "
             "cge_BinTables, cge_BinVisibility, cge_Sql, cge_LastUpdateVersion FROM ") +
         kLayoutTable + " WHERE " + MakeLayoutKeyWhere(section, user, service);
}

std::string MakeCustomGridSelect(const std::string& section, std::int32_t moduleId,
                                 std::optional<std::int32_t> gridType) {
  std::string sql =
      "SELECT grg_Sql, grg_BinListInfo, grg_BinColumns, grg_BinTables, grg_BinVisibility, grg_SqlWhere, "
      "grg_KolumnyWlasneWidoczne FROM gr_GridWlasny LEFT JOIN gr__Grid ON grg_IdGrida = gr_Id WHERE gr_Section = '" +
      SqlOkString(section) + "' AND gr_IdModulu = " + std::to_string(moduleId);
  if (gridType) sql += " AND gr_TypEx = " + std::to_string(*gridType);
  return sql;
}

std::optional<int> CompareVersionTexts(const std::string& a, const std::string& b) {
  std::vector<long long> pa, pb;
  if (!ParseVersion(a, pa) || !ParseVersion(b, pb)) return std::nullopt;
  const size_t n = std::max(pa.size(), pb.size());
  for (size_t i = 0; i < n; ++i) {
    const long long x = i < pa.size() ? pa[i] : 0, y = i < pb.size() ? pb[i] : 0;
    if (x != y) return x < y ? -1 : 1;
  }
  return 0;
}

}  // namespace varion
