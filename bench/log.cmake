# SimpleLog against spdlog's file logger, its disabled path, and database rows on SQLite.
find_package(spdlog REQUIRED)
varion_bench(bench_log log_bench.cpp)
target_link_libraries(bench_log PRIVATE spdlog::spdlog)
