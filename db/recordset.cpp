#include "db/recordset.h"

#include "db/messages.h"

namespace varion::db {

bool SameName(std::string_view a, std::string_view b) {
  if (a.size() != b.size()) return false;
  for (std::size_t i = 0; i < a.size(); ++i) {
    unsigned char x = static_cast<unsigned char>(a[i]), y = static_cast<unsigned char>(b[i]);
    if (x >= 'A' && x <= 'Z') x = static_cast<unsigned char>(x + 32);
    if (y >= 'A' && y <= 'Z') y = static_cast<unsigned char>(y + 32);
    if (x != y) return false;
  }
  return true;
}

Recordset::Recordset(std::vector<std::string> names, std::vector<FieldType> types, std::vector<Variant> cells)
    : Recordset(std::move(names), std::move(types), [&] {
        CellStore store;
        for (auto& v : cells) store.push_back(std::move(v));
        return store;
      }()) {}

Recordset::Recordset(std::vector<std::string> names, std::vector<FieldType> types, CellStore cells)
    : m_names(std::move(names)), m_types(std::move(types)), m_cells(std::move(cells)) {
  m_types.resize(m_names.size(), FieldType::Unknown);
  if (m_names.empty()) {
    m_cells = CellStore();
    return;
  }
  if (m_cells.size() % m_names.size() != 0) throw ComError(kInvalidArg, messages::BadRecordsetShape());
  m_rows = m_cells.size() / m_names.size();
}

void Recordset::MoveNext() {
  if (IsEOF()) throw ComError(kDbEof, messages::NoCurrentRecord());
  ++m_position;
}

const std::string& Recordset::GetFieldName(int index) const {
  if (index < 0 || index >= GetFieldCount()) throw ComError(kPointer, messages::NoFieldIndex(index));
  return m_names[static_cast<std::size_t>(index)];
}

FieldType Recordset::GetFieldType(int index) const {
  if (index < 0 || index >= GetFieldCount()) throw ComError(kPointer, messages::NoFieldIndex(index));
  return m_types[static_cast<std::size_t>(index)];
}

int Recordset::FindField(std::string_view name) const {
  for (std::size_t i = 0; i < m_names.size(); ++i)
    if (SameName(m_names[i], name)) return static_cast<int>(i);
  return -1;
}

int Recordset::RequireField(std::string_view name) const {
  int index = FindField(name);
  if (index < 0) throw ComError(kPointer, messages::NoField(name));
  return index;
}

const Variant& Recordset::Cell(int index) const {
  if (IsEOF()) throw ComError(kDbEof, messages::NoCurrentRecord());
  return m_cells[m_position * m_names.size() + static_cast<std::size_t>(index)];
}

const Variant& Recordset::GetCollect(int index) const {
  if (index < 0 || index >= GetFieldCount()) throw ComError(kPointer, messages::NoFieldIndex(index));
  return Cell(index);
}

const Variant& Recordset::GetCollect(std::string_view name) const { return Cell(RequireField(name)); }

Status32 Recordset::GetFieldValue(std::string_view name, Variant& out) const {
  int index = FindField(name);
  if (index < 0) return kPointer;
  if (IsEOF()) return kDbEof;
  out = Cell(index);
  return kOk;
}

std::vector<std::uint8_t> Recordset::GetBytes(std::string_view name) const {
  const Variant& v = GetCollect(name);
  if (v.IsEmptyOrNull()) return {};
  if (const auto* bytes = v.GetBinary()) return *bytes;
  if (const auto* text = v.GetText()) return {text->begin(), text->end()};
  throw ComError(kTypeMismatch, messages::NotABlob(name));
}

std::unique_ptr<ByteStream> Recordset::GetStream(std::string_view name) const {
  return std::make_unique<MemoryStream>(GetBytes(name));
}

}  // namespace varion::db
