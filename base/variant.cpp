#include "base/variant.h"

#include <charconv>
#include <cmath>
#include <cstdio>
#include <limits>

namespace varion {
namespace {

// Parses blanks, an optional sign, digits with "." or "," as decimal point, blanks. Exponents
// are accepted too ("1e3"), as the automation conversions do.
bool ParseNumber(const std::string& text, double& out) {
  std::string s;
  s.reserve(text.size());
  for (char c : text) s += c == ',' ? '.' : c;
  size_t b = s.find_first_not_of(" \t\xA0");
  size_t e = s.find_last_not_of(" \t\xA0");
  if (b == std::string::npos) return false;
  const char* first = s.data() + b;
  const char* last = s.data() + e + 1;
  if (*first == '+') ++first;
  auto [ptr, ec] = std::from_chars(first, last, out);
  return ec == std::errc() && ptr == last && std::isfinite(out);
}

// Banker's rounding, the automation rule for fractions going into integers.
double RoundHalfEven(double v) { return std::nearbyint(v); }

std::string DoubleText(double v) {
  char buf[32];
  auto [ptr, ec] = std::to_chars(buf, buf + sizeof buf, v);
  return ec == std::errc() ? std::string(buf, ptr) : std::string();
}

std::string AmountText(Amount a) {
  NumberFormat plain{".", "", "-", 0};
  std::string s = a.Format(plain, 4);
  size_t dot = s.find('.');
  if (dot != std::string::npos) {
    while (s.back() == '0') s.pop_back();
    if (s.back() == '.') s.pop_back();
  }
  return s;
}

}  // namespace

Variant Variant::MakeNull() {
  Variant v;
  v.m_value = NullTag{};
  return v;
}

Status32 Variant::ToDouble(double& out) const {
  switch (GetType()) {
    case Type::Empty: out = 0; return kOk;
    case Type::Int32: out = *std::get_if<std::int32_t>(&m_value); return kOk;
    case Type::Int64: out = static_cast<double>(*std::get_if<std::int64_t>(&m_value)); return kOk;
    case Type::Double: out = *std::get_if<double>(&m_value); return kOk;
    case Type::Bool: out = *std::get_if<bool>(&m_value) ? -1.0 : 0.0; return kOk;  // VARIANT_TRUE is -1
    case Type::Amount: {
      const auto& a = *std::get_if<varion::Amount>(&m_value);
      if (!a.IsValid()) return kTypeMismatch;
      out = a.ToDouble();
      return kOk;
    }
    case Type::Date: {
      const auto& d = *std::get_if<DateTime>(&m_value);
      if (!d.IsValid()) return kTypeMismatch;
      out = d.Value();
      return kOk;
    }
    case Type::Text: return ParseNumber(*std::get_if<std::string>(&m_value), out) ? kOk : kTypeMismatch;
    default: return kTypeMismatch;
  }
}

Status32 Variant::ToInt64(std::int64_t& out) const {
  switch (GetType()) {
    case Type::Int32: out = *std::get_if<std::int32_t>(&m_value); return kOk;
    case Type::Int64: out = *std::get_if<std::int64_t>(&m_value); return kOk;
    case Type::Amount: {
      const auto& a = *std::get_if<varion::Amount>(&m_value);
      if (!a.IsValid()) return kTypeMismatch;
      // Ten-thousandths to units, half to even like the automation conversion of CY.
      std::int64_t q = a.Raw() / Amount::kScale, r = a.Raw() % Amount::kScale;
      if (r > 5000 || (r == 5000 && (q & 1))) ++q;
      if (r < -5000 || (r == -5000 && (q & 1))) --q;
      out = q;
      return kOk;
    }
    default: break;
  }
  double d;
  Status32 s = ToDouble(d);
  if (Failed(s)) return s;
  d = RoundHalfEven(d);
  if (!(d >= -9223372036854775808.0 && d < 9223372036854775808.0)) return kOverflow;
  out = static_cast<std::int64_t>(d);
  return kOk;
}

Status32 Variant::ToInt32(std::int32_t& out) const {
  std::int64_t v;
  Status32 s = ToInt64(v);
  if (Failed(s)) return s;
  if (v < std::numeric_limits<std::int32_t>::min() || v > std::numeric_limits<std::int32_t>::max()) return kOverflow;
  out = static_cast<std::int32_t>(v);
  return kOk;
}

Status32 Variant::ToBool(bool& out) const {
  if (GetType() == Type::Bool) {
    out = *std::get_if<bool>(&m_value);
    return kOk;
  }
  if (GetType() == Type::Text) {
    const std::string& t = *std::get_if<std::string>(&m_value);
    if (t == "true" || t == "True" || t == "TRUE") return out = true, kOk;
    if (t == "false" || t == "False" || t == "FALSE") return out = false, kOk;
  }
  double d;
  Status32 s = ToDouble(d);
  if (Failed(s)) return s;
  out = d != 0;
  return kOk;
}

Status32 Variant::ToAmount(varion::Amount& out) const {
  switch (GetType()) {
    case Type::Amount: {
      const auto& a = *std::get_if<varion::Amount>(&m_value);
      if (!a.IsValid()) return kTypeMismatch;
      out = a;
      return kOk;
    }
    case Type::Int32: out = Amount::FromUnits(*std::get_if<std::int32_t>(&m_value)); return kOk;
    case Type::Int64: {
      Amount a = Amount::FromUnits(*std::get_if<std::int64_t>(&m_value));
      if (!a.IsValid()) return kOverflow;
      out = a;
      return kOk;
    }
    case Type::Text: {
      // Exact decimal parsing, so that 0.1 stays 1000 ten-thousandths.
      const std::string& t = *std::get_if<std::string>(&m_value);
      Amount a = Amount::Parse(t, NumberFormat{".", "", "-", 0});
      if (!a.IsValid()) a = Amount::Parse(t, NumberFormat{",", "", "-", 0});
      if (!a.IsValid()) return kTypeMismatch;
      out = a;
      return kOk;
    }
    default: break;
  }
  double d;
  Status32 s = ToDouble(d);
  if (Failed(s)) return s;
  Amount a = Amount::FromDouble(d);
  if (!a.IsValid()) return kOverflow;
  out = a;
  return kOk;
}

Status32 Variant::ToDate(DateTime& out) const {
  switch (GetType()) {
    case Type::Date: {
      const auto& d = *std::get_if<DateTime>(&m_value);
      if (!d.IsValid()) return kTypeMismatch;
      out = d;
      return kOk;
    }
    case Type::Text: {
      DateTime d = DateTime::ParseIso(*std::get_if<std::string>(&m_value));
      if (!d.IsValid()) return kTypeMismatch;
      out = d;
      return kOk;
    }
    default: break;
  }
  double v;
  Status32 s = ToDouble(v);
  if (Failed(s)) return s;
  DateTime d(v);
  if (!d.IsValid()) return kOverflow;
  out = d;
  return kOk;
}

Status32 Variant::ToText(std::string& out) const {
  switch (GetType()) {
    case Type::Empty: out.clear(); return kOk;
    case Type::Text: out = *std::get_if<std::string>(&m_value); return kOk;
    case Type::Int32: out = std::to_string(*std::get_if<std::int32_t>(&m_value)); return kOk;
    case Type::Int64: out = std::to_string(*std::get_if<std::int64_t>(&m_value)); return kOk;
    case Type::Double: out = DoubleText(*std::get_if<double>(&m_value)); return kOk;
    case Type::Bool: out = *std::get_if<bool>(&m_value) ? "True" : "False"; return kOk;
    case Type::Amount: {
      const auto& a = *std::get_if<varion::Amount>(&m_value);
      if (!a.IsValid()) return kTypeMismatch;
      out = AmountText(a);
      return kOk;
    }
    case Type::Date: {
      const auto& d = *std::get_if<DateTime>(&m_value);
      if (!d.IsValid()) return kTypeMismatch;
      out = d.Format(d.HasTimeOfDay() ? "%Y-%m-%d %H:%M:%S" : "%Y-%m-%d");
      return kOk;
    }
    default: return kTypeMismatch;  // null and binary have no text
  }
}

std::string Variant::AsText(std::string fallback) const {
  std::string s;
  return Succeeded(ToText(s)) ? s : fallback;
}

std::int32_t Variant::AsInt32(std::int32_t fallback) const {
  std::int32_t v;
  return Succeeded(ToInt32(v)) ? v : fallback;
}

}  // namespace varion
