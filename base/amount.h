// The OLE currency amount: a signed 64-bit count of ten-thousandths with a status. Arithmetic
// that would overflow gives an invalid amount instead of wrapping.
#pragma once

#include <compare>
#include <cstdint>
#include <string>
#include <string_view>

#include "base/export.h"
#include "base/value_status.h"

namespace varion {

// Separators that locale-dependent text uses. Kept apart from any locale source so that every
// formatting rule can be tested with several locales natively.
struct NumberFormat {
  std::string decimal = ",";
  std::string thousands = "\xA0";  // a no-break space, as the Polish locale groups
  std::string negativeSign = "-";
  int groupSize = 3;  // digits per group; 0 means no grouping
};

class VARION_API Amount {
 public:
  static constexpr std::int64_t kScale = 10000;  // ten-thousandths per unit

  constexpr Amount() = default;
  static constexpr Amount FromRaw(std::int64_t tenThousandths) { return Amount(tenThousandths, ValueStatus::Valid); }
  // Whole units and ten-thousandths (both carrying the sign), as COleCurrency(units, fraction).
  static Amount FromUnits(std::int64_t units, std::int64_t fraction = 0);
  // Rounds half away from zero to ten-thousandths; NaN or out of range gives an invalid amount.
  static Amount FromDouble(double value);
  static constexpr Amount Null() { return Amount(0, ValueStatus::Null); }
  static constexpr Amount Invalid() { return Amount(0, ValueStatus::Invalid); }

  constexpr std::int64_t Raw() const { return m_value; }
  constexpr ValueStatus Status() const { return m_status; }
  constexpr bool IsValid() const { return m_status == ValueStatus::Valid; }
  constexpr bool IsNull() const { return m_status == ValueStatus::Null; }
  double ToDouble() const { return static_cast<double>(m_value) / kScale; }

  // Any invalid operand or an overflow gives an invalid result; null with a valid value gives null.
  Amount operator+(Amount other) const;
  Amount operator-(Amount other) const;
  Amount operator-() const;
  Amount operator*(std::int64_t factor) const;
  // Integer division of the count of ten-thousandths, rounded half away from zero; by zero: invalid.
  Amount operator/(std::int64_t divisor) const;

  // Values compare by count; statuses must match for equality.
  friend constexpr bool operator==(Amount a, Amount b) { return a.m_status == b.m_status && a.m_value == b.m_value; }
  friend constexpr auto operator<=>(Amount a, Amount b) { return a.m_value <=> b.m_value; }

  // Text with `decimals` fraction digits (0..4, rounded half away from zero), grouped and signed
  // as the format says. Null gives "", invalid gives "".
  std::string Format(const NumberFormat& format, int decimals) const;
  // Accepts surrounding blanks, a leading negative sign (or "-"), group separators between
  // digits (the format's, a space or a no-break space) and the format's decimal separator (or
  // "." when that is not a group separator). More than four decimals round half away from zero.
  // Empty text, stray characters or overflow give an invalid amount.
  static Amount Parse(std::string_view text, const NumberFormat& format);

 private:
  constexpr Amount(std::int64_t v, ValueStatus s) : m_value(v), m_status(s) {}
  std::int64_t m_value = 0;
  ValueStatus m_status = ValueStatus::Valid;
};

// Rounds a count of ten-thousandths to `precision` decimals (-3..3): the absolute value plus the
// half-step is cut to a multiple of twice the half-step, the sign put back, so halves go away from
// zero. Any other precision (4 included) or an overflowing sum leaves the value unchanged.
VARION_API std::int64_t VelRound64C(std::int64_t value, int precision);
VARION_API Amount VelRound64C(Amount value, int precision);

}  // namespace varion

using COleCurrency = varion::Amount;
