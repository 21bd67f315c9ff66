// One keystroke through the amount field's model, as its window would send it: the selection the
// edit reports goes in, the text and selection to show come out. Each iteration is one key of a
// script that types and deletes again, so the field stays in a steady state.
#include <benchmark/benchmark.h>

#include <string_view>

#include "controls/calculator_model.h"
#include "controls/currency_model.h"

namespace {

void RunKeys(benchmark::State& state, const char* startText, std::string_view script) {
  CLocaleInfo polish{varion::LocaleValues{}};
  varion::CurrencyEditModel model(polish);
  auto r = model.OnSetText(startText);
  varion::CurrencySelection sel = r.sel;
  size_t i = 0;
  for (auto _ : state) {
    r = model.OnChar(script[i], sel);
    sel = r.sel;
    benchmark::DoNotOptimize(r);
    if (++i == script.size()) i = 0;
  }
  state.SetItemsProcessed(static_cast<int64_t>(state.iterations()));
}

// Integer digits into a grouped amount, then Backspace over them.
void BM_CurrencyKey_IntegerPart(benchmark::State& state) { RunKeys(state, "1234567,89", "98765\b\b\b\b\b"); }
BENCHMARK(BM_CurrencyKey_IntegerPart);

// To the decimals, overwrite them, back out with Backspace.
void BM_CurrencyKey_Fraction(benchmark::State& state) { RunKeys(state, "1234,56", ",78\b\b"); }
BENCHMARK(BM_CurrencyKey_Fraction);

// The sign of a large amount, back and forth.
void BM_CurrencyKey_Sign(benchmark::State& state) { RunKeys(state, "123456789012,34", "-"); }
BENCHMARK(BM_CurrencyKey_Sign);

// A refused key: a digit behind the last decimal beeps.
void BM_CurrencyKey_Refused(benchmark::State& state) {
  CLocaleInfo polish{varion::LocaleValues{}};
  varion::CurrencyEditModel model(polish);
  model.OnSetText("1234,56");
  const varion::CurrencySelection end{8, 8};
  for (auto _ : state) benchmark::DoNotOptimize(model.OnChar('7', end));
}
BENCHMARK(BM_CurrencyKey_Refused);

// A text set by a form or pasted: parsed, rounded, shown.
void BM_CurrencySetText(benchmark::State& state) {
  CLocaleInfo polish{varion::LocaleValues{}};
  varion::CurrencyEditModel model(polish);
  const char* texts[] = {"1 234 567,891", "-0,5", "987654321,01"};
  size_t i = 0;
  for (auto _ : state) benchmark::DoNotOptimize(model.OnSetText(texts[i++ % 3]));
}
BENCHMARK(BM_CurrencySetText);

// A calculation keyed on the calculator: "1234,5*3=" is nine keys per iteration.
void BM_CalculatorKeys(benchmark::State& state) {
  CLocaleInfo polish{varion::LocaleValues{}};
  varion::CalculatorModel calc(polish);
  constexpr std::string_view kKeys = "1234,5*3=";
  for (auto _ : state) {
    for (char c : kKeys) benchmark::DoNotOptimize(calc.OnChar(c));
    benchmark::DoNotOptimize(calc.DisplayText());
  }
  state.SetItemsProcessed(static_cast<int64_t>(state.iterations() * kKeys.size()));
}
BENCHMARK(BM_CalculatorKeys);

}  // namespace

BENCHMARK_MAIN();
