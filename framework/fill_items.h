// The portable half of the combo and list fillers: the items a filler puts into a control (a
// text and a 32-bit item-data number each), built from fixed arrays, texts or a database query,
// with the rules that decide the SQL. The Windows half (framework/fillers_win.h) only sends the
// control messages.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/export.h"
#include "db/connection.h"
#include "framework/message_template.h"

// One fixed choice of a list: its item data and its text.
struct LBEntry {
  std::int32_t itemData;
  const char* text;
};

namespace varion::fill {

struct Item {
  std::string text;
  std::int32_t data = 0;
  bool operator==(const Item&) const = default;
};
using Items = std::vector<Item>;

// Formats one item text from a template and the row's field texts (FormatMessageTemplate natively,
// the platform's FormatMessageW on Windows).
using Formatter = bool (*)(std::string_view tmpl, std::span<const std::string> args, std::string& out);

// Item data of the extra items some dictionaries put before their rows.
inline constexpr std::int32_t kAnyItem = -1;      // "(dowolny)", "(wszystkie)": no restriction
inline constexpr std::int32_t kNoneItem = 0;      // "(brak)", "(nie umieszczaj)": no value
inline constexpr std::int32_t kCurrentItem = -2;  // "(zalogowany)", "(bieżący oddział)": resolved at run time

// The entries whose item data is not excluded, in array order. A null array or a count below 1
// gives nothing; a null exclusion list excludes nothing.
VARION_API Items SelectEntries(const LBEntry* entries, int count, const std::int32_t* excluded, int excludedCount);

// Texts with their positions as item data.
VARION_API Items ItemsFromTexts(std::span<const std::string> texts);
// A multi-line text (a string resource): one item per line, "\r\n" or "\n" between them, the
// line's position as item data; a trailing line break adds no empty item.
VARION_API Items ItemsFromLines(std::string_view text);

// The statement behind a table-or-query argument. A text longer than 7 characters whose seventh
// character is a blank is a whole query ("SELECT x", "select * from ..."); anything else is a
// table name behind "SELECT * FROM ". Deliberately this blunt: host code passes both forms
// through one parameter and relies on exactly this test.
VARION_API std::string SourceSql(std::string_view tableOrQuery);

// The distinct values of one column: "SELECT DISTINCT <id>, <text> AS TEXT_FIELD FROM <from>
// [WHERE <condition>] ORDER BY TEXT_FIELD". The identifier expression may be "1 AS ID".
VARION_API std::string DistinctSql(std::string_view idExpr, std::string_view textExpr, std::string_view from,
                                   std::string_view condition);

// How a row becomes an item: the template over the text fields, the identifier field as data.
struct RowFormat {
  std::string tmpl = "%1!ls!";
  std::vector<std::string> textFields;
  std::string idField;
};

// Every row of the recordset, from its first, as items. A NULL field formats as an empty text, a
// NULL identifier gives 0. Raises ComError kPointer for a missing field and kTypeMismatch for an
// identifier that is not a 32-bit number or a template the formatter refuses, so that a broken
// definition never half-fills a control.
VARION_API Items ReadItems(db::Recordset& rs, const RowFormat& format, Formatter formatter = FormatMessageTemplate);

}  // namespace varion::fill
