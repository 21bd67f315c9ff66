// The arithmetic of the drop-down calculator of the amount field: entry of a number, the four
// operations, percent and sign, on amounts in ten-thousandths, with the text its display shows.
#pragma once

#include <string>
#include <string_view>

#include "base/amount.h"
#include "base/export.h"
#include "controls/locale_info.h"

namespace varion {

// A pocket calculator that works as it is keyed: an operation pressed after a second number first
// completes the pending one (2 + 3 * 4 = 20), "=" pressed again repeats the last operation with
// its last operand, and percent turns the number keyed into a share of the first operand for
// "+" and "-" (200 + 10 % = 220) and into hundredths for "*" and "/" (200 * 10 % = 20).
//
// Results are rounded half away from zero to ten-thousandths and must fit the amount field: at
// most 12 integer digits. A result beyond that, and a division by zero, are refused: the state
// stays as it was before the key and the display shows the reason until the next key, which then
// works on the kept state (so after "5 / 0 =" keying 2 and "=" gives 2,5).
class VARION_API CalculatorModel {
 public:
  enum class Op { None, Add, Subtract, Multiply, Divide };
  enum class Status {
    Ok,
    Refused,   // the key does nothing here (a 13th integer digit, a second separator...)
    Overflow,  // the result would not fit 12 integer digits
    DivisionByZero,
  };

  static constexpr std::int64_t kMaxRaw = 9999999999999999;  // 999 999 999 999,9999

  // Uses the process-wide CLocaleInfo; the other constructor takes a locale that outlives it.
  CalculatorModel();
  explicit CalculatorModel(const CLocaleInfo& locale);

  Status Digit(int digit);
  Status DecimalPoint();
  Status Operator(Op op);
  Status Equals();
  Status Percent();
  Status Sign();
  Status Backspace();
  void Clear();

  // A typed character: digits, the locale's decimal character, "," or ".", + - * /, "=" or Enter
  // (13), "%", Backspace (8), "c" or "C" for clear. Anything else is Refused.
  Status OnChar(char ch);

  // The decimals the owner field shows (0..4; more is taken as 4): no more may be keyed.
  void SetDecimals(int decimals);
  int Decimals() const { return m_decimals; }
  // The owner's value as its plain text (what the field answers to WM_GETTEXT); the calculator
  // starts over from it. False, and nothing changed, for a text that is not such an amount.
  bool SetValueText(std::string_view text);

  // The number shown: the one being keyed or the last result.
  Amount Value() const { return m_current; }
  Op Pending() const { return m_pending; }
  Status Error() const { return m_error; }
  // What the display shows: the number with the locale's separators ("1 234,5" while keyed, the
  // result without trailing zeros), or the reason of a refusal.
  std::string DisplayText() const;
  // The value for the owner field's notification: the plain text with the locale separator.
  std::string ValueText() const;

 private:
  Status Fail(Status why);
  void StartEntry();
  Status Apply(Op op, Amount left, Amount right, Amount* result) const;
  Status SetEntry(std::string digits, bool negative);

  const CLocaleInfo* m_locale;
  int m_decimals = 2;
  Amount m_current = Amount::FromRaw(0);
  Amount m_accumulator = Amount::FromRaw(0);
  Op m_pending = Op::None;
  Op m_lastOp = Op::None;  // for "=" pressed again
  Amount m_lastOperand = Amount::FromRaw(0);
  bool m_fresh = false;     // the number shown was keyed or changed after the last operation key
  bool m_entering = false;  // digits are being keyed into m_entry
  std::string m_entry;      // digits and at most one ".", as keyed
  bool m_entryNegative = false;
  Status m_error = Status::Ok;
};

}  // namespace varion
