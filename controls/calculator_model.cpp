#include "controls/calculator_model.h"

#include <algorithm>

namespace varion {
namespace {

using Op = CalculatorModel::Op;
using Status = CalculatorModel::Status;

// a * b / div rounded half away from zero, within the field's range. The product of two amounts
// of 16 digits needs 128 bits (GCC and Clang both have them).
Status MulDiv(std::int64_t a, std::int64_t b, std::int64_t div, std::int64_t* out) {
  const __int128 n = static_cast<__int128>(a) * b;
  __int128 q = n / div;
  const __int128 rem = n % div;
  const __int128 absRem = rem < 0 ? -rem : rem, absDiv = div < 0 ? -static_cast<__int128>(div) : div;
  if (absRem * 2 >= absDiv) q += ((n < 0) != (div < 0)) ? -1 : 1;
  if (q > CalculatorModel::kMaxRaw || q < -CalculatorModel::kMaxRaw) return Status::Overflow;
  *out = static_cast<std::int64_t>(q);
  return Status::Ok;
}

struct OpKey {
  char ch;
  Op op;
};
constexpr OpKey kOpKeys[] = {{'+', Op::Add}, {'-', Op::Subtract}, {'*', Op::Multiply}, {'/', Op::Divide}};

}  // namespace

CalculatorModel::CalculatorModel() : CalculatorModel(CLocaleInfo::GetTheLocaleInfo()) {}

CalculatorModel::CalculatorModel(const CLocaleInfo& locale) : m_locale(&locale) {}

Status CalculatorModel::Fail(Status why) {
  m_error = why;
  return why;
}

void CalculatorModel::StartEntry() {
  m_entering = true;
  m_fresh = true;
  m_entry = "0";
  m_entryNegative = false;
  m_current = Amount::FromRaw(0);
}

Status CalculatorModel::SetEntry(std::string digits, bool negative) {
  std::int64_t raw = 0;
  const size_t dot = digits.find('.');
  for (size_t i = 0; i < digits.size(); ++i)
    if (i != dot) raw = raw * 10 + (digits[i] - '0');
  const size_t fraction = dot == std::string::npos ? 0 : digits.size() - dot - 1;
  for (size_t i = fraction; i < 4; ++i) raw *= 10;
  m_entry = std::move(digits);
  m_entryNegative = negative;
  m_current = Amount::FromRaw(negative ? -raw : raw);
  return Status::Ok;
}

Status CalculatorModel::Digit(int digit) {
  m_error = Status::Ok;
  if (digit < 0 || digit > 9) return Status::Refused;
  if (!m_entering) StartEntry();
  std::string e = m_entry;
  const char ch = static_cast<char>('0' + digit);
  const size_t dot = e.find('.');
  if (dot == std::string::npos) {
    if (e == "0") {
      e = ch;
    } else {
      if (e.size() >= 12) return Status::Refused;
      e += ch;
    }
  } else {
    if (e.size() - dot - 1 >= static_cast<size_t>(m_decimals)) return Status::Refused;
    e += ch;
  }
  return SetEntry(std::move(e), m_entryNegative);
}

Status CalculatorModel::DecimalPoint() {
  m_error = Status::Ok;
  if (m_decimals == 0) return Status::Refused;
  if (!m_entering) StartEntry();
  if (m_entry.find('.') != std::string::npos) return Status::Refused;
  return SetEntry(m_entry + '.', m_entryNegative);
}

Status CalculatorModel::Apply(Op op, Amount left, Amount right, Amount* result) const {
  std::int64_t out = 0;
  Status st = Status::Ok;
  switch (op) {
    case Op::None:
      out = right.Raw();
      break;
    case Op::Add:  // both within 16 digits: the sum cannot leave 64 bits
      out = left.Raw() + right.Raw();
      break;
    case Op::Subtract:
      out = left.Raw() - right.Raw();
      break;
    case Op::Multiply:
      st = MulDiv(left.Raw(), right.Raw(), Amount::kScale, &out);
      break;
    case Op::Divide:
      if (right.Raw() == 0) return Status::DivisionByZero;
      st = MulDiv(left.Raw(), Amount::kScale, right.Raw(), &out);
      break;
  }
  if (st != Status::Ok) return st;
  if (out > kMaxRaw || out < -kMaxRaw) return Status::Overflow;
  *result = Amount::FromRaw(out);
  return Status::Ok;
}

Status CalculatorModel::Operator(Op op) {
  m_error = Status::Ok;
  if (op == Op::None) return Status::Refused;
  if (m_pending != Op::None && m_fresh) {
    Amount r;
    if (Status st = Apply(m_pending, m_accumulator, m_current, &r); st != Status::Ok) return Fail(st);
    m_current = r;
  }
  m_accumulator = m_current;
  m_pending = op;
  m_fresh = m_entering = false;
  return Status::Ok;
}

Status CalculatorModel::Equals() {
  m_error = Status::Ok;
  Amount r = m_current;
  if (m_pending != Op::None) {
    // "5 + =" adds the shown number to itself, as pocket calculators do.
    const Amount right = m_fresh ? m_current : m_accumulator;
    if (Status st = Apply(m_pending, m_accumulator, right, &r); st != Status::Ok) return Fail(st);
    m_lastOp = m_pending;
    m_lastOperand = right;
    m_pending = Op::None;
  } else if (m_lastOp != Op::None) {
    if (Status st = Apply(m_lastOp, m_current, m_lastOperand, &r); st != Status::Ok) return Fail(st);
  }
  m_current = m_accumulator = r;
  m_fresh = m_entering = false;
  return Status::Ok;
}

Status CalculatorModel::Percent() {
  m_error = Status::Ok;
  std::int64_t out = 0;
  Status st = m_pending == Op::Add || m_pending == Op::Subtract
                  ? MulDiv(m_accumulator.Raw(), m_current.Raw(), 100 * Amount::kScale, &out)
                  : MulDiv(m_current.Raw(), 1, 100, &out);
  if (st != Status::Ok) return Fail(st);
  m_current = Amount::FromRaw(out);
  m_fresh = true;
  m_entering = false;
  return Status::Ok;
}

Status CalculatorModel::Sign() {
  m_error = Status::Ok;
  if (m_entering) return SetEntry(m_entry, !m_entryNegative);
  m_current = -m_current;
  m_fresh = true;
  return Status::Ok;
}

Status CalculatorModel::Backspace() {
  m_error = Status::Ok;
  if (!m_entering) return Status::Refused;
  std::string e = m_entry;
  e.pop_back();
  if (e.empty()) e = "0";
  return SetEntry(std::move(e), m_entryNegative);
}

void CalculatorModel::Clear() {
  const int decimals = m_decimals;
  const CLocaleInfo* locale = m_locale;
  *this = CalculatorModel(*locale);
  m_decimals = decimals;
}

Status CalculatorModel::OnChar(char ch) {
  if (ch >= '0' && ch <= '9') return Digit(ch - '0');
  if (ch == m_locale->GetCharDec() || ch == ',' || ch == '.') return DecimalPoint();
  for (const OpKey& k : kOpKeys)
    if (k.ch == ch) return Operator(k.op);
  switch (ch) {
    case '=':
    case '\r':
      return Equals();
    case '%':
      return Percent();
    case '\b':
      return Backspace();
    case 'c':
    case 'C':
      Clear();
      return Status::Ok;
    default:
      return Status::Refused;
  }
}

void CalculatorModel::SetDecimals(int decimals) { m_decimals = std::clamp(decimals, 0, 4); }

bool CalculatorModel::SetValueText(std::string_view text) {
  NumberFormat format;
  format.decimal = m_locale->GetSymDec();
  format.thousands = m_locale->GetSymTho();
  format.negativeSign = m_locale->GetSymNeg();
  const Amount a = Amount::Parse(text, format);
  if (!a.IsValid() || a.Raw() > kMaxRaw || a.Raw() < -kMaxRaw) return false;
  Clear();
  m_current = m_accumulator = a;
  return true;
}

std::string CalculatorModel::DisplayText() const {
  if (m_error == Status::Overflow) return "Przepełnienie";
  if (m_error == Status::DivisionByZero) return "Nie można dzielić przez zero";
  std::string plain;
  if (m_entering) {
    plain = (m_entryNegative ? "-" : "") + m_entry;
  } else {
    plain = m_locale->CurrencyToText(m_current, false, false);
    while (plain.back() == '0') plain.pop_back();
    if (plain.back() == '.') plain.pop_back();
  }
  return m_locale->TextToDispText(plain.c_str(), '.');
}

std::string CalculatorModel::ValueText() const { return m_locale->CurrencyToText(m_current, true, false); }

}  // namespace varion
