// The automation variant of parameter values and recordset fields: empty, null, integers,
// double, bool, text (code page 1250), amount, date-time or binary, with the conversions the
// subsystems need. A failed conversion gives a status, never an exception.
#pragma once

#include <cstdint>
#include <string>
#include <variant>
#include <vector>

#include "base/amount.h"
#include "base/date_time.h"
#include "base/export.h"
#include "base/status.h"

namespace varion {

class VARION_API Variant {
 public:
  enum class Type : std::uint8_t { Empty, Null, Int32, Int64, Double, Bool, Text, Amount, Date, Binary };
  using Bytes = std::vector<std::uint8_t>;

  Variant() = default;
  static Variant MakeNull();
  Variant(std::int32_t v) : m_value(v) {}
  Variant(std::int64_t v) : m_value(v) {}
  Variant(double v) : m_value(v) {}
  Variant(bool v) : m_value(v) {}
  Variant(std::string v) : m_value(std::move(v)) {}
  Variant(const char* v) : m_value(std::string(v ? v : "")) {}
  Variant(varion::Amount v) : m_value(v) {}
  Variant(DateTime v) : m_value(v) {}
  Variant(Bytes v) : m_value(std::move(v)) {}

  Type GetType() const { return static_cast<Type>(m_value.index()); }
  bool IsEmpty() const { return GetType() == Type::Empty; }
  bool IsNull() const { return GetType() == Type::Null; }
  bool IsEmptyOrNull() const { return IsEmpty() || IsNull(); }

  // Direct access; nullptr when the variant holds another type.
  const std::int32_t* GetInt32() const { return std::get_if<std::int32_t>(&m_value); }
  const std::string* GetText() const { return std::get_if<std::string>(&m_value); }
  const Bytes* GetBinary() const { return std::get_if<Bytes>(&m_value); }

  // Conversions in the manner of VariantChangeType: numbers from text accept blanks around a
  // decimal number with "." or "," as decimal point; fractions round half to even into integers;
  // out of range gives kOverflow, anything unconvertible (null included) kTypeMismatch.
  // Empty converts to 0, "" and a zero amount; text of a date-time is "YYYY-MM-DD" or
  // "YYYY-MM-DD HH:MM:SS"; text of an amount or double uses "." and no grouping.
  Status32 ToText(std::string& out) const;
  Status32 ToInt32(std::int32_t& out) const;
  Status32 ToInt64(std::int64_t& out) const;
  Status32 ToDouble(double& out) const;
  Status32 ToAmount(varion::Amount& out) const;
  Status32 ToDate(DateTime& out) const;
  Status32 ToBool(bool& out) const;

  // Convenience forms: the converted value, or the fallback when the conversion fails.
  std::string AsText(std::string fallback = {}) const;
  std::int32_t AsInt32(std::int32_t fallback = 0) const;

  bool operator==(const Variant& other) const { return m_value == other.m_value; }

 private:
  struct NullTag {
    bool operator==(const NullTag&) const = default;
  };
  using Storage = std::variant<std::monostate, NullTag, std::int32_t, std::int64_t, double, bool, std::string,
                               varion::Amount, DateTime, Bytes>;
  Storage m_value;
};

}  // namespace varion

using _variant_t = varion::Variant;
