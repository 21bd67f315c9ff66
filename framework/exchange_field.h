// A recordset field as the exchange functions see it: the value to load into a control, its type
// (which decides how a control's text is read back), and for the new row of an updatable
// recordset the place to save. A field that does not exist raises ComError kPointer, as the
// recordsets do.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "base/export.h"
#include "base/variant.h"
#include "db/recordset.h"
#include "db/updatable_recordset.h"

namespace varion {

class VARION_API ExchangeField {
 public:
  ExchangeField(const db::Recordset& recordset, std::string_view name);
  ExchangeField(db::UpdatableRecordset& recordset, std::string_view name);

  const std::string& Name() const { return m_name; }
  db::FieldType Type() const { return m_type; }
  Variant Value() const;
  bool IsWritable() const { return m_updatable != nullptr; }
  // Only for the new row of an updatable recordset; a read-only field raises ComError kFail.
  void SetValue(const Variant& value);

  // The automation type number a control's text is read into for this field.
  std::uint16_t VariantType() const;

 private:
  const db::Recordset* m_recordset = nullptr;
  db::UpdatableRecordset* m_updatable = nullptr;
  std::string m_name;
  db::FieldType m_type = db::FieldType::Unknown;
};

// VT_I4, VT_I8, VT_R8, VT_CY, VT_DATE, VT_BSTR, VT_BOOL for the kinds of columns; VT_BSTR for a
// column whose kind the server does not tell, and for binary columns (never typed into a control).
VARION_API std::uint16_t VariantTypeOf(db::FieldType type);

}  // namespace varion
