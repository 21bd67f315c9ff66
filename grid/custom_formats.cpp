#include "grid/custom_formats.h"

#include <algorithm>

namespace varion {

bool CustomFormatSet::Add(CustomFormat format) {
  if (format.id <= 0 || format.condition.empty()) return false;
  if (std::any_of(m_formats.begin(), m_formats.end(), [&](const CustomFormat& f) { return f.id == format.id; }))
    return false;
  m_formats.push_back(std::move(format));
  return true;
}

bool CustomFormatSet::AnyActive() const {
  return std::any_of(m_formats.begin(), m_formats.end(), [](const CustomFormat& f) { return f.active; });
}

std::string CustomFormatSet::GetCondition() const {
  if (!AnyActive()) return "0";
  std::string out = "CASE";
  for (const CustomFormat& f : m_formats) {
    if (!f.active) continue;
    out += " WHEN (" + f.condition + ") THEN " + std::to_string(f.id);
  }
  out += " ELSE 0 END";
  return out;
}

std::string CustomFormatSet::GetExtraTables() const {
  std::string out;
  std::vector<const std::string*> seen;
  for (const CustomFormat& f : m_formats) {
    if (!f.active || f.extraTables.empty()) continue;
    if (std::any_of(seen.begin(), seen.end(), [&](const std::string* s) { return *s == f.extraTables; })) continue;
    seen.push_back(&f.extraTables);
    out += f.extraTables;
  }
  return out;
}

void CustomFormatSet::AppendFields(std::string& fields) const {
  if (!AnyActive()) return;
  fields += "," + GetCondition() + " AS " + kFieldName;
}

bool CustomFormatSet::UsesColumn(const std::string& field, const std::string& caption) const {
  return std::any_of(m_formats.begin(), m_formats.end(), [&](const CustomFormat& f) {
    return f.active && !f.column.empty() && (f.column == field || f.column == caption);
  });
}

const CustomFormat* CustomFormatSet::Apply(std::int32_t value) const {
  if (value <= 0) return nullptr;
  for (const CustomFormat& f : m_formats)
    if (f.id == value) return &f;
  return nullptr;
}

void CustomFormatSet::TurnOffAll() {
  for (CustomFormat& f : m_formats) f.active = false;
}

}  // namespace varion
