#include "base/amount.h"

#include <cmath>
#include <limits>

namespace varion {
namespace {

Amount Combine(Amount a, Amount b, bool ok, std::int64_t result) {
  if (!a.IsValid() && !a.IsNull()) return Amount::Invalid();
  if (!b.IsValid() && !b.IsNull()) return Amount::Invalid();
  if (a.IsNull() || b.IsNull()) return Amount::Null();
  return ok ? Amount::FromRaw(result) : Amount::Invalid();
}

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

}  // namespace

Amount Amount::FromUnits(std::int64_t units, std::int64_t fraction) {
  std::int64_t scaled, sum;
  if (__builtin_mul_overflow(units, kScale, &scaled) || __builtin_add_overflow(scaled, fraction, &sum)) return Invalid();
  return FromRaw(sum);
}

Amount Amount::FromDouble(double value) {
  if (!std::isfinite(value)) return Invalid();
  double scaled = std::round(value * kScale);  // std::round goes half away from zero
  // 2^63 is exactly representable; anything at or beyond it does not fit.
  if (scaled >= 9223372036854775808.0 || scaled < -9223372036854775808.0) return Invalid();
  return FromRaw(static_cast<std::int64_t>(scaled));
}

Amount Amount::operator+(Amount other) const {
  std::int64_t r = 0;
  bool ok = !__builtin_add_overflow(m_value, other.m_value, &r);
  return Combine(*this, other, ok, r);
}

Amount Amount::operator-(Amount other) const {
  std::int64_t r = 0;
  bool ok = !__builtin_sub_overflow(m_value, other.m_value, &r);
  return Combine(*this, other, ok, r);
}

Amount Amount::operator-() const { return Amount() - *this; }

Amount Amount::operator*(std::int64_t factor) const {
  std::int64_t r = 0;
  bool ok = !__builtin_mul_overflow(m_value, factor, &r);
  return Combine(*this, FromRaw(0), ok, r);
}

Amount Amount::operator/(std::int64_t divisor) const {
  if (divisor == 0 || (m_value == std::numeric_limits<std::int64_t>::min() && divisor == -1))
    return Combine(*this, FromRaw(0), false, 0);
  std::int64_t q = m_value / divisor, rem = m_value % divisor;
  // Round half away from zero: compare twice the remainder with the divisor, in unsigned terms.
  unsigned long long absRem = rem < 0 ? 0ull - static_cast<unsigned long long>(rem) : static_cast<unsigned long long>(rem);
  unsigned long long absDiv =
      divisor < 0 ? 0ull - static_cast<unsigned long long>(divisor) : static_cast<unsigned long long>(divisor);
  if (absRem * 2 >= absDiv) q += ((m_value < 0) != (divisor < 0)) ? -1 : 1;
  return Combine(*this, FromRaw(0), true, q);
}

std::string Amount::Format(const NumberFormat& format, int decimals) const {
  if (!IsValid()) return {};
  if (decimals < 0) decimals = 0;
  if (decimals > 4) decimals = 4;
  static constexpr std::int64_t kDrop[] = {10000, 1000, 100, 10, 1};
  // Work on the magnitude as unsigned so that the most negative amount formats too.
  unsigned long long mag = m_value < 0 ? 0ull - static_cast<unsigned long long>(m_value) : static_cast<unsigned long long>(m_value);
  unsigned long long step = static_cast<unsigned long long>(kDrop[decimals]);
  mag = (mag / step + ((mag % step) * 2 >= step ? 1 : 0));  // count of the shown smallest unit
  unsigned long long pow10 = 1;
  for (int i = 0; i < decimals; ++i) pow10 *= 10;
  unsigned long long units = mag / pow10, frac = mag % pow10;

  std::string digits = std::to_string(units);
  std::string out;
  if (m_value < 0 && mag != 0) out += format.negativeSign;
  if (format.groupSize > 0) {
    size_t first = digits.size() % static_cast<size_t>(format.groupSize);
    if (first == 0) first = static_cast<size_t>(format.groupSize);
    out.append(digits, 0, first);
    for (size_t i = first; i < digits.size(); i += static_cast<size_t>(format.groupSize)) {
      out += format.thousands;
      out.append(digits, i, static_cast<size_t>(format.groupSize));
    }
  } else {
    out += digits;
  }
  if (decimals > 0) {
    std::string f = std::to_string(frac);
    out += format.decimal;
    out.append(static_cast<size_t>(decimals) - f.size(), '0');
    out += f;
  }
  return out;
}

Amount Amount::Parse(std::string_view text, const NumberFormat& format) {
  auto isBlank = [](char c) { return c == ' ' || c == '\t' || c == '\xA0'; };
  while (!text.empty() && isBlank(text.front())) text.remove_prefix(1);
  while (!text.empty() && isBlank(text.back())) text.remove_suffix(1);
  bool negative = false;
  if (!format.negativeSign.empty() && text.starts_with(format.negativeSign)) {
    negative = true;
    text.remove_prefix(format.negativeSign.size());
  } else if (text.starts_with("-")) {
    negative = true;
    text.remove_prefix(1);
  }
  auto isGroup = [&](std::string_view rest) -> size_t {
    if (!format.thousands.empty() && rest.starts_with(format.thousands)) return format.thousands.size();
    if (rest.front() == ' ' || rest.front() == '\xA0') return 1;
    return 0;
  };
  const bool pointIsGroup = format.thousands == ".";
  unsigned long long mag = 0;  // in ten-thousandths
  int fracDigits = 0;
  bool inFraction = false, anyDigit = false, roundUp = false;
  constexpr unsigned long long kLimit = 9223372036854775808ull;  // magnitude of INT64_MIN
  while (!text.empty()) {
    char c = text.front();
    if (IsDigit(c)) {
      anyDigit = true;
      if (!inFraction) {
        if (mag > (kLimit / 10)) return Invalid();
        mag = mag * 10 + static_cast<unsigned>(c - '0');
        if (mag > kLimit / kScale) return Invalid();
      } else if (fracDigits < 4) {
        static constexpr unsigned kPlace[] = {1000, 100, 10, 1};
        mag += static_cast<unsigned long long>(c - '0') * kPlace[fracDigits];
        ++fracDigits;
      } else if (fracDigits == 4) {
        roundUp = c >= '5';  // the fifth decimal decides; later ones cannot change a half-away rounding
        ++fracDigits;
      }
      text.remove_prefix(1);
      continue;
    }
    if (!inFraction) {
      if (!format.decimal.empty() && text.starts_with(format.decimal) && format.decimal != format.thousands) {
        inFraction = true;
        mag *= kScale;
        text.remove_prefix(format.decimal.size());
        continue;
      }
      if (c == '.' && !pointIsGroup) {
        inFraction = true;
        mag *= kScale;
        text.remove_prefix(1);
        continue;
      }
      if (size_t g = isGroup(text); g && anyDigit && text.size() > g && IsDigit(text[g])) {
        text.remove_prefix(g);
        continue;
      }
    }
    return Invalid();
  }
  if (!anyDigit) return Invalid();
  if (!inFraction) mag *= kScale;
  if (roundUp) ++mag;
  if (mag > kLimit || (!negative && mag == kLimit)) return Invalid();
  std::int64_t v = negative ? static_cast<std::int64_t>(0ull - mag) : static_cast<std::int64_t>(mag);
  return FromRaw(v);
}

std::int64_t VelRound64C(std::int64_t value, int precision) {
  static constexpr std::int64_t kHalfStep[] = {5000000, 500000, 50000, 5000, 500, 50, 5};
  if (precision < -3 || precision > 3) return value;
  if (value == std::numeric_limits<std::int64_t>::min()) return value;
  const std::int64_t half = kHalfStep[precision + 3];
  std::int64_t magnitude = value < 0 ? -value : value;
  std::int64_t sum;
  if (__builtin_add_overflow(magnitude, half, &sum)) return value;
  sum -= sum % (2 * half);
  return value < 0 ? -sum : sum;
}

Amount VelRound64C(Amount value, int precision) {
  if (!value.IsValid()) return value;
  return Amount::FromRaw(VelRound64C(value.Raw(), precision));
}

}  // namespace varion
