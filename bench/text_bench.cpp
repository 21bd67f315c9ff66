// Code page 1250 to UTF-16 and to UTF-8 over a megabyte of Polish text, against glibc's iconv in
// the same run.
#include <benchmark/benchmark.h>
#include <iconv.h>

#include <string>

#include "base/text.h"

namespace {

const std::string& PolishText() {
  static const std::string text = [] {
    const std::string sentence =
        "Zażółć gęślą jaźń. Faktura VAT nr 12/2024 dla firmy „Łódzkie Zakłady Włókiennicze” "
        "na kwotę 1 234,56 zł — płatne przelewem w ciągu 14 dni. ";
    std::string s;
    while (s.size() < (1u << 20)) s += sentence;
    s.resize(1u << 20);
    return s;
  }();
  return text;
}

void Report(benchmark::State& state) {
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * static_cast<int64_t>(PolishText().size()));
}

void BM_Ours_Cp1250ToUtf16(benchmark::State& state) {
  for (auto _ : state) benchmark::DoNotOptimize(varion::text::Cp1250ToUtf16(PolishText()));
  Report(state);
}

void BM_Ours_Cp1250ToUtf8(benchmark::State& state) {
  for (auto _ : state) benchmark::DoNotOptimize(varion::text::Cp1250ToUtf8(PolishText()));
  Report(state);
}

// iconv into a buffer of the same final size our converter returns, allocated per call as ours is.
void IconvRun(benchmark::State& state, const char* to, size_t factor) {
  iconv_t cd = iconv_open(to, "CP1250");
  const std::string& in = PolishText();
  for (auto _ : state) {
    std::string out(in.size() * factor, '\0');
    char* src = const_cast<char*>(in.data());
    size_t srcLeft = in.size();
    char* dst = out.data();
    size_t dstLeft = out.size();
    iconv(cd, nullptr, nullptr, nullptr, nullptr);
    if (iconv(cd, &src, &srcLeft, &dst, &dstLeft) == static_cast<size_t>(-1)) state.SkipWithError("iconv failed");
    out.resize(out.size() - dstLeft);
    benchmark::DoNotOptimize(out);
  }
  iconv_close(cd);
  Report(state);
}

void BM_Iconv_Cp1250ToUtf16(benchmark::State& state) { IconvRun(state, "UTF-16LE", 2); }
void BM_Iconv_Cp1250ToUtf8(benchmark::State& state) { IconvRun(state, "UTF-8", 3); }

void BM_Ours_Utf8ToCp1250(benchmark::State& state) {
  const std::string utf8 = varion::text::Cp1250ToUtf8(PolishText());
  for (auto _ : state) benchmark::DoNotOptimize(varion::text::Utf8ToCp1250(utf8));
  Report(state);
}

BENCHMARK(BM_Ours_Cp1250ToUtf16)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_Iconv_Cp1250ToUtf16)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_Ours_Cp1250ToUtf8)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_Iconv_Cp1250ToUtf8)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_Ours_Utf8ToCp1250)->Unit(benchmark::kMicrosecond);

}  // namespace

BENCHMARK_MAIN();
