#include "controls/calculator_model.h"

#include <gtest/gtest.h>

#include <random>

#include "tests/seed.h"

namespace {

using varion::Amount;
using varion::CalculatorModel;
using Op = CalculatorModel::Op;
using Status = CalculatorModel::Status;

// Keys as typed; "n" is the sign button, which has no character.
Status Press(CalculatorModel& calc, std::string_view keys) {
  Status last = Status::Ok;
  for (char c : keys) last = c == 'n' ? calc.Sign() : calc.OnChar(c);
  return last;
}

TEST(CalculatorModel, Keys) {
  struct Case {
    int decimals;
    const char* keys;
    const char* display;
    Status last;
  } cases[] = {
      // keyed order, not precedence; a second operation key replaces the first; "=" again repeats
      {2, "12+3=", "15", Status::Ok}, {2, "2+3*4=", "20", Status::Ok}, {2, "5-8=", "-3", Status::Ok},
      {2, "5-+3=", "8", Status::Ok}, {2, "5+==", "15", Status::Ok}, {2, "5*2==", "20", Status::Ok},
      {2, "10/4=", "2,5", Status::Ok}, {4, "2/3=", "0,6667", Status::Ok}, {4, "2n/3=", "-0,6667", Status::Ok},
      {4, "0,0001/3=", "0", Status::Ok}, {2, "1,5*1,5=", "2,25", Status::Ok}, {2, "5n+3=", "-2", Status::Ok},
      {2, "200+10%=", "220", Status::Ok}, {2, "200-10%=", "180", Status::Ok}, {2, "200*10%=", "20", Status::Ok},
      {2, "200/50%=", "400", Status::Ok}, {2, "50%", "0,5", Status::Ok},
      // entry: the field's decimals, 12 integer digits, Backspace while keying only
      {2, ",5", "0,5", Status::Ok}, {2, "1,239", "1,23", Status::Refused}, {2, "1,2,", "1,2", Status::Refused},
      {0, "1,5", "15", Status::Ok}, {2, "1234567", "1 234 567", Status::Ok},
      {2, "9999999999999", "999 999 999 999", Status::Refused}, {2, "123\b", "12", Status::Ok},
      {2, "5\b", "0", Status::Ok}, {2, "5+3=\b", "8", Status::Refused}, {2, "5+3c", "0", Status::Ok},
      {2, "5+3c2=", "2", Status::Ok}, {2, "x", "0", Status::Refused},
      // refusals keep the state, so the next keys correct it
      {2, "999999999999*10=", "Przepełnienie", Status::Overflow},
      {2, "999999999999+1=", "Przepełnienie", Status::Overflow},
      {2, "999999999999n-1=", "Przepełnienie", Status::Overflow},
      {2, "5/0=", "Nie można dzielić przez zero", Status::DivisionByZero}, {2, "5/0=2=", "2,5", Status::Ok},
      {2, "999999999999*10=\b=", "999 999 999 999", Status::Ok},
  };
  CLocaleInfo polish{varion::LocaleValues{}};
  for (const Case& c : cases) {
    SCOPED_TRACE(c.keys);
    CalculatorModel calc(polish);
    calc.SetDecimals(c.decimals);
    EXPECT_EQ(Press(calc, c.keys), c.last);
    EXPECT_EQ(calc.DisplayText(), c.display);
  }
}

TEST(CalculatorModel, ValueTextBothWays) {
  CLocaleInfo polish{varion::LocaleValues{}};
  CalculatorModel calc(polish);
  EXPECT_TRUE(calc.SetValueText("-1234,5000"));
  EXPECT_EQ(calc.DisplayText(), "-1 234,5");
  Press(calc, "*2=");
  EXPECT_EQ(calc.ValueText(), "-2469,0000");
  EXPECT_FALSE(calc.SetValueText("abc"));
  EXPECT_FALSE(calc.SetValueText("1000000000000"));
  EXPECT_EQ(calc.Value(), Amount::FromRaw(-24690000));
}

// Random operands keyed in and combined: exact sums, products and quotients within half a
// ten-thousandth, and a refusal exactly where the result leaves 12 integer digits.
TEST(CalculatorModel, RandomOperations) {
  varion::testing::SeededRng rng;
  CLocaleInfo polish{varion::LocaleValues{}};
  for (int i = 0; i < 20000; ++i) {
    auto draw = [&] {  // mixed magnitudes, so that both overflow and tiny results occur
      const std::int64_t scale[] = {10, 10000, 100000000, 1000000000000, CalculatorModel::kMaxRaw + 1};
      const std::int64_t v = static_cast<std::int64_t>(rng() % static_cast<std::uint64_t>(scale[rng() % 5]));
      return rng() % 2 ? -v : v;
    };
    const std::int64_t a = draw(), b = draw();
    const Op op = static_cast<Op>(1 + rng() % 4);
    CalculatorModel calc(polish);
    calc.SetDecimals(4);
    ASSERT_TRUE(calc.SetValueText(polish.CurrencyToText(Amount::FromRaw(a), true, false)));
    ASSERT_EQ(calc.Operator(op), Status::Ok);
    // The second operand keyed digit by digit.
    const std::string digits = polish.CurrencyToText(Amount::FromRaw(b < 0 ? -b : b), false, false);
    for (char c : digits) ASSERT_EQ(c == '.' ? calc.DecimalPoint() : calc.Digit(c - '0'), Status::Ok);
    if (b < 0) calc.Sign();
    SCOPED_TRACE(std::to_string(a) + " op " + std::to_string(static_cast<int>(op)) + " " + std::to_string(b));
    const Status st = calc.Equals();
    // The result r approximates num / den: exactly for sums, within half a ten-thousandth else.
    const __int128 wa = a, wb = b, kMax = CalculatorModel::kMaxRaw, r = calc.Value().Raw();
    const __int128 num = op == Op::Add        ? wa + wb
                         : op == Op::Subtract ? wa - wb
                         : op == Op::Multiply ? wa * wb
                                              : wa * 10000;
    const __int128 den = op == Op::Multiply ? 10000 : op == Op::Divide ? wb : 1;
    if (den == 0) {
      ASSERT_EQ(st, Status::DivisionByZero);
      continue;
    }
    const __int128 exact = num / den, error = r * den - num, bound = (den < 0 ? -den : den) / 2;
    if (exact > kMax || exact < -kMax) {
      ASSERT_EQ(st, Status::Overflow);
      ASSERT_EQ(calc.Value(), Amount::FromRaw(b));  // the shown operand stays
    } else if (exact < kMax && exact > -kMax) {
      ASSERT_EQ(st, Status::Ok);
      ASSERT_LE(error < 0 ? -error : error, bound);
    }
  }
}

}  // namespace
