# Locale text, holidays and validators against their peers (bench/run-locale-peers).
varion_bench(bench_locale locale_bench.cpp)
