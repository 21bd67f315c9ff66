// Conditional row formats of a list: each format is an SQL condition with a look (colours,
// font). The statement computes, per row, the identifier of the first active format whose
// condition holds (0 for none) as one extra field; the grid then draws the row, or the one
// column the format names, with that format's look.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "base/export.h"

namespace varion {

struct CustomFormat {
  std::int32_t id = 0;        // > 0: the value the statement gives a row in this format
  std::string name;
  std::string condition;      // SQL condition over the list's table aliases
  std::string extraTables;    // joins the condition needs (" LEFT JOIN ..."), or ""
  std::string column;         // field name or default caption of the column it colours; "" = row
  std::int32_t textColor = -1;  // COLORREF, -1 = unchanged
  std::int32_t backColor = -1;
  bool bold = false;
  bool italic = false;
  bool strikeOut = false;
  bool active = true;
};

class VARION_API CustomFormatSet {
 public:
  // Name of the extra field the statement gives the format identifier.
  static constexpr const char* kFieldName = "vel_Formatowanie";

  // False, and nothing added, for a non-positive or repeated identifier or an empty condition.
  bool Add(CustomFormat format);
  void Reset() { m_formats.clear(); }
  const std::vector<CustomFormat>& Formats() const { return m_formats; }
  bool AnyActive() const;

  // "CASE WHEN (c1) THEN id1 WHEN (c2) THEN id2 ELSE 0 END" over the active formats in order,
  // or "0" when none is active, so that a statement using it stays valid either way.
  std::string GetCondition() const;
  // The extra tables of the active formats, each distinct text once, in order.
  std::string GetExtraTables() const;
  // Appends "," + condition + " AS vel_Formatowanie" when a format is active.
  void AppendFields(std::string& fields) const;
  // Whether an active format colours this column (named by field name or default caption); such
  // a column is read even while hidden.
  bool UsesColumn(const std::string& field, const std::string& caption) const;
  // The format of a row whose format field holds the value; nullptr for 0 or an unknown value.
  const CustomFormat* Apply(std::int32_t value) const;
  void TurnOffAll();

 private:
  std::vector<CustomFormat> m_formats;
};

}  // namespace varion
