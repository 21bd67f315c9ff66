#include "framework/fill_items.h"

#include <algorithm>

#include "base/status.h"

namespace varion::fill {

Items SelectEntries(const LBEntry* entries, int count, const std::int32_t* excluded, int excludedCount) {
  Items items;
  if (!entries || count < 1) return items;
  const std::span<const std::int32_t> skip =
      excluded && excludedCount > 0 ? std::span(excluded, static_cast<std::size_t>(excludedCount))
                                    : std::span<const std::int32_t>();
  for (const LBEntry& e : std::span(entries, static_cast<std::size_t>(count))) {
    if (std::find(skip.begin(), skip.end(), e.itemData) != skip.end()) continue;
    items.push_back({e.text ? e.text : "", e.itemData});
  }
  return items;
}

Items ItemsFromTexts(std::span<const std::string> texts) {
  Items items;
  items.reserve(texts.size());
  for (const std::string& t : texts) items.push_back({t, static_cast<std::int32_t>(items.size())});
  return items;
}

Items ItemsFromLines(std::string_view text) {
  Items items;
  while (!text.empty()) {
    const std::size_t end = text.find('\n');
    std::string_view line = text.substr(0, end);
    if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
    items.push_back({std::string(line), static_cast<std::int32_t>(items.size())});
    if (end == std::string_view::npos) break;
    text.remove_prefix(end + 1);
  }
  return items;
}

std::string SourceSql(std::string_view tableOrQuery) {
  if (tableOrQuery.size() > 7 && tableOrQuery[6] == ' ') return std::string(tableOrQuery);
  return "SELECT * FROM " + std::string(tableOrQuery);
}

std::string DistinctSql(std::string_view idExpr, std::string_view textExpr, std::string_view from,
                        std::string_view condition) {
  // The format "SELECT DISTINCT %ls, %ls AS TEXT_FIELD FROM %ls %ls %ls ORDER BY TEXT_FIELD",
  // filled in place: without a condition its two slots stay empty and their blanks remain.
  std::string sql = "SELECT DISTINCT ";
  sql.append(idExpr).append(", ").append(textExpr).append(" AS TEXT_FIELD FROM ").append(from).append(" ");
  sql.append(condition.empty() ? "" : "WHERE").append(" ").append(condition).append(" ORDER BY TEXT_FIELD");
  return sql;
}

Items ReadItems(db::Recordset& rs, const RowFormat& format, Formatter formatter) {
  std::vector<int> textColumns;
  for (const std::string& f : format.textFields) {
    const int c = rs.FindField(f);
    if (c < 0) throw ComError(kPointer, "Brak pola " + f + " w zestawie rekordów.");
    textColumns.push_back(c);
  }
  const int idColumn = rs.FindField(format.idField);
  if (idColumn < 0) throw ComError(kPointer, "Brak pola " + format.idField + " w zestawie rekordów.");

  Items items;
  items.reserve(rs.GetRecordCount());
  std::vector<std::string> args(textColumns.size());
  for (rs.MoveFirst(); !rs.IsEOF(); rs.MoveNext()) {
    for (std::size_t i = 0; i < textColumns.size(); ++i) args[i] = rs.GetCollect(textColumns[i]).AsText();
    Item item;
    if (!formatter(format.tmpl, args, item.text))
      throw ComError(kTypeMismatch, "Nieprawidłowy szablon tekstu pozycji: " + format.tmpl);
    const Variant& id = rs.GetCollect(idColumn);
    if (!id.IsNull() && Failed(id.ToInt32(item.data)))
      throw ComError(kTypeMismatch, "Identyfikator " + id.AsText() + " nie jest liczbą całkowitą.");
    items.push_back(std::move(item));
  }
  return items;
}

}  // namespace varion::fill
