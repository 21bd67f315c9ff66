# Locale text, holidays and validators against their peers (bench/run-locale-peers).
add_executable(bench_locale ${CMAKE_CURRENT_SOURCE_DIR}/locale_bench.cpp)
target_link_libraries(bench_locale PRIVATE varion_core benchmark::benchmark)
varion_warnings(bench_locale)
