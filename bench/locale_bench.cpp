// Amounts in words, identifier checks and holiday look-ups per call. The inputs follow the same
// formulas as the peer scripts in bench/peers, so the figures compare the same work.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <string>
#include <vector>

#include "controls/amount_words.h"
#include "controls/holidays.h"
#include "controls/validators.h"

namespace {

constexpr size_t kInputs = 1024;

// Amount i: a multiplicative hash of i below ten million, with two decimals.
std::vector<varion::Amount> Amounts() {
  std::vector<varion::Amount> out;
  for (unsigned long long i = 0; i < kInputs; ++i)
    out.push_back(varion::Amount::FromRaw(static_cast<std::int64_t>(i * 2654435761ull % 1000000000ull) * 100));
  return out;
}

// Digit strings of the given length from a linear formula; about one in ten carries a right check
// digit, as typed data would be mostly right and sometimes not.
std::vector<std::string> Numbers(unsigned long long start, unsigned long long step, int digits) {
  unsigned long long mod = 1;
  for (int i = 0; i < digits; ++i) mod *= 10;
  std::vector<std::string> out;
  char buf[32];
  for (unsigned long long i = 0; i < kInputs; ++i) {
    std::snprintf(buf, sizeof buf, "%0*llu", digits, (start + i * step) % mod);
    out.emplace_back(buf);
  }
  return out;
}

void BM_KwotaSlownieValue(benchmark::State& state) {
  auto amounts = Amounts();
  size_t i = 0;
  for (auto _ : state) benchmark::DoNotOptimize(KwotaSlownie(amounts[i++ & (kInputs - 1)]));
}
BENCHMARK(BM_KwotaSlownieValue);

void BM_KwotaSlownieText(benchmark::State& state) {
  std::vector<std::string> texts;
  for (const auto& a : Amounts()) {
    char buf[32];
    std::snprintf(buf, sizeof buf, "%lld,%02lld", static_cast<long long>(a.Raw() / 10000),
                  static_cast<long long>(a.Raw() % 10000 / 100));
    texts.emplace_back(buf);
  }
  size_t i = 0;
  for (auto _ : state) benchmark::DoNotOptimize(KwotaSlownie(texts[i++ & (kInputs - 1)].c_str()));
}
BENCHMARK(BM_KwotaSlownieText);

void BM_PoprawnyPESEL(benchmark::State& state) {
  auto numbers = Numbers(44051401458ull, 104729ull, 11);
  size_t i = 0;
  for (auto _ : state) benchmark::DoNotOptimize(PoprawnyPESEL(numbers[i++ & (kInputs - 1)].c_str()));
}
BENCHMARK(BM_PoprawnyPESEL);

void BM_PoprawnyREGON(benchmark::State& state) {
  auto numbers = Numbers(123456785ull, 7919ull, 9);
  size_t i = 0;
  for (auto _ : state) benchmark::DoNotOptimize(PoprawnyREGON(numbers[i++ & (kInputs - 1)].c_str()));
}
BENCHMARK(BM_PoprawnyREGON);

void BM_PoprawnyNIP(benchmark::State& state) {
  auto numbers = Numbers(1234563218ull, 15485863ull, 10);
  size_t i = 0;
  for (auto _ : state) benchmark::DoNotOptimize(PoprawnyNIP(numbers[i++ & (kInputs - 1)].c_str(), true));
}
BENCHMARK(BM_PoprawnyNIP);

void BM_IsHolidayCentury(benchmark::State& state) {
  std::vector<COleDateTime> days;
  for (COleDateTime d(1950, 1, 1); d < COleDateTime(2050, 1, 1); d = d.AddDays(1)) days.push_back(d);
  size_t i = 0;
  for (auto _ : state) {
    benchmark::DoNotOptimize(CVelHolidayInfo::IsHoliday(days[i]));
    if (++i == days.size()) i = 0;
  }
}
BENCHMARK(BM_IsHolidayCentury);

}  // namespace

BENCHMARK_MAIN();
