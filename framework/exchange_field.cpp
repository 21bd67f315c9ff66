#include "framework/exchange_field.h"

#include "base/status.h"

namespace varion {
namespace {

// The automation numbers, spelled out here because this file builds without Windows headers.
constexpr std::uint16_t kVtI4 = 3, kVtR8 = 5, kVtCy = 6, kVtDate = 7, kVtBstr = 8, kVtBool = 11, kVtI8 = 20;

db::FieldType TypeOf(const db::Recordset& rs, std::string_view name) {
  const int index = rs.FindField(name);
  if (index < 0) throw ComError(kPointer, "no field " + std::string(name));
  return rs.GetFieldType(index);
}

}  // namespace

std::uint16_t VariantTypeOf(db::FieldType type) {
  switch (type) {
    case db::FieldType::Integer:
      return kVtI4;
    case db::FieldType::BigInt:
      return kVtI8;
    case db::FieldType::Double:
      return kVtR8;
    case db::FieldType::Amount:
      return kVtCy;
    case db::FieldType::Date:
      return kVtDate;
    case db::FieldType::Bool:
      return kVtBool;
    default:
      return kVtBstr;
  }
}

ExchangeField::ExchangeField(const db::Recordset& recordset, std::string_view name)
    : m_recordset(&recordset), m_name(name), m_type(TypeOf(recordset, name)) {}

ExchangeField::ExchangeField(db::UpdatableRecordset& recordset, std::string_view name)
    : m_updatable(&recordset), m_name(name), m_type(TypeOf(recordset.Rows(), name)) {}

Variant ExchangeField::Value() const {
  return m_updatable ? m_updatable->GetCollect(m_name) : m_recordset->GetCollect(m_name);
}

void ExchangeField::SetValue(const Variant& value) {
  if (!m_updatable) throw ComError(kFail, "field " + m_name + " is read-only");
  m_updatable->PutCollect(m_name, value);
}

std::uint16_t ExchangeField::VariantType() const { return VariantTypeOf(m_type); }

}  // namespace varion
